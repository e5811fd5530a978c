#include "ClientTest.h"

#include "support/RegistryBuilder.h"

#include <cstdint>

// What published rules mean, a table for each question: the condition, the values, and what comes of it.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::IsEmpty;

/** A registry with a source of each type, targets, and what a test adds. */
class RuleMeaning : public testing::Test {
protected:
    RuleMeaning()
    {
        m_Registry.Attribute(
            "Mode", "Enumeration",
            {{"Value",
              {RegistryBuilder::Choice("Uefi", "UEFI boot"), RegistryBuilder::Choice("Legacy", "Legacy boot"),
               RegistryBuilder::Choice("High (HPC)", "Computing")}}});
        m_Registry.Attribute("Speed", "Enumeration",
                             {{"Value",
                               {RegistryBuilder::Choice("800", "800"), RegistryBuilder::Choice("1600", "1600"),
                                RegistryBuilder::Choice("Auto", "Auto")}}});
        m_Registry.Attribute("Level", "Integer", {{"LowerBound", 0}, {"UpperBound", 100}});
        m_Registry.Attribute("Switch", "Boolean");
        m_Registry.Attribute("Text", "String");
        m_Registry.Attribute("Secret", "Password");
        m_Registry.Attribute("Marked", "Boolean", {{"ReadOnly", true}, {"Hidden", false}});
        m_Registry.Attribute("Target", "Boolean");
    }

    SystemValues Read(const SettingValueMap& values)
    {
        ValuesDocument document;
        document.Values = values;
        return {Model::Read(ReadRegistryDocument(m_Registry.Text())), document};
    }

    static Verdict VerdictOf(const Evaluation& evaluation, const char* setting, Property flag)
    {
        return evaluation.VerdictOn(evaluation.Of().Find(setting).value(), flag);
    }

    /** The truth of a rule with these terms under the values. */
    Truth TruthOf(const std::vector<Term>& terms, const SettingValueMap& values)
    {
        RegistryBuilder kept = m_Registry;
        m_Registry.Rule("Target", "ReadOnly", true, terms);
        const SystemValues now = Read(values);
        m_Registry = std::move(kept);
        return Evaluation(now).TruthOf(now.Of().Rules().size() - 1);
    }

    RegistryBuilder m_Registry;
};

SettingValueMap Values(const char* name, SettingValue value)
{
    return {{name, std::move(value)}};
}

const std::int64_t fifteen = 15;

TEST_F(RuleMeaning, ValuesAreComparedByTheirType)
{
    const struct {
        Term term;
        SettingValueMap values;
        Truth truth;
    } rows[] = {
        {{"Mode", "EQU", "Uefi"}, Values("Mode", std::string("Uefi")), Truth::True},
        {{"Mode", "EQU", "Uefi"}, Values("Mode", std::string("Legacy")), Truth::False},
        {{"Mode", "EQU", "UEFI boot"}, Values("Mode", std::string("Uefi")), Truth::True},
        {{"Mode", "EQU", "Uefi"}, Values("Mode", std::string("UEFI boot")), Truth::True},
        {{"Mode", "EQU", "High (HPC)"}, Values("Mode", std::string("High (HPC)")), Truth::True},
        {{"Mode", "NEQ", "High (HPC)"}, Values("Mode", std::string("Computing")), Truth::False},
        {{"Mode", "EQU", "uefi"}, Values("Mode", std::string("Uefi")), Truth::False},
        {{"Mode", "NEQ", "none of them"}, Values("Mode", std::string("Uefi")), Truth::True},
        {{"Level", "EQU", 5}, Values("Level", std::int64_t{5}), Truth::True},
        {{"Level", "EQU", "5"}, Values("Level", std::int64_t{5}), Truth::True},
        {{"Level", "EQU", 5}, Values("Level", std::string("5")), Truth::True},
        {{"Level", "EQU", "five"}, Values("Level", std::int64_t{5}), Truth::False},
        {{"Switch", "EQU", "true"}, Values("Switch", true), Truth::True},
        {{"Switch", "NEQ", true}, Values("Switch", true), Truth::False},
        {{"Text", "EQU", ""}, Values("Text", std::string()), Truth::True},
        {{"Text", "EQU", "a==b && (c)"}, Values("Text", std::string("a==b && (c)")), Truth::True},
        {{"Text", "EQU", "Mode.CurrentValue"}, Values("Text", std::string("x")), Truth::False},
        {{"Text", "EQU", 5}, Values("Text", std::string("5")), Truth::True},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TruthOf({row.term}, row.values), row.truth)
            << row.term.Attribute << " " << row.term.Condition << " " << json::serialize(row.term.Value);
    }
}

TEST_F(RuleMeaning, ChoicesHaveTheOrderOfTheNamesThatValuesUse)
{
    using Names = std::pair<const char*, const char*>;
    const struct {
        std::vector<Names> choices;
        const char* operand;
        const char* held;
        Truth greater;
    } rows[] = {
        {{{"5", "Five"}, {"9", "Nine"}}, "Five", "9", Truth::True},
        {{{"5", "Five"}, {"9", "Nine"}}, "Nine", "5", Truth::False},
        {{{"5", "Five"}, {"9", "Nine"}}, "Nine", "Five", Truth::Unknown}, // where display names are values
        {{{"Five", "5"}, {"Nine", "9"}}, "Five", "9", Truth::True},       // the same
        {{{"Five", "5"}, {"Nine", "9"}}, "5", "Nine", Truth::Unknown},
        {{{"1", "10"}, {"2", "20"}}, "10", "2", Truth::True},               // stands for 1
        {{{"1", "10"}, {"2", "20"}}, "1", "20", Truth::True},               // stands for 10
        {{{"1", "10"}, {"2", "20"}}, "15", "20", Truth::True},              // no choice: itself
        {{{"1", "10"}, {"1", "11"}, {"2", "20"}}, "10", "2", Truth::False}, // not clear: itself
    };
    for (const auto& row : rows) {
        json::array choices;
        for (const auto& [name, displayName] : row.choices) {
            choices.push_back(RegistryBuilder::Choice(name, displayName));
        }
        RegistryBuilder registry;
        registry.Attribute("Speed", "Enumeration", {{"Value", choices}}).Attribute("T", "Boolean");
        registry.Rule("T", "ReadOnly", true, {{"Speed", "GTR", row.operand}});
        ValuesDocument values;
        values.Values = {{"Speed", std::string(row.held)}};
        const SystemValues now(Model::Read(ReadRegistryDocument(registry.Text())), values);
        EXPECT_EQ(Evaluation(now).TruthOf(0), row.greater) << row.operand << " " << row.held;
        EXPECT_EQ(Explain(now, 0).Is, row.greater) << row.operand << " " << row.held;
    }
}

