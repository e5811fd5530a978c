#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::AnyOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;

namespace {

using Texts = std::map<std::string, std::string>;
using Statuses = std::map<std::string, SettingStatus>;

RedfishConfigSettingManager ManagerOf(std::string registry, SettingValueMap currentValues = {},
                                      const Config_Options& options = {})
{
    return RedfishConfigSettingManager(registry, currentValues, false, options);
}

RedfishConfigSettingManager ManagerOf(const RegistryBuilder& registry, const SettingValueMap& currentValues = {},
                                      const Config_Options& options = {})
{
    return ManagerOf(registry.Text(), currentValues, options);
}

SettingValue Text(const char* text)
{
    return std::string(text);
}

RedfishConfigSettingInfoStru PropertiesOf(RedfishConfigSettingManager& manager, const std::string& name)
{
    RedfishConfigSettingInfoStru properties;
    EXPECT_EQ(manager.GetSettingProperties(name, properties), RESULT_SUCCEED) << name;
    return properties;
}

std::string ValueOf(RedfishConfigSettingManager& manager, const std::string& name)
{
    std::string value;
    const RedfishConfigResult result = manager.QuerySettingValue(name, value);
    EXPECT_EQ(result, RESULT_SUCCEED) << name << ": " << result.ErrorMsg();
    return value;
}

std::vector<std::string> NamesOf(const std::vector<RedfishConfigSettingInfoStru>& properties)
{
    std::vector<std::string> names;
    for (const RedfishConfigSettingInfoStru& record : properties) {
        names.push_back(record.AttributeName.value_or("(absent)"));
    }
    return names;
}

/** The names of all generated settings; generates all of them when there are none. */
std::vector<std::string> GeneratedNames(RedfishConfigSettingManager& manager)
{
    std::vector<RedfishConfigSettingInfoStru> properties;
    EXPECT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
    return NamesOf(properties);
}

/** An operation of the manager, with outputs of its own; `name` counts only for the operations on one setting. */
struct Operation {
    const char* label;
    bool onOneSetting;
    std::function<RedfishConfigResult(RedfishConfigSettingManager& manager, const std::string& name)> run;
};

using TextQuery = RedfishConfigResult (RedfishConfigSettingManager::*)(const std::string&, std::string&);
using TextsQuery = RedfishConfigResult (RedfishConfigSettingManager::*)(Texts&);

Operation OneSetting(const char* label, TextQuery query)
{
    return {label, true, [query](RedfishConfigSettingManager& manager, const std::string& name) {
                std::string answer = "before";
                const RedfishConfigResult result = (manager.*query)(name, answer);
                if (result != RESULT_SUCCEED) {
                    EXPECT_EQ(answer, "before");
                }
                return result;
            }};
}

Operation AllSettings(const char* label, TextsQuery query)
{
    return {label, false, [query](RedfishConfigSettingManager& manager, const std::string&) {
                Texts answers{{"before", "before"}};
                const RedfishConfigResult result = (manager.*query)(answers);
                const bool answered = result == RESULT_SUCCEED || result == RESULT_GROUP_PARTIAL_FAILURE;
                EXPECT_EQ(answers.count("before"), answered ? 0u : 1u)
                    << "what the caller put there goes when the settings are at hand, not earlier";
                return result;
            }};
}

const std::vector<Operation>& Operations()
{
    using Manager = RedfishConfigSettingManager;
    static const std::vector<Operation> operations = {
        OneSetting("QuerySettingValue", &Manager::QuerySettingValue),
        OneSetting("QuerySettingDefaultValue", &Manager::QuerySettingDefaultValue),
        OneSetting("QuerySettingDescription", &Manager::QuerySettingDescription),
        OneSetting("QuerySettingValidValues", &Manager::QuerySettingValidValues),
        {"QuerySettingStatus", true,
         [](Manager& manager, const std::string& name) {
             SettingStatus status;
             return manager.QuerySettingStatus(name, status);
         }},
        {"GetSettingProperties", true,
         [](Manager& manager, const std::string& name) {
             RedfishConfigSettingInfoStru properties;
             properties.DisplayOrder = 77;
             const RedfishConfigResult result = manager.GetSettingProperties(name, properties);
             if (result != RESULT_SUCCEED) {
                 EXPECT_EQ(properties.DisplayOrder, 77);
             }
             return result;
         }},
        AllSettings("QueryGroupSettingValues", &Manager::QueryGroupSettingValues),
        AllSettings("QueryGroupSettingDefaultValues", &Manager::QueryGroupSettingDefaultValues),
        AllSettings("QueryGroupSettingDescriptions", &Manager::QueryGroupSettingDescriptions),
        AllSettings("QueryGroupSettingValidValues", &Manager::QueryGroupSettingValidValues),
        {"QueryGroupSettingStatus", false,
         [](Manager& manager, const std::string&) {
             Statuses statuses{{"before", {}}};
             const RedfishConfigResult result = manager.QueryGroupSettingStatus(statuses);
             EXPECT_EQ(statuses.count("before"), result == RESULT_SUCCEED ? 0u : 1u);
             return result;
         }},
        {"GetAllSettingProperties", false,
         [](Manager& manager, const std::string&) {
             std::vector<RedfishConfigSettingInfoStru> properties(1);
             const RedfishConfigResult result = manager.GetAllSettingProperties(properties);
             if (result != RESULT_SUCCEED) {
                 EXPECT_EQ(properties.size(), 1u);
             }
             return result;
         }},
    };
    return operations;
}

/** A setting of each type, a menu, and rules between them. */
RegistryBuilder SmallRegistry()
{
    RegistryBuilder registry;
    registry.Attribute("Mode", "Enumeration",
                       {{"CurrentValue", "Fast"},
                        {"DefaultValue", "Slow"},
                        {"Value", {RegistryBuilder::Choice("Fast", "Quick"), RegistryBuilder::Choice("Slow", "Slow")}},
                        {"MenuPath", "./Main/Speed/Fine"}});
    registry.Attribute("Limit", "Integer", {{"CurrentValue", 5}, {"LowerBound", 0}, {"UpperBound", 10}});
    registry.Attribute("Switch", "Boolean", {{"CurrentValue", true}, {"HelpText", "Turns it on."}});
    registry.Attribute("Label", "String", {{"CurrentValue", "text"}, {"MaxLength", 8}});
    registry.Attribute("Secret", "Password", {{"WriteOnly", true}});
    registry.Rule("Limit", "ReadOnly", true, {Term{"Mode", "EQU", "Slow", "AND"}, Term{"Switch", "EQU", true}});
    registry.Rule("Label", "Hidden", true, {Term{"Limit", "EQU", nullptr}});
    return registry;
}

} // namespace

TEST(ManagerConstruction, ParsesAndLogsNothing)
{
    LogCapture log;
    std::string text = "no registry at all";
    SettingValueMap currentValues{{"A", Text("x")}};
    const RedfishConfigSettingManager manager(text, currentValues, false, {});
    const RedfishConfigSettingManager withoutValues(text, true, {});
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(text, "no registry at all");
    EXPECT_EQ(currentValues.size(), 1u);
}

TEST(ManagerConstruction, CopiesItsArguments)
{
    std::string text = RegistryBuilder().Attribute("A", "Integer", {{"CurrentValue", 1}}).Text();
    SettingValueMap currentValues{{"A", std::int64_t{31}}};
    bool cfc = false;
    Config_Options options;
    options.ShowHexValue = true;
    RedfishConfigSettingManager manager(text, currentValues, cfc, options);
    text = "gone";
    currentValues.clear();
    cfc = true;
    options.ShowHexValue = false;
    EXPECT_EQ(ValueOf(manager, "A"), "0x1f");
}

