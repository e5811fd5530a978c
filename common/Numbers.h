#pragma once

#include "Ascii.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

/**
 * @file
 * Numbers and booleans that are written as texts. None of this depends on a locale.
 */

namespace RedfishConfig::Numbers {

/** The number of 64 signed bits that the digits are, as a whole; a minus sign may come first. */
inline std::optional<std::int64_t> ReadDigits(std::string_view digits, int base)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

/** The number that a text is: decimal digits with an optional sign, and nothing else. */
inline std::optional<std::int64_t> ReadDecimal(std::string_view text)
{
    const bool hasPlus = text.size() > 1 && text.front() == '+' && text[1] != '-';
    return ReadDigits(text.substr(hasPlus ? 1 : 0), 10);
}

/** The number that a text writes in decimal, with an optional sign and blanks around it; or "0x" and hex digits. */
inline std::optional<std::int64_t> ReadInteger(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
    if (text.size() > 2 && text[0] == '0' && Ascii::ToLower(text[1]) == 'x') {
        return text[2] != '-' ? ReadDigits(text.substr(2), 16) : std::nullopt;
    }
    return ReadDecimal(text);
}

/** "true" and "false", ignoring case. */
inline std::optional<bool> ReadTruth(std::string_view text)
{
    if (Ascii::EqualIgnoringCase(text, "true")) {
        return true;
    }
    return Ascii::EqualIgnoringCase(text, "false") ? std::optional(false) : std::nullopt;
}

} // namespace RedfishConfig::Numbers
