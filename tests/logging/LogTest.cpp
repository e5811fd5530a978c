#include <RedfishConfig/Log.h>

#include "support/GlobalLocale.h"
#include "support/LogCapture.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <memory>
#include <mutex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// Read before any test sets a level.
const unsigned levelAtStart = LogLevel();

void Write(unsigned level, const std::string& text)
{
    Log(level, "Source.cpp", 7).Stream() << text;
}

/** Puts the process's level and sink back when a test ends. */
class Restored {
public:
    Restored() = default;
    ~Restored()
    {
        SetLogLevel(0);
        SetLogSink({});
    }
    Restored(const Restored&) = delete;
    Restored& operator=(const Restored&) = delete;
};

/** What the action writes to standard error. */
template <class Action>
std::string StandardErrorOf(Action action)
{
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(LogLevel, IsZeroUntilItIsSet)
{
    EXPECT_EQ(levelAtStart, 0u);
}

TEST(LogLevel, IsTheOneThatWasSet)
{
    const Restored restored;
    for (const unsigned level : {1u, 4u, 3u, 0u, 5u, std::numeric_limits<unsigned>::max()}) {
        SetLogLevel(level);
        EXPECT_EQ(LogLevel(), level);
    }
}

TEST(LogLevel, DropsTheLinesOfHigherLevels)
{
    for (const unsigned level : {0u, 1u, 2u, 3u, 4u, 5u, std::numeric_limits<unsigned>::max()}) {
        const LogCapture log(level);
        std::vector<LogLine> expected;
        for (const unsigned lineLevel : {4u, 1u, 3u, 2u, 1u}) {
            const std::string text = "line of level " + std::to_string(lineLevel);
            Write(lineLevel, text);
            if (lineLevel <= level) {
                expected.emplace_back(lineLevel, text);
            }
        }
        EXPECT_EQ(log.Lines(), expected) << level;
    }
}

TEST(LogLevel, CountsWhenTheLineBegins)
{
    const LogCapture log(0);
    {
        Log line(1, "Source.cpp", 7);
        SetLogLevel(4);
        line.Stream() << "begun while the log was off";
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
    {
        Log line(4, "Source.cpp", 7);
        line.Stream() << "begun while the log was on";
        SetLogLevel(0);
    }
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "begun while the log was on")));
}

TEST(LogLevel, OfZeroDropsEvenLinesOfLevelZero)
{
    const LogCapture log(0);
    Write(0, "dropped");
    EXPECT_THAT(log.Lines(), IsEmpty());
    SetLogLevel(1);
    Write(0, "kept");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(0, "kept")));
}

TEST(Log, IsNotCopied)
{
    static_assert(!std::is_copy_constructible_v<Log>);
    static_assert(!std::is_copy_assignable_v<Log>);
    static_assert(std::is_nothrow_destructible_v<Log>);
    static_assert(std::is_same_v<decltype(std::declval<Log&>().Stream()), std::ostringstream&>);
    SUCCEED();
}

TEST(Log, EmitsItsLineWhenItEnds)
{
    const LogCapture log;
    {
        Log line(2, "Source.cpp", 7);
        line.Stream() << "first " << 2;
        EXPECT_THAT(log.Lines(), IsEmpty());
        line.Stream() << ' ' << true;
        EXPECT_THAT(log.Lines(), IsEmpty());
    }
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(2, "first 2 1")));
}

TEST(Log, EmitsALineWithoutText)
{
    const LogCapture log;
    Log(1, "Source.cpp", 7);
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(1, "")));
}

TEST(Log, EmitsTheTextAsItWasStreamed)
{
    const LogCapture log;
    const std::vector<std::string> texts{std::string("a\0b", 3), "  two  words ", "50% %s %n", "\xC3\xA4\xFF",
                                         std::string(1000000, 'x')};
    std::vector<LogLine> expected;
    for (const std::string& text : texts) {
        Write(1, text);
        expected.emplace_back(1, text);
    }
    EXPECT_EQ(log.Lines(), expected);
}

TEST(Log, EmitsOneLineAnObjectInTheOrderOfTheirEnds)
{
    const LogCapture log;
    {
        Log outer(3, "Source.cpp", 7);
        outer.Stream() << "outer, ";
        {
            Log inner(4, "Source.cpp", 8);
            inner.Stream() << "inner";
        }
        outer.Stream() << "ended last";
    }
    Write(1, "next");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "inner"), LogLine(3, "outer, ended last"), LogLine(1, "next")));
}

