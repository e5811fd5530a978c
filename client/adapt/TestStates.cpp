#include "TestStates.h"

#include "../Limits.h"
#include "../model/ValueConversion.h"
#include "common/Numbers.h"

#include <utility>

namespace RedfishConfig::Client {

namespace {

ValueSet OfType(const Model& model, std::size_t attribute)
{
    switch (model.Attributes()[attribute].Type) {
    case AttributeType::Boolean:
        return ValueSet::Texts({"false", "true"});
    case AttributeType::Integer:
        return ValueSet::WithinBounds(model, attribute);
    default:
        return ValueSet::AnyText();
    }
}

} // namespace

std::optional<Value> OnlyValueOf(const ValueSet& states)
{
    const auto& texts = states.ListedTexts();
    const auto& intervals = states.Intervals();
    if (states.HasNoValue() || states.IsComplementOfTexts() || texts.size() + intervals.size() != 1) {
        return std::nullopt;
    }
    if (texts.size() == 1) {
        return Value(*texts.begin());
    }
    const auto& [first, last] = intervals.front();
    return first == last ? std::optional(Value(first)) : std::nullopt;
}

const ValueSet& TestStates::PossibleOf(std::size_t attribute)
{
    const auto found = m_Possible.find(attribute);
    if (found != m_Possible.end()) {
        return found->second;
    }
    const ValueSet possible =
        OfType(m_Values.Of(), attribute) | ValueSet::Of(m_Values.ValueOf(attribute)) | ValueSet::NoValue();
    return m_Possible.emplace(attribute, possible).first->second;
}

StatesOfTest TestStates::Of(const Test& test)
{
    if (test.Source == noAttribute || m_Values.Of().Attributes()[test.Source].IsPassword()) {
        return {};
    }
    const bool isEqual = test.Compare == Comparison::Equal;
    if (!isEqual && test.Compare != Comparison::NotEqual) {
        return OrderOf(test);
    }
    StatesOfTest states;
    if (NamesTooMany(test)) {
        states.Defect = "compares " + m_Values.Of().Attributes()[test.Source].Name + " with a name of too many choices";
        return states;
    }
    states.True = HasValue(test.Operand) ? EqualTo(test) : ValueSet::NoValue();
    states.False = HasValue(test.Operand) ? (states.True | ValueSet::NoValue()).Complement() : states.True.Complement();
    if (!isEqual) {
        std::swap(states.True, states.False);
    }
    return states;
}

const TestStates::ChoiceTexts& TestStates::ChoicesOf(std::size_t attribute)
{
    const auto [entry, isNew] = m_Choices.try_emplace(attribute);
    ChoiceTexts& texts = entry->second;
    if (isNew) {
        for (const Choice& choice : m_Values.Of().Attributes()[attribute].Choices) {
            const std::string& name = m_Values.NameOf(attribute, choice);
            texts.Values.insert(name);
            texts.ByOtherName[m_Values.OtherNameOf(attribute, choice)].insert(name);
        }
    }
    return texts;
}

bool TestStates::HoldsSeveralChoices(std::size_t attribute)
{
    const auto* held = std::get_if<std::string>(&m_Values.ValueOf(attribute));
    if (held == nullptr || m_Values.Of().Attributes()[attribute].Type != AttributeType::Enumeration) {
        return false;
    }
    const ChoiceTexts& choices = ChoicesOf(attribute);
    const auto named = choices.ByOtherName.find(*held);
    return choices.Values.count(*held) == 0 && named != choices.ByOtherName.end() && named->second.size() > 1;
}

/** Whether the operand is another name of more choices than are written one by one. */
bool TestStates::NamesTooMany(const Test& test)
{
    const auto* text = std::get_if<std::string>(&test.Operand);
    if (text == nullptr || m_Values.Of().Attributes()[test.Source].Type != AttributeType::Enumeration) {
        return false;
    }
    const ChoiceTexts& choices = ChoicesOf(test.Source);
    const auto named = choices.ByOtherName.find(*text);
    return choices.Values.count(*text) == 0 && named != choices.ByOtherName.end() &&
           named->second.size() > Limits::choicesOfName;
}

/** A text that is no value of an enumeration, but another name of choices, is any of these. */
ValueSet TestStates::EqualTo(const Test& test)
{
    const auto* text = std::get_if<std::string>(&test.Operand);
    if (text != nullptr && m_Values.Of().Attributes()[test.Source].Type == AttributeType::Enumeration) {
        const ChoiceTexts& choices = ChoicesOf(test.Source);
        const auto named = choices.ByOtherName.find(*text);
        if (choices.Values.count(*text) == 0 && named != choices.ByOtherName.end()) {
            return ValueSet::Texts(named->second);
        }
    }
    return ValueSet::Of(test.Operand);
}

/** Integers are ordered, and texts that are integers. */
StatesOfTest TestStates::OrderOf(const Test& test)
{
    const std::optional<std::int64_t> operand = NumberOf(m_Values.Translate(test.Source, test.Operand));
    if (!operand) {
        return {};
    }
    const Attribute& source = m_Values.Of().Attributes()[test.Source];
    Test numeric = test;
    numeric.Operand = *operand;
    StatesOfTest states;
    states.True = ValueSet::Fulfilling(numeric).value_or(ValueSet::Nothing());
    states.False = ValueSet::AnyInteger() & states.True.Complement();
    std::set<std::string> texts;
    if (source.Type == AttributeType::Enumeration) {
        if (source.Choices.size() > Limits::orderedChoices) {
            states.Defect = "asks for the order of " + source.Name + ", which has too many choices";
            return states;
        }
        texts = ChoicesOf(test.Source).Values;
    }
    if (const auto* held = std::get_if<std::string>(&m_Values.ValueOf(test.Source))) {
        texts.insert(*held);
    }
    std::set<std::string> fulfilling, others;
    for (const std::string& text : texts) {
        if (const auto number = Numbers::ReadDecimal(text)) {
            (states.True.Contains(*number) ? fulfilling : others).insert(text);
        }
    }
    states.True = states.True | ValueSet::Texts(std::move(fulfilling));
    states.False = states.False | ValueSet::Texts(std::move(others));
    const bool hasAnyText = source.Type == AttributeType::String || source.Type == AttributeType::Unknown ||
                            (source.Type == AttributeType::Enumeration && source.Choices.empty());
    if (hasAnyText) {
        states.Defect = "asks for the order of " + source.Name + ", which can have any text as its value";
    }
    return states;
}

} // namespace RedfishConfig::Client
