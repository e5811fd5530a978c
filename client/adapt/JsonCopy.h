#pragma once

#include <RedfishConfig/Client/Documents.h>
#include <RedfishConfig/Client/Json.h>

#include <boost/json/value.hpp>

namespace RedfishConfig::Client {

/** A published value as one of a document that is written. */
boost::json::value Copy(const JsonValue& published);

/**
 * Whether a member of an attribute, a rule or a menu would be deeper in the adapted registry than the core reads: lists
 * that are published without "RegistryEntries" come to be one level deeper.
 */
bool IsTooDeep(const JsonValue& member, const RegistryDocument& document);

} // namespace RedfishConfig::Client