TEST(ManagerConstruction, KeepsTheRegistrysValuesWithoutCurrentOnes)
{
    std::string text = RegistryBuilder().Attribute("A", "Integer", {{"CurrentValue", 31}}).Text();
    Config_Options options;
    RedfishConfigSettingManager decimal(text, false, options);
    EXPECT_EQ(ValueOf(decimal, "A"), "31");
    options.ShowHexValue = true;
    RedfishConfigSettingManager hexadecimal(text, false, options);
    EXPECT_EQ(ValueOf(hexadecimal, "A"), "0x1f");
}

TEST(ManagerConstruction, PutsCurrentValuesInPlaceOfTheRegistrys)
{
    RegistryBuilder registry;
    registry.Attribute("First", "String", {{"CurrentValue", "registry"}});
    registry.Attribute("Second", "String", {{"CurrentValue", "registry"}});
    registry.Attribute("Third", "Integer");
    registry.Attribute("Fourth", "String", {{"CurrentValue", "registry"}});
    RedfishConfigSettingManager manager = ManagerOf(
        registry, {{"FIRST", Text("caller")}, {"third", Text("seven")}, {"Fourth", {}}, {"Unknown", Text("x")}});
    EXPECT_EQ(ValueOf(manager, "First"), "caller");
    EXPECT_EQ(ValueOf(manager, "Second"), "registry");
    EXPECT_EQ(ValueOf(manager, "Third"), "seven") << "a value counts as given, whatever the type";

    std::string value;
    const RedfishConfigResult emptied = manager.QuerySettingValue("Fourth", value);
    EXPECT_EQ(emptied, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(emptied.ErrorMsg(), "The operation on setting Fourth fails since it has no current value.");
}

TEST(ManagerConstruction, TakesTheFlagWithoutConsequence)
{
    RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
    std::string text = SmallRegistry().Text();
    SettingValueMap none;
    RedfishConfigSettingManager flagged(text, none, true, {});
    RedfishConfigSettingManager flaggedLater = ManagerOf(SmallRegistry());
    flaggedLater.SetCFCSystem(true);
    Texts expected;
    Texts answers;
    EXPECT_EQ(manager.QueryGroupSettingValidValues(expected), RESULT_SUCCEED);
    EXPECT_EQ(expected.size(), 5u);
    EXPECT_EQ(flagged.QueryGroupSettingValidValues(answers), RESULT_SUCCEED);
    EXPECT_EQ(answers, expected);
    EXPECT_EQ(flaggedLater.QueryGroupSettingValidValues(answers), RESULT_SUCCEED);
    EXPECT_EQ(answers, expected);
}

TEST(Generation, MakesTheNamedSettingAndThoseThatItsRulesRead)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "here"}});
    registry.Attribute("B", "Integer", {{"CurrentValue", 2}});
    registry.Attribute("C", "Enumeration");
    registry.Attribute("D", "Boolean");
    registry.Rule("A", "ReadOnly", true, {Term{"B", "EQU", 1, "AND"}, Term{"C", "NEQ", nullptr}});
    registry.Rule("B", "ReadOnly", true, {Term{"D", "EQU", true}});
    RedfishConfigSettingManager manager = ManagerOf(registry);

    const std::string display = "((B.CurrentValue==1)&&(C exist))";
    LogCapture log;
    EXPECT_EQ(ValueOf(manager, "A"), "here");
    EXPECT_THAT(log.Lines(),
                ElementsAreArray(std::vector<LogLine>{
                    {3, "Enter RedfishConfigSettingManager::QuerySettingValue()"},
                    {3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:A"},
                    {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=A"},
                    {3, "Enter RedfishConfigExpression::ParseSingleSettingDependency()"},
                    {4, "The property: ReadOnly of setting: A expression is: " + display},
                    {3, "Exit RedfishConfigExpression::ParseSingleSettingDependency()"},
                    {4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=2"},
                    {3, "Enter RedfishConfigSettingManager::GenerateSpecifySetting()"},
                    {4, "Enter RedfishConfigSettingManager::createTextSetting()"},
                    {4, "Exit RedfishConfigSettingManager::createTextSetting()"},
                    {4, "Enter RedfishConfigSettingManager::createNumericSetting()"},
                    {4, "Exit RedfishConfigSettingManager::createNumericSetting()"},
                    {4, "Enter RedfishConfigSettingManager::createEnumerateSetting()"},
                    {4, "Exit RedfishConfigSettingManager::createEnumerateSetting()"},
                    {3, "Exit RedfishConfigSettingManager::GenerateSpecifySetting()"},
                    {3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"},
                    {4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:A"},
                    {4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=9"},
                    {4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:B"},
                    {4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=9"},
                    {4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:C"},
                    {4, "The setting C has no current value property or the current value is null."},
                    {4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=8"},
                    {4, "Replace the property values in expression for A"},
                    {4, "the PropertyName:ReadOnly and the Expression:" + display},
                    {4, "After replacing, the expression:((2==1)&&(true==false))"},
                    {4, "Replace the property values in expression for B"},
                    {4, "Replace the property values in expression for C"},
                    {3, "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0"},
                    {4, "Enter RedfishConfigSetting::filter() with filterAction=0"},
                    {3, "Exit RedfishConfigSettingManager::QuerySettingValue()"},
                }));
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("A", "B", "C"));
}

TEST(Generation, MakesASettingOnce)
{
    RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
    EXPECT_EQ(ValueOf(manager, "Limit"), "5");
    for (const char* name : {"Limit", "Mode", "LIMIT"}) {
        LogCapture log(3);
        ValueOf(manager, name);
        EXPECT_THAT(log.Texts(3),
                    ElementsAre("Enter RedfishConfigSettingManager::QuerySettingValue()",
                                "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:" +
                                    std::string(name),
                                "Enter RedfishConfigSettingManager::UpdateSettingValue()",
                                "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0",
                                "Exit RedfishConfigSettingManager::QuerySettingValue()"));
    }
}

TEST(Generation, LeavesOutTheRulesOfASettingMadeForAnother)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "a"}});
    registry.Attribute("B", "String", {{"CurrentValue", "b"}});
    registry.Attribute("C", "String", {{"CurrentValue", "c"}});
    registry.Rule("A", "ReadOnly", true, {Term{"B", "EQU", "b"}});
    registry.Rule("B", "Hidden", true, {Term{"C", "EQU", "c"}});

    RedfishConfigSettingManager viaA = ManagerOf(registry);
    EXPECT_EQ(ValueOf(viaA, "A"), "a");
    EXPECT_EQ(ValueOf(viaA, "B"), "b") << "made for A, without its own rule";
    EXPECT_THAT(PropertiesOf(viaA, "B").expressionMaps, IsEmpty());

    RedfishConfigSettingManager direct = ManagerOf(registry);
    std::string value;
    EXPECT_EQ(direct.QuerySettingValue("B", value), RESULT_SHOW_VALUE_FAILED);
    EXPECT_THAT(GeneratedNames(direct), ElementsAre("B", "C"));
}

TEST(Generation, TakesExistingSettingsForAllOfThem)
{
    RegistryBuilder registry;
    for (const char* name : {"A", "B", "C"}) {
        registry.Attribute(name, "String", {{"CurrentValue", name}});
    }
    RedfishConfigSettingManager manager = ManagerOf(registry);
    ValueOf(manager, "B");
    LogCapture log(3);
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (Texts{{"B", "B"}}));
    EXPECT_THAT(log.Texts(3),
                ElementsAre("Enter RedfishConfigSettingManager::QueryGroupSettingValues()",
                            "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:",
                            "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=",
                            "Enter RedfishConfigExpression::ParseAllSettingsDependency()",
                            "Exit RedfishConfigExpression::ParseAllSettingsDependency()",
                            "Enter RedfishConfigSettingManager::GenerateAllSetting()",
                            "Enter RedfishConfigSettingManager::UpdateSettingValue()",
                            "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0",
                            "Exit RedfishConfigSettingManager::QueryGroupSettingValues()"));

    ValueOf(manager, "c");
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("B", "C"));
}

TEST(Generation, MakesAllSettingsInTheOrderOfTheRegistry)
{
    RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
    LogCapture log;
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("Label", "Limit", "Mode", "Secret", "Switch"));
    std::vector<LogLine> lines = log.Lines();
    const auto updates =
        std::find(lines.begin(), lines.end(), LogLine(3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"));
    lines.erase(updates, lines.end());
    EXPECT_THAT(lines, ElementsAreArray(std::vector<LogLine>{
                           {3, "Enter RedfishConfigSettingManager::GetAllSettingProperties()"},
                           {3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:"},
                           {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName="},
                           {3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()"},
                           {4, "The property: ReadOnly of setting: Limit expression is: "
                               "((Mode.CurrentValue==Slow)&&(Switch.CurrentValue==true))"},
                           {4, "The property: Hidden of setting: Label expression is: ((Limit not exist))"},
                           {3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()"},
                           {4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=0"},
                           {3, "Enter RedfishConfigSettingManager::GenerateAllSetting()"},
                           {4, "Enter RedfishConfigSettingManager::createEnumerateSetting()"},
                           {4, "Exit RedfishConfigSettingManager::createEnumerateSetting()"},
                           {4, "Entering  RedfishConfigSettingManager::GetGroupName"},
                           {4, "Exiting  RedfishConfigSettingManager::GetGroupName"},
                           {4, "Enter RedfishConfigSettingManager::createNumericSetting()"},
                           {4, "Exit RedfishConfigSettingManager::createNumericSetting()"},
                           {4, "Enter RedfishConfigSettingManager::createBooleanSetting()"},
                           {4, "Exit RedfishConfigSettingManager::createBooleanSetting()"},
                           {4, "Enter RedfishConfigSettingManager::createTextSetting()"},
                           {4, "Exit RedfishConfigSettingManager::createTextSetting()"},
                           {4, "Enter RedfishConfigSettingManager::createPasswordSetting()"},
                           {4, "Exit RedfishConfigSettingManager::createPasswordSetting()"},
                           {3, "Exit RedfishConfigSettingManager::GenerateAllSetting()"},
                       }));
}

TEST(Generation, MentionsTheLackOfRulesOnce)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "a"}}).Attribute("B", "String", {{"CurrentValue", "b"}});
    const std::string lack = "The schema not include dependency information.";
    {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        LogCapture log;
        ValueOf(manager, "A");
        EXPECT_EQ(log.Count(4, lack), 1u);
        ValueOf(manager, "B");
        Texts values;
        manager.QueryGroupSettingValues(values);
        EXPECT_EQ(log.Count(4, lack), 1u);
    }
    registry.EmptyDependencies();
    RedfishConfigSettingManager manager = ManagerOf(registry);
    LogCapture log;
    ValueOf(manager, "A");
    EXPECT_FALSE(log.Has(4, lack)) << "an empty list is a list";
}

TEST(Generation, ChoosesTheClassByTheTypeInAnyCase)
{
    const struct {
        const char* type;
        const char* factory;
        const char* validValues;
    } rows[] = {
        {"String", "createTextSetting", "String "},         {"string", "createTextSetting", "String "},
        {"Integer", "createNumericSetting", "Integer "},    {"INTEGER", "createNumericSetting", "Integer "},
        {"Enumeration", "createEnumerateSetting", ""},      {"eNUMERATION", "createEnumerateSetting", ""},
        {"Boolean", "createBooleanSetting", "true=false"},  {"boolean", "createBooleanSetting", "true=false"},
        {"Password", "createPasswordSetting", "Password "}, {"password", "createPasswordSetting", "Password "},
    };
    for (const auto& row : rows) {
        RegistryBuilder registry;
        registry.Attribute("A", row.type);
        const LogLine enter(4, "Enter RedfishConfigSettingManager::" + std::string(row.factory) + "()");
        const LogLine leave(4, "Exit RedfishConfigSettingManager::" + std::string(row.factory) + "()");

        RedfishConfigSettingManager single = ManagerOf(registry);
        std::string validValues = "before";
        LogCapture log;
        EXPECT_EQ(single.QuerySettingValidValues("A", validValues), RESULT_SUCCEED) << row.type;
        EXPECT_EQ(validValues, row.validValues);
        EXPECT_EQ(log.Count(4, enter.second), 1u);
        EXPECT_EQ(log.Count(4, leave.second), 1u);

        RedfishConfigSettingManager all = ManagerOf(registry);
        Texts answers;
        EXPECT_EQ(all.QueryGroupSettingValidValues(answers), RESULT_SUCCEED) << row.type;
        EXPECT_EQ(answers, (Texts{{"A", row.validValues}}));
        EXPECT_EQ(log.Count(4, enter.second), 2u);
        EXPECT_EQ(log.Count(4, leave.second), 2u);
    }
}

TEST(Generation, SkipsUnusableAttributesAmongAllWithoutAWord)
{
    RegistryBuilder registry;
    registry.Attribute("OddType", "Float");
    registry.Attribute("EmptyType", "");
    registry.Attribute("BlankType", "String ");
    registry.RawAttribute({{"AttributeName", "NoType"}});
    registry.RawAttribute({{"AttributeName", "NumberType"}, {"Type", 5}});
    registry.RawAttribute({{"Type", "String"}});
    registry.Attribute("", "String");
    registry.RawAttribute({{"AttributeName", 7}, {"Type", "String"}});
    registry.RawAttribute({{"attributename", "WrongKey"}, {"type", "String"}});
    registry.RawAttribute(boost::json::object());
    registry.RawAttribute(nullptr);
    registry.RawAttribute(boost::json::array{"x"});
    registry.RawAttribute("text");
    registry.Attribute("Good", "String", {{"CurrentValue", "fine"}});
    RedfishConfigSettingManager manager = ManagerOf(registry);
    LogCapture log(2);
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (Texts{{"Good", "fine"}}));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(Generation, AnswersAnUnknownTypeOfOneSettingAsAnUnusableProperty)
{
    RegistryBuilder registry;
    registry.Attribute("OddType", "Float");
    registry.Attribute("EmptyType", "");
    registry.RawAttribute({{"AttributeName", "NoType"}});
    {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        LogCapture log;
        std::string value = "before";
        const RedfishConfigResult result = manager.QuerySettingValue("OddType", value);
        EXPECT_EQ(result, RESULT_PROPERTY_INVALID);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(value, "before");
        EXPECT_THAT(log.Texts(1), ElementsAre("The setting type is invalid: Float",
                                              "Failed in creating setting: OddType", "Generate setting error.",
                                              "Generate setting error.", "Parse response and generate setting error."));
        EXPECT_THAT(
            log.Texts(3),
            ElementsAre("Enter RedfishConfigSettingManager::QuerySettingValue()",
                        "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:OddType",
                        "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=OddType",
                        "Enter RedfishConfigExpression::ParseSingleSettingDependency()",
                        "Exit RedfishConfigExpression::ParseSingleSettingDependency()",
                        "Enter RedfishConfigSettingManager::GenerateSpecifySetting()"));
    }
    for (const char* name : {"EmptyType", "NoType"}) {
        for (const Operation& operation : Operations()) {
            if (!operation.onOneSetting) {
                continue;
            }
            RedfishConfigSettingManager manager = ManagerOf(registry);
            LogCapture log;
            EXPECT_EQ(operation.run(manager, name), RESULT_PROPERTY_INVALID) << operation.label << ' ' << name;
            ASSERT_FALSE(log.Texts(1).empty());
            EXPECT_EQ(log.Texts(1).front(), "The setting type is invalid: ");
        }
    }
}

TEST(Generation, AnswersAnUnknownNameAsNotFound)
{
    RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
    LogCapture log;
    std::string value = "before";
    const RedfishConfigResult result = manager.QuerySettingValue("Missing", value);
    EXPECT_EQ(result, RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(result.ErrorMsg(), "Unable to find the setting Missing.");
    EXPECT_EQ(value, "before");
    EXPECT_THAT(log.Lines(),
                ElementsAreArray(std::vector<LogLine>{
                    {3, "Enter RedfishConfigSettingManager::QuerySettingValue()"},
                    {3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:Missing"},
                    {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=Missing"},
                    {3, "Enter RedfishConfigExpression::ParseSingleSettingDependency()"},
                    {3, "Exit RedfishConfigExpression::ParseSingleSettingDependency()"},
                    {4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=0"},
                    {3, "Enter RedfishConfigSettingManager::GenerateSpecifySetting()"},
                    {1, "Not find the setting: Missing from schema."},
                    {1, "Failed in creating setting: Missing"},
                    {1, "Unable to find the setting Missing."},
                    {1, "Generate setting error."},
                    {1, "Parse response and generate setting error."},
                }));
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(Generation, AnswersNotFoundInEveryOperationOnOneSetting)
{
    for (const char* name : {"Missing", "", " Mode", "Mode ", "Mod", "Mode.CurrentValue"}) {
        for (const Operation& operation : Operations()) {
            if (!operation.onOneSetting) {
                continue;
            }
            for (const bool allGenerated : {false, true}) {
                RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
                if (allGenerated) {
                    GeneratedNames(manager);
                }
                const RedfishConfigResult result = operation.run(manager, name);
                EXPECT_EQ(result, RESULT_SETTING_NOT_FOUND) << operation.label;
                EXPECT_EQ(result.ErrorMsg(), "Unable to find the setting " + std::string(name) + ".")
                    << operation.label;
                EXPECT_THAT(manager.GetError(), IsEmpty());
            }
        }
    }
}

TEST(Generation, MakesAllSettingsForAnEmptyName)
{
    RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
    std::string value;
    EXPECT_EQ(manager.QuerySettingValue("", value), RESULT_SETTING_NOT_FOUND);
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("Label", "Limit", "Mode", "Secret", "Switch"));
}

TEST(Generation, FindsNamesInAnyCase)
{
    for (const char* name : {"mode", "MODE", "mOdE"}) {
        for (const Operation& operation : Operations()) {
            if (!operation.onOneSetting) {
                continue;
            }
            RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
            const int code = operation.run(manager, name);
            const bool hasNoHelp = std::string(operation.label) == "QuerySettingDescription";
            EXPECT_EQ(code, hasNoHelp ? RESULT_PROPERTY_NOT_EXIST : RESULT_SUCCEED) << operation.label;
            EXPECT_EQ(PropertiesOf(manager, name).AttributeName, "Mode");
            EXPECT_THAT(GeneratedNames(manager), ElementsAre("Mode"));
        }
    }
}

TEST(Generation, FailsForARuleThatReadsAnUnknownSetting)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "a"}});
    registry.Attribute("B", "String", {{"CurrentValue", "b"}});
    registry.Rule("A", "ReadOnly", true,
                  {Term{"Gone", "EQU", "x", "AND"}, Term{"Lost", "EQU", "x", "AND"}, Term{"B", "EQU", "b"}});
    RedfishConfigSettingManager manager = ManagerOf(registry);
    LogCapture log;
    std::string value = "before";
    const RedfishConfigResult result = manager.QuerySettingValue("A", value);
    EXPECT_EQ(result, RESULT_INTERNAL_ERROR);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(value, "before");
    EXPECT_THAT(log.Texts(1),
                ElementsAre("Not find the setting: Gone from schema.", "Not find the setting: Lost from schema.",
                            "Failed in creating setting: Gone", "Generate setting error.", "Generate setting error.",
                            "Parse response and generate setting error."));
    EXPECT_FALSE(log.Has(3, "Exit RedfishConfigSettingManager::GenerateSpecifySetting()"));
    EXPECT_FALSE(log.Has(3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"));

    // the setting is there all the same, and the next operation finds it
    EXPECT_EQ(ValueOf(manager, "A"), "a");
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("A", "B"));
}

TEST(Generation, FailsForARuleThatReadsASettingOfAnUnknownType)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "a"}});
    registry.Attribute("Odd", "Float");
    registry.Rule("A", "ReadOnly", true, {Term{"Odd", "EQU", "x"}});
    for (const Operation& operation : Operations()) {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        LogCapture log;
        const RedfishConfigResult result = operation.run(manager, "A");
        if (operation.onOneSetting) {
            EXPECT_EQ(result, RESULT_INTERNAL_ERROR) << operation.label;
            EXPECT_TRUE(log.Has(1, "The setting type is invalid: Float"));
            EXPECT_TRUE(log.Has(1, "Failed in creating setting: Odd"));
            EXPECT_FALSE(log.Has(1, "Failed in creating setting: A"));
        } else {
            EXPECT_THAT(result, AnyOf(RESULT_SUCCEED, RESULT_GROUP_PARTIAL_FAILURE)) << operation.label;
        }
    }
}

TEST(Generation, FindsTheSettingsThatRulesReadInAnyCase)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "a"}});
    registry.Attribute("Beta", "String", {{"CurrentValue", "b"}});
    registry.Rule("A", "ReadOnly", true, {Term{"BETA", "EQU", "b"}});
    RedfishConfigSettingManager manager = ManagerOf(registry);
    EXPECT_EQ(ValueOf(manager, "A"), "a");
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("A", "Beta"));
}

