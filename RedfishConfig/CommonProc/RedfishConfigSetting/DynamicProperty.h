#pragma once

#include "common/SchemaNames.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace RedfishConfig {

/** One of the properties that a rule may decide. */
struct DynamicProperty {
    Schema::AttributeKey key; ///< in the registry, in formulas and in the log
    const char* word;         ///< in reasons
    bool RedfishConfigSettingInfoStru::*flag;
    bool answersFlag; ///< whether the registry's flag is the answer where no rule decides

    constexpr std::string_view Name() const { return Schema::Name(key); }
};

enum DynamicPropertyRow : std::size_t {
    ReadOnlyRow,
    WriteOnlyRow,
    HiddenRow,
    GrayOutRow,
    ImmutableRow,
    SystemUniqueRow,
    DynamicPropertyRows,
};

/**
 * The six of them, in the order of DynamicPropertyRow. Hidden is the odd one: a setting that the registry itself
 * hides is "protected", which isProtected() answers, and not hidden.
 */
inline constexpr std::array<DynamicProperty, DynamicPropertyRows> dynamicProperties{{
    {Schema::AttributeKey::ReadOnly, "read only", &RedfishConfigSettingInfoStru::ReadOnly, true},
    {Schema::AttributeKey::WriteOnly, "write only", &RedfishConfigSettingInfoStru::WriteOnly, true},
    {Schema::AttributeKey::Hidden, "hidden", &RedfishConfigSettingInfoStru::Hidden, false},
    {Schema::AttributeKey::GrayOut, "grayout", &RedfishConfigSettingInfoStru::GrayOut, true},
    {Schema::AttributeKey::Immutable, "immutable", &RedfishConfigSettingInfoStru::Immutable, true},
    {Schema::AttributeKey::IsSystemUniqueProperty, "system unique",
     &RedfishConfigSettingInfoStru::IsSystemUniqueProperty, true},
}};

/** The property of that key, or DynamicPropertyRows. */
inline DynamicPropertyRow FindDynamicProperty(const std::string& key)
{
    std::size_t row = 0;
    while (row < dynamicProperties.size() && key != dynamicProperties[row].Name()) {
        ++row;
    }
    return static_cast<DynamicPropertyRow>(row);
}

} // namespace RedfishConfig
