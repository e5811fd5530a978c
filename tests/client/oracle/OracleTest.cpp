#include "Oracle.h"

#include "support/RegistryBuilder.h"

#include <gmock/gmock.h>

#include <limits>
#include <ostream>
#include <tuple>

// The answers here are worked out by hand from what a rule means.

namespace Oracle {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test framework looks for
void PrintTo(Truth truth, std::ostream* stream)
{
    *stream << (truth == Truth::True ? "true" : truth == Truth::False ? "false" : "unknown");
}

bool operator==(const Verdict& left, const Verdict& right)
{
    return left.Value == right.Value && left.Certain == right.Certain && left.Marked == right.Marked;
}

void PrintTo(const Verdict& verdict, std::ostream* stream)
{
    *stream << (verdict.Value ? "true" : "false") << (verdict.Certain ? "" : ", not certain")
            << (verdict.Marked ? ", marked" : "");
}

} // namespace Oracle

namespace {

using namespace Oracle;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;

constexpr Truth yes = Truth::True;
constexpr Truth no = Truth::False;
constexpr Truth unknown = Truth::Unknown;

/** Settings of each type, with values of them. "Absent" is not named by the values, "Null" has none. */
RegistryBuilder Settings()
{
    const json::array choices{RegistryBuilder::Choice("Uefi", "UEFI Mode"), RegistryBuilder::Choice("Bios", "Legacy"),
                              json::object{{"ValueName", "OnlyName"}}, json::object{{"ValueDisplayName", "Only Title"}},
                              "Plain"};
    RegistryBuilder registry;
    registry.Attribute("Mode", "Enumeration", {{"Value", choices}, {"ReadOnly", true}, {"Hidden", "False"}})
        .Attribute("Old", "Enumeration", {{"Values", choices}})
        .Attribute("Level", "Enumeration", {{"Value", {"9", "10", "-3"}}})
        .Attribute("Count", "Integer")
        .Attribute("Switch", "Boolean")
        .Attribute("Text", "String")
        .Attribute("Secret", "Password", {{"GrayOut", 1}})
        .Attribute("Null", "String")
        .Attribute("Absent", "String")
        .Attribute("Own", "String", {{"CurrentValue", "own"}})
        .Attribute("OwnNull", "String", {{"CurrentValue", "own"}})
        .Attribute("T", "Boolean");
    return registry;
}

SettingValueMap Values()
{
    return {{"Mode", "Uefi"}, {"Old", "Legacy"},   {"Level", "10"},        {"Count", std::int64_t{9}}, {"Switch", true},
            {"Text", "5"},    {"Secret", "hush!"}, {"Null", std::nullopt}, {"OwnNull", std::nullopt}};
}

json::object TermOf(const std::string& name, const std::string& condition, json::value operand,
                    const std::string& joiners = {}, const std::string& property = "CurrentValue")
{
    json::object term{{"MapFromAttribute", name},
                      {"MapFromProperty", property},
                      {"MapFromCondition", condition},
                      {"MapFromValue", std::move(operand)}};
    if (!joiners.empty()) {
        term["MapTerms"] = joiners;
    }
    return term;
}

json::object RuleOf(const json::array& terms, const std::string& target = "T", const std::string& property = "Hidden",
                    json::value outcome = true)
{
    return {{"Type", "Map"},
            {"Dependency",
             {{"MapFrom", terms},
              {"MapToAttribute", target},
              {"MapToProperty", property},
              {"MapToValue", std::move(outcome)}}}};
}

/** The truth of a rule with these terms; @p others are further rules of its registry. */
Truth TruthOf(const json::array& terms, const json::array& others = {}, const SettingValueMap& values = Values())
{
    RegistryBuilder registry = Settings();
    registry.RawRule(RuleOf(terms));
    for (const json::value& other : others) {
        registry.RawRule(other);
    }
    return Registry(registry.Json(), Values()).OfRule(0, values);
}

// ---- row 1 and 4: values, and where there are none

struct TermRow {
    const char* Name;
    const char* Condition;
    json::value Operand;
    Truth Expected;
};

void Expect(const std::vector<TermRow>& rows)
{
    for (const TermRow& row : rows) {
        EXPECT_EQ(TruthOf({TermOf(row.Name, row.Condition, row.Operand)}), row.Expected)
            << row.Name << " " << row.Condition << " " << row.Operand;
    }
}

TEST(OracleValues, AreComparedByType)
{
    Expect({
        {"Mode", "EQU", "Uefi", yes},     {"Mode", "EQU", "UEFI Mode", yes}, // either name of a choice
        {"Mode", "NEQ", "UEFI Mode", no}, {"Mode", "EQU", "uefi", no},
        {"Mode", "EQU", "Bios", no},      {"Mode", "EQU", "never offered", no},
        {"Old", "EQU", "Bios", yes},      {"Old", "EQU", "Legacy", yes},
        {"Old", "EQU", "Uefi", no},       {"Count", "EQU", 9, yes},
        {"Count", "EQU", "9", yes},       {"Count", "EQU", "+09", yes},
        {"Count", "NEQ", "9", no},        {"Count", "EQU", "nine", no},
        {"Switch", "EQU", true, yes},     {"Switch", "EQU", "TRUE", yes},
        {"Switch", "EQU", 1, yes},        {"Switch", "EQU", 0, no},
        {"Switch", "NEQ", "False", yes},  {"Text", "EQU", "5", yes},
        {"Text", "EQU", 5, yes},          {"Text", "EQU", "05", no},
        {"Text", "EQU", "5 ", no},
    });
}

TEST(OracleValues, OfTheSystemMayBeWrittenAsTexts)
{
    const SettingValueMap values{{"Count", "9"}, {"Switch", "True"}, {"Mode", "UEFI Mode"}, {"Text", std::int64_t{7}}};
    EXPECT_EQ(TruthOf({TermOf("Count", "EQU", 9)}, {}, values), yes);
    EXPECT_EQ(TruthOf({TermOf("Count", "LSS", 10)}, {}, values), yes);
    EXPECT_EQ(TruthOf({TermOf("Switch", "EQU", true)}, {}, values), yes);
    EXPECT_EQ(TruthOf({TermOf("Switch", "GEQ", 0)}, {}, {{"Switch", std::int64_t{1}}}), unknown);
    EXPECT_EQ(TruthOf({TermOf("Mode", "EQU", "Uefi")}, {}, values), yes);
    EXPECT_EQ(TruthOf({TermOf("Text", "EQU", "7")}, {}, values), yes);
}

TEST(OracleValues, AreUnknownWhereThereIsNone)
{
    Expect({
        {"Absent", "EQU", "x", unknown},
        {"Absent", "NEQ", "x", unknown},
        {"Null", "EQU", "x", unknown},
        {"Null", "LSS", 5, unknown},
        {"Own", "EQU", "own", yes}, // the registry's own value stands in
        {"Own", "EQU", "other", no},
        {"OwnNull", "EQU", "own", unknown}, // the system says that there is none
        {"Secret", "EQU", "hush!", unknown},
        {"Secret", "NEQ", "x", unknown},
        {"Nobody", "EQU", "x", unknown},
    });
}

TEST(OracleValues, CanBeAskedForWithNull)
{
    Expect({
        {"Absent", "EQU", nullptr, yes},
        {"Null", "EQU", nullptr, yes},
        {"Null", "NEQ", nullptr, no},
        {"OwnNull", "EQU", nullptr, yes},
        {"Own", "EQU", nullptr, no},
        {"Mode", "EQU", nullptr, no},
        {"Mode", "NEQ", nullptr, yes},
        {"Mode", "GTR", nullptr, unknown},
        {"Nobody", "EQU", nullptr, unknown},
        {"Secret", "EQU", nullptr, unknown},
    });
    json::object withoutOperand = TermOf("Null", "EQU", nullptr);
    withoutOperand.erase("MapFromValue");
    EXPECT_EQ(TruthOf({withoutOperand}), yes);
}

// ---- row 2: conditions

TEST(OracleConditions, OrderNumbers)
{
    Expect({
        {"Count", "GTR", 10, no}, // not as texts
        {"Count", "LSS", 10, yes},
        {"Count", "LSS", "10", yes},
        {"Count", "GTR", -10, yes},
        {"Count", "GEQ", 9, yes},
        {"Count", "GTR", 9, no},
        {"Count", "LEQ", 9, yes},
        {"Count", "LSS", 9, no},
        {"Count", "LSS", "ten", unknown},
        {"Text", "LSS", "10", yes},
        {"Text", "GTR", "-10", yes},
        {"Text", "GTR", 4, yes},
        {"Text", "GTR", "abc", unknown},
        {"Own", "GTR", "abc", unknown},
        {"Level", "GTR", "9", yes},
        {"Mode", "GTR", "Bios", unknown},
        {"Switch", "GTR", false, unknown},
        {"Switch", "GEQ", 0, unknown},
    });
}

TEST(OracleConditions, OrderChoicesByTheNamesThatValuesUse)
{
    RegistryBuilder registry;
    registry.Attribute("Speed", "Enumeration",
                       {{"Value",
                         {RegistryBuilder::Choice("5", "Five"), RegistryBuilder::Choice("9", "Nine"),
                          RegistryBuilder::Choice("12", "3"), RegistryBuilder::Choice("12", "4")}}});
    registry.Attribute("T", "Boolean");
    const struct {
        const char* operand;
        const char* held;
        Truth truth;
    } rows[] = {
        {"Five", "9", yes},        {"9", "9", no},  {"Nine", "9", no},
        {"Five", "Nine", unknown}, {"3", "9", yes}, // of one of two entries of a value: it stays as it is
        {"3", "4", yes},                            // where display names are values
    };
    for (const auto& row : rows) {
        RegistryBuilder one = registry;
        one.Rule("T", "ReadOnly", true, {{"Speed", "GTR", row.operand}});
        const SettingValueMap values{{"Speed", std::string(row.held)}};
        EXPECT_EQ(Registry(one.Json(), values).OfRule(0, values), row.truth) << row.operand << " " << row.held;
    }
}

TEST(OracleConditions, OnFlagsReadWhatIsPublished)
{
    const std::vector<std::tuple<const char*, const char*, const char*, json::value, Truth>> rows{
        {"Mode", "ReadOnly", "EQU", true, yes},   {"Mode", "ReadOnly", "NEQ", true, no},
        {"Mode", "readonly", "EQU", "True", yes}, {"Mode", "Hidden", "EQU", false, yes},
        {"Mode", "GrayOut", "EQU", true, no},     {"Secret", "GrayOut", "EQU", true, yes},
        {"Mode", "ReadOnly", "GTR", 0, unknown},  {"Mode", "ReadOnly", "EQU", nullptr, unknown},
        {"Mode", "LowerBound", "EQU", 1, unknown}};
    for (const auto& [name, property, condition, operand, expected] : rows) {
        EXPECT_EQ(TruthOf({TermOf(name, condition, operand, {}, property)}), expected)
            << name << "." << property << " " << condition << " " << operand;
    }
}

TEST(OracleConditions, ThatHaveNoMeaningAreUnknown)
{
    Expect({{"Count", "BITAND", 1, unknown},
            {"Count", "BITOR", 1, unknown},
            {"Count", "LIKE", 9, unknown},
            {"Count", "", 9, unknown},
            {"Count", "EQU", json::array{9}, unknown},
            {"Count", "EQU", json::object{}, unknown}});
}

TEST(OracleConditions, AndKeysMayHaveAnyLetterCase)
{
    Expect({{"Count", "equ", 9, yes}, {"Count", "EQ", 9, yes}, {"count", "Neq", 9, no}, {"COUNT", "geq", 9, yes}});
    const json::object term{{"mapfromattribute", "Count"},
                            {"MAPFROMPROPERTY", "currentvalue"},
                            {"MapFromcondition", "eq"},
                            {"mapfromvalue", 9}};
    const json::object rule{
        {"dependency",
         {{"mapfrom", json::array{term}}, {"maptoattribute", "t"}, {"maptoproperty", "hidden"}, {"maptovalue", true}}}};
    RegistryBuilder registry = Settings();
    registry.RawRule(rule);
    EXPECT_EQ(Registry(registry.Json(), Values()).VerdictOf("T", "Hidden", Values()), (Verdict{true, true, false}));
}

// ---- row 3: joiners. Three terms of known truth: t, f and u

json::object Letter(char letter, const std::string& joiners = {})
{
    return letter == 'u' ? TermOf("Absent", "EQU", "x", joiners)
                         : TermOf("Count", letter == 't' ? "EQU" : "NEQ", 9, joiners);
}

using Letters = std::vector<std::pair<char, std::string>>;

json::array ListOf(const Letters& letters)
{
    json::array terms;
    for (const auto& [letter, joiners] : letters) {
        terms.push_back(Letter(letter, joiners));
    }
    return terms;
}

TEST(OracleForms, AreToldByWhereJoinersStand)
{
    const std::vector<std::pair<Letters, Truth>> rows{
        // one term
        {{{'t', ""}}, yes},
        {{{'u', ""}}, unknown},
        // on earlier terms, grouped to the right
        {{{'f', "AND"}, {'t', "OR"}, {'t', ""}}, no}, // f and (t or t); from the left it would be true
        {{{'t', "OR"}, {'t', "AND"}, {'f', ""}}, yes},
        {{{'f', "AND"}, {'u', ""}}, no},
        {{{'t', "AND"}, {'u', ""}}, unknown},
        {{{'t', "or"}, {'u', ""}}, yes},
        // on later terms, from left to right
        {{{'f', ""}, {'t', "AND"}, {'t', "OR"}}, yes}, // (f and t) or t; grouped to the right it would be false
        {{{'t', ""}, {'t', "OR"}, {'f', "AND"}}, no},
        {{{'f', ""}, {'u', "OR"}}, unknown},
        // stack order
        {{{'t', ""}, {'f', ""}, {'f', "AND,OR"}}, yes}, // t or (f and f)
        {{{'t', ""}, {'f', "OR"}, {'f', ""}, {'t', "AND,AND"}}, no},
        {{{'f', ""}, {'t', "OR"}, {'t', ""}, {'f', "AND,AND"}}, no},
        {{{'f', ""}, {'t', ""}, {'t', "AND, OR"}}, yes},
        // no form
        {{{'t', "AND"}, {'t', "AND"}}, unknown},
        {{{'t', "AND"}}, unknown},
        {{{'t', ""}, {'t', "OR,OR"}, {'t', ""}}, unknown}, // too few on the stack
        {{{'t', ""}, {'t', "OR"}, {'t', ""}}, unknown},    // too many
        {{{'t', "XOR"}, {'t', ""}}, unknown},
        {{{'t', ""}, {'t', "AND,NOT"}}, unknown},
    };
    for (const auto& [letters, expected] : rows) {
        const json::array terms = ListOf(letters);
        EXPECT_EQ(TruthOf(terms), expected) << json::serialize(terms);
    }
    EXPECT_EQ(TruthOf({}), unknown);
}

TEST(OracleForms, WithoutJoinersMeanAnyTermUnlessTheRegistryHasJoiners)
{
    const json::array two = ListOf({{'f', ""}, {'t', ""}});
    EXPECT_EQ(TruthOf(two), yes);
    EXPECT_EQ(TruthOf(ListOf({{'f', ""}, {'u', ""}})), unknown);
    EXPECT_EQ(TruthOf(ListOf({{'f', ""}, {'f', ""}, {'f', ""}})), no);
    EXPECT_EQ(TruthOf(two, {RuleOf(ListOf({{'t', "AND"}, {'t', ""}})), RuleOf(ListOf({{'t', ""}}))}), unknown);
    EXPECT_EQ(TruthOf(two, {RuleOf({json::object{{"Subexpressions", ListOf({{'t', ""}, {'t', "OR"}})}}})}), unknown);
    EXPECT_EQ(TruthOf(two, {RuleOf(ListOf({{'t', ""}}))}), yes);
}

json::object Inner(const json::array& terms, const std::string& joiners = {})
{
    json::object term{{"Subexpressions", terms}};
    if (!joiners.empty()) {
        term["MapTerms"] = joiners;
    }
    return term;
}

TEST(OracleForms, CanBeNestedAndNegated)
{
    const json::array orOfTwo = ListOf({{'t', "OR"}, {'f', ""}});
    const std::vector<std::pair<json::array, Truth>> rows{
        {{Letter('t', "NOT")}, no},
        {{Letter('f', "not")}, yes},
        {{Letter('u', "NOT")}, unknown},
        {{Letter('t', "NOT,AND"), Letter('t')}, no}, // the term itself, not what follows
        {{Letter('f', "NOT,AND"), Letter('t')}, yes},
        {{Letter('t', "AND"), Letter('f', "NOT")}, yes}, // on a last term
        {{Letter('f'), Letter('f', "NOT, OR")}, yes},    // on a later term
        {{Inner(orOfTwo)}, yes},
        {{Inner(orOfTwo, "NOT")}, no},
        {{Inner(orOfTwo, "AND"), Letter('f')}, no},
        {{Letter('f', "AND"), Inner(orOfTwo)}, no},
        {{Inner({Inner(orOfTwo, "NOT")}, "NOT")}, yes},
        {{Letter('t', "OR"), Inner(ListOf({{'t', "AND"}, {'t', "AND"}}))}, unknown}, // a list without a form in it
        {{Inner({})}, unknown},
    };
    for (const auto& [terms, expected] : rows) {
        EXPECT_EQ(TruthOf(terms), expected) << json::serialize(terms);
    }
}

// ---- row 11

TEST(OracleForms, LeaveOutTermsThatDoNotCount)
{
    const auto system = [](const std::string& joiners) { return TermOf("SYSACS", "EQU", "x", joiners); };
    const std::vector<std::pair<json::array, Truth>> rows{
        {{system("AND"), Letter('t')}, yes},
        {{system("OR"), Letter('f')}, no},
        {{Letter('t', "OR"), system("AND"), Letter('f')}, yes},
        {{Letter('t'), system("NOT,AND")}, yes},
        {{Letter('f'), system("")}, no},
        {{Letter('t', "AND"), Inner({system("")}, "NOT")}, yes},
        {{system("")}, no}, // nothing is asked: never fires
        {{TermOf("sysacs", "EQU", "x")}, unknown},
    };
    for (const auto& [terms, expected] : rows) {
        EXPECT_EQ(TruthOf(terms), expected) << json::serialize(terms);
    }
}

// ---- rows 5 and 6: verdicts. A rule is written as its truth now, its truth then and its outcome

struct RuleRow {
    char Now;
    char Then;
    json::value Outcome;
};

/** Each rule reads a setting of its own, whose value decides. */
SettingValueMap ValuesFor(const std::vector<RuleRow>& rules, char RuleRow::*when)
{
    SettingValueMap values;
    for (std::size_t position = 0; position < rules.size(); ++position) {
        if (rules[position].*when != 'u') {
            values["R" + std::to_string(position)] = rules[position].*when == 't';
        }
    }
    return values;
}

Verdict VerdictOf(const json::value& flag, const std::vector<RuleRow>& rules)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String", {{"ReadOnly", flag}});
    for (std::size_t position = 0; position < rules.size(); ++position) {
        const std::string source = "R" + std::to_string(position);
        registry.Attribute(source, "Boolean");
        registry.Rule("T", "ReadOnly", rules[position].Outcome, {Term{source, "EQU", true}});
    }
    const Registry published(registry.Json(), ValuesFor(rules, &RuleRow::Then));
    return published.VerdictOf("T", "ReadOnly", ValuesFor(rules, &RuleRow::Now));
}

