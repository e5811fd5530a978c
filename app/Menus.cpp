#include "Menus.h"

#include "common/Limits.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <tuple>

namespace RedfishConfig::App {

namespace {

using Pieces = std::vector<std::string>;

/** The pieces of a path, without the dot it begins with and without empty ones. */
Pieces Split(std::string_view path)
{
    Pieces pieces;
    for (std::size_t begin = 0; begin < path.size();) {
        const bool isLast = pieces.size() + 1 == Limits::menuLevels;
        const std::size_t end = isLast ? path.size() : std::min(path.find('/', begin), path.size());
        const std::string_view piece = path.substr(begin, end - begin);
        if (!piece.empty() && piece != ".") {
            pieces.emplace_back(piece);
        }
        begin = end + 1;
    }
    return pieces;
}

std::string Join(Pieces::const_iterator begin, Pieces::const_iterator end)
{
    std::string path;
    for (auto piece = begin; piece != end; ++piece) {
        path += path.empty() ? *piece : "/" + *piece;
    }
    return path;
}

bool EndsWith(const Pieces& path, const Pieces& end)
{
    return !end.empty() && path.size() >= end.size() && std::equal(end.rbegin(), end.rend(), path.rbegin());
}

} // namespace

std::size_t Menu::AllSettings() const
{
    std::size_t count = Settings;
    for (const auto& menu : Menus) {
        count += menu->AllSettings();
    }
    return count;
}

MenuTree::MenuTree(const std::vector<MenuDescription>& descriptions) : m_Root(std::make_unique<Menu>())
{
    for (const MenuDescription& menu : descriptions) {
        Describe(menu);
    }
}

void MenuTree::Describe(const MenuDescription& menu)
{
    if (menu.Name.empty()) {
        return;
    }
    Entry entry;
    entry.DisplayName = menu.DisplayName;
    entry.DisplayOrder = menu.DisplayOrder;
    entry.Position = menu.Position;

    Pieces path = Split(menu.MenuPath);
    const Pieces ownName = Split(menu.Name);
    const Pieces shownName = Split(menu.DisplayName);
    if (EndsWith(path, ownName)) {
        entry.OwnPieces = ownName.size();
    } else if (shownName.size() > 1 && EndsWith(path, shownName)) {
        entry.OwnPieces = shownName.size(); // a name with slashes, which are in the path but not in "MenuName"
    } else {
        path.push_back(menu.Name);
    }
    m_Entries.emplace(Join(path.begin(), path.end()), std::move(entry));
}

/** Pieces that together are the name of a described menu stay together. */
std::vector<std::string> MenuTree::SplitIntoMenus(const std::string& menuPath) const
{
    const Pieces pieces = Split(menuPath);
    Pieces names;
    for (auto piece = pieces.begin(); piece != pieces.end();) {
        auto end = piece + 1;
        for (auto longer = piece + 1; longer <= pieces.end(); ++longer) {
            const auto entry = m_Entries.find(Join(pieces.begin(), longer));
            if (entry != m_Entries.end() && entry->second.OwnPieces == static_cast<std::size_t>(longer - piece)) {
                end = longer;
                break;
            }
            if (longer == pieces.end()) {
                break;
            }
        }
        names.push_back(Join(piece, end));
        piece = end;
    }
    return names;
}

Menu& MenuTree::Add(Menu& parent, std::string name, const std::string& path)
{
    auto added = std::make_unique<Menu>();
    const auto entry = m_Entries.find(path);
    if (entry != m_Entries.end()) {
        added->DisplayName = entry->second.DisplayName;
        added->DisplayOrder = entry->second.DisplayOrder;
        added->Position = entry->second.Position;
    } else {
        added->Position = m_Entries.size() + m_Menus.size(); // behind those described, as first met
    }
    added->Name = std::move(name);
    added->Path = "./" + path;
    added->Parent = &parent;
    return *parent.Menus.emplace_back(std::move(added));
}

Menu& MenuTree::Place(const std::string& menuPath)
{
    Menu*& placed = m_Placed[menuPath];
    if (placed != nullptr) {
        return *placed;
    }
    Menu* menu = m_Root.get();
    std::string path;
    for (std::string& name : SplitIntoMenus(menuPath)) {
        path += path.empty() ? name : "/" + name;
        Menu*& known = m_Menus[path];
        if (known == nullptr) {
            known = &Add(*menu, std::move(name), path);
        }
        menu = known;
    }
    placed = menu;
    return *menu;
}

void MenuTree::Sort()
{
    const auto order = [](const std::unique_ptr<Menu>& menu) {
        return std::make_tuple(menu->DisplayOrder.value_or(std::numeric_limits<std::int64_t>::max()), menu->Position);
    };
    std::size_t rank = 0;
    std::vector<Menu*> waiting{m_Root.get()};
    while (!waiting.empty()) {
        Menu* menu = waiting.back();
        waiting.pop_back();
        menu->Rank = rank++;
        std::sort(menu->Menus.begin(), menu->Menus.end(),
                  [&](const auto& left, const auto& right) { return order(left) < order(right); });
        for (auto child = menu->Menus.rbegin(); child != menu->Menus.rend(); ++child) {
            waiting.push_back(child->get());
        }
    }
}

} // namespace RedfishConfig::App
