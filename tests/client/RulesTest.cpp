#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// What rules are read as, apart from their forms: targets, properties, outcomes and terms.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::size_t positionOfTarget = 5; // among the attributes of Builder()

RegistryBuilder Builder()
{
    return OneOfEachType().Attribute("Target", "Boolean");
}

/** The model of Builder() and one rule, which is true when Mode is Uefi. */
std::shared_ptr<const Model> WithOutcome(const std::string& target, const std::string& property,
                                         const json::value& outcome)
{
    return ModelOf(Builder().Rule(target, property, outcome, {Term{"Mode", "EQU", "Uefi"}}).Json());
}

/** The model of Builder() and one rule for Target.ReadOnly with these terms. */
std::shared_ptr<const Model> WithTerms(const std::vector<Term>& terms)
{
    return ModelOf(Builder().Rule("Target", "ReadOnly", true, terms).Json());
}

/** Findings about the first rule, without its pointer: "note key-name". Others as they are. */
std::vector<std::string> ShortLines(const Model& model)
{
    std::vector<std::string> lines = Lines(model.Findings());
    for (std::string& line : lines) {
        const std::string first = " /RegistryEntries/Dependencies/0";
        if (line.size() > first.size() && line.compare(line.size() - first.size(), first.size(), first) == 0) {
            line.erase(line.size() - first.size());
        }
    }
    return lines;
}

json::value WithMenus(const RegistryBuilder& registry, const char* menus)
{
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::parse(menus);
    return document;
}

TEST(RuleTargets, AreAttributesInAnyLetterCase)
{
    auto model = WithOutcome("Target", "ReadOnly", true);
    EXPECT_EQ(model->Rules().at(0).Target, positionOfTarget);
    EXPECT_THAT(model->Rules().at(0).TargetMenus, IsEmpty());
    EXPECT_THAT(RuleLines(*model), ElementsAre("0: Target.ReadOnly = true when Mode == Uefi"));
    EXPECT_EQ(model->PointerToRule(0), "/RegistryEntries/Dependencies/0");
    EXPECT_THAT(model->Findings(), IsEmpty());

    model = WithOutcome("TARGET", "ReadOnly", true);
    EXPECT_EQ(model->Rules().at(0).Target, positionOfTarget);
    EXPECT_EQ(model->Rules().at(0).TargetName, "Target");
    EXPECT_EQ(model->Rules().at(0).DependencyFor, "TARGET"); // as published
    EXPECT_THAT(ShortLines(*model), ElementsAre("note name-in-other-case"));
    EXPECT_EQ(model->Findings()[0].Attribute, "Target");
    EXPECT_EQ(model->Findings()[0].Rule, 0U);
}

TEST(RuleTargets, ThatAreUnknownLeaveTheRuleOut)
{
    const auto model = ModelOf(Builder()
                                   .Rule("Nowhere", "Hidden", true, {Term{"Mode", "EQU", "Uefi"}})
                                   .Rule("Target", "Hidden", true, {Term{"Mode", "EQU", "Uefi"}})
                                   .Json());
    EXPECT_THAT(RuleLines(*model), ElementsAre("1: Target.Hidden = true when Mode == Uefi"));
    EXPECT_EQ(model->PointerToRule(0), "/RegistryEntries/Dependencies/1");
    ASSERT_THAT(ShortLines(*model), ElementsAre("warning unknown-target"));
    EXPECT_EQ(model->Findings()[0].Found, R"(the target "Nowhere" is neither an attribute nor a menu)");
    EXPECT_EQ(model->Findings()[0].Attribute, "");
    EXPECT_EQ(model->Findings()[0].Rule, 0U);
}

