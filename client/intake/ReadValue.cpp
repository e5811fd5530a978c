#include "ReadValue.h"

namespace RedfishConfig::Client {

Value ReadValue(const JsonValue& json)
{
    if (json.IsText()) {
        return std::string(json.Text());
    }
    if (const auto truth = json.Boolean()) {
        return *truth;
    }
    const auto number = json.Integer();
    return number ? Value(*number) : Value();
}

Value FromSettingValue(const SettingValue& value)
{
    return value ? std::visit([](const auto& held) { return Value(held); }, *value) : Value();
}

} // namespace RedfishConfig::Client
