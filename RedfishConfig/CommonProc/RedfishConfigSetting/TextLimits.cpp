#include <RedfishConfig/RedfishConfigSetting.h>

#include "ScopeVerdict.h"

// What String and Password settings share: limits on the length of a text, and a pattern.

namespace RedfishConfig {

RedfishConfigResult RedfishConfigSetting::DescribeTextLimits(const char* typeWord, std::string& answer)
{
    std::string scope;
    RedfishConfigResult result = GetValueScope(Info().MinLength, Info().MaxLength, scope);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    answer += typeWord + scope;
    if (Info().ValueExpression) {
        answer += "Pattern=" + *Info().ValueExpression + " ";
    }
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigSetting::CheckLength(const std::string& newValue, std::string& errMsg)
{
    const auto length = static_cast<std::int64_t>(newValue.size());
    const int verdict = CheckValueValidScope(length, Info().MinLength, Info().MaxLength, true);
    if (verdict == InScope) {
        return RESULT_SUCCEED;
    }
    if (verdict == BoundsUnusable) {
        return RESULT_PROPERTY_INVALID;
    }
    errMsg = DescribeScopeViolation(verdict, "The value length", {"MinLength", Info().MinLength},
                                    {"MaxLength", Info().MaxLength});
    return RESULT_NEW_VALUE_INVALID;
}

} // namespace RedfishConfig
