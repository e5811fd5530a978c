#include "Place.h"

#include "Limits.h"

#include <boost/json/serialize.hpp>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

std::string Cut(std::string text)
{
    if (text.size() > Limits::quotedBytes) {
        std::size_t end = Limits::quotedBytes;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            --end; // not within a character
        }
        text.resize(end);
        text += "...";
    }
    return text;
}

/** Whether writing the value out for a quotation is cheap. */
bool IsShort(const json::value& value)
{
    std::size_t members = 0;
    if (const json::object* object = value.if_object()) {
        members = object->size();
    } else if (const json::array* list = value.if_array()) {
        members = list->size();
    }
    return members <= Limits::quotedBytes;
}

} // namespace

std::string Member(const std::string& place, std::string_view key)
{
    std::string pointer = place + "/";
    for (const char character : key) {
        if (character == '~') {
            pointer += "~0";
        } else if (character == '/') {
            pointer += "~1";
        } else {
            pointer += character;
        }
    }
    return pointer;
}

std::string Element(const std::string& place, std::size_t position)
{
    return place + "/" + std::to_string(position);
}

const char* KindOf(const json::value& value)
{
    switch (value.kind()) {
    case json::kind::null:
        return "null";
    case json::kind::bool_:
        return "a boolean";
    case json::kind::int64:
    case json::kind::uint64:
    case json::kind::double_:
        return "a number";
    case json::kind::string:
        return "a text";
    case json::kind::array:
        return "a list";
    case json::kind::object:
        break;
    }
    return "an object";
}

std::string Quote(const json::value& value)
{
    return IsShort(value) ? Cut(json::serialize(value)) : std::string(KindOf(value)) + " of many members";
}

std::string Quote(std::string_view text)
{
    return "\"" + Cut(std::string(text)) + "\"";
}

} // namespace RedfishConfig::Client
