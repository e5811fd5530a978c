#include "Value.h"

#include <algorithm>
#include <charconv>

namespace RedfishConfig::Client {

namespace json = boost::json;

SettingValue ReadValue(const json::value& json)
{
    if (const json::string* text = json.if_string()) {
        return std::string(*text);
    }
    if (const bool* truth = json.if_bool()) {
        return *truth;
    }
    if (json.is_number()) {
        json::error_code notExact;
        const auto number = json.to_number<std::int64_t>(notExact);
        if (!notExact) {
            return number;
        }
    }
    return std::nullopt;
}

json::value ToJson(const SettingValue& value)
{
    return value ? VariantToJson(*value) : json::value();
}

std::optional<std::int64_t> ReadInteger(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
        if (text.front() == '-') {
            return std::nullopt;
        }
    } else if (text.size() > 1 && text.front() == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(number) : std::nullopt;
}

std::optional<bool> ReadTruth(std::string_view text)
{
    const std::string lower = LowerCase(text);
    if (lower == "true" || lower == "false") {
        return lower == "true";
    }
    return std::nullopt;
}

SettingValue ConvertToType(const SettingValue& value, std::string_view lowerCaseType)
{
    if (!value) {
        return value;
    }
    if (lowerCaseType == "integer") {
        if (const auto* text = std::get_if<std::string>(&*value)) {
            if (const auto number = ReadInteger(*text)) {
                return *number;
            }
        }
    } else if (lowerCaseType == "boolean") {
        if (const auto* text = std::get_if<std::string>(&*value)) {
            if (const auto truth = ReadTruth(*text)) {
                return *truth;
            }
        } else if (*value == SettingAlternative(std::int64_t{0}) || *value == SettingAlternative(std::int64_t{1})) {
            return std::get<std::int64_t>(*value) == 1;
        }
    } else if (!std::holds_alternative<std::string>(*value)) {
        return GetOptionalVarAsString(value); // texts and choices
    }
    return value;
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

} // namespace RedfishConfig::Client
