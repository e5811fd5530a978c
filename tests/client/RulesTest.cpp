#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// What is repaired in rules apart from their form, and which are left out.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char firstRule[] = "/RegistryEntries/Dependencies/0";

RegistryBuilder Builder()
{
    RegistryBuilder registry;
    registry.Attribute(
        "Mode", "Enumeration",
        {{"Value", {RegistryBuilder::Choice("Uefi", "UEFI Mode"), RegistryBuilder::Choice("Legacy", "Legacy Mode")}}});
    registry.Attribute("Level", "Integer", {{"LowerBound", 0}, {"UpperBound", 9}});
    registry.Attribute("Switch", "Boolean");
    registry.Attribute("Text", "String");
    registry.Attribute("Target", "Boolean");
    return registry;
}

/** One rule for Target.ReadOnly with these terms, joined from the left. */
Adaptation OneRule(const std::vector<Term>& terms, const SettingValueMap& values = {})
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "ReadOnly", true, terms);
    Adaptation adapted = AdaptRegistry(registry.Json(), values);
    ExpectStable(adapted);
    return adapted;
}

TEST(RuleTargets, TakeAFlagsOutcomeAsText)
{
    for (const json::value& value : {json::value("true"), json::value("TRUE"), json::value(1)}) {
        RegistryBuilder registry = Builder();
        registry.Rule("Target", "GrayOut", value, {Term{"Mode", "EQU", "Uefi"}});
        const Adaptation adapted = AdaptRegistry(registry.Json(), {{"Mode", std::string("Uefi")}});
        EXPECT_THAT(AdaptedRules(adapted), ElementsAre("(Mode EQU Uefi) Target.GrayOut true"));
        EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("note outcome-of-other-type ") + firstRule));
        EXPECT_TRUE(StatusOfAll(adapted).at("Target").GrayOut.Value);
    }
}

TEST(RuleTargets, LeaveOutAFlagsOutcomeThatIsNoBoolean)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "GrayOut", "yes", {Term{"Mode", "EQU", "Uefi"}});
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_THAT(AdaptedRules(adapted), IsEmpty());
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("error outcome-of-other-type ") + firstRule));
}

TEST(RuleTargets, ThatAreMenusOrUnknownAreLeftOut)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Main", "Hidden", true, {Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Nowhere", "Hidden", true, {Term{"Mode", "EQU", "Uefi"}});
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = {{{"MenuName", "Main"}}};
    const Adaptation adapted = AdaptRegistry(document);
    EXPECT_THAT(AdaptedRules(adapted), IsEmpty());
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre("warning menu-target /RegistryEntries/Dependencies/0",
                                                     "warning unknown-target /RegistryEntries/Dependencies/1"));
}

TEST(RuleTargets, WithPropertiesThatTheLibraryDoesNotKnowAreLeftOut)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "Value", json::array{"x"}, {Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Target", "LowerBound", json::array{}, {Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Target", "readonly", true, {Term{"Mode", "EQU", "Uefi"}});
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_THAT(AdaptedRules(adapted), ElementsAre("(Mode EQU Uefi) Target.ReadOnly true"));
    EXPECT_THAT(Lines(adapted.Findings),
                ElementsAre("warning unsupported-target-property /RegistryEntries/Dependencies/0",
                            "warning unsupported-target-property /RegistryEntries/Dependencies/1",
                            "note key-name /RegistryEntries/Dependencies/2"));
}

TEST(RuleTargets, OfOppositeOutcomesTheFirstCounts)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "ReadOnly", true, {Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Target", "ReadOnly", false, {Term{"Mode", "EQU", "Legacy"}});
    registry.Rule("Target", "ReadOnly", true, {Term{"Mode", "EQU", "Legacy"}});
    registry.Rule("Mode", "CurrentValue", "Uefi", {Term{"Level", "EQU", 1}});
    registry.Rule("Mode", "CurrentValue", "Legacy Mode", {Term{"Level", "EQU", 2}});
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_THAT(AdaptedRules(adapted),
                ElementsAre("(Mode EQU Uefi) Target.ReadOnly true", "(Mode EQU Legacy) Target.ReadOnly true",
                            R"((Level EQU 1) Mode.CurrentValue "Uefi")",
                            R"((Level EQU 2) Mode.CurrentValue "Legacy")"));
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre("error opposite-outcome /RegistryEntries/Dependencies/1",
                                                     "note display-name-for-value /RegistryEntries/Dependencies/4"));
    EXPECT_THAT(adapted.PublishedRule, ElementsAre(0, 2, 3, 4));
}

