#include "support/GlobalLocale.h"
#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
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

using EnumerateProbe = Probe<RedfishConfigEnumerateSetting>;
using Choices = std::map<std::string, std::string>;

const Choices threeChoices = {{"Auto", "Automatic"}, {"Disabled", "Disabled"}, {"Enabled", "Enabled"}};

RedfishConfigSettingInfoStru EnumerateInfo(const Choices& choices, const SettingValue& defaultValue = {})
{
    RedfishConfigSettingInfoStru info;
    info.AttributeName = "Bar";
    info.Type = "Enumeration";
    info.Value = choices;
    info.DefaultValue = defaultValue;
    return info;
}

SettingValue Text(const char* text)
{
    return std::string(text);
}

std::string ValidValues(EnumerateProbe& setting, const filterAction& action = FILTER_QUERY_CHOICES)
{
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, action);
    EXPECT_EQ(result, RESULT_SUCCEED);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(result.Setting(), "");
    return answer;
}

} // namespace

TEST(EnumerateSetting, ListsTheDefaultThenTheOtherChoicesThenDisplayNames)
{
    const struct {
        Choices choices;
        SettingValue defaultValue;
        const char* answer;
    } rows[] = {
        {threeChoices, Text("Enabled"), "<Enabled>=Auto=Disabled\n\t[Auto] : Automatic"},
        {threeChoices, Text("Auto"), "<Auto>=Disabled=Enabled\n\t[Auto] : Automatic"},
        {threeChoices, {}, "Auto=Disabled=Enabled\n\t[Auto] : Automatic"},
        // a default that is no choice, or is one only in another case
        {threeChoices, Text("Other"), "<Other>=Auto=Disabled=Enabled\n\t[Auto] : Automatic"},
        {threeChoices, Text("enabled"), "<enabled>=Auto=Disabled=Enabled\n\t[Auto] : Automatic"},
        {threeChoices, Text("Automatic"), "<Automatic>=Auto=Disabled=Enabled\n\t[Auto] : Automatic"},
        {threeChoices, Text(""), "<>=Auto=Disabled=Enabled\n\t[Auto] : Automatic"},
        // defaults of another kind count by their text
        {{{"1", "One"}, {"2", "2"}}, std::int64_t{1}, "<1>=2\n\t[1] : One"},
        {{{"false", "No"}, {"true", "Yes"}}, true, "<true>=false\n\t[false] : No\n\t[true] : Yes"},
        // byte-wise order
        {{{"b", "b"}, {"a", "a"}, {"B", "B"}, {"10", "10"}, {"9", "9"}}, {}, "10=9=B=a=b"},
        // display names that differ in case, or are empty
        {{{"On", "on"}, {"Off", ""}}, {}, "Off=On\n\t[Off] : \n\t[On] : on"},
        {{{"Only", "Only"}}, Text("Only"), "<Only>"},
        {{{"Only", "The one"}}, {}, "Only\n\t[Only] : The one"},
        {{}, {}, ""},
        {{}, Text("Lonely"), "<Lonely>"},
        // nothing separates a first choice without a name from the next, for nothing was written yet
        {{{"", ""}, {"A", "A"}}, {}, "A"},
        {{{"", "None"}, {"A", "A"}}, {}, "A\n\t[] : None"},
        {{{"", ""}, {"A", "A"}}, Text("A"), "<A>="},
    };
    for (const auto& row : rows) {
        EnumerateProbe setting(EnumerateInfo(row.choices, row.defaultValue));
        EXPECT_EQ(ValidValues(setting), row.answer);
    }
}

TEST(EnumerateSetting, ShowsValidValuesAlikeInHexadecimalMode)
{
    Config_Options options;
    options.ShowHexValue = true;
    EnumerateProbe setting(EnumerateInfo({{"16", "16"}, {"32", "32"}}, std::int64_t{16}), options);
    EXPECT_EQ(ValidValues(setting), "<16>=32");
}

TEST(EnumerateSetting, EndsValidValuesWithTheCapitalisedReason)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices, Text("Enabled"));
    info.GrayOut = true;
    EnumerateProbe setting(info);
    EXPECT_EQ(ValidValues(setting), "<Enabled>=Auto=Disabled\n\t[Auto] : Automatic\n\tThe setting is grayout.");
    EXPECT_EQ(setting.m_ErrMsg, "the setting is grayout.");

    info.Value.clear();
    info.DefaultValue.reset();
    EnumerateProbe withoutChoices(info);
    EXPECT_EQ(ValidValues(withoutChoices), "\n\tThe setting is grayout.");
}

