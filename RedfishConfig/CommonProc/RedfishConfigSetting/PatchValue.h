#pragma once

#include <string>

namespace RedfishConfig {

/** How a PATCH body carries a boolean or a number: as it is. */
inline std::string PatchLiteral(const std::string& value)
{
    return value;
}

/**
 * How a PATCH body carries a text: between double quotes. Nothing inside is escaped, on purpose: callers rely
 * on finding the value as it is between the quotes.
 */
inline std::string PatchText(const std::string& value)
{
    return "\"" + value + "\"";
}

} // namespace RedfishConfig
