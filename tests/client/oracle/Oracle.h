#pragma once

#include "Reading.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <utility>

/**
 * What the rules of a published registry mean, read from the published JSON each time a question is asked: slow, and
 * written so that it can be checked by reading it. It judges what the client library answers and shares no code with
 * it.
 *
 *     Oracle::Registry registry(boost::json::parse(text), valuesThatCameWithIt);
 *     Oracle::Verdict locked = registry.VerdictOf("BootMode", "ReadOnly", values);
 */
namespace Oracle {

/** The order matters: "and" is the smaller, "or" the larger of two. */
enum class Truth { False, Unknown, True };

inline Truth Of(bool holds)
{
    return holds ? Truth::True : Truth::False;
}
inline Truth And(Truth left, Truth right)
{
    return std::min(left, right);
}
inline Truth Or(Truth left, Truth right)
{
    return std::max(left, right);
}
inline Truth Not(Truth truth)
{
    return truth == Truth::Unknown ? truth : Of(truth == Truth::False);
}

/** The properties that are flags. */
const std::vector<std::string>& Flags();

struct Verdict {
    bool Value = false;
    bool Certain = true;
    bool Marked = false; ///< the registry's own flag decides, of the setting or of a menu, and no rule explains it
};

/** One entry of a setting's list of choices. An entry may lack either name; one that is a plain text has no display
 *  name. */
struct Choice {
    std::optional<std::string> Name;
    std::optional<std::string> DisplayName;

    /** The one that it has stands for the one that it lacks. */
    std::string OwnName() const { return Name.value_or(DisplayName.value_or("")); }
    std::string ShownName() const { return DisplayName.value_or(Name.value_or("")); }
};

struct ChoicesInForce {
    std::vector<std::size_t> Remaining; ///< positions in the published list
    bool Certain = true;                ///< false while a rule for the list is unknown
};

struct NumberInForce {
    std::optional<std::int64_t> Value; ///< none: nothing is published, or no whole number of 64 bits
    bool Certain = true;               ///< false while an unknown rule could make it another number
};

/** A setting that a rule gave a new value. */
struct Effect {
    std::size_t Wave = 0; ///< from 1
    std::size_t Rule = 0; ///< position in "Dependencies"
    std::string Setting;
    SettingValue From;
    SettingValue To;
};

/** A rule for a current value that was true and triggered, and had to give way. */
struct Conflict {
    std::size_t Wave = 0;
    std::size_t Rule = 0;
    std::string Setting;
    SettingValue Kept;    ///< the value set by hand, or that of the earlier rule
    SettingValue Refused; ///< differs from it
    bool IsByHand = false;
};

/** A triggered rule for a current value whose condition is unknown. */
struct MayChange {
    std::size_t Wave = 0;
    std::size_t Rule = 0;
    std::string Setting;
    SettingValue To;
    bool Differs = false;  ///< the setting has another value when the rule is looked at
    bool IsByHand = false; ///< the setting was set by hand, so that the rule would have to give way
};

using Changes = std::vector<std::pair<std::string, SettingValue>>;

struct CascadeResult {
    std::vector<Effect> Effects;
    std::vector<Conflict> Conflicts;
    std::vector<MayChange> MayChanges;
    bool IsCycle = false;
    bool IsCutOff = false;  ///< after 1,000 waves
    SettingValueMap Values; ///< those before, with the changes by hand and all effects
};

class Registry {
public:
    /** @param then the values that came with the registry: what its flags were published with */
    Registry(json::value published, SettingValueMap then);

    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    ~Registry() = default;

    /** The names of all settings, as published, in their order. */
    const std::vector<std::string>& Settings() const { return m_Names; }
    std::size_t RuleCount() const { return m_Rules.size(); }

    Truth OfRule(std::size_t position, const SettingValueMap& now) const;

    /** The positions of the rules for a property of a setting, those on menus above it included. */
    std::vector<std::size_t> RulesFor(const std::string& setting, const std::string& property) const;

    /** @param property one of Flags() */
    Verdict VerdictOf(const std::string& setting, const std::string& property, const SettingValueMap& now) const;

    const std::vector<Choice>& ChoicesOf(const std::string& setting) const;
    Oracle::ChoicesInForce ChoicesInForce(const std::string& setting, const SettingValueMap& now) const;

    /** @param property LowerBound, UpperBound, ScalarIncrement, MinLength or MaxLength */
    Oracle::NumberInForce NumberInForce(const std::string& setting, const std::string& property,
                                        const SettingValueMap& now) const;

