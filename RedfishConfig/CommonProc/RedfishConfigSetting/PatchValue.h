#pragma once

#include <string>

namespace RedfishConfig {

/** How a PATCH body carries a boolean or a number: as it is. */
inline std::string PatchLiteral(const std::string& value)
{
    return value;
}

/**
 * How a PATCH body carries a text: between double quotes. Nothing inside is escaped, on purpose: callers that save
 * values compare them with what they hold, and escape where they write JSON.
 */
inline std::string PatchText(const std::string& value)
{
    return "\"" + value + "\"";
}

} // namespace RedfishConfig
