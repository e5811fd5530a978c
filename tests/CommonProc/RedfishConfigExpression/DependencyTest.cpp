#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigExpression.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;
using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string>;
using Lines = std::vector<LogLine>;
using Positions = std::vector<std::size_t>;

const LogLine enterAll{3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()"};
const LogLine exitAll{3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()"};
const LogLine enterSingle{3, "Enter RedfishConfigExpression::ParseSingleSettingDependency()"};
const LogLine exitSingle{3, "Exit RedfishConfigExpression::ParseSingleSettingDependency()"};
const LogLine noDependencies{4, "The schema not include dependency information."};
const LogLine opposite{4, "Found one property has opposite MapToValue, need comfirm with BMC and UEFI."};

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

/** What one parse leaves behind. */
struct Outcome {
    int Code = -1;
    Names Related;
    ExpressionMaps Maps;
    Lines Log;
};

Outcome ParseAll(RedfishConfigExpression& parser, const std::string& registry, const ExpressionMaps& maps = {})
{
    Outcome outcome;
    outcome.Maps = maps;
    const LogCapture log;
    outcome.Code = parser.ParseAllSettingsDependency(registry, outcome.Related, outcome.Maps);
    outcome.Log = log.Lines();
    return outcome;
}

Outcome ParseAll(const std::string& registry)
{
    RedfishConfigExpression parser;
    return ParseAll(parser, registry);
}

Outcome ParseSingle(RedfishConfigExpression& parser, const std::string& registry, const std::string& setting,
                    const ExpressionMaps& maps = {}, const Names& related = {})
{
    Outcome outcome;
    outcome.Maps = maps;
    outcome.Related = related;
    const LogCapture log;
    outcome.Code = parser.ParseSingleSettingDependency(registry, setting, outcome.Related, outcome.Maps);
    outcome.Log = log.Lines();
    return outcome;
}

Outcome ParseSingle(const std::string& registry, const std::string& setting)
{
    RedfishConfigExpression parser;
    return ParseSingle(parser, registry, setting);
}

/** The lines that building the registry's rules writes, between entry and exit. */
Lines LinesOfRules(const std::string& registry)
{
    const Lines log = ParseAll(registry).Log;
    EXPECT_GE(log.size(), 2U);
    EXPECT_EQ(log.front(), enterAll);
    EXPECT_EQ(log.back(), exitAll);
    return log.size() < 2 ? Lines() : Lines(log.begin() + 1, log.end() - 1);
}

/** The formula of a registry whose single rule makes T read only while the terms hold; empty when there is none. */
std::string FormulaOf(const std::vector<Term>& terms)
{
    const Outcome outcome = ParseAll(RegistryBuilder().Rule("T", "ReadOnly", true, terms).Text());
    if (outcome.Maps.empty()) {
        return "";
    }
    return outcome.Maps.at("T").at("ReadOnly").DisplayText;
}

std::string WithDependencies(const std::string& dependencies)
{
    return R"({"RegistryEntries":{"Attributes":[],"Dependencies":)" + dependencies + "}}";
}

LogLine StoredLine(const std::string& property, const std::string& setting, const std::string& formula)
{
    return {4, "The property: " + property + " of setting: " + setting + " expression is: " + formula};
}

// ---- reading the list

TEST(DependencyList, ItsLackIsLoggedAndNoFailure)
{
    for (const char* registry :
         {"{}", R"({"Id":"X"})", R"({"RegistryEntries":{}})", R"({"RegistryEntries":{"Attributes":[]}})",
          R"({"RegistryEntries":null})", R"({"RegistryEntries":[]})", R"({"RegistryEntries":"Dependencies"})",
          R"({"RegistryEntries":5})", R"({"Dependencies":[]})"}) {
        SCOPED_TRACE(registry);
        const Outcome all = ParseAll(registry);
        EXPECT_EQ(all.Code, RESULT_SUCCEED);
        EXPECT_THAT(all.Maps, IsEmpty());
        EXPECT_EQ(all.Log, (Lines{enterAll, noDependencies, exitAll}));

        const Outcome single = ParseSingle(registry, "T");
        EXPECT_EQ(single.Code, RESULT_SUCCEED);
        EXPECT_THAT(single.Maps, IsEmpty());
        EXPECT_THAT(single.Related, IsEmpty());
        EXPECT_EQ(single.Log, (Lines{enterSingle, noDependencies, exitSingle}));
    }
}

TEST(DependencyList, AnEmptyOneIsReadWithoutAWord)
{
    const Outcome outcome = ParseAll(RegistryBuilder().EmptyDependencies().Text());
    EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
    EXPECT_THAT(outcome.Maps, IsEmpty());
    EXPECT_EQ(outcome.Log, (Lines{enterAll, exitAll}));
}

TEST(DependencyList, ThatIsNoArrayFailsWithCode27)
{
    const LogLine inner{4, "Parse settings dependency failed."};
    const LogLine outer{4, "Failed to parse the settings dependency info."};
    for (const char* dependencies : {"{}", "null", "5", "true", R"("[]")"}) {
        SCOPED_TRACE(dependencies);
        const Outcome all = ParseAll(WithDependencies(dependencies));
        EXPECT_EQ(all.Code, RESULT_HTTP_RESPONSE_PARSE_FAILED);
        EXPECT_THAT(all.Maps, IsEmpty());
        EXPECT_EQ(all.Log, (Lines{enterAll, inner, outer}));

        const Outcome single = ParseSingle(WithDependencies(dependencies), "T");
        EXPECT_EQ(single.Code, RESULT_HTTP_RESPONSE_PARSE_FAILED);
        EXPECT_EQ(single.Log, (Lines{enterSingle, inner, outer}));
    }
}

TEST(DependencyList, RaisesForATextThatIsNoJsonObject)
{
    for (const char* text : {"", "{", "[]", "5", "null", "true", R"("{}")", "{} {}", "not JSON"}) {
        SCOPED_TRACE(text);
        RedfishConfigExpression parser;
        Names related;
        ExpressionMaps maps;
        EXPECT_THROW(parser.ParseAllSettingsDependency(text, related, maps), std::exception);
        EXPECT_THROW(parser.ParseSingleSettingDependency(text, "T", related, maps), std::exception);
    }
}

TEST(DependencyList, IsReadOnceAndKept)
{
    const std::string first = RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Text();
    const std::string other = RegistryBuilder().Rule("U", "Hidden", true, {{"B", "EQU", "X"}}).Text();
    RedfishConfigExpression parser;
    ParseSingle(parser, first, "Nobody");
    for (const std::string& later : {other, std::string("{"), std::string("[]"), WithDependencies("5")}) {
        SCOPED_TRACE(later);
        const Outcome outcome = ParseAll(parser, later);
        EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
        ASSERT_EQ(outcome.Maps.size(), 1U);
        EXPECT_EQ(outcome.Maps.begin()->first, "T");
    }
}

TEST(DependencyList, ThatIsMissingOrEmptyIsKeptToo)
{
    const std::string other = RegistryBuilder().Rule("U", "Hidden", true, {{"B", "EQU", "X"}}).Text();
    for (const char* first : {"{}", R"({"RegistryEntries":{"Dependencies":[]}})"}) {
        SCOPED_TRACE(first);
        RedfishConfigExpression parser;
        ParseAll(parser, first);
        const Outcome outcome = ParseAll(parser, other);
        EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
        EXPECT_THAT(outcome.Maps, IsEmpty());
        EXPECT_EQ(outcome.Log, (Lines{enterAll, exitAll}));
    }
}

TEST(DependencyList, IsReadFromTheNextTextAfterOneThatCannotBeRead)
{
    const std::string good = RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Text();
    for (const std::string& bad : {std::string("{"), std::string("[]"), WithDependencies("{}")}) {
        SCOPED_TRACE(bad);
        RedfishConfigExpression parser;
        Names related;
        ExpressionMaps maps;
        try {
            EXPECT_NE(static_cast<int>(parser.ParseAllSettingsDependency(bad, related, maps)), RESULT_SUCCEED);
        } catch (const std::exception&) {
        }
        const Outcome outcome = ParseAll(parser, good);
        EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
        EXPECT_EQ(outcome.Maps.count("T"), 1U);
    }
}

TEST(DependencyList, IsCopiedWithItsOwner)
{
    const std::string first = RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Text();
    RedfishConfigExpression parser;
    ParseAll(parser, first);

    RedfishConfigExpression copy(parser);
    EXPECT_EQ(ParseAll(copy, "{}").Maps.count("T"), 1U);

    RedfishConfigExpression assigned;
    ParseAll(assigned, RegistryBuilder().Rule("U", "Hidden", true, {{"A", "EQU", "X"}}).Text());
    assigned = parser;
    EXPECT_EQ(ParseAll(assigned, "{}").Maps.count("T"), 1U);
    EXPECT_EQ(ParseAll(assigned, "{}").Maps.count("U"), 0U);
}

TEST(DependencyList, LeavesOutRecordsWithoutTermsSilently)
{
    for (const char* record :
         {"5", "null", "[]", R"("Map")", "{}", R"({"Dependency":null})", R"({"Dependency":{}})",
          R"({"Dependency":{"MapFrom":[],"MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":true}})",
          R"({"Dependency":{"MapFrom":null,"MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":true}})",
          R"({"Dependency":{"MapFrom":{},"MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":true}})"}) {
        SCOPED_TRACE(record);
        RegistryBuilder registry;
        registry.RawRule(boost::json::parse(record)).Rule("U", "Hidden", true, {{"A", "EQU", "X"}});
        EXPECT_EQ(LinesOfRules(registry.Text()), (Lines{StoredLine("Hidden", "U", "((A.CurrentValue==X))")}));
        const Outcome outcome = ParseAll(registry.Text());
        ASSERT_EQ(outcome.Maps.size(), 1U);
        EXPECT_EQ(outcome.Maps.at("U").at("Hidden").Rules, (Positions{1})); // the removed record keeps its place
    }
}

TEST(DependencyList, ReadsOnlyWhatStandsUnderDependency)
{
    RegistryBuilder registry;
    registry.RawRule(boost::json::parse(
        R"({"DependencyFor":"Other","Type":"Map","MapToAttribute":"Other","Dependency":{
            "MapFrom":[{"MapFromAttribute":"A","MapFromCondition":"EQU","MapFromProperty":"CurrentValue",
                        "MapFromValue":"X"}],
            "MapToAttribute":"T","MapToProperty":"GrayOut","MapToValue":true}})"));
    EXPECT_EQ(LinesOfRules(registry.Text()), (Lines{StoredLine("GrayOut", "T", "((A.CurrentValue==X))")}));
}

// ---- terms on SYSACS

TEST(SysacsTerm, Disappears)
{
    const struct {
        std::vector<Term> terms;
        const char* formula;
    } facts[] = {
        {{{"SYSACS", "EQU", "X", "AND"}, {"A", "EQU", "Y"}}, "((A.CurrentValue==Y))"},
        {{{"A", "EQU", "X", "OR"}, {"SYSACS", "EQU", "Z", "AND"}, {"B", "EQU", "Y"}},
         "((A.CurrentValue==X)||(B.CurrentValue==Y))"},
        // the joiner before it stays, and so the formula cannot be calculated later
        {{{"A", "EQU", "X", "AND"}, {"SYSACS", "EQU", "Y"}}, "((A.CurrentValue==X)&&)"},
        // it is not looked at before it goes
        {{{"SYSACS", "no condition", "X"}, {"A", "EQU", "Y"}}, "((A.CurrentValue==Y))"},
        {{{"sysacs", "EQU", "X"}}, "((sysacs.CurrentValue==X))"},
        {{{"SYSACS ", "EQU", "X"}}, "((SYSACS .CurrentValue==X))"},
        {{{"SYSACS2", "EQU", "X"}}, "((SYSACS2.CurrentValue==X))"},
        {{{"A", "EQU", "SYSACS"}}, "((A.CurrentValue==SYSACS))"},
    };
    for (const auto& [terms, formula] : facts) {
        EXPECT_EQ(FormulaOf(terms), formula);
    }
}

TEST(SysacsTerm, TakesTheRuleWithItWhenThereIsNoOtherTerm)
{
    RegistryBuilder registry;
    registry.Rule("T", "Hidden", true, {{"SYSACS", "EQU", "X"}})
        .Rule("T", "ReadOnly", true, {{"SYSACS", "EQU", "X", "AND"}, {"SYSACS", "EQU", "Y"}})
        .Rule("SYSACS", "Hidden", true, {{"A", "EQU", "X"}});
    EXPECT_EQ(LinesOfRules(registry.Text()), (Lines{StoredLine("Hidden", "SYSACS", "((A.CurrentValue==X))")}));
    const Outcome outcome = ParseAll(registry.Text());
    EXPECT_EQ(outcome.Maps.count("T"), 0U);
    EXPECT_EQ(outcome.Maps.at("SYSACS").at("Hidden").Rules, (Positions{2}));
}

TEST(SysacsTerm, IsNoRelatedName)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"SYSACS", "EQU", "X", "AND"}, {"A", "EQU", "Y"}})
                                     .Rule("T", "ReadOnly", true, {{"SYSACS", "EQU", "X"}})
                                     .Text();
    EXPECT_EQ(ParseSingle(registry, "T").Related, (Names{"A"}));
}