TEST(Generation, AppliesARuleWhateverTheCaseOfTheCallersName)
{
    RegistryBuilder registry;
    registry.Attribute("BootMode", "String", {{"CurrentValue", "x"}});
    registry.Attribute("Other", "String", {{"CurrentValue", "on"}});
    registry.Rule("BootMode", "Hidden", true, {Term{"Other", "EQU", "on"}});
    RedfishConfigSettingManager manager = ManagerOf(registry);
    std::string value;
    EXPECT_EQ(manager.QuerySettingValue("bootmode", value), RESULT_SHOW_VALUE_FAILED);
}

TEST(Generation, AppliesARuleOnlyToATargetSpeltAlike)
{
    RegistryBuilder registry;
    registry.Attribute("BootMode", "String", {{"CurrentValue", "x"}});
    registry.Attribute("Other", "String", {{"CurrentValue", "on"}});
    registry.Rule("BOOTMODE", "Hidden", true, {Term{"Other", "EQU", "on"}});

    RedfishConfigSettingManager single = ManagerOf(registry);
    EXPECT_EQ(ValueOf(single, "BootMode"), "x");
    EXPECT_THAT(GeneratedNames(single), ElementsAre("BootMode", "Other")) << "the rule's names count all the same";
    EXPECT_THAT(PropertiesOf(single, "BootMode").expressionMaps, IsEmpty());

    RedfishConfigSettingManager all = ManagerOf(registry);
    GeneratedNames(all);
    EXPECT_EQ(ValueOf(all, "BootMode"), "x");
    EXPECT_THAT(PropertiesOf(all, "BootMode").expressionMaps, IsEmpty());
}

