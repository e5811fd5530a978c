#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

using Manager = RedfishConfigSettingManager;
using Texts = std::map<std::string, std::string>;
using Statuses = std::map<std::string, SettingStatus>;

struct SingleQuery {
    std::string name;
    RedfishConfigResult (Manager::*ask)(const std::string&, std::string&);
    int action;
    const char* logSuffix; ///< null for the query that logs nothing of its own
};

const SingleQuery singleQueries[] = {
    {"QuerySettingValue", &Manager::QuerySettingValue, 0, nullptr},
    {"QuerySettingDefaultValue", &Manager::QuerySettingDefaultValue, 2, " default value error."},
    {"QuerySettingDescription", &Manager::QuerySettingDescription, 4, " description error."},
    {"QuerySettingValidValues", &Manager::QuerySettingValidValues, 6, " valid value error."},
};

struct GroupQuery {
    std::string name;
    RedfishConfigResult (Manager::*ask)(Texts&);
    int action;
    const char* logSuffix;
    const char* summary;
};

const GroupQuery groupQueries[] = {
    {"QueryGroupSettingValues", &Manager::QueryGroupSettingValues, 1,
     " valid values error: ", "Fail in get settings valid values."},
    {"QueryGroupSettingDefaultValues", &Manager::QueryGroupSettingDefaultValues, 3,
     " default values error: ", "Fail in get settings default value."},
    {"QueryGroupSettingDescriptions", &Manager::QueryGroupSettingDescriptions, 5,
     " description error: ", "Fail in get settings description."},
    {"QueryGroupSettingValidValues", &Manager::QueryGroupSettingValidValues, 7,
     " valid values error: ", "Fail in get settings valid values."},
};

const std::string unreadable = "no registry";

Manager ManagerOf(std::string registry, const Config_Options& options = {}, SettingValueMap currentValues = {})
{
    return Manager(registry, currentValues, false, options);
}

Manager ManagerOf(const RegistryBuilder& registry, const Config_Options& options = {},
                  const SettingValueMap& currentValues = {})
{
    return ManagerOf(registry.Text(), options, currentValues);
}

/** The members with which a setting of any type answers every question. */
boost::json::object Complete(boost::json::value currentValue, boost::json::value defaultValue)
{
    return {
        {"CurrentValue", std::move(currentValue)}, {"DefaultValue", std::move(defaultValue)}, {"HelpText", "Help."}};
}

boost::json::object With(boost::json::object members, const char* key, boost::json::value value)
{
    members[key] = std::move(value);
    return members;
}

void MakeAll(Manager& manager)
{
    std::vector<RedfishConfigSettingInfoStru> properties;
    ASSERT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
}

std::string Description(const std::string& title, const std::string& help)
{
    return title + "\n\nHelp for " + title + "\n--------------------------\n" + help;
}

/** Code, message and setting of a result. */
struct Report {
    int code;
    std::string message;
    std::string setting;
};

Report ReportOf(const RedfishConfigResult& result)
{
    return {result, result.ErrorMsg(), result.Setting()};
}

bool operator==(const Report& left, const Report& right)
{
    return left.code == right.code && left.message == right.message && left.setting == right.setting;
}

std::ostream& operator<<(std::ostream& out, const Report& report)
{
    return out << report.code << " \"" << report.message << "\" \"" << report.setting << '"';
}

std::vector<Report> ErrorsOf(Manager& manager)
{
    std::vector<Report> reports;
    for (const RedfishConfigResult& error : manager.GetError()) {
        reports.push_back(ReportOf(error));
    }
    return reports;
}

} // namespace

