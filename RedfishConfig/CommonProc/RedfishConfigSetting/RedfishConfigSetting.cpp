#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"
#include "DynamicProperty.h"
#include "SettingState.h"

#include <new>
#include <utility>

namespace RedfishConfig {

RedfishConfigSetting::RedfishConfigSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options)
    : m_Options(options)
{
    SetSettingProperties(info);
}

RedfishConfigSetting::RedfishConfigSetting(const RegistryEntry& entry, const Config_Options& options,
                                           ForManager /*marker*/)
    : m_Options(options)
{
    Adopt(entry);
}

RedfishConfigSetting::RedfishConfigSetting(const RedfishConfigSetting& other)
    : m_ErrMsg(other.m_ErrMsg),
      m_Options(other.m_Options),
      m_CurrentValue(other.m_CurrentValue),
      m_Info(other.m_Info),
      m_Formulas(other.m_Formulas),
      m_FormulaStates(other.m_FormulaStates)
{
}

RedfishConfigSetting& RedfishConfigSetting::operator=(const RedfishConfigSetting& other)
{
    if (this != &other) {
        std::string errMsg = other.m_ErrMsg;
        std::vector<FormulaState> states = other.m_FormulaStates;
        m_CurrentValue = other.m_CurrentValue;
        m_ErrMsg = std::move(errMsg);
        m_Options = other.m_Options;
        m_Info = other.m_Info;
        m_Formulas = other.m_Formulas;
        m_FormulaStates = std::move(states);
        RenewWholeRecord();
    }
    return *this;
}

RedfishConfigSetting::~RedfishConfigSetting() = default;

void RedfishConfigSetting::Adopt(const RegistryEntry& entry)
{
    std::vector<FormulaState> states;
    if (entry.Formulas != nullptr) {
        states.reserve(entry.Formulas->ByProperty.size());
        for (const auto& [property, expression] : entry.Formulas->ByProperty) {
            states.push_back({&property, FindDynamicProperty(property), &expression, expression.Formula,
                              FormulaState::Verdict::Unknown});
        }
    }
    m_CurrentValue = entry.Record->CurrentValue;
    m_Info = entry.Record;
    m_Formulas = entry.Formulas;
    m_FormulaStates = std::move(states);
    RenewWholeRecord();
}

void RedfishConfigSetting::RenewWholeRecord()
{
    if (m_Whole != nullptr) { // a caller may hold a reference to it
        *m_Whole = WholeRecord();
    }
}

void RedfishConfigSetting::setCurrentValue(const SettingValue& value)
{
    m_CurrentValue = value;
    if (m_Whole != nullptr) {
        m_Whole->CurrentValue = value;
    }
}

void RedfishConfigSetting::SetSettingProperties(const RedfishConfigSettingInfoStru& info)
{
    auto record = std::make_shared<RedfishConfigSettingInfoStru>(info);
    std::shared_ptr<SettingFormulas> formulas;
    if (!info.expressionMaps.empty() || !info.dependencySettings.empty()) {
        formulas = std::make_shared<SettingFormulas>();
        formulas->ByProperty.swap(record->expressionMaps);
        formulas->SettingsRead.swap(record->dependencySettings);
    }
    Adopt({std::move(record), std::move(formulas)});
}

RedfishConfigSettingInfoStru RedfishConfigSetting::WholeRecord() const
{
    RedfishConfigSettingInfoStru record = Info();
    record.CurrentValue = m_CurrentValue;
    if (m_Formulas != nullptr) {
        record.dependencySettings = m_Formulas->SettingsRead;
        record.expressionMaps = m_Formulas->ByProperty;
        for (const FormulaState& state : m_FormulaStates) {
            record.expressionMaps[*state.Property].Formula = state.Formula;
        }
    }
    return record;
}

const RedfishConfigSettingInfoStru& RedfishConfigSetting::GetSettingProperties() const
{
    if (m_Whole == nullptr) {
        m_Whole = std::make_unique<RedfishConfigSettingInfoStru>(WholeRecord());
    }
    return *m_Whole;
}

void RedfishConfigSetting::SetSettingDependencyList(const std::vector<std::string>& settings)
{
    RedfishConfigSettingInfoStru record = WholeRecord();
    record.dependencySettings = settings;
    SetSettingProperties(record);
}

std::string RedfishConfigSetting::GetErrorMsg() const
{
    return m_ErrMsg;
}

std::map<std::string, std::string> RedfishConfigSetting::GetProperyMap()
{
    std::map<std::string, std::string> properties;
    try {
        const std::string& name = Info().AttributeName.value();
        // Every setting logs the numeric class's name here; readers of saved logs expect it.
        LOG_LINE(LogDetail) << "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:" << name;
        for (const DynamicProperty& property : dynamicProperties) {
            properties.emplace(name + "." + std::string(property.Name()), Info().*property.flag ? "true" : "false");
        }
        // An exist test becomes a comparison that a formula can hold.
        const bool exists = m_CurrentValue.has_value();
        if (exists) {
            properties.emplace(name + ".CurrentValue", GetOptionalVarAsString(m_CurrentValue));
        }
        properties.emplace(name + " not exist", exists ? "true==false" : "true==true");
        properties.emplace(name + " exist", exists ? "true==true" : "true==false");
        if (!exists) {
            LOG_LINE(LogDetail) << "The setting " << name
                                << " has no current value property or the current value is null.";
        }
        LOG_LINE(LogDetail) << "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()="
                            << properties.size();
    } catch (const std::bad_alloc&) {
        throw; // a part of the map would leave formulas without values, and nobody would notice
    } catch (const std::exception& error) {
        LOG_LINE(LogDetail) << "Catch exception in RedfishConfigSetting::GetProperyMap(): " << error.what();
    }
    return properties;
}

void RedfishConfigSetting::SetFormula(FormulaState& state, std::string&& formula)
{
    if (m_Whole != nullptr) {
        m_Whole->expressionMaps[*state.Property].Formula = formula;
    }
    state.Known = FormulaState::Verdict::Unknown;
    state.Formula = std::move(formula);
}

bool RedfishConfigSetting::CheckSettingCouldBePatched(std::string& errMsg) const
{
    if (Info().Hidden) {
        errMsg = "This setting is hidden.";
        return false;
    }
    if (Info().ReadOnly || Info().GrayOut) {
        errMsg = "This setting is only for read.";
        return false;
    }
    if (Info().Immutable) {
        errMsg = "This setting value could not be modified.";
        return false;
    }
    return true;
}

} // namespace RedfishConfig
