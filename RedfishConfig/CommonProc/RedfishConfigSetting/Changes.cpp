#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"
#include "AnswerOrCatch.h"
#include "RestoreAction.h"

#include <utility>

// How one setting takes part in a change of the system: patch, save and restore.

namespace RedfishConfig {

namespace {

constexpr char className[] = "RedfishConfigSetting";

} // namespace

RedfishConfigResult RedfishConfigSetting::AdmitNewValue(std::string& value, const filterAction& action, int refusalCode,
                                                        std::string& reason)
{
    if (!filter(action)) {
        RedfishConfigResult refusal = Refuse(refusalCode, OperationFailsSince);
        reason = m_ErrMsg;
        return refusal;
    }
    const std::string asGiven = value;
    RedfishConfigResult verdict = CheckNewValueIsValid(value, reason);
    if (verdict != RESULT_SUCCEED) {
        verdict.SetErrorMsg("New value " + asGiven + " is invalid: " + reason);
        LOG_LINE(LogDefect) << verdict.ErrorMsg();
    }
    return verdict;
}

RedfishConfigResult RedfishConfigSetting::PreparePatch(const std::string& newValue, const filterAction& action,
                                                       const std::function<void(std::string&& text)>& take)
{
    return AnswerOrCatch(className, "PreparePatchContext", [&]() -> RedfishConfigResult {
        std::string value = newValue;
        std::string reason;
        RedfishConfigResult verdict = AdmitNewValue(value, action, RESULT_CHANGE_SETTING_FAILED, reason);
        if (verdict != RESULT_SUCCEED) {
            return verdict;
        }
        take(GeneratePatchContext(value));
        return RESULT_SUCCEED;
    });
}

RedfishConfigResult RedfishConfigSetting::PreparePatchContext(const std::string& newValue, std::string& patchContext,
                                                              const filterAction& action)
{
    return PreparePatch(newValue, action, [&](std::string&& text) { patchContext = std::move(text); });
}

RedfishConfigResult RedfishConfigSetting::PreparePatchContext(const std::string& newValue,
                                                              std::map<std::string, std::string>& patchContexts,
                                                              const filterAction& action)
{
    return PreparePatch(newValue, action, [&](std::string&& text) {
        patchContexts.emplace(Info().AttributeName.value(), std::move(text));
    });
}

RedfishConfigResult RedfishConfigSetting::FetchSaveSettingValues(std::string& value, const filterAction& action)
{
    return AnswerOrCatch(className, "FetchSaveSettingValues", [&]() -> RedfishConfigResult {
        if (!filter(action)) {
            return Refuse(RESULT_SHOW_VALUE_FAILED, OperationFailsSince);
        }
        if (!m_CurrentValue) {
            LOG_LINE(LogDetail) << "The current value of setting " << Info().AttributeName.value_or("")
                                << " is invalid.";
            return RESULT_PROPERTY_INVALID;
        }
        value = GetOptionalVarAsString(m_CurrentValue); // never in hexadecimal: files outlive display options
        return RESULT_SUCCEED;
    });
}

RedfishConfigResult RedfishConfigSetting::FetchRestoreSettingValues(const std::string& key, const std::string& value,
                                                                    std::map<std::string, std::string>& errors,
                                                                    bool admitSystemUnique)
{
    return AnswerOrCatch(className, "FetchRestoreSettingValues", [&]() -> RedfishConfigResult {
        std::string copy = value;
        std::string reason;
        RedfishConfigResult verdict =
            AdmitNewValue(copy, RestoreAction(admitSystemUnique), RESULT_SETTING_FILTERED, reason);
        if (verdict != RESULT_SUCCEED) {
            errors[key] = reason;
        }
        return verdict;
    });
}

} // namespace RedfishConfig