TEST(SingleQueries, AnswerForEveryType)
{
    RegistryBuilder registry;
    registry.Attribute("Text", "String", With(Complete("now", "then"), "MaxLength", 9));
    registry.Attribute("Number", "Integer", With(Complete(31, 16), "UpperBound", 255));
    registry.Attribute("Choice", "Enumeration",
                       With(With(Complete("B", "A"), "DisplayName", "The choice"), "Value",
                            {RegistryBuilder::Choice("A", "First"), RegistryBuilder::Choice("B", "B")}));
    registry.Attribute("Switch", "Boolean", Complete(false, true));
    registry.Attribute("Secret", "Password", With(Complete("", "none"), "MinLength", 8));
    const struct {
        const char* name;
        std::vector<std::string> answers;
        std::vector<std::string> hexadecimal;
    } rows[] = {
        {"Text",
         {"now", "then", Description("Text", "Help."), "String MaxLength=9 "},
         {"now", "then", Description("Text", "Help."), "String MaxLength=9 "}},
        {"Number",
         {"31", "16", Description("Number", "Help."), "Integer UpperBound=255 default=16 "},
         {"0x1f", "0x10", Description("Number", "Help."), "Integer UpperBound=0xff default=0x10 "}},
        {"Choice",
         {"B", "A", Description("The choice", "Help."), "<A>=B\n\t[A] : First"},
         {"B", "A", Description("The choice", "Help."), "<A>=B\n\t[A] : First"}},
        {"Switch",
         {"false", "true", Description("Switch", "Help."), "<true>=false"},
         {"false", "true", Description("Switch", "Help."), "<true>=false"}},
        {"Secret",
         {"", "none", Description("Secret", "Help."), "Password MinLength=8 "},
         {"", "none", Description("Secret", "Help."), "Password MinLength=8 "}},
    };
    for (const auto& row : rows) {
        for (const bool hexadecimal : {false, true}) {
            Config_Options options;
            options.ShowHexValue = hexadecimal;
            std::size_t i = 0;
            for (const SingleQuery& query : singleQueries) {
                Manager manager = ManagerOf(registry, options);
                std::string answer = "before";
                EXPECT_EQ(ReportOf((manager.*query.ask)(row.name, answer)), (Report{RESULT_SUCCEED, "", ""}));
                EXPECT_EQ(answer, hexadecimal ? row.hexadecimal[i] : row.answers[i]) << query.name << ' ' << row.name;
                EXPECT_THAT(manager.GetError(), IsEmpty());
                ++i;
            }
        }
    }
}

