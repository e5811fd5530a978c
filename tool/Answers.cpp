#include "Answers.h"

#include "Refusals.h"
#include "Text.h"

#include <boost/json/object.hpp>

#include <string>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

std::vector<Answer> AskSelected(System& system, const Selection& selection, Question question)
{
    std::vector<Answer> answers;
    if (selection.All) {
        answers = system.AskAll(question, Detail::Reasons);
    }
    for (const std::string& name : selection.Names) {
        answers.push_back(system.Ask(question, name));
    }
    for (Answer& answer : answers) {
        if (answer.Concealed) { // a mask in place of a value could be taken for one by a program
            answer.Result = {RedfishConfig::RESULT_SHOW_VALUE_FAILED, system.PasswordRefusal(answer.Name)};
            answer.Reason = "a password is never shown";
        }
    }
    return answers;
}

/** What an answer hangs on; empty when it is certain. */
const std::string& DoubtAbout(const Answer& answer)
{
    return answer.DoubtAboutValue.empty() ? answer.DoubtAboutDefault : answer.DoubtAboutValue;
}

} // namespace

ExitCode RunQuestion(System& system, const Selection& selection, const AnswerShape& shape, Output& output)
{
    const std::vector<Answer> answers = AskSelected(system, selection, shape.Asked);
    if (output.Json()) {
        json::object byName, doubts;
        for (const Answer& answer : answers) {
            if (answer.Ok()) {
                byName[answer.Subject->Name()] = shape.ToJson(answer, system.Options());
            }
            const std::string& doubt = DoubtAbout(answer);
            if (answer.Ok() && !doubt.empty()) {
                doubts[answer.Subject->Name()] = doubt;
            }
        }
        json::object all{{shape.JsonKey, std::move(byName)}, {"refused", RefusalsToJson(answers, system)}};
        if (shape.Asked == Question::Choices || shape.Asked == Question::Default) {
            all["uncertain"] = std::move(doubts);
        }
        output.Write(std::move(all));
    } else {
        bool isFirst = true;
        for (const Answer& answer : answers) {
            if (answer.Ok()) {
                shape.Print(answer, isFirst, output);
                isFirst = false;
            }
        }
    }
    if (shape.Asked == Question::Default) { // the text of choices says so itself
        ComplainOfDoubts(answers, output);
    }
    if (selection.All) {
        ComplainByReason(answers, "not answered", output);
    } else {
        ComplainOfEach(answers, system, output);
    }
    return ExitCodeOf(answers);
}

json::value TextToJson(const Answer& answer, const SystemOptions& /*options*/)
{
    return json::string(answer.Text);
}

json::value ValueToJson(const Answer& answer, const SystemOptions& options)
{
    if (!answer.Ok() || answer.Concealed) {
        return nullptr;
    }
    const bool asText = !answer.Held || (options.Hex && RedfishConfig::IsNumSetting(answer.Held));
    return asText ? json::value(answer.Text) : RedfishConfig::VariantToJson(*answer.Held);
}

void PrintAssignment(const Answer& answer, bool /*isFirst*/, Output& output)
{
    output.Answers() << Escape(answer.Subject->Name()) << '=' << Escape(answer.Text) << '\n';
}

} // namespace RedfishConfigTool
