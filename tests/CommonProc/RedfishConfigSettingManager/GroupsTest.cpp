#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

using Groups = std::map<std::string, std::vector<std::string>>;
using Texts = std::map<std::string, std::string>;

RedfishConfigSettingManager ManagerOf(std::string registry, SettingValueMap currentValues = {})
{
    return RedfishConfigSettingManager(registry, currentValues, false, {});
}

/** A registry with a text attribute "A0", "A1", ... for each menu path. */
RegistryBuilder RegistryOf(const std::vector<std::string>& menuPaths)
{
    RegistryBuilder registry;
    for (std::size_t i = 0; i < menuPaths.size(); ++i) {
        registry.Attribute("A" + std::to_string(i), "String", {{"MenuPath", menuPaths[i]}, {"CurrentValue", "x"}});
    }
    return registry;
}

Groups GroupsOf(RedfishConfigSettingManager& manager)
{
    Groups groups{{"before", {"gone"}}};
    manager.GetGroupList(groups);
    return groups;
}

Groups GroupsOf(const RegistryBuilder& registry)
{
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());
    return GroupsOf(manager);
}

const char* const enterAll = "Enter RedfishConfigSettingManager::GenerateAllSetting()";

} // namespace

TEST(GroupList, TakesSecondAndThirdPieceOfTheMenuPath)
{
    const struct {
        std::vector<std::string> paths;
        Groups groups;
    } rows[] = {
        {{}, {}},
        {{""}, {}},
        {{"."}, {}},
        {{"./A"}, {}},
        {{"A"}, {}},
        {{"./A/B"}, {{"A", {}}}},
        {{"./A/B/X"}, {{"A", {"B"}}}},
        {{"./A/B/X", "./A/B/Y"}, {{"A", {"B"}}}},
        {{"./Processors/CPU/Cores"}, {{"Processors", {"CPU"}}}},
        {{"./Processors/Cores"}, {{"Processors", {}}}},
        {{"./A/B/C/D/E/F"}, {{"A", {"B"}}}},
        {{"./A/B", "./A/C/X"}, {{"A", {"C"}}}},
        {{"./A/C/X", "./A/B"}, {{"A", {"C"}}}},
        // sub-menus as first seen, groups in byte-wise order
        {{"./A/Z/1", "./A/Y/1", "./A/Z/2", "./A/X/1"}, {{"A", {"Z", "Y", "X"}}}},
        {{"./b/1/1", "./a/1/1", "./B/1/1"}, {{"B", {"1"}}, {"a", {"1"}}, {"b", {"1"}}}},
        {{"./A/sub/1", "./A/Sub/1"}, {{"A", {"sub", "Sub"}}}},
        // the first piece does not matter
        {{"Top/A/B/X"}, {{"A", {"B"}}}},
        {{"/A/B/X"}, {{"A", {"B"}}}},
        // empty pieces count
        {{"./A/"}, {{"A", {}}}},
        {{"./A/B/"}, {{"A", {"B"}}}},
        {{"//B"}, {{"", {}}}},
        {{"./A//X"}, {{"A", {""}}}},
        {{"///"}, {{"", {""}}}},
        // blanks and other characters are part of a piece
        {{"./Main Menu/ Sub /X"}, {{"Main Menu", {" Sub "}}}},
        {{"./A\\B/C/D"}, {{"A\\B", {"C"}}}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(GroupsOf(RegistryOf(row.paths)), row.groups) << (row.paths.empty() ? "" : row.paths.front());
    }
}

TEST(GroupList, CountsAttributesThatMakeNoSetting)
{
    RegistryBuilder registry;
    registry.Attribute("Odd", "Float", {{"MenuPath", "./A/B/X"}});
    registry.RawAttribute({{"MenuPath", "./C/D/X"}});
    registry.Attribute("Good", "String", {{"MenuPath", 5}});
    registry.Attribute("Last", "String", {{"MenuPath", "./A/E/X"}});
    EXPECT_EQ(GroupsOf(registry), (Groups{{"A", {"B", "E"}}, {"C", {"D"}}}));
}

TEST(GroupList, LogsEveryMenuPath)
{
    RegistryBuilder registry = RegistryOf({"./A", "", "./A/B"});
    registry.Attribute("NoMenu", "String");
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());
    LogCapture log;
    GroupsOf(manager);
    const LogLine enterText(4, "Enter RedfishConfigSettingManager::createTextSetting()");
    const LogLine exitText(4, "Exit RedfishConfigSettingManager::createTextSetting()");
    const LogLine enterGroup(4, "Entering  RedfishConfigSettingManager::GetGroupName");
    const LogLine exitGroup(4, "Exiting  RedfishConfigSettingManager::GetGroupName");
    EXPECT_THAT(log.Lines(),
                ElementsAreArray(std::vector<LogLine>{
                    {4, "Entering  RedfishConfigSettingManager::GetGroupList"},
                    {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName="},
                    {3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()"},
                    {4, "The schema not include dependency information."},
                    {3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()"},
                    {4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=0"},
                    {3, enterAll},
                    enterText,
                    exitText,
                    enterGroup,
                    exitGroup,
                    enterText,
                    exitText,
                    enterText,
                    exitText,
                    enterGroup,
                    exitGroup,
                    enterText,
                    exitText,
                    {3, "Exit RedfishConfigSettingManager::GenerateAllSetting()"},
                    {4, "Exiting  RedfishConfigSettingManager::GetGroupList"},
                }));
}

TEST(GroupList, IsKeptOnceThereAreGroups)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryOf({"./A/B/X"}).Text());
    const Groups groups{{"A", {"B"}}};
    EXPECT_EQ(GroupsOf(manager), groups);
    LogCapture log;
    EXPECT_EQ(GroupsOf(manager), groups);
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Entering  RedfishConfigSettingManager::GetGroupList"),
                                         LogLine(4, "Exiting  RedfishConfigSettingManager::GetGroupList")));
}

