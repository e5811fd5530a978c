#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

/**
 * @file
 * Letters of ASCII without regard to case. Names of attributes and keys are compared so, whatever the locale is; bytes
 * beyond ASCII are never changed.
 */

namespace RedfishConfig::Ascii {

/** A letter of ASCII in lower case; every other byte as it is. */
constexpr char ToLower(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/** A copy of the text in lower case. */
inline std::string ToLower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) { return ToLower(character); });
    return lower;
}

/**
 * Orders texts by length, then by their bytes from the last one, ignoring case: names that differ at all differ at
 * their ends most often.
 *
 * @return negative, 0, positive
 */
constexpr int CompareIgnoringCase(std::string_view left, std::string_view right) noexcept
{
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    for (std::size_t position = left.size(); position-- > 0;) {
        const char one = ToLower(left[position]);
        const char other = ToLower(right[position]);
        if (one != other) {
            return one < other ? -1 : 1;
        }
    }
    return 0;
}

constexpr bool EqualIgnoringCase(std::string_view left, std::string_view right) noexcept
{
    return CompareIgnoringCase(left, right) == 0;
}

/** Whether a part of the text is the piece, ignoring case. */
inline bool ContainsIgnoringCase(std::string_view text, std::string_view piece)
{
    return ToLower(text).find(ToLower(piece)) != std::string::npos;
}

} // namespace RedfishConfig::Ascii
