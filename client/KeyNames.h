#pragma once

#include "Findings.h"

#include <boost/json/object.hpp>

#include <string>

namespace RedfishConfig::Client {

/** The objects of a registry whose keys are known. */
enum class KeyedObject { Attribute, Choice, Rule, Dependency, Term };

/** Gives keys in other letter case, and older ones, the name that they have today. A key that is there already stays.
 */
void RepairKeys(boost::json::object& object, KeyedObject kind, const std::string& place, Findings& findings);

} // namespace RedfishConfig::Client
