#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <stdexcept>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Setting = Probe<RedfishConfigNumericSetting>;
using Lines = std::vector<LogLine>;
using Bound = std::optional<std::int64_t>;

constexpr std::int64_t smallest = INT64_MIN;
constexpr std::int64_t largest = INT64_MAX;
const Bound none;

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

Config_Options Hexadecimal()
{
    Config_Options options;
    options.ShowHexValue = true;
    return options;
}

RedfishConfigSettingInfoStru Typed(const std::optional<std::string>& type)
{
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "A";
    record.Type = type;
    return record;
}

// ---- a value as text

TEST(HexadecimalText, IsForIntegersWhereTheOptionsAskForIt)
{
    const struct {
        SettingValue value;
        const char* text;
        const char* hexadecimal;
    } facts[] = {
        {Number(31), "31", "0x1f"},    {Number(0), "0", "0x0"},          {Number(-1), "-1", "0xffffffffffffffff"},
        {Text("31"), "31", "31"},      {Text("0x1F"), "0x1F", "0x1F"},   {Text(""), "", ""},
        {Truth(true), "true", "true"}, {Truth(false), "false", "false"},
    };
    Setting decimal((RedfishConfigSettingInfoStru()));
    Setting hex(RedfishConfigSettingInfoStru(), Hexadecimal());
    for (const auto& [value, text, hexadecimal] : facts) {
        EXPECT_EQ(decimal.GetOptionalAsHexStr(value), text);
        EXPECT_EQ(hex.GetOptionalAsHexStr(value), hexadecimal);
    }
}

TEST(HexadecimalText, OfAnAbsentValueRaises)
{
    for (const Config_Options& options : {Config_Options(), Hexadecimal()}) {
        Setting setting(RedfishConfigSettingInfoStru(), options);
        try {
            setting.GetOptionalAsHexStr(SettingValue());
            ADD_FAILURE() << "nothing was raised";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "The optional is nullopt.");
        }
    }
}

// ---- taking a bound

TEST(BoundTransfer, CopiesAPresentNumberAlone)
{
    Setting setting((RedfishConfigSettingInfoStru()));
    setting.m_ErrMsg = "before";
    const LogCapture log;
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{-5}, smallest, largest}) {
        std::int64_t out = 77;
        const RedfishConfigResult result = setting.TransferOpIntegerToInteger(number, out);
        EXPECT_EQ(static_cast<int>(result), RESULT_SUCCEED);
        EXPECT_EQ(out, number);
    }
    std::int64_t out = 77;
    const RedfishConfigResult result = setting.TransferOpIntegerToInteger(none, out);
    EXPECT_EQ(static_cast<int>(result), RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(out, 77);
    EXPECT_EQ(setting.m_ErrMsg, "before");
    EXPECT_EQ(log.Lines(), Lines());
}

// ---- comparing a number with the bounds

TEST(ScopeVerdict, ComparesWithAClosedRange)
{
    const struct {
        std::int64_t value;
        Bound lower;
        Bound upper;
        bool nonNegative;
        int verdict;
    } facts[] = {
        // two bounds
        {10, 10, 20, false, 0},
        {15, 10, 20, false, 0},
        {20, 10, 20, false, 0},
        {9, 10, 20, false, 1},
        {21, 10, 20, false, 1},
        {5, 5, 5, false, 0},
        {4, 5, 5, false, 1},
        {0, -5, 5, false, 0},
        {-6, -5, 5, false, 1},
        {smallest, smallest, largest, false, 0},
        {largest, smallest, largest, false, 0},
        // the upper bound alone
        {255, none, 255, false, 0},
        {256, none, 255, false, 3},
        {smallest, none, 255, false, 0},
        {-1, none, -1, false, 0},
        {0, none, -1, false, 3},
        // the lower bound alone
        {8, 8, none, false, 0},
        {7, 8, none, false, 2},
        {largest, 8, none, false, 0},
        {-8, -7, none, false, 2},
        // no bound
        {0, none, none, false, 0},
        {smallest, none, none, false, 0},
        {-1, none, none, true, 0}, // the bounds are to be non-negative, not the value
        // non-negative bounds; an absent one counts as 0 there
        {15, 10, 20, true, 0},
        {0, 0, 0, true, 0},
        {5, none, 5, true, 0},
        {6, none, 5, true, 3},
        {5, 5, none, true, 0},
        {4, 5, none, true, 2},
        {0, -1, none, true, 4},
        {0, none, -1, true, 4},
        {0, -1, 5, true, 4},
        {0, -5, -1, true, 4},
        {0, 5, -1, true, 4},
        {0, -1, -5, true, 4}, // known before the bounds are compared, so nothing is logged
    };
    Setting setting(Typed("Integer"));
    setting.m_ErrMsg = "before";
    const LogCapture log;
    for (const auto& [value, lower, upper, nonNegative, verdict] : facts) {
        EXPECT_EQ(setting.CheckValueValidScope(value, lower, upper, nonNegative), verdict)
            << value << " in " << testing::PrintToString(lower) << " to " << testing::PrintToString(upper)
            << (nonNegative ? ", non-negative" : "");
    }
    EXPECT_EQ(setting.m_ErrMsg, "before");
    EXPECT_EQ(log.Lines(), Lines());
}