TEST_F(RuleMeaning, NumbersHaveAnOrderAndTextsThatAreNumbersToo)
{
    const struct {
        Term term;
        SettingValueMap values;
        Truth truth;
    } rows[] = {
        {{"Level", "GTR", 9}, Values("Level", fifteen), Truth::True}, // as texts it would be less
        {{"Level", "GTR", 15}, Values("Level", fifteen), Truth::False},
        {{"Level", "GEQ", 15}, Values("Level", fifteen), Truth::True},
        {{"Level", "LSS", 100}, Values("Level", fifteen), Truth::True},
        {{"Level", "LSS", 15}, Values("Level", fifteen), Truth::False},
        {{"Level", "LEQ", -1}, Values("Level", std::int64_t{-2}), Truth::True},
        {{"Level", "GTR", "9"}, Values("Level", fifteen), Truth::True},
        {{"Speed", "GTR", "900"}, Values("Speed", std::string("1600")), Truth::True},
        {{"Speed", "GTR", "900"}, Values("Speed", std::string("800")), Truth::False},
        {{"Speed", "GTR", "900"}, Values("Speed", std::string("Auto")), Truth::Unknown},
        {{"Text", "LEQ", "10"}, Values("Text", std::string("9")), Truth::True},
        {{"Text", "LSS", "b"}, Values("Text", std::string("a")), Truth::Unknown},
        {{"Switch", "GTR", false}, Values("Switch", true), Truth::Unknown},
        {{"Level", "GTR", nullptr}, Values("Level", fifteen), Truth::Unknown},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TruthOf({row.term}, row.values), row.truth)
            << row.term.Attribute << " " << row.term.Condition << " " << json::serialize(row.term.Value);
    }
    m_Registry.Rule("Target", "Hidden", true, {Term{"Text", "LSS", "b"}});
    EXPECT_THAT(Lines(Read({}).Of().Findings()), ElementsAre("warning order-of-texts /RegistryEntries/Dependencies/0"));
}

TEST_F(RuleMeaning, FlagsAreComparedWithBooleans)
{
    const struct {
        Term term;
        Truth truth;
    } rows[] = {
        {{"Marked", "EQU", true, "", "ReadOnly"}, Truth::True},
        {{"Marked", "EQU", "true", "", "ReadOnly"}, Truth::True},
        {{"Marked", "NEQ", true, "", "ReadOnly"}, Truth::False},
        {{"Marked", "EQU", true, "", "Hidden"}, Truth::False},
        {{"Marked", "EQU", false, "", "GrayOut"}, Truth::True}, // not published
        {{"Marked", "GTR", false, "", "ReadOnly"}, Truth::Unknown},
        {{"Marked", "EQU", "maybe", "", "ReadOnly"}, Truth::Unknown},
        {{"Marked", "EQU", 5, "", "LowerBound"}, Truth::Unknown},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TruthOf({row.term}, {}), row.truth)
            << row.term.Condition << " " << json::serialize(row.term.Value) << " " << row.term.Property;
    }
}

TEST_F(RuleMeaning, ConditionsOnBitsAndUnknownOnesAreNeverKnown)
{
    for (const char* condition : {"BITAND", "BITOR", "LIKE", ""}) {
        EXPECT_EQ(TruthOf({Term{"Level", condition, 1}}, Values("Level", std::int64_t{1})), Truth::Unknown)
            << condition;
    }
    m_Registry.Rule("Target", "Hidden", true, {Term{"Level", "BITAND", 1}});
    EXPECT_THAT(Lines(Read({}).Of().Findings()),
                ElementsAre("error unsupported-condition /RegistryEntries/Dependencies/0"));
}

TEST_F(RuleMeaning, WhatIsNotKnownIsUnknown)
{
    const struct {
        Term term;
        SettingValueMap values;
        Truth truth;
    } rows[] = {
        {{"Mode", "EQU", "Uefi"}, {}, Truth::Unknown}, // not reported
        {{"Mode", "NEQ", "Uefi"}, {}, Truth::Unknown},
        {{"Mode", "EQU", "Uefi"}, Values("Mode", std::nullopt), Truth::Unknown},
        {{"Level", "GTR", 5}, {}, Truth::Unknown},
        {{"Mode", "EQU", nullptr}, {}, Truth::True},
        {{"Mode", "NEQ", nullptr}, {}, Truth::False},
        {{"Mode", "EQU", nullptr}, Values("Mode", std::nullopt), Truth::True},
        {{"Mode", "EQU", nullptr}, Values("Mode", std::string("Uefi")), Truth::False},
        {{"Mode", "NEQ", nullptr}, Values("Mode", std::string("Uefi")), Truth::True},
        {{"Secret", "EQU", ""}, Values("Secret", std::string()), Truth::Unknown},
        {{"Secret", "NEQ", "hunter2"}, Values("Secret", std::string("hunter2")), Truth::Unknown},
        {{"Secret", "EQU", nullptr}, {}, Truth::Unknown},
        {{"Gone", "EQU", "x"}, Values("Gone", std::string("x")), Truth::Unknown}, // no attribute of that name
        {{"Gone", "EQU", nullptr}, {}, Truth::Unknown},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TruthOf({row.term}, row.values), row.truth)
            << row.term.Attribute << " " << row.term.Condition << " " << json::serialize(row.term.Value);
    }
}

TEST_F(RuleMeaning, TheRegistrysOwnValueStandsInForOneThatIsNotNamed)
{
    m_Registry.Attribute("Own", "Integer", {{"CurrentValue", 7}});
    EXPECT_EQ(TruthOf({Term{"Own", "EQU", 7}}, {}), Truth::True);
    EXPECT_EQ(TruthOf({Term{"Own", "EQU", 7}}, Values("Own", std::int64_t{8})), Truth::False);
    EXPECT_EQ(TruthOf({Term{"Own", "EQU", 7}}, Values("Own", std::nullopt)), Truth::Unknown);
    const SystemValues now = Read({});
    const std::size_t own = now.Of().Find("Own").value();
    EXPECT_EQ(now.OriginOf(own), ValueOrigin::Registry);
    EXPECT_FALSE(now.IsPresent(own));
}

TEST_F(RuleMeaning, ConditionsAreThreeValued)
{
    const Term yes{"Switch", "EQU", true};
    const Term no{"Switch", "EQU", false};
    const Term unknown{"Gone", "EQU", "x"};
    const auto joined = [](Term left, const char* joiner, Term right) {
        right.MapTerms = joiner;
        return std::vector<Term>{std::move(left), std::move(right)};
    };
    const struct {
        Term left, right;
        Truth both, either;
    } rows[] = {
        {yes, yes, Truth::True, Truth::True},        {yes, no, Truth::False, Truth::True},
        {no, no, Truth::False, Truth::False},        {yes, unknown, Truth::Unknown, Truth::True},
        {no, unknown, Truth::False, Truth::Unknown}, {unknown, unknown, Truth::Unknown, Truth::Unknown},
    };
    const SettingValueMap values = Values("Switch", true);
    for (const auto& row : rows) {
        EXPECT_EQ(TruthOf(joined(row.left, "AND", row.right), values), row.both);
        EXPECT_EQ(TruthOf(joined(row.left, "OR", row.right), values), row.either);
        EXPECT_EQ(TruthOf(joined(row.right, "AND", row.left), values), row.both);
        EXPECT_EQ(TruthOf(joined(row.right, "OR", row.left), values), row.either);
    }
    Term notUnknown = unknown;
    notUnknown.MapTerms = "NOT";
    EXPECT_EQ(TruthOf({notUnknown}, values), Truth::Unknown);
    Term notYes = yes;
    notYes.MapTerms = "NOT";
    EXPECT_EQ(TruthOf({notYes}, values), Truth::False);
}