// ---- the formula of one rule

TEST(Condition, WithAValueBecomesItsOperator)
{
    const std::pair<const char*, const char*> facts[] = {{"EQU", "=="}, {"NEQ", "!="}, {"GTR", ">"}, {"GEQ", ">="},
                                                         {"LSS", "<"},  {"LEQ", "<="}, {"EQ", "=="}};
    for (const auto& [condition, sign] : facts) {
        EXPECT_EQ(FormulaOf({{"A", condition, "X"}}), std::string("((A.CurrentValue") + sign + "X))");
        EXPECT_EQ(FormulaOf({{"A", condition, "X", "", "ReadOnly"}}), std::string("((A.ReadOnly") + sign + "X))");
    }
}

TEST(Condition, WithoutAValueAsksForExistence)
{
    EXPECT_EQ(FormulaOf({{"A", "EQU", nullptr}}), "((A not exist))");
    EXPECT_EQ(FormulaOf({{"A", "EQ", nullptr}}), "((A not exist))");
    EXPECT_EQ(FormulaOf({{"A", "NEQ", nullptr}}), "((A exist))");
    EXPECT_EQ(FormulaOf({{"A", "NEQ", nullptr, "AND"}, {"B", "EQU", "X"}}), "((A exist)&&(B.CurrentValue==X))");
}

