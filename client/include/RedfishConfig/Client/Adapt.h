#pragma once

/**
 * @file
 * Writes what a registry publishes as text that the core library reads, for callers of its manager.
 */

#include <RedfishConfig/Client/Documents.h>
#include <RedfishConfig/Client/Evaluate.h>
#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/SystemValues.h>
#include <RedfishConfig/Export.h>
#include <RedfishConfig/SettingValue.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

/** What became of the published rules of one form. */
struct AdaptedCount {
    std::size_t Published = 0;
    std::size_t Adapted = 0; ///< the adapted registry answers for them, whether or not it has rules for that
    std::size_t LeftOut = 0; ///< of Undecided, without a meaning, or for what the core has no rules: choices
};

/**
 * A flag of a setting whose rules the core's text cannot hold, or whose menus are not kept as a whole. It is true in
 * the adapted registry, as a safeguard.
 */
struct UndecidedFlag {
    std::string Setting;
    Property Flag = Property::ReadOnly;
    std::string Why;                ///< a sentence
    std::vector<std::size_t> Rules; ///< positions in the published "Dependencies"
};

struct Adaptation {
    std::string RegistryText;      ///< for RedfishConfigSettingManager; empty when the registry document cannot be used
    SettingValueMap Values;        ///< likewise; those that the registry does not name among them
    std::vector<Finding> Findings; ///< those of the documents, of the model and the values, then of adapting
    std::map<RuleForm, AdaptedCount> Rules;
    std::vector<UndecidedFlag> Undecided; ///< in the order of the settings
    /**
     * Positions of published rules that the adapted registry has nothing for, ascending: for choices, which the core
     * has no rules for, and those for other properties than flags that cannot be written, with a finding.
     */
    std::vector<std::size_t> LeftOut;
    /** For each element of the adapted "Dependencies" a position in the published one. Ascending. */
    std::vector<std::size_t> PublishedRule;
    /** The same for each element of the adapted "Attributes". */
    std::vector<std::size_t> PublishedAttribute;
};

/**
 * Adapts a registry and the values that belong to it. Neither document needs to be usable: what is there is adapted.
 *
 * Afterwards every rule has the form that the core reads, and a setting's flag has the verdict that Evaluation gives,
 * uncertain ones included, for each pair that is not in Undecided. (A Hidden flag that no rule explains is what the
 * core calls protected.)
 *
 * This holds for the values that are given. For other values it holds as long as they are of their attributes' types:
 * integers within the bounds, and choices under the same names as now; and as long as none of them has operator
 * characters or the name of a setting in it. Adapt again for the values of another system. Adapting the outcome once
 * more changes neither the text nor the values. Takes time in proportion to the documents, and the text is: a pair
 * whose rules would become many times longer is undecided.
 */
REDFISHCONFIG_EXPORT Adaptation Adapt(const RegistryDocument& registry, const ValuesDocument& values);

/** The same of a model that has been read already, without the findings of the documents and of the values. */
REDFISHCONFIG_EXPORT Adaptation Adapt(const SystemValues& values);

/** The same with flags as they were found for the values that the registry came with. @param evaluation of @p values */
REDFISHCONFIG_EXPORT Adaptation Adapt(const SystemValues& values, const Evaluation& evaluation);

/**
 * A registry for the core with these attributes as they are, but without rules and flags: a manager of it judges values
 * alone. A password's values are in it.
 */
REDFISHCONFIG_EXPORT std::string PlainRegistryText(const std::vector<Attribute>& attributes);

} // namespace RedfishConfig::Client
