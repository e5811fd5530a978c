#include <RedfishConfig/Client/Attribute.h>

#include "PropertyKeys.h"
#include "common/Ascii.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig::Client {

std::string_view Name(AttributeType type)
{
    return type == AttributeType::Unknown ? "Unknown" : Schema::Name(static_cast<Schema::Type>(type));
}

std::string_view Name(Property property)
{
    return Schema::Name(KeyOf(property));
}

std::optional<Property> FindProperty(std::string_view name)
{
    const auto* const found =
        std::find_if(std::begin(propertyKeys), std::end(propertyKeys),
                     [&](Schema::AttributeKey known) { return Ascii::EqualIgnoringCase(Schema::Name(known), name); });
    return found != std::end(propertyKeys) ? std::optional(static_cast<Property>(found - std::begin(propertyKeys)))
                                           : std::nullopt;
}

} // namespace RedfishConfig::Client
