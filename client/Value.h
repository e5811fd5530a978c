#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json/value.hpp>

#include <optional>
#include <string_view>

namespace RedfishConfig::Client {

/** The value as a setting holds it; nothing for null, lists, objects, and numbers that no setting can hold. */
SettingValue ReadValue(const boost::json::value& json);

boost::json::value ToJson(const SettingValue& value);

/** The number that a text writes in decimal, with an optional sign and blanks around it; or "0x" and hex digits. */
std::optional<std::int64_t> ReadInteger(std::string_view text);

/** "true" and "false" in any letter case. */
std::optional<bool> ReadTruth(std::string_view text);

/** The value as one of a setting of the type, where it is one written in another way: "5" for an Integer. */
SettingValue ConvertToType(const SettingValue& value, std::string_view lowerCaseType);

/** With the ASCII letters in lower case. */
std::string LowerCase(std::string_view text);

} // namespace RedfishConfig::Client