TEST(SingleQueries, LogTheirWayToTheSetting)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", Complete("now", "then"));
    for (const SingleQuery& query : singleQueries) {
        Manager manager = ManagerOf(registry);
        MakeAll(manager);
        LogCapture log;
        std::string answer;
        EXPECT_EQ((manager.*query.ask)("a", answer), RESULT_SUCCEED);
        EXPECT_THAT(log.Lines(),
                    ElementsAreArray(std::vector<LogLine>{
                        {3, "Enter RedfishConfigSettingManager::" + query.name + "()"},
                        {3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:a"},
                        {3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"},
                        {4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:A"},
                        {4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=9"},
                        {4, "Replace the property values in expression for A"},
                        {3, "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0"},
                        {4, "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(query.action)},
                        {3, "Exit RedfishConfigSettingManager::" + query.name + "()"},
                    }));
    }
}

TEST(SingleQueries, PassOnWhatTheSettingLacks)
{
    RegistryBuilder registry;
    registry.Attribute("Bare", "Integer", {{"LowerBound", 10}, {"UpperBound", 5}});
    const Report reports[] = {
        {RESULT_PROPERTY_NOT_EXIST, "The operation on setting Bare fails since it has no current value.", ""},
        {RESULT_PROPERTY_NOT_EXIST, "The operation on setting Bare fails since it has no default value.", ""},
        {RESULT_PROPERTY_NOT_EXIST, "The operation on setting Bare fails since it has no description.", ""},
        {RESULT_PROPERTY_INVALID, "", ""},
    };
    const std::vector<std::string> ownLines[] = {
        {},
        {"The operation on setting Bare fails since it has no default value."},
        {"The operation on setting Bare fails since it has no description."},
        {"Setting Bare bounder is invalid: lower is 10 upper is 5"},
    };
    std::size_t i = 0;
    for (const SingleQuery& query : singleQueries) {
        Manager manager = ManagerOf(registry);
        LogCapture log;
        std::string answer = "before";
        EXPECT_EQ(ReportOf((manager.*query.ask)("Bare", answer)), reports[i]) << query.name;
        EXPECT_EQ(answer, "before");
        EXPECT_THAT(manager.GetError(), IsEmpty());

        std::vector<std::string> lines = ownLines[i];
        if (query.logSuffix != nullptr) {
            lines.push_back("Get Setting: Bare" + std::string(query.logSuffix));
            EXPECT_EQ(log.Lines().back(), LogLine(1, lines.back()));
        }
        EXPECT_THAT(log.Texts(1), ElementsAreArray(lines)) << query.name;
        EXPECT_FALSE(log.Has(3, "Exit RedfishConfigSettingManager::" + query.name + "()"));
        ++i;
    }
}

TEST(SingleQueries, RefuseAProtectedSettingUnlessTold)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", With(Complete("now", "then"), "Hidden", true));
    registry.Attribute("Secret", "Password", With(Complete("now", "then"), "Hidden", true));
    for (const SingleQuery& query : singleQueries) {
        Manager manager = ManagerOf(registry);
        std::string answer = "before";
        EXPECT_EQ(
            ReportOf((manager.*query.ask)("A", answer)),
            (Report{RESULT_SHOW_VALUE_FAILED, "The operation on setting A fails since the setting is protected.", ""}));
        const std::string words = query.action == 6 ? "Secret : " : "The operation on setting Secret fails since ";
        EXPECT_EQ(ReportOf((manager.*query.ask)("Secret", answer)),
                  (Report{RESULT_SHOW_VALUE_FAILED, words + "the setting is protected.", ""}))
            << query.name;
        EXPECT_EQ(answer, "before");
        EXPECT_THAT(manager.GetError(), IsEmpty());

        Config_Options options;
        options.IgnoreProtected = true;
        Manager included = ManagerOf(registry, options);
        EXPECT_EQ((included.*query.ask)("A", answer), RESULT_SUCCEED) << query.name;
        EXPECT_NE(answer, "before");
    }
}

TEST(SingleQueries, LogARefusal)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", With(Complete("now", "then"), "Hidden", true));
    const std::string message = "The operation on setting A fails since the setting is protected.";
    for (const SingleQuery& query : singleQueries) {
        Manager manager = ManagerOf(registry);
        MakeAll(manager);
        LogCapture log;
        std::string answer;
        EXPECT_EQ((manager.*query.ask)("A", answer), RESULT_SHOW_VALUE_FAILED);
        std::vector<LogLine> expected = {
            {3, "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0"},
            {4, "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(query.action)},
            {4, "m_ErrMsg:" + message},
        };
        if (query.logSuffix != nullptr) {
            expected.emplace_back(1, "Get Setting: A" + std::string(query.logSuffix));
        }
        std::vector<LogLine> lines = log.Lines();
        ASSERT_GT(lines.size(), expected.size());
        lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(expected.size()));
        EXPECT_THAT(lines, ElementsAreArray(expected)) << query.name;
    }
}

TEST(SingleQueries, KeepTheValueOfAWriteOnlySettingAlone)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", With(Complete("now", "then"), "WriteOnly", true));
    for (const SingleQuery& query : singleQueries) {
        Manager manager = ManagerOf(registry);
        std::string answer = "before";
        const RedfishConfigResult result = (manager.*query.ask)("A", answer);
        if (query.action == 0) {
            EXPECT_EQ(ReportOf(result),
                      (Report{RESULT_SHOW_VALUE_FAILED,
                              "The operation on setting A fails since the setting is write only.", ""}));
        } else {
            EXPECT_EQ(result, RESULT_SUCCEED) << query.name;
        }
    }
}

TEST(SingleQueries, FollowTheRulesOfASetting)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", Complete(true, true));
    registry.Attribute("Mode", "String", {{"CurrentValue", "Open"}});
    registry.Rule("A", "Hidden", true, {Term{"Mode", "EQU", "Closed"}});
    const std::string words = "expression: ((Mode==Closed))";
    const std::string reason = "the setting is hidden due to the following " + words;

    Manager open = ManagerOf(registry);
    std::string answer;
    EXPECT_EQ(open.QuerySettingValue("A", answer), RESULT_SUCCEED);
    EXPECT_EQ(answer, "true");
    EXPECT_EQ(open.QuerySettingValidValues("A", answer), RESULT_SUCCEED);
    EXPECT_EQ(answer, "<true>=false\n\tThe setting is hidden if the result of the following expression is true: "
                      "((Mode==Closed))");

    Manager closed = ManagerOf(registry, {}, {{"Mode", std::string("Closed")}});
    EXPECT_EQ(ReportOf(closed.QuerySettingValue("A", answer)),
              (Report{RESULT_SHOW_VALUE_FAILED, "The operation on setting A fails since " + reason, ""}));
    EXPECT_EQ(closed.QuerySettingDefaultValue("A", answer), RESULT_SUCCEED);
    EXPECT_EQ(closed.QuerySettingDescription("A", answer), RESULT_SUCCEED);
    EXPECT_EQ(closed.QuerySettingValidValues("A", answer), RESULT_SUCCEED);
    EXPECT_EQ(answer, "<true>=false\n\tThe setting is hidden due to the following " + words);
}

TEST(SingleQueries, QuoteTheNameAsTheCallerSpeltIt)
{
    const struct {
        const char* stored;
        const char* asked;
        const char* message;
    } rows[] = {
        {"BootMode", "BootMode", "The operation on setting BootMode fails since it has no "},
        {"BootMode", "bootmode", "The operation on setting bootmode fails since it has no "},
        {"bootmode", "BOOTMODE", "The operation on setting BOOTMODE fails since it has no "},
        // the first place where the name stands is what changes, whatever word it is part of
        {"on", "ON", "The operatiON on setting on fails since it has no "},
        {"e", "E", "ThE operation on setting e fails since it has no "},
        {"setting", "SETTING", "The operation on SETTING setting fails since it has no "},
        {"The", "THE", "THE operation on setting The fails since it has no "},
    };
    const char* lacks[] = {"current value.", "default value.", "description."};
    for (const auto& row : rows) {
        RegistryBuilder registry;
        registry.Attribute(row.stored, "String");
        Manager manager = ManagerOf(registry);
        for (std::size_t i = 0; i < 3; ++i) {
            const SingleQuery& query = singleQueries[i];
            std::string answer;
            const RedfishConfigResult result = (manager.*query.ask)(row.asked, answer);
            EXPECT_EQ(result, RESULT_PROPERTY_NOT_EXIST);
            EXPECT_EQ(result.ErrorMsg(), std::string(row.message) + lacks[i]) << query.name;
        }
    }
    RegistryBuilder registry;
    registry.Attribute("Text", "String", {{"Hidden", true}});
    registry.Attribute("Secret", "Password", {{"Hidden", true}});
    Manager manager = ManagerOf(registry);
    std::string answer;
    EXPECT_EQ(manager.QuerySettingValidValues("TEXT", answer).ErrorMsg(),
              "The operation on setting TEXT fails since the setting is protected.");
    EXPECT_EQ(manager.QuerySettingValidValues("SECRET", answer).ErrorMsg(), "SECRET : the setting is protected.");
}

