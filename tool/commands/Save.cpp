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

/** What the library does not leave out of itself. Empty for a setting that is to be saved. */
std::string WhyUnwanted(const Setting& setting, const SettingStatus& status, bool withUnique)
{
    if (setting.IsPassword()) {
        return "password";
    }
    if (status.Is(StatusRow::ReadOnly)) {
        return "read only";
    }
    return status.Is(StatusRow::SystemUnique) && !withUnique ? "system unique" : "";
}

/** Why the library gives no value for saving. */
std::string WhyWithoutValue(const Setting& setting, const SettingStatus& status)
{
    const std::pair<bool, const char*> reasons[] = {
        {!setting.Record().CurrentValue, "without a value"},
        {status.Is(StatusRow::Protected), "protected"},
        {status.Is(StatusRow::Hidden), "hidden"},
        {status.Is(StatusRow::GrayOut), "grayed out"},
        {status.Is(StatusRow::Immutable), "immutable"},
    };
    for (const auto& [holds, word] : reasons) {
        if (holds) {
            return word;
        }
    }
    return "refused";
}

struct Saved {
    json::object Values;
    std::vector<LeftOut> Left;
};

Saved Collect(System& system, const SaveOptions& options)
{
    Saved saved;
    const std::map<std::string, std::string> texts = system.SaveValues(ActionOf(options, system));
    const std::vector<SettingStatus> status = system.AllStatus(Detail::Verdicts);
    for (std::size_t place = 0; place < status.size(); ++place) {
        const Setting& setting = system.Settings()[place];
        const auto text = texts.find(setting.Name());
        std::string reason = WhyUnwanted(setting, status[place], options.WithUnique);
        if (reason.empty() && text == texts.end()) {
            reason = WhyWithoutValue(setting, status[place]);
        }
        std::optional<json::value> value = reason.empty() ? TypedValue(setting, text->second) : std::nullopt;
        if (value) {
            saved.Values[setting.Name()] = std::move(*value);
        } else {
            saved.Left.push_back({setting.Name(), reason.empty() ? "not of its type" : reason});
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
    Saved saved = Collect(system, options);
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
