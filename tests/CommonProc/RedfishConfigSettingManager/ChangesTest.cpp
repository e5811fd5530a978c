#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Manager = RedfishConfigSettingManager;
using Texts = std::map<std::string, std::string>;

/** Settings of all types, and one for each reason not to take part. */
RegistryBuilder System()
{
    RegistryBuilder registry;
    registry.Attribute(
        "Mode", "Enumeration",
        {{"CurrentValue", "Auto"},
         {"DefaultValue", "Auto"},
         {"Value", {RegistryBuilder::Choice("Auto", "Automatic"), RegistryBuilder::Choice("Manual", "By hand")}}});
    registry.Attribute("Speed", "Integer",
                       {{"CurrentValue", 20}, {"DefaultValue", 16}, {"LowerBound", 0}, {"UpperBound", 100}});
    registry.Attribute("Turbo", "Boolean", {{"CurrentValue", true}, {"DefaultValue", false}});
    registry.Attribute("Tag", "String",
                       {{"CurrentValue", "R12"}, {"DefaultValue", ""}, {"IsSystemUniqueProperty", true}});
    registry.Attribute("Secret", "Password", {{"CurrentValue", "old"}, {"MinLength", 3}});
    registry.Attribute("Serial", "String", {{"CurrentValue", "S1"}, {"DefaultValue", "S0"}, {"ReadOnly", true}});
    registry.Attribute("Factory", "Boolean", {{"CurrentValue", false}, {"DefaultValue", true}, {"Hidden", true}});
    registry.Attribute("Empty", "String");
    registry.Rule("Speed", "GrayOut", true, {{"Mode", "EQU", "Manual"}});
    return registry;
}

Manager ManagerOf(const RegistryBuilder& registry, const Config_Options& options = {})
{
    std::string text = registry.Text();
    return Manager(text, false, options);
}

Manager Broken()
{
    std::string text = "{";
    return Manager(text, false, {});
}

Config_Options Hexadecimal()
{
    Config_Options options;
    options.ShowHexValue = true;
    return options;
}

/** The manager's own lines: those that name one of its change operations, and the lines of levels 1 and 2. */
std::vector<LogLine> OwnLines(const LogCapture& log)
{
    std::vector<LogLine> lines;
    std::copy_if(log.Lines().begin(), log.Lines().end(), std::back_inserter(lines), [](const LogLine& line) {
        const bool isOperation = line.second.find("PreparePatchContext()") != std::string::npos ||
                                 line.second.find("PrepareLoadDefaultValue()") != std::string::npos ||
                                 line.second.find("SettingValues()") != std::string::npos;
        return line.first <= 2 || (line.first == 3 && isOperation) || line.second == "The settingInfoMap is empty.";
    });
    return lines;
}

const std::string exitPatch = "Exit RedfishConfigSettingManager::PreparePatchContext()";

// ---- one setting