TEST(SingleQueries, AnswerAnUnknownName)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", Complete("now", "then"));
    for (const SingleQuery& query : singleQueries) {
        for (const char* name : {"Missing", ""}) {
            Manager manager = ManagerOf(registry);
            LogCapture log;
            std::string answer = "before";
            const RedfishConfigResult result = (manager.*query.ask)(name, answer);
            const std::string message = "Unable to find the setting " + std::string(name) + ".";
            EXPECT_EQ(result, RESULT_SETTING_NOT_FOUND);
            EXPECT_EQ(result.ErrorMsg(), message);
            EXPECT_EQ(answer, "before");
            EXPECT_FALSE(log.Has(3, "Exit RedfishConfigSettingManager::" + query.name + "()"));
            EXPECT_THAT(manager.GetError(), IsEmpty());
            if (*name != '\0') {
                EXPECT_THAT(log.Texts(1),
                            ElementsAre("Not find the setting: Missing from schema.",
                                        "Failed in creating setting: Missing", message, "Generate setting error.",
                                        "Parse response and generate setting error."));
            }
        }
    }
}

TEST(SingleQueries, ReturnAFailedGenerationAsItIs)
{
    RegistryBuilder registry;
    registry.Attribute("Odd", "Float");
    registry.Attribute("A", "String", Complete("now", "then"));
    registry.Rule("A", "ReadOnly", true, {Term{"Gone", "EQU", "x"}});
    const struct {
        std::string text;
        const char* name;
        int code;
    } rows[] = {
        {registry.Text(), "Odd", RESULT_PROPERTY_INVALID},
        {registry.Text(), "a", RESULT_INTERNAL_ERROR},
        {unreadable, "A", RESULT_HTTP_RESPONSE_PARSE_FAILED},
    };
    for (const SingleQuery& query : singleQueries) {
        for (const auto& row : rows) {
            Manager manager = ManagerOf(row.text);
            LogCapture log;
            std::string answer = "before";
            EXPECT_EQ((manager.*query.ask)(row.name, answer), row.code) << query.name;
            EXPECT_EQ(answer, "before");
            EXPECT_EQ(log.Lines().front(), LogLine(3, "Enter RedfishConfigSettingManager::" + query.name + "()"));
            EXPECT_EQ(log.Lines().back(), LogLine(1, "Parse response and generate setting error."));
            EXPECT_FALSE(log.Has(3, "Exit RedfishConfigSettingManager::" + query.name + "()"));
            EXPECT_THAT(manager.GetError(), IsEmpty());
        }
    }
}

TEST(GroupQueries, AnswerForEverySetting)
{
    RegistryBuilder registry;
    registry.Attribute("b", "Integer", Complete(2, 4));
    registry.Attribute("A", "Boolean", Complete(true, false));
    registry.Attribute("C", "String", With(Complete("now", "then"), "DisplayName", "Gamma"));
    const Texts answers[] = {
        {{"A", "true"}, {"C", "now"}, {"b", "2"}},
        {{"A", "false"}, {"C", "then"}, {"b", "4"}},
        {{"A", Description("A", "Help.")}, {"C", Description("Gamma", "Help.")}, {"b", Description("b", "Help.")}},
        {{"A", "<false>=true"}, {"C", "String "}, {"b", "Integer default=4 "}},
    };
    Manager once = ManagerOf(registry);
    std::size_t i = 0;
    for (const GroupQuery& query : groupQueries) {
        Manager fresh = ManagerOf(registry);
        for (Manager* manager : {&fresh, &once}) {
            Texts output{{"b", "overwritten"}, {"Stranger", "goes"}};
            EXPECT_EQ(ReportOf((manager->*query.ask)(output)), (Report{RESULT_SUCCEED, "", ""})) << query.name;
            EXPECT_EQ(output, answers[i]) << query.name;
            EXPECT_THAT(manager->GetError(), IsEmpty());
        }
        ++i;
    }
}

