#include "AttributeReader.h"

#include "../intake/JsonPointer.h"
#include "../intake/KeyNames.h"
#include "../intake/Quote.h"
#include "NameTable.h"
#include "ValueConversion.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace {

using Members = KeyedObject<AttributeKey>;

constexpr std::pair<AttributeKey, Property> flagKeys[] = {
    {AttributeKey::GrayOut, Property::GrayOut},
    {AttributeKey::Hidden, Property::Hidden},
    {AttributeKey::Immutable, Property::Immutable},
    {AttributeKey::IsSystemUniqueProperty, Property::IsSystemUniqueProperty},
    {AttributeKey::ReadOnly, Property::ReadOnly},
    {AttributeKey::ResetRequired, Property::ResetRequired},
    {AttributeKey::WriteOnly, Property::WriteOnly},
};

AttributeType FindType(std::string_view published)
{
    published = published.substr(0, published.find_last_not_of(" \t") + 1);
    constexpr AttributeType types[] = {AttributeType::Boolean, AttributeType::Enumeration, AttributeType::Integer,
                                       AttributeType::Password, AttributeType::String};
    const auto* const found = std::find_if(std::begin(types), std::end(types), [&](AttributeType type) {
        return EqualIgnoringCase(Name(type), published);
    });
    return found != std::end(types) ? *found : AttributeType::Unknown;
}

std::optional<bool> ReadFlag(const JsonValue& json)
{
    const Value truth = ConvertToType(ReadValue(json), AttributeType::Boolean);
    const bool* flag = std::get_if<bool>(&truth);
    return flag != nullptr ? std::optional(*flag) : std::nullopt;
}

bool IsPresent(const JsonValue& member)
{
    return member.Exists() && !member.IsNull();
}

/** Reads one attribute that has a name. */
class AttributeReader {
public:
    /** @param list points to "Attributes", in which the attribute has this position */
    AttributeReader(const Members& members, const std::string& list, std::size_t position, KeyOrder& choiceKeys,
                    Findings& findings)
        : m_Members(members), m_List(list), m_ChoiceKeys(choiceKeys), m_Findings(findings)
    {
        m_Attribute.Position = position;
    }

    Attribute Read()
    {
        m_Attribute.Name = m_Members[AttributeKey::AttributeName].Text();
        m_Findings.About(m_Attribute.Name);
        if (m_Members.HasRenamedKeys()) {
            m_Members.ReportKeys(Pointer(), m_Findings);
        }
        for (const auto& [key, flag] : flagKeys) {
            ReadFlagMember(key, flag);
        }
        ReadNumbers();
        ReadTexts();
        ReadType();
        CheckBounds(AttributeKey::LowerBound, m_Attribute.LowerBound, AttributeKey::UpperBound, m_Attribute.UpperBound);
        CheckBounds(AttributeKey::MinLength, m_Attribute.MinLength, AttributeKey::MaxLength, m_Attribute.MaxLength);
        ReadChoices();
        m_Attribute.DefaultValue = ReadOwnValue(AttributeKey::DefaultValue, "default");
        m_Attribute.CurrentValue = ReadOwnValue(AttributeKey::CurrentValue, "current value");
        return std::move(m_Attribute);
    }

private:
    std::string Pointer() const { return Element(m_List, m_Attribute.Position); }
    std::string PointerTo(AttributeKey key) const { return Member(Pointer(), m_Members.KeyOf(key)); }

    void ReportLeftOut(AttributeKey key, FindingKind kind, Severity level, std::string found)
    {
        m_Findings.Add(level, kind, PointerTo(key), std::move(found), "it is left out");
    }

