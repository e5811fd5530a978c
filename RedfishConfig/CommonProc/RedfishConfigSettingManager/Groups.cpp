#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"

#include <boost/algorithm/string/split.hpp>

#include <algorithm>

namespace RedfishConfig {

void RedfishConfigSettingManager::GetGroupName(const std::string& menuPath)
{
    const LogEntryAndExit trace("RedfishConfigSettingManager::GetGroupName", __FILE__, __LINE__);
    std::vector<std::string> pieces; // empty ones count
    boost::split(pieces, menuPath, [](char character) { return character == '/'; });
    if (pieces.size() < 3) {
        return;
    }
    std::vector<std::string>& subMenus = m_Groups[pieces[1]];
    if (pieces.size() > 3 && std::find(subMenus.begin(), subMenus.end(), pieces[2]) == subMenus.end()) {
        subMenus.push_back(pieces[2]);
    }
}

void RedfishConfigSettingManager::GetGroupList(std::map<std::string, std::vector<std::string>>& groups)
{
    const LogEntryAndExit trace("RedfishConfigSettingManager::GetGroupList", __FILE__, __LINE__);
    groups.clear();
    if (m_Groups.empty()) {
        m_Settings.clear(); // single settings would count as all of them
        GenerateSetting("");
    }
    groups = m_Groups;
}

} // namespace RedfishConfig
