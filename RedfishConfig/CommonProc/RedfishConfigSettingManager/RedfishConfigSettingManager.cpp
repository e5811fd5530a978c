#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../Registry/Registry.h"

#include <utility>

namespace RedfishConfig {

RedfishConfigSettingManager::RedfishConfigSettingManager(std::string& registry, SettingValueMap& currentValues,
                                                         const bool& cfc, const Config_Options& options)
    : m_RegistryText(registry), m_CurrentValues(currentValues), m_CFCFlag(cfc), m_Options(options)
{
}

RedfishConfigSettingManager::RedfishConfigSettingManager(std::string& registry, const bool& cfc,
                                                         const Config_Options& options)
    : m_RegistryText(registry), m_CFCFlag(cfc), m_Options(options)
{
}

RedfishConfigSettingManager::RedfishConfigSettingManager(const RedfishConfigSettingManager& other) = default;
RedfishConfigSettingManager& RedfishConfigSettingManager::operator=(const RedfishConfigSettingManager& other) = default;
RedfishConfigSettingManager::~RedfishConfigSettingManager() = default;

void RedfishConfigSettingManager::SetCFCSystem(const bool& cfc)
{
    m_CFCFlag = cfc;
}

std::vector<RedfishConfigResult> RedfishConfigSettingManager::GetError()
{
    return std::exchange(m_Errors, {});
}

} // namespace RedfishConfig
