#include <RedfishConfig/Client/SystemValues.h>

#include "../intake/Findings.h"
#include "../intake/JsonPointer.h"
#include "../intake/Quote.h"
#include "ConditionPrograms.h"
#include "ValueConversion.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** Which names of an attribute's choices a value is one of. */
enum class Names { Undecided, ValueNames, DisplayNames };

Names NamesUsedBy(const Attribute& attribute, const Value& value)
{
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr) {
        return Names::Undecided;
    }
    bool isName = false;
    bool isDisplayName = false;
    for (const Choice& choice : attribute.Choices) {
        isName |= choice.Name == *text;
        isDisplayName |= choice.DisplayName == *text;
    }
    if (isName == isDisplayName) {
        return Names::Undecided;
    }
    return isName ? Names::ValueNames : Names::DisplayNames;
}

bool HasTwoNames(const Choice& choice)
{
    return choice.Name != choice.DisplayName;
}

} // namespace

SystemValues::SystemValues(std::shared_ptr<const Model> model) : SystemValues(std::move(model), ValuesDocument()) {}

SystemValues::SystemValues(std::shared_ptr<const Model> model, const ValuesDocument& values)
    : m_Model(std::move(model)), m_UsesDisplayNames(m_Model->Attributes().size(), false)
{
    const std::vector<Attribute>& attributes = m_Model->Attributes();
    m_Values.resize(attributes.size());
    m_Origins.resize(attributes.size(), ValueOrigin::NotReported);
    for (const auto& [name, value] : values.Values) {
        if (const std::optional<std::size_t> attribute = m_Model->Find(name)) {
            m_Values[*attribute] = ConvertToType(FromSettingValue(value), attributes[*attribute].Type);
            m_Origins[*attribute] = value ? ValueOrigin::System : ValueOrigin::Null;
        }
    }
    for (std::size_t attribute = 0; attribute < attributes.size(); ++attribute) {
        if (m_Origins[attribute] == ValueOrigin::NotReported && HasValue(attributes[attribute].CurrentValue)) {
            m_Values[attribute] = attributes[attribute].CurrentValue;
            m_Origins[attribute] = ValueOrigin::Registry;
        }
    }
    DecideNames();
    for (std::size_t attribute = 0; attribute < attributes.size(); ++attribute) {
        m_Values[attribute] = Translate(attribute, m_Values[attribute]);
    }
}

/** Decides for each enumeration; where nothing tells, as most others of the registry have it. */
void SystemValues::DecideNames()
{
    std::vector<std::size_t> undecided;
    std::ptrdiff_t balance = 0; // of those with display names
    for (std::size_t index = 0; index < m_Values.size(); ++index) {
        const Attribute& attribute = m_Model->Attributes()[index];
        if (attribute.Type != AttributeType::Enumeration ||
            std::none_of(attribute.Choices.begin(), attribute.Choices.end(), HasTwoNames)) {
            continue;
        }
        Names used = NamesUsedBy(attribute, m_Values[index]);
        used = used != Names::Undecided ? used : NamesUsedBy(attribute, attribute.CurrentValue);
        used = used != Names::Undecided ? used : NamesUsedBy(attribute, attribute.DefaultValue);
        if (used == Names::Undecided) {
            undecided.push_back(index);
        } else {
            m_UsesDisplayNames[index] = used == Names::DisplayNames;
            balance += m_UsesDisplayNames[index] ? 1 : -1;
        }
    }
    for (const std::size_t index : undecided) {
        m_UsesDisplayNames[index] = balance > 0;
    }
}