struct VerdictRow {
    json::value Flag;
    std::vector<RuleRow> Rules;
    Verdict Expected;
};

void Expect(const std::vector<VerdictRow>& rows)
{
    for (std::size_t position = 0; position < rows.size(); ++position) {
        EXPECT_EQ(VerdictOf(rows[position].Flag, rows[position].Rules), rows[position].Expected) << "row " << position;
    }
}

TEST(OracleVerdicts, AreTheFlagWithoutRules)
{
    Expect({
        {false, {}, {false, true, false}},
        {true, {}, {true, true, true}},
        {"TRUE", {}, {true, true, true}},
        {1, {}, {true, true, true}},
        {"false", {}, {false, true, false}},
        {nullptr, {}, {false, true, false}},
    });
}

TEST(OracleVerdicts, FollowTheFirstTrueRule)
{
    Expect({
        {false, {{'t', 'f', true}}, {true, true, false}},
        {true, {{'t', 'f', false}}, {false, true, false}},
        {false, {{'f', 'f', true}, {'t', 'f', false}, {'t', 'f', true}}, {false, true, false}},
        {false, {{'t', 'f', true}, {'t', 'f', false}}, {true, true, false}},
        {false, {{'u', 'f', false}, {'t', 'f', true}}, {true, false, false}},
        {false, {{'u', 'f', true}, {'t', 'f', true}}, {true, true, false}},
        {false, {{'t', 'f', true}, {'u', 'f', false}}, {true, true, false}},
    });
}

