#include "Commands.h"

#include "../Answers.h"

namespace RedfishConfigTool {

ExitCode RunDefaults(System& system, const Selection& selection, Output& output)
{
    const auto toJson = [](const Answer& answer, const SystemOptions& options) {
        return ValueToJson(answer, answer.Subject->Record.DefaultValue, options);
    };
    return RunQuestion(system, selection, {askDefault, "defaults", PrintAssignment, toJson}, output);
}

Runner AttachDefaults(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunDefaults(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
