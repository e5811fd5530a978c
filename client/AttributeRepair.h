#pragma once

#include "Attributes.h"
#include "Findings.h"

#include <RedfishConfig/Client/Documents.h>

#include <boost/json/array.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

struct RepairedAttributes {
    boost::json::array List;            ///< for the adapted registry
    std::vector<std::size_t> Published; ///< for each of them its position in the published list
    Attributes Table;
    SettingValueMap Values;
};

/**
 * Brings the attributes of a registry, and the values that belong to them, into the form that the library reads.
 *
 * @param list the published "Attributes"
 * @param place where they stand
 */
RepairedAttributes RepairAttributes(const boost::json::array& list, const std::string& place,
                                    const ValuesDocument& values, Findings& findings);

} // namespace RedfishConfig::Client
