#include "JsonMember.h"

namespace RedfishConfig {

namespace json = boost::json;

void AssignFromJson(bool& member, const json::value& json)
{
    if (const bool* flag = json.if_bool()) {
        member = *flag;
    }
}

void AssignFromJson(std::optional<std::int64_t>& member, const json::value& json)
{
    json::error_code notExact;
    const auto number = json.to_number<std::int64_t>(notExact);
    if (!notExact) {
        member = number;
    }
}

void AssignFromJson(std::optional<std::string>& member, const json::value& json)
{
    if (const json::string* text = json.if_string()) {
        member.emplace(text->data(), text->size());
    }
}

void AssignFromJson(std::string& member, const json::value& json)
{
    if (const json::string* text = json.if_string()) {
        member.assign(text->data(), text->size());
    }
}

void AssignFromJson(SettingValue& member, const json::value& json)
{
    if (const json::string* text = json.if_string()) {
        member = std::string(text->data(), text->size());
    } else if (const bool* flag = json.if_bool()) {
        member = *flag;
    } else {
        std::optional<std::int64_t> number;
        AssignFromJson(number, json);
        if (number) {
            member = *number;
        }
    }
}

const json::value* FindMember(const json::value& json, json::string_view key)
{
    const json::object* object = json.if_object();
    return object != nullptr ? object->if_contains(key) : nullptr;
}

} // namespace RedfishConfig
