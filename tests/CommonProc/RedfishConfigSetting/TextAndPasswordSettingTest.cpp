#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
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

using TextProbe = Probe<RedfishConfigTextSetting>;
using PasswordProbe = Probe<RedfishConfigPasswordSetting>;
using Length = std::optional<std::int64_t>;
using Pattern = std::optional<std::string>;

RedfishConfigSettingInfoStru TextInfo(const Length& shortest = {}, const Length& longest = {},
                                      const Pattern& pattern = {})
{
    RedfishConfigSettingInfoStru info;
    info.AttributeName = "Tag";
    info.Type = "String";
    info.MinLength = shortest;
    info.MaxLength = longest;
    info.ValueExpression = pattern;
    return info;
}

RedfishConfigSettingInfoStru PasswordInfo(const Length& shortest = {}, const Length& longest = {},
                                          const Pattern& pattern = {})
{
    RedfishConfigSettingInfoStru info = TextInfo(shortest, longest, pattern);
    info.Type = "Password";
    return info;
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

template <class AnyProbe>
Verdict CheckOf(const RedfishConfigSettingInfoStru& info, const std::string& proposed)
{
    AnyProbe setting(info);
    std::string value = proposed;
    std::string reason = "untouched";
    const RedfishConfigResult result = Check(setting, value, reason);
    EXPECT_EQ(value, proposed) << "a text is never rewritten";
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(result.Setting(), "");
    return {result, reason};
}

template <class AnyProbe>
std::string ValidValues(AnyProbe& setting)
{
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    EXPECT_EQ(result, RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(result.Setting(), "");
    return answer;
}

/** The facts that hold for both types alike, with what names each. */
template <class AnyProbe>
struct Facts;

template <>
struct Facts<TextProbe> {
    static constexpr const char* type = "String";
    static constexpr const char* className = "RedfishConfigTextSetting";
};

template <>
struct Facts<PasswordProbe> {
    static constexpr const char* type = "Password";
    static constexpr const char* className = "RedfishConfigPasswordSetting";
};

template <class AnyProbe>
class TextAndPasswordSetting : public testing::Test {
protected:
    static RedfishConfigSettingInfoStru Info(const Length& shortest = {}, const Length& longest = {},
                                             const Pattern& pattern = {})
    {
        RedfishConfigSettingInfoStru info = TextInfo(shortest, longest, pattern);
        info.Type = Facts<AnyProbe>::type;
        return info;
    }
};

using BothTypes = testing::Types<TextProbe, PasswordProbe>;
TYPED_TEST_SUITE(TextAndPasswordSetting, BothTypes);

} // namespace

TYPED_TEST(TextAndPasswordSetting, ListsLengthsAndPattern)
{
    const struct {
        RedfishConfigSettingInfoStru info;
        const char* answer;
    } rows[] = {
        {this->Info(), ""},
        {this->Info(8, 16, "[a-z]*"), "MinLength=8 MaxLength=16 Pattern=[a-z]* "},
        {this->Info(0), "MinLength=0 "},
        {this->Info({}, 255), "MaxLength=255 "},
        {this->Info(3, 3), "MinLength=3 MaxLength=3 "},
        {this->Info(-2, -1), "MinLength=-2 MaxLength=-1 "},
        {this->Info({}, {}, "^$"), "Pattern=^$ "},
        {this->Info({}, {}, ""), "Pattern= "},
        {this->Info({}, {}, "("), "Pattern=( "},
    };
    const std::string opening = std::string(Facts<TypeParam>::type) + " ";
    for (const auto& row : rows) {
        TypeParam setting(row.info);
        EXPECT_EQ(ValidValues(setting), opening + row.answer);

        Config_Options options;
        options.ShowHexValue = true;
        TypeParam hexadecimal(row.info, options);
        EXPECT_EQ(ValidValues(hexadecimal), opening + row.answer) << "lengths stay decimal";
    }
}

TYPED_TEST(TextAndPasswordSetting, ShowsNeitherDefaultNorChoices)
{
    RedfishConfigSettingInfoStru info = this->Info(1, 2);
    info.DefaultValue = std::string("ab");
    info.CurrentValue = std::string("cd");
    info.Value = {{"ab", "Ab"}};
    info.WarningText = "Careful.";
    info.LowerBound = 5;
    TypeParam setting(info);
    EXPECT_EQ(ValidValues(setting), std::string(Facts<TypeParam>::type) + " MinLength=1 MaxLength=2 ");
}

TYPED_TEST(TextAndPasswordSetting, EndsValidValuesWithTheCapitalisedReason)
{
    RedfishConfigSettingInfoStru info = this->Info(1);
    info.GrayOut = true;
    TypeParam setting(info);
    EXPECT_EQ(ValidValues(setting), std::string(Facts<TypeParam>::type) + " MinLength=1 \n\tThe setting is grayout.");
    EXPECT_EQ(setting.m_ErrMsg, "the setting is grayout.");
}

TYPED_TEST(TextAndPasswordSetting, RefusesValidValuesWithContradictoryLengths)
{
    TypeParam setting(this->Info(10, 5));
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    EXPECT_EQ(result, RESULT_PROPERTY_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Setting Tag bounder is invalid: lower is 10 upper is 5"));
}

TYPED_TEST(TextAndPasswordSetting, RefusesValidValuesWithoutAType)
{
    RedfishConfigSettingInfoStru info = this->Info(1, 2);
    info.Type.reset();
    TypeParam setting(info);
    LogCapture log;
    std::string answer = "before";
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Not get the current setting's type."));
}

TYPED_TEST(TextAndPasswordSetting, AnswersAnEmptyNameAsAnUnusableProperty)
{
    RedfishConfigSettingInfoStru info = this->Info();
    info.AttributeName = "";
    TypeParam setting(info);
    LogCapture log;
    std::string answer = "before";
    EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Setting  property error."));
}

TYPED_TEST(TextAndPasswordSetting, AnswersAnAbsentNameAsAMissingProperty)
{
    for (const bool hidden : {false, true}) {
        RedfishConfigSettingInfoStru info = this->Info();
        info.AttributeName.reset();
        info.Hidden = hidden;
        TypeParam setting(info);
        std::string answer = "before";
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);

        LogCapture log;
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(answer, "before");
        EXPECT_TRUE(log.Has(4, "Catch exception in " + std::string(Facts<TypeParam>::className) +
                                   "::GetSettingValidValues(): bad optional access"));
        EXPECT_THAT(log.Texts(1), IsEmpty());
    }
}

TEST(TextSetting, RefusesValidValuesOfAFilteredSetting)
{
    RedfishConfigSettingInfoStru info = TextInfo(10, 5);
    info.Hidden = true;
    TextProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    const std::string message = "The operation on setting Tag fails since the setting is protected.";
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(setting.GetErrorMsg(), message);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=6"),
                                         LogLine(4, "m_ErrMsg:" + message)));
}

