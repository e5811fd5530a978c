#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Setting = Probe<RedfishConfigTextSetting>;
using Lines = std::vector<LogLine>;

enum Property { ReadOnly, WriteOnly, Hidden, GrayOut, Immutable, SystemUnique, Protected };

struct PropertyRow {
    const char* Key;
    const char* Word;
    bool RedfishConfigSettingInfoStru::*Flag;
};

// in the order of the enumeration; "Protected" has no rule of its own
const PropertyRow rows[] = {
    {"ReadOnly", "read only", &RedfishConfigSettingInfoStru::ReadOnly},
    {"WriteOnly", "write only", &RedfishConfigSettingInfoStru::WriteOnly},
    {"Hidden", "hidden", nullptr},
    {"GrayOut", "grayout", &RedfishConfigSettingInfoStru::GrayOut},
    {"Immutable", "immutable", &RedfishConfigSettingInfoStru::Immutable},
    {"IsSystemUniqueProperty", "system unique", &RedfishConfigSettingInfoStru::IsSystemUniqueProperty},
    {nullptr, "protected", &RedfishConfigSettingInfoStru::Hidden},
};
const Property allProperties[] = {ReadOnly, WriteOnly, Hidden, GrayOut, Immutable, SystemUnique, Protected};

struct Action {
    int Number;
    bool TakesPart;                     ///< a setting that no property excludes takes part
    std::vector<Property> Excludes;     ///< in the order of asking
    bool IgnoresProtected = false;      ///< "protected" is not asked when the options say so
    bool TellsWhyNotChangeable = false; ///< asks "hidden", and when it is not "grayout", for their words alone
};

const Action actions[] = {
    {-1, false, {}},
    {0, true, {WriteOnly, Protected, Hidden}, true},
    {1, true, {WriteOnly, Protected, Hidden}},
    {2, true, {Protected}, true},
    {3, true, {Protected}},
    {4, true, {Protected}, true},
    {5, true, {Protected}},
    {6, true, {Protected}, true, true},
    {7, true, {Protected}, false, true},
    {8, true, {ReadOnly, Protected, Hidden, GrayOut, Immutable}, true},
    {9, true, {Protected, Hidden, GrayOut, Immutable}, true},
    {10, true, {Protected, Hidden, GrayOut, Immutable}},
    {11, true, {Protected, Hidden, GrayOut, Immutable}},
    {12, true, {Protected, Hidden, GrayOut, Immutable, SystemUnique}},
    {13, false, {}},
    {14, true, {ReadOnly, Protected, Hidden, GrayOut, Immutable}},
    {15, true, {ReadOnly, Protected, Hidden, GrayOut, Immutable}},
    {16, true, {ReadOnly, Protected, Hidden, GrayOut, Immutable, SystemUnique}},
    {17, true, {ReadOnly, Protected, Hidden, GrayOut, Immutable}, true},
    {18, true, {ReadOnly, Protected, Hidden, GrayOut, Immutable}, true},
    {19, false, {}},
    {20, false, {}},
    {1000, false, {}},
};

bool Has(unsigned properties, Property property)
{
    return (properties & (1U << property)) != 0;
}

struct Answer {
    bool Value = false;
    std::string Reason;
    Lines Log;
};

bool operator==(const Answer& left, const Answer& right)
{
    return left.Value == right.Value && left.Reason == right.Reason && left.Log == right.Log;
}

std::ostream& operator<<(std::ostream& out, const Answer& answer)
{
    out << (answer.Value ? "takes part" : "is excluded") << ", reason \"" << answer.Reason << "\", log:";
    for (const auto& [level, text] : answer.Log) {
        out << "\n  " << level << ' ' << text;
    }
    return out;
}

