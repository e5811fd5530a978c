#pragma once

#include "Reading.h"

#include <random>

/**
 * Random registries with values, such as makers publish them and somewhat worse: every type, every form of rules,
 * names and values with every character.
 */
namespace Oracle {

/** A setting and the values that make a difference to it. */
struct WorldSetting {
    std::string Name;
    std::string Type;                     ///< folded
    std::vector<SettingValue> Candidates; ///< choices by either name, operands of rules, numbers around bounds
    bool IsSource = false;                ///< a rule reads it
};

struct World {
    json::value Registry;
    SettingValueMap Values; ///< those that came with the registry
    std::vector<WorldSetting> Settings;
};

/** The same seed always gives the same world. */
World MakeWorld(unsigned seed);

/** A world of a registry that exists, so that RandomValues() can draw for it. */
World WorldOf(json::value registry, SettingValueMap values);

/** Values for all settings, most of them legal; some settings are not named, have no value or one that is not offered.
 */
SettingValueMap RandomValues(const World& world, std::mt19937& random);

/** One to three settings, mostly such that rules read, with a value that each could be given by hand. */
std::vector<std::pair<std::string, SettingValue>> RandomChanges(const World& world, std::mt19937& random);

} // namespace Oracle