TEST(RuleTerms, OnUnknownAttributesNeverHold)
{
    const struct {
        std::vector<Term> terms;
        std::vector<std::string> rules;
        std::vector<std::string> findings;
    } rows[] = {
        {{Term{"Mode", "EQU", "Uefi"}, Term{"Gone", "EQU", "x", "OR"}},
         {"(Mode EQU Uefi) Target.ReadOnly true"},
         {std::string("warning unknown-source ") + firstRule}},
        {{Term{"Mode", "EQU", "Uefi"}, Term{"Gone", "NEQ", "x", "AND"}},
         {},
         {std::string("warning unknown-source ") + firstRule, std::string("warning never-holds ") + firstRule}},
        {{Term{"Gone", "EQU", nullptr}},
         {},
         {std::string("warning unknown-source ") + firstRule, std::string("warning never-holds ") + firstRule}},
        {{Term{"Mode", "EQU", "Uefi"}, Term{"Mode", "NEQ", "Uefi", "AND"}},
         {},
         {std::string("warning never-holds ") + firstRule}},
    };
    for (const auto& row : rows) {
        const Adaptation adapted = OneRule(row.terms);
        EXPECT_EQ(AdaptedRules(adapted), row.rules);
        EXPECT_EQ(Lines(adapted.Findings), row.findings);
    }
}

TEST(RuleTerms, OnTheControllerDoNotCount)
{
    Adaptation adapted = OneRule({Term{"Mode", "EQU", "Uefi"}, Term{"SYSACS", "EQU", "x", "AND"}});
    EXPECT_THAT(AdaptedRules(adapted), ElementsAre("(Mode EQU Uefi) Target.ReadOnly true"));
    adapted = OneRule({Term{"SYSACS", "EQU", "x"}});
    EXPECT_THAT(AdaptedRules(adapted), IsEmpty());
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("note controller-term ") + firstRule,
                                                     std::string("note controller-term ") + firstRule));
}

TEST(RuleTerms, TakeNamesAndConditionsInOtherCase)
{
    const Adaptation adapted =
        OneRule({Term{"mode", "equ", "Uefi", "", "currentvalue"}, Term{"Mode", "EQ", "Legacy", "OR"}});
    EXPECT_THAT(AdaptedRules(adapted),
                ElementsAre("(Mode EQU Uefi) Target.ReadOnly true", "(Mode EQU Legacy) Target.ReadOnly true"));
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("note name-in-other-case ") + firstRule));
}

TEST(RuleTerms, CompareWithValueNamesAndTypedValues)
{
    const struct {
        Term term;
        std::string rule;
        std::vector<std::string> findings;
    } rows[] = {
        {{"Mode", "EQU", "UEFI Mode"}, "Mode EQU Uefi", {"note display-name-for-value"}},
        {{"Mode", "EQU", "Other"}, "Mode EQU Other", {"warning value-not-a-choice"}},
        {{"Level", "EQU", "5"}, "Level EQU 5", {"note value-of-other-type"}},
        {{"Level", "EQU", "five"}, "Level EQU five", {"warning value-of-other-type"}},
        {{"Switch", "NEQ", "True"}, "Switch NEQ true", {"note value-of-other-type"}},
        {{"Switch", "NEQ", true}, "Switch NEQ true", {}},
        {{"Mode", "EQU", nullptr}, "Mode EQU null", {}},
        {{"Text", "EQU", "x"}, "Text.CurrentValue  EQU x ", {}}, // which may be empty
        {{"Mode", "EQU", "true", "", "Hidden"}, "Mode.Hidden EQU true", {}},
    };
    for (const auto& row : rows) {
        const Adaptation adapted = OneRule({row.term});
        EXPECT_THAT(AdaptedRules(adapted), ElementsAre("(" + row.rule + ") Target.ReadOnly true"));
        std::vector<std::string> findings;
        for (const std::string& finding : row.findings) {
            findings.push_back(finding + " " + firstRule);
        }
        EXPECT_EQ(Lines(adapted.Findings), findings);
    }
}

TEST(RuleTerms, ThatCannotBeReadAreToldOneByOne)
{
    const Adaptation adapted =
        OneRule({Term{"Mode", "XYZ", "Uefi"}, Term{"Mode", "GTR", nullptr, "OR"},
                 Term{"Mode", "EQU", json::array{}, "OR"}, Term{"Mode", "EQU", "x", "OR", "DefaultValue"},
                 Term{"", "EQU", "x", "OR"}, Term{"Mode", "EQU", "x", "OR", "Hidden"}});
    EXPECT_THAT(AdaptedRules(adapted), IsEmpty());
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("error unsupported-condition ") + firstRule,
                                                     std::string("error unsupported-condition ") + firstRule,
                                                     std::string("error unusable-rule ") + firstRule,
                                                     std::string("error unsupported-source-property ") + firstRule,
                                                     std::string("error unusable-rule ") + firstRule,
                                                     std::string("error unsupported-condition ") + firstRule));
}

