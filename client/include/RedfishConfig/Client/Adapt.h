#pragma once

/**
 * @file
 * Turns a registry and values as controllers publish them into those that the library reads, exactly, and says how.
 */

#include <RedfishConfig/Client/Documents.h>
#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Export.h>
#include <RedfishConfig/SettingValue.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** How the terms of a rule are joined. Told from the rule, and from the other rules of its registry. */
enum class RuleForm {
    SingleTerm,      ///< one term, nothing to join
    JoinerOnEarlier, ///< a joiner joins its term to the following one; grouped to the right, as the library reads it
    JoinerOnLater,   ///< a joiner joins its term to what stands before it; left to right, without precedence
    StackOrder,      ///< a term is pushed, then its joiners (perhaps none, or several) are applied to the stack
    NoJoiner,        ///< any of the terms; only where no rule of the registry has a joiner
    Nested,          ///< has "Subexpressions" or "NOT"; each list of terms is joined in one of the ways above
    None,            ///< none of these; such a rule is left out
};

/** A word that stays the same from version to version, for instance "stack-order". */
REDFISHCONFIG_EXPORT std::string_view Word(RuleForm form);

/** What became of the published rules of one form. */
struct RuleCount {
    std::size_t Published = 0;
    std::size_t Adapted = 0; ///< in the adapted registry, as one rule or several
    std::size_t LeftOut = 0; ///< each with a finding that says why
};

struct Adaptation {
    std::string RegistryText;      ///< for RedfishConfigSettingManager; empty when the registry document cannot be used
    SettingValueMap Values;        ///< likewise
    std::vector<Finding> Findings; ///< those of the registry document, of the values document, then of adapting
    std::map<RuleForm, RuleCount> Rules;
    /** For each element of the adapted "Dependencies" its position in the published one. Ascending. */
    std::vector<std::size_t> PublishedRule;
    /** The same for each element of the adapted "Attributes". */
    std::vector<std::size_t> PublishedAttribute;
};

/**
 * Adapts a registry and the values that belong to it. Neither document needs to be usable: what is there is adapted.
 *
 * Afterwards every rule has the form that the library reads, with terms joined by AND alone or as they were where they
 * had that form already; a setting's property has the verdict that the published rules give. Adapting the outcome once
 * more changes neither the text nor the values. Takes time in proportion to the documents.
 */
REDFISHCONFIG_EXPORT Adaptation Adapt(const RegistryDocument& registry, const ValuesDocument& values);

} // namespace RedfishConfig::Client
