#include "SettingFormulas.h"

#include <algorithm>
#include <utility>

namespace RedfishConfig {

RuleOutcome AddRule(std::map<std::string, PropertyExpression>& byProperty, const DependencyRule& rule,
                    const std::string& formula)
{
    const auto entry = byProperty.find(rule.MapToProperty);
    if (entry == byProperty.end()) {
        PropertyExpression whole{rule.MapToValue, formula, formula, true, {rule.Position}};
        byProperty.emplace(rule.MapToProperty, std::move(whole));
        return RuleOutcome::Counts;
    }
    PropertyExpression& expression = entry->second;
    auto& rules = expression.Rules;
    if (std::binary_search(rules.begin(), rules.end(), rule.Position)) {
        return RuleOutcome::Counts;
    }
    if (expression.MapToValue != rule.MapToValue) {
        return RuleOutcome::Opposite;
    }
    // The formula with values follows with the next application of current values.
    rules.reserve(rules.size() + 1); // so that only the text can fail, and then nothing has changed
    expression.DisplayText += "||" + formula;
    rules.insert(std::upper_bound(rules.begin(), rules.end(), rule.Position), rule.Position);
    return RuleOutcome::Counts;
}

} // namespace RedfishConfig
