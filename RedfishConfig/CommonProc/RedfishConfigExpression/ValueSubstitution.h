#pragma once

#include <cstddef>
#include <map>
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
 * an earlier key was replaced by. Only the keys that occur are visited: a key that does not occur changes nothing, so
 * it is enough to ask after each replacement which later key is the first that occurs now.
 */
class ValueSubstitution {
public:
    /** @param texts key to the text that replaces it; must outlive this object and stay as it is */
    explicit ValueSubstitution(const std::map<std::string, std::string>& texts);

    std::string Apply(const std::string& formula) const;

private:
    using Entry = std::map<std::string, std::string>::value_type;

    const Entry* FirstOccurring(std::string_view formula, const Entry* after) const;

    // A key is a name and what is asked of it, its tail: ".CurrentValue", " exist". Few tails make many keys, so keys
    // are looked for where a tail stands in the formula, with each length that a name before that tail can have.
    struct Tail {
        std::string_view text;
        std::vector<std::size_t> keyLengths; // ascending
    };
    std::vector<Tail> m_Tails;
    std::unordered_map<std::string_view, const Entry*> m_Keys;
};

} // namespace RedfishConfig
