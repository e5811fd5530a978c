#include <RedfishConfig/RedfishConfigResult.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace RedfishConfig;

namespace {

struct CodeRow {
    int Number;
    ResultCode Code;
    std::string Message;
};

const std::vector<CodeRow>& Codes()
{
    static const std::vector<CodeRow> rows{
        {0, RESULT_SUCCEED, "Succeed."},
        {1, RESULT_REBOOT_REQUIRED, "System reboot is required for the new value to take effect."},
        {2, RESULT_NO_PENDING_VALUES, "There are no pending values on the current system."},
        {3, RESULT_BMC_ACCOUNT_CREATED, "BMC account is created successfully."},
        {4, RESULT_PASSWORD_CHANGED, "Password has been changed successfully"},
        {5, RESULT_SUCCEED_WITH_NOTIFY, "Succeed with notify."},
        {6, RESULT_RUN_COMMAND_FAILED, "Fail to run command."},
        {7, RESULT_GROUP_PARTIAL_FAILURE, "One or more setting fails on all group command process."},
        {8, RESULT_PROPERTY_INVALID, "The property is invalid."},
        {9, RESULT_PROPERTY_NOT_EXIST, "The property does not exist."},
        {10, RESULT_NEW_VALUE_INVALID, "New value of the setting is invalid."},
        {11, RESULT_NOT_SUPPORTED, "Redfish config does not support this function."},
        {13, RESULT_INTERNAL_ERROR, "Redfish config internal error."},
        {15, RESULT_EXTERNAL_ERROR, "Redfish config external error."},
        {16, RESULT_PARAMETER_INVALID, "Parameter invalid."},
        {17, RESULT_CONFIG_FILE_PARSE_FAILED, "Fail to parse configuration file"},
        {18, RESULT_CHANGE_SETTING_FAILED, "Fail to change the setting to new value."},
        {19, RESULT_SHOW_VALUE_FAILED, "Fail to show setting value."},
        {20, RESULT_SETTING_NOT_FOUND, "Could not find the setting."},
        {21, RESULT_DEFAULT_VALUE_EMPTY, "The default value of the setting is empty."},
        {22, RESULT_DATA_INCOMPLETE, "The data is not complete."},
        {24, RESULT_CONNECTION_UNUSABLE, "Current connection could not be used."},
        {25, RESULT_EXPRESSION_GENERATION_FAILED, "Fail to generate the dependency expression of the setting."},
        {26, RESULT_QUERY_SETTING_FAILED, "Fail to query the setting."},
        {27, RESULT_HTTP_RESPONSE_PARSE_FAILED, "Fail to parse the HTTP response."},
        {28, RESULT_REDFISH_ACTION_FAILED, "Fail in Redfish action."},
        {29, RESULT_CERT_TEMPLATE_PARSE_FAILED, "Fail to parse the template file to generate the certificate."},
        {30, RESULT_CERT_TEMPLATE_VALUE_INVALID, "Some values are invalid in the template file for the certificate."},
        {31, RESULT_CERT_NOT_EXIST, "The certificate does not exist."},
        {32, RESULT_BMC_INTERNAL_ERROR, "BMC Internal error."},
        {33, RESULT_BMC_NOT_READY, "BMC is not ready."},
        {34, RESULT_SETTING_FILTERED, "The setting is filtered."},
        {38, RESULT_OPEN_FILE_FAILED, "Failed to open file."},
    };
    return rows;
}

void ExpectResult(const RedfishConfigResult& result, int code, const std::string& message, const std::string& setting)
{
    EXPECT_EQ(static_cast<int>(result), code);
    EXPECT_EQ(result.ErrorMsg(), message);
    EXPECT_EQ(result.Setting(), setting);
}

// Read before main(): a caller's own static objects may ask for messages too.
const std::string messageAtLoadTime = ResultMessages().at(RESULT_OPEN_FILE_FAILED);

} // namespace

TEST(ResultCode, HasItsFixedNumber)
{
    static_assert(std::is_same_v<std::underlying_type_t<ResultCode>, int>);
    static_assert(std::is_convertible_v<ResultCode, int>, "unscoped, so that a code is a number");
    for (const CodeRow& row : Codes()) {
        EXPECT_EQ(static_cast<int>(row.Code), row.Number) << row.Message;
    }
}

TEST(ResultMessages, HoldsEveryCodeWithItsMessageInAscendingOrder)
{
    std::vector<std::pair<int, std::string>> expected;
    for (const CodeRow& row : Codes()) {
        expected.emplace_back(row.Number, row.Message);
    }
    ASSERT_TRUE(std::is_sorted(expected.begin(), expected.end()));
    const std::map<int, std::string>& messages = ResultMessages();
    EXPECT_EQ((std::vector<std::pair<int, std::string>>(messages.begin(), messages.end())), expected);
}

TEST(ResultMessages, HasNothingForTheNumbersThatAreNoCodes)
{
    for (const int number : {-1, 12, 14, 23, 35, 36, 37, 39}) {
        EXPECT_EQ(ResultMessages().count(number), 0u) << number;
    }
}

TEST(ResultMessages, IsOneReadOnlyTableThatStaticObjectsMayUse)
{
    static_assert(std::is_same_v<decltype(ResultMessages()), const std::map<int, std::string>&>);
    EXPECT_EQ(&ResultMessages(), &ResultMessages());
    EXPECT_EQ(messageAtLoadTime, "Failed to open file.");
}

TEST(RedfishConfigResult, IsASuccessWithoutWordsByDefault)
{
    ExpectResult(RedfishConfigResult(), 0, "", "");
}

