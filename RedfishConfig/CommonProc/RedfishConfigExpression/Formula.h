#pragma once

#include <string>

namespace RedfishConfig {

/**
 * Evaluates a formula of literal texts, operators and parentheses; see RedfishConfigExpression::Calculate().
 * Knows nothing of settings.
 *
 * @throws std::string the message, when the formula cannot be calculated.
 */
bool CalculateFormula(const std::string& formula);

} // namespace RedfishConfig
