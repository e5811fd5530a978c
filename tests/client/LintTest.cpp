#include "ClientTest.h"

#include "support/RegistryBuilder.h"

#include <limits>
#include <memory>
#include <random>

// What is odd about a registry as a whole, and about the values of a system beside it.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const std::string attributesPointer = "/RegistryEntries/Attributes/";
const std::string rulesPointer = "/RegistryEntries/Dependencies/";

json::object Choices(const std::vector<std::pair<std::string, std::string>>& names)
{
    json::array choices;
    for (const auto& [name, displayName] : names) {
        choices.push_back(RegistryBuilder::Choice(name, displayName));
    }
    return {{"Value", choices}};
}

/** Attributes of every kind, and T, a target for rules. */
RegistryBuilder SomeAttributes()
{
    RegistryBuilder registry;
    registry.Attribute("Fan", "Enumeration", Choices({{"Off", "Fan off"}, {"Low", "Low"}, {"High", "Full speed"}}));
    registry.Attribute("Lid", "Boolean");
    registry.Attribute("Step", "Integer", {{"LowerBound", 0}, {"UpperBound", 2}});
    registry.Attribute("Percent", "Integer", {{"LowerBound", 0}, {"UpperBound", 100}});
    registry.Attribute("Wide", "Integer",
                       {{"LowerBound", 0}, {"UpperBound", std::numeric_limits<std::int64_t>::max()}});
    registry.Attribute("Any", "Integer");
    registry.Attribute("Tag", "String", {{"MinLength", 1}});
    registry.Attribute("Speed", "Enumeration", Choices({{"800", "800"}, {"1600", "1600"}, {"3200", "3200"}}));
    registry.Attribute("Clock", "Enumeration", Choices({{"1", "800 MHz"}, {"2", "1600 MHz"}}));
    registry.Attribute("Size", "Enumeration", Choices({{"0", "4G"}, {"0", "8G"}, {"1", "None"}}));
    registry.Attribute("Pin", "Password", {{"CurrentValue", "s3cret"}});
    registry.Attribute("T", "String", {{"MinLength", 1}});
    return registry;
}

std::vector<Finding> FindingsOf(const RegistryBuilder& builder)
{
    return LintRegistry(*Model::Read(ReadRegistryDocument(builder.Text())));
}

std::vector<std::string> KindsOf(const std::vector<Finding>& findings)
{
    std::vector<std::string> kinds;
    for (const Finding& finding : findings) {
        kinds.emplace_back(Word(finding.Kind));
    }
    return kinds;
}

/** What is found of one rule for T.CurrentValue, which makes no flag and no cycle. */
std::vector<Finding> FindingsOfRule(const std::vector<Term>& terms)
{
    return FindingsOf(SomeAttributes().Rule("T", "CurrentValue", "x", terms));
}

/** The same of a rule with the list of terms as it is. */
std::vector<Finding> FindingsOfTerms(const char* mapFrom)
{
    return FindingsOf(SomeAttributes().RawRule({{"Dependency",
                                                 {{"MapFrom", json::parse(mapFrom)},
                                                  {"MapToAttribute", "T"},
                                                  {"MapToProperty", "CurrentValue"},
                                                  {"MapToValue", "x"}}}}));
}

struct RuleRow {
    std::vector<Term> Terms;
    const char* Found; ///< behind "the rule for CurrentValue of T "
};

void ExpectEach(const std::vector<RuleRow>& rows, const char* kind)
{
    for (const RuleRow& row : rows) {
        const std::vector<Finding> findings = FindingsOfRule(row.Terms);
        EXPECT_THAT(KindsOf(findings), ElementsAre(kind)) << row.Found;
        if (!findings.empty()) {
            EXPECT_EQ(findings[0].Found, std::string("the rule for CurrentValue of T ") + row.Found);
        }
    }
}

TEST(Contradictions, RulesThatNeverHold)
{
    ExpectEach(
        {
            {{{"Fan", "EQU", "Off", "AND"}, {"Fan", "EQU", "Low"}},
             "never holds: it needs Fan to be Off and also to be Low"},
            {{{"Fan", "EQU", "Fast"}}, "never holds: it needs Fan to be Fast"},
            {{{"Percent", "EQU", 101}}, "never holds: it needs Percent to be 101"},
            {{{"Percent", "EQU", -1, "AND"}, {"Lid", "EQU", true}}, "never holds: it needs Percent to be -1"},
            {{{"Lid", "EQU", true, "AND"}, {"Tag", "EQU", "x", "AND"}, {"Lid", "EQU", false}},
             "never holds: it needs Lid to be true and also to be false"},
            {{{"Tag", "EQU", "x", "AND"}, {"Tag", "EQU", "y"}}, "never holds: it needs Tag to be x and also to be y"},
            {{{"Tag", "EQU", "x", "AND"}, {"Tag", "EQU", nullptr}},
             "never holds: it needs Tag to be x and also to have no value"},
            // without a value it is unknown
            {{{"Fan", "NEQ", "Off", "AND"}, {"Fan", "NEQ", "Low", "AND"}, {"Fan", "NEQ", "High"}},
             "never holds: it needs Fan to be anything but Off and also to be anything but High or Low"},
            // grouped to the right: Off and (Low or High)
            {{{"Fan", "EQU", "Off", "AND"}, {"Fan", "EQU", "Low", "OR"}, {"Fan", "EQU", "High"}},
             "never holds: it needs Fan to be Off and also to be High or Low, or something as impossible"},
            {{{"Fan", "EQU", "Fast", "OR"}, {"Percent", "EQU", 101}},
             "never holds: it needs Fan to be Fast, or something as impossible"},
        },
        "never-holds");
}

TEST(Contradictions, RulesThatMayHold)
{
    const std::vector<Term> sometimes[] = {
        {{"Fan", "EQU", "Off"}},
        {{"Fan", "EQU", "Off", "AND"}, {"Fan", "NEQ", "Low"}},
        {{"Fan", "NEQ", "Off", "AND"}, {"Fan", "NEQ", "Low"}},
        {{"Fan", "EQU", "Off", "OR"}, {"Fan", "EQU", "Low"}},
        {{"Percent", "EQU", 100}},
        {{"Tag", "EQU", "anything"}},
        {{"Any", "EQU", -5}},
        {{"Tag", "NEQ", nullptr}},
        {{"Tag", "EQU", nullptr}},
        // High or (Off and Low)
        {{"Fan", "EQU", "High", "OR"}, {"Fan", "EQU", "Off", "AND"}, {"Fan", "EQU", "Low"}},
        {{"Lid", "EQU", true, "OR"}, {"Fan", "NEQ", "Off"}},
        // always true together, but not for every value of one attribute
        {{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false, "AND"}, {"Fan", "EQU", "Off"}},
    };
    for (const auto& terms : sometimes) {
        EXPECT_THAT(KindsOf(FindingsOfRule(terms)), IsEmpty()) << terms[0].Attribute << json::serialize(terms[0].Value);
    }
}

