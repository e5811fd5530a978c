#include "app/Menus.h"
#include "app/MenuDescriptions.h"
#include "common/Limits.h"

#include <boost/json/parse.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace RedfishConfig::App;

MenuTree TreeFrom(const std::string& menus)
{
    return MenuTree(MenusIn(boost::json::parse(R"({"RegistryEntries": {"Menus": )" + menus + "}}")));
}

/** The titles of the whole tree in order, two blanks a level. */
std::vector<std::string> Titles(const Menu& menu, const std::string& indentation = "")
{
    std::vector<std::string> titles;
    for (const auto& child : menu.Menus) {
        titles.push_back(indentation + child->Title());
        for (const std::string& title : Titles(*child, indentation + "  ")) {
            titles.push_back(title);
        }
    }
    return titles;
}

using TitleList = std::vector<std::string>;

TEST(MenuTree, PathsWithoutAMenuAreTheRoot)
{
    MenuTree tree = TreeFrom("[]");
    for (const char* path : {"", ".", "./", "/", "././/"}) {
        EXPECT_EQ(&tree.Place(path), &tree.Root()) << path;
    }
    EXPECT_FALSE(tree.GivesOrder());
}

TEST(MenuTree, MenusThatNothingDescribesStandAsFirstMet)
{
    MenuTree tree = TreeFrom("[]");
    tree.Place("./B/C");
    tree.Place("./A");
    Menu& again = tree.Place("B//C");
    EXPECT_EQ(again.Path, "./B/C");
    EXPECT_EQ(again.Parent->Name, "B");
    EXPECT_EQ(Titles(tree.Root()), (TitleList{"B", "  C", "A"}));
    tree.Sort();
    EXPECT_EQ(Titles(tree.Root()), (TitleList{"B", "  C", "A"}));
}

TEST(MenuTree, OrderIsDisplayOrderThenPlaceInTheList)
{
    MenuTree tree = TreeFrom(R"([{"MenuName": "D", "MenuPath": "./D"},
                                 {"MenuName": "C", "MenuPath": "./C", "DisplayOrder": 2},
                                 {"MenuName": "B", "MenuPath": "./B", "DisplayOrder": 2},
                                 {"MenuName": "A", "MenuPath": "./A", "DisplayOrder": 1}])");
    for (const char* path : {"./New", "./A", "./B", "./C", "./D"}) {
        tree.Place(path);
    }
    tree.Sort();
    EXPECT_TRUE(tree.GivesOrder());
    EXPECT_EQ(Titles(tree.Root()), (TitleList{"A", "C", "B", "D", "New"}));
}

TEST(MenuTree, RanksCountThroughTheTreeAMenuBeforeItsSubMenus)
{
    MenuTree tree = TreeFrom("[]");
    const Menu& inner = tree.Place("./A/B");
    const Menu& other = tree.Place("./C");
    tree.Sort();
    EXPECT_LT(inner.Parent->Rank, inner.Rank);
    EXPECT_LT(inner.Rank, other.Rank);
}

TEST(MenuTree, APathThatIsTheMenusOwn)
{
    MenuTree tree = TreeFrom(R"([{"MenuName": "Sub", "DisplayName": "The sub-menu", "MenuPath": "./Top/Sub"}])");
    EXPECT_EQ(tree.Place("./Top/Sub").DisplayName, "The sub-menu");
    EXPECT_EQ(tree.Place("./Top/Sub/Sub").DisplayName, "");
}

TEST(MenuTree, APathThatIsThatOfTheMenuAround)
{
    MenuTree tree = TreeFrom(R"([{"MenuName": "TopRef", "DisplayName": "Top", "MenuPath": "./"},
                                 {"MenuName": "SubRef", "DisplayName": "Sub", "MenuPath": "./TopRef"}])");
    const Menu& menu = tree.Place("./TopRef/SubRef");
    EXPECT_EQ(menu.DisplayName, "Sub");
    EXPECT_EQ(menu.Parent->DisplayName, "Top");
}

