#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Lines = std::vector<LogLine>;
using Names = std::vector<std::string>;

SettingValue Text(const std::string& text)
{
    return SettingValue(SettingAlternative(text));
}

SettingValue Number(std::int64_t number)
{
    return SettingValue(SettingAlternative(number));
}

SettingValue Truth(bool truth)
{
    return SettingValue(SettingAlternative(truth));
}

RedfishConfigSettingManager Manager(const RegistryBuilder& registry, SettingValueMap values = {})
{
    std::string text = registry.Text();
    return RedfishConfigSettingManager(text, values, false, Config_Options());
}

void Generate(RedfishConfigSettingManager& manager, const std::string& setting)
{
    SettingStatus status;
    EXPECT_EQ(static_cast<int>(manager.QuerySettingStatus(setting, status)), RESULT_SUCCEED);
}

void GenerateAll(RedfishConfigSettingManager& manager)
{
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(static_cast<int>(manager.QueryGroupSettingStatus(status)), RESULT_SUCCEED);
}

/** The record of a generated setting; asking for it applies no values. */
RedfishConfigSettingInfoStru Record(RedfishConfigSettingManager& manager, const std::string& setting)
{
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(static_cast<int>(manager.GetSettingProperties(setting, record)), RESULT_SUCCEED);
    return record;
}

PropertyExpression Expression(RedfishConfigSettingManager& manager, const std::string& setting = "T",
                              const std::string& property = "Hidden")
{
    return Record(manager, setting).expressionMaps[property];
}

/** The formula of T in a world of these settings with these values, after all of them are generated. */
std::string FormulaOf(const std::vector<Term>& terms, const SettingValueMap& values)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Rule("T", "Hidden", true, terms);
    for (const auto& value : values) {
        registry.Attribute(value.first, "String");
    }
    RedfishConfigSettingManager manager = Manager(registry, values);
    GenerateAll(manager);
    return Expression(manager).Formula;
}

/** The lines from the first with this text to the next with the other one, both included. */
Lines Between(const Lines& lines, const LogLine& from, const LogLine& to)
{
    const auto first = std::find(lines.begin(), lines.end(), from);
    const auto last = std::find(first, lines.end(), to);
    EXPECT_NE(last, lines.end()) << from.second << " ... " << to.second;
    return last == lines.end() ? Lines() : Lines(first, last + 1);
}