TEST(OracleVerdicts, AreTheFlagAndNotCertainWhereARuleIsUnknown)
{
    Expect({
        {false, {{'u', 'f', true}}, {false, false, false}},
        {true, {{'u', 'f', true}}, {true, false, false}},
        {true, {{'u', 't', true}, {'f', 'f', true}}, {true, false, false}},
    });
}

TEST(OracleVerdicts, OfFlagsWhoseRulesAreFalseAskWhatTheRulesGaveThen)
{
    Expect({
        {false, {{'f', 't', true}}, {false, true, false}},
        {true, {{'f', 't', true}}, {false, true, false}},                    // explained
        {true, {{'f', 'f', true}}, {true, true, true}},                      // marked
        {true, {{'f', 'u', true}}, {true, false, false}},                    // not known
        {true, {{'f', 't', false}, {'f', 't', true}}, {true, true, true}},   // the rules gave false
        {true, {{'f', 'u', false}, {'f', 't', true}}, {true, false, false}}, // the first may have made it false
        {true, {{'f', 'u', true}, {'f', 't', false}}, {true, false, false}},
        {true, {{'f', 'u', true}, {'f', 't', true}}, {false, true, false}},
        {true, {{'f', 'u', false}, {'f', 't', false}}, {true, true, true}},
        {true, {{'f', 'f', true}, {'f', 't', true}}, {false, true, false}},
    });
}