TEST(RuleTargets, MayBeMenusOfWhichAllAttributesBelowAreMeant)
{
    RegistryBuilder registry;
    registry.Attribute("InMain", "String", {{"MenuPath", "./Main"}});
    registry.Attribute("InDeep", "String", {{"MenuPath", "./Main/Deep"}});
    registry.Attribute("InOther", "String", {{"MenuPath", "./Other"}});
    registry.Attribute("Nowhere", "String");
    registry.Attribute("Source", "String");
    registry.Rule("Main", "Hidden", true, {Term{"Source", "EQU", "a"}});
    registry.Rule("Deep", "ReadOnly", true, {Term{"Source", "EQU", "b"}});
    registry.Rule("OTHER", "GrayOut", true, {Term{"Source", "EQU", "c"}});
    registry.Rule("InDeep", "ReadOnly", true, {Term{"Source", "EQU", "d"}});
    const auto model = ModelOf(WithMenus(registry, R"([{"MenuName": "Main", "MenuPath": "./Main"},
        {"MenuName": "Deep", "MenuPath": "./Main/Deep", "Hidden": true}, {"MenuName": "Other", "MenuPath": "./"}])"));
    EXPECT_THAT(model->Findings(), IsEmpty());
    EXPECT_EQ(model->Rules().at(0).Target, noAttribute);
    EXPECT_THAT(model->Rules().at(0).TargetMenus, ElementsAre(0));
    EXPECT_THAT(model->Rules().at(2).TargetMenus, ElementsAre(2)); // ignoring case
    EXPECT_THAT(RuleLines(*model),
                ElementsAre("0: Main.Hidden = true when Source == a", "1: Deep.ReadOnly = true when Source == b",
                            "2: OTHER.GrayOut = true when Source == c", "3: InDeep.ReadOnly = true when Source == d"));

    EXPECT_THAT(Listed(model->RulesFor(0, Property::Hidden)), ElementsAre(0));
    EXPECT_THAT(Listed(model->RulesFor(1, Property::Hidden)), ElementsAre(0));
    EXPECT_THAT(Listed(model->RulesFor(2, Property::Hidden)), IsEmpty());
    EXPECT_THAT(Listed(model->RulesFor(3, Property::Hidden)), IsEmpty());
    EXPECT_THAT(Listed(model->RulesFor(0, Property::ReadOnly)), IsEmpty());
    EXPECT_THAT(Listed(model->RulesFor(1, Property::ReadOnly)), ElementsAre(1, 3));
    EXPECT_THAT(Listed(model->RulesFor(2, Property::GrayOut)), ElementsAre(2));

    EXPECT_THAT(Listed(model->MenusOf(0)), ElementsAre(0));
    EXPECT_THAT(Listed(model->MenusOf(1)), ElementsAre(0, 1));
    EXPECT_THAT(Listed(model->MenusOf(2)), ElementsAre(2));
    EXPECT_THAT(Listed(model->MenusOf(3)), IsEmpty());
    EXPECT_FALSE(model->FlagsOf(0).Has(Property::Hidden));
    EXPECT_TRUE(model->FlagsOf(1).Has(Property::Hidden));
    EXPECT_FALSE(model->Attributes()[1].Flags.Has(Property::Hidden));
}

TEST(RuleTargets, ThatNameAnAttributeAndAMenuAreTheAttribute)
{
    RegistryBuilder registry;
    registry.Attribute("Main", "String").Attribute("A", "String", {{"MenuPath", "./Main"}});
    registry.Rule("main", "Hidden", true, {Term{"A", "EQU", "x"}});
    const auto model = ModelOf(WithMenus(registry, R"([{"MenuName": "main", "MenuPath": "./Main"}])"));
    EXPECT_EQ(model->Rules().at(0).Target, 0U);
    EXPECT_THAT(model->Rules().at(0).TargetMenus, IsEmpty());
    EXPECT_THAT(Listed(model->RulesFor(1, Property::Hidden)), IsEmpty());
}

TEST(RuleTargets, MayBeSeveralMenusOfOneName)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MenuPath", "./One/Same"}})
        .Attribute("B", "String", {{"MenuPath", "./Two/Same"}});
    registry.Attribute("C", "String", {{"MenuPath", "./One"}})
        .Attribute("D", "String", {{"MenuPath", "./One/Same/One/Same"}});
    registry.Rule("Same", "Hidden", true, {Term{"C", "EQU", "x"}});
    const auto model = ModelOf(WithMenus(registry, R"([{"MenuName": "Same", "MenuPath": "./One/Same"},
        {"MenuName": "Same", "MenuPath": "./Two/Same"}, {"MenuName": "Same", "MenuPath": "./One/Same/One/Same"}])"));
    EXPECT_THAT(model->Rules().at(0).TargetMenus, ElementsAre(0, 1, 2));
    for (const std::size_t attribute : {0U, 1U, 3U}) {
        EXPECT_THAT(Listed(model->RulesFor(attribute, Property::Hidden)), ElementsAre(0)) << attribute;
    }
    EXPECT_THAT(Listed(model->RulesFor(2, Property::Hidden)), IsEmpty());
    EXPECT_THAT(Listed(model->MenusOf(3)), ElementsAre(0, 2));
}

TEST(RuleTargets, ThatAreMenusHaveNoValueOfTheirOwn)
{
    for (const char* property : {"CurrentValue", "DefaultValue"}) {
        const RegistryBuilder registry = Builder().Rule("Main", property, "x", {Term{"Mode", "EQU", "Uefi"}});
        const auto model = ModelOf(WithMenus(registry, R"([{"MenuName": "Main", "MenuPath": "./Main"}])"));
        EXPECT_THAT(model->Rules(), IsEmpty());
        EXPECT_THAT(ShortLines(*model), ElementsAre("warning menu-target"));
    }
}

