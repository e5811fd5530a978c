#include "Quote.h"

#include "../Limits.h"

namespace RedfishConfig::Client {

const char* KindOf(const JsonValue& value)
{
    switch (value.What()) {
    case JsonValue::Kind::Missing:
        return "missing";
    case JsonValue::Kind::Null:
        return "null";
    case JsonValue::Kind::Boolean:
        return "a boolean";
    case JsonValue::Kind::Integer:
    case JsonValue::Kind::Unsigned:
    case JsonValue::Kind::Fraction:
        return "a number";
    case JsonValue::Kind::Text:
        return "a text";
    case JsonValue::Kind::Array:
        return "a list";
    case JsonValue::Kind::Object:
        break;
    }
    return "an object";
}

std::string Cut(std::string text, std::size_t mostBytes)
{
    if (text.size() > mostBytes) {
        std::size_t end = mostBytes;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            --end; // not within a character
        }
        text.resize(end);
        text += "...";
    }
    return text;
}

std::string ShortName(const std::string& name)
{
    return Cut(name.substr(0, Limits::namedBytes + 1), Limits::namedBytes);
}

std::string Quote(const JsonValue& value)
{
    return ToText(value, Limits::quotedBytes);
}

std::string Quote(std::string_view text)
{
    return "\"" + Cut(std::string(text), Limits::quotedBytes) + "\"";
}

std::string ListInWords(std::vector<std::string> items)
{
    constexpr std::size_t mostItems = 8;
    if (items.size() > mostItems) {
        const std::size_t more = items.size() - mostItems;
        items.resize(mostItems);
        items.push_back(std::to_string(more) + " more");
    }
    std::string text;
    for (std::size_t item = 0; item < items.size(); ++item) {
        const bool isLast = item + 1 == items.size();
        text += (item == 0 ? "" : isLast ? " and " : ", ") + items[item];
    }
    return text;
}

} // namespace RedfishConfig::Client
