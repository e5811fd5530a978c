#include <RedfishConfig/Client/Evaluate.h>

#include "../model/ValueConversion.h"

#include <algorithm>
#include <map>
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

/** Counts for each choice how many lists have it. A list may have either name of a choice. */
class ChoiceCount {
public:
    ChoiceCount(const SystemValues& now, std::size_t attribute)
    {
        const std::vector<Choice>& choices = now.Of().Attributes()[attribute].Choices;
        for (std::size_t choice = 0; choice < choices.size(); ++choice) {
            m_ByValue[now.NameOf(attribute, choices[choice])].push_back(choice);
            m_ByOtherName[now.OtherNameOf(attribute, choices[choice])].push_back(choice);
        }
        m_Lists.resize(choices.size(), 0);
    }

    void Add(const std::vector<std::string>& list)
    {
        for (const std::string_view name : std::set<std::string_view>(list.begin(), list.end())) {
            for (const std::size_t choice : Named(name)) {
                if (m_Lists[choice] == m_Count) { // not by its other name already
                    ++m_Lists[choice];
                }
            }
        }
        ++m_Count;
    }

    /** Whether all lists have the choice. */
    bool IsInAll(std::size_t choice) const { return m_Lists[choice] == m_Count; }

private:
    using Choices = std::map<std::string_view, std::vector<std::size_t>>;

    /** A text that is no value may be the other name of some. */
    std::vector<std::size_t> Named(std::string_view name) const
    {
        for (const Choices* choices : {&m_ByValue, &m_ByOtherName}) {
            if (const auto found = choices->find(name); found != choices->end()) {
                return found->second;
            }
        }
        return {};
    }

    Choices m_ByValue, m_ByOtherName;
    std::vector<std::size_t> m_Lists; // of each choice: the lists that have it, as long as all had
    std::size_t m_Count = 0;
};

} // namespace

ChoicesInForce ChoicesOf(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute)
{
    const std::vector<Choice>& published = now.Of().Attributes()[attribute].Choices;
    ChoiceCount count(now, attribute);
    ChoicesInForce inForce;
    inForce.Certain = evaluation.Of().IsComplete(attribute, Property::Choices);
    for (const std::size_t rule : evaluation.Of().RulesFor(attribute, Property::Choices)) {
        if (evaluation.TruthOf(rule) == Truth::Unknown) {
            inForce.Certain = false;
        } else if (evaluation.TruthOf(rule) == Truth::True) {
            inForce.Rules.push_back(rule);
            count.Add(std::get<std::vector<std::string>>(evaluation.Of().Rules()[rule].Outcome));
        }
    }
    std::set<std::string_view> left; // of choices with one value it is enough that one is left
    for (std::size_t choice = 0; choice < published.size(); ++choice) {
        if (count.IsInAll(choice)) {
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
