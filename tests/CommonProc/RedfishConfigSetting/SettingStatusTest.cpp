#include "support/LogCapture.h"
#include "support/ProbeSetting.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Setting = Probe<RedfishConfigTextSetting>;
using States = std::vector<std::pair<bool, std::string>>;

const char* const keys[] = {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"};

/** The states in the record's order: read only, write only, hidden, grayout, immutable, system unique, protected. */
States StatesOf(const SettingStatus& status)
{
    States states;
    for (const PropertyState& state : {status.ReadOnly, status.WriteOnly, status.Hidden, status.GrayOut,
                                       status.Immutable, status.SystemUnique, status.Protected}) {
        states.emplace_back(state.Value, state.Reason);
    }
    return states;
}

PropertyExpression Rule(const SettingValue& mapToValue, const std::string& formula)
{
    PropertyExpression expression;
    expression.MapToValue = mapToValue;
    expression.Formula = formula;
    expression.DisplayText = "((A.CurrentValue==X))";
    expression.Valid = true;
    return expression;
}

SettingValue Truth(bool truth)
{
    return SettingValue(SettingAlternative(truth));
}

const std::pair<bool, std::string> quiet{false, ""};

TEST(SettingStatus, IsAllFalseWithoutReasonsByItself)
{
    EXPECT_EQ(StatesOf(SettingStatus()), States(7, quiet));
    RedfishConfigTextSetting setting(RedfishConfigSettingInfoStru(), {});
    EXPECT_EQ(StatesOf(setting.GetStatus()), States(7, quiet));
}

TEST(SettingStatus, TellsEachFlag)
{
    const struct {
        bool RedfishConfigSettingInfoStru::*flag;
        std::size_t state;
        const char* reason;
    } facts[] = {
        {&RedfishConfigSettingInfoStru::ReadOnly, 0, "the setting is read only."},
        {&RedfishConfigSettingInfoStru::WriteOnly, 1, "the setting is write only."},
        {&RedfishConfigSettingInfoStru::GrayOut, 3, "the setting is grayout."},
        {&RedfishConfigSettingInfoStru::Immutable, 4, "the setting is immutable."},
        {&RedfishConfigSettingInfoStru::IsSystemUniqueProperty, 5, "the setting is system unique."},
        {&RedfishConfigSettingInfoStru::Hidden, 6, "the setting is protected."},
    };
    for (const auto& [flag, state, reason] : facts) {
        for (const bool ignoreProtected : {false, true}) { // nothing is filtered out
            RedfishConfigSettingInfoStru record;
            record.*flag = true;
            Config_Options options;
            options.IgnoreProtected = ignoreProtected;
            RedfishConfigTextSetting setting(record, options);
            States expected(7, quiet);
            expected[state] = {true, reason};
            EXPECT_EQ(StatesOf(setting.GetStatus()), expected);
        }
    }
}

TEST(SettingStatus, TellsAllAtOnce)
{
    RedfishConfigSettingInfoStru record;
    record.ReadOnly = true;
    record.WriteOnly = true;
    record.Hidden = true;
    record.GrayOut = true;
    record.Immutable = true;
    record.IsSystemUniqueProperty = true;
    RedfishConfigTextSetting setting(record, {});
    EXPECT_EQ(StatesOf(setting.GetStatus()), (States{{true, "the setting is read only."},
                                                     {true, "the setting is write only."},
                                                     {false, ""},
                                                     {true, "the setting is grayout."},
                                                     {true, "the setting is immutable."},
                                                     {true, "the setting is system unique."},
                                                     {true, "the setting is protected."}}));
}

TEST(SettingStatus, TellsEachRule)
{
    const struct {
        SettingValue mapToValue;
        const char* formula;
        bool value;
        const char* reason; ///< after "the setting is " and the property's word; null for none
    } facts[] = {
        {Truth(true), "true", true, " due to the following expression: ((A==X))"},
        {Truth(true), "false", false, " if the result of the following expression is true: ((A==X))"},
        {Truth(false), "true", false, nullptr},
        {Truth(false), "false", false, nullptr},
        {SettingAlternative(std::string("true")), "true", true, " due to BMC data error."},
        {Truth(true), "maybe", true, " duo to dependency calculate error."},
    };
    const char* const words[] = {"read only", "write only", "hidden", "grayout", "immutable", "system unique"};
    for (const auto& [mapToValue, formula, value, reason] : facts) {
        RedfishConfigSettingInfoStru record;
        States expected;
        for (std::size_t i = 0; i < 6; ++i) {
            record.expressionMaps[keys[i]] = Rule(mapToValue, formula);
            expected.emplace_back(value, reason == nullptr ? "" : std::string("the setting is ") + words[i] + reason);
        }
        expected.push_back(quiet);
        RedfishConfigTextSetting setting(record, {});
        EXPECT_EQ(StatesOf(setting.GetStatus()), expected) << formula;
    }
}

TEST(SettingStatus, TellsOfTheHiddenFlagWithoutAnsweringItWhereThereIsARule)
{
    RedfishConfigSettingInfoStru record;
    record.Hidden = true;
    record.expressionMaps["Hidden"] = Rule(Truth(true), "false");
    RedfishConfigTextSetting setting(record, {});
    const SettingStatus status = setting.GetStatus();
    EXPECT_FALSE(status.Hidden.Value);
    EXPECT_EQ(status.Hidden.Reason, "the setting is hidden.");
    EXPECT_TRUE(status.Protected.Value);
    EXPECT_EQ(status.Protected.Reason, "the setting is protected.");
}

TEST(SettingStatus, NeverRaises)
{
    RedfishConfigSettingInfoStru record;
    for (const char* key : keys) {
        record.expressionMaps[key] = Rule(SettingValue(), "true");
    }
    Setting setting(record);
    setting.m_ErrMsg = "before";
    States expected(6, {true, std::bad_optional_access().what()});
    expected.push_back(quiet);
    EXPECT_EQ(StatesOf(setting.GetStatus()), expected);
    EXPECT_EQ(setting.GetErrorMsg(), "before");
}

TEST(SettingStatus, GoesOnAfterAPropertyThatRaises)
{
    RedfishConfigSettingInfoStru record;
    record.expressionMaps["WriteOnly"] = Rule(SettingValue(), "true");
    record.GrayOut = true;
    RedfishConfigTextSetting setting(record, {});
    States expected(7, quiet);
    expected[1] = {true, std::bad_optional_access().what()};
    expected[3] = {true, "the setting is grayout."};
    EXPECT_EQ(StatesOf(setting.GetStatus()), expected);
}

TEST(SettingStatus, LeavesTheReasonOfTheLastRefusal)
{
    RedfishConfigSettingInfoStru record;
    record.ReadOnly = true;
    record.Hidden = true;
    Setting setting(record);
    for (const char* before : {"before", ""}) {
        setting.m_ErrMsg = before;
        const SettingStatus status = setting.GetStatus();
        EXPECT_EQ(setting.GetErrorMsg(), before);
        EXPECT_EQ(status.ReadOnly.Reason, "the setting is read only.");
        EXPECT_EQ(status.GrayOut.Reason, ""); // neither what was there before nor another property's words
    }
}

TEST(SettingStatus, AsksInTheOrderOfItsMembers)
{
    RedfishConfigSettingInfoStru record;
    for (const char* key : keys) {
        record.expressionMaps[key] = Rule(Truth(true), "true");
    }
    RedfishConfigTextSetting setting(record, {});
    const LogCapture log;
    setting.GetStatus();
    std::vector<LogLine> expected;
    for (const char* key : keys) {
        expected.emplace_back(4U, "Start calculate formular: true");
        expected.emplace_back(4U, std::string("Calculate ") + key + " formular (true) result is 1");
    }
    EXPECT_EQ(log.Lines(), expected);
}

TEST(SettingStatus, IsTheSameForEveryType)
{
    RedfishConfigSettingInfoStru record;
    record.Immutable = true;
    States expected(7, quiet);
    expected[4] = {true, "the setting is immutable."};
    EXPECT_EQ(StatesOf(RedfishConfigTextSetting(record, {}).GetStatus()), expected);
    EXPECT_EQ(StatesOf(RedfishConfigNumericSetting(record, {}).GetStatus()), expected);
    EXPECT_EQ(StatesOf(RedfishConfigBooleanSetting(record, {}).GetStatus()), expected);
    EXPECT_EQ(StatesOf(RedfishConfigEnumerateSetting(record, {}).GetStatus()), expected);
    EXPECT_EQ(StatesOf(RedfishConfigPasswordSetting(record, {}).GetStatus()), expected);
}

// ---- through the manager

RedfishConfigSettingManager Manager(const RegistryBuilder& registry, SettingValueMap values = {})
{
    std::string text = registry.Text();
    return RedfishConfigSettingManager(text, values, false, Config_Options());
}

TEST(SettingStatusQuery, FollowsTheCurrentValues)
{
    RegistryBuilder registry;
    registry.Attribute("T", "String").Attribute("A", "String", {{"CurrentValue", "Y"}});
    registry.Rule("T", "ReadOnly", true, {{"A", "EQU", "X"}});

    SettingStatus status;
    RedfishConfigSettingManager published = Manager(registry);
    EXPECT_EQ(static_cast<int>(published.QuerySettingStatus("T", status)), RESULT_SUCCEED);
    EXPECT_FALSE(status.ReadOnly.Value);
    EXPECT_EQ(status.ReadOnly.Reason,
              "the setting is read only if the result of the following expression is true: ((A==X))");

    RedfishConfigSettingManager given = Manager(registry, {{"a", SettingAlternative(std::string("X"))}});
    EXPECT_EQ(static_cast<int>(given.QuerySettingStatus("t", status)), RESULT_SUCCEED);
    EXPECT_TRUE(status.ReadOnly.Value);
    EXPECT_EQ(status.ReadOnly.Reason, "the setting is read only due to the following expression: ((A==X))");
}

TEST(SettingStatusQuery, FiltersNothingOut)
{
    RegistryBuilder registry;
    registry.Attribute("Protected", "String", {{"Hidden", true}})
        .Attribute("Secret", "Password", {{"WriteOnly", true}})
        .Attribute("Plain", "Integer");
    RedfishConfigSettingManager manager = Manager(registry);

    std::map<std::string, SettingStatus> group;
    group["gone"].ReadOnly.Value = true;
    const RedfishConfigResult result = manager.QueryGroupSettingStatus(group);
    EXPECT_EQ(static_cast<int>(result), RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_TRUE(manager.GetError().empty());
    ASSERT_EQ(group.size(), 3U);
    EXPECT_TRUE(group.at("Protected").Protected.Value);
    EXPECT_FALSE(group.at("Protected").Hidden.Value);
    EXPECT_TRUE(group.at("Secret").WriteOnly.Value);
    EXPECT_EQ(StatesOf(group.at("Plain")), States(7, quiet));

    SettingStatus single;
    EXPECT_EQ(static_cast<int>(manager.QuerySettingStatus("PROTECTED", single)), RESULT_SUCCEED);
    EXPECT_EQ(StatesOf(single), StatesOf(group.at("Protected")));
}

TEST(SettingStatusQuery, FailsLikeEveryQuery)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String").Attribute("B", "Color");
    RedfishConfigSettingManager manager = Manager(registry);
    SettingStatus status;
    status.GrayOut = {true, "untouched"};

    RedfishConfigResult result = manager.QuerySettingStatus("Nobody", status);
    EXPECT_EQ(static_cast<int>(result), RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(result.ErrorMsg(), "Unable to find the setting Nobody.");

    result = manager.QuerySettingStatus("B", status);
    EXPECT_EQ(static_cast<int>(result), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(status.GrayOut.Reason, "untouched");

    std::string noRegistry = "no registry";
    RedfishConfigSettingManager broken(noRegistry, false, Config_Options());
    std::map<std::string, SettingStatus> group;
    EXPECT_EQ(static_cast<int>(broken.QuerySettingStatus("A", status)), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(static_cast<int>(broken.QueryGroupSettingStatus(group)), RESULT_HTTP_RESPONSE_PARSE_FAILED);
}

} // namespace