TEST(PatchOfOneSetting, GivesTheText)
{
    const std::pair<std::pair<const char*, const char*>, const char*> rows[] = {
        {{"mode", "by HAND"}, "\"Manual\""}, {{"Speed", "7"}, "7"},          {{"TURBO", "False"}, "false"},
        {{"Tag", "R13"}, "\"R13\""},         {{"Secret", "new"}, "\"new\""},
    };
    Manager manager = ManagerOf(System());
    for (const auto& [change, text] : rows) {
        std::string patch = "untouched";
        const RedfishConfigResult result =
            manager.PreparePatchContext(change.first, change.second, patch, FILTER_PATCH);
        EXPECT_EQ(result, RESULT_SUCCEED) << change.first;
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(patch, text);
    }
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(PatchOfOneSetting, LogsItsWay)
{
    Manager manager = ManagerOf(System());
    std::string patch;
    const LogCapture log;
    manager.PreparePatchContext("sPEED", "7", patch, FILTER_PATCH);
    EXPECT_EQ(log.Lines().front(),
              LogLine(3, "Enter RedfishConfigSettingManager::PreparePatchContext() for setting: sPEED"));
    EXPECT_EQ(log.Lines().back(), LogLine(3, exitPatch));
    EXPECT_TRUE(log.Has(4, "Enter RedfishConfigSetting::filter() with filterAction=8"));
}

TEST(PatchOfOneSetting, PassesOnARefusal)
{
    Manager manager = ManagerOf(System());
    std::string patch = "untouched";
    {
        const LogCapture log;
        const RedfishConfigResult result = manager.PreparePatchContext("sERIAL", "S2", patch, FILTER_PATCH);
        EXPECT_EQ(result, RESULT_CHANGE_SETTING_FAILED);
        EXPECT_EQ(result.ErrorMsg(), "The operation on setting Serial fails since the setting is read only.");
        EXPECT_EQ(OwnLines(log).back(), LogLine(1, "prepare setting: sERIAL patch context error."));
        EXPECT_FALSE(log.Has(3, exitPatch));
    }
    const RedfishConfigResult invalid = manager.PreparePatchContext("Speed", "101", patch, FILTER_PATCH);
    EXPECT_EQ(invalid, RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(invalid.ErrorMsg(), "New value 101 is invalid: The value out of scope: LowerBound=0 UpperBound=100.");
    EXPECT_EQ(patch, "untouched");
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(PatchOfOneSetting, TakesTheCallersAction)
{
    Manager manager = ManagerOf(System());
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("Tag", "R13", patch, FILTER_PATCH_GROUP), RESULT_SUCCEED);
    EXPECT_EQ(manager.PreparePatchContext("Tag", "R13", patch, FILTER_RESTORE), RESULT_CHANGE_SETTING_FAILED);
}

TEST(PatchOfOneSetting, FollowsTheRules)
{
    RegistryBuilder registry = System();
    std::string text = registry.Text();
    SettingValueMap values{{"Mode", SettingAlternative(std::string("Manual"))}};
    Manager manager(text, values, false, {});
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("Speed", "7", patch, FILTER_PATCH).ErrorMsg(),
              "The operation on setting Speed fails since the setting is grayout due to the following expression: "
              "((Mode==Manual))");
}

TEST(PatchOfOneSetting, ReturnsAFailedGeneration)
{
    for (const char* name : {"Missing", ""}) {
        Manager manager = ManagerOf(System());
        std::string patch = "untouched";
        const RedfishConfigResult result = manager.PreparePatchContext(name, "x", patch, FILTER_PATCH);
        EXPECT_EQ(result, RESULT_SETTING_NOT_FOUND);
        EXPECT_EQ(result.ErrorMsg(), std::string("Unable to find the setting ") + name + ".");
        EXPECT_EQ(patch, "untouched");
    }
    Manager manager = Broken();
    std::string patch;
    const LogCapture log;
    EXPECT_EQ(manager.PreparePatchContext("Speed", "x", patch, FILTER_PATCH), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(OwnLines(log).back(), LogLine(1, "Parse response and generate setting error."));
}

// ---- many settings

TEST(PatchOfManySettings, GivesTheTextsByTheSettingsNames)
{
    Manager manager = ManagerOf(System());
    const Texts changes{{"MODE", "manual"}, {"Speed", "7"}, {"turbo", "FALSE"}};
    Texts patches;
    const LogCapture log;
    const RedfishConfigResult result = manager.PreparePatchContext(changes, patches, FILTER_PATCH_GROUP);
    EXPECT_EQ(result, RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(patches, (Texts{{"Mode", "\"Manual\""}, {"Speed", "7"}, {"Turbo", "false"}}));
    EXPECT_THAT(OwnLines(log), ElementsAre(LogLine(3, "Enter RedfishConfigSettingManager::PreparePatchContext() with "
                                                      "settingInfoMap.size()=3"),
                                           LogLine(3, exitPatch)));
    EXPECT_EQ(log.Count(4, "Enter RedfishConfigSetting::filter() with filterAction=14"), 3u);
}

TEST(PatchOfManySettings, OfNoneGeneratesNothing)
{
    Manager manager = Broken(); // which nothing finds out
    Texts patches{{"Kept", "1"}};
    const LogCapture log;
    EXPECT_EQ(manager.PreparePatchContext(Texts(), patches, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patches, (Texts{{"Kept", "1"}}));
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(3, "Enter RedfishConfigSettingManager::PreparePatchContext() with "
                                                    "settingInfoMap.size()=0"),
                                         LogLine(4, "The settingInfoMap is empty.")));
}

TEST(PatchOfManySettings, KeepsWhatTheOutputHolds)
{
    Manager manager = ManagerOf(System());
    Texts patches{{"Speed", "first"}, {"Other", "kept"}};
    EXPECT_EQ(manager.PreparePatchContext({{"Speed", "7"}, {"Turbo", "true"}}, patches, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patches, (Texts{{"Speed", "first"}, {"Other", "kept"}, {"Turbo", "true"}}));
}

TEST(PatchOfManySettings, TakesTheFirstOfTwoSpellings)
{
    Manager manager = ManagerOf(System());
    Texts patches;
    EXPECT_EQ(manager.PreparePatchContext({{"SPEED", "1"}, {"speed", "2"}}, patches, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patches, (Texts{{"Speed", "1"}}));
}

TEST(PatchOfManySettings, CollectsFailuresAndGoesOn)
{
    Manager manager = ManagerOf(System());
    Texts patches;
    const LogCapture log(3);
    const RedfishConfigResult result = manager.PreparePatchContext(
        {{"Missing", "x"}, {"Serial", "S2"}, {"Speed", "7"}, {"tURBO", "Maybe"}}, patches, FILTER_PATCH);
    EXPECT_EQ(result, RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(result.ErrorMsg(), ResultMessages().at(RESULT_GROUP_PARTIAL_FAILURE));
    EXPECT_EQ(result.Setting(), "");
    EXPECT_EQ(patches, (Texts{{"Speed", "7"}}));

    const std::vector<RedfishConfigResult> errors = manager.GetError();
    ASSERT_EQ(errors.size(), 3u);
    EXPECT_EQ(errors[0], RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(errors[0].ErrorMsg(), "Unable to find the setting Missing.");
    EXPECT_EQ(errors[0].Setting(), "Missing");
    EXPECT_EQ(errors[1], RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(errors[1].ErrorMsg(), "The operation on setting Serial fails since the setting is read only.");
    EXPECT_EQ(errors[1].Setting(), "Serial");
    EXPECT_EQ(errors[2], RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(errors[2].ErrorMsg(), "New value Maybe is invalid: Acceptable values include: Only true and false.");
    EXPECT_EQ(errors[2].Setting(), "tURBO");

    const std::string unknown = "Unable to find the setting Missing.";
    EXPECT_THAT(log.Texts(1),
                ElementsAre("Not find the setting: Missing from schema.", "Failed in creating setting: Missing",
                            unknown, "Generate setting error.", unknown, "Prepare setting: Serial patch context error.",
                            "New value Maybe is invalid: Acceptable values include: Only true and false.",
                            "Prepare setting: tURBO patch context error."));
    EXPECT_EQ(log.Lines().back(), LogLine(3, exitPatch));
}

TEST(PatchOfManySettings, WordsOtherFailuresOfGenerationInItsOwnWay)
{
    RegistryBuilder registry = System();
    registry.Attribute("Odd", "Nonsense").Rule("Tag", "Hidden", true, {{"Nowhere", "EQU", 1}});
    Manager manager = ManagerOf(registry);
    Texts patches;
    const LogCapture log(1);
    EXPECT_EQ(manager.PreparePatchContext({{"Odd", "x"}, {"Tag", "x"}}, patches, FILTER_PATCH),
              RESULT_GROUP_PARTIAL_FAILURE);
    const std::vector<RedfishConfigResult> errors = manager.GetError();
    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[0], RESULT_PROPERTY_INVALID);
    EXPECT_EQ(errors[0].ErrorMsg(), "Failed to parse response and generate setting");
    EXPECT_EQ(errors[0].Setting(), "Odd");
    EXPECT_EQ(errors[1], RESULT_INTERNAL_ERROR);
    EXPECT_EQ(errors[1].ErrorMsg(), "Failed to parse response and generate setting");
    EXPECT_EQ(errors[1].Setting(), "Tag");
    EXPECT_TRUE(log.Has(1, "Failed to parse response and generate setting for Odd"));
    EXPECT_TRUE(log.Has(1, "Failed to parse response and generate setting for Tag"));

    Manager broken = Broken();
    EXPECT_EQ(broken.PreparePatchContext({{"A", "x"}}, patches, FILTER_PATCH), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(broken.GetError().at(0), RESULT_HTTP_RESPONSE_PARSE_FAILED);
}

TEST(PatchOfManySettings, FindsNoSettingForAnEmptyName)
{
    Manager manager = ManagerOf(System());
    Texts patches;
    EXPECT_EQ(manager.PreparePatchContext({{"", "x"}}, patches, FILTER_PATCH), RESULT_GROUP_PARTIAL_FAILURE);
    const std::vector<RedfishConfigResult> errors = manager.GetError();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0], RESULT_INTERNAL_ERROR);
    EXPECT_EQ(errors[0].ErrorMsg(), "Cannot find the setting in the generated collection");
}

// ---- default

TEST(LoadDefault, GivesTheDefaultAndItsPatch)
{
    Manager manager = ManagerOf(System());
    std::string text;
    std::string patch;
    const LogCapture log;
    EXPECT_EQ(manager.PrepareLoadDefaultValue("sPEED", text, patch), RESULT_SUCCEED);
    EXPECT_EQ(text, "16");
    EXPECT_EQ(patch, "16");
    EXPECT_THAT(OwnLines(log), ElementsAre(LogLine(3, "Enter RedfishConfigSettingManager::PrepareLoadDefaultValue()"),
                                           LogLine(3, "Exit RedfishConfigSettingManager::PrepareLoadDefaultValue()")));
    EXPECT_LT(std::find(log.Lines().begin(), log.Lines().end(),
                        LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=2")),
              std::find(log.Lines().begin(), log.Lines().end(),
                        LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=8")));
}

TEST(LoadDefault, WorksInHexadecimalToo)
{
    Manager manager = ManagerOf(System(), Hexadecimal());
    std::string text;
    std::string patch;
    EXPECT_EQ(manager.PrepareLoadDefaultValue("Speed", text, patch), RESULT_SUCCEED);
    EXPECT_EQ(text, "0x10");
    EXPECT_EQ(patch, "16");
}

TEST(LoadDefault, FailsWithoutADefault)
{
    Manager manager = ManagerOf(System());
    std::string text = "untouched";
    std::string patch = "untouched";
    const LogCapture log;
    const RedfishConfigResult result = manager.PrepareLoadDefaultValue("eMPTY", text, patch);
    EXPECT_EQ(result, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(result.ErrorMsg(), "The operation on setting Empty fails since it has no default value.");
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(patch, "untouched");
    EXPECT_EQ(OwnLines(log).back(), LogLine(1, "Get Setting: eMPTY default value error."));
}

TEST(LoadDefault, LeavesALockedSettingAlone)
{
    Manager manager = ManagerOf(System());
    std::string text;
    std::string patch = "untouched";
    const LogCapture log;
    const RedfishConfigResult result = manager.PrepareLoadDefaultValue("Serial", text, patch);
    EXPECT_EQ(result, RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(result.ErrorMsg(), "The operation on setting Serial fails since the setting is read only.");
    EXPECT_EQ(text, "S0"); // told before the change is refused
    EXPECT_EQ(patch, "untouched");
    EXPECT_EQ(OwnLines(log).back(), LogLine(1, "prepare setting: Serial patch context error."));
}

TEST(LoadDefault, HeedsWhetherProtectedSettingsAreIncluded)
{
    std::string text;
    std::string patch;
    Manager manager = ManagerOf(System());
    EXPECT_EQ(manager.PrepareLoadDefaultValue("Factory", text, patch), RESULT_SHOW_VALUE_FAILED);
    Config_Options including;
    including.IgnoreProtected = true;
    Manager other = ManagerOf(System(), including);
    EXPECT_EQ(other.PrepareLoadDefaultValue("Factory", text, patch), RESULT_SUCCEED);
    EXPECT_EQ(patch, "true");
}

TEST(LoadDefault, ReturnsAFailedGeneration)
{
    std::string text = "untouched";
    std::string patch = "untouched";
    for (const char* name : {"Missing", ""}) {
        Manager manager = ManagerOf(System());
        EXPECT_EQ(manager.PrepareLoadDefaultValue(name, text, patch), RESULT_SETTING_NOT_FOUND);
    }
    Manager broken = Broken();
    EXPECT_EQ(broken.PrepareLoadDefaultValue("Speed", text, patch), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(patch, "untouched");
}

// ---- save

TEST(SaveOfAllSettings, GivesWhatTakesPartAndHasAValue)
{
    Manager manager = ManagerOf(System(), Hexadecimal());
    Texts saved{{"Speed", "replaced"}, {"Other", "kept"}};
    const LogCapture log;
    const RedfishConfigResult result = manager.FetchSaveSettingValues(saved, FILTER_SAVE_PORTABLE);
    EXPECT_EQ(result, RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(saved, (Texts{{"Mode", "Auto"},
                            {"Speed", "20"}, // never hexadecimal
                            {"Turbo", "true"},
                            {"Secret", "old"},
                            {"Serial", "S1"},
                            {"Other", "kept"}}));
    EXPECT_THAT(manager.GetError(), IsEmpty());
    EXPECT_THAT(OwnLines(log), ElementsAre(LogLine(3, "Enter RedfishConfigSettingManager::FetchSaveSettingValues()"),
                                           LogLine(2, "setting: Empty should not be saved"),
                                           LogLine(2, "setting: Factory should not be saved"),
                                           LogLine(2, "setting: Tag should not be saved"),
                                           LogLine(3, "Exit RedfishConfigSettingManager::FetchSaveSettingValues()")));
}

TEST(SaveOfAllSettings, TakesTheCallersAction)
{
    Manager manager = ManagerOf(System());
    Texts saved;
    manager.FetchSaveSettingValues(saved, FILTER_SAVE_FULL);
    EXPECT_EQ(saved.count("Tag"), 1u);
    saved.clear();
    EXPECT_EQ(manager.FetchSaveSettingValues(saved, FILTER_NONE_TAKES_PART), RESULT_SUCCEED);
    EXPECT_THAT(saved, IsEmpty());
}

TEST(SaveOfAllSettings, TakesExistingSettingsForAllOfThem)
{
    Manager manager = ManagerOf(System());
    std::string value;
    manager.QuerySettingValue("Turbo", value);
    Texts saved;
    EXPECT_EQ(manager.FetchSaveSettingValues(saved, FILTER_SAVE_FULL), RESULT_SUCCEED);
    EXPECT_EQ(saved, (Texts{{"Turbo", "true"}}));
}

TEST(SaveOfAllSettings, ReturnsAFailedGeneration)
{
    Manager manager = Broken();
    Texts saved{{"Kept", "1"}};
    const LogCapture log(3);
    EXPECT_EQ(manager.FetchSaveSettingValues(saved, FILTER_SAVE), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(saved, (Texts{{"Kept", "1"}}));
    EXPECT_EQ(log.Lines().back(), LogLine(1, "Parse response and generate setting error."));
}

// ---- restore

TEST(RestoreOfManySettings, PreparesWhatIsAccepted)
{
    Manager manager = ManagerOf(System());
    Texts saved{{"MODE", "BY HAND"}, {"Speed", "7"}};
    Texts values{{"Speed", "replaced"}, {"Other", "kept"}};
    Texts errors{{"Speed", "kept"}};
    const LogCapture log;
    const RedfishConfigResult result = manager.FetchRestoreSettingValues(saved, values, errors, false);
    EXPECT_EQ(result, RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(values, (Texts{{"Mode", "\"Manual\""}, {"Speed", "7"}, {"Other", "kept"}}));
    EXPECT_EQ(errors, (Texts{{"Speed", "kept"}}));
    EXPECT_EQ(saved, (Texts{{"MODE", "BY HAND"}, {"Speed", "7"}}));
    EXPECT_THAT(OwnLines(log),
                ElementsAre(LogLine(3, "Enter RedfishConfigSettingManager::FetchRestoreSettingValues()"),
                            LogLine(3, "Exit RedfishConfigSettingManager::FetchRestoreSettingValues()")));
    EXPECT_FALSE(log.Has(4, "Enter RedfishConfigSetting::filter() with filterAction=8"));
    EXPECT_TRUE(log.Has(4, "Enter RedfishConfigSetting::filter() with filterAction=16"));
}

TEST(RestoreOfManySettings, AdmitsSystemUniqueOnesOnlyWhenTold)
{
    for (const bool withUnique : {false, true}) {
        Manager manager = ManagerOf(System());
        Texts saved{{"Tag", "R13"}};
        Texts values;
        Texts errors;
        const LogCapture log(3);
        EXPECT_EQ(manager.FetchRestoreSettingValues(saved, values, errors, withUnique), RESULT_SUCCEED);
        EXPECT_EQ(values, withUnique ? Texts({{"Tag", "\"R13\""}}) : Texts());
        EXPECT_EQ(errors, withUnique ? Texts()
                                     : Texts({{"Tag", "The operation on setting Tag fails since the setting is system "
                                                      "unique."}}));
        EXPECT_EQ(log.Count(2, "setting: Tagcan not be restored"), withUnique ? 0u : 1u);
        EXPECT_THAT(manager.GetError(), IsEmpty());
    }
}

TEST(RestoreOfManySettings, ReportsAnUnknownName)
{
    Manager manager = ManagerOf(System());
    Texts saved{{"Missing", "x"}, {"Speed", "7"}};
    Texts values;
    Texts errors;
    const LogCapture log(3);
    const RedfishConfigResult result = manager.FetchRestoreSettingValues(saved, values, errors, false);
    EXPECT_EQ(result, RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(result.ErrorMsg(), "Unable to find the setting Missing.");
    EXPECT_EQ(values, (Texts{{"Speed", "7"}}));
    EXPECT_EQ(errors, (Texts{{"Missing", "Could not find setting Missing on this system"}}));
    EXPECT_THAT(log.Texts(1), Contains("Parse response and generate setting error."));
    EXPECT_EQ(log.Lines().back(), LogLine(3, "Exit RedfishConfigSettingManager::FetchRestoreSettingValues()"));
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(RestoreOfManySettings, TakesAnEmptyNameForAnUnknownOne)
{
    Manager manager = ManagerOf(System());
    Texts saved{{"", "x"}};
    Texts values;
    Texts errors;
    EXPECT_EQ(manager.FetchRestoreSettingValues(saved, values, errors, false), RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(errors, (Texts{{"", "Could not find setting  on this system"}}));
}

TEST(RestoreOfManySettings, ReportsAnInvalidValue)
{
    Manager manager = ManagerOf(System());
    Texts saved{{"speed", "101"}};
    Texts values;
    Texts errors;
    const LogCapture log(3);
    const RedfishConfigResult result = manager.FetchRestoreSettingValues(saved, values, errors, false);
    const std::string reason = "The value out of scope: LowerBound=0 UpperBound=100.";
    EXPECT_EQ(result, RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "New value 101 is invalid: " + reason);
    EXPECT_THAT(values, IsEmpty());
    EXPECT_EQ(errors, (Texts{{"speed", reason}}));
    EXPECT_EQ(log.Count(2, "value: 101is invalid"), 1u);
}

TEST(RestoreOfManySettings, KeepsTheFirstFailureAndGoesOn)
{
    Manager manager = ManagerOf(System());
    Texts saved{{"AMissing", "x"}, {"Serial", "S2"}, {"Speed", "101"}, {"Turbo", "false"}};
    Texts values;
    Texts errors;
    EXPECT_EQ(manager.FetchRestoreSettingValues(saved, values, errors, true), RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(values, (Texts{{"Turbo", "false"}}));
    EXPECT_EQ(errors.size(), 3u);

    saved = {{"Serial", "S2"}, {"Speed", "101"}, {"ZMissing", "x"}};
    EXPECT_EQ(manager.FetchRestoreSettingValues(saved, values, errors, true), RESULT_NEW_VALUE_INVALID);
}

TEST(RestoreOfManySettings, ReportsAGenerationThatFailedOtherwiseOnlyInTheResult)
{
    RegistryBuilder registry;
    registry.Attribute("Odd", "Nonsense");
    Manager manager = ManagerOf(registry);
    Texts saved{{"Odd", "x"}};
    Texts values;
    Texts errors;
    const LogCapture log(1);
    EXPECT_EQ(manager.FetchRestoreSettingValues(saved, values, errors, true), RESULT_PROPERTY_INVALID);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(log.Texts(1).back(), "Parse response and generate setting error.");
    EXPECT_THAT(log.Texts(1), Not(Contains("value: xis invalid")));
}

TEST(RestoreOfManySettings, OfNoneSucceeds)
{
    Manager manager = Broken();
    Texts none;
    Texts values;
    Texts errors;
    EXPECT_EQ(manager.FetchRestoreSettingValues(none, values, errors, true), RESULT_SUCCEED);
}

// ---- all together

TEST(Changes, AnswerTheSameWithTheLogOff)
{
    const auto outcome = [](bool logged) {
        const LogCapture log(logged ? 4 : 0);
        Manager manager = ManagerOf(System());
        Texts outputs;
        std::string text;
        std::string patch;
        Texts saved;
        Texts errors;
        Texts restore{{"Tag", "x"}, {"Speed", "999"}, {"Nope", "1"}};
        std::string all =
            std::to_string(manager.PreparePatchContext("Serial", "x", text, FILTER_PATCH)) +
            std::to_string(manager.PreparePatchContext({{"Mode", "x"}, {"Turbo", "true"}}, outputs, FILTER_PATCH)) +
            std::to_string(manager.PrepareLoadDefaultValue("Turbo", text, patch)) + text + patch +
            std::to_string(manager.FetchSaveSettingValues(saved, FILTER_SAVE)) +
            std::to_string(manager.FetchRestoreSettingValues(restore, outputs, errors, false));
        for (const Texts* map : {&outputs, &saved, &errors}) {
            for (const auto& [name, value] : *map) {
                all += name + "=" + value + ";";
            }
        }
        for (const RedfishConfigResult& error : manager.GetError()) {
            all += error.ErrorMsg() + "|";
        }
        return all;
    };
    EXPECT_EQ(outcome(true), outcome(false));
}

TEST(Changes, OfWhatWasSavedAreAccepted)
{
    Manager manager = ManagerOf(System());
    Texts saved;
    ASSERT_EQ(manager.FetchSaveSettingValues(saved, FILTER_SAVE_PORTABLE), RESULT_SUCCEED);
    saved.erase("Serial"); // read only: saved, but not restored
    Texts values;
    Texts errors;
    EXPECT_EQ(manager.FetchRestoreSettingValues(saved, values, errors, false), RESULT_SUCCEED);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(values.size(), saved.size());
}

} // namespace