TEST(RuleProperties, AreAllThatAttributesHave)
{
    for (std::size_t number = 0; number < propertyCount; ++number) {
        const auto property = static_cast<Property>(number);
        const json::value outcome = IsFlag(property) ? json::value(true) : json::value("1");
        const auto model = WithOutcome("Level", std::string(Name(property)), outcome);
        ASSERT_EQ(model->Rules().size(), 1U) << Name(property);
        EXPECT_EQ(model->Rules()[0].Decides, property);
        for (std::size_t other = 0; other < propertyCount; ++other) {
            EXPECT_EQ(model->RulesFor(1, static_cast<Property>(other)).size(), other == number ? 1U : 0U);
        }
        EXPECT_TRUE(model->RulesFor(0, property).empty());
        EXPECT_TRUE(model->RulesFor(2, property).empty());
    }
}

TEST(RuleProperties, InOtherLetterCaseAreReadAndOthersLeaveTheRuleOut)
{
    auto model = WithOutcome("Target", "readonly", true);
    EXPECT_THAT(RuleLines(*model), ElementsAre("0: Target.ReadOnly = true when Mode == Uefi"));
    EXPECT_THAT(ShortLines(*model), ElementsAre("note key-name"));

    model = WithOutcome("Target", "Choices", true);
    EXPECT_THAT(model->Rules(), IsEmpty());
    EXPECT_THAT(ShortLines(*model), ElementsAre("warning unsupported-target-property"));

    model = WithOutcome("Target", "", true);
    EXPECT_THAT(model->Rules(), IsEmpty());
    EXPECT_THAT(ShortLines(*model), ElementsAre("error unusable-rule"));
}

TEST(RuleOutcomes, AreOfThePropertysTypeWhereTheyCanBe)
{
    const struct {
        const char* Target;
        const char* Property;
        const char* Published;
        const char* Line; ///< of the rule, up to the condition; empty: it is left out
        std::vector<std::string> Findings;
    } rows[] = {
        {"Target", "GrayOut", "true", "Target.GrayOut = true", {}},
        {"Target", "GrayOut", "false", "Target.GrayOut = false", {}},
        {"Target", "GrayOut", R"("TRUE")", "Target.GrayOut = true", {"note outcome-of-other-type"}},
        {"Target", "GrayOut", "1", "Target.GrayOut = true", {"note outcome-of-other-type"}},
        {"Target", "ResetRequired", R"("False")", "Target.ResetRequired = false", {"note outcome-of-other-type"}},
        {"Target", "GrayOut", R"("yes")", "", {"error outcome-of-other-type"}},
        {"Target", "GrayOut", "2", "", {"error outcome-of-other-type"}},
        {"Target", "GrayOut", "[true]", "", {"error outcome-of-other-type"}},
        {"Target", "GrayOut", "null", "", {"error unusable-rule"}},
        {"Level", "LowerBound", "3", "Level.LowerBound = 3", {}},
        {"Level", "LowerBound", R"("-3")", "Level.LowerBound = -3", {"note outcome-of-other-type"}},
        {"Level", "ScalarIncrement", "5.0", "Level.ScalarIncrement = 5", {}},
        {"Level", "UpperBound", R"("many")", "", {"error outcome-of-other-type"}},
        {"Level", "UpperBound", "true", "", {"error outcome-of-other-type"}},
        {"Level", "UpperBound", "1.5", "", {"error outcome-of-other-type"}},
        {"Text", "MaxLength", R"("0x10")", "Text.MaxLength = 16", {"note outcome-of-other-type"}},
        {"Text", "HelpText", R"("Some help")", "Text.HelpText = \"Some help\"", {}},
        {"Text", "WarningText", "5", "Text.WarningText = 5", {"note outcome-of-other-type"}},
        {"Text", "DisplayName", R"("")", "Text.DisplayName = \"\"", {}},
        {"Text", "HelpText", "{}", "", {"error outcome-of-other-type"}},
        {"Level", "CurrentValue", R"("7")", "Level.CurrentValue = 7", {"note outcome-of-other-type"}},
        {"Level", "CurrentValue", R"("seven")", "Level.CurrentValue = seven", {}},
        {"Level", "DefaultValue", "7", "Level.DefaultValue = 7", {}},
        {"Level", "CurrentValue", "[7]", "", {"error outcome-of-other-type"}},
        {"Switch", "CurrentValue", R"("True")", "Switch.CurrentValue = true", {"note outcome-of-other-type"}},
        {"Mode", "CurrentValue", R"("UEFI Mode")", "Mode.CurrentValue = \"UEFI Mode\"", {}},
        {"Key", "CurrentValue", R"("secret")", "Key.CurrentValue = ********", {}},
        {"Mode", "Value", R"(["Uefi"])", "Mode.Value = one of Uefi", {}},
        {"Mode", "Value", R"(["Legacy Mode", 5, true])", "Mode.Value = one of \"Legacy Mode\", 5, true", {}},
        {"Mode",
         "Value",
         R"([{"ValueName": "Uefi", "ValueDisplayName": "UEFI Mode"}, {"valuename": "Legacy"}])",
         "Mode.Value = one of Uefi, Legacy",
         {}},
        {"Mode", "Value", R"("Uefi")", "Mode.Value = one of Uefi", {}},
        {"Mode", "Value", "[]", "Mode.Value = one of none", {}},
        {"Mode", "Value", "[[]]", "", {"error outcome-of-other-type"}},
        {"Mode", "Value", R"(["Uefi", null])", "", {"error outcome-of-other-type"}},
        {"Mode", "Value", R"([{"ValueDisplayName": "UEFI Mode"}])", "", {"error outcome-of-other-type"}},
        {"Mode", "Value", "null", "", {"error unusable-rule"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.Target) + "." + row.Property + " " + row.Published);
        const auto model = WithOutcome(row.Target, row.Property, json::parse(row.Published));
        const std::vector<std::string> lines = RuleLines(*model);
        EXPECT_EQ(ShortLines(*model), row.Findings);
        if (std::string_view(row.Line).empty()) {
            EXPECT_THAT(lines, IsEmpty());
        } else {
            EXPECT_THAT(lines, ElementsAre("0: " + std::string(row.Line) + " when Mode == Uefi"));
        }
        for (const Finding& finding : model->Findings()) {
            EXPECT_EQ(finding.Attribute, row.Target);
            EXPECT_EQ(finding.Rule, 0U);
        }
    }
}

