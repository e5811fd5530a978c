#pragma once

#include "Status.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <array>
#include <cstddef>

namespace RedfishConfig::App {

/** A property that excludes a setting from some kind of work. */
struct Exclusion {
    StatusRow Row = StatusRow::Hidden; ///< Hidden stands for hidden by a rule
    bool UnlessIncluded = false;       ///< not with SystemOptions::IncludeProtected
};

/** What excludes a setting, in the order of asking: the first that is true gives the reason. */
struct AccessFilter {
    static constexpr std::size_t most = 6;

    RedfishConfig::filterAction Action;
    bool ExcludesAll; ///< without a reason
    std::size_t Count;
    std::array<Exclusion, most> Exclusions;

    const Exclusion* begin() const { return Exclusions.data(); }
    const Exclusion* end() const { return Exclusions.data() + Count; }
};

/** The filter of an action; it is the library's own, see filterAction. */
const AccessFilter& FilterOf(RedfishConfig::filterAction action);

} // namespace RedfishConfig::App
