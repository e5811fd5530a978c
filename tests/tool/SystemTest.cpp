#include "ToolTest.h"

#include "Properties.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace ToolTest;
using Names = std::vector<std::string>;

Names NamesOf(const System& system)
{
    Names names;
    for (const Setting& setting : system.Settings()) {
        names.push_back(setting.Name());
    }
    return names;
}

/** A registry whose "Menus" describe the menus of these paths, in this order. */
boost::json::value WithMenus(const RegistryBuilder& registry, const Names& paths)
{
    boost::json::value document = registry.Json();
    boost::json::array menus;
    for (const std::string& path : paths) {
        menus.push_back(boost::json::object{{"MenuName", path.substr(path.rfind('/') + 1)}, {"MenuPath", path}});
    }
    document.as_object()["RegistryEntries"].as_object()["Menus"] = menus;
    return document;
}

TEST(System, WithoutMenusTheOrderIsThatOfTheRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("Zulu", "Boolean", {{"MenuPath", "./B"}, {"DisplayOrder", 9}});
    registry.Attribute("Alpha", "Boolean", {{"MenuPath", "./A"}, {"DisplayOrder", 1}});
    registry.Attribute("Mike", "Boolean");
    TestSystem system(registry);
    EXPECT_EQ(NamesOf(*system), (Names{"Zulu", "Alpha", "Mike"}));
    EXPECT_EQ(NamesOf(*TestSystem(WithMenus(registry, {}))), (Names{"Zulu", "Alpha", "Mike"}));
}

TEST(System, MenuOrderIsMenuThenDisplayOrderThenRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("NoMenu", "Boolean", {{"DisplayOrder", 1}});
    registry.Attribute("Unordered2", "Boolean", {{"MenuPath", "./A"}});
    registry.Attribute("Unordered1", "Boolean", {{"MenuPath", "./A"}});
    registry.Attribute("InB", "Boolean", {{"MenuPath", "./B"}, {"DisplayOrder", 1}});
    registry.Attribute("InSub", "Boolean", {{"MenuPath", "./A/Sub"}, {"DisplayOrder", 1}});
    registry.Attribute("Second", "Boolean", {{"MenuPath", "./A"}, {"DisplayOrder", 20}});
    registry.Attribute("First", "Boolean", {{"MenuPath", "./A"}, {"DisplayOrder", 3}});
    registry.Attribute("Unknown", "Boolean", {{"MenuPath", "./New"}});
    TestSystem system(WithMenus(registry, {"./A", "./A/Sub", "./B"}));
    EXPECT_EQ(NamesOf(*system),
              (Names{"First", "Second", "Unordered2", "Unordered1", "InSub", "InB", "Unknown", "NoMenu"}));
}

TEST(System, AttributesThatTheLibraryPassesOverAreNoSettings)
{
    RegistryBuilder registry;
    registry.Attribute("Paint", "Colour").RawAttribute(5).RawAttribute(boost::json::object{{"Type", "Boolean"}});
    registry.Attribute("Lamp", "boolean");
    EXPECT_EQ(NamesOf(*TestSystem(registry)), Names{"Lamp"});
}

TEST(System, FindsNamesInAnyLetterCase)
{
    TestSystem system(RegistryBuilder().Attribute("BootMode", "Boolean"));
    EXPECT_EQ(system->Find("bOOTmODE"), system->Settings().data());
    EXPECT_EQ(system->Find("Boot"), nullptr);
    EXPECT_EQ(system->Find(""), nullptr);
}

TEST(System, EveryRuleCountsInASingleAnswer)
{
    // Lamp reads Switch, and the state of Switch alone would not tell that Switch is hidden by Main
    RegistryBuilder registry;
    registry.Attribute("Main", "Boolean", {{"CurrentValue", true}});
    registry.Attribute("Switch", "Boolean", {{"CurrentValue", true}});
    registry.Attribute("Lamp", "Boolean", {{"CurrentValue", true}});
    registry.Rule("Switch", "Hidden", true, {Term{"Main", "EQU", true}});
    registry.Rule("Lamp", "GrayOut", true, {Term{"Switch", "EQU", true}});
    TestSystem system(registry);
    system->Ask(askValue, "Lamp");
    EXPECT_EQ(system->Ask(askValue, "Switch").Result.ErrorMsg(),
              "The operation on setting Switch fails since the setting is hidden due to the following expression: "
              "((Main==true))");
}

TEST(System, AnAnswerWithoutAMessageGetsTheStandardOne)
{
    TestSystem system(RegistryBuilder().Attribute("Paint", "Colour"));
    const Answer answer = system->Ask(askValue, "Paint");
    EXPECT_EQ(answer.Result, RedfishConfig::RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer.Result.ErrorMsg(), RedfishConfig::ResultMessages().at(RedfishConfig::RESULT_PROPERTY_INVALID));
    EXPECT_EQ(answer.Subject, nullptr);
}

