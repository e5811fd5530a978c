#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace RedfishConfig {

/** What a formula may ask of a setting, as it stands behind the setting's name: "NAME.CurrentValue", "NAME exist". */
enum class KeyTail : std::uint8_t {
    ReadOnly, // the flags, in the order of the dynamic properties
    WriteOnly,
    Hidden,
    GrayOut,
    Immutable,
    SystemUnique,
    CurrentValue,
    Exists,
    ExistsNot,
};

/** In the order of KeyTail. Each begins with a point or a blank. */
inline constexpr std::array<std::string_view, 9> keyTails{".ReadOnly",     ".WriteOnly", ".Hidden",
                                                          ".GrayOut",      ".Immutable", ".IsSystemUniqueProperty",
                                                          ".CurrentValue", " exist",     " not exist"};

constexpr std::string_view TextOf(KeyTail tail)
{
    return keyTails[static_cast<std::size_t>(tail)];
}

} // namespace RedfishConfig
