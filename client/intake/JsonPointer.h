#pragma once

#include <string>
#include <string_view>

namespace RedfishConfig::Client {

/** The JSON Pointer to a member of the object at @p pointer. */
std::string Member(const std::string& pointer, std::string_view key);

/** The JSON Pointer to an element of the array at @p pointer. */
std::string Element(const std::string& pointer, std::size_t position);

} // namespace RedfishConfig::Client
