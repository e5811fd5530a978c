#pragma once

#include <RedfishConfig/Client/Attribute.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/**
 * Where the menus of a registry are. Controllers publish a menu's path in two ways: as its own, or as that of the menu
 * that it is in; both are understood.
 */
class MenuPaths {
public:
    explicit MenuPaths(const std::vector<Menu>& menus);

    /** The menus that a menu path of a setting leads through; their indices, ascending. */
    std::vector<std::size_t> Along(std::string_view menuPath) const;

private:
    std::vector<std::pair<std::string, std::size_t>> m_Paths; // of each menu itself, in order
};

} // namespace RedfishConfig::Client
