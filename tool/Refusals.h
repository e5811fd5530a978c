#pragma once

#include "AppNames.h"
#include "ExitCode.h"
#include "Output.h"
#include "app/System.h"

#include <boost/json/array.hpp>

#include <string>
#include <vector>

namespace RedfishConfigTool {

/** Complains about each answer that is a failure; the first twenty names that are not found get the nearest ones. */
void ComplainOfEach(const std::vector<Answer>& answers, const System& system, Output& output);

/**
 * The same in one line for each reason, for a question to all settings, where many share a reason.
 *
 * @param what what became of them: "not answered"
 */
void ComplainByReason(const std::vector<Answer>& answers, const char* what, Output& output);

/** Complains about properties that may forbid what was prepared, but are not known to; a line for each property. */
void ComplainOfDoubts(const std::vector<Answer>& answers, Output& output);

/**
 * The failures as JSON: "name", "code", "message", and "suggestions" for a name that is not found; after the first
 * twenty such names they are empty.
 */
boost::json::array RefusalsToJson(const std::vector<Answer>& answers, const System& system);

/** Answered when every answer is one. */
ExitCode ExitCodeOf(const std::vector<Answer>& answers);

} // namespace RedfishConfigTool
