#pragma once

#include <RedfishConfig/Client/Attribute.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/**
 * What can go wrong with texts in the core's formulas. The core puts values in place of keys ("NAME.CurrentValue",
 * "NAME.Hidden", "NAME exist"), key by key in the order of their bytes, wherever a key is found, and without quotation
 * marks; then it splits the formula at operators and parentheses.
 */
class FormulaHazards {
public:
    explicit FormulaHazards(const std::vector<Attribute>& attributes);

    /**
     * Whether a text stays whole in a formula, as a value or as what is compared with one. One with more endings of
     * keys than are looked at counts as one that does not.
     */
    bool IsSafe(std::string_view text) const;

    /** Whether formulas can ask anything of the setting: no other one's value is put into its keys before its own. */
    bool IsNameSafe(std::string_view name) const;

    /** The names of other attributes that are endings of the name. Theirs are put into a key that has no value. */
    std::vector<std::string_view> NamesWithin(std::string_view name) const;

private:
    std::vector<std::string_view> NamesEnding(std::string_view text) const;
    bool IsKeySafe(std::string_view name, std::string_view tail) const;

    std::vector<std::string> m_Reversed;                 ///< all names, from the last byte to the first, in order
    std::set<std::string, std::less<>> m_AfterOperators; ///< of names with operators in them: what is behind the last
};

} // namespace RedfishConfig::Client
