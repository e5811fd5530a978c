#pragma once

#include "Attributes.h"
#include "Findings.h"

#include <RedfishConfig/Client/Adapt.h>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <map>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

struct AdaptedRules {
    boost::json::array List;
    std::vector<std::size_t> PublishedRule; ///< as in Adaptation
    std::map<RuleForm, RuleCount> Counts;
};

/**
 * Turns the rules of a registry into rules of the library's form.
 *
 * @param entries the published "RegistryEntries"
 * @param place where they stand
 * @param attributes the repaired ones
 */
AdaptedRules AdaptRules(const boost::json::object& entries, const std::string& place, const Attributes& attributes,
                        Findings& findings);

} // namespace RedfishConfig::Client
