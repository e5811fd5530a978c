#include <RedfishConfig/RedfishConfigSetting.h>

#include "../LetterCase.h"
#include "AnswerOrCatch.h"
#include "PatchValue.h"

#include <algorithm>

namespace RedfishConfig {

namespace {

constexpr char className[] = "RedfishConfigEnumerateSetting";

} // namespace

RedfishConfigEnumerateSetting::RedfishConfigEnumerateSetting(const RedfishConfigSettingInfoStru& info,
                                                             const Config_Options& options)
    : RedfishConfigSetting(info, options)
{
}

RedfishConfigEnumerateSetting::RedfishConfigEnumerateSetting(const RegistryEntry& entry, const Config_Options& options,
                                                             ForManager marker)
    : RedfishConfigSetting(entry, options, marker)
{
}

RedfishConfigEnumerateSetting::RedfishConfigEnumerateSetting(const RedfishConfigEnumerateSetting& other) = default;
RedfishConfigEnumerateSetting::~RedfishConfigEnumerateSetting() = default;

RedfishConfigResult RedfishConfigEnumerateSetting::GetSettingValidValues(std::string& validValues,
                                                                         const filterAction& action)
{
    const auto writeBody = [this](std::string& answer) {
        std::optional<std::string> defaultText;
        if (Info().DefaultValue) {
            defaultText = GetOptionalVarAsString(Info().DefaultValue);
            answer += "<" + *defaultText + ">";
        }
        for (const auto& [name, displayName] : Info().Value) {
            if (name == defaultText) {
                continue;
            }
            if (!answer.empty()) {
                answer += "=";
            }
            answer += name;
        }
        for (const auto& [name, displayName] : Info().Value) {
            if (name != displayName) {
                answer.append("\n\t[").append(name).append("] : ").append(displayName);
            }
        }
        return RESULT_SUCCEED;
    };
    return AnswerValidValues(validValues, action, className, writeBody);
}

RedfishConfigResult RedfishConfigEnumerateSetting::CheckNewValueIsValid(std::string& newValue, std::string& errMsg)
{
    return AnswerOrCatch(className, "CheckNewValueIsValid", [&]() -> RedfishConfigResult {
        if (Info().Value.empty()) {
            errMsg = "Enumerate setting " + Info().AttributeName.value() + " has no valid value.";
            return RESULT_NEW_VALUE_INVALID;
        }
        const std::string wanted = ConvertValueToCommonValue(newValue);
        const auto match = std::find_if(Info().Value.begin(), Info().Value.end(), [&](const auto& choice) {
            const auto& [name, displayName] = choice;
            return ConvertValueToCommonValue(name) == wanted ||
                   (name != displayName && ConvertValueToCommonValue(displayName) == wanted);
        });
        if (match == Info().Value.end()) {
            errMsg = "value " + newValue + " is not a valid value for setting " + Info().AttributeName.value() + ".\n";
            errMsg += "Acceptable values include:";
            for (const auto& [name, displayName] : Info().Value) {
                errMsg.append(" <").append(name).append(">");
            }
            errMsg += ".";
            return RESULT_NEW_VALUE_INVALID;
        }
        newValue = match->first;
        return RedfishConfigSetting::CheckNewValueIsValid(newValue, errMsg);
    });
}

std::string RedfishConfigEnumerateSetting::ConvertValueToCommonValue(const std::string& value)
{
    std::string common = LowerCopy(value);
    if (common == "enable" || common == "disable") {
        common += "d";
    }
    return common;
}

std::string RedfishConfigEnumerateSetting::GeneratePatchContext(const std::string& value)
{
    return PatchText(value);
}

} // namespace RedfishConfig
