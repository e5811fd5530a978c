#include "Count.h"

#include "reference/Formula.h"
#include "support/LogCapture.h"

#include <RedfishConfig/RedfishConfigExpression.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using RedfishConfig::RedfishConfigExpression;
using RegistryTest::LogCapture;

/** Every formula of so many pieces from an alphabet; pieces that meet may make one token, which is part of the matter.
 */
class FormulaWorld {
public:
    FormulaWorld(std::vector<std::string> alphabet, std::size_t longest)
        : m_Alphabet(std::move(alphabet)), m_Longest(longest)
    {
    }

    std::size_t Compare()
    {
        Extend("", 0);
        return m_Count;
    }

private:
    void Extend(const std::string& formula, std::size_t pieces)
    {
        CompareOne(formula);
        if (pieces < m_Longest && !testing::Test::HasFailure()) {
            for (const std::string& piece : m_Alphabet) {
                Extend(formula + piece, pieces + 1);
            }
        }
    }

    void CompareOne(const std::string& formula)
    {
        ++m_Count;
        m_Log.Clear();
        std::string actual;
        try {
            actual = m_Calculator.Calculate(formula) ? "true" : "false";
        } catch (const std::string& message) {
            actual = "throws " + message;
        }
        Reference::Lines lines;
        std::string expected;
        try {
            expected = Reference::Calculator(lines).Calculate(formula) ? "true" : "false";
        } catch (const std::string& message) {
            expected = "throws " + message;
        }
        ASSERT_EQ(actual, expected) << formula;
        ASSERT_EQ(m_Log.Lines(), lines) << formula;
    }

    std::vector<std::string> m_Alphabet;
    std::size_t m_Longest;
    std::size_t m_Count = 0;
    RedfishConfigExpression m_Calculator;
    LogCapture m_Log;
};

const std::vector<std::string> everyOperator{"||", "&&", "==", "!=", ">",    ">=",    "<", "<=", "(", ")",
                                             "=",  "!",  "|",  "&",  "true", "FALSE", "a", "10", " "};
const std::vector<std::string> core{"||", "&&", "==", "<", "(", ")", "true", "a"};

TEST(FormulaWorld, OfEveryOperatorIsAsTheReferenceSays)
{
    Exact::Report("formulas of every operator", FormulaWorld(everyOperator, Exact::IsLong() ? 4 : 3).Compare(), 7240);
}

TEST(FormulaWorld, OfTheCoreUpToSevenTokensIsAsTheReferenceSays)
{
    Exact::Report("formulas of the core", FormulaWorld(core, Exact::IsLong() ? 7 : 5).Compare(), 37449);
}

} // namespace
