#pragma once

#include "common/SchemaNames.h"

#include <RedfishConfig/Client/Attribute.h>

#include <cstddef>
#include <iterator>
#include <optional>

namespace RedfishConfig::Client {

/** Row N is the key under which an attribute has property N. */
inline constexpr Schema::AttributeKey propertyKeys[] = {
    Schema::AttributeKey::ReadOnly,        Schema::AttributeKey::WriteOnly,
    Schema::AttributeKey::Hidden,          Schema::AttributeKey::GrayOut,
    Schema::AttributeKey::Immutable,       Schema::AttributeKey::IsSystemUniqueProperty,
    Schema::AttributeKey::ResetRequired,   Schema::AttributeKey::CurrentValue,
    Schema::AttributeKey::DefaultValue,    Schema::AttributeKey::Choices,
    Schema::AttributeKey::LowerBound,      Schema::AttributeKey::UpperBound,
    Schema::AttributeKey::ScalarIncrement, Schema::AttributeKey::MinLength,
    Schema::AttributeKey::MaxLength,       Schema::AttributeKey::DisplayName,
    Schema::AttributeKey::DisplayOrder,    Schema::AttributeKey::HelpText,
    Schema::AttributeKey::WarningText,     Schema::AttributeKey::ValueExpression,
};
static_assert(std::size(propertyKeys) == propertyCount);

constexpr Schema::AttributeKey KeyOf(Property property)
{
    return propertyKeys[static_cast<std::size_t>(property)];
}

/** The flag that an attribute has under the key; nothing for what is no flag. */
constexpr std::optional<Property> FlagOf(Schema::AttributeKey key)
{
    for (std::size_t flag = 0; flag < flagCount; ++flag) {
        if (propertyKeys[flag] == key) {
            return static_cast<Property>(flag);
        }
    }
    return std::nullopt;
}

} // namespace RedfishConfig::Client
