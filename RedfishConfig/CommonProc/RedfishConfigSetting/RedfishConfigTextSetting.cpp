#include <RedfishConfig/RedfishConfigSetting.h>

#include "AnswerOrCatch.h"
#include "PatchValue.h"

namespace RedfishConfig {

namespace {

constexpr char className[] = "RedfishConfigTextSetting";

} // namespace

RedfishConfigTextSetting::RedfishConfigTextSetting(const RedfishConfigSettingInfoStru& info,
                                                   const Config_Options& options)
    : RedfishConfigSetting(info, options)
{
}

RedfishConfigTextSetting::RedfishConfigTextSetting(const RegistryEntry& entry, const Config_Options& options,
                                                   ForManager marker)
    : RedfishConfigSetting(entry, options, marker)
{
}

RedfishConfigTextSetting::RedfishConfigTextSetting(const RedfishConfigTextSetting& other) = default;
RedfishConfigTextSetting::~RedfishConfigTextSetting() = default;

RedfishConfigResult RedfishConfigTextSetting::GetSettingValidValues(std::string& validValues,
                                                                    const filterAction& action)
{
    return AnswerValidValues(validValues, action, className,
                             [this](std::string& answer) { return DescribeTextLimits("String ", answer); });
}

RedfishConfigResult RedfishConfigTextSetting::CheckNewValueIsValid(std::string& newValue, std::string& errMsg)
{
    return AnswerOrCatch(className, "CheckNewValueIsValid", [&]() -> RedfishConfigResult {
        if (IsDefault(newValue)) {
            return RESULT_SUCCEED;
        }
        RedfishConfigResult length = CheckLength(newValue, errMsg);
        if (length == RESULT_PROPERTY_INVALID) {
            errMsg = "BMC data error.";
        }
        if (length != RESULT_SUCCEED) {
            return length;
        }
        return static_cast<int>(RedfishConfigSetting::CheckNewValueIsValid(newValue, errMsg));
    });
}

std::string RedfishConfigTextSetting::GeneratePatchContext(const std::string& value)
{
    return PatchText(value);
}

} // namespace RedfishConfig
