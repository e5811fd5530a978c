#include "ClientTest.h"

#include "support/RegistryBuilder.h"

#include <cstdlib>
#include <memory>
#include <random>

// The adapted text: what it says, and what the core answers by it.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char firstRule[] = "/RegistryEntries/Dependencies/0";

const std::string safeguard = "(T EQU null OR T NEQ null) T.ReadOnly true";

std::string Text(const char* text)
{
    return text;
}

/** Whether the core answers true; of Hidden or protected. */
bool CoreVerdict(const std::map<std::string, SettingStatus>& status, const std::string& name, Property flag)
{
    const SettingStatus& of = status.at(name);
    const auto* const row = std::find_if(std::begin(flags), std::end(flags),
                                         [&](const FlagRow& known) { return known.Name == Name(flag); });
    return (of.*(row->State)).Value || (flag == Property::Hidden && of.Protected.Value);
}

std::map<std::string, SettingStatus> StatusFor(const Adaptation& adaptation, const SettingValueMap& values)
{
    std::string text = adaptation.RegistryText;
    SettingValueMap current = values;
    RedfishConfigSettingManager manager(text, current, false, Config_Options{});
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    return status;
}

std::string ToText(const SettingValueMap& values)
{
    json::object object;
    for (const auto& [name, value] : values) {
        object[name] = value ? VariantToJson(*value) : json::value();
    }
    return json::serialize(object);
}

/** A registry that is adapted, and the model of what is published beside it. */
class World {
public:
    explicit World(const json::value& registry, const SettingValueMap& values = {})
        : m_Document(ReadRegistryDocument(json::serialize(registry))),
          m_Then(Model::Read(m_Document), DocumentOf(values)),
          m_Evaluation(m_Then),
          Adapted(Adapt(m_Document, DocumentOf(values)))
    {
        ExpectStable(Adapted);
    }

    static ValuesDocument DocumentOf(const SettingValueMap& values)
    {
        ValuesDocument document;
        document.Values = values;
        document.Pointer = "/Attributes";
        return document;
    }

    bool IsUndecided(const std::string& name, Property flag) const
    {
        return std::any_of(Adapted.Undecided.begin(), Adapted.Undecided.end(), [&](const UndecidedFlag& undecided) {
            return undecided.Setting == name && undecided.Flag == flag;
        });
    }

    /** For these values the core answers as the evaluation does, and true for what is undecided. */
    void ExpectAgreement(const SettingValueMap& values) const
    {
        const SystemValues now(m_Then.SharedModel(), DocumentOf(values));
        const Evaluation evaluation = m_Evaluation.ForValues(now);
        const auto status = StatusFor(Adapted, values);
        for (std::size_t attribute = 0; attribute < now.Of().Attributes().size(); ++attribute) {
            const std::string& name = now.Of().Attributes()[attribute].Name;
            for (std::size_t number = 0; number + 1 < flagCount && status.count(name) > 0; ++number) {
                const auto flag = static_cast<Property>(number);
                const bool expected = IsUndecided(name, flag) || evaluation.VerdictOn(attribute, flag).Value;
                EXPECT_EQ(CoreVerdict(status, name, flag), expected)
                    << name << "." << Name(flag) << " for " << ToText(values) << "\n"
                    << testing::PrintToString(AdaptedRules(Adapted));
            }
        }
    }

    const Evaluation& Known() const { return m_Evaluation; }

private:
    RegistryDocument m_Document;
    SystemValues m_Then;
    Evaluation m_Evaluation;

public:
    Adaptation Adapted;
};

// The facts, each with what matters to it alone.

/** One rule for T.ReadOnly with these terms. */
World OneRule(const std::vector<Term>& terms, const SettingValueMap& values = {})
{
    RegistryBuilder registry = OneOfEachType();
    registry.Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, terms);
    return World(registry.Json(), values);
}

std::vector<std::string> RulesOf(const World& world)
{
    return AdaptedRules(world.Adapted);
}

TEST(AdaptedTerms, AskForValuesThatAreThere)
{
    const struct {
        Term term;
        std::string condition; ///< empty for none
    } rows[] = {
        {{"Mode", "EQU", "Uefi"}, "Mode EQU Uefi"},
        {{"Mode", "EQU", "UEFI Mode"}, "Mode EQU Uefi"},
        {{"mode", "eq", "Uefi"}, "Mode EQU Uefi"},
        {{"Mode", "EQU", "Other"}, "Mode EQU Other"},
        {{"Mode", "NEQ", "Uefi"}, "Mode NEQ null AND Mode NEQ Uefi"},
        {{"Mode", "EQU", nullptr}, "Mode EQU null"},
        {{"Mode", "NEQ", nullptr}, "Mode NEQ null"},
        {{"Level", "EQU", "5"}, "Level EQU 5"},
        {{"Level", "EQU", 500}, "Level EQU 500"},
        {{"Level", "EQU", "five"}, "Level EQU five"},
        {{"Level", "GTR", 5}, "Level NEQ null AND Level GEQ 6"},
        {{"Level", "GEQ", 5}, "Level NEQ null AND Level GEQ 5"},
        {{"Level", "LSS", 5}, "Level NEQ null AND Level LEQ 4"},
        {{"Level", "LEQ", "5"}, "Level NEQ null AND Level LEQ 5"},
        {{"Level", "GTR", 7}, "Level EQU 8 OR Level EQU 9"},
        {{"Level", "GEQ", 0}, "Level NEQ null"},
        {{"Level", "GTR", 9}, ""},
        {{"Switch", "NEQ", "True"}, "Switch NEQ null AND Switch NEQ true"},
        {{"Text", "EQU", "x"}, "Text.CurrentValue  EQU x "}, // which may be empty
        {{"Text", "EQU", ""}, "Text.CurrentValue  EQU  "},
        {{"Mode", "EQU", "true", "", "Hidden"}, ""},
        {{"Mode", "NEQ", "true", "", "Hidden"}, "Mode.Hidden EQU false"},
        {{"SYSACS", "EQU", "x"}, ""},
        {{"Gone", "EQU", "x"}, ""},
        {{"Gone", "EQU", nullptr}, ""},
        {{"Key", "EQU", "x"}, ""},
        {{"Key", "EQU", nullptr}, ""},
    };
    for (const auto& row : rows) {
        const World world = OneRule({row.term});
        const std::vector<std::string> expected{"(" + row.condition + ") T.ReadOnly true"};
        EXPECT_EQ(RulesOf(world), row.condition.empty() ? std::vector<std::string>() : expected);
        EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
    }
}

TEST(AdaptedTerms, AreAllThatTheirConditionNeeds)
{
    const struct {
        std::vector<Term> terms;
        std::vector<std::string> conditions;
    } rows[] = {
        {{{"Mode", "EQU", "Uefi", "AND"}, {"Level", "EQU", 1, "OR"}, {"Switch", "EQU", true}},
         {"Mode EQU Uefi AND Level EQU 1 OR Switch EQU true"}}, // as it is
        {{{"Mode", "EQU", "Uefi"}, {"Level", "EQU", 1, "OR"}, {"Switch", "EQU", true, "AND"}},
         {"Mode EQU Uefi AND Switch EQU true", "Level EQU 1 AND Switch EQU true"}},
        {{{"Mode", "EQU", "Uefi"}, {"Gone", "EQU", "x", "OR"}}, {"Mode EQU Uefi"}},
        {{{"Mode", "EQU", "Uefi"}, {"Gone", "NEQ", "x", "AND"}}, {}},
        {{{"Mode", "EQU", "Uefi"}, {"SYSACS", "EQU", "x", "AND"}}, {"Mode EQU Uefi"}},
        {{{"Mode", "EQU", "Uefi"}, {"Mode", "NEQ", "Uefi", "AND"}}, {}},
        {{{"Mode", "EQU", "Uefi"}, {"Mode", "EQU", "Legacy", "AND"}}, {}},
        {{{"Switch", "NEQ", true}, {"Switch", "NEQ", false, "AND"}}, {}},
        {{{"Mode", "EQU", "Uefi"}, {"Mode", "EQU", "Legacy", "OR"}}, {"Mode EQU Legacy OR Mode EQU Uefi"}},
        {{{"Level", "GEQ", 2}, {"Level", "LEQ", 6, "AND"}}, {"Level NEQ null AND Level GEQ 2 AND Level LEQ 6"}},
        {{{"Mode", "EQU", nullptr}, {"Mode", "NEQ", nullptr, "OR"}}, {"T EQU null OR T NEQ null"}},
        {{{"Mode", "EQU", "Uefi"}, {"Level", "LSS", 2, "AND"}, {"Switch", "EQU", nullptr, "AND"}},
         {"Mode EQU Uefi AND Switch EQU null AND Level EQU 0 OR Level EQU 1"}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> expected;
        for (const std::string& condition : row.conditions) {
            expected.push_back("(" + condition + ") T.ReadOnly true");
        }
        EXPECT_EQ(RulesOf(OneRule(row.terms)), expected);
    }
}

TEST(AdaptedTerms, OfAnAttributeWithoutAValueNoneHolds)
{
    for (const char* condition : {"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ"}) {
        for (const char* attribute : {"Mode", "Level", "Text"}) {
            const json::value value = attribute == Text("Level") ? json::value(5) : json::value("5");
            const World world = OneRule({{attribute, condition, value}});
            const bool isUndecided = attribute == Text("Text") && condition[2] != 'U' && condition != Text("NEQ");
            EXPECT_EQ(StatusOfAll(world.Adapted).at("T").ReadOnly.Value, isUndecided) << attribute << condition;
            EXPECT_EQ(world.IsUndecided("T", Property::ReadOnly), isUndecided) << attribute << condition;
        }
    }
}

TEST(AdaptedTerms, CompareEmptyTexts)
{
    for (const char* held : {"", "x", " "}) {
        for (const char* wanted : {"", "x", " "}) {
            const World world = OneRule({{"Text", "EQU", wanted}}, {{"Text", Text(held)}});
            const PropertyState state = StatusOfAll(world.Adapted).at("T").ReadOnly;
            EXPECT_EQ(state.Value, Text(held) == wanted) << "'" << held << "' '" << wanted << "' " << state.Reason;
            EXPECT_FALSE(SaysCannotDecide(state.Reason));
        }
    }
}

/** A rule with an order on X, whose bounds are these. */
World Order(const json::object& bounds, const std::vector<Term>& terms, std::int64_t held)
{
    RegistryBuilder registry;
    registry.Attribute("X", "Integer", bounds).Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, terms);
    return World(registry.Json(), {{"X", held}});
}