TEST(Contradictions, RulesThatAlwaysHold)
{
    ExpectEach(
        {
            {{{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}}, "holds whatever value Lid has"},
            {{{"Lid", "NEQ", true, "OR"}, {"Lid", "NEQ", false}}, "holds whatever value Lid has"},
            {{{"Tag", "NEQ", "x", "OR"}, {"Tag", "NEQ", "y"}}, "holds whatever value Tag has"},
            {{{"Tag", "NEQ", "x", "OR"}, {"Tag", "EQU", "x"}}, "holds whatever value Tag has"},
            {{{"Fan", "NEQ", "Fast"}}, "holds whatever value Fan has"},
            {{{"Fan", "EQU", "Off", "OR"}, {"Fan", "EQU", "Low", "OR"}, {"Fan", "EQU", "High"}},
             "holds whatever value Fan has"},
            {{{"Step", "EQU", 0, "OR"}, {"Step", "EQU", 1, "OR"}, {"Step", "EQU", 2}}, "holds whatever value Step has"},
            {{{"Percent", "NEQ", -1}}, "holds whatever value Percent has"},
            {{{"Lid", "EQU", nullptr, "OR"}, {"Lid", "NEQ", nullptr}}, "holds whatever Lid is"},
            {{{"Fan", "EQU", "Off", "OR"}, {"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}},
             "holds whatever value Lid has"},
        },
        "always-holds");
}

TEST(Contradictions, ARuleThatAsksForAValueIsMeantToHoldForAll)
{
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Lid", "NEQ", nullptr}})), IsEmpty());
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Lid", "NEQ", nullptr, "OR"}, {"Lid", "EQU", true}})), IsEmpty());
    EXPECT_THAT(
        KindsOf(FindingsOfRule({{"Lid", "NEQ", nullptr, "AND"}, {"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}})),
        IsEmpty());
}

TEST(Contradictions, RangesAreIntervals)
{
    const auto range = [](const char* name, std::int64_t lower, std::int64_t upper, const char* joiner) {
        return FindingsOfRule({{name, "GEQ", lower, joiner}, {name, "LEQ", upper}});
    };
    for (const char* name : {"Percent", "Wide", "Any"}) {
        EXPECT_THAT(KindsOf(range(name, 10, 20, "AND")), IsEmpty()) << name;
        EXPECT_THAT(KindsOf(range(name, 10, 20, "OR")), ElementsAre("always-holds")) << name;
        EXPECT_THAT(KindsOf(range(name, 20, 10, "AND")), ElementsAre("never-holds")) << name;
        EXPECT_THAT(KindsOf(range(name, 20, 10, "OR")), IsEmpty()) << name;
        EXPECT_THAT(KindsOf(range(name, 11, 10, "OR")), ElementsAre("always-holds")) << name << ": nothing is between";
    }
    EXPECT_THAT(KindsOf(range("Percent", 0, 100, "AND")), ElementsAre("always-holds"));
    EXPECT_THAT(KindsOf(range("Percent", 1, 100, "AND")), IsEmpty());
    EXPECT_THAT(KindsOf(range("Wide", 0, 100, "AND")), IsEmpty());
    EXPECT_THAT(KindsOf(range("Wide", 0, std::numeric_limits<std::int64_t>::max(), "AND")),
                ElementsAre("always-holds"));
    EXPECT_EQ(range("Wide", 30, 20, "AND").at(0).Found,
              "the rule for CurrentValue of T never holds: it needs Wide to be 30 or more and also to be 20 or less");
}

TEST(Contradictions, OrdersBeyondTheBounds)
{
    ExpectEach(
        {
            {{{"Percent", "GTR", 100}}, "never holds: it needs Percent to be 101 or more"},
            {{{"Percent", "LSS", "0"}}, "never holds: it needs Percent to be -1 or less"},
            {{{"Any", "GTR", std::numeric_limits<std::int64_t>::max()}},
             "never holds: it needs Any > 9223372036854775807"},
        },
        "never-holds");
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Percent", "GEQ", 0}})), ElementsAre("always-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Wide", "GEQ", 0}})), ElementsAre("always-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Any", "GEQ", 0}})), IsEmpty());
}

TEST(Contradictions, ChoicesThatAreNumbersHaveAnOrder)
{
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Speed", "GTR", 900}})), IsEmpty());
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Speed", "GTR", "3200"}})), ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Speed", "GEQ", "800"}})), ElementsAre("always-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Speed", "GTR", "800", "AND"}, {"Speed", "LSS", "1600"}})),
                ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Speed", "GTR", "800", "AND"}, {"Speed", "LSS", "1601"}})), IsEmpty());
    // only in registries whose values are names these are numbers
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Clock", "GEQ", "1"}})), IsEmpty());
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Clock", "GEQ", "3"}})), ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Fan", "GEQ", "1"}})), ElementsAre("never-holds")) << "no choice is a number";
}

TEST(Contradictions, AnOrderOfChoicesIsOfWhatTheOperandStandsFor)
{
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Clock", "GTR", "800 MHz"}})), IsEmpty()) << "it stands for 1";
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Clock", "GTR", "1600 MHz"}})), ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Clock", "GTR", "800 MHz", "AND"}, {"Clock", "EQU", "1"}})),
                ElementsAre("never-holds"));
}

TEST(Contradictions, ABoundThatRulesReplaceIsNone)
{
    const auto kinds = [](const char* bound, const char* condition, int operand) {
        RegistryBuilder registry = SomeAttributes();
        registry.Rule("Percent", bound, bound == std::string("UpperBound") ? 200 : -100, {{"Lid", "EQU", true}});
        registry.Rule("T", "CurrentValue", "x", {{"Percent", condition, operand}});
        return KindsOf(FindingsOf(registry));
    };
    EXPECT_THAT(kinds("UpperBound", "GTR", 150), IsEmpty());
    EXPECT_THAT(kinds("LowerBound", "GTR", 150), ElementsAre("never-holds"));
    EXPECT_THAT(kinds("LowerBound", "LSS", -50), IsEmpty());
    EXPECT_THAT(kinds("UpperBound", "LSS", -50), ElementsAre("never-holds"));
}

TEST(Contradictions, AChoiceHasTwoNames)
{
    const auto kinds = [](const char* one, const char* other, const char* joiner) {
        return KindsOf(FindingsOfRule({{"Fan", "EQU", one, joiner}, {"Fan", "EQU", other}}));
    };
    EXPECT_THAT(kinds("Off", "Fan off", "AND"), IsEmpty());
    EXPECT_THAT(kinds("Off", "Full speed", "AND"), ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule(
                    {{"Fan", "EQU", "Fan off", "OR"}, {"Fan", "EQU", "Low", "OR"}, {"Fan", "EQU", "Full speed"}})),
                ElementsAre("always-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Fan", "NEQ", "Off", "OR"}, {"Fan", "EQU", "Fan off"}})),
                ElementsAre("always-holds"));
}

TEST(Contradictions, ChoicesThatShareANameAreNotDistinguished)
{
    const std::vector<Term> undecided[] = {
        {{"Size", "EQU", "4G", "AND"}, {"Size", "EQU", "8G"}}, {{"Size", "EQU", "4G", "AND"}, {"Size", "NEQ", "8G"}},
        {{"Size", "EQU", "0", "AND"}, {"Size", "NEQ", "4G"}},  {{"Size", "EQU", "4G", "OR"}, {"Size", "EQU", "None"}},
        {{"Size", "EQU", "0", "OR"}, {"Size", "EQU", "1"}},    {{"Size", "NEQ", "4G", "OR"}, {"Size", "NEQ", "8G"}},
    };
    for (const auto& terms : undecided) {
        EXPECT_THAT(KindsOf(FindingsOfRule(terms)), IsEmpty())
            << json::serialize(terms[0].Value) << terms[0].MapTerms << json::serialize(terms[1].Value);
    }
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Size", "EQU", "4G", "AND"}, {"Size", "EQU", "None"}})),
                ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Size", "NEQ", "4G", "OR"}, {"Size", "NEQ", "None"}})),
                ElementsAre("always-holds"));
}

TEST(Contradictions, CurrentValueAndDefaultCountBesideTheChoices)
{
    for (const char* key : {"CurrentValue", "DefaultValue"}) {
        const auto kinds = [key](const char* condition, json::value value) {
            RegistryBuilder registry;
            json::object fan = Choices({{"Off", "Off"}});
            fan[key] = "Fast";
            registry.Attribute("Fan", "Enumeration", fan);
            registry.Attribute("Step", "Integer", {{"LowerBound", 0}, {"UpperBound", 2}, {key, 7}});
            registry.Attribute("T", "String");
            registry.Rule("T", "HelpText", "x", {{value.is_string() ? "Fan" : "Step", condition, value}});
            std::vector<std::string> found = KindsOf(FindingsOf(registry));
            found.erase(std::remove(found.begin(), found.end(), "default-out-of-bounds"), found.end());
            return found;
        };
        EXPECT_THAT(kinds("EQU", "Fast"), IsEmpty()) << key;
        EXPECT_THAT(kinds("NEQ", "Fast"), IsEmpty()) << key;
        EXPECT_THAT(kinds("EQU", "Slow"), ElementsAre("never-holds")) << key;
        EXPECT_THAT(kinds("EQU", 7), IsEmpty()) << key;
        EXPECT_THAT(kinds("LEQ", 2), IsEmpty()) << key;
        EXPECT_THAT(kinds("EQU", 6), ElementsAre("never-holds")) << key;
        EXPECT_THAT(kinds("LEQ", 7), ElementsAre("always-holds")) << key;
    }
}

TEST(Contradictions, AnOrderRelativeToATextIsNeverKnown)
{
    const std::vector<std::vector<Term>> rows{
        {{"Tag", "GTR", "x"}}, {{"Fan", "LEQ", "High"}}, {{"Percent", "LSS", "half"}}, {{"Lid", "GEQ", false}}};
    for (const std::vector<Term>& terms : rows) {
        EXPECT_THAT(KindsOf(FindingsOfRule(terms)), IsEmpty()) << terms.front().Attribute;
    }
}

