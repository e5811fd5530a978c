#pragma once

#include "AppNames.h"
#include "app/System.h"

#include <string>
#include <vector>

namespace RedfishConfigTool {

/**
 * The values that a setting accepts, for a person: the choices of an Enumeration, the range of an Integer or the length
 * of a text in words. One line at least.
 */
std::vector<std::string> DescribeValidValues(const RedfishConfig::RedfishConfigSettingInfoStru& record,
                                             const SystemOptions& options);

} // namespace RedfishConfigTool