TEST(RuleOutcomes, OfRulesForOnePropertyMayDiffer)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "ReadOnly", true, {Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Target", "ReadOnly", false, {Term{"Mode", "EQU", "Legacy"}});
    const auto model = ModelOf(registry.Json());
    EXPECT_THAT(Listed(model->RulesFor(positionOfTarget, Property::ReadOnly)), ElementsAre(0, 1));
    EXPECT_THAT(model->Findings(), IsEmpty()); // only with values it shows whether both hold
}

TEST(RuleTerms, CompareWithOperandsOfTheSourcesType)
{
    const struct {
        Term Published;
        const char* Condition;
        std::vector<std::string> Findings;
    } rows[] = {
        {{"Mode", "EQU", "Uefi"}, "Mode == Uefi", {}},
        {{"Mode", "NEQ", "UEFI Mode"}, "Mode != \"UEFI Mode\"", {}}, // the same choice
        {{"Mode", "EQU", "Other"}, "Mode == Other", {"warning value-not-a-choice"}},
        {{"Mode", "EQU", 5}, "Mode == 5", {"note value-of-other-type", "warning value-not-a-choice"}},
        {{"Level", "EQU", 5}, "Level == 5", {}},
        {{"Level", "EQU", 5.0}, "Level == 5", {}},
        {{"Level", "GTR", "5"}, "Level > 5", {"note value-of-other-type"}},
        {{"Level", "GEQ", " 0x10 "}, "Level >= 16", {"note value-of-other-type"}},
        {{"Level", "EQU", "five"}, "Level == five", {"warning value-of-other-type"}},
        {{"Level", "LSS", true}, "Level < true", {"warning value-of-other-type", "warning order-of-texts"}},
        {{"Level", "LEQ", -5}, "Level <= -5", {}},
        {{"Switch", "NEQ", "True"}, "Switch != true", {"note value-of-other-type"}},
        {{"Switch", "NEQ", 0}, "Switch != false", {"note value-of-other-type"}},
        {{"Switch", "NEQ", true}, "Switch != true", {}},
        {{"Switch", "GTR", true}, "Switch > true", {"warning order-of-texts"}},
        {{"Text", "EQU", "two words"}, "Text == \"two words\"", {}},
        {{"Text", "EQU", ""}, "Text == \"\"", {}},
        {{"Text", "EQU", "a=b"}, "Text == \"a=b\"", {}},
        {{"Text", "EQU", 5}, "Text == 5", {"note value-of-other-type"}},
        {{"Text", "GTR", "5"}, "Text > 5", {}},
        {{"Text", "GTR", "x"}, "Text > x", {"warning order-of-texts"}},
        {{"Mode", "GTR", "Uefi"}, "Mode > Uefi", {"warning order-of-texts"}},
        {{"Key", "EQU", "secret"}, "Key == ********", {}},
        {{"Key", "GTR", "secret"}, "Key > ********", {}},
        {{"Mode", "EQU", nullptr}, "Mode has no value", {}},
        {{"Level", "NEQ", nullptr}, "Level has a value", {}},
        {{"Key", "EQU", nullptr}, "Key has no value", {}},
    };
    for (const auto& row : rows) {
        const auto model = WithTerms({row.Published});
        ASSERT_EQ(model->Rules().size(), 1U);
        EXPECT_EQ(ToText(model->Rules()[0].When), row.Condition);
        EXPECT_EQ(ShortLines(*model), row.Findings) << row.Condition;
        EXPECT_EQ(model->Rules()[0].When.What, Condition::Kind::Test) << row.Condition;
    }
}

