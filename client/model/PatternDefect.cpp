#include "PatternDefect.h"

#include <RedfishConfig/RedfishConfigSetting.h>

namespace RedfishConfig::Client {

namespace {

/** A setting of the core with nothing but a pattern: the core tells by it alone whether it can use one. */
class PatternProbe : public RedfishConfigSetting {
public:
    using RedfishConfigSetting::CheckNewValueIsValid;
    using RedfishConfigSetting::RedfishConfigSetting;

    RedfishConfigResult GetSettingValidValues(std::string& /*validValues*/, const filterAction& /*action*/) override
    {
        return RESULT_SUCCEED;
    }

private:
    std::string GeneratePatchContext(const std::string& value) override { return value; }
};

} // namespace

std::string DefectOfPattern(const std::string& pattern)
{
    const std::string noMatch = "\n"; // no reason of the core is a line feed
    RedfishConfigSettingInfoStru info;
    info.ValueExpression = pattern;
    info.WarningText = noMatch;
    std::string value = "0";
    std::string reason;
    const bool matches = PatternProbe(info, {}).CheckNewValueIsValid(value, reason) == RESULT_SUCCEED;
    return matches || reason == noMatch ? std::string() : reason;
}

} // namespace RedfishConfig::Client
