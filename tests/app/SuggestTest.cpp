#include "app/Suggest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfig::App;
using Names = std::vector<std::string>;

const Names known{"BootMode", "SecureBootMode", "BootOrder", "Turbo", "NumCores", "NumThreads", "X"};

TEST(NearestNames, OneSlip)
{
    EXPECT_EQ(NearestNames("Turb", known), Names{"Turbo"});   // missing
    EXPECT_EQ(NearestNames("Turrbo", known), Names{"Turbo"}); // too many
    EXPECT_EQ(NearestNames("Turbi", known), Names{"Turbo"});  // wrong
    EXPECT_EQ(NearestNames("Trubo", known), Names{"Turbo"});  // changed round
}

TEST(NearestNames, LetterCaseIsNoSlip)
{
    EXPECT_EQ(NearestNames("tURB", known), Names{"Turbo"});
}

TEST(NearestNames, TheNearestFirst)
{
    EXPECT_EQ(NearestNames("BootMde", (Names{"BotMode", "BootMode"})), (Names{"BootMode", "BotMode"}));
}

TEST(NearestNames, ThenNamesThatContainIt)
{
    EXPECT_EQ(NearestNames("bootmod", known), (Names{"BootMode", "SecureBootMode"}));
    EXPECT_EQ(NearestNames("num", known), (Names{"NumCores", "NumThreads"}));
    EXPECT_EQ(NearestNames("or", known), Names{}) << "too short to be looked for within names";
}

TEST(NearestNames, ThreeAtMost)
{
    EXPECT_EQ(NearestNames("slot", (Names{"Slot1", "Slot2", "Slot3", "Slot4"})), (Names{"Slot1", "Slot2", "Slot3"}));
}

TEST(NearestNames, NothingForWhatIsFarFromAll)
{
    EXPECT_EQ(NearestNames("zzzzzz", known), Names{});
    EXPECT_EQ(NearestNames("", known), Names{});
    EXPECT_EQ(NearestNames("Turbo", Names{}), Names{});
}

TEST(NearestNames, AVeryLongTextIsNoWork)
{
    EXPECT_EQ(NearestNames(std::string(1000000, 'a'), Names(1000, "BootMode")), Names{});
}

/** By the whole table of distances between beginnings, two letters changed round being one slip. */
std::size_t SlipsBetween(const std::string& left, const std::string& right)
{
    std::vector<std::vector<std::size_t>> table(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            std::size_t& slips = table[i][j];
            if (i == 0 || j == 0) {
                slips = i + j;
                continue;
            }
            const std::size_t wrong = left[i - 1] == right[j - 1] ? 0 : 1;
            slips = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + wrong});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                slips = std::min(slips, table[i - 2][j - 2] + 1);
            }
        }
    }
    return table[left.size()][right.size()];
}

TEST(NearestNames, AreThoseWithFewSlips)
{
    std::mt19937 random(7);
    const auto word = [&](std::size_t most) {
        std::string text(1 + random() % most, 'a');
        for (char& letter : text) {
            letter = static_cast<char>('a' + random() % 3);
        }
        return text;
    };
    std::size_t near = 0;
    for (int count = 0; count < 20000; ++count) {
        const std::string wanted = word(20);
        const std::string name = word(20);
        const std::size_t limit = std::min<std::size_t>(5, std::max<std::size_t>(1, wanted.size() / 3));
        const bool isNear = SlipsBetween(wanted, name) <= limit;
        const bool isWithin = wanted.size() >= 3 && name.find(wanted) != std::string::npos;
        EXPECT_EQ(!NearestNames(wanted, {name}).empty(), isNear || isWithin) << wanted << ' ' << name;
        near += isNear ? 1 : 0;
    }
    EXPECT_GT(near, 100U);
}

TEST(DidYouMean, JoinsTheNames)
{
    EXPECT_EQ(DidYouMean({}), "");
    EXPECT_EQ(DidYouMean({"A"}), " Did you mean A?");
    EXPECT_EQ(DidYouMean({"A", "B"}), " Did you mean A or B?");
    EXPECT_EQ(DidYouMean({"A", "B", "C"}), " Did you mean A, B or C?");
}

} // namespace