const LogLine enterUpdate{3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"};

LogLine EnterMap(const std::string& setting)
{
    return {4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:" + setting};
}

LogLine ExitMap(int size)
{
    return {4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=" + std::to_string(size)};
}

LogLine NoValue(const std::string& setting)
{
    return {4, "The setting " + setting + " has no current value property or the current value is null."};
}

LogLine Replace(const std::string& setting)
{
    return {4, "Replace the property values in expression for " + setting};
}

LogLine Before(const std::string& property, const std::string& text)
{
    return {4, "the PropertyName:" + property + " and the Expression:" + text};
}

LogLine After(const std::string& formula)
{
    return {4, "After replacing, the expression:" + formula};
}

// ---- substitution

TEST(Substitution, PutsCurrentValuesInPlaceOfNames)
{
    const std::pair<SettingValue, const char*> facts[] = {
        {Text("Y"), "((Y==X))"},
        {Text(""), "((==X))"},
        {Text("two words"), "((two words==X))"},
        {Text("a)||(b"), "((a)||(b==X))"},
        {Text("$& \\1"), "(($& \\1==X))"},
        {Number(-7), "((-7==X))"},
        {Number(255), "((255==X))"},
        {Truth(true), "((true==X))"},
        {Truth(false), "((false==X))"},
        {SettingValue(), "((A.CurrentValue==X))"}, // no value, nothing to put there
    };
    for (const auto& [value, formula] : facts) {
        EXPECT_EQ(FormulaOf({{"A", "EQU", "X"}}, {{"A", value}}), formula);
    }
}

TEST(Substitution, AnswersExistence)
{
    for (const SettingValue& value : {Text("Y"), Text(""), Number(0), Truth(false)}) {
        EXPECT_EQ(FormulaOf({{"A", "EQU", nullptr}}, {{"A", value}}), "((true==false))");
        EXPECT_EQ(FormulaOf({{"A", "NEQ", nullptr}}, {{"A", value}}), "((true==true))");
    }
    EXPECT_EQ(FormulaOf({{"A", "EQU", nullptr}}, {{"A", SettingValue()}}), "((true==true))");
    EXPECT_EQ(FormulaOf({{"A", "NEQ", nullptr}}, {{"A", SettingValue()}}), "((true==false))");
    // a name that no setting has stays as it is
    EXPECT_EQ(FormulaOf({{"A", "EQU", nullptr}}, {{"B", Text("Y")}}), "((A not exist))");
}

TEST(Substitution, AnswersStaticFlags)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String");
    registry.Attribute("A", "String", {{"ReadOnly", true}, {"Hidden", true}, {"IsSystemUniqueProperty", true}});
    const char* const properties[] = {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "IsSystemUniqueProperty",
                                      "Immutable"};
    std::vector<Term> terms;
    for (const char* property : properties) {
        terms.push_back({"A", "EQU", true, "AND", property});
    }
    terms.push_back({"A", "EQU", true, "", "ResetRequired"}); // no property that formulas can ask for
    registry.Rule("T", "Hidden", true, terms);
    registry.Rule("A", "GrayOut", true, {{"T", "EQU", nullptr}}); // what a rule makes of A does not count
    RedfishConfigSettingManager manager = Manager(registry);
    GenerateAll(manager);
    EXPECT_EQ(Expression(manager).Formula,
              "((true==true)&&(false==true)&&(true==true)&&(false==true)&&(true==true)&&(false==true)"
              "&&(A.ResetRequired==true))");
}

TEST(Substitution, ReplacesEveryOccurrence)
{
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X", "OR"}, {"A", "EQU", "Y", "OR"}, {"B", "EQU", "A.CurrentValue"}},
                        {{"A", Text("1")}, {"B", Text("2")}}),
              "((1==X)||(1==Y)||(2==1))");
}

TEST(Substitution, ReplacesInsideLongerNamesToo)
{
    // a key matches wherever its text stands, and the keys are taken in byte-wise order
    EXPECT_EQ(FormulaOf({{"BA", "EQU", "X", "AND"}, {"A", "EQU", "Y"}}, {{"A", Text("1")}, {"BA", Text("2")}}),
              "((B1==X)&&(1==Y))");
    EXPECT_EQ(FormulaOf({{"AB", "EQU", "X", "AND"}, {"B", "EQU", "Y"}}, {{"AB", Text("1")}, {"B", Text("2")}}),
              "((1==X)&&(2==Y))");
    EXPECT_EQ(FormulaOf({{"AA", "EQU", "X"}}, {{"A", Text("1")}, {"AA", Text("2")}}), "((A1==X))");
    EXPECT_EQ(FormulaOf({{"BA", "EQU", nullptr}}, {{"A", Text("1")}, {"BA", SettingValue()}}), "((Btrue==false))");
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X", "", "ReadOnlyNow"}}, {{"A", Text("1")}}), "((falseNow==X))");
}

TEST(Substitution, TakesUpperCaseNamesBeforeLowerCaseOnes)
{
    EXPECT_EQ(FormulaOf({{"Ba", "EQU", "X", "AND"}, {"a", "EQU", "Y"}}, {{"a", Text("1")}, {"Ba", Text("2")}}),
              "((2==X)&&(1==Y))");
    EXPECT_EQ(FormulaOf({{"bA", "EQU", "X", "AND"}, {"A", "EQU", "Y"}}, {{"A", Text("1")}, {"bA", Text("2")}}),
              "((b1==X)&&(1==Y))");
}