TEST_F(RuleMeaning, TermsOnTheControllerDoNotCount)
{
    const SettingValueMap values = Values("Switch", true);
    const Term controller{"SYSACS", "EQU", "x", "AND"};
    EXPECT_EQ(TruthOf({Term{"Switch", "EQU", true}, controller}, values), Truth::True);
    EXPECT_EQ(TruthOf({Term{"Switch", "EQU", false}, controller}, values), Truth::False);
    EXPECT_EQ(TruthOf({Term{"SYSACS", "EQU", "x"}}, values), Truth::False); // the rule does not count
}

TEST_F(RuleMeaning, ARangeIsTwoTests)
{
    const std::vector<Term> range{Term{"Level", "GEQ", 10}, Term{"Level", "LEQ", 20, "AND"}};
    for (const std::int64_t level : {0, 9, 10, 15, 20, 21, 100}) {
        EXPECT_EQ(TruthOf(range, Values("Level", level)) == Truth::True, level >= 10 && level <= 20) << level;
    }
}

/** "true", "false", with "?" when it is not certain and "!" when the registry's own flag decides. */
std::string Word(const Verdict& verdict)
{
    return std::string(verdict.Value ? "true" : "false") + (verdict.Certain ? "" : "?") + (verdict.Marked ? "!" : "");
}

TEST_F(RuleMeaning, OfSeveralRulesTheFirstTrueOneDecides)
{
    struct Outcome {
        bool value;
        Truth truth;
    };
    const struct {
        std::vector<Outcome> rules;
        bool flag;
        const char* verdict;
        std::vector<std::size_t> deciding;
    } rows[] = {
        {{}, false, "false", {}},
        {{}, true, "true!", {}},
        {{{true, Truth::True}}, false, "true", {0}},
        {{{true, Truth::False}}, false, "false", {}},
        {{{true, Truth::False}, {true, Truth::True}}, false, "true", {1}},
        {{{true, Truth::True}, {true, Truth::True}}, false, "true", {0, 1}},
        {{{false, Truth::True}, {true, Truth::True}}, false, "false", {0}},
        {{{true, Truth::True}, {false, Truth::True}}, false, "true", {0}},
        {{{true, Truth::Unknown}}, false, "false?", {0}},
        {{{true, Truth::Unknown}, {true, Truth::True}}, false, "true", {1}},
        {{{false, Truth::Unknown}, {true, Truth::True}}, false, "true?", {1}}, // the first, if it is true
        {{{true, Truth::True}, {false, Truth::Unknown}}, false, "true", {0}},
        {{{true, Truth::False}, {true, Truth::Unknown}}, false, "false?", {1}},
        {{{false, Truth::True}}, true, "false", {0}},
        {{{false, Truth::False}}, true, "true!", {}},
        {{{false, Truth::Unknown}}, true, "true?", {0}},
    };
    for (const auto& row : rows) {
        RegistryBuilder kept = m_Registry;
        m_Registry.Attribute("Ruled", "Boolean", {{"GrayOut", row.flag}});
        for (const Outcome& rule : row.rules) {
            const Term term = rule.truth == Truth::Unknown ? Term{"Gone", "EQU", "x"}
                                                           : Term{"Switch", "EQU", rule.truth == Truth::True};
            m_Registry.Rule("Ruled", "GrayOut", rule.value, {term});
        }
        const SystemValues now = Read(Values("Switch", true));
        const Evaluation evaluation(now);
        const std::size_t ruled = now.Of().Find("Ruled").value();
        EXPECT_EQ(Word(evaluation.VerdictOn(ruled, Property::GrayOut)), row.verdict);
        EXPECT_EQ(evaluation.DecidingRules(ruled, Property::GrayOut), row.deciding);
        m_Registry = std::move(kept);
    }
}

TEST_F(RuleMeaning, TrueFlagsAreSnapshotsOrMarks)
{
    m_Registry.Rule("Marked", "ReadOnly", true, {Term{"Mode", "EQU", "Uefi"}});
    const SettingValueMap uefi = Values("Mode", std::string("Uefi"));
    const SettingValueMap legacy = Values("Mode", std::string("Legacy"));
    const struct {
        SettingValueMap then, now;
        FlagOrigin origin;
        const char* verdict;
    } rows[] = {
        {uefi, uefi, FlagOrigin::Explained, "true"},
        {uefi, legacy, FlagOrigin::Explained, "false"}, // the rules alone decide
        {uefi, {}, FlagOrigin::Explained, "true?"},
        {legacy, legacy, FlagOrigin::Marked, "true!"}, // no rule explains it
        {legacy, uefi, FlagOrigin::Marked, "true"},
        {legacy, {}, FlagOrigin::Marked, "true?"},
        {{}, legacy, FlagOrigin::Unexplained, "true?"},
        {{}, uefi, FlagOrigin::Unexplained, "true"},
        {{}, {}, FlagOrigin::Unexplained, "true?"},
    };
    for (const auto& row : rows) {
        const SystemValues then = Read(row.then);
        ValuesDocument document;
        document.Values = row.now;
        const SystemValues now(then.SharedModel(), document);
        const Evaluation both(now, then);
        const Evaluation other = Evaluation(then).ForValues(now);
        const std::size_t marked = now.Of().Find("Marked").value();
        EXPECT_EQ(Word(both.VerdictOn(marked, Property::ReadOnly)), row.verdict);
        EXPECT_EQ(Word(other.VerdictOn(marked, Property::ReadOnly)), row.verdict);
        EXPECT_EQ(both.OriginOf(marked, Property::ReadOnly), row.origin);
    }
}

TEST_F(RuleMeaning, ATrueRuleBesideAFalseFlagHolds)
{
    m_Registry.Rule("Target", "Hidden", true, {Term{"Switch", "EQU", true}});
    const Evaluation evaluation(Read(Values("Switch", true)));
    EXPECT_EQ(Word(VerdictOf(evaluation, "Target", Property::Hidden)), "true");
    EXPECT_EQ(evaluation.OriginOf(evaluation.Of().Find("Target").value(), Property::Hidden), FlagOrigin::NotSet);
}

TEST_F(RuleMeaning, MenusCountForEverySettingBelow)
{
    m_Registry.Attribute("Inner", "Boolean", {{"MenuPath", "./Main/Boot"}});
    m_Registry.Attribute("Outer", "Boolean", {{"MenuPath", "./Main"}});
    m_Registry.Attribute("Elsewhere", "Boolean", {{"MenuPath", "./Other"}});
    m_Registry.Rule("Boot", "GrayOut", true, {Term{"Switch", "EQU", true}});
    m_Registry.Rule("Main", "Hidden", true, {Term{"Switch", "EQU", false}});
    json::value document = m_Registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] =
        json::array{{{"MenuName", "Main"}, {"MenuPath", "./"}},
                    {{"MenuName", "Boot"}, {"MenuPath", "./Main/Boot"}},
                    {{"MenuName", "Other"}, {"MenuPath", "./Other"}, {"ReadOnly", true}}};
    const auto model = Model::Read(ReadRegistryDocument(json::serialize(document)));
    EXPECT_THAT(model->Findings(), IsEmpty());
    const struct {
        bool isOn;
        const char* setting;
        Property flag;
        const char* verdict;
    } rows[] = {
        {true, "Inner", Property::GrayOut, "true"},      {true, "Outer", Property::GrayOut, "false"},
        {false, "Inner", Property::Hidden, "true"},      {false, "Outer", Property::Hidden, "true"},
        {false, "Elsewhere", Property::Hidden, "false"}, {true, "Elsewhere", Property::ReadOnly, "true!"},
        {true, "Inner", Property::ReadOnly, "false"},
    };
    for (const auto& row : rows) {
        ValuesDocument values;
        values.Values = Values("Switch", row.isOn);
        const Evaluation evaluation(SystemValues(model, values));
        EXPECT_EQ(Word(VerdictOf(evaluation, row.setting, row.flag)), row.verdict) << row.setting;
    }
}

