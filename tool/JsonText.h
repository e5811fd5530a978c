#pragma once

#include <boost/json/value.hpp>

#include <string>

namespace RedfishConfigTool {

/**
 * JSON for a person and a program: two blanks a level, members in their order, a short list or object without others
 * in it on one line.
 *
 * Characters that could steer a terminal are written as \uNNNN, and a byte that is no UTF-8 (names from the command
 * line can hold one) as U+FFFD, so the text is always well formed.
 */
std::string JsonText(const boost::json::value& value);

} // namespace RedfishConfigTool