TEST(PasswordSetting, RefusesValidValuesOfAFilteredSettingInWordsOfItsOwn)
{
    RedfishConfigSettingInfoStru info = PasswordInfo(10, 5);
    info.Hidden = true;
    PasswordProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    const std::string message = "Tag : the setting is protected.";
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(setting.GetErrorMsg(), message);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=6"),
                                         LogLine(4, "m_ErrMsg:" + message)));
}

TEST(PasswordSetting, KeepsTheCommonWordsInItsOtherQueries)
{
    RedfishConfigSettingInfoStru info = PasswordInfo();
    info.Hidden = true;
    PasswordProbe setting(info);
    std::string answer = "before";
    EXPECT_EQ(setting.GetSettingDefaultValue(answer, FILTER_QUERY_DEFAULT).ErrorMsg(),
              "The operation on setting Tag fails since the setting is protected.");
}

TYPED_TEST(TextAndPasswordSetting, ChecksTheLengthInBytes)
{
    const struct {
        Length shortest;
        Length longest;
        const char* value;
        Verdict verdict;
    } rows[] = {
        {8, {}, "12345", Rejected("The value length need equal or great than 8.")},
        {8, {}, "12345678", accepted},
        {8, {}, "123456789012345678901234567890", accepted},
        {{}, 8, "123456789", Rejected("The value length need equal or less than 8.")},
        {{}, 8, "12345678", accepted},
        {{}, 8, "", accepted},
        {8, 16, "12345678901234567890", Rejected("The value length out of scope: MinLength=8 MaxLength=16.")},
        {8, 16, "1234567", Rejected("The value length out of scope: MinLength=8 MaxLength=16.")},
        {8, 16, "12345678", accepted},
        {8, 16, "1234567890123456", accepted},
        {0, 0, "", accepted},
        {0, 0, "x", Rejected("The value length out of scope: MinLength=0 MaxLength=0.")},
        {{}, 0, "x", Rejected("The value length need equal or less than 0.")},
        {0, {}, "", accepted},
        {1, {}, "", Rejected("The value length need equal or great than 1.")},
        {{}, {}, "", accepted},
        {{}, {}, "anything at all", accepted},
        // two characters of two bytes each
        {{}, 3, "\xC3\xA9\xC3\xA9", Rejected("The value length need equal or less than 3.")},
        {4, 4, "\xC3\xA9\xC3\xA9", accepted},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CheckOf<TypeParam>(this->Info(row.shortest, row.longest), row.value), row.verdict) << row.value;
    }
}

