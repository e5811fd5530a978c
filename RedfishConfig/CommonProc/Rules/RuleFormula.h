#pragma once

#include "DependencyRule.h"

#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig {

/**
 * The formula of a rule in terms of ATTRIBUTE.PROPERTY, for instance "((A.CurrentValue==X)&&(B.CurrentValue!=Y))".
 * Nothing when the rule is unusable.
 *
 * @param defects receives what is wrong with the rule, as the log says it; null when nobody wants to know
 */
std::optional<std::string> ComposeFormula(const DependencyRule& rule, std::vector<std::string>* defects = nullptr);

} // namespace RedfishConfig