TEST(RuleTerms, MayAskAboutFlags)
{
    const struct {
        Term Published;
        const char* Condition;
        std::vector<std::string> Findings;
    } rows[] = {
        {{"Mode", "EQU", true, "", "Hidden"}, "Mode.Hidden == true", {}},
        {{"Mode", "NEQ", false, "", "ReadOnly"}, "Mode.ReadOnly != false", {}},
        {{"Mode", "EQU", "true", "", "GrayOut"}, "Mode.GrayOut == true", {}},
        {{"Level", "EQU", 0, "", "Immutable"}, "Level.Immutable == false", {}},
        {{"Key", "EQU", true, "", "WriteOnly"}, "Key.WriteOnly == true", {}},
        {{"Text", "EQU", true, "", "IsSystemUniqueProperty"}, "Text.IsSystemUniqueProperty == true", {}},
        {{"Mode", "EQU", true, "", "hidden"}, "Mode.Hidden == true", {"note key-name"}},
    };
    for (const auto& row : rows) {
        const auto model = WithTerms({row.Published});
        EXPECT_EQ(ToText(model->Rules().at(0).When), row.Condition);
        EXPECT_EQ(ShortLines(*model), row.Findings) << row.Condition;
        for (std::size_t attribute = 0; attribute < model->Attributes().size(); ++attribute) {
            EXPECT_TRUE(model->RulesReading(attribute).empty()); // its value is not read
        }
    }
}

TEST(RuleTerms, HaveNamesAndConditionsInAnyLetterCase)
{
    const struct {
        Term Published;
        const char* Condition;
        std::vector<std::string> Findings;
    } rows[] = {
        {{"mode", "EQU", "Uefi"}, "Mode == Uefi", {"note name-in-other-case"}},
        {{"Mode", "equ", "Uefi"}, "Mode == Uefi", {"note key-name"}},
        {{"Mode", "EQ", "Uefi"}, "Mode == Uefi", {"note key-name"}},
        {{"Mode", "EQU", "Uefi", "", "CURRENTVALUE"}, "Mode == Uefi", {"note key-name"}},
        {{"Level", "Gtr", 5}, "Level > 5", {"note key-name"}},
        {{"mode", "eq", "Uefi", "", "currentValue"}, "Mode == Uefi", {"note key-name", "note name-in-other-case"}},
    };
    for (const auto& row : rows) {
        const auto model = WithTerms({row.Published});
        EXPECT_EQ(ToText(model->Rules().at(0).When), row.Condition);
        EXPECT_EQ(ShortLines(*model), row.Findings) << row.Published.Condition;
    }
}

TEST(RuleTerms, OnUnknownAttributesStayAndAreReportedOnceForARule)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "ReadOnly", true,
                  {Term{"Mode", "EQU", "Uefi", "OR"}, Term{"Gone", "EQU", "x", "OR"}, Term{"Gone", "NEQ", 5, "OR"},
                   Term{"Lost", "EQU", nullptr}});
    registry.Rule("Target", "ReadOnly", true, {Term{"Gone", "EQU", true, "", "Hidden"}});
    const auto model = ModelOf(registry.Json());
    EXPECT_THAT(
        RuleLines(*model),
        ElementsAre("0: Target.ReadOnly = true when Mode == Uefi or Gone == x or Gone != 5 or Lost has no value",
                    "1: Target.ReadOnly = true when Gone.Hidden == true"));
    EXPECT_EQ(model->Rules()[1].When.Asked.Source, noAttribute);
    EXPECT_EQ(model->Rules()[1].When.Asked.Name, "Gone");
    EXPECT_THAT(ShortLines(*model), ElementsAre("warning unknown-source", "warning unknown-source",
                                                "warning unknown-source /RegistryEntries/Dependencies/1"));
    EXPECT_EQ(model->Findings()[1].Found, R"(terms on "Lost", which is no attribute of the registry)");
    EXPECT_EQ(model->Findings()[1].Attribute, "Target");
    EXPECT_EQ(model->Findings()[1].Rule, 0U);
}

