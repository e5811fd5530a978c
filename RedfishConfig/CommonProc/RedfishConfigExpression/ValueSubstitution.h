#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace RedfishConfig {

/**
 * Puts the values of settings into formulas: every key ("NAME.CurrentValue", "NAME exist", ...) is replaced by its
 * text.
 *
 * The outcome is that of replacing, for each key in ascending byte order, every occurrence of the key in the formula
 * as it is at that moment, from left to right. So a key is also found at the end of a longer name, and in a text that
 * an earlier key was replaced by. Only the keys that occur are visited: those of the formula as given, and those that
 * a replacement brings about, which can stand nowhere but in its text or across its ends.
 *
 * Values that hold keys could make a formula grow without end. A formula that becomes longer than Limits::formulaBytes
 * is given up and answered empty, as are all formulas once Limits::substitutionBytes have been worked through for one
 * object; an empty formula cannot be calculated.
 */
class ValueSubstitution {
public:
    /** @param texts key to the text that replaces it; must outlive this object and stay as it is */
    explicit ValueSubstitution(const std::map<std::string, std::string>& texts);

    std::string Apply(const std::string& formula);

private:
    using Entry = std::map<std::string, std::string>::value_type;

    struct KeyOrder {
        bool operator()(const Entry* left, const Entry* right) const { return left->first < right->first; }
    };
    using Entries = std::set<const Entry*, KeyOrder>;

    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    bool IsWithinLimits(const std::string& text) const;
    void AddOccurring(std::string_view text, Entries& occurring);
    // Adds to occurring the later keys that the replacements bring about.
    void ReplaceAll(const Entry& entry, std::string& text, Entries& occurring);

    // A key is a name and what is asked of it, its tail: ".CurrentValue", " exist". Few tails make many keys, so keys
    // are looked for where a tail stands in the formula, with each length that a name before that tail can have.
    struct Tail {
        std::string_view text;
        std::vector<std::size_t> keyLengths; // ascending
    };
    std::vector<Tail> m_Tails;
    std::unordered_map<std::string_view, const Entry*> m_Keys;
    std::size_t m_LongestKey = 0;
    std::size_t m_Work = 0; // in bytes
};

} // namespace RedfishConfig