TEST(EnumerateSetting, ShowsTheReasonOfARuleThatDoesNotHoldNow)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices, Text("Enabled"));
    info.expressionMaps["GrayOut"] = {true, "(A==B)", "(Mode.CurrentValue==B)", true, {0}};
    EnumerateProbe setting(info);
    EXPECT_EQ(ValidValues(setting, FILTER_QUERY_GROUP_CHOICES),
              "<Enabled>=Auto=Disabled\n\t[Auto] : Automatic"
              "\n\tThe setting is grayout if the result of the following expression is true: (Mode==B)");
}

TEST(EnumerateSetting, RefusesValidValuesOfAFilteredSetting)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
    info.Hidden = true;
    EnumerateProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_GROUP_CHOICES);
    const std::string message = "The operation on setting Bar fails since the setting is protected.";
    EXPECT_EQ(result, RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(setting.GetErrorMsg(), message);
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Enter RedfishConfigSetting::filter() with filterAction=7"),
                                         LogLine(4, "m_ErrMsg:" + message)));
}

TEST(EnumerateSetting, AnswersAnEmptyNameAsAnUnusableProperty)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
    info.AttributeName = "";
    EnumerateProbe setting(info);
    LogCapture log;
    std::string answer = "before";
    const RedfishConfigResult result = setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES);
    EXPECT_EQ(result, RESULT_PROPERTY_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(answer, "before");
    EXPECT_THAT(log.Texts(1), ElementsAre("Setting  property error."));
}

TEST(EnumerateSetting, AnswersAnAbsentNameAsAMissingProperty)
{
    for (const bool hidden : {false, true}) {
        RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
        info.AttributeName.reset();
        info.Hidden = hidden;
        EnumerateProbe setting(info);
        std::string answer = "before";
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);

        LogCapture log;
        EXPECT_EQ(setting.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(answer, "before");
        EXPECT_TRUE(log.Has(
            4, "Catch exception in RedfishConfigEnumerateSetting::GetSettingValidValues(): bad optional access"));
        EXPECT_THAT(log.Texts(1), IsEmpty());
    }
}

TEST(EnumerateSetting, RewritesAnAcceptedValueToTheNameOfTheChoice)
{
    const struct {
        Choices choices;
        const char* value;
        const char* rewritten;
    } rows[] = {
        {threeChoices, "Enabled", "Enabled"},
        {threeChoices, "enabled", "Enabled"},
        {threeChoices, "enable", "Enabled"},
        {threeChoices, "ENABLE", "Enabled"},
        {threeChoices, "Disable", "Disabled"},
        {threeChoices, "DISABLED", "Disabled"},
        {threeChoices, "auto", "Auto"},
        {threeChoices, "AUTO", "Auto"},
        {threeChoices, "Automatic", "Auto"},
        {threeChoices, "automatic", "Auto"},
        {{{"Enable", "Enable"}}, "enabled", "Enable"},
        {{{"On", "Enabled"}, {"Off", "Disabled"}}, "enable", "On"},
        {{{"On", "Enabled"}, {"Off", "Disabled"}}, "DISABLE", "Off"},
        // the first in byte-wise order wins where two fit, by name or by display name
        {{{"Disable", "First"}, {"Disabled", "Second"}}, "disabled", "Disable"},
        {{{"A", "A"}, {"a", "a"}}, "a", "A"},
        {{{"A", "B"}, {"B", "C"}}, "B", "A"},
        {{{"X1", "Same"}, {"X2", "Same"}}, "same", "X1"},
        // an empty display name is a display name like any other
        {{{"A", "A"}, {"B", ""}}, "", "B"},
        {{{"", ""}}, "", ""},
    };
    for (const auto& row : rows) {
        EnumerateProbe setting(EnumerateInfo(row.choices));
        std::string value = row.value;
        std::string reason = "untouched";
        const RedfishConfigResult result = Check(setting, value, reason);
        EXPECT_EQ(result, RESULT_SUCCEED) << row.value;
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(result.Setting(), "");
        EXPECT_EQ(value, row.rewritten) << row.value;
        EXPECT_EQ(reason, "untouched");
    }
}