TEST(RuleTerms, OnTheControllerAreIgnored)
{
    const auto lines = [](const std::vector<Term>& terms) { return RuleLines(*WithTerms(terms)); };
    const Term uefi{"Mode", "EQU", "Uefi"};
    const Term controller{"SYSACS", "EQU", "x"};
    const Term joined{"SYSACS", "EQU", "x", "AND"};
    EXPECT_THAT(lines({uefi, joined}),
                ElementsAre("0: Target.ReadOnly = true when Mode == Uefi and (about the controller)"));
    EXPECT_THAT(ShortLines(*WithTerms({uefi, joined})), ElementsAre("note controller-term"));
    EXPECT_THAT(lines({controller}), ElementsAre("0: Target.ReadOnly = true when (about the controller)"));
    EXPECT_THAT(ShortLines(*WithTerms({controller})), ElementsAre("note controller-term", "note controller-term"));

    EXPECT_THAT(ShortLines(*WithTerms({controller, joined})),
                ElementsAre("note controller-term", "note controller-term", "note controller-term"));

    const auto truthOf = [](const std::vector<Term>& terms) {
        return Evaluation(SystemValues(WithTerms(terms), ValuesFrom({{"Mode", std::string("Uefi")}}))).TruthOf(0);
    };
    EXPECT_EQ(truthOf({uefi, joined}), Truth::True);
    EXPECT_EQ(truthOf({uefi, Term{"SYSACS", "EQU", "x", "OR"}}), Truth::True);
    EXPECT_EQ(truthOf({controller}), Truth::False); // the rule as a whole does not count
    EXPECT_EQ(truthOf({controller, joined}), Truth::False);
    EXPECT_THAT(lines({Term{"sysacs", "EQU", "x"}}), ElementsAre("0: Target.ReadOnly = true when sysacs == x"));
}

