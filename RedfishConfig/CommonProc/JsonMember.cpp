#include "JsonMember.h"

namespace RedfishConfig {

namespace json = boost::json;

namespace {

std::optional<std::int64_t> WholeNumber(const JsonScalar& scalar)
{
    if (const auto* number = std::get_if<std::int64_t>(&scalar)) {
        return *number;
    }
    json::value other;
    if (const auto* fraction = std::get_if<double>(&scalar)) {
        other = *fraction;
    } else if (const auto* large = std::get_if<std::uint64_t>(&scalar)) {
        other = *large;
    }
    json::error_code notExact;
    const auto number = other.to_number<std::int64_t>(notExact);
    return notExact ? std::nullopt : std::optional(number);
}

} // namespace

JsonScalar ScalarOf(const json::value& json)
{
    switch (json.kind()) {
    case json::kind::bool_:
        return json.get_bool();
    case json::kind::int64:
        return json.get_int64();
    case json::kind::uint64:
        return json.get_uint64();
    case json::kind::double_:
        return json.get_double();
    case json::kind::string:
        return std::string_view(json.get_string().data(), json.get_string().size());
    default:
        return {};
    }
}

void AssignScalar(bool& member, const JsonScalar& scalar)
{
    if (const bool* flag = std::get_if<bool>(&scalar)) {
        member = *flag;
    }
}

void AssignScalar(std::optional<std::int64_t>& member, const JsonScalar& scalar)
{
    if (const std::optional<std::int64_t> number = WholeNumber(scalar)) {
        member = number;
    }
}

void AssignScalar(std::optional<std::string>& member, const JsonScalar& scalar)
{
    if (const auto* text = std::get_if<std::string_view>(&scalar)) {
        member.emplace(*text);
    }
}

void AssignScalar(std::string& member, const JsonScalar& scalar)
{
    if (const auto* text = std::get_if<std::string_view>(&scalar)) {
        member.assign(*text);
    }
}

void AssignScalar(SettingValue& member, const JsonScalar& scalar)
{
    if (const auto* text = std::get_if<std::string_view>(&scalar)) {
        member.emplace(std::in_place_type<std::string>, *text);
    } else if (const bool* flag = std::get_if<bool>(&scalar)) {
        member = *flag;
    } else if (const std::optional<std::int64_t> number = WholeNumber(scalar)) {
        member = *number;
    }
}

} // namespace RedfishConfig
