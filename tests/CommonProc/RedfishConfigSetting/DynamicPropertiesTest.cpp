#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Setting = Probe<RedfishConfigTextSetting>;
using Lines = std::vector<LogLine>;

struct Predicate {
    const char* Name;
    bool (RedfishConfigSetting::*Ask)();
    const char* Key;
    const char* Word;
    bool RedfishConfigSettingInfoStru::*Flag;
    bool AnswersFlag; ///< "Hidden" only tells of its flag; isProtected() answers it
};

std::ostream& operator<<(std::ostream& out, const Predicate& predicate)
{
    return out << predicate.Name;
}

const Predicate predicates[] = {
    {"isReadOnly", &Setting::isReadOnly, "ReadOnly", "read only", &RedfishConfigSettingInfoStru::ReadOnly, true},
    {"isWriteOnly", &Setting::isWriteOnly, "WriteOnly", "write only", &RedfishConfigSettingInfoStru::WriteOnly, true},
    {"isHidden", &Setting::isHidden, "Hidden", "hidden", &RedfishConfigSettingInfoStru::Hidden, false},
    {"isGrayOut", &Setting::isGrayOut, "GrayOut", "grayout", &RedfishConfigSettingInfoStru::GrayOut, true},
    {"isImmutable", &Setting::isImmutable, "Immutable", "immutable", &RedfishConfigSettingInfoStru::Immutable, true},
    {"isSystemUnique", &Setting::isSystemUnique, "IsSystemUniqueProperty", "system unique",
     &RedfishConfigSettingInfoStru::IsSystemUniqueProperty, true},
};

const char* const displayText = "((A.CurrentValue==X)&&(B.ReadOnly==C.CurrentValue))";
const char* const shownText = "((A==X)&&(B.ReadOnly==C))";

PropertyExpression Rule(const SettingValue& mapToValue, const std::string& formula)
{
    PropertyExpression expression;
    expression.MapToValue = mapToValue;
    expression.Formula = formula;
    expression.DisplayText = displayText;
    expression.Valid = true;
    return expression;
}

SettingValue Truth(bool truth)
{
    return SettingValue(SettingAlternative(truth));
}

/** What asking a predicate comes to. Reason is "before" where the predicate leaves m_ErrMsg as it was. */
struct Answer {
    bool Value = false;
    std::string Reason;
    Lines Log;
};

class DynamicProperty : public testing::TestWithParam<Predicate> {
protected:
    /** Asks a setting with the static flag and the rule given. */
    static Answer Ask(bool flag, const std::optional<PropertyExpression>& rule = {})
    {
        const Predicate& predicate = GetParam();
        RedfishConfigSettingInfoStru record;
        record.AttributeName = "T";
        record.*predicate.Flag = flag;
        if (rule) {
            record.expressionMaps[predicate.Key] = *rule;
        }
        return Ask(record);
    }

    static Answer Ask(const RedfishConfigSettingInfoStru& record)
    {
        Setting setting(record);
        setting.m_ErrMsg = "before";
        const LogCapture log;
        Answer answer;
        answer.Value = (setting.*GetParam().Ask)();
        answer.Reason = setting.m_ErrMsg;
        answer.Log = log.Lines();
        return answer;
    }

    static std::string Is() { return std::string("the setting is ") + GetParam().Word; }
    static std::string IsNot() { return std::string("the setting is non-") + GetParam().Word; }

    static Lines CalculationLines(const std::string& formula, bool result)
    {
        return {{4, "Start calculate formular: " + formula},
                {4, std::string("Calculate ") + GetParam().Key + " formular (" + formula + ") result is " +
                        (result ? "1" : "0")}};
    }

    static Lines With(Lines lines, const std::string& text)
    {
        lines.emplace_back(4U, text);
        return lines;
    }
};

TEST_P(DynamicProperty, WithoutARuleAnswersItsFlag)
{
    const Answer set = Ask(true);
    if (GetParam().AnswersFlag) {
        EXPECT_TRUE(set.Value);
        EXPECT_EQ(set.Reason, Is() + ".");
    } else {
        EXPECT_FALSE(set.Value);
        EXPECT_EQ(set.Reason, "before");
    }
    EXPECT_EQ(set.Log, Lines());

    const Answer clear = Ask(false);
    EXPECT_FALSE(clear.Value);
    EXPECT_EQ(clear.Reason, "before");
    EXPECT_EQ(clear.Log, Lines());
}

