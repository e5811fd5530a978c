#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"
#include "../LetterCase.h"
#include "PatternMatch.h"
#include "ScopeVerdict.h"

#include <exception>

namespace RedfishConfig {

std::string RedfishConfigSetting::GetOptionalAsHexStr(const SettingValue& value) const
{
    const std::string text = GetOptionalVarAsString(value);
    return m_Options.ShowHexValue && IsNumSetting(value) ? DecToHex(text) : text;
}

RedfishConfigResult RedfishConfigSetting::TransferOpIntegerToInteger(const std::optional<std::int64_t>& in,
                                                                     std::int64_t& out)
{
    if (!in) {
        return RESULT_PROPERTY_NOT_EXIST;
    }
    out = *in;
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigSetting::GetValueScope(const std::optional<std::int64_t>& lower,
                                                        const std::optional<std::int64_t>& upper, std::string& scope)
{
    try {
        if (!Info().Type) {
            LOG_LINE(LogDefect) << "Not get the current setting's type.";
            return RESULT_PROPERTY_INVALID;
        }
        const bool isInteger = LowerCopy(*Info().Type) == "integer";
        const auto writeBound = [&](const std::optional<std::int64_t>& bound) {
            return isInteger ? GetOptionalAsHexStr(*bound) : std::to_string(*bound);
        };
        if (lower) {
            scope = (isInteger ? "LowerBound=" : "MinLength=") + writeBound(lower) + " ";
        }
        if (upper) {
            scope += (isInteger ? "UpperBound=" : "MaxLength=") + writeBound(upper) + " ";
        }
        if (lower && upper && *lower > *upper) {
            LOG_LINE(LogDefect) << "Setting " << Info().AttributeName.value_or("") << " bounder is invalid: lower is "
                                << *lower << " upper is " << *upper;
            return RESULT_PROPERTY_INVALID;
        }
        return RESULT_SUCCEED;
    } catch (const std::exception& error) {
        // The line names another operation; readers of saved logs expect it.
        LOG_LINE(LogDetail) << "Catch exception in RedfishConfigSetting::GetDefaultValue(): " << error.what();
        return RESULT_PROPERTY_NOT_EXIST;
    }
}

int RedfishConfigSetting::CheckValueValidScope(std::int64_t value, const std::optional<std::int64_t>& lower,
                                               const std::optional<std::int64_t>& upper, bool nonNegative)
{
    if (nonNegative && (lower.value_or(0) < 0 || upper.value_or(0) < 0)) {
        return BoundsUnusable;
    }
    if (lower && upper) {
        if (*lower > *upper) {
            LOG_LINE(LogDefect) << "data logical error: " << *lower << "(lower) > " << *upper << "(upper).";
            return BoundsUnusable;
        }
        return *lower <= value && value <= *upper ? InScope : OutsideBoth;
    }
    if (upper) {
        return value > *upper ? AboveUpper : InScope;
    }
    if (lower) {
        return value < *lower ? BelowLower : InScope;
    }
    return InScope;
}

bool RedfishConfigSetting::IsDefault(const std::string& newValue) const
{
    return Info().DefaultValue && newValue == GetOptionalVarAsString(Info().DefaultValue);
}

RedfishConfigResult RedfishConfigSetting::CheckNewValueIsValid(std::string& newValue, std::string& errMsg)
{
    const LogEntryAndExit trace("RedfishConfigSetting::CheckNewValueIsValid", __FILE__, __LINE__);
    if (!Info().ValueExpression) {
        return RESULT_SUCCEED;
    }
    try {
        if (MatchesPattern(newValue, *Info().ValueExpression)) {
            return RESULT_SUCCEED;
        }
        errMsg =
            Info().WarningText ? *Info().WarningText : "Expression check failed, pattern=" + *Info().ValueExpression;
    } catch (const std::exception& error) {
        LOG_LINE(LogDetail) << "Exception message : " << error.what();
        errMsg = error.what();
    }
    return RESULT_NEW_VALUE_INVALID;
}

} // namespace RedfishConfig