TEST(System, AsksForAllAsForEach)
{
    RegistryBuilder registry;
    registry.Attribute("Number", "Integer", {{"CurrentValue", 31}, {"DefaultValue", 8}, {"HelpText", "x"}});
    registry.Attribute("Secret", "Password", {{"CurrentValue", "hunter2"}});
    registry.Attribute("Writable", "String", {{"WriteOnly", true}, {"CurrentValue", "x"}});
    registry.Attribute("Guarded", "String", {{"Hidden", true}, {"CurrentValue", "g"}});
    registry.Attribute("Ghost", "Boolean", {{"CurrentValue", true}});
    registry.Rule("Ghost", "Hidden", true, {Term{"Number", "EQU", 31}});
    for (const bool includeProtected : {false, true}) {
        TestSystem system(registry, {true, includeProtected});
        for (const Question* question : {&askValue, &askDefault, &askChoices, &askDescription}) {
            const std::vector<Answer> all = system->AskAll(*question);
            ASSERT_EQ(all.size(), 5U);
            for (const Answer& answer : all) {
                const Answer single = system->Ask(*question, answer.Name);
                EXPECT_EQ(answer.Text, single.Text);
                EXPECT_EQ(static_cast<int>(answer.Result), static_cast<int>(single.Result)) << answer.Name;
                EXPECT_EQ(answer.Result.ErrorMsg(), single.Result.ErrorMsg());
                EXPECT_EQ(answer.Subject, single.Subject);
                EXPECT_EQ(answer.Concealed, single.Concealed);
            }
        }
        EXPECT_EQ(system->AskAll(askValue).at(3).Ok(), includeProtected);
    }
}

TEST(System, ThePasswordsValueIsNowhere)
{
    RegistryBuilder registry;
    registry.Attribute("Key", "password", {{"CurrentValue", "hunter2"}, {"DefaultValue", "letmein"}});
    TestSystem system(registry);
    const Setting& setting = *system->Find("Key");
    EXPECT_EQ(setting.Record.CurrentValue, std::nullopt);
    EXPECT_EQ(setting.Record.DefaultValue, std::nullopt);
    for (const Question* question : {&askValue, &askDefault}) {
        const Answer answer = system->Ask(*question, "Key");
        EXPECT_TRUE(answer.Ok());
        EXPECT_TRUE(answer.Concealed);
        EXPECT_EQ(answer.Text, passwordMask);
    }
}

TEST(System, StatusOfOneIsThatOfAll)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"ReadOnly", true}, {"Immutable", true}});
    registry.Attribute("B", "Boolean", {{"CurrentValue", true}, {"Hidden", true}});
    registry.Rule("A", "GrayOut", true, {Term{"B", "EQU", true}});
    TestSystem system(registry);
    const auto all = system->AllStatus();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_TRUE(all[0].ReadOnly.Value);
    EXPECT_TRUE(all[0].GrayOut.Value);
    EXPECT_TRUE(all[1].Protected.Value);
    for (std::size_t place = 0; place < all.size(); ++place) {
        EXPECT_EQ(StatusToJson(all[place]), StatusToJson(system->StatusOf(system->Settings()[place])));
    }
}

TEST(System, AFailureOfOneQuestionIsNoneOfTheNext)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"CurrentValue", true}});
    TestSystem system(registry);
    EXPECT_FALSE(system->AskAll(askDefault).front().Ok());
    EXPECT_TRUE(system->AskAll(askValue).front().Ok());
}

TEST(System, ARegistryThatTheLibraryCannotReadIsAnInputError)
{
    const boost::json::value registry =
        boost::json::parse(R"({"RegistryEntries": {"Attributes": [], "Dependencies": {}}})");
    EXPECT_THROW(
        {
            try {
                TestSystem system(registry);
            } catch (const InputError& error) {
                EXPECT_STREQ(error.what(),
                             "registry.json: the library cannot read it: Fail to parse the HTTP response.");
                throw;
            }
        },
        InputError);
}

TEST(ShownProperties, EachOfTheSevenOnce)
{
    RedfishConfig::SettingStatus status;
    for (const ShownProperty& property : shownProperties) {
        EXPECT_FALSE((status.*property.State).Value);
        (status.*property.State).Value = true;
    }
    EXPECT_TRUE(status.Hidden.Value && status.GrayOut.Value && status.ReadOnly.Value && status.WriteOnly.Value &&
                status.Protected.Value && status.Immutable.Value && status.SystemUnique.Value);
}

} // namespace
