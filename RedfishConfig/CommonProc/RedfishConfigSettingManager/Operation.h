#pragma once

#include "../../logging/LogLine.h"

#include <RedfishConfig/RedfishConfigResult.h>

namespace RedfishConfig {

// What the manager's public operations share.

inline void LogEnter(const char* operation)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::" << operation << "()";
}

inline void LogExit(const char* operation)
{
    LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::" << operation << "()";
}

/** A setting that was generated and yet is not there. */
inline RedfishConfigResult MissingInCollection()
{
    return {RESULT_INTERNAL_ERROR, "Cannot find the setting in the generated collection"};
}

} // namespace RedfishConfig
