#include <RedfishConfig/Client/Attribute.h>

#include "ValueConversion.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig::Client {

namespace {

constexpr std::string_view typeNames[] = {"Boolean", "Enumeration", "Integer", "Password", "String", "Unknown"};

constexpr std::string_view propertyNames[] = {
    "ReadOnly",        "WriteOnly",      "Hidden",       "GrayOut",     "Immutable",    "IsSystemUniqueProperty",
    "ResetRequired",   "CurrentValue",   "DefaultValue", "Value",       "LowerBound",   "UpperBound",
    "ScalarIncrement", "MinLength",      "MaxLength",    "DisplayName", "DisplayOrder", "HelpText",
    "WarningText",     "ValueExpression"};
static_assert(std::size(propertyNames) == propertyCount);

} // namespace

std::string_view Name(AttributeType type)
{
    return typeNames[static_cast<std::size_t>(type)];
}

std::string_view Name(Property property)
{
    return propertyNames[static_cast<std::size_t>(property)];
}

std::optional<Property> FindProperty(std::string_view name)
{
    const auto* const found = std::find_if(std::begin(propertyNames), std::end(propertyNames),
                                           [&](std::string_view known) { return EqualIgnoringCase(known, name); });
    return found != std::end(propertyNames) ? std::optional(static_cast<Property>(found - std::begin(propertyNames)))
                                            : std::nullopt;
}

} // namespace RedfishConfig::Client
