#include "Commands.h"

#include "../Answers.h"

namespace RedfishConfigTool {

ExitCode RunGet(System& system, const Selection& selection, Output& output)
{
    const auto toJson = [](const Answer& answer, const SystemOptions& options) {
        return ValueToJson(answer, answer.Subject->Record.CurrentValue, options);
    };
    return RunQuestion(system, selection, {askValue, "values", PrintAssignment, toJson}, output);
}

Runner AttachGet(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunGet(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
