#include "DynamicProperty.h"

#include "../../logging/LogLine.h"
#include "../RedfishConfigExpression/Formula.h"
#include "SettingState.h"

#include <boost/algorithm/string/erase.hpp>

#include <algorithm>
#include <exception>

namespace RedfishConfig {

namespace {

/** A formula as a person reads it: "A==X" for "A.CurrentValue==X". */
std::string WithoutCurrentValue(const std::string& displayText)
{
    return boost::erase_all_copy(displayText, ".CurrentValue");
}

} // namespace

bool RedfishConfigSetting::isReadOnly()
{
    return AnswerDynamicProperty(ReadOnlyRow);
}

bool RedfishConfigSetting::isWriteOnly()
{
    return AnswerDynamicProperty(WriteOnlyRow);
}

bool RedfishConfigSetting::isHidden()
{
    return AnswerDynamicProperty(HiddenRow);
}

bool RedfishConfigSetting::isGrayOut()
{
    return AnswerDynamicProperty(GrayOutRow);
}

bool RedfishConfigSetting::isImmutable()
{
    return AnswerDynamicProperty(ImmutableRow);
}

bool RedfishConfigSetting::isSystemUnique()
{
    return AnswerDynamicProperty(SystemUniqueRow);
}

bool RedfishConfigSetting::isProtected()
{
    if (Info().Hidden) {
        m_ErrMsg = "the setting is protected.";
    }
    return Info().Hidden;
}

bool RedfishConfigSetting::AnswerDynamicProperty(std::size_t row)
{
    const DynamicProperty& property = dynamicProperties[row];
    const auto theSettingIs = [&property] { return std::string("the setting is ") + property.word; };
    const bool flag = Info().*property.flag;

    const auto found = std::find_if(m_FormulaStates.begin(), m_FormulaStates.end(),
                                    [&](const FormulaState& state) { return state.Row == row; });
    if (found == m_FormulaStates.end()) {
        if (!property.answersFlag) {
            return false;
        }
        if (flag) {
            m_ErrMsg = theSettingIs() + ".";
        }
        return flag;
    }

    // A rule that cannot be understood or calculated makes the property true, as a safeguard.
    const PropertyExpression& expression = *found->Expression;
    if (!expression.Valid || !std::holds_alternative<bool>(expression.MapToValue.value())) {
        LOG_LINE(LogDetail) << "The expression is invalid or the MapToValue of " << property.Name()
                            << " is not a boolean value.";
        m_ErrMsg = theSettingIs() + " due to BMC data error.";
        return true;
    }
    bool holds = false;
    try {
        holds = Calculate(*found);
    } catch (const std::string& error) {
        LOG_LINE(LogDetail) << "Failed to calculate the " << property.word << " property with error:" << error;
        m_ErrMsg = theSettingIs() + " duo to dependency calculate error.";
        return true;
    }
    LOG_LINE(LogDetail) << "Calculate " << property.Name() << " formular (" << found->Formula << ") result is "
                        << holds;

    const bool mapToValue = std::get<bool>(*expression.MapToValue);
    const char* const relation =
        holds ? " due to the following expression: " : " if the result of the following expression is true: ";
    if (!holds && flag) {
        m_ErrMsg = theSettingIs() + ".";
    } else if (mapToValue) {
        m_ErrMsg = theSettingIs() + relation + WithoutCurrentValue(expression.DisplayText);
    } else {
        LOG_LINE(LogDetail) << "the setting is non-" << property.word << relation
                            << WithoutCurrentValue(expression.DisplayText);
    }
    return holds ? mapToValue : property.answersFlag && flag;
}

bool RedfishConfigSetting::Calculate(FormulaState& formula)
{
    if (formula.Known == FormulaState::Verdict::Unknown || LogIsOn(LogDetail)) { // a detailed log shows each step
        const bool holds = CalculateFormula(formula.Formula);
        formula.Known = holds ? FormulaState::Verdict::Holds : FormulaState::Verdict::Fails;
    }
    return formula.Known == FormulaState::Verdict::Holds;
}

SettingStatus RedfishConfigSetting::GetStatus()
{
    struct Row {
        PropertyState SettingStatus::*state;
        bool (RedfishConfigSetting::*predicate)();
    };
    static constexpr Row rows[] = {
        {&SettingStatus::ReadOnly, &RedfishConfigSetting::isReadOnly},
        {&SettingStatus::WriteOnly, &RedfishConfigSetting::isWriteOnly},
        {&SettingStatus::Hidden, &RedfishConfigSetting::isHidden},
        {&SettingStatus::GrayOut, &RedfishConfigSetting::isGrayOut},
        {&SettingStatus::Immutable, &RedfishConfigSetting::isImmutable},
        {&SettingStatus::SystemUnique, &RedfishConfigSetting::isSystemUnique},
        {&SettingStatus::Protected, &RedfishConfigSetting::isProtected},
    };
    SettingStatus status;
    std::string keptReason;
    keptReason.swap(m_ErrMsg);
    for (const Row& row : rows) {
        PropertyState& state = status.*row.state;
        try {
            m_ErrMsg.clear();
            state.Value = (this->*row.predicate)();
            state.Reason = m_ErrMsg;
        } catch (const std::exception& error) {
            state.Value = true;
            state.Reason = error.what();
        }
    }
    m_ErrMsg.swap(keptReason);
    return status;
}

} // namespace RedfishConfig
