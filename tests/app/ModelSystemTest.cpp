#include "ToolTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace ToolTest;
using Names = std::vector<std::string>;
using RedfishConfig::FILTER_PATCH;

Names NamesOf(const System& system)
{
    Names names;
    for (const Setting& setting : system.Settings()) {
        names.push_back(setting.Name());
    }
    return names;
}

boost::json::array Choices(const std::vector<std::pair<std::string, std::string>>& choices)
{
    boost::json::array list;
    for (const auto& [name, displayName] : choices) {
        list.push_back(RegistryBuilder::Choice(name, displayName));
    }
    return list;
}

/** Settings of every type with all that they can have, and no rule. */
RegistryBuilder Plain()
{
    RegistryBuilder registry;
    registry.Attribute("Number", "Integer",
                       {{"CurrentValue", 31},
                        {"DefaultValue", 8},
                        {"LowerBound", 0},
                        {"UpperBound", 64},
                        {"ScalarIncrement", 1},
                        {"HelpText", "x"},
                        {"MenuPath", "./A/B/C"}});
    registry.Attribute("Choice", "Enumeration",
                       {{"CurrentValue", "b"},
                        {"DefaultValue", "a"},
                        {"DisplayName", "A choice"},
                        {"HelpText", ""},
                        {"Value", Choices({{"b", "Bee"}, {"a", "a"}})},
                        {"MenuPath", "./A/D/C"}});
    registry.Attribute("Truth", "Boolean", {{"CurrentValue", true}, {"DefaultValue", false}, {"MenuPath", "./A/B/C"}});
    registry.Attribute("Text", "String",
                       {{"CurrentValue", "t"}, {"MinLength", 1}, {"MaxLength", 9}, {"ValueExpression", "[a-z]*"}});
    registry.Attribute("Secret", "Password", {{"CurrentValue", "hunter2"}, {"MinLength", 4}, {"MenuPath", "./Z"}});
    registry.Attribute("Odd", "Integer", {{"LowerBound", 9}, {"UpperBound", 1}, {"MenuPath", "./Y/Z"}});
    return registry;
}

/** The answer of a setting for one of these. */
std::string TextOf(const Answer& answer)
{
    return answer.Ok() ? answer.Text : std::to_string(static_cast<int>(answer.Result));
}

TEST(ModelSystem, AnswersAsTheLibraryWhereThereAreNoRules)
{
    for (const bool hex : {false, true}) {
        TestSystem system(Plain(), {hex, false});
        PublishedTestSystem library(Plain(), {hex, false});
        ASSERT_EQ(NamesOf(*system), NamesOf(*library));
        for (const Question question : {Question::Value, Question::Default, Question::Choices, Question::Description}) {
            const std::vector<Answer> answers = system->AskAll(question, Detail::Reasons);
            const std::vector<Answer> expected = library->AskAll(question, Detail::Reasons);
            for (std::size_t place = 0; place < expected.size(); ++place) {
                EXPECT_EQ(TextOf(answers.at(place)), TextOf(expected[place])) << expected[place].Name;
                EXPECT_EQ(answers[place].Concealed, expected[place].Concealed) << expected[place].Name;
                EXPECT_EQ(answers[place].Held, expected[place].Held) << expected[place].Name;
            }
        }
        EXPECT_EQ(system->Groups(), library->Groups());
    }
}

TEST(ModelSystem, AsksForAllAsForEach)
{
    RegistryBuilder registry = Plain();
    registry.Attribute("Ghost", "Boolean", {{"CurrentValue", true}});
    registry.Attribute("Guarded", "String", {{"Hidden", true}, {"CurrentValue", "g"}});
    registry.Rule("Ghost", "Hidden", true, {Term{"Number", "EQU", 31}});
    for (const bool includeProtected : {false, true}) {
        TestSystem system(registry, {false, includeProtected});
        for (const Question question : {Question::Value, Question::Default, Question::Choices, Question::Description}) {
            for (const Answer& answer : system->AskAll(question, Detail::Reasons)) {
                const Answer single = system->Ask(question, answer.Name);
                EXPECT_EQ(answer.Text, single.Text);
                EXPECT_EQ(static_cast<int>(answer.Result), static_cast<int>(single.Result)) << answer.Name;
                EXPECT_EQ(answer.Result.ErrorMsg(), single.Result.ErrorMsg());
            }
        }
        EXPECT_EQ(system->Ask(Question::Value, "Guarded").Ok(), includeProtected);
    }
}