TEST(Condition, OfSizeWithoutAValueIsUnusable)
{
    const std::pair<const char*, const char*> facts[] = {{"GTR", ">"}, {"GEQ", ">="}, {"LSS", "<"}, {"LEQ", "<="}};
    for (const auto& [condition, sign] : facts) {
        const std::string term = std::string("(A.CurrentValue") + sign + "nullopt)";
        EXPECT_EQ(LinesOfRules(RegistryBuilder().Rule("T", "Hidden", true, {{"A", condition, nullptr}}).Text()),
                  (Lines{{4, "Found the dependency information that needs to compare relative size with null." + term},
                         {4, "The expression is empty."},
                         {4, "The dependency information is invalid and throw away it. The expression:"}}));
        EXPECT_EQ(FormulaOf({{"A", condition, nullptr}}), "");
    }
}

TEST(Condition, OnAnotherPropertyWithoutAValueIsUnusable)
{
    const std::pair<const char*, const char*> facts[] = {{"EQU", "=="}, {"NEQ", "!="}, {"GTR", ">"}, {"GEQ", ">="},
                                                         {"LSS", "<"},  {"LEQ", "<="}, {"EQ", "=="}};
    for (const auto& [condition, sign] : facts) {
        for (const char* property : {"ReadOnly", "currentvalue", "DefaultValue"}) {
            const std::vector<Term> terms{{"A", condition, nullptr, "", property}};
            const std::string term = std::string("(A.") + property + sign + "nullopt)";
            EXPECT_EQ(
                LinesOfRules(RegistryBuilder().Rule("T", "Hidden", true, terms).Text()),
                (Lines{{4, "Found the dependency information that needs to compare setting property with null." + term},
                       {4, "The expression is empty."},
                       {4, "The dependency information is invalid and throw away it. The expression:"}}));
            EXPECT_EQ(FormulaOf(terms), "");
        }
    }
}