TEST(OracleVerdicts, ReadOutcomesInAnyKindAndLeaveOutOthers)
{
    Expect({
        {false, {{'t', 'f', "True"}}, {true, true, false}},
        {true, {{'t', 'f', 0}}, {false, true, false}},
        {false, {{'t', 'f', "perhaps"}}, {false, true, false}},
        {false, {{'u', 'f', nullptr}}, {false, true, false}},
        {true, {{'f', 't', 2}}, {true, true, true}},
    });
}

TEST(OracleVerdicts, AreGivenForEachFlagByItself)
{
    for (const std::string& flag : Flags()) {
        RegistryBuilder registry = Settings();
        registry.Rule("T", flag, true, {Term{"Count", "EQU", 9}});
        const Registry published(registry.Json(), Values());
        for (const std::string& property : Flags()) {
            EXPECT_EQ(published.VerdictOf("T", property, Values()), (Verdict{property == flag, true, false}));
            EXPECT_EQ(published.RulesFor("T", property).size(), property == flag ? 1U : 0U);
        }
    }
}

// ---- row 7: menus

/** A setting with the path, beside this menu. The rule is on "M". */
Verdict BelowMenu(const json::object& menu, const char* path, bool hasRule)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String", {{"MenuPath", path}}).Attribute("Count", "Integer", {{"CurrentValue", 9}});
    if (hasRule) {
        registry.Rule("M", "GrayOut", true, {Term{"Count", "EQU", 9}});
    }
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::array{menu};
    return Registry(document, {}).VerdictOf("T", "GrayOut", {});
}

