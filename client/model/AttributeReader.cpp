#include "AttributeReader.h"

#include "../intake/JsonPointer.h"
#include "../intake/KeyNames.h"
#include "../intake/Quote.h"
#include "NameTable.h"
#include "PropertyKeys.h"
#include "ValueConversion.h"
#include "common/Ascii.h"
#include "common/Numbers.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace {

AttributeType FindType(std::string_view published)
{
    published = published.substr(0, published.find_last_not_of(" \t") + 1);
    constexpr AttributeType types[] = {AttributeType::Boolean, AttributeType::Enumeration, AttributeType::Integer,
                                       AttributeType::Password, AttributeType::String};
    const auto* const found = std::find_if(std::begin(types), std::end(types), [&](AttributeType type) {
        return Ascii::EqualIgnoringCase(Name(type), published);
    });
    return found != std::end(types) ? *found : AttributeType::Unknown;
}

bool IsPresent(const JsonValue& member)
{
    return member.Exists() && !member.IsNull();
}

/** Reads the members of an element of a list. What is read in another way than published is reported. */
template <class Key>
class MemberReader {
public:
    /** @param list points to the list in which the element has this position */
    MemberReader(const KeyedObject<Key>& members, const std::string& list, std::size_t position, Findings& findings)
        : m_Members(members), m_List(list), m_Position(position), m_Findings(findings)
    {
        if (members.HasRenamedKeys()) {
            members.ReportKeys(Pointer(), findings);
        }
    }

    JsonValue operator[](Key key) const { return m_Members[key]; }
    std::string Pointer() const { return Element(m_List, m_Position); }
    std::string PointerTo(Key key) const { return Member(Pointer(), m_Members.KeyOf(key)); }

    void ReportLeftOut(Key key, FindingKind kind, Severity level, const std::string& found) const
    {
        m_Findings.Add(level, kind, PointerTo(key), found, "it is left out");
    }

    bool ReadFlag(Key key) const
    {
        const JsonValue member = m_Members[key];
        if (!IsPresent(member)) {
            return false;
        }
        const Value read = ConvertToType(ReadValue(member), AttributeType::Boolean);
        const bool* truth = std::get_if<bool>(&read);
        if (truth == nullptr) {
            ReportLeftOut(key, FindingKind::WrongKind, Severity::Warning,
                          std::string("a flag that is ") + KindOf(member));
        } else if (!member.Boolean()) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, PointerTo(key),
                           std::string("a flag that is ") + KindOf(member), "it is read as a boolean");
        }
        return truth != nullptr && *truth;
    }

    /** @param beyondRange how severe it is that a number is beyond 64 bits */
    std::optional<std::int64_t> ReadNumber(Key key, Severity beyondRange = Severity::Warning) const
    {
        const JsonValue member = m_Members[key];
        if (!IsPresent(member)) {
            return std::nullopt;
        }
        const std::optional<std::int64_t> whole = member.Integer();
        return whole ? whole : ReadOddNumber(key, member, beyondRange);
    }

    std::optional<std::string> ReadText(Key key) const
    {
        const JsonValue member = m_Members[key];
        if (member.IsText()) {
            return std::string(member.Text());
        }
        if (IsPresent(member)) {
            ReportLeftOut(key, FindingKind::WrongKind, Severity::Warning, std::string("it is ") + KindOf(member));
        }
        return std::nullopt;
    }

private:
    std::optional<std::int64_t> ReadOddNumber(Key key, const JsonValue& member, Severity beyondRange) const
    {
        if (member.IsNumber()) {
            ReportLeftOut(key, FindingKind::NumberBeyondRange, beyondRange,
                          "the number " + Quote(member) + " is not whole or beyond 64 signed bits");
            return std::nullopt;
        }
        const auto number = Numbers::ReadInteger(member.Text());
        if (number) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, PointerTo(key), "a number that is a text",
                           "it is read as a number");
        } else {
            ReportLeftOut(key, FindingKind::WrongKind, Severity::Warning,
                          std::string("a number that is ") + KindOf(member));
        }
        return number;
    }

    const KeyedObject<Key>& m_Members;
    const std::string& m_List;
    std::size_t m_Position;
    Findings& m_Findings;
};