TEST(Log, BeginsEveryLineWithAFreshStream)
{
    const LogCapture log;
    Log(1, "Source.cpp", 7).Stream() << std::hex << std::setfill('0') << std::setw(4) << 31 << std::boolalpha;
    Log(1, "Source.cpp", 7).Stream() << 31 << true;
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(1, "001f"), LogLine(1, "311")));
}

TEST(LogSink, ReceivesLevelFileLineAndText)
{
    const Restored restored;
    struct Call {
        unsigned Level;
        std::string File;
        int Line;
        std::string Text;
        std::thread::id Thread;
    };
    std::vector<Call> calls;
    SetLogSink([&](unsigned level, std::string_view file, int line, std::string_view text) {
        calls.push_back({level, std::string(file), line, std::string(text), std::this_thread::get_id()});
    });
    SetLogLevel(4);
    Log(1, "One.cpp", 11).Stream() << "first";
    Log(4, "folder/Two.cpp", 2222).Stream() << "second";
    Log(3, "", 0).Stream() << "third";

    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].Level, 1u);
    EXPECT_EQ(calls[0].File, "One.cpp");
    EXPECT_EQ(calls[0].Line, 11);
    EXPECT_EQ(calls[0].Text, "first");
    EXPECT_EQ(calls[1].Level, 4u);
    EXPECT_EQ(calls[1].File, "folder/Two.cpp");
    EXPECT_EQ(calls[1].Line, 2222);
    EXPECT_EQ(calls[1].Text, "second");
    EXPECT_EQ(calls[2].Level, 3u);
    EXPECT_EQ(calls[2].File, "");
    EXPECT_EQ(calls[2].Line, 0);
    EXPECT_EQ(calls[2].Text, "third");
    for (const Call& call : calls) {
        EXPECT_EQ(call.Thread, std::this_thread::get_id());
    }
}

TEST(LogSink, IsNotCalledForDroppedLines)
{
    const Restored restored;
    int calls = 0;
    SetLogSink([&](unsigned, std::string_view, int, std::string_view) { ++calls; });
    SetLogLevel(2);
    Write(3, "dropped");
    Write(4, "dropped");
    EXPECT_EQ(calls, 0);
    Write(2, "emitted");
    EXPECT_EQ(calls, 1);
}

TEST(LogSink, ReplacesTheOneBefore)
{
    const Restored restored;
    std::vector<std::string> first;
    std::vector<std::string> second;
    SetLogLevel(4);
    SetLogSink([&](unsigned, std::string_view, int, std::string_view text) { first.emplace_back(text); });
    Write(1, "one");
    SetLogSink([&](unsigned, std::string_view, int, std::string_view text) { second.emplace_back(text); });
    Write(1, "two");
    EXPECT_THAT(first, ElementsAre("one"));
    EXPECT_THAT(second, ElementsAre("two"));
}

TEST(LogSink, KeepsTheLevel)
{
    const Restored restored;
    SetLogLevel(3);
    SetLogSink([](unsigned, std::string_view, int, std::string_view) {});
    EXPECT_EQ(LogLevel(), 3u);
    SetLogSink({});
    EXPECT_EQ(LogLevel(), 3u);
}

TEST(LogSink, EmptyWritesOneLineToStandardError)
{
    const Restored restored;
    std::vector<std::string> received;
    SetLogSink([&](unsigned, std::string_view, int, std::string_view text) { received.emplace_back(text); });
    SetLogLevel(4);
    EXPECT_EQ(StandardErrorOf([] { Write(1, "to the sink"); }), "");
    SetLogSink({});
    const std::string output = StandardErrorOf([] { Write(1, "to standard error"); });
    EXPECT_THAT(output, HasSubstr("to standard error"));
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
    EXPECT_EQ(output.back(), '\n') << output;
    EXPECT_THAT(received, ElementsAre("to the sink"));

    const std::string two = StandardErrorOf([] {
        Write(1, "one");
        Write(4, "two");
    });
    EXPECT_EQ(std::count(two.begin(), two.end(), '\n'), 2) << two;
    EXPECT_LT(two.find("one"), two.find("two")) << two;
}

