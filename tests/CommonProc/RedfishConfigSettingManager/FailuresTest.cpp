// What failures carry beside their code: message, setting and log lines, where they could be taken for each other.

#include "support/GlobalLocale.h"
#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

using namespace RedfishConfig;
using namespace RegistryTest;
using testing::ElementsAre;
using testing::Key;

namespace {

RedfishConfigSettingManager ManagerOf(std::string text, const Config_Options& options = {})
{
    return RedfishConfigSettingManager(text, false, options);
}

TEST(Failures, OfASingleSettingNameNoSettingInTheResult)
{
    RegistryBuilder registry;
    registry.Attribute("Odd", "Nonsense").Attribute("A", "String").Rule("A", "Hidden", true, {{"Nowhere", "EQU", 1}});
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());
    std::string answer;
    const std::vector<std::pair<const char*, int>> failures{
        {"Missing", RESULT_SETTING_NOT_FOUND}, {"Odd", RESULT_PROPERTY_INVALID}, {"A", RESULT_INTERNAL_ERROR}};
    for (const auto& [name, code] : failures) {
        const RedfishConfigResult result = manager.QuerySettingValue(name, answer);
        EXPECT_EQ(result, code) << name;
        EXPECT_EQ(result.Setting(), "") << name;
    }
}

TEST(Failures, ToReadTheTextHaveNoMessageAndLogTheReason)
{
    for (const std::string& text : {std::string(R"({"RegistryEntries": {"Attributes": [}})"), std::string("[]")}) {
        std::string reason = "The registry is not a JSON object.";
        try {
            boost::json::parse(text);
        } catch (const std::exception& error) {
            reason = error.what();
        }
        for (const char* name : {"A", ""}) {
            RedfishConfigSettingManager manager = ManagerOf(text);
            const LogCapture log;
            std::string answer;
            const RedfishConfigResult result = manager.QuerySettingValue(name, answer);
            EXPECT_EQ(result, RESULT_HTTP_RESPONSE_PARSE_FAILED);
            EXPECT_EQ(result.ErrorMsg(), "");
            EXPECT_THAT(log.Texts(1), ElementsAre(reason, "Generate expression error.", "Generate setting error.",
                                                  "Parse response and generate setting error."));
        }
    }
}

TEST(Failures, OfRulesThatAreNoListCarryTheStandardMessage)
{
    RedfishConfigSettingManager manager = ManagerOf(R"({"RegistryEntries": {"Attributes": [], "Dependencies": {}}})");
    std::string answer;
    const RedfishConfigResult result = manager.QuerySettingValue("A", answer);
    EXPECT_EQ(result, RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(result.ErrorMsg(), "Fail to parse the HTTP response.");
}

TEST(Failures, ToGenerateAllSettingsEndWithoutAnExitLine)
{
    RedfishConfigSettingManager manager = ManagerOf(R"({"RegistryEntries": {"Attributes": {}}})");
    const LogCapture log;
    std::map<std::string, std::string> values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_TRUE(log.Has(3, "Enter RedfishConfigSettingManager::GenerateAllSetting()"));
    EXPECT_FALSE(log.Has(3, "Exit RedfishConfigSettingManager::GenerateAllSetting()"));
}

TEST(Failures, ForAnEmptyNameAreLoggedLikeThoseForAnUnknownOne)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryBuilder().Attribute("A", "String").Text());
    const LogCapture log;
    std::string answer;
    EXPECT_EQ(manager.QuerySettingValue("", answer), RESULT_SETTING_NOT_FOUND);
    EXPECT_THAT(log.Texts(1), ElementsAre("Unable to find the setting ."));
}

TEST(Failures, OfASingleQueryAreLoggedWithTheNameAsTheCallerSpeltIt)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryBuilder().Attribute("Fan", "String").Text());
    const LogCapture log;
    std::string answer;
    EXPECT_EQ(manager.QuerySettingDefaultValue("fAN", answer), RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(manager.QuerySettingDescription("fAN", answer), RESULT_PROPERTY_NOT_EXIST);
    EXPECT_EQ(manager.QuerySettingValidValues("fAN", answer), RESULT_SUCCEED);
    EXPECT_THAT(log.Texts(1), ElementsAre("The operation on setting Fan fails since it has no default value.",
                                          "Get Setting: fAN default value error.",
                                          "The operation on setting Fan fails since it has no description.",
                                          "Get Setting: fAN description error."));
}

TEST(AllSettings, GoByTheFirstSpellingOfANameThatStandsTwice)
{
    RegistryBuilder registry;
    registry.Attribute("Fan", "String", {{"CurrentValue", "slow"}, {"DefaultValue", "slow"}});
    registry.Attribute("FAN", "String", {{"CurrentValue", "fast"}});
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());

    std::map<std::string, std::string> values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (std::map<std::string, std::string>{{"Fan", "fast"}}));

    EXPECT_EQ(manager.QueryGroupSettingDefaultValues(values), RESULT_GROUP_PARTIAL_FAILURE);
    const std::vector<RedfishConfigResult> errors = manager.GetError();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].Setting(), "Fan");
    EXPECT_EQ(errors[0].ErrorMsg(), "The operation on setting FAN fails since it has no default value.");

    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_THAT(status, ElementsAre(Key("Fan")));
}

TEST(AllSettings, AreLoggedByTheFirstSpellingOfANameThatStandsTwice)
{
    RegistryBuilder registry;
    registry.Attribute("Fan", "String").Attribute("FAN", "String");
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());
    const LogCapture log;
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_EQ(log.Count(4, "Replace the property values in expression for Fan"), 1u);
    EXPECT_EQ(log.Count(4, "Replace the property values in expression for FAN"), 0u);
}

TEST(AllSettings, GiveTheirPropertiesWithoutAnExitLine)
{
    RedfishConfigSettingManager manager = ManagerOf(RegistryBuilder().Attribute("A", "String").Text());
    const LogCapture log;
    std::vector<RedfishConfigSettingInfoStru> properties;
    EXPECT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
    EXPECT_TRUE(log.Has(3, "Enter RedfishConfigSettingManager::GetAllSettingProperties()"));
    EXPECT_FALSE(log.Has(3, "Exit RedfishConfigSettingManager::GetAllSettingProperties()"));
}

TEST(LogLines, ShowNumbersWithoutTheDigitGroupsOfTheGlobalLocale)
{
    const GlobalLocale grouping(GroupingLocale());
    RegistryBuilder registry;
    registry.Attribute("A", "Integer", {{"LowerBound", 10000}, {"UpperBound", 5000}});
    RedfishConfigSettingManager manager = ManagerOf(registry.Text());
    const LogCapture log;
    std::string answer;
    EXPECT_EQ(manager.QuerySettingValidValues("A", answer), RESULT_PROPERTY_INVALID);
    EXPECT_TRUE(log.Has(1, "Setting A bounder is invalid: lower is 10000 upper is 5000"));
    EXPECT_EQ(manager.PreparePatchContext("A", "7000", answer, FILTER_PATCH), RESULT_PROPERTY_INVALID);
    EXPECT_TRUE(log.Has(1, "data logical error: 10000(lower) > 5000(upper)."));
}

} // namespace
