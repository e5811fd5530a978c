#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// What is odd about a registry as a whole.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::IsEmpty;

/** Attributes of every kind, and targets for rules. */
RegistryBuilder SomeAttributes()
{
    RegistryBuilder registry;
    registry.Attribute("Fan", "Enumeration",
                       {{"Value",
                         {RegistryBuilder::Choice("Off", "Off"), RegistryBuilder::Choice("Low", "Low"),
                          RegistryBuilder::Choice("High", "High")}}});
    registry.Attribute("Lid", "Boolean");
    registry.Attribute("Step", "Integer", {{"LowerBound", 0}, {"UpperBound", 2}});
    registry.Attribute("Count", "Integer", {{"LowerBound", 0}, {"UpperBound", 100'000}});
    registry.Attribute("Any", "Integer");
    registry.Attribute("Tag", "String", {{"MinLength", 1}});
    registry.Attribute("T", "String", {{"MinLength", 1}});
    registry.Attribute("Wide", "Integer", {{"LowerBound", 9}, {"UpperBound", 10}});
    return registry;
}

std::vector<Finding> FindingsOf(const RegistryBuilder& builder, const SettingValueMap& values = {})
{
    const RegistryDocument registry = ReadRegistryDocument(builder.Text());
    ValuesDocument document;
    document.Values = values;
    return Analyse(registry, Adapt(registry, document));
}

std::vector<std::string> KindsOf(const std::vector<Finding>& findings)
{
    std::vector<std::string> kinds;
    for (const Finding& finding : findings) {
        kinds.emplace_back(Word(finding.Kind));
    }
    return kinds;
}

/** What is found of one rule for T.CurrentValue, which makes no flag and no circle. */
std::vector<std::string> KindsOfRule(const std::vector<Term>& terms, const SettingValueMap& values = {})
{
    return KindsOf(FindingsOf(SomeAttributes().Rule("T", "CurrentValue", "x", terms), values));
}

TEST(Analysis, RulesThatNeverFire)
{
    const std::vector<Term> never[] = {
        {{"Fan", "EQU", "Off", "AND"}, {"Fan", "EQU", "Low"}},
        {{"Fan", "EQU", "Fast"}},
        {{"Count", "EQU", 100'001}},
        {{"Count", "EQU", -1, "AND"}, {"Lid", "EQU", true}},
        {{"Lid", "EQU", true, "AND"}, {"Tag", "EQU", "x", "AND"}, {"Lid", "EQU", false}},
        {{"Tag", "EQU", "x", "AND"}, {"Tag", "EQU", "y"}},
        {{"Tag", "EQU", "x", "AND"}, {"Tag", "EQU", nullptr}},
        {{"Fan", "NEQ", nullptr, "AND"},
         {"Fan", "NEQ", "Off", "AND"},
         {"Fan", "NEQ", "Low", "AND"},
         {"Fan", "NEQ", "High"}},
        // grouped to the right: Off and (Low or High)
        {{"Fan", "EQU", "Off", "AND"}, {"Fan", "EQU", "Low", "OR"}, {"Fan", "EQU", "High"}},
    };
    for (const auto& terms : never) {
        EXPECT_THAT(KindsOfRule(terms), ElementsAre("never-holds")) << json::serialize(terms[0].Value);
    }
}

TEST(Analysis, RulesThatMayFire)
{
    const std::vector<Term> sometimes[] = {
        {{"Fan", "EQU", "Off"}},
        {{"Fan", "EQU", "Off", "AND"}, {"Fan", "NEQ", "Low"}},
        {{"Fan", "NEQ", "Off", "AND"}, {"Fan", "NEQ", "Low"}},
        {{"Fan", "EQU", "Off", "OR"}, {"Fan", "EQU", "Low"}},
        // without a value it holds
        {{"Fan", "NEQ", "Off", "AND"}, {"Fan", "NEQ", "Low", "AND"}, {"Fan", "NEQ", "High"}},
        {{"Count", "EQU", 100'000}},
        {{"Tag", "EQU", "anything"}},
        {{"Any", "EQU", -5}},
        {{"Tag", "NEQ", nullptr}},
        {{"Tag", "EQU", nullptr}},
        // High or (Off and Low)
        {{"Fan", "EQU", "High", "OR"}, {"Fan", "EQU", "Off", "AND"}, {"Fan", "EQU", "Low"}},
        {{"Lid", "EQU", true, "OR"}, {"Fan", "NEQ", "Off"}},
    };
    for (const auto& terms : sometimes) {
        EXPECT_THAT(KindsOfRule(terms), IsEmpty()) << json::serialize(terms[0].Value);
    }
}

TEST(Analysis, RulesThatAlwaysFire)
{
    const std::vector<Term> always[] = {
        {{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}},
        {{"Lid", "NEQ", true, "OR"}, {"Lid", "NEQ", false}},
        {{"Tag", "NEQ", "x", "OR"}, {"Tag", "NEQ", "y"}},
        {{"Tag", "NEQ", "x", "OR"}, {"Tag", "EQU", "x"}},
        {{"Fan", "NEQ", "Fast"}},
        {{"Fan", "EQU", "Off", "OR"}, {"Fan", "EQU", "Low", "OR"}, {"Fan", "EQU", "High"}},
        {{"Step", "EQU", 0, "OR"}, {"Step", "EQU", 1, "OR"}, {"Step", "EQU", 2}},
        {{"Count", "NEQ", -1}},
    };
    for (const auto& terms : always) {
        EXPECT_THAT(KindsOfRule(terms), ElementsAre("always-holds")) << json::serialize(terms[0].Value);
    }
}

TEST(Analysis, TheCurrentValueCountsBesideTheChoices)
{
    EXPECT_THAT(KindsOfRule({{"Fan", "EQU", "Fast"}}, {{"Fan", "Fast"}}), IsEmpty());
    EXPECT_THAT(KindsOfRule({{"Fan", "NEQ", "Fast"}}, {{"Fan", "Fast"}}), IsEmpty());
    EXPECT_THAT(KindsOfRule({{"Count", "EQU", -1}}, {{"Count", -1}}), IsEmpty());
}

TEST(Analysis, OrdersAndFlagsAreNotDecided)
{
    EXPECT_THAT(KindsOfRule({{"Wide", "GEQ", 10, "OR"}, {"Wide", "LSS", 10}}), ElementsAre("always-holds"))
        << "these are put as tests for each number";
    EXPECT_THAT(KindsOfRule({{"Step", "GEQ", 1, "OR"}, {"Step", "LSS", 1}}), IsEmpty());
    EXPECT_THAT(KindsOfRule({{"Tag", "GTR", "x", "AND"}, {"Tag", "LSS", "a"}}), IsEmpty());
    EXPECT_THAT(KindsOfRule({{"Tag", "EQU", true, "AND", "ReadOnly"}, {"Lid", "EQU", true}}), IsEmpty());
}

TEST(Analysis, TellsWhereAndWhy)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Rule("T", "CurrentValue", "x", {{"Tag", "EQU", "a"}});
    registry.Rule("T", "CurrentValue", "x", {{"Fan", "EQU", "Fast"}});
    const std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("warning never-holds /RegistryEntries/Dependencies/1"));
    EXPECT_EQ(findings[0].Found, "a rule for CurrentValue of T that needs values of Fan that it cannot have");
    EXPECT_EQ(findings[0].Done, "it never fires");
}

TEST(Analysis, RulesForOnePropertyThatHoldTogetherAlways)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Rule("T", "ReadOnly", true, {{"Lid", "EQU", true}});
    registry.Rule("T", "Hidden", true, {{"Lid", "EQU", false}});
    EXPECT_THAT(KindsOf(FindingsOf(registry)), IsEmpty());
    registry.Rule("T", "ReadOnly", true, {{"Lid", "EQU", false}});
    const std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("warning always-holds /RegistryEntries/Dependencies/0",
                                             "warning never-changeable /RegistryEntries/Attributes/6"));
    EXPECT_EQ(findings[0].Found,
              "2 rules for ReadOnly of T, the first of them here, of which one holds whatever value Lid has");
}

TEST(Analysis, SettingsThatCanNeverBeChanged)
{
    const auto kinds = [](const json::object& members, const std::vector<Term>& terms, const char* property,
                          bool outcome) {
        RegistryBuilder registry;
        registry.Attribute("Lid", "Boolean");
        registry.Attribute("A", "Boolean", members);
        if (!terms.empty()) {
            registry.Rule("A", property, outcome, terms);
        }
        return Lines(FindingsOf(registry));
    };
    const std::string place = "/RegistryEntries/Attributes/1";
    const std::vector<Term> sometimes{{"Lid", "EQU", true}};
    EXPECT_THAT(kinds({{"ReadOnly", true}}, {}, "", true), ElementsAre("note never-changeable " + place));
    EXPECT_THAT(kinds({{"Immutable", true}}, {}, "", true), ElementsAre("note never-changeable " + place));
    EXPECT_THAT(kinds({{"ReadOnly", true}}, sometimes, "ReadOnly", true),
                ElementsAre("note never-changeable " + place));
    EXPECT_THAT(kinds({{"ReadOnly", true}}, sometimes, "ReadOnly", false), IsEmpty());
    EXPECT_THAT(kinds({}, sometimes, "ReadOnly", true), IsEmpty());
    EXPECT_THAT(kinds({{"Hidden", true}}, {}, "", true), IsEmpty()) << "it is protected";
    EXPECT_THAT(kinds({{"WriteOnly", true}}, {}, "", true), IsEmpty());
    EXPECT_THAT(
        kinds({}, {{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}}, "Hidden", true),
        ElementsAre("warning always-holds /RegistryEntries/Dependencies/0", "warning never-changeable " + place));
}

TEST(Analysis, DefaultsOutOfBounds)
{
    const auto kinds = [](const char* type, const json::object& members) {
        RegistryBuilder registry;
        registry.Attribute("A", type, members);
        return KindsOf(FindingsOf(registry));
    };
    const json::object bounds{{"LowerBound", 2}, {"UpperBound", 4}};
    const json::object lengths{{"MinLength", 2}, {"MaxLength", 4}};
    const auto with = [](json::object members, json::value value) {
        members["DefaultValue"] = std::move(value);
        return members;
    };
    for (const int inside : {2, 3, 4}) {
        EXPECT_THAT(kinds("Integer", with(bounds, inside)), IsEmpty());
    }
    for (const int outside : {1, 5}) {
        EXPECT_THAT(kinds("Integer", with(bounds, outside)), ElementsAre("default-out-of-bounds"));
    }
    for (const char* type : {"String", "Password"}) {
        EXPECT_THAT(kinds(type, with(lengths, "ab")), IsEmpty());
        EXPECT_THAT(kinds(type, with(lengths, "a")), ElementsAre("default-out-of-bounds"));
        EXPECT_THAT(kinds(type, with(lengths, "abcde")), ElementsAre("default-out-of-bounds"));
    }
    EXPECT_THAT(kinds("Integer", bounds), IsEmpty());
}

TEST(Analysis, CirclesOfRules)
{
    RegistryBuilder registry;
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        registry.Attribute(name, "Boolean");
    }
    registry.Rule("E", "Hidden", true, {{"A", "EQU", true}}); // leads into the circle, and is not on it
    registry.Rule("A", "ReadOnly", true, {{"B", "EQU", true}});
    registry.Rule("B", "CurrentValue", true, {{"C", "EQU", true}});
    EXPECT_THAT(FindingsOf(registry), IsEmpty());
    registry.Rule("C", "Hidden", true, {{"D", "EQU", true, "AND"}, {"A", "EQU", true}});
    std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("note rule-cycle /RegistryEntries/Dependencies/1"));
    EXPECT_EQ(findings[0].Found, "ReadOnly of A reads B, CurrentValue of B reads C, Hidden of C reads A");

    registry.Rule("A", "CurrentValue", true, {{"C", "EQU", true}});
    registry.Rule("C", "CurrentValue", true, {{"A", "EQU", true}});
    registry.Rule("D", "GrayOut", true, {{"D", "EQU", true}});
    findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("warning value-cycle /RegistryEntries/Dependencies/4",
                                             "note rule-cycle /RegistryEntries/Dependencies/6",
                                             "note rule-cycle /RegistryEntries/Dependencies/4"));
    EXPECT_EQ(findings[0].Found, "CurrentValue of A reads C, CurrentValue of C reads A");
    EXPECT_EQ(findings[1].Found, "GrayOut of D reads D");
    EXPECT_EQ(findings[2].Found,
              "CurrentValue of A reads C, Hidden of C reads A (of 3 attributes that are entangled so)");
}