TEST_P(DynamicProperty, IgnoresTheOtherFlagsAndTheirRules)
{
    RedfishConfigSettingInfoStru record;
    for (const Predicate& other : predicates) {
        if (std::string(other.Key) != GetParam().Key) {
            record.*other.Flag = true;
            record.expressionMaps[other.Key] = Rule(Truth(true), "true");
        }
    }
    record.ResetRequired = true;
    record.expressionMaps["ResetRequired"] = Rule(Truth(true), "true");
    record.expressionMaps[std::string(GetParam().Key) + " "] = Rule(Truth(true), "true");
    record.expressionMaps[GetParam().Word] = Rule(Truth(true), "true");
    const Answer answer = Ask(record);
    EXPECT_FALSE(answer.Value);
    EXPECT_EQ(answer.Reason, "before");
    EXPECT_EQ(answer.Log, Lines());
}

TEST_P(DynamicProperty, OfAnInvalidRuleIsTrue)
{
    for (const bool flag : {false, true}) {
        for (const bool mapToValue : {false, true}) {
            PropertyExpression rule = Rule(Truth(mapToValue), "false");
            rule.Valid = false;
            const Answer answer = Ask(flag, rule);
            EXPECT_TRUE(answer.Value);
            EXPECT_EQ(answer.Reason, Is() + " due to BMC data error.");
            EXPECT_EQ(answer.Log, (Lines{{4, std::string("The expression is invalid or the MapToValue of ") +
                                                 GetParam().Key + " is not a boolean value."}}));
        }
    }
}

TEST_P(DynamicProperty, OfAnInvalidRuleWithoutAnOutcomeIsTrue)
{
    PropertyExpression rule = Rule(std::nullopt, "false");
    rule.Valid = false;
    const Answer answer = Ask(false, rule);
    EXPECT_TRUE(answer.Value);
    EXPECT_EQ(answer.Reason, Is() + " due to BMC data error.");
}

TEST_P(DynamicProperty, OfARuleWithoutABooleanOutcomeIsTrue)
{
    for (const SettingValue& mapToValue :
         {SettingValue(SettingAlternative(std::string("true"))), SettingValue(SettingAlternative(std::string("false"))),
          SettingValue(SettingAlternative(std::string())), SettingValue(SettingAlternative(std::int64_t{0})),
          SettingValue(SettingAlternative(std::int64_t{1}))}) {
        const Answer answer = Ask(false, Rule(mapToValue, "false"));
        EXPECT_TRUE(answer.Value);
        EXPECT_EQ(answer.Reason, Is() + " due to BMC data error.");
        EXPECT_EQ(answer.Log, (Lines{{4, std::string("The expression is invalid or the MapToValue of ") +
                                             GetParam().Key + " is not a boolean value."}}));
    }
}

TEST_P(DynamicProperty, OfAValidRuleWithoutAnOutcomeRaises)
{
    EXPECT_THROW(Ask(false, Rule(SettingValue(), "true")), std::bad_optional_access);
    EXPECT_THROW(Ask(true, Rule(SettingValue(), "false")), std::bad_optional_access);
}

TEST_P(DynamicProperty, IsTrueWhileItsRuleHolds)
{
    for (const bool flag : {false, true}) {
        const Answer answer = Ask(flag, Rule(Truth(true), "(X==X)"));
        EXPECT_TRUE(answer.Value);
        EXPECT_EQ(answer.Reason, Is() + " due to the following expression: " + shownText);
        EXPECT_EQ(answer.Log, CalculationLines("(X==X)", true));
    }
}

TEST_P(DynamicProperty, IsFalseWhileARuleForFalseHolds)
{
    for (const bool flag : {false, true}) { // the rule wins over the flag
        const Answer answer = Ask(flag, Rule(Truth(false), "(X==X)"));
        EXPECT_FALSE(answer.Value);
        EXPECT_EQ(answer.Reason, "before");
        EXPECT_EQ(answer.Log,
                  With(CalculationLines("(X==X)", true), IsNot() + " due to the following expression: " + shownText));
    }
}

TEST_P(DynamicProperty, FallsBackToItsFlagWhileItsRuleDoesNotHold)
{
    for (const bool mapToValue : {false, true}) {
        const Answer answer = Ask(true, Rule(Truth(mapToValue), "(X==Y)"));
        EXPECT_EQ(answer.Value, GetParam().AnswersFlag);
        EXPECT_EQ(answer.Reason, Is() + ".");
        EXPECT_EQ(answer.Log, CalculationLines("(X==Y)", false));
    }
}

TEST_P(DynamicProperty, TellsWhenItsRuleWouldMakeItTrue)
{
    const Answer answer = Ask(false, Rule(Truth(true), "(X==Y)"));
    EXPECT_FALSE(answer.Value);
    EXPECT_EQ(answer.Reason, Is() + " if the result of the following expression is true: " + shownText);
    EXPECT_EQ(answer.Log, CalculationLines("(X==Y)", false));
}

