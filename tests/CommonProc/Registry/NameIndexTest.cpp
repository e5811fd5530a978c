#include "CommonProc/Registry/NameIndex.h"

#include "support/GlobalLocale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using RedfishConfig::NameIndex;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class NameIndexTest : public testing::Test {
protected:
    std::vector<std::string> names{"BootMode", "FanSpeed", "bootmode", "", "Caf\xe9"};
    NameIndex index{names.size(), [this](std::size_t position) { return std::string_view(names[position]); }};
};

TEST_F(NameIndexTest, FindsEveryRecordOfANameInAnyLetterCaseInOrder)
{
    EXPECT_THAT(index.Find("BOOTMODE"), ElementsAre(0, 2));
    EXPECT_THAT(index.Find("fanSpeed"), ElementsAre(1));
}

TEST_F(NameIndexTest, FindsNothingForAnUnknownNameOrAPartOfOne)
{
    EXPECT_THAT(index.Find("Boot"), IsEmpty());
    EXPECT_THAT(index.Find("BootModes"), IsEmpty());
}

TEST_F(NameIndexTest, FindsAnEmptyName)
{
    EXPECT_THAT(index.Find(""), ElementsAre(3));
}

TEST_F(NameIndexTest, FollowsAChangeOfTheGlobalLocale)
{
    EXPECT_THAT(index.Find("CAF\xc9"), IsEmpty());
    {
        const RegistryTest::GlobalLocale latin(RegistryTest::LatinLocale());
        EXPECT_THAT(index.Find("CAF\xc9"), ElementsAre(4));
    }
    EXPECT_THAT(index.Find("CAF\xc9"), IsEmpty());
    EXPECT_THAT(index.Find("CAF\xe9"), ElementsAre(4));
}

} // namespace