json::object Bounds(std::int64_t lower, std::int64_t upper)
{
    return {{"LowerBound", lower}, {"UpperBound", upper}};
}

TEST(AdaptedOrders, OfRangesAreFewTerms)
{
    const std::vector<Term> range{{"X", "GEQ", 10, "AND"}, {"X", "LEQ", 20}};
    const World world = Order(Bounds(0, 100), range, 15);
    ASSERT_THAT(RulesOf(world), testing::SizeIs(1));
    EXPECT_THAT(RulesOf(world).front(), testing::StartsWith("(X EQU 10 OR X EQU 11 OR "));
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
    for (std::int64_t held = 0; held <= 100; ++held) {
        const auto status = StatusFor(world.Adapted, {{"X", held}});
        EXPECT_EQ(status.at("T").ReadOnly.Value, held >= 10 && held <= 20) << held;
    }
    EXPECT_THAT(RulesOf(Order(Bounds(-1, 1), {{"X", "GTR", -1}}, 0)),
                ElementsAre("(X EQU 0 OR X EQU 1) T.ReadOnly true"));
    EXPECT_THAT(RulesOf(Order(Bounds(10, 99), range, 15)), ElementsAre("(X NEQ null AND X LEQ 20) T.ReadOnly true"));
}

TEST(AdaptedOrders, HoldForEveryNumberWithinTheBounds)
{
    const struct {
        json::object bounds;
        std::int64_t first, last;
        bool isDecided;
    } rows[] = {
        {Bounds(0, 9), 0, 9, true},         // as texts
        {Bounds(100, 200), 100, 200, true}, // as texts
        {Bounds(-3, 12), -3, 12, true},     // one by one
        {Bounds(0, 255), 0, 255, true},     // one by one
        {Bounds(0, 256), 0, 256, true},     // those that do not fulfil it are fewer
        {Bounds(0, 1'000'000), 0, 300, true}, {Bounds(0, 1'000'000), 0, 1'000'000, false}, {{}, 0, 300, false},
    };
    for (const auto& row : rows) {
        for (const char* condition : {"GTR", "GEQ", "LSS", "LEQ"}) {
            const std::int64_t limit = row.first + (row.last - row.first) / 2;
            const World world = Order(row.bounds, {{"X", condition, limit}}, row.last);
            EXPECT_EQ(world.IsUndecided("T", Property::ReadOnly), !row.isDecided);
            world.ExpectAgreement({{"X", limit - 1}});
            world.ExpectAgreement({{"X", limit}});
            world.ExpectAgreement({{"X", limit + 1}});
            for (std::int64_t held = row.first; held <= row.last; held += 1 + (row.last - row.first) / 16) {
                world.ExpectAgreement({{"X", held}});
            }
        }
    }
}

TEST(AdaptedOrders, HoldForOtherValuesThanThoseThatAreGiven)
{
    const World world = Order(Bounds(100, 200), {{"X", "GTR", 150}}, 160);
    std::string text = world.Adapted.RegistryText;
    SettingValueMap values = world.Adapted.Values;
    RedfishConfigSettingManager manager(text, values, false, Config_Options{});
    std::map<std::string, SettingStatus> status;
    ASSERT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_TRUE(status.at("T").ReadOnly.Value);
    EXPECT_FALSE(StatusFor(world.Adapted, {{"X", std::int64_t{150}}}).at("T").ReadOnly.Value);
    EXPECT_TRUE(StatusFor(world.Adapted, {{"X", std::int64_t{151}}}).at("T").ReadOnly.Value);
}

TEST(AdaptedOrders, HoldForAValueBeyondTheBounds)
{
    const World world = Order(Bounds(100, 200), {{"X", "GTR", 150}}, 50);
    world.ExpectAgreement({{"X", std::int64_t{50}}});
    world.ExpectAgreement({{"X", std::int64_t{151}}});
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
}

TEST(AdaptedOrders, OfChoicesThatAreNumbersAreOfNumbers)
{
    RegistryBuilder registry;
    registry.Attribute("F", "Enumeration",
                       {{"Value",
                         {RegistryBuilder::Choice("800", ""), RegistryBuilder::Choice("1600", ""),
                          RegistryBuilder::Choice("3200", ""), RegistryBuilder::Choice("Auto", "")}}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"F", "GTR", "900"}});
    const World world(registry.Json(), {{"F", Text("1600")}});
    EXPECT_THAT(RulesOf(world), ElementsAre("(F EQU 1600 OR F EQU 3200) T.ReadOnly true"));
    for (const char* held : {"800", "1600", "3200", "Auto"}) {
        world.ExpectAgreement({{"F", Text(held)}});
    }
    const World other(registry.Json(), {{"F", Text("2400")}}); // which is none of them
    EXPECT_THAT(RulesOf(other), ElementsAre("(F EQU 1600 OR F EQU 2400 OR F EQU 3200) T.ReadOnly true"));
}

TEST(AdaptedOrders, OfChoicesAreOfTheNamesThatValuesUse)
{
    RegistryBuilder registry;
    registry.Attribute("F", "Enumeration",
                       {{"Value",
                         {RegistryBuilder::Choice("1", "10"), RegistryBuilder::Choice("2", "20"),
                          RegistryBuilder::Choice("3", "30")}}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"F", "GTR", "10"}});
    EXPECT_THAT(RulesOf(World(registry.Json(), {{"F", Text("1")}})),
                ElementsAre("(F EQU 2 OR F EQU 3) T.ReadOnly true"));
    EXPECT_THAT(RulesOf(World(registry.Json(), {{"F", Text("10")}})),
                ElementsAre("(F EQU 20 OR F EQU 30) T.ReadOnly true"));
}

TEST(AdaptedOrders, AreOfAllNumbersWhereARuleReplacesABound)
{
    RegistryBuilder registry;
    registry.Attribute("X", "Integer", Bounds(100, 200)).Attribute("A", "Boolean").Attribute("T", "Boolean");
    registry.Rule("X", "UpperBound", 300, {{"A", "EQU", true}});
    registry.Rule("T", "ReadOnly", true, {{"X", "GTR", 250}});
    const World world(registry.Json(), {{"X", std::int64_t{120}}, {"A", true}});
    for (const std::int64_t held : {100, 200, 250, 251, 300}) {
        world.ExpectAgreement({{"X", held}, {"A", true}});
    }
}

TEST(AdaptedEqualities, WithANameOfManyChoicesAreNotWritten)
{
    for (const int count : {16, 17}) {
        json::array choices;
        for (int number = 0; number < count; ++number) {
            choices.push_back(RegistryBuilder::Choice("c" + std::to_string(number), "same"));
        }
        RegistryBuilder registry;
        registry.Attribute("F", "Enumeration", {{"Value", choices}}).Attribute("T", "Boolean");
        registry.Rule("T", "ReadOnly", true, {{"F", "EQU", "same"}});
        const World world(registry.Json(), {{"F", Text("c1")}});
        EXPECT_EQ(world.IsUndecided("T", Property::ReadOnly), count > 16);
        world.ExpectAgreement({{"F", Text("c2")}});
    }
}

TEST(AdaptedOrders, OfTooManyChoicesAreNotWritten)
{
    json::array choices;
    for (int number = 0; number < 1'001; ++number) {
        choices.push_back(RegistryBuilder::Choice(std::to_string(number), ""));
    }
    for (const bool hasOneLess : {false, true}) {
        if (hasOneLess) {
            choices.pop_back();
        }
        RegistryBuilder registry;
        registry.Attribute("F", "Enumeration", {{"Value", choices}}).Attribute("T", "Boolean");
        registry.Rule("T", "ReadOnly", true, {{"F", "GTR", "998"}});
        const World world(registry.Json(), {{"F", Text("1")}});
        EXPECT_EQ(world.IsUndecided("T", Property::ReadOnly), !hasOneLess);
        world.ExpectAgreement({{"F", Text("999")}});
    }
}