TEST(Substitution, ReplacesLaterKeysInValuesToo)
{
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X"}}, {{"A", Text("B.CurrentValue")}, {"B", Text("2")}}), "((2==X))");
    EXPECT_EQ(FormulaOf({{"B", "EQU", "X"}}, {{"A", Text("1")}, {"B", Text("A.CurrentValue")}}),
              "((A.CurrentValue==X))"); // the turn of A is over
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X"}}, {{"A", Text("B.Current")}, {"B", Text("2")}}), "((B.Current==X))");
    // two values in a chain, and a key that a value completes with what follows it
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X"}},
                        {{"A", Text("B.CurrentValue")}, {"B", Text("C not exist")}, {"C", SettingValue()}}),
              "((true==true==X))");
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X", "", "Hidden exist"}}, {{"A", Text("1")}, {"false", Text("2")}}),
              "((true==true==X))");
}

TEST(Substitution, TakesAValueThatHoldsItsOwnKeyOnce)
{
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X"}}, {{"A", Text("A.CurrentValue")}}), "((A.CurrentValue==X))");
    EXPECT_EQ(FormulaOf({{"A", "EQU", "A.CurrentValue"}}, {{"A", Text("[A.CurrentValue]")}}),
              "(([A.CurrentValue]==[A.CurrentValue]))");
}

TEST(Substitution, TreatsTextsOfTheRuleLikeNames)
{
    EXPECT_EQ(FormulaOf({{"A", "EQU", "B.CurrentValue"}}, {{"A", Text("1")}, {"B", Text("2")}}), "((1==2))");
    EXPECT_EQ(FormulaOf({{"A", "EQU", "B exist"}}, {{"A", Text("1")}, {"B", Text("2")}}), "((1==true==true))");
}

TEST(Substitution, KnowsNamesByTheirExactSpelling)
{
    EXPECT_EQ(FormulaOf({{"a", "EQU", "X"}}, {{"A", Text("1")}}), "((a.CurrentValue==X))");
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X", "", "currentvalue"}}, {{"A", Text("1")}}), "((A.currentvalue==X))");
}

TEST(Substitution, KeepsTheFirstOfTwoSettingsWithTheSameKey)
{
    // "A not" exists, and so "A not exist" would hold; but A comes first and says otherwise
    EXPECT_EQ(FormulaOf({{"A", "EQU", nullptr}}, {{"A", Text("1")}, {"A not", Text("2")}}), "((true==false))");
    EXPECT_EQ(FormulaOf({{"A", "EQU", nullptr}}, {{"A", SettingValue()}, {"A not", SettingValue()}}), "((true==true))");
}

TEST(Substitution, ReachesTheSettingItself)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String", {{"CurrentValue", "1"}}).Rule("T", "ReadOnly", true, {{"T", "EQU", "X"}});
    RedfishConfigSettingManager manager = Manager(registry);
    Generate(manager, "T");
    EXPECT_EQ(Expression(manager, "T", "ReadOnly").Formula, "((1==X))");
}

TEST(Substitution, DecidesTheProperty)
{
    const struct {
        const char* value;
        bool hidden;
        const char* reason;
    } facts[] = {
        {"X", true, "the setting is hidden due to the following expression: ((A==X))"},
        {"Y", false, "the setting is hidden if the result of the following expression is true: ((A==X))"},
        {"", true, "the setting is hidden duo to dependency calculate error."},
    };
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Rule("T", "Hidden", true, {{"A", "EQU", "X"}});
    for (const auto& [value, hidden, reason] : facts) {
        RedfishConfigSettingManager manager = Manager(registry, {{"A", Text(value)}});
        SettingStatus status;
        manager.QuerySettingStatus("T", status);
        EXPECT_EQ(status.Hidden.Value, hidden) << value;
        EXPECT_EQ(status.Hidden.Reason, reason) << value;
    }
}

// ---- applying values