TEST(Generation, HandsItsFormulasToASetting)
{
    for (const bool allFirst : {false, true}) {
        RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
        if (allFirst) {
            GeneratedNames(manager);
        }
        ValueOf(manager, "Limit");
        const RedfishConfigSettingInfoStru limit = PropertiesOf(manager, "Limit");
        ASSERT_EQ(limit.expressionMaps.size(), 1u);
        const PropertyExpression& expression = limit.expressionMaps.at("ReadOnly");
        EXPECT_EQ(expression.MapToValue, SettingValue(true));
        EXPECT_EQ(expression.Formula, "((Fast==Slow)&&(true==true))");
        EXPECT_EQ(expression.DisplayText, "((Mode.CurrentValue==Slow)&&(Switch.CurrentValue==true))");
        EXPECT_TRUE(expression.Valid);
        EXPECT_THAT(expression.Rules, ElementsAre(0u));
        EXPECT_THAT(PropertiesOf(manager, "Mode").expressionMaps, IsEmpty());
    }
}

TEST(Generation, NeverJoinsARuleToItself)
{
    RegistryBuilder registry = SmallRegistry();
    registry.Rule("Limit", "ReadOnly", true, {Term{"Mode", "EQU", "Slow", "AND"}, Term{"Switch", "EQU", true}});
    const std::string formula = "((Mode.CurrentValue==Slow)&&(Switch.CurrentValue==true))";
    RedfishConfigSettingManager manager = ManagerOf(registry);
    std::map<std::string, std::vector<std::string>> groups;
    Texts values;
    std::string value;
    manager.QuerySettingValue("Limit", value);
    manager.QuerySettingValue("Missing", value);
    manager.GetGroupList(groups);
    manager.QueryGroupSettingValues(values);
    manager.QueryGroupSettingValues(values);
    const RedfishConfigSettingInfoStru limit = PropertiesOf(manager, "Limit");
    EXPECT_EQ(limit.expressionMaps.at("ReadOnly").DisplayText, formula + "||" + formula)
        << "two rules of the same text are two rules";
    EXPECT_THAT(limit.expressionMaps.at("ReadOnly").Rules, ElementsAre(0u, 2u));
}