TEST(Contradictions, FlagsAndOrdersOfTextsAreNotDecided)
{
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Tag", "GTR", "5", "AND"}, {"Tag", "LSS", "4"}})), IsEmpty());
    EXPECT_THAT(
        KindsOf(FindingsOfRule({{"Tag", "EQU", true, "AND", "ReadOnly"}, {"Tag", "EQU", false, "", "ReadOnly"}})),
        IsEmpty());
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Lid", "EQU", true, "AND", "ReadOnly"}, {"Fan", "EQU", "Fast"}})),
                ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule(
                    {{"Lid", "EQU", true, "AND", "ReadOnly"}, {"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}})),
                IsEmpty());
}

TEST(Contradictions, TermsOnTheControllerDoNotCount)
{
    EXPECT_THAT(KindsOf(FindingsOfRule({{"SYSACS", "EQU", "x"}})), IsEmpty());
    EXPECT_THAT(KindsOf(FindingsOfRule({{"SYSACS", "EQU", "x", "AND"}, {"Fan", "EQU", "Fast"}})),
                ElementsAre("never-holds"));
    EXPECT_THAT(KindsOf(FindingsOfRule({{"SYSACS", "EQU", "x", "OR"}, {"Percent", "GEQ", 0}})),
                ElementsAre("always-holds"));
}

TEST(Contradictions, TermsThatAreNeverKnownProveNothing)
{
    const std::vector<std::vector<Term>> rows{
        {{"Gone", "EQU", 1}},
        {{"Gone", "EQU", nullptr}},
        {{"Lid", "EQU", true, "AND"}, {"Gone", "NEQ", 1}},
        {{"Gone", "EQU", 1, "OR"}, {"Fan", "EQU", "Fast"}},
        {{"Lid", "SOME", 1, "AND"}, {"Lid", "EQU", true}},
        {{"Gone", "EQU", 1, "OR"}, {"Lid", "EQU", true}},
        {{"Gone", "EQU", 1, "AND"}, {"Percent", "GEQ", 0}},
        {{"Lid", "SOME", 1}},
    };
    for (const std::vector<Term>& terms : rows) {
        EXPECT_THAT(KindsOf(FindingsOfRule(terms)), IsEmpty()) << terms.front().Attribute;
    }
    EXPECT_THAT(KindsOf(FindingsOfTerms("[]")), IsEmpty());
    EXPECT_THAT(KindsOf(FindingsOfRule({{"Gone", "EQU", 1, "AND"}, {"Fan", "EQU", "Fast"}})),
                ElementsAre("never-holds")); // whatever is not known
}

TEST(Contradictions, NegationsTurnComparisonsRound)
{
    const std::pair<const char*, const char*> rows[] = {
        {R"([{"MapTerms": "NOT", "MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue", "MapFromCondition": "NEQ",
              "MapFromValue": "Fast"}])",
         "never-holds"},
        {R"([{"MapTerms": "NOT", "MapFromAttribute": "Percent", "MapFromProperty": "CurrentValue", "MapFromCondition": "LEQ",
              "MapFromValue": 100}])",
         "never-holds"},
        {R"([{"MapTerms": "NOT", "MapFromAttribute": "Percent", "MapFromProperty": "CurrentValue", "MapFromCondition": "GEQ",
              "MapFromValue": 101}])",
         "always-holds"},
        // not (Off or Low or High)
        {R"([{"MapTerms": "NOT", "Subexpressions": [
              {"MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
               "MapFromValue": "Off", "MapTerms": "OR"},
              {"MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
               "MapFromValue": "Low", "MapTerms": "OR"},
              {"MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
               "MapFromValue": "High"}]}])",
         "never-holds"},
        // not (Off and Low)
        {R"([{"MapTerms": "NOT", "Subexpressions": [
              {"MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
               "MapFromValue": "Off", "MapTerms": "AND"},
              {"MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
               "MapFromValue": "Low"}]}])",
         "always-holds"},
    };
    for (const auto& [mapFrom, kind] : rows) {
        EXPECT_THAT(KindsOf(FindingsOfTerms(mapFrom)), ElementsAre(kind)) << mapFrom;
    }
    // what is not known is not known the other way round either
    EXPECT_THAT(KindsOf(FindingsOfTerms(
                    R"([{"MapTerms": "NOT", "MapFromAttribute": "Gone", "MapFromProperty": "CurrentValue",
                         "MapFromCondition": "EQU", "MapFromValue": 1}])")),
                IsEmpty());
}

// ---------------------------------------------------------------------------------------------------------------------

/** Attributes whose states can all be tried out, with names of choices that are easily confused. */
class SmallWorld {
public:
    struct Subject {
        std::string Name;
        std::string Type;
        json::object Members;
        std::vector<json::value> Values; ///< that systems have, with null for none
        std::vector<json::value> Operands;
        bool IsClear; ///< what is true can be decided exactly
    };

    SmallWorld()
        : m_Subjects{
              {"Fan",
               "Enumeration",
               Choices({{"Off", "Fan off"}, {"Low", "Low"}, {"High", "Full"}}),
               {"Off", "Fan off", "Low", "High", "Full", nullptr},
               {"Off", "Fan off", "Low", "High", "Full", "Fast", nullptr},
               true},
              {"Size",
               "Enumeration",
               Choices({{"0", "4G"}, {"0", "8G"}, {"1", "0"}, {"2", "2"}}),
               {"0", "4G", "8G", "1", "2", nullptr},
               {"0", "4G", "8G", "1", "2", nullptr},
               false},
              {"Lid", "Boolean", {}, {true, false, nullptr}, {true, false, "neither", nullptr}, true},
              {"Step",
               "Integer",
               {{"LowerBound", 0}, {"UpperBound", 3}},
               {0, 1, 2, 3, nullptr},
               {-1, 0, 1, "2", 3, 4, "none", nullptr},
               true},
              {"Speed",
               "Enumeration",
               Choices({{"800", "800"}, {"1600", "1600 MHz"}, {"9", "3200"}}),
               {"800", "1600", "1600 MHz", "9", "3200", nullptr},
               {"800", "1600", "1600 MHz", "3200", 900, "0", nullptr},
               false},
          }
    {
    }

    const std::vector<Subject>& Subjects() const { return m_Subjects; }

    RegistryBuilder Registry() const
    {
        RegistryBuilder registry;
        for (const Subject& subject : m_Subjects) {
            registry.Attribute(subject.Name, subject.Type, subject.Members);
        }
        return registry.Attribute("T", "String");
    }

    /** Calls with every system: an index into the values of each subject. */
    template <typename Visitor>
    void ForEachSystem(Visitor visit) const
    {
        std::vector<std::size_t> system(m_Subjects.size(), 0);
        for (bool isDone = false; !isDone;) {
            visit(system);
            std::size_t subject = 0;
            while (subject < system.size() && ++system[subject] == m_Subjects[subject].Values.size()) {
                system[subject++] = 0;
            }
            isDone = subject == system.size();
        }
    }

    ValuesDocument ValuesOf(const std::vector<std::size_t>& system) const
    {
        json::object values;
        for (std::size_t subject = 0; subject < system.size(); ++subject) {
            values[m_Subjects[subject].Name] = m_Subjects[subject].Values[system[subject]];
        }
        return ReadValuesDocument(json::serialize(json::object{{"Attributes", values}}));
    }

private:
    std::vector<Subject> m_Subjects;
};

/** Random rules over a small world, and what trying all values out shows of them. */
class RandomRules {
public:
    RandomRules(const SmallWorld& world, unsigned seed, std::size_t count) : m_World(world), m_Random(seed)
    {
        for (std::size_t rule = 0; rule < count; ++rule) {
            m_Subjects.push_back(Below(3) == 0 ? Below(m_World.Subjects().size()) : all);
            m_IsClear.push_back(true);
            m_AsksForValue.push_back(false);
            m_Rules.push_back(Terms(2));
        }
    }

    std::size_t Count() const { return m_Rules.size(); }
    const json::array& MapFrom(std::size_t rule) const { return m_Rules[rule]; }
    bool IsClear(std::size_t rule) const { return m_IsClear[rule]; }
    bool IsAboutOne(std::size_t rule) const { return m_Subjects[rule] != all; }
    bool AsksForValue(std::size_t rule) const { return m_AsksForValue[rule]; }

private:
    static constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