TEST(UpdateSettingValue, StartsFromTheDisplayTextEachTime)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Rule("T", "Hidden", true, {{"A", "EQU", "X"}});
    RedfishConfigSettingManager manager = Manager(registry);
    Generate(manager, "T");
    EXPECT_EQ(Expression(manager).Formula, "((A.CurrentValue==X))");
    const std::pair<SettingValue, const char*> facts[] = {{Text("1"), "((1==X))"},
                                                          {Number(2), "((2==X))"},
                                                          {SettingValue(), "((A.CurrentValue==X))"},
                                                          {Text("A.CurrentValue"), "((A.CurrentValue==X))"},
                                                          {Text("3"), "((3==X))"}};
    for (const auto& [value, formula] : facts) {
        manager.UpdateSettingValue({{"A", value}});
        EXPECT_EQ(Record(manager, "A").CurrentValue, value);
        EXPECT_EQ(Expression(manager).Formula, formula);
        EXPECT_EQ(Expression(manager).DisplayText, "((A.CurrentValue==X))");
    }
}

TEST(UpdateSettingValue, GivesJoinedRulesTheirJoinedForm)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Attribute("B", "String");
    registry.Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Rule("T", "Hidden", true, {{"B", "EQU", "Y"}});
    RedfishConfigSettingManager manager = Manager(registry, {{"A", Text("1")}, {"B", Text("2")}});
    Generate(manager, "T");
    EXPECT_EQ(Expression(manager).Formula, "((1==X))||((2==Y))");
    EXPECT_EQ(Expression(manager).DisplayText, "((A.CurrentValue==X))||((B.CurrentValue==Y))");
    EXPECT_EQ(Expression(manager).Rules, (std::vector<std::size_t>{0, 1}));
}

TEST(UpdateSettingValue, FindsNamesInAnyLetterCase)
{
    RegistryBuilder registry;
    registry.Attribute("BootMode", "String", {{"CurrentValue", "old"}});
    RedfishConfigSettingManager manager = Manager(registry);
    Generate(manager, "BootMode");
    manager.UpdateSettingValue({{"bOOTmODE", Text("new")}});
    EXPECT_EQ(Record(manager, "BootMode").CurrentValue, Text("new"));
}

TEST(UpdateSettingValue, LeavesSettingsThatTheMapDoesNotName)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "old"}}).Attribute("B", "String", {{"CurrentValue", "old"}});
    RedfishConfigSettingManager manager = Manager(registry);
    GenerateAll(manager);
    manager.UpdateSettingValue({{"A", Text("new")}, {"Nobody", Text("new")}});
    manager.UpdateSettingValue({});
    EXPECT_EQ(Record(manager, "A").CurrentValue, Text("new"));
    EXPECT_EQ(Record(manager, "B").CurrentValue, Text("old"));
}

TEST(UpdateSettingValue, TouchesGeneratedSettingsOnly)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "old"}}).Attribute("B", "String", {{"CurrentValue", "old"}});
    RedfishConfigSettingManager manager = Manager(registry);
    Generate(manager, "A");
    manager.UpdateSettingValue({{"A", Text("new")}, {"B", Text("new")}});
    EXPECT_EQ(Record(manager, "A").CurrentValue, Text("new"));
    EXPECT_EQ(Record(manager, "B").CurrentValue, Text("old")); // generated just now, as published
}

TEST(UpdateSettingValue, LastsUntilTheNextOperationAppliesTheManagersOwnValues)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Rule("T", "Hidden", true, {{"A", "EQU", "X"}});
    RedfishConfigSettingManager manager = Manager(registry, {{"A", Text("own")}});
    std::string value;
    manager.QuerySettingValue("A", value);
    EXPECT_EQ(value, "own");
    Generate(manager, "T");
    manager.UpdateSettingValue({{"A", Text("other")}});
    EXPECT_EQ(Expression(manager).Formula, "((other==X))");
    manager.QuerySettingValue("A", value);
    EXPECT_EQ(value, "own");
    EXPECT_EQ(Expression(manager).Formula, "((own==X))");
}

