#include "Commands.h"

#include "../FileWriter.h"
#include "../JsonText.h"
#include "../Text.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>

namespace RedfishConfigTool {

ExitCode RunAdapt(const Documents& documents, const AdaptOptions& options, Output& output)
{
    const auto everything = [](const std::string& /*name*/) { return true; };
    const std::string summary = Summary(documents.RegistryFile, DoubtsAbout(documents), everything);
    if (!summary.empty()) {
        output.Complain(summary);
    }
    const bool isToStdout = options.File.empty() || options.File == "-";
    if (isToStdout && output.Terminal() && Secrets(documents.Document, {}).KnowsAny()) {
        output.Complain("the registry carries a password, which no screen shows: redirect the output");
        return ExitCode::Refused;
    }
    const std::string text = JsonText(documents.Document) + "\n";
    if (isToStdout) {
        output.Answers() << text;
        return ExitCode::Answered;
    }
    try {
        WriteFile(options.File, text, options.Force);
    } catch (const WriteError& error) {
        output.Complain(error.what());
        return ExitCode::Unreadable;
    }
    const std::size_t rules = documents.Adapted.PublishedRule.size();
    const std::size_t settings = documents.Adapted.PublishedAttribute.size();
    output.Complain(options.File + ": " + Counted(settings, "attribute") + " and " + Counted(rules, "rule") +
                    " written");
    return ExitCode::Answered;
}

DocumentsRunner AttachAdapt(CLI::App& command)
{
    auto options = std::make_shared<AdaptOptions>();
    command.add_option("-o,--output", options->File, "Write to a file instead of stdout")->type_name("FILE");
    command.add_flag("--force", options->Force, "Replace the file if it is there");
    return [options](const Documents& documents, Output& output) { return RunAdapt(documents, *options, output); };
}

} // namespace RedfishConfigTool
