#include "commands/Commands.h"

#include "ToolTest.h"
#include "ValidValues.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace ToolTest;
using Lines = std::vector<std::string>;

Outcome Show(TestSystem& system, const std::vector<std::string>& names, const Presentation& presentation = {})
{
    return system.Do([&](System& s, Output& output) { return RunShow(s, names, output); }, presentation);
}

const std::string noProperties = "  Hidden          no\n"
                                 "  Grayed out      no\n"
                                 "  Read-only       no\n"
                                 "  Write-only      no\n"
                                 "  Protected       no\n"
                                 "  Immutable       no\n"
                                 "  System-unique   no\n";

TEST(Show, LittleIsKnown)
{
    TestSystem system(RegistryBuilder().Attribute("A", "String"));
    EXPECT_EQ(Show(system, {"a"}).Answers, "A\n"
                                           "  Type            String\n"
                                           "  Value           - (it has no current value)\n"
                                           "  Default         - (it has no default value)\n"
                                           "  Valid values    a text of any length\n" +
                                               noProperties + "  Reset needed    no\n");
}

TEST(Show, EverythingIsKnown)
{
    RegistryBuilder registry;
    registry.Attribute("Mode", "Enumeration",
                       {{"DisplayName", "The mode"},
                        {"MenuPath", "./Top/Sub"},
                        {"CurrentValue", "A"},
                        {"DefaultValue", "B"},
                        {"Value", {RegistryBuilder::Choice("A", "First"), RegistryBuilder::Choice("B", "B")}},
                        {"ResetRequired", true},
                        {"WarningText", "Careful."},
                        {"HelpText", "Helps."},
                        {"ReadOnly", true},
                        {"Immutable", true}});
    TestSystem system(registry);
    EXPECT_EQ(Show(system, {"Mode"}).Answers, "Mode\n"
                                              "  Display name    The mode\n"
                                              "  Type            Enumeration\n"
                                              "  Menu            Top > Sub\n"
                                              "  Value           A (First)\n"
                                              "  Default         B\n"
                                              "  Valid values    A (First)\n"
                                              "                  B\n"
                                              "  Hidden          no\n"
                                              "  Grayed out      no\n"
                                              "  Read-only       yes: marked read-only by the controller\n"
                                              "  Write-only      no\n"
                                              "  Protected       no\n"
                                              "  Immutable       yes: marked immutable by the controller\n"
                                              "  System-unique   no\n"
                                              "  Reset needed    yes\n"
                                              "  Warning         Careful.\n"
                                              "  Help            Helps.\n");
}

TEST(Show, AProtectedSettingKeepsItsValues)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"Hidden", true}, {"CurrentValue", "x"}, {"ValueExpression", "y"}});
    const std::string closed = "  Value           - (marked hidden by the controller)\n"
                               "  Default         - (marked hidden by the controller)\n"
                               "  Valid values    - (marked hidden by the controller)\n";
    const std::string open = "  Value           x\n"
                             "  Default         - (it has no default value)\n"
                             "  Valid values    a text of any length\n"
                             "  Pattern         y\n";
    TestSystem system(registry);
    EXPECT_NE(Show(system, {"A"}).Answers.find(closed), std::string::npos);
    EXPECT_EQ(Show(system, {"A"}).Code, ExitCode::Answered);
    TestSystem included(registry, {false, true});
    EXPECT_NE(Show(included, {"A"}).Answers.find(open), std::string::npos);
}

TEST(Show, ValuesAreNotTouched)
{
    TestSystem system(RegistryBuilder().Attribute("A", "String", {{"CurrentValue", " a  b "}, {"DefaultValue", ""}}));
    EXPECT_NE(Show(system, {"A"}).Answers.find("  Value            a  b \n  Default         \"\"\n"),
              std::string::npos);
}

TEST(Show, ProseIsWrappedBesideItsLabel)
{
    TestSystem system(RegistryBuilder().Attribute("A", "Boolean", {{"HelpText", "one two three four\n\nfive"}}));
    Presentation narrow;
    narrow.Width = 18 + 20; // what stands left of the text, and the least that is left for it
    const std::string wrapped = "  Help            one two three four\n"
                                "\n"
                                "                  five\n";
    EXPECT_NE(Show(system, {"A"}, narrow).Answers.find(wrapped), std::string::npos);
    narrow.Width = 5;
    EXPECT_NE(Show(system, {"A"}, narrow).Answers.find(wrapped), std::string::npos);
}