TEST(EnumerateSetting, ComparesCaseByTheGlobalLocale)
{
    EnumerateProbe setting(EnumerateInfo({{"CAF\xC9", "CAF\xC9"}}));
    std::string value = "caf\xE9";
    std::string reason;
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);

    const RegistryTest::GlobalLocale latin(RegistryTest::LatinLocale());
    EXPECT_EQ(Check(setting, value, reason), RESULT_SUCCEED);
    EXPECT_EQ(value, "CAF\xC9");
}

TEST(EnumerateSetting, RejectsAnUnknownValueWithTheListOfChoices)
{
    const std::string choices = ".\nAcceptable values include: <Auto> <Disabled> <Enabled>.";
    for (const char* unknown : {"Foo", "", "Enabled ", " Enabled", "enables", "Enabling", "Auto,Disabled", "autom"}) {
        EnumerateProbe setting(EnumerateInfo(threeChoices));
        std::string value = unknown;
        std::string reason = "replaced";
        const RedfishConfigResult result = Check(setting, value, reason);
        EXPECT_EQ(result, RESULT_NEW_VALUE_INVALID) << unknown;
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(result.Setting(), "");
        EXPECT_EQ(value, unknown);
        EXPECT_EQ(reason, "value " + std::string(unknown) + " is not a valid value for setting Bar" + choices);
    }
}

TEST(EnumerateSetting, QuotesARejectedValueAsItWasGiven)
{
    EnumerateProbe setting(EnumerateInfo({{"Z", "Last"}, {"A", ""}}));
    std::string value = "FOO";
    std::string reason;
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(value, "FOO");
    EXPECT_EQ(reason, "value FOO is not a valid value for setting Bar.\nAcceptable values include: <A> <Z>.");
}

TEST(EnumerateSetting, RejectsTheDefaultWhenItIsNoChoice)
{
    EnumerateProbe setting(EnumerateInfo(threeChoices, Text("Other")));
    std::string value = "Other";
    std::string reason;
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(reason, "value Other is not a valid value for setting Bar.\n"
                      "Acceptable values include: <Auto> <Disabled> <Enabled>.");
}

TEST(EnumerateSetting, RejectsEveryValueWhenItHasNoChoices)
{
    EnumerateProbe setting(EnumerateInfo({}, Text("Enabled")));
    std::string value = "Enabled";
    std::string reason = "replaced";
    const RedfishConfigResult result = Check(setting, value, reason);
    EXPECT_EQ(result, RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(value, "Enabled");
    EXPECT_EQ(reason, "Enumerate setting Bar has no valid value.");
}

TEST(EnumerateSetting, MatchesThePatternAgainstTheNameOfTheChoice)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
    info.ValueExpression = "Enabled|Auto";
    EnumerateProbe setting(info);
    std::string value = "enable";
    std::string reason = "untouched";
    EXPECT_EQ(Check(setting, value, reason), RESULT_SUCCEED);
    EXPECT_EQ(value, "Enabled");
    value = "automatic";
    EXPECT_EQ(Check(setting, value, reason), RESULT_SUCCEED);
    EXPECT_EQ(value, "Auto");
    EXPECT_EQ(reason, "untouched");
}

