#include "Commands.h"

#include "../Refusals.h"
#include "app/RestoreReport.h"
#include "app/SavedSystem.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>

#include <memory>
#include <string>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

json::array ToJson(const std::vector<NotRestored>& remarks)
{
    json::array list;
    for (const NotRestored& remark : remarks) {
        list.push_back(remark.Reason.empty() ? json::object{{"name", remark.Name}}
                                             : json::object{{"name", remark.Name}, {"reason", remark.Reason}});
    }
    return list;
}

void Complain(const RestoreReport& report, Output& output)
{
    output.Complain("restored " + std::to_string(report.Restored) + ", already so " + std::to_string(report.AlreadySo) +
                    ", skipped " + std::to_string(report.Skipped.size()) + ", unknown here " +
                    std::to_string(report.Unknown.size()) + ", invalid here " + std::to_string(report.Invalid.size()));
    for (const NotRestored& remark : report.Skipped) {
        output.Complain("skipped " + remark.Name + ": " + remark.Reason);
    }
    for (const NotRestored& remark : report.Unknown) {
        output.Complain("unknown here: " + remark.Name);
    }
    for (const NotRestored& remark : report.Invalid) {
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
    const RestoreReport report = ReportRestore(saved.Values, system, options.Scope);
    Complain(report, output);
    ComplainOfDoubts(report.Doubtful, output);
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
    return report.IsComplete() ? ExitCode::Answered : ExitCode::Refused;
}

Runner AttachRestore(CLI::App& command)
{
    auto options = std::make_shared<RestoreOptions>();
    command.add_option("FILE", options->File, "A saved system, a Bios resource, or an object of names and values")
        ->type_name("")
        ->required();
    command.add_flag("--with-unique", options->Scope.WithUnique, "Restore what belongs to one system too");
    command.add_flag("--full", options->Scope.Full, "Give the values that are already so too");
    return [options](System& system, Output& output) { return RunRestore(system, *options, output); };
}

} // namespace RedfishConfigTool
