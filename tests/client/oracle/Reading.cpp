#include "Reading.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <variant>

namespace Oracle {

namespace {

char FoldedCharacter(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

} // namespace

std::string Folded(std::string_view text)
{
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), FoldedCharacter);
    return folded;
}

const json::value* Member(const json::value& object, std::string_view key)
{
    if (!object.is_object()) {
        return nullptr;
    }
    if (const json::value* exact = object.get_object().if_contains(key)) {
        return exact;
    }
    for (const auto& member : object.get_object()) {
        if (Folded(member.key()) == Folded(key)) {
            return &member.value();
        }
    }
    return nullptr;
}

const json::array& ListMember(const json::value& object, std::string_view key)
{
    static const json::array empty;
    const json::value* member = Member(object, key);
    return member != nullptr && member->is_array() ? member->get_array() : empty;
}

std::string TextMember(const json::value& object, std::string_view key)
{
    const json::value* member = Member(object, key);
    return member != nullptr && member->is_string() ? std::string(member->get_string()) : std::string();
}

SettingValue ValueOf(const json::value& value)
{
    if (value.is_null()) {
        return std::nullopt;
    }
    if (value.is_string()) {
        return std::string(value.get_string());
    }
    if (value.is_bool()) {
        return value.get_bool();
    }
    if (value.is_int64()) {
        return value.get_int64();
    }
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (value.is_uint64() && value.get_uint64() <= largest) {
        return static_cast<std::int64_t>(value.get_uint64());
    }
    return json::serialize(value);
}

std::string TextOf(const SettingValue& value)
{
    if (!value) {
        return {};
    }
    if (const auto* text = std::get_if<std::string>(&*value)) {
        return *text;
    }
    if (const auto* number = std::get_if<std::int64_t>(&*value)) {
        return std::to_string(*number);
    }
    return std::get<bool>(*value) ? "true" : "false";
}

std::optional<std::int64_t> NumberOf(const SettingValue& value)
{
    if (!value || std::holds_alternative<bool>(*value)) {
        return std::nullopt;
    }
    std::string text = TextOf(value);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.erase(0, 1);
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::optional<bool> FlagOf(const SettingValue& value)
{
    if (!value) {
        return std::nullopt;
    }
    if (const auto* number = std::get_if<std::int64_t>(&*value)) {
        return *number == 0 || *number == 1 ? std::optional(*number == 1) : std::nullopt;
    }
    const std::string text = Folded(TextOf(value));
    return text == "true" || text == "false" ? std::optional(text == "true") : std::nullopt;
}

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    std::string piece;
    for (const char character : text) {
        if (character != separator) {
            piece += character;
        } else if (!piece.empty()) {
            pieces.push_back(piece);
            piece.clear();
        }
    }
    if (!piece.empty()) {
        pieces.push_back(piece);
    }
    return pieces;
}

std::vector<std::string> PathOf(std::string_view text)
{
    std::vector<std::string> pieces = Split(text, '/');
    pieces.erase(std::remove(pieces.begin(), pieces.end(), "."), pieces.end());
    return pieces;
}

bool IsSet(const json::value& published, const std::string& flag)
{
    const json::value* member = Member(published, flag);
    return member != nullptr && FlagOf(ValueOf(*member)).value_or(false);
}

} // namespace Oracle
