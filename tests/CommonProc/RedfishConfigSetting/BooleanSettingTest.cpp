#include "support/GlobalLocale.h"
#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::Check;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using RegistryTest::PatchText;
using RegistryTest::Probe;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using BooleanProbe = Probe<RedfishConfigBooleanSetting>;

RedfishConfigSettingInfoStru BooleanInfo(const SettingValue& defaultValue = {})
{
    RedfishConfigSettingInfoStru info;
    info.AttributeName = "Turbo";
    info.Type = "Boolean";
    info.DefaultValue = defaultValue;
    return info;
}

std::string ValidValues(BooleanProbe& setting, const filterAction& action = FILTER_QUERY_CHOICES)
{
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, action);
    EXPECT_EQ(result, RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(result.Setting(), "");
    return answer;
}

} // namespace

TEST(BooleanSetting, MarksTheDefaultAmongTheValidValues)
{
    const struct {
        SettingValue defaultValue;
        const char* answer;
    } rows[] = {
        {{}, "true=false"},
        {true, "<true>=false"},
        {false, "<false>=true"},
        {std::string("true"), "<true>=false"},
        {std::string("TRUE"), "<TRUE>=false"},
        {std::string("False"), "<False>=true"},
        {std::string("maybe"), "<maybe>=true=false"},
        {std::string(" true"), "< true>=true=false"},
        {std::string(""), "<>=true=false"},
        {std::int64_t{1}, "<1>=true=false"},
    };
    for (const auto& row : rows) {
        BooleanProbe setting(BooleanInfo(row.defaultValue));
        EXPECT_EQ(ValidValues(setting), row.answer);
    }
}

TEST(BooleanSetting, DoesNotMarkTheCurrentValue)
{
    RedfishConfigSettingInfoStru info = BooleanInfo(false);
    info.CurrentValue = true;
    BooleanProbe setting(info);
    EXPECT_EQ(ValidValues(setting), "<false>=true");

    info.DefaultValue.reset();
    BooleanProbe withoutDefault(info);
    EXPECT_EQ(ValidValues(withoutDefault), "true=false");
}

TEST(BooleanSetting, ShowsValidValuesAlikeInHexadecimalMode)
{
    Config_Options options;
    options.ShowHexValue = true;
    BooleanProbe setting(BooleanInfo(std::int64_t{31}), options);
    EXPECT_EQ(ValidValues(setting), "<31>=true=false");
}

TEST(BooleanSetting, EndsValidValuesWithTheCapitalisedReason)
{
    RedfishConfigSettingInfoStru info = BooleanInfo(true);
    info.GrayOut = true;
    BooleanProbe setting(info);
    EXPECT_EQ(ValidValues(setting), "<true>=false\n\tThe setting is grayout.");
    EXPECT_EQ(setting.m_ErrMsg, "the setting is grayout.");
}

TEST(BooleanSetting, ShowsAHiddenSettingWithItsReason)
{
    RedfishConfigSettingInfoStru info = BooleanInfo(true);
    info.GrayOut = true;
    info.expressionMaps["Hidden"] = {true, "(true)", "(Mode.CurrentValue==A)", true, {0}};
    BooleanProbe setting(info);
    const char* answer = "<true>=false\n\tThe setting is hidden due to the following expression: (Mode==A)";
    EXPECT_EQ(ValidValues(setting), answer);
    EXPECT_EQ(ValidValues(setting, FILTER_QUERY_GROUP_CHOICES), answer);
}

TEST(BooleanSetting, ForgetsAnEarlierReasonBeforeItListsValidValues)
{
    BooleanProbe setting(BooleanInfo());
    setting.m_ErrMsg = "abc";
    EXPECT_EQ(ValidValues(setting), "true=false");
    EXPECT_EQ(setting.m_ErrMsg, "");
}

TEST(BooleanSetting, RefusesValidValuesOfAFilteredSetting)
{
    RedfishConfigSettingInfoStru info = BooleanInfo();
    info.Hidden = true;
    BooleanProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    const std::string message = "The operation on setting Turbo fails since the setting is protected.";
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(result.Setting(), "");
    EXPECT_EQ(setting.GetErrorMsg(), message);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=6"),
                                         LogLine(4, "m_ErrMsg:" + message)));
}

TEST(BooleanSetting, RefusesValidValuesWithoutAReasonWhereNoneIsGiven)
{
    BooleanProbe setting(BooleanInfo());
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_NONE_TAKES_PART);
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), "The operation on setting Turbo fails since ");
    EXPECT_EQ(answer, "before");
}

TEST(BooleanSetting, AnswersAnEmptyNameAsAnUnusableProperty)
{
    RedfishConfigSettingInfoStru info = BooleanInfo();
    info.AttributeName = "";
    BooleanProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    EXPECT_EQ(result, RESULT_PROPERTY_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Setting  property error."));
}

TEST(BooleanSetting, AsksTheFilterBeforeItLooksAtTheName)
{
    RedfishConfigSettingInfoStru info = BooleanInfo();
    info.AttributeName = "";
    info.Hidden = true;
    BooleanProbe setting(info);
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), "The operation on setting  fails since the setting is protected.");
}

TEST(BooleanSetting, AnswersAnAbsentNameAsAMissingProperty)
{
    for (const bool hidden : {false, true}) {
        RedfishConfigSettingInfoStru info = BooleanInfo();
        info.AttributeName.reset();
        info.Hidden = hidden;
        BooleanProbe setting(info);
        std::string answer = "before";
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);

        LogCapture log;
        const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
        EXPECT_EQ(result, RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(answer, "before");
        EXPECT_TRUE(
            log.Has(4, "Catch exception in RedfishConfigBooleanSetting::GetSettingValidValues(): bad optional access"));
        EXPECT_THAT(log.Texts(1), IsEmpty());
    }
}

