#include "TermReader.h"

#include "../intake/JsonPointer.h"
#include "../intake/Quote.h"
#include "ValueConversion.h"
#include "common/Ascii.h"
#include "common/SchemaNames.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace RedfishConfig::Client {

namespace {

std::optional<Comparison> FindComparison(std::string_view word)
{
    for (const Comparison comparison : {Comparison::Equal, Comparison::NotEqual, Comparison::Greater,
                                        Comparison::GreaterOrEqual, Comparison::Less, Comparison::LessOrEqual}) {
        if (Ascii::EqualIgnoringCase(Name(comparison), word)) {
            return comparison;
        }
    }
    return Ascii::EqualIgnoringCase(word, Schema::equalAsPublished) ? std::optional(Comparison::Equal) : std::nullopt;
}

Condition MakeTest(Test test)
{
    Condition condition;
    condition.What = Condition::Kind::Test;
    condition.Asked = std::move(test);
    return condition;
}

bool EndsInBlank(std::string_view text)
{
    return !text.empty() && text.back() == ' ';
}

/** Adapted rules have a blank behind both sides of a comparison where one of them may be empty. */
bool IsGuarded(const KeyedObject<TermKey>& term)
{
    return EndsInBlank(term[TermKey::MapFromProperty].Text()) && EndsInBlank(term[TermKey::MapFromValue].Text());
}

std::string QuotedOrKind(const JsonValue& json)
{
    return json.IsText() ? Quote(json.Text()) : KindOf(json);
}

} // namespace

TermReader::TermReader(const std::vector<Attribute>& attributes, const NameTable& names, ChoiceNumbersOfAll& choices,
                       Findings& findings)
    : m_Attributes(attributes), m_Names(names), m_Choices(choices), m_Findings(findings)
{
}

void TermReader::Begin(const std::string& list, std::size_t position)
{
    m_List = &list;
    m_Position = position;
    m_UnknownSources.clear();
}

std::string TermReader::Pointer() const
{
    return Element(*m_List, m_Position);
}

Condition TermReader::Read(const KeyedObject<TermKey>& term)
{
    if (term.HasRenamedKeys()) {
        term.ReportKeys(Pointer(), m_Findings);
    }
    const std::string_view name = term[TermKey::MapFromAttribute].Text();
    if (name == Schema::controllerAttribute) {
        m_Findings.Add(Severity::Note, FindingKind::ControllerTerm, Pointer(), "a term on the controller itself",
                       "the term does not count");
        Condition ignored;
        ignored.What = Condition::Kind::Ignored;
        return ignored;
    }
    if (name.empty()) {
        return Refuse(FindingKind::UnusableRule, "a term without an attribute");
    }
    const JsonValue property = term[TermKey::MapFromProperty];
    const std::string_view propertyName = property.Text().substr(0, property.Text().size() - (IsGuarded(term) ? 1 : 0));
    const std::optional<Property> of = FindProperty(propertyName);
    if (!of || (*of != Property::CurrentValue && (!IsFlag(*of) || *of == Property::ResetRequired))) {
        return Refuse(FindingKind::UnsupportedSourceProperty,
                      "a term on the property " + QuotedOrKind(property) + ", of which no rule can know");
    }
    const JsonValue condition = term[TermKey::MapFromCondition];
    const std::optional<Comparison> comparison = FindComparison(condition.Text());
    if (!comparison) {
        return Refuse(FindingKind::UnsupportedCondition, "the condition of a term is " + QuotedOrKind(condition),
                      *of == Property::CurrentValue ? name : std::string_view());
    }
    if (condition.Text() != Name(*comparison) || propertyName != Name(*of)) {
        m_Findings.Add(Severity::Note, FindingKind::KeyName, Pointer(),
                       "the words " + Quote(condition.Text()) + " and " + Quote(property.Text()) + " in a term",
                       "they are read as " + Quote(Name(*comparison)) + " and " + Quote(Name(*of)));
    }
    return ReadTest(term, name, *comparison, *of);
}

Condition TermReader::ReadTest(const KeyedObject<TermKey>& term, std::string_view name, Comparison comparison,
                               Property property)
{
    const JsonValue operand = term[TermKey::MapFromValue];
    Test test;
    test.Compare = comparison;
    test.Of = property;
    test.Operand = ReadValue(operand);
    if (operand.Exists() && !operand.IsNull() && !HasValue(test.Operand)) {
        return Refuse(FindingKind::UnusableRule, std::string("a term compares with ") + KindOf(operand),
                      property == Property::CurrentValue ? name : std::string_view());
    }
    if (auto* text = std::get_if<std::string>(&test.Operand); text != nullptr && IsGuarded(term)) {
        text->pop_back();
    }
    const std::optional<std::size_t> source = m_Names.Find(name);
    if (!source) {
        ReportUnknownSource(name);
        test.Name = name;
        return MakeTest(std::move(test));
    }
    const Attribute& attribute = m_Attributes[*source];
    if (attribute.Name != name) {
        m_Findings.Add(Severity::Note, FindingKind::NameInOtherCase, Pointer(), "a term on " + Quote(name),
                       "it is read as " + Quote(attribute.Name));
    }
    test.Source = *source;
    test.Name = attribute.Name;
    return property == Property::CurrentValue ? ReadValueTest(std::move(test), operand, attribute)
                                              : ReadFlagTest(std::move(test), attribute);
}

