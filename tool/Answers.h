#pragma once

#include "AppNames.h"
#include "ExitCode.h"
#include "Output.h"
#include "Selection.h"
#include "app/System.h"

#include <boost/json/value.hpp>

namespace RedfishConfigTool {

/** How a command asks one question and shows the answers. */
struct AnswerShape {
    Question Asked;
    const char* JsonKey; ///< of the object of answers by name
    /** Writes one answer to the screen. @p isFirst tells whether none came before it. */
    void (*Print)(const Answer& answer, bool isFirst, Output& output);
    /** The answer in JSON. */
    boost::json::value (*ToJson)(const Answer& answer, const SystemOptions& options);
};

/** Asks a question of the settings selected, writes the answers, and complains of what is refused. */
ExitCode RunQuestion(System& system, const Selection& selection, const AnswerShape& shape, Output& output);

/** The answer as a text. */
boost::json::value TextToJson(const Answer& answer, const SystemOptions& options);

/** An answered value as JSON of its own kind; an integer in hexadecimal is a text. null for no answer and a password.
 */
boost::json::value ValueToJson(const Answer& answer, const SystemOptions& options);

/** "NAME=VALUE" on a line. */
void PrintAssignment(const Answer& answer, bool isFirst, Output& output);

} // namespace RedfishConfigTool
