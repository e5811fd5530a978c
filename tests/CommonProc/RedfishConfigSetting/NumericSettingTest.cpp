#include "support/GlobalLocale.h"
#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <boost/lexical_cast/bad_lexical_cast.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

using namespace RedfishConfig;
using RegistryTest::Check;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using RegistryTest::PatchText;
using RegistryTest::Probe;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using NumericProbe = Probe<RedfishConfigNumericSetting>;
using Number = std::optional<std::int64_t>;

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

RedfishConfigSettingInfoStru NumericInfo(const Number& lower = {}, const Number& upper = {},
                                         const Number& increment = {}, const SettingValue& defaultValue = {})
{
    RedfishConfigSettingInfoStru info;
    info.AttributeName = "Fan";
    info.Type = "Integer";
    info.LowerBound = lower;
    info.UpperBound = upper;
    info.ScalarIncrement = increment;
    info.DefaultValue = defaultValue;
    return info;
}

SettingValue Integer(std::int64_t number)
{
    return number;
}

SettingValue Text(const char* text)
{
    return std::string(text);
}

Config_Options Hexadecimal()
{
    Config_Options options;
    options.ShowHexValue = true;
    return options;
}

/** What a check answers: its code, and the reason where it left one. */
struct Verdict {
    int code;
    std::string reason;
};

bool operator==(const Verdict& left, const Verdict& right)
{
    return left.code == right.code && left.reason == right.reason;
}

std::ostream& operator<<(std::ostream& out, const Verdict& verdict)
{
    return out << verdict.code << " \"" << verdict.reason << '"';
}

const Verdict accepted = {RESULT_SUCCEED, "untouched"};

Verdict Rejected(const std::string& reason)
{
    return {RESULT_NEW_VALUE_INVALID, reason};
}

Verdict CheckOf(NumericProbe& setting, const std::string& proposed)
{
    std::string value = proposed;
    std::string reason = "untouched";
    const RedfishConfigResult result = Check(setting, value, reason);
    EXPECT_EQ(value, proposed) << "a numeric check never rewrites the value";
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(result.Setting(), "");
    return {result, reason};
}

Verdict CheckOf(const RedfishConfigSettingInfoStru& info, const std::string& proposed)
{
    NumericProbe setting(info);
    return CheckOf(setting, proposed);
}

} // namespace

TEST(NumericSetting, ListsBoundsIncrementAndDefault)
{
    const struct {
        RedfishConfigSettingInfoStru info;
        const char* decimal;
        const char* hexadecimal;
    } rows[] = {
        {NumericInfo(), "Integer ", "Integer "},
        {NumericInfo(1, 10, 1, Integer(5)), "Integer LowerBound=1 UpperBound=10 ScalarIncrement=1 default=5 ",
         "Integer LowerBound=0x1 UpperBound=0xa ScalarIncrement=0x1 default=0x5 "},
        {NumericInfo(0, 255), "Integer LowerBound=0 UpperBound=255 ", "Integer LowerBound=0x0 UpperBound=0xff "},
        {NumericInfo(7), "Integer LowerBound=7 ", "Integer LowerBound=0x7 "},
        {NumericInfo({}, 16), "Integer UpperBound=16 ", "Integer UpperBound=0x10 "},
        {NumericInfo({}, {}, 0), "Integer ScalarIncrement=0 ", "Integer ScalarIncrement=0x0 "},
        {NumericInfo({}, {}, -4), "Integer ScalarIncrement=-4 ", "Integer ScalarIncrement=0xfffffffffffffffc "},
        {NumericInfo({}, {}, {}, Integer(31)), "Integer default=31 ", "Integer default=0x1f "},
        {NumericInfo(3, 3), "Integer LowerBound=3 UpperBound=3 ", "Integer LowerBound=0x3 UpperBound=0x3 "},
        {NumericInfo(smallest, largest), "Integer LowerBound=-9223372036854775808 UpperBound=9223372036854775807 ",
         "Integer LowerBound=0x8000000000000000 UpperBound=0x7fffffffffffffff "},
        // a default of another kind is shown as it is
        {NumericInfo({}, {}, {}, Text("255")), "Integer default=255 ", "Integer default=255 "},
        {NumericInfo({}, {}, {}, true), "Integer default=true ", "Integer default=true "},
    };
    for (const auto& row : rows) {
        NumericProbe decimal(row.info);
        std::string answer = "before";
        const RedfishConfigResult result = decimal.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
        EXPECT_EQ(result, RESULT_SUCCEED);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(answer, row.decimal);

        NumericProbe hexadecimal(row.info, Hexadecimal());
        EXPECT_EQ(hexadecimal.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
        EXPECT_EQ(answer, row.hexadecimal);
    }
}

TEST(NumericSetting, NamesItsItemsAfterTheTypeInAnyCase)
{
    RedfishConfigSettingInfoStru info = NumericInfo(1, 2);
    for (const char* type : {"Integer", "integer", "INTEGER"}) {
        info.Type = type;
        NumericProbe setting(info);
        std::string answer;
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
        EXPECT_EQ(answer, "Integer LowerBound=1 UpperBound=2 ");
    }
    info.Type = "Number";
    NumericProbe setting(info, Hexadecimal());
    std::string answer;
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "Integer MinLength=1 MaxLength=2 ");
}