TEST(LogSink, EmptyEscapesWhatWouldEndTheLine)
{
    const Restored restored;
    SetLogSink({});
    SetLogLevel(4);
    const std::string output = StandardErrorOf([] { Write(1, "a\nb\x1b[31m\x7f\t\xc3\xa9"); });
    EXPECT_THAT(output, HasSubstr("a\\x0ab\\x1b[31m\\x7f\\x09\xc3\xa9\n"));
}

TEST(LogSink, EmptyWritesTheLineNumberWithoutGroupsOfDigits)
{
    const Restored restored;
    const RegistryTest::GlobalLocale grouping(RegistryTest::GroupingLocale());
    SetLogSink({});
    SetLogLevel(4);
    const std::string output = StandardErrorOf([] { Log(1, "Source.cpp", 12345).Stream() << "text"; });
    EXPECT_EQ(output, "[1] Source.cpp:12345: text\n");
}

/** A static object of a caller, made before the first line is logged and so destroyed after what that line made. */
struct LogsAtTheEnd {
    bool wanted = false;
    ~LogsAtTheEnd()
    {
        if (wanted) {
            Write(1, "at the very end");
        }
    }
} logsAtTheEnd;

TEST(LogSinkDeathTest, WorksUntilTheProcessEnds)
{
    const std::string style = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            SetLogLevel(1);
            logsAtTheEnd.wanted = true;
            std::exit(0);
        },
        testing::ExitedWithCode(0), "at the very end");
    GTEST_FLAG_SET(death_test_style, style);
}

TEST(LogSink, IsToldWhereTheLibraryLogsALine)
{
    const Restored restored;
    std::vector<std::pair<std::string, int>> places;
    SetLogSink([&](unsigned, std::string_view file, int line, std::string_view) { places.emplace_back(file, line); });
    SetLogLevel(4);
    std::string registry = "{}";
    RedfishConfigSettingManager manager(registry, false, {});
    std::string value;
    manager.QuerySettingValue("A", value);
    ASSERT_FALSE(places.empty());
    for (const auto& [file, line] : places) {
        EXPECT_EQ(file.rfind("RedfishConfig/", 0), 0U) << file; // from the source tree's root
        EXPECT_GT(line, 0);
    }
}

TEST(LogSink, EmptyWritesNothingForDroppedLines)
{
    const Restored restored;
    SetLogSink(LogSink());
    SetLogLevel(2);
    EXPECT_EQ(StandardErrorOf([] { Write(3, "dropped"); }), "");
    SetLogLevel(0);
    EXPECT_EQ(StandardErrorOf([] { Write(1, "dropped"); }), "");
}

TEST(LogSink, EmptyWritesNothingToStandardOutput)
{
    const Restored restored;
    SetLogSink({});
    SetLogLevel(4);
    testing::internal::CaptureStdout();
    const std::string error = StandardErrorOf([] { Write(1, "a line"); });
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_THAT(error, HasSubstr("a line"));
}