TEST(Condition, ThatIsUnknownIsUnusable)
{
    for (const char* condition : {"eq", "equ", "Equ", "", "==", "EQU ", "GTE", "NOT"}) {
        SCOPED_TRACE(condition);
        EXPECT_EQ(FormulaOf({{"A", condition, "X"}}), "");
        EXPECT_EQ(FormulaOf({{"A", condition, nullptr}}), "");
        const Lines lines = LinesOfRules(RegistryBuilder().Rule("T", "Hidden", true, {{"A", condition, "X"}}).Text());
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.front(), LogLine(4, "Invalid dependency(MapFrom) information for T"));
    }
}

TEST(Term, WritesItsValueAsTextWithoutQuotes)
{
    const std::pair<boost::json::value, const char*> facts[] = {
        {"X", "((A.CurrentValue==X))"},
        {"", "((A.CurrentValue==))"},
        {"two words", "((A.CurrentValue==two words))"},
        {"a)||(b", "((A.CurrentValue==a)||(b))"},
        {"\"", "((A.CurrentValue==\"))"},
        {"TRUE", "((A.CurrentValue==TRUE))"},
        {7, "((A.CurrentValue==7))"},
        {-42, "((A.CurrentValue==-42))"},
        {INT64_MIN, "((A.CurrentValue==-9223372036854775808))"},
        {5.0, "((A.CurrentValue==5))"},
        {true, "((A.CurrentValue==true))"},
        {false, "((A.CurrentValue==false))"},
    };
    for (const auto& [value, formula] : facts) {
        EXPECT_EQ(FormulaOf({{"A", "EQU", value}}), formula);
    }
}

TEST(Term, WithAValueOfAnotherKindHasNoValue)
{
    for (const char* value : {"[]", "[1]", "{}", "1.5", "18446744073709551615"}) {
        EXPECT_EQ(FormulaOf({{"A", "EQU", boost::json::parse(value)}}), "((A not exist))") << value;
    }
}

TEST(Term, WithoutTheMemberMapFromValueHasNoValue)
{
    RegistryBuilder registry;
    registry.RawRule(boost::json::parse(
        R"({"Dependency":{"MapFrom":[{"MapFromAttribute":"A","MapFromCondition":"NEQ","MapFromProperty":"CurrentValue"}],
            "MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":true}})"));
    EXPECT_EQ(ParseAll(registry.Text()).Maps.at("T").at("Hidden").DisplayText, "((A exist))");
}

TEST(Term, IsJoinedToTheNextByItsMapTerms)
{
    const std::pair<const char*, const char*> facts[] = {
        {"AND", "((A.CurrentValue==X)&&(B.CurrentValue!=Y))"},  {"OR", "((A.CurrentValue==X)||(B.CurrentValue!=Y))"},
        {"", "((A.CurrentValue==X)(B.CurrentValue!=Y))"},       {"and", "((A.CurrentValue==X)and(B.CurrentValue!=Y))"},
        {"XOR", "((A.CurrentValue==X)XOR(B.CurrentValue!=Y))"}, {"&&", "((A.CurrentValue==X)&&(B.CurrentValue!=Y))"},
    };
    for (const auto& [joiner, formula] : facts) {
        EXPECT_EQ(FormulaOf({{"A", "EQU", "X", joiner}, {"B", "NEQ", "Y"}}), formula);
    }
}

TEST(Term, ThatIsLastKeepsItsJoiner)
{
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X", "AND"}}), "((A.CurrentValue==X)&&)");
    EXPECT_EQ(FormulaOf({{"A", "EQU", "X", "OR"}}), "((A.CurrentValue==X)||)");
    EXPECT_THROW(RedfishConfigExpression().Calculate("((X==X)&&)"), std::string);
}

TEST(Term, WithMapTermsOfAnotherKindHasNoJoiner)
{
    for (const char* joiner : {"null", "5", "true", R"(["AND"])"}) {
        RegistryBuilder registry;
        registry.RawRule(boost::json::parse(
            R"({"Dependency":{"MapFrom":[{"MapFromAttribute":"A","MapFromCondition":"EQU","MapFromProperty":"CurrentValue",
                "MapFromValue":"X","MapTerms":)" +
            std::string(joiner) + R"(}],"MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":true}})"));
        EXPECT_EQ(ParseAll(registry.Text()).Maps.at("T").at("Hidden").DisplayText, "((A.CurrentValue==X))") << joiner;
    }
}

