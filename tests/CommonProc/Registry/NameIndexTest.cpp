#include "CommonProc/Registry/NameIndex.h"

#include "support/GlobalLocale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using RedfishConfig::LocaleNameIndex;
using RedfishConfig::NameIndex;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class NameIndexTest : public testing::Test {
protected:
    std::vector<std::string> names{"BootMode", "FanSpeed", "bootmode", "", "Caf\xe9"};
    LocaleNameIndex index{{names.begin(), names.end()}};

    std::vector<std::size_t> Find(const std::string& name) const
    {
        const auto now = index.ForGlobalLocale();
        std::vector<std::size_t> positions;
        for (std::size_t found = now->First(name); found != NameIndex::none; found = now->Next(found)) {
            positions.push_back(found);
        }
        return positions;
    }
};

TEST_F(NameIndexTest, FindsEveryRecordOfANameInAnyLetterCaseInOrder)
{
    EXPECT_THAT(Find("BOOTMODE"), ElementsAre(0, 2));
    EXPECT_THAT(Find("fanSpeed"), ElementsAre(1));
}

TEST_F(NameIndexTest, FindsNothingForAnUnknownNameOrAPartOfOne)
{
    EXPECT_THAT(Find("Boot"), IsEmpty());
    EXPECT_THAT(Find("BootModes"), IsEmpty());
}

TEST_F(NameIndexTest, FindsAnEmptyName)
{
    EXPECT_THAT(Find(""), ElementsAre(3));
}

TEST_F(NameIndexTest, FollowsAChangeOfTheGlobalLocale)
{
    EXPECT_THAT(Find("CAF\xc9"), IsEmpty());
    {
        const RegistryTest::GlobalLocale latin(RegistryTest::LatinLocale());
        EXPECT_THAT(Find("CAF\xc9"), ElementsAre(4));
    }
    EXPECT_THAT(Find("CAF\xc9"), IsEmpty());
    EXPECT_THAT(Find("CAF\xe9"), ElementsAre(4));
}

TEST_F(NameIndexTest, ForAsciiKnowsNoLocale)
{
    const RegistryTest::GlobalLocale latin(RegistryTest::LatinLocale());
    EXPECT_EQ(index.ForAscii().First("CAF\xc9"), NameIndex::none);
    EXPECT_EQ(index.ForAscii().First("cAF\xe9"), 4u);
}

TEST(NameIndex, FindsEachOfManyNames)
{
    std::vector<std::string> names;
    for (int number = 0; number < 5000; ++number) {
        names.push_back("Name" + std::to_string(number % 2500));
    }
    const NameIndex index({names.begin(), names.end()}, RedfishConfig::NoFolding());
    for (std::size_t number = 0; number < 2500; ++number) {
        ASSERT_EQ(index.First(names[number]), number);
        ASSERT_EQ(index.Next(number), number + 2500);
        ASSERT_EQ(index.Next(number + 2500), NameIndex::none);
    }
    EXPECT_EQ(index.First("name1"), NameIndex::none);
    EXPECT_EQ(NameIndex({}, RedfishConfig::NoFolding()).First(""), NameIndex::none);
}

} // namespace
