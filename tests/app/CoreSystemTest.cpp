#include "ToolTest.h"

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

TEST(CoreSystem, WithoutMenusTheOrderIsThatOfTheRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("Zulu", "Boolean", {{"MenuPath", "./B"}, {"DisplayOrder", 9}});
    registry.Attribute("Alpha", "Boolean", {{"MenuPath", "./A"}, {"DisplayOrder", 1}});
    registry.Attribute("Mike", "Boolean");
    PublishedTestSystem system(registry);
    EXPECT_EQ(NamesOf(*system), (Names{"Zulu", "Alpha", "Mike"}));
    EXPECT_EQ(NamesOf(*PublishedTestSystem(WithMenus(registry, {}))), (Names{"Zulu", "Alpha", "Mike"}));
}

TEST(CoreSystem, MenuOrderIsMenuThenDisplayOrderThenRegistry)
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
    PublishedTestSystem system(WithMenus(registry, {"./A", "./A/Sub", "./B"}));
    EXPECT_EQ(NamesOf(*system),
              (Names{"First", "Second", "Unordered2", "Unordered1", "InSub", "InB", "Unknown", "NoMenu"}));
}

TEST(CoreSystem, AttributesThatTheLibraryPassesOverAreNoSettings)
{
    RegistryBuilder registry;
    registry.Attribute("Paint", "Colour").RawAttribute(5).RawAttribute(boost::json::object{{"Type", "Boolean"}});
    registry.Attribute("Lamp", "boolean");
    EXPECT_EQ(NamesOf(*PublishedTestSystem(registry)), Names{"Lamp"});
}

TEST(CoreSystem, FindsNamesInAnyLetterCase)
{
    PublishedTestSystem system(RegistryBuilder().Attribute("BootMode", "Boolean"));
    EXPECT_EQ(system->Find("bOOTmODE"), system->Settings().data());
    EXPECT_EQ(system->Find("Boot"), nullptr);
    EXPECT_EQ(system->Find(""), nullptr);
}

TEST(CoreSystem, EveryRuleCountsInASingleAnswer)
{
    // Lamp reads Switch, and the state of Switch alone would not tell that Switch is hidden by Main
    RegistryBuilder registry;
    registry.Attribute("Main", "Boolean", {{"CurrentValue", true}});
    registry.Attribute("Switch", "Boolean", {{"CurrentValue", true}});
    registry.Attribute("Lamp", "Boolean", {{"CurrentValue", true}});
    registry.Rule("Switch", "Hidden", true, {Term{"Main", "EQU", true}});
    registry.Rule("Lamp", "GrayOut", true, {Term{"Switch", "EQU", true}});
    PublishedTestSystem system(registry);
    system->Ask(Question::Value, "Lamp");
    EXPECT_EQ(system->Ask(Question::Value, "Switch").Result.ErrorMsg(),
              "The operation on setting Switch fails since the setting is hidden due to the following expression: "
              "((Main==true))");
}

TEST(CoreSystem, AnAnswerWithoutAMessageGetsTheStandardOne)
{
    PublishedTestSystem system(RegistryBuilder().Attribute("Paint", "Colour"));
    const Answer answer = system->Ask(Question::Value, "Paint");
    EXPECT_EQ(answer.Result, RedfishConfig::RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer.Result.ErrorMsg(), RedfishConfig::ResultMessages().at(RedfishConfig::RESULT_PROPERTY_INVALID));
    EXPECT_EQ(answer.Subject, nullptr);
}