TEST(Term, ThatIsIncompleteMakesTheRuleUnusable)
{
    const char* terms[] = {
        R"({"MapFromAttribute":"","MapFromCondition":"EQU","MapFromProperty":"CurrentValue","MapFromValue":"X"})",
        R"({"MapFromCondition":"EQU","MapFromProperty":"CurrentValue","MapFromValue":"X"})",
        R"({"MapFromAttribute":7,"MapFromCondition":"EQU","MapFromProperty":"CurrentValue","MapFromValue":"X"})",
        R"({"MapFromAttribute":"A","MapFromCondition":"EQU","MapFromProperty":"","MapFromValue":"X"})",
        R"({"MapFromAttribute":"A","MapFromCondition":"EQU","MapFromValue":"X"})",
        R"({"MapFromAttribute":"A","MapFromProperty":"CurrentValue","MapFromValue":"X"})",
        R"({"MapFromAttribute":"A","MapFromCondition":true,"MapFromProperty":"CurrentValue","MapFromValue":"X"})",
        R"({"mapfromattribute":"A","MapFromCondition":"EQU","MapFromProperty":"CurrentValue","MapFromValue":"X"})",
        "{}",
        "5",
        "null",
    };
    for (const char* term : terms) {
        SCOPED_TRACE(term);
        RegistryBuilder registry;
        registry.RawRule(boost::json::parse(std::string(R"({"Dependency":{"MapFrom":[)") + term +
                                            R"(],"MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":true}})"));
        EXPECT_EQ(LinesOfRules(registry.Text()),
                  (Lines{{4, "Invalid dependency(MapFrom) information for T"},
                         {4, "The expression is empty."},
                         {4, "The dependency information is invalid and throw away it. The expression:"}}));
        EXPECT_THAT(ParseAll(registry.Text()).Maps, IsEmpty());
    }
}

TEST(Term, ThatIsUnusableIsReportedWithTheTextBuiltSoFar)
{
    const std::vector<Term> terms{{"A", "EQU", "X", "AND"}, {"", "EQU", "Y"}};
    EXPECT_EQ(LinesOfRules(RegistryBuilder().Rule("T", "Hidden", true, terms).Text()),
              (Lines{{4, "Invalid dependency(MapFrom) information for T"},
                     {4, "The dependency information is invalid and throw away it. The expression:"
                         "((A.CurrentValue==X)&&)"}}));
}

TEST(Term, ThatIsUnusableEndsTheReadingOfItsRule)
{
    const std::vector<Term> terms{{"A", "EQU", "X", "AND"}, {"", "EQU", "Y"}, {"C", "eq", "Z"}, {"D", "EQU", "W"}};
    EXPECT_EQ(LinesOfRules(RegistryBuilder().Rule("T", "Hidden", true, terms).Text()),
              (Lines{{4, "Invalid dependency(MapFrom) information for T"},
                     {4, "The dependency information is invalid and throw away it. The expression:"
                         "((A.CurrentValue==X)&&)"}}));
}

TEST(Term, ThatIsUnusableSpoilsTheRuleWhereverItStands)
{
    const Term good{"A", "EQU", "X", "AND"};
    const Term bad{"B", "eq", "Y", "AND"};
    EXPECT_EQ(FormulaOf({good, good, bad}), "");
    EXPECT_EQ(FormulaOf({good, bad, good}), "");
    EXPECT_EQ(FormulaOf({bad, good, good}), "");
    EXPECT_NE(FormulaOf({good, good, good}), "");
}

TEST(Target, ThatIsIncompleteMakesTheRuleUnusable)
{
    const std::pair<const char*, const char*> facts[] = {
        {R"("MapToAttribute":"","MapToProperty":"Hidden","MapToValue":true)", ""},
        {R"("MapToProperty":"Hidden","MapToValue":true)", ""},
        {R"("MapToAttribute":5,"MapToProperty":"Hidden","MapToValue":true)", ""},
        {R"("MapToAttribute":"T","MapToProperty":"","MapToValue":true)", "T"},
        {R"("MapToAttribute":"T","MapToValue":true)", "T"},
        {R"("MapToAttribute":"T","MapToProperty":null,"MapToValue":true)", "T"},
        {R"("MapToAttribute":"T","MapToProperty":"Hidden")", "T"},
        {R"("MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":null)", "T"},
        {R"("MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":[true])", "T"},
        {R"("MapToAttribute":"T","MapToProperty":"Hidden","MapToValue":0.5)", "T"},
    };
    for (const auto& [target, name] : facts) {
        SCOPED_TRACE(target);
        RegistryBuilder registry;
        registry
            .RawRule(boost::json::parse(
                std::string(
                    R"({"Dependency":{"MapFrom":[{"MapFromAttribute":"","MapFromCondition":"EQU","MapFromProperty":"P"}],)") +
                target + "}}"))
            .Rule("U", "Hidden", true, {{"A", "EQU", "X"}});
        EXPECT_EQ(LinesOfRules(registry.Text()),
                  (Lines{{4, std::string("Invalid dependency(MapTo) information for ") + name},
                         StoredLine("Hidden", "U", "((A.CurrentValue==X))")}));
        const Outcome outcome = ParseAll(registry.Text());
        EXPECT_EQ(outcome.Code, RESULT_SUCCEED); // one bad rule does not spoil the others
        EXPECT_EQ(outcome.Maps.size(), 1U);
    }
}