    void ReadFlagMember(AttributeKey key, Property flag)
    {
        const JsonValue member = m_Members[key];
        if (!IsPresent(member)) {
            return;
        }
        const std::optional<bool> truth = ReadFlag(member);
        if (truth.value_or(false)) {
            m_Attribute.Flags.Set(flag);
        }
        if (!truth) {
            ReportLeftOut(key, FindingKind::WrongKind, Severity::Warning,
                          std::string("a flag that is ") + KindOf(member));
        } else if (!member.Boolean()) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, PointerTo(key),
                           std::string("a flag that is ") + KindOf(member), "it is read as a boolean");
        }
    }

    void ReadNumbers()
    {
        const std::pair<AttributeKey, std::optional<std::int64_t>*> numbers[] = {
            {AttributeKey::DisplayOrder, &m_Attribute.DisplayOrder},
            {AttributeKey::LowerBound, &m_Attribute.LowerBound},
            {AttributeKey::MaxLength, &m_Attribute.MaxLength},
            {AttributeKey::MinLength, &m_Attribute.MinLength},
            {AttributeKey::ScalarIncrement, &m_Attribute.ScalarIncrement},
            {AttributeKey::UpperBound, &m_Attribute.UpperBound},
        };
        for (const auto& [key, number] : numbers) {
            const JsonValue member = m_Members[key];
            if (IsPresent(member)) {
                *number = member.Integer();
                if (!*number) {
                    *number = ReadOddNumber(key, member);
                }
            }
        }
    }

    std::optional<std::int64_t> ReadOddNumber(AttributeKey key, const JsonValue& member)
    {
        if (member.IsNumber()) {
            // an upper bound that no number can exceed is none
            const bool isNoBound = key == AttributeKey::UpperBound || key == AttributeKey::MaxLength;
            ReportLeftOut(key, FindingKind::NumberBeyondRange, isNoBound ? Severity::Note : Severity::Warning,
                          "the number " + Quote(member) + " is not whole or beyond 64 signed bits");
            return std::nullopt;
        }
        const auto number = ReadInteger(member.Text());
        if (number) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, PointerTo(key), "a number that is a text",
                           "it is read as a number");
        } else {
            ReportLeftOut(key, FindingKind::WrongKind, Severity::Warning,
                          std::string("a number that is ") + KindOf(member));
        }
        return number;
    }

    void ReadTexts()
    {
        const std::pair<AttributeKey, std::optional<std::string>*> texts[] = {
            {AttributeKey::DisplayName, &m_Attribute.DisplayName},
            {AttributeKey::HelpText, &m_Attribute.HelpText},
            {AttributeKey::MenuPath, &m_Attribute.MenuPath},
            {AttributeKey::ValueExpression, &m_Attribute.Pattern},
            {AttributeKey::WarningText, &m_Attribute.WarningText},
        };
        for (const auto& [key, text] : texts) {
            const JsonValue member = m_Members[key];
            if (member.IsText()) {
                text->emplace(member.Text());
            } else if (IsPresent(member)) {
                ReportLeftOut(key, FindingKind::WrongKind, Severity::Warning, std::string("it is ") + KindOf(member));
            }
        }
    }

    void ReadType()
    {
        const JsonValue type = m_Members[AttributeKey::Type];
        m_Attribute.Type = FindType(type.Text());
        if (m_Attribute.Type == AttributeType::Unknown) {
            m_Findings.Add(Severity::Warning, FindingKind::UnknownType, Pointer(),
                           "the type of " + m_Attribute.Name + " is " +
                               (type.IsText() ? Quote(type.Text()) : KindOf(type)),
                           "there is no setting of that type");
        }
    }

    void CheckBounds(AttributeKey lowerKey, const std::optional<std::int64_t>& lower, AttributeKey upperKey,
                     std::optional<std::int64_t>& upper)
    {
        if (!lower || !upper || *lower <= *upper) {
            return;
        }
        const std::string found = std::string(Name(upperKey)) + " " + std::to_string(*upper) + " is below " +
                                  std::string(Name(lowerKey)) + " " + std::to_string(*lower);
        if (*upper == -1) {
            upper.reset();
            ReportLeftOut(upperKey, FindingKind::NoBound, Severity::Note, found + ", which means no bound");
        } else {
            m_Findings.Add(Severity::Warning, FindingKind::ContradictoryBounds, Pointer(), found,
                           "both stay, and every new value is refused");
        }
    }

    void ReadChoices()
    {
        const JsonValue list = m_Members[AttributeKey::Choices];
        if (list.IsArray()) {
            std::size_t position = 0;
            for (const JsonMember& choice : list) {
                ReadChoice(choice.Value, position++);
            }
        } else if (IsPresent(list)) {
            ReportLeftOut(AttributeKey::Choices, FindingKind::WrongKind, Severity::Warning,
                          std::string("the choices are ") + KindOf(list));
        }
        if (m_WithoutDisplayName > 0) {
            m_Findings.Add(Severity::Note, FindingKind::ChoiceWithoutDisplayName, PointerTo(AttributeKey::Choices),
                           std::to_string(m_WithoutDisplayName) +
                               (m_WithoutDisplayName == 1 ? " choice has" : " choices have") + " no display name",
                           "the value name is shown");
        }
        if (m_Attribute.Choices.empty() && m_Attribute.Type == AttributeType::Enumeration) {
            m_Findings.Add(Severity::Warning, FindingKind::NoChoices, Pointer(), "an enumeration without choices",
                           "every new value is refused");
        }
    }

    /** Looked up once: there may be many choices, and many members beside them. */
    const std::string& PointerToChoices()
    {
        if (m_PointerToChoices.empty()) {
            m_PointerToChoices = PointerTo(AttributeKey::Choices);
        }
        return m_PointerToChoices;
    }

    void ReadChoice(const JsonValue& element, std::size_t position)
    {
        const auto pointer = [&] { return Element(PointerToChoices(), position); };
        const KeyedObject<ChoiceKey> members(element, m_ChoiceKeys);
        if (members.HasRenamedKeys()) {
            members.ReportKeys(pointer(), m_Findings);
        }
        const JsonValue name = element.IsObject() ? members[ChoiceKey::ValueName] : element;
        std::optional<std::string> own = TextOf(name);
        std::optional<std::string> shown = TextOf(members[ChoiceKey::ValueDisplayName]);
        const bool hasShownName = shown && !shown->empty();
        if (!own) {
            m_Findings.Add(Severity::Warning, FindingKind::WrongKind, pointer(),
                           "a choice without a value name: " + Shown(element),
                           hasShownName ? "its display name is taken" : "it is left out");
            if (hasShownName) {
                m_Attribute.Choices.push_back({*shown, *shown});
            }
            return;
        }
        if (!element.IsObject() || !name.IsText()) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, pointer(),
                           "a choice in another form: " + Shown(element), "it is read as a value name");
        }
        m_WithoutDisplayName += hasShownName ? 0U : 1U;
        if (!hasShownName) {
            shown = own;
        }
        m_Attribute.Choices.push_back({std::move(*own), std::move(*shown)});
    }

    std::string Shown(const JsonValue& element) const
    {
        return m_Attribute.IsPassword() ? std::string("a password") : Quote(element);
    }

    /** A text, or a number or boolean as one. */
    static std::optional<std::string> TextOf(const JsonValue& json)
    {
        if (json.IsText()) {
            return std::string(json.Text());
        }
        const Value value = ReadValue(json);
        return HasValue(value) ? std::optional(ToText(value)) : std::nullopt;
    }

    /** "CurrentValue" or "DefaultValue". */
    Value ReadOwnValue(AttributeKey key, const char* what)
    {
        const JsonValue member = m_Members[key];
        if (!IsPresent(member)) {
            return {};
        }
        const Value published = ReadValue(member);
        if (!HasValue(published)) {
            m_Findings.Add(Severity::Warning, FindingKind::UnusableValue, PointerTo(key),
                           "the " + std::string(what) + " of " + m_Attribute.Name + " is " + KindOf(member) +
                               " that no setting can have",
                           "it is left out");
            return {};
        }
        Value value = ConvertToType(published, m_Attribute.Type);
        const bool isPassword = m_Attribute.IsPassword();
        if (!IsOfType(value, m_Attribute.Type)) {
            m_Findings.Add(Severity::Warning, FindingKind::ValueOfOtherType, PointerTo(key),
                           "the " + std::string(what) + " of " + m_Attribute.Name + " is " + ToQuotedText(value) +
                               ", which is not of its type",
                           "it stays as it is");
        } else if (value != published && !isPassword) {
            m_Findings.Add(Severity::Note, FindingKind::ValueOfOtherType, PointerTo(key),
                           "the " + std::string(what) + " of " + m_Attribute.Name + " is " + ToQuotedText(published) +
                               ", which is not of its type",
                           "it is read as " + ToQuotedText(value));
        }
        if (!IsAChoice(value)) {
            m_Findings.Add(Severity::Warning, FindingKind::ValueNotAChoice, PointerTo(key),
                           "the " + std::string(what) + " of " + m_Attribute.Name + " is " + ToQuotedText(value) +
                               ", which is none of its choices",
                           "it stays as it is");
        }
        return value;
    }

    bool IsAChoice(const Value& value) const
    {
        const auto* text = std::get_if<std::string>(&value);
        return m_Attribute.Type != AttributeType::Enumeration || text == nullptr ||
               std::any_of(m_Attribute.Choices.begin(), m_Attribute.Choices.end(),
                           [&](const Choice& choice) { return choice.Name == *text || choice.DisplayName == *text; });
    }

    const Members& m_Members;
    const std::string& m_List;
    KeyOrder& m_ChoiceKeys;
    Findings& m_Findings;
    Attribute m_Attribute;
    std::size_t m_WithoutDisplayName = 0;
    std::string m_PointerToChoices; // empty until it is asked for
};