TEST_F(RuleMeaning, MenusDeepDownCountToo)
{
    std::string path = ".";
    for (int level = 0; level < 40; ++level) {
        path += "/M" + std::to_string(level);
    }
    m_Registry.Attribute("Deep", "Boolean", {{"MenuPath", path}});
    json::value document = m_Registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] =
        json::array{{{"MenuName", "M39"}, {"MenuPath", path}, {"ReadOnly", true}}};
    const auto model = Model::Read(ReadRegistryDocument(json::serialize(document)));
    EXPECT_EQ(Word(VerdictOf(Evaluation(SystemValues(model)), "Deep", Property::ReadOnly)), "true!");
}

TEST_F(RuleMeaning, FindingsOnRulesOfMenusAreAboutNoSingleAttribute)
{
    m_Registry.Attribute("Inner", "Boolean", {{"MenuPath", "./Main"}});
    m_Registry.Rule("Main", "Hidden", true, {Term{"Gone", "EQU", 1}});
    m_Registry.Rule("Inner", "Hidden", true, {Term{"Gone", "EQU", 1}});
    json::value document = m_Registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::array{{{"MenuName", "Main"}, {"MenuPath", "./Main"}}};
    const auto model = Model::Read(ReadRegistryDocument(json::serialize(document)));
    ASSERT_EQ(model->Findings().size(), 2U);
    EXPECT_EQ(model->Findings()[0].Attribute, "");
    EXPECT_EQ(model->Findings()[0].Rule, 0U);
    EXPECT_EQ(model->Findings()[1].Attribute, "Inner");
}

TEST_F(RuleMeaning, ListsOfChoicesInForceAreIntersected)
{
    m_Registry.Rule("Mode", "Value", json::array{"Uefi", "Legacy boot"}, {Term{"Switch", "EQU", true}});
    m_Registry.Rule("Mode", "Value", json::array{"Legacy", "High (HPC)"}, {Term{"Level", "GTR", 10}});
    const struct {
        SettingValueMap values;
        std::vector<std::string> allowed;
        bool isCertain;
    } rows[] = {
        {{{"Switch", false}, {"Level", std::int64_t{1}}}, {"Uefi", "Legacy", "High (HPC)"}, true},
        {{{"Switch", true}, {"Level", std::int64_t{1}}}, {"Uefi", "Legacy"}, true},
        {{{"Switch", true}, {"Level", fifteen}}, {"Legacy"}, true},
        {{{"Switch", true}}, {"Uefi", "Legacy"}, false},
    };
    for (const auto& row : rows) {
        const SystemValues now = Read(row.values);
        const Evaluation evaluation(now);
        const std::size_t mode = now.Of().Find("Mode").value();
        std::vector<std::string> allowed;
        for (const Choice& choice : AttributeInForce(evaluation, now, mode).Choices) {
            allowed.push_back(choice.Name);
        }
        EXPECT_EQ(allowed, row.allowed);
        EXPECT_EQ(ChoicesOf(evaluation, now, mode).Certain, row.isCertain);
    }
}

TEST_F(RuleMeaning, BoundsLengthsDefaultsAndTextsAreThoseInForce)
{
    const std::vector<Term> on{Term{"Switch", "EQU", true}};
    m_Registry.Rule("Level", "LowerBound", 10, on);
    m_Registry.Rule("Level", "UpperBound", "50", on);
    m_Registry.Rule("Level", "ScalarIncrement", 5, on);
    m_Registry.Rule("Level", "DefaultValue", "20", on);
    m_Registry.Rule("Level", "LowerBound", 30, on); // the first counts
    m_Registry.Rule("Level", "WarningText", "Careful.", on);
    m_Registry.Rule("Level", "HelpText", "Help.", on);
    m_Registry.Rule("Level", "DisplayName", "The level", on);
    m_Registry.Rule("Text", "MinLength", 2, on);
    m_Registry.Rule("Text", "MaxLength", 4, on);
    m_Registry.Rule("Text", "ValueExpression", "a*", on);
    m_Registry.Rule("Mode", "DefaultValue", "Legacy boot", on);
    for (const bool isOn : {true, false}) {
        const SystemValues now = Read(Values("Switch", isOn));
        const Evaluation evaluation(now);
        const auto inForce = [&](const char* name) {
            return AttributeInForce(evaluation, now, now.Of().Find(name).value());
        };
        EXPECT_EQ(inForce("Level").LowerBound, isOn ? 10 : 0);
        EXPECT_EQ(inForce("Level").UpperBound, isOn ? 50 : 100);
        EXPECT_EQ(inForce("Level").ScalarIncrement.has_value(), isOn);
        EXPECT_EQ(inForce("Level").DefaultValue, isOn ? Value(std::int64_t{20}) : Value());
        EXPECT_EQ(inForce("Level").WarningText.has_value(), isOn);
        EXPECT_EQ(inForce("Level").HelpText.has_value(), isOn);
        EXPECT_EQ(inForce("Level").DisplayName.has_value(), isOn);
        EXPECT_EQ(inForce("Text").MinLength.value_or(0), isOn ? 2 : 0);
        EXPECT_EQ(inForce("Text").MaxLength.value_or(0), isOn ? 4 : 0);
        EXPECT_EQ(inForce("Text").Pattern.value_or(""), isOn ? "a*" : "");
        EXPECT_EQ(inForce("Mode").DefaultValue, isOn ? Value(std::string("Legacy")) : Value());
    }
}

TEST(MenuFlags, AreSnapshotsOfRulesOnTheMenuAlone)
{
    struct Row {
        const char* target; ///< of a rule that is true when the registry came, and false later
        bool isHidden;      ///< later
        bool isMarked;
    };
    for (const Row& row : {Row{"A", true, true}, Row{"M", false, false}, Row{"Other", true, true}}) {
        RegistryBuilder registry;
        registry.Attribute("A", "String", {{"MenuPath", "./M"}});
        registry.Attribute("Switch", "Integer");
        registry.Rule(row.target, "Hidden", true, {Term{"Switch", "EQU", 1}});
        json::value document = registry.Json();
        document.at("RegistryEntries").as_object()["Menus"] =
            json::array{{{"MenuName", "M"}, {"MenuPath", "./M"}, {"Hidden", true}},
                        {{"MenuName", "Other"}, {"MenuPath", "./Other"}, {"Hidden", true}}};
        const auto model = ModelOf(document);
        const SystemValues then(model, ValuesFrom({{"Switch", std::int64_t{1}}}));
        const SystemValues now(model, ValuesFrom({{"Switch", std::int64_t{0}}}));
        const Verdict verdict = Evaluation(now, then).VerdictOn(model->Find("A").value(), Property::Hidden);
        EXPECT_EQ(verdict.Value, row.isHidden) << row.target;
        EXPECT_EQ(verdict.Marked, row.isMarked) << row.target;
        EXPECT_TRUE(verdict.Certain) << row.target;
    }
}

