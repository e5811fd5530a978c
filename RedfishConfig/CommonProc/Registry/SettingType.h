#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace RedfishConfig {

/** The types of attributes that there are settings for. */
enum class SettingType : std::uint8_t { None, String, Integer, Enumeration, Boolean, Password };

/** The type that an attribute's "Type" names, in any letter case; None when it names none of them. */
SettingType SettingTypeOf(const std::optional<std::string>& name);

} // namespace RedfishConfig
