#include "Commands.h"

#include "../Answers.h"

namespace RedfishConfigTool {

ExitCode RunGet(System& system, const Selection& selection, Output& output)
{
    return RunQuestion(system, selection, {Question::Value, "values", PrintAssignment, ValueToJson}, output);
}

Runner AttachGet(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunGet(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