TEST(Analysis, LongCirclesAreToldAsAWhole)
{
    constexpr int count = 20'000; // deeper than any recursion should go
    RegistryBuilder registry;
    for (int number = 0; number < count; ++number) {
        const std::string name = "A" + std::to_string(100'000 + number);
        registry.Attribute(name, "Boolean");
        registry.Rule(name, "CurrentValue", true,
                      {{"A" + std::to_string(100'000 + (number + 1) % count), "EQU", true}});
    }
    const std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(KindsOf(findings), ElementsAre("value-cycle"));
    const std::string& way = findings[0].Found;
    std::size_t steps = 0;
    for (std::size_t at = 0; (at = way.find(" reads ", at)) != std::string::npos; ++at) {
        ++steps;
    }
    EXPECT_EQ(steps, static_cast<std::size_t>(count));
}

TEST(Analysis, AnUnusableRegistryHasNoOddities)
{
    const RegistryDocument registry = ReadRegistryDocument("[]");
    EXPECT_THAT(Analyse(registry, Adapt(registry, {})), IsEmpty());
}

TEST(RepeatedKeys, AreToldAtTheirPlaces)
{
    const RegistryDocument registry = ReadRegistryDocument(R"({
        "RegistryEntries": {"Attributes": [
            {"AttributeName": "A", "Type": "String"},
            {"AttributeName": "B", "Type": "Integer", "Type": "String", "a/b": [1, {"x": 1, "x": 2}]}
        ]}, "Id": "R", "Id": "S"})");
    EXPECT_THAT(Lines(registry.Findings),
                ElementsAre("warning repeated-key /RegistryEntries/Attributes/1/Type",
                            "warning repeated-key /RegistryEntries/Attributes/1/a~1b/1/x", "warning repeated-key /Id"));
    EXPECT_EQ(registry.Registry.at("Id"), "S") << "the last one counts";
    const ValuesDocument values = ReadValuesDocument(R"({"Attributes": {"A": 1, "A": 2, "B": {"A": 3}}})");
    EXPECT_EQ(Lines(values.Findings).at(0), "warning repeated-key /Attributes/A");
    EXPECT_EQ(values.Values.at("A"), SettingValue(2));
}

TEST(RepeatedKeys, ManyAreCounted)
{
    std::string text = R"({"RegistryEntries": {"Attributes": []})";
    for (int number = 0; number < 150; ++number) {
        text += R"(, "x": 0)";
    }
    const RegistryDocument registry = ReadRegistryDocument(text + "}");
    ASSERT_EQ(registry.Findings.size(), 101U);
    EXPECT_EQ(registry.Findings.back().Found, "49 more keys that their objects have already");
}

TEST(QuotedRules, CarryNoPassword)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Attribute("Pin", "Password", {{"CurrentValue", "s3cret"}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "SOME", "s3cret"}});
    registry.Rule("Pin", "CurrentValue", "s3cret", {{"Lid", "SOME", true}});
    registry.Rule("T", "ReadOnly", true, {{"pin", "EQU", "s3cret(", "", "DefaultValue"}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "EQU", "s3cret("}});
    registry.RawRule(
        json::parse(R"({"Dependency": {"MapFrom": {"MapFromAttribute": "PIN", "mapfromvalue": ["s3cret"]}}})"));
    registry.Rule("T", "ReadOnly", true, {{"Lid", "SOME", "told"}});
    const Adaptation adapted = AdaptRegistry(registry.Json());
    std::size_t quoted = 0;
    for (const Finding& finding : adapted.Findings) {
        EXPECT_EQ((finding.Found + finding.Done).find("s3cret"), std::string::npos) << finding.Found << finding.Done;
        quoted += finding.Done.find("********") != std::string::npos ? 1U : 0U;
    }
    EXPECT_EQ(quoted, 5U);
    EXPECT_NE(adapted.Findings.back().Done.find("\"told\""), std::string::npos);
}

} // namespace