TEST(ModelSystem, AttributesOfATypeThatIsNotKnownAreNoSettings)
{
    TestSystem system(RegistryBuilder().Attribute("Paint", "Colour").Attribute("Lamp", "Boolean"));
    EXPECT_EQ(NamesOf(*system), Names{"Lamp"});
    EXPECT_EQ(system->Find("Paint"), nullptr);
    const Answer answer = system->Ask(Question::Value, "paint");
    EXPECT_EQ(answer.Result, RedfishConfig::RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer.Result.ErrorMsg(), "Paint is of a type that is not known.");
}

TEST(ModelSystem, FindsNamesInAnyLetterCase)
{
    TestSystem system(RegistryBuilder().Attribute("Zulu", "Boolean").Attribute("BootMode", "Boolean"));
    EXPECT_EQ(system->Find("bOOTmODE"), &system->Settings()[1]);
    EXPECT_EQ(system->Find("Boot"), nullptr);
    EXPECT_EQ(system->Find(""), nullptr);
    EXPECT_EQ(system->Ask(Question::Value, "Boot").Result, RedfishConfig::RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(system->PreparePatch("Boot", "x", FILTER_PATCH).Result.ErrorMsg(), "Unable to find the setting Boot.");
    EXPECT_EQ(system->PrepareDefault("Boot").Result, RedfishConfig::RESULT_SETTING_NOT_FOUND);
}

TEST(ModelSystem, TheValuesOfTheSystemGoBeforeThoseOfTheRegistry)
{
    TestSystem system(Plain(), {}, {{"number", std::int64_t{7}}, {"Choice", std::nullopt}});
    EXPECT_EQ(system->Ask(Question::Value, "Number").Text, "7");
    EXPECT_EQ(system->Ask(Question::Value, "Choice").Result.ErrorMsg(), "Choice has no current value.");
    EXPECT_EQ(system->Ask(Question::Value, "Truth").Text, "true");
}

struct RefusalCase {
    const char* Property; ///< that a rule gives
    Question Asked;
    const char* Refusal; ///< empty for none
};

TEST(ModelSystem, RefusesQuestionsAsTheLibraryDoes)
{
    const RefusalCase cases[] = {
        {"Hidden", Question::Value, "A is hidden because B is 5 (rule 0)."},
        {"Hidden", Question::Default, ""},
        {"Hidden", Question::Choices, ""},
        {"Hidden", Question::Description, ""},
        {"WriteOnly", Question::Value, "A is write-only because B is 5 (rule 0)."},
        {"WriteOnly", Question::Default, ""},
        {"ReadOnly", Question::Value, ""},
        {"GrayOut", Question::Value, ""},
        {"Immutable", Question::Value, ""},
    };
    for (const RefusalCase& one : cases) {
        RegistryBuilder registry;
        registry.Attribute("A", "Boolean", {{"CurrentValue", true}, {"DefaultValue", true}, {"HelpText", "x"}});
        registry.Attribute("B", "Integer", {{"CurrentValue", 5}});
        registry.Rule("A", one.Property, true, {Term{"B", "EQU", 5}});
        TestSystem system(registry);
        const Answer answer = system->Ask(one.Asked, "a");
        EXPECT_EQ(answer.Result.ErrorMsg(), one.Refusal) << one.Property;
        EXPECT_EQ(static_cast<int>(answer.Result), *one.Refusal != '\0' ? RedfishConfig::RESULT_SHOW_VALUE_FAILED : 0);
        EXPECT_EQ(answer.Name, "a");
    }
}

TEST(ModelSystem, RefusesChangesWithTheCause)
{
    for (const auto& [property, word] : {std::pair("ReadOnly", "read-only"), std::pair("Hidden", "hidden"),
                                         std::pair("GrayOut", "grayed out"), std::pair("Immutable", "immutable")}) {
        RegistryBuilder registry;
        registry.Attribute("A", "Boolean", {{"CurrentValue", true}, {"DefaultValue", false}});
        registry.Attribute("B", "Integer", {{"CurrentValue", 5}});
        registry.Rule("A", property, true, {Term{"B", "NEQ", 6}});
        TestSystem system(registry);
        const std::string reason = std::string(word) + " because B is 5, not 6 (rule 0)";
        for (const Answer& answer : {system->PreparePatch("A", "false", FILTER_PATCH), system->PrepareDefault("A")}) {
            EXPECT_EQ(static_cast<int>(answer.Result), RedfishConfig::RESULT_CHANGE_SETTING_FAILED);
            EXPECT_EQ(answer.Result.ErrorMsg(), "A is " + reason + ".");
            EXPECT_EQ(answer.Reason, reason);
        }
        const Restored restored = system->Restore({{"A", "false"}}, true);
        EXPECT_TRUE(restored.PatchTexts.empty());
        EXPECT_EQ(restored.Refused.at("A").Reason, reason);
        EXPECT_TRUE(restored.Refused.at("A").IsFiltered);
    }
}

/** A is locked when a setting that the system does not report is 5. */
RegistryBuilder Doubtful(bool flag)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"CurrentValue", true}, {"DefaultValue", false}, {"ReadOnly", flag}});
    registry.Attribute("B", "Integer");
    registry.Rule("A", "ReadOnly", true, {Term{"B", "EQU", 5}});
    return registry;
}

