#include "Commands.h"

#include "../JsonText.h"
#include "../Text.h"
#include "app/FileWriter.h"
#include "app/SavedSystem.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

void Tell(const std::vector<LeftOut>& left, bool verbose, Output& output)
{
    if (verbose) {
        for (const LeftOut& one : left) {
            output.Complain(one.Name + " is left out (" + one.Reason + ")");
        }
    } else if (!left.empty()) {
        output.Complain(Counted(left.size(), "setting") + " left out; --verbose says which and why");
    }
}

} // namespace

ExitCode RunSave(System& system, const SaveOptions& options, Output& output)
{
    ValuesToSave saved = CollectValues(system, options.WithUnique);
    const std::size_t count = saved.Values.size();
    const json::object document = MakeSavedSystem(system, std::move(saved.Values), saved.Left);
    if (options.File.empty() || options.File == "-") {
        output.Write(document);
    } else {
        try {
            WriteFile(options.File, JsonText(document) + "\n", options.Force);
        } catch (const WriteError& error) {
            output.Complain(error.what());
            return ExitCode::Unreadable;
        }
        output.Complain(options.File + ": " + Counted(count, "setting") + " saved");
    }
    Tell(saved.Left, options.Verbose, output);
    return ExitCode::Answered;
}

Runner AttachSave(CLI::App& command)
{
    auto options = std::make_shared<SaveOptions>();
    command.add_option("-o,--output", options->File, "Write to a file instead of stdout")->type_name("FILE");
    command.add_flag("--force", options->Force, "Replace the file if it is there");
    command.add_flag("--with-unique", options->WithUnique, "Save what belongs to this one system too");
    command.add_flag("--verbose", options->Verbose, "Name the settings that are left out");
    return [options](System& system, Output& output) { return RunSave(system, *options, output); };
}

} // namespace RedfishConfigTool
