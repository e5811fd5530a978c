#include "JsonText.h"

#include "Text.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <algorithm>
#include <string_view>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

constexpr char32_t replacementCharacter = 0xfffd;

/** A list or object without others in it stays on one line up to this many bytes. */
constexpr std::size_t longestLine = 100;

void AppendString(std::string_view string, std::string& text)
{
    text += '"';
    for (std::size_t position = 0; position < string.size();) {
        const Character character = CharacterAt(string, position);
        const char32_t code = character.Valid ? character.Code : replacementCharacter;
        if (code == '"' || code == '\\') {
            text += '\\';
            text += static_cast<char>(code);
        } else if (code == '\n') {
            text += "\\n";
        } else if (code == '\t') {
            text += "\\t";
        } else if (SteersTerminal(code) || !character.Valid) {
            text += "\\u" + HexDigits(code, 4);
        } else {
            text += string.substr(position, character.Bytes);
        }
        position += character.Bytes;
    }
    text += '"';
}

bool IsScalar(const json::value& value)
{
    return !value.is_structured();
}

bool HoldsOnlyScalars(const json::value& value)
{
    if (const json::array* array = value.if_array()) {
        return std::all_of(array->begin(), array->end(), IsScalar);
    }
    const json::object* object = value.if_object();
    return object != nullptr && std::all_of(object->begin(), object->end(), [](const json::key_value_pair& member) {
               return IsScalar(member.value());
           });
}

/** Where a value stands: how deep, and whether on one line with what it is in. */
struct Layout {
    std::size_t Level = 0;
    bool OneLine = false;
};

void AppendValue(const json::value& value, Layout layout, std::string& text);

/** Writes what stands between two brackets, one item a line unless all is on one. */
template <class Items, class AppendItem>
void AppendItems(const char* brackets, const Items& items, Layout layout, std::string& text, AppendItem append)
{
    const auto breakLine = [&](std::size_t level) { text += layout.OneLine ? "" : "\n" + std::string(2 * level, ' '); };
    text += brackets[0];
    const char* separator = "";
    for (const auto& item : items) {
        text += separator;
        breakLine(layout.Level + 1);
        append(item);
        separator = layout.OneLine ? ", " : ",";
    }
    if (!items.empty()) {
        breakLine(layout.Level);
    }
    text += brackets[1];
}

void AppendScalarOrItems(const json::value& value, Layout layout, std::string& text)
{
    const Layout inner{layout.Level + 1, layout.OneLine};
    if (const json::object* object = value.if_object()) {
        AppendItems("{}", *object, layout, text, [&](const json::key_value_pair& member) {
            AppendString(member.key(), text);
            text += ": ";
            AppendValue(member.value(), inner, text);
        });
    } else if (const json::array* array = value.if_array()) {
        AppendItems("[]", *array, layout, text, [&](const json::value& item) { AppendValue(item, inner, text); });
    } else if (const json::string* string = value.if_string()) {
        AppendString(*string, text);
    } else {
        text += json::serialize(value);
    }
}

void AppendValue(const json::value& value, Layout layout, std::string& text)
{
    if (HoldsOnlyScalars(value)) {
        std::string line;
        AppendScalarOrItems(value, {layout.Level, true}, line);
        if (2 * layout.Level + line.size() <= longestLine) {
            text += line;
            return;
        }
    }
    AppendScalarOrItems(value, layout, text);
}

} // namespace

std::string JsonText(const json::value& value)
{
    std::string text;
    AppendValue(value, {}, text);
    return text;
}

} // namespace RedfishConfigTool