TEST(ModelSystem, WhatMayBeForbiddenIsAllowedWithADoubt)
{
    TestSystem system(Doubtful(false));
    const Answer answer = system->PreparePatch("A", "false", FILTER_PATCH);
    EXPECT_TRUE(answer.Ok());
    EXPECT_EQ(answer.Text, "false");
    ASSERT_EQ(answer.Doubts.size(), 1U);
    EXPECT_EQ(answer.Doubts[0].first, StatusRow::ReadOnly);
    EXPECT_EQ(answer.Doubts[0].second, "rule 0 reads B, and the system does not report it; the controller's own flag "
                                       "says no");
    EXPECT_EQ(system->Restore({{"a", "false"}}, false).Doubtful.size(), 1U);
    const PropertyStatus status = system->StatusOf(*system->Find("A"))[StatusRow::ReadOnly];
    EXPECT_FALSE(status.Value);
    EXPECT_FALSE(status.Certain);
    EXPECT_EQ(status.Rules, std::vector<std::size_t>{0});
}

TEST(ModelSystem, WhatIsForbiddenAsFarAsIsKnownIsRefused)
{
    TestSystem system(Doubtful(true));
    const Answer answer = system->PreparePatch("A", "false", FILTER_PATCH);
    EXPECT_EQ(static_cast<int>(answer.Result), RedfishConfig::RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(answer.Result.ErrorMsg(),
              "Whether A is read-only is not certain: rule 0 reads B, and the system does not "
              "report it; the controller's own flag says yes.");
}

TEST(ModelSystem, AProtectedSettingIsHiddenByTheRegistryItself)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"Hidden", true}, {"CurrentValue", "x"}});
    TestSystem system(registry);
    const SettingStatus status = system->StatusOf(*system->Find("A"));
    EXPECT_TRUE(status.Is(StatusRow::Protected));
    EXPECT_TRUE(status.Is(StatusRow::Hidden));
    EXPECT_TRUE(status[StatusRow::Hidden].Marked);
    EXPECT_FALSE(status.IsHiddenByRule());
    EXPECT_EQ(system->Ask(Question::Value, "A").Result.ErrorMsg(), "A is marked hidden by the controller.");
    EXPECT_EQ(system->PreparePatch("A", "y", FILTER_PATCH).Result, RedfishConfig::RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(system->PrepareDefault("A").Result, RedfishConfig::RESULT_SHOW_VALUE_FAILED);
    TestSystem included(registry, {false, true});
    EXPECT_EQ(included->Ask(Question::Value, "A").Text, "x");
    EXPECT_TRUE(included->PreparePatch("A", "y", FILTER_PATCH).Ok());
}