Value SystemValues::Translate(std::size_t attribute, const Value& value) const
{
    const Attribute& published = m_Model->Attributes()[attribute];
    Value typed = ConvertToType(value, published.Type);
    const auto* text = std::get_if<std::string>(&typed);
    if (published.Type != AttributeType::Enumeration || text == nullptr) {
        return typed;
    }
    if (const ChoiceNumbers* numbers = m_Model->Programs().ChoicesOf(attribute)) {
        return Value(std::string(numbers->ValueFor(*text, UsesDisplayNames(attribute))));
    }
    const std::vector<Choice>& choices = published.Choices; // few, or asked for once
    if (std::any_of(choices.begin(), choices.end(),
                    [&](const Choice& choice) { return NameOf(attribute, choice) == *text; })) {
        return typed;
    }
    const auto named = std::find_if(choices.begin(), choices.end(),
                                    [&](const Choice& choice) { return OtherNameOf(attribute, choice) == *text; });
    if (named == choices.end()) {
        return typed;
    }
    // one name for several choices, or several names for one text, would say something else
    const std::string& name = NameOf(attribute, *named);
    const bool isClear = std::all_of(choices.begin(), choices.end(), [&](const Choice& choice) {
        return (NameOf(attribute, choice) == name) == (OtherNameOf(attribute, choice) == *text);
    });
    return isClear ? Value(name) : typed;
}

bool SystemValues::AreSame(std::size_t attribute, const Value& left, const Value& right) const
{
    const auto* one = std::get_if<std::string>(&left);
    const auto* other = std::get_if<std::string>(&right);
    const Attribute& published = m_Model->Attributes()[attribute];
    if (left == right || one == nullptr || other == nullptr || published.Type != AttributeType::Enumeration) {
        return left == right;
    }
    if (const ChoiceNumbers* numbers = m_Model->Programs().ChoicesOf(attribute)) {
        return numbers->AreSame(*one, *other, UsesDisplayNames(attribute));
    }
    const auto isValue = [&](const std::string& text) {
        return std::any_of(published.Choices.begin(), published.Choices.end(),
                           [&](const Choice& choice) { return NameOf(attribute, choice) == text; });
    };
    const bool oneIsValue = isValue(*one);
    const bool otherIsValue = isValue(*other);
    return std::any_of(published.Choices.begin(), published.Choices.end(), [&](const Choice& choice) {
        const std::string& own = NameOf(attribute, choice);
        const std::string& shown = OtherNameOf(attribute, choice);
        return (oneIsValue ? own : shown) == *one && (otherIsValue ? own : shown) == *other;
    });
}

std::vector<Choice> SystemValues::ChoicesOf(std::size_t attribute) const
{
    std::vector<Choice> choices;
    std::set<std::string_view> names;
    for (const Choice& choice : m_Model->Attributes()[attribute].Choices) {
        if (names.insert(NameOf(attribute, choice)).second) {
            choices.push_back({NameOf(attribute, choice), OtherNameOf(attribute, choice)});
        }
    }
    return choices;
}

namespace {

/** Finds what is odd about the values of a system, one by one. */
class ValueCheck {
public:
    ValueCheck(const SystemValues& system, const ValuesDocument& values, std::vector<Finding>& findings)
        : m_Model(system.Of()),
          m_System(system),
          m_Values(values),
          m_InRegistry(findings, Document::Registry),
          m_InValues(findings, Document::Values)
    {
    }

    void Run()
    {
        CheckRegistryName();
        for (std::size_t attribute = 0; attribute < m_Model.Attributes().size(); ++attribute) {
            CheckChoices(attribute);
        }
        for (const auto& [name, value] : m_Values.Values) {
            CheckValue(name, FromSettingValue(value));
        }
    }

private:
    /** Controllers are careless about the name of the registry, so that alone does not mean much. */
    void CheckRegistryName()
    {
        const std::string& id = m_Model.Id();
        if (id.empty() || m_Values.AttributeRegistry.empty() || id == m_Values.AttributeRegistry) {
            return;
        }
        const auto known = static_cast<std::size_t>(
            std::count_if(m_Values.Values.begin(), m_Values.Values.end(),
                          [this](const auto& entry) { return m_Model.Find(entry.first).has_value(); }));
        const bool fits = 2 * known >= m_Values.Values.size();
        const std::string resource = m_Values.Pointer.substr(0, m_Values.Pointer.rfind('/')); // around the values
        m_InValues.Add(fits ? Severity::Note : Severity::Warning, FindingKind::ForeignRegistry,
                       Member(resource, "AttributeRegistry"),
                       "the values belong to the registry " + Quote(m_Values.AttributeRegistry) + ", and this is " +
                           Quote(id),
                       fits ? "their names fit" : "most of their names are not in this registry");
    }

