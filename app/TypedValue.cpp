#include "TypedValue.h"

#include "Utf8.h"
#include "common/Ascii.h"
#include "common/Numbers.h"

#include <cstdint>
#include <string_view>

namespace RedfishConfig::App {

namespace json = boost::json;

std::optional<json::value> TypedValue(const Setting& setting, const std::string& text)
{
    const std::string_view type = setting.Type();
    if (Ascii::EqualIgnoringCase(type, "Integer")) {
        const std::optional<std::int64_t> number = RedfishConfig::Numbers::ReadDecimal(text);
        return number ? std::optional<json::value>(*number) : std::nullopt;
    }
    if (Ascii::EqualIgnoringCase(type, "Boolean")) {
        const std::optional<bool> truth = RedfishConfig::Numbers::ReadTruth(text);
        return truth ? std::optional<json::value>(*truth) : std::nullopt;
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

} // namespace RedfishConfig::App
