#include "Refusals.h"

#include "Suggest.h"
#include "Text.h"

#include <boost/json/object.hpp>

#include <algorithm>
#include <map>
#include <string>

namespace RedfishConfigTool {

namespace {

std::vector<std::string> Suggestions(const Answer& answer, const System& system)
{
    if (answer.Result != RedfishConfig::RESULT_SETTING_NOT_FOUND) {
        return {};
    }
    std::vector<std::string> names;
    for (const Setting& setting : system.Settings()) {
        names.push_back(setting.Name());
    }
    return NearestNames(answer.Name, names);
}

/** The message, with the setting's name before it when it does not tell it. */
std::string Sentence(const Answer& answer)
{
    const std::string& message = answer.Result.ErrorMsg();
    const bool tells = message.find(answer.Name) != std::string::npos;
    return ReplaceAll(tells ? message : answer.Name + ": " + message, ".\n", ". "); // some have two lines
}

} // namespace

std::string ReasonOf(const Answer& answer)
{
    std::string reason = answer.Result.ErrorMsg();
    const std::string opening = "The operation on setting " + answer.Name + " fails since ";
    if (reason.compare(0, opening.size(), opening) == 0) {
        reason.erase(0, opening.size());
    }
    if (!reason.empty() && reason.back() == '.') {
        reason.pop_back();
    }
    return reason;
}

void ComplainOfEach(const std::vector<Answer>& answers, const System& system, Output& output)
{
    for (const Answer& answer : answers) {
        if (!answer.Ok()) {
            output.Complain(Sentence(answer) + DidYouMean(Suggestions(answer, system)));
        }
    }
}

void ComplainByReason(const std::vector<Answer>& answers, const char* what, Output& output)
{
    std::vector<std::string> reasons; // as first met
    std::map<std::string, std::vector<const Answer*>> refused;
    for (const Answer& answer : answers) {
        if (!answer.Ok()) {
            const std::string reason = ReasonOf(answer);
            if (refused[reason].empty()) {
                reasons.push_back(reason);
            }
            refused[reason].push_back(&answer);
        }
    }
    for (const std::string& reason : reasons) {
        const std::vector<const Answer*>& sharing = refused[reason];
        if (sharing.size() == 1) {
            output.Complain(Sentence(*sharing.front()));
            continue;
        }
        std::string line = Counted(sharing.size(), "setting") + " " + what + " (" + reason + ")";
        const char* separator = ": ";
        for (const Answer* answer : sharing) {
            line += separator + answer->Name;
            separator = ", ";
        }
        output.Complain(line);
    }
}

boost::json::array RefusalsToJson(const std::vector<Answer>& answers, const System& system)
{
    boost::json::array refusals;
    for (const Answer& answer : answers) {
        if (!answer.Ok()) {
            boost::json::object refusal{{"name", answer.Name},
                                        {"code", static_cast<int>(answer.Result)},
                                        {"message", answer.Result.ErrorMsg()}};
            if (answer.Result == RedfishConfig::RESULT_SETTING_NOT_FOUND) {
                boost::json::array suggestions;
                for (const std::string& name : Suggestions(answer, system)) {
                    suggestions.emplace_back(name);
                }
                refusal["suggestions"] = std::move(suggestions);
            }
            refusals.push_back(std::move(refusal));
        }
    }
    return refusals;
}

ExitCode ExitCodeOf(const std::vector<Answer>& answers)
{
    const bool all = std::all_of(answers.begin(), answers.end(), [](const Answer& answer) { return answer.Ok(); });
    return all ? ExitCode::Answered : ExitCode::Refused;
}

} // namespace RedfishConfigTool