    void CheckChoices(std::size_t index)
    {
        const Attribute& attribute = m_Model.Attributes()[index];
        const std::size_t kept = m_System.ChoicesOf(index).size();
        const bool isSwapped = m_System.UsesDisplayNames(index);
        if (kept == attribute.Choices.size() && !isSwapped) {
            return;
        }
        const std::string pointer = m_Model.PointerToMember(index, Property::Choices);
        m_InRegistry.About(attribute.Name);
        if (isSwapped) {
            m_InRegistry.Add(Severity::Note, FindingKind::DisplayNamesAreValues, pointer,
                             "the values of " + attribute.Name + " are display names of its choices",
                             "the display names are its values");
        }
        if (kept < attribute.Choices.size()) {
            const std::size_t repeated = attribute.Choices.size() - kept;
            m_InRegistry.Add(Severity::Warning, FindingKind::RepeatedChoice, pointer,
                             std::to_string(repeated) + (repeated == 1 ? " choice repeats" : " choices repeat") +
                                 " the value of an earlier one",
                             "the first counts");
        }
    }

    void CheckValue(const std::string& name, const Value& published)
    {
        const std::string pointer = Member(m_Values.Pointer, name);
        const std::optional<std::size_t> index = m_Model.Find(name);
        m_InValues.About(name);
        if (!index) {
            m_InValues.Add(Severity::Note, FindingKind::UnknownName, pointer,
                           "a value of " + Quote(name) + ", which the registry does not have", "it does not count");
            return;
        }
        const Attribute& attribute = m_Model.Attributes()[*index];
        if (!HasValue(published) || attribute.IsPassword()) {
            return;
        }
        m_InValues.About(attribute.Name);
        const Value typed = ConvertToType(published, attribute.Type);
        const std::string what = "the current value of " + attribute.Name + " is " + ToQuotedText(published);
        if (!IsOfType(typed, attribute.Type)) {
            m_InValues.Add(Severity::Warning, FindingKind::ValueOfOtherType, pointer,
                           what + ", which is not of its type", "it stays as it is");
        } else if (typed != published) {
            m_InValues.Add(Severity::Note, FindingKind::ValueOfOtherType, pointer, what + ", which is not of its type",
                           "it is read as " + ToQuotedText(typed));
        }
        CheckChoiceOf(*index, typed, what, pointer);
    }

    void CheckChoiceOf(std::size_t index, const Value& typed, const std::string& what, const std::string& pointer)
    {
        if (m_Model.Attributes()[index].Type != AttributeType::Enumeration ||
            !std::holds_alternative<std::string>(typed)) {
            return;
        }
        const Value translated = m_System.Translate(index, typed);
        const std::vector<Choice> choices = m_System.ChoicesOf(index);
        const bool isChoice = std::any_of(choices.begin(), choices.end(), [&](const Choice& choice) {
            return choice.Name == std::get<std::string>(translated);
        });
        if (!isChoice) {
            m_InValues.Add(Severity::Warning, FindingKind::ValueNotAChoice, pointer,
                           what + ", which is none of its choices", "it stays as it is");
        } else if (translated != typed) {
            m_InValues.Add(Severity::Note, FindingKind::DisplayNameForValue, pointer,
                           what + ", the other name of a choice", "it is read as " + ToQuotedText(translated));
        }
    }

    const Model& m_Model;
    const SystemValues& m_System;
    const ValuesDocument& m_Values;
    Findings m_InRegistry, m_InValues;
};

} // namespace

std::vector<Finding> SystemValues::Findings(const ValuesDocument& values) const
{
    std::vector<Finding> findings;
    ValueCheck(*this, values, findings).Run();
    return findings;
}

void SystemValues::Assume(std::size_t attribute, const Value& value)
{
    m_Values[attribute] = Translate(attribute, value);
    m_Origins[attribute] = HasValue(value) ? ValueOrigin::System : ValueOrigin::Null;
}

} // namespace RedfishConfig::Client