// ---- storing

TEST(Expression, StartsWithOneFormulaForBothTexts)
{
    const std::string registry =
        RegistryBuilder().Rule("T", "ReadOnly", true, {{"A", "EQU", "X", "AND"}, {"B", "NEQ", "Y"}}).Text();
    const Outcome outcome = ParseAll(registry);
    ASSERT_EQ(outcome.Maps.size(), 1U);
    ASSERT_EQ(outcome.Maps.at("T").size(), 1U);
    const PropertyExpression& expression = outcome.Maps.at("T").at("ReadOnly");
    EXPECT_EQ(expression.MapToValue, Truth(true));
    EXPECT_EQ(expression.Formula, "((A.CurrentValue==X)&&(B.CurrentValue!=Y))");
    EXPECT_EQ(expression.DisplayText, "((A.CurrentValue==X)&&(B.CurrentValue!=Y))");
    EXPECT_TRUE(expression.Valid);
    EXPECT_EQ(expression.Rules, (Positions{0}));
    EXPECT_EQ(outcome.Log,
              (Lines{enterAll, StoredLine("ReadOnly", "T", "((A.CurrentValue==X)&&(B.CurrentValue!=Y))"), exitAll}));
}

TEST(Expression, KeepsTheKindOfMapToValue)
{
    const std::pair<boost::json::value, SettingValue> facts[] = {
        {true, Truth(true)}, {false, Truth(false)}, {"true", Text("true")}, {"", Text("")},
        {1, Number(1)},      {-7, Number(-7)},      {2.0, Number(2)},
    };
    for (const auto& [value, expected] : facts) {
        const std::string registry = RegistryBuilder().Rule("T", "ReadOnly", value, {{"A", "EQU", "X"}}).Text();
        EXPECT_EQ(ParseAll(registry).Maps.at("T").at("ReadOnly").MapToValue, expected);
    }
}

TEST(Expression, IsKeptByExactAttributeAndPropertyName)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "ReadOnly", true, {{"A", "EQU", "1"}})
                                     .Rule("t", "ReadOnly", true, {{"A", "EQU", "2"}})
                                     .Rule("T", "readonly", true, {{"A", "EQU", "3"}})
                                     .Rule("T", "Any text", true, {{"A", "EQU", "4"}})
                                     .Text();
    const ExpressionMaps maps = ParseAll(registry).Maps;
    ASSERT_EQ(maps.size(), 2U);
    EXPECT_EQ(maps.at("T").size(), 3U);
    EXPECT_EQ(maps.at("T").at("ReadOnly").DisplayText, "((A.CurrentValue==1))");
    EXPECT_EQ(maps.at("t").at("ReadOnly").DisplayText, "((A.CurrentValue==2))");
    EXPECT_EQ(maps.at("T").at("readonly").DisplayText, "((A.CurrentValue==3))");
    EXPECT_EQ(maps.at("T").at("Any text").DisplayText, "((A.CurrentValue==4))");
}

TEST(Expression, JoinsRulesOfTheSameOutcome)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("U", "Hidden", true, {{"A", "EQU", "Y"}})
                                     .Rule("T", "Hidden", true, {{"B", "EQU", "Y", "AND"}, {"C", "LSS", 3}})
                                     .Rule("T", "Hidden", true, {{"D", "NEQ", nullptr}})
                                     .Text();
    const std::string two = "((A.CurrentValue==X))||((B.CurrentValue==Y)&&(C.CurrentValue<3))";
    const std::string three = two + "||((D exist))";
    const Outcome outcome = ParseAll(registry);
    const PropertyExpression& expression = outcome.Maps.at("T").at("Hidden");
    EXPECT_EQ(expression.DisplayText, three);
    EXPECT_EQ(expression.Formula, "((A.CurrentValue==X))"); // takes the joined form when values are applied
    EXPECT_EQ(expression.MapToValue, Truth(true));
    EXPECT_TRUE(expression.Valid);
    EXPECT_EQ(expression.Rules, (Positions{0, 2, 3}));
    EXPECT_EQ(outcome.Log, (Lines{enterAll, StoredLine("Hidden", "T", "((A.CurrentValue==X))"),
                                  StoredLine("Hidden", "U", "((A.CurrentValue==Y))"), StoredLine("Hidden", "T", two),
                                  StoredLine("Hidden", "T", three), exitAll}));
}

TEST(Expression, JoinsTwoRulesWithTheSameTextToo)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Text();
    const ExpressionMaps maps = ParseAll(registry).Maps;
    EXPECT_EQ(maps.at("T").at("Hidden").DisplayText, "((A.CurrentValue==X))||((A.CurrentValue==X))");
    EXPECT_EQ(maps.at("T").at("Hidden").Rules, (Positions{0, 1}));
}

