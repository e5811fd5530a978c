#include "Commands.h"

#include "../Changes.h"
#include "../Refusals.h"
#include "../Text.h"

namespace RedfishConfigTool {

namespace {

bool HasItsDefault(const Setting& setting)
{
    const SettingRecord& record = setting.Record();
    return record.DefaultValue && record.CurrentValue == record.DefaultValue;
}

/** The defaults of all settings but those that have theirs already, and passwords. */
std::vector<Answer> PrepareAll(System& system, Output& output)
{
    std::vector<Answer> answers;
    std::size_t unchanged = 0;
    for (const Setting& setting : system.Settings()) {
        if (HasItsDefault(setting)) {
            ++unchanged;
        } else if (setting.IsPassword()) {
            const char* const reason = "a password is reset by its name alone";
            answers.push_back(
                Refusal(setting.Name(), &setting, RedfishConfig::RESULT_CHANGE_SETTING_FAILED, reason, reason));
        } else {
            answers.push_back(system.PrepareDefault(setting.Name()));
        }
    }
    if (unchanged > 0) {
        output.Complain(Counted(unchanged, "setting") + " left out (already at the default)");
    }
    return answers;
}

} // namespace

ExitCode RunReset(System& system, const Selection& selection, Output& output)
{
    std::vector<Answer> answers;
    if (selection.All) {
        answers = PrepareAll(system, output);
    }
    for (const std::string& name : selection.Names) {
        answers.push_back(system.PrepareDefault(name));
    }
    PatchBody body;
    for (Answer& answer : answers) {
        AddToBody(answer, body);
    }
    if (selection.All) {
        ComplainByReason(answers, "not reset", output);
    } else {
        ComplainOfEach(answers, system, output);
    }
    ComplainOfDoubts(answers, output);
    return WriteChanges(body, selection.All || !body.Empty(), answers, system, output);
}

Runner AttachReset(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunReset(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
