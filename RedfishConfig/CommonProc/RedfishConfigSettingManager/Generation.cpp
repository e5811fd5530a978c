#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"
#include "../RedfishConfigExpression/ValueSubstitution.h"
#include "../Registry/Registry.h"

#include <algorithm>
#include <exception>
#include <new>

namespace RedfishConfig {

namespace {

void LogUpdate()
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::UpdateSettingValue()";
}

} // namespace

RedfishConfigResult RedfishConfigSettingManager::ParseResponseAndGenerateSetting(const std::string& name)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:" << name;
    RedfishConfigResult result = GenerateSetting(name);
    if (result == RESULT_SUCCEED) {
        ApplyCurrentValues();
        LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret="
                           << static_cast<int>(result);
    } else {
        LOG_LINE(LogDefect) << "Generate setting error.";
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::GenerateSetting(const std::string& name)
{
    if (!name.empty() && m_Settings.count(name) > 0) {
        return RESULT_SUCCEED;
    }
    std::vector<std::string> relationSettings;
    RedfishConfigResult result = GenerateExpression(relationSettings, name);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Generate expression error.";
        return result;
    }
    result = name.empty() ? GenerateAllSetting() : GenerateSpecifySetting({name, relationSettings});
    if (result == RESULT_SETTING_NOT_FOUND) {
        return NotFound(name);
    }
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Generate setting error.";
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::NotFound(const std::string& name)
{
    const std::string message = "Unable to find the setting " + name + ".";
    LOG_LINE(LogDefect) << message;
    return {RESULT_SETTING_NOT_FOUND, message};
}

RedfishConfigResult RedfishConfigSettingManager::GenerateExpression(std::vector<std::string>& relationSettings,
                                                                    const std::string& settingName)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=" << settingName;
    m_Expression.m_CFCFlag = m_CFCFlag;
    std::vector<std::string> related;
    RedfishConfigResult result = AnswerWhatReadingRaises([&] {
        return settingName.empty()
                   ? m_Expression.ParseAllSettingsDependency(m_RegistryText, related, m_ExpressionMaps)
                   : m_Expression.ParseSingleSettingDependency(m_RegistryText, settingName, related, m_ExpressionMaps);
    });
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDetail) << "Failed to parse the dependencySettings and expressionMaps with ret="
                            << static_cast<int>(result);
        return result;
    }
    relationSettings.insert(relationSettings.end(), related.begin(), related.end());
    LOG_LINE(LogDetail) << "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()="
                        << relationSettings.size();
    return RESULT_SUCCEED;
}

template <class Reading>
RedfishConfigResult RedfishConfigSettingManager::AnswerWhatReadingRaises(Reading reading)
{
    try {
        return reading();
    } catch (const std::exception& error) {
        LOG_LINE(LogDefect) << error.what();
        return RESULT_HTTP_RESPONSE_PARSE_FAILED;
    }
}

RedfishConfigResult RedfishConfigSettingManager::GenerateAllSetting()
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::GenerateAllSetting()";
    if (!m_Settings.empty()) {
        return RESULT_SUCCEED; // single settings count as generated
    }
    RedfishConfigResult result = AnswerWhatReadingRaises([this]() -> RedfishConfigResult {
        for (const RedfishConfigSettingInfoStru& attribute : m_Expression.ReadRegistry(m_RegistryText).Attributes()) {
            if (!attribute.AttributeName.value_or("").empty()) {
                StoreSetting(attribute);
            }
            if (!attribute.MenuPath.value_or("").empty()) {
                GetGroupName(*attribute.MenuPath);
            }
        }
        return RESULT_SUCCEED;
    });
    if (result != RESULT_SUCCEED) { // for lack of memory, perhaps: a part must not be taken for all settings
        m_Settings.clear();
        m_Groups.clear();
        return result;
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::GenerateAllSetting()";
    return result;
}