TEST_P(DynamicProperty, LogsWhenItsRuleWouldMakeItFalse)
{
    const Answer answer = Ask(false, Rule(Truth(false), "(X==Y)"));
    EXPECT_FALSE(answer.Value);
    EXPECT_EQ(answer.Reason, "before");
    EXPECT_EQ(answer.Log, With(CalculationLines("(X==Y)", false),
                               IsNot() + " if the result of the following expression is true: " + shownText));
}

TEST_P(DynamicProperty, OfAFormulaThatCannotBeCalculatedIsTrue)
{
    const std::pair<const char*, const char*> facts[] = {
        {"", "Invalid Formular."},          {"((X==X)&&)", "Invalid Formular."},
        {"yes", "Final result error: yes"}, {"X==X&&B", "Invalid param for operator: true&&B"},
        {"B(A==A", "Invalid operator: ("},
    };
    for (const auto& [formula, error] : facts) {
        for (const bool mapToValue : {false, true}) {
            const Answer answer = Ask(false, Rule(Truth(mapToValue), formula));
            EXPECT_TRUE(answer.Value) << formula;
            EXPECT_EQ(answer.Reason, Is() + " duo to dependency calculate error.") << formula;
            EXPECT_EQ(answer.Log, (Lines{{4, std::string("Start calculate formular: ") + formula},
                                         {1, error},
                                         {1, std::string("Calculate exception:") + error},
                                         {1, std::string("Failure: Calculate exception:") + error},
                                         {4, std::string("Failed to calculate the ") + GetParam().Word +
                                                 " property with error:" + error}}))
                << formula;
        }
    }
}

TEST_P(DynamicProperty, CalculatesTheFormulaAndShowsTheDisplayText)
{
    PropertyExpression rule = Rule(Truth(true), "((A.CurrentValue==A.CurrentValue))");
    rule.DisplayText = ".CurrentValue and.CurrentValue.CurrentValue .Currentvalue";
    const Answer answer = Ask(false, rule);
    EXPECT_TRUE(answer.Value);
    EXPECT_EQ(answer.Reason, Is() + " due to the following expression:  and .Currentvalue");
    EXPECT_EQ(answer.Log, CalculationLines("((A.CurrentValue==A.CurrentValue))", true));
}

TEST_P(DynamicProperty, IsTheSameWithLoggingOff)
{
    RedfishConfigSettingInfoStru record;
    record.expressionMaps[GetParam().Key] = Rule(Truth(true), "(X==X)");
    Setting setting(record);
    EXPECT_TRUE((setting.*GetParam().Ask)());
    EXPECT_EQ(setting.GetErrorMsg(), Is() + " due to the following expression: " + shownText);
}

INSTANTIATE_TEST_SUITE_P(Each, DynamicProperty, testing::ValuesIn(predicates),
                         [](const testing::TestParamInfo<Predicate>& row) { return std::string(row.param.Name); });

TEST(ProtectedProperty, AnswersTheHiddenFlag)
{
    RedfishConfigSettingInfoStru record;
    for (const bool ignore : {false, true}) {
        Config_Options options;
        options.IgnoreProtected = ignore; // a matter of filter(), not of the property
        record.Hidden = true;
        Setting hidden(record, options);
        hidden.m_ErrMsg = "before";
        EXPECT_TRUE(hidden.isProtected());
        EXPECT_EQ(hidden.m_ErrMsg, "the setting is protected.");

        record.Hidden = false;
        Setting shown(record, options);
        shown.m_ErrMsg = "before";
        EXPECT_FALSE(shown.isProtected());
        EXPECT_EQ(shown.m_ErrMsg, "before");
    }
}

TEST(ProtectedProperty, HasNoRuleAndNoLogLine)
{
    RedfishConfigSettingInfoStru record;
    record.expressionMaps["Hidden"] = Rule(Truth(true), "true");
    record.expressionMaps["Protected"] = Rule(Truth(true), "true");
    Setting setting(record);
    const LogCapture log;
    EXPECT_FALSE(setting.isProtected());
    EXPECT_EQ(setting.m_ErrMsg, "");
    setting.ChangeRecord([](auto& whole) {
        whole.Hidden = true;
        whole.expressionMaps["Hidden"] = Rule(Truth(false), "true");
    });
    EXPECT_TRUE(setting.isProtected());
    EXPECT_EQ(log.Lines(), Lines());
}

} // namespace