TEST(RuleTerms, WithoutAMeaningAreUnknown)
{
    const struct {
        Term Published;
        const char* Cause;
        const char* Finding;
        std::optional<std::size_t> Source; ///< what the term reads all the same
    } rows[] = {
        {{"Mode", "XYZ", "Uefi"}, R"(the condition of a term is "XYZ")", "error unsupported-condition", 0},
        {{"Level", "BITAND", 1}, R"(the condition of a term is "BITAND")", "error unsupported-condition", 1},
        {{"Level", "", 1}, R"(the condition of a term is "")", "error unsupported-condition", 1},
        {{"Mode", "GTR", nullptr}, "an order relative to no value", "error unsupported-condition", 0},
        {{"Mode", "EQU", json::array{}}, "a term compares with a list", "error unusable-rule", 0},
        {{"Level", "EQU", 1.5}, "a term compares with a number", "error unusable-rule", 1},
        {{"Level", "EQU", 9223372036854775808U}, "a term compares with a number", "error unusable-rule", 1},
        {{"", "EQU", "x"}, "a term without an attribute", "error unusable-rule", {}},
        {{"Mode", "EQU", "x", "", "DefaultValue"},
         R"(a term on the property "DefaultValue", of which no rule can know)",
         "error unsupported-source-property",
         {}},
        {{"Mode", "EQU", true, "", "ResetRequired"},
         R"(a term on the property "ResetRequired", of which no rule can know)",
         "error unsupported-source-property",
         {}},
        {{"Mode", "EQU", "x", "", ""},
         R"(a term on the property "", of which no rule can know)",
         "error unsupported-source-property",
         {}},
        {{"Mode", "EQU", "x", "", "Hidden"}, R"(a flag compared with "x" by EQU)", "error unsupported-condition", {}},
        {{"Mode", "EQU", nullptr, "", "Hidden"}, "a flag compared with null by EQU", "error unsupported-condition", {}},
        {{"Mode", "GTR", true, "", "Hidden"}, "a flag compared with true by GTR", "error unsupported-condition", {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Cause);
        const auto model = WithTerms({row.Published});
        ASSERT_EQ(model->Rules().size(), 1U);
        const Condition& when = model->Rules()[0].When;
        EXPECT_EQ(when.What, Condition::Kind::Unknown);
        EXPECT_EQ(when.Cause, row.Cause);
        EXPECT_EQ(ToText(when), std::string("unknown (") + row.Cause + ")");
        EXPECT_EQ(when.Asked.Source, row.Source.value_or(noAttribute));
        EXPECT_THAT(ShortLines(*model), ElementsAre(row.Finding));
        EXPECT_EQ(model->Findings().at(0).Found, row.Cause);
        EXPECT_EQ(model->Findings().at(0).Consequence, "whether the term holds is never known");
        EXPECT_EQ(model->Findings().at(0).Attribute, "Target");
        EXPECT_EQ(model->Findings().at(0).Rule, 0U);
        EXPECT_EQ(Evaluation(SystemValues(model)).TruthOf(0), Truth::Unknown);
        if (row.Source) {
            EXPECT_THAT(Listed(model->RulesReading(*row.Source)), ElementsAre(0));
        }
    }
}

TEST(RuleTerms, WithoutAMeaningAreReportedOneByOneAndLeaveTheOthers)
{
    const auto model = WithTerms({Term{"Mode", "XYZ", "Uefi", "OR"}, Term{"Mode", "GTR", nullptr, "OR"},
                                  Term{"", "EQU", "x", "OR"}, Term{"Mode", "EQU", "Uefi"}});
    EXPECT_THAT(ShortLines(*model),
                ElementsAre("error unsupported-condition", "error unsupported-condition", "error unusable-rule"));
    const auto truthOf = [&](const char* value) {
        return Evaluation(SystemValues(model, ValuesFrom({{"Mode", std::string(value)}}))).TruthOf(0);
    };
    EXPECT_EQ(truthOf("Uefi"), Truth::True);
    EXPECT_EQ(truthOf("Legacy"), Truth::Unknown);
}

TEST(RuleTerms, AreThreeValued)
{
    const struct {
        Term Published;
        SettingValueMap Values;
        Truth Is;
    } rows[] = {
        {{"Level", "GTR", 5}, {{"Level", std::int64_t{6}}}, Truth::True},
        {{"Level", "GTR", 5}, {{"Level", std::int64_t{5}}}, Truth::False},
        {{"Level", "GEQ", 5}, {{"Level", std::int64_t{5}}}, Truth::True},
        {{"Level", "LSS", "10"}, {{"Level", std::int64_t{9}}}, Truth::True}, // as numbers, not as texts
        {{"Level", "LEQ", 5}, {{"Level", std::string("0x5")}}, Truth::True},
        {{"Level", "GTR", 5}, {{"Level", std::nullopt}}, Truth::Unknown},
        {{"Level", "NEQ", 5}, {}, Truth::Unknown},
        {{"Level", "EQU", nullptr}, {}, Truth::True}, // what is not reported has no value
        {{"Level", "NEQ", nullptr}, {}, Truth::False},
        {{"Gone", "EQU", nullptr}, {}, Truth::Unknown},
        {{"Key", "EQU", nullptr}, {{"Key", std::nullopt}}, Truth::Unknown}, // a password is never known
        {{"Level", "EQU", nullptr}, {{"Level", std::nullopt}}, Truth::True},
        {{"Level", "NEQ", nullptr}, {{"Level", std::nullopt}}, Truth::False},
        {{"Level", "NEQ", nullptr}, {{"Level", std::int64_t{5}}}, Truth::True},
        {{"Level", "EQU", "five"}, {{"Level", std::int64_t{5}}}, Truth::False},
        {{"Text", "EQU", ""}, {{"Text", std::string()}}, Truth::True},
        {{"Text", "EQU", ""}, {{"Text", std::string(" ")}}, Truth::False},
        {{"Text", "EQU", "X"}, {{"Text", std::string("x")}}, Truth::False},
        {{"Text", "GTR", "5"}, {{"Text", std::string("10")}}, Truth::True}, // texts that are integers
        {{"Text", "GTR", "5"}, {{"Text", std::string("x")}}, Truth::Unknown},
        {{"Text", "GTR", "x"}, {{"Text", std::string("y")}}, Truth::Unknown},
        {{"Mode", "EQU", "UEFI Mode"}, {{"Mode", std::string("Uefi")}}, Truth::True},
        {{"Mode", "NEQ", "Legacy"}, {{"Mode", std::string("Legacy Mode")}}, Truth::False},
        {{"Mode", "EQU", "Gone"}, {{"Mode", std::string("Uefi")}}, Truth::False},
        {{"Gone", "NEQ", "x"}, {{"Gone", std::string("y")}}, Truth::Unknown},
        {{"Key", "EQU", "secret"}, {{"Key", std::string("secret")}}, Truth::Unknown},
        {{"Switch", "EQU", "true"}, {{"Switch", true}}, Truth::True},
    };
    for (const auto& row : rows) {
        const auto model = WithTerms({row.Published});
        EXPECT_EQ(Evaluation(SystemValues(model, ValuesFrom(row.Values))).TruthOf(0), row.Is)
            << RuleLines(*model).at(0);
    }
}

TEST(RuleIndices, NameEachRuleOnceForWhatItReadsInOrder)
{
    RegistryBuilder registry = Builder();
    registry.Rule("Target", "ReadOnly", true, {Term{"Mode", "EQU", "Uefi", "OR"}, Term{"mode", "EQU", "Legacy"}});
    registry.Rule("Nowhere", "ReadOnly", true, {Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Target", "Hidden", true, {Term{"Level", "EQU", 1, "AND"}, Term{"Mode", "EQU", "Uefi"}});
    registry.Rule("Target", "ReadOnly", true, {Term{"Target", "EQU", true}});
    const auto model = ModelOf(registry.Json());
    EXPECT_THAT(Listed(model->RulesReading(0)), ElementsAre(0, 1)); // indices, not positions
    EXPECT_THAT(Listed(model->RulesReading(1)), ElementsAre(1));
    EXPECT_THAT(Listed(model->RulesReading(2)), IsEmpty());
    EXPECT_THAT(Listed(model->RulesReading(positionOfTarget)), ElementsAre(2));
    EXPECT_THAT(Listed(model->RulesFor(positionOfTarget, Property::ReadOnly)), ElementsAre(0, 2));
    EXPECT_THAT(Listed(model->RulesFor(positionOfTarget, Property::Hidden)), ElementsAre(1));
    const IndexRange range = model->RulesFor(positionOfTarget, Property::ReadOnly);
    EXPECT_EQ(range.size(), 2U);
    EXPECT_EQ(range[1], 2U);
    EXPECT_FALSE(range.empty());
    EXPECT_EQ(model->PointerToRule(2), "/RegistryEntries/Dependencies/3");
    EXPECT_EQ(model->Rules()[2].Position, 3U);
}

TEST(RuleList, OfOtherKindsIsReported)
{
    RegistryBuilder registry = Builder();
    for (const char* rule :
         {"5", "{}", R"({"Dependency": 5})", R"({"Dependency": {"MapFrom": {}}})",
          R"({"Dependency": {"MapFrom": [{"MapFromAttribute": "Mode", "MapFromProperty": "CurrentValue",
              "MapFromCondition": "EQU"}], "MapToAttribute": "Target"}})",
          R"({"Dependency": {"MapFrom": [{"MapFromAttribute": "Mode", "MapFromProperty": "CurrentValue",
              "MapFromCondition": "EQU"}], "MapToAttribute": "Target", "MapToProperty": "Hidden"}})"}) {
        registry.RawRule(json::parse(rule));
    }
    const auto model = ModelOf(registry.Json());
    EXPECT_THAT(model->Rules(), IsEmpty());
    EXPECT_THAT(Lines(model->Findings()), Each(StartsWith("error unusable-rule /RegistryEntries/Dependencies/")));
    std::set<std::string> pointers;
    for (const Finding& finding : model->Findings()) {
        pointers.insert(finding.Pointer);
    }
    EXPECT_EQ(pointers.size(), 6U);

    for (const char* list : {R"("none")", "{}", "5", "true"}) {
        json::value document = Builder().Json();
        document.at("RegistryEntries").as_object()["Dependencies"] = json::parse(list);
        EXPECT_THAT(Lines(ModelOf(document)->Findings()),
                    ElementsAre("error wrong-kind /RegistryEntries/Dependencies"));
        document.at("RegistryEntries").as_object()["Dependencies"] = nullptr;
        document.at("RegistryEntries").as_object()["Menus"] = json::parse(list);
        EXPECT_THAT(Lines(ModelOf(document)->Findings()), ElementsAre("error wrong-kind /RegistryEntries/Menus"));
    }
}