TEST(OracleMenus, CountForSettingsBelow)
{
    struct Row {
        const char* MenuPath;
        const char* Path;
        bool IsBelow;
    };
    const std::vector<Row> rows{
        {"./A/M", "./A/M", true},       {"./A/M", "./A/M/B", true}, {"./A/M", "A//M/", true}, {"./A/M", "./A", false},
        {"./A/M", "./A/MB", false},     {"./A/M", "./a/m", false},  {"./A/M", "", false},     {"./A", "./A/M/B", true},
        {"./A", "./A", false},          {"./", "./M", true},        {"./", "./", false},      {"./M", "./A/M", false},
        {"./A/X/Y", "./A/X/Y/Z", true}, // the display name
    };
    for (const Row& row : rows) {
        json::object menu{{"MenuName", "M"}, {"DisplayName", "X/Y"}, {"MenuPath", row.MenuPath}};
        EXPECT_EQ(BelowMenu(menu, row.Path, true), (Verdict{row.IsBelow, true, false}))
            << row.MenuPath << " and " << row.Path;
        menu["GrayOut"] = true;
        EXPECT_EQ(BelowMenu(menu, row.Path, false), (Verdict{row.IsBelow, true, row.IsBelow}))
            << row.MenuPath << " and " << row.Path;
        // the rule explains the flag, though one is of the menu
        EXPECT_EQ(BelowMenu(menu, row.Path, true), (Verdict{row.IsBelow, true, false}));
    }
    const json::object oneTitle{{"MenuName", "M"}, {"DisplayName", "X"}, {"MenuPath", "./A/X"}};
    EXPECT_FALSE(BelowMenu(oneTitle, "./A/X", true).Value); // a display name of one piece says nothing
    EXPECT_TRUE(BelowMenu(oneTitle, "./A/X/M", true).Value);
}

TEST(OracleMenus, AreTargetsAfterAttributes)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String", {{"MenuPath", "./M"}}).Attribute("S", "String", {{"MenuPath", "./N/M"}});
    registry.Attribute("U", "String", {{"MenuPath", "./N"}}).Attribute("N", "String");
    registry.Rule("m", "Hidden", true, {Term{"U", "EQU", nullptr}});   // both menus of this name
    registry.Rule("n", "ReadOnly", true, {Term{"U", "EQU", nullptr}}); // the attribute
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::array{
        json::object{{"MenuName", "M"}, {"MenuPath", "./M"}}, json::object{{"MenuName", "M"}, {"MenuPath", "./N/M"}},
        json::object{{"MenuName", "N"}, {"MenuPath", "./N"}, {"WriteOnly", true}, {"Hidden", "True"}}};
    const Registry published(document, {});
    EXPECT_EQ(published.VerdictOf("T", "Hidden", {}), (Verdict{true, true, false}));
    EXPECT_EQ(published.VerdictOf("S", "Hidden", {}), (Verdict{true, true, false}));
    EXPECT_EQ(published.VerdictOf("U", "Hidden", {}), (Verdict{true, true, true})); // the flag of N alone
    EXPECT_EQ(published.VerdictOf("N", "Hidden", {}), (Verdict{false, true, false}));
    EXPECT_EQ(published.VerdictOf("N", "ReadOnly", {}), (Verdict{true, true, false}));
    EXPECT_EQ(published.VerdictOf("U", "ReadOnly", {}), (Verdict{false, true, false}));
    EXPECT_EQ(published.VerdictOf("U", "WriteOnly", {}), (Verdict{false, true, false})); // no flag of menus
}

TEST(OracleMenus, AreToldApartByLetterCaseWhereThatIsNeeded)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String", {{"MenuPath", "./M"}}).Attribute("S", "String", {{"MenuPath", "./m"}});
    registry.Rule("m", "Hidden", true, {Term{"T", "EQU", nullptr}});
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::array{
        json::object{{"MenuName", "M"}, {"MenuPath", "./M"}}, json::object{{"MenuName", "m"}, {"MenuPath", "./m"}}};
    EXPECT_FALSE(Registry(document, {}).VerdictOf("T", "Hidden", {}).Value);
    EXPECT_TRUE(Registry(document, {}).VerdictOf("S", "Hidden", {}).Value);
}

TEST(OracleMenus, MergeTheirRulesInTheOrderOfTheRegistry)
{
    for (const bool isMenuFirst : {true, false}) {
        RegistryBuilder registry;
        registry.Attribute("T", "String", {{"MenuPath", "./M"}});
        registry.Rule(isMenuFirst ? "M" : "T", "Hidden", true, {Term{"T", "EQU", nullptr}});
        registry.Rule(isMenuFirst ? "T" : "M", "Hidden", false, {Term{"T", "EQU", nullptr}});
        json::value document = registry.Json();
        document.at("RegistryEntries").as_object()["Menus"] =
            json::array{json::object{{"MenuName", "M"}, {"MenuPath", "./M"}}};
        EXPECT_TRUE(Registry(document, {}).VerdictOf("T", "Hidden", {}).Value);
    }
}

// ---- row 8: narrowed choices