    std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_Random); }

    json::array Terms(int depth)
    {
        json::array terms;
        const std::size_t count = 1 + Below(3);
        for (std::size_t term = 0; term < count; ++term) {
            json::object object =
                depth > 0 && Below(3) == 0 ? json::object{{"Subexpressions", Terms(depth - 1)}} : Leaf();
            std::string joiners = Below(4) == 0 ? "NOT" : "";
            if (term + 1 < count) {
                joiners += std::string(joiners.empty() ? "" : ",") + (Below(2) == 0 ? "AND" : "OR");
            }
            if (!joiners.empty()) {
                object["MapTerms"] = joiners;
            }
            terms.push_back(std::move(object));
        }
        return terms;
    }

    json::object Leaf()
    {
        const std::size_t wanted = m_Subjects.back();
        const SmallWorld::Subject& subject =
            m_World.Subjects()[wanted != all ? wanted : Below(m_World.Subjects().size())];
        const json::value& operand = subject.Operands[Below(subject.Operands.size())];
        const bool isOrdered = !operand.is_null() && (subject.Name == "Step" || subject.Name == "Speed");
        static const char* const conditions[] = {"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ"};
        m_IsClear.back() = m_IsClear.back() && subject.IsClear;
        m_AsksForValue.back() = m_AsksForValue.back() || operand.is_null();
        return {{"MapFromAttribute", subject.Name},
                {"MapFromProperty", "CurrentValue"},
                {"MapFromCondition", conditions[Below(isOrdered ? 6 : 2)]},
                {"MapFromValue", operand}};
    }

    const SmallWorld& m_World;
    std::mt19937 m_Random;
    std::vector<json::array> m_Rules;
    std::vector<std::size_t> m_Subjects;
    std::vector<bool> m_IsClear, m_AsksForValue;
};

/** What a rule is for all values: ever true, and true for all values of one subject, without a value or with one. */
struct Tried {
    bool IsEverTrue = false;
    std::vector<bool> IsTrueWithValue, IsTrueWithout; ///< by subject: whenever it has a value, and none
};

std::vector<Tried> TryOut(const SmallWorld& world, const std::shared_ptr<const Model>& model)
{
    Tried untried;
    untried.IsTrueWithValue.resize(world.Subjects().size(), true);
    untried.IsTrueWithout.resize(world.Subjects().size(), true);
    std::vector<Tried> tried(model->Rules().size(), untried);
    world.ForEachSystem([&](const std::vector<std::size_t>& system) {
        const SystemValues values(model, world.ValuesOf(system));
        const Evaluation evaluation(values);
        for (std::size_t rule = 0; rule < tried.size(); ++rule) {
            const bool isTrue = evaluation.TruthOf(rule) == Truth::True;
            tried[rule].IsEverTrue = tried[rule].IsEverTrue || isTrue;
            for (std::size_t subject = 0; subject < system.size() && !isTrue; ++subject) {
                const bool hasValue = !world.Subjects()[subject].Values[system[subject]].is_null();
                (hasValue ? tried[rule].IsTrueWithValue : tried[rule].IsTrueWithout)[subject] = false;
            }
        }
    });
    return tried;
}

/** Whether a test in the condition orders by what is no number. */
bool HasUnknownOrder(const Condition& condition)
{
    const Test& test = condition.Asked;
    const bool isOrder = test.Compare != RedfishConfig::Client::Comparison::Equal &&
                         test.Compare != RedfishConfig::Client::Comparison::NotEqual;
    const auto* text = std::get_if<std::string>(&test.Operand);
    const bool isNumber = std::holds_alternative<std::int64_t>(test.Operand) ||
                          (text != nullptr && text->find_first_not_of("0123456789-") == std::string::npos);
    return (condition.What == Condition::Kind::Test && isOrder && !isNumber) ||
           std::any_of(condition.Parts.begin(), condition.Parts.end(), HasUnknownOrder);
}

TEST(Contradictions, AreWhatTryingOutAllValuesShows)
{
    const SmallWorld world;
    const RandomRules rules(world, 7, 1'500);
    RegistryBuilder registry = world.Registry();
    for (std::size_t rule = 0; rule < rules.Count(); ++rule) {
        registry.RawRule({{"Dependency",
                           {{"MapFrom", rules.MapFrom(rule)},
                            {"MapToAttribute", "T"},
                            {"MapToProperty", "HelpText"},
                            {"MapToValue", "x"}}}});
    }
    const auto model = Model::Read(ReadRegistryDocument(registry.Text()));
    ASSERT_EQ(model->Rules().size(), rules.Count());
    std::map<std::size_t, Finding> found;
    for (const Finding& finding : LintRegistry(*model)) {
        ASSERT_TRUE(finding.Rule.has_value()) << finding.Found;
        EXPECT_TRUE(found.emplace(*finding.Rule, finding).second) << finding.Found;
    }
    const std::vector<Tried> tried = TryOut(world, model);
    std::size_t never = 0;
    std::size_t always = 0;
    std::size_t undecided = 0;
    for (std::size_t rule = 0; rule < rules.Count(); ++rule) {
        const std::string text = json::serialize(rules.MapFrom(rule));
        const auto finding = found.find(rule);
        const bool isNever = finding != found.end() && finding->second.Kind == FindingKind::NeverHolds;
        const bool isAlways = finding != found.end() && finding->second.Kind == FindingKind::AlwaysHolds;
        EXPECT_FALSE(isNever && tried[rule].IsEverTrue) << text;
        bool isTrueForOne = false;
        for (std::size_t subject = 0; subject < world.Subjects().size(); ++subject) {
            const std::string& name = world.Subjects()[subject].Name;
            const bool isTrueWithValue = tried[rule].IsTrueWithValue[subject];
            const bool isTrueAnyway = isTrueWithValue && tried[rule].IsTrueWithout[subject];
            isTrueForOne = isTrueForOne || isTrueWithValue;
            if (isAlways && finding->second.Found.find("whatever value " + name) != std::string::npos) {
                EXPECT_TRUE(isTrueWithValue) << text;
            } else if (isAlways && finding->second.Found.find("whatever " + name + " is") != std::string::npos) {
                EXPECT_TRUE(isTrueAnyway) << text;
            }
        }
        if (rules.IsClear(rule) && !HasUnknownOrder(model->Rules()[rule].When)) {
            EXPECT_TRUE(isNever || tried[rule].IsEverTrue) << text;
            EXPECT_TRUE(isAlways || !rules.IsAboutOne(rule) || rules.AsksForValue(rule) || !isTrueForOne) << text;
        }
        never += isNever ? 1U : 0U;
        always += isAlways ? 1U : 0U;
        undecided += finding == found.end() ? 1U : 0U;
    }
    EXPECT_GT(never, 100U);
    EXPECT_GT(always, 50U);
    EXPECT_GT(undecided, 500U);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(RegistryLint, ReportsWhereAndWhy)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Rule("T", "CurrentValue", "x", {{"Tag", "EQU", "a"}});
    registry.Rule("Gone", "CurrentValue", "x", {{"Fan", "EQU", "Fast"}});
    registry.Rule("T", "CurrentValue", "x", {{"Fan", "EQU", "Fast"}});
    const std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("warning never-holds " + rulesPointer + "2"));
    EXPECT_EQ(findings[0].Found, "the rule for CurrentValue of T never holds: it needs Fan to be Fast");
    EXPECT_EQ(findings[0].Consequence, "it never takes effect");
    EXPECT_EQ(findings[0].Attribute, "T");
    EXPECT_EQ(findings[0].Rule, 2U) << "a position in the published list, with rules that are left out";
}

TEST(RegistryLint, RulesForOneFlagThatHoldTogetherAlways)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Rule("T", "ReadOnly", true, {{"Lid", "EQU", true}});
    registry.Rule("T", "Hidden", true, {{"Lid", "EQU", false}});
    EXPECT_THAT(KindsOf(FindingsOf(registry)), IsEmpty());
    registry.Rule("T", "ReadOnly", true, {{"Lid", "EQU", false}});
    const std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("warning always-holds " + rulesPointer + "0",
                                             "warning never-changeable " + attributesPointer + "11"));
    EXPECT_EQ(findings[0].Found,
              "of 2 rules for ReadOnly of T, this one the first, some rule holds whatever value Lid has");
    EXPECT_EQ(findings[0].Consequence, "together they are always in effect");
    EXPECT_EQ(findings[0].Rule, 0U);
    EXPECT_EQ(findings[1].Found, "T is ReadOnly whatever value Lid has, by its rules");
    EXPECT_EQ(findings[1].Consequence, "the setting can never be changed while Lid has a value");
    EXPECT_EQ(findings[1].Attribute, "T");
    EXPECT_FALSE(findings[1].Rule.has_value());
}

TEST(RegistryLint, ARuleThatAlwaysHoldsIsReportedOnce)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Rule("T", "WriteOnly", true, {{"Fan", "EQU", "Off"}});
    registry.Rule("T", "WriteOnly", true, {{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}});
    EXPECT_THAT(Lines(FindingsOf(registry)), ElementsAre("warning always-holds " + rulesPointer + "1"));
}

TEST(RegistryLint, RulesWithOppositeOutcomesAreNotTakenTogether)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Rule("T", "ReadOnly", true, {{"Lid", "EQU", true}});
    registry.Rule("T", "ReadOnly", false, {{"Lid", "EQU", false}});
    EXPECT_THAT(KindsOf(FindingsOf(registry)), IsEmpty());
}

