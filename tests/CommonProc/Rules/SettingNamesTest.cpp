#include "CommonProc/Rules/SettingNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace RedfishConfig;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAreArray;

namespace {

using Found = std::vector<std::pair<std::size_t, KeyTail>>;

Found FindKeys(const SettingNames& names, std::string_view text)
{
    std::vector<KeyPlace> places;
    names.FindKeys(text, places);
    Found found;
    for (const KeyPlace& place : places) {
        found.emplace_back(place.Attribute, place.Tail);
    }
    return found;
}

/** Every key is compared at every place. */
Found FindKeysPlainly(const std::vector<std::string>& names, const std::string& text)
{
    Found found;
    for (std::size_t name = 0; name < names.size(); ++name) {
        const bool isFirst =
            std::find(names.begin(), names.end(), names[name]) - names.begin() == static_cast<std::ptrdiff_t>(name);
        for (std::size_t tail = 0; isFirst && !names[name].empty() && tail < keyTails.size(); ++tail) {
            const std::string key = names[name] + std::string(keyTails[tail]);
            for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + 1)) {
                found.emplace_back(name, static_cast<KeyTail>(tail));
            }
        }
    }
    return found;
}

TEST(SettingNames, FindANameWithEveryTail)
{
    const SettingNames names({"Fan"});
    for (std::size_t tail = 0; tail < keyTails.size(); ++tail) {
        EXPECT_THAT(FindKeys(names, "((Fan" + std::string(keyTails[tail]) + "==x)"),
                    ElementsAre(Pair(0, static_cast<KeyTail>(tail))));
    }
    EXPECT_THAT(FindKeys(names, "Fan.Value Fan.currentvalue Fan. Fan"), IsEmpty());
}

TEST(SettingNames, FindShorterNamesAtTheEndOfLongerOnes)
{
    const SettingNames names({"SecureBootMode", "BootMode", "Mode", "bootmode"});
    EXPECT_THAT(
        FindKeys(names, "(SecureBootMode.CurrentValue"),
        ElementsAre(Pair(2, KeyTail::CurrentValue), Pair(1, KeyTail::CurrentValue), Pair(0, KeyTail::CurrentValue)));
}

TEST(SettingNames, LeaveOutEmptyNamesAndFurtherAttributesOfAName)
{
    EXPECT_THAT(FindKeys(SettingNames({"", "A", "A"}), ".Hidden A.Hidden"), ElementsAre(Pair(1, KeyTail::Hidden)));
    EXPECT_THAT(FindKeys(SettingNames({}), "A.Hidden"), IsEmpty());
}

TEST(SettingNames, TellWhichBytesAKeyMayHaveAndHowLongItMayBe)
{
    const SettingNames names({"Q\xe9", "X"});
    for (const char byte : std::string("Q\xe9X. CurentValexsu")) {
        EXPECT_TRUE(names.MayHold(byte)) << byte;
    }
    for (const char byte : std::string("(=)Z\xe8")) {
        EXPECT_FALSE(names.MayHold(byte)) << byte;
    }
    EXPECT_EQ(names.LongestKey(), 2 + std::string(".IsSystemUniqueProperty").size());
}

TEST(SettingNames, FindWhatComparingEveryKeyAtEveryPlaceFinds)
{
    const std::vector<std::string> names{"A", "BA", "CBA", "a", "A.B", "A B", "", "A not", "BA", "\xc3\xa9", "(A"};
    const std::vector<std::string> pieces{
        "A",       "B",         "C",          "a", ".", " ", "(", "\xc3\xa9", "not", " exist", ".CurrentValue",
        ".Hidden", ".ReadOnly", " not exist", "=="};
    const SettingNames index({names.begin(), names.end()});
    std::mt19937 random(5);
    std::size_t keys = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (std::size_t count = random() % 12; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        const Found expected = FindKeysPlainly(names, text);
        ASSERT_THAT(FindKeys(index, text), UnorderedElementsAreArray(expected)) << text;
        keys += expected.size();
    }
    EXPECT_GT(keys, 5000u);
}

} // namespace
