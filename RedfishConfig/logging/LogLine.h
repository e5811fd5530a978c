#pragma once

#include <RedfishConfig/Log.h>

#include <atomic>

namespace RedfishConfig {

/** What the levels of the log are used for. */
enum : unsigned {
    LogDefect = 1,  ///< data defects and refusals
    LogLeftOut = 2, ///< a setting that does not take part in a save or restore
    LogTrace = 3,   ///< entry and exit of operations
    LogDetail = 4,  ///< verdicts, substitutions, caught exceptions
};

/** The process's level; lines of a higher one are dropped. */
extern std::atomic<unsigned> currentLogLevel;

inline bool LogIsOn(unsigned level)
{
    const unsigned current = currentLogLevel.load(std::memory_order_relaxed);
    return current != 0 && level <= current;
}

/** Logs "Entering  NAME" (two blanks) now and "Exiting  NAME" at the end of the scope. */
class LogEntryAndExit {
public:
    LogEntryAndExit(const char* name, const char* file, int line);
    ~LogEntryAndExit();

    LogEntryAndExit(const LogEntryAndExit&) = delete;
    LogEntryAndExit& operator=(const LogEntryAndExit&) = delete;

private:
    const char* m_Name;
    const char* m_File;
    int m_Line;
};

} // namespace RedfishConfig

/** A stream for one line of the log. What is streamed into it is not even computed when the line would be dropped. */
#define LOG_LINE(level)                                                                                                \
    if (!::RedfishConfig::LogIsOn(level)) {                                                                            \
    } else                                                                                                             \
        ::RedfishConfig::Log(level, __FILE__, __LINE__).Stream()
