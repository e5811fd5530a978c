#pragma once

#include "../../logging/LogLine.h"

#include <RedfishConfig/RedfishConfigResult.h>

#include <exception>

namespace RedfishConfig {

/**
 * Runs an operation of a setting. Whatever is raised in it, an absent name above all, is logged and answered with
 * RESULT_PROPERTY_NOT_EXIST.
 *
 * @param className with @p operationName: what the log names
 */
template <class Operation>
RedfishConfigResult AnswerOrCatch(const char* className, const char* operationName, Operation operation)
{
    try {
        return operation();
    } catch (const std::exception& error) {
        LOG_LINE(LogDetail) << "Catch exception in " << className << "::" << operationName << "(): " << error.what();
        return RESULT_PROPERTY_NOT_EXIST;
    }
}

} // namespace RedfishConfig