TEST(Generation, NamesTheSettingsThatTheFormulasRead)
{
    RegistryBuilder registry;
    for (const char* name : {"A", "B", "C", "D", "E", "Z"}) {
        registry.Attribute(name, "String", {{"CurrentValue", "x"}});
    }
    registry.Rule("A", "ReadOnly", true, {Term{"Z", "EQU", "x", "AND"}, Term{"C", "EQU", "x"}});
    registry.Rule("B", "ReadOnly", true, {Term{"E", "EQU", "x"}});
    registry.Rule("A", "GrayOut", true, {Term{"C", "EQU", "y", "OR"}, Term{"B", "EQU", "x"}});
    registry.Rule("A", "ReadOnly", true, {Term{"Z", "EQU", "y"}});
    registry.Rule("A", "Hidden", true, {Term{"D", "eq", "x"}}); // no such condition
    registry.Rule("A", "CurrentValue", "y", {Term{"A", "EQU", "x"}});
    {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        EXPECT_THAT(PropertiesOf(manager, "A").dependencySettings, ElementsAre("Z", "C", "B", "A"));
        EXPECT_THAT(PropertiesOf(manager, "B").dependencySettings, IsEmpty()) << "made for A, without its own rule";
    }
    RedfishConfigSettingManager manager = ManagerOf(registry);
    std::vector<RedfishConfigSettingInfoStru> properties;
    EXPECT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
    ASSERT_EQ(properties.size(), 6u);
    EXPECT_THAT(properties[0].dependencySettings, ElementsAre("Z", "C", "B", "A"));
    EXPECT_THAT(properties[1].dependencySettings, ElementsAre("E"));
    EXPECT_THAT(properties[2].dependencySettings, IsEmpty());
}

TEST(Generation, KeepsTheLaterOfTwoAttributesOfOneNameAmongAll)
{
    RegistryBuilder registry;
    registry.Attribute("Same", "String", {{"CurrentValue", "first"}});
    registry.Attribute("Same", "Integer", {{"CurrentValue", 2}});
    registry.Attribute("Kept", "String", {{"CurrentValue", "kept"}});
    registry.Attribute("Kept", "Float");
    RedfishConfigSettingManager manager = ManagerOf(registry);
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (Texts{{"Kept", "kept"}, {"Same", "2"}}));
    EXPECT_EQ(ValueOf(manager, "same"), "2");
}

TEST(Generation, TakesTheFirstOfTwoAttributesOfOneNameAlone)
{
    RegistryBuilder registry;
    registry.Attribute("Same", "String", {{"CurrentValue", "first"}});
    registry.Attribute("SAME", "Integer", {{"CurrentValue", 2}});
    registry.Attribute("Odd", "Float");
    registry.Attribute("Odd", "String", {{"CurrentValue", "later"}});
    for (const char* name : {"Same", "SAME", "same"}) {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        EXPECT_EQ(ValueOf(manager, name), "first");
    }
    RedfishConfigSettingManager manager = ManagerOf(registry);
    std::string value;
    EXPECT_EQ(manager.QuerySettingValue("Odd", value), RESULT_PROPERTY_INVALID);
}

TEST(Generation, KeepsTheFirstSpellingOfANameWithTheLaterSetting)
{
    RegistryBuilder registry;
    registry.Attribute("Same", "String", {{"CurrentValue", "first"}});
    registry.Attribute("SAME", "Integer");
    RedfishConfigSettingManager manager = ManagerOf(registry);
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("SAME"));
    std::string value;
    const RedfishConfigResult result = manager.QuerySettingValue("same", value);
    EXPECT_EQ(result, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(result.ErrorMsg(), "The operation on setting SAME fails since it has no current value.")
        << "the message does not hold the kept spelling, so there is nothing to replace";
}

TEST(Generation, AppliesTheCurrentValuesInEveryOperation)
{
    RegistryBuilder registry;
    registry.Attribute("Given", "String", {{"CurrentValue", "registry"}});
    registry.Attribute("Free", "String", {{"CurrentValue", "registry"}});
    RedfishConfigSettingManager manager = ManagerOf(registry, {{"Given", Text("caller")}});
    EXPECT_EQ(ValueOf(manager, "Given"), "caller");
    EXPECT_EQ(ValueOf(manager, "Free"), "registry");

    manager.UpdateSettingValue({{"GIVEN", Text("hand")}, {"Free", Text("hand")}});
    EXPECT_EQ(PropertiesOf(manager, "Given").CurrentValue, Text("hand"));
    EXPECT_EQ(PropertiesOf(manager, "Free").CurrentValue, Text("hand"));

    std::string answer;
    manager.QuerySettingDefaultValue("Free", answer);
    EXPECT_EQ(PropertiesOf(manager, "Given").CurrentValue, Text("caller")) << "any operation puts it back";
    EXPECT_EQ(PropertiesOf(manager, "Free").CurrentValue, Text("hand")) << "the caller's map has nothing to put";
}