TEST(UpdateSettingValue, LogsTheMapsFirstAndThenTheFormulas)
{
    RegistryBuilder registry;
    registry.Attribute("t", "String").Attribute("B", "String").Attribute("a", "Integer", {{"CurrentValue", 5}});
    registry.Rule("t", "ReadOnly", true, {{"B", "EQU", "X", "AND"}, {"a", "GTR", 3}})
        .Rule("t", "Hidden", false, {{"a", "EQU", nullptr}})
        .Rule("B", "GrayOut", true, {{"t", "NEQ", nullptr}});
    RedfishConfigSettingManager manager = Manager(registry);
    GenerateAll(manager);

    const LogCapture log;
    manager.UpdateSettingValue({{"b", Text("Y")}});
    const std::string both = "((B.CurrentValue==X)&&(a.CurrentValue>3))";
    EXPECT_EQ(log.Lines(),
              (Lines{enterUpdate, EnterMap("a"), ExitMap(9), EnterMap("B"), ExitMap(9), EnterMap("t"), NoValue("t"),
                     ExitMap(8), Replace("a"), Replace("B"), Before("GrayOut", "((t exist))"), After("((true==false))"),
                     Replace("t"), Before("Hidden", "((a not exist))"), After("((true==false))"),
                     Before("ReadOnly", both), After("((Y==X)&&(5>3))")}));
}

TEST(UpdateSettingValue, WithoutGeneratedSettingsOnlyEnters)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String");
    RedfishConfigSettingManager manager = Manager(registry);
    const LogCapture log;
    manager.UpdateSettingValue({{"A", Text("X")}});
    EXPECT_EQ(log.Lines(), (Lines{enterUpdate}));
}

TEST(UpdateSettingValue, IsTheSameWithLoggingOff)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Rule("T", "Hidden", true, {{"A", "EQU", "X"}});
    RedfishConfigSettingManager quiet = Manager(registry, {{"A", Text("1")}});
    GenerateAll(quiet);
    RedfishConfigSettingManager logged = Manager(registry, {{"A", Text("1")}});
    {
        const LogCapture log;
        GenerateAll(logged);
    }
    EXPECT_EQ(Expression(quiet).Formula, "((1==X))");
    EXPECT_EQ(Expression(logged).Formula, "((1==X))");
}

TEST(UpdateSettingValue, RunsAfterGeneration)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Rule("T", "Hidden", true, {{"A", "EQU", "X"}});
    RedfishConfigSettingManager manager = Manager(registry, {{"A", Text("1")}});
    const LogCapture log;
    Generate(manager, "T");
    const LogLine exit{3, "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0"};
    EXPECT_EQ(Between(log.Lines(), enterUpdate, exit),
              (Lines{enterUpdate, EnterMap("A"), ExitMap(9), EnterMap("T"), NoValue("T"), ExitMap(8), Replace("A"),
                     Replace("T"), Before("Hidden", "((A.CurrentValue==X))"), After("((1==X))"), exit}));
}

// ---- generating the formulas

LogLine EnterGenerate(const std::string& setting)
{
    return {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=" + setting};
}

LogLine ExitGenerate(int size)
{
    return {4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=" +
                   std::to_string(size)};
}

RegistryBuilder TwoRules()
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Attribute("B", "String");
    registry.Rule("T", "Hidden", true, {{"A", "EQU", "X", "AND"}, {"B", "EQU", "Y"}})
        .Rule("A", "ReadOnly", true, {{"B", "EQU", "Z"}});
    return registry;
}

TEST(GenerateExpression, OfOneSettingLogsItsRules)
{
    RedfishConfigSettingManager manager = Manager(TwoRules());
    const LogCapture log;
    Generate(manager, "t");
    EXPECT_EQ(Between(log.Lines(), EnterGenerate("t"), ExitGenerate(2)),
              (Lines{EnterGenerate("t"),
                     {3, "Enter RedfishConfigExpression::ParseSingleSettingDependency()"},
                     {4, "The property: Hidden of setting: T expression is: "
                         "((A.CurrentValue==X)&&(B.CurrentValue==Y))"},
                     {3, "Exit RedfishConfigExpression::ParseSingleSettingDependency()"},
                     ExitGenerate(2)}));
}

