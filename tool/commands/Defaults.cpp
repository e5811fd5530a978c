#include "Commands.h"

#include "../Answers.h"

namespace RedfishConfigTool {

ExitCode RunDefaults(System& system, const Selection& selection, Output& output)
{
    return RunQuestion(system, selection, {Question::Default, "defaults", PrintAssignment, ValueToJson}, output);
}

Runner AttachDefaults(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunDefaults(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