TEST(RegistryLint, SettingsThatRulesAlwaysLock)
{
    const std::vector<Term> always{{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}};
    const std::vector<Term> sometimes{{"Lid", "EQU", true}};
    const auto lines = [](const RegistryBuilder& registry) {
        std::vector<std::string> found = Lines(FindingsOf(registry));
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [](const std::string& line) { return line.find("never-changeable") == line.npos; }),
                    found.end());
        return found;
    };
    const std::string locked = "warning never-changeable " + attributesPointer + "11";
    for (const char* flag : {"ReadOnly", "GrayOut", "Hidden", "Immutable"}) {
        const auto rules = [flag] { return SomeAttributes().Rule("T", flag, true, {{"Fan", "EQU", "Off"}}); };
        EXPECT_THAT(lines(rules().Rule("T", flag, true, always)), ElementsAre(locked)) << flag;
        EXPECT_THAT(lines(rules().Rule("T", flag, true, sometimes)), IsEmpty()) << flag;
        EXPECT_THAT(lines(rules().Rule("T", flag, false, always)), IsEmpty()) << flag;
        // the first true rule counts
        EXPECT_THAT(lines(rules().Rule("T", flag, true, always).Rule("T", flag, false, sometimes)),
                    ElementsAre(locked));
        EXPECT_THAT(lines(rules().Rule("T", flag, false, sometimes).Rule("T", flag, true, always)), IsEmpty());
        EXPECT_THAT(lines(rules().Rule("T", flag, false, {{"Fan", "EQU", "Fast"}}).Rule("T", flag, true, always)),
                    ElementsAre(locked))
            << "the rule that takes " << flag << " away never holds";
        EXPECT_THAT(lines(rules().Rule("T", flag, false, {{"Lid", "SOME", 1}}).Rule("T", flag, true, always)),
                    IsEmpty());
    }
    for (const char* flag : {"WriteOnly", "ResetRequired"}) {
        EXPECT_THAT(lines(SomeAttributes().Rule("T", flag, true, always)), IsEmpty()) << flag;
    }
    const std::vector<Term> withoutValueToo{{"Lid", "NEQ", nullptr, "OR"}, {"Lid", "EQU", nullptr}};
    EXPECT_EQ(FindingsOf(SomeAttributes().Rule("T", "Hidden", true, withoutValueToo)).at(1).Consequence,
              "the setting can never be changed");
    EXPECT_THAT(lines(SomeAttributes().Rule("T", "Hidden", true, always).Rule("T", "GrayOut", true, always)),
                ElementsAre(locked))
        << "once for a setting";
}

TEST(RegistryLint, FlagsOfTheRegistry)
{
    const auto lines = [](const json::object& members, const char* property, bool outcome) {
        RegistryBuilder registry;
        registry.Attribute("Lid", "Boolean");
        registry.Attribute("A", "Boolean", members);
        if (*property != '\0') {
            registry.Rule("A", property, outcome, {{"Lid", "EQU", true}});
        }
        return Lines(FindingsOf(registry));
    };
    const std::string immutable = "note never-changeable " + attributesPointer + "1";
    EXPECT_THAT(lines({{"Immutable", true}}, "", true), ElementsAre(immutable));
    EXPECT_THAT(lines({{"Immutable", true}}, "Immutable", true), ElementsAre(immutable));
    EXPECT_THAT(lines({{"Immutable", true}}, "ReadOnly", false), ElementsAre(immutable));
    EXPECT_THAT(lines({{"Immutable", true}}, "Immutable", false), IsEmpty());
    for (const char* flag : {"ReadOnly", "GrayOut", "Hidden", "WriteOnly"}) {
        EXPECT_THAT(lines({{flag, true}}, "", true), IsEmpty()) << flag << " may be the state of the moment";
        EXPECT_THAT(lines({{flag, true}}, flag, true), IsEmpty()) << flag;
    }
}

/** A registry with a menu "Fans" that A is in. */
json::value WithMenu(RegistryBuilder registry)
{
    registry.Attribute("Lid", "Boolean");
    registry.Attribute("A", "Boolean", {{"MenuPath", "./Fans"}});
    json::value document = registry.Json();
    document.at("RegistryEntries").as_object()["Menus"] = {
        {{"MenuName", "Fans"}, {"DisplayName", "Fans"}, {"MenuPath", "./Fans"}}};
    return document;
}

TEST(RegistryLint, RulesOnMenus)
{
    const std::vector<Term> always{{"Lid", "EQU", true, "OR"}, {"Lid", "EQU", false}};
    const auto findings = [](const RegistryBuilder& registry) {
        return LintRegistry(*Model::Read(ReadRegistryDocument(json::serialize(WithMenu(registry)))));
    };
    const std::vector<Finding> locked = findings(RegistryBuilder().Rule("Fans", "ReadOnly", true, always));
    ASSERT_THAT(Lines(locked), ElementsAre("warning always-holds " + rulesPointer + "0",
                                           "warning never-changeable " + rulesPointer + "0"));
    EXPECT_EQ(locked[0].Found, "the rule for ReadOnly of the menu Fans holds whatever value Lid has");
    EXPECT_EQ(locked[1].Found, "the settings in the menu Fans are ReadOnly whatever value Lid has");
    EXPECT_EQ(locked[1].Consequence, "they can never be changed while Lid has a value");
    EXPECT_THAT(KindsOf(findings(RegistryBuilder().Rule("Fans", "ReadOnly", false, always))),
                ElementsAre("always-holds"));
    EXPECT_THAT(KindsOf(findings(RegistryBuilder().Rule("Fans", "WriteOnly", true, always))),
                ElementsAre("always-holds"));
    const std::vector<Term> sometimes{{"Lid", "EQU", true}};
    EXPECT_THAT(KindsOf(findings(
                    RegistryBuilder().Rule("A", "ReadOnly", false, sometimes).Rule("Fans", "ReadOnly", true, always))),
                ElementsAre("always-holds"))
        << "the rule of the setting goes first";
    EXPECT_THAT(KindsOf(findings(
                    RegistryBuilder().Rule("Fans", "ReadOnly", false, sometimes).Rule("A", "ReadOnly", true, always))),
                ElementsAre("always-holds"))
        << "so does that of the menu";
    EXPECT_THAT(KindsOf(findings(RegistryBuilder().Rule("Fans", "ReadOnly", true, {{"A", "EQU", true}}))), IsEmpty())
        << "menus are in no cycles";
}

TEST(RegistryLint, DefaultsOutOfBounds)
{
    const auto found = [](const char* type, json::object members, json::value value) {
        members["DefaultValue"] = std::move(value);
        RegistryBuilder registry;
        registry.Attribute("A", type, members);
        const std::vector<Finding> findings = FindingsOf(registry);
        EXPECT_LE(findings.size(), 1U);
        return findings.empty() ? ""
                                : std::string(Word(findings[0].Level)) + " " + std::string(Word(findings[0].Kind)) +
                                      " " + findings[0].Pointer + ": " + findings[0].Found;
    };
    const std::string begin = "warning default-out-of-bounds " + attributesPointer + "0/DefaultValue: ";
    const json::object bounds{{"LowerBound", 2}, {"UpperBound", 4}};
    for (const int inside : {2, 3, 4}) {
        EXPECT_EQ(found("Integer", bounds, inside), "");
    }
    EXPECT_EQ(found("Integer", bounds, 1), begin + "the default 1 of A is below LowerBound 2");
    EXPECT_EQ(found("Integer", bounds, 5), begin + "the default 5 of A is above UpperBound 4");
    EXPECT_EQ(found("Integer", bounds, nullptr), "");
    const json::object lengths{{"MinLength", 2}, {"MaxLength", 4}};
    EXPECT_EQ(found("String", lengths, "ab"), "");
    EXPECT_EQ(found("String", lengths, "abcd"), "");
    EXPECT_EQ(found("String", lengths, "a"), begin + "the default of A, 1 bytes, is below MinLength 2");
    EXPECT_EQ(found("String", lengths, "abcde"), begin + "the default of A, 5 bytes, is above MaxLength 4");
    EXPECT_EQ(found("String", lengths, "\u00e4\u00f6\u00fc"),
              begin + "the default of A, 6 bytes, is above MaxLength 4");
    EXPECT_EQ(found("Password", lengths, "abc"), "");
    EXPECT_EQ(found("Password", lengths, "a"), begin + "the default of A is below MinLength 2");
}

