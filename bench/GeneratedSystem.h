#pragma once

#include <RedfishConfig/SettingValue.h>

#include <cstddef>
#include <string>
#include <vector>

namespace RedfishConfigBench {

/** A registry and the current values of a system that it describes. */
struct GeneratedSystem {
    std::string Registry;
    RedfishConfig::SettingValueMap Values;
    std::vector<std::string> Names; ///< in the registry's order
};

/**
 * Makes up a system of so many settings and half as many rules, shaped like real ones: some 85 % enumerations with four
 * to ten values, help texts of 150 characters, one to eight terms a rule. The same arguments give the same system.
 */
GeneratedSystem GenerateSystem(std::size_t settings, unsigned seed = 1);

/** Other current values for some of the settings of a system. */
RedfishConfig::SettingValueMap OtherValues(const GeneratedSystem& system, unsigned seed);

} // namespace RedfishConfigBench
