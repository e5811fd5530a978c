#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// The forms of rules: how each is told, and what it becomes.

namespace {

using namespace ClientTest;
using testing::ElementsAre;
using testing::IsEmpty;

/** Attributes A to E and the target T, and rules of terms "NAME EQU 1". */
class Forms : public testing::Test {
protected:
    Forms()
    {
        for (const char* name : {"A", "B", "C", "D", "E", "T", "U"}) {
            m_Registry.Attribute(name, "String", {{"MinLength", 1}});
        }
    }

    /** A rule of one term for each joiner text, on A, B, C, ... */
    void Rule(const std::vector<std::string>& joiners, const std::string& target = "T")
    {
        std::vector<RegistryTest::Term> terms;
        for (std::size_t position = 0; position < joiners.size(); ++position) {
            terms.push_back({std::string(1, static_cast<char>('A' + position)), "EQU", "1", joiners[position]});
        }
        m_Registry.Rule(target, "ReadOnly", true, terms);
    }

    void Rule(const char* mapFrom)
    {
        m_Registry.RawRule(json::object{{"Dependency",
                                         {{"MapFrom", json::parse(mapFrom)},
                                          {"MapToAttribute", "T"},
                                          {"MapToProperty", "ReadOnly"},
                                          {"MapToValue", true}}}});
    }

    /** The adapted conditions, shortened: "A AND B". */
    std::vector<std::string> Conditions()
    {
        m_Adapted = AdaptRegistry(m_Registry.Json());
        ExpectStable(m_Adapted);
        std::vector<std::string> conditions;
        for (std::string line : AdaptedRules(m_Adapted)) {
            line = line.substr(1, line.find(')') - 1);
            for (std::size_t found = 0; (found = line.find(" EQU 1")) != std::string::npos;) {
                line.erase(found, 6);
            }
            for (std::size_t found = 0; (found = line.find(" NEQ 1")) != std::string::npos;) {
                line.replace(found, 6, "'");
            }
            conditions.push_back(line);
        }
        return conditions;
    }

    RuleCount CountOf(RuleForm form) { return m_Adapted.Rules[form]; }

    RegistryTest::RegistryBuilder m_Registry;
    Adaptation m_Adapted;
};

TEST_F(Forms, JoinerOnTheEarlierTermStaysAsItIs)
{
    Rule({"AND", "OR", ""});
    EXPECT_THAT(Conditions(), ElementsAre("A AND B OR C"));
    EXPECT_EQ(CountOf(RuleForm::JoinerOnEarlier).Adapted, 1U);
    EXPECT_THAT(m_Adapted.Findings, IsEmpty());
}

TEST_F(Forms, JoinerOnTheLaterTermGoesFromLeftToRight)
{
    Rule({"", "OR", "AND"});
    EXPECT_THAT(Conditions(), ElementsAre("A AND C", "B AND C"));
    EXPECT_EQ(CountOf(RuleForm::JoinerOnLater).Adapted, 1U);
    EXPECT_THAT(m_Adapted.PublishedRule, ElementsAre(0, 0));
}

TEST_F(Forms, StackOrderPushesTermsAndAppliesJoiners)
{
    Rule({"", "OR", "", "AND,AND"});
    Rule({"", "", "", "OR,AND,OR"});
    Rule({"", "", "AND", " or , AND"});
    Rule({"", "AND", "", "AND", "OR,OR"});
    EXPECT_THAT(Conditions(), ElementsAre("A AND C AND D", "B AND C AND D", // (A or B) and (C and D)
                                          "A", "B AND C", "B AND D",        // A or (B and (C or D))
                                          "A AND B AND C", "A AND D",       // A and ((B and C) or D)
                                          "A AND B", "C AND D", "E"));
    EXPECT_EQ(CountOf(RuleForm::StackOrder).Adapted, 4U);
    EXPECT_THAT(m_Adapted.Findings, IsEmpty());
}

TEST_F(Forms, AStackThatUnderflowsOrKeepsTermsIsNone)
{
    Rule({"", "AND", "", "AND", "OR"});
    Rule({"", "AND,OR", ""});
    EXPECT_THAT(Conditions(), IsEmpty());
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("error no-form /RegistryEntries/Dependencies/0",
                                                       "error no-form /RegistryEntries/Dependencies/1"));
}

