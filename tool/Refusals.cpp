#include "Refusals.h"

#include "Text.h"
#include "app/Suggest.h"
#include "common/Ascii.h"
#include "common/Texts.h"

#include <boost/json/object.hpp>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>

namespace RedfishConfigTool {

namespace Ascii = RedfishConfig::Ascii;

namespace {

/** So many names that are not found get suggestions, each of which is looked for among all names. */
constexpr std::size_t mostSuggestions = 20;

bool IsNotFound(const Answer& answer)
{
    return answer.Result == RedfishConfig::RESULT_SETTING_NOT_FOUND;
}

/** A text about an answer; what is not found may be NAME=VALUE that was given to a command for names. */
std::string Shown(std::string text, const Answer& answer)
{
    const bool hasValue = IsNotFound(answer) && answer.Name.find('=') != std::string::npos;
    return hasValue ? RedfishConfig::Texts::ReplaceAll(std::move(text), answer.Name, WithoutValue(answer.Name)) : text;
}

/** @param left how many names may still get suggestions */
std::vector<std::string> Suggestions(const Answer& answer, const System& system, std::size_t& left)
{
    if (!IsNotFound(answer) || left == 0) {
        return {};
    }
    --left;
    std::vector<std::string> names;
    for (const Setting& setting : system.Settings()) {
        names.push_back(setting.Name());
    }
    return NearestNames(answer.Name.substr(0, answer.Name.find('=')), names);
}

/** Whether a name is a word of the message: "Up" is none of "UpperBound". */
bool IsNamed(const std::string& message, const std::string& name)
{
    const auto isPartOfWord = [&](std::size_t place) {
        const auto character = static_cast<unsigned char>(message[place]);
        return std::isalnum(character) != 0 || character == '_';
    };
    for (std::size_t found = message.find(name); found != std::string::npos; found = message.find(name, found + 1)) {
        const std::size_t end = found + name.size();
        if ((found == 0 || !isPartOfWord(found - 1)) && (end == message.size() || !isPartOfWord(end))) {
            return true;
        }
    }
    return false;
}

/**
 * The message, with the setting's name before it when it is not in it.
 *
 * @param inAnyCase whether the name may be spelled in another way than the caller's
 */
std::string Sentence(const Answer& answer, bool inAnyCase)
{
    const std::string& message = answer.Result.ErrorMsg();
    const bool isNamed = inAnyCase ? IsNamed(Ascii::ToLower(message), Ascii::ToLower(answer.Name))
                                   : message.find(answer.Name) != std::string::npos;
    return RedfishConfig::Texts::ReplaceAll(isNamed ? message : answer.Name + ": " + message, ".\n",
                                            ". "); // some have two lines
}

/** "A, B, C". */
std::string JoinNames(const std::vector<const Answer*>& answers)
{
    std::string names;
    for (const Answer* answer : answers) {
        names += (names.empty() ? "" : ", ") + answer->Name;
    }
    return names;
}

} // namespace

void ComplainOfEach(const std::vector<Answer>& answers, const System& system, Output& output)
{
    std::size_t left = mostSuggestions;
    for (const Answer& answer : answers) {
        if (!answer.Ok()) {
            output.Complain(Shown(Sentence(answer, system.TellsRules()), answer) +
                            DidYouMean(Suggestions(answer, system, left)));
        }
    }
}

void ComplainByReason(const std::vector<Answer>& answers, const char* what, Output& output)
{
    std::vector<std::string> reasons; // as first met
    std::map<std::string, std::vector<const Answer*>> refused;
    for (const Answer& answer : answers) {
        if (!answer.Ok()) {
            if (refused[answer.Reason].empty()) {
                reasons.push_back(answer.Reason);
            }
            refused[answer.Reason].push_back(&answer);
        }
    }
    for (const std::string& reason : reasons) {
        const std::vector<const Answer*>& sharing = refused[reason];
        if (sharing.size() == 1) {
            output.Complain(Sentence(*sharing.front(), false));
            continue;
        }
        output.Complain(Counted(sharing.size(), "setting") + " " + what + " (" + reason + "): " + JoinNames(sharing));
    }
}

void ComplainOfDoubts(const std::vector<Answer>& answers, Output& output)
{
    for (const ShownProperty& property : shownProperties) {
        std::vector<const Answer*> doubtful;
        std::string reason;
        for (const Answer& answer : answers) {
            const auto doubt = std::find_if(answer.Doubts.begin(), answer.Doubts.end(),
                                            [&](const auto& one) { return one.first == property.Row; });
            if (answer.Ok() && doubt != answer.Doubts.end()) {
                doubtful.push_back(&answer);
                reason = doubt->second;
            }
        }
        if (doubtful.size() == 1) {
            output.Complain("whether " + doubtful.front()->Name + " is " + property.Word + " is not known: " + reason);
        } else if (!doubtful.empty()) {
            output.Complain("whether " + Counted(doubtful.size(), "setting") + " are " + property.Word +
                            " is not known: " + JoinNames(doubtful));
        }
    }
    for (const Answer& answer : answers) {
        if (answer.Ok() && !answer.DoubtAboutValue.empty()) {
            output.Complain("which values " + answer.Name + " accepts is not certain: " + answer.DoubtAboutValue);
        }
        if (answer.Ok() && !answer.DoubtAboutDefault.empty()) {
            output.Complain("the default of " + answer.Name + " is not certain: " + answer.DoubtAboutDefault);
        }
    }
}

boost::json::array RefusalsToJson(const std::vector<Answer>& answers, const System& system)
{
    boost::json::array refusals;
    std::size_t left = mostSuggestions;
    for (const Answer& answer : answers) {
        if (!answer.Ok()) {
            boost::json::object refusal{{"name", Shown(answer.Name, answer)},
                                        {"code", static_cast<int>(answer.Result)},
                                        {"message", Shown(answer.Result.ErrorMsg(), answer)}};
            if (IsNotFound(answer)) {
                boost::json::array suggestions;
                for (const std::string& name : Suggestions(answer, system, left)) {
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
