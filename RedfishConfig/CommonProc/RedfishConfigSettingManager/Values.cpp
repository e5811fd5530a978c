#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"
#include "SettingTable.h"
#include "ValueApplication.h"

#include <utility>

// How settings get their current values, and formulas those of the settings.

namespace RedfishConfig {

namespace {

void LogUpdate()
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::UpdateSettingValue()";
}

} // namespace

void RedfishConfigSettingManager::UpdateSettingValue(const SettingValueMap& currentValues)
{
    LogUpdate();
    const bool ownValuesApplied = m_OwnValuesApplied && m_Application->IsCurrent(*m_Changes);
    m_OwnValuesApplied = false;
    std::vector<std::uint32_t> changed;
    ApplyValues(currentValues, changed);
    m_OtherwiseSet.insert(m_OtherwiseSet.end(), changed.begin(), changed.end());
    m_OwnValuesApplied = ownValuesApplied && m_OtherwiseSet.size() <= m_Settings->Count(); // else all at once
    if (!m_OwnValuesApplied) {
        m_OtherwiseSet.clear();
    }
}

void RedfishConfigSettingManager::ApplyCurrentValues()
{
    LogUpdate();
    const bool isCurrent = m_OwnValuesApplied && m_Application->IsCurrent(*m_Changes);
    // Each application shows in a detailed log, and each formula that is given up in any.
    const bool shows = LogIsOn(LogDetail) || (m_Application->GaveUp() && LogIsOn(LogDefect));
    if (isCurrent && m_OtherwiseSet.empty() && !shows) {
        return;
    }
    m_OwnValuesApplied = false;
    std::vector<std::uint32_t> changed;
    if (isCurrent && !shows) {
        for (const std::uint32_t setting : m_OtherwiseSet) {
            const auto value = m_CurrentValues.find(*m_Settings->At(setting).Name);
            if (value != m_CurrentValues.end()) {
                SetValue(setting, value->second, changed);
            }
        }
        m_Application->ApplyChanged(*m_Settings, changed, ++*m_Changes);
    } else {
        ApplyValues(m_CurrentValues, changed);
    }
    m_OtherwiseSet.clear();
    m_OwnValuesApplied = true;
}

void RedfishConfigSettingManager::ApplyValues(const SettingValueMap& values, std::vector<std::uint32_t>& changed)
{
    const bool isCurrent = m_Application->IsCurrent(*m_Changes);
    ++*m_Changes;
    SetValues(values, changed);
    if (isCurrent && !LogIsOn(LogDetail)) {
        m_Application->ApplyChanged(*m_Settings, changed, *m_Changes);
    } else {
        m_Application->ApplyAll(*m_Settings, *m_Changes);
    }
}

void RedfishConfigSettingManager::SetValues(const SettingValueMap& values, std::vector<std::uint32_t>& changed)
{
    constexpr std::size_t fewInAll = 16; // values to look up one by one rather than to go through all settings
    if (values.size() < m_Settings->Count() / fewInAll && !LogIsOn(LogDetail)) {
        for (const auto& [name, value] : values) {
            const std::size_t setting = m_Settings->Find(name);
            if (setting != SettingTable::none && m_Settings->At(setting).Setting != nullptr) {
                SetValue(setting, value, changed);
            }
        }
        return;
    }
    const CaseInsensitiveComparator isBefore;
    auto value = values.begin(); // both go by name
    for (const std::uint32_t number : m_Settings->InOrder()) {
        const auto& [namePointer, setting] = m_Settings->At(number);
        const std::string& name = *namePointer;
        if (setting == nullptr) {
            continue;
        }
        while (value != values.end() && value->first != name && isBefore(value->first, name)) {
            ++value;
        }
        if (value != values.end() && (value->first == name || !isBefore(name, value->first))) {
            SetValue(number, value->second, changed);
        }
        if (LogIsOn(LogDetail)) {
            setting->GetProperyMap(); // for what it logs
        }
    }
}

void RedfishConfigSettingManager::SetValue(std::size_t setting, const SettingValue& value,
                                           std::vector<std::uint32_t>& changed)
{
    RedfishConfigSetting& target = *m_Settings->At(setting).Setting;
    if (target.m_CurrentValue != value) {
        changed.push_back(static_cast<std::uint32_t>(setting));
        target.setCurrentValue(value);
    }
}

} // namespace RedfishConfig
