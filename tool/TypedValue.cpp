#include "TypedValue.h"

#include "Text.h"

#include <charconv>
#include <cstdint>
#include <string_view>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

bool IsUtf8(const std::string& text)
{
    for (std::size_t position = 0; position < text.size();) {
        const Character character = CharacterAt(text, position);
        if (!character.Valid) {
            return false;
        }
        position += character.Bytes;
    }
    return true;
}

/** Reads an optional sign and decimal digits, and nothing else. */
std::optional<std::int64_t> Integer(const std::string& text)
{
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + (hasPlus ? 1 : 0), end, number);
    return error == std::errc() && stop == end ? std::optional<std::int64_t>(number) : std::nullopt;
}

} // namespace

std::optional<json::value> TypedValue(const Setting& setting, const std::string& text)
{
    const std::string_view type = setting.Type();
    if (EqualsIgnoringCase(type, "Integer")) {
        const std::optional<std::int64_t> number = Integer(text);
        return number ? std::optional<json::value>(*number) : std::nullopt;
    }
    if (EqualsIgnoringCase(type, "Boolean")) {
        const bool isTrue = EqualsIgnoringCase(text, "true");
        return isTrue || EqualsIgnoringCase(text, "false") ? std::optional<json::value>(isTrue) : std::nullopt;
    }
    return IsUtf8(text) ? std::optional<json::value>(json::string(text)) : std::nullopt;
}

bool IsSameValue(const Setting& setting, const std::string& left, const std::string& right)
{
    if (left == right) {
        return true;
    }
    const std::optional<json::value> typed = TypedValue(setting, left);
    return typed && typed == TypedValue(setting, right);
}

std::string PlainText(const RedfishConfig::SettingAlternative& value)
{
    return RedfishConfig::GetOptionalVarAsString(value);
}

} // namespace RedfishConfigTool
