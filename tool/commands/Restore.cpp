#include "Commands.h"

#include "../PatchBody.h"
#include "../Refusals.h"
#include "../SavedSystem.h"
#include "../Text.h"
#include "../TypedValue.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

/** A setting and what keeps it from being restored. */
struct Remark {
    std::string Name;
    std::string Reason;
};

/** What becomes of the values of a file. */
struct Report {
    PatchBody Body;
    std::size_t Restored = 0;
    std::size_t AlreadySo = 0;
    std::vector<Remark> Skipped;
    std::vector<Remark> Unknown;
    std::vector<Remark> Invalid;
};

bool IsAlreadySo(const Setting& setting, const std::string& value, const System& system)
{
    const auto& current = setting.Record().CurrentValue;
    return current && system.AreSame(setting, PlainText(*current), value);
}

/** The values that the library is to look at; what it need not see goes into the report. */
std::map<std::string, std::string> Sort(const std::vector<Assignment>& values, const System& system, bool full,
                                        Report& report)
{
    std::map<std::string, std::string> candidates;
    for (const Assignment& saved : values) {
        const Setting* setting = system.Find(saved.Name);
        if (setting == nullptr) {
            report.Unknown.push_back({saved.Name, ""});
        } else if (setting->IsPassword()) {
            report.Skipped.push_back({saved.Name, "a password is never restored from a file"});
        } else if (saved.IsNull && setting->Record().CurrentValue) {
            report.Skipped.push_back({saved.Name, "the file has no value for it"});
        } else if (!saved.IsNull && !saved.Value) {
            report.Invalid.push_back({saved.Name, saved.Defect});
        } else if (saved.IsNull || (!full && IsAlreadySo(*setting, *saved.Value, system))) {
            ++report.AlreadySo;
        } else {
            candidates.emplace(saved.Name, *saved.Value);
        }
    }
    return candidates;
}

void TakeAccepted(const Restored& restored, const System& system, bool full, Report& report)
{
    for (const auto& [name, patchText] : restored.PatchTexts) {
        const Setting& setting = *system.Find(name);
        const std::string defect = report.Body.Add(setting, patchText);
        if (!defect.empty()) {
            report.Invalid.push_back({name, defect});
            continue;
        }
        const auto& current = setting.Record().CurrentValue;
        // the library may have found another spelling of the value that is there
        const bool same = current && TypedValue(setting, PlainText(*current)) == *report.Body.Find(setting);
        ++(same ? report.AlreadySo : report.Restored);
        if (same && !full) {
            report.Body.Remove(setting);
        }
    }
}

void TakeRefused(const Restored& restored, const std::map<std::string, std::string>& candidates, const System& system,
                 Report& report)
{
    for (const auto& [name, value] : candidates) {
        const auto refusal = restored.Refused.find(name);
        const Setting& setting = *system.Find(name);
        if (refusal == restored.Refused.end()) {
            if (report.Body.Find(setting) == nullptr && restored.PatchTexts.count(setting.Name()) == 0) {
                report.Invalid.push_back({name, "the library gives no reason"});
            }
            continue;
        }
        if (IsAlreadySo(setting, value, system)) {
            ++report.AlreadySo; // asked for with --full alone
            continue;
        }
        (refusal->second.IsFiltered ? report.Skipped : report.Invalid).push_back({name, refusal->second.Reason});
    }
}

json::array ToJson(const std::vector<Remark>& remarks)
{
    json::array list;
    for (const Remark& remark : remarks) {
        list.push_back(remark.Reason.empty() ? json::object{{"name", remark.Name}}
                                             : json::object{{"name", remark.Name}, {"reason", remark.Reason}});
    }
    return list;
}

void Complain(const Report& report, Output& output)
{
    output.Complain("restored " + std::to_string(report.Restored) + ", already so " + std::to_string(report.AlreadySo) +
                    ", skipped " + std::to_string(report.Skipped.size()) + ", unknown here " +
                    std::to_string(report.Unknown.size()) + ", invalid here " + std::to_string(report.Invalid.size()));
    for (const Remark& remark : report.Skipped) {
        output.Complain("skipped " + remark.Name + ": " + remark.Reason);
    }
    for (const Remark& remark : report.Unknown) {
        output.Complain("unknown here: " + remark.Name);
    }
    for (const Remark& remark : report.Invalid) {
        output.Complain("invalid here: " + remark.Name + ": " + remark.Reason);
    }
}

void WarnOfAnotherRegistry(const json::object& saved, const System& system, Output& output)
{
    const json::value* there = saved.if_contains("Id");
    const json::object identity = system.Identity();
    const json::value* here = identity.if_contains("Id");
    if (there != nullptr && there->is_string() && here != nullptr && *there != *here) {
        output.Complain("the file was saved with another registry, " + std::string(there->get_string()) +
                        ", than this system's, " + std::string(here->get_string()));
    }
}

} // namespace

ExitCode RunRestore(System& system, const RestoreOptions& options, Output& output)
{
    const SavedValues saved = ReadSavedValues(options.File);
    WarnOfAnotherRegistry(saved.Registry, system, output);
    Report report;
    const std::map<std::string, std::string> candidates = Sort(saved.Values, system, options.Full, report);
    const Restored restored = system.Restore(candidates, options.WithUnique);
    TakeAccepted(restored, system, options.Full, report);
    TakeRefused(restored, candidates, system, report);
    Complain(report, output);
    ComplainOfDoubts(restored.Doubtful, output);
    if (output.Json()) {
        output.Write(json::object{{"body", report.Body.ToJson()},
                                  {"report",
                                   {{"restored", report.Restored},
                                    {"alreadySo", report.AlreadySo},
                                    {"skipped", ToJson(report.Skipped)},
                                    {"unknown", ToJson(report.Unknown)},
                                    {"invalid", ToJson(report.Invalid)}}}});
    } else {
        output.Write(report.Body.ToJson());
    }
    const bool all = report.Skipped.empty() && report.Unknown.empty() && report.Invalid.empty();
    return all ? ExitCode::Answered : ExitCode::Refused;
}

Runner AttachRestore(CLI::App& command)
{
    auto options = std::make_shared<RestoreOptions>();
    command.add_option("FILE", options->File, "A saved system, a Bios resource, or an object of names and values")
        ->type_name("")
        ->required();
    command.add_flag("--with-unique", options->WithUnique, "Restore what belongs to one system too");
    command.add_flag("--full", options->Full, "Give the values that are already so too");
    return [options](System& system, Output& output) { return RunRestore(system, *options, output); };
}

} // namespace RedfishConfigTool