/** Leaves out attributes whose names differ from an earlier one in the case of letters alone. */
void RemoveRepeated(std::vector<Attribute>& attributes, const std::string& pointer, Findings& findings)
{
    const std::vector<std::size_t> repeated = NameTable(attributes).Repeated();
    if (repeated.empty()) {
        return;
    }
    std::vector<Attribute> kept;
    auto next = repeated.begin();
    for (std::size_t index = 0; index < attributes.size(); ++index) {
        if (next == repeated.end() || index != *next) {
            kept.push_back(std::move(attributes[index]));
            continue;
        }
        ++next;
        findings.About(attributes[index].Name);
        findings.Add(Severity::Warning, FindingKind::RepeatedAttribute, Element(pointer, attributes[index].Position),
                     "an earlier attribute has the name " + Quote(attributes[index].Name) + ", ignoring case",
                     "it is left out");
    }
    attributes = std::move(kept);
}

} // namespace

std::vector<Attribute> ReadAttributes(const JsonValue& list, const std::string& pointer, Findings& findings)
{
    std::vector<Attribute> attributes;
    KeyOrder keys, choiceKeys;
    std::size_t position = 0;
    for (const JsonMember& element : list) {
        const Members members(element.Value, keys);
        if (!element.Value.IsObject()) {
            findings.About("");
            findings.Add(Severity::Error, FindingKind::WrongKind, Element(pointer, position),
                         std::string("an attribute that is ") + KindOf(element.Value), "it is left out");
        } else if (members[AttributeKey::AttributeName].Text().empty()) {
            findings.About("");
            findings.Add(Severity::Error, FindingKind::UnnamedAttribute, Element(pointer, position),
                         "an attribute without a name", "it is left out");
        } else {
            attributes.push_back(AttributeReader(members, pointer, position, choiceKeys, findings).Read());
        }
        ++position;
    }
    RemoveRepeated(attributes, pointer, findings);
    findings.About("");
    return attributes;
}

std::vector<Menu> ReadMenus(const JsonValue& list)
{
    std::vector<Menu> menus;
    KeyOrder keys;
    std::size_t position = 0;
    for (const JsonMember& element : list) {
        const KeyedObject<MenuKey> members(element.Value, keys);
        Menu menu;
        menu.Name = members[MenuKey::MenuName].Text();
        menu.DisplayName = members[MenuKey::DisplayName].Text();
        menu.MenuPath = members[MenuKey::MenuPath].Text();
        menu.DisplayOrder = members[MenuKey::DisplayOrder].Integer();
        menu.Position = position++;
        const std::pair<MenuKey, Property> flags[] = {{MenuKey::ReadOnly, Property::ReadOnly},
                                                      {MenuKey::GrayOut, Property::GrayOut},
                                                      {MenuKey::Hidden, Property::Hidden}};
        for (const auto& [key, flag] : flags) {
            if (ReadFlag(members[key]).value_or(false)) {
                menu.Flags.Set(flag);
            }
        }
        if (!menu.Name.empty()) {
            menus.push_back(std::move(menu));
        }
    }
    return menus;
}

} // namespace RedfishConfig::Client
