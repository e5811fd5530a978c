#pragma once

/**
 * @file
 * The outcome of an operation: a code, a message and the setting concerned.
 */

#include <RedfishConfig/Export.h>

#include <map>
#include <string>

namespace RedfishConfig {

/**
 * Result codes. The numbers are fixed, and shared with programs that talk to the controller: the library itself
 * produces only 0, 7 to 10, 13, 18 to 20, 25, 27 and 34.
 */
enum ResultCode : int {
    RESULT_SUCCEED = 0,
    RESULT_REBOOT_REQUIRED = 1,
    RESULT_NO_PENDING_VALUES = 2,
    RESULT_BMC_ACCOUNT_CREATED = 3,
    RESULT_PASSWORD_CHANGED = 4,
    RESULT_SUCCEED_WITH_NOTIFY = 5,
    RESULT_RUN_COMMAND_FAILED = 6,
    RESULT_GROUP_PARTIAL_FAILURE = 7, ///< a group operation: one setting or more failed; GetError() has them
    RESULT_PROPERTY_INVALID = 8,      ///< a property needed for the answer is unusable
    RESULT_PROPERTY_NOT_EXIST = 9,    ///< a property needed for the answer is missing
    RESULT_NEW_VALUE_INVALID = 10,    ///< a new value is rejected
    RESULT_NOT_SUPPORTED = 11,
    RESULT_INTERNAL_ERROR = 13, ///< a setting that should have been generated is not there
    RESULT_EXTERNAL_ERROR = 15,
    RESULT_PARAMETER_INVALID = 16,
    RESULT_CONFIG_FILE_PARSE_FAILED = 17,
    RESULT_CHANGE_SETTING_FAILED = 18, ///< the setting may not be changed now
    RESULT_SHOW_VALUE_FAILED = 19,     ///< the setting may not be shown or saved now
    RESULT_SETTING_NOT_FOUND = 20,     ///< the registry has no such setting
    RESULT_DEFAULT_VALUE_EMPTY = 21,
    RESULT_DATA_INCOMPLETE = 22,
    RESULT_CONNECTION_UNUSABLE = 24,
    RESULT_EXPRESSION_GENERATION_FAILED = 25, ///< a dependency rule is unusable
    RESULT_QUERY_SETTING_FAILED = 26,
    RESULT_HTTP_RESPONSE_PARSE_FAILED = 27, ///< the registry text could not be read
    RESULT_REDFISH_ACTION_FAILED = 28,
    RESULT_CERT_TEMPLATE_PARSE_FAILED = 29,
    RESULT_CERT_TEMPLATE_VALUE_INVALID = 30,
    RESULT_CERT_NOT_EXIST = 31,
    RESULT_BMC_INTERNAL_ERROR = 32,
    RESULT_BMC_NOT_READY = 33,
    RESULT_SETTING_FILTERED = 34, ///< the setting takes no part in a restore now
    RESULT_OPEN_FILE_FAILED = 38,
};

/** The standard message of every code, in ascending order of the codes. Does not change. */
REDFISHCONFIG_EXPORT const std::map<int, std::string>& ResultMessages();

/** What an operation reports: a code (0 is success), a message that may be empty, and a setting's name that may be
 * empty. */
class REDFISHCONFIG_EXPORT RedfishConfigResult {
public:
    RedfishConfigResult(int code = RESULT_SUCCEED, std::string message = {}, std::string setting = {});

    /** Takes the code; message and setting become empty. */
    RedfishConfigResult& operator=(int code);

    bool operator==(int code) const;
    bool operator!=(int code) const;

    /** The code. */
    operator int() const;

    /**
     * Folds the result of one setting into an overall result, the left one, and returns it: a success becomes a
     * copy of @p other, a failure stays as it is. So the first failure is the one that is kept.
     */
    RedfishConfigResult& operator|(const RedfishConfigResult& other);

    void SetErrorMsg(const std::string& message);

    /** The message as it was set, which may be empty; ResultMessages() has the standard text of the code. */
    const std::string& ErrorMsg() const;

    void SetSetting(const std::string& setting);

    /** The name of the setting concerned, or an empty text. */
    const std::string& Setting() const;

private:
    int m_Code;
    std::string m_Message;
    std::string m_Setting;
};

} // namespace RedfishConfig