TEST(OracleChoices, AreWhatAllListsInForceHave)
{
    const json::array ab{"Uefi", "Legacy"};
    const json::array bc{"Bios", "OnlyName", "never offered"};
    struct Row {
        std::vector<std::pair<char, json::value>> Lists;
        std::vector<std::size_t> Remaining;
        bool Certain;
    };
    const std::vector<Row> rows{
        {{}, {0, 1, 2, 3, 4}, true},
        {{{'t', ab}}, {0, 1}, true},
        {{{'f', ab}}, {0, 1, 2, 3, 4}, true},
        {{{'t', ab}, {'t', bc}}, {1}, true},
        {{{'t', ab}, {'u', bc}}, {0, 1}, false},
        {{{'t', json::array{}}}, {}, true},
        {{{'t', json::array{"Only Title", "Plain"}}}, {3, 4}, true},
        {{{'t', "Uefi"}}, {0, 1, 2, 3, 4}, true}, // no list: does not count
    };
    for (std::size_t position = 0; position < rows.size(); ++position) {
        RegistryBuilder registry = Settings();
        for (const auto& [letter, list] : rows[position].Lists) {
            registry.RawRule(RuleOf({Letter(letter)}, "Mode", "Value", list));
        }
        const Oracle::ChoicesInForce choices = Registry(registry.Json(), Values()).ChoicesInForce("Mode", Values());
        EXPECT_EQ(choices.Remaining, rows[position].Remaining) << "row " << position;
        EXPECT_EQ(choices.Certain, rows[position].Certain) << "row " << position;
    }
}

TEST(OracleChoices, AreListedAsPublished)
{
    const Registry published(Settings().Json(), Values());
    const std::vector<Choice>& choices = published.ChoicesOf("Old");
    ASSERT_EQ(choices.size(), 5U);
    EXPECT_EQ(choices[0].DisplayName, "UEFI Mode");
    EXPECT_EQ(choices[2].DisplayName, std::nullopt);
    EXPECT_EQ(choices[3].Name, std::nullopt);
    EXPECT_EQ(choices[4].Name, "Plain");
    EXPECT_TRUE(published.ChoicesOf("Text").empty());
}

/** The name of one choice is the display name of another: what the values use decides. */
TEST(OracleChoices, WithATextForTwoAreReadAsTheValuesUseThem)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration",
                       {{"Value", {RegistryBuilder::Choice("1", "2"), RegistryBuilder::Choice("2", "3")}}});
    registry.Attribute("B", "Enumeration", {{"Value", {RegistryBuilder::Choice("x", "X")}}});
    registry.Rule("B", "Value", json::array{"X"}, {Term{"A", "EQU", "3"}});
    const SettingValueMap two{{"A", "2"}};
    EXPECT_EQ(Registry(registry.Json(), {{"A", "1"}}).OfRule(0, two), yes); // names: "2" and "3" are one choice
    EXPECT_EQ(Registry(registry.Json(), {{"A", "3"}}).OfRule(0, two), no);  // display names: "2" is the other choice
    EXPECT_EQ(Registry(registry.Json(), {{"A", "2"}, {"B", "X"}}).OfRule(0, two), no); // as most others
    EXPECT_EQ(Registry(registry.Json(), {{"A", "2"}, {"B", "x"}}).OfRule(0, two), yes);
}

TEST(OracleChoices, WithOneNameForSeveralAreAllNamedByIt)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration",
                       {{"Value", {RegistryBuilder::Choice("x", "One"), RegistryBuilder::Choice("x", "Two")}}});
    const Registry published(registry.Json(), {});
    EXPECT_TRUE(published.SameValue("A", "x", "One"));
    EXPECT_TRUE(published.SameValue("A", "Two", "x"));
    EXPECT_FALSE(published.SameValue("A", "One", "Two"));
    EXPECT_FALSE(published.SameValue("A", "x", std::nullopt));
    EXPECT_TRUE(published.SameValue("A", std::nullopt, std::nullopt));
}

// ---- row 9: bounds and lengths

TEST(OracleNumbers, FollowTheFirstTrueRule)
{
    struct Row {
        std::vector<std::pair<char, json::value>> Rules;
        std::int64_t Expected;
        bool Certain;
    };
    const std::vector<Row> rows{
        {{}, 50, true},
        {{{'t', 7}}, 7, true},
        {{{'t', "8"}}, 8, true},
        {{{'f', 7}, {'t', 9}, {'t', 10}}, 9, true},
        {{{'f', 7}}, 50, true},
        {{{'u', 7}, {'t', 9}}, 9, false},
        {{{'u', 9}, {'t', 9}}, 9, true},
        {{{'u', 7}}, 50, false},
        {{{'u', 50}}, 50, true},
        {{{'t', "many"}}, 50, true}, // no number: does not count
        {{{'t', true}}, 50, true},
    };
    for (const char* property : {"LowerBound", "UpperBound", "ScalarIncrement", "MinLength", "MaxLength"}) {
        for (std::size_t position = 0; position < rows.size(); ++position) {
            RegistryBuilder registry = Settings();
            registry.Attribute("N", "Integer", {{property, 50}});
            for (const auto& [letter, number] : rows[position].Rules) {
                registry.RawRule(RuleOf({Letter(letter)}, "N", property, number));
            }
            const Registry published(registry.Json(), Values());
            const Oracle::NumberInForce number = published.NumberInForce("N", property, Values());
            EXPECT_EQ(number.Value, rows[position].Expected) << property << ", row " << position;
            EXPECT_EQ(number.Certain, rows[position].Certain) << property << ", row " << position;
            EXPECT_EQ(published.NumberInForce("Count", property, Values()).Value, std::nullopt);
        }
    }
}

TEST(OracleNumbers, BeyondSixtyFourBitsAreNone)
{
    RegistryBuilder registry;
    registry.Attribute("N", "Integer", {{"UpperBound", 18446744073709551615U}, {"LowerBound", "-9223372036854775808"}});
    const Registry published(registry.Json(), {});
    EXPECT_EQ(published.NumberInForce("N", "UpperBound", {}).Value, std::nullopt);
    EXPECT_EQ(published.NumberInForce("N", "LowerBound", {}).Value, std::numeric_limits<std::int64_t>::min());
}

// ---- row 10: rules for current values. Settings A to E are numbers

struct Event {
    const char* Source;
    json::value If;
    const char* Target;
    json::value Value;
    const char* DependencyFor = "";
};

