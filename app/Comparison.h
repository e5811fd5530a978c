#pragma once

#include "SavedSystem.h"
#include "System.h"

#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** A setting whose value in a file differs from that of a system. */
struct Difference {
    std::string Name;
    std::optional<std::string> There;
    std::optional<std::string> Here;
    bool Unknown = false; ///< no setting of this system
};

/** What differs between the values of a file and those of a system. */
struct Comparison {
    std::vector<Difference> Differences;
    std::vector<LeftOut> NotCompared;
    bool HasDefects = false; ///< the file has values that no setting can have
};

/** Compares as the settings have their values: "5" is 5, and the two names of a choice are one. */
Comparison Compare(const std::vector<Assignment>& values, System& system);

} // namespace RedfishConfig::App
