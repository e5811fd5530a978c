#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Lines = std::vector<LogLine>;
using Texts = std::map<std::string, std::string>;

RedfishConfigSettingInfoStru Record(const std::string& type)
{
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "Fan";
    record.Type = type;
    return record;
}

RedfishConfigSettingInfoStru Choices()
{
    RedfishConfigSettingInfoStru record = Record("Enumeration");
    record.Value = {{"Enabled", "On"}, {"Disabled", "Off"}};
    record.CurrentValue = std::string("Enabled");
    return record;
}

std::unique_ptr<RedfishConfigSetting> Make(const RedfishConfigSettingInfoStru& record,
                                           const Config_Options& options = {})
{
    if (record.Type == "Integer") {
        return std::make_unique<RedfishConfigNumericSetting>(record, options);
    }
    if (record.Type == "Boolean") {
        return std::make_unique<RedfishConfigBooleanSetting>(record, options);
    }
    if (record.Type == "Enumeration") {
        return std::make_unique<RedfishConfigEnumerateSetting>(record, options);
    }
    if (record.Type == "Password") {
        return std::make_unique<RedfishConfigPasswordSetting>(record, options);
    }
    return std::make_unique<RedfishConfigTextSetting>(record, options);
}

LogLine FilterLine(int action)
{
    return {4, "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(action)};
}

LogLine Refused(const std::string& reason)
{
    return {4, "m_ErrMsg:The operation on setting Fan fails since " + reason};
}

/** Both forms of the preparation, which differ in nothing but where the text goes. */
class PatchPreparation : public testing::TestWithParam<bool> {
protected:
    RedfishConfigResult Prepare(RedfishConfigSetting& setting, const std::string& value,
                                filterAction action = FILTER_PATCH)
    {
        if (GetParam()) {
            return setting.PreparePatchContext(value, m_Map, action);
        }
        return setting.PreparePatchContext(value, m_Text, action);
    }

    /** What came out; "untouched" for nothing. */
    std::string Prepared() const
    {
        if (!GetParam()) {
            return m_Text;
        }
        return m_Map.empty() ? "untouched" : m_Map.at("Fan");
    }

    std::string m_Text = "untouched";
    Texts m_Map;
};

INSTANTIATE_TEST_SUITE_P(Forms, PatchPreparation, testing::Bool(),
                         [](const auto& form) { return form.param ? "Map" : "Text"; });

TEST_P(PatchPreparation, GivesTheTextOfEachType)
{
    const struct {
        RedfishConfigSettingInfoStru record;
        const char* value;
        const char* text;
    } rows[] = {
        {Record("Integer"), "5", "5"},          {Record("Integer"), "+5", "+5"},
        {Record("Boolean"), "TRUE", "true"},    {Record("String"), "a \"b\" \\ c", "\"a \"b\" \\ c\""},
        {Record("String"), "", "\"\""},         {Record("Password"), "secret", "\"secret\""},
        {Choices(), "disable", "\"Disabled\""}, {Choices(), "on", "\"Enabled\""},
    };
    for (const auto& row : rows) {
        m_Text = "untouched";
        m_Map.clear();
        const auto setting = Make(row.record);
        const RedfishConfigResult result = Prepare(*setting, row.value);
        EXPECT_EQ(result, RESULT_SUCCEED) << row.value;
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(result.Setting(), "");
        EXPECT_EQ(Prepared(), row.text);
        EXPECT_EQ(setting->GetErrorMsg(), "");
    }
}

TEST_P(PatchPreparation, RefusesAnExcludedSettingWithCode18)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.ReadOnly = true;
    const auto setting = Make(record);
    const LogCapture log;
    const RedfishConfigResult result = Prepare(*setting, "x");
    const std::string message = "The operation on setting Fan fails since the setting is read only.";
    EXPECT_EQ(result, RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(result.Setting(), "");
    EXPECT_EQ(setting->GetErrorMsg(), message);
    EXPECT_EQ(Prepared(), "untouched");
    EXPECT_EQ(log.Lines(), (Lines{FilterLine(8), Refused("the setting is read only.")}));
}

TEST_P(PatchPreparation, AsksTheFilterForTheActionGiven)
{
    RedfishConfigSettingInfoStru unique = Record("String");
    unique.IsSystemUniqueProperty = true;
    const auto setting = Make(unique);
    EXPECT_EQ(Prepare(*setting, "x", FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(Prepare(*setting, "x", FILTER_RESTORE), RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(Prepare(*setting, "x", FILTER_NONE_TAKES_PART), RESULT_CHANGE_SETTING_FAILED);
    EXPECT_EQ(setting->GetErrorMsg(), "The operation on setting Fan fails since ");
}

TEST_P(PatchPreparation, DoesNotAskTheStaticGate)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.ReadOnly = true; // the gate would refuse it, action 0 does not ask for it
    const auto setting = Make(record);
    EXPECT_EQ(Prepare(*setting, "x", FILTER_QUERY_VALUE), RESULT_SUCCEED);
}

TEST_P(PatchPreparation, RefusesAnInvalidValueWithTheTypesCode)
{
    RedfishConfigSettingInfoStru contradictory = Record("Integer");
    contradictory.LowerBound = 5;
    contradictory.UpperBound = 1;
    RedfishConfigSettingInfoStru unusable = Record("String");
    unusable.MinLength = -1;
    RedfishConfigSettingInfoStru unusablePassword = Record("Password");
    unusablePassword.MinLength = -1;
    const struct {
        RedfishConfigSettingInfoStru record;
        const char* value;
        int code;
        const char* message;
    } rows[] = {
        {Record("Boolean"), "Maybe", 10, "New value Maybe is invalid: Acceptable values include: Only true and false."},
        {Record("Integer"), "x", 10,
         "New value x is invalid: The value x is invalid.Fan can only be set to an integer."},
        {Choices(), "Sometimes", 10,
         "New value Sometimes is invalid: value Sometimes is not a valid value for setting Fan.\n"
         "Acceptable values include: <Disabled> <Enabled>."},
        {contradictory, "3", 8, "New value 3 is invalid: "},
        {unusable, "x", 8, "New value x is invalid: BMC data error."},
        {unusablePassword, "x", 8, "New value x is invalid: "},
    };
    for (const auto& row : rows) {
        const auto setting = Make(row.record);
        const LogCapture log(1);
        const RedfishConfigResult result = Prepare(*setting, row.value);
        EXPECT_EQ(result, row.code) << row.value;
        EXPECT_EQ(result.ErrorMsg(), row.message);
        EXPECT_EQ(result.Setting(), "");
        EXPECT_EQ(Prepared(), "untouched");
        EXPECT_EQ(setting->GetErrorMsg(), "");
        ASSERT_FALSE(log.Lines().empty());
        EXPECT_EQ(log.Lines().back(), LogLine(1, row.message));
    }
}

TEST_P(PatchPreparation, QuotesTheValueAsPassedThoughTheCheckRewritesIt)
{
    RedfishConfigSettingInfoStru record = Choices();
    record.ValueExpression = "never"; // asked after the value is rewritten to the choice's name
    const auto setting = Make(record);
    EXPECT_EQ(Prepare(*setting, "ENABLE").ErrorMsg(),
              "New value ENABLE is invalid: Expression check failed, pattern=never");
    const auto boolean = Make(Record("Boolean"));
    EXPECT_EQ(Prepare(*boolean, "NO").ErrorMsg(),
              "New value NO is invalid: Acceptable values include: Only true and false.");
}

TEST_P(PatchPreparation, AnswersWhatIsRaisedWithCode9)
{
    RedfishConfigSettingInfoStru record = Record("Integer");
    record.AttributeName.reset();
    record.ReadOnly = true;
    const auto refused = Make(record);
    record.ReadOnly = false;
    const auto invalid = Make(record);
    for (const auto& [setting, value] : {std::make_pair(refused.get(), "5"), std::make_pair(invalid.get(), "x")}) {
        const LogCapture log;
        const RedfishConfigResult result = Prepare(*setting, value);
        EXPECT_EQ(result, RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(log.Lines().back(),
                  LogLine(4, "Catch exception in RedfishConfigSetting::PreparePatchContext(): bad optional access"));
        EXPECT_EQ(Prepared(), "untouched");
    }
}

TEST(PatchPreparationTextForm, NeedsNoName)
{
    RedfishConfigSettingInfoStru record = Record("Integer");
    record.AttributeName.reset();
    std::string text;
    EXPECT_EQ(Make(record)->PreparePatchContext("5", text, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(text, "5");
    Texts map;
    EXPECT_EQ(Make(record)->PreparePatchContext("5", map, FILTER_PATCH), RESULT_PROPERTY_NOT_EXIST);
    EXPECT_TRUE(map.empty());
}

TEST(PatchPreparationMapForm, KeepsTheFirstValueOfASetting)
{
    const auto setting = Make(Record("Integer"));
    Texts map{{"Other", "1"}};
    EXPECT_EQ(setting->PreparePatchContext("5", map, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(setting->PreparePatchContext("6", map, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(map, (Texts{{"Fan", "5"}, {"Other", "1"}}));
}

// ---- save

TEST(Save, GivesTheCurrentValueAsPlainText)
{
    Config_Options hexadecimal;
    hexadecimal.ShowHexValue = true;
    const std::pair<SettingAlternative, const char*> rows[] = {
        {std::int64_t{-255}, "-255"}, {true, "true"}, {std::string("a\"b"), "a\"b"}, {std::string(), ""}};
    for (const auto& [value, text] : rows) {
        RedfishConfigSettingInfoStru record = Record("Integer");
        record.CurrentValue = value;
        const auto setting = Make(record, hexadecimal);
        std::string saved = "untouched";
        const LogCapture log;
        const RedfishConfigResult result = setting->FetchSaveSettingValues(saved, FILTER_SAVE_FULL);
        EXPECT_EQ(result, RESULT_SUCCEED);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(saved, text);
        EXPECT_EQ(log.Lines(), (Lines{FilterLine(11)}));
    }
}

TEST(Save, RefusesAnExcludedSettingWithCode19)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.CurrentValue = std::string("x");
    record.IsSystemUniqueProperty = true;
    const auto setting = Make(record);
    std::string saved = "untouched";
    {
        const LogCapture log;
        const RedfishConfigResult result = setting->FetchSaveSettingValues(saved, FILTER_SAVE_PORTABLE);
        EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
        EXPECT_EQ(result.ErrorMsg(), "The operation on setting Fan fails since the setting is system unique.");
        EXPECT_EQ(setting->GetErrorMsg(), result.ErrorMsg());
        EXPECT_EQ(log.Lines(), (Lines{FilterLine(12), Refused("the setting is system unique.")}));
    }
    EXPECT_EQ(saved, "untouched");
    EXPECT_EQ(setting->FetchSaveSettingValues(saved, FILTER_SAVE_FULL), RESULT_SUCCEED);
    EXPECT_EQ(saved, "x");
}

TEST(Save, AnswersCode8WithoutACurrentValue)
{
    const auto setting = Make(Record("String"));
    std::string saved = "untouched";
    const LogCapture log;
    const RedfishConfigResult result = setting->FetchSaveSettingValues(saved, FILTER_SAVE);
    EXPECT_EQ(result, RESULT_PROPERTY_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(setting->GetErrorMsg(), "");
    EXPECT_EQ(saved, "untouched");
    EXPECT_EQ(log.Lines(), (Lines{FilterLine(9), {4, "The current value of setting Fan is invalid."}}));
}

TEST(Save, ShowsNothingForAnAbsentName)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.AttributeName.reset();
    const auto setting = Make(record);
    std::string saved;
    const LogCapture log;
    EXPECT_EQ(setting->FetchSaveSettingValues(saved, FILTER_SAVE), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(log.Lines().back(), LogLine(4, "The current value of setting  is invalid."));
}

TEST(Save, AnswersWhatIsRaisedWithCode9)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.AttributeName.reset();
    record.Hidden = true;
    const auto setting = Make(record);
    std::string saved = "untouched";
    const LogCapture log;
    EXPECT_EQ(setting->FetchSaveSettingValues(saved, FILTER_SAVE), RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(saved, "untouched");
    EXPECT_EQ(log.Lines().back(),
              LogLine(4, "Catch exception in RedfishConfigSetting::FetchSaveSettingValues(): bad optional access"));
}

// ---- restore

TEST(Restore, AcceptsAValueAndChangesNothing)
{
    const auto setting = Make(Choices());
    for (const bool withUnique : {false, true}) {
        Texts errors{{"Other", "kept"}};
        const LogCapture log(4);
        const std::string value = "ENABLE";
        const RedfishConfigResult result = setting->FetchRestoreSettingValues("key", value, errors, withUnique);
        EXPECT_EQ(result, RESULT_SUCCEED);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(errors, (Texts{{"Other", "kept"}}));
        EXPECT_EQ(log.Lines().front(), FilterLine(withUnique ? 15 : 16));
        EXPECT_EQ(setting->GetSettingProperties().CurrentValue, Choices().CurrentValue);
    }
}

TEST(Restore, AdmitsASystemUniqueSettingOnlyWhenTold)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.IsSystemUniqueProperty = true;
    const auto setting = Make(record);
    Texts errors{{"key", "before"}};
    const std::string message = "The operation on setting Fan fails since the setting is system unique.";
    {
        const LogCapture log;
        const RedfishConfigResult result = setting->FetchRestoreSettingValues("key", "x", errors, false);
        EXPECT_EQ(result, RESULT_SETTING_FILTERED);
        EXPECT_EQ(result.ErrorMsg(), message);
        EXPECT_EQ(setting->GetErrorMsg(), message);
        EXPECT_EQ(log.Lines(), (Lines{FilterLine(16), Refused("the setting is system unique.")}));
    }
    EXPECT_EQ(errors, (Texts{{"key", message}}));
    errors.clear();
    EXPECT_EQ(setting->FetchRestoreSettingValues("key", "x", errors, true), RESULT_SUCCEED);
    EXPECT_TRUE(errors.empty());
}

TEST(Restore, KeepsOnlyTheReasonOfAnInvalidValue)
{
    const auto setting = Make(Record("Boolean"));
    Texts errors;
    const LogCapture log;
    const RedfishConfigResult result = setting->FetchRestoreSettingValues("key", "Maybe", errors, false);
    const std::string reason = "Acceptable values include: Only true and false.";
    EXPECT_EQ(result, RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "New value Maybe is invalid: " + reason);
    EXPECT_EQ(result.Setting(), "");
    EXPECT_EQ(errors, (Texts{{"key", reason}}));
    EXPECT_EQ(log.Lines(), (Lines{FilterLine(16), {1, "New value Maybe is invalid: " + reason}}));
}

TEST(Restore, KeepsAnEmptyReasonToo)
{
    RedfishConfigSettingInfoStru record = Record("Integer");
    record.LowerBound = 5;
    record.UpperBound = 1;
    Texts errors;
    EXPECT_EQ(Make(record)->FetchRestoreSettingValues("key", "3", errors, true), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(errors, (Texts{{"key", ""}}));
}

TEST(Restore, AnswersWhatIsRaisedWithCode9)
{
    RedfishConfigSettingInfoStru record = Record("String");
    record.AttributeName.reset();
    record.ReadOnly = true;
    const auto setting = Make(record);
    Texts errors;
    const LogCapture log;
    EXPECT_EQ(setting->FetchRestoreSettingValues("key", "x", errors, true), RESULT_PROPERTY_NOT_EXIST);
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(log.Lines().back(),
              LogLine(4, "Catch exception in RedfishConfigSetting::FetchRestoreSettingValues(): bad optional access"));
}

TEST(Restore, ExcludesWhatBothActionsExclude)
{
    const std::pair<bool RedfishConfigSettingInfoStru::*, const char*> flags[] = {
        {&RedfishConfigSettingInfoStru::ReadOnly, "the setting is read only."},
        {&RedfishConfigSettingInfoStru::Hidden, "the setting is protected."},
        {&RedfishConfigSettingInfoStru::GrayOut, "the setting is grayout."},
        {&RedfishConfigSettingInfoStru::Immutable, "the setting is immutable."},
    };
    Config_Options ignoring;
    ignoring.IgnoreProtected = true; // means nothing to a restore
    for (const auto& [flag, reason] : flags) {
        for (const bool withUnique : {false, true}) {
            RedfishConfigSettingInfoStru record = Record("String");
            record.*flag = true;
            Texts errors;
            EXPECT_EQ(Make(record, ignoring)->FetchRestoreSettingValues("key", "x", errors, withUnique),
                      RESULT_SETTING_FILTERED);
            EXPECT_EQ(errors.at("key"), std::string("The operation on setting Fan fails since ") + reason);
        }
    }
}

} // namespace
