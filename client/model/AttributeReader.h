#pragma once

#include "../intake/Findings.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Json.h>

#include <string>
#include <vector>

namespace RedfishConfig::Client {

/**
 * Reads "Attributes". What says without doubt what is meant is repaired, what does not is left out, each with a
 * finding.
 *
 * @param pointer to the array, in the document as it was given
 */
std::vector<Attribute> ReadAttributes(const JsonValue& list, const std::string& pointer, Findings& findings);

/** Reads "Menus" in the same way; an element without a name is none. */
std::vector<Menu> ReadMenus(const JsonValue& list, const std::string& pointer, Findings& findings);

} // namespace RedfishConfig::Client
