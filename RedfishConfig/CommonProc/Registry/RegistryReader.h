#pragma once

#include "../Rules/DependencyRule.h"

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig {

enum class DependencyList {
    Missing,    ///< there are no rules, which is no error
    Unreadable, ///< "Dependencies" is not an array
    Present,
};

/** What the library reads from the text of an attribute registry. */
struct RegistryContent {
    std::deque<RedfishConfigSettingInfoStru> Attributes; ///< in the registry's order
    std::string AttributesDefect;                        ///< why there is no list of attributes; else empty
    DependencyList Dependencies = DependencyList::Missing;
    std::vector<DependencyRule> Rules; ///< those that have a term, in the registry's order
};

/**
 * Reads a registry while its text is parsed, so that no document is built in between. Members of one object with the
 * same key count as the last of them.
 *
 * @throws std::exception when the text is not JSON, its root is not an object, or it exceeds a limit.
 */
RegistryContent ReadRegistryText(std::string_view text);

} // namespace RedfishConfig
