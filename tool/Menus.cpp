#include "Menus.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <limits>
#include <string_view>
#include <tuple>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

using Pieces = std::vector<std::string>;

/** The pieces of a path, without the dot it begins with and without empty ones. */
Pieces Split(std::string_view path)
{
    Pieces pieces;
    for (std::size_t begin = 0; begin < path.size();) {
        const bool isLast = pieces.size() + 1 == MenuTree::mostLevels;
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

std::string TextMember(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::string(text->c_str(), text->size()) : "";
}

bool EndsWith(const Pieces& path, const Pieces& end)
{
    return !end.empty() && path.size() >= end.size() && std::equal(end.rbegin(), end.rend(), path.rbegin());
}

const json::array* FindMenus(const json::value& registry)
{
    const json::value* entries = registry.is_object() ? registry.get_object().if_contains("RegistryEntries") : nullptr;
    const json::value* menus =
        entries != nullptr && entries->is_object() ? entries->get_object().if_contains("Menus") : nullptr;
    return menus != nullptr ? menus->if_array() : nullptr;
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

MenuTree::MenuTree(const json::value& registry) : m_Root(std::make_unique<Menu>())
{
    if (const json::array* menus = FindMenus(registry)) {
        for (std::size_t position = 0; position < menus->size(); ++position) {
            ReadEntry((*menus)[position], position);
        }
    }
}

void MenuTree::ReadEntry(const json::value& menu, std::size_t position)
{
    const json::object* object = menu.if_object();
    const std::string name = object != nullptr ? TextMember(*object, "MenuName") : "";
    if (name.empty()) {
        return;
    }
    Entry entry;
    entry.DisplayName = TextMember(*object, "DisplayName");
    entry.Position = position;
    json::error_code error;
    if (const json::value* order = object->if_contains("DisplayOrder"); order != nullptr && order->is_number()) {
        const auto number = order->to_number<std::int64_t>(error);
        entry.DisplayOrder = error ? std::nullopt : std::optional<std::int64_t>(number);
    }

    Pieces path = Split(TextMember(*object, "MenuPath"));
    const Pieces ownName = Split(name);
    const Pieces shownName = Split(entry.DisplayName);
    if (EndsWith(path, ownName)) {
        entry.OwnPieces = ownName.size();
    } else if (shownName.size() > 1 && EndsWith(path, shownName)) {
        entry.OwnPieces = shownName.size(); // a name with slashes, which stand in the path but not in "MenuName"
    } else {
        path.push_back(name);
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

Menu& MenuTree::Place(const std::string& menuPath)
{
    Menu* menu = m_Root.get();
    std::string path;
    for (std::string& name : SplitIntoMenus(menuPath)) {
        path += path.empty() ? name : "/" + name;
        Menu*& known = m_Menus[path];
        if (known == nullptr) {
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
            added->Parent = menu;
            known = added.get();
            menu->Menus.push_back(std::move(added));
        }
        menu = known;
    }
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

} // namespace RedfishConfigTool
