#include "Commands.h"

#include "../Changes.h"
#include "../Refusals.h"
#include "app/Assignments.h"
#include "app/Input.h"

#include <CLI/App.hpp>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>

namespace RedfishConfigTool {

namespace {

/**
 * Splits NAME=VALUE arguments at their first "=". No complaint repeats an argument: it may hold a password.
 *
 * @throws UsageError for an argument without a name or "=", or a name that stands twice.
 */
std::vector<Assignment> ParseAssignments(const std::vector<std::string>& arguments)
{
    std::vector<Assignment> assignments;
    std::set<std::string, RedfishConfig::CaseInsensitiveComparator> names;
    for (const std::string& argument : arguments) {
        std::optional<Assignment> assignment = ParseAssignment(argument);
        if (!assignment) {
            throw UsageError("set: argument " + std::to_string(assignments.size() + 1) + " is not NAME=VALUE");
        }
        if (!names.insert(assignment->Name).second) {
            throw UsageError("set: " + assignment->Name + " stands there twice");
        }
        assignments.push_back(std::move(*assignment));
    }
    return assignments;
}

/** The file's assignments without those that the command line makes too, then those of the command line. */
std::vector<Assignment> AllAssignments(const SetOptions& options)
{
    std::vector<Assignment> given = ParseAssignments(options.Assignments);
    std::vector<Assignment> all;
    if (!options.From.empty()) {
        const RedfishConfig::CaseInsensitiveComparator before;
        for (Assignment& read : ReadAssignments(options.From)) {
            const bool isReplaced = std::any_of(given.begin(), given.end(), [&](const Assignment& other) {
                return !before(read.Name, other.Name) && !before(other.Name, read.Name);
            });
            if (!isReplaced) {
                all.push_back(std::move(read));
            }
        }
    }
    std::move(given.begin(), given.end(), std::back_inserter(all));
    return all;
}

Answer Prepare(System& system, const Assignment& assignment, RedfishConfig::filterAction action)
{
    if (assignment.Value) {
        return system.PreparePatch(assignment.Name, ValueToCheck(assignment, system), action);
    }
    return Refusal(assignment.Name, system.Find(assignment.Name), RedfishConfig::RESULT_NEW_VALUE_INVALID,
                   assignment.Defect, assignment.Defect);
}

} // namespace

ExitCode RunSet(System& system, const SetOptions& options, Output& output)
{
    const auto action = options.From.empty() ? RedfishConfig::FILTER_PATCH : RedfishConfig::FILTER_PATCH_FROM_FILE;
    const std::vector<Assignment> assignments = AllAssignments(options);
    const auto isFromInput = [&](const Assignment& assignment) { return IsFromStandardInput(assignment, system); };
    if (std::count_if(assignments.begin(), assignments.end(), isFromInput) > 1) {
        throw InputError("set: only one value can be read from standard input");
    }
    PatchBody body;
    std::vector<Answer> answers;
    for (const Assignment& assignment : assignments) {
        answers.push_back(Prepare(system, assignment, action));
        AddToBody(answers.back(), body);
    }
    ComplainOfEach(answers, system, output);
    ComplainOfDoubts(answers, output);
    const bool allAccepted = ExitCodeOf(answers) == ExitCode::Answered;
    if (!allAccepted && !options.Partial) {
        output.Complain("no body is given, as something was refused; --partial gives the rest");
    }
    return WriteChanges(body, allAccepted || (options.Partial && !body.Empty()), answers, system, output);
}

Runner AttachSet(CLI::App& command)
{
    auto options = std::make_shared<SetOptions>();
    command
        .add_option("NAME=VALUE", options->Assignments, "New values; that of a password may be @FILE, or - for stdin")
        ->type_name("");
    command.add_option("--from", options->From, "Read new values from NAME=VALUE lines or a JSON object")
        ->type_name("FILE");
    command.add_flag("--partial", options->Partial, "Give the accepted values although others are refused");
    command.final_callback([options] {
        if (options->Assignments.empty() && options->From.empty()) {
            throw UsageError("set: give NAME=VALUE, or --from FILE");
        }
        ParseAssignments(options->Assignments); // so that a wrong one is wrong usage
    });
    return [options](System& system, Output& output) { return RunSet(system, *options, output); };
}

} // namespace RedfishConfigTool