TEST(RegistryLint, ADefaultBeyondABoundThatRulesDecide)
{
    const auto kinds = [](const char* property) {
        RegistryBuilder registry;
        registry.Attribute("A", "Integer", {{"LowerBound", 2}, {"UpperBound", 4}, {"DefaultValue", 5}});
        registry.Attribute("Lid", "Boolean");
        registry.Rule("A", property, 9, {{"Lid", "EQU", true}});
        return KindsOf(FindingsOf(registry));
    };
    EXPECT_THAT(kinds("UpperBound"), IsEmpty());
    EXPECT_THAT(kinds("LowerBound"), ElementsAre("default-out-of-bounds"));
}

TEST(RegistryLint, CyclesOfRules)
{
    RegistryBuilder registry;
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        registry.Attribute(name, "Boolean");
    }
    registry.Rule("E", "Hidden", true, {{"A", "EQU", true}}); // leads into the cycle, and is not in it
    registry.Rule("A", "ReadOnly", true, {{"B", "EQU", true}});
    registry.Rule("B", "CurrentValue", true, {{"C", "EQU", true}});
    registry.Rule("C", "Hidden", true, {{"A", "EQU", true, "", "ReadOnly"}}); // a flag, not a value
    EXPECT_THAT(FindingsOf(registry), IsEmpty());
    registry.Rule("C", "Hidden", true, {{"D", "EQU", true, "AND"}, {"A", "EQU", true}});
    std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings), ElementsAre("note rule-cycle " + rulesPointer + "1"));
    EXPECT_EQ(findings[0].Found,
              "ReadOnly of A depends on B, CurrentValue of B depends on C, Hidden of C depends on A");
    EXPECT_EQ(findings[0].Attribute, "A");
    EXPECT_EQ(findings[0].Rule, 1U);

    registry.Rule("A", "CurrentValue", true, {{"C", "EQU", true}});
    registry.Rule("C", "CurrentValue", true, {{"A", "EQU", true}});
    registry.Rule("D", "GrayOut", true, {{"D", "EQU", true}});
    findings = FindingsOf(registry);
    ASSERT_THAT(Lines(findings),
                ElementsAre("warning value-cycle " + rulesPointer + "5", "note rule-cycle " + rulesPointer + "7",
                            "note rule-cycle " + rulesPointer + "5"));
    EXPECT_EQ(findings[0].Found, "CurrentValue of A depends on C, CurrentValue of C depends on A");
    EXPECT_EQ(findings[1].Found, "GrayOut of D depends on D");
    EXPECT_EQ(findings[2].Found,
              "CurrentValue of A depends on C, Hidden of C depends on A; 3 attributes depend on each other so");
}

TEST(RegistryLint, AnAttributeThatReadsItselfAndAnother)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean").Attribute("B", "Boolean");
    registry.Rule("A", "Hidden", true, {{"A", "EQU", true, "AND"}, {"B", "EQU", true}});
    registry.Rule("B", "Hidden", true, {{"A", "EQU", true}});
    const std::vector<Finding> findings = FindingsOf(registry);
    ASSERT_THAT(KindsOf(findings), ElementsAre("rule-cycle", "rule-cycle"));
    EXPECT_EQ(findings[0].Found, "Hidden of A depends on A");
    EXPECT_EQ(findings[1].Found, "Hidden of A depends on B, Hidden of B depends on A");
}

std::string NumberedName(int number)
{
    return "A" + std::to_string(100'000 + number);
}

TEST(RegistryLint, ALongCycleIsAShortFinding)
{
    constexpr int count = 20'000; // deeper than any recursion should go
    for (const std::string& end : {std::string(), std::string(300, 'x')}) {
        RegistryBuilder registry;
        for (int number = 0; number < count; ++number) {
            registry.Attribute(NumberedName(number) + end, "Boolean");
            registry.Rule(NumberedName(number) + end, "CurrentValue", true,
                          {{NumberedName((number + 1) % count) + end, "EQU", true}});
        }
        const std::vector<Finding> findings = FindingsOf(registry);
        ASSERT_THAT(KindsOf(findings), ElementsAre("value-cycle"));
        EXPECT_LT(findings[0].Found.size() + findings[0].Consequence.size(), 2'000U);
        EXPECT_THAT(findings[0].Found, HasSubstr("CurrentValue of A100000"));
        EXPECT_THAT(findings[0].Found, HasSubstr(", and so on over 19992 more rules"));
    }
}

TEST(RegistryLint, ManyRulesTakeTimeInProportion)
{
    // with sets that grow with every rule or term this would take minutes
    constexpr int count = 20'000;
    RegistryBuilder registry;
    json::array choices;
    for (int number = 0; number < count; ++number) {
        choices.push_back(RegistryBuilder::Choice(NumberedName(number), "display " + NumberedName(number)));
    }
    registry.Attribute("Many", "Enumeration", {{"Value", choices}});
    registry.Attribute("Any", "String");
    registry.Attribute("T", "Boolean");
    for (int number = 0; number < count; ++number) {
        registry.Rule("T", "ReadOnly", true, {Term{"Many", "EQU", NumberedName(number).c_str()}});
        registry.Rule("T", "Hidden", true, {Term{"Many", "NEQ", NumberedName(number).c_str()}});
    }
    for (int rule = 0; rule < 20; ++rule) {
        std::vector<Term> terms;
        for (int number = 0; number < 999; ++number) {
            terms.push_back(Term{"Any", "NEQ", NumberedName(number).c_str(), "AND"});
        }
        terms.push_back(Term{"Any", "EQU", NumberedName(rule).c_str()});
        registry.Rule("T", "HelpText", "x", terms);
    }
    std::map<std::string, int> kinds;
    for (const std::string& kind : KindsOf(FindingsOf(registry))) {
        ++kinds[kind];
    }
    EXPECT_EQ(kinds, (std::map<std::string, int>{{"always-holds", 2}, {"never-changeable", 1}, {"never-holds", 20}}));
}

json::object BooleanTerm(const std::string& name, bool operand, const char* joiner)
{
    json::object term{{"MapFromAttribute", name},
                      {"MapFromProperty", "CurrentValue"},
                      {"MapFromCondition", "EQU"},
                      {"MapFromValue", operand}};
    if (*joiner != '\0') {
        term["MapTerms"] = joiner;
    }
    return term;
}

TEST(RegistryLint, ConditionsThatAreTooLargeAreNotDecided)
{
    // Lid and (A0 or B0) and (A1 or B1) and ... and not Lid
    const auto kinds = [](int count) {
        RegistryBuilder registry = SomeAttributes();
        json::array mapFrom{BooleanTerm("Lid", true, "AND")};
        for (int number = 0; number < count; ++number) {
            const std::string a = "A" + std::to_string(number);
            const std::string b = "B" + std::to_string(number);
            registry.Attribute(a, "Boolean").Attribute(b, "Boolean");
            json::array either{BooleanTerm(a, true, "OR"), BooleanTerm(b, true, "")};
            mapFrom.push_back(json::object{{"Subexpressions", std::move(either)}, {"MapTerms", "AND"}});
        }
        mapFrom.push_back(BooleanTerm("Lid", false, ""));
        registry.RawRule(
            {{"Dependency",
              {{"MapFrom", mapFrom}, {"MapToAttribute", "T"}, {"MapToProperty", "HelpText"}, {"MapToValue", "x"}}}});
        return KindsOf(FindingsOf(registry));
    };
    EXPECT_THAT(kinds(8), ElementsAre("never-holds"));
    EXPECT_THAT(kinds(40), IsEmpty());
}

TEST(RegistryLint, AConditionHasAtMost8192Terms)
{
    // ((A0 or B0) and (A1 or B1) and ...) or Lid or not Lid, the first part being count * 2^count terms
    const auto kinds = [](int count) {
        RegistryBuilder registry = SomeAttributes();
        json::array all;
        for (int number = 0; number < count; ++number) {
            const std::string a = "A" + std::to_string(number);
            const std::string b = "B" + std::to_string(number);
            registry.Attribute(a, "Boolean").Attribute(b, "Boolean");
            json::object either{{"Subexpressions", {BooleanTerm(a, true, "OR"), BooleanTerm(b, true, "")}}};
            if (number + 1 < count) {
                either["MapTerms"] = "AND";
            }
            all.push_back(std::move(either));
        }
        const json::array mapFrom{json::object{{"Subexpressions", std::move(all)}, {"MapTerms", "OR"}},
                                  BooleanTerm("Lid", true, "OR"), BooleanTerm("Lid", false, "")};
        registry.RawRule(
            {{"Dependency",
              {{"MapFrom", mapFrom}, {"MapToAttribute", "T"}, {"MapToProperty", "HelpText"}, {"MapToValue", "x"}}}});
        return KindsOf(FindingsOf(registry));
    };
    EXPECT_THAT(kinds(9), ElementsAre("always-holds"));
    EXPECT_THAT(kinds(10), IsEmpty());
}

TEST(RegistryLint, AnImpossiblePartDecidesALargeCondition)
{
    RegistryBuilder registry = SomeAttributes();
    std::vector<Term> terms;
    for (int number = 0; number < 40; ++number) {
        registry.Attribute("A" + std::to_string(number), "Boolean");
        terms.push_back(Term{"A" + std::to_string(number), "EQU", true, "AND"});
    }
    terms.push_back(Term{"Fan", "EQU", "Fast"});
    const std::vector<Finding> findings = FindingsOf(registry.Rule("T", "HelpText", "x", terms));
    ASSERT_THAT(KindsOf(findings), ElementsAre("never-holds"));
    EXPECT_EQ(findings[0].Found, "the rule for HelpText of T never holds: it needs Fan to be Fast");
}

TEST(RegistryLint, AnUnusableRegistryHasNoOddities)
{
    EXPECT_THAT(LintRegistry(*Model::Read(ReadRegistryDocument("[]"))), IsEmpty());
}

TEST(RegistryLint, PasswordsAreUndecidedAndNeverShown)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Attribute("Key", "Password", {{"DefaultValue", "s3cret"}, {"MaxLength", 3}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "SOME", "s3cret"}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "EQU", "s3cret", "AND"}, {"Pin", "EQU", "s3cret2"}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "EQU", "s3cret", "OR"}, {"Pin", "NEQ", "s3cret"}});
    registry.Rule("T", "ReadOnly", false, {{"Pin", "EQU", "s3cret", "AND"}, {"Fan", "EQU", "Fast"}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "EQU", nullptr, "AND"}, {"Pin", "NEQ", nullptr}});
    registry.Rule("T", "ReadOnly", true, {{"Pin", "GTR", "s3cret", "AND"}, {"Lid", "EQU", true}});
    registry.Rule("T", "ReadOnly", true, {{"pin", "EQU", "s3cret(", "", "DefaultValue"}});
    registry.Rule("Pin", "CurrentValue", "s3cret", {{"Lid", "SOME", true}});
    registry.Rule("Pin", "CurrentValue", "s3cret", {{"Lid", "EQU", true}});
    registry.Rule("Pin", "CurrentValue", "s3cret2", {{"Lid", "EQU", true}});
    registry.RawRule(
        json::parse(R"({"Dependency": {"MapFrom": {"MapFromAttribute": "PIN", "mapfromvalue": ["s3cret"]}}})"));
    const auto model = Model::Read(ReadRegistryDocument(registry.Text()));
    const ValuesDocument values = ReadValuesDocument(R"({"Attributes": {"Pin": "s3cret3", "Lid": true}})");
    const SystemValues now(model, values);
    std::vector<Finding> findings = LintRegistry(*model);
    EXPECT_THAT(Lines(findings), ElementsAre("warning never-holds " + rulesPointer + "3",
                                             "warning default-out-of-bounds " + attributesPointer + "12/DefaultValue"));
    const std::vector<Finding> ofValues = LintValues(Evaluation(now), now);
    ASSERT_THAT(Lines(ofValues), ElementsAre("warning opposite-outcome " + rulesPointer + "9",
                                             "note different-from-rule " + rulesPointer + "8"));
    EXPECT_EQ(ofValues[0].Found, "CurrentValue of Pin is ******** by rule 8 and ******** by rule 9, and both hold");
    for (const std::vector<Finding>& list : {model->Findings(), now.Findings(values), ofValues}) {
        findings.insert(findings.end(), list.begin(), list.end());
    }
    EXPECT_GT(findings.size(), 7U);
    for (const Finding& finding : findings) {
        EXPECT_EQ((finding.Found + finding.Consequence).find("s3cret"), std::string::npos)
            << finding.Found << finding.Consequence;
    }
}

