#include "CommonProc/RedfishConfigExpression/ValueSubstitution.h"

#include "support/MapKeys.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

using RedfishConfig::SubstitutionEffort;
using RedfishConfig::ValueSubstitution;
using Texts = std::map<std::string, std::string>;

namespace {

/** What the substitution means, written as plainly as it can be said: every key, in ascending order, everywhere. */
std::string ReplaceKeyByKey(std::string formula, const Texts& texts)
{
    for (const auto& [key, text] : texts) {
        std::size_t position = 0;
        while ((position = formula.find(key, position)) != std::string::npos) {
            formula.replace(position, key.size(), text);
            position += text.size();
        }
    }
    return formula;
}

std::string Substitute(const Texts& texts, const std::string& formula)
{
    RegistryTest::MapKeys keys(texts);
    SubstitutionEffort effort;
    return ValueSubstitution(keys).Apply(formula, effort);
}

TEST(ValueSubstitution, ReplacesEveryOccurrence)
{
    const Texts texts{{"A.CurrentValue", "X"}, {"B.CurrentValue", "Y"}};
    EXPECT_EQ(Substitute(texts, "((A.CurrentValue==X)||(A.CurrentValue==Z)&&(B.CurrentValue!=Y))"),
              "((X==X)||(X==Z)&&(Y!=Y))");
}

TEST(ValueSubstitution, LeavesATextWithoutKeysAsItIs)
{
    const Texts texts{{"A.CurrentValue", "X"}};
    for (const char* formula : {"", "true==true", "(Unknown.CurrentValue==X)", "A.ReadOnly", ".CurrentValue"}) {
        EXPECT_EQ(Substitute(texts, formula), formula);
    }
    EXPECT_EQ(Substitute({}, "A.CurrentValue"), "A.CurrentValue");
}

TEST(ValueSubstitution, FindsAKeyAtTheEndOfALongerName)
{
    const Texts texts{{"A.CurrentValue", "X"}};
    EXPECT_EQ(Substitute(texts, "(BA.CurrentValue==X)"), "(BX==X)");
}

TEST(ValueSubstitution, TakesTheKeyThatOrdersFirstWhenTwoEndInOnePlace)
{
    const Texts shorterFirst{{"A.CurrentValue", "X"}, {"BA.CurrentValue", "Y"}};
    EXPECT_EQ(Substitute(shorterFirst, "BA.CurrentValue"), "BX");
    const Texts longerFirst{{"A.CurrentValue", "X"}, {"0A.CurrentValue", "Y"}};
    EXPECT_EQ(Substitute(longerFirst, "0A.CurrentValue"), "Y");
}

TEST(ValueSubstitution, FindsALaterKeyInTheTextOfAnEarlierOne)
{
    const Texts texts{{"A.CurrentValue", "B.CurrentValue"}, {"B.CurrentValue", "A.CurrentValue"}};
    EXPECT_EQ(Substitute(texts, "A.CurrentValue,B.CurrentValue"), "A.CurrentValue,A.CurrentValue");
}

TEST(ValueSubstitution, FindsAKeyThatAValueAndTheTextAroundItMakeTogether)
{
    const Texts texts{{"A.CurrentValue", "B"}, {"B.CurrentValue", "found"}};
    EXPECT_EQ(Substitute(texts, "A.CurrentValue.CurrentValue"), "found");
}

TEST(ValueSubstitution, PutsComparisonsInPlaceOfExistTests)
{
    const Texts texts{{"A not exist", "true==false"}, {"A exist", "true==true"}};
    EXPECT_EQ(Substitute(texts, "((A not exist)||(A exist))"), "((true==false)||(true==true))");
}

TEST(ValueSubstitution, OrdersKeysByUnsignedBytes)
{
    const Texts texts{{"z.CurrentValue", "\xc3\xa9.CurrentValue"}, {"\xc3\xa9.CurrentValue", "last"}};
    EXPECT_EQ(Substitute(texts, "z.CurrentValue"), "last");
}

TEST(ValueSubstitution, HandlesKeysWithoutPointOrBlankAndAnEmptyOne)
{
    const Texts texts{{"", "never"}, {"key", "value"}};
    EXPECT_EQ(Substitute(texts, "monkey key"), "monvalue value");
}

/** Names that end in each other, values that look like keys, parts of keys and operators. */
TEST(ValueSubstitution, AgreesWithReplacingKeyByKeyInRandomWorlds)
{
    const std::vector<std::string> names{"A", "BA", "CBA", "a", "A.B", "A B", "B", "\xc3\xa9", "A not", "x"};
    const std::vector<std::string> tails{".CurrentValue", ".ReadOnly", ".Hidden", " exist", " not exist"};
    const std::vector<std::string> pieces{
        "A",  "B", ".CurrentValue", " exist", " not", "==", "(",       ")", "true==true",
        "||", "x", ".ReadOnly",     ".",      " ",    "",   "\xc3\xa9"};
    std::mt19937 random(20);
    const auto below = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    const auto someText = [&](std::size_t most) {
        std::string text;
        for (std::size_t count = below(most + 1); count > 0; --count) {
            text +=
                below(2) == 0 ? pieces[below(pieces.size())] : names[below(names.size())] + tails[below(tails.size())];
        }
        return text;
    };
    std::size_t changed = 0;
    for (int world = 0; world < 20000; ++world) {
        Texts texts;
        for (std::size_t count = below(12); count > 0; --count) {
            texts[names[below(names.size())] + tails[below(tails.size())]] = someText(2);
        }
        const std::string formula = someText(8);
        const std::string plain = ReplaceKeyByKey(formula, texts);
        ASSERT_EQ(Substitute(texts, formula), plain) << formula;
        changed += plain != formula ? 1U : 0U;
    }
    EXPECT_GT(changed, 4000u); // enough worlds have something to replace
}

} // namespace
