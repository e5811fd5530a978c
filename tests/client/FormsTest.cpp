#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// The forms of rules: how each is recognised, and how its terms are joined.

namespace {

using namespace ClientTest;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/** A term "NAME EQU 1" with this "MapTerms"; without any when it is empty. */
std::string TermText(char name, const std::string& joiner)
{
    const std::string mapTerms = joiner.empty() ? "" : R"(, "MapTerms": ")" + joiner + "\"";
    return std::string(R"({"MapFromAttribute": ")") + name +
           R"(", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": "1")" + mapTerms + "}";
}

/** A term with nested ones and this "MapTerms". */
std::string NestedText(const std::vector<std::string>& terms, const std::string& joiner)
{
    std::string text = R"({"Subexpressions": [)";
    for (const std::string& term : terms) {
        text += (text.back() == '[' ? "" : ", ") + term;
    }
    return text + R"(], "MapTerms": ")" + joiner + "\"}";
}

/** Rules for T.ReadOnly on the attributes A to E. */
class Forms : public testing::Test {
protected:
    /** A rule of one term for each joiner, on A, B, C, ... */
    void Rule(const std::vector<std::string>& joiners)
    {
        std::vector<std::string> terms;
        for (const std::string& joiner : joiners) {
            terms.push_back(TermText(static_cast<char>('A' + terms.size()), joiner));
        }
        Terms(terms);
    }

    void Terms(const std::vector<std::string>& terms)
    {
        std::string text = "[";
        for (const std::string& term : terms) {
            text += (text == "[" ? "" : ", ") + term;
        }
        MapFrom(text + "]");
    }

    void MapFrom(const std::string& text, const std::string& target = "T")
    {
        m_Rules.push_back(json::object{{"Dependency",
                                        {{"MapFrom", json::parse(text)},
                                         {"MapToAttribute", target},
                                         {"MapToProperty", "ReadOnly"},
                                         {"MapToValue", true}}}});
    }

    /** The conditions of all rules as text, a test for 1 shortened to its name: "A and (B or C)". */
    std::vector<std::string> Conditions()
    {
        RegistryTest::RegistryBuilder registry;
        for (const char* name : {"A", "B", "C", "D", "E", "T"}) {
            registry.Attribute(name, "String");
        }
        for (const json::value& rule : m_Rules) {
            registry.RawRule(rule);
        }
        m_Model = ModelOf(registry.Json());
        std::vector<std::string> conditions;
        for (const Client::Rule& rule : m_Model->Rules()) {
            std::string text = ToText(rule.When);
            for (std::size_t found = 0; (found = text.find(" == 1")) != std::string::npos;) {
                text.erase(found, 5);
            }
            conditions.push_back(text);
        }
        return conditions;
    }

    std::vector<std::string> FindingLines() const { return Lines(m_Model->Findings()); }

    /** The forms of the rules that are read. */
    std::vector<std::string_view> FormWords() const
    {
        std::vector<std::string_view> words;
        for (const Client::Rule& rule : m_Model->Rules()) {
            words.push_back(Word(rule.Form));
        }
        return words;
    }

    json::array m_Rules;
    std::shared_ptr<const Model> m_Model;
};

