#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"

#include <algorithm>

namespace RedfishConfig {

namespace {

std::vector<std::string> SplitPath(const std::string& path)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = path.find('/'); end != std::string::npos; end = path.find('/', begin)) {
        pieces.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.push_back(path.substr(begin));
    return pieces;
}

} // namespace

void RedfishConfigSettingManager::GetGroupName(const std::string& menuPath)
{
    const LogEntryAndExit trace("RedfishConfigSettingManager::GetGroupName", __FILE__, __LINE__);
    const std::vector<std::string> pieces = SplitPath(menuPath);
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
