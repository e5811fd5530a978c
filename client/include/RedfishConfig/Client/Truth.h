#pragma once

/**
 * @file
 * Three-valued logic.
 */

#include <RedfishConfig/Export.h>

#include <cstdint>
#include <string_view>

namespace RedfishConfig::Client {

/** The order is that of three-valued logic: "and" is the least, "or" the greatest. */
enum class Truth : std::uint8_t { False, Unknown, True };

/** "false", "unknown", "true". */
REDFISHCONFIG_EXPORT std::string_view Word(Truth truth);

} // namespace RedfishConfig::Client