TEST(AdaptedEqualities, AreWrittenWithTheNameThatTheTestFinds)
{
    RegistryBuilder registry; // "X" is another name of A alone, and A has one more
    registry.Attribute(
        "F", "Enumeration",
        {{"Value",
          {RegistryBuilder::Choice("A", "X"), RegistryBuilder::Choice("A", "Y"), RegistryBuilder::Choice("B", "Z")}}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"F", "EQU", "X"}});
    const World world(registry.Json(), {{"F", Text("A")}});
    EXPECT_THAT(RulesOf(world), ElementsAre("(F EQU A) T.ReadOnly true"));
    world.ExpectAgreement({{"F", Text("A")}});
    world.ExpectAgreement({{"F", Text("B")}});
}

/** T.ReadOnly, with the flag set or not, and rules on A: each an operand and an outcome. */
struct FlagWorld {
    bool isSet;
    std::vector<std::pair<const char*, bool>> rules;
    const char* held; ///< null for none
};

json::value FlagRegistry(const FlagWorld& world, const char* flag)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MinLength", 1}});
    registry.Attribute("T", "Boolean", world.isSet ? json::object{{flag, true}} : json::object());
    for (const auto& [operand, outcome] : world.rules) {
        registry.Rule("T", flag, outcome, {{"A", "EQU", operand}});
    }
    return registry.Json();
}

SettingValueMap Holding(const char* held)
{
    return held != nullptr ? SettingValueMap{{"A", Text(held)}} : SettingValueMap();
}

TEST(AdaptedFlags, AreThoseThatRulesDoNotExplain)
{
    const struct {
        FlagWorld world;
        bool flag; ///< as it is written
        std::vector<std::string> conditions;
        bool outcome;
    } rows[] = {
        {{false, {{"1", true}}, "1"}, false, {"A EQU 1"}, true},
        {{true, {{"1", true}}, "1"}, false, {"A EQU null OR A EQU 1"}, true}, // a snapshot
        {{true, {{"1", true}}, "2"}, true, {}, true},                         // marked
        {{true, {{"1", true}}, nullptr}, true, {}, true},                     // not explained
        {{false, {{"1", false}}, "1"}, false, {}, true},
        {{true, {{"1", false}}, "1"}, true, {"A EQU 1"}, false},
        {{true, {{"1", false}}, "2"}, true, {"A EQU 1"}, false},
        {{false, {{"1", true}, {"2", false}, {"3", true}}, "1"}, false, {"A EQU 1", "A EQU 3"}, true},
        {{false, {{"1", false}, {"1", true}}, "1"}, false, {}, true},
        {{true, {{"1", false}, {"2", true}}, "2"},
         false,
         {"A EQU null", "A EQU 2", "A EQU null OR A EQU 2"},
         true}, // a snapshot
        {{true, {{"1", true}, {"1", false}}, "2"}, true, {}, false},
    };
    for (const auto& row : rows) {
        const World adapted(FlagRegistry(row.world, "ReadOnly"), Holding(row.world.held));
        std::vector<std::string> expected;
        for (const std::string& condition : row.conditions) {
            expected.push_back("(" + condition + ") T.ReadOnly " + (row.outcome ? "true" : "false"));
        }
        SCOPED_TRACE(testing::Message() << &row - rows);
        EXPECT_EQ(RulesOf(adapted), expected);
        const json::object attribute = AdaptedAttribute(adapted.Adapted, 1);
        EXPECT_EQ(attribute.contains("ReadOnly") && attribute.at("ReadOnly").as_bool(), row.flag);
        for (const char* held : {"1", "2", "3", "4", static_cast<const char*>(nullptr)}) {
            adapted.ExpectAgreement(Holding(held));
        }
    }
}

TEST(AdaptedRules, ThatAlwaysHoldAreLeftOutWhereNothingCanBeAsked)
{
    const std::vector<Term> always{{"A|B", "EQU", nullptr, "OR"}, {"A|B", "NEQ", nullptr}};
    const std::pair<const char*, json::value> cases[] = {
        {"ResetRequired", true}, {"ResetRequired", false}, {"LowerBound", 3}, {"DefaultValue", 4}, {"HelpText", "x"}};
    for (const auto& [property, outcome] : cases) {
        RegistryBuilder registry;
        registry.Attribute("A|B", "Integer", {{"ResetRequired", outcome.is_bool() && !outcome.get_bool()}});
        registry.Rule("A|B", property, outcome, always);
        const World world(registry.Json());
        EXPECT_THAT(RulesOf(world), IsEmpty()) << property;
        EXPECT_THAT(world.Adapted.LeftOut, ElementsAre(0U)) << property;
        EXPECT_EQ(AdaptedAttribute(world.Adapted).at("ResetRequired"), outcome == json::value(false)) << property;
        ASSERT_EQ(world.Adapted.Findings.size(), 1U) << property;
        EXPECT_EQ(world.Adapted.Findings[0].Found,
                  "rule 0 always holds, and there is no setting that a formula could ask for that");
        EXPECT_EQ(world.Adapted.Findings[0].Consequence, "the rule is left out");
    }
}

TEST(AdaptedFlags, AreNotSetWhereARuleAlwaysTakesThemAway)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean").Attribute("T", "Boolean", {{"ReadOnly", true}});
    registry.Rule("T", "ReadOnly", false, {{"A", "EQU", nullptr, "OR"}, {"A", "NEQ", nullptr}});
    const World world(registry.Json());
    EXPECT_THAT(RulesOf(world), IsEmpty());
    EXPECT_EQ(AdaptedAttribute(world.Adapted, 1).at("ReadOnly"), false);
    world.ExpectAgreement({{"A", true}});
}

TEST(AdaptedFlags, StayWhereAConditionIsNeverKnown)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean").Attribute("T", "Boolean", {{"ReadOnly", true}});
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", true}}).Rule("T", "ReadOnly", true, {{"A", "BITAND", 1}});
    const World world(registry.Json(), {{"A", true}});
    EXPECT_THAT(RulesOf(world), ElementsAre(safeguard));
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
    world.ExpectAgreement({{"A", false}});
}

TEST(AdaptedFlags, OfHiddenSettingsAreTakenAwayByARule)
{
    const World marked(FlagRegistry({true, {{"1", false}}, "2"}, "Hidden"), Holding("2"));
    EXPECT_THAT(RulesOf(marked), ElementsAre("(A EQU null OR A NEQ null AND A NEQ 1) T.Hidden true"));
    EXPECT_EQ(AdaptedAttribute(marked.Adapted, 1).at("Hidden"), false);
    for (const char* held : {"1", "2", static_cast<const char*>(nullptr)}) {
        marked.ExpectAgreement(Holding(held));
    }
    const World stays(FlagRegistry({true, {{"1", true}}, "2"}, "Hidden"), Holding("2"));
    EXPECT_THAT(RulesOf(stays), IsEmpty());
    EXPECT_TRUE(StatusOfAll(stays.Adapted).at("T").Protected.Value);
}

TEST(AdaptedFlags, ThatRulesTestAreConstants)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"Hidden", true}}).Attribute("B", "Boolean", {{"ReadOnly", true}});
    registry.Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", true, "", "Hidden"}});
    registry.Rule("T", "GrayOut", true, {{"B", "EQU", true, "", "ReadOnly"}});
    registry.Rule("B", "ReadOnly", true, {{"A", "EQU", false}}); // a snapshot: the flag is not written
    const World world(registry.Json(), {{"A", false}});
    EXPECT_THAT(RulesOf(world),
                ElementsAre("(A.Hidden EQU true) T.ReadOnly true", "(T EQU null OR T NEQ null) T.GrayOut true",
                            "(A EQU null OR A EQU false) B.ReadOnly true"));
    world.ExpectAgreement({{"A", true}});
}

TEST(AdaptedMenus, GiveTheirFlagsAndRulesToTheSettingsBelow)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MinLength", 1}});
    registry.Attribute("T", "Boolean", {{"MenuPath", "./Main/Inner"}});
    registry.Attribute("U", "Boolean", {{"MenuPath", "./Main"}});
    registry.Rule("Main", "GrayOut", true, {{"A", "EQU", "1"}});
    registry.Rule("Inner", "Hidden", true, {{"A", "EQU", "2"}});
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::parse(
        R"([{"MenuName": "Main", "MenuPath": "./Main", "GrayOut": true, "Oem": [1]}, 5,
            {"MenuName": "Inner", "MenuPath": "./Main/Inner", "readonly": true, "Hidden": false}])");
    const World world(document, {{"A", Text("1")}});
    EXPECT_THAT(RulesOf(world), ElementsAre("(A EQU null OR A EQU 1) T.GrayOut true",
                                            "(A EQU null OR A EQU 1) U.GrayOut true", "(A EQU 2) T.Hidden true"));
    EXPECT_THAT(world.Adapted.PublishedRule, ElementsAre(0, 0, 1));
    EXPECT_EQ(AdaptedAttribute(world.Adapted, 1).at("ReadOnly"), true);
    EXPECT_EQ(json::value(AdaptedList(world.Adapted, "Menus")),
              json::parse(R"([{"MenuName": "Main", "MenuPath": "./Main", "GrayOut": false, "Oem": [1]}, 5,
                              {"MenuName": "Inner", "MenuPath": "./Main/Inner", "readonly": false, "Hidden": false}])"));
    for (const char* held : {"1", "2", "3"}) {
        world.ExpectAgreement({{"A", Text(held)}});
    }
}

