#include "ValueConversion.h"
#include "common/Numbers.h"

#include <utility>

namespace RedfishConfig::Client {

namespace {

Value ToInteger(Value value)
{
    const auto* text = std::get_if<std::string>(&value);
    const auto number = text != nullptr ? Numbers::ReadInteger(*text) : std::nullopt;
    return number ? Value(*number) : std::move(value);
}

Value ToBoolean(Value value)
{
    if (const auto* text = std::get_if<std::string>(&value)) {
        const auto truth = Numbers::ReadTruth(*text);
        return truth ? Value(*truth) : std::move(value);
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr && (*number == 0 || *number == 1) ? Value(*number == 1) : std::move(value);
}

} // namespace

Value ConvertToType(Value value, AttributeType type)
{
    switch (type) {
    case AttributeType::Integer:
        return ToInteger(std::move(value));
    case AttributeType::Boolean:
        return ToBoolean(std::move(value));
    case AttributeType::Password:
        return HasValue(value) && !std::holds_alternative<Secret>(value) ? Value(Secret(ToText(value)))
                                                                         : std::move(value);
    default:
        return HasValue(value) && !std::holds_alternative<std::string>(value) ? Value(ToText(value)) : std::move(value);
    }
}

bool IsOfType(const Value& value, AttributeType type)
{
    switch (type) {
    case AttributeType::Integer:
        return !HasValue(value) || std::holds_alternative<std::int64_t>(value);
    case AttributeType::Boolean:
        return !HasValue(value) || std::holds_alternative<bool>(value);
    default:
        return true;
    }
}

std::optional<std::int64_t> NumberOf(const Value& value)
{
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return *number;
    }
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? Numbers::ReadDecimal(*text) : std::nullopt;
}

std::string QuoteValue(const Value& value, AttributeType type)
{
    return type == AttributeType::Password ? std::string("a password") : ToQuotedText(value);
}

} // namespace RedfishConfig::Client