TEST(NumericSetting, EndsValidValuesWithTheCapitalisedReason)
{
    RedfishConfigSettingInfoStru info = NumericInfo(1, 10, {}, Integer(5));
    info.GrayOut = true;
    NumericProbe setting(info);
    std::string answer;
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "Integer LowerBound=1 UpperBound=10 default=5 \n\tThe setting is grayout.");
    EXPECT_EQ(setting.m_ErrMsg, "the setting is grayout.");
}

TEST(NumericSetting, RefusesValidValuesWithContradictoryBounds)
{
    NumericProbe setting(NumericInfo(10, 5));
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    EXPECT_EQ(result, RESULT_PROPERTY_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Setting Fan bounder is invalid: lower is 10 upper is 5"));
}

TEST(NumericSetting, RefusesValidValuesWithoutAType)
{
    RedfishConfigSettingInfoStru info = NumericInfo(1, 10);
    info.Type.reset();
    NumericProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Not get the current setting's type."));
}

TEST(NumericSetting, RefusesValidValuesOfAFilteredSetting)
{
    RedfishConfigSettingInfoStru info = NumericInfo(10, 5);
    info.Hidden = true;
    NumericProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    const std::string message = "The operation on setting Fan fails since the setting is protected.";
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(setting.GetErrorMsg(), message);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=6"),
                                         LogLine(4, "m_ErrMsg:" + message)));
}

TEST(NumericSetting, AnswersAnEmptyNameAsAnUnusableProperty)
{
    RedfishConfigSettingInfoStru info = NumericInfo();
    info.AttributeName = "";
    NumericProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Setting  property error."));
}

TEST(NumericSetting, AnswersAnAbsentNameAsAMissingProperty)
{
    for (const bool hidden : {false, true}) {
        RedfishConfigSettingInfoStru info = NumericInfo();
        info.AttributeName.reset();
        info.Hidden = hidden;
        NumericProbe setting(info);
        std::string answer = "before";
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);

        LogCapture log;
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(answer, "before");
        EXPECT_TRUE(
            log.Has(4, "Catch exception in RedfishConfigNumericSetting::GetSettingValidValues(): bad optional access"));
        EXPECT_THAT(log.Texts(1), IsEmpty());
    }
}

TEST(NumericSetting, AcceptsDecimalIntegersOf64Bits)
{
    for (const char* value : {"5", "+5", "-5", "0", "-0", "+0", "007", "9223372036854775807", "-9223372036854775808",
                              "+9223372036854775807"}) {
        EXPECT_EQ(CheckOf(NumericInfo(), value), accepted) << value;
    }
}

