#pragma once

#include "TextSet.h"

#include <RedfishConfig/SettingValue.h>

#include <boost/json/object.hpp>

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace RedfishConfig::App {

/** What stands for a password wherever one would be shown. */
extern const std::string passwordMask;

/** Whether an attribute of that type holds a password. */
bool IsPasswordType(std::string_view type);

/**
 * The passwords that the library is told, so that none is printed: where documents are taken as published, those in
 * them; else those that it is to check.
 */
class Secrets {
public:
    Secrets() = default;

    /** The passwords of a system: current and default values, and what rules compare them with. */
    Secrets(const boost::json::value& registry, const RedfishConfig::SettingValueMap& values);

    /** Adds a password that is to be checked. */
    void Add(const std::string& password);

    /**
     * For a reason that the library gives, where rules are of the form (NAME==VALUE): covers the value that a
     * password is compared with.
     */
    std::string ConcealInReason(std::string reason) const;

    /**
     * For a line of the library's log, where values are in formulas without any quotes: covers every occurrence of
     * a password, in any letter case, also where it is by chance a part of something else.
     */
    std::string ConcealInTrace(const std::string& line) const;

private:
    void AddAttributes(const boost::json::object& entries, const RedfishConfig::SettingValueMap& values);
    void AddRules(const boost::json::object& entries);
    bool IsPassword(const boost::json::object& object, const char* key) const;
    void AddTest(const std::string& property, const boost::json::value* value);
    void AddText(const boost::json::value* value);

    std::set<std::string, RedfishConfig::CaseInsensitiveComparator> m_Names; // of the password settings
    TextSet m_Texts;                                                         // in lower case
    TextSet m_Tested;                                                        // how a test begins in a reason: "(NAME=="
    std::map<std::string, TextSet> m_Shown;                                  // what follows it: "VALUE)"
};

} // namespace RedfishConfig::App
