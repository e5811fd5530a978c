#pragma once

#include "System.h"

#include <boost/json/value.hpp>

#include <optional>
#include <string>

namespace RedfishConfig::App {

/**
 * A value text as JSON of the setting's type: a number for an Integer, true or false for a Boolean, a string for the
 * others. Nothing when the text is none of that type, or is no UTF-8, which JSON cannot carry.
 */
std::optional<boost::json::value> TypedValue(const Setting& setting, const std::string& text);

/** Whether two value texts are one value of the setting: "TRUE" and "true" of a Boolean, "07" and "7" of an Integer. */
bool IsSameValue(const Setting& setting, const std::string& left, const std::string& right);

/** A value of a setting or file as plain text. */
std::string PlainText(const RedfishConfig::SettingAlternative& value);

} // namespace RedfishConfig::App