TEST(GenerateExpression, OfAllSettingsLogsAllRulesAndNamesNone)
{
    RedfishConfigSettingManager manager = Manager(TwoRules());
    const LogCapture log;
    GenerateAll(manager);
    EXPECT_EQ(Between(log.Lines(), EnterGenerate(""), ExitGenerate(0)),
              (Lines{EnterGenerate(""),
                     {3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()"},
                     {4, "The property: Hidden of setting: T expression is: "
                         "((A.CurrentValue==X)&&(B.CurrentValue==Y))"},
                     {4, "The property: ReadOnly of setting: A expression is: ((B.CurrentValue==Z))"},
                     {3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()"},
                     ExitGenerate(0)}));
}

TEST(GenerateExpression, FailsWithCode27WhereTheListIsNoArray)
{
    std::string text =
        R"({"RegistryEntries":{"Attributes":[{"AttributeName":"A","Type":"String"}],"Dependencies":{}}})";
    RedfishConfigSettingManager manager(text, false, Config_Options());
    const LogLine inner{4, "Parse settings dependency failed."};
    const LogLine outer{4, "Failed to parse the settings dependency info."};
    const LogLine failed{4, "Failed to parse the dependencySettings and expressionMaps with ret=27"};
    {
        const LogCapture log;
        SettingStatus status;
        EXPECT_EQ(static_cast<int>(manager.QuerySettingStatus("A", status)), RESULT_HTTP_RESPONSE_PARSE_FAILED);
        EXPECT_EQ(Between(log.Lines(), EnterGenerate("A"), failed),
                  (Lines{EnterGenerate("A"),
                         {3, "Enter RedfishConfigExpression::ParseSingleSettingDependency()"},
                         inner,
                         outer,
                         failed}));
    }
    const LogCapture log;
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(static_cast<int>(manager.QueryGroupSettingStatus(status)), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(Between(log.Lines(), EnterGenerate(""), failed),
              (Lines{EnterGenerate(""),
                     {3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()"},
                     inner,
                     outer,
                     failed}));
}

TEST(GenerateExpression, LogsTheLackOfRulesOnce)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String").Attribute("B", "String");
    RedfishConfigSettingManager manager = Manager(registry);
    const LogCapture log;
    Generate(manager, "A");
    Generate(manager, "B");
    GenerateAll(manager);
    EXPECT_EQ(log.Count(4, "The schema not include dependency information."), 1U);
}

TEST(GenerateExpression, RunAgainChangesNoFormula)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String", {{"CurrentValue", "1"}}).Attribute("B", "String");
    registry.Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
        .Rule("T", "Hidden", true, {{"A", "EQU", "Y"}})
        .Rule("B", "Hidden", true, {{"T", "NEQ", nullptr}});
    RedfishConfigSettingManager manager = Manager(registry);
    GenerateAll(manager);
    GenerateAll(manager); // builds all rules once more
    SettingStatus status;
    for (int i = 0; i < 2; ++i) { // and so does each question for an unknown name
        EXPECT_EQ(static_cast<int>(manager.QuerySettingStatus("Nobody", status)), RESULT_SETTING_NOT_FOUND);
    }
    std::map<std::string, std::vector<std::string>> groups;
    manager.GetGroupList(groups); // generates the settings anew
    GenerateAll(manager);
    EXPECT_EQ(Expression(manager).Formula, "((1==X))||((1==Y))");
    EXPECT_EQ(Expression(manager).DisplayText, "((A.CurrentValue==X))||((A.CurrentValue==Y))");
    EXPECT_EQ(Expression(manager).Rules, (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(Expression(manager, "B").DisplayText, "((T exist))");
    EXPECT_EQ(Expression(manager, "B").Rules, (std::vector<std::size_t>{2}));
}

// ---- related settings

TEST(RelatedSettings, AreGeneratedWithTheSettingButWithoutTheirRules)
{
    RegistryBuilder registry = TwoRules();
    registry.Attribute("C", "String");
    RedfishConfigSettingManager manager = Manager(registry, {{"B", Text("Z")}});
    const LogCapture log;
    Generate(manager, "T");
    EXPECT_EQ(log.Count(4, Replace("A").second), 1U);
    EXPECT_EQ(log.Count(4, Replace("B").second), 1U);
    EXPECT_EQ(log.Count(4, Replace("C").second), 0U);
    EXPECT_TRUE(Record(manager, "A").expressionMaps.empty());
    SettingStatus status;
    manager.QuerySettingStatus("A", status); // it is there already, and stays as it is
    EXPECT_FALSE(status.ReadOnly.Value);

    RedfishConfigSettingManager all = Manager(registry, {{"B", Text("Z")}});
    GenerateAll(all);
    all.QuerySettingStatus("A", status);
    EXPECT_TRUE(status.ReadOnly.Value);
}

TEST(RelatedSettings, FeedTheFormulaWhateverTheirSpelling)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("bootmode", "String", {{"CurrentValue", "1"}});
    registry.Rule("T", "Hidden", true, {{"BootMode", "EQU", "X"}});
    RedfishConfigSettingManager manager = Manager(registry);
    Generate(manager, "T");                                                 // the related setting is found
    EXPECT_EQ(Expression(manager).Formula, "((BootMode.CurrentValue==X))"); // but its keys have its own spelling
}

TEST(RelatedSettings, ThatTheRegistryLacksFailASingleSettingWithCode13)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Rule("T", "Hidden", true, {{"Nobody", "EQU", "X"}});
    RedfishConfigSettingManager single = Manager(registry);
    SettingStatus status;
    EXPECT_EQ(static_cast<int>(single.QuerySettingStatus("T", status)), RESULT_INTERNAL_ERROR);

    RedfishConfigSettingManager all = Manager(registry);
    GenerateAll(all); // nothing is missed there
    EXPECT_EQ(Expression(all).Formula, "((Nobody.CurrentValue==X))");
}

TEST(RelatedSettings, OfARuleDroppedForItsOutcomeAreGeneratedToo)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Attribute("B", "String");
    registry.Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Rule("T", "Hidden", false, {{"B", "EQU", "Y"}});
    RedfishConfigSettingManager manager = Manager(registry);
    const LogCapture log;
    Generate(manager, "T");
    EXPECT_EQ(log.Count(4, Replace("B").second), 1U);
}

TEST(DependencySettings, AreTheNamesThatTheFormulasReadInTheRulesOrder)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Attribute("B", "String").Attribute("C", "String");
    registry.Rule("T", "ReadOnly", true, {{"C", "EQU", "X", "OR"}, {"SYSACS", "EQU", "X", "OR"}, {"A", "EQU", "X"}})
        .Rule("C", "Hidden", true, {{"T", "EQU", "X"}})
        .Rule("T", "GrayOut", true, {{"B", "eq", "X"}})
        .Rule("T", "GrayOut", true, {{"B", "EQU", "X", "OR"}, {"C", "EQU", "Y"}})
        .Rule("T", "ReadOnly", true, {{"T", "EQU", nullptr}});
    const Names expected{"C", "A", "B", "T"};

    RedfishConfigSettingManager single = Manager(registry);
    Generate(single, "T");
    EXPECT_EQ(Record(single, "T").dependencySettings, expected);
    EXPECT_EQ(Record(single, "A").dependencySettings, Names());
    single.UpdateSettingValue({{"A", Text("X")}});
    EXPECT_EQ(Record(single, "T").dependencySettings, expected);

    RedfishConfigSettingManager all = Manager(registry);
    GenerateAll(all);
    EXPECT_EQ(Record(all, "T").dependencySettings, expected);
    EXPECT_EQ(Record(all, "C").dependencySettings, (Names{"T"}));
    EXPECT_EQ(Record(all, "A").dependencySettings, Names());
}

TEST(DependencySettings, LeaveOutTheRulesThatAreInNoFormula)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String").Attribute("B", "String");
    registry.Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Rule("T", "Hidden", false, {{"B", "EQU", "Y"}});
    RedfishConfigSettingManager manager = Manager(registry);
    Generate(manager, "T");
    EXPECT_EQ(Record(manager, "T").dependencySettings, (Names{"A"}));
}

} // namespace