TEST(ModelSystem, AStatusOfOneIsThatOfAll)
{
    RegistryBuilder registry = Doubtful(true);
    registry.Attribute("C", "String", {{"Hidden", true}, {"Immutable", true}});
    TestSystem system(registry);
    const std::vector<SettingStatus> all = system->AllStatus(Detail::Reasons);
    const std::vector<SettingStatus> verdicts = system->AllStatus(Detail::Verdicts);
    for (std::size_t place = 0; place < all.size(); ++place) {
        EXPECT_EQ(ToJson(all[place], true), ToJson(system->StatusOf(system->Settings()[place]), true));
        for (const ShownProperty& property : shownProperties) {
            EXPECT_EQ(all[place][property.Row].Value, verdicts[place][property.Row].Value);
            EXPECT_EQ(all[place][property.Row].Certain, verdicts[place][property.Row].Certain);
        }
    }
}

TEST(ModelSystem, WhatIsInForceIsShownAndChecked)
{
    RegistryBuilder registry;
    registry.Attribute(
        "A", "Integer",
        {{"CurrentValue", 5}, {"DefaultValue", 5}, {"LowerBound", 0}, {"UpperBound", 100}, {"HelpText", "x"}});
    registry.Attribute("B", "Boolean", {{"CurrentValue", true}});
    registry.Rule("A", "UpperBound", 10, {Term{"B", "EQU", true}});
    registry.Rule("A", "DefaultValue", 7, {Term{"B", "EQU", true}});
    registry.Rule("A", "HelpText", "Now.", {Term{"B", "EQU", true}});
    registry.Rule("A", "ResetRequired", true, {Term{"B", "EQU", true}});
    TestSystem system(registry);
    EXPECT_EQ(system->Ask(Question::Default, "A").Text, "7");
    EXPECT_EQ(system->Ask(Question::Choices, "A").Text, "Integer LowerBound=0 UpperBound=10 default=7 ");
    EXPECT_EQ(system->Ask(Question::Description, "A").Text, "A\n\nHelp for A\n--------------------------\nNow.");
    EXPECT_TRUE(system->Find("A")->Record().ResetRequired);
    EXPECT_EQ(system->Find("A")->Record().UpperBound, 10);
    EXPECT_EQ(system->Find("A")->Record().DefaultValue, RedfishConfig::SettingValue(std::int64_t{7}));
    EXPECT_EQ(system->PrepareDefault("A").Text, "7");
    EXPECT_FALSE(system->PreparePatch("A", "11", FILTER_PATCH).Ok());
    TestSystem otherwise(registry, {}, {{"B", false}});
    EXPECT_EQ(otherwise->Ask(Question::Default, "A").Text, "5");
    EXPECT_TRUE(otherwise->PreparePatch("A", "11", FILTER_PATCH).Ok());
}

TEST(ModelSystem, NarrowedChoicesAreNotAccepted)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration",
                       {{"CurrentValue", "x"}, {"DefaultValue", "y"}, {"Value", Choices({{"x", "Ex"}, {"y", "Why"}})}});
    registry.Attribute("B", "Boolean", {{"CurrentValue", true}});
    registry.Rule("A", "Value", boost::json::array{RegistryBuilder::Choice("x", "Ex")}, {Term{"B", "EQU", true}});
    TestSystem system(registry);
    EXPECT_EQ(system->Find("A")->Record().Value, (std::map<std::string, std::string>{{"x", "Ex"}}));
    EXPECT_TRUE(system->PreparePatch("A", "ex", FILTER_PATCH).Ok());
    EXPECT_FALSE(system->PreparePatch("A", "y", FILTER_PATCH).Ok());
    EXPECT_FALSE(system->PrepareDefault("A").Ok()) << "a published choice that is ruled out now";
    EXPECT_EQ(system->Ask(Question::Choices, "A").Text, "x\n\t[x] : Ex");
}

TEST(ModelSystem, ThePasswordsValueIsNowhere)
{
    RegistryBuilder registry;
    registry.Attribute("Key", "password", {{"CurrentValue", "hunter2"}, {"DefaultValue", "letmein"}});
    TestSystem system(registry);
    EXPECT_EQ(system->Find("Key")->Record().CurrentValue, std::nullopt);
    EXPECT_EQ(system->Find("Key")->Record().DefaultValue, std::nullopt);
    for (const Question question : {Question::Value, Question::Default}) {
        const Answer answer = system->Ask(question, "Key");
        EXPECT_TRUE(answer.Concealed);
        EXPECT_EQ(answer.Text, passwordMask);
        EXPECT_EQ(answer.Held, std::nullopt);
    }
    EXPECT_TRUE(system->SaveValues(RedfishConfig::FILTER_SAVE_FULL).empty());
}