TEST(RuleList, WithATargetAndWithoutTermsIsUnknown)
{
    for (const char* mapFrom : {"null", "{}", R"("A")"}) {
        RegistryBuilder registry = Builder();
        registry.RawRule(
            json::parse(std::string(R"({"Dependency": {"MapToAttribute": "Target", "MapToProperty": "Hidden",
            "MapToValue": true, "MapFrom": )") +
                        mapFrom + "}}"));
        const auto model = ModelOf(registry.Json());
        EXPECT_THAT(RuleLines(*model),
                    ElementsAre("0: Target.Hidden = true when unknown (a rule without a list of terms)"));
        EXPECT_THAT(ShortLines(*model), ElementsAre("error unusable-rule"));
    }
}

TEST(RuleKeys, MayHaveOtherSpellings)
{
    RegistryBuilder registry = Builder();
    registry.RawRule(json::parse(R"({"dependencyfor": "Mode", "dependency": {"mapfrom": [{"MapfromAttribute": "Mode",
        "MapFromproperty": "CurrentValue", "mapfromcondition": "EQU", "mapfromvalue": "Uefi"}],
        "maptoattribute": "Target", "MaptoProperty": "Hidden", "MapTovalue": true}})"));
    const auto model = ModelOf(registry.Json());
    EXPECT_THAT(RuleLines(*model), ElementsAre("0: Target.Hidden = true when Mode == Uefi"));
    EXPECT_EQ(model->Rules().at(0).DependencyFor, "Mode");
    EXPECT_EQ(model->Findings().size(), 10U);
    EXPECT_THAT(Lines(model->Findings()), Each(StartsWith("note key-name /RegistryEntries/Dependencies/0")));
    EXPECT_EQ(Lines(model->Findings())[0], "note key-name /RegistryEntries/Dependencies/0/dependencyfor");
}

TEST(ComparisonNames, AreThoseOfTheSchemaAndOfAPerson)
{
    const struct {
        Client::Comparison Compare;
        const char* Name;
        const char* Sign;
    } rows[] = {
        {Client::Comparison::Equal, "EQU", "=="},  {Client::Comparison::NotEqual, "NEQ", "!="},
        {Client::Comparison::Greater, "GTR", ">"}, {Client::Comparison::GreaterOrEqual, "GEQ", ">="},
        {Client::Comparison::Less, "LSS", "<"},    {Client::Comparison::LessOrEqual, "LEQ", "<="},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Name(row.Compare), row.Name);
        EXPECT_EQ(Sign(row.Compare), row.Sign);
        EXPECT_THAT(RuleLines(*WithTerms({Term{"Level", row.Name, 5}})),
                    ElementsAre(std::string("0: Target.ReadOnly = true when Level ") + row.Sign + " 5"));
    }
}

} // namespace
