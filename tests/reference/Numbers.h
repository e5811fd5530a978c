#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Reference {

/** Wide enough for every sum and difference of 64-bit numbers. */
__extension__ typedef __int128 Wide;

using Number = std::optional<std::int64_t>;

/** How a number stands to its bounds: 0 within, 1 outside of two, 2 below the only one, 3 above the only one, 4
 * unusable. */
inline int CheckScope(Wide value, const Number& lower, const Number& upper, bool nonNegative)
{
    if (nonNegative && (lower.value_or(0) < 0 || upper.value_or(0) < 0)) {
        return 4;
    }
    if (lower && upper) {
        return *lower > *upper ? 4 : *lower <= value && value <= *upper ? 0 : 1;
    }
    if (upper) {
        return value > *upper ? 3 : 0;
    }
    return lower && value < *lower ? 2 : 0;
}

/** Whether a number is a whole number of steps away from its base. */
inline bool FitsIncrement(Wide value, Wide base, Wide increment)
{
    Wide distance = value - base;
    distance = distance < 0 ? -distance : distance;
    increment = increment < 0 ? -increment : increment;
    return increment == 0 || distance % increment == 0;
}

/** An optional sign and decimal digits, within 64 signed bits. */
inline Number ReadInteger(const std::string& text)
{
    const std::size_t begin = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    if (begin == text.size()) {
        return std::nullopt;
    }
    Wide number = 0;
    for (std::size_t i = begin; i < text.size(); ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return std::nullopt;
        }
        number = number * 10 + (text[i] - '0');
        if (number > (Wide(1) << 64)) {
            return std::nullopt;
        }
    }
    number = text[0] == '-' ? -number : number;
    if (number < INT64_MIN || number > INT64_MAX) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

inline std::string Text(const Number& number)
{
    return number ? std::to_string(*number) : std::string();
}

/** "The value need ...": why a number or length is refused. */
inline std::string ScopeReason(int verdict, const std::string& subject, const std::string& lowerKey,
                               const Number& lower, const std::string& upperKey, const Number& upper)
{
    switch (verdict) {
    case 1:
        return subject + " out of scope: " + lowerKey + "=" + Text(lower) + " " + upperKey + "=" + Text(upper) + ".";
    case 2:
        return subject + " need equal or great than " + Text(lower) + ".";
    case 3:
        return subject + " need equal or less than " + Text(upper) + ".";
    default:
        return "";
    }
}

} // namespace Reference