TYPED_TEST(TextAndPasswordSetting, CountsBytesPastAZeroByte)
{
    const std::string value("ab\0cd", 5);
    EXPECT_EQ(CheckOf<TypeParam>(this->Info({}, 4), value), Rejected("The value length need equal or less than 4."));
    EXPECT_EQ(CheckOf<TypeParam>(this->Info(5, 5), value), accepted);
}

TYPED_TEST(TextAndPasswordSetting, AcceptsTheTextOfTheDefaultUnchecked)
{
    const struct {
        SettingValue defaultValue;
        const char* value;
    } rows[] = {
        {std::string("12345"), "12345"},
        {std::string(""), ""},
        {std::int64_t{-5}, "-5"},
        {true, "true"},
    };
    for (const auto& row : rows) {
        RedfishConfigSettingInfoStru info = this->Info(8, 16, "never");
        info.DefaultValue = row.defaultValue;
        LogCapture log;
        EXPECT_EQ(CheckOf<TypeParam>(info, row.value), accepted) << row.value;
        EXPECT_THAT(log.Lines(), IsEmpty());
    }
    RedfishConfigSettingInfoStru info = this->Info(10, 5);
    info.DefaultValue = std::string("Same");
    EXPECT_EQ(CheckOf<TypeParam>(info, "Same"), accepted);
    EXPECT_EQ(CheckOf<TypeParam>(info, "same").code, RESULT_PROPERTY_INVALID) << "another case is another value";
}

TYPED_TEST(TextAndPasswordSetting, ReportsTheLengthBeforeThePattern)
{
    EXPECT_EQ(CheckOf<TypeParam>(this->Info({}, 3, "[a-z]*"), "1234"),
              Rejected("The value length need equal or less than 3."));
    LogCapture log;
    CheckOf<TypeParam>(this->Info({}, 3, "[a-z]*"), "1234");
    EXPECT_THAT(log.Lines(), IsEmpty()) << "the pattern is not asked";
}

TYPED_TEST(TextAndPasswordSetting, AcceptsWhatFitsThePattern)
{
    LogCapture log;
    EXPECT_EQ(CheckOf<TypeParam>(this->Info(1, 5, "[a-z]+"), "abc"), accepted);
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Entering  RedfishConfigSetting::CheckNewValueIsValid"),
                                         LogLine(4, "Exiting  RedfishConfigSetting::CheckNewValueIsValid")));
    EXPECT_EQ(CheckOf<TypeParam>(this->Info({}, {}, ".*"), ""), accepted);
}

TYPED_TEST(TextAndPasswordSetting, AnswersUnusableLengthsAsAnUnusableProperty)
{
    const Verdict unusable = {RESULT_PROPERTY_INVALID,
                              std::string(Facts<TypeParam>::type) == "String" ? "BMC data error." : "untouched"};
    const struct {
        Length shortest;
        Length longest;
    } rows[] = {
        {10, 5}, {-1, 5}, {-1, {}}, {{}, -1}, {-5, -1}, {0, -1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CheckOf<TypeParam>(this->Info(row.shortest, row.longest), "abc"), unusable);
        EXPECT_EQ(CheckOf<TypeParam>(this->Info(row.shortest, row.longest, "never"), "abc"), unusable);
    }
    LogCapture log;
    CheckOf<TypeParam>(this->Info(10, 5), "abc");
    EXPECT_THAT(log.Texts(1), ElementsAre("data logical error: 10(lower) > 5(upper)."));
}

