#include "Suggest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace RedfishConfigTool;
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

TEST(DidYouMean, JoinsTheNames)
{
    EXPECT_EQ(DidYouMean({}), "");
    EXPECT_EQ(DidYouMean({"A"}), " Did you mean A?");
    EXPECT_EQ(DidYouMean({"A", "B"}), " Did you mean A or B?");
    EXPECT_EQ(DidYouMean({"A", "B", "C"}), " Did you mean A, B or C?");
}

} // namespace
