#pragma once

#include "../intake/Findings.h"

#include <RedfishConfig/Client/Adapt.h>
#include <RedfishConfig/Client/Evaluate.h>
#include <RedfishConfig/Client/SystemValues.h>

#include <boost/json/array.hpp>

#include <cstddef>
#include <map>
#include <vector>

namespace RedfishConfig::Client {

/** The rules of a registry as the core reads them. */
struct WrittenFormulas {
    boost::json::array Dependencies;
    std::vector<std::size_t> PublishedRule; ///< for each of them
    std::map<RuleForm, AdaptedCount> Counts;
    std::vector<UndecidedFlag> Undecided;
    std::vector<std::size_t> LeftOut; ///< positions of rules for other properties than flags; ascending
    std::vector<FlagSet> Flags;       ///< for each attribute, the flags that it is to have beside these rules
};

/** Writes rules and flags so that the core comes to the verdicts of the evaluation. */
WrittenFormulas WriteFormulas(const Evaluation& evaluation, const SystemValues& values, Findings& findings);

} // namespace RedfishConfig::Client