TEST(CoreSystem, AsksForAllAsForEach)
{
    RegistryBuilder registry;
    registry.Attribute("Number", "Integer", {{"CurrentValue", 31}, {"DefaultValue", 8}, {"HelpText", "x"}});
    registry.Attribute("Secret", "Password", {{"CurrentValue", "hunter2"}});
    registry.Attribute("Writable", "String", {{"WriteOnly", true}, {"CurrentValue", "x"}});
    registry.Attribute("Guarded", "String", {{"Hidden", true}, {"CurrentValue", "g"}});
    registry.Attribute("Ghost", "Boolean", {{"CurrentValue", true}});
    registry.Rule("Ghost", "Hidden", true, {Term{"Number", "EQU", 31}});
    for (const bool includeProtected : {false, true}) {
        PublishedTestSystem system(registry, {true, includeProtected});
        for (const Question question : {Question::Value, Question::Default, Question::Choices, Question::Description}) {
            const std::vector<Answer> all = system->AskAll(question, Detail::Reasons);
            ASSERT_EQ(all.size(), 5U);
            for (const Answer& answer : all) {
                const Answer single = system->Ask(question, answer.Name);
                EXPECT_EQ(answer.Text, single.Text);
                EXPECT_EQ(static_cast<int>(answer.Result), static_cast<int>(single.Result)) << answer.Name;
                EXPECT_EQ(answer.Result.ErrorMsg(), single.Result.ErrorMsg());
                EXPECT_EQ(answer.Subject, single.Subject);
                EXPECT_EQ(answer.Concealed, single.Concealed);
            }
        }
        EXPECT_EQ(system->AskAll(Question::Value, Detail::Reasons).at(3).Ok(), includeProtected);
    }
}

TEST(CoreSystem, ThePasswordsValueIsNowhere)
{
    RegistryBuilder registry;
    registry.Attribute("Key", "password", {{"CurrentValue", "hunter2"}, {"DefaultValue", "letmein"}});
    PublishedTestSystem system(registry);
    const Setting& setting = *system->Find("Key");
    EXPECT_EQ(setting.Record().CurrentValue, std::nullopt);
    EXPECT_EQ(setting.Record().DefaultValue, std::nullopt);
    for (const Question question : {Question::Value, Question::Default}) {
        const Answer answer = system->Ask(question, "Key");
        EXPECT_TRUE(answer.Ok());
        EXPECT_TRUE(answer.Concealed);
        EXPECT_EQ(answer.Text, passwordMask);
    }
}

TEST(CoreSystem, StatusOfOneIsThatOfAll)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"ReadOnly", true}, {"Immutable", true}});
    registry.Attribute("B", "Boolean", {{"CurrentValue", true}, {"Hidden", true}});
    registry.Rule("A", "GrayOut", true, {Term{"B", "EQU", true}});
    PublishedTestSystem system(registry);
    const auto all = system->AllStatus(Detail::Reasons);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_TRUE(all[0].Is(StatusRow::ReadOnly));
    EXPECT_TRUE(all[0].Is(StatusRow::GrayOut));
    EXPECT_TRUE(all[1].Is(StatusRow::Protected));
    for (std::size_t place = 0; place < all.size(); ++place) {
        EXPECT_EQ(ToJson(all[place], false), ToJson(system->StatusOf(system->Settings()[place]), false));
    }
}

TEST(CoreSystem, AFailureOfOneQuestionIsNoneOfTheNext)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"CurrentValue", true}});
    PublishedTestSystem system(registry);
    EXPECT_FALSE(system->AskAll(Question::Default, Detail::Reasons).front().Ok());
    EXPECT_TRUE(system->AskAll(Question::Value, Detail::Reasons).front().Ok());
}

TEST(CoreSystem, ARegistryThatTheLibraryCannotReadIsAnInputError)
{
    const boost::json::value registry =
        boost::json::parse(R"({"RegistryEntries": {"Attributes": [], "Dependencies": {}}})");
    EXPECT_THROW(
        {
            try {
                PublishedTestSystem system(registry);
            } catch (const InputError& error) {
                EXPECT_STREQ(error.what(),
                             "registry.json: the library cannot read it: Fail to parse the HTTP response.");
                throw;
            }
        },
        InputError);
}

} // namespace