/** What is undecided is named, reported and true. */
void ExpectLocked(const World& world, FindingKind kind, const std::string& why)
{
    ASSERT_EQ(world.Adapted.Undecided.size(), 1U);
    const UndecidedFlag& undecided = world.Adapted.Undecided.front();
    EXPECT_EQ(undecided.Setting, "T");
    EXPECT_EQ(undecided.Flag, Property::ReadOnly);
    EXPECT_EQ(undecided.Why, "Rule " + std::to_string(undecided.Rules.back()) + " " + why + ".");
    EXPECT_EQ(RulesOf(world), std::vector<std::string>{safeguard});
    const PropertyState state = StatusOfAll(world.Adapted).at("T").ReadOnly;
    EXPECT_TRUE(state.Value);
    EXPECT_FALSE(SaysCannotDecide(state.Reason));
    const auto finding = std::find_if(world.Adapted.Findings.begin(), world.Adapted.Findings.end(),
                                      [&](const Finding& any) { return any.Kind == kind && any.Attribute == "T"; });
    ASSERT_NE(finding, world.Adapted.Findings.end());
    EXPECT_EQ(finding->Level, Severity::Error);
    EXPECT_EQ(finding->Rule, undecided.Rules.back());
    EXPECT_EQ(finding->Found, "rule " + std::to_string(undecided.Rules.back()) + " " + why);
    EXPECT_EQ(finding->Consequence, "ReadOnly of T is true in the adapted registry, whatever the values are");
}

TEST(UndecidedFlags, CompareWithOperatorsOrKeys)
{
    for (const char* value : {"A(B)", "a=b", "a!", "Mode.CurrentValue", "xMode exist", "x Mode.ReadOnly"}) {
        const World world = OneRule({{"Text", "EQU", value}});
        ExpectLocked(world, FindingKind::Inexpressible,
                     "compares Text with " + ToQuotedText(Text(value)) +
                         ", which has operators or the name of a setting in it");
    }
    EXPECT_THAT(OneRule({{"Text", "EQU", "Other.CurrentValue"}}).Adapted.Undecided, IsEmpty());
    RegistryBuilder registry;
    registry.Attribute("(x", "Boolean").Attribute("A", "String").Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", "x.CurrentValue"}}); // behind a parenthesis
    EXPECT_TRUE(World(registry.Json()).IsUndecided("T", Property::ReadOnly));
}

TEST(UndecidedFlags, AskForTheOrderOfTexts)
{
    const std::string why = "asks for the order of Text, which can have any text as its value";
    ExpectLocked(OneRule({{"Text", "GTR", "5"}}), FindingKind::Inexpressible, why);
    ExpectLocked(OneRule({{"Text", "GTR", "5"}, {"Mode", "EQU", "Uefi", "AND"}}), FindingKind::Inexpressible, why);
    ExpectLocked(OneRule({{"Mode", "EQU", "Uefi"}, {"Text", "GTR", "5", "OR"}}), FindingKind::Inexpressible, why);
}

TEST(UndecidedFlags, CompareWithManyEndingsOfKeys)
{
    const auto world = [](std::size_t endings) {
        std::string operand;
        for (std::size_t ending = 0; ending < endings; ++ending) {
            operand += "- exist";
        }
        RegistryBuilder registry;
        registry.Attribute("S", "String").Attribute("T", "Boolean");
        registry.Rule("T", "ReadOnly", true, {{"S", "EQU", json::value(operand)}});
        return World(registry.Json(), {{"S", Text("x")}});
    };
    EXPECT_THAT(world(64).Adapted.Undecided, IsEmpty());
    EXPECT_THAT(world(65).Adapted.Undecided, testing::SizeIs(1));
}

/** A rule on an enumeration with operators in one of its choices. */
World OneRuleOnProfile(const char* condition, const char* operand, const char* held)
{
    RegistryBuilder registry;
    registry.Attribute("W", "Enumeration",
                       {{"Value",
                         {RegistryBuilder::Choice("Low", ""), RegistryBuilder::Choice("High (HPC)", ""),
                          RegistryBuilder::Choice("Custom", "")}}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"W", condition, operand}});
    return World(registry.Json(), {{"W", Text(held)}});
}

TEST(UndecidedFlags, ReadAValueWithOperators)
{
    for (const char* condition : {"EQU", "NEQ"}) {
        for (const char* operand : {"Low", "High (HPC)"}) {
            ExpectLocked(OneRuleOnProfile(condition, operand, "High (HPC)"), FindingKind::ValueWithOperators,
                         "asks for W, whose value \"High (HPC)\" has operators or the name of a setting in it");
        }
    }
}

TEST(UndecidedFlags, AreNoneWhereTheOtherChoicesSayTheSame)
{
    const World equal = OneRuleOnProfile("EQU", "High (HPC)", "Low");
    EXPECT_THAT(RulesOf(equal), ElementsAre("(W NEQ null AND W NEQ Custom AND W NEQ Low) T.ReadOnly true"));
    const World unequal = OneRuleOnProfile("NEQ", "High (HPC)", "Low");
    EXPECT_THAT(RulesOf(unequal), ElementsAre("(W EQU Custom OR W EQU Low) T.ReadOnly true"));
    for (const char* held : {"Low", "Custom"}) {
        equal.ExpectAgreement({{"W", Text(held)}});
        unequal.ExpectAgreement({{"W", Text(held)}});
    }
    EXPECT_THAT(Lines(equal.Adapted.Findings),
                testing::Contains("warning value-with-operators /RegistryEntries/Attributes/0/Value"));
}

TEST(UndecidedFlags, ReadAnAttributeWhoseNameAFormulaCannotHold)
{
    const struct {
        std::vector<const char*> others;
        const char* source;
        bool isDecided;
    } rows[] = {
        {{"BootMode"}, "SecureBootMode", false}, // another name is put in first
        {{"ZMode"}, "AZMode", true},             // itself is put in first
        {{"Boot"}, "XBoot", false},
        {{}, "A(B", false},
        {{"(A"}, "A", false}, // "(A" is in each formula with A
        {{"A"}, "A.CurrentValue", false},
        {{"X"}, "X not", false}, // "X not exist" is asked of both
        {{"X not"}, "X", false},
        {{"Z"}, "AZ existB", false}, // what is within the name is put in where there is no value
        {{"Mode"}, "Mode2", true},
    };
    for (const auto& row : rows) {
        RegistryBuilder registry;
        for (const char* name : row.others) {
            registry.Attribute(name, "String", {{"MinLength", 1}});
        }
        registry.Attribute(row.source, "String", {{"MinLength", 1}}).Attribute("T", "Boolean");
        registry.Rule("T", "ReadOnly", true, {{row.source, "NEQ", "x"}});
        const World world(registry.Json(), {{row.source, Text("y")}});
        if (row.isDecided) {
            EXPECT_THAT(world.Adapted.Undecided, IsEmpty()) << row.source;
            world.ExpectAgreement({{row.source, Text("x")}});
        } else {
            ExpectLocked(world, FindingKind::Inexpressible,
                         "asks for " + Text(row.source) +
                             ", whose name has operators or that of another setting in it");
        }
    }
}

TEST(UndecidedFlags, MayTakeANameForAValue)
{
    RegistryBuilder registry;
    registry.Attribute("ZMode", "String", {{"MinLength", 1}}).Attribute("AZMode", "String", {{"MinLength", 1}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"AZMode", "EQU", "Ax"}});
    ExpectLocked(World(registry.Json()), FindingKind::Inexpressible,
                 "compares AZMode with \"Ax\", which the name may look like without a value");
}

TEST(UndecidedFlags, ReadNoValueWhereTheNameEndsInThatOfAnAttributeWhoseValueHasOperators)
{
    RegistryBuilder registry;
    registry.Attribute("Profile", "String", {{"MinLength", 1}}).Attribute("BaseProfile", "String", {{"MinLength", 1}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"BaseProfile", "EQU", "x"}});
    SettingValueMap values{{"Profile", Text("Compute(HPC)")}};
    ExpectLocked(World(registry.Json(), values), FindingKind::ValueWithOperators,
                 "asks for BaseProfile, which has no value, and whose name ends in Profile, whose value has operators");
    values["BaseProfile"] = Text("x");
    const World world(registry.Json(), values);
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
    world.ExpectAgreement(values);
}

TEST(UndecidedFlags, ReadWhatHasNoType)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Number").Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", "1"}});
    ExpectLocked(World(registry.Json(), {{"A", Text("2")}}), FindingKind::Inexpressible,
                 "asks for A, of which there is no setting");
}