TEST(RuleTerms, AnEmptyValueIsComparedAsWell)
{
    for (const char* held : {"", "x", " "}) {
        for (const char* wanted : {"", "x", " "}) {
            const Adaptation adapted = OneRule({Term{"Text", "EQU", wanted}}, {{"Text", std::string(held)}});
            const PropertyState state = StatusOfAll(adapted).at("Target").ReadOnly;
            EXPECT_EQ(state.Value, std::string(held) == wanted)
                << "'" << held << "' '" << wanted << "' " << state.Reason;
            EXPECT_FALSE(SaysCannotDecide(state.Reason));
        }
    }
}

TEST(RuleTerms, OrderNumbersByTheirValue)
{
    const struct {
        json::object bounds;
        bool isPut;
    } rows[] = {
        {{{"LowerBound", 0}, {"UpperBound", 9}}, true},          // as texts
        {{{"LowerBound", -3}, {"UpperBound", 12}}, true},        // one by one
        {{{"LowerBound", 0}, {"UpperBound", 1'000'000}}, false}, // neither
        {{}, false},
    };
    for (const auto& row : rows) {
        for (const char* condition : {"GTR", "GEQ", "LSS", "LEQ"}) {
            for (const std::int64_t held : {0, 4, 5, 6, 9}) {
                RegistryBuilder registry;
                registry.Attribute("Count", "Integer", row.bounds).Attribute("Target", "Boolean");
                registry.Rule("Target", "Hidden", true, {Term{"Count", condition, 5}});
                const Adaptation adapted = AdaptRegistry(registry.Json(), {{"Count", held}});
                ExpectStable(adapted);
                if (!row.isPut) {
                    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("error inexpressible ") + firstRule));
                    continue;
                }
                const std::string name = condition;
                const bool expected = name == "GTR"   ? held > 5
                                      : name == "GEQ" ? held >= 5
                                      : name == "LSS" ? held < 5
                                                      : held <= 5;
                EXPECT_EQ(StatusOfAll(adapted).at("Target").Hidden.Value, expected) << condition << " " << held;
            }
        }
    }
}

TEST(RuleTerms, OfAnAttributeWithoutAValueNothingHoldsButUnequal)
{
    for (const char* condition : {"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ"}) {
        for (const char* attribute : {"Mode", "Level"}) {
            const json::value value = attribute == std::string("Mode") ? json::value("Legacy") : json::value(5);
            const Adaptation adapted = OneRule({Term{attribute, condition, value}});
            EXPECT_EQ(StatusOfAll(adapted).at("Target").ReadOnly.Value, condition == std::string("NEQ")) << condition;
        }
    }
}

TEST(InexpressibleRules, CompareWithOperatorsOrKeys)
{
    for (const char* value : {"A(B)", "a=b", "a!", "Mode.CurrentValue", "xMode exist", "x Mode.ReadOnly"}) {
        const Adaptation adapted = OneRule({Term{"Text", "EQU", value}});
        EXPECT_THAT(AdaptedRules(adapted), IsEmpty()) << value;
        EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("error inexpressible ") + firstRule)) << value;
    }
    EXPECT_THAT(OneRule({Term{"Text", "EQU", "Other.CurrentValue"}}).Findings, IsEmpty());
}

TEST(InexpressibleRules, ReadAValueWithOperatorsAndStayAsASafeguard)
{
    const Adaptation adapted = OneRule({Term{"Text", "EQU", "x"}}, {{"Text", std::string("Usb (front)")}});
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("error inexpressible ") + firstRule));
    const PropertyState state = StatusOfAll(adapted).at("Target").ReadOnly;
    EXPECT_TRUE(state.Value);
    EXPECT_TRUE(SaysCannotDecide(state.Reason));
}

TEST(InexpressibleRules, ChoicesWithOperatorsAreToldOnce)
{
    RegistryBuilder registry;
    registry.Attribute("Boot", "Enumeration", {{"Value", {RegistryBuilder::Choice("Usb (front)", "")}}});
    registry.Attribute("Target", "Boolean");
    registry.Rule("Target", "ReadOnly", true, {Term{"Boot", "EQU", "Disk"}});
    registry.Rule("Target", "Hidden", true, {Term{"Boot", "EQU", "Disk"}});
    const auto lines = Lines(AdaptRegistry(registry.Json()).Findings);
    EXPECT_EQ(
        std::count(lines.begin(), lines.end(), "warning value-with-operators /RegistryEntries/Attributes/0/Value"), 1);
}