CascadeResult CascadeOf(const std::vector<Event>& events, const SettingValueMap& now, const Changes& byHand)
{
    RegistryBuilder registry;
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        registry.Attribute(name, "Integer");
    }
    registry.Attribute("Absent", "Integer").Attribute("Secret", "Password");
    registry.Attribute("Mode", "Enumeration", {{"Value", {RegistryBuilder::Choice("x", "X")}}});
    for (const Event& event : events) {
        json::object rule = RuleOf({TermOf(event.Source, "EQU", event.If)}, event.Target, "CurrentValue", event.Value);
        rule["DependencyFor"] = event.DependencyFor;
        registry.RawRule(rule);
    }
    return Registry(registry.Json(), now).Cascade(now, byHand);
}

SettingValueMap Zeros()
{
    const std::int64_t zero = 0;
    return {{"A", zero}, {"B", zero}, {"C", zero}, {"D", zero}, {"E", zero}, {"Mode", "x"}};
}

std::vector<std::string> Written(const CascadeResult& result)
{
    std::vector<std::string> lines;
    for (const Effect& effect : result.Effects) {
        lines.push_back(std::to_string(effect.Wave) + ": rule " + std::to_string(effect.Rule) + " " + effect.Setting +
                        " " + TextOf(effect.From) + " > " + TextOf(effect.To));
    }
    for (const Conflict& conflict : result.Conflicts) {
        lines.push_back(std::to_string(conflict.Wave) + ": rule " + std::to_string(conflict.Rule) + " " +
                        conflict.Setting + " stays " + TextOf(conflict.Kept) + " not " + TextOf(conflict.Refused) +
                        (conflict.IsByHand ? " by hand" : ""));
    }
    for (const MayChange& change : result.MayChanges) {
        lines.push_back(std::to_string(change.Wave) + ": rule " + std::to_string(change.Rule) + " " + change.Setting +
                        " perhaps " + TextOf(change.To) + (change.Differs ? "" : ", the same") +
                        (change.IsByHand ? ", by hand" : ""));
    }
    if (result.IsCycle) {
        lines.emplace_back("cycle");
    }
    if (result.IsCutOff) {
        lines.emplace_back("cut off");
    }
    return lines;
}

const std::int64_t one = 1;

TEST(OracleCascades, GoOnInWaves)
{
    const std::vector<Event> chain{{"B", 1, "C", 1}, {"A", 1, "B", 1}, {"C", 1, "D", 1}, {"A", 1, "E", 2}};
    const CascadeResult result = CascadeOf(chain, Zeros(), {{"a", one}});
    EXPECT_THAT(Written(result),
                ElementsAre("1: rule 1 B 0 > 1", "1: rule 3 E 0 > 2", "2: rule 0 C 0 > 1", "3: rule 2 D 0 > 1"));
    EXPECT_EQ(result.Values.at("D"), SettingValue(one));
    EXPECT_EQ(result.Values.at("A"), SettingValue(one));
    EXPECT_EQ(result.Values.size(), 6U);
}

TEST(OracleCascades, StartFromRealChangesOnly)
{
    const std::vector<Event> events{{"A", 0, "B", 1}, {"Mode", "x", "C", 1}};
    EXPECT_THAT(Written(CascadeOf(events, Zeros(), {{"A", "0"}, {"Mode", "X"}, {"Nobody", one}})), ElementsAre());
    EXPECT_THAT(Written(CascadeOf({{"A", 1, "B", 0}, {"B", 0, "C", 1}}, Zeros(), {{"A", one}})), ElementsAre());
    EXPECT_THAT(Written(CascadeOf({{"A", 1, "B", 1}}, Zeros(), {})), ElementsAre());
    EXPECT_THAT(Written(CascadeOf({{"C", 0, "B", 1}}, Zeros(), {{"A", one}})), ElementsAre()); // nothing on load
}

TEST(OracleCascades, LookAtTheStateAfterTheChange)
{
    EXPECT_THAT(Written(CascadeOf({{"A", 0, "B", 1}}, Zeros(), {{"A", one}})), ElementsAre());
    EXPECT_THAT(Written(CascadeOf({{"A", nullptr, "B", 1}}, Zeros(), {{"A", std::nullopt}})),
                ElementsAre("1: rule 0 B 0 > 1"));
}

TEST(OracleCascades, ApplyTheEffectsOfAWaveTogether)
{
    // the second rule still sees B as it was: the value that the first one gives comes after the wave
    const std::vector<Event> events{{"A", 1, "B", 1}, {"B", 1, "C", 1, "B"}};
    SettingValueMap now = Zeros();
    EXPECT_THAT(Written(CascadeOf(events, now, {{"A", one}})), ElementsAre("1: rule 0 B 0 > 1", "2: rule 1 C 0 > 1"));
    RegistryBuilder registry;
    registry.Attribute("A", "Integer").Attribute("B", "Integer").Attribute("C", "Integer");
    registry.Rule("B", "CurrentValue", 1, {Term{"A", "EQU", 1}});
    registry.Rule("C", "CurrentValue", 1, {Term{"A", "EQU", 1, "AND"}, Term{"B", "EQU", 0}});
    EXPECT_THAT(Written(Registry(registry.Json(), now).Cascade(now, {{"A", one}})),
                ElementsAre("1: rule 0 B 0 > 1", "1: rule 1 C 0 > 1"));
}

TEST(OracleCascades, AreTriggeredByTheSettingOfDependencyForWhereItIsASource)
{
    const auto cascade = [](const char* dependencyFor, const char* changed) {
        RegistryBuilder registry;
        registry.Attribute("A", "Integer").Attribute("B", "Integer").Attribute("C", "Integer");
        json::object rule = RuleOf({TermOf("A", "EQU", 1, "OR"), TermOf("B", "EQU", 1)}, "C", "CurrentValue", 1);
        rule["DependencyFor"] = dependencyFor;
        registry.RawRule(rule);
        return Registry(registry.Json(), {}).Cascade({}, {{changed, one}}).Effects.size();
    };
    EXPECT_EQ(cascade("A", "A"), 1U);
    EXPECT_EQ(cascade("a", "B"), 0U);
    EXPECT_EQ(cascade("C", "A"), 1U); // the target: any source
    EXPECT_EQ(cascade("C", "B"), 1U);
    EXPECT_EQ(cascade("Nobody", "B"), 1U);
    EXPECT_EQ(cascade("B", "C"), 0U);
}

