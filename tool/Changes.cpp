#include "Changes.h"

#include "Refusals.h"

#include <boost/json/object.hpp>

#include <string>

namespace RedfishConfigTool {

namespace json = boost::json;

void AddToBody(Answer& answer, PatchBody& body)
{
    if (answer.Ok()) {
        const std::string defect = body.Add(*answer.Subject, answer.Text);
        if (!defect.empty()) {
            answer.Result = {RedfishConfig::RESULT_NEW_VALUE_INVALID, defect};
            answer.Reason = defect;
        }
    }
}

ExitCode WriteChanges(const PatchBody& body, bool withBody, const std::vector<Answer>& answers, const System& system,
                      Output& output)
{
    const bool isSecret = withBody && body.HasPassword() && output.Terminal();
    if (isSecret) {
        output.Complain("the body carries a password, which no screen shows: redirect the output");
    }
    const bool shown = withBody && !isSecret;
    if (output.Json()) {
        output.Write(json::object{{"body", shown ? json::value(body.ToJson()) : json::value(nullptr)},
                                  {"refused", RefusalsToJson(answers, system)}});
    } else if (shown) {
        output.Write(body.ToJson());
    }
    return shown ? ExitCodeOf(answers) : ExitCode::Refused;
}

} // namespace RedfishConfigTool
