#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"
#include "PatchValue.h"
#include "ScopeVerdict.h"
#include "common/Numbers.h"

#include <boost/lexical_cast.hpp>

#include <exception>

namespace RedfishConfig {

namespace {

/** Reads an optional sign and decimal digits, and nothing else. @throws boost::bad_lexical_cast */
std::int64_t ReadInteger(const std::string& text)
{
    const std::optional<std::int64_t> number = Numbers::ReadDecimal(text);
    return number ? *number : throw boost::bad_lexical_cast(); // whose text callers know
}

/** The absolute value, also of the smallest integer, whose absolute value no signed integer can hold. */
std::uint64_t Magnitude(std::int64_t number)
{
    const auto bits = static_cast<std::uint64_t>(number);
    return number < 0 ? 0 - bits : bits;
}

/** The distance of two numbers, which may take all 64 bits. */
std::uint64_t Distance(std::int64_t a, std::int64_t b)
{
    const auto difference = static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b);
    return a < b ? 0 - difference : difference;
}

} // namespace

RedfishConfigNumericSetting::RedfishConfigNumericSetting(const RedfishConfigSettingInfoStru& info,
                                                         const Config_Options& options)
    : RedfishConfigSetting(info, options)
{
}

RedfishConfigNumericSetting::RedfishConfigNumericSetting(const RegistryEntry& entry, const Config_Options& options,
                                                         ForManager marker)
    : RedfishConfigSetting(entry, options, marker)
{
}

RedfishConfigNumericSetting::RedfishConfigNumericSetting(const RedfishConfigNumericSetting& other) = default;
RedfishConfigNumericSetting::~RedfishConfigNumericSetting() = default;

RedfishConfigResult RedfishConfigNumericSetting::GetSettingValidValues(std::string& validValues,
                                                                       const filterAction& action)
{
    const auto writeBody = [this](std::string& answer) {
        std::string scope;
        RedfishConfigResult result = GetValueScope(Info().LowerBound, Info().UpperBound, scope);
        if (result != RESULT_SUCCEED) {
            return result;
        }
        answer += "Integer " + scope;
        if (Info().ScalarIncrement) {
            answer += "ScalarIncrement=" + GetOptionalAsHexStr(*Info().ScalarIncrement) + " ";
        }
        if (Info().DefaultValue) {
            answer += "default=" + GetOptionalAsHexStr(Info().DefaultValue) + " ";
        }
        return result;
    };
    return AnswerValidValues(validValues, action, "RedfishConfigNumericSetting", writeBody);
}

RedfishConfigResult RedfishConfigNumericSetting::CheckNewValueIsValid(std::string& newValue, std::string& errMsg)
{
    if (IsDefault(newValue)) {
        return RESULT_SUCCEED;
    }
    try {
        const auto number = ReadInteger(newValue);
        if (RedfishConfigSetting::CheckNewValueIsValid(newValue, errMsg) != RESULT_SUCCEED) {
            return RESULT_NEW_VALUE_INVALID;
        }
        const int verdict = CheckValueValidScope(number, Info().LowerBound, Info().UpperBound, false);
        if (verdict == InScope) {
            return CheckScalarIncrement(number, errMsg);
        }
        if (verdict == BoundsUnusable) {
            return RESULT_PROPERTY_INVALID;
        }
        errMsg = DescribeScopeViolation(verdict, "The value", {"LowerBound", Info().LowerBound},
                                        {"UpperBound", Info().UpperBound});
    } catch (const boost::bad_lexical_cast& error) {
        LOG_LINE(LogDefect) << "Failed to transfer value to int: " << error.what();
        errMsg = "The value " + newValue + " is invalid." + Info().AttributeName.value() +
                 " can only be set to an integer."; // no blank before the name; callers compare the text
    } catch (const std::exception&) {
        LOG_LINE(LogDefect) << "Failed to transfer value to int with unknown error.";
        errMsg = "The value " + newValue + " is invalid for setting " + Info().AttributeName.value() + ".";
    }
    return RESULT_NEW_VALUE_INVALID;
}

RedfishConfigResult RedfishConfigNumericSetting::CheckScalarIncrement(const std::int64_t& value, std::string& errMsg)
{
    try {
        const std::int64_t increment = Info().ScalarIncrement.value_or(0);
        if (increment == 0) {
            return RESULT_SUCCEED;
        }
        // Steps count from the current value where there is one, not from the lower bound. That is on purpose.
        std::int64_t base = 0;
        if (m_CurrentValue) {
            base = std::get<std::int64_t>(*m_CurrentValue);
        } else if (Info().LowerBound) {
            base = *Info().LowerBound;
        } else {
            return RESULT_SUCCEED;
        }
        if (Distance(value, base) % Magnitude(increment) == 0) {
            return RESULT_SUCCEED;
        }
        LOG_LINE(LogDefect) << "Value rejected : numeric scalar increment issue.";
        errMsg = "scalar increment mismatch. The scalar increment should be: " + std::to_string(increment);
    } catch (const std::exception&) {
        LOG_LINE(LogDefect) << "Failed to Check Scalar Increment.";
        errMsg = "The value is invalid for setting " + Info().AttributeName.value() + ".";
    }
    return RESULT_NEW_VALUE_INVALID;
}

std::string RedfishConfigNumericSetting::GeneratePatchContext(const std::string& value)
{
    return PatchLiteral(value);
}

} // namespace RedfishConfig
