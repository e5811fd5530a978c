#pragma once

#include "Secrets.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/RedfishConfigResult.h>
#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <string>
#include <vector>

namespace RedfishConfig::App {

/** Whether a value is accepted, and the PATCH value text for it. */
struct CheckedValue {
    RedfishConfig::RedfishConfigResult Result; ///< with a message in any case of failure
    std::string Reason;                        ///< of a failure: what is wrong with the value, without a full stop
    std::string PatchText;
};

/**
 * Checks new values of one setting, and writes them for a PATCH: the library's manager over a registry that has the
 * setting as it is in force, but neither rules nor flags, so that it judges the value alone.
 *
 * A choice may be given under either of its names, as long as that name is no other choice's. Its PATCH value is the
 * name that the system's values use. A default that is none of the published choices is accepted, as those of the
 * other types are.
 */
class ValueChecker {
public:
    /**
     * @param inForce the setting; its choices under the names that its values use
     * @param published all of its choices, also those that rules rule out now
     * @param secrets receives the values of a password, before the library logs them
     * @param takesDefault whether the default is accepted although bounds do not admit it, as the library does
     */
    ValueChecker(const RedfishConfig::Client::Attribute& inForce,
                 const std::vector<RedfishConfig::Client::Choice>& published, Secrets& secrets,
                 bool takesDefault = true);

    /** A password is in no message. */
    CheckedValue Check(const std::string& value);

    /** The default value. */
    CheckedValue CheckDefault();

private:
    CheckedValue Finish(RedfishConfig::RedfishConfigResult result, std::string patchText,
                        const std::string& value) const;

    std::string m_Name;
    std::string m_Default; ///< as text
    bool m_IsPassword;
    Secrets& m_Secrets;
    RedfishConfig::RedfishConfigSettingManager m_Manager;
};

/** Whether one of the choices has that name. */
bool HasChoice(const std::vector<RedfishConfig::Client::Choice>& choices, const std::string& name);

/** The library's text on the values that a setting accepts. @param text stays as it is on failure */
RedfishConfig::RedfishConfigResult DescribeChoices(const RedfishConfig::Client::Attribute& attribute, bool hex,
                                                   std::string& text);

} // namespace RedfishConfig::App
