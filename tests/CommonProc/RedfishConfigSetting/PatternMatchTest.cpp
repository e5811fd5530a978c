#include "CommonProc/RedfishConfigSetting/PatternMatch.h"

#include "common/Limits.h"
#include "support/Times.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <pthread.h>

using RedfishConfig::MatchesPattern;
namespace Limits = RedfishConfig::Limits;

using RegistryTest::Times;

namespace {

/** "match", "no match" or why it could not be told. */
std::string Outcome(const std::string& text, const std::string& pattern)
{
    try {
        return MatchesPattern(text, pattern) ? "match" : "no match";
    } catch (const std::exception& error) {
        return error.what();
    }
}

const std::string tooManySteps = "The value takes too many steps to match the pattern.";
const std::string tooDeep = "The value is nested too deeply to match the pattern.";
const std::string tooLarge = "The pattern of the setting is too large.";

TEST(MatchesPattern, MatchesTheWholeText)
{
    EXPECT_TRUE(MatchesPattern("node-12", "[a-z]+-[0-9]{1,2}"));
    EXPECT_FALSE(MatchesPattern("node-123", "[a-z]+-[0-9]{1,2}"));
    EXPECT_FALSE(MatchesPattern(" node-12", "[a-z]+-[0-9]{1,2}"));
    EXPECT_TRUE(MatchesPattern("", "^$|^[0-9A-F]{12}$"));
    EXPECT_TRUE(MatchesPattern(std::string("a\0b", 3), std::string("a\0b", 3)));
    EXPECT_TRUE(MatchesPattern("xyxy", "(x(?=y)y)\\1"));
    EXPECT_TRUE(MatchesPattern("one two", "\\bone\\b \\btwo\\b"));
}

TEST(MatchesPattern, PassesOnWhyAPatternIsNone)
{
    for (const char* pattern : {"[", "(", "a{2", "*", "\\", "a{2,1}"}) {
        std::string reason;
        try {
            const std::regex expression(pattern, std::regex::ECMAScript);
        } catch (const std::regex_error& error) {
            reason = error.what();
        }
        ASSERT_NE(reason, "") << pattern;
        EXPECT_EQ(Outcome("x", pattern), reason) << pattern;
    }
}

/** The walk over the text, which counts steps, must not change any answer. */
TEST(MatchesPattern, AgreesWithThePlainFunctionOnRandomPatterns)
{
    const std::vector<std::string> pieces{"a", "b",  ".",   "[ab]",  "[^a]", "(",      ")",   "|",   "*",
                                          "+", "?",  "\\b", "{1,2}", "{2}",  "(?:",    "(?=", "(?!", "^",
                                          "$", "*?", "\\1", "\\w",   " ",    "[a-b ]", "\\B"};
    std::mt19937 random(7);
    const auto below = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    int matched = 0;
    int usable = 0;
    for (int round = 0; round < 30000; ++round) {
        std::string pattern;
        for (std::size_t count = below(9); count > 0; --count) {
            pattern += pieces[below(pieces.size())];
        }
        std::string text;
        for (std::size_t count = below(6); count > 0; --count) {
            text += "ab "[below(3)];
        }
        std::string plain;
        try {
            plain = std::regex_match(text, std::regex(pattern)) ? "match" : "no match";
        } catch (const std::regex_error& error) {
            plain = error.what();
        }
        ASSERT_EQ(Outcome(text, pattern), plain) << pattern << " with " << text;
        usable += plain == "match" || plain == "no match" ? 1 : 0;
        matched += plain == "match" ? 1 : 0;
    }
    EXPECT_GT(usable, 5000);
    EXPECT_GT(matched, 500);
}

TEST(MatchesPattern, RefusesWhatWouldNeverEnd)
{
    EXPECT_EQ(Outcome(Times(60, "a") + "!", "(a+)+b"), tooManySteps);
    EXPECT_EQ(Outcome(Times(60, "a") + "b", "(a*)*\\1(a*)*\\2c"), tooManySteps);
    EXPECT_EQ(Outcome("aaaa", Times(30, "(") + "a?" + Times(30, ")*") + "b"), tooManySteps);
    EXPECT_EQ(Outcome(Times(300, "a"), "(?=.*(?=.*(?=.*(?=.*b)))).*"), tooManySteps);
}

TEST(MatchesPattern, RefusesWhatWouldOverflowTheStack)
{
    for (const char* pattern : {"((((((((a))))))))*", "(((((((((a)|b)|c)|d)|e)|f)|g)|h)|i)*"}) {
        EXPECT_EQ(Outcome(Times(Limits::matchedBytes, "a"), pattern), tooDeep) << pattern;
    }
}

TEST(MatchesPattern, SurvivesPatternsAsLongAndDeepAsAdmitted)
{
    const std::size_t most = Limits::patternBytes;
    const std::vector<std::string> patterns{
        Times(most / 2, "(") + Times(most / 2, ")"),
        Times(most, "("),
        Times(most, "|"),
        Times(most / 5, "[a-z]"),
        Times(most / 4, "(|a)"),
        Times(most / 2, "a?"),
        Times(300, "(") + Times(300, ")*"),
        "(a?){700}",
        "((a)?){550}b",
        "(|||||){220}",
        "(x|" + Times(900, "x|") + "y)*",
    };
    for (const std::string& pattern : patterns) {
        ASSERT_LE(pattern.size(), most);
        ASSERT_NE(Outcome("", pattern), tooLarge) << pattern;
        for (const std::string& text : {std::string(), std::string("a"), Times(Limits::matchedBytes, "x")}) {
            EXPECT_NE(Outcome(text, pattern), "") << pattern; // some answer, and the process lives
        }
    }
}

TEST(MatchesPattern, LeavesRoomOnTheStackOfAnotherThread)
{
    std::string outcome;
    std::thread([&] { outcome = Outcome(Times(Limits::matchedBytes, "a"), "((((((((a))))))))*"); }).join();
    EXPECT_EQ(outcome, tooDeep);
}

/** The outcomes of all questions on a thread with a stack of so many bytes. */
std::vector<std::string> OutcomesWithStack(std::size_t bytes,
                                           const std::vector<std::pair<std::string, std::string>>& questions)
{
    struct Work {
        const std::vector<std::pair<std::string, std::string>>& Questions;
        std::vector<std::string> Outcomes;
    } work{questions, {}};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    const auto run = [](void* argument) -> void* {
        Work& own = *static_cast<Work*>(argument);
        for (const auto& [text, pattern] : own.Questions) {
            own.Outcomes.push_back(Outcome(text, pattern));
        }
        return nullptr;
    };
    pthread_t thread{};
    EXPECT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return work.Outcomes;
}

TEST(MatchesPattern, AnswersTheSameOnAThreadWithASmallStack)
{
    const std::string longest = Times(Limits::matchedBytes, "a");
    const std::vector<std::pair<std::string, std::string>> questions{
        {Times(2'000, "a"), "(a|b)*"},
        {longest, "((((((((a))))))))*"},
        {"node-12", "[a-z]+-[0-9]{1,2}"},
        {"x", Times(Limits::patternBytes / 2, "(") + Times(Limits::patternBytes / 2, ")")},
        {"x", "((x)"},
        {Times(60, "a") + "!", "(a+)+b"},
    };
    std::vector<std::string> here;
    for (const auto& [text, pattern] : questions) {
        here.push_back(Outcome(text, pattern));
    }
    EXPECT_EQ(here.front(), "match");
    EXPECT_EQ(OutcomesWithStack(512U << 10U, questions), here);
    EXPECT_EQ(OutcomesWithStack(64U << 20U, questions), here);
}

TEST(MatchesPattern, AdmitsAPatternUpToItsLimitAndNoLongerOne)
{
    EXPECT_EQ(Outcome("b", Times(Limits::patternBytes, "a")), "no match");
    EXPECT_EQ(Outcome("b", Times(Limits::patternBytes + 1, "a")), "The pattern of the setting is too long.");
}

TEST(MatchesPattern, AdmitsAValueUpToItsLimitAndNoLongerOne)
{
    EXPECT_EQ(Outcome(Times(Limits::matchedBytes, "a"), "b"), "no match");
    EXPECT_EQ(Outcome(Times(Limits::matchedBytes + 1, "a"), "b"),
              "The value is too long to match it with the pattern.");
}

TEST(MatchesPattern, RefusesAPatternWhoseRepetitionsAreTooLarge)
{
    const std::string most = std::to_string(Limits::patternSize / 2 - 1);
    const std::string tooMany = std::to_string(Limits::patternSize / 2 + 1);
    EXPECT_EQ(Outcome("a", "a{0," + most + "}"), "match");
    EXPECT_EQ(Outcome("a", "a{0," + tooMany + "}"), tooLarge);
    EXPECT_EQ(Outcome("a", "((a{0,40}){0,40}){0,40}"), tooLarge);
    EXPECT_EQ(Outcome("a", "a{99999999999999999999}"), tooLarge);
    EXPECT_EQ(Outcome("a", "[{100000}]"), "no match"); // between brackets it is no repetition
    EXPECT_EQ(Outcome("{", "\\{"), "match");
}

/** Shapes of patterns as controllers publish them, with values of the greatest length that fits them. */
TEST(MatchesPattern, HasRoomForWhatControllersPublish)
{
    EXPECT_EQ(Outcome(Times(1023, "~"), "^[ -~]{0,1024}$"), "match");
    EXPECT_EQ(Outcome(Times(64, "fA"), "^[0-9a-fA-F]{128,128}$"), "match");
    EXPECT_EQ(Outcome("fe80:1:2:3:4:5:6:7", "^([0-9a-f]{1,4}:){7,7}[0-9a-f]{1,4}$"), "match");
    EXPECT_EQ(Outcome("https://" + Times(20, "files.") + "example.com/boot.efi",
                      "^https?://([a-z]([a-z0-9-]*[a-z0-9])?\\.)*[a-z]+(/[^ ]+)?$"),
              "match");
}

} // namespace