TEST(GroupList, ComesWithTheGenerationOfAllSettings)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryOf({"./A/B/X"}).Text());
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    LogCapture log;
    EXPECT_EQ(GroupsOf(manager), (Groups{{"A", {"B"}}}));
    EXPECT_FALSE(log.Has(3, enterAll));
}

TEST(GroupList, GeneratesAllSettingsAfterSingleOnes)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryOf({"./A/B/X", "./A/C/X"}).Text());
    std::string value;
    EXPECT_EQ(manager.QuerySettingValue("A1", value), RESULT_SUCCEED);
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values.size(), 1u) << "only the setting that was asked for";

    EXPECT_EQ(GroupsOf(manager), (Groups{{"A", {"B", "C"}}}));
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values.size(), 2u);
}

TEST(GroupList, BringsTheRulesOfSettingsMadeForOthers)
{
    RegistryBuilder registry = RegistryOf({"./A/B/X", "./A/B/Y", "./A/B/Z"});
    registry.Rule("A0", "ReadOnly", true, {Term{"A1", "EQU", "x"}});
    registry.Rule("A1", "Hidden", true, {Term{"A2", "EQU", "x"}});
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());
    std::string value;
    EXPECT_EQ(manager.QuerySettingValue("A0", value), RESULT_SUCCEED);
    EXPECT_EQ(manager.QuerySettingValue("A1", value), RESULT_SUCCEED);
    GroupsOf(manager);
    EXPECT_EQ(manager.QuerySettingValue("A1", value), RESULT_SHOW_VALUE_FAILED);
}

TEST(GroupList, GeneratesAnewWhileThereAreNoGroups)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryOf({"./A"}).Text());
    EXPECT_THAT(GroupsOf(manager), IsEmpty());
    manager.UpdateSettingValue({{"A0", std::string("hand")}});
    LogCapture log;
    EXPECT_THAT(GroupsOf(manager), IsEmpty());
    EXPECT_TRUE(log.Has(3, enterAll));
    EXPECT_TRUE(log.Has(3, "Exit RedfishConfigSettingManager::GenerateAllSetting()"));
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(manager.GetSettingProperties("A0", record), RESULT_SUCCEED);
    EXPECT_EQ(record.CurrentValue, SettingValue(std::string("x"))) << "a new setting, as the registry has it";
}

TEST(GroupList, LeavesTheSettingsOfACopyAlone)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryOf({"./A"}).Text());
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(manager.GetSettingProperties("A0", record), RESULT_SUCCEED);
    RedfishConfigSettingManager copy(manager);
    GroupsOf(manager);
    manager.UpdateSettingValue({{"A0", std::string("changed")}});
    EXPECT_EQ(copy.GetSettingProperties("A0", record), RESULT_SUCCEED);
    EXPECT_EQ(record.CurrentValue, SettingValue(std::string("x")));
}

TEST(GroupList, DoesNotApplyTheCurrentValues)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryOf({"./A/B/X"}).Text(), {{"A0", std::string("caller")}});
    LogCapture log;
    GroupsOf(manager);
    EXPECT_FALSE(log.Has(3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"));
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(manager.GetSettingProperties("A0", record), RESULT_SUCCEED);
    EXPECT_EQ(record.CurrentValue, SettingValue(std::string("x")));
}

TEST(GroupList, IsEmptyForAnUnreadableRegistry)
{
    for (const char* text : {"", "no registry", "{}", "[]", R"({"RegistryEntries":{"Attributes":5}})",
                             R"({"RegistryEntries":{"Attributes":[{"MenuPath":"./A/B"}],"Dependencies":5}})"}) {
        RedfishConfigSettingManager manager = ManagerOf(text);
        LogCapture log;
        EXPECT_THAT(GroupsOf(manager), IsEmpty()) << text;
        ASSERT_FALSE(log.Lines().empty());
        EXPECT_EQ(log.Lines().front(), LogLine(4, "Entering  RedfishConfigSettingManager::GetGroupList"));
        EXPECT_EQ(log.Lines().back(), LogLine(4, "Exiting  RedfishConfigSettingManager::GetGroupList"));
        EXPECT_THAT(manager.GetError(), IsEmpty());
    }
}
