#pragma once

#include "ExitCode.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace RedfishConfigTool {

/** What the tool takes from the world around it, beside its arguments. */
struct Environment {
    std::string Registry; ///< the registry's file when the command line names none; empty for none
    std::string Values;   ///< the same for the values
    bool Colour = false;
    std::size_t Width = 80; ///< of the terminal, in characters
    bool Terminal = false;  ///< whether stdout is a terminal
};

/**
 * The whole tool: reads the arguments (without the program's name), runs the command, writes answers to @p out, which
 * is flushed before any complaint goes to @p err.
 */
ExitCode RunTool(const std::vector<std::string>& arguments, const Environment& environment, std::ostream& out,
                 std::ostream& err);

} // namespace RedfishConfigTool