TEST(BooleanSetting, AcceptsTrueAndFalseInAnyCaseAndRewritesThem)
{
    const struct {
        const char* value;
        const char* rewritten;
    } rows[] = {
        {"true", "true"}, {"True", "true"}, {"TRUE", "true"}, {"tRuE", "true"}, {"false", "false"}, {"FALSE", "false"},
    };
    for (const auto& row : rows) {
        BooleanProbe setting(BooleanInfo());
        std::string value = row.value;
        std::string reason = "untouched";
        const RedfishConfigResult result = Check(setting, value, reason);
        EXPECT_EQ(result, RESULT_SUCCEED) << row.value;
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(value, row.rewritten);
        EXPECT_EQ(reason, "untouched");
    }
}

TEST(BooleanSetting, RejectsEverythingElseAndFoldsItAllTheSame)
{
    const struct {
        const char* value;
        const char* folded;
    } rows[] = {
        {"", ""},
        {" true", " true"},
        {"TRUE ", "true "},
        {"1", "1"},
        {"0", "0"},
        {"YES", "yes"},
        {"Truely", "truely"},
        {"ENABLED", "enabled"},
        {"TRUE\xC9", "true\xC9"},
        {"\"True\"", "\"true\""},
    };
    for (const auto& row : rows) {
        BooleanProbe setting(BooleanInfo(true));
        std::string value = row.value;
        std::string reason = "replaced";
        const RedfishConfigResult result = Check(setting, value, reason);
        EXPECT_EQ(result, RESULT_NEW_VALUE_INVALID) << row.value;
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(result.Setting(), "");
        EXPECT_EQ(value, row.folded);
        EXPECT_EQ(reason, "Acceptable values include: Only true and false.");
    }
}

TEST(BooleanSetting, FoldsByTheGlobalLocale)
{
    const RegistryTest::GlobalLocale latin(RegistryTest::LatinLocale());
    BooleanProbe setting(BooleanInfo());
    std::string value = "TRU\xC9";
    std::string reason;
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(value, "tru\xE9");
}

TEST(BooleanSetting, AcceptsTheTextOfTheDefaultAsItIs)
{
    const struct {
        SettingValue defaultValue;
        const char* value;
        int code;
        const char* after;
    } rows[] = {
        {true, "true", RESULT_SUCCEED, "true"},
        {true, "TRUE", RESULT_SUCCEED, "true"},
        {std::string("TRUE"), "TRUE", RESULT_SUCCEED, "TRUE"},
        {std::string("TRUE"), "True", RESULT_SUCCEED, "true"},
        {std::string("Maybe"), "Maybe", RESULT_SUCCEED, "Maybe"},
        {std::string("Maybe"), "maybe", RESULT_NEW_VALUE_INVALID, "maybe"},
        {std::string("maybe"), "MAYBE", RESULT_NEW_VALUE_INVALID, "maybe"},
        {std::string(""), "", RESULT_SUCCEED, ""},
        {std::int64_t{1}, "1", RESULT_SUCCEED, "1"},
    };
    for (const auto& row : rows) {
        BooleanProbe setting(BooleanInfo(row.defaultValue));
        std::string value = row.value;
        std::string reason;
        EXPECT_EQ(Check(setting, value, reason), row.code) << row.value;
        EXPECT_EQ(value, row.after);
    }
}

TEST(BooleanSetting, ChecksNoPatternAndNeedsNoName)
{
    RedfishConfigSettingInfoStru info = BooleanInfo();
    info.AttributeName.reset();
    info.ValueExpression = "never";
    BooleanProbe setting(info);
    LogCapture log;
    std::string value = "True";
    std::string reason = "untouched";
    EXPECT_EQ(Check(setting, value, reason), RESULT_SUCCEED);
    value = "never";
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(reason, "Acceptable values include: Only true and false.");
    EXPECT_FALSE(log.Has(4, "Entering  RedfishConfigSetting::CheckNewValueIsValid"));
}

TEST(BooleanSetting, LeavesItsRecordAloneWhenItChecks)
{
    RedfishConfigSettingInfoStru info = BooleanInfo(true);
    info.CurrentValue = false;
    BooleanProbe setting(info);
    setting.m_ErrMsg = "before";
    std::string value = "Nonsense";
    std::string reason;
    Check(setting, value, reason);
    EXPECT_EQ(setting.GetSettingProperties().CurrentValue, SettingValue(false));
    EXPECT_EQ(setting.GetSettingProperties().DefaultValue, SettingValue(true));
    EXPECT_EQ(setting.m_ErrMsg, "before");
}

TEST(BooleanSetting, PatchesWithTheBareValue)
{
    BooleanProbe setting(BooleanInfo());
    for (const char* value : {"true", "false", "TRUE", "", "a\"b\\c"}) {
        EXPECT_EQ(PatchText(setting, value), value);
    }
}

TEST(BooleanSetting, CopiesAnswerLikeTheOriginal)
{
    RedfishConfigSettingInfoStru info = BooleanInfo(false);
    info.GrayOut = true;
    const RedfishConfigBooleanSetting original(info, {});
    RedfishConfigBooleanSetting copy(original);
    std::string answer;
    EXPECT_EQ(copy.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "<false>=true\n\tThe setting is grayout.");
}