TEST(NumericSetting, RejectsWhatIsNoDecimalInteger)
{
    for (const char* value : {"",
                              " ",
                              " 5",
                              "5 ",
                              "\t5",
                              "5\n",
                              "0x10",
                              "0X10",
                              "1f",
                              "1.0",
                              "1,000",
                              "1e3",
                              "+",
                              "-",
                              "--5",
                              "+-5",
                              "5-",
                              "five",
                              "true",
                              "9223372036854775808",
                              "-9223372036854775809",
                              "99999999999999999999999999"}) {
        NumericProbe setting(NumericInfo(0, 100));
        LogCapture log;
        EXPECT_EQ(CheckOf(setting, value),
                  Rejected("The value " + std::string(value) + " is invalid.Fan can only be set to an integer."));
        EXPECT_THAT(log.Lines(), ElementsAre(LogLine(1, std::string("Failed to transfer value to int: ") +
                                                            boost::bad_lexical_cast().what())))
            << value;
    }
}

TEST(NumericSetting, RejectsHexadecimalTextInHexadecimalModeToo)
{
    NumericProbe setting(NumericInfo(0, 255, {}, Integer(255)), Hexadecimal());
    EXPECT_EQ(CheckOf(setting, "0xff"), Rejected("The value 0xff is invalid.Fan can only be set to an integer."));
    EXPECT_EQ(CheckOf(setting, "255"), accepted);
}

TEST(NumericSetting, AcceptsTheTextOfTheDefaultUnchecked)
{
    RedfishConfigSettingInfoStru info = NumericInfo(10, 20, 4, Integer(5));
    info.CurrentValue = Integer(12);
    info.ValueExpression = "never";
    NumericProbe setting(info);
    {
        LogCapture log;
        EXPECT_EQ(CheckOf(setting, "5"), accepted);
        EXPECT_THAT(log.Lines(), IsEmpty());
    }
    // another spelling of the same number is a new value like any other
    info.ValueExpression.reset();
    EXPECT_EQ(CheckOf(info, "+5"), Rejected("The value out of scope: LowerBound=10 UpperBound=20."));
    EXPECT_EQ(CheckOf(info, "05"), Rejected("The value out of scope: LowerBound=10 UpperBound=20."));

    EXPECT_EQ(CheckOf(NumericInfo({}, {}, {}, Text("auto")), "auto"), accepted);
    EXPECT_EQ(CheckOf(NumericInfo({}, {}, {}, Text("")), ""), accepted);
    EXPECT_EQ(CheckOf(NumericInfo(10, 5, {}, Integer(7)), "7"), accepted);
}

TEST(NumericSetting, RejectsWhatBreaksThePattern)
{
    RedfishConfigSettingInfoStru info = NumericInfo(1, 10);
    info.ValueExpression = "[0-9]";
    EXPECT_EQ(CheckOf(info, "7"), accepted);
    EXPECT_EQ(CheckOf(info, "10"), Rejected("Expression check failed, pattern=[0-9]"));
    EXPECT_EQ(CheckOf(info, "+7"), Rejected("Expression check failed, pattern=[0-9]"));
    // the pattern is asked before the bounds, and after the syntax
    EXPECT_EQ(CheckOf(info, "99"), Rejected("Expression check failed, pattern=[0-9]"));
    EXPECT_EQ(CheckOf(info, "0"), Rejected("The value out of scope: LowerBound=1 UpperBound=10."));
    info.ValueExpression = "abc";
    EXPECT_EQ(CheckOf(info, "abc"), Rejected("The value abc is invalid.Fan can only be set to an integer."));
    info.WarningText = "Handle with care.";
    EXPECT_EQ(CheckOf(info, "5"), Rejected("Handle with care."));
}

