#include <RedfishConfig/Client/Value.h>

#include "../Limits.h"
#include "Quote.h"

#include <boost/json/serialize.hpp>
#include <boost/json/string_view.hpp>

namespace RedfishConfig::Client {

namespace {

/** What ToText() writes for each kind of value. */
struct Printer {
    std::string operator()(std::monostate /*none*/) const { return "null"; }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool truth) const { return truth ? "true" : "false"; }
    std::string operator()(const Secret& /*secret*/) const { return passwordMask; }
};

} // namespace

std::string ToText(const Value& value)
{
    return std::visit(Printer(), value);
}

std::string ToQuotedText(const Value& value)
{
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? Cut(boost::json::serialize(boost::json::string_view(*text)), Limits::quotedBytes)
                           : ToText(value);
}

SettingValue Reveal(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return *number;
    }
    if (const auto* truth = std::get_if<bool>(&value)) {
        return *truth;
    }
    const auto* secret = std::get_if<Secret>(&value);
    return secret != nullptr ? SettingValue(secret->Reveal()) : SettingValue();
}

} // namespace RedfishConfig::Client
