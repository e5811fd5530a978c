#pragma once

#include "System.h"

#include <boost/json/value.hpp>

#include <optional>
#include <string>

namespace RedfishConfigTool {

/**
 * A value text as JSON of the setting's type: a number for an Integer, true or false for a Boolean, a string for the
 * others. Nothing when the text is none of that type, or is no UTF-8, which JSON cannot carry.
 */
std::optional<boost::json::value> TypedValue(const Setting& setting, const std::string& text);

/** A value of a setting or file as plain text. */
std::string PlainText(const RedfishConfig::SettingAlternative& value);

} // namespace RedfishConfigTool
