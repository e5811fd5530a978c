#include "Shortage.h"
#include "fuzz/CheckedManager.h"
#include "support/RegistryBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <string>
#include <vector>

using namespace RedfishConfig;
using namespace RegistryTest;
using HostileTest::Fails;
using HostileTest::Shortage;

// Memory that runs out.

namespace {

/** Names and values too long to be kept without an allocation, and rules that tell when one is lost. */
std::string SystemText()
{
    return RegistryBuilder()
        .Attribute("ModeOfTheWholeSystem", "Enumeration",
                   {{"Value",
                     {RegistryBuilder::Choice("QuietThroughTheNight", "Quiet"),
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
             manager.PreparePatchContext({{steps, "60"}, {"no such setting in the whole system", "1"}}, patches,
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
             Texts saved{{steps, "60"}, {"no such setting in the whole system", "1"}};
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
         [](Manager& manager) {
             manager.UpdateSettingValue({{steps, SettingValue(std::int64_t(80))}});
         },
         false},
        {"GetError", [](Manager& manager) { manager.GetError(); }, false},
        {"copy", [](Manager& manager) { const Manager copy(manager); }, false},
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

/** The lines where two answers part first; empty when they are the same. */
std::string Difference(const std::string& answers, const std::string& expected)
{
    if (answers == expected) {
        return "";
    }
    const auto parted = std::mismatch(answers.begin(), answers.end(), expected.begin(), expected.end());
    const auto at = static_cast<std::size_t>(parted.first - answers.begin());
    const std::size_t line = expected.rfind('\n', at) + 1; // npos + 1 is 0
    return answers.substr(line, answers.find('\n', at) - line) + "\n  instead of\n" +
           expected.substr(line, expected.find('\n', at) - line);
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
            failed = failed || shortage.Felt();
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
            [&](RedfishConfigSettingManager& manager) {
                manager.GetError();
                EXPECT_EQ(Difference(Answers(manager, operation.OnAll), expected), "");
            });
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
            EXPECT_EQ(Difference(Answers(manager, true), expected), "");
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Allocation, Shortages, testing::Values(Fails::Once, Fails::FromThere), [](const auto& tested) {
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
        ASSERT_TRUE(shortage.Felt());
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
    const RedfishConfigSettingManager copy(manager);
}

} // namespace
