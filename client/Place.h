#pragma once

#include <boost/json/value.hpp>

#include <string>
#include <string_view>

namespace RedfishConfig::Client {

/** The JSON Pointer to a member of the object at @p place. */
std::string Member(const std::string& place, std::string_view key);

/** The JSON Pointer to an element of the list at @p place. */
std::string Element(const std::string& place, std::size_t position);

/** What a JSON value is, for a finding: "a list". */
const char* KindOf(const boost::json::value& value);

/** A value as it stands in its document, cut where it is long. */
std::string Quote(const boost::json::value& value);
std::string Quote(std::string_view text);

} // namespace RedfishConfig::Client
