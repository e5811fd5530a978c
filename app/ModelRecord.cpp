#include "ModelRecord.h"

#include <variant>

namespace RedfishConfig::App {

using Client::Property;

Client::Attribute ShownAttribute(const Client::Evaluation& evaluation, const Client::SystemValues& values,
                                 std::size_t attribute)
{
    Client::Attribute shown = Client::AttributeInForce(evaluation, values, attribute);
    if (values.UsesDisplayNames(attribute)) {
        for (Client::Choice& choice : shown.Choices) {
            choice.DisplayName = choice.Name;
        }
    }
    return shown;
}

SettingRecord ToRecord(const Client::Attribute& attribute)
{
    SettingRecord record;
    record.AttributeName = attribute.Name;
    record.Type = std::string(Client::Name(attribute.Type));
    record.ResetRequired = attribute.Flags.Has(Property::ResetRequired);
    record.DisplayOrder = attribute.DisplayOrder;
    record.LowerBound = attribute.LowerBound;
    record.UpperBound = attribute.UpperBound;
    record.ScalarIncrement = attribute.ScalarIncrement;
    record.MinLength = attribute.MinLength;
    record.MaxLength = attribute.MaxLength;
    record.DisplayName = attribute.DisplayName;
    record.HelpText = attribute.HelpText;
    record.WarningText = attribute.WarningText;
    record.MenuPath = attribute.MenuPath;
    record.ValueExpression = attribute.Pattern;
    record.CurrentValue = Held(attribute.CurrentValue);
    record.DefaultValue = Held(attribute.DefaultValue);
    for (const Client::Choice& choice : attribute.Choices) {
        record.Value.emplace(choice.Name, choice.DisplayName);
    }
    return record;
}

Client::Value DefaultInForce(const Client::Evaluation& evaluation, const Client::SystemValues& values,
                             std::size_t attribute)
{
    if (const auto rule = evaluation.RuleInForce(attribute, Property::DefaultValue)) {
        if (const auto* value = std::get_if<Client::Value>(&values.Of().Rules()[*rule].Outcome)) {
            return values.Translate(attribute, *value);
        }
    }
    return values.Translate(attribute, values.Of().Attributes()[attribute].DefaultValue);
}

RedfishConfig::SettingValue Held(const Client::Value& value)
{
    return std::holds_alternative<Client::Secret>(value) ? std::nullopt : Client::Reveal(value);
}

} // namespace RedfishConfig::App
