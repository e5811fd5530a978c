#pragma once

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Json.h>
#include <RedfishConfig/Client/Value.h>
#include <RedfishConfig/SettingValue.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace RedfishConfig::Client {

/** The value as a setting has it; none for null, arrays, objects, and numbers that no setting can have. */
Value ReadValue(const JsonValue& json);

Value FromSettingValue(const SettingValue& value);

/** The number that a text writes in decimal, with an optional sign and blanks around it; or "0x" and hex digits. */
std::optional<std::int64_t> ReadInteger(std::string_view text);

/** The number that a text is: decimal digits with an optional sign, and nothing else. */
std::optional<std::int64_t> ReadDecimal(std::string_view text);

/** "true" and "false" in any letter case. */
std::optional<bool> ReadTruth(std::string_view text);

/**
 * The value as one of the type, where it is one written in another way: "5" for an Integer, 1 for a Boolean, 5 for a
 * String. What cannot be one stays as it is; of a Password everything becomes a Secret.
 */
Value ConvertToType(Value value, AttributeType type);

/** Whether the value is one of the type; none is. */
bool IsOfType(const Value& value, AttributeType type);

/** A value as its document may have it, for a finding: quoted, or covered when it is of a password. */
std::string QuoteValue(const Value& value, AttributeType type);

/** With the ASCII letters in lower case. */
std::string LowerCase(std::string_view text);

/** Orders texts by length, then by their bytes from the last, ignoring the case of ASCII letters: negative, 0,
 * positive. */
int CompareIgnoringCase(std::string_view left, std::string_view right);

/** Whether two texts differ at most in the case of ASCII letters. */
bool EqualIgnoringCase(std::string_view left, std::string_view right);

} // namespace RedfishConfig::Client
