#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../RedfishConfigSetting/RestoreAction.h"
#include "Operation.h"
#include "SettingTable.h"
#include "ValueApplication.h"

namespace RedfishConfig {

RedfishConfigResult RedfishConfigSettingManager::PreparePatchContext(const std::string& name,
                                                                     const std::string& newValue,
                                                                     std::string& patchContext,
                                                                     const filterAction& action)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::PreparePatchContext() for setting: " << name;
    std::size_t found = 0;
    RedfishConfigResult result = GenerateAndFind(name, found);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    result = m_Settings->At(found).Setting->PreparePatchContext(newValue, patchContext, action);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "prepare setting: " << name << " patch context error.";
        return result;
    }
    LogExit("PreparePatchContext");
    return result;
}

RedfishConfigResult
RedfishConfigSettingManager::PreparePatchContext(const std::map<std::string, std::string>& newValues,
                                                 std::map<std::string, std::string>& patchContexts,
                                                 const filterAction& action)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::PreparePatchContext() with settingInfoMap.size()="
                       << newValues.size();
    if (newValues.empty()) {
        LOG_LINE(LogDetail) << "The settingInfoMap is empty.";
        return RESULT_SUCCEED;
    }
    RedfishConfigResult summary;
    for (const auto& [name, newValue] : newValues) {
        RedfishConfigResult result = PrepareOneOfMany(name, newValue, patchContexts, action);
        if (result != RESULT_SUCCEED) {
            result.SetSetting(name);
            m_Errors.push_back(std::move(result));
            summary = {RESULT_GROUP_PARTIAL_FAILURE, ResultMessages().at(RESULT_GROUP_PARTIAL_FAILURE)};
        }
    }
    LogExit("PreparePatchContext");
    return summary;
}

RedfishConfigResult RedfishConfigSettingManager::PrepareOneOfMany(const std::string& name, const std::string& newValue,
                                                                  std::map<std::string, std::string>& patchContexts,
                                                                  const filterAction& action)
{
    RedfishConfigResult result = ParseResponseAndGenerateSetting(name);
    if (result == RESULT_SETTING_NOT_FOUND) {
        return NotFound(name);
    }
    if (result != RESULT_SUCCEED) {
        result.SetErrorMsg("Failed to parse response and generate setting");
        LOG_LINE(LogDefect) << result.ErrorMsg() << " for " << name;
        return result;
    }
    const std::size_t found = m_Settings->Find(name);
    if (found == SettingTable::none || m_Settings->At(found).Setting == nullptr) {
        return MissingInCollection();
    }
    std::map<std::string, std::string> accepted;
    result = m_Settings->At(found).Setting->PreparePatchContext(newValue, accepted, action);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Prepare setting: " << name << " patch context error.";
        return result;
    }
    patchContexts.merge(accepted);
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::PrepareLoadDefaultValue(const std::string& name,
                                                                         std::string& defaultValue,
                                                                         std::string& patchContext)
{
    LogEnter("PrepareLoadDefaultValue");
    std::size_t found = 0;
    RedfishConfigResult result = GenerateAndFind(name, found);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    RedfishConfigSetting& setting = *m_Settings->At(found).Setting;
    result = setting.GetSettingDefaultValue(defaultValue, FILTER_QUERY_DEFAULT);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Get Setting: " << name << " default value error.";
        return result;
    }
    // The check takes plain text; the answer may be in hexadecimal.
    const std::string plainDefault = GetOptionalVarAsString(setting.Info().DefaultValue);
    result = setting.PreparePatchContext(plainDefault, patchContext, FILTER_PATCH);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "prepare setting: " << name << " patch context error.";
        return result;
    }
    LogExit("PrepareLoadDefaultValue");
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::FetchSaveSettingValues(std::map<std::string, std::string>& values,
                                                                        const filterAction& action)
{
    LogEnter("FetchSaveSettingValues");
    RedfishConfigResult result = GenerateForOperation("");
    if (result != RESULT_SUCCEED) {
        return result;
    }
    for (const std::uint32_t number : m_Settings->InOrder()) {
        const auto& [key, setting] = m_Settings->At(number);
        const std::string& name = *key;
        std::string value;
        if (setting != nullptr && setting->FetchSaveSettingValues(value, action) == RESULT_SUCCEED) {
            values[name] = std::move(value);
        } else {
            LOG_LINE(LogLeftOut) << "setting: " << name << " should not be saved";
        }
    }
    LogExit("FetchSaveSettingValues");
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::FetchRestoreSettingValues(
    std::map<std::string, std::string>& saved, std::map<std::string, std::string>& restoreValues,
    std::map<std::string, std::string>& errors, bool admitSystemUnique)
{
    LogEnter("FetchRestoreSettingValues");
    RedfishConfigResult overall;
    for (const auto& [name, value] : saved) {
        const RedfishConfigResult result = RestoreOne(name, value, restoreValues, errors, admitSystemUnique);
        if (result == RESULT_SETTING_FILTERED) { // left out, not failed
            continue;
        }
        overall | result;
    }
    LogExit("FetchRestoreSettingValues");
    return overall;
}

RedfishConfigResult RedfishConfigSettingManager::RestoreOne(const std::string& name, const std::string& value,
                                                            std::map<std::string, std::string>& restoreValues,
                                                            std::map<std::string, std::string>& errors,
                                                            bool admitSystemUnique)
{
    std::size_t found = 0;
    RedfishConfigResult result = GenerateAndFind(name, found);
    if (result != RESULT_SUCCEED) {
        if (result == RESULT_SETTING_NOT_FOUND) {
            errors[name] = "Could not find setting " + name + " on this system";
        }
        return result;
    }
    RedfishConfigSetting& setting = *m_Settings->At(found).Setting;
    result = setting.FetchRestoreSettingValues(name, value, errors, admitSystemUnique);
    // The log's texts carry no blank before their second part; readers of saved logs expect it.
    if (result == RESULT_SETTING_FILTERED) {
        LOG_LINE(LogLeftOut) << "setting: " << name << "can not be restored";
    } else if (result != RESULT_SUCCEED) {
        LOG_LINE(LogLeftOut) << "value: " << value << "is invalid";
    } else {
        std::string patchContext;
        result = setting.PreparePatchContext(value, patchContext, RestoreAction(admitSystemUnique));
        if (result == RESULT_SUCCEED) {
            restoreValues[*m_Settings->At(found).Name] = std::move(patchContext);
        }
    }
    return result;
}

} // namespace RedfishConfig