TEST(EnumerateSetting, ReturnsThePatternCheckAsItIs)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
    info.ValueExpression = "Enabled";
    EnumerateProbe setting(info);
    std::string value = "disable";
    std::string reason = "replaced";
    const RedfishConfigResult result = Check(setting, value, reason);
    EXPECT_EQ(result, RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(value, "Disabled");
    EXPECT_EQ(reason, "Expression check failed, pattern=Enabled");

    std::string baseReason;
    const RedfishConfigResult base = setting.BaseCheck(value, baseReason);
    EXPECT_EQ(static_cast<int>(result), static_cast<int>(base));
    EXPECT_EQ(result.ErrorMsg(), base.ErrorMsg());
    EXPECT_EQ(reason, baseReason);

    info.WarningText = "Only Enabled will do.";
    EnumerateProbe withWarning(info);
    value = "Auto";
    EXPECT_EQ(Check(withWarning, value, reason), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(reason, "Only Enabled will do.");
}

TEST(EnumerateSetting, RunsThePatternCheckOnlyForAMatchingChoice)
{
    EnumerateProbe setting(EnumerateInfo(threeChoices));
    const LogLine enter(4, "Entering  RedfishConfigSetting::CheckNewValueIsValid");
    const LogLine leave(4, "Exiting  RedfishConfigSetting::CheckNewValueIsValid");
    std::string reason;
    {
        LogCapture log;
        std::string value = "auto";
        Check(setting, value, reason);
        EXPECT_THAT(log.Lines(), ElementsAre(enter, leave));
    }
    {
        LogCapture log;
        std::string value = "Foo";
        Check(setting, value, reason);
        EXPECT_THAT(log.Lines(), IsEmpty());
    }
}

TEST(EnumerateSetting, RejectsEveryChoiceUnderAnUnusablePattern)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
    info.ValueExpression = "(";
    EnumerateProbe setting(info);
    LogCapture log;
    std::string value = "Auto";
    std::string reason;
    EXPECT_EQ(Check(setting, value, reason), RESULT_NEW_VALUE_INVALID);
    EXPECT_NE(reason, "");
    EXPECT_TRUE(log.Has(4, "Exception message : " + reason));
}

TEST(EnumerateSetting, NeedsItsNameOnlyForARefusal)
{
    const std::string caught =
        "Catch exception in RedfishConfigEnumerateSetting::CheckNewValueIsValid(): bad optional access";
    for (const Choices& choices : {threeChoices, Choices{}}) {
        RedfishConfigSettingInfoStru info = EnumerateInfo(choices);
        info.AttributeName.reset();
        EnumerateProbe setting(info);
        LogCapture log;
        std::string value = "Foo";
        std::string reason;
        const RedfishConfigResult result = Check(setting, value, reason);
        EXPECT_EQ(result, RESULT_PROPERTY_NOT_EXIST);
        EXPECT_EQ(result.ErrorMsg(), "");
        EXPECT_EQ(value, "Foo");
        EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, caught)));
    }
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices);
    info.AttributeName.reset();
    EnumerateProbe setting(info);
    std::string value = "auto";
    std::string reason;
    EXPECT_EQ(Check(setting, value, reason), RESULT_SUCCEED);
    EXPECT_EQ(value, "Auto");
}

TEST(EnumerateSetting, LeavesItsRecordAloneWhenItChecks)
{
    RedfishConfigSettingInfoStru info = EnumerateInfo(threeChoices, Text("Enabled"));
    info.CurrentValue = Text("Disabled");
    EnumerateProbe setting(info);
    setting.m_ErrMsg = "before";
    std::string reason;
    for (const char* proposed : {"auto", "Foo"}) {
        std::string value = proposed;
        Check(setting, value, reason);
    }
    EXPECT_EQ(setting.GetSettingProperties().CurrentValue, Text("Disabled"));
    EXPECT_EQ(setting.GetSettingProperties().DefaultValue, Text("Enabled"));
    EXPECT_EQ(setting.GetSettingProperties().Value, threeChoices);
    EXPECT_EQ(setting.m_ErrMsg, "before");
}

TEST(EnumerateSetting, PatchesWithTheValueBetweenQuotesAndEscapesNothing)
{
    EnumerateProbe setting(EnumerateInfo(threeChoices));
    EXPECT_EQ(PatchText(setting, "Auto"), "\"Auto\"");
    EXPECT_EQ(PatchText(setting, ""), "\"\"");
    EXPECT_EQ(PatchText(setting, "A\"B"), "\"A\"B\"");
    EXPECT_EQ(PatchText(setting, "A\\B\n"), "\"A\\B\n\"");
}

TEST(EnumerateSetting, CopiesAnswerLikeTheOriginal)
{
    const RedfishConfigEnumerateSetting original(EnumerateInfo(threeChoices, Text("Auto")), {});
    RedfishConfigEnumerateSetting copy(original);
    std::string answer;
    EXPECT_EQ(copy.GetSettingValidValues(answer, FILTER_QUERY_CHOICES), RESULT_SUCCEED);
    EXPECT_EQ(answer, "<Auto>=Disabled=Enabled\n\t[Auto] : Automatic");
}