TEST(RedfishConfigResult, IsMadeOfCodeMessageAndSetting)
{
    ExpectResult(RedfishConfigResult(RESULT_NEW_VALUE_INVALID, "too long", "AssetTag"), 10, "too long", "AssetTag");
    ExpectResult(RedfishConfigResult(RESULT_NEW_VALUE_INVALID, "too long"), 10, "too long", "");
    ExpectResult(RedfishConfigResult(RESULT_NEW_VALUE_INVALID), 10, "", "");
    ExpectResult(RedfishConfigResult(99, "a code of another component"), 99, "a code of another component", "");
}

TEST(RedfishConfigResult, IsACodeWhereACodeIsReturned)
{
    const auto answer = []() -> RedfishConfigResult { return RESULT_SETTING_FILTERED; };
    ExpectResult(answer(), 34, "", "");
}

TEST(RedfishConfigResult, CopiesAllOfIt)
{
    RedfishConfigResult original(RESULT_SHOW_VALUE_FAILED, "hidden", "BootMode");
    const RedfishConfigResult copy = original;
    RedfishConfigResult assigned(RESULT_PROPERTY_INVALID, "old", "Old");
    assigned = original;
    original.SetErrorMsg("changed");
    original.SetSetting("Changed");
    ExpectResult(copy, 19, "hidden", "BootMode");
    ExpectResult(assigned, 19, "hidden", "BootMode");
}

TEST(RedfishConfigResult, AssignedACodeLosesMessageAndSetting)
{
    RedfishConfigResult result(RESULT_SHOW_VALUE_FAILED, "hidden", "BootMode");
    RedfishConfigResult& answer = (result = RESULT_SETTING_NOT_FOUND);
    EXPECT_EQ(&answer, &result);
    ExpectResult(result, 20, "", "");
    result.SetErrorMsg("words");
    result = RESULT_SUCCEED;
    ExpectResult(result, 0, "", "");
    result = 99;
    ExpectResult(result, 99, "", "");
}

TEST(RedfishConfigResult, ComparesItsCodeAlone)
{
    for (const CodeRow& row : Codes()) {
        const RedfishConfigResult result(row.Number, "message", "setting");
        for (const CodeRow& other : Codes()) {
            EXPECT_EQ(result == other.Code, row.Number == other.Number) << row.Number << " " << other.Number;
            EXPECT_EQ(result != other.Code, row.Number != other.Number) << row.Number << " " << other.Number;
            EXPECT_EQ(result == other.Number, row.Number == other.Number) << row.Number << " " << other.Number;
        }
        const int code = result;
        EXPECT_EQ(code, row.Number);
    }
}

TEST(RedfishConfigResult, SetsMessageAndSettingWithoutTouchingTheRest)
{
    RedfishConfigResult result(RESULT_PROPERTY_INVALID, "old", "Old");
    result.SetErrorMsg("new");
    ExpectResult(result, 8, "new", "Old");
    result.SetSetting("New");
    ExpectResult(result, 8, "new", "New");
    result.SetErrorMsg("");
    result.SetSetting("");
    ExpectResult(result, 8, "", "");
}

TEST(RedfishConfigResult, NeverPutsTheStandardMessageInPlaceOfAnEmptyOne)
{
    for (const CodeRow& row : Codes()) {
        EXPECT_EQ(RedfishConfigResult(row.Number).ErrorMsg(), "") << row.Number;
    }
}

TEST(RedfishConfigResult, CombinedAsASuccessBecomesACopyOfTheRightOne)
{
    for (const RedfishConfigResult& right :
         {RedfishConfigResult(RESULT_SHOW_VALUE_FAILED, "hidden", "BootMode"), RedfishConfigResult(RESULT_SUCCEED),
          RedfishConfigResult(RESULT_SUCCEED, "done", "Retries")}) {
        RedfishConfigResult left(RESULT_SUCCEED, "words of the left", "Left");
        RedfishConfigResult& answer = (left | right);
        EXPECT_EQ(&answer, &left);
        ExpectResult(left, right, right.ErrorMsg(), right.Setting());
    }
}

TEST(RedfishConfigResult, CombinedAsAFailureStaysAsItIs)
{
    for (const RedfishConfigResult& right :
         {RedfishConfigResult(RESULT_SHOW_VALUE_FAILED, "hidden", "BootMode"), RedfishConfigResult(RESULT_SUCCEED),
          RedfishConfigResult(RESULT_PROPERTY_INVALID, "other words", "Retries")}) {
        RedfishConfigResult left(RESULT_PROPERTY_INVALID, "no name", "Left");
        RedfishConfigResult& answer = (left | right);
        EXPECT_EQ(&answer, &left);
        ExpectResult(left, RESULT_PROPERTY_INVALID, "no name", "Left");
    }
}

TEST(RedfishConfigResult, CombinedOverAGroupKeepsTheFirstFailure)
{
    RedfishConfigResult overall;
    const RedfishConfigResult fine;
    const RedfishConfigResult first(RESULT_PROPERTY_NOT_EXIST, "no value", "First");
    const RedfishConfigResult second(RESULT_SHOW_VALUE_FAILED, "hidden", "Second");
    overall | fine | first | fine | second;
    ExpectResult(overall, 9, "no value", "First");
    ExpectResult(fine, 0, "", "");
    ExpectResult(second, 19, "hidden", "Second");
}

TEST(RedfishConfigResult, CombinedWithItselfStaysAsItIs)
{
    RedfishConfigResult success(RESULT_SUCCEED, "done", "Retries");
    success | success;
    ExpectResult(success, 0, "done", "Retries");
    RedfishConfigResult failure(RESULT_PROPERTY_INVALID, "no name", "Retries");
    failure | failure;
    ExpectResult(failure, 8, "no name", "Retries");
}