TEST(Expression, KeepsTheFirstOfOppositeOutcomes)
{
    const std::pair<boost::json::value, boost::json::value> facts[] = {
        {true, false}, {false, true}, {true, "true"}, {"true", true}, {1, true}, {1, "1"}, {1, 2}, {"a", "A"}};
    for (const auto& [first, second] : facts) {
        SCOPED_TRACE(boost::json::serialize(first) + " before " + boost::json::serialize(second));
        const std::string registry = RegistryBuilder()
                                         .Rule("T", "Hidden", first, {{"A", "EQU", "X"}})
                                         .Rule("T", "Hidden", second, {{"B", "EQU", "Y"}})
                                         .Rule("T", "Hidden", first, {{"C", "EQU", "Z"}})
                                         .Text();
        const std::string joined = "((A.CurrentValue==X))||((C.CurrentValue==Z))";
        const Outcome outcome = ParseAll(registry);
        EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
        const PropertyExpression& expression = outcome.Maps.at("T").at("Hidden");
        const SettingValue& kept = expression.MapToValue;
        ASSERT_TRUE(kept.has_value());
        EXPECT_EQ(VariantToJson(*kept), first);
        EXPECT_EQ(expression.DisplayText, joined);
        EXPECT_EQ(expression.Formula, "((A.CurrentValue==X))");
        EXPECT_TRUE(expression.Valid);
        EXPECT_EQ(expression.Rules, (Positions{0, 2}));
        EXPECT_EQ(outcome.Log, (Lines{enterAll, StoredLine("Hidden", "T", "((A.CurrentValue==X))"), opposite,
                                      StoredLine("Hidden", "T", "((A.CurrentValue==X))"),
                                      StoredLine("Hidden", "T", joined), exitAll}));
    }
}

TEST(Expression, CountsPositionsInTheRegistryNotAmongTheUsableRules)
{
    RegistryBuilder registry;
    registry.Rule("T", "Hidden", true, {{"SYSACS", "EQU", "X"}})
        .RawRule(boost::json::parse("5"))
        .Rule("T", "Hidden", true, {{"A", "eq", "X"}})
        .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
        .Rule("U", "Hidden", true, {{"A", "EQU", "X"}})
        .Rule("T", "Hidden", true, {{"SYSACS", "EQU", "X", "AND"}, {"B", "EQU", "Y"}});
    EXPECT_EQ(ParseAll(registry.Text()).Maps.at("T").at("Hidden").Rules, (Positions{3, 5}));
    EXPECT_EQ(ParseSingle(registry.Text(), "T").Maps.at("T").at("Hidden").Rules, (Positions{3, 5}));
}

// ---- building again

TEST(Rebuilding, DoesNotJoinARuleTwice)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("T", "Hidden", false, {{"B", "EQU", "Y"}})
                                     .Rule("T", "Hidden", true, {{"C", "EQU", "Z"}})
                                     .Rule("U", "GrayOut", true, {{"D", "EQU", "Z"}})
                                     .Text();
    const auto check = [](const ExpressionMaps& maps) {
        const PropertyExpression& expression = maps.at("T").at("Hidden");
        EXPECT_EQ(expression.DisplayText, "((A.CurrentValue==X))||((C.CurrentValue==Z))");
        EXPECT_EQ(expression.Formula, "((A.CurrentValue==X))");
        EXPECT_EQ(expression.MapToValue, Truth(true));
        EXPECT_EQ(expression.Rules, (Positions{0, 2}));
    };
    RedfishConfigExpression parser;
    ExpressionMaps maps = ParseAll(parser, registry).Maps;
    check(maps);
    maps = ParseAll(parser, registry, maps).Maps;
    check(maps);
    maps = ParseSingle(parser, registry, "T", maps).Maps;
    check(maps);
    EXPECT_EQ(maps.at("U").at("GrayOut").DisplayText, "((D.CurrentValue==Z))");
    EXPECT_EQ(maps.at("U").at("GrayOut").Rules, (Positions{3}));

    RedfishConfigExpression singleFirst;
    maps = ParseSingle(singleFirst, registry, "T").Maps;
    check(maps);
    EXPECT_EQ(maps.count("U"), 0U);
    maps = ParseAll(singleFirst, registry, maps).Maps;
    check(maps);
    EXPECT_EQ(maps.at("U").at("GrayOut").Rules, (Positions{3}));
}

TEST(Rebuilding, NamesTheRelatedSettingsAgain)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("T", "Hidden", false, {{"B", "EQU", "Y"}})
                                     .Text();
    RedfishConfigExpression parser;
    const ExpressionMaps maps = ParseAll(parser, registry).Maps;
    EXPECT_EQ(ParseSingle(parser, registry, "T", maps).Related, (Names{"A", "B"}));
    EXPECT_EQ(ParseSingle(parser, registry, "T", maps).Related, (Names{"A", "B"}));
}

TEST(Rebuilding, AddsToWhatTheMapsHold)
{
    ExpressionMaps maps;
    maps["Other"]["ReadOnly"].DisplayText = "untouched";
    const std::string registry = RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Text();
    RedfishConfigExpression parser;
    const ExpressionMaps all = ParseAll(parser, registry, maps).Maps;
    EXPECT_EQ(all.size(), 2U);
    EXPECT_EQ(all.at("Other").at("ReadOnly").DisplayText, "untouched");
    const ExpressionMaps single = ParseSingle(parser, registry, "T", maps).Maps;
    EXPECT_EQ(single.size(), 2U);
    EXPECT_EQ(single.at("Other").at("ReadOnly").DisplayText, "untouched");
}

// ---- all settings and a single one

TEST(AllSettings, LeaveTheRelatedNamesAlone)
{
    const std::string registry = RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Text();
    RedfishConfigExpression parser;
    Names related{"before"};
    ExpressionMaps maps;
    parser.ParseAllSettingsDependency(registry, related, maps);
    EXPECT_EQ(related, (Names{"before"}));
}

