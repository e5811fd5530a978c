#pragma once

#include "Input.h"
#include "Menus.h"
#include "Secrets.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <boost/json/object.hpp>

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace RedfishConfigTool {

/** What the person wants of all answers. */
struct SystemOptions {
    bool Hex = false;              ///< integers as hexadecimal text
    bool IncludeProtected = false; ///< settings that the registry itself hides are answered too
};

/** A setting as the registry describes it. */
struct Setting {
    /** The record, its current value applied. The values of a password are taken out of it. */
    RedfishConfig::RedfishConfigSettingInfoStru Record;
    const Menu* InMenu = nullptr; ///< the root when the registry names no menu
    std::size_t Position = 0;     ///< in the registry

    const std::string& Name() const { return *Record.AttributeName; }
    bool IsPassword() const { return IsPasswordType(*Record.Type); }
};

/** What the library says to a question about one setting. */
struct Answer {
    std::string Name;                          ///< as the caller wrote it, or the registry for all settings
    const Setting* Subject = nullptr;          ///< null when the registry has no such setting
    RedfishConfig::RedfishConfigResult Result; ///< with a message in any case of failure
    std::string Text;                          ///< the answer, the mask for a password
    bool Concealed = false;                    ///< whether Text is the mask

    bool Ok() const { return Result == RedfishConfig::RESULT_SUCCEED; }
};

/** A question that the library answers with a text: how it is asked for one setting, and for all. */
struct Question {
    RedfishConfig::RedfishConfigResult (RedfishConfig::RedfishConfigSettingManager::*One)(const std::string&,
                                                                                          std::string&);
    RedfishConfig::RedfishConfigResult (RedfishConfig::RedfishConfigSettingManager::*All)(
        std::map<std::string, std::string>&);
    bool TellsValue; ///< whether the answer is a value, and so to be concealed for a password
};

extern const Question askValue;
extern const Question askDefault;
extern const Question askChoices;
extern const Question askDescription;

/**
 * The settings of one system: the library's manager with every setting generated, so that every rule counts, and what
 * only the registry's document tells, the menus and the order.
 */
class System {
public:
    /** @throws InputError when the library cannot read the registry. */
    System(RegistryInput registry, RedfishConfig::SettingValueMap values, const SystemOptions& options,
           Secrets& secrets);

    /** All settings: in menu order where the registry describes menus, else as the registry has them. */
    const std::vector<Setting>& Settings() const { return m_Settings; }

    /** The setting of that name in any letter case, or null. */
    const Setting* Find(const std::string& name) const;

    Answer Ask(const Question& question, const std::string& name);

    /** The answers for Settings(), in the same order. */
    std::vector<Answer> AskAll(const Question& question);

    /** The PATCH value text for a new value. A password stands in no message. */
    Answer PreparePatch(const std::string& name, const std::string& value, RedfishConfig::filterAction action);

    /** The PATCH value text that sets a setting back to its default. */
    Answer PrepareDefault(const std::string& name);

    /** The plain values worth saving, by name; which settings take part is for @p action to say. */
    std::map<std::string, std::string> SaveValues(RedfishConfig::filterAction action);

    /** What restoring a saved value comes to. */
    struct Restored {
        std::map<std::string, std::string> PatchTexts; ///< by the settings' own names
        std::map<std::string, std::string> Errors;     ///< why not, by the names as saved
    };
    Restored Restore(std::map<std::string, std::string> saved, bool withSystemUnique);

    /** Keeps a password that somebody wants to set out of everything that is printed. */
    void KeepSecret(const std::string& password) { m_Secrets.Add(password); }

    /** Whether anything was asked about a setting so far; about a name that is none too. */
    bool IsAsked(const std::string& name) const { return m_AllAsked || m_Asked.count(name) > 0; }

    /** The registry's own "Id", "Language" and "RegistryVersion", those that it has. */
    const boost::json::object& Identity() const { return m_Identity; }

    /** The dynamic properties of a setting of Settings(). */
    RedfishConfig::SettingStatus StatusOf(const Setting& setting);

    /** The dynamic properties of Settings(), in the same order. */
    std::vector<RedfishConfig::SettingStatus> AllStatus();

    /** The library's own list of menus and their sub-menus. */
    std::map<std::string, std::vector<std::string>> Groups();

    const MenuTree& Menus() const { return m_Menus; }
    const SystemOptions& Options() const { return m_Options; }

private:
    void SortSettings(const boost::json::value& registry);
    std::string TellReason(std::string reason) const;
    void Complete(const Question& question, Answer& answer) const;
    Answer AnswerAbout(const std::string& name);
    void ConcealNewValue(Answer& answer, const std::string& value) const;
    RedfishConfig::SettingStatus Conceal(RedfishConfig::SettingStatus status) const;

    SystemOptions m_Options;
    Secrets& m_Secrets;
    boost::json::object m_Identity;
    MenuTree m_Menus;
    bool m_IsAdapted;
    RedfishConfig::RedfishConfigSettingManager m_Manager;
    std::vector<Setting> m_Settings;
    std::map<std::string, std::size_t, RedfishConfig::CaseInsensitiveComparator> m_Index; // name to place in m_Settings
    std::set<std::string, RedfishConfig::CaseInsensitiveComparator> m_Asked;
    bool m_AllAsked = false;
};

} // namespace RedfishConfigTool