LogLine EnterLine(int action)
{
    return {4, "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(action)};
}

/** What the table says, for a setting whose given properties are true: by their rules, or by their flags. */
class Expected {
public:
    Expected(const Action& action, bool ignoreProtected, unsigned properties, bool byRule)
        : m_Properties(properties), m_ByRule(byRule)
    {
        answer.Log.push_back(EnterLine(action.Number));
        answer.Value = action.TakesPart;
        for (const Property property : action.Excludes) {
            const bool skipped = property == Protected && action.IgnoresProtected && ignoreProtected;
            if (!skipped && IsTrue(property)) {
                answer.Value = false;
                return;
            }
        }
        if (action.TellsWhyNotChangeable && !IsTrue(Hidden)) {
            IsTrue(GrayOut);
        }
    }

    Answer answer;

private:
    bool IsTrue(Property property)
    {
        const bool value = Has(m_Properties, property);
        const std::string is = std::string("the setting is ") + rows[property].Word;
        if (property == Protected || !m_ByRule) {
            if (value) {
                answer.Reason = is + ".";
            }
            return value;
        }
        const std::string formula = value ? "true" : "false";
        answer.Log.emplace_back(4U, "Start calculate formular: " + formula);
        answer.Log.emplace_back(4U, std::string("Calculate ") + rows[property].Key + " formular (" + formula +
                                        ") result is " + (value ? "1" : "0"));
        if (value) {
            answer.Reason = is + " due to the following expression: (A==X)";
        } else if (property == Hidden && Has(m_Properties, Protected)) {
            answer.Reason = is + "."; // tells of the flag without answering it
        } else {
            answer.Reason = is + " if the result of the following expression is true: (A==X)";
        }
        return value;
    }

    unsigned m_Properties;
    bool m_ByRule;
};

RedfishConfigSettingInfoStru Record(unsigned properties, bool byRule)
{
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "T";
    for (const Property property : allProperties) {
        if (property == Protected || !byRule) {
            if (rows[property].Flag != nullptr) {
                record.*rows[property].Flag = Has(properties, property);
            }
            continue;
        }
        PropertyExpression rule;
        rule.MapToValue = SettingAlternative(true);
        rule.Formula = Has(properties, property) ? "true" : "false";
        rule.DisplayText = "(A.CurrentValue==X)";
        rule.Valid = true;
        record.expressionMaps[rows[property].Key] = rule;
    }
    return record;
}

Answer Filter(Setting& setting, int number)
{
    setting.m_ErrMsg = "before";
    const LogCapture log;
    Answer answer;
    answer.Value = setting.filter(static_cast<filterAction>(number));
    answer.Reason = setting.GetErrorMsg();
    answer.Log = log.Lines();
    return answer;
}

/** Every action on a setting with every combination of its properties. */
void CompareAll(bool byRule)
{
    for (const bool ignoreProtected : {false, true}) {
        Config_Options options;
        options.IgnoreProtected = ignoreProtected;
        for (unsigned properties = 0; properties < 128; ++properties) {
            if (!byRule && Has(properties, Hidden)) {
                continue; // no flag makes a setting hidden: that is "protected"
            }
            Setting setting(Record(properties, byRule), options);
            for (const Action& action : actions) {
                EXPECT_EQ(Filter(setting, action.Number), Expected(action, ignoreProtected, properties, byRule).answer)
                    << "action " << action.Number << ", properties " << properties
                    << (ignoreProtected ? ", protected ignored" : "");
            }
        }
    }
}

TEST(SettingFilter, FollowsTheTableForStaticFlags)
{
    CompareAll(false);
}

TEST(SettingFilter, FollowsTheTableForRules)
{
    CompareAll(true);
}

TEST(SettingFilter, AsksInTheOrderOfTheTable)
{
    for (const Action& action : actions) {
        for (std::size_t first = 0; first < action.Excludes.size(); ++first) {
            // this property and those asked later exclude the setting: the reason is this one's
            unsigned properties = 0;
            for (std::size_t i = first; i < action.Excludes.size(); ++i) {
                properties |= 1U << action.Excludes[i];
            }
            Setting setting(Record(properties, true));
            const Answer answer = Filter(setting, action.Number);
            EXPECT_FALSE(answer.Value) << action.Number;
            const Property property = action.Excludes[first];
            EXPECT_EQ(answer.Reason, std::string("the setting is ") + rows[property].Word +
                                         (property == Protected ? "." : " due to the following expression: (A==X)"))
                << action.Number;
        }
    }
}

TEST(SettingFilter, Of13OrAnUnknownActionExcludesEverySettingWithoutAReason)
{
    for (const int action : {13, 19, 20, 255, -1, -13, INT32_MAX, INT32_MIN}) {
        Setting setting((RedfishConfigSettingInfoStru()));
        EXPECT_EQ(Filter(setting, action), (Answer{false, "", {EnterLine(action)}}));
    }
}

TEST(SettingFilter, AdmitsAProtectedSettingWhereTheActionIgnoresProtection)
{
    RedfishConfigSettingInfoStru record;
    record.Hidden = true;
    Config_Options options;
    options.IgnoreProtected = true;
    Setting setting(record, options);
    const std::pair<int, bool> facts[] = {{0, true},   {1, false},  {2, true},   {3, false},  {4, true},
                                          {5, false},  {6, true},   {7, false},  {8, true},   {9, true},
                                          {10, false}, {11, false}, {12, false}, {13, false}, {14, false},
                                          {15, false}, {16, false}, {17, true},  {18, true},  {19, false}};
    for (const auto& [action, admitted] : facts) {
        const Answer answer = Filter(setting, action);
        EXPECT_EQ(answer.Value, admitted) << action;
        if (action != 13 && action != 19) {
            EXPECT_EQ(answer.Reason, admitted ? "" : "the setting is protected.") << action;
        }
    }
}

TEST(SettingFilter, Of6And7ShowsAHiddenSettingWithTheReason)
{
    for (const int action : {6, 7}) {
        Setting both(Record((1U << Hidden) | (1U << GrayOut), true));
        EXPECT_EQ(Filter(both, action), (Answer{true,
                                                "the setting is hidden due to the following expression: (A==X)",
                                                {EnterLine(action),
                                                 {4, "Start calculate formular: true"},
                                                 {4, "Calculate Hidden formular (true) result is 1"}}}));

        Setting gray(Record(1U << GrayOut, false));
        EXPECT_EQ(Filter(gray, action), (Answer{true, "the setting is grayout.", {EnterLine(action)}}));
    }
}

TEST(SettingFilter, Of6And7KeepsWhatIsHiddenUnlessGrayOutHasWordsToo)
{
    for (const int action : {6, 7}) {
        RedfishConfigSettingInfoStru record = Record(0, true);
        record.expressionMaps.erase("GrayOut");
        Setting setting(record);
        EXPECT_EQ(Filter(setting, action).Reason,
                  "the setting is hidden if the result of the following expression is true: (A==X)");
        setting.ChangeRecord([](auto& whole) { whole.GrayOut = true; });
        EXPECT_EQ(Filter(setting, action).Reason, "the setting is grayout.");
    }
}

TEST(SettingFilter, ExcludesBySafeguardToo)
{
    RedfishConfigSettingInfoStru record;
    record.expressionMaps["Hidden"].MapToValue = SettingAlternative(true); // not valid
    Setting invalid(record);
    Answer answer = Filter(invalid, 0);
    EXPECT_FALSE(answer.Value);
    EXPECT_EQ(answer.Reason, "the setting is hidden due to BMC data error.");

    record.expressionMaps["Hidden"].Valid = true; // valid, but its formula is empty
    Setting incalculable(record);
    answer = Filter(incalculable, 0);
    EXPECT_FALSE(answer.Value);
    EXPECT_EQ(answer.Reason, "the setting is hidden duo to dependency calculate error.");
}

TEST(SettingFilter, AdmitsAFlaggedSettingWhileARuleForFalseHolds)
{
    RedfishConfigSettingInfoStru record;
    record.ReadOnly = true;
    PropertyExpression rule;
    rule.MapToValue = SettingAlternative(false);
    rule.Formula = "true";
    rule.DisplayText = "(A.CurrentValue==X)";
    rule.Valid = true;
    record.expressionMaps["ReadOnly"] = rule;
    Setting setting(record);
    Answer answer = Filter(setting, 8);
    EXPECT_TRUE(answer.Value);
    EXPECT_EQ(answer.Reason, "");

    setting.ChangeRecord([](auto& whole) { whole.expressionMaps["ReadOnly"].Formula = "false"; });
    answer = Filter(setting, 8);
    EXPECT_FALSE(answer.Value);
    EXPECT_EQ(answer.Reason, "the setting is read only.");
}

TEST(SettingFilter, TakesTheActionsByTheirNumbers)
{
    const std::pair<filterAction, int> facts[] = {{FILTER_QUERY_VALUE, 0},
                                                  {FILTER_QUERY_GROUP_VALUES, 1},
                                                  {FILTER_QUERY_DEFAULT, 2},
                                                  {FILTER_QUERY_GROUP_DEFAULTS, 3},
                                                  {FILTER_QUERY_DESCRIPTION, 4},
                                                  {FILTER_QUERY_GROUP_DESCRIPTIONS, 5},
                                                  {FILTER_QUERY_CHOICES, 6},
                                                  {FILTER_QUERY_GROUP_CHOICES, 7},
                                                  {FILTER_PATCH, 8},
                                                  {FILTER_SAVE, 9},
                                                  {FILTER_SAVE_GROUP, 10},
                                                  {FILTER_SAVE_FULL, 11},
                                                  {FILTER_SAVE_PORTABLE, 12},
                                                  {FILTER_NONE_TAKES_PART, 13},
                                                  {FILTER_PATCH_GROUP, 14},
                                                  {FILTER_RESTORE_WITH_UNIQUE, 15},
                                                  {FILTER_RESTORE, 16},
                                                  {FILTER_PATCH_FROM_FILE, 17},
                                                  {FILTER_LOAD_DEFAULT, 18}};
    for (const auto& [action, number] : facts) {
        EXPECT_EQ(static_cast<int>(action), number);
    }
}

} // namespace
