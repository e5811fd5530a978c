#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace RedfishConfig::Client {

/** The number that a text writes in decimal, with an optional sign and blanks around it; or "0x" and hex digits. */
std::optional<std::int64_t> ReadInteger(std::string_view text);

/** The number that a text is: decimal digits with an optional sign, and nothing else. */
std::optional<std::int64_t> ReadDecimal(std::string_view text);

/** "true" and "false" in any letter case. */
std::optional<bool> ReadTruth(std::string_view text);

/** An ASCII letter in lower case; others as they are. */
constexpr char ToLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/** With the ASCII letters in lower case. */
std::string LowerCase(std::string_view text);

/** Orders texts by length, then by their bytes from the last, ignoring the case of ASCII letters: negative, 0,
 * positive. */
int CompareIgnoringCase(std::string_view left, std::string_view right);

/** Whether two texts differ at most in the case of ASCII letters. */
bool EqualIgnoringCase(std::string_view left, std::string_view right);

} // namespace RedfishConfig::Client
