#pragma once

#include "DependencyRule.h"
#include "NameIndex.h"

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <boost/json/value.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig {

/**
 * What the library reads from the text of an attribute registry: its attributes and its dependency rules.
 *
 * The text is parsed once, and everything is read from that; the JSON is let go. The content never changes, so
 * managers that are copies of each other share it.
 */
class Registry {
public:
    /** @throws std::exception when the text is not JSON, or its root is not an object. */
    static std::shared_ptr<const Registry> Read(std::string_view text);

    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    /** The records of "Attributes", in the registry's order. @throws std::runtime_error when there is no such list. */
    const std::vector<RedfishConfigSettingInfoStru>& Attributes() const;

    /** The first attribute with that name in any letter case, or null. @throws as Attributes(). */
    const RedfishConfigSettingInfoStru* FindAttribute(const std::string& name) const;

    enum class DependencyList {
        Missing,    ///< there are no rules, which is no error
        Unreadable, ///< "Dependencies" is not an array
        Present,
    };
    DependencyList Dependencies() const;

    /** The usable part of the rules: without terms on the controller itself, and without rules that have no term. */
    const std::vector<DependencyRule>& Rules() const;

    /** The indices in Rules() of those whose target has that name in any letter case, in ascending order. */
    const std::vector<std::size_t>& RulesFor(const std::string& target) const;

    /** The rule at a position of the registry's list; null when it is not one of Rules(). */
    const DependencyRule* RuleAt(std::size_t position) const;

private:
    explicit Registry(const boost::json::object& root);

    void ReadAttributes(const boost::json::object& root);
    void ReadDependencies(const boost::json::object& root);

    std::vector<RedfishConfigSettingInfoStru> m_Attributes;
    std::string m_AttributesDefect; // why there is no list of attributes; empty when there is one
    DependencyList m_Dependencies = DependencyList::Missing;
    std::vector<DependencyRule> m_Rules;
    std::unique_ptr<const NameIndex> m_AttributeIndex;
    std::unique_ptr<const NameIndex> m_TargetIndex;
};

} // namespace RedfishConfig
