#pragma once

#include "DependencyRule.h"
#include "SettingNames.h"

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace RedfishConfig {

/** What decides the dynamic properties of one setting; the same for all managers of a registry. */
struct SettingFormulas {
    std::map<std::string, PropertyExpression> ByProperty;
    std::vector<std::string> SettingsRead;     ///< by the formulas, in the rules' order, each once
    std::vector<std::vector<KeyPlace>> Places; ///< of the formulas in their order, the keys that stand in their texts
};

/** What adding a rule to formulas came to. */
enum class RuleOutcome {
    Counts,   ///< it is part of a formula, perhaps since before
    Opposite, ///< the property already has a formula that leads to another value, so the rule is left out
};

/**
 * Adds a rule to the formula of the property that it decides, unless it is part of it already: either condition leads
 * to the same value. Changes nothing when memory runs out.
 */
RuleOutcome AddRule(std::map<std::string, PropertyExpression>& byProperty, const DependencyRule& rule,
                    const std::string& formula);

/** Appends names to a list that holds each once. */
class UniqueNames {
public:
    explicit UniqueNames(std::vector<std::string>& names) : m_Names(names) {}

    void AddSourcesOf(const DependencyRule& rule)
    {
        for (const MapFromTerm& term : rule.MapFrom) {
            if (!term.MapFromAttribute.empty() && !Knows(term.MapFromAttribute)) {
                m_Names.push_back(term.MapFromAttribute);
            }
        }
    }

private:
    bool Knows(const std::string& name)
    {
        constexpr std::size_t few = 16; // are gone through faster than found in a set
        if (m_Names.size() <= few) {
            return std::find(m_Names.begin(), m_Names.end(), name) != m_Names.end();
        }
        m_Known.insert(m_Names.begin() + static_cast<std::ptrdiff_t>(m_Known.size()), m_Names.end());
        return m_Known.count(name) > 0;
    }

    std::vector<std::string>& m_Names;
    std::set<std::string> m_Known; // the first of them, once they are more than a few
};

} // namespace RedfishConfig