TEST(TextSetting, RejectsWhatBreaksThePattern)
{
    EXPECT_EQ(CheckOf<TextProbe>(TextInfo({}, {}, "[a-z]+"), "abc1"),
              Rejected("Expression check failed, pattern=[a-z]+"));
    EXPECT_EQ(CheckOf<TextProbe>(TextInfo({}, {}, "[a-z]+"), ""), Rejected("Expression check failed, pattern=[a-z]+"));
    EXPECT_EQ(CheckOf<TextProbe>(TextInfo({}, {}, ""), "x"), Rejected("Expression check failed, pattern="));

    RedfishConfigSettingInfoStru info = TextInfo({}, {}, "[a-z]+");
    info.WarningText = "Small letters only.";
    EXPECT_EQ(CheckOf<TextProbe>(info, "ABC"), Rejected("Small letters only."));
}

TEST(PasswordSetting, AcceptsWhatBreaksThePatternAndKeepsTheReason)
{
    EXPECT_EQ(CheckOf<PasswordProbe>(PasswordInfo({}, {}, "[a-z]+"), "abc1"),
              (Verdict{RESULT_SUCCEED, "Expression check failed, pattern=[a-z]+"}));

    RedfishConfigSettingInfoStru info = PasswordInfo(1, 8, "[a-z]+");
    info.WarningText = "Small letters only.";
    EXPECT_EQ(CheckOf<PasswordProbe>(info, "ABC"), (Verdict{RESULT_SUCCEED, "Small letters only."}));
}

TEST(TextSetting, RejectsEveryValueUnderAnUnusablePattern)
{
    LogCapture log;
    const Verdict verdict = CheckOf<TextProbe>(TextInfo({}, {}, "["), "abc");
    EXPECT_EQ(verdict.code, RESULT_NEW_VALUE_INVALID);
    EXPECT_NE(verdict.reason, "untouched");
    EXPECT_TRUE(log.Has(4, "Exception message : " + verdict.reason));
}

TEST(PasswordSetting, AcceptsEveryValueUnderAnUnusablePattern)
{
    LogCapture log;
    const Verdict verdict = CheckOf<PasswordProbe>(PasswordInfo({}, {}, "["), "abc");
    EXPECT_EQ(verdict.code, RESULT_SUCCEED);
    EXPECT_TRUE(log.Has(4, "Exception message : " + verdict.reason));
}

TYPED_TEST(TextAndPasswordSetting, ChecksWithoutAName)
{
    RedfishConfigSettingInfoStru info = this->Info(2, 4);
    info.AttributeName.reset();
    EXPECT_EQ(CheckOf<TypeParam>(info, "abc"), accepted);
    EXPECT_EQ(CheckOf<TypeParam>(info, "a"), Rejected("The value length out of scope: MinLength=2 MaxLength=4."));
}

TYPED_TEST(TextAndPasswordSetting, LeavesItsRecordAloneWhenItChecks)
{
    RedfishConfigSettingInfoStru info = this->Info(2, 4, "[a-z]+");
    info.CurrentValue = std::string("abc");
    TypeParam setting(info);
    setting.m_ErrMsg = "before";
    std::string reason;
    for (const char* proposed : {"def", "12", "too long"}) {
        std::string value = proposed;
        Check(setting, value, reason);
    }
    EXPECT_EQ(setting.GetSettingProperties().CurrentValue, SettingValue(std::string("abc")));
    EXPECT_EQ(setting.GetSettingProperties().DefaultValue, SettingValue());
    EXPECT_EQ(setting.m_ErrMsg, "before");
}

TYPED_TEST(TextAndPasswordSetting, PatchesWithTheValueBetweenQuotesAndEscapesNothing)
{
    TypeParam setting(this->Info());
    EXPECT_EQ(PatchText(setting, "abc"), "\"abc\"");
    EXPECT_EQ(PatchText(setting, ""), "\"\"");
    EXPECT_EQ(PatchText(setting, "A\"B"), "\"A\"B\"");
    EXPECT_EQ(PatchText(setting, "C:\\dir"), "\"C:\\dir\"");
}

TEST(TextSetting, CopiesAnswerLikeTheOriginal)
{
    const RedfishConfigTextSetting original(TextInfo(1, 2), {});
    RedfishConfigTextSetting copy(original);
    std::string answer;
    EXPECT_EQ(copy.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "String MinLength=1 MaxLength=2 ");
}

TEST(PasswordSetting, CopiesAnswerLikeTheOriginal)
{
    const RedfishConfigPasswordSetting original(PasswordInfo(1, 2), {});
    RedfishConfigPasswordSetting copy(original);
    std::string answer;
    EXPECT_EQ(copy.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "Password MinLength=1 MaxLength=2 ");
}
