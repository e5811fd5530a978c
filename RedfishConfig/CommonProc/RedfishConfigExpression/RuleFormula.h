#pragma once

#include "../Registry/DependencyRule.h"

#include <optional>
#include <string>

namespace RedfishConfig {

/**
 * The formula of a rule in terms of ATTRIBUTE.PROPERTY, for instance "((A.CurrentValue==X)&&(B.CurrentValue!=Y))".
 * Nothing when the rule is unusable, which is logged.
 */
std::optional<std::string> ComposeFormula(const DependencyRule& rule);

} // namespace RedfishConfig
