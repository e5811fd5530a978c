#pragma once

#include "AppNames.h"
#include "app/Documents.h"

#include <functional>
#include <string>
#include <vector>

namespace RedfishConfigTool {

/** What the values have that no setting can hold, a line each. */
std::vector<std::string> RemarksOn(const Documents& documents);

/** Whether an answer was about the setting of that name. */
using IsAbout = std::function<bool(const std::string&)>;

/** A line that counts the doubts about what was answered, by the files that they are in; empty when there are none. */
std::string Summary(const DocumentFiles& files, const std::vector<Doubt>& doubts, const IsAbout& isAbout);

/** "1 error, 2 warnings, 3 notes", without those that there are none of. */
std::string CountedFindings(const std::vector<RedfishConfig::Client::Finding>& findings);

} // namespace RedfishConfigTool
