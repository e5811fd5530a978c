#include <RedfishConfig/RedfishConfigSetting.h>

#include "AnswerOrCatch.h"
#include "PatchValue.h"

namespace RedfishConfig {

namespace {

constexpr char className[] = "RedfishConfigPasswordSetting";

/** A password words the refusal of its valid values in its own way; callers compare the text. */
std::string NameAndColon(const std::string& name)
{
    return name + " : ";
}

} // namespace

RedfishConfigPasswordSetting::RedfishConfigPasswordSetting(const RedfishConfigSettingInfoStru& info,
                                                           const Config_Options& options)
    : RedfishConfigSetting(info, options)
{
}

RedfishConfigPasswordSetting::RedfishConfigPasswordSetting(const RegistryEntry& entry, const Config_Options& options,
                                                           ForManager marker)
    : RedfishConfigSetting(entry, options, marker)
{
}

RedfishConfigPasswordSetting::RedfishConfigPasswordSetting(const RedfishConfigPasswordSetting& other) = default;
RedfishConfigPasswordSetting::~RedfishConfigPasswordSetting() = default;

RedfishConfigResult RedfishConfigPasswordSetting::GetSettingValidValues(std::string& validValues,
                                                                        const filterAction& action)
{
    return AnswerValidValues(
        validValues, action, className, [this](std::string& answer) { return DescribeTextLimits("Password ", answer); },
        NameAndColon);
}

RedfishConfigResult RedfishConfigPasswordSetting::CheckNewValueIsValid(std::string& newValue, std::string& errMsg)
{
    return AnswerOrCatch(className, "CheckNewValueIsValid", [&]() -> RedfishConfigResult {
        if (IsDefault(newValue)) {
            return RESULT_SUCCEED;
        }
        RedfishConfigResult length = CheckLength(newValue, errMsg);
        if (length == RESULT_SUCCEED) {
            // The pattern never refuses a password, though its reason may stay in errMsg.
            RedfishConfigSetting::CheckNewValueIsValid(newValue, errMsg);
        }
        return length;
    });
}

std::string RedfishConfigPasswordSetting::GeneratePatchContext(const std::string& value)
{
    return PatchText(value);
}

} // namespace RedfishConfig
