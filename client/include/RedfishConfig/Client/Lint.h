#pragma once

/**
 * @file
 * What is odd about a registry as a whole, and about the values of a system beside it.
 */

#include <RedfishConfig/Client/Evaluate.h>
#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/SystemValues.h>
#include <RedfishConfig/Export.h>

#include <vector>

namespace RedfishConfig::Client {

/**
 * Finds defects that show across rules and attributes, or that take longer to find than reading does; Model::Findings()
 * has the others:
 *
 * - UnusablePattern: a pattern that the core library cannot match values against;
 * - NeverHolds: a rule that can never be true: in each alternative some attribute would need values that it cannot
 * have;
 * - AlwaysHolds: a rule that is true whatever value one attribute has, or several rules for one property that are so
 *   together;
 * - NeverChangeable: a setting that rules which always hold make read-only, grayed out, immutable or hidden (a
 * warning), or that its own Immutable flag makes so (a note);
 * - DefaultOutOfBounds: the default of an integer or a text that its bounds do not admit. It can be set all the same;
 * - ValueCycle: rules by which current values decide each other in a cycle;
 * - RuleCycle: rules in a cycle, the property of each attribute depending on the value of the next (a note).
 *
 * The values that an attribute can have are its choices, true and false, or the integers within its bounds; its current
 * value and its default too. Contradictions are decided by sets of values, numbers by intervals. Not decided are tests
 * of flags and passwords, orders of texts that are no choices, choices that share a name, conditions that only several
 * attributes together make always true, and conditions that become more than 8,192 terms, or fewer where a registry has
 * a great many of these. So what is reported is certain, and what is not reported is not proven.
 *
 * A cycle is reported for each attribute that depends on itself, and one for each group of attributes that depend on
 * each other: the shortest through the first of them, though there may be shorter ones, with the size of the group. A
 * group that is reported for a ValueCycle is not reported for a RuleCycle. Takes time in proportion to the registry,
 * but for logarithms.
 */
REDFISHCONFIG_EXPORT std::vector<Finding> LintRegistry(const Model& model);

/**
 * Finds what does not fit between a registry and the values of a system:
 *
 * - UnexplainedFlag: a true flag of a setting that has rules for it, none of which is true (a note);
 * - DifferentFromRule: a value that differs from what a true rule for CurrentValue gives (a note);
 * - NoChoiceLeft: rules that narrow the choices of a setting to none (a warning);
 * - ValueNotAllowed: a value that is not among the choices that the rules leave (a warning);
 * - OppositeOutcome: rules with different outcomes for one property that are true together; the first counts (a
 *   warning).
 *
 * SystemValues::Findings() has what shows in a single value.
 */
REDFISHCONFIG_EXPORT std::vector<Finding> LintValues(const Evaluation& evaluation, const SystemValues& now);

} // namespace RedfishConfig::Client