TEST(UndecidedFlags, ReadAValueOfAnotherTypeThatWouldEqualAText)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean").Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", "2"}});
    ExpectLocked(World(registry.Json(), {{"A", std::int64_t{2}}}), FindingKind::Inexpressible,
                 "compares A with a text that its value, which is of another type, would equal");
    World(registry.Json(), {{"A", std::int64_t{3}}}).ExpectAgreement({{"A", std::int64_t{3}}});
}

TEST(UndecidedFlags, ReadANameOfSeveralChoices)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration",
                       {{"DefaultValue", "0"},
                        {"Value",
                         {RegistryBuilder::Choice("0", "On"), RegistryBuilder::Choice("1", "On"),
                          RegistryBuilder::Choice("2", "Off")}}});
    registry.Attribute("B", "Enumeration", {{"Value", {RegistryBuilder::Choice("x", "X")}}}).Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", "On"}});
    const SettingValueMap values{{"B", Text("x")}, {"A", Text("0")}};
    const World world(registry.Json(), values);
    EXPECT_THAT(RulesOf(world), ElementsAre("(A EQU 0 OR A EQU 1) T.ReadOnly true"));
    world.ExpectAgreement({{"B", Text("x")}, {"A", Text("2")}});

    SystemValues assumed(Model::Read(ReadRegistryDocument(registry.Text())), World::DocumentOf(values));
    assumed.Assume(0, Text("On"));
    const Adaptation adapted = Adapt(assumed);
    ASSERT_EQ(adapted.Undecided.size(), 1U);
    EXPECT_EQ(adapted.Undecided.front().Why, "Rule 0 asks for A, whose value is a name of several choices.");
}

TEST(AdaptedTerms, TakeAValueNameForItself)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration",
                       {{"Value", {RegistryBuilder::Choice("0", "1"), RegistryBuilder::Choice("1", "x")}}});
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, {{"A", "EQU", "1"}});
    EXPECT_THAT(RulesOf(World(registry.Json(), {{"A", Text("0")}})), ElementsAre("(A EQU 1) T.ReadOnly true"));
}

TEST(UndecidedFlags, AskAnotherSettingWhereTheOwnNameIsUnsafe)
{
    RegistryBuilder registry;
    registry.Attribute("Boot", "Boolean").Attribute("XBoot", "Boolean");
    registry.Attribute("A", "Integer");
    registry.Rule("XBoot", "Hidden", true, {{"A", "GTR", 5}});
    const World world(registry.Json());
    EXPECT_THAT(RulesOf(world), ElementsAre("(Boot EQU null OR Boot NEQ null) XBoot.Hidden true"));
    EXPECT_TRUE(StatusOfAll(world.Adapted).at("XBoot").Hidden.Value);
    EXPECT_TRUE(world.IsUndecided("XBoot", Property::Hidden));
}

TEST(UndecidedFlags, AreSetWhereNoSettingCanBeAsked)
{
    RegistryBuilder registry;
    registry.Attribute("(A", "Integer").Rule("(A", "Hidden", true, {{"(A", "GTR", 5}});
    const World world(registry.Json());
    EXPECT_THAT(RulesOf(world), IsEmpty());
    EXPECT_TRUE(StatusOfAll(world.Adapted).at("(A").Protected.Value);
    EXPECT_TRUE(world.IsUndecided("(A", Property::Hidden));
}

TEST(UndecidedFlags, AreNoneWhereTheRulesDoNotMatter)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer").Attribute("T", "Boolean", {{"ReadOnly", true}});
    registry.Rule("T", "ReadOnly", true, {{"A", "GTR", 5}});
    const World marked(registry.Json(), {{"A", std::int64_t{3}}});
    EXPECT_THAT(marked.Adapted.Undecided, IsEmpty());
    EXPECT_EQ(AdaptedAttribute(marked.Adapted, 1).at("ReadOnly"), true);
    EXPECT_THAT(OneRule({{"Text", "GTR", "5"}, {"Gone", "EQU", "x", "AND"}}).Adapted.Undecided, IsEmpty());
    EXPECT_THAT(OneRule({{"Text", "GTR", "x"}}).Adapted.Undecided, IsEmpty()) << "no order, and so never known";
}

TEST(AdaptedFindings, TellNoPassword)
{
    RegistryBuilder registry = OneOfEachType();
    registry.Attribute("T", "Boolean");
    registry.Rule("T", "ReadOnly", true, {{"Key", "EQU", "hunter2"}, {"Text", "EQU", "a(b", "AND"}});
    registry.Rule("T", "Hidden", true, {{"Text", "EQU", "a(b"}, {"Key", "NEQ", "hunter2", "OR"}});
    registry.Rule("Key", "CurrentValue", "hunter3", {{"Text", "EQU", "a(b"}});
    const World world(registry.Json(), {{"Key", Text("hunter4")}});
    EXPECT_GE(world.Adapted.Findings.size(), 2U);
    for (const Finding& finding : world.Adapted.Findings) {
        EXPECT_THAT(finding.Found + finding.Consequence, testing::Not(HasSubstr("hunter")));
    }
    EXPECT_EQ(world.Adapted.Values.at("Key"), SettingValue(Text("hunter4")));
}

TEST(AdaptedRules, ForOtherPropertiesStandAlone)
{
    RegistryBuilder registry = OneOfEachType();
    registry.Rule("Mode", "CurrentValue", "Legacy Mode", {{"Level", "EQU", 2}});
    registry.Rule("Mode", "CurrentValue", "Uefi", {{"Level", "EQU", 1}});
    registry.Rule("Level", "UpperBound", "5", {{"Mode", "NEQ", "Uefi"}});
    registry.Rule("Level", "ResetRequired", true, {{"Mode", "EQU", "Uefi"}});
    registry.Rule("Level", "HelpText", "none", {{"Text", "EQU", "a(b"}});
    registry.Rule("Mode", "Value", json::array{"Uefi"}, {{"Level", "EQU", 2}});
    const World world(registry.Json());
    EXPECT_THAT(RulesOf(world),
                ElementsAre(R"((Level EQU 2) Mode.CurrentValue "Legacy")", R"((Level EQU 1) Mode.CurrentValue "Uefi")",
                            "(Mode NEQ null AND Mode NEQ Uefi) Level.UpperBound 5",
                            "(Mode EQU Uefi) Level.ResetRequired true"));
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
    EXPECT_EQ(world.Adapted.Rules.at(RuleForm::SingleTerm).Published, 6U);
    EXPECT_EQ(world.Adapted.Rules.at(RuleForm::SingleTerm).Adapted, 4U);
    EXPECT_EQ(world.Adapted.Rules.at(RuleForm::SingleTerm).LeftOut, 2U);
    EXPECT_EQ(world.Adapted.Findings.back().Consequence, "the rule is left out");
    EXPECT_EQ(world.Adapted.Findings.back().Rule, 4U);
}

TEST(AdaptedRules, KeepTheirOtherMembersOnce)
{
    const World world(json::parse(R"({"RegistryEntries": {"Attributes": [
        {"AttributeName": "A", "Type": "String", "MinLength": 1}, {"AttributeName": "T", "Type": "Boolean"}],
        "Dependencies": [{"Oem": {"x": 1}, "dependencyfor": "T", "Type": "Map", "Dependency": {
            "MapFrom": [{"Subexpressions": [
                {"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": "1", "MapTerms": "OR"},
                {"MapFromAttribute": "T", "MapFromProperty": "CurrentValue", "MapFromCondition": "NEQ", "MapFromValue": true}]}],
            "MapToAttribute": "T", "MapToProperty": "ReadOnly", "MapToValue": true}}]}})"));
    EXPECT_THAT(RulesOf(world),
                ElementsAre("(A EQU 1) T.ReadOnly true", "(T NEQ null AND T NEQ true) T.ReadOnly true"));
    const json::array rules = AdaptedList(world.Adapted, "Dependencies");
    EXPECT_EQ(rules[0].at("Oem"), json::value({{"x", 1}}));
    EXPECT_FALSE(rules[1].as_object().contains("Oem"));
    for (const json::value& rule : rules) {
        EXPECT_EQ(rule.at("DependencyFor"), "T");
        EXPECT_EQ(rule.at("Type"), "Map");
    }
}

// Limits.

/** (A0 or B0) and (A1 or B1) and ...: 2 to the power of pairs alternatives, with long names in the rule. */
World Pairs(std::size_t pairs, std::size_t nameLength)
{
    RegistryBuilder registry;
    const std::string name(nameLength, 'n');
    std::vector<Term> terms;
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        for (const char* kind : {"A", "B"}) {
            registry.Attribute(kind + std::to_string(pair) + name, "String", {{"MinLength", 1}});
            terms.push_back({kind + std::to_string(pair) + name, "EQU", "1", kind == Text("A") ? "" : "OR"});
        }
        terms.back().MapTerms += pair > 0 ? ",AND" : "";
    }
    registry.Attribute("T", "Boolean").Rule("T", "ReadOnly", true, terms);
    return World(registry.Json());
}

TEST(AdaptedSizes, OfOneRuleAre256AlternativesAtMost)
{
    EXPECT_EQ(RulesOf(Pairs(5, 0)).size(), 32U);
    ExpectLocked(Pairs(9, 0), FindingKind::TooLarge, "takes more than 256 alternatives or 8192 requirements in them");
}

