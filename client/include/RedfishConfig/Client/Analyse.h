#pragma once

/**
 * @file
 * What is odd about a registry as a whole, though each rule of it can be read.
 */

#include <RedfishConfig/Client/Adapt.h>
#include <RedfishConfig/Client/Documents.h>
#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Export.h>

#include <vector>

namespace RedfishConfig::Client {

/**
 * Looks at an adapted registry for what nobody can have meant. Adapt() has told already what a rule or an attribute
 * shows by itself. Tells, each at its place in the published registry:
 *
 * - NeverHolds: a rule that can never fire. In each alternative some attribute would have to have two values at once,
 *   to have one and not to have it, or to have one that it cannot have;
 * - AlwaysHolds: a rule that fires whatever value one attribute has, or several rules for one property that do so
 *   together;
 * - NeverChangeable: a setting that is always read-only, grayed out, immutable or hidden: a note where its own flag
 *   says so and no rule takes it away, a warning where rules do that always hold;
 * - DefaultOutOfBounds: the default of an integer or a text that its bounds do not admit;
 * - ValueCycle: rules by which current values decide each other in a circle;
 * - RuleCycle: rules in a circle, the property of each attribute depending on the value of the next (a note).
 *
 * The values that an attribute can have are its choices, true and false, or the whole numbers within its bounds; its
 * current value and its default too. Texts are not narrowed. What is not decided: orders (GTR and the like), terms on
 * flags, conditions that only several attributes together make true or false always, and a rule with joiners of both
 * kinds that becomes more than 8,192 terms. So a rule that is told is as told, and one that is not may be so all the
 * same.
 *
 * An attribute that rules entangle with others in several circles is told with one of them, and with how many
 * attributes are entangled. Takes time in proportion to the registry, but for logarithms.
 *
 * @param registry the one that @p adaptation was made of
 */
REDFISHCONFIG_EXPORT std::vector<Finding> Analyse(const RegistryDocument& registry, const Adaptation& adaptation);

} // namespace RedfishConfig::Client
