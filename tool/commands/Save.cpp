#include "Commands.h"

#include "../FileWriter.h"
#include "../JsonText.h"
#include "../SavedSystem.h"
#include "../Text.h"
#include "../TypedValue.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

RedfishConfig::filterAction ActionOf(const SaveOptions& options, const System& system)
{
    if (system.Options().IncludeProtected) {
        return RedfishConfig::FILTER_SAVE;
    }
    return options.WithUnique ? RedfishConfig::FILTER_SAVE_FULL : RedfishConfig::FILTER_SAVE_PORTABLE;
}

/** Why the library does not give a value for saving, or it is not to be saved. */
std::string WhyLeftOut(const Setting& setting, const RedfishConfig::SettingStatus& status, bool hasValue)
{
    if (setting.IsPassword()) {
        return "password";
    }
    if (!hasValue) {
        const std::pair<const RedfishConfig::PropertyState*, const char*> reasons[] = {
            {&status.Protected, "protected"},
            {&status.Hidden, "hidden"},
            {&status.GrayOut, "grayed out"},
            {&status.Immutable, "immutable"},
            {&status.SystemUnique, "system unique"}};
        if (!setting.Record.CurrentValue) {
            return "without a value";
        }
        for (const auto& [state, word] : reasons) {
            if (state->Value) {
                return word;
            }
        }
    }
    return status.ReadOnly.Value ? "read only" : "not writable as JSON";
}

struct Saved {
    json::object Values;
    std::vector<LeftOut> Left;
};

Saved Collect(System& system, RedfishConfig::filterAction action)
{
    Saved saved;
    const std::map<std::string, std::string> texts = system.SaveValues(action);
    const std::vector<RedfishConfig::SettingStatus> status = system.AllStatus();
    for (std::size_t place = 0; place < status.size(); ++place) {
        const Setting& setting = system.Settings()[place];
        const auto text = texts.find(setting.Name());
        const bool wanted = text != texts.end() && !setting.IsPassword() && !status[place].ReadOnly.Value;
        std::optional<json::value> value = wanted ? TypedValue(setting, text->second) : std::nullopt;
        if (value) {
            saved.Values[setting.Name()] = std::move(*value);
        } else {
            saved.Left.push_back({setting.Name(), WhyLeftOut(setting, status[place], text != texts.end())});
        }
    }
    return saved;
}

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
    Saved saved = Collect(system, ActionOf(options, system));
    const std::size_t count = saved.Values.size();
    const json::object document = MakeSavedSystem(system, std::move(saved.Values), saved.Left);
    if (options.File.empty()) {
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