RedfishConfigResult
RedfishConfigSettingManager::GenerateSpecifySetting(const std::pair<std::string, std::vector<std::string>>& settings)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::GenerateSpecifySetting()";
    const auto& [name, related] = settings;
    const auto isMissing = [this](const std::string& wanted) { return m_Settings.count(wanted) == 0; };

    if (isMissing(name)) {
        RedfishConfigResult result = GenerateSingleSetting(name);
        if (result != RESULT_SUCCEED) {
            LOG_LINE(LogDefect) << "Failed in creating setting: " << name;
            return result;
        }
    }
    for (const std::string& relatedName : related) {
        // whether it worked is asked below
        if (isMissing(relatedName) && GenerateSingleSetting(relatedName) == RESULT_HTTP_RESPONSE_PARSE_FAILED) {
            m_Settings.erase(name); // for lack of memory: the setting must not be taken for complete next time
        }
    }
    const auto missing = std::find_if(related.begin(), related.end(), isMissing);
    if (isMissing(name) || missing != related.end()) {
        LOG_LINE(LogDefect) << "Failed in creating setting: " << (isMissing(name) ? name : *missing);
        return RESULT_INTERNAL_ERROR;
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::GenerateSpecifySetting()";
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigSettingManager::GenerateSingleSetting(const std::string& name)
{
    return AnswerWhatReadingRaises([&]() -> RedfishConfigResult {
        const RedfishConfigSettingInfoStru* attribute = m_Expression.ReadRegistry(m_RegistryText).FindAttribute(name);
        if (attribute == nullptr) {
            LOG_LINE(LogDefect) << "Not find the setting: " << name << " from schema.";
            return RESULT_SETTING_NOT_FOUND;
        }
        if (!StoreSetting(*attribute)) {
            LOG_LINE(LogDefect) << "The setting type is invalid: " << attribute->Type.value_or("");
            return RESULT_PROPERTY_INVALID;
        }
        return RESULT_SUCCEED;
    });
}

bool RedfishConfigSettingManager::StoreSetting(const RedfishConfigSettingInfoStru& attribute)
{
    static const std::map<std::string, SettingFactory, CaseInsensitiveComparator> factories{
        {"String", &RedfishConfigSettingManager::createTextSetting},
        {"Integer", &RedfishConfigSettingManager::createNumericSetting},
        {"Enumeration", &RedfishConfigSettingManager::createEnumerateSetting},
        {"Boolean", &RedfishConfigSettingManager::createBooleanSetting},
        {"Password", &RedfishConfigSettingManager::createPasswordSetting},
    };
    const auto factory = factories.find(attribute.Type.value_or(""));
    if (factory == factories.end()) {
        return false;
    }
    RedfishConfigSettingInfoStru record = attribute;
    // Of two names that differ in letter case alone, the first stays the key and the later setting replaces the other.
    ++*m_Changes;
    m_Settings[*attribute.AttributeName] = (this->*factory->second)(record, m_Options);
    return true;
}

template <class TypedSetting>
std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::CreateSetting(const char* factory,
                                                                                 RedfishConfigSettingInfoStru& record,
                                                                                 const Config_Options& options)
{
    LOG_LINE(LogDetail) << "Enter RedfishConfigSettingManager::" << factory << "()";
    const auto expressions = m_ExpressionMaps.find(record.AttributeName.value());
    if (expressions != m_ExpressionMaps.end()) {
        record.expressionMaps = expressions->second;
        record.dependencySettings = m_Expression.SettingsReadBy(expressions->second);
    }
    LOG_LINE(LogDetail) << "Exit RedfishConfigSettingManager::" << factory << "()";
    return std::shared_ptr<RedfishConfigSetting>(new (std::nothrow) TypedSetting(record, options));
}

std::shared_ptr<RedfishConfigSetting>
RedfishConfigSettingManager::createTextSetting(RedfishConfigSettingInfoStru& record, const Config_Options& options)
{
    return CreateSetting<RedfishConfigTextSetting>("createTextSetting", record, options);
}

std::shared_ptr<RedfishConfigSetting>
RedfishConfigSettingManager::createNumericSetting(RedfishConfigSettingInfoStru& record, const Config_Options& options)
{
    return CreateSetting<RedfishConfigNumericSetting>("createNumericSetting", record, options);
}

std::shared_ptr<RedfishConfigSetting>
RedfishConfigSettingManager::createEnumerateSetting(RedfishConfigSettingInfoStru& record, const Config_Options& options)
{
    return CreateSetting<RedfishConfigEnumerateSetting>("createEnumerateSetting", record, options);
}

std::shared_ptr<RedfishConfigSetting>
RedfishConfigSettingManager::createBooleanSetting(RedfishConfigSettingInfoStru& record, const Config_Options& options)
{
    return CreateSetting<RedfishConfigBooleanSetting>("createBooleanSetting", record, options);
}

std::shared_ptr<RedfishConfigSetting>
RedfishConfigSettingManager::createPasswordSetting(RedfishConfigSettingInfoStru& record, const Config_Options& options)
{
    return CreateSetting<RedfishConfigPasswordSetting>("createPasswordSetting", record, options);
}

void RedfishConfigSettingManager::ApplyCurrentValues()
{
    if (m_ChangesWhenApplied == *m_Changes && !LogIsOn(LogDetail)) { // each application shows in a detailed log
        LogUpdate();
        return;
    }
    UpdateSettingValue(m_CurrentValues);
    m_ChangesWhenApplied = *m_Changes;
}

void RedfishConfigSettingManager::UpdateSettingValue(const SettingValueMap& currentValues)
{
    LogUpdate();
    ++*m_Changes;
    std::map<std::string, std::string> texts; // of all settings; of two with the same key the first is kept
    for (const auto& [name, setting] : m_Settings) {
        if (setting == nullptr) {
            continue;
        }
        const auto value = currentValues.find(name);
        if (value != currentValues.end()) {
            setting->setCurrentValue(value->second);
        }
        texts.merge(setting->GetProperyMap());
    }
    ValueSubstitution substitution(texts);
    for (const auto& [name, setting] : m_Settings) {
        if (setting == nullptr) {
            continue;
        }
        LOG_LINE(LogDetail) << "Replace the property values in expression for " << name;
        setting->PutValuesIntoFormulas(substitution);
    }
}

} // namespace RedfishConfig