TEST(Generation, IsNotPartOfHandingInValues)
{
    RedfishConfigSettingManager manager = ManagerOf("no registry");
    EXPECT_NO_THROW(manager.UpdateSettingValue({{"A", Text("x")}}));
    EXPECT_THAT(manager.GetError(), IsEmpty());
    manager.SetCFCSystem(true);
    LogCapture log;
    manager.UpdateSettingValue({});
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(3, "Enter RedfishConfigSettingManager::UpdateSettingValue()")));
}

TEST(SettingProperties, AreTheRecordOfTheRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer",
                       {{"CurrentValue", 1},
                        {"DefaultValue", 2},
                        {"LowerBound", 0},
                        {"UpperBound", 9},
                        {"ScalarIncrement", 3},
                        {"DisplayName", "Alpha"},
                        {"HelpText", "Helps."},
                        {"MenuPath", "./M"},
                        {"WarningText", "Careful."},
                        {"ReadOnly", true}});
    RedfishConfigSettingManager manager = ManagerOf(registry);
    const RedfishConfigSettingInfoStru record = PropertiesOf(manager, "a");
    EXPECT_EQ(record.AttributeName, "A");
    EXPECT_EQ(record.Type, "Integer");
    EXPECT_EQ(record.CurrentValue, SettingValue(std::int64_t{1}));
    EXPECT_EQ(record.DefaultValue, SettingValue(std::int64_t{2}));
    EXPECT_EQ(record.LowerBound, 0);
    EXPECT_EQ(record.UpperBound, 9);
    EXPECT_EQ(record.ScalarIncrement, 3);
    EXPECT_EQ(record.DisplayName, "Alpha");
    EXPECT_EQ(record.HelpText, "Helps.");
    EXPECT_EQ(record.MenuPath, "./M");
    EXPECT_EQ(record.WarningText, "Careful.");
    EXPECT_TRUE(record.ReadOnly);
    EXPECT_FALSE(record.Hidden);
}

TEST(SettingProperties, DoNotHaveTheCurrentValuesApplied)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "registry"}});
    RedfishConfigSettingManager manager = ManagerOf(registry, {{"A", Text("caller")}});
    LogCapture log;
    EXPECT_EQ(PropertiesOf(manager, "A").CurrentValue, Text("registry"));
    EXPECT_FALSE(log.Has(3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"));
    ValueOf(manager, "A");
    EXPECT_EQ(PropertiesOf(manager, "A").CurrentValue, Text("caller"));
}

TEST(SettingProperties, LogTheirFailures)
{
    RegistryBuilder registry;
    registry.Attribute("Odd", "Float");
    {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        LogCapture log;
        RedfishConfigSettingInfoStru record;
        EXPECT_EQ(manager.GetSettingProperties("Missing", record), RESULT_SETTING_NOT_FOUND);
        EXPECT_THAT(log.Texts(1),
                    ElementsAre("Not find the setting: Missing from schema.", "Failed in creating setting: Missing",
                                "Unable to find the setting Missing.", "Unable to find the setting Missing."));
    }
    {
        RedfishConfigSettingManager manager = ManagerOf(registry);
        LogCapture log;
        RedfishConfigSettingInfoStru record;
        EXPECT_EQ(manager.GetSettingProperties("Odd", record), RESULT_PROPERTY_INVALID);
        EXPECT_THAT(log.Texts(1), ElementsAre("The setting type is invalid: Float", "Failed in creating setting: Odd",
                                              "Generate setting error.", "Failed in genearte setting Odd"));
    }
}

TEST(AllSettingProperties, AreAppendedInTheOrderOfTheNames)
{
    RegistryBuilder registry;
    for (const char* name : {"beta", "Gamma", "ALPHA", "alpine", "Alp", "_x", "9"}) {
        registry.Attribute(name, "String", {{"CurrentValue", "registry"}});
    }
    RedfishConfigSettingManager manager = ManagerOf(registry, {{"GAMMA", Text("caller")}});
    std::vector<RedfishConfigSettingInfoStru> properties(1);
    properties[0].AttributeName = "kept";
    EXPECT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
    ASSERT_EQ(properties.size(), 8u);
    EXPECT_EQ(properties[0].AttributeName, "kept");
    std::vector<std::string> names = NamesOf(properties);
    names.erase(names.begin());
    CaseInsensitiveComparator inOrder;
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), inOrder));
    std::vector<std::string> letters(names);
    letters.erase(std::remove_if(letters.begin(), letters.end(),
                                 [](const std::string& name) { return name == "_x" || name == "9"; }),
                  letters.end());
    EXPECT_THAT(letters, ElementsAre("Alp", "ALPHA", "alpine", "beta", "Gamma"));
    for (const RedfishConfigSettingInfoStru& record : properties) {
        if (record.AttributeName == "Gamma") {
            EXPECT_EQ(record.CurrentValue, Text("caller"));
        }
    }
    EXPECT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
    EXPECT_EQ(properties.size(), 15u);
}

TEST(ManagerErrors, AreReturnedOnce)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String").Attribute("B", "String", {{"CurrentValue", "b"}});
    RedfishConfigSettingManager manager = ManagerOf(registry);
    EXPECT_THAT(manager.GetError(), IsEmpty());
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(manager.GetError().size(), 2u) << "they pile up until they are asked for";
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(ManagerCopies, ShareTheSettingsThatWereThere)
{
    RegistryBuilder registry;
    registry.Attribute("Old", "String", {{"CurrentValue", "registry"}});
    registry.Attribute("New", "String", {{"CurrentValue", "registry"}});
    RedfishConfigSettingManager original = ManagerOf(registry);
    PropertiesOf(original, "Old");
    RedfishConfigSettingManager copy(original);
    PropertiesOf(original, "New");
    PropertiesOf(copy, "New");

    copy.UpdateSettingValue({{"Old", Text("changed")}, {"New", Text("changed")}});
    EXPECT_EQ(PropertiesOf(original, "Old").CurrentValue, Text("changed"));
    EXPECT_EQ(PropertiesOf(original, "New").CurrentValue, Text("registry")) << "each made its own after the copy";
    original.UpdateSettingValue({{"Old", Text("changed back")}});
    EXPECT_EQ(PropertiesOf(copy, "Old").CurrentValue, Text("changed back"));
}

TEST(ManagerCopies, ShareAfterAssignmentToo)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "registry"}});
    RedfishConfigSettingManager original = ManagerOf(registry);
    PropertiesOf(original, "A");
    RedfishConfigSettingManager other = ManagerOf(SmallRegistry());
    GeneratedNames(other);
    other = original;
    EXPECT_THAT(GeneratedNames(other), ElementsAre("A"));
    other.UpdateSettingValue({{"A", Text("changed")}});
    EXPECT_EQ(PropertiesOf(original, "A").CurrentValue, Text("changed"));
}

TEST(ManagerCopies, OutliveTheOriginal)
{
    auto original = std::make_unique<RedfishConfigSettingManager>(ManagerOf(SmallRegistry()));
    GeneratedNames(*original);
    RedfishConfigSettingManager copy(*original);
    RedfishConfigSettingManager assigned = ManagerOf(std::string("other"));
    assigned = copy;
    original.reset();
    EXPECT_EQ(ValueOf(copy, "Limit"), "5");
    EXPECT_EQ(ValueOf(assigned, "Mode"), "Fast");
}