TEST(NumericSetting, ChecksItsBounds)
{
    const struct {
        Number lower;
        Number upper;
        const char* value;
        Verdict verdict;
    } rows[] = {
        {10, {}, "9", Rejected("The value need equal or great than 10.")},
        {10, {}, "10", accepted},
        {10, {}, "9223372036854775807", accepted},
        {{}, 10, "11", Rejected("The value need equal or less than 10.")},
        {{}, 10, "10", accepted},
        {{}, 10, "-9223372036854775808", accepted},
        {1, 10, "0", Rejected("The value out of scope: LowerBound=1 UpperBound=10.")},
        {1, 10, "1", accepted},
        {1, 10, "10", accepted},
        {1, 10, "11", Rejected("The value out of scope: LowerBound=1 UpperBound=10.")},
        {5, 5, "5", accepted},
        {5, 5, "6", Rejected("The value out of scope: LowerBound=5 UpperBound=5.")},
        {-10, -1, "-5", accepted},
        {-10, -1, "0", Rejected("The value out of scope: LowerBound=-10 UpperBound=-1.")},
        {-10, {}, "-11", Rejected("The value need equal or great than -10.")},
        {{}, -10, "-9", Rejected("The value need equal or less than -10.")},
        {smallest, largest, "-9223372036854775808", accepted},
        {smallest, largest, "9223372036854775807", accepted},
        {0, 0, "1", Rejected("The value out of scope: LowerBound=0 UpperBound=0.")},
        {{}, {}, "123456", accepted},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CheckOf(NumericInfo(row.lower, row.upper), row.value), row.verdict) << row.value;
    }
}

TEST(NumericSetting, QuotesBoundsInDecimalInHexadecimalModeToo)
{
    NumericProbe setting(NumericInfo(16, 32), Hexadecimal());
    EXPECT_EQ(CheckOf(setting, "5"), Rejected("The value out of scope: LowerBound=16 UpperBound=32."));
}

TEST(NumericSetting, GroupsNoDigitsWhateverTheGlobalLocale)
{
    const RegistryTest::GlobalLocale grouping(RegistryTest::GroupingLocale());
    EXPECT_EQ(CheckOf(NumericInfo(1000, 5000), "4000"), accepted);
    EXPECT_EQ(CheckOf(NumericInfo(1000, 5000), "9"),
              Rejected("The value out of scope: LowerBound=1000 UpperBound=5000."));
    EXPECT_EQ(CheckOf(NumericInfo(1000, 5000, 2000), "4000"),
              Rejected("scalar increment mismatch. The scalar increment should be: 2000"));
    EXPECT_EQ(CheckOf(NumericInfo({}, {}, {}, Integer(1000)), "1000"), accepted);

    NumericProbe setting(NumericInfo(1000, 5000, 2000, Integer(3000)));
    std::string answer;
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "Integer LowerBound=1000 UpperBound=5000 ScalarIncrement=2000 default=3000 ");
}

TEST(NumericSetting, RejectsGroupedDigitsWhateverTheGlobalLocale)
{
    const RegistryTest::GlobalLocale grouping(RegistryTest::GroupingLocale());
    EXPECT_EQ(CheckOf(NumericInfo(1000, 5000), "4,000"),
              Rejected("The value 4,000 is invalid.Fan can only be set to an integer."));
}

TEST(NumericSetting, AnswersContradictoryBoundsAsAnUnusableProperty)
{
    NumericProbe setting(NumericInfo(10, 5));
    LogCapture log;
    EXPECT_EQ(CheckOf(setting, "7"), (Verdict{RESULT_PROPERTY_INVALID, "untouched"}));
    EXPECT_THAT(log.Texts(1), ElementsAre("data logical error: 10(lower) > 5(upper)."));
}

