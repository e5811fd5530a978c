#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json/object.hpp>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfigTool {

/** What stands for a password wherever one would be shown. */
extern const std::string passwordMask;

/** Whether an attribute of that type holds a password. */
bool IsPasswordType(const std::string& type);

/**
 * The passwords of a system, so that none is printed: neither its current nor its default value, from the registry or
 * from the values, nor what a rule compares it with.
 */
class Secrets {
public:
    Secrets(const boost::json::value& registry, const RedfishConfig::SettingValueMap& values);

    /** Adds the passwords of another form of the same system. */
    void Include(const boost::json::value& registry, const RedfishConfig::SettingValueMap& values);

    /** Whether any password is known. */
    bool KnowsAny() const { return !m_Folded.empty(); }

    /** Adds a password that somebody wants to set. */
    void Add(const std::string& password);

    /**
     * For a reason that the library gives, where rules stand in the form (NAME==VALUE): covers the value that a
     * password is compared with.
     */
    std::string ConcealInReason(std::string reason) const;

    /** For a finding, where values stand between quotation marks as in JSON: covers those that are a password. */
    std::string ConcealInFinding(const std::string& text) const;

    /**
     * For a line of the library's log, where values stand in formulas without any quotes: covers every occurrence of
     * a password, in any letter case, also where it is by chance a part of something else.
     */
    std::string ConcealInTrace(const std::string& line) const;

private:
    void AddAttributes(const boost::json::object& entries, const RedfishConfig::SettingValueMap& values);
    void AddRules(const boost::json::object& entries);
    bool IsPassword(const boost::json::object& object, const char* key) const;
    void AddTest(const std::string& property, const boost::json::value* value);
    void AddText(const boost::json::value* value);
    void SortTexts();

    std::set<std::string, RedfishConfig::CaseInsensitiveComparator> m_Names; // of the password settings
    std::vector<std::string> m_Folded;                        // the texts in lower case, the longest first
    std::set<std::string> m_Quoted;                           // the same, also as JSON writes them
    std::vector<std::pair<std::string, std::string>> m_Tests; // as told in reasons, "(NAME==VALUE)", and what covers it
};

} // namespace RedfishConfigTool