TEST_F(Forms, TermsWithoutAnyJoinerMeanAnyOfThem)
{
    Rule({"", "", ""});
    Rule({""}, "U");
    EXPECT_THAT(Conditions(), ElementsAre("A", "B", "C", "A"));
    EXPECT_EQ(CountOf(RuleForm::NoJoiner).Adapted, 1U);
    EXPECT_EQ(CountOf(RuleForm::SingleTerm).Adapted, 1U);
    EXPECT_THAT(m_Adapted.Findings, IsEmpty());
}

TEST_F(Forms, TermsWithoutAnyJoinerHaveNoFormWhereOtherRulesHaveJoiners)
{
    Rule({"", ""});
    Rule({"", "AND"}, "U");
    EXPECT_THAT(Conditions(), ElementsAre("A AND B"));
    EXPECT_EQ(CountOf(RuleForm::None).LeftOut, 1U);
    ASSERT_THAT(Lines(m_Adapted.Findings), ElementsAre("error no-form /RegistryEntries/Dependencies/0"));
    EXPECT_THAT(m_Adapted.Findings[0].Done, testing::HasSubstr(R"("MapFromAttribute":"A")"));
}

TEST_F(Forms, JoinersThatFitNothingHaveNoForm)
{
    for (const auto& joiners : std::vector<std::vector<std::string>>{
             {"AND", "AND"}, {"AND"}, {"", "AND,OR"}, {"AND", "", ""}, {"", "XOR"}, {"", "AND,"}, {"", "AND", ""}}) {
        Rule(joiners);
    }
    EXPECT_THAT(Conditions(), IsEmpty());
    EXPECT_EQ(CountOf(RuleForm::None).LeftOut, 7U);
    EXPECT_EQ(m_Adapted.Findings.size(), 7U);
}

TEST_F(Forms, RulesAgainstTheOthersAreReadAsTheyStandAndTold)
{
    Rule({"", "AND"});
    Rule({"", "OR"});
    Rule({"AND", ""});
    EXPECT_THAT(Conditions(), ElementsAre("A AND B", "A", "B", "A AND B"));
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("warning mixed-forms /RegistryEntries/Dependencies/2"));
}

constexpr char a[] =
    R"("MapFromAttribute":"A","MapFromProperty":"CurrentValue","MapFromCondition":"EQU","MapFromValue":"1")";
constexpr char b[] =
    R"("MapFromAttribute":"B","MapFromProperty":"CurrentValue","MapFromCondition":"EQU","MapFromValue":"1")";
constexpr char c[] =
    R"("MapFromAttribute":"C","MapFromProperty":"CurrentValue","MapFromCondition":"EQU","MapFromValue":"1")";

TEST_F(Forms, SubexpressionsStandForParentheses)
{
    const std::string text = std::string("[{") + a + R"(,"MapTerms":"AND"},{"Subexpressions":[{)" + b +
                             R"(,"MapTerms":"OR"},{)" + c + "}]}]";
    Rule(text.c_str());
    EXPECT_THAT(Conditions(), ElementsAre("A AND B", "A AND C"));
    EXPECT_EQ(CountOf(RuleForm::Nested).Adapted, 1U);
}

TEST_F(Forms, NotNegatesTheTermThatCarriesIt)
{
    const std::string text = std::string("[{") + a + R"(,"MapTerms":"NOT"},{"MapTerms":"NOT,AND","Subexpressions":[{)" +
                             b + "},{" + c + R"(,"MapTerms":"OR"}]}])";
    Rule(text.c_str());
    EXPECT_THAT(Conditions(), ElementsAre("A' AND B' AND C'"));
    EXPECT_EQ(CountOf(RuleForm::Nested).Adapted, 1U);
}

