#pragma once

#include "../intake/Findings.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/SystemValues.h>

#include <boost/json/array.hpp>

#include <vector>

namespace RedfishConfig::Client {

/**
 * The attributes of the model as the core reads them: their members as published and repaired, choices and values under
 * the names that the values use.
 *
 * @param flags of each attribute
 */
boost::json::array WriteAttributes(const SystemValues& values, const std::vector<FlagSet>& flags, Findings& findings);

/** The menus as published, without flags: those count for the settings below, which have them. */
boost::json::array WriteMenus(const Model& model, Findings& findings);

/** Attributes as they are, without flags. */
boost::json::array WritePlainAttributes(const std::vector<Attribute>& attributes);

} // namespace RedfishConfig::Client
