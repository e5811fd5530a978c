#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/**
 * How single members, words and values of a published registry are read. Letter case of ASCII letters never matters
 * for keys and for words of the schema.
 */
namespace Oracle {

namespace json = boost::json;
using RedfishConfig::SettingValue;
using RedfishConfig::SettingValueMap;

/** The text with ASCII letters in lower case. */
std::string Folded(std::string_view text);

/** The member with this key, else the first one whose key differs only in letter case, else none. */
const json::value* Member(const json::value& object, std::string_view key);

/** The member as a list; an empty list when it is missing or something else. */
const json::array& ListMember(const json::value& object, std::string_view key);

/** The member as text; empty when it is missing or no text. */
std::string TextMember(const json::value& object, std::string_view key);

/** A text, whole number or boolean as the value that it is; null is no value; everything else is its JSON text. */
SettingValue ValueOf(const json::value& value);

/** Numbers in decimal, booleans as "true" and "false"; empty for no value. */
std::string TextOf(const SettingValue& value);

/** A whole number of 64 bits, also one written as text: an optional sign, then digits. Booleans are none. */
std::optional<std::int64_t> NumberOf(const SettingValue& value);

/** A boolean, also one written as text in any letter case or as the number 1 or 0. */
std::optional<bool> FlagOf(const SettingValue& value);

/** Whether what is published of an attribute or a menu has the flag. */
bool IsSet(const json::value& published, const std::string& flag);

/** What stands between the separators, without empty pieces. */
std::vector<std::string> Split(std::string_view text, char separator);

/** The pieces of a menu path: what stands between slashes, without "." and empty pieces. */
std::vector<std::string> PathOf(std::string_view text);

} // namespace Oracle
