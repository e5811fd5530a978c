#pragma once

#include <RedfishConfig/Client/Json.h>
#include <RedfishConfig/Client/Value.h>
#include <RedfishConfig/SettingValue.h>

namespace RedfishConfig::Client {

/** The value as a setting has it; none for null, arrays, objects, and numbers that no setting can have. */
Value ReadValue(const JsonValue& json);

Value FromSettingValue(const SettingValue& value);

} // namespace RedfishConfig::Client
