#include "fuzz/CheckedManager.h"
#include "support/RegistryBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

using namespace RedfishConfig;
using namespace RegistryTest;

// Copies share their settings, and each setting is freed once.

namespace {

using Manager = RedfishConfigSettingManager;

std::string SystemText()
{
    return RegistryBuilder()
        .Attribute("Mode", "String", {{"CurrentValue", "quiet"}, {"MenuPath", "./Sound/Modes/Mode"}})
        .Attribute("Steps", "Integer", {{"CurrentValue", 4}})
        .Attribute("steps", "Integer", {{"CurrentValue", 5}}) // replaces the setting of the same name
        .Attribute("Pace", "Integer")
        .Rule("Pace", "ReadOnly", true, {{"Mode", "EQU", "loud"}})
        .Text();
}

Manager NewManager()
{
    std::string registry = SystemText();
    return Manager(registry, false, {});
}

std::string ValueOf(Manager& manager, const std::string& name)
{
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(manager.GetSettingProperties(name, record), RESULT_SUCCEED) << name;
    return GetOptionalVarAsStringToJSON(record.CurrentValue);
}

SettingValueMap Mode(const char* value)
{
    return {{"Mode", SettingValue(std::string(value))}};
}

std::string Answers(Manager& manager)
{
    std::string record;
    Fuzz::CheckedManager checked(manager, record);
    checked.EverythingOfAll();
    checked.Everything("Mode");
    checked.Everything("Steps");
    checked.Everything("Pace");
    return record;
}

TEST(ManagerCopies, AnswerAlikeInEveryOrderOfDestruction)
{
    auto alone = NewManager();
    const std::string expected = Answers(alone);
    std::array<std::size_t, 4> order{0, 1, 2, 3};
    do {
        std::array<std::optional<Manager>, 4> managers;
        managers[0].emplace(NewManager());
        Answers(*managers[0]);
        managers[1].emplace(*managers[0]);
        managers[2].emplace(*managers[1]);
        managers[3].emplace(NewManager());
        *managers[3] = *managers[2];
        for (const std::size_t ended : order) {
            for (auto& manager : managers) {
                if (manager) {
                    EXPECT_EQ(Answers(*manager), expected);
                }
            }
            managers.at(ended).reset();
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(ManagerCopies, SurviveAssignmentToThemselves)
{
    auto manager = NewManager();
    const std::string expected = Answers(manager);
    Manager& itself = manager;
    manager = itself;
    EXPECT_EQ(Answers(manager), expected);
    auto ungenerated = NewManager();
    Manager& itselfToo = ungenerated;
    ungenerated = itselfToo;
    EXPECT_EQ(Answers(ungenerated), expected);
}

TEST(ManagerCopies, SurviveAssignmentInACircle)
{
    auto first = NewManager();
    auto second = NewManager();
    auto third = NewManager();
    const std::string expected = Answers(first);
    for (int round = 0; round < 10; ++round) {
        second = first;
        third = second;
        first = third;
    }
    for (Manager* manager : {&first, &second, &third}) {
        EXPECT_EQ(Answers(*manager), expected);
    }
}

TEST(ManagerCopies, SeeEachOthersChanges)
{
    auto manager = NewManager();
    ValueOf(manager, "Mode");
    Manager copy(manager);
    manager.UpdateSettingValue(Mode("loud"));
    EXPECT_EQ(ValueOf(copy, "Mode"), "loud");
    copy.UpdateSettingValue(Mode("faint"));
    EXPECT_EQ(ValueOf(manager, "Mode"), "faint");
}

TEST(ManagerCopies, DoNotShareWhatTheyGenerateLater)
{
    auto manager = NewManager();
    Manager copy(manager);
    manager.UpdateSettingValue(Mode("loud")); // there is no setting yet
    ValueOf(manager, "Mode");
    manager.UpdateSettingValue(Mode("loud"));
    EXPECT_EQ(ValueOf(manager, "Mode"), "loud");
    EXPECT_EQ(ValueOf(copy, "Mode"), "quiet");
}

TEST(ManagerCopies, KeepTheirSettingsWhenTheOriginalGeneratesAllAnew)
{
    auto manager = NewManager();
    ValueOf(manager, "Mode"); // a single setting, without menus
    Manager copy(manager);
    manager.UpdateSettingValue(Mode("loud"));

    std::map<std::string, std::vector<std::string>> groups;
    manager.GetGroupList(groups);
    EXPECT_EQ(groups, (std::map<std::string, std::vector<std::string>>{{"Sound", {"Modes"}}}));
    EXPECT_EQ(ValueOf(manager, "Mode"), "quiet") << "a new setting, with the registry's value";
    EXPECT_EQ(ValueOf(copy, "Mode"), "loud") << "the old one";

    manager.UpdateSettingValue(Mode("faint"));
    EXPECT_EQ(ValueOf(copy, "Mode"), "loud") << "shared no longer";
    copy.GetGroupList(groups);
    EXPECT_EQ(groups.size(), 1u);
    EXPECT_EQ(ValueOf(copy, "Mode"), "quiet");
}

TEST(ManagerCopies, KeepWorkingWhenTheOriginalEndsInTheMiddle)
{
    auto manager = std::make_unique<Manager>(NewManager());
    Answers(*manager);
    Manager copy(*manager);
    manager->UpdateSettingValue(Mode("loud"));
    manager.reset();
    SettingStatus status;
    EXPECT_EQ(copy.QuerySettingStatus("Pace", status), RESULT_SUCCEED);
    EXPECT_TRUE(status.ReadOnly.Value);
    copy.UpdateSettingValue(Mode("quiet"));
    EXPECT_EQ(copy.QuerySettingStatus("Pace", status), RESULT_SUCCEED);
    EXPECT_FALSE(status.ReadOnly.Value);
}

TEST(ManagerCopies, TakeOverFailuresThatWaitAndTellThemThemselves)
{
    auto manager = NewManager();
    std::map<std::string, std::string> defaults;
    EXPECT_EQ(manager.QueryGroupSettingDefaultValues(defaults), RESULT_GROUP_PARTIAL_FAILURE);
    Manager copy(manager);
    EXPECT_EQ(manager.GetError().size(), 3u);
    EXPECT_EQ(manager.GetError().size(), 0u);
    EXPECT_EQ(copy.GetError().size(), 3u);
}

TEST(ManagerCopies, TakeOverAnotherSystem)
{
    auto manager = NewManager();
    Answers(manager);
    std::string registry = RegistryBuilder().Attribute("Other", "Boolean", {{"CurrentValue", true}}).Text();
    Manager other(registry, false, {});
    EXPECT_EQ(ValueOf(other, "Other"), "true");
    manager = other;
    EXPECT_EQ(ValueOf(manager, "Other"), "true");
    std::string value = "untouched";
    EXPECT_EQ(manager.QuerySettingValue("Mode", value), RESULT_SETTING_NOT_FOUND);
    std::map<std::string, std::string> values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (std::map<std::string, std::string>{{"Other", "true"}}));
}

} // namespace