TEST(ManagerCopies, HaveEverythingElseOfTheirOwn)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer", {{"MenuPath", "./Main/Sub/X"}});
    registry.Attribute("B", "Integer", {{"CurrentValue", 1}});
    Config_Options options;
    options.ShowHexValue = true;
    RedfishConfigSettingManager original = ManagerOf(registry, {{"b", std::int64_t{31}}}, options);
    Texts values;
    EXPECT_EQ(original.QueryGroupSettingValues(values), RESULT_GROUP_PARTIAL_FAILURE);

    RedfishConfigSettingManager copy(original);
    EXPECT_EQ(copy.GetError().size(), 1u);
    EXPECT_EQ(original.GetError().size(), 1u) << "the copy drained its own list";
    EXPECT_EQ(ValueOf(copy, "B"), "0x1f");

    LogCapture log;
    std::map<std::string, std::vector<std::string>> groups;
    copy.GetGroupList(groups);
    EXPECT_EQ(groups, (std::map<std::string, std::vector<std::string>>{{"Main", {"Sub"}}}));
    EXPECT_FALSE(log.Has(3, "Enter RedfishConfigSettingManager::GenerateAllSetting()")) << "the groups were copied";
}

TEST(ManagerCopies, WorkFromAManagerThatDidNothingYet)
{
    const RedfishConfigSettingManager original = ManagerOf(SmallRegistry());
    RedfishConfigSettingManager copy(original);
    EXPECT_EQ(ValueOf(copy, "Limit"), "5");
}

TEST(ManagerCopies, SurviveAssignmentToThemselves)
{
    RedfishConfigSettingManager manager = ManagerOf(SmallRegistry());
    GeneratedNames(manager);
    const RedfishConfigSettingManager& itself = manager;
    manager = itself;
    EXPECT_THAT(GeneratedNames(manager), ElementsAre("Label", "Limit", "Mode", "Secret", "Switch"));
    EXPECT_EQ(ValueOf(manager, "Limit"), "5");
}

namespace {

/** Texts in which no list of attributes can be read. */
std::vector<std::string> UnreadableRegistries()
{
    std::vector<std::string> texts = {
        "",
        " ",
        "no registry",
        "{",
        "}",
        "null",
        "5",
        "true",
        "\"text\"",
        "[]",
        R"([{"RegistryEntries":{"Attributes":[]}}])",
        "{}",
        R"({"RegistryEntries":null})",
        R"({"RegistryEntries":5})",
        R"({"RegistryEntries":"x"})",
        R"({"RegistryEntries":[]})",
        R"({"RegistryEntries":{}})",
        R"({"registryentries":{"attributes":[]}})",
        R"({"RegistryEntries":{"attributes":[]}})",
        R"({"Attributes":[]})",
        R"({"RegistryEntries":{"Attributes":null}})",
        R"({"RegistryEntries":{"Attributes":{}}})",
        R"({"RegistryEntries":{"Attributes":"x"}})",
        R"({"RegistryEntries":{"Attributes":5}})",
        R"({"RegistryEntries":{"Attributes":true}})",
        R"({"RegistryEntries":{"Dependencies":[]}})",
        R"({"RegistryEntries":{"Attributes":[]}} x)",
        R"({"RegistryEntries":{"Attributes":[],}})",
        R"({'RegistryEntries':{'Attributes':[]}})",
        R"({"RegistryEntries":{"Attributes":[})",
        "\xEF\xBB\xBF{\"RegistryEntries\":{\"Attributes\":[]}}",
        std::string("{\"RegistryEntries\":{\"Attributes\":[]}}\0", 38),
    };
    const std::string whole = SmallRegistry().Text();
    texts.push_back(whole.substr(0, whole.size() - 1));
    texts.push_back(whole.substr(0, whole.size() / 2));
    return texts;
}

} // namespace

TEST(UnreadableRegistry, IsAnsweredByEveryOperation)
{
    for (const std::string& text : UnreadableRegistries()) {
        for (const Operation& operation : Operations()) {
            SCOPED_TRACE(std::string(operation.label) + " on " + text);
            RedfishConfigSettingManager manager = ManagerOf(text, {{"Mode", Text("x")}});
            RedfishConfigResult result;
            LogCapture log(1);
            ASSERT_NO_THROW(result = operation.run(manager, "Mode"));
            EXPECT_EQ(result, RESULT_HTTP_RESPONSE_PARSE_FAILED);
            EXPECT_THAT(manager.GetError(), IsEmpty());

            const std::vector<std::string> lines = log.Texts(1);
            ASSERT_GE(lines.size(), 2u);
            EXPECT_THAT(lines.front(), Not(IsEmpty())) << "what was raised";
            if (std::string(operation.label) == "GetSettingProperties") {
                EXPECT_EQ(lines.back(), "Failed in genearte setting Mode");
            } else {
                EXPECT_GE(lines.size(), 3u);
                EXPECT_EQ(lines[lines.size() - 2], "Generate setting error.");
                EXPECT_EQ(lines.back(), "Parse response and generate setting error.");
            }

            // and so it stays
            ASSERT_NO_THROW(result = operation.run(manager, "Mode"));
            EXPECT_EQ(result, RESULT_HTTP_RESPONSE_PARSE_FAILED);
        }
        RedfishConfigSettingManager manager = ManagerOf(text);
        std::map<std::string, std::vector<std::string>> groups{{"before", {}}};
        ASSERT_NO_THROW(manager.GetGroupList(groups)) << text;
        EXPECT_THAT(groups, IsEmpty());
    }
}