TEST(AdaptedSizes, AreInProportionToTheRules)
{
    ExpectLocked(Pairs(8, 0), FindingKind::TooLarge, "takes many times more terms than it is published with");
    RegistryBuilder registry;
    for (int source = 0; source < 16; ++source) {
        registry.Attribute("A" + std::to_string(source), "String", {{"MinLength", 1}});
    }
    for (int target = 0; target < 60; ++target) {
        const std::string name = "T" + std::to_string(target);
        std::vector<Term> terms;
        for (int source = 0; source < 16; ++source) {
            terms.push_back({"A" + std::to_string(source), "EQU", "1",
                             source == 0       ? ""
                             : source == 1     ? "OR"
                             : source % 2 == 0 ? ""
                                               : "OR,AND"});
        }
        registry.Attribute(name, "Boolean").Rule(name, "ReadOnly", true, terms);
    }
    const std::string text = json::serialize(registry.Json());
    const World world(registry.Json());
    EXPECT_EQ(world.Adapted.Undecided.size(), 60U);
    EXPECT_LT(world.Adapted.RegistryText.size(), text.size());
}

TEST(AdaptedSizes, OfRulesWithDifferentOutcomesAreBounded)
{
    for (const int rules : {200, 2'000}) {
        RegistryBuilder registry;
        registry.Attribute("A", "String", {{"MinLength", 1}}).Attribute("T", "Boolean");
        for (int rule = 0; rule < rules; ++rule) {
            registry.Rule("T", "ReadOnly", rule % 2 == 0, {{"A", "EQU", json::string(std::to_string(rule))}});
        }
        const World world(registry.Json(), {{"A", Text("7")}});
        EXPECT_EQ(world.IsUndecided("T", Property::ReadOnly), rules == 2'000);
        world.ExpectAgreement({{"A", Text("7")}});
        world.ExpectAgreement({{"A", Text("8")}});
    }
}

TEST(AdaptedSizes, OfRulesForOnePropertyFillAFormulaAtMost)
{
    for (const std::size_t rules : {3U, 4U}) {
        RegistryBuilder registry;
        registry.Attribute("A", "String", {{"MinLength", 1}}).Attribute("T", "Boolean");
        for (std::size_t rule = 0; rule < rules; ++rule) {
            const std::string value(19'900, static_cast<char>('a' + rule));
            registry.Rule("T", "ReadOnly", true, {{"A", "EQU", json::string(value)}});
        }
        const World world(registry.Json());
        EXPECT_FALSE(SaysCannotDecide(StatusOfAll(world.Adapted).at("T").ReadOnly.Reason));
        if (rules == 4) {
            ExpectLocked(world, FindingKind::TooLarge,
                         "is one of those that take more than a formula of the core can hold");
        } else {
            EXPECT_EQ(RulesOf(world).size(), 3U);
        }
    }
}

TEST(AdaptedSizes, AreThoseOfRulesThatDiffer)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MinLength", 1}}).Attribute("T", "Boolean");
    for (int rule = 0; rule < 10; ++rule) {
        registry.Rule("T", "ReadOnly", true, {{"A", "EQU", json::string(std::string(20'000, 'x'))}});
    }
    const World world(registry.Json());
    EXPECT_EQ(RulesOf(world).size(), 1U);
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
}

TEST(AdaptedSizes, AreThoseOfAlternativesThatCanBe)
{
    RegistryBuilder registry;
    registry.Attribute("L", "Integer").Attribute("T", "Boolean");
    std::vector<Term> terms;
    for (int pair = 0; pair < 12; ++pair) { // L is one number at a time
        registry.Attribute("A" + std::to_string(pair), "Boolean");
        terms.push_back({"L", "EQU", pair, ""});
        terms.push_back({"A" + std::to_string(pair), "EQU", true, pair > 0 ? "OR,AND" : "OR"});
    }
    registry.Rule("T", "ReadOnly", true, terms);
    const World world(registry.Json());
    EXPECT_EQ(RulesOf(world).size(), 13U);
    EXPECT_THAT(world.Adapted.Undecided, IsEmpty());
}

/** So many lists within each other, the innermost empty. */
std::string Nested(std::size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(AdaptedDepth, IsWhatTheCoreReads)
{
    for (const std::size_t depth : {28U, 29U}) {
        const std::string member = R"("Oem": )" + Nested(depth);
        const std::string text = R"({"Attributes": [{"AttributeName": "T", "Type": "Boolean", )" + member + R"(}],
                "Menus": [{"MenuName": "M", )" +
                                 member + R"(}], "Beside": )" + Nested(31) + R"(,
                "Dependencies": [{)" +
                                 member + R"(, "Dependency": {"MapFrom": [{"MapFromAttribute": "T",
                    "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": true}],
                    "MapToAttribute": "T", "MapToProperty": "ReadOnly", "MapToValue": true}}]})";
        const Adaptation adapted = Adapt(ReadRegistryDocument(text), World::DocumentOf({{"T", true}}));
        EXPECT_TRUE(StatusOfAll(adapted).at("T").ReadOnly.Value);
        ExpectStable(adapted);
        EXPECT_EQ(AdaptedAttribute(adapted).contains("Oem"), depth == 28);
        const std::vector<std::string> lines = Lines(adapted.Findings);
        for (const char* place : {"/Attributes/0/Oem", "/Dependencies/0/Oem", "/Menus/0/Oem"}) {
            EXPECT_EQ(std::count(lines.begin(), lines.end(), "error too-large " + Text(place)), depth == 28 ? 0 : 1);
        }
    }
}

TEST(AdaptedDepth, IsAsPublishedWithinEntries)
{
    const std::string text =
        R"({"RegistryEntries": {"Attributes": [{"AttributeName": "T", "Type": "Boolean", "Oem": )" + Nested(28) +
        "}]}}";
    const Adaptation adapted = Adapt(ReadRegistryDocument(text), {});
    EXPECT_THAT(adapted.Findings, IsEmpty());
    EXPECT_EQ(StatusOfAll(adapted).size(), 1U);
    EXPECT_TRUE(AdaptedAttribute(adapted).contains("Oem"));
}

// Attributes, values and what is beside them.

/** The attribute after adapting. */
json::value Written(const char* attribute, const SettingValueMap& values = {})
{
    RegistryBuilder registry;
    registry.RawAttribute(json::parse(attribute));
    return AdaptedAttribute(World(registry.Json(), values).Adapted);
}

TEST(AdaptedAttributes, HaveTodaysKeysInThePublishedOrder)
{
    EXPECT_EQ(
        json::serialize(Written(
            R"({"Oem": 1, "Name": "A", "type": "Enumeration", "Readonly": true, "Values": [{"Name": "x", "displayname": "X"}]})")),
        R"({"Oem":1,"AttributeName":"A","Type":"Enumeration","ReadOnly":true,)"
        R"("Value":[{"ValueName":"x","ValueDisplayName":"X"}]})");
    EXPECT_EQ(json::serialize(Written(R"({"Name": "other", "AttributeName": "A", "Type": "string"})")),
              R"({"Name":"other","AttributeName":"A","Type":"String"})");
}

TEST(AdaptedAttributes, HaveWhatTheCoreReads)
{
    const struct {
        const char* published; ///< a member
        const char* written;   ///< empty when it is left out
    } rows[] = {
        {R"("ReadOnly":"True")", R"("ReadOnly":true)"},
        {R"("ReadOnly":0)", R"("ReadOnly":false)"},
        {R"("ReadOnly":null)", R"("ReadOnly":null)"},
        {R"("ReadOnly":"perhaps")", ""},
        {R"("ResetRequired":true)", R"("ResetRequired":true)"},
        {R"("UpperBound":"0x10")", R"("UpperBound":16)"},
        {R"("UpperBound":"many")", ""},
        {R"("UpperBound":null)", R"("UpperBound":null)"},
        {R"("UpperBound":18446744073709551615)", ""},
        {R"("LowerBound":1.5)", ""},
        {R"("DisplayName":5)", ""},
        {R"("HelpText":"x")", R"("HelpText":"x")"},
        {R"("Value":"x")", ""},
        {R"("Value":[])", R"("Value":[])"},
        {R"("CurrentValue":[1])", ""},
        {R"("CurrentValue":"7")", R"("CurrentValue":7)"},
        {R"("DefaultValue":"x")", R"("DefaultValue":"x")"},
        {R"("ValueExpression":"^[A-Z]+$")", R"("ValueExpression":"^[A-Z]+$")"},
        {R"("Oem":[1,-2,3.5,18446744073709551615,true,null,{"a":"b"}])",
         R"("Oem":[1,-2,3.5E0,18446744073709551615,true,null,{"a":"b"}])"},
    };
    const std::string begin = R"({"AttributeName":"A","Type":"Integer")";
    for (const auto& row : rows) {
        EXPECT_EQ(json::serialize(Written((begin + "," + row.published + "}").c_str())),
                  begin + (row.written[0] != '\0' ? "," : "") + row.written + "}");
    }
}

TEST(AdaptedAttributes, AreThoseOfTheModel)
{
    RegistryBuilder registry;
    registry.Attribute("Mode", "String").Attribute("MODE", "Integer").RawAttribute(5).RawAttribute(json::object{});
    registry.Attribute("Other", "Number");
    const World world(registry.Json());
    EXPECT_EQ(
        json::value(AdaptedList(world.Adapted, "Attributes")),
        json::parse(R"([{"AttributeName": "Mode", "Type": "String"}, {"AttributeName": "Other", "Type": "Number"}])"));
    EXPECT_THAT(world.Adapted.PublishedAttribute, ElementsAre(0, 4));
}

constexpr char mode[] = R"({"AttributeName": "A", "Type": "Enumeration", "DefaultValue": "Off", "Value": [
    {"ValueName": "0", "ValueDisplayName": "Off"}, {"ValueName": "1", "ValueDisplayName": "On"}]})";

