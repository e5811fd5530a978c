#include <RedfishConfig/Client/Evaluate.h>

#include "../model/ValueConversion.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** The value that the rule in force gives a property; none where no rule is true. */
Value OutcomeInForce(const Evaluation& evaluation, std::size_t attribute, Property property)
{
    const std::optional<std::size_t> rule = evaluation.RuleInForce(attribute, property);
    const Value* value = rule ? std::get_if<Value>(&evaluation.Of().Rules()[*rule].Outcome) : nullptr;
    return value != nullptr ? *value : Value();
}

void ApplyNumbers(const Evaluation& evaluation, std::size_t index, Attribute& attribute)
{
    const std::pair<Property, std::optional<std::int64_t>*> numbers[] = {
        {Property::LowerBound, &attribute.LowerBound},
        {Property::UpperBound, &attribute.UpperBound},
        {Property::ScalarIncrement, &attribute.ScalarIncrement},
        {Property::MinLength, &attribute.MinLength},
        {Property::MaxLength, &attribute.MaxLength},
        {Property::DisplayOrder, &attribute.DisplayOrder},
    };
    for (const auto& [property, number] : numbers) {
        const Value value = OutcomeInForce(evaluation, index, property);
        if (const auto* given = std::get_if<std::int64_t>(&value)) {
            *number = *given;
        }
    }
}

void ApplyTexts(const Evaluation& evaluation, std::size_t index, Attribute& attribute)
{
    const std::pair<Property, std::optional<std::string>*> texts[] = {
        {Property::DisplayName, &attribute.DisplayName},
        {Property::HelpText, &attribute.HelpText},
        {Property::WarningText, &attribute.WarningText},
        {Property::ValueExpression, &attribute.Pattern},
    };
    for (const auto& [property, text] : texts) {
        const Value value = OutcomeInForce(evaluation, index, property);
        if (const auto* given = std::get_if<std::string>(&value)) {
            *text = *given;
        }
    }
}

/** Strikes out the choices that one list does not have. The list may have either name of a choice. */
void Intersect(const Rule& rule, const SystemValues& now, std::size_t attribute, std::vector<bool>& isLeft)
{
    const auto& list = std::get<std::vector<std::string>>(rule.Outcome);
    const std::set<std::string_view> listed(list.begin(), list.end());
    const std::vector<Choice>& choices = now.Of().Attributes()[attribute].Choices;
    std::set<std::string_view> values;
    for (const Choice& choice : choices) {
        values.insert(now.NameOf(attribute, choice));
    }
    for (std::size_t choice = 0; choice < choices.size(); ++choice) {
        const std::string& value = now.NameOf(attribute, choices[choice]);
        const std::string& other = now.OtherNameOf(attribute, choices[choice]);
        const bool isListed = listed.count(value) > 0 || (listed.count(other) > 0 && values.count(other) == 0);
        isLeft[choice] = isLeft[choice] && isListed;
    }
}

} // namespace

ChoicesInForce ChoicesOf(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute)
{
    const std::vector<Choice>& published = now.Of().Attributes()[attribute].Choices;
    std::vector<bool> isLeft(published.size(), true);
    ChoicesInForce inForce;
    for (const std::size_t rule : evaluation.Of().RulesFor(attribute, Property::Choices)) {
        if (evaluation.Of(rule) == Truth::Unknown) {
            inForce.Certain = false;
        } else if (evaluation.Of(rule) == Truth::True) {
            inForce.Rules.push_back(rule);
            Intersect(evaluation.Of().Rules()[rule], now, attribute, isLeft);
        }
    }
    std::set<std::string_view> left; // of choices with one value it is enough that one is left
    for (std::size_t choice = 0; choice < published.size(); ++choice) {
        if (isLeft[choice]) {
            left.insert(now.NameOf(attribute, published[choice]));
        }
    }
    inForce.Choices = now.ChoicesOf(attribute);
    for (const Choice& choice : inForce.Choices) {
        inForce.Allowed.push_back(left.count(choice.Name) > 0);
    }
    return inForce;
}

Attribute AttributeInForce(const Evaluation& evaluation, const SystemValues& now, std::size_t index)
{
    Attribute attribute = evaluation.Of().Attributes()[index];
    ApplyNumbers(evaluation, index, attribute);
    ApplyTexts(evaluation, index, attribute);
    const Value given = OutcomeInForce(evaluation, index, Property::DefaultValue);
    attribute.DefaultValue = now.Translate(index, HasValue(given) ? given : attribute.DefaultValue);
    attribute.CurrentValue = now.ValueOf(index);
    ChoicesInForce choices = ChoicesOf(evaluation, now, index);
    attribute.Choices.clear();
    for (std::size_t choice = 0; choice < choices.Choices.size(); ++choice) {
        if (choices.Allowed[choice]) {
            attribute.Choices.push_back(std::move(choices.Choices[choice]));
        }
    }
    return attribute;
}

} // namespace RedfishConfig::Client
