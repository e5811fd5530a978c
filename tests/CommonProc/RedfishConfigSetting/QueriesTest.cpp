#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Setting = Probe<RedfishConfigTextSetting>;
using Lines = std::vector<LogLine>;

SettingValue Number(std::int64_t number)
{
    return SettingValue(SettingAlternative(number));
}

SettingValue Text(const std::string& text)
{
    return SettingValue(SettingAlternative(text));
}

SettingValue Truth(bool truth)
{
    return SettingValue(SettingAlternative(truth));
}

/** A present value that holds nothing, as a failed assignment leaves it, where the standard library can leave one so.
 */
SettingValue Broken()
{
    SettingValue value = Number(0);
    try {
        value->emplace<std::string>(std::string().max_size() + 1, 'x');
    } catch (const std::length_error&) {
    }
    return value;
}

LogLine FilterLine(int action)
{
    return {4, "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(action)};
}

/** What a query comes to. */
struct Answer {
    int Code = -1;
    std::string Message;
    std::string Setting;
    std::string Text = "untouched";
    std::string Reason; ///< GetErrorMsg() afterwards
    Lines Log;
};

struct Query {
    const char* Name;
    RedfishConfigResult (RedfishConfigSetting::*Ask)(std::string&, const filterAction&);
    int Action;
};

std::ostream& operator<<(std::ostream& out, const Query& query)
{
    return out << query.Name;
}

const Query valueQuery{"GetSettingValue", &RedfishConfigSetting::GetSettingValue, FILTER_QUERY_VALUE};
const Query defaultQuery{"GetSettingDefaultValue", &RedfishConfigSetting::GetSettingDefaultValue, FILTER_QUERY_DEFAULT};
const Query descriptionQuery{"GetSettingDescription", &RedfishConfigSetting::GetSettingDescription,
                             FILTER_QUERY_DESCRIPTION};

Answer Ask(const Query& query, Setting& setting, int action)
{
    setting.m_ErrMsg = "before";
    const LogCapture log;
    Answer answer;
    const RedfishConfigResult result = (setting.*query.Ask)(answer.Text, static_cast<filterAction>(action));
    answer.Code = result;
    answer.Message = result.ErrorMsg();
    answer.Setting = result.Setting();
    answer.Reason = setting.GetErrorMsg();
    answer.Log = log.Lines();
    return answer;
}

Answer Ask(const Query& query, const RedfishConfigSettingInfoStru& record, const Config_Options& options = {})
{
    Setting setting(record, options);
    return Ask(query, setting, query.Action);
}

/** A record that answers all three queries. */
RedfishConfigSettingInfoStru Record()
{
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "BootMode";
    record.CurrentValue = Text("current");
    record.DefaultValue = Text("default");
    record.DisplayName = "Boot Mode";
    record.HelpText = "How to boot.";
    return record;
}

Config_Options Hexadecimal()
{
    Config_Options options;
    options.ShowHexValue = true;
    return options;
}

// ---- the opening of all three

class SettingQueryOpening : public testing::TestWithParam<Query> {};

TEST_P(SettingQueryOpening, RefusesAnExcludedSettingWithTheReason)
{
    RedfishConfigSettingInfoStru record = Record();
    record.Hidden = true;
    Setting setting(record);
    const std::string message = "The operation on setting BootMode fails since the setting is protected.";
    for (const int action : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 15, 16, 17, 18}) {
        const Answer answer = Ask(GetParam(), setting, action);
        EXPECT_EQ(answer.Code, RESULT_SHOW_VALUE_FAILED);
        EXPECT_EQ(answer.Message, message);
        EXPECT_EQ(answer.Setting, "");
        EXPECT_EQ(answer.Text, "untouched");
        EXPECT_EQ(answer.Reason, message);
        EXPECT_EQ(answer.Log, (Lines{FilterLine(action), {4, "m_ErrMsg:" + message}}));
    }
}

TEST_P(SettingQueryOpening, RefusesWithoutWordsWhereThereIsNoReason)
{
    Setting setting(Record());
    for (const int action : {13, 19}) {
        const Answer answer = Ask(GetParam(), setting, action);
        EXPECT_EQ(answer.Code, RESULT_SHOW_VALUE_FAILED);
        EXPECT_EQ(answer.Message, "The operation on setting BootMode fails since ");
        EXPECT_EQ(answer.Text, "untouched");
    }
}

