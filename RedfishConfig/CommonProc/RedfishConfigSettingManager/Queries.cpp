#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "Operation.h"
#include "SettingTable.h"
#include "ValueApplication.h"

namespace RedfishConfig {

/** A question that can be asked of one setting and of all: its operations, and how their failures read. */
struct SettingQuery {
    const char* single;        ///< the operation on one setting, as the log names it
    const char* group;         ///< the operation on all settings
    const char* singleFailure; ///< ends the log line of a failure; null: no line
    const char* groupFailure;  ///< ends the log line of each failure
    const char* groupSummary;  ///< the message of the summary when a setting failed
    filterAction singleAction;
    filterAction groupAction;
    RedfishConfigResult (RedfishConfigSetting::*ask)(std::string& answer, const filterAction& action);
};

namespace {

/** The group query of values shares the words of the one of valid values on purpose: saved logs are compared. */
constexpr SettingQuery valueQuery{"QuerySettingValue",
                                  "QueryGroupSettingValues",
                                  nullptr,
                                  " valid values error: ",
                                  "Fail in get settings valid values.",
                                  FILTER_QUERY_VALUE,
                                  FILTER_QUERY_GROUP_VALUES,
                                  &RedfishConfigSetting::GetSettingValue};
constexpr SettingQuery defaultQuery{"QuerySettingDefaultValue",
                                    "QueryGroupSettingDefaultValues",
                                    " default value error.",
                                    " default values error: ",
                                    "Fail in get settings default value.",
                                    FILTER_QUERY_DEFAULT,
                                    FILTER_QUERY_GROUP_DEFAULTS,
                                    &RedfishConfigSetting::GetSettingDefaultValue};
constexpr SettingQuery descriptionQuery{"QuerySettingDescription",
                                        "QueryGroupSettingDescriptions",
                                        " description error.",
                                        " description error: ",
                                        "Fail in get settings description.",
                                        FILTER_QUERY_DESCRIPTION,
                                        FILTER_QUERY_GROUP_DESCRIPTIONS,
                                        &RedfishConfigSetting::GetSettingDescription};
constexpr SettingQuery validValuesQuery{"QuerySettingValidValues",
                                        "QueryGroupSettingValidValues",
                                        " valid value error.",
                                        " valid values error: ",
                                        "Fail in get settings valid values.",
                                        FILTER_QUERY_CHOICES,
                                        FILTER_QUERY_GROUP_CHOICES,
                                        &RedfishConfigSetting::GetSettingValidValues};

/** The message names the setting as the manager keeps it; the caller gets it as the caller wrote it. */
void NameAsTheCallerWrote(RedfishConfigResult& result, const std::string& storedName, const std::string& callersName)
{
    std::string message = result.ErrorMsg();
    const std::size_t found = message.find(storedName);
    if (found != std::string::npos) {
        result.SetErrorMsg(message.replace(found, storedName.size(), callersName));
    }
}

} // namespace

RedfishConfigResult RedfishConfigSettingManager::QueryOne(const SettingQuery& query, const std::string& name,
                                                          std::string& answer)
{
    LogEnter(query.single);
    std::size_t found = 0;
    RedfishConfigResult result = GenerateAndFind(name, found);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    result = ((*m_Settings->At(found).Setting).*query.ask)(answer, query.singleAction);
    if (result != RESULT_SUCCEED) {
        if (query.singleFailure != nullptr) {
            LOG_LINE(LogDefect) << "Get Setting: " << name << query.singleFailure;
        }
        NameAsTheCallerWrote(result, *m_Settings->At(found).Name, name);
        return result;
    }
    LogExit(query.single);
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::QueryGroup(const SettingQuery& query,
                                                            std::map<std::string, std::string>& answers)
{
    LogEnter(query.group);
    RedfishConfigResult summary = GenerateForOperation("");
    if (summary != RESULT_SUCCEED) {
        return summary;
    }
    answers.clear();
    for (const std::uint32_t number : m_Settings->InOrder()) {
        const auto& [key, setting] = m_Settings->At(number);
        const std::string& name = *key;
        std::string answer;
        RedfishConfigResult result =
            setting != nullptr ? ((*setting).*query.ask)(answer, query.groupAction) : MissingInCollection();
        if (result == RESULT_SUCCEED) {
            answers.insert_or_assign(answers.end(), name, std::move(answer));
            continue;
        }
        result.SetSetting(name);
        m_Errors.push_back(std::move(result));
        LOG_LINE(LogDefect) << "Get Setting: " << name << query.groupFailure;
        summary = {RESULT_GROUP_PARTIAL_FAILURE, query.groupSummary};
    }
    LogExit(query.group);
    return summary;
}

RedfishConfigResult RedfishConfigSettingManager::QuerySettingValue(const std::string& name, std::string& value)
{
    return QueryOne(valueQuery, name, value);
}

RedfishConfigResult RedfishConfigSettingManager::QuerySettingDefaultValue(const std::string& name,
                                                                          std::string& defaultValue)
{
    return QueryOne(defaultQuery, name, defaultValue);
}

RedfishConfigResult RedfishConfigSettingManager::QuerySettingDescription(const std::string& name,
                                                                         std::string& description)
{
    return QueryOne(descriptionQuery, name, description);
}

RedfishConfigResult RedfishConfigSettingManager::QuerySettingValidValues(const std::string& name,
                                                                         std::string& validValues)
{
    return QueryOne(validValuesQuery, name, validValues);
}

RedfishConfigResult RedfishConfigSettingManager::QueryGroupSettingValues(std::map<std::string, std::string>& values)
{
    return QueryGroup(valueQuery, values);
}

RedfishConfigResult
RedfishConfigSettingManager::QueryGroupSettingDefaultValues(std::map<std::string, std::string>& defaultValues)
{
    return QueryGroup(defaultQuery, defaultValues);
}

RedfishConfigResult
RedfishConfigSettingManager::QueryGroupSettingDescriptions(std::map<std::string, std::string>& descriptions)
{
    return QueryGroup(descriptionQuery, descriptions);
}

RedfishConfigResult
RedfishConfigSettingManager::QueryGroupSettingValidValues(std::map<std::string, std::string>& validValues)
{
    return QueryGroup(validValuesQuery, validValues);
}

RedfishConfigResult RedfishConfigSettingManager::QuerySettingStatus(const std::string& name, SettingStatus& status)
{
    LogEnter("QuerySettingStatus");
    std::size_t found = 0;
    RedfishConfigResult result = GenerateAndFind(name, found);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    status = m_Settings->At(found).Setting->GetStatus();
    LogExit("QuerySettingStatus");
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::QueryGroupSettingStatus(std::map<std::string, SettingStatus>& status)
{
    LogEnter("QueryGroupSettingStatus");
    RedfishConfigResult result = GenerateForOperation("");
    if (result != RESULT_SUCCEED) {
        return result;
    }
    status.clear();
    for (const std::uint32_t number : m_Settings->InOrder()) {
        const auto& [key, setting] = m_Settings->At(number);
        const std::string& name = *key;
        if (setting != nullptr) {
            status.insert_or_assign(status.end(), name, setting->GetStatus());
            continue;
        }
        RedfishConfigResult missing = MissingInCollection();
        missing.SetSetting(name);
        m_Errors.push_back(std::move(missing));
        result = {RESULT_GROUP_PARTIAL_FAILURE, ResultMessages().at(RESULT_GROUP_PARTIAL_FAILURE)};
    }
    LogExit("QueryGroupSettingStatus");
    return result;
}

RedfishConfigResult
RedfishConfigSettingManager::GetAllSettingProperties(std::vector<RedfishConfigSettingInfoStru>& properties)
{
    LogEnter("GetAllSettingProperties");
    RedfishConfigResult result = GenerateForOperation("");
    if (result == RESULT_SUCCEED) {
        for (const std::uint32_t number : m_Settings->InOrder()) {
            const auto& setting = m_Settings->At(number).Setting;
            if (setting != nullptr) {
                properties.push_back(setting->WholeRecord());
            }
        }
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::GetSettingProperties(const std::string& name,
                                                                      RedfishConfigSettingInfoStru& properties)
{
    if (!m_Settings->Has(name)) {
        RedfishConfigResult result = GenerateSetting(name);
        if (result == RESULT_SETTING_NOT_FOUND) {
            return NotFound(name);
        }
        if (result != RESULT_SUCCEED) {
            LOG_LINE(LogDefect) << "Failed in genearte setting " << name;
            return result;
        }
    }
    std::size_t found = 0;
    RedfishConfigResult result = FindSetting(name, found);
    if (result == RESULT_SUCCEED) {
        properties = m_Settings->At(found).Setting->WholeRecord();
    }
    return result;
}

} // namespace RedfishConfig
