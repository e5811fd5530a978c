#pragma once

#include "AppNames.h"
#include "app/Utf8.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/**
 * @file
 * Texts on their way to a screen. A registry and a command line are foreign: what they hold may try to steer the
 * terminal, break a line in two, or be no UTF-8 at all.
 */

namespace RedfishConfigTool {

/** Whether a character could steer a terminal: the control characters, and those that break or turn round a line. */
bool SteersTerminal(char32_t code);

/** The code in hexadecimal with at least so many digits, for an escape. */
std::string HexDigits(char32_t code, std::size_t digits);

/**
 * The text as it may be printed on one line: characters that could steer a terminal become \n, \r, \t, \xNN or
 * \uNNNN, and bytes that are no UTF-8 become \xNN. A backslash stays as it is, so this cannot be read back; it never
 * changes its own output.
 */
std::string Escape(std::string_view text);

/** The text with blanks behind it up to @p width characters; a longer one stays as it is. */
std::string Pad(std::string_view text, std::size_t width);

/**
 * The text in lines of at most @p width characters, broken at blanks. A line feed or carriage return in the text ends
 * a paragraph; empty lines at the end are dropped. A longer word keeps a line of its own. Every line is escaped.
 *
 * @return one line at least
 */
std::vector<std::string> Wrap(std::string_view text, std::size_t width);

/** "NAME=..." of NAME=VALUE, whose value may be a password; any other text as it is. */
std::string WithoutValue(const std::string& argument);

/** "1 setting", "2 settings". */
std::string Counted(std::size_t count, const std::string& noun);

} // namespace RedfishConfigTool