TEST(ModelSystem, ADefaultIsCheckedAgainstTheLengthsThatRulesSet)
{
    for (const char* const type : {"String", "Password"}) {
        RegistryBuilder registry;
        registry.Attribute("Strict", "Enumeration",
                           {{"CurrentValue", "No"}, {"Value", Choices({{"No", ""}, {"Least", ""}, {"Most", ""}})}});
        registry.Attribute("Key", type, {{"DefaultValue", "hunter2"}, {"MinLength", 10}});
        registry.Rule("Key", "MinLength", 8, {Term{"Strict", "EQU", "Least"}});
        registry.Rule("Key", "MaxLength", 6, {Term{"Strict", "EQU", "Most"}});
        registry.Rule("Key", "MinLength", 6, {Term{"Strict", "EQU", "Most"}});
        EXPECT_TRUE(TestSystem(registry)->PrepareDefault("Key").Ok()) << type << ": no rule forbids it";
        for (const char* const strict : {"Least", "Most"}) {
            TestSystem system(registry, {}, {{"Strict", std::string(strict)}});
            const Answer answer = system->PrepareDefault("Key");
            EXPECT_EQ(answer.Result, RedfishConfig::RESULT_NEW_VALUE_INVALID) << type << ' ' << strict;
            EXPECT_NE(answer.Reason.find("The value length"), std::string::npos) << answer.Reason;
            const bool isShown =
                (answer.Result.ErrorMsg() + answer.Reason + answer.Text).find("hunter2") != std::string::npos;
            EXPECT_EQ(isShown, std::string(type) == "String") << answer.Result.ErrorMsg();
        }
    }
}

TEST(ModelSystem, SavesWhatMayBeChanged)
{
    RegistryBuilder registry = Plain();
    registry.Attribute("Tag", "String", {{"IsSystemUniqueProperty", true}, {"CurrentValue", "T"}});
    registry.Attribute("Guarded", "String", {{"Hidden", true}, {"CurrentValue", "g"}});
    registry.Rule("Truth", "GrayOut", true, {Term{"Number", "EQU", 31}});
    using Texts = std::map<std::string, std::string>;
    TestSystem system(registry, {true, false});
    EXPECT_EQ(system->SaveValues(RedfishConfig::FILTER_SAVE_PORTABLE),
              (Texts{{"Number", "31"}, {"Choice", "b"}, {"Text", "t"}}));
    EXPECT_EQ(system->SaveValues(RedfishConfig::FILTER_SAVE_FULL),
              (Texts{{"Number", "31"}, {"Choice", "b"}, {"Text", "t"}, {"Tag", "T"}}));
    TestSystem included(registry, {false, true});
    EXPECT_EQ(included->SaveValues(RedfishConfig::FILTER_SAVE).count("Guarded"), 1U);
}

TEST(ModelSystem, RestoresWhatIsValid)
{
    TestSystem system(Plain());
    const Restored restored = system->Restore({{"NUMBER", "9"}, {"Choice", "bee"}, {"Text", "UPPER"}}, false);
    EXPECT_EQ(restored.PatchTexts, (std::map<std::string, std::string>{{"Number", "9"}, {"Choice", "\"b\""}}));
    ASSERT_EQ(restored.Refused.size(), 1U);
    EXPECT_EQ(restored.Refused.at("Text").Reason, "Expression check failed, pattern=[a-z]*");
    EXPECT_FALSE(restored.Refused.at("Text").IsFiltered);
}

TEST(ModelSystem, IdentityHasWhatTheRegistryHas)
{
    boost::json::value registry = Plain().Json();
    registry.as_object()["Id"] = "R.1";
    EXPECT_EQ(TestSystem(registry)->Identity(), boost::json::parse(R"({"Id": "R.1"})").as_object());
}

} // namespace
