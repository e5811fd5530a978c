#include "JsonCopy.h"

#include "../Limits.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

json::value CopyArray(const JsonValue& published)
{
    json::array array;
    array.reserve(published.Size());
    for (const JsonMember& element : published) {
        array.push_back(Copy(element.Value));
    }
    return array;
}

json::value CopyObject(const JsonValue& published)
{
    json::object object;
    object.reserve(published.Size());
    for (const JsonMember& member : published) {
        object.insert_or_assign(member.Key, Copy(member.Value));
    }
    return object;
}

/** How many arrays and objects are within each other: none in a text, one in an array of numbers. */
std::size_t DepthOf(const JsonValue& published)
{
    if (!published.IsArray() && !published.IsObject()) {
        return 0;
    }
    std::size_t deepest = 0;
    for (const JsonMember& member : published) {
        deepest = std::max(deepest, DepthOf(member.Value));
    }
    return deepest + 1;
}

} // namespace

json::value Copy(const JsonValue& published)
{
    switch (published.What()) {
    case JsonValue::Kind::Boolean:
        return published.Boolean().value_or(false);
    case JsonValue::Kind::Integer:
        return published.Integer().value_or(0);
    case JsonValue::Kind::Unsigned:
        return published.Unsigned().value_or(0);
    case JsonValue::Kind::Fraction:
        return published.Fraction().value_or(0);
    case JsonValue::Kind::Text:
        return json::value(published.Text());
    case JsonValue::Kind::Array:
        return CopyArray(published);
    case JsonValue::Kind::Object:
        return CopyObject(published);
    case JsonValue::Kind::Missing:
    case JsonValue::Kind::Null:
        break;
    }
    return nullptr;
}

bool IsTooDeep(const JsonValue& member, const RegistryDocument& document)
{
    constexpr std::size_t around = 4; // the registry, its entries, a list and an element
    return document.Registry == document.Entries && DepthOf(member) > Limits::documentDepth - around;
}

} // namespace RedfishConfig::Client