TEST(MenuFlags, AreNamedWhereTheyAreTheMark)
{
    const auto reasonOf = [](bool isOwn, const char* target) {
        RegistryBuilder registry;
        registry.Attribute("A", "String", {{"MenuPath", "./M/N"}, {"Hidden", isOwn}});
        registry.Attribute("Switch", "Integer");
        registry.Rule(target, "Hidden", true, {Term{"Switch", "EQU", 1}});
        json::value document = registry.Json();
        document.at("RegistryEntries").as_object()["Menus"] =
            json::array{{{"MenuName", "M"}, {"MenuPath", "./M"}, {"Hidden", true}},
                        {{"MenuName", "N"}, {"MenuPath", "./M/N"}, {"Hidden", true}}};
        const auto model = ModelOf(document);
        const SystemValues then(model, ValuesFrom({{"Switch", std::int64_t{1}}}));
        const SystemValues now(model, ValuesFrom({{"Switch", std::int64_t{0}}}));
        const Evaluation evaluation(now, then);
        const std::string reason = ReasonFor(evaluation, now, 0, Property::Hidden);
        EXPECT_EQ(ReasonFor(Evaluation(then).ForValues(now), now, 0, Property::Hidden), reason);
        EXPECT_EQ(evaluation.MenuThatMarks(0, Property::ReadOnly), std::nullopt);
        EXPECT_EQ(evaluation.MenuThatMarks(1, Property::Hidden), std::nullopt);
        return reason;
    };
    const std::string byM = "marked hidden by the controller with the menu M";
    const std::string byN = "marked hidden by the controller with the menu N";
    EXPECT_EQ(reasonOf(false, "Switch"), byM); // all are marks: the setting's own, else that of the first menu
    EXPECT_EQ(reasonOf(true, "Switch"), "marked hidden by the controller");
    EXPECT_EQ(reasonOf(false, "M"), byN + "; no rule explains it"); // the flag of M is a snapshot of what its rule gave
    EXPECT_EQ(reasonOf(false, "N"), byM + "; no rule explains it");
    EXPECT_EQ(reasonOf(true, "M"), byN + "; no rule explains it"); // and so is the setting's own
    EXPECT_EQ(reasonOf(true, "A"), byM + "; no rule explains it");
}

TEST_F(RuleMeaning, WhatIsAcceptedHangsOnTheRuleInForceAndThoseBeforeIt)
{
    const Term known{"Mode", "EQU", "Uefi"};
    const Term unknown{"Gone", "EQU", 1};
    m_Registry.Rule("Level", "UpperBound", 50, {unknown}); // would give the same
    m_Registry.Rule("Level", "UpperBound", 50, {known});
    m_Registry.Rule("Level", "UpperBound", 60, {unknown}); // comes too late
    const SystemValues now = Read({{"Mode", std::string("Uefi")}});
    EXPECT_EQ(DoubtAboutValues(Evaluation(now), now, now.Of().Find("Level").value()), "");
    m_Registry.Rule("Level", "LowerBound", 1, {unknown});
    m_Registry.Rule("Level", "LowerBound", 2, {known});
    const SystemValues then = Read({{"Mode", std::string("Uefi")}});
    EXPECT_EQ(DoubtAboutValues(Evaluation(then), then, then.Of().Find("Level").value()),
              "rule 3 reads Gone, and no attribute has that name");
}

TEST_F(RuleMeaning, WhatIsAcceptedMayHangOnWhatIsNotKnown)
{
    m_Registry.Rule("Level", "UpperBound", 50, {Term{"Gone", "EQU", 1}});
    const SystemValues now = Read({});
    const Evaluation evaluation(now);
    EXPECT_EQ(DoubtAboutValues(evaluation, now, now.Of().Find("Level").value()),
              "rule 0 reads Gone, and no attribute has that name");
    EXPECT_EQ(DoubtAboutValues(evaluation, now, now.Of().Find("Mode").value()), "");
}

TEST_F(RuleMeaning, APropertyMayHangOnWhatIsNotKnown)
{
    m_Registry.Rule("Level", "DefaultValue", 5, {Term{"Gone", "EQU", 1}});
    m_Registry.Rule("Level", "DefaultValue", 7, {Term{"Mode", "EQU", "Uefi"}});
    m_Registry.Rule("Level", "HelpText", "x", {Term{"Mode", "EQU", "Uefi"}});
    m_Registry.Rule("Level", "HelpText", "y", {Term{"Gone", "EQU", 1}}); // comes too late
    const SystemValues now = Read({{"Mode", std::string("Uefi")}});
    const Evaluation evaluation(now);
    const std::size_t level = now.Of().Find("Level").value();
    EXPECT_EQ(DoubtAbout(evaluation, now, level, Property::DefaultValue),
              "rule 0 reads Gone, and no attribute has that name");
    EXPECT_EQ(DoubtAbout(evaluation, now, level, Property::HelpText), "");
    EXPECT_EQ(DoubtAbout(evaluation, now, level, Property::UpperBound), "");
    EXPECT_EQ(DoubtAboutValues(evaluation, now, level), ""); // a default decides nothing about other values
}

TEST_F(RuleMeaning, AValueThatCannotBeReadIsNoneAndNothingStandsInForIt)
{
    m_Registry.Attribute("Own", "Integer", {{"CurrentValue", 4}});
    m_Registry.Rule("Target", "ReadOnly", true, {Term{"Own", "EQU", 4}});
    const auto model = Model::Read(ReadRegistryDocument(m_Registry.Text()));
    const SystemValues now(model, ReadValuesDocument(R"({"Own": 5.5})"));
    EXPECT_EQ(Evaluation(now).TruthOf(0), Truth::Unknown);
}

/** The changes of a cascade, each in a line: "1 Target=true". */
std::vector<std::string> Lines(const Cascade& cascade)
{
    std::vector<std::string> lines;
    for (const RuleChange& change : cascade.Changes) {
        lines.push_back(std::to_string(change.Wave) + " " + cascade.After.Of().Attributes()[change.Attribute].Name +
                        "=" + ToText(change.To));
    }
    return lines;
}

class RuleEvents : public RuleMeaning {
protected:
    void Rule(const char* target, json::value value, const Term& term, const char* trigger = "")
    {
        json::array mapFrom{{{"MapFromAttribute", term.Attribute},
                             {"MapFromProperty", "CurrentValue"},
                             {"MapFromCondition", term.Condition},
                             {"MapFromValue", term.Value}}};
        m_Registry.RawRule(json::object{{"DependencyFor", trigger},
                                        {"Dependency",
                                         {{"MapFrom", std::move(mapFrom)},
                                          {"MapToAttribute", target},
                                          {"MapToProperty", "CurrentValue"},
                                          {"MapToValue", std::move(value)}}}});
    }