TEST(ScopeVerdict, OfContradictoryBoundsIs4AndLogged)
{
    const struct {
        std::int64_t lower;
        std::int64_t upper;
        bool nonNegative;
        const char* line;
    } facts[] = {
        {10, 5, false, "data logical error: 10(lower) > 5(upper)."},
        {10, 5, true, "data logical error: 10(lower) > 5(upper)."},
        {-1, -2, false, "data logical error: -1(lower) > -2(upper)."},
        {largest, smallest, false, "data logical error: 9223372036854775807(lower) > -9223372036854775808(upper)."},
    };
    for (const Config_Options& options : {Config_Options(), Hexadecimal()}) { // decimal whatever is shown
        Setting setting(Typed("Integer"), options);
        for (const auto& [lower, upper, nonNegative, line] : facts) {
            for (const std::int64_t value : {lower, upper, std::int64_t{7}}) {
                const LogCapture log;
                EXPECT_EQ(setting.CheckValueValidScope(value, lower, upper, nonNegative), 4);
                EXPECT_EQ(log.Lines(), (Lines{{1, line}}));
            }
        }
    }
}

// ---- describing the bounds

TEST(ValueScope, NamesItsItemsByTheType)
{
    const std::pair<const char*, const char*> facts[] = {
        {"Integer", "LowerBound=0 UpperBound=255 "},
        {"integer", "LowerBound=0 UpperBound=255 "},
        {"INTEGER", "LowerBound=0 UpperBound=255 "},
        {"InTeGeR", "LowerBound=0 UpperBound=255 "},
        {"String", "MinLength=0 MaxLength=255 "},
        {"Password", "MinLength=0 MaxLength=255 "},
        {"Enumeration", "MinLength=0 MaxLength=255 "},
        {"Boolean", "MinLength=0 MaxLength=255 "},
        {"Integer ", "MinLength=0 MaxLength=255 "},
        {"of another kind", "MinLength=0 MaxLength=255 "},
        {"", "MinLength=0 MaxLength=255 "},
    };
    for (const auto& [type, text] : facts) {
        Setting setting(Typed(type));
        std::string scope = "before";
        const LogCapture log;
        EXPECT_EQ(static_cast<int>(setting.GetValueScope(0, 255, scope)), RESULT_SUCCEED) << type;
        EXPECT_EQ(scope, text);
        EXPECT_EQ(log.Lines(), Lines());
    }
}

TEST(ValueScope, HoldsTheBoundsThatAreThere)
{
    const struct {
        Bound lower;
        Bound upper;
        const char* integer;
        const char* hexadecimal;
        const char* length;
    } facts[] = {
        {1, 16, "LowerBound=1 UpperBound=16 ", "LowerBound=0x1 UpperBound=0x10 ", "MinLength=1 MaxLength=16 "},
        {16, none, "LowerBound=16 ", "LowerBound=0x10 ", "MinLength=16 "},
        {none, 16, "UpperBound=16 ", "UpperBound=0x10 ", "MaxLength=16 "},
        {none, none, "", "", ""},
        {3, 3, "LowerBound=3 UpperBound=3 ", "LowerBound=0x3 UpperBound=0x3 ", "MinLength=3 MaxLength=3 "},
        {-2, -1, "LowerBound=-2 UpperBound=-1 ", "LowerBound=0xfffffffffffffffe UpperBound=0xffffffffffffffff ",
         "MinLength=-2 MaxLength=-1 "},
        {smallest, largest, "LowerBound=-9223372036854775808 UpperBound=9223372036854775807 ",
         "LowerBound=0x8000000000000000 UpperBound=0x7fffffffffffffff ",
         "MinLength=-9223372036854775808 MaxLength=9223372036854775807 "},
    };
    Setting integer(Typed("Integer"));
    Setting hexInteger(Typed("Integer"), Hexadecimal());
    Setting length(Typed("String"));
    Setting hexLength(Typed("String"), Hexadecimal()); // lengths are decimal whatever is shown
    for (const auto& fact : facts) {
        const std::pair<Setting*, const char*> answers[] = {{&integer, fact.integer},
                                                            {&hexInteger, fact.hexadecimal},
                                                            {&length, fact.length},
                                                            {&hexLength, fact.length}};
        for (const auto& [setting, text] : answers) {
            std::string scope;
            EXPECT_EQ(static_cast<int>(setting->GetValueScope(fact.lower, fact.upper, scope)), RESULT_SUCCEED);
            EXPECT_EQ(scope, text);
        }
    }
}

