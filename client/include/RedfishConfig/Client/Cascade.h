#pragma once

/**
 * @file
 * What rules for CurrentValue do after a change. They are events: they act when something changes, not on what is.
 */

#include <RedfishConfig/Client/Evaluate.h>
#include <RedfishConfig/Client/SystemValues.h>
#include <RedfishConfig/Export.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/** A value that a rule gave. */
struct RuleChange {
    std::size_t Wave = 0; ///< from 1
    std::size_t Rule = 0; ///< index in Model::Rules()
    std::size_t Attribute = 0;
    Value From, To;
};

/** A rule that would have given a value and did not. */
struct RuleConflict {
    std::size_t Wave = 0;
    std::size_t Rule = 0;
    std::size_t Attribute = 0;
    Value Wanted;
    Value Kept;                        ///< what somebody set, or an earlier rule gave
    std::optional<std::size_t> KeptBy; ///< that rule; none where somebody set it
};

struct Cascade {
    std::vector<RuleChange> Changes; ///< in the order in which they happened
    std::vector<RuleConflict> Conflicts;
    std::vector<std::size_t> MayChange; ///< rules that were triggered and whose condition is unknown; each once
    bool IsCycle = false;               ///< a wave left the values and the changed settings of an earlier one: ended
    bool IsCut = false;                 ///< it was ended: after 1,000 waves, or 250,000 changes and conflicts
    SystemValues After;
};

/**
 * Changes values by hand, and lets the rules for CurrentValue act.
 *
 * A rule is triggered by the attribute that its DependencyFor names, if that is one of its sources; else by each of its
 * sources. Wave 1 are the rules that are triggered by an attribute whose value really changed and whose condition is
 * true now. All effects of a wave come together; the next wave starts from the attributes that they really changed. Of
 * rules that give an attribute different values in one wave the first of the registry counts. A value that was set by
 * hand is never overwritten.
 *
 * What a wave does follows from the values and from which of them have just changed. When both are as they were before
 * an earlier wave, all would happen again, and it is a cycle. A rule that takes back what another did makes none alone.
 * Whether rules would still have acted is not known of what was ended.
 *
 * @param changes attributes and their new values, each attribute once
 */
REDFISHCONFIG_EXPORT Cascade Change(const SystemValues& before,
                                    const std::vector<std::pair<std::size_t, Value>>& changes);

/** A setting whose value differs from what a true rule for CurrentValue gives; nothing corrects it. */
struct RuleDeviation {
    std::size_t Rule = 0;
    std::size_t Attribute = 0;
    Value Given;
};

/** The settings with a value that differs from what their first true rule for CurrentValue gives. */
REDFISHCONFIG_EXPORT std::vector<RuleDeviation> DeviationsFromRules(const Evaluation& evaluation,
                                                                    const SystemValues& now);

} // namespace RedfishConfig::Client
