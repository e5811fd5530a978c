#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** A menu on the way to settings. */
struct Menu {
    std::string Name;
    std::string DisplayName; ///< empty where the registry gives none
    std::string Path;        ///< "./MENU/SUB-MENU"; empty for the root
    const Menu* Parent = nullptr;
    std::vector<std::unique_ptr<Menu>> Menus; ///< its sub-menus, in menu order once the tree is sorted
    std::size_t Settings = 0;                 ///< settings in this menu itself
    std::size_t Rank = 0;                     ///< position of the menu in the whole tree, a menu before its sub-menus
    std::optional<std::int64_t> DisplayOrder;
    std::size_t Position = 0; ///< order of menus whose DisplayOrder does not tell

    /** The name for a person. */
    const std::string& Title() const { return DisplayName.empty() ? Name : DisplayName; }
    std::size_t AllSettings() const; ///< those of the sub-menus included
};

/** What a registry says of a menu. */
struct MenuDescription {
    std::string Name;        ///< one without a name counts for nothing
    std::string DisplayName; ///< empty where the registry gives none
    std::string MenuPath;    ///< the menu's own path, or that of the menu it is in
    std::optional<std::int64_t> DisplayOrder;
    std::size_t Position = 0; ///< in the registry
};

/**
 * The menus that the settings of a registry are in, as a tree.
 *
 * Names, order and display names come from the registry's "Menus". Controllers publish these in two ways: the
 * "MenuPath" of a menu is its own path, or that of the menu it is in; both are understood. A piece of a path that no
 * entry describes is a menu all the same.
 */
class MenuTree {
public:
    explicit MenuTree(const std::vector<MenuDescription>& descriptions);

    /** The menu at a setting's menu path, added to the tree where it is new. The root when the path names no menu. */
    Menu& Place(const std::string& menuPath);

    /** Brings the menus into order and numbers them. */
    void Sort();

    /** Whether the registry describes menus, and with that an order. */
    bool GivesOrder() const { return !m_Entries.empty(); }

    const Menu& Root() const { return *m_Root; }

private:
    /** What the registry says of a menu. */
    struct Entry {
        std::string DisplayName;
        std::optional<std::int64_t> DisplayOrder;
        std::size_t Position = 0;
        std::size_t OwnPieces = 1; ///< how many pieces of its path are its own name, which may hold slashes
    };

    void Describe(const MenuDescription& menu);
    Menu& Add(Menu& parent, std::string name, const std::string& path);
    std::vector<std::string> SplitIntoMenus(const std::string& menuPath) const;

    std::map<std::string, Entry> m_Entries; // by path, pieces joined by slashes
    std::map<std::string, Menu*> m_Menus;   // by path, those in the tree
    std::map<std::string, Menu*> m_Placed;  // by the menu paths of settings, as they are written
    std::unique_ptr<Menu> m_Root;
};

} // namespace RedfishConfig::App