TEST(ValueScope, StartsAnewWithALowerBoundAndAppendsAnUpperOne)
{
    Setting setting(Typed("Integer"));
    std::string scope = "before ";
    setting.GetValueScope(none, none, scope);
    EXPECT_EQ(scope, "before ");
    setting.GetValueScope(none, 5, scope);
    EXPECT_EQ(scope, "before UpperBound=5 ");
    setting.GetValueScope(1, none, scope);
    EXPECT_EQ(scope, "LowerBound=1 ");
    setting.GetValueScope(1, 5, scope);
    EXPECT_EQ(scope, "LowerBound=1 UpperBound=5 ");
}

TEST(ValueScope, WithoutATypeFailsWithCode8)
{
    Setting setting(Typed(std::nullopt));
    setting.m_ErrMsg = "before";
    std::string scope = "untouched";
    const LogCapture log;
    const RedfishConfigResult result = setting.GetValueScope(10, 5, scope);
    EXPECT_EQ(static_cast<int>(result), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(result.ErrorMsg(), "");
    EXPECT_EQ(result.Setting(), "");
    EXPECT_EQ(scope, "untouched");
    EXPECT_EQ(setting.m_ErrMsg, "before");
    EXPECT_EQ(log.Lines(), (Lines{{1, "Not get the current setting's type."}}));
}

TEST(ValueScope, OfContradictoryBoundsIsWrittenAndFailsWithCode8)
{
    const struct {
        const char* type;
        std::int64_t lower;
        std::int64_t upper;
        const char* scope;
        const char* line;
    } facts[] = {
        {"Integer", 10, 5, "LowerBound=10 UpperBound=5 ", "Setting A bounder is invalid: lower is 10 upper is 5"},
        {"String", 10, 5, "MinLength=10 MaxLength=5 ", "Setting A bounder is invalid: lower is 10 upper is 5"},
        {"Password", -1, -2, "MinLength=-1 MaxLength=-2 ", "Setting A bounder is invalid: lower is -1 upper is -2"},
    };
    for (const auto& [type, lower, upper, text, line] : facts) {
        Setting setting(Typed(type));
        std::string scope = "before";
        const LogCapture log;
        const RedfishConfigResult result = setting.GetValueScope(lower, upper, scope);
        EXPECT_EQ(static_cast<int>(result), RESULT_PROPERTY_INVALID);
        EXPECT_EQ(result.Setting(), "");
        EXPECT_EQ(scope, text);
        EXPECT_EQ(log.Lines(), (Lines{{1, line}}));
    }
}

TEST(ValueScope, OfContradictoryBoundsShowsNothingForAnAbsentName)
{
    RedfishConfigSettingInfoStru record = Typed("Integer");
    record.AttributeName = std::nullopt;
    Setting setting(record);
    std::string scope;
    {
        const LogCapture log;
        EXPECT_EQ(static_cast<int>(setting.GetValueScope(10, 5, scope)), RESULT_PROPERTY_INVALID);
        EXPECT_EQ(log.Lines(), (Lines{{1, "Setting  bounder is invalid: lower is 10 upper is 5"}}));
    }
    EXPECT_EQ(static_cast<int>(setting.GetValueScope(10, 5, scope)), RESULT_PROPERTY_INVALID); // logging off
    EXPECT_EQ(scope, "LowerBound=10 UpperBound=5 ");
}

// ---- the pattern

const LogLine entering{4, "Entering  RedfishConfigSetting::CheckNewValueIsValid"};
const LogLine exiting{4, "Exiting  RedfishConfigSetting::CheckNewValueIsValid"};

struct PatternAnswer {
    int Code = -1;
    std::string Value;
    std::string Reason;
    Lines Log;
};

PatternAnswer Match(const std::optional<std::string>& pattern, const std::string& value,
                    const std::optional<std::string>& warning = {})
{
    RedfishConfigSettingInfoStru record = Typed("String");
    record.ValueExpression = pattern;
    record.WarningText = warning;
    Probe<RedfishConfigTextSetting> setting(record);
    PatternAnswer answer;
    answer.Value = value;
    answer.Reason = "untouched";
    const LogCapture log;
    const RedfishConfigResult result = setting.BaseCheck(answer.Value, answer.Reason);
    answer.Code = result;
    EXPECT_EQ(result.ErrorMsg(), ""); // the reason goes into its own argument
    answer.Log = log.Lines();
    EXPECT_EQ(answer.Value, value); // never rewritten
    EXPECT_EQ(setting.m_ErrMsg, "");
    return answer;
}

TEST(Pattern, ThatIsAbsentAcceptsEverything)
{
    for (const char* value : {"", "anything", "["}) {
        const PatternAnswer answer = Match(std::nullopt, value, "A warning.");
        EXPECT_EQ(answer.Code, RESULT_SUCCEED);
        EXPECT_EQ(answer.Reason, "untouched");
        EXPECT_EQ(answer.Log, (Lines{entering, exiting}));
    }
}

TEST(Pattern, MustMatchTheWholeValue)
{
    const struct {
        const char* pattern;
        const char* value;
        bool matches;
    } facts[] = {
        {"[0-9]+", "123", true},    {"[0-9]+", "a123", false},
        {"[0-9]+", "123a", false},  {"[0-9]+", "", false},
        {"^[0-9]+$", "123", true},  {"^[0-9]+$", "a123", false},
        {"^[a-z]*", "abc1", false}, {"\\d{2}", "12", true},
        {"\\d{2}", "123", false},   {"\\w+\\s\\w+", "two words", true},
        {"(?:a|b)c", "bc", true},   {"a|ab", "ab", true},
        {"a(?=b).", "ab", true},    {"(a)\\1", "aa", true},
        {"abc", "ABC", false},      {"", "", true},
        {"", "a", false},           {".*", "", true},
    };
    for (const auto& [pattern, value, matches] : facts) {
        const PatternAnswer answer = Match(pattern, value);
        EXPECT_EQ(answer.Code, matches ? RESULT_SUCCEED : RESULT_NEW_VALUE_INVALID) << pattern << " on " << value;
        EXPECT_EQ(answer.Reason, matches ? "untouched" : std::string("Expression check failed, pattern=") + pattern);
        EXPECT_EQ(answer.Log, (Lines{entering, exiting}));
    }
}

TEST(Pattern, RefusesWithTheWarningWhereThereIsOne)
{
    for (const char* warning : {"Only digits, please.", ""}) {
        const PatternAnswer answer = Match("[0-9]+", "abc", warning);
        EXPECT_EQ(answer.Code, RESULT_NEW_VALUE_INVALID);
        EXPECT_EQ(answer.Reason, warning);
        EXPECT_EQ(answer.Log, (Lines{entering, exiting}));
    }
    EXPECT_EQ(Match("[0-9]+", "1", "Only digits, please.").Reason, "untouched");
}

TEST(Pattern, ThatCannotBeCompiledRefusesEveryValue)
{
    for (const char* pattern : {"[", "(", "a{2,1}", "*a", "\\"}) {
        std::string error;
        try {
            const std::regex compiled(pattern, std::regex::ECMAScript);
            FAIL() << pattern << " is a pattern after all";
        } catch (const std::regex_error& raised) {
            error = raised.what();
        }
        for (const char* value : {"", "a", pattern}) {
            const PatternAnswer answer = Match(pattern, value, "A warning.");
            EXPECT_EQ(answer.Code, RESULT_NEW_VALUE_INVALID);
            EXPECT_EQ(answer.Reason, error);
            EXPECT_EQ(answer.Log, (Lines{entering, {4, "Exception message : " + error}, exiting}));
        }
    }
}

TEST(Pattern, ThatCannotBeCompiledRefusesEveryValueOfATextSetting)
{
    RedfishConfigSettingInfoStru record = Typed("String");
    record.ValueExpression = "[a-z";
    RedfishConfigTextSetting setting(record, {});
    std::string error;
    try {
        const std::regex compiled("[a-z");
    } catch (const std::regex_error& raised) {
        error = raised.what();
    }
    for (const char* given : {"", "a", "[a-z"}) {
        std::string value = given;
        std::string reason;
        EXPECT_EQ(static_cast<int>(Check(setting, value, reason)), RESULT_NEW_VALUE_INVALID);
        EXPECT_EQ(reason, error);
        EXPECT_EQ(value, given);
    }
}

} // namespace
