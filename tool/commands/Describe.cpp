#include "Commands.h"

#include "../Answers.h"
#include "../Text.h"
#include "common/Texts.h"

#include <string>

namespace RedfishConfigTool {

namespace {

constexpr std::size_t indentation = 4;

void Print(const Answer& answer, bool isFirst, Output& output)
{
    output.Answers() << (isFirst ? "" : "\n") << output.Paint().Heading(Escape(answer.Subject->Name()) + ":") << '\n';
    const std::size_t width = output.Width() > 2 * indentation ? output.Width() - indentation : indentation;
    const auto& record = answer.Subject->Record();
    const std::string& title =
        record.DisplayName && !record.DisplayName->empty() ? *record.DisplayName : answer.Subject->Name();
    for (const std::string& line : Wrap(RedfishConfig::Texts::ReplaceAll(answer.Text, title, Escape(title)), width)) {
        output.Answers() << std::string(line.empty() ? 0 : indentation, ' ') << line << '\n';
    }
}

} // namespace

ExitCode RunDescribe(System& system, const Selection& selection, Output& output)
{
    return RunQuestion(system, selection, {Question::Description, "descriptions", Print, TextToJson}, output);
}

Runner AttachDescribe(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunDescribe(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