    /** What rules for current values do after changes that are made together. Changes of unknown names are ignored. */
    CascadeResult Cascade(const SettingValueMap& now, const Changes& byHand) const;

    /** The value in the values where they name the setting, else the registry's own current value. */
    SettingValue Held(const std::string& setting, const SettingValueMap& now) const;

    /** Whether two values are one and the same for the setting: "5" and 5 of a number, both names of a choice. */
    bool SameValue(const std::string& setting, const SettingValue& left, const SettingValue& right) const;

private:
    enum class Kind { Text, Enumeration, Password, Integer, Boolean };

    struct Attribute {
        std::string Name;
        const json::value* Published = nullptr;
        Kind Type = Kind::Text;
        std::vector<Choice> Choices;
        bool UsesDisplayNames = false; ///< matters for texts that are names of both kinds, and for orders
        std::vector<std::string> Path;
    };

    struct Menu {
        std::string Name;
        const json::value* Published = nullptr;
        std::vector<std::string> Path; ///< its own
    };

    struct Rule {
        const json::value* Published = nullptr;
        std::string Property;                ///< folded
        std::set<const Attribute*> Settings; ///< those that it counts for
        const Attribute* Target = nullptr;   ///< none for a menu and an unknown name
        std::set<const Menu*> Menus;         ///< that are the target
        std::set<const Attribute*> Sources;  ///< whose current values are read
        const Attribute* DependencyFor = nullptr;
        const json::value* Outcome = nullptr;
    };

    // what is published
    void ReadAttributes();
    void ReadMenus();
    void ReadRules();
    const json::value& Entries() const;
    void DecideNamesInUse();
    std::optional<bool> HasDisplayNameAsValue(const Attribute& attribute) const;
    const Attribute* Find(const std::string& name) const;
    const Attribute& At(const std::string& name) const;
    std::set<const Attribute*> SourcesOf(const json::array& terms) const;
    std::set<const Menu*> MenusNamed(const std::string& name) const;
    std::set<const Attribute*> SettingsBelow(const std::set<const Menu*>& menus) const;
    std::vector<const Rule*> Count(const Attribute& attribute, const std::string& property) const;
    std::size_t PositionOf(const Rule& rule) const;

    // truth
    std::optional<Truth> OfList(const json::array& terms, const SettingValueMap& now) const;
    std::optional<Truth> OfTermWithNot(const json::value& term, const SettingValueMap& now) const;
    Truth OfTerm(const json::value& term, const SettingValueMap& now) const;
    Truth OfValueTerm(const Attribute& attribute, const json::value& term, const SettingValueMap& now) const;
    static Truth OfFlagTerm(const Attribute& attribute, const json::value& term);
    static Truth OfOrder(const Attribute& attribute, const std::string& condition, const SettingValue& held,
                         const SettingValue& wanted);
    bool HasForm(const json::array& terms) const;

    // values
    SettingValue Held(const Attribute& attribute, const SettingValueMap& now) const;
    static std::set<std::size_t> Named(const Attribute& attribute, const std::string& text);
    static SettingValue Meant(const Attribute& attribute, const SettingValue& value);
    static bool AreEqual(const Attribute& attribute, const SettingValue& left, const SettingValue& right);

    // flags
    bool PublishedFlag(const Attribute& attribute, const std::string& property) const;
    std::set<const Menu*> FlaggedMenus(const Attribute& attribute, const std::string& property) const;
    enum class Explanation { Explained, Marked, Unknown };
    Explanation Explain(const Attribute& attribute, const std::string& property) const;
    Explanation ExplainBy(const std::vector<const Rule*>& rules) const;

    // cascades
    struct Wave;
    static bool IsTriggered(const Rule& rule, const std::set<const Attribute*>& changed);
    void ApplyRule(const Rule& rule, Wave& wave, CascadeResult& result) const;
    std::set<const Attribute*> RunWave(Wave& wave, CascadeResult& result) const;
    std::string StateOf(const SettingValueMap& values, const std::set<const Attribute*>& changed) const;

    json::value m_Document;
    SettingValueMap m_Then;
    std::vector<std::string> m_Names;
    std::map<std::string, Attribute> m_Attributes; ///< by folded name
    std::vector<Menu> m_Menus;
    std::vector<Rule> m_Rules;
    bool m_HasJoiners = false;
};

} // namespace Oracle