TEST(NumericSetting, CountsStepsFromTheCurrentValueElseFromTheLowerBound)
{
    const Verdict offByFive = Rejected("scalar increment mismatch. The scalar increment should be: 5");
    const struct {
        Number lower;
        Number increment;
        SettingValue current;
        const char* value;
        Verdict verdict;
    } rows[] = {
        {0, 5, Integer(3), "8", accepted},
        {0, 5, Integer(3), "3", accepted},
        {0, 5, Integer(3), "10", offByFive},
        {0, 5, Integer(3), "5", offByFive},
        {-10, 5, Integer(3), "-2", accepted},
        {-10, 5, Integer(3), "-5", offByFive},
        {{}, 5, Integer(3), "-2", accepted},
        {{}, 5, Integer(-3), "2", accepted},
        {{}, 5, Integer(-3), "0", offByFive},
        {2, 5, {}, "2", accepted},
        {2, 5, {}, "7", accepted},
        {2, 5, {}, "5", offByFive},
        {-3, 5, {}, "2", accepted},
        {-3, 5, {}, "0", offByFive},
        // nothing to count from
        {{}, 5, {}, "7", accepted},
        // no step, or none to speak of
        {0, {}, Integer(3), "10", accepted},
        {0, 0, Integer(3), "10", accepted},
        {0, 1, Integer(3), "10", accepted},
        // the sign of the increment does not matter, but it is quoted
        {0, -4, Integer(3), "11", accepted},
        {0, 4, Integer(3), "11", accepted},
        {-9, -4, Integer(3), "-1", accepted},
        {-9, 4, Integer(3), "-1", accepted},
        {0, -4, Integer(3), "10", Rejected("scalar increment mismatch. The scalar increment should be: -4")},
        {0, 4, Integer(3), "10", Rejected("scalar increment mismatch. The scalar increment should be: 4")},
    };
    for (const auto& row : rows) {
        RedfishConfigSettingInfoStru info = NumericInfo(row.lower, {}, row.increment);
        info.CurrentValue = row.current;
        NumericProbe setting(info);
        LogCapture log;
        EXPECT_EQ(CheckOf(setting, row.value), row.verdict) << row.value;
        if (row.verdict == accepted) {
            EXPECT_THAT(log.Texts(1), IsEmpty());
        } else {
            EXPECT_THAT(log.Texts(1), ElementsAre("Value rejected : numeric scalar increment issue."));
        }
    }
}

TEST(NumericSetting, ChecksTheBoundsBeforeTheStep)
{
    RedfishConfigSettingInfoStru info = NumericInfo(0, 20, 5);
    info.CurrentValue = Integer(3);
    EXPECT_EQ(CheckOf(info, "-2"), Rejected("The value out of scope: LowerBound=0 UpperBound=20."));
    EXPECT_EQ(CheckOf(info, "22"), Rejected("The value out of scope: LowerBound=0 UpperBound=20."));
    EXPECT_EQ(CheckOf(info, "18"), accepted);
}

TEST(NumericSetting, DoesNotCountStepsFromTheUpperBoundOrTheDefault)
{
    EXPECT_EQ(CheckOf(NumericInfo({}, 20, 5, Integer(0)), "7"), accepted);
}

TEST(NumericSetting, RejectsEveryStepFromACurrentValueOfAnotherKind)
{
    for (const SettingValue& current : {Text("3"), SettingValue(true)}) {
        RedfishConfigSettingInfoStru info = NumericInfo(0, {}, 5);
        info.CurrentValue = current;
        NumericProbe setting(info);
        LogCapture log;
        EXPECT_EQ(CheckOf(setting, "10"), Rejected("The value is invalid for setting Fan."));
        EXPECT_THAT(log.Texts(1), ElementsAre("Failed to Check Scalar Increment."));

        info.ScalarIncrement = 0;
        EXPECT_EQ(CheckOf(info, "10"), accepted);
    }
}

TEST(NumericSetting, CountsStepsAtTheEndsOf64Bits)
{
    const struct {
        std::int64_t current;
        std::int64_t increment;
        const char* value;
        int code;
    } rows[] = {
        {-1, 2, "9223372036854775807", RESULT_SUCCEED},
        {-1, 3, "9223372036854775807", RESULT_NEW_VALUE_INVALID},
        {0, largest, "9223372036854775807", RESULT_SUCCEED},
        {0, smallest, "9223372036854775807", RESULT_NEW_VALUE_INVALID},
        {0, smallest, "0", RESULT_SUCCEED},
        {smallest, 4, "0", RESULT_SUCCEED},
        {smallest, 3, "0", RESULT_NEW_VALUE_INVALID},
        {smallest, -1, "0", RESULT_SUCCEED},
        {0, -1, "-9223372036854775808", RESULT_SUCCEED},
        {0, 3, "-9223372036854775808", RESULT_NEW_VALUE_INVALID},
        // distances that 64 signed bits cannot hold
        {smallest, 3, "9223372036854775807", RESULT_SUCCEED},
        {smallest, 2, "9223372036854775807", RESULT_NEW_VALUE_INVALID},
        {largest, 5, "-9223372036854775808", RESULT_SUCCEED},
        {largest, smallest, "-9223372036854775808", RESULT_NEW_VALUE_INVALID},
    };
    for (const auto& row : rows) {
        RedfishConfigSettingInfoStru info = NumericInfo({}, {}, row.increment);
        info.CurrentValue = row.current;
        EXPECT_EQ(CheckOf(info, row.value).code, row.code)
            << row.value << " in steps of " << row.increment << " from " << row.current;
    }
}