TEST(UnreadableRegistry, IsLoggedWhereItsAttributesAreMissing)
{
    RedfishConfigSettingManager manager = ManagerOf("{}");
    LogCapture log;
    std::string value;
    EXPECT_EQ(manager.QuerySettingValue("A", value), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_TRUE(log.Has(4, "The schema not include dependency information."));
    const std::vector<std::string> lines = log.Texts(1);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_NE(lines[0], "");
    EXPECT_EQ(lines[1], "Failed in creating setting: A");
    EXPECT_EQ(lines[2], "Generate setting error.");
    EXPECT_EQ(lines[3], "Generate setting error.");
    EXPECT_EQ(lines[4], "Parse response and generate setting error.");
}

TEST(UnreadableRegistry, FailsWhereDependenciesAreNoList)
{
    const std::vector<std::string> level1 = {"Generate expression error.", "Generate setting error.",
                                             "Parse response and generate setting error."};
    for (const char* dependencies : {"null", "{}", "5", "\"x\"", "true"}) {
        RedfishConfigSettingManager manager =
            ManagerOf(R"({"RegistryEntries":{"Attributes":[{"AttributeName":"A","Type":"String"}],"Dependencies":)" +
                      std::string(dependencies) + "}}");
        {
            LogCapture log;
            std::string value = "before";
            const RedfishConfigResult result = manager.QuerySettingValue("A", value);
            EXPECT_EQ(result, RESULT_HTTP_RESPONSE_PARSE_FAILED) << dependencies;
            EXPECT_EQ(value, "before");
            EXPECT_THAT(log.Lines(),
                        ElementsAreArray(std::vector<LogLine>{
                            {3, "Enter RedfishConfigSettingManager::QuerySettingValue()"},
                            {3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:A"},
                            {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=A"},
                            {3, "Enter RedfishConfigExpression::ParseSingleSettingDependency()"},
                            {4, "Parse settings dependency failed."},
                            {4, "Failed to parse the settings dependency info."},
                            {4, "Failed to parse the dependencySettings and expressionMaps with ret=27"},
                            {1, level1[0]},
                            {1, level1[1]},
                            {1, level1[2]},
                        }));
        }
        LogCapture log;
        Texts values{{"before", "before"}};
        EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_HTTP_RESPONSE_PARSE_FAILED) << dependencies;
        EXPECT_EQ(values.size(), 1u);
        EXPECT_THAT(log.Texts(1), ElementsAreArray(level1));
        EXPECT_TRUE(log.Has(4, "Failed to parse the settings dependency info."));
        EXPECT_TRUE(log.Has(4, "Failed to parse the dependencySettings and expressionMaps with ret=27"));
        EXPECT_FALSE(log.Has(3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()"));
    }
}

TEST(EmptyRegistry, HasNoSettings)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryBuilder());
    for (const Operation& operation : Operations()) {
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(operation.run(manager, "A"), operation.onOneSetting ? RESULT_SETTING_NOT_FOUND : RESULT_SUCCEED)
                << operation.label;
        }
    }
    EXPECT_THAT(GeneratedNames(manager), IsEmpty());
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(OddRegistry, AnswersForWhatCanBeRead)
{
    const std::string text = R"({"RegistryEntries":{"Attributes":[
        null, 5, "x", [], {}, [{"AttributeName":"Nested","Type":"String"}],
        {"AttributeName":{"a":1},"Type":"String"},
        {"AttributeName":"NoType"}, {"AttributeName":"OddType","Type":["String"]},
        {"AttributeName":"Odd","Type":"Integer","LowerBound":"1","UpperBound":1.5,"ReadOnly":"true","Hidden":1,
         "Value":{},"MenuPath":7,"HelpText":{},"DisplayName":[],"CurrentValue":[1],"DefaultValue":{"a":1},
         "ScalarIncrement":1e300,"MinLength":99999999999999999999},
        {"AttributeName":"Good","Type":"String","CurrentValue":"fine","Value":[null,5,{"ValueName":5}]}],
        "Dependencies":[
        null, 5, "x", [], {}, {"Dependency":5}, {"Dependency":[]}, {"Dependency":{}},
        {"Dependency":{"MapToAttribute":5,"MapToProperty":"Hidden","MapToValue":true,"MapFrom":[]}},
        {"Dependency":{"MapToAttribute":"Good","MapToProperty":"Hidden","MapToValue":true,"MapFrom":5}},
        {"Dependency":{"MapToAttribute":"Good","MapToProperty":"Hidden","MapToValue":true,"MapFrom":[null,5,{}]}},
        {"Dependency":{"MapToAttribute":"Good","MapToProperty":"Hidden","MapToValue":{},
                       "MapFrom":[{"MapFromAttribute":"Odd","MapFromProperty":"CurrentValue",
                                   "MapFromCondition":"EQU","MapFromValue":1}]}},
        {"Dependency":{"MapToAttribute":"Good","MapToProperty":"Hidden","MapToValue":true,
                       "MapFrom":[{"MapFromAttribute":[],"MapFromProperty":{},"MapFromCondition":7,
                                   "MapTerms":false}]}}]}})";
    {
        RedfishConfigSettingManager manager = ManagerOf(text);
        EXPECT_EQ(ValueOf(manager, "Good"), "fine");
    }
    for (const Operation& operation : Operations()) {
        RedfishConfigSettingManager manager = ManagerOf(text);
        RedfishConfigResult result;
        ASSERT_NO_THROW(result = operation.run(manager, "Odd")) << operation.label;
        EXPECT_THAT(result, AnyOf(RESULT_SUCCEED, RESULT_PROPERTY_NOT_EXIST, RESULT_GROUP_PARTIAL_FAILURE))
            << operation.label;
    }
    RedfishConfigSettingManager manager = ManagerOf(text);
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(values, (Texts{{"Good", "fine"}}));
    const std::vector<RedfishConfigResult> errors = manager.GetError();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].ErrorMsg(), "The operation on setting Odd fails since it has no current value.");
    Texts validValues;
    EXPECT_EQ(manager.QueryGroupSettingValidValues(validValues), RESULT_SUCCEED);
    EXPECT_EQ(validValues, (Texts{{"Good", "String "}, {"Odd", "Integer "}}));
}

TEST(OddRegistry, NeverRaisesForNestingAndOddBytes)
{
    const std::string open = R"({"RegistryEntries":{"Attributes":[{"AttributeName":"A","Type":"String","Extra":)";
    std::vector<std::string> texts;
    for (const std::size_t depth : {std::size_t{20}, std::size_t{100}, std::size_t{100000}}) {
        texts.push_back(open + std::string(depth, '[') + std::string(depth, ']') + "}]}}");
        texts.push_back(open + std::string(depth, '['));
        texts.push_back(std::string(depth, '['));
    }
    texts.push_back(open + "\"\xFF\xFE\"}]}}");
    texts.push_back(open + "\"\\uD800\"}]}}");
    texts.push_back(open + "\"\\u0000\"}]}}");
    texts.push_back(open + std::string(1, '\0') + "}]}}");
    texts.push_back(open + std::string(5000, '9') + "}]}}");
    texts.push_back(open + "1e400}]}}");
    texts.push_back(open + "-1e99999999999999999999}]}}");
    for (const std::string& text : texts) {
        for (const Operation& operation : Operations()) {
            RedfishConfigSettingManager manager = ManagerOf(text);
            RedfishConfigResult result;
            ASSERT_NO_THROW(result = operation.run(manager, "A")) << operation.label;
            EXPECT_THAT(result, AnyOf(RESULT_SUCCEED, RESULT_PROPERTY_NOT_EXIST, RESULT_GROUP_PARTIAL_FAILURE,
                                      RESULT_HTTP_RESPONSE_PARSE_FAILED))
                << operation.label;
        }
    }
}

TEST(OddRegistry, NeverRaisesForADamagedText)
{
    const std::string whole = SmallRegistry().Text();
    const auto runAll = [](const std::string& text) {
        for (const Operation& operation : Operations()) {
            RedfishConfigSettingManager manager = ManagerOf(text);
            RedfishConfigResult result;
            ASSERT_NO_THROW(result = operation.run(manager, "Limit")) << operation.label << " on " << text;
            EXPECT_THAT(result, AnyOf(RESULT_SUCCEED, RESULT_GROUP_PARTIAL_FAILURE, RESULT_PROPERTY_INVALID,
                                      RESULT_PROPERTY_NOT_EXIST, RESULT_INTERNAL_ERROR, RESULT_SHOW_VALUE_FAILED,
                                      RESULT_SETTING_NOT_FOUND, RESULT_HTTP_RESPONSE_PARSE_FAILED))
                << operation.label << " on " << text;
        }
    };
    for (std::size_t position = 0; position < whole.size(); position += 7) {
        runAll(whole.substr(0, position));
        for (const char damage : {'"', '0', '{', 'x'}) {
            std::string text = whole;
            text[position] = damage;
            runAll(text);
        }
        std::string shorter = whole;
        shorter.erase(position, 3);
        runAll(shorter);
    }
}

TEST(SilentManager, AnswersAsWithTheLogOn)
{
    for (const Operation& operation : Operations()) {
        for (const char* name : {"Mode", "Limit", "Secret", "Missing"}) {
            RedfishConfigSettingManager silent = ManagerOf(SmallRegistry());
            const RedfishConfigResult quiet = operation.run(silent, name);
            RedfishConfigSettingManager talking = ManagerOf(SmallRegistry());
            LogCapture log;
            const RedfishConfigResult loud = operation.run(talking, name);
            EXPECT_EQ(static_cast<int>(quiet), static_cast<int>(loud)) << operation.label << ' ' << name;
            EXPECT_EQ(quiet.ErrorMsg(), loud.ErrorMsg());
        }
    }
}
