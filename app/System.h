#pragma once

#include "Secrets.h"
#include "Setting.h"
#include "Status.h"

#include <RedfishConfig/RedfishConfigResult.h>
#include <RedfishConfig/RedfishConfigSetting.h>
#include <RedfishConfig/SettingValue.h>

#include <boost/json/object.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** What the person wants of all answers. */
struct SystemOptions {
    bool Hex = false;              ///< integers as hexadecimal text
    bool IncludeProtected = false; ///< settings that the registry itself hides are answered too
};

/** A question that is answered with a text. */
enum class Question : std::uint8_t { Value, Default, Choices, Description };

/** Whether reasons and messages are wanted too, which take longer than the verdicts. */
enum class Detail : std::uint8_t { Verdicts, Reasons };

/** What a system says to a question about one setting. */
struct Answer {
    std::string Name;                          ///< as the caller wrote it, or the registry for all settings
    const Setting* Subject = nullptr;          ///< null when the registry has no such setting
    RedfishConfig::RedfishConfigResult Result; ///< with a message in any case of failure
    std::string Reason;                        ///< of a failure: the same without a subject, for a list of settings
    std::string Text;                          ///< the answer, the mask for a password
    RedfishConfig::SettingValue Held;          ///< the value or default that Text tells; none for a password
    bool Concealed = false;                    ///< whether Text is the mask

    /** Properties that would refuse a change, but are not true as far as is known; with reasons. */
    std::vector<std::pair<StatusRow, std::string>> Doubts;
    std::string DoubtAboutValue;   ///< what it hangs on which values are accepted; empty when that is certain
    std::string DoubtAboutDefault; ///< what it hangs on what the default is, where that is asked for or set

    bool Ok() const { return Result == RedfishConfig::RESULT_SUCCEED; }
};

/** What restoring saved values comes to. */
struct Restored {
    struct Refusal {
        std::string Reason;
        bool IsFiltered = false; ///< the setting takes no part in a restore; else its value is refused
    };
    std::map<std::string, std::string> PatchTexts; ///< by the settings' own names
    std::map<std::string, Refusal> Refused;        ///< by the names as saved
    std::vector<Answer> Doubtful;                  ///< those of PatchTexts that have Doubts
};

/**
 * The settings of one system, as every command sees them: their order and menus, and the answers to questions about
 * them. Which settings take part in what is for a filterAction to say.
 */
class System {
public:
    System(const SystemOptions& options, Secrets& secrets, const std::vector<MenuDescription>& menus)
        : m_Options(options), m_Secrets(secrets), m_Menus(menus)
    {
    }
    virtual ~System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    /** All settings: in menu order where the registry describes menus, else as the registry has them. */
    const std::vector<Setting>& Settings() const { return m_Settings; }
    const MenuTree& Menus() const { return m_Menus; }
    const SystemOptions& Options() const { return m_Options; }

    /** The setting of that name in any letter case, or null. */
    virtual const Setting* Find(const std::string& name) const = 0;

    virtual Answer Ask(Question question, const std::string& name) = 0;

    /** The answers for Settings(), in the same order. */
    virtual std::vector<Answer> AskAll(Question question, Detail detail) = 0;

    /** The PATCH value text for a new value. A password is in no message. */
    virtual Answer PreparePatch(const std::string& name, const std::string& value,
                                RedfishConfig::filterAction action) = 0;

    /** The PATCH value text that sets a setting back to its default. */
    virtual Answer PrepareDefault(const std::string& name) = 0;

    /** The plain values worth saving, by name. */
    virtual std::map<std::string, std::string> SaveValues(RedfishConfig::filterAction action) = 0;

    virtual Restored Restore(const std::map<std::string, std::string>& saved, bool withSystemUnique) = 0;

    /** Whether two value texts are one value of the setting. */
    virtual bool AreSame(const Setting& setting, const std::string& left, const std::string& right) const = 0;

    /** The dynamic properties of a setting of Settings(). */
    virtual SettingStatus StatusOf(const Setting& setting) = 0;

    /** What it hangs on whether a change needs a reset: the whole reason; empty when that is certain. */
    virtual std::string DoubtAboutReset(const Setting& /*setting*/) const { return ""; }

    /** The dynamic properties of Settings(), in the same order. */
    virtual std::vector<SettingStatus> AllStatus(Detail detail) = 0;

    /** Menus to sub-menus: the second piece of the menu paths to the third ones, in the order of the registry. */
    virtual std::map<std::string, std::vector<std::string>> Groups() = 0;

    /** The registry's own "Id", "Language" and "RegistryVersion", those that it has. */
    virtual boost::json::object Identity() const = 0;

    /** Why the value of a password is not answered. */
    virtual std::string PasswordRefusal(const std::string& name) const = 0;

    /** Whether a status tells its certainty and its rules. */
    virtual bool TellsRules() const = 0;

    /** Keeps a password that somebody wants to set out of everything that is printed. */
    void KeepSecret(const std::string& password) { m_Secrets.Add(password); }

    /** Whether anything was asked about a setting so far; about a name that is none too. */
    bool IsAsked(const std::string& name) const { return m_AllAsked || m_Asked.count(name) > 0; }

protected:
    Secrets& KnownSecrets() const { return m_Secrets; }
    void NoteAsked(const std::string& name) { m_Asked.insert(name); }
    void NoteAllAsked() { m_AllAsked = true; }

    /** Takes the settings, which are in the registry's order, and brings them into that of the menus. */
    void Arrange(std::vector<Setting> settings);

private:
    SystemOptions m_Options;
    Secrets& m_Secrets;
    MenuTree m_Menus;
    std::vector<Setting> m_Settings;
    std::set<std::string, RedfishConfig::CaseInsensitiveComparator> m_Asked;
    bool m_AllAsked = false;
};

/** An answer that is the refusal of a question. */
Answer Refusal(const std::string& name, const Setting* subject, int code, std::string message, std::string reason);

/** A result that says what its code means where it has no message. */
RedfishConfig::RedfishConfigResult WithMessage(RedfishConfig::RedfishConfigResult result);

} // namespace RedfishConfig::App
