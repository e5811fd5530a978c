#pragma once

#include "Setting.h"

#include <RedfishConfig/Client/Evaluate.h>
#include <RedfishConfig/Client/SystemValues.h>

#include <cstddef>

namespace RedfishConfig::App {

/**
 * An attribute as it is in force, for a person: where the display names of choices are the values, the other names are
 * left out, which say nothing.
 */
RedfishConfig::Client::Attribute ShownAttribute(const RedfishConfig::Client::Evaluation& evaluation,
                                                const RedfishConfig::Client::SystemValues& values,
                                                std::size_t attribute);

/** Its record, without flags, and of a password without its values. */
SettingRecord ToRecord(const RedfishConfig::Client::Attribute& attribute);

/** The default in force, under the name that the attribute's values use; none where there is none. */
RedfishConfig::Client::Value DefaultInForce(const RedfishConfig::Client::Evaluation& evaluation,
                                            const RedfishConfig::Client::SystemValues& values, std::size_t attribute);

/** The value as a setting holds it; none for a password. */
RedfishConfig::SettingValue Held(const RedfishConfig::Client::Value& value);

} // namespace RedfishConfig::App
