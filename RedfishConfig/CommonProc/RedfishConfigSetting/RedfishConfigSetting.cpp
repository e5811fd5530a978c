#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"
#include "../RedfishConfigExpression/ValueSubstitution.h"
#include "DynamicProperty.h"

#include <new>

namespace RedfishConfig {

RedfishConfigSetting::RedfishConfigSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options)
    : m_Info(info), m_Options(options)
{
}

RedfishConfigSetting::RedfishConfigSetting(const RedfishConfigSetting& other) = default;
RedfishConfigSetting& RedfishConfigSetting::operator=(const RedfishConfigSetting& other) = default;
RedfishConfigSetting::~RedfishConfigSetting() = default;

void RedfishConfigSetting::setCurrentValue(const SettingValue& value)
{
    m_Info.CurrentValue = value;
}

void RedfishConfigSetting::SetSettingProperties(const RedfishConfigSettingInfoStru& info)
{
    m_Info = info;
}

const RedfishConfigSettingInfoStru& RedfishConfigSetting::GetSettingProperties() const
{
    return m_Info;
}

void RedfishConfigSetting::SetSettingDependencyList(const std::vector<std::string>& settings)
{
    m_Info.dependencySettings = settings;
}

std::string RedfishConfigSetting::GetErrorMsg() const
{
    return m_ErrMsg;
}

std::map<std::string, std::string> RedfishConfigSetting::GetProperyMap()
{
    std::map<std::string, std::string> properties;
    try {
        const std::string& name = m_Info.AttributeName.value();
        // Every setting logs the numeric class's name here; readers of saved logs expect it.
        LOG_LINE(LogDetail) << "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:" << name;
        for (const DynamicProperty& property : dynamicProperties) {
            properties.emplace(name + "." + property.key, m_Info.*property.flag ? "true" : "false");
        }
        // An exist test becomes a comparison that a formula can hold.
        const bool exists = m_Info.CurrentValue.has_value();
        if (exists) {
            properties.emplace(name + ".CurrentValue", GetOptionalVarAsString(m_Info.CurrentValue));
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

void RedfishConfigSetting::PutValuesIntoFormulas(ValueSubstitution& values)
{
    for (auto& [property, expression] : m_Info.expressionMaps) {
        LOG_LINE(LogDetail) << "the PropertyName:" << property << " and the Expression:" << expression.DisplayText;
        expression.Formula = values.Apply(expression.DisplayText);
        LOG_LINE(LogDetail) << "After replacing, the expression:" << expression.Formula;
    }
}

bool RedfishConfigSetting::CheckSettingCouldBePatched(std::string& errMsg) const
{
    if (m_Info.Hidden) {
        errMsg = "This setting is hidden.";
        return false;
    }
    if (m_Info.ReadOnly || m_Info.GrayOut) {
        errMsg = "This setting is only for read.";
        return false;
    }
    if (m_Info.Immutable) {
        errMsg = "This setting value could not be modified.";
        return false;
    }
    return true;
}

} // namespace RedfishConfig
