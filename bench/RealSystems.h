#pragma once

#include "GeneratedSystem.h"

#include <map>
#include <string>

namespace RedfishConfigBench {

/**
 * The systems in the folder that the environment variable REDFISHCONFIG_REGISTRIES names: NAME/registry.json and, where
 * there is one, NAME/bios.json with the current values. By name; none when the variable is not set.
 */
std::map<std::string, GeneratedSystem> ReadRealSystems();

} // namespace RedfishConfigBench