    Cascade ChangeOf(const SettingValueMap& values, const std::vector<std::pair<const char*, Value>>& changes)
    {
        const SystemValues before = Read(values);
        std::vector<std::pair<std::size_t, Value>> byHand;
        for (const auto& [name, value] : changes) {
            byHand.emplace_back(before.Of().Find(name).value(), value);
        }
        return Change(before, byHand);
    }
};

TEST_F(RuleMeaning, AnUnknownRuleThatComesFirstLeavesOpenWhereAFlagCameFrom)
{
    // the values then: of Level nothing is known, and Switch is on
    const struct {
        bool first, second; ///< what the rules give: one on Level, then one on Switch
        Verdict verdict;    ///< for other values, of which both rules are false
    } rows[] = {
        {false, true, {true, false, false}},
        {true, false, {true, false, false}},
        {true, true, {false, true, false}}, // explained in any case
        {false, false, {true, true, true}}, // a mark in any case
    };
    for (const auto& row : rows) {
        RegistryBuilder kept = m_Registry;
        m_Registry.Rule("Marked", "ReadOnly", row.first, {Term{"Level", "EQU", 1}});
        m_Registry.Rule("Marked", "ReadOnly", row.second, {Term{"Switch", "EQU", true}});
        const SystemValues then = Read({{"Switch", true}});
        m_Registry = std::move(kept);
        SystemValues now = then;
        now.Assume(then.Of().Find("Level").value(), std::int64_t{2});
        now.Assume(then.Of().Find("Switch").value(), false);
        const Verdict verdict = VerdictOf(Evaluation(now, then), "Marked", Property::ReadOnly);
        EXPECT_EQ(verdict.Value, row.verdict.Value) << row.first << row.second;
        EXPECT_EQ(verdict.Certain, row.verdict.Certain) << row.first << row.second;
        EXPECT_EQ(verdict.Marked, row.verdict.Marked) << row.first << row.second;
    }
}

TEST_F(RuleEvents, ActInWavesAfterAChange)
{
    Rule("Level", 50, {"Mode", "EQU", "Legacy"}, "Mode");
    Rule("Switch", true, {"Level", "EQU", 50}, "Level");
    Rule("Text", "on", {"Switch", "EQU", true}, "Switch");
    const SettingValueMap values{
        {"Mode", std::string("Uefi")}, {"Level", std::int64_t{0}}, {"Switch", false}, {"Text", std::string("off")}};
    const Cascade cascade = ChangeOf(values, {{"Mode", std::string("Legacy")}});
    EXPECT_THAT(Lines(cascade), ElementsAre("1 Level=50", "2 Switch=true", "3 Text=on"));
    EXPECT_FALSE(cascade.IsCycle || cascade.IsCut);
    EXPECT_THAT(Lines(ChangeOf(values, {{"Mode", std::string("Uefi")}})), IsEmpty()); // nothing really changes
}

TEST_F(RuleEvents, AreTriggeredByWhatDependencyForNames)
{
    Rule("Switch", true, {"Level", "EQU", 5}, "Level");
    Rule("Text", "x", {"Level", "EQU", 5}, "Mode"); // names no source: then the source triggers it
    const SettingValueMap values{{"Level", std::int64_t{1}}, {"Switch", false}, {"Text", std::string()}};
    EXPECT_THAT(Lines(ChangeOf(values, {{"Level", std::int64_t{5}}})), ElementsAre("1 Switch=true", "1 Text=x"));
}

TEST_F(RuleEvents, NeverOverwriteWhatIsSetByHand)
{
    Rule("Switch", true, {"Level", "EQU", 5}, "Level");
    const SettingValueMap values{{"Level", std::int64_t{1}}, {"Switch", true}};
    const Cascade cascade = ChangeOf(values, {{"Level", std::int64_t{5}}, {"Switch", false}});
    EXPECT_THAT(Lines(cascade), IsEmpty());
    ASSERT_EQ(cascade.Conflicts.size(), 1U);
    EXPECT_EQ(cascade.Conflicts[0].Wanted, Value(true));
    EXPECT_EQ(cascade.Conflicts[0].Kept, Value(false));
    EXPECT_EQ(cascade.Conflicts[0].KeptBy, std::nullopt);
}

TEST_F(RuleEvents, OfRulesThatClashTheFirstCounts)
{
    Rule("Text", "first", {"Level", "EQU", 5}, "Level");
    Rule("Text", "second", {"Level", "GTR", 4}, "Level");
    const SettingValueMap values{{"Level", std::int64_t{1}}, {"Text", std::string()}};
    const Cascade cascade = ChangeOf(values, {{"Level", std::int64_t{5}}});
    EXPECT_THAT(Lines(cascade), ElementsAre("1 Text=first"));
    ASSERT_EQ(cascade.Conflicts.size(), 1U);
    EXPECT_EQ(cascade.Conflicts[0].KeptBy, 0U);
}

TEST_F(RuleEvents, EndWhereTheyComeBackToAState)
{
    Rule("Switch", true, {"Target", "EQU", true}, "Target");
    Rule("Target", false, {"Switch", "EQU", true}, "Switch");
    Rule("Switch", false, {"Target", "EQU", false}, "Target");
    Rule("Target", true, {"Switch", "EQU", false}, "Switch");
    m_Registry.Rule("Switch", "CurrentValue", true, {Term{"Level", "EQU", 5}});
    const SettingValueMap values{{"Level", std::int64_t{1}}, {"Switch", false}, {"Target", true}};
    const Cascade cascade = ChangeOf(values, {{"Level", std::int64_t{5}}});
    EXPECT_TRUE(cascade.IsCycle);
    EXPECT_FALSE(cascade.IsCut);
    EXPECT_LT(cascade.Changes.size(), 10U);
}

TEST_F(RuleEvents, MayComeAgainWithoutBeingTheStateBefore)
{
    Rule("Switch", true, {"Mode", "EQU", "Legacy"}, "Mode");
    Rule("Text", "x", {"Switch", "EQU", true}, "Switch");
    Rule("Switch", false, {"Text", "EQU", "x"}, "Text");
    const Cascade cascade = ChangeOf({{"Mode", std::string("Uefi")}, {"Switch", false}, {"Text", std::string()}},
                                     {{"Mode", std::string("Legacy")}});
    EXPECT_THAT(Lines(cascade), ElementsAre("1 Switch=true", "2 Text=x", "3 Switch=false"));
    EXPECT_FALSE(cascade.IsCycle);
}

TEST_F(RuleEvents, AreNoCycleWhereWhatIsTakenBackTriggersNothing)
{
    Rule("Switch", true, {"Mode", "EQU", "Legacy"}, "Mode");
    Rule("Switch", false, {"Switch", "EQU", true}, "Switch");
    const Cascade cascade =
        ChangeOf({{"Mode", std::string("Uefi")}, {"Switch", false}}, {{"Mode", std::string("Legacy")}});
    EXPECT_THAT(Lines(cascade), ElementsAre("1 Switch=true", "2 Switch=false"));
    EXPECT_FALSE(cascade.IsCycle) << "the values are as before, but nothing acts on them any more";
    EXPECT_FALSE(cascade.IsCut);
}