TEST_F(Forms, NotBehindAJoinerHasNoForm)
{
    const std::string text = std::string("[{") + a + "},{" + b + R"(,"MapTerms":"AND,NOT"}])";
    Rule(text.c_str());
    EXPECT_THAT(Conditions(), IsEmpty());
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("error no-form /RegistryEntries/Dependencies/0"));
}

TEST_F(Forms, ConditionsOnBitsAreLeftOut)
{
    Rule(R"([{"MapFromAttribute":"A","MapFromProperty":"CurrentValue","MapFromCondition":"BITAND","MapFromValue":1}])");
    const std::string text = std::string("[{") + a + "},{" + b + R"(,"MapTerms":"BITOR"}])";
    Rule(text.c_str());
    EXPECT_THAT(Conditions(), IsEmpty());
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("error unsupported-condition /RegistryEntries/Dependencies/0",
                                                       "error unsupported-condition /RegistryEntries/Dependencies/1"));
}

TEST_F(Forms, ListsThatAreNoneHaveNoForm)
{
    for (const char* mapFrom :
         {"[]", "[5]", R"([{"MapTerms":5}])", R"([{"Subexpressions":{}}])", R"([{"Subexpressions":[5]}])",
          R"([{"MapFromAttribute":"A","Subexpressions":[{"MapFromAttribute":"B"}]}])"}) {
        Rule(mapFrom);
    }
    EXPECT_THAT(Conditions(), IsEmpty());
    EXPECT_EQ(CountOf(RuleForm::None).LeftOut, 6U);
}

/** (A1 or B1) and (A2 or B2) and ...: 2 to the power of pairs conjunctions. */
std::string Pairs(std::size_t pairs)
{
    std::string text = "[";
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        const auto term = [pair](const char* name) {
            return std::string(R"({"MapFromProperty":"CurrentValue","MapFromCondition":"EQU","MapFromAttribute":")") +
                   name + R"(","MapFromValue":")" + std::to_string(pair) + "\"";
        };
        text += term("A") + "}," + term("B") + R"(,"MapTerms":")" + (pair == 0 ? "OR" : "OR,AND") + "\"}";
        text += pair + 1 < pairs ? "," : "]";
    }
    return text;
}

TEST_F(Forms, AConditionBecomes256ConjunctionsAtMost)
{
    Rule(Pairs(8).c_str());
    EXPECT_EQ(Conditions().size(), 256U);
    Rule(Pairs(9).c_str());
    EXPECT_EQ(Conditions().size(), 256U);
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("error too-large /RegistryEntries/Dependencies/1"));
}

TEST_F(Forms, ARuleHasAThousandTermsAtMost)
{
    std::vector<RegistryTest::Term> terms(1000, {"A", "EQU", "1", ""});
    m_Registry.Rule("T", "ReadOnly", true, terms);
    terms.push_back(terms.front());
    m_Registry.Rule("T", "ReadOnly", true, terms);
    EXPECT_THAT(Conditions(), ElementsAre("A")); // each of them, once
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("error no-form /RegistryEntries/Dependencies/1"));
}

TEST_F(Forms, RulesForOnePropertyFillAFormulaAtMost)
{
    const std::string value(20'000, 'x');
    for (int count = 0; count < 4; ++count) {
        m_Registry.Rule("T", "ReadOnly", true, {RegistryTest::Term{"A", "EQU", json::string(value)}});
    }
    EXPECT_EQ(Conditions().size(), 3U);
    EXPECT_THAT(Lines(m_Adapted.Findings), ElementsAre("error too-large /RegistryEntries/Dependencies/3"));
    EXPECT_FALSE(SaysCannotDecide(StatusOfAll(m_Adapted).at("T").ReadOnly.Reason));
}

} // namespace
