#include "fuzz/CheckedManager.h"
#include "support/RegistryBuilder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <vector>

using namespace RedfishConfig;
using namespace RegistryTest;

// Memory that runs out. The program's own operator new fails where a test says so.

namespace {

enum class Fails {
    Never,
    Once,       // the Nth allocation alone
    FromThere,  // the Nth allocation and every later one
    AllNothrow, // every one that answers null instead of raising
};

thread_local Fails fails = Fails::Never;
thread_local std::size_t allocationsLeft = 0;
thread_local bool hasFailed = false;

bool AllocationFails(bool nothrow)
{
    bool failsNow = false;
    if (fails == Fails::AllNothrow) {
        failsNow = nothrow;
    } else if (fails != Fails::Never) {
        if (allocationsLeft > 0) {
            --allocationsLeft;
        }
        failsNow = allocationsLeft == 0 && (fails == Fails::FromThere || !hasFailed);
    }
    hasFailed = hasFailed || failsNow;
    return failsNow;
}

} // namespace

void* operator new(std::size_t size)
{
    void* memory = AllocationFails(false) ? nullptr : std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return AllocationFails(true) ? nullptr : std::malloc(size > 0 ? size : 1);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

namespace {

/** Allocations fail while it lives. */
class Shortage {
public:
    explicit Shortage(Fails how, std::size_t nth = 0)
    {
        hasFailed = false;
        allocationsLeft = nth;
        fails = how;
    }
    ~Shortage() { fails = Fails::Never; }

    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;
};

/** Names and values too long to be kept without an allocation, and rules that tell when one is lost. */
std::string SystemText()
{
    return RegistryBuilder()
        .Attribute("ModeOfTheWholeSystem", "Enumeration",
                   {{"Value", {RegistryBuilder::Choice("QuietThroughTheNight", "Quiet"),
                               RegistryBuilder::Choice("LoudThroughTheDayAndNight", "Loud")}},
                    {"CurrentValue", "QuietThroughTheNight"},
                    {"DefaultValue", "LoudThroughTheDayAndNight"},
                    {"HelpText", "What the whole system is to sound like."},
                    {"MenuPath", "./SoundOfTheWholeSystem/ModesOfTheSound/Mode"}})
        .Attribute("StepsOfTheWholeSystem", "Integer",
                   {{"CurrentValue", 40}, {"DefaultValue", 20}, {"LowerBound", 0}, {"ScalarIncrement", 20}})
        .Attribute("LabelOfTheWholeSystem", "String",
                   {{"CurrentValue", "whatever it is called"},
                    {"DefaultValue", "no name was given to it"},
                    {"ValueExpression", "[a-z ]+"}})
        .Attribute("WatchOfTheWholeSystem", "Boolean", {{"CurrentValue", true}, {"DefaultValue", false}})
        .Attribute("PhraseOfTheWholeSystem", "Password", {{"DefaultValue", "nobody knows this one"}})
        .Rule("StepsOfTheWholeSystem", "ReadOnly", true,
              {{"ModeOfTheWholeSystem", "EQU", "LoudThroughTheDayAndNight", "AND"},
               {"WatchOfTheWholeSystem", "EQU", true}})
        .Rule("LabelOfTheWholeSystem", "Hidden", true, {{"StepsOfTheWholeSystem", "EQU", 20}})
        .Rule("LabelOfTheWholeSystem", "Hidden", true, {{"WatchOfTheWholeSystem", "EQU", false}})
        .Rule("WatchOfTheWholeSystem", "GrayOut", true, {{"LabelOfTheWholeSystem", "EQU"}})
        .Text();
}

const char* const names[] = {"ModeOfTheWholeSystem", "StepsOfTheWholeSystem", "LabelOfTheWholeSystem",
                             "WatchOfTheWholeSystem", "PhraseOfTheWholeSystem"};
const std::string steps = names[1];

using Texts = std::map<std::string, std::string>;

struct Operation {
    const char* Name;
    std::function<void(RedfishConfigSettingManager&)> Run;
    bool OnAll; ///< whether all settings are generated for it
};

std::vector<Operation> Operations()
{
    using Manager = RedfishConfigSettingManager;
    const auto query = [](RedfishConfigResult (Manager::*one)(const std::string&, std::string&)) {
        return [one](Manager& manager) {
            std::string answer;
            (manager.*one)(steps, answer);
        };
    };
    const auto queryAll = [](RedfishConfigResult (Manager::*all)(Texts&)) {
        return [all](Manager& manager) {
            Texts answers;
            (manager.*all)(answers);
        };
    };
    return {
        {"QuerySettingValue", query(&Manager::QuerySettingValue), false},
        {"QuerySettingDefaultValue", query(&Manager::QuerySettingDefaultValue), false},
        {"QuerySettingDescription", query(&Manager::QuerySettingDescription), false},
        {"QuerySettingValidValues", query(&Manager::QuerySettingValidValues), false},
        {"QuerySettingStatus",
         [](Manager& manager) {
             SettingStatus status;
             manager.QuerySettingStatus(steps, status);
         },
         false},
        {"GetSettingProperties",
         [](Manager& manager) {
             RedfishConfigSettingInfoStru record;
             manager.GetSettingProperties(steps, record);
         },
         false},
        {"QueryGroupSettingValues", queryAll(&Manager::QueryGroupSettingValues), true},
        {"QueryGroupSettingDefaultValues", queryAll(&Manager::QueryGroupSettingDefaultValues), true},
        {"QueryGroupSettingDescriptions", queryAll(&Manager::QueryGroupSettingDescriptions), true},
        {"QueryGroupSettingValidValues", queryAll(&Manager::QueryGroupSettingValidValues), true},
        {"QueryGroupSettingStatus",
         [](Manager& manager) {
             std::map<std::string, SettingStatus> status;
             manager.QueryGroupSettingStatus(status);
         },
         true},
        {"PreparePatchContext",
         [](Manager& manager) {
             std::string patch;
             manager.PreparePatchContext(steps, "60", patch, FILTER_PATCH);
         },
         false},
        {"PreparePatchContext of many",
         [](Manager& manager) {
             Texts patches;
             manager.PreparePatchContext({{steps, "60"}, {"WatchOfTheWholeSystem", "no truth at all"}}, patches,
                                         FILTER_PATCH);
         },
         false},
        {"PrepareLoadDefaultValue",
         [](Manager& manager) {
             std::string value;
             std::string patch;
             manager.PrepareLoadDefaultValue(steps, value, patch);
         },
         false},
        {"FetchSaveSettingValues",
         [](Manager& manager) {
             Texts values;
             manager.FetchSaveSettingValues(values, FILTER_SAVE_PORTABLE);
         },
         true},
        {"FetchRestoreSettingValues",
         [](Manager& manager) {
             Texts saved{{steps, "60"}, {"WatchOfTheWholeSystem", "no truth at all"}};
             Texts restored;
             Texts errors;
             manager.FetchRestoreSettingValues(saved, restored, errors, false);
         },
         false},
        {"GetAllSettingProperties",
         [](Manager& manager) {
             std::vector<RedfishConfigSettingInfoStru> records;
             manager.GetAllSettingProperties(records);
         },
         true},
        {"GetGroupList",
         [](Manager& manager) {
             std::map<std::string, std::vector<std::string>> groups;
             manager.GetGroupList(groups);
         },
         true},
        {"UpdateSettingValue",
         [](Manager& manager) { manager.UpdateSettingValue({{steps, SettingValue(std::int64_t(80))}}); }, false},
        {"GetError", [](Manager& manager) { manager.GetError(); }, false},
        {"copy", [](Manager& manager) { const Manager copy(manager); }, false}, // NOLINT: copying is what it is about
        {"assignment",
         [](Manager& manager) {
             std::string empty;
             Manager other(empty, false, {});
             other = manager;
         },
         false},
    };
}

/** What a manager says of all its settings, or of one after the other. */
std::string Answers(RedfishConfigSettingManager& manager, bool ofAll)
{
    std::string record;
    Fuzz::CheckedManager checked(manager, record);
    if (ofAll) {
        checked.EverythingOfAll();
    }
    for (const char* name : names) {
        checked.Everything(name);
    }
    return record;
}

class Shortages : public testing::TestWithParam<Fails> {
protected:
    RedfishConfigSettingManager NewManager()
    {
        return RedfishConfigSettingManager(m_Registry, m_Values, false, Config_Options());
    }

    std::string m_Registry = SystemText();
    SettingValueMap m_Values{{"LabelOfTheWholeSystem", SettingValue("the name that it has now")}};
};

/** Runs the operation with a shortage at the first allocation, the second, and so on until it needs none there. */
template <class Prepare, class Check>
void RunShort(const Operation& operation, Fails how, Prepare prepare, Check check)
{
    SCOPED_TRACE(operation.Name);
    for (std::size_t nth = 1; nth < 100000; ++nth) {
        auto manager = prepare();
        bool failed = false;
        {
            const Shortage shortage(how, nth);
            try {
                operation.Run(manager);
            } catch (const std::bad_alloc&) {
                failed = true; // out of the operation: the caller's business
            }
            failed = failed || hasFailed;
        }
        SCOPED_TRACE("allocation " + std::to_string(nth));
        check(manager);
        if (!failed || testing::Test::HasFailure()) {
            return;
        }
    }
    ADD_FAILURE() << "it never succeeds";
}

TEST_P(Shortages, LeaveANewManagerAbleToAnswer)
{
    for (const Operation& operation : Operations()) {
        auto healthy = NewManager();
        const std::string expected = Answers(healthy, operation.OnAll);
        RunShort(
            operation, GetParam(), [this] { return NewManager(); },
            [&](RedfishConfigSettingManager& manager) { ASSERT_EQ(Answers(manager, operation.OnAll), expected); });
    }
}

TEST_P(Shortages, LeaveAManagerWithAllSettingsAbleToAnswer)
{
    const auto prepare = [this] {
        auto manager = NewManager();
        std::map<std::string, SettingStatus> status;
        manager.QueryGroupSettingStatus(status);
        return manager;
    };
    auto healthy = prepare();
    const std::string expected = Answers(healthy, true);
    for (const Operation& operation : Operations()) {
        RunShort(operation, GetParam(), prepare, [&](RedfishConfigSettingManager& manager) {
            manager.UpdateSettingValue({{steps, SettingValue(std::int64_t(40))}}); // the operation may have changed it
            manager.GetError();
            ASSERT_EQ(Answers(manager, true), expected);
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Allocation, Shortages, testing::Values(Fails::Once, Fails::FromThere),
                         [](const auto& tested) {
                             return tested.param == Fails::Once ? "OfOneAllocation" : "OfEveryFurtherAllocation";
                         });

TEST(SettingsWithoutMemory, AnswerThatTheyAreMissing)
{
    std::string registry = SystemText();
    RedfishConfigSettingManager manager(registry, false, {});
    Texts values;
    {
        const Shortage shortage(Fails::AllNothrow);
        EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_GROUP_PARTIAL_FAILURE);
        ASSERT_TRUE(hasFailed);
    }
    EXPECT_TRUE(values.empty());
    const auto errors = manager.GetError();
    ASSERT_EQ(errors.size(), std::size(names));
    for (const RedfishConfigResult& error : errors) {
        EXPECT_EQ(error, RESULT_INTERNAL_ERROR);
        EXPECT_EQ(error.ErrorMsg(), "Cannot find the setting in the generated collection");
    }

    std::string text = "untouched";
    std::string patch = "untouched";
    SettingStatus status;
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(manager.QuerySettingValue(steps, text), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.QuerySettingDefaultValue(steps, text), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.QuerySettingDescription(steps, text), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.QuerySettingValidValues(steps, text), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.QuerySettingStatus(steps, status), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.GetSettingProperties(steps, record), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.PreparePatchContext(steps, "60", patch, FILTER_PATCH), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(manager.PrepareLoadDefaultValue(steps, text, patch), RESULT_INTERNAL_ERROR);
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(patch, "untouched");

    Texts patches;
    EXPECT_EQ(manager.PreparePatchContext({{steps, "60"}}, patches, FILTER_PATCH), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(manager.GetError().at(0), RESULT_INTERNAL_ERROR);
    Texts saved{{steps, "60"}};
    Texts restored;
    Texts reasons;
    EXPECT_EQ(manager.FetchRestoreSettingValues(saved, restored, reasons, false), RESULT_INTERNAL_ERROR);
    EXPECT_TRUE(restored.empty());
    EXPECT_EQ(manager.FetchSaveSettingValues(values, FILTER_SAVE), RESULT_SUCCEED);
    EXPECT_TRUE(values.empty());
    std::map<std::string, SettingStatus> all;
    EXPECT_EQ(manager.QueryGroupSettingStatus(all), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_TRUE(all.empty());
    EXPECT_EQ(manager.GetError().size(), std::size(names));
    std::vector<RedfishConfigSettingInfoStru> records;
    EXPECT_EQ(manager.GetAllSettingProperties(records), RESULT_SUCCEED);
    EXPECT_TRUE(records.empty());
    manager.UpdateSettingValue({{steps, SettingValue(std::int64_t(60))}});
    const RedfishConfigSettingManager copy(manager); // NOLINT: copying is what it is about
}

} // namespace