TEST(AdaptedAttributes, NameChoicesAsTheirValuesDo)
{
    const json::value names = Written(mode, {{"A", Text("1")}});
    EXPECT_EQ(names.at("Value"), json::parse(mode).at("Value"));
    EXPECT_EQ(names.at("DefaultValue"), "0");
    const json::value displayNames = Written(mode, {{"A", Text("On")}});
    EXPECT_EQ(displayNames.at("Value"), json::parse(R"([{"ValueName": "Off", "ValueDisplayName": "0"},
                                                        {"ValueName": "On", "ValueDisplayName": "1"}])"));
    EXPECT_EQ(displayNames.at("DefaultValue"), "Off");
}

TEST(AdaptedAttributes, ThatAreUndecidedNameChoicesAsMostOthersDo)
{
    RegistryBuilder registry;
    json::object attribute = json::parse(mode).as_object();
    attribute.erase("DefaultValue");
    for (const char* name : {"A", "B", "C"}) {
        attribute["AttributeName"] = name;
        registry.RawAttribute(attribute);
    }
    registry.Attribute("T", "Boolean");
    registry.Rule("T", "Hidden", true, {{"C", "EQU", "On"}});
    registry.Rule("T", "ReadOnly", true, {{"C", "EQU", "1"}});
    const auto rulesFor = [&registry](const SettingValueMap& values) {
        return RulesOf(World(registry.Json(), values));
    };
    const auto displayNames = ElementsAre("(C EQU On) T.Hidden true", "(C EQU On) T.ReadOnly true");
    const auto names = ElementsAre("(C EQU 1) T.Hidden true", "(C EQU 1) T.ReadOnly true");
    EXPECT_THAT(rulesFor({{"A", Text("On")}}), displayNames);
    EXPECT_THAT(rulesFor({{"A", Text("1")}}), names);
    EXPECT_THAT(rulesFor({{"A", Text("1")}, {"B", Text("On")}}), names);
    EXPECT_THAT(rulesFor({}), names);
}

TEST(AdaptedValues, AreOfTheirAttributesTypesUnderTheirOwnNames)
{
    RegistryBuilder registry = OneOfEachType();
    const World world(registry.Json(), {{"LEVEL", Text("5")},
                                        {"Mode", Text("Uefi")},
                                        {"Key", std::int64_t{5}},
                                        {"Switch", std::nullopt},
                                        {"Other", std::int64_t{1}}});
    EXPECT_EQ(world.Adapted.Values, (SettingValueMap{{"LEVEL", std::int64_t{5}},
                                                     {"Mode", Text("Uefi")},
                                                     {"Key", Text("5")},
                                                     {"Switch", std::nullopt},
                                                     {"Other", std::int64_t{1}}}));
}

TEST(AdaptedValues, OfAModelAreThoseOfItsAttributes)
{
    const RegistryDocument document = ReadRegistryDocument(OneOfEachType().Text());
    const SystemValues values(Model::Read(document), World::DocumentOf({{"LEVEL", Text("5")}, {"Other", true}}));
    const Adaptation adapted = Adapt(values);
    EXPECT_EQ(adapted.Values, (SettingValueMap{{"Level", std::int64_t{5}}}));
    EXPECT_EQ(adapted.RegistryText, Adapt(document, {}).RegistryText);
    EXPECT_THAT(adapted.Findings, IsEmpty());
}

TEST(AdaptedRegistry, KeepsWhatAdaptingDoesNotConcern)
{
    const char text[] =
        R"({"@odata.id":"/x","RegistryEntries":{"Menus":[{"MenuName":"M"}],"Oem":{},"Dependencies":[{"Type":"Map",)"
        R"("DependencyFor":"A","Oem":5,"Dependency":{"MapFrom":[{"MapFromAttribute":"A","MapFromProperty":"CurrentValue",)"
        R"("MapFromCondition":"EQU","MapFromValue":null}],"MapToAttribute":"A","MapToProperty":"Hidden","MapToValue":true}}],)"
        R"("Attributes":[{"AttributeName":"A","Type":"String","Oem":{"x":1}}]},"SupportedSystems":[1,{"a":null}]})";
    EXPECT_EQ(Adapt(ReadRegistryDocument(text), {}).RegistryText, text);
}

TEST(AdaptedRegistry, GetsTheEntriesThatItLacks)
{
    const RegistryDocument bare =
        ReadRegistryDocument(R"({"Id": "R", "Attributes": [{"AttributeName": "A", "Type": "String"}], "Menus": 5})");
    EXPECT_EQ(
        Adapt(bare, {}).RegistryText,
        R"({"Id":"R","RegistryEntries":{"Attributes":[{"AttributeName":"A","Type":"String"}],"Menus":5,"Dependencies":[]}})");
    EXPECT_EQ(Adapt(ReadRegistryDocument(R"({"RegistryEntries": {}})"), {}).RegistryText,
              R"({"RegistryEntries":{"Attributes":[],"Dependencies":[]}})");
    const Adaptation none = Adapt(ReadRegistryDocument("{}"), World::DocumentOf({{"A", true}}));
    EXPECT_EQ(none.RegistryText, "");
    EXPECT_THAT(none.Values, IsEmpty());
    EXPECT_FALSE(none.Findings.empty());
}

TEST(PlainRegistry, JudgesValuesAlone)
{
    RegistryBuilder registry = OneOfEachType();
    json::object bounds = Bounds(0, 9);
    bounds["ReadOnly"] = true;
    bounds["CurrentValue"] = 3;
    registry.Attribute("X", "Integer", bounds).Rule("X", "Hidden", true, {{"X", "EQU", 3}});
    const std::shared_ptr<const Model> model = Model::Read(ReadRegistryDocument(registry.Text()));
    const std::string text = PlainRegistryText(model->Attributes());
    const json::array attributes = json::parse(text).at("RegistryEntries").at("Attributes").as_array();
    EXPECT_EQ(json::serialize(attributes.back()),
              R"({"AttributeName":"X","Type":"Integer","CurrentValue":3,"LowerBound":0,"UpperBound":9})");
    EXPECT_EQ(attributes.front().at("Value"), registry.Json().at("RegistryEntries").at("Attributes").at(0).at("Value"));
    std::string copy = text;
    SettingValueMap none;
    RedfishConfigSettingManager manager(copy, none, false, Config_Options{});
    std::map<std::string, SettingStatus> status;
    ASSERT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_FALSE(status.at("X").ReadOnly.Value || status.at("X").Hidden.Value || status.at("X").Protected.Value);
}

// Random registries.

class Random {
public:
    explicit Random(unsigned seed) : m_Engine(seed) {}

    std::size_t Below(std::size_t bound) { return m_Engine() % bound; }
    bool Once(std::size_t in) { return Below(in) == 0; }

    template <class Value>
    const Value& OneOf(const std::vector<Value>& list)
    {
        return list[Below(list.size())];
    }

private:
    std::mt19937 m_Engine;
};

/** Rules of all kinds on a few attributes, some of whose names and values no formula can hold. */
class RandomWorld {
public:
    explicit RandomWorld(Random& random) : m_Random(random) {}

    json::value Registry()
    {
        RegistryBuilder registry;
        for (const std::string& name : sources) {
            registry.Attribute(name, TypeOf(name), MembersOf(name));
        }
        for (const std::string& name : targets) {
            json::object members = Flags({"ReadOnly", "Hidden", "GrayOut", "Immutable"}, 3);
            members["MenuPath"] = m_Random.Once(2) ? "./Main" : "./Main/Inner";
            registry.Attribute(name, "Boolean", members);
        }
        const std::size_t rules = 1 + m_Random.Below(8);
        for (std::size_t rule = 0; rule < rules; ++rule) {
            registry.RawRule(Rule());
        }
        json::value document = registry.Json();
        json::array& menus = document.at("RegistryEntries").as_object()["Menus"].emplace_array();
        for (const auto& [name, path] : {std::pair("Main", "./Main"), {"Inner", "./Main/Inner"}}) {
            json::object menu = Flags({"ReadOnly", "Hidden", "GrayOut"}, 8);
            menu["MenuName"] = name;
            menu["MenuPath"] = path;
            menus.push_back(std::move(menu));
        }
        return document;
    }