/** Reads one attribute that has a name. */
class AttributeReader {
public:
    AttributeReader(const MemberReader<AttributeKey>& members, std::size_t position, KeyOrder& choiceKeys,
                    Findings& findings)
        : m_Members(members), m_ChoiceKeys(choiceKeys), m_Findings(findings)
    {
        m_Attribute.Position = position;
    }

    Attribute Read()
    {
        m_Attribute.Name = m_Members[AttributeKey::AttributeName].Text();
        for (std::size_t number = 0; number < flagCount; ++number) {
            const auto flag = static_cast<Property>(number);
            if (m_Members.ReadFlag(KeyOf(flag))) {
                m_Attribute.Flags.Set(flag);
            }
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
    std::string Pointer() const { return m_Members.Pointer(); }
    std::string PointerTo(AttributeKey key) const { return m_Members.PointerTo(key); }

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
            // an upper bound that no number can exceed is none
            const bool isNoBound = key == AttributeKey::UpperBound || key == AttributeKey::MaxLength;
            *number = m_Members.ReadNumber(key, isNoBound ? Severity::Note : Severity::Warning);
        }
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
            *text = m_Members.ReadText(key);
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
            m_Members.ReportLeftOut(upperKey, FindingKind::NoBound, Severity::Note, found + ", which means no bound");
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
            m_Members.ReportLeftOut(AttributeKey::Choices, FindingKind::WrongKind, Severity::Warning,
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

    const MemberReader<AttributeKey>& m_Members;
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
        const KeyedObject<AttributeKey> members(element.Value, keys);
        if (!element.Value.IsObject()) {
            findings.About("");
            findings.Add(Severity::Error, FindingKind::WrongKind, Element(pointer, position),
                         std::string("an attribute that is ") + KindOf(element.Value), "it is left out");
        } else if (members[AttributeKey::AttributeName].Text().empty()) {
            findings.About("");
            findings.Add(Severity::Error, FindingKind::UnnamedAttribute, Element(pointer, position),
                         "an attribute without a name", "it is left out");
        } else {
            findings.About(members[AttributeKey::AttributeName].Text());
            const MemberReader<AttributeKey> reader(members, pointer, position, findings);
            attributes.push_back(AttributeReader(reader, position, choiceKeys, findings).Read());
        }
        ++position;
    }
    RemoveRepeated(attributes, pointer, findings);
    findings.About("");
    return attributes;
}

namespace {

Menu ReadMenu(const MemberReader<MenuKey>& members, std::size_t position)
{
    Menu menu;
    menu.Name = members[MenuKey::MenuName].Text();
    menu.DisplayName = members.ReadText(MenuKey::DisplayName).value_or("");
    menu.MenuPath = members.ReadText(MenuKey::MenuPath).value_or("");
    menu.DisplayOrder = members.ReadNumber(MenuKey::DisplayOrder);
    menu.Position = position;
    const std::pair<MenuKey, Property> flags[] = {{MenuKey::ReadOnly, Property::ReadOnly},
                                                  {MenuKey::GrayOut, Property::GrayOut},
                                                  {MenuKey::Hidden, Property::Hidden}};
    for (const auto& [key, flag] : flags) {
        if (members.ReadFlag(key)) {
            menu.Flags.Set(flag);
        }
    }
    return menu;
}

} // namespace

std::vector<Menu> ReadMenus(const JsonValue& list, const std::string& pointer, Findings& findings)
{
    std::vector<Menu> menus;
    KeyOrder keys;
    std::size_t position = 0;
    for (const JsonMember& element : list) {
        const KeyedObject<MenuKey> members(element.Value, keys);
        if (!element.Value.IsObject()) {
            findings.Add(Severity::Error, FindingKind::WrongKind, Element(pointer, position),
                         std::string("a menu that is ") + KindOf(element.Value), "it is left out");
        } else if (members[MenuKey::MenuName].Text().empty()) {
            findings.Add(Severity::Error, FindingKind::UnnamedMenu, Element(pointer, position), "a menu without a name",
                         "it is left out");
        } else {
            menus.push_back(ReadMenu(MemberReader<MenuKey>(members, pointer, position, findings), position));
        }
        ++position;
    }
    return menus;
}

} // namespace RedfishConfig::Client
