#include <RedfishConfig/RedfishConfigResult.h>

#include <utility>

namespace RedfishConfig {

const std::map<int, std::string>& ResultMessages()
{
    // The texts are kept as they are, the missing full stops of two of them included.
    static const std::map<int, std::string> messages{
        {RESULT_SUCCEED, "Succeed."},
        {RESULT_REBOOT_REQUIRED, "System reboot is required for the new value to take effect."},
        {RESULT_NO_PENDING_VALUES, "There are no pending values on the current system."},
        {RESULT_BMC_ACCOUNT_CREATED, "BMC account is created successfully."},
        {RESULT_PASSWORD_CHANGED, "Password has been changed successfully"},
        {RESULT_SUCCEED_WITH_NOTIFY, "Succeed with notify."},
        {RESULT_RUN_COMMAND_FAILED, "Fail to run command."},
        {RESULT_GROUP_PARTIAL_FAILURE, "One or more setting fails on all group command process."},
        {RESULT_PROPERTY_INVALID, "The property is invalid."},
        {RESULT_PROPERTY_NOT_EXIST, "The property does not exist."},
        {RESULT_NEW_VALUE_INVALID, "New value of the setting is invalid."},
        {RESULT_NOT_SUPPORTED, "Redfish config does not support this function."},
        {RESULT_INTERNAL_ERROR, "Redfish config internal error."},
        {RESULT_EXTERNAL_ERROR, "Redfish config external error."},
        {RESULT_PARAMETER_INVALID, "Parameter invalid."},
        {RESULT_CONFIG_FILE_PARSE_FAILED, "Fail to parse configuration file"},
        {RESULT_CHANGE_SETTING_FAILED, "Fail to change the setting to new value."},
        {RESULT_SHOW_VALUE_FAILED, "Fail to show setting value."},
        {RESULT_SETTING_NOT_FOUND, "Could not find the setting."},
        {RESULT_DEFAULT_VALUE_EMPTY, "The default value of the setting is empty."},
        {RESULT_DATA_INCOMPLETE, "The data is not complete."},
        {RESULT_CONNECTION_UNUSABLE, "Current connection could not be used."},
        {RESULT_EXPRESSION_GENERATION_FAILED, "Fail to generate the dependency expression of the setting."},
        {RESULT_QUERY_SETTING_FAILED, "Fail to query the setting."},
        {RESULT_HTTP_RESPONSE_PARSE_FAILED, "Fail to parse the HTTP response."},
        {RESULT_REDFISH_ACTION_FAILED, "Fail in Redfish action."},
        {RESULT_CERT_TEMPLATE_PARSE_FAILED, "Fail to parse the template file to generate the certificate."},
        {RESULT_CERT_TEMPLATE_VALUE_INVALID, "Some values are invalid in the template file for the certificate."},
        {RESULT_CERT_NOT_EXIST, "The certificate does not exist."},
        {RESULT_BMC_INTERNAL_ERROR, "BMC Internal error."},
        {RESULT_BMC_NOT_READY, "BMC is not ready."},
        {RESULT_SETTING_FILTERED, "The setting is filtered."},
        {RESULT_OPEN_FILE_FAILED, "Failed to open file."},
    };
    return messages;
}

RedfishConfigResult::RedfishConfigResult(int code, std::string message, std::string setting)
    : m_Code(code), m_Message(std::move(message)), m_Setting(std::move(setting))
{
}

RedfishConfigResult& RedfishConfigResult::operator=(int code)
{
    m_Code = code;
    m_Message.clear();
    m_Setting.clear();
    return *this;
}

bool RedfishConfigResult::operator==(int code) const
{
    return m_Code == code;
}

bool RedfishConfigResult::operator!=(int code) const
{
    return m_Code != code;
}

RedfishConfigResult::operator int() const
{
    return m_Code;
}

RedfishConfigResult& RedfishConfigResult::operator|(const RedfishConfigResult& other)
{
    if (m_Code == RESULT_SUCCEED) {
        *this = other;
    }
    return *this;
}

void RedfishConfigResult::SetErrorMsg(const std::string& message)
{
    m_Message = message;
}

const std::string& RedfishConfigResult::ErrorMsg() const
{
    return m_Message;
}

void RedfishConfigResult::SetSetting(const std::string& setting)
{
    m_Setting = setting;
}

const std::string& RedfishConfigResult::Setting() const
{
    return m_Setting;
}

} // namespace RedfishConfig
