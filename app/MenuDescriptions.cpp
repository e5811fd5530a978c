#include "MenuDescriptions.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace RedfishConfig::App {

namespace json = boost::json;

namespace {

std::string TextMember(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::string(text->c_str(), text->size()) : "";
}

const json::array* FindMenus(const json::value& registry)
{
    const json::value* entries = registry.is_object() ? registry.get_object().if_contains("RegistryEntries") : nullptr;
    const json::value* menus =
        entries != nullptr && entries->is_object() ? entries->get_object().if_contains("Menus") : nullptr;
    return menus != nullptr ? menus->if_array() : nullptr;
}

MenuDescription Describe(const json::object& menu, std::size_t position)
{
    MenuDescription description{TextMember(menu, "MenuName"), TextMember(menu, "DisplayName"),
                                TextMember(menu, "MenuPath"), std::nullopt, position};
    json::error_code error;
    if (const json::value* order = menu.if_contains("DisplayOrder"); order != nullptr && order->is_number()) {
        const auto number = order->to_number<std::int64_t>(error);
        description.DisplayOrder = error ? std::nullopt : std::optional<std::int64_t>(number);
    }
    return description;
}

} // namespace

std::vector<MenuDescription> MenusIn(const json::value& registry)
{
    std::vector<MenuDescription> menus;
    if (const json::array* list = FindMenus(registry)) {
        for (std::size_t position = 0; position < list->size(); ++position) {
            if (const json::object* menu = (*list)[position].if_object()) {
                menus.push_back(Describe(*menu, position));
            }
        }
    }
    return menus;
}

std::vector<MenuDescription> MenusIn(const RedfishConfig::Client::Model& model)
{
    std::vector<MenuDescription> menus;
    for (const RedfishConfig::Client::Menu& menu : model.Menus()) {
        menus.push_back({menu.Name, menu.DisplayName, menu.MenuPath, menu.DisplayOrder, menu.Position});
    }
    return menus;
}

namespace {

std::vector<std::string_view> PiecesOf(std::string_view path)
{
    std::vector<std::string_view> pieces;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        pieces.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

} // namespace

std::map<std::string, std::vector<std::string>> GroupsIn(const RedfishConfig::Client::Model& model)
{
    std::map<std::string, std::vector<std::string>> groups;
    std::set<std::pair<std::string_view, std::string_view>> known;
    for (const RedfishConfig::Client::Attribute& attribute : model.Attributes()) {
        const std::vector<std::string_view> pieces =
            PiecesOf(attribute.MenuPath ? std::string_view(*attribute.MenuPath) : std::string_view());
        if (pieces.size() < 3) { // "./Main" names no menu here
            continue;
        }
        std::vector<std::string>& subMenus = groups[std::string(pieces[1])];
        if (pieces.size() > 3 && known.emplace(pieces[1], pieces[2]).second) {
            subMenus.emplace_back(pieces[2]);
        }
    }
    return groups;
}

} // namespace RedfishConfig::App
