#pragma once

#include <RedfishConfig/RedfishConfigSetting.h>

#include <boost/json/object.hpp>

#include <array>

namespace RedfishConfigTool {

/** How a dynamic property is shown. */
struct ShownProperty {
    const char* Label;   ///< on the screen
    const char* JsonKey; ///< in "status"
    bool Marked;         ///< whether the list marks the settings that have it
    RedfishConfig::PropertyState RedfishConfig::SettingStatus::*State;
};

/** The seven dynamic properties in the order in which they are shown. */
inline constexpr std::array<ShownProperty, 7> shownProperties{{
    {"Hidden", "hidden", true, &RedfishConfig::SettingStatus::Hidden},
    {"Grayed out", "grayOut", true, &RedfishConfig::SettingStatus::GrayOut},
    {"Read-only", "readOnly", true, &RedfishConfig::SettingStatus::ReadOnly},
    {"Write-only", "writeOnly", true, &RedfishConfig::SettingStatus::WriteOnly},
    {"Protected", "protected", true, &RedfishConfig::SettingStatus::Protected},
    {"Immutable", "immutable", false, &RedfishConfig::SettingStatus::Immutable},
    {"System-unique", "systemUnique", false, &RedfishConfig::SettingStatus::SystemUnique},
}};

/** The properties as JSON: each with "value" and "reason". */
boost::json::object StatusToJson(const RedfishConfig::SettingStatus& status);

} // namespace RedfishConfigTool
