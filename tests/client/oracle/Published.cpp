#include "Forms.h"
#include "Oracle.h"

// What a registry publishes: settings, menus and which rule counts for which settings.

namespace Oracle {

namespace {

bool EndsWith(const std::vector<std::string>& path, const std::vector<std::string>& end)
{
    return end.size() <= path.size() && std::equal(end.rbegin(), end.rend(), path.rbegin());
}

bool BeginsWith(const std::vector<std::string>& path, const std::vector<std::string>& begin)
{
    return begin.size() <= path.size() && std::equal(begin.begin(), begin.end(), path.begin());
}

/** A menu's own path. Some registries publish it as "MenuPath", others the path of the menu around it. A display name
 *  that itself has slashes stands in paths where the name has other characters in their place. */
std::vector<std::string> OwnPath(const json::value& menu)
{
    std::vector<std::string> path = PathOf(TextMember(menu, "MenuPath"));
    const std::vector<std::string> name = PathOf(TextMember(menu, "MenuName"));
    const std::vector<std::string> displayName = PathOf(TextMember(menu, "DisplayName"));
    if (EndsWith(path, name) || (displayName.size() > 1 && EndsWith(path, displayName))) {
        return path;
    }
    path.insert(path.end(), name.begin(), name.end());
    return path;
}

std::optional<std::string> TextIfAny(const json::value& object, std::string_view key)
{
    const json::value* member = Member(object, key);
    return member != nullptr && !member->is_null() ? std::optional(TextOf(ValueOf(*member))) : std::nullopt;
}

std::vector<Choice> ReadChoices(const json::value& attribute)
{
    const bool isOld = Member(attribute, "Value") == nullptr;
    std::vector<Choice> choices;
    for (const json::value& entry : ListMember(attribute, isOld ? "Values" : "Value")) {
        if (entry.is_object()) {
            choices.push_back({TextIfAny(entry, "ValueName"), TextIfAny(entry, "ValueDisplayName")});
        } else {
            choices.push_back({TextOf(ValueOf(entry)), std::nullopt});
        }
    }
    return choices;
}

bool IsScalar(const json::value* value)
{
    return value != nullptr && !value->is_null() && !value->is_array() && !value->is_object();
}

} // namespace

const std::vector<std::string>& Flags()
{
    static const std::vector<std::string> flags{"ReadOnly",  "GrayOut",   "Hidden",
                                                "WriteOnly", "Immutable", "IsSystemUniqueProperty"};
    return flags;
}

Registry::Registry(json::value published, SettingValueMap then)
    : m_Document(std::move(published)), m_Then(std::move(then))
{
    ReadAttributes();
    DecideNamesInUse();
    ReadMenus();
    ReadRules();
}

const json::value& Registry::Entries() const
{
    const json::value* entries = Member(m_Document, "RegistryEntries");
    return entries != nullptr ? *entries : m_Document;
}

void Registry::ReadAttributes()
{
    static const std::map<std::string, Kind> kinds{{"enumeration", Kind::Enumeration},
                                                   {"password", Kind::Password},
                                                   {"integer", Kind::Integer},
                                                   {"boolean", Kind::Boolean}};
    for (const json::value& published : ListMember(Entries(), "Attributes")) {
        const bool isOld = Member(published, "AttributeName") == nullptr;
        Attribute attribute;
        attribute.Name = TextMember(published, isOld ? "Name" : "AttributeName");
        attribute.Published = &published;
        const auto kind = kinds.find(Folded(TextMember(published, "Type")));
        attribute.Type = kind != kinds.end() ? kind->second : Kind::Text;
        if (attribute.Type == Kind::Enumeration) {
            attribute.Choices = ReadChoices(published);
        }
        attribute.Path = PathOf(TextMember(published, "MenuPath"));
        // of two with one name the first counts
        if (!attribute.Name.empty() && m_Attributes.emplace(Folded(attribute.Name), attribute).second) {
            m_Names.push_back(attribute.Name);
        }
    }
}

void Registry::ReadMenus()
{
    for (const json::value& menu : ListMember(Entries(), "Menus")) {
        m_Menus.push_back({TextMember(menu, "MenuName"), &menu, OwnPath(menu)});
    }
}

void Registry::ReadRules()
{
    for (const json::value& published : ListMember(Entries(), "Dependencies")) {
        Rule rule;
        rule.Published = &published;
        const json::value* map = Member(published, "Dependency");
        if (map != nullptr) {
            const std::string name = TextMember(*map, "MapToAttribute");
            rule.Property = Folded(TextMember(*map, "MapToProperty"));
            rule.Outcome = Member(*map, "MapToValue");
            rule.Target = Find(name);
            if (rule.Target == nullptr) {
                rule.Menus = MenusNamed(name);
            }
            rule.Settings =
                rule.Target != nullptr ? std::set<const Attribute*>{rule.Target} : SettingsBelow(rule.Menus);
            rule.Sources = SourcesOf(ListMember(*map, "MapFrom"));
            rule.DependencyFor = Find(TextMember(published, "DependencyFor"));
            m_HasJoiners |= HasJoiners(ListMember(*map, "MapFrom"));
        }
        m_Rules.push_back(rule);
    }
}

std::set<const Registry::Attribute*> Registry::SourcesOf(const json::array& terms) const
{
    std::set<const Attribute*> sources;
    for (const json::value& term : terms) {
        if (Member(term, "Subexpressions") != nullptr) {
            const std::set<const Attribute*> inner = SourcesOf(ListMember(term, "Subexpressions"));
            sources.insert(inner.begin(), inner.end());
        } else if (Folded(TextMember(term, "MapFromProperty")) == "currentvalue" &&
                   TextMember(term, "MapFromAttribute") != "SYSACS") {
            sources.insert(Find(TextMember(term, "MapFromAttribute")));
        }
    }
    sources.erase(nullptr);
    return sources;
}

const Registry::Attribute* Registry::Find(const std::string& name) const
{
    const auto found = m_Attributes.find(Folded(name));
    return found != m_Attributes.end() ? &found->second : nullptr;
}

const Registry::Attribute& Registry::At(const std::string& name) const
{
    return m_Attributes.at(Folded(name));
}

std::set<const Registry::Menu*> Registry::MenusNamed(const std::string& name) const
{
    const bool isExact =
        std::any_of(m_Menus.begin(), m_Menus.end(), [&](const Menu& menu) { return menu.Name == name; });
    std::set<const Menu*> named;
    for (const Menu& menu : m_Menus) {
        if (isExact ? menu.Name == name : Folded(menu.Name) == Folded(name)) {
            named.insert(&menu);
        }
    }
    return named;
}

std::set<const Registry::Attribute*> Registry::SettingsBelow(const std::set<const Menu*>& menus) const
{
    std::set<const Attribute*> below;
    for (const Menu* menu : menus) {
        for (const auto& [name, attribute] : m_Attributes) {
            if (BeginsWith(attribute.Path, menu->Path)) {
                below.insert(&attribute);
            }
        }
    }
    return below;
}

bool Registry::PublishedFlag(const Attribute& attribute, const std::string& property) const
{
    return IsSet(*attribute.Published, property) || !FlaggedMenus(attribute, property).empty();
}

/** The menus around the attribute that have the flag. */
std::set<const Registry::Menu*> Registry::FlaggedMenus(const Attribute& attribute, const std::string& property) const
{
    std::set<const Menu*> flagged;
    if (property == "Hidden" || property == "ReadOnly" || property == "GrayOut") {
        for (const Menu& menu : m_Menus) {
            if (BeginsWith(attribute.Path, menu.Path) && IsSet(*menu.Published, property)) {
                flagged.insert(&menu);
            }
        }
    }
    return flagged;
}

/** Whether the values of an enumeration are display names: what its value says, else its registry, else its default. */
std::optional<bool> Registry::HasDisplayNameAsValue(const Attribute& attribute) const
{
    const json::value* own = Member(*attribute.Published, "CurrentValue");
    const json::value* standard = Member(*attribute.Published, "DefaultValue");
    const auto then = m_Then.find(attribute.Name);
    for (const SettingValue& value :
         {then != m_Then.end() ? then->second : std::nullopt, own != nullptr ? ValueOf(*own) : std::nullopt,
          standard != nullptr ? ValueOf(*standard) : std::nullopt}) {
        bool isName = false;
        bool isDisplayName = false;
        for (const Choice& choice : attribute.Choices) {
            isName |= value && choice.OwnName() == TextOf(value);
            isDisplayName |= value && choice.ShownName() == TextOf(value);
        }
        if (isName != isDisplayName) {
            return isDisplayName;
        }
    }
    return std::nullopt;
}

/** Where an enumeration does not say it itself, it is as most others. */
void Registry::DecideNamesInUse()
{
    int balance = 0;
    for (const auto& [name, attribute] : m_Attributes) {
        const std::optional<bool> display = HasDisplayNameAsValue(attribute);
        balance += display ? (*display ? 1 : -1) : 0;
    }
    for (auto& [name, attribute] : m_Attributes) {
        attribute.UsesDisplayNames = HasDisplayNameAsValue(attribute).value_or(balance > 0);
    }
}

const std::vector<Choice>& Registry::ChoicesOf(const std::string& setting) const
{
    return At(setting).Choices;
}

std::size_t Registry::PositionOf(const Rule& rule) const
{
    return static_cast<std::size_t>(&rule - m_Rules.data());
}

/** The rules that count for a property of a setting: those whose outcome can be read. */
std::vector<const Registry::Rule*> Registry::Count(const Attribute& attribute, const std::string& property) const
{
    const bool isFlag = std::find(Flags().begin(), Flags().end(), property) != Flags().end();
    std::vector<const Rule*> rules;
    for (const Rule& rule : m_Rules) {
        if (rule.Property != Folded(property) || rule.Settings.count(&attribute) == 0 || rule.Outcome == nullptr) {
            continue;
        }
        const bool isReadable = isFlag                ? FlagOf(ValueOf(*rule.Outcome)).has_value()
                                : property == "Value" ? rule.Outcome->is_array()
                                                      : IsScalar(rule.Outcome);
        if (isReadable) {
            rules.push_back(&rule);
        }
    }
    return rules;
}

std::vector<std::size_t> Registry::RulesFor(const std::string& setting, const std::string& property) const
{
    std::vector<std::size_t> positions;
    for (const Rule* rule : Count(At(setting), property)) {
        positions.push_back(PositionOf(*rule));
    }
    return positions;
}

} // namespace Oracle
