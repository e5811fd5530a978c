#include "Commands.h"

#include "../Answers.h"
#include "../Text.h"
#include "common/Texts.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace RedfishConfigTool {

namespace {

/** The library begins each further line of its answer with these. */
constexpr std::string_view lineBreak = "\n\t";

/** The answer with the registry's own line feeds escaped, so that those of the library stand out. */
std::string EscapeRegistryTexts(const Answer& answer)
{
    const auto& record = answer.Subject->Record();
    std::string text = answer.Text;
    const auto escape = [&text](const std::string& foreign) {
        if (foreign.find('\n') != std::string::npos) {
            text = RedfishConfig::Texts::ReplaceAll(std::move(text), foreign, Escape(foreign));
        }
    };
    for (const auto& [name, shownName] : record.Value) {
        escape(name);
        escape(shownName);
    }
    escape(record.ValueExpression.value_or(""));
    return text;
}

void Print(const Answer& answer, bool /*isFirst*/, Output& output)
{
    output.Answers() << output.Paint().Heading(Escape(answer.Subject->Name())) << ": ";
    const std::string whole = EscapeRegistryTexts(answer);
    const std::string_view text = whole;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(lineBreak, begin), text.size());
        std::string line = Escape(text.substr(begin, end - begin));
        line.erase(line.find_last_not_of(' ') + 1);
        output.Answers() << (begin == 0 ? "" : "    ") << line << '\n';
        begin = end + lineBreak.size();
    }
}

} // namespace

ExitCode RunChoices(System& system, const Selection& selection, Output& output)
{
    return RunQuestion(system, selection, {Question::Choices, "choices", Print, TextToJson}, output);
}

Runner AttachChoices(CLI::App& command)
{
    return [selection = AttachSelection(command)](System& system, Output& output) {
        return RunChoices(system, *selection, output);
    };
}

} // namespace RedfishConfigTool
