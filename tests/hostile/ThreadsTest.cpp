#include "fuzz/CheckedManager.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/Log.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace RedfishConfig;
using namespace RegistryTest;

// A manager belongs to one thread. The log belongs to all of them.

namespace {

std::string SystemText()
{
    return RegistryBuilder()
        .Attribute("Mode", "Enumeration",
                   {{"Value", {RegistryBuilder::Choice("On", "Switched on"), RegistryBuilder::Choice("Off", "Off")}},
                    {"CurrentValue", "On"},
                    {"MenuPath", "./Menu/Mode"}})
        .Attribute("Label", "String", {{"CurrentValue", "a"}, {"ValueExpression", "[a-z]*"}})
        .Rule("Label", "ReadOnly", true, {{"Mode", "EQU", "On"}})
        .Text();
}

std::string Answers()
{
    std::string registry = SystemText();
    RedfishConfigSettingManager manager(registry, false, {});
    std::string record;
    Fuzz::CheckedManager checked(manager, record);
    checked.EverythingOfAll();
    checked.Everything("Mode");
    checked.Everything("Label");
    return record;
}

TEST(Threads, AnswerAlikeWhileSinkAndLevelChange)
{
    const std::string expected = Answers();
    std::atomic<std::size_t> lines{0};
    std::atomic<int> working{3};
    std::atomic<int> wrong{0};
    std::vector<std::thread> workers;
    SetLogSink([&](unsigned, std::string_view, int, std::string_view text) { lines += text.empty() ? 0 : 1; });
    SetLogLevel(4); // so that lines are logged however the threads are scheduled
    for (int worker = 0; worker < 3; ++worker) {
        workers.emplace_back([&] {
            constexpr int rounds = 20;
            constexpr int mostRounds = 100'000; // until a line came while the level was not 0
            for (int round = 0; round < rounds || (lines == 0 && round < mostRounds); ++round) {
                wrong += Answers() == expected ? 0 : 1;
            }
            --working;
        });
    }
    for (unsigned turn = 0; working > 0; ++turn) {
        SetLogSink([&lines, turn](unsigned level, std::string_view file, int line, std::string_view text) {
            lines += level + turn > 0 && !file.empty() && line > 0 && !text.empty() ? 1U : 0U;
        });
        SetLogLevel(turn % 6); // 5 is above all levels
        std::this_thread::yield();
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    SetLogLevel(0);
    SetLogSink({});
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(lines, 0u);
}

TEST(Threads, GetWholeLinesFromASinkThatReplacesItself)
{
    std::atomic<std::size_t> lines{0};
    SetLogSink([&](unsigned, std::string_view, int, std::string_view) {
        ++lines;
        SetLogSink([&](unsigned, std::string_view, int, std::string_view) { ++lines; });
    });
    SetLogLevel(4);
    std::thread one([] { Answers(); });
    std::thread other([] { Answers(); });
    one.join();
    other.join();
    SetLogLevel(0);
    SetLogSink({});
    EXPECT_GT(lines, 2u);
}

} // namespace