    SettingValueMap Values(bool withUnsafe)
    {
        SettingValueMap values;
        for (const std::string& name : sources) {
            const json::value value = ValueFor(name);
            if (m_Random.Once(4)) {
                continue;
            }
            if (m_Random.Once(4)) {
                values[name] = std::nullopt;
            } else if (value.is_string()) {
                const std::string text(value.get_string());
                const bool isSafe =
                    text.find_first_of("(.") == std::string::npos && text.find(" exist") == std::string::npos;
                values[name] = withUnsafe || isSafe ? text : Text(name == "Profile" ? "Low" : "x");
            } else if (value.is_bool()) {
                values[name] = value.get_bool();
            } else {
                values[name] = value.to_number<std::int64_t>();
            }
        }
        return values;
    }

private:
    static std::string TypeOf(const std::string& name)
    {
        static const std::map<std::string, std::string> types{
            {"Few", "Integer"},    {"Many", "Integer"}, {"Wide", "Integer"}, {"Free", "Integer"},
            {"Switch", "Boolean"}, {"Text", "String"},  {"Key", "Password"}, {"Filled", "String"},
        };
        const auto found = types.find(name);
        return found != types.end() ? found->second : "Enumeration";
    }

    json::object MembersOf(const std::string& name)
    {
        json::object members = Flags({"ReadOnly", "Hidden"}, 4);
        const auto bounds = [&](int lower, int upper) {
            members["LowerBound"] = lower;
            members["UpperBound"] = upper;
        };
        if (name == "Few") {
            bounds(0, 9);
        } else if (name == "Many") {
            bounds(8, 11);
        } else if (name == "Wide") {
            bounds(-10, 400);
        } else if (name == "Filled") {
            members["MinLength"] = 1;
        } else if (TypeOf(name) == "Enumeration") {
            json::array choices;
            for (const std::string& choice : ChoicesOf(name)) {
                choices.push_back(RegistryBuilder::Choice(choice, choice + " shown"));
            }
            members["Value"] = std::move(choices);
        }
        return members;
    }

    static std::vector<std::string> ChoicesOf(const std::string& name)
    {
        if (name == "Speed") {
            return {"800", "1600", "3200"};
        }
        return name == "Profile" ? std::vector<std::string>{"Low", "High (HPC)", "Custom"}
                                 : std::vector<std::string>{"Uefi", "Legacy", "Other"};
    }

    json::object Flags(const std::vector<std::string>& names, std::size_t in)
    {
        json::object flags;
        for (const std::string& name : names) {
            if (m_Random.Once(in)) {
                flags[name] = true;
            }
        }
        return flags;
    }

    json::value ValueFor(const std::string& name)
    {
        if (name == "Few") {
            return m_Random.Below(10);
        }
        if (name == "Many") {
            return 8 + m_Random.Below(4);
        }
        if (name == "Wide" || name == "Free") {
            return static_cast<int>(m_Random.Below(411)) - 10;
        }
        if (name == "Switch") {
            return m_Random.Once(2);
        }
        if (name == "Text") {
            return json::value(m_Random.OneOf<const char*>({"", "x", " ", "5", "Mode.Hidden"}));
        }
        if (name == "Filled" || name == "Key") {
            return json::value(m_Random.OneOf<const char*>({"x", "y", "Filled exist"}));
        }
        return json::value(m_Random.OneOf(ChoicesOf(name)));
    }

    json::value Rule()
    {
        const bool isOfMenu = m_Random.Once(8);
        return {
            {"Type", "Map"},
            {"Dependency",
             {{"MapFrom", json::array{Tree(1 + m_Random.Below(6))}},
              {"MapToAttribute", isOfMenu ? m_Random.OneOf<std::string>({"Main", "Inner"}) : m_Random.OneOf(targets)},
              {"MapToProperty", m_Random.OneOf<std::string>({"ReadOnly", "Hidden", "GrayOut"})},
              {"MapToValue", !m_Random.Once(3)}}}};
    }

    /** A term of so many tests, with lists of two terms in each other. */
    json::object Tree(std::size_t tests)
    {
        json::object term;
        if (tests == 1) {
            term = Test();
        } else {
            const std::size_t left = 1 + m_Random.Below(tests - 1);
            json::object first = Tree(left);
            json::object second = Tree(tests - left);
            const char* const joiner = m_Random.Once(2) ? "AND" : "OR";
            json::value& mapTerms = first["MapTerms"];
            mapTerms = mapTerms.is_string() ? std::string(mapTerms.get_string()) + "," + joiner : joiner;
            term["Subexpressions"] = json::array{std::move(first), std::move(second)};
        }
        if (m_Random.Once(6)) {
            term["MapTerms"] = "NOT";
        }
        return term;
    }

    json::object Test()
    {
        static const std::vector<std::string> equalities{"EQU", "NEQ"};
        static const std::vector<std::string> comparisons{"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ"};
        std::string name = m_Random.OneOf(sources);
        if ((name == "ZMode" || name == "Free") && !m_Random.Once(4)) {
            name = "Mode"; // most rules can be written
        }
        if (m_Random.Once(12)) {
            name = m_Random.OneOf<std::string>({"Gone", "SYSACS"});
        }
        if (m_Random.Once(10)) {
            return TermOf(name, m_Random.OneOf<std::string>({"ReadOnly", "Hidden"}), m_Random.OneOf(equalities),
                          m_Random.Once(2));
        }
        if (m_Random.Once(6)) {
            return TermOf(name, "CurrentValue", m_Random.OneOf(equalities), nullptr);
        }
        const bool isOrdered = name == "Speed" || TypeOf(name) == "Integer" || m_Random.Once(12);
        return TermOf(name, "CurrentValue", m_Random.OneOf(isOrdered ? comparisons : equalities), ValueFor(name));
    }

    static json::object TermOf(const std::string& name, const std::string& property, const std::string& condition,
                               json::value value)
    {
        return {{"MapFromAttribute", name},
                {"MapFromProperty", property},
                {"MapFromCondition", condition},
                {"MapFromValue", std::move(value)}};
    }

    const std::vector<std::string> sources{"Mode", "Speed",  "Few",    "Many",     "Wide",  "Free",   "Text",
                                           "Key",  "Filled", "Switch", "BootMode", "ZMode", "Profile"};
    const std::vector<std::string> targets{"T", "U"};
    Random& m_Random;
};

TEST(AdaptedWorlds, AgreeWithTheEvaluation)
{
    const char* isLong = std::getenv("REDFISHCONFIG_LONG");
    const unsigned worlds = isLong != nullptr && std::string(isLong) == "1" ? 20'000 : 600;
    std::size_t undecided = 0;
    std::size_t rules = 0;
    for (unsigned seed = 1; seed <= worlds && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        RandomWorld world(random);
        const json::value registry = world.Registry();
        const SettingValueMap values = world.Values(random.Once(3));
        const World adapted(registry, values);
        adapted.ExpectAgreement(values);
        for (int other = 0; other < 6; ++other) {
            adapted.ExpectAgreement(world.Values(false));
        }
        undecided += adapted.Adapted.Undecided.size();
        rules += adapted.Adapted.PublishedRule.size();
        if (testing::Test::HasFailure()) {
            std::cout << json::serialize(registry) << "\n";
        }
    }
    EXPECT_GT(rules, 3 * worlds);
    EXPECT_LT(undecided, worlds / 2);
    EXPECT_GT(undecided, worlds / 20);
}

TEST(AdaptedFlags, StayTrueBesideARuleWithoutAFormThatAsksTheController)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MinLength", 1}}).Attribute("T", "Boolean", {{"ReadOnly", true}});
    registry.Rule("T", "ReadOnly", true, {Term{"A", "EQU", "x"}});
    registry.Rule("T", "ReadOnly", true, {Term{"SYSACS", "EQU", "y", "AND"}});
    const auto model = Model::Read(ReadRegistryDocument(registry.Text()));
    ValuesDocument then;
    then.Values = {{"A", std::string("x")}};
    ValuesDocument now;
    now.Values = {{"A", std::string("y")}};
    const Evaluation evaluation = Evaluation(SystemValues(model, then)).ForValues(SystemValues(model, now));
    const Verdict verdict = evaluation.VerdictOn(model->Find("T").value(), Property::ReadOnly);
    EXPECT_TRUE(verdict.Value);
    EXPECT_FALSE(verdict.Certain);

    Adaptation adapted = AdaptRegistry(registry.Json(), then.Values);
    adapted.Values["A"] = std::string("y");
    EXPECT_TRUE(StatusOfAll(adapted).at("T").ReadOnly.Value);
}

TEST(AdaptedFlags, AreSnapshotsByTheValuesThatTheRegistryCameWith)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MinLength", 1}}).Attribute("T", "Boolean", {{"ReadOnly", true}});
    registry.Rule("T", "ReadOnly", true, {Term{"A", "EQU", "x"}});
    const auto model = Model::Read(ReadRegistryDocument(registry.Text()));
    ValuesDocument then;
    then.Values = {{"A", std::string("x")}};
    ValuesDocument now;
    now.Values = {{"A", std::string("y")}};
    const SystemValues values(model, now);
    EXPECT_TRUE(StatusOfAll(Adapt(values)).at("T").ReadOnly.Value); // by its own values it is a mark
    EXPECT_FALSE(StatusOfAll(Adapt(values, Evaluation(values, SystemValues(model, then)))).at("T").ReadOnly.Value);
}

} // namespace