/** Bits that count wave by wave from when "Tick" becomes true, and rules that each wave would change "Text". */
void AddCounter(RegistryBuilder& registry, std::size_t bits, std::size_t rulesForText)
{
    const auto nameOf = [](std::size_t bit) { return "Bit" + std::to_string(bit); };
    registry.Attribute("Tick", "Boolean").Rule("Bit0", "CurrentValue", true, {{"Tick", "EQU", true}});
    for (std::size_t bit = 0; bit < bits; ++bit) {
        registry.Attribute(nameOf(bit), "Boolean", {{"CurrentValue", false}});
        for (const bool is : {false, true}) {
            json::array mapFrom;
            for (std::size_t lower = 0; lower <= bit; ++lower) {
                mapFrom.push_back({{"MapFromAttribute", nameOf(lower)},
                                   {"MapFromProperty", "CurrentValue"},
                                   {"MapFromCondition", "EQU"},
                                   {"MapFromValue", lower < bit || is},
                                   {"MapTerms", lower > 0 ? "AND" : ""}});
            }
            registry.RawRule(json::object{{"DependencyFor", "Bit0"},
                                          {"Dependency",
                                           {{"MapFrom", std::move(mapFrom)},
                                            {"MapToAttribute", nameOf(bit)},
                                            {"MapToProperty", "CurrentValue"},
                                            {"MapToValue", !is}}}});
        }
    }
    for (std::size_t rule = 0; rule < rulesForText; ++rule) {
        registry.Rule("Text", "CurrentValue", json::value(std::to_string(rule)), {Term{"Bit0", "NEQ", nullptr}});
    }
}

TEST_F(RuleEvents, AreACycleWhereAllWouldHappenAgain)
{
    for (const std::size_t bits : {1U, 2U, 5U}) {
        m_Registry = RegistryBuilder();
        AddCounter(m_Registry, bits, 0);
        const Cascade cascade = ChangeOf({{"Tick", false}}, {{"Tick", true}});
        EXPECT_TRUE(cascade.IsCycle);
        EXPECT_FALSE(cascade.IsCut);
        ASSERT_FALSE(cascade.Changes.empty());
        EXPECT_EQ(cascade.Changes.back().Wave, (std::size_t{1} << bits) + 1);
    }
}