// ---------------------------------------------------------------------------------------------------------------------

/** What is found of a registry that came with the values. */
std::vector<Finding> ValueFindings(const RegistryBuilder& registry, const json::object& values)
{
    const auto model = Model::Read(ReadRegistryDocument(registry.Text()));
    const SystemValues now(model, ReadValuesDocument(json::serialize(json::object{{"Attributes", values}})));
    return LintValues(Evaluation(now), now);
}

TEST(ValuesLint, FlagsThatNoRuleExplains)
{
    const auto findings = [](const json::object& flags, bool outcome, json::value lid) {
        RegistryBuilder registry;
        registry.Attribute("Lid", "Boolean");
        registry.Attribute("A", "Boolean", flags);
        registry.Rule("A", "ReadOnly", outcome, {{"Lid", "EQU", true}});
        registry.Rule("A", "Hidden", outcome, {{"Lid", "EQU", true}});
        return ValueFindings(registry, {{"Lid", std::move(lid)}, {"A", true}});
    };
    const std::string line = "note unexplained-flag " + attributesPointer + "1";
    const std::vector<Finding> both = findings({{"ReadOnly", true}, {"Hidden", true}, {"GrayOut", true}}, true, false);
    ASSERT_THAT(Lines(both), ElementsAre(line));
    EXPECT_EQ(both[0].Found, "A is marked ReadOnly and Hidden by the registry, and no rule for that is true");
    EXPECT_EQ(both[0].Consequence, "it counts as marked so for all values");
    EXPECT_EQ(both[0].Attribute, "A");
    EXPECT_EQ(findings({{"ReadOnly", true}}, true, false).at(0).Found,
              "A is marked ReadOnly by the registry, and no rule for that is true");
    EXPECT_THAT(findings({{"ReadOnly", true}}, true, true), IsEmpty()) << "a rule explains it";
    EXPECT_THAT(findings({{"ReadOnly", true}}, true, nullptr), IsEmpty()) << "a rule may explain it";
    EXPECT_THAT(findings({{"GrayOut", true}}, true, false), IsEmpty()) << "it has no rules";
    EXPECT_THAT(findings({}, true, false), IsEmpty());
}

TEST(ValuesLint, ValuesThatDifferFromWhatRulesGive)
{
    const auto findings = [](json::value lid, json::value fan) {
        RegistryBuilder registry = SomeAttributes();
        registry.Rule("T", "CurrentValue", "y", {{"Lid", "EQU", false}});
        registry.Rule("Fan", "CurrentValue", "Full speed", {{"Lid", "EQU", true}});
        return ValueFindings(registry, {{"Lid", std::move(lid)}, {"Fan", std::move(fan)}});
    };
    const std::vector<Finding> different = findings(true, "Low");
    ASSERT_THAT(Lines(different), ElementsAre("note different-from-rule " + rulesPointer + "1"));
    EXPECT_EQ(different[0].Found, "Fan is \"Low\", and rule 1, which holds, gives it \"High\"");
    EXPECT_EQ(different[0].Consequence, "nothing corrects it: the rule acts when something changes");
    EXPECT_EQ(different[0].Attribute, "Fan");
    EXPECT_EQ(different[0].Rule, 1U);
    EXPECT_THAT(findings(true, "High"), IsEmpty());
    EXPECT_THAT(findings(false, "Low"), IsEmpty());
    EXPECT_THAT(findings(nullptr, "Low"), IsEmpty());
}

TEST(ValuesLint, ChoicesThatRulesNarrow)
{
    const auto findings = [](const json::value& fan, bool lid, bool other) {
        RegistryBuilder registry = SomeAttributes();
        registry.Attribute("Other", "Boolean");
        registry.Rule("Fan", "Value", json::array{"Low", "High"}, {{"Lid", "EQU", true}});
        registry.Rule("Fan", "Value", json::array{"Off"}, {{"Other", "EQU", true}});
        return ValueFindings(registry, {{"Fan", fan}, {"Lid", lid}, {"Other", other}});
    };
    const std::vector<Finding> notAllowed = findings("Off", true, false);
    ASSERT_THAT(Lines(notAllowed), ElementsAre("warning value-not-allowed " + rulesPointer + "0"));
    EXPECT_EQ(notAllowed[0].Found, "Fan is \"Off\", a choice that is not left by rule 0");
    EXPECT_EQ(notAllowed[0].Consequence, "the setting has the value all the same, and could not be set back to it");
    EXPECT_EQ(notAllowed[0].Attribute, "Fan");
    EXPECT_THAT(findings("Low", true, false), IsEmpty());
    EXPECT_THAT(findings("Off", false, false), IsEmpty());
    EXPECT_THAT(findings("Off", false, true), IsEmpty());
    EXPECT_THAT(findings(nullptr, true, false), IsEmpty());
    EXPECT_THAT(findings("Strange", true, false), IsEmpty()) << "no choice at all, which is reported elsewhere";
    const std::vector<Finding> noneLeft = findings("Off", true, true);
    ASSERT_THAT(Lines(noneLeft), ElementsAre("warning no-choice-left " + rulesPointer + "0"));
    EXPECT_EQ(noneLeft[0].Found, "Fan has no choice left by rules 0 and 1");
    EXPECT_EQ(noneLeft[0].Consequence, "no value of it is accepted");
}