TEST_P(SettingQueryOpening, PassesTheReasonOfARuleOn)
{
    RedfishConfigSettingInfoStru record = Record();
    PropertyExpression& rule = record.expressionMaps["Hidden"];
    rule.MapToValue = SettingAlternative(true);
    rule.Formula = "(X==X)";
    rule.DisplayText = "((A.CurrentValue==X))";
    rule.Valid = true;
    Setting setting(record);
    const std::string message =
        "The operation on setting BootMode fails since the setting is hidden due to the following expression: ((A==X))";
    const Answer answer = Ask(GetParam(), setting, FILTER_SAVE);
    EXPECT_EQ(answer.Code, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(answer.Message, message);
    EXPECT_EQ(answer.Log, (Lines{FilterLine(9),
                                 {4, "Start calculate formular: (X==X)"},
                                 {4, "Calculate Hidden formular ((X==X)) result is 1"},
                                 {4, "m_ErrMsg:" + message}}));
}

TEST_P(SettingQueryOpening, AsksForTheActionOfItsCaller)
{
    RedfishConfigSettingInfoStru record = Record();
    record.Hidden = true;
    Config_Options options;
    options.IgnoreProtected = true;
    Setting setting(record, options);
    EXPECT_EQ(Ask(GetParam(), setting, 2).Code, RESULT_SUCCEED);
    EXPECT_EQ(Ask(GetParam(), setting, 3).Code, RESULT_SHOW_VALUE_FAILED);

    record.Hidden = false;
    record.WriteOnly = true;
    Setting writeOnly(record);
    EXPECT_EQ(Ask(GetParam(), writeOnly, 0).Message,
              "The operation on setting BootMode fails since the setting is write only.");
    EXPECT_EQ(Ask(GetParam(), writeOnly, 9).Code, RESULT_SUCCEED);
}

TEST_P(SettingQueryOpening, RefusesAnEmptyNameWithCode8)
{
    RedfishConfigSettingInfoStru record = Record();
    record.AttributeName = "";
    const Answer answer = Ask(GetParam(), record);
    EXPECT_EQ(answer.Code, RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer.Message, "");
    EXPECT_EQ(answer.Setting, "");
    EXPECT_EQ(answer.Text, "untouched");
    EXPECT_EQ(answer.Reason, "");
    EXPECT_EQ(answer.Log, (Lines{FilterLine(GetParam().Action), {1, "Setting  property error."}}));

    record.Hidden = true; // the filter comes first
    EXPECT_EQ(Ask(GetParam(), record).Message, "The operation on setting  fails since the setting is protected.");
}

TEST_P(SettingQueryOpening, AnswersAnAbsentNameWithCode9)
{
    RedfishConfigSettingInfoStru record = Record();
    record.AttributeName = std::nullopt;
    const LogLine caught{4, std::string("Catch exception in RedfishConfigSetting::") + GetParam().Name +
                                "(): " + std::bad_optional_access().what()};
    for (const bool excluded : {false, true}) {
        record.Hidden = excluded;
        const Answer answer = Ask(GetParam(), record);
        EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(answer.Message, "");
        EXPECT_EQ(answer.Text, "untouched");
        EXPECT_EQ(answer.Log, (Lines{FilterLine(GetParam().Action), caught}));

        Setting setting(record); // and the same with logging off
        std::string text = "untouched";
        EXPECT_EQ(static_cast<int>((setting.*GetParam().Ask)(text, static_cast<filterAction>(GetParam().Action))),
                  RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(text, "untouched");
    }
}

TEST_P(SettingQueryOpening, AnswersARuleWithoutAnOutcomeWithCode9)
{
    RedfishConfigSettingInfoStru record = Record();
    record.expressionMaps["Hidden"].Formula = "true";
    record.expressionMaps["Hidden"].Valid = true;
    Setting setting(record);
    const Answer answer = Ask(GetParam(), setting, FILTER_SAVE);
    EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(answer.Text, "untouched");
    EXPECT_EQ(answer.Log, (Lines{FilterLine(9),
                                 {4, std::string("Catch exception in RedfishConfigSetting::") + GetParam().Name +
                                         "(): " + std::bad_optional_access().what()}}));
}

INSTANTIATE_TEST_SUITE_P(Each, SettingQueryOpening, testing::Values(valueQuery, defaultQuery, descriptionQuery),
                         [](const testing::TestParamInfo<Query>& row) { return std::string(row.param.Name); });

// ---- the current value

TEST(GetSettingValue, AnswersTheCurrentValueAsText)
{
    const struct {
        SettingValue value;
        const char* text;
        const char* hexadecimal;
    } facts[] = {
        {Text("Uefi"), "Uefi", "Uefi"},
        {Text("255"), "255", "255"},
        {Text(""), "", ""},
        {Number(255), "255", "0xff"},
        {Number(0), "0", "0x0"},
        {Number(-1), "-1", "0xffffffffffffffff"},
        {Number(INT64_MAX), "9223372036854775807", "0x7fffffffffffffff"},
        {Number(INT64_MIN), "-9223372036854775808", "0x8000000000000000"},
        {Truth(true), "true", "true"},
        {Truth(false), "false", "false"},
    };
    RedfishConfigSettingInfoStru record = Record();
    for (const auto& [value, text, hexadecimal] : facts) {
        record.CurrentValue = value;
        Answer answer = Ask(valueQuery, record);
        EXPECT_EQ(answer.Code, RESULT_SUCCEED);
        EXPECT_EQ(answer.Message, "");
        EXPECT_EQ(answer.Setting, "");
        EXPECT_EQ(answer.Text, text);
        EXPECT_EQ(answer.Reason, "");
        EXPECT_EQ(answer.Log, (Lines{FilterLine(0)}));

        answer = Ask(valueQuery, record, Hexadecimal());
        EXPECT_EQ(answer.Code, RESULT_SUCCEED);
        EXPECT_EQ(answer.Text, hexadecimal);
        EXPECT_EQ(answer.Log, (Lines{FilterLine(0)}));
    }
}

TEST(GetSettingValue, FailsWithCode9WithoutACurrentValue)
{
    RedfishConfigSettingInfoStru record = Record();
    record.CurrentValue = SettingValue();
    const std::string message = "The operation on setting BootMode fails since it has no current value.";
    const Answer answer = Ask(valueQuery, record);
    EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(answer.Message, message);
    EXPECT_EQ(answer.Setting, "");
    EXPECT_EQ(answer.Text, "untouched");
    EXPECT_EQ(answer.Reason, message);
    EXPECT_EQ(answer.Log, (Lines{FilterLine(0), {4, "m_ErrMsg:" + message}}));
}

TEST(GetSettingValue, FailsWithCode9ForABrokenValue)
{
    if (!Broken()->valueless_by_exception()) {
        GTEST_SKIP() << "this standard library never leaves a value without an alternative";
    }
    RedfishConfigSettingInfoStru record = Record();
    record.CurrentValue = Broken();
    for (const Config_Options& options : {Config_Options(), Hexadecimal()}) {
        const Answer answer = Ask(valueQuery, record, options);
        EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(answer.Text, "untouched");
        EXPECT_EQ(answer.Log, (Lines{FilterLine(0),
                                     {4, "Catch exception in RedfishConfigSetting::GetSettingValue(): "
                                         "Unsupported type for conversion to string."}}));
    }
}

TEST(GetSettingValue, NeedsNoOtherProperty)
{
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "A";
    record.CurrentValue = Text("X");
    EXPECT_EQ(Ask(valueQuery, record).Text, "X");
}

// ---- the default value

TEST(GetSettingDefaultValue, AnswersTheDefaultAsText)
{
    const struct {
        SettingValue value;
        const char* text;
        const char* hexadecimal;
    } facts[] = {
        {Text("Uefi"), "Uefi", "Uefi"},
        {Text("255"), "255", "255"},
        {Text(""), "", ""},
        {Number(255), "255", "0xff"},
        {Number(-1), "-1", "0xffffffffffffffff"},
        {Number(0), "0", "0x0"},
        {Truth(true), "true", "true"},
        {Truth(false), "false", "false"},
    };
    RedfishConfigSettingInfoStru record = Record();
    for (const auto& [value, text, hexadecimal] : facts) {
        record.DefaultValue = value;
        Answer answer = Ask(defaultQuery, record);
        EXPECT_EQ(answer.Code, RESULT_SUCCEED);
        EXPECT_EQ(answer.Message, "");
        EXPECT_EQ(answer.Setting, "");
        EXPECT_EQ(answer.Text, text);
        EXPECT_EQ(answer.Log, (Lines{FilterLine(2)}));

        answer = Ask(defaultQuery, record, Hexadecimal());
        EXPECT_EQ(answer.Code, RESULT_SUCCEED);
        EXPECT_EQ(answer.Text, hexadecimal);
    }
}

TEST(GetSettingDefaultValue, FailsWithCode9WithoutADefault)
{
    RedfishConfigSettingInfoStru record = Record();
    record.DefaultValue = SettingValue();
    const std::string message = "The operation on setting BootMode fails since it has no default value.";
    const Answer answer = Ask(defaultQuery, record);
    EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(answer.Message, message);
    EXPECT_EQ(answer.Setting, "");
    EXPECT_EQ(answer.Text, "untouched");
    EXPECT_EQ(answer.Reason, message);
    EXPECT_EQ(answer.Log, (Lines{FilterLine(2), {1, message}}));
}

TEST(GetSettingDefaultValue, FailsWithCode9ForABrokenDefault)
{
    if (!Broken()->valueless_by_exception()) {
        GTEST_SKIP() << "this standard library never leaves a value without an alternative";
    }
    RedfishConfigSettingInfoStru record = Record();
    record.DefaultValue = Broken();
    const Answer answer = Ask(defaultQuery, record);
    EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(answer.Text, "untouched");
    EXPECT_EQ(answer.Log, (Lines{FilterLine(2),
                                 {4, "Catch exception in RedfishConfigSetting::GetSettingDefaultValue(): "
                                     "Unsupported type for conversion to string."}}));
}

// ---- the description

TEST(GetSettingDescription, HasTheTitleTwiceAndTheHelpText)
{
    const Answer answer = Ask(descriptionQuery, Record());
    EXPECT_EQ(answer.Code, RESULT_SUCCEED);
    EXPECT_EQ(answer.Message, "");
    EXPECT_EQ(answer.Setting, "");
    EXPECT_EQ(answer.Text, "Boot Mode\n\nHelp for Boot Mode\n" + std::string(26, '-') + "\nHow to boot.");
    EXPECT_EQ(answer.Log, (Lines{FilterLine(4)}));
}

TEST(GetSettingDescription, TakesAnEmptyDisplayNameAsItIs)
{
    RedfishConfigSettingInfoStru record = Record();
    record.DisplayName = "";
    EXPECT_EQ(Ask(descriptionQuery, record).Text, "\n\nHelp for \n" + std::string(26, '-') + "\nHow to boot.");
}

TEST(GetSettingDescription, TakesTheNameForAMissingDisplayName)
{
    RedfishConfigSettingInfoStru record = Record();
    record.DisplayName = std::nullopt;
    EXPECT_EQ(Ask(descriptionQuery, record).Text,
              "BootMode\n\nHelp for BootMode\n" + std::string(26, '-') + "\nHow to boot.");
}

TEST(GetSettingDescription, HoldsNoOtherProperty)
{
    RedfishConfigSettingInfoStru record = Record();
    const std::string description = Ask(descriptionQuery, record).Text;
    record.Type = "Integer";
    record.WarningText = "A warning.";
    record.MenuPath = "./Menu";
    record.ValueExpression = ".*";
    record.LowerBound = 1;
    record.UpperBound = 2;
    record.ScalarIncrement = 1;
    record.Value = {{"X", "Display X"}};
    record.DefaultValue = SettingValue();
    record.CurrentValue = SettingValue();
    EXPECT_EQ(Ask(descriptionQuery, record).Text, description);
}

TEST(GetSettingDescription, KeepsTheHelpTextAsItIs)
{
    RedfishConfigSettingInfoStru record = Record();
    for (const char* help : {"", "two\nlines\n", " blanks ", "\xc3\xa9"}) {
        record.HelpText = help;
        EXPECT_EQ(Ask(descriptionQuery, record).Text,
                  "Boot Mode\n\nHelp for Boot Mode\n" + std::string(26, '-') + "\n" + help);
    }
}

TEST(GetSettingDescription, FailsWithCode9WithoutAHelpText)
{
    RedfishConfigSettingInfoStru record = Record();
    record.HelpText = std::nullopt;
    const std::string message = "The operation on setting BootMode fails since it has no description.";
    const Answer answer = Ask(descriptionQuery, record);
    EXPECT_EQ(answer.Code, RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(answer.Message, message);
    EXPECT_EQ(answer.Setting, "");
    EXPECT_EQ(answer.Text, "untouched");
    EXPECT_EQ(answer.Reason, message);
    EXPECT_EQ(answer.Log, (Lines{FilterLine(4), {1, message}}));
}

} // namespace