TEST_F(RuleEvents, AreEndedAfterManyWavesAndManyEffects)
{
    AddCounter(m_Registry, 11, 0);
    const Cascade longest = ChangeOf({{"Tick", false}}, {{"Tick", true}});
    EXPECT_TRUE(longest.IsCut);
    EXPECT_FALSE(longest.IsCycle);
    ASSERT_FALSE(longest.Changes.empty());
    EXPECT_EQ(longest.Changes.back().Wave, 1'000U);

    m_Registry = RegistryBuilder();
    m_Registry.Attribute("Text", "String");
    AddCounter(m_Registry, 11, 300);
    const Cascade largest = ChangeOf({{"Tick", false}}, {{"Tick", true}, {"Text", std::string("kept")}});
    EXPECT_TRUE(largest.IsCut);
    ASSERT_FALSE(largest.Changes.empty());
    EXPECT_LT(largest.Changes.back().Wave, 1'000U);
    const std::size_t effects = largest.Changes.size() + largest.Conflicts.size();
    EXPECT_GT(effects, 250'000U);
    EXPECT_LT(effects, 250'000U + 300U + 11U + 1U);
}

TEST_F(RuleEvents, MayHappenWhereTheConditionIsUnknown)
{
    m_Registry.Rule("Text", "CurrentValue", "x", {Term{"Level", "EQU", 5}, Term{"Gone", "EQU", 1, "AND"}});
    const Cascade cascade = ChangeOf({{"Level", std::int64_t{1}}}, {{"Level", std::int64_t{5}}});
    EXPECT_THAT(Lines(cascade), IsEmpty());
    EXPECT_THAT(cascade.MayChange, ElementsAre(0));
}

TEST_F(RuleEvents, DoNotHappenOnLoadButAreReported)
{
    Rule("Text", "x", {"Level", "EQU", 5}, "Level");
    const SystemValues now = Read({{"Level", std::int64_t{5}}, {"Text", std::string("y")}});
    EXPECT_EQ(now.ValueOf(now.Of().Find("Text").value()), Value(std::string("y")));
    const auto deviations = DeviationsFromRules(Evaluation(now), now);
    ASSERT_EQ(deviations.size(), 1U);
    EXPECT_EQ(deviations[0].Given, Value(std::string("x")));
    EXPECT_THAT(DeviationsFromRules(Evaluation(Read({{"Level", std::int64_t{5}}, {"Text", std::string("x")}})),
                                    Read({{"Level", std::int64_t{5}}, {"Text", std::string("x")}})),
                IsEmpty());
}

TEST_F(RuleMeaning, PasswordsHaveNoText)
{
    m_Registry.Rule("Target", "ReadOnly", true, {Term{"Secret", "EQU", "hunter2"}});
    m_Registry.Rule("Secret", "CurrentValue", "hunter3", {Term{"Switch", "EQU", true}});
    const SystemValues now = Read({{"Secret", std::string("hunter1")}, {"Switch", true}});
    EXPECT_EQ(ToText(now.ValueOf(now.Of().Find("Secret").value())), "********");
    std::string printed;
    for (const Rule& rule : now.Of().Rules()) {
        printed += ToText(rule);
    }
    const Evaluation evaluation(now);
    printed += ReasonFor(evaluation, now, now.Of().Find("Target").value(), Property::ReadOnly);
    printed += ToText(Explain(now, 0).Current);
    EXPECT_EQ(printed.find("hunter"), std::string::npos) << printed;
}

TEST_F(RuleMeaning, FindingsHaveNoTextOfAPassword)
{
    m_Registry.Rule("Secret", "LowerBound", "hunter2", {Term{"Switch", "EQU", true}});
    m_Registry.Rule("Secret", "DefaultValue", "hunter2", {Term{"Secret", "EQU", "hunter2", "hunter2"}});
    m_Registry.Attribute("Blank", "Password ", {{"CurrentValue", "hunter2"}, {"DefaultValue", "hunter2"}});
    const SystemValues now = Read({{"Blank", std::string("hunter2")}});
    std::vector<Finding> findings = now.Of().Findings();
    ValuesDocument document;
    document.Values = {{"Secret", std::string("hunter2")}, {"Blank", std::string("hunter2")}};
    for (const std::vector<Finding>& more : {now.Findings(document), LintRegistry(now.Of())}) {
        findings.insert(findings.end(), more.begin(), more.end());
    }
    EXPECT_GE(findings.size(), 2U);
    for (const Finding& finding : findings) {
        EXPECT_EQ((finding.Found + finding.Consequence).find("hunter2"), std::string::npos) << finding.Found;
    }
    EXPECT_EQ(ToText(now.ValueOf(now.Of().Find("Blank").value())), "********");
}

TEST_F(RuleMeaning, ReasonsAreSentences)
{
    const struct {
        std::vector<Term> terms;
        SettingValueMap values;
        const char* reason;
    } rows[] = {
        {{Term{"Mode", "NEQ", "Legacy"}},
         Values("Mode", std::string("Uefi")),
         "read-only because Mode is Uefi, not Legacy (rule 0)"},
        {{Term{"Mode", "EQU", "Uefi"}}, Values("Mode", std::string("Uefi")), "read-only because Mode is Uefi (rule 0)"},
        {{Term{"Text", "EQU", ""}}, Values("Text", std::string()), "read-only because Text is empty (rule 0)"},
        {{Term{"Level", "GTR", 10}},
         Values("Level", fifteen),
         "read-only because Level is 15, greater than 10 (rule 0)"},
        {{Term{"Level", "GEQ", 10}, Term{"Level", "LEQ", 20, "AND"}},
         Values("Level", fifteen),
         "read-only because Level is 15, at least 10, and Level is 15, at most 20 (rule 0)"},
        {{Term{"Level", "LSS", 20, "NOT"}},
         Values("Level", std::int64_t{30}),
         "read-only because Level is 30, not less than 20 (rule 0)"},
        {{Term{"Mode", "EQU", "Legacy"}, Term{"Mode", "EQU", "Uefi", "OR"}},
         Values("Mode", std::string("Uefi")),
         "read-only because Mode is Uefi (rule 0)"}, // the alternative that holds
        {{Term{"Mode", "EQU", nullptr}}, {}, "read-only because Mode has no value (rule 0)"},
        {{Term{"Marked", "EQU", true, "", "ReadOnly"}}, {}, "read-only because Marked is read-only (rule 0)"},
        {{Term{"Mode", "EQU", "Legacy"}}, Values("Mode", std::string("Uefi")), ""},
        {{Term{"Mode", "EQU", "Legacy"}},
         {},
         "unknown whether read-only: rule 0 reads Mode, and the system does not report it; the controller's own flag "
         "says no"},
        {{Term{"Mode", "EQU", "Legacy"}},
         Values("Mode", std::nullopt),
         "unknown whether read-only: rule 0 reads Mode, and the system has no value for it; the controller's own flag "
         "says no"},
        {{Term{"Gone", "EQU", "x"}},
         {},
         "unknown whether read-only: rule 0 reads Gone, and no attribute has that name; the controller's own flag says "
         "no"},
        {{Term{"Secret", "EQU", "x"}},
         {},
         "unknown whether read-only: rule 0 reads Secret, and a password is never known; the controller's own flag "
         "says "
         "no"},
        {{Term{"Level", "BITAND", 1}},
         {},
         "unknown whether read-only: rule 0 has no meaning: the condition of a term is \"BITAND\"; the controller's "
         "own "
         "flag says no"},
    };
    for (const auto& row : rows) {
        RegistryBuilder kept = m_Registry;
        m_Registry.Rule("Target", "ReadOnly", true, row.terms);
        const SystemValues now = Read(row.values);
        EXPECT_EQ(ReasonFor(Evaluation(now), now, now.Of().Find("Target").value(), Property::ReadOnly), row.reason);
        m_Registry = std::move(kept);
    }
}

TEST_F(RuleMeaning, ReasonsHaveEightClausesAtMost)
{
    const auto reasonFor = [this](int count, const char* joiner) {
        RegistryBuilder kept = m_Registry;
        std::vector<Term> terms;
        for (int number = 0; number < count; ++number) {
            const std::string name = "N" + std::to_string(number);
            m_Registry.Attribute(name, "Integer", {{"CurrentValue", number}});
            terms.push_back(Term{name, "EQU", number, number > 0 ? joiner : ""});
        }
        m_Registry.Rule("Target", "ReadOnly", true, terms);
        const SystemValues now = Read({});
        m_Registry = std::move(kept);
        return ReasonFor(Evaluation(now), now, now.Of().Find("Target").value(), Property::ReadOnly);
    };
    const std::string eight =
        "read-only because N0 is 0 and N1 is 1 and N2 is 2 and N3 is 3 and N4 is 4 and N5 is 5 and "
        "N6 is 6 and N7 is 7";
    EXPECT_EQ(reasonFor(8, "AND"), eight + " (rule 0)");
    EXPECT_EQ(reasonFor(9, "AND"), eight + ", and for 1 more reason (rule 0)");
    EXPECT_EQ(reasonFor(100, "AND"), eight + ", and for 92 more reasons (rule 0)");
    EXPECT_EQ(reasonFor(100, "OR"), "read-only because N0 is 0 (rule 0)");
}

TEST(Reasons, CutLongNames)
{
    const std::string name(100'000, 'n');
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"MenuPath", json::string("./" + name)}}).Attribute(name, "String");
    registry.Rule("A", "ReadOnly", true, {Term{name, "EQU", nullptr}});
    registry.Rule("A", "Hidden", true, {Term{name, "EQU", "x"}});
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] =
        json::array{{{"MenuName", json::string(name)}, {"MenuPath", json::string("./" + name)}, {"GrayOut", true}}};
    const SystemValues now(ModelOf(document));
    const Evaluation evaluation(now);
    for (const Property flag : {Property::ReadOnly, Property::Hidden, Property::GrayOut}) {
        const std::string reason = ReasonFor(evaluation, now, 0, flag);
        EXPECT_NE(reason.find("nnn..."), std::string::npos) << Name(flag);
        EXPECT_LT(reason.size(), 300U) << Name(flag);
    }
}

TEST_F(RuleMeaning, MarksAreCalledMarks)
{
    const SystemValues without = Read({});
    const std::size_t marked = without.Of().Find("Marked").value();
    EXPECT_EQ(ReasonFor(Evaluation(without), without, marked, Property::ReadOnly),
              "marked read-only by the controller");
    m_Registry.Rule("Marked", "ReadOnly", true, {Term{"Switch", "EQU", true}});
    const SystemValues off = Read(Values("Switch", false));
    EXPECT_EQ(ReasonFor(Evaluation(off), off, marked, Property::ReadOnly),
              "marked read-only by the controller; no rule explains it");
    const SystemValues unknown = Read({});
    EXPECT_EQ(ReasonFor(Evaluation(off, unknown), off, marked, Property::ReadOnly),
              "unknown whether read-only: the controller marks it, and the rules that could explain it were not known "
              "then");
}

TEST_F(RuleMeaning, ExplanationsHaveTheTruthOfEachPart)
{
    m_Registry.Rule("Target", "ReadOnly", true,
                    {Term{"Mode", "EQU", "Uefi"}, Term{"Level", "GTR", 10, "OR"}, Term{"Gone", "EQU", 1, "OR"}});
    const SystemValues now = Read({{"Mode", std::string("Legacy")}, {"Level", fifteen}});
    const Explanation whole = Explain(now, 0);
    EXPECT_EQ(whole.What, Condition::Kind::Any);
    EXPECT_EQ(whole.Is, Truth::True);
    ASSERT_EQ(whole.Parts.size(), 3U);
    EXPECT_EQ(whole.Parts[0].Is, Truth::False);
    EXPECT_EQ(whole.Parts[0].Current, Value(std::string("Legacy")));
    EXPECT_EQ(whole.Parts[1].Is, Truth::True);
    EXPECT_EQ(whole.Parts[1].Asked->Name, "Level");
    EXPECT_EQ(whole.Parts[2].Is, Truth::Unknown);
    EXPECT_EQ(whole.Parts[2].Because, "no attribute has that name");
    const Explanation pruned = Pruned(whole);
    EXPECT_EQ(pruned.What, Condition::Kind::Test);
    EXPECT_EQ(pruned.Asked->Name, "Level");
}

} // namespace