TEST(LogSinkDeathTest, IsStandardErrorInAFreshProcess)
{
    const std::string style = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // starts the program anew
    EXPECT_EXIT(
        {
            SetLogLevel(1);
            Write(1, "to standard error");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "to standard error");
    GTEST_FLAG_SET(death_test_style, style);
}

TEST(LogSink, MayThrow)
{
    const Restored restored;
    int calls = 0;
    SetLogLevel(4);
    SetLogSink([&](unsigned, std::string_view, int, std::string_view text) {
        ++calls;
        if (text == "a number") {
            throw 5;
        }
        throw std::runtime_error("the disk is full");
    });
    EXPECT_NO_THROW(Write(1, "an error"));
    EXPECT_NO_THROW(Write(1, "a number"));
    EXPECT_NO_THROW(Write(4, "an error again"));
    EXPECT_EQ(calls, 3);

    SetLogSink({});
    EXPECT_THAT(StandardErrorOf([] { Write(1, "still at work"); }), HasSubstr("still at work"));
}

TEST(LogSink, MayThrowWhileAnotherExceptionPassesTheLine)
{
    const Restored restored;
    std::vector<std::string> received;
    SetLogLevel(4);
    SetLogSink([&](unsigned, std::string_view, int, std::string_view text) {
        received.emplace_back(text);
        throw std::runtime_error("from the sink");
    });
    std::string caught;
    try {
        Log line(1, "Source.cpp", 7);
        line.Stream() << "half of a line";
        throw std::runtime_error("from the caller");
    } catch (const std::runtime_error& error) {
        caught = error.what();
    }
    EXPECT_EQ(caught, "from the caller");
    EXPECT_THAT(received, ElementsAre("half of a line"));
}

TEST(LogSink, IsCalledByTwoThreadsAtTheSameTime)
{
    const Restored restored;
    std::mutex mutex;
    std::condition_variable arrived;
    int inside = 0;
    int met = 0;
    std::set<std::thread::id> threads;
    SetLogLevel(4);
    SetLogSink([&](unsigned, std::string_view, int, std::string_view) {
        std::unique_lock<std::mutex> lock(mutex);
        threads.insert(std::this_thread::get_id());
        ++inside;
        arrived.notify_all();
        if (arrived.wait_for(lock, std::chrono::seconds(20), [&] { return inside == 2; })) {
            ++met;
        }
    });
    std::thread first([] { Write(1, "one"); });
    std::thread second([] { Write(1, "two"); });
    const std::set<std::thread::id> expected{first.get_id(), second.get_id()};
    first.join();
    second.join();
    EXPECT_EQ(met, 2);
    EXPECT_EQ(threads, expected);
}

TEST(LogSink, LosesNoLineWhileItIsReplaced)
{
    const Restored restored;
    constexpr int writers = 3;
    constexpr int linesEach = 5000;
    std::atomic<int> received{0};
    std::atomic<int> damaged{0};
    std::atomic<bool> writing{true};
    // Each sink owns what it writes into, so that one that is replaced too early is noticed.
    const auto newSink = [&](int number) -> LogSink {
        return [&, own = std::make_shared<const std::string>(std::to_string(number)),
                number](unsigned level, std::string_view file, int line, std::string_view text) {
            const bool whole = level == 1 && file == "Source.cpp" && line == 7 &&
                               text == "a line that is too long to be held within a text itself" &&
                               *own == std::to_string(number);
            ++(whole ? received : damaged);
        };
    };
    SetLogSink(newSink(0));
    SetLogLevel(1);

    std::vector<std::thread> setters;
    for (int setter = 0; setter < 2; ++setter) {
        setters.emplace_back([&, setter] {
            for (int number = setter; writing; number += 2) {
                SetLogSink(newSink(number));
                std::this_thread::yield();
            }
        });
    }
    std::vector<std::thread> loggers;
    for (int logger = 0; logger < writers; ++logger) {
        loggers.emplace_back([] {
            for (int line = 0; line < linesEach; ++line) {
                Write(1, "a line that is too long to be held within a text itself");
            }
        });
    }
    for (std::thread& logger : loggers) {
        logger.join();
    }
    writing = false;
    for (std::thread& setter : setters) {
        setter.join();
    }
    EXPECT_EQ(damaged, 0);
    EXPECT_EQ(received, writers * linesEach);
}

TEST(LogLevel, MayBeSetWhileLinesAreLogged)
{
    const Restored restored;
    constexpr int writers = 3;
    constexpr int linesEach = 5000;
    std::atomic<int> always{0};
    std::atomic<int> sometimes{0};
    std::atomic<int> never{0};
    std::atomic<int> strangeLevels{0};
    std::atomic<bool> writing{true};
    SetLogSink([&](unsigned level, std::string_view, int, std::string_view) {
        ++(level == 1 ? always : level == 2 || level == 3 ? sometimes : never);
    });
    SetLogLevel(1);

    // Between 1 and 3: a line of level 1 is always emitted, one of level 4 never.
    std::vector<std::thread> setters;
    for (const unsigned other : {2u, 3u}) {
        setters.emplace_back([&, other] {
            while (writing) {
                SetLogLevel(other);
                std::this_thread::yield();
                SetLogLevel(1);
                const unsigned level = LogLevel();
                strangeLevels += level < 1 || level > 3 ? 1 : 0;
            }
        });
    }
    std::vector<std::thread> loggers;
    for (int logger = 0; logger < writers; ++logger) {
        loggers.emplace_back([] {
            for (int line = 0; line < linesEach; ++line) {
                for (const unsigned level : {1u, 2u, 3u, 4u}) {
                    Write(level, "a line");
                }
            }
        });
    }
    for (std::thread& logger : loggers) {
        logger.join();
    }
    writing = false;
    for (std::thread& setter : setters) {
        setter.join();
    }
    EXPECT_EQ(always, writers * linesEach);
    EXPECT_EQ(never, 0);
    EXPECT_LE(sometimes, 2 * writers * linesEach);
    EXPECT_EQ(strangeLevels, 0);
}
