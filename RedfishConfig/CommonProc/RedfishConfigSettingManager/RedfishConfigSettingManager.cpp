#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"
#include "../Registry/Registry.h"
#include "Operation.h"

#include <utility>

namespace RedfishConfig {

RedfishConfigSettingManager::RedfishConfigSettingManager(std::string& registry, SettingValueMap& currentValues,
                                                         const bool& cfc, const Config_Options& options)
    : m_RegistryText(registry),
      m_CurrentValues(currentValues),
      m_CFCFlag(cfc),
      m_Options(options),
      m_Changes(std::make_shared<std::uint64_t>(0))
{
}

RedfishConfigSettingManager::RedfishConfigSettingManager(std::string& registry, const bool& cfc,
                                                         const Config_Options& options)
    : m_RegistryText(registry), m_CFCFlag(cfc), m_Options(options), m_Changes(std::make_shared<std::uint64_t>(0))
{
}

RedfishConfigSettingManager::RedfishConfigSettingManager(const RedfishConfigSettingManager& other) = default;
RedfishConfigSettingManager& RedfishConfigSettingManager::operator=(const RedfishConfigSettingManager& other) = default;
RedfishConfigSettingManager::~RedfishConfigSettingManager() = default;

RedfishConfigResult RedfishConfigSettingManager::GenerateForOperation(const std::string& name)
{
    RedfishConfigResult result = ParseResponseAndGenerateSetting(name);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Parse response and generate setting error.";
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::FindSetting(const std::string& name, SettingMap::iterator& found)
{
    found = m_Settings.find(name);
    if (found == m_Settings.end()) {
        return NotFound(name); // an empty name generates all settings and names none
    }
    return found->second != nullptr ? RedfishConfigResult() : MissingInCollection();
}

RedfishConfigResult RedfishConfigSettingManager::GenerateAndFind(const std::string& name, SettingMap::iterator& found)
{
    RedfishConfigResult result = GenerateForOperation(name);
    return result == RESULT_SUCCEED ? FindSetting(name, found) : result;
}

void RedfishConfigSettingManager::SetCFCSystem(const bool& cfc)
{
    m_CFCFlag = cfc;
}

std::vector<RedfishConfigResult> RedfishConfigSettingManager::GetError()
{
    return std::exchange(m_Errors, {});
}

} // namespace RedfishConfig
