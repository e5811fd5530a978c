#include "Text.h"
#include "common/Ascii.h"
#include "common/Texts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using RedfishConfig::Texts::ReplaceAll;

namespace Ascii = RedfishConfig::Ascii;

using namespace RedfishConfigTool;
using Lines = std::vector<std::string>;

TEST(Escape, EveryKindOfCharacter)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"plain text, 100 %", "plain text, 100 %"},
        {"C:\\temp", "C:\\temp"},
        {"a\nb\rc\td", "a\\nb\\rc\\td"},
        {"\x1b[31m", "\\x1b[31m"},
        {std::string("\0x", 2), "\\x00x"},
        {"\x7f", "\\x7f"},
        {"\xc2\x9b", "\\u009b"},     // a control character that some terminals obey
        {"\xc2\xa0", "\xc2\xa0"},    // the first behind them
        {"\xe2\x80\xae", "\\u202e"}, // turns the direction of writing round
        {"\xe2\x80\xa8", "\\u2028"}, // breaks a line
        {"\xc3\xa9\xe4\xb8\xad", "\xc3\xa9\xe4\xb8\xad"},
        {"\xf0\x9f\x92\xbe", "\xf0\x9f\x92\xbe"},
        {"\xff", "\\xff"},
        {"\xc3", "\\xc3"},   // cut off
        {"\xc3(", "\\xc3("}, // no second byte
        {"\xe4\xb8", "\\xe4\\xb8"},
        {"\xc0\x80", "\\xc0\\x80"}, // a longer spelling of a shorter one
        {"\xe0\x80\x80", "\\xe0\\x80\\x80"},
        {"\xed\xa0\x80", "\\xed\\xa0\\x80"},          // half of a surrogate pair
        {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}, // behind the last character
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(Escape(text), escaped);
        EXPECT_EQ(Escape(escaped), escaped) << "must not change its own output";
    }
}

TEST(CharacterCount, CountsCharactersNotBytes)
{
    EXPECT_EQ(CharacterCount(""), 0U);
    EXPECT_EQ(CharacterCount("abc"), 3U);
    EXPECT_EQ(CharacterCount("\xc3\xa9\xe4\xb8\xad"), 2U);
    EXPECT_EQ(CharacterCount("\xff\xff"), 2U);
}

TEST(Pad, FillsUpToTheWidthInCharacters)
{
    EXPECT_EQ(Pad("ab", 4), "ab  ");
    EXPECT_EQ(Pad("\xc3\xa9", 3), "\xc3\xa9  ");
    EXPECT_EQ(Pad("abcde", 4), "abcde");
}

TEST(Wrap, BreaksAtBlanks)
{
    EXPECT_EQ(Wrap("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(Wrap("one two three", 6), (Lines{"one", "two", "three"}));
    EXPECT_EQ(Wrap("one two three", 13), (Lines{"one two three"}));
    EXPECT_EQ(Wrap("  one \t two  ", 20), (Lines{"one two"}));
}

TEST(Wrap, CountsCharacters)
{
    EXPECT_EQ(Wrap("\xc3\xa9\xc3\xa9 \xc3\xa9\xc3\xa9", 5), (Lines{"\xc3\xa9\xc3\xa9 \xc3\xa9\xc3\xa9"}));
}

TEST(Wrap, LeavesALongWordWhole)
{
    EXPECT_EQ(Wrap("a incomprehensible b", 5), (Lines{"a", "incomprehensible", "b"}));
}

TEST(Wrap, LineFeedsEndParagraphs)
{
    EXPECT_EQ(Wrap("one\ntwo", 20), (Lines{"one", "two"}));
    EXPECT_EQ(Wrap("one\r\ntwo\rthree", 20), (Lines{"one", "two", "three"}));
    EXPECT_EQ(Wrap("one\n\ntwo\n\n", 20), (Lines{"one", "", "two"}));
}

TEST(Wrap, GivesOneLineAtLeast)
{
    EXPECT_EQ(Wrap("", 20), (Lines{""}));
    EXPECT_EQ(Wrap("\n\n", 20), (Lines{""}));
}

TEST(Wrap, EscapesItsLines)
{
    EXPECT_EQ(Wrap("a\x1b[1m b", 20), (Lines{"a\\x1b[1m b"}));
}

TEST(IgnoringCase, FoldsAsciiOnly)
{
    EXPECT_TRUE(Ascii::EqualIgnoringCase("BootMode", "bOOTmODE"));
    EXPECT_FALSE(Ascii::EqualIgnoringCase("BootMode", "BootModes"));
    EXPECT_FALSE(Ascii::EqualIgnoringCase("\xc3\x89", "\xc3\xa9"));
    EXPECT_TRUE(Ascii::ContainsIgnoringCase("Secure Boot", "BOOT"));
    EXPECT_TRUE(Ascii::ContainsIgnoringCase("anything", ""));
    EXPECT_FALSE(Ascii::ContainsIgnoringCase("Boot", "Boots"));
}

TEST(ReplaceAll, ReplacesEachOccurrenceOnce)
{
    EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(ReplaceAll("abcabc", "bc", ""), "aa");
    EXPECT_EQ(ReplaceAll("abc", "x", "y"), "abc");
}

TEST(Counted, OneAndMany)
{
    EXPECT_EQ(Counted(0, "setting"), "0 settings");
    EXPECT_EQ(Counted(1, "setting"), "1 setting");
    EXPECT_EQ(Counted(2, "setting"), "2 settings");
}

} // namespace
