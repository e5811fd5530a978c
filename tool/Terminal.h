#pragma once

#include <cstddef>

namespace RedfishConfigTool {

/** Whether stdout is a terminal. */
bool StdoutIsTerminal();

/** Whether colours are wanted on stdout: it is a terminal that knows them, and NO_COLOR is unset or empty. */
bool WantsColour();

/** The width of the terminal on stdout in characters; 80 when it is none. */
std::size_t TerminalWidth();

} // namespace RedfishConfigTool
