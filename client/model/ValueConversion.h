#pragma once

#include "../intake/ReadValue.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Value.h>

#include <cstdint>
#include <optional>
#include <string>

namespace RedfishConfig::Client {

/**
 * The value as one of the type, where it is one written in another way: "5" for an Integer, 1 for a Boolean, 5 for a
 * String. What cannot be one stays as it is; of a Password everything becomes a Secret.
 */
Value ConvertToType(Value value, AttributeType type);

/** Whether the value is one of the type; none is. */
bool IsOfType(const Value& value, AttributeType type);

/** The number by which a value is ordered; texts have one when they are decimal integers. */
std::optional<std::int64_t> NumberOf(const Value& value);

/** A value as its document may have it, for a finding: quoted, or covered when it is of a password. */
std::string QuoteValue(const Value& value, AttributeType type);

} // namespace RedfishConfig::Client