TEST(GroupQueries, LogTheirWayThroughTheSettings)
{
    RegistryBuilder registry;
    registry.Attribute("beta", "String", Complete("now", "then"));
    registry.Attribute("Alpha", "String", With(Complete("now", "then"), "Hidden", true));
    registry.Attribute("GAMMA", "String", Complete("now", "then"));
    const std::string message = "The operation on setting Alpha fails since the setting is protected.";
    for (const GroupQuery& query : groupQueries) {
        Manager manager = ManagerOf(registry);
        MakeAll(manager);
        LogCapture log;
        Texts output;
        EXPECT_EQ((manager.*query.ask)(output), RESULT_GROUP_PARTIAL_FAILURE);
        const LogLine filter(4,
                             "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(query.action));
        const std::string enterMap = "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:";
        const LogLine exitMap(4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=9");
        EXPECT_THAT(log.Lines(),
                    ElementsAreArray(std::vector<LogLine>{
                        {3, "Enter RedfishConfigSettingManager::" + query.name + "()"},
                        {3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:"},
                        {3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName="},
                        {3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()"},
                        {3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()"},
                        {4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=0"},
                        {3, "Enter RedfishConfigSettingManager::GenerateAllSetting()"},
                        {3, "Enter RedfishConfigSettingManager::UpdateSettingValue()"},
                        {4, enterMap + "Alpha"},
                        exitMap,
                        {4, enterMap + "beta"},
                        exitMap,
                        {4, enterMap + "GAMMA"},
                        exitMap,
                        {4, "Replace the property values in expression for Alpha"},
                        {4, "Replace the property values in expression for beta"},
                        {4, "Replace the property values in expression for GAMMA"},
                        {3, "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0"},
                        filter,
                        {4, "m_ErrMsg:" + message},
                        {1, "Get Setting: Alpha" + std::string(query.logSuffix)},
                        filter,
                        filter,
                        {3, "Exit RedfishConfigSettingManager::" + query.name + "()"},
                    }))
            << query.name;
    }
}

TEST(GroupQueries, CollectTheFailuresOfSingleSettings)
{
    RegistryBuilder registry;
    registry.Attribute("bare", "Integer", {{"LowerBound", 10}, {"UpperBound", 5}});
    registry.Attribute("Shielded", "String", With(Complete("now", "then"), "Hidden", true));
    registry.Attribute("Alright", "String", Complete("now", "then"));
    registry.Attribute("Masked", "Password", With(Complete("now", "then"), "Hidden", true));
    const std::string opening = "The operation on setting ";
    const std::string isProtected = "the setting is protected.";
    const Report bare[] = {
        {RESULT_PROPERTY_NOT_EXIST, opening + "bare fails since it has no current value.", "bare"},
        {RESULT_PROPERTY_NOT_EXIST, opening + "bare fails since it has no default value.", "bare"},
        {RESULT_PROPERTY_NOT_EXIST, opening + "bare fails since it has no description.", "bare"},
        {RESULT_PROPERTY_INVALID, "", "bare"},
    };
    std::size_t i = 0;
    for (const GroupQuery& query : groupQueries) {
        Manager manager = ManagerOf(registry);
        LogCapture log;
        Texts output{{"bare", "goes"}};
        EXPECT_EQ(ReportOf((manager.*query.ask)(output)), (Report{RESULT_GROUP_PARTIAL_FAILURE, query.summary, ""}));
        ASSERT_EQ(output.size(), 1u) << query.name;
        EXPECT_EQ(output.begin()->first, "Alright");

        const std::string masked = query.action == 7 ? "Masked : " : opening + "Masked fails since ";
        EXPECT_THAT(
            ErrorsOf(manager),
            ElementsAre(bare[i], Report{RESULT_SHOW_VALUE_FAILED, masked + isProtected, "Masked"},
                        Report{RESULT_SHOW_VALUE_FAILED, opening + "Shielded fails since " + isProtected, "Shielded"}))
            << query.name;
        EXPECT_THAT(manager.GetError(), IsEmpty());

        std::vector<std::string> lines;
        for (const std::string& text : log.Texts(1)) {
            if (text.rfind("Get Setting: ", 0) == 0) {
                lines.push_back(text);
            }
        }
        const std::string suffix = query.logSuffix;
        EXPECT_THAT(lines, ElementsAre("Get Setting: bare" + suffix, "Get Setting: Masked" + suffix,
                                       "Get Setting: Shielded" + suffix));
        ++i;
    }
}

TEST(GroupQueries, PileUpFailuresUntilTheyAreAskedFor)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", With(Complete("now", "then"), "Hidden", true));
    Manager manager = ManagerOf(registry);
    Texts output;
    std::string answer;
    for (const GroupQuery& query : groupQueries) {
        EXPECT_EQ((manager.*query.ask)(output), RESULT_GROUP_PARTIAL_FAILURE);
        EXPECT_THAT(output, IsEmpty());
    }
    EXPECT_EQ(manager.QuerySettingValue("A", answer), RESULT_SHOW_VALUE_FAILED);
    EXPECT_EQ(manager.GetError().size(), 4u);
    EXPECT_THAT(manager.GetError(), IsEmpty());
}

TEST(GroupQueries, ExcludeProtectedSettingsWhateverTheOptionsSay)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", With(Complete("now", "then"), "Hidden", true));
    Config_Options options;
    options.IgnoreProtected = true;
    Manager manager = ManagerOf(registry, options);
    Texts output;
    for (const GroupQuery& query : groupQueries) {
        EXPECT_EQ((manager.*query.ask)(output), RESULT_GROUP_PARTIAL_FAILURE) << query.name;
        EXPECT_THAT(output, IsEmpty());
    }
}

TEST(GroupQueries, ExcludeWriteOnlyAndHiddenSettingsFromTheValuesAlone)
{
    RegistryBuilder registry;
    registry.Attribute("Plain", "String", Complete("open", "then"));
    registry.Attribute("Veiled", "String", Complete("now", "then"));
    registry.Attribute("Writable", "String", With(Complete("now", "then"), "WriteOnly", true));
    registry.Rule("Veiled", "Hidden", true, {Term{"Plain", "EQU", "open"}});
    Manager manager = ManagerOf(registry);
    for (const GroupQuery& query : groupQueries) {
        Texts output;
        const RedfishConfigResult result = (manager.*query.ask)(output);
        if (query.action == 1) {
            EXPECT_EQ(result, RESULT_GROUP_PARTIAL_FAILURE);
            EXPECT_EQ(output, (Texts{{"Plain", "open"}}));
            EXPECT_THAT(
                ErrorsOf(manager),
                ElementsAre(Report{RESULT_SHOW_VALUE_FAILED,
                                   "The operation on setting Veiled fails since the setting is hidden due to the "
                                   "following expression: ((Plain==open))",
                                   "Veiled"},
                            Report{RESULT_SHOW_VALUE_FAILED,
                                   "The operation on setting Writable fails since the setting is write only.",
                                   "Writable"}));
        } else {
            EXPECT_EQ(result, RESULT_SUCCEED) << query.name;
            EXPECT_EQ(output.size(), 3u);
        }
    }
}

TEST(GroupQueries, ShowNumbersInHexadecimalWhereAsked)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer", Complete(255, 16));
    Config_Options options;
    options.ShowHexValue = true;
    Manager manager = ManagerOf(registry, options);
    Texts output;
    EXPECT_EQ(manager.QueryGroupSettingValues(output), RESULT_SUCCEED);
    EXPECT_EQ(output, (Texts{{"A", "0xff"}}));
    EXPECT_EQ(manager.QueryGroupSettingDefaultValues(output), RESULT_SUCCEED);
    EXPECT_EQ(output, (Texts{{"A", "0x10"}}));
    EXPECT_EQ(manager.QueryGroupSettingValidValues(output), RESULT_SUCCEED);
    EXPECT_EQ(output, (Texts{{"A", "Integer default=0x10 "}}));
}

TEST(GroupQueries, ReturnAFailedGenerationAsItIs)
{
    for (const GroupQuery& query : groupQueries) {
        Manager manager = ManagerOf(unreadable);
        LogCapture log;
        Texts output{{"before", "stays"}};
        EXPECT_EQ((manager.*query.ask)(output), RESULT_HTTP_RESPONSE_PARSE_FAILED);
        EXPECT_EQ(output, (Texts{{"before", "stays"}})) << "emptied only once the settings are at hand";
        EXPECT_EQ(log.Lines().front(), LogLine(3, "Enter RedfishConfigSettingManager::" + query.name + "()"));
        EXPECT_EQ(log.Lines().back(), LogLine(1, "Parse response and generate setting error."));
        EXPECT_THAT(manager.GetError(), IsEmpty());
    }
}

TEST(GroupQueries, AgreeWithSingleOnes)
{
    RegistryBuilder registry;
    registry.Attribute("Bare", "Integer", {{"LowerBound", 10}, {"UpperBound", 5}});
    registry.Attribute("Text", "String", Complete("now", "then"));
    registry.Attribute("Number", "Integer", Complete(31, 16));
    registry.Attribute("Shielded", "String", With(Complete("now", "then"), "Hidden", true));
    registry.Attribute("Secret", "Password", With(Complete("now", "then"), "WriteOnly", true));
    registry.Rule("Text", "Hidden", true, {Term{"Number", "EQU", 31}});
    Manager manager = ManagerOf(registry);
    for (std::size_t i = 0; i < 4; ++i) {
        Texts output;
        (manager.*groupQueries[i].ask)(output);
        std::map<std::string, Report> failures;
        for (const Report& error : ErrorsOf(manager)) {
            failures[error.setting] = error;
        }
        for (const char* name : {"Bare", "Text", "Number", "Shielded", "Secret"}) {
            std::string answer;
            const RedfishConfigResult result = (manager.*singleQueries[i].ask)(name, answer);
            if (result == RESULT_SUCCEED) {
                ASSERT_EQ(output.count(name), 1u) << groupQueries[i].name << ' ' << name;
                EXPECT_EQ(output[name], answer);
            } else {
                ASSERT_EQ(failures.count(name), 1u) << groupQueries[i].name << ' ' << name;
                EXPECT_EQ(failures[name].code, static_cast<int>(result));
                EXPECT_EQ(failures[name].message, result.ErrorMsg());
            }
        }
        EXPECT_EQ(output.size() + failures.size(), 5u);
    }
}

TEST(StatusQueries, TellTheRegistrysFlags)
{
    const struct {
        const char* flag;
        PropertyState SettingStatus::*state;
        const char* reason;
    } rows[] = {
        {"ReadOnly", &SettingStatus::ReadOnly, "the setting is read only."},
        {"WriteOnly", &SettingStatus::WriteOnly, "the setting is write only."},
        {"Hidden", &SettingStatus::Protected, "the setting is protected."},
        {"GrayOut", &SettingStatus::GrayOut, "the setting is grayout."},
        {"Immutable", &SettingStatus::Immutable, "the setting is immutable."},
        {"IsSystemUniqueProperty", &SettingStatus::SystemUnique, "the setting is system unique."},
    };
    PropertyState SettingStatus::*const states[] = {
        &SettingStatus::ReadOnly,  &SettingStatus::WriteOnly,    &SettingStatus::Hidden,   &SettingStatus::GrayOut,
        &SettingStatus::Immutable, &SettingStatus::SystemUnique, &SettingStatus::Protected};
    for (const auto& row : rows) {
        RegistryBuilder registry;
        registry.Attribute("A", "String", {{row.flag, true}});
        Manager manager = ManagerOf(registry);
        SettingStatus status;
        EXPECT_EQ(ReportOf(manager.QuerySettingStatus("a", status)), (Report{RESULT_SUCCEED, "", ""}));
        Statuses statuses;
        EXPECT_EQ(ReportOf(manager.QueryGroupSettingStatus(statuses)), (Report{RESULT_SUCCEED, "", ""}));
        ASSERT_EQ(statuses.count("A"), 1u);
        for (PropertyState SettingStatus::*const state : states) {
            const bool set = state == row.state;
            EXPECT_EQ((status.*state).Value, set) << row.flag;
            EXPECT_EQ((status.*state).Reason, set ? row.reason : "") << row.flag;
            EXPECT_EQ((statuses["A"].*state).Value, set) << row.flag;
            EXPECT_EQ((statuses["A"].*state).Reason, set ? row.reason : "") << row.flag;
        }
    }
}

TEST(StatusQueries, FollowTheRules)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String");
    registry.Attribute("Mode", "String", {{"CurrentValue", "Open"}});
    registry.Rule("A", "Hidden", true, {Term{"Mode", "EQU", "Closed"}});
    registry.Rule("A", "ReadOnly", true, {Term{"Mode", "NEQ", "Closed"}});
    registry.Rule("A", "GrayOut", "true", {Term{"Mode", "EQU", "Open"}});

    Manager open = ManagerOf(registry);
    SettingStatus status;
    EXPECT_EQ(open.QuerySettingStatus("A", status), RESULT_SUCCEED);
    EXPECT_FALSE(status.Hidden.Value);
    EXPECT_EQ(status.Hidden.Reason,
              "the setting is hidden if the result of the following expression is true: ((Mode==Closed))");
    EXPECT_TRUE(status.ReadOnly.Value);
    EXPECT_EQ(status.ReadOnly.Reason, "the setting is read only due to the following expression: ((Mode!=Closed))");
    EXPECT_TRUE(status.GrayOut.Value);
    EXPECT_EQ(status.GrayOut.Reason, "the setting is grayout due to BMC data error.");
    EXPECT_FALSE(status.Protected.Value);

    Manager closed = ManagerOf(registry, {}, {{"MODE", std::string("Closed")}});
    Statuses statuses;
    EXPECT_EQ(closed.QueryGroupSettingStatus(statuses), RESULT_SUCCEED);
    ASSERT_EQ(statuses.size(), 2u);
    EXPECT_TRUE(statuses["A"].Hidden.Value);
    EXPECT_EQ(statuses["A"].Hidden.Reason, "the setting is hidden due to the following expression: ((Mode==Closed))");
    EXPECT_FALSE(statuses["A"].ReadOnly.Value);
    EXPECT_FALSE(statuses["Mode"].Hidden.Value);
    EXPECT_EQ(statuses["Mode"].Hidden.Reason, "");
}

TEST(StatusQueries, FilterNothingOut)
{
    RegistryBuilder registry;
    registry.Attribute("Shielded", "Password", {{"Hidden", true}, {"WriteOnly", true}});
    registry.Attribute("Bare", "Integer", {{"LowerBound", 10}, {"UpperBound", 5}});
    Manager manager = ManagerOf(registry);
    Statuses statuses{{"Stranger", {}}};
    EXPECT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_SUCCEED);
    EXPECT_EQ(statuses.size(), 2u);
    EXPECT_EQ(statuses.count("Stranger"), 0u);
    EXPECT_TRUE(statuses["Shielded"].Protected.Value);
    EXPECT_TRUE(statuses["Shielded"].WriteOnly.Value);
    EXPECT_THAT(manager.GetError(), IsEmpty());
    SettingStatus status;
    EXPECT_EQ(manager.QuerySettingStatus("Shielded", status), RESULT_SUCCEED);
    EXPECT_TRUE(status.Protected.Value);
}

TEST(StatusQueries, ReplaceWhatTheStatusHeld)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String");
    Manager manager = ManagerOf(registry);
    SettingStatus status;
    status.ReadOnly = {true, "stale"};
    status.Protected = {true, "stale"};
    EXPECT_EQ(manager.QuerySettingStatus("A", status), RESULT_SUCCEED);
    EXPECT_FALSE(status.ReadOnly.Value);
    EXPECT_EQ(status.ReadOnly.Reason, "");
    EXPECT_FALSE(status.Protected.Value);
    EXPECT_EQ(status.Protected.Reason, "");
}

TEST(StatusQueries, RunTheGenerationLikeEveryQuery)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "x"}});
    {
        Manager manager = ManagerOf(registry, {}, {{"A", std::string("caller")}});
        LogCapture log(3);
        SettingStatus status;
        EXPECT_EQ(manager.QuerySettingStatus("A", status), RESULT_SUCCEED);
        EXPECT_THAT(log.Texts(3),
                    ElementsAre("Enter RedfishConfigSettingManager::QuerySettingStatus()",
                                "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:A",
                                "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=A",
                                "Enter RedfishConfigExpression::ParseSingleSettingDependency()",
                                "Exit RedfishConfigExpression::ParseSingleSettingDependency()",
                                "Enter RedfishConfigSettingManager::GenerateSpecifySetting()",
                                "Exit RedfishConfigSettingManager::GenerateSpecifySetting()",
                                "Enter RedfishConfigSettingManager::UpdateSettingValue()",
                                "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0",
                                "Exit RedfishConfigSettingManager::QuerySettingStatus()"));
        RedfishConfigSettingInfoStru record;
        EXPECT_EQ(manager.GetSettingProperties("A", record), RESULT_SUCCEED);
        EXPECT_EQ(record.CurrentValue, SettingValue(std::string("caller")));
    }
    Manager manager = ManagerOf(registry);
    LogCapture log(3);
    Statuses statuses;
    EXPECT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_SUCCEED);
    EXPECT_THAT(log.Texts(3),
                ElementsAre("Enter RedfishConfigSettingManager::QueryGroupSettingStatus()",
                            "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:",
                            "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=",
                            "Enter RedfishConfigExpression::ParseAllSettingsDependency()",
                            "Exit RedfishConfigExpression::ParseAllSettingsDependency()",
                            "Enter RedfishConfigSettingManager::GenerateAllSetting()",
                            "Exit RedfishConfigSettingManager::GenerateAllSetting()",
                            "Enter RedfishConfigSettingManager::UpdateSettingValue()",
                            "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0",
                            "Exit RedfishConfigSettingManager::QueryGroupSettingStatus()"));
}

TEST(StatusQueries, ReturnAFailedGenerationAsItIs)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Float");
    const struct {
        std::string text;
        const char* name;
        Report report;
    } rows[] = {
        {registry.Text(), "Missing", {RESULT_SETTING_NOT_FOUND, "Unable to find the setting Missing.", ""}},
        {registry.Text(), "A", {RESULT_PROPERTY_INVALID, "", ""}},
    };
    for (const auto& row : rows) {
        Manager manager = ManagerOf(row.text);
        LogCapture log;
        SettingStatus status;
        status.Hidden = {true, "stays"};
        const RedfishConfigResult result = manager.QuerySettingStatus(row.name, status);
        EXPECT_EQ(result, row.report.code);
        EXPECT_EQ(result.ErrorMsg(), row.report.message);
        EXPECT_EQ(status.Hidden.Reason, "stays");
        EXPECT_EQ(log.Lines().back(), LogLine(1, "Parse response and generate setting error."));
    }
    Manager manager = ManagerOf(unreadable);
    Statuses statuses{{"before", {}}};
    EXPECT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(statuses.count("before"), 1u);
    EXPECT_THAT(manager.GetError(), IsEmpty());
}
