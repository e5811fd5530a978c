#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"

#include "../Registry/Registry.h"
#include "SettingTable.h"
#include "ValueApplication.h"

namespace RedfishConfig {

/** The registry knows the menus of all its paths; what is left is what a detailed log shows of each. */
void RedfishConfigSettingManager::GetGroupName(const std::string& /*menuPath*/)
{
    const LogEntryAndExit trace("RedfishConfigSettingManager::GetGroupName", __FILE__, __LINE__);
}

void RedfishConfigSettingManager::GetGroupList(std::map<std::string, std::vector<std::string>>& groups)
{
    const LogEntryAndExit trace("RedfishConfigSettingManager::GetGroupList", __FILE__, __LINE__);
    groups.clear();
    const auto menus = [this] { return m_MenusKnown ? m_Expression.m_Registry->Menus() : Registry::Groups(); };
    groups = menus();
    if (groups.empty()) {
        ++*m_Changes;
        m_Settings->Clear(); // single settings would count as all of them
        GenerateSetting("");
        groups = menus();
    }
}

} // namespace RedfishConfig