TEST(SingleSetting, BuildsItsOwnRulesOnly)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("U", "Hidden", true, {{"B", "EQU", "X"}})
                                     .Rule("TT", "Hidden", true, {{"C", "EQU", "X"}})
                                     .Rule("T", "GrayOut", false, {{"D", "EQU", "X"}})
                                     .Text();
    const Outcome outcome = ParseSingle(registry, "T");
    EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
    ASSERT_EQ(outcome.Maps.size(), 1U);
    EXPECT_EQ(outcome.Maps.at("T").size(), 2U);
    EXPECT_EQ(outcome.Maps.at("T").at("Hidden").Rules, (Positions{0}));
    EXPECT_EQ(outcome.Maps.at("T").at("GrayOut").Rules, (Positions{3}));
    EXPECT_EQ(outcome.Maps.at("T").at("GrayOut").MapToValue, Truth(false));
    EXPECT_EQ(outcome.Related, (Names{"A", "D"}));
    EXPECT_EQ(outcome.Log, (Lines{enterSingle, StoredLine("Hidden", "T", "((A.CurrentValue==X))"),
                                  StoredLine("GrayOut", "T", "((D.CurrentValue==X))"), exitSingle}));
}

TEST(SingleSetting, IsFoundInAnyLetterCase)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("BootMode", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("BOOTMODE", "Hidden", true, {{"B", "EQU", "X"}})
                                     .Rule("Boot_Mode", "Hidden", true, {{"C", "EQU", "X"}})
                                     .Rule("BootMod", "Hidden", true, {{"D", "EQU", "X"}})
                                     .Text();
    for (const char* name : {"BootMode", "bootmode", "BOOTMODE", "bOOTmODE"}) {
        const Outcome outcome = ParseSingle(registry, name);
        EXPECT_EQ(outcome.Related, (Names{"A", "B"})) << name;
        ASSERT_EQ(outcome.Maps.size(), 2U) << name;
        EXPECT_EQ(outcome.Maps.count("BootMode"), 1U) << name; // the registry's spelling, not the caller's
        EXPECT_EQ(outcome.Maps.count("BOOTMODE"), 1U) << name;
    }
}

TEST(SingleSetting, WithoutRulesSucceeds)
{
    const std::string registry = RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X"}}).Text();
    const Outcome outcome = ParseSingle(registry, "A");
    EXPECT_EQ(outcome.Code, RESULT_SUCCEED);
    EXPECT_THAT(outcome.Maps, IsEmpty());
    EXPECT_THAT(outcome.Related, IsEmpty());
    EXPECT_EQ(outcome.Log, (Lines{enterSingle, exitSingle}));
}

TEST(RelatedNames, StandInTheRulesOrderEachOnce)
{
    const std::string registry =
        RegistryBuilder()
            .Rule("T", "ReadOnly", true, {{"C", "EQU", "X", "AND"}, {"A", "EQU", "Y", "AND"}, {"C", "NEQ", "Z"}})
            .Rule("T", "Hidden", true, {{"A", "EQU", "X", "OR"}, {"a", "EQU", "X", "OR"}, {"B", "NEQ", nullptr}})
            .Rule("T", "GrayOut", true, {{"T", "EQU", "X"}})
            .Text();
    EXPECT_EQ(ParseSingle(registry, "T").Related, (Names{"C", "A", "a", "B", "T"}));
}

TEST(RelatedNames, AreAppendedUnlessTheyAreThere)
{
    const std::string registry =
        RegistryBuilder().Rule("T", "Hidden", true, {{"A", "EQU", "X", "AND"}, {"B", "EQU", "Y"}}).Text();
    RedfishConfigExpression parser;
    EXPECT_EQ(ParseSingle(parser, registry, "T", {}, {"Z", "B"}).Related, (Names{"Z", "B", "A"}));
    EXPECT_EQ(ParseSingle(parser, registry, "T", {}, {"b"}).Related, (Names{"b", "A", "B"}));
}

TEST(RelatedNames, OfUnusableRulesAreLeftOut)
{
    RegistryBuilder registry;
    registry.Rule("T", "Hidden", true, {{"A", "EQU", "X", "AND"}, {"B", "eq", "Y"}})
        .Rule("T", "Hidden", nullptr, {{"C", "EQU", "X"}})
        .Rule("T", "", true, {{"D", "EQU", "X"}})
        .Rule("T", "Hidden", true, {{"E", "GTR", nullptr}})
        .Rule("T", "Hidden", true, {{"F", "EQU", nullptr, "", "ReadOnly"}})
        .Rule("T", "Hidden", true, {{"G", "EQU", "X"}});
    EXPECT_EQ(ParseSingle(registry.Text(), "T").Related, (Names{"G"}));
}

TEST(RelatedNames, OfARuleDroppedForItsOutcomeAreKept)
{
    const std::string registry = RegistryBuilder()
                                     .Rule("T", "Hidden", true, {{"A", "EQU", "X"}})
                                     .Rule("T", "Hidden", false, {{"B", "EQU", "Y"}})
                                     .Text();
    EXPECT_EQ(ParseSingle(registry, "T").Related, (Names{"A", "B"}));
}

} // namespace
