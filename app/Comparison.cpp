#include "Comparison.h"

#include "TypedValue.h"
#include "common/Ascii.h"

namespace RedfishConfig::App {

namespace json = boost::json;

namespace {

/** Why a value of this system may not be shown beside another. */
const char* WhyNotShown(const Setting& setting, const SettingStatus& status, const System& system)
{
    if (setting.IsPassword()) {
        return "a password";
    }
    if (status.Is(StatusRow::WriteOnly)) {
        return "write only";
    }
    return status.Is(StatusRow::Protected) && !system.Options().IncludeProtected ? "protected" : nullptr;
}

/** A value as it is shown: an integer in hexadecimal, where that is wanted. What is no integer stays as it is. */
std::optional<std::string> Shown(const Setting& setting, const std::optional<std::string>& value, const System& system)
{
    if (!value || !system.Options().Hex || !Ascii::EqualIgnoringCase(setting.Type(), "Integer")) {
        return value;
    }
    const std::optional<json::value> typed = TypedValue(setting, *value);
    return typed ? RedfishConfig::DecToHex(std::to_string(typed->as_int64())) : value;
}

} // namespace

Comparison Compare(const std::vector<Assignment>& values, System& system)
{
    Comparison comparison;
    for (const Assignment& value : values) {
        const Setting* setting = system.Find(value.Name);
        if (setting == nullptr) {
            comparison.Differences.push_back({value.Name, value.Value, std::nullopt, true});
            continue;
        }
        if (const char* reason = WhyNotShown(*setting, system.StatusOf(*setting), system)) {
            comparison.NotCompared.push_back({value.Name, reason});
            continue;
        }
        if (!value.Value && !value.IsNull) {
            comparison.NotCompared.push_back({value.Name, value.Defect});
            comparison.HasDefects = true;
            continue;
        }
        const auto& current = setting->Record().CurrentValue;
        const std::optional<std::string> here = current ? std::optional(PlainText(*current)) : std::nullopt;
        const bool bothThere = value.Value && here;
        if (bothThere ? !system.AreSame(*setting, *value.Value, *here) : value.Value.has_value() != here.has_value()) {
            comparison.Differences.push_back(
                {value.Name, Shown(*setting, value.Value, system), Shown(*setting, here, system), false});
        }
    }
    return comparison;
}

} // namespace RedfishConfig::App