TEST(MenuTree, ANameWithSlashesIsOneMenu)
{
    MenuTree tree =
        TreeFrom(R"([{"MenuName": "PCIe_PCI_PnP", "DisplayName": "PCIe/PCI/PnP", "MenuPath": "./Adv/PCIe/PCI/PnP"},
                                 {"MenuName": "I/O", "DisplayName": "Ports", "MenuPath": "./I/O"}])");
    const Menu& menu = tree.Place("./Adv/PCIe/PCI/PnP");
    EXPECT_EQ(menu.Name, "PCIe/PCI/PnP");
    EXPECT_EQ(menu.Parent->Name, "Adv");
    EXPECT_EQ(tree.Place("./I/O").Title(), "Ports");
    EXPECT_EQ(tree.Place("./I/O").Parent, &tree.Root());
    EXPECT_EQ(tree.Place("./Adv/PCIe/Other").Parent->Name, "PCIe");
}

TEST(MenuTree, WhatIsNoMenuIsPassedOver)
{
    MenuTree tree = TreeFrom(R"([5, null, {}, {"MenuName": 5}, {"MenuName": ""}, [],
        {"MenuName": "A", "MenuPath": 7, "DisplayName": [], "DisplayOrder": "first"}])");
    EXPECT_TRUE(tree.GivesOrder());
    EXPECT_EQ(tree.Place("./A").Title(), "A");
    EXPECT_FALSE(TreeFrom("{}").GivesOrder());
    EXPECT_TRUE(MenusIn(boost::json::value(nullptr)).empty());
    EXPECT_TRUE(MenusIn(boost::json::parse(R"({"RegistryEntries": []})")).empty());
}

TEST(MenusIn, AModelHasTheMenusOfItsDocument)
{
    const std::string text = R"({"RegistryEntries": {"Attributes": [], "Menus": [
        {"MenuName": "B", "DisplayName": "Boot", "MenuPath": "./B", "DisplayOrder": 2},
        {"MenuName": "A", "MenuPath": "./"}]}})";
    const std::vector<MenuDescription> published = MenusIn(boost::json::parse(text));
    const auto model = RedfishConfig::Client::Model::Read(RedfishConfig::Client::ReadRegistryDocument(text));
    const std::vector<MenuDescription> understood = MenusIn(*model);
    ASSERT_EQ(published.size(), 2U);
    ASSERT_EQ(understood.size(), 2U);
    for (std::size_t place = 0; place < published.size(); ++place) {
        EXPECT_EQ(published[place].Name, understood[place].Name);
        EXPECT_EQ(published[place].DisplayName, understood[place].DisplayName);
        EXPECT_EQ(published[place].MenuPath, understood[place].MenuPath);
        EXPECT_EQ(published[place].DisplayOrder, understood[place].DisplayOrder);
        EXPECT_EQ(published[place].Position, understood[place].Position);
    }
}

TEST(MenuTree, ADeepPathIsCut)
{
    std::string path = ".";
    for (std::size_t level = 1; level <= RedfishConfig::Limits::menuLevels; ++level) {
        path += "/m";
    }
    const auto levels = [](const Menu* menu) {
        std::size_t count = 0;
        for (; menu->Parent != nullptr; menu = menu->Parent) {
            ++count;
        }
        return count;
    };
    MenuTree tree = TreeFrom("[]");
    EXPECT_EQ(levels(&tree.Place(path)), RedfishConfig::Limits::menuLevels);
    EXPECT_EQ(tree.Place(path).Name, "m");
    EXPECT_EQ(levels(&tree.Place(path + "/m")), RedfishConfig::Limits::menuLevels);
    EXPECT_EQ(tree.Place(path + "/m").Name, "m/m");

    std::string huge(2000000, '/');
    for (std::size_t place = 1; place < huge.size(); place += 2) {
        huge[place] = 'm';
    }
    EXPECT_EQ(levels(&tree.Place(huge)), RedfishConfig::Limits::menuLevels);
}

TEST(Menu, CountsTheSettingsOfItsSubMenus)
{
    MenuTree tree = TreeFrom("[]");
    tree.Place("./A").Settings = 2;
    tree.Place("./A/B").Settings = 3;
    tree.Place("./A/B/C").Settings = 4;
    EXPECT_EQ(tree.Root().AllSettings(), 9U);
    EXPECT_EQ(tree.Place("./A/B").AllSettings(), 7U);
}

} // namespace
