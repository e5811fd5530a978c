#pragma once

/**
 * @file
 * The library's log: where its lines go, and which of them are written at all.
 *
 * Levels in use: 1 data defects and refusals, 2 settings left out of a save or restore, 3 entry and exit of
 * operations, 4 details (formula verdicts, substitutions, caught exceptions).
 */

#include <RedfishConfig/Export.h>

#include <functional>
#include <sstream>
#include <string_view>

namespace RedfishConfig {

/** One line of the log. Its text is streamed into Stream(); the line is emitted when the object ends. */
class REDFISHCONFIG_EXPORT Log {
public:
    /**
     * @param level 1 to 4; the line is dropped when it is higher than LogLevel() now
     * @param file source file, kept as a pointer until the line is emitted
     * @param line line number in @p file
     */
    Log(unsigned level, const char* file, int line);

    /** Emits the line. An exception from the sink is swallowed. */
    ~Log();

    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    std::ostringstream& Stream();

private:
    unsigned m_Level;
    bool m_IsOn;
    const char* m_File;
    int m_Line;
    std::ostringstream m_Stream;
};

/** Receives each emitted line, on the thread that emits it; two threads may call it at the same time. */
using LogSink = std::function<void(unsigned level, std::string_view file, int line, std::string_view text)>;

/** Sets the process's sink. An empty sink restores the default one: one line on stderr. May be called from any thread.
 */
REDFISHCONFIG_EXPORT void SetLogSink(LogSink sink);

/** Sets the process's level: lines of a higher one are dropped. 0, the default, drops all. May be called from any
 * thread. */
REDFISHCONFIG_EXPORT void SetLogLevel(unsigned level);

/** The process's level. */
REDFISHCONFIG_EXPORT unsigned LogLevel();

} // namespace RedfishConfig