TEST_F(Forms, JoinerOnTheEarlierTermGroupsToTheRight)
{
    Rule({"AND", ""});
    Rule({"OR", "AND", ""});
    Rule({"AND", "OR", ""});
    Rule({"AND", "AND", "OR", "OR", ""});
    Rule({"and", " Or ", ""});
    EXPECT_THAT(Conditions(), ElementsAre("A and B", "A or (B and C)", "A and (B or C)", "A and B and (C or D or E)",
                                          "A and (B or C)"));
    EXPECT_THAT(FormWords(), Each("joiner-on-earlier"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, JoinerOnTheLaterTermGoesFromLeftToRight)
{
    Rule({"", "AND"});
    Rule({"", "OR", "AND"});
    Rule({"", "AND", "OR"});
    Rule({"", "AND", "AND", "OR", "OR"});
    Rule({"", "OR", "AND", "OR"});
    EXPECT_THAT(Conditions(), ElementsAre("A and B", "(A or B) and C", "(A and B) or C", "(A and B and C) or D or E",
                                          "((A or B) and C) or D"));
    EXPECT_THAT(FormWords(), Each("joiner-on-later"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, StackOrderPushesTermsAndAppliesJoiners)
{
    Rule({"", "OR", "", "AND,AND"});
    Rule({"", "", "", "OR,AND,OR"});
    Rule({"", "", "AND", " or , AND"});
    Rule({"", "AND", "", "AND", "OR,OR"});
    Rule({"", "", "AND,AND"});
    EXPECT_THAT(Conditions(), ElementsAre("(A or B) and (C and D)", "A or (B and (C or D))", "A and ((B and C) or D)",
                                          "(A and B) or ((C and D) or E)", "A and (B and C)"));
    EXPECT_THAT(FormWords(), Each("stack-order"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, OfOneTermHasNothingToJoin)
{
    Rule({""});
    Rule({"  "});
    MapFrom(R"([{"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
                 "MapFromValue": "1", "MapTerms": null, "Subexpressions": []}])");
    EXPECT_THAT(Conditions(), ElementsAre("A", "A", "A"));
    EXPECT_THAT(FormWords(), Each("single-term"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, TermsWithoutAnyJoinerMeanAnyOfThem)
{
    Rule({"", "", ""});
    Rule({""});
    EXPECT_THAT(Conditions(), ElementsAre("A or B or C", "A"));
    EXPECT_THAT(FormWords(), ElementsAre("no-joiner", "single-term"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, TermsWithoutAnyJoinerHaveNoFormWhereOtherRulesHaveJoiners)
{
    Rule({"", ""});
    Rule({"", "AND"});
    EXPECT_THAT(Conditions(),
                ElementsAre("unknown (several terms without a joiner, where other rules have joiners)", "A and B"));
    EXPECT_THAT(FormWords(), ElementsAre("none", "joiner-on-later"));
    ASSERT_THAT(FindingLines(), ElementsAre("error no-form /RegistryEntries/Dependencies/0"));
    EXPECT_EQ(m_Model->Findings()[0].Found, "several terms without a joiner, where other rules have joiners");
    EXPECT_EQ(m_Model->Findings()[0].Consequence, "whether the rule holds is never known");
    EXPECT_EQ(m_Model->Findings()[0].Attribute, "T");
    EXPECT_EQ(m_Model->Findings()[0].Rule, 0U);
}

TEST_F(Forms, JoinersWithinSubexpressionsAreJoinersOfTheRegistryToo)
{
    Rule({"", ""});
    Terms({NestedText({TermText('A', ""), TermText('B', "AND")}, "")});
    EXPECT_THAT(Conditions(), ElementsAre(StartsWith("unknown"), "A and B"));
}

TEST_F(Forms, WithADefectAreNoEvidenceForOtherRules)
{
    Rule({"", ""});
    Rule({"AND", "XOR"});
    EXPECT_THAT(Conditions(), ElementsAre("A or B", "unknown (a joiner that is neither AND nor OR nor NOT)"));
}

TEST_F(Forms, WithoutAFormAreUnknownForOneCauseEach)
{
    const struct {
        std::vector<std::string> Joiners;
        const char* Cause;
    } rows[] = {
        {{"AND", "AND"}, "joiners that fit neither pairs of terms nor a stack"},
        {{"AND"}, "a joiner on the only term"},
        {{"", "AND,OR"}, "joiners that fit neither pairs of terms nor a stack"},
        {{"", "AND,OR", ""}, "joiners that fit neither pairs of terms nor a stack"},           // the stack has no more
        {{"", "AND", "", "AND", "OR"}, "joiners that fit neither pairs of terms nor a stack"}, // two remain
        {{"AND", "", ""}, "joiners that fit neither pairs of terms nor a stack"},
        {{"", "AND", ""}, "joiners that fit neither pairs of terms nor a stack"},
        {{"", "XOR"}, "a joiner that is neither AND nor OR nor NOT"},
        {{"", "AND,"}, "a joiner that is neither AND nor OR nor NOT"},
        {{"", ","}, "a joiner that is neither AND nor OR nor NOT"},
        {{"", "AND OR"}, "a joiner that is neither AND nor OR nor NOT"},
        {{"", "AND,NOT"}, "\"NOT\" behind a joiner, which does not say what it negates"},
        {{"", "BITOR"}, "a condition on bits"},
        {{"", "BITAND,XOR"}, "a condition on bits"},
    };
    std::vector<std::string> causes;
    for (const auto& row : rows) {
        Rule(row.Joiners);
        causes.push_back(std::string("unknown (") + row.Cause + ")");
    }
    EXPECT_EQ(Conditions(), causes);
    EXPECT_THAT(FormWords(), Each("none"));
    const RuleCount& count = m_Model->Forms().at(RuleForm::None);
    EXPECT_EQ(count.Published, causes.size());
    EXPECT_EQ(count.Read, causes.size());
    EXPECT_EQ(count.LeftOut, 0U);
    ASSERT_EQ(m_Model->Findings().size(), causes.size());
    for (std::size_t rule = 0; rule < causes.size(); ++rule) {
        const bool isOfBits = std::string(rows[rule].Cause).find("bits") != std::string::npos;
        EXPECT_EQ(FindingLines()[rule], std::string(isOfBits ? "error unsupported-condition" : "error no-form") +
                                            " /RegistryEntries/Dependencies/" + std::to_string(rule));
    }
}

TEST_F(Forms, WithoutAFormStillNameWhatTheyRead)
{
    Rule({"", "AND,OR", ""});
    Terms({TermText('D', "AND"), NestedText({TermText('A', "AND"), TermText('E', "AND")}, "")});
    Conditions();
    const Condition& when = m_Model->Rules()[0].When;
    EXPECT_EQ(when.What, Condition::Kind::Unknown);
    ASSERT_EQ(when.Parts.size(), 3U);
    EXPECT_EQ(ToText(when.Parts[2]), "C == 1");
    EXPECT_THAT(Listed(m_Model->RulesReading(0)), ElementsAre(0, 1));
    EXPECT_THAT(Listed(m_Model->RulesReading(1)), ElementsAre(0));
    EXPECT_THAT(Listed(m_Model->RulesReading(3)), ElementsAre(1));
    EXPECT_THAT(Listed(m_Model->RulesReading(4)), ElementsAre(1));
}

TEST_F(Forms, WithoutAFormLeaveTheirFlagUncertain)
{
    Rule({"AND"});
    Conditions();
    const Evaluation evaluation{SystemValues(m_Model)};
    EXPECT_EQ(evaluation.TruthOf(0), Truth::Unknown);
    const Verdict verdict = evaluation.VerdictOn(*m_Model->Find("T"), Property::ReadOnly);
    EXPECT_FALSE(verdict.Value);
    EXPECT_FALSE(verdict.Certain);
}

TEST_F(Forms, ThatDifferFromMostOthersAreReadAsTheyAreAndReported)
{
    Rule({"", "AND"});
    Rule({"", "OR"});
    Rule({"AND", ""});
    EXPECT_THAT(Conditions(), ElementsAre("A and B", "A or B", "A and B"));
    EXPECT_THAT(FormWords(), ElementsAre("joiner-on-later", "joiner-on-later", "joiner-on-earlier"));
    EXPECT_THAT(FindingLines(), ElementsAre("warning mixed-forms /RegistryEntries/Dependencies/2"));
}

TEST_F(Forms, OfWhichThereAreAsManyAreReportedOnTheEarlierTerm)
{
    Rule({"", "AND"});
    Rule({"AND", ""});
    Conditions();
    EXPECT_THAT(FindingLines(), ElementsAre("warning mixed-forms /RegistryEntries/Dependencies/1"));
    Rule({"OR", ""});
    Conditions();
    EXPECT_THAT(FindingLines(), ElementsAre("warning mixed-forms /RegistryEntries/Dependencies/0"));
    Rule({"", "", "AND,AND"}); // stack order has its joiners on later terms as well
    Rule({"", "", "OR,AND"});
    Conditions();
    EXPECT_THAT(FindingLines(), ElementsAre("warning mixed-forms /RegistryEntries/Dependencies/1",
                                            "warning mixed-forms /RegistryEntries/Dependencies/2"));
}

TEST_F(Forms, SubexpressionsAreParentheses)
{
    const std::string a = TermText('A', "");
    const auto bOrC = {TermText('B', ""), TermText('C', "OR")};
    Terms({a, NestedText(bOrC, "AND")});
    Terms({NestedText(bOrC, ""), TermText('A', "AND")});
    Terms({NestedText({NestedText(bOrC, "")}, "")});
    Terms({a, NestedText({TermText('B', ""), TermText('C', "AND")}, "AND")});
    Terms({a, NestedText({TermText('B', "")}, "OR"), NestedText({TermText('C', ""), TermText('D', "OR")}, "AND")});
    Terms({NestedText({TermText('A', ""), TermText('B', ""), TermText('C', "OR,AND")}, ""), TermText('D', "OR")});
    EXPECT_THAT(Conditions(), ElementsAre("A and (B or C)", "(B or C) and A", "B or C", "A and (B and C)",
                                          "(A or B) and (C or D)", "(A and (B or C)) or D"));
    EXPECT_THAT(FormWords(), Each("nested"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, NotNegatesTheTermThatCarriesIt)
{
    Rule({"NOT"});
    Rule({"", "NOT,AND"});
    Rule({"NOT", "OR"});
    Rule({"not,not", "AND"});
    Rule({"NOT,NOT,NOT"});
    Terms({TermText('A', "NOT"), NestedText({TermText('B', ""), TermText('C', "OR")}, "NOT,AND")});
    Terms({NestedText({TermText('A', "NOT")}, "NOT")});
    EXPECT_THAT(Conditions(), ElementsAre("not (A)", "A and not (B)", "not (A) or B", "A and B", "not (A)",
                                          "not (A) and not (B or C)", "not (not (A))"));
    EXPECT_THAT(FormWords(),
                ElementsAre("nested", "nested", "nested", "joiner-on-later", "nested", "nested", "nested"));
    EXPECT_THAT(FindingLines(), IsEmpty());
}

TEST_F(Forms, OfListsThatAreNoneAreUnknown)
{
    const struct {
        const char* MapFrom;
        const char* Cause;
    } rows[] = {
        {"[]", "no terms"},
        {"[5]", "a term is a number"},
        {"[null]", "a term is null"},
        {R"([{"MapTerms": 5}])", R"("MapTerms" is a number)"},
        {R"([{"MapTerms": ["AND"]}])", R"("MapTerms" is a list)"},
        {R"([{"Subexpressions": {}}])", R"("Subexpressions" is no list)"},
        {R"([{"Subexpressions": [5]}])", "a term is a number"},
        {R"([{"MapFromAttribute": "A", "Subexpressions": [{"MapFromAttribute": "B"}]}])",
         R"(a term has both "Subexpressions" and an attribute)"},
    };
    std::vector<std::string> causes;
    for (const auto& row : rows) {
        MapFrom(row.MapFrom);
        causes.push_back(std::string("unknown (") + row.Cause + ")");
    }
    EXPECT_EQ(Conditions(), causes);
    EXPECT_THAT(FormWords(), Each("none"));
    EXPECT_THAT(FindingLines(), Each(StartsWith("error no-form ")));
    EXPECT_EQ(FindingLines().size(), causes.size());
}

TEST_F(Forms, AreCountedWithTheRulesThatAreLeftOut)
{
    Rule({"", "AND"});
    Rule({"", "OR"});
    MapFrom("[" + TermText('A', "") + ", " + TermText('B', "AND") + "]", "Nowhere");
    Rule({""});
    MapFrom("[]", "Nowhere");
    Conditions();
    const struct {
        RuleForm Form;
        std::size_t Published, Read, LeftOut;
    } rows[] = {
        {RuleForm::SingleTerm, 1, 1, 0},
        {RuleForm::JoinerOnLater, 3, 2, 1},
        {RuleForm::None, 1, 0, 1},
    };
    EXPECT_EQ(m_Model->Forms().size(), std::size(rows));
    for (const auto& row : rows) {
        ASSERT_EQ(m_Model->Forms().count(row.Form), 1U) << Word(row.Form);
        const RuleCount& count = m_Model->Forms().at(row.Form);
        EXPECT_EQ(count.Published, row.Published) << Word(row.Form);
        EXPECT_EQ(count.Read, row.Read) << Word(row.Form);
        EXPECT_EQ(count.LeftOut, row.LeftOut) << Word(row.Form);
    }
}

TEST_F(Forms, HaveAThousandTermsAtMost)
{
    const auto rule = [this](std::size_t terms) {
        std::vector<std::string> joiners(terms, "AND");
        joiners.front() = "";
        Rule(std::vector<std::string>(1, "")); // keeps the order of rules plain
        std::vector<std::string> texts;
        for (const std::string& joiner : joiners) {
            texts.push_back(TermText('A', joiner));
        }
        Terms(texts);
    };
    rule(1'000);
    rule(1'001);
    const std::vector<std::string> conditions = Conditions();
    EXPECT_THAT(conditions[1], StartsWith("A and A and A"));
    EXPECT_EQ(m_Model->Rules()[1].When.Parts.size(), 1'000U);
    EXPECT_EQ(conditions[3], "unknown (more than 1000 terms)");
    EXPECT_EQ(m_Model->Rules()[3].When.Parts.size(), 1'000U);
    EXPECT_THAT(FindingLines(), ElementsAre("error no-form /RegistryEntries/Dependencies/3"));
}

TEST_F(Forms, CountNestedTermsAndTheirListsAmongTheThousand)
{
    const auto nested = [](std::size_t terms) {
        std::vector<std::string> list(terms, TermText('A', "OR"));
        list.front() = TermText('A', "");
        return NestedText(list, "");
    };
    Terms({nested(999)});   // and the list itself
    Terms({nested(1'000)}); // one too many
    const std::vector<std::string> conditions = Conditions();
    EXPECT_THAT(conditions[0], StartsWith("A or A"));
    EXPECT_EQ(conditions[1], "unknown (more than 1000 terms)");
}

/** A condition in both ways: as text, and as what it reads. */
TEST_F(Forms, KeepEveryTermWithItsSource)
{
    Rule({"", "OR", "AND"});
    Conditions();
    const Condition& when = m_Model->Rules()[0].When;
    ASSERT_EQ(when.What, Condition::Kind::All);
    ASSERT_EQ(when.Parts.size(), 2U);
    EXPECT_EQ(when.Parts[0].What, Condition::Kind::Any);
    ASSERT_EQ(when.Parts[1].What, Condition::Kind::Test);
    EXPECT_EQ(when.Parts[1].Asked.Source, 2U);
    EXPECT_EQ(when.Parts[1].Asked.Name, "C");
    EXPECT_EQ(when.Parts[1].Asked.Of, Property::CurrentValue);
    EXPECT_EQ(when.Parts[1].Asked.Compare, Client::Comparison::Equal);
    EXPECT_EQ(when.Parts[1].Asked.Operand, Value(std::string("1")));
}

TEST(FormWords, AreDistinct)
{
    std::set<std::string_view> words;
    for (const RuleForm form : {RuleForm::SingleTerm, RuleForm::JoinerOnEarlier, RuleForm::JoinerOnLater,
                                RuleForm::StackOrder, RuleForm::NoJoiner, RuleForm::Nested, RuleForm::None}) {
        EXPECT_TRUE(words.insert(Word(form)).second) << Word(form);
    }
    EXPECT_EQ(words.size(), static_cast<std::size_t>(RuleForm::None) + 1);
}

} // namespace
