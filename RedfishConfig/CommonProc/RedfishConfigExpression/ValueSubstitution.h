#pragma once

#include "../Limits.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
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
 * is given up and answered empty, and so are all others once one object has written Limits::allFormulasBytes or done
 * Limits::substitutionWork. An empty formula cannot be calculated.
 */
class ValueSubstitution {
public:
    /** @param texts key to the text that replaces it; must outlive this object and stay as it is */
    explicit ValueSubstitution(const std::map<std::string, std::string>& texts,
                               std::uint64_t workLimit = Limits::substitutionWork);

    std::string Apply(const std::string& formula);

private:
    using Entry = std::map<std::string, std::string>::value_type;
    using Rank = std::uint32_t; // of a key among all, in ascending byte order
    using Ranks = std::set<Rank>;

    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    bool IsWithinLimits(const std::string& text) const;
    void AddOccurring(std::string_view text, Ranks& occurring);
    void AddEndingAt(std::string_view text, const std::vector<Rank>& keys, Ranks& occurring);
    // Adds to occurring the later keys that the replacements bring about.
    void ReplaceAll(Rank rank, std::string& text, Ranks& occurring);

    // A key is a name and what is asked of it, its tail: ".CurrentValue", " exist". Few tails make many keys, so keys
    // are looked for where a tail stands in the formula, and from there to the left.
    struct Tail {
        std::string_view text;
        std::vector<Rank> keys; // ordered by their bytes from the last to the first
    };
    std::vector<const Entry*> m_Entries; // by rank
    std::vector<Tail> m_Tails;
    std::size_t m_LongestKey = 0;
    std::uint64_t m_WorkLimit;
    std::uint64_t m_Written = 0; // in bytes
    std::uint64_t m_Work = 0;    // in bytes looked at
};

} // namespace RedfishConfig