TEST(NumericSetting, RaisesWhenARefusalFindsNoName)
{
    RedfishConfigSettingInfoStru info = NumericInfo(0, {}, 5);
    info.AttributeName.reset();
    info.CurrentValue = Integer(3);
    NumericProbe setting(info);
    std::string value = "five";
    std::string reason;
    EXPECT_THROW(Check(setting, value, reason), std::bad_optional_access);

    // refusals that do not name the setting need no name
    value = "10";
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    value = "-2";
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    value = "8";
    EXPECT_EQ(Check(setting, value, reason), RESULT_SUCCEED);
}

TEST(NumericSetting, LogsBothHandlersWhenAFailedStepFindsNoName)
{
    RedfishConfigSettingInfoStru info = NumericInfo(0, {}, 5);
    info.AttributeName.reset();
    info.CurrentValue = Text("3");
    NumericProbe setting(info);
    LogCapture log;
    std::string value = "10";
    std::string reason;
    EXPECT_THROW(Check(setting, value, reason), std::bad_optional_access);
    EXPECT_THAT(log.Texts(1), ElementsAre("Failed to Check Scalar Increment.",
                                          "Failed to transfer value to int with unknown error."));
}

TEST(NumericSetting, RunsThePatternCheckOnceItHasANumber)
{
    NumericProbe setting(NumericInfo(0, 10, 5));
    LogCapture log;
    EXPECT_EQ(CheckOf(setting, "5"), accepted);
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Entering  RedfishConfigSetting::CheckNewValueIsValid"),
                                         LogLine(4, "Exiting  RedfishConfigSetting::CheckNewValueIsValid")));
}

TEST(NumericSetting, LeavesItsRecordAloneWhenItChecks)
{
    RedfishConfigSettingInfoStru info = NumericInfo(0, 10, 5, Integer(5));
    info.CurrentValue = Integer(0);
    NumericProbe setting(info);
    setting.m_ErrMsg = "before";
    for (const char* value : {"10", "7", "99", "x"}) {
        CheckOf(setting, value);
    }
    EXPECT_EQ(setting.GetSettingProperties().CurrentValue, Integer(0));
    EXPECT_EQ(setting.GetSettingProperties().DefaultValue, Integer(5));
    EXPECT_EQ(setting.GetSettingProperties().LowerBound, Number(0));
    EXPECT_EQ(setting.GetSettingProperties().UpperBound, Number(10));
    EXPECT_EQ(setting.m_ErrMsg, "before");
}

TEST(NumericSetting, PatchesWithTheBareValue)
{
    NumericProbe setting(NumericInfo());
    for (const char* value : {"5", "+5", "-5", "007", "", "a\"b"}) {
        EXPECT_EQ(PatchText(setting, value), value);
    }
    NumericProbe hexadecimal(NumericInfo(), Hexadecimal());
    EXPECT_EQ(PatchText(hexadecimal, "255"), "255");
}

TEST(NumericSetting, CopiesAnswerLikeTheOriginal)
{
    const RedfishConfigNumericSetting original(NumericInfo(1, 31), Hexadecimal());
    RedfishConfigNumericSetting copy(original);
    std::string answer;
    EXPECT_EQ(copy.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "Integer LowerBound=0x1 UpperBound=0x1f ");
}
