#pragma once

namespace RedfishConfigTool {

/** What the command leaves behind for its caller. The numbers are fixed: scripts depend on them. */
enum class ExitCode : int {
    Answered = 0,   ///< everything that was asked is answered
    Refused = 1,    ///< something was refused or not found; the rest is answered
    WrongUsage = 2, ///< the command line cannot be understood; nothing is done
    Unreadable = 3, ///< an input could not be read, or the answer could not be written
};

} // namespace RedfishConfigTool