Condition TermReader::ReadFlagTest(Test test, const Attribute& source)
{
    const Value flag = ConvertToType(test.Operand, AttributeType::Boolean);
    if (!std::holds_alternative<bool>(flag) || !IsEquality(test.Compare)) {
        return Refuse(FindingKind::UnsupportedCondition, "a flag compared with " +
                                                             QuoteValue(test.Operand, source.Type) + " by " +
                                                             std::string(Name(test.Compare)));
    }
    test.Operand = flag;
    return MakeTest(std::move(test));
}

Condition TermReader::ReadValueTest(Test test, const JsonValue& operand, const Attribute& source)
{
    if (!HasValue(test.Operand)) {
        return IsEquality(test.Compare)
                   ? MakeTest(std::move(test))
                   : Refuse(FindingKind::UnsupportedCondition, "an order relative to no value", source.Name);
    }
    test.Operand = ConvertToType(std::move(test.Operand), source.Type);
    CheckOperand(test, operand, source);
    return MakeTest(std::move(test));
}

/** Whether the operand of an order is a number, or names a choice that is one. */
bool TermReader::IsNumber(const Test& test)
{
    const auto* text = std::get_if<std::string>(&test.Operand);
    if (text == nullptr || m_Attributes[test.Source].Type != AttributeType::Enumeration) {
        return NumberOf(test.Operand).has_value();
    }
    const ChoiceNumbers& choices = m_Choices.Of(test.Source);
    return choices.NumberFor(*text, false) || choices.NumberFor(*text, true);
}

/** Reports what makes a test odd; it stays as it is. */
void TermReader::CheckOperand(const Test& test, const JsonValue& operand, const Attribute& source)
{
    if (source.IsPassword()) {
        return;
    }
    const auto what = [&] { return "a term compares " + source.Name + " with " + Quote(operand); };
    if (!IsOfType(test.Operand, source.Type)) {
        m_Findings.Add(Severity::Warning, FindingKind::ValueOfOtherType, Pointer(),
                       what() + ", which is not of its type", "no value of its type equals it");
    } else if (operand.IsText() != std::holds_alternative<std::string>(test.Operand) ||
               operand.Boolean().has_value() != std::holds_alternative<bool>(test.Operand)) {
        m_Findings.Add(Severity::Note, FindingKind::ValueOfOtherType, Pointer(), what() + ", which is not of its type",
                       "it is read as " + ToQuotedText(test.Operand));
    }
    const auto* text = std::get_if<std::string>(&test.Operand);
    if (!IsEquality(test.Compare)) {
        if (!IsNumber(test)) {
            m_Findings.Add(Severity::Warning, FindingKind::OrderOfTexts, Pointer(),
                           what() + " by " + std::string(Name(test.Compare)) + ", and only numbers have an order",
                           "whether the term holds is never known");
        }
    } else if (source.Type == AttributeType::Enumeration && text != nullptr && !m_Choices.Of(test.Source).Has(*text)) {
        m_Findings.Add(Severity::Warning, FindingKind::ValueNotAChoice, Pointer(),
                       what() + ", which is none of its choices",
                       test.Compare == Comparison::Equal ? "no choice fulfils it" : "every choice fulfils it");
    }
}

/** @param source the name of the attribute whose value the term would read; empty for none */
Condition TermReader::Refuse(FindingKind kind, std::string cause, std::string_view source)
{
    Condition unknown;
    unknown.Cause = std::move(cause);
    if (const std::optional<std::size_t> index = m_Names.Find(source)) {
        unknown.Asked.Source = *index;
        unknown.Asked.Name = m_Attributes[*index].Name;
    }
    m_Findings.Add(Severity::Error, kind, Pointer(), unknown.Cause, "whether the term holds is never known");
    return unknown;
}

/** Once for a name and a rule. */
void TermReader::ReportUnknownSource(std::string_view name)
{
    const bool isNew = std::find(m_UnknownSources.begin(), m_UnknownSources.end(), name) == m_UnknownSources.end();
    if (isNew) {
        m_UnknownSources.emplace_back(name);
        m_Findings.Add(Severity::Warning, FindingKind::UnknownSource, Pointer(),
                       "terms on " + Quote(name) + ", which is no attribute of the registry",
                       "whether they hold is never known");
    }
}

} // namespace RedfishConfig::Client