TEST(OracleCascades, GiveWayToTheFirstRuleAndToChangesByHand)
{
    EXPECT_THAT(Written(CascadeOf({{"A", 1, "B", 1}, {"A", 1, "B", 2}, {"A", 1, "B", "1"}}, Zeros(), {{"A", one}})),
                ElementsAre("1: rule 0 B 0 > 1", "1: rule 1 B stays 1 not 2"));
    EXPECT_THAT(Written(CascadeOf({{"A", 1, "B", 0}, {"A", 1, "B", 2}}, Zeros(), {{"A", one}})),
                ElementsAre("1: rule 1 B stays 0 not 2")); // the first one wins though it changes nothing
    EXPECT_THAT(Written(CascadeOf({{"A", 1, "B", 2}, {"A", 1, "B", 1}}, Zeros(), {{"A", one}, {"B", one}})),
                ElementsAre("1: rule 0 B stays 1 not 2 by hand"));
    // also one that was set to what it was
    EXPECT_THAT(Written(CascadeOf({{"A", 1, "B", 2}}, Zeros(), {{"A", one}, {"B", std::int64_t{0}}})),
                ElementsAre("1: rule 0 B stays 0 not 2 by hand"));
}

TEST(OracleCascades, TellWhatMayChange)
{
    const std::vector<Event> events{{"Absent", 5, "B", 1, ""}, {"Secret", "x", "C", 0, ""}};
    EXPECT_THAT(Written(CascadeOf(events, Zeros(), {{"Secret", "y"}})), ElementsAre("1: rule 1 C perhaps 0, the same"));
    RegistryBuilder registry;
    registry.Attribute("A", "Integer").Attribute("B", "Integer").Attribute("Absent", "Integer");
    registry.Rule("B", "CurrentValue", 1, {Term{"A", "EQU", 1, "AND"}, Term{"Absent", "EQU", 1}});
    const Registry published(registry.Json(), {});
    EXPECT_THAT(Written(published.Cascade(Zeros(), {{"A", one}})), ElementsAre("1: rule 0 B perhaps 1"));
    EXPECT_THAT(Written(published.Cascade(Zeros(), {{"A", one}, {"B", std::int64_t{4}}})),
                ElementsAre("1: rule 0 B perhaps 1, by hand"));
    EXPECT_THAT(Written(published.Cascade(Zeros(), {{"A", std::int64_t{2}}})), ElementsAre()); // false and unknown
}

TEST(OracleCascades, EndAtAStateThatWasThereBefore)
{
    const std::vector<Event> circle{
        {"A", 1, "B", 1}, {"B", 1, "C", 1}, {"C", 1, "B", 0}, {"B", 0, "C", 0}, {"C", 0, "B", 1}};
    const CascadeResult result = CascadeOf(circle, Zeros(), {{"A", one}});
    EXPECT_THAT(Written(result), ElementsAre("1: rule 0 B 0 > 1", "2: rule 1 C 0 > 1", "3: rule 2 B 1 > 0",
                                             "4: rule 3 C 1 > 0", "5: rule 4 B 0 > 1", "cycle"));
    EXPECT_EQ(result.Values.at("B"), SettingValue(std::int64_t{1}));
}

TEST(OracleCascades, EndWithoutACycleWhereWhatIsTakenBackTriggersNothing)
{
    const std::vector<Event> pulse{{"A", 1, "B", 1}, {"B", 1, "B", 0}};
    EXPECT_THAT(Written(CascadeOf(pulse, Zeros(), {{"A", one}})),
                ElementsAre("1: rule 0 B 0 > 1", "2: rule 1 B 1 > 0"));
}

TEST(OracleCascades, EndAfterAThousandWaves)
{
    for (const std::size_t length : {999U, 1'000U, 1'001U}) {
        RegistryBuilder registry;
        for (std::size_t position = 0; position <= length; ++position) {
            registry.Attribute("S" + std::to_string(position), "Integer");
        }
        for (std::size_t position = 0; position < length; ++position) {
            registry.Rule("S" + std::to_string(position + 1), "CurrentValue", 1,
                          {Term{"S" + std::to_string(position), "EQU", 1}});
        }
        const CascadeResult result = Registry(registry.Json(), {}).Cascade({}, {{"S0", one}});
        EXPECT_EQ(result.Effects.size(), std::min(length, std::size_t{1'000}));
        EXPECT_EQ(result.IsCutOff, length >= 1'000);
        EXPECT_FALSE(result.IsCycle);
    }
}

TEST(OracleCascades, GiveValuesInTheKindOfTheTarget)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer").Attribute("N", "Integer").Attribute("F", "Boolean").Attribute("S", "String");
    for (const auto& [target, value] : std::vector<std::pair<std::string, json::value>>{
             {"N", "7"}, {"F", "True"}, {"S", 5}, {"A", 1}, {"Nobody", 1}, {"S", nullptr}, {"S", json::array{}}}) {
        registry.Rule(target, "CurrentValue", value, {Term{"A", "EQU", 1}});
    }
    const CascadeResult result = Registry(registry.Json(), {}).Cascade({}, {{"A", one}});
    EXPECT_EQ(result.Values.at("N"), SettingValue(std::int64_t{7}));
    EXPECT_EQ(result.Values.at("F"), SettingValue(true));
    EXPECT_EQ(result.Values.at("S"), SettingValue("5"));
    EXPECT_EQ(result.Values.size(), 4U);
    EXPECT_TRUE(result.Conflicts.empty());
}

} // namespace
