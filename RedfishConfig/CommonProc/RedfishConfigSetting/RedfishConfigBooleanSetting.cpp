#include <RedfishConfig/RedfishConfigSetting.h>

#include "../LetterCase.h"
#include "PatchValue.h"

namespace RedfishConfig {

RedfishConfigBooleanSetting::RedfishConfigBooleanSetting(const RedfishConfigSettingInfoStru& info,
                                                         const Config_Options& options)
    : RedfishConfigSetting(info, options)
{
}

RedfishConfigBooleanSetting::RedfishConfigBooleanSetting(const RegistryEntry& entry, const Config_Options& options,
                                                         ForManager marker)
    : RedfishConfigSetting(entry, options, marker)
{
}

RedfishConfigBooleanSetting::RedfishConfigBooleanSetting(const RedfishConfigBooleanSetting& other) = default;
RedfishConfigBooleanSetting::~RedfishConfigBooleanSetting() = default;

RedfishConfigResult RedfishConfigBooleanSetting::GetSettingValidValues(std::string& validValues,
                                                                       const filterAction& action)
{
    const auto writeBody = [this](std::string& answer) {
        if (!Info().DefaultValue) {
            answer += "true=false";
            return RESULT_SUCCEED;
        }
        const std::string defaultText = GetOptionalVarAsString(Info().DefaultValue);
        const std::string upperCase = UpperCopy(defaultText);
        answer += "<" + defaultText + ">";
        answer += upperCase == "TRUE" ? "=false" : upperCase == "FALSE" ? "=true" : "=true=false";
        return RESULT_SUCCEED;
    };
    return AnswerValidValues(validValues, action, "RedfishConfigBooleanSetting", writeBody);
}

RedfishConfigResult RedfishConfigBooleanSetting::CheckNewValueIsValid(std::string& newValue, std::string& errMsg)
{
    if (IsDefault(newValue)) {
        return RESULT_SUCCEED;
    }
    newValue = LowerCopy(newValue);
    if (newValue == "true" || newValue == "false") {
        return RESULT_SUCCEED;
    }
    errMsg = "Acceptable values include: Only true and false.";
    return RESULT_NEW_VALUE_INVALID;
}

std::string RedfishConfigBooleanSetting::GeneratePatchContext(const std::string& value)
{
    return PatchLiteral(value);
}

} // namespace RedfishConfig
