#include "MenuPaths.h"

#include "../Limits.h"

#include <algorithm>

namespace RedfishConfig::Client {

namespace {

/** "/Main/Boot" for "./Main//Boot/": each piece with a slash before it, without dots and empty ones. */
std::string NormalPath(std::string_view path)
{
    std::string normal;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string_view piece = path.substr(begin, end - begin);
        if (!piece.empty() && piece != ".") {
            normal.append("/").append(piece);
        }
        begin = end + 1;
    }
    return normal;
}

/** How much of a normal path ends with its level @p level, or what follows the last level that is looked at. */
std::size_t EndOfLevel(const std::string& path, std::size_t begin, std::size_t level)
{
    return level < RedfishConfig::Limits::menuLevels ? std::min(path.find('/', begin + 1), path.size()) : path.size();
}

bool EndsWith(const std::string& path, const std::string& end)
{
    return !end.empty() && path.size() >= end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
}

/** The path of a menu itself. A name with slashes in it may be several pieces of the path. */
std::string OwnPath(const Menu& menu)
{
    std::string path = NormalPath(menu.MenuPath);
    const std::string name = NormalPath(menu.Name);
    if (EndsWith(path, name)) {
        return path;
    }
    const std::string shownName = NormalPath(menu.DisplayName);
    const bool hasPieces = shownName.find('/', 1) != std::string::npos;
    return hasPieces && EndsWith(path, shownName) ? path : path + name;
}

} // namespace

MenuPaths::MenuPaths(const std::vector<Menu>& menus)
{
    m_Paths.reserve(menus.size());
    for (std::size_t menu = 0; menu < menus.size(); ++menu) {
        m_Paths.emplace_back(OwnPath(menus[menu]), menu);
    }
    std::sort(m_Paths.begin(), m_Paths.end());
}

std::vector<std::size_t> MenuPaths::Along(std::string_view menuPath) const
{
    const std::string path = NormalPath(menuPath);
    std::vector<std::size_t> menus;
    std::size_t end = 0;
    for (std::size_t level = 1; end < path.size(); ++level) {
        end = EndOfLevel(path, end, level);
        const std::string_view here = std::string_view(path).substr(0, end);
        auto found = std::lower_bound(m_Paths.begin(), m_Paths.end(), here,
                                      [](const auto& entry, std::string_view key) { return entry.first < key; });
        for (; found != m_Paths.end() && found->first == here; ++found) {
            menus.push_back(found->second);
        }
    }
    std::sort(menus.begin(), menus.end());
    return menus;
}

} // namespace RedfishConfig::Client