TEST(Show, SeveralSettingsAndOnesThatAreNotThere)
{
    TestSystem system(RegistryBuilder().Attribute("Alpha", "Boolean").Attribute("Beta", "Boolean"));
    const Outcome outcome = Show(system, {"Alpha", "Gamma", "beta", "Bete"});
    EXPECT_EQ(outcome.Code, ExitCode::Refused);
    EXPECT_EQ(outcome.Answers.rfind("Alpha\n", 0), 0U);
    EXPECT_NE(outcome.Answers.find("Reset needed    no\n\nBeta\n"), std::string::npos);
    EXPECT_EQ(outcome.Complaints,
              (Lines{"Unable to find the setting Gamma.", "Unable to find the setting Bete. Did you mean Beta?"}));
}

TEST(Show, JsonHasEveryFact)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer",
                       {{"DisplayName", "The A"}, {"MenuPath", "./M"}, {"CurrentValue", 5}, {"ResetRequired", true}});
    TestSystem system(registry);
    const boost::json::value answer = Show(system, {"A"}, AsJson()).Json();
    boost::json::value setting = answer.at("settings").at(0);
    EXPECT_EQ(setting.at("status").as_object().size(), 7U);
    setting.as_object().erase("status");
    EXPECT_EQ(setting, boost::json::parse(R"({"name": "A", "displayName": "The A", "type": "Integer", "menu": "./M",
        "menuTitles": ["M"], "value": 5, "default": null, "choices": "Integer ", "resetRequired": true, "warning": null,
        "help": null, "refusals": {"default": "A has no default value."}, "uncertain": {}})"));
    EXPECT_EQ(answer.at("refused"), boost::json::array());
}

/** The valid values of an attribute with these members. */
Lines Describe(const std::string& type, const boost::json::object& members, bool hex = false)
{
    boost::json::object attribute{{"AttributeName", "A"}, {"Type", type}};
    for (const auto& [key, value] : members) {
        attribute[key] = value;
    }
    const boost::json::value document = attribute;
    return DescribeValidValues(boost::json::value_to<RedfishConfig::RedfishConfigSettingInfoStru>(document),
                               {hex, false});
}

TEST(ValidValues, OfIntegers)
{
    EXPECT_EQ(Describe("Integer", {}), Lines{"any whole number"});
    EXPECT_EQ(Describe("integer", {{"LowerBound", -1}, {"UpperBound", 9}}), Lines{"-1 to 9"});
    EXPECT_EQ(Describe("Integer", {{"LowerBound", 1}}), Lines{"at least 1"});
    EXPECT_EQ(Describe("Integer", {{"UpperBound", 9}}), Lines{"at most 9"});
    EXPECT_EQ(Describe("Integer", {{"LowerBound", 4}, {"UpperBound", 4}}), Lines{"4"});
    EXPECT_EQ(Describe("Integer", {{"ScalarIncrement", 2}}), Lines{"any whole number, in steps of 2"});
    EXPECT_EQ(Describe("Integer", {{"ScalarIncrement", 1}}), Lines{"any whole number"});
    EXPECT_EQ(Describe("Integer", {{"ScalarIncrement", 0}}), Lines{"any whole number"});
    EXPECT_EQ(Describe("Integer", {{"LowerBound", 0}, {"UpperBound", 31}, {"ScalarIncrement", 16}}, true),
              Lines{"0x0 to 0x1f, in steps of 0x10"});
}

TEST(ValidValues, OfTexts)
{
    EXPECT_EQ(Describe("String", {}), Lines{"a text of any length"});
    EXPECT_EQ(Describe("Password", {{"MinLength", 8}, {"MaxLength", 16}}), Lines{"a text of 8 to 16 bytes"});
    EXPECT_EQ(Describe("String", {{"MaxLength", 16}}, true), Lines{"a text of at most 16 bytes"});
}

TEST(ValidValues, OfBooleansAndEnumerations)
{
    const auto choice = RegistryBuilder::Choice;
    EXPECT_EQ(Describe("Boolean", {}), Lines{"true or false"});
    EXPECT_EQ(Describe("Enumeration", {}), Lines{"none"});
    EXPECT_EQ(Describe("Enumeration", {{"Value", {choice("A", "A"), choice("B", "")}}}), Lines{"A, B"});
    EXPECT_EQ(Describe("Enumeration", {{"Value", {choice("A", "A"), choice("B", "Bee")}}}), (Lines{"A", "B (Bee)"}));
}

TEST(ValidValues, ManyChoicesFillSeveralLines)
{
    boost::json::array choices;
    for (char letter = 'a'; letter <= 'd'; ++letter) {
        choices.push_back(RegistryBuilder::Choice(std::string(25, letter), ""));
    }
    EXPECT_EQ(Describe("Enumeration", {{"Value", choices}}),
              (Lines{std::string(25, 'a') + ", " + std::string(25, 'b'),
                     std::string(25, 'c') + ", " + std::string(25, 'd')}));
}

} // namespace
