#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"
#include "AnswerOrCatch.h"

#include <cctype>

namespace RedfishConfig {

namespace {

constexpr char className[] = "RedfishConfigSetting";

} // namespace

std::string RedfishConfigSetting::OperationFailsSince(const std::string& name)
{
    return "The operation on setting " + name + " fails since ";
}

RedfishConfigResult RedfishConfigSetting::Refuse(int code, RefusalWords refusalWords)
{
    m_ErrMsg = refusalWords(Info().AttributeName.value()) + m_ErrMsg;
    LOG_LINE(LogDetail) << "m_ErrMsg:" << m_ErrMsg;
    return {code, m_ErrMsg};
}

RedfishConfigResult RedfishConfigSetting::OpenQuery(const filterAction& action, RefusalWords refusalWords)
{
    if (!filter(action)) {
        return Refuse(RESULT_SHOW_VALUE_FAILED, refusalWords);
    }
    const std::string& name = Info().AttributeName.value();
    if (name.empty()) {
        LOG_LINE(LogDefect) << "Setting " << name << " property error.";
        return RESULT_PROPERTY_INVALID;
    }
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigSetting::RefuseAsMissing(const char* what)
{
    m_ErrMsg = OperationFailsSince(Info().AttributeName.value()) + "it has no " + what + ".";
    return {RESULT_PROPERTY_NOT_EXIST, m_ErrMsg};
}

RedfishConfigResult RedfishConfigSetting::GetSettingValue(std::string& value, const filterAction& action)
{
    return AnswerOrCatch(className, "GetSettingValue", [&]() -> RedfishConfigResult {
        RedfishConfigResult opening = OpenQuery(action, OperationFailsSince);
        if (opening != RESULT_SUCCEED) {
            return opening;
        }
        if (!m_CurrentValue) {
            RedfishConfigResult missing = RefuseAsMissing("current value");
            LOG_LINE(LogDetail) << "m_ErrMsg:" << m_ErrMsg;
            return missing;
        }
        value = GetOptionalAsHexStr(m_CurrentValue);
        return RESULT_SUCCEED;
    });
}

RedfishConfigResult RedfishConfigSetting::GetSettingDefaultValue(std::string& value, const filterAction& action)
{
    return AnswerOrCatch(className, "GetSettingDefaultValue", [&]() -> RedfishConfigResult {
        RedfishConfigResult opening = OpenQuery(action, OperationFailsSince);
        if (opening != RESULT_SUCCEED) {
            return opening;
        }
        if (!Info().DefaultValue) {
            RedfishConfigResult missing = RefuseAsMissing("default value");
            LOG_LINE(LogDefect) << m_ErrMsg;
            return missing;
        }
        value = GetOptionalAsHexStr(Info().DefaultValue);
        return RESULT_SUCCEED;
    });
}

RedfishConfigResult RedfishConfigSetting::GetSettingDescription(std::string& description, const filterAction& action)
{
    return AnswerOrCatch(className, "GetSettingDescription", [&]() -> RedfishConfigResult {
        RedfishConfigResult opening = OpenQuery(action, OperationFailsSince);
        if (opening != RESULT_SUCCEED) {
            return opening;
        }
        if (!Info().HelpText) {
            RedfishConfigResult missing = RefuseAsMissing("description");
            LOG_LINE(LogDefect) << m_ErrMsg;
            return missing;
        }
        const std::string& title = Info().DisplayName ? *Info().DisplayName : Info().AttributeName.value();
        description = title + "\n\nHelp for " + title + "\n--------------------------\n" + *Info().HelpText;
        return RESULT_SUCCEED;
    });
}

RedfishConfigResult RedfishConfigSetting::AnswerValidValues(
    std::string& validValues, const filterAction& action, const char* typedClassName,
    const std::function<RedfishConfigResult(std::string& answer)>& writeBody, RefusalWords refusalWords)
{
    return AnswerOrCatch(typedClassName, "GetSettingValidValues", [&]() -> RedfishConfigResult {
        RedfishConfigResult opening = OpenQuery(action, refusalWords);
        if (opening != RESULT_SUCCEED) {
            return opening;
        }
        std::string answer;
        RedfishConfigResult body = writeBody(answer);
        if (body != RESULT_SUCCEED) {
            return body;
        }
        if (!m_ErrMsg.empty()) {
            std::string reason = m_ErrMsg;
            reason[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(reason[0])));
            answer += "\n\t" + reason;
        }
        validValues = std::move(answer);
        return RESULT_SUCCEED;
    });
}

} // namespace RedfishConfig