TEST(InexpressibleRules, ReadAnAttributeWhoseNameEndsInThatOfAnEarlierOne)
{
    RegistryBuilder registry;
    registry.Attribute("BootMode", "String", {{"MinLength", 1}})
        .Attribute("SecureBootMode", "String", {{"MinLength", 1}});
    registry.Attribute("XBoot", "String", {{"MinLength", 1}}).Attribute("Boot", "String", {{"MinLength", 1}});
    registry.Attribute("ZMode", "String", {{"MinLength", 1}}).Attribute("AZMode", "String", {{"MinLength", 1}});
    registry.Rule("Boot", "ReadOnly", true, {Term{"SecureBootMode", "EQU", "x"}});
    registry.Rule("Boot", "ReadOnly", true, {Term{"BootMode", "EQU", "x"}});
    registry.Rule("Boot", "ReadOnly", true, {Term{"AZMode", "EQU", "x"}});  // put in first itself
    registry.Rule("Boot", "ReadOnly", true, {Term{"AZMode", "EQU", "Ax"}}); // but without a value, "A" and ZMode's
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_THAT(AdaptedRules(adapted),
                ElementsAre("(BootMode EQU x) Boot.ReadOnly true", "(AZMode EQU x) Boot.ReadOnly true"));
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre("error inexpressible /RegistryEntries/Dependencies/0",
                                                     "error inexpressible /RegistryEntries/Dependencies/3"));
}

TEST(InexpressibleRules, ReadNoValueWhereTheNameEndsInThatOfAnAttributeWhoseValueHasOperators)
{
    RegistryBuilder registry;
    registry.Attribute("Profile", "String", {{"MinLength", 1}}).Attribute("BaseProfile", "String", {{"MinLength", 1}});
    registry.Attribute("Target", "Boolean");
    registry.Rule("Target", "ReadOnly", true, {Term{"BaseProfile", "EQU", "x"}});
    const SettingValueMap values{{"Profile", std::string("Compute(HPC)")}};
    const Adaptation adapted = AdaptRegistry(registry.Json(), values);
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre(std::string("error inexpressible ") + firstRule));
    EXPECT_TRUE(SaysCannotDecide(StatusOfAll(adapted).at("Target").ReadOnly.Reason));

    SettingValueMap both = values;
    both["BaseProfile"] = std::string("x");
    const Adaptation exact = AdaptRegistry(registry.Json(), both);
    EXPECT_THAT(exact.Findings, IsEmpty());
    EXPECT_TRUE(StatusOfAll(exact).at("Target").ReadOnly.Value);
}

TEST(RuleLists, OfOtherKindsAreTold)
{
    RegistryBuilder registry = Builder();
    for (const char* rule :
         {"5", "{}", R"({"Dependency": 5})", R"({"Dependency": {"MapFrom": {}}})",
          R"({"Dependency": {"MapFrom": [{"MapFromAttribute": "Mode"}]}})",
          R"({"Dependency": {"MapFrom": [{"MapFromAttribute": "Mode"}], "MapToAttribute": "Target"}})"}) {
        registry.RawRule(json::parse(rule));
    }
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_THAT(AdaptedRules(adapted), IsEmpty());
    std::vector<std::string> expected;
    for (int position = 0; position < 6; ++position) {
        expected.push_back("error unusable-rule /RegistryEntries/Dependencies/" + std::to_string(position));
    }
    EXPECT_EQ(Lines(adapted.Findings), expected);

    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Dependencies"] = "none";
    EXPECT_THAT(Lines(AdaptRegistry(document).Findings), ElementsAre("error wrong-kind /RegistryEntries/Dependencies"));
}

TEST(RuleLists, TakeOtherSpellingsOfKeys)
{
    RegistryBuilder registry = Builder();
    registry.RawRule(
        json::parse(R"({"dependency": {"mapfrom": [{"MapfromAttribute": "Mode", "MapFromproperty": "CurrentValue",
        "mapfromcondition": "EQU", "mapfromvalue": "Uefi"}], "maptoattribute": "Target", "MaptoProperty": "Hidden", "MapTovalue": true}})"));
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_THAT(AdaptedRules(adapted), ElementsAre("(Mode EQU Uefi) Target.Hidden true"));
    EXPECT_EQ(adapted.Findings.size(), 9U);
}

} // namespace
