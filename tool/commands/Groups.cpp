#include "Commands.h"

#include "../Text.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

/** A line of the tree: the menu, and how many settings are in it. */
struct Line {
    std::string Menu;
    std::string Count;
};

std::string CountText(const Menu& menu)
{
    const std::string own = Counted(menu.Settings, "setting");
    return menu.Menus.empty() ? own : own + ", " + std::to_string(menu.AllSettings()) + " with sub-menus";
}

void CollectLines(const Menu& menu, std::size_t level, std::vector<Line>& lines)
{
    for (const auto& child : menu.Menus) {
        const bool hasTwoNames = child->Title() != child->Name;
        lines.push_back({std::string(2 * level, ' ') + Escape(child->Title()) +
                             (hasTwoNames ? " (" + Escape(child->Name) + ")" : ""),
                         CountText(*child)});
        CollectLines(*child, level + 1, lines);
    }
}

void PrintTree(const System& system, Output& output)
{
    std::vector<Line> lines;
    CollectLines(system.Menus().Root(), 0, lines);
    if (system.Menus().Root().Settings != 0) {
        lines.push_back({"(no menu)", Counted(system.Menus().Root().Settings, "setting")});
    }
    std::size_t width = 0;
    for (const Line& line : lines) {
        width = std::max(width, CharacterCount(line.Menu));
    }
    for (const Line& line : lines) {
        output.Answers() << Pad(line.Menu, width) << "  " << output.Paint().Aside(line.Count) << '\n';
    }
}

json::array MenusToJson(const Menu& menu)
{
    json::array menus;
    for (const auto& child : menu.Menus) {
        menus.push_back(json::object{{"name", child->Name},
                                     {"displayName", child->DisplayName},
                                     {"path", child->Path},
                                     {"settings", child->Settings},
                                     {"allSettings", child->AllSettings()},
                                     {"menus", MenusToJson(*child)}});
    }
    return menus;
}

json::object GroupsToJson(const std::map<std::string, std::vector<std::string>>& groups)
{
    json::object byName;
    for (const auto& [group, subMenus] : groups) {
        byName[group] = json::array(subMenus.begin(), subMenus.end());
    }
    return byName;
}

} // namespace

ExitCode RunGroups(System& system, Output& output)
{
    if (output.Json()) {
        output.Write(json::object{{"menus", MenusToJson(system.Menus().Root())},
                                  {"withoutMenu", system.Menus().Root().Settings},
                                  {"groups", GroupsToJson(system.Groups())}});
    } else {
        PrintTree(system, output);
    }
    return ExitCode::Answered;
}

Runner AttachGroups(CLI::App& /*command*/)
{
    return RunGroups;
}

} // namespace RedfishConfigTool