TEST(ValuesLint, BoundsThatRulesContradict)
{
    struct Case {
        const char* Target;
        std::vector<std::pair<const char*, int>> Bounds;
        const char* Found; ///< null for nothing
    };
    const std::vector<Case> cases{
        {"Percent", {{"LowerBound", 101}}, "Percent: LowerBound is 101 (rule 0) and UpperBound is 100"},
        {"Percent", {{"UpperBound", -1}}, "Percent: LowerBound is 0 and UpperBound is -1 (rule 0)"},
        {"Percent",
         {{"LowerBound", 9}, {"UpperBound", 5}},
         "Percent: LowerBound is 9 (rule 0) and UpperBound is 5 (rule 1)"},
        {"Percent", {{"LowerBound", 5}, {"UpperBound", 9}}, nullptr},
        {"Percent", {{"MinLength", 9}, {"MaxLength", 5}}, nullptr},
        {"Tag", {{"MaxLength", 0}}, "Tag: MinLength is 1 and MaxLength is 0 (rule 0)"},
        {"Pin", {{"MinLength", 9}, {"MaxLength", 5}}, "Pin: MinLength is 9 (rule 0) and MaxLength is 5 (rule 1)"},
        {"Tag", {{"LowerBound", 9}, {"UpperBound", 5}}, nullptr},
        {"Lid", {{"LowerBound", 9}, {"UpperBound", 5}}, nullptr},
        {"Fan", {{"MinLength", 9}, {"MaxLength", 5}}, nullptr},
    };
    for (const auto& [target, bounds, found] : cases) {
        RegistryBuilder registry = SomeAttributes();
        for (const auto& [property, bound] : bounds) {
            registry.Rule(target, property, bound, {{"T", "EQU", "on"}});
        }
        const std::vector<Finding> findings = ValueFindings(registry, {{"T", "on"}});
        if (found == nullptr) {
            EXPECT_THAT(Lines(findings), IsEmpty()) << target;
            continue;
        }
        ASSERT_THAT(Lines(findings), ElementsAre("warning contradictory-bounds " + rulesPointer + "0"));
        EXPECT_EQ(findings[0].Found, found);
        EXPECT_EQ(findings[0].Consequence, "no value of it is accepted");
        EXPECT_EQ(findings[0].Attribute, target);
        EXPECT_EQ(findings[0].Rule, 0U);
    }
}

TEST(ValuesLint, ARuleForABoundThatTheTypeDoesNotHaveIsNotWhyNoValueIsLeft)
{
    RegistryBuilder registry = SomeAttributes();
    registry.Attribute("Odd", "Integer", {{"LowerBound", 9}, {"UpperBound", 1}});
    registry.Rule("Fan", "Value", json::array{}, {{"Lid", "EQU", true}});
    registry.Rule("Fan", "LowerBound", 1, {{"Lid", "EQU", true}});
    registry.Rule("Odd", "MinLength", 1, {{"Lid", "EQU", true}});
    EXPECT_THAT(Lines(ValueFindings(registry, {{"Lid", true}})),
                ElementsAre("warning no-choice-left " + rulesPointer + "0"));
}

TEST(ValuesLint, RulesThatContradictEachOther)
{
    const auto findings = [](bool lid, const char* fan) {
        RegistryBuilder registry = SomeAttributes();
        registry.Rule("T", "ReadOnly", false, {{"Fan", "EQU", "Low"}});
        registry.Rule("T", "ReadOnly", true, {{"Lid", "EQU", true}});
        registry.Rule("T", "ReadOnly", true, {{"Fan", "NEQ", "High"}});
        registry.Rule("T", "HelpText", "closed", {{"Lid", "EQU", true}});
        registry.Rule("T", "HelpText", "off", {{"Fan", "EQU", "Off"}});
        return ValueFindings(registry, {{"Lid", lid}, {"Fan", fan}});
    };
    const std::vector<Finding> low = findings(true, "Low");
    ASSERT_THAT(Lines(low), ElementsAre("warning opposite-outcome " + rulesPointer + "1"));
    EXPECT_EQ(low[0].Found, "ReadOnly of T is false by rule 0 and true by rule 1, and both hold");
    EXPECT_EQ(low[0].Consequence, "rule 0 counts, as the first");
    EXPECT_EQ(low[0].Attribute, "T");
    EXPECT_EQ(low[0].Rule, 1U);
    EXPECT_EQ(findings(true, "Off").at(0).Found,
              "HelpText of T is \"closed\" by rule 3 and \"off\" by rule 4, and both hold");
    EXPECT_THAT(Lines(findings(false, "Low")), ElementsAre("warning opposite-outcome " + rulesPointer + "2"));
    EXPECT_THAT(findings(true, "High"), IsEmpty());
    EXPECT_THAT(findings(false, "Off"), IsEmpty());
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(RepeatedKeys, AreReportedByPointer)
{
    const RegistryDocument registry = ReadRegistryDocument(R"({
        "RegistryEntries": {"Attributes": [
            {"AttributeName": "A", "Type": "String"},
            {"AttributeName": "B", "Type": "Integer", "Type": "String", "a/b": [1, {"x": 1, "x": 2}]}
        ]}, "Id": "R", "Id": "S"})");
    EXPECT_THAT(Lines(registry.Findings),
                UnorderedElementsAre("warning repeated-key /RegistryEntries/Attributes/1/Type",
                                     "warning repeated-key /RegistryEntries/Attributes/1/a~1b/1/x",
                                     "warning repeated-key /Id"));
    EXPECT_EQ(registry.Registry.Member("Id").Text(), "S") << "the last one counts";
    const ValuesDocument values = ReadValuesDocument(R"({"Attributes": {"A": 1, "A": 2, "B": {"A": 3}}})");
    EXPECT_EQ(Lines(values.Findings).at(0), "warning repeated-key /Attributes/A");
    EXPECT_EQ(values.Values.at("A"), SettingValue(2));
}

TEST(Pointers, HaveTheKeysOfTheDocument)
{
    const RegistryDocument document = ReadRegistryDocument(R"({"Id": "R", "RegistryEntries": {"Attributes": [{},
        {"Name": "A", "Type": "String", "valueexpression": "[", "defaultvalue": "xyz", "MaxLength": 2},
        {"Name": "B", "Type": "Enumeration", "Values": ["x", "x", "High (HPC) "], "DefaultValue": "x"},
        {"Name": "C", "Type": "String"}],
        "Dependencies": [{"Dependency": {"MapFrom": [{"MapFromAttribute": "B", "MapFromProperty": "CurrentValue",
            "MapFromCondition": "EQU", "MapFromValue": "x"}],
            "MapToAttribute": "C", "MapToProperty": "ReadOnly", "MapToValue": true}}]}})");
    const auto model = Model::Read(document);
    EXPECT_THAT(Lines(LintRegistry(*model)),
                ElementsAre("warning unusable-pattern /RegistryEntries/Attributes/1/valueexpression",
                            "warning default-out-of-bounds /RegistryEntries/Attributes/1/defaultvalue"));
    const ValuesDocument values =
        ReadValuesDocument(R"({"Body": {"AttributeRegistry": "Other", "Attributes": {"B": "x", "C": "y"}}})");
    const SystemValues system(model, values);
    EXPECT_THAT(Lines(system.Findings(values)),
                ElementsAre("note foreign-registry /Body/AttributeRegistry",
                            "warning repeated-choice /RegistryEntries/Attributes/2/Values"));
    EXPECT_THAT(Lines(Adapt(system).Findings),
                testing::Contains("warning value-with-operators /RegistryEntries/Attributes/2/Values"));
    EXPECT_EQ(model->PointerToMember(0, Property::DefaultValue), "/RegistryEntries/Attributes/1/defaultvalue");
    EXPECT_EQ(model->PointerToMember(2, Property::DefaultValue), "/RegistryEntries/Attributes/3/DefaultValue");
}

TEST(RepeatedKeys, ManyAreCounted)
{
    std::string text = R"({"RegistryEntries": {"Attributes": []})";
    for (int number = 0; number < 150; ++number) {
        text += R"(, "x": 0)";
    }
    const RegistryDocument registry = ReadRegistryDocument(text + "}");
    ASSERT_EQ(registry.Findings.size(), 101U);
    EXPECT_EQ(registry.Findings.back().Found, "49 more of this kind");
}

} // namespace
