#include <RedfishConfig/RedfishConfigExpression.h>

#include "../../logging/LogLine.h"
#include "../Registry/Registry.h"
#include "Formula.h"
#include "RuleFormula.h"

#include <algorithm>
#include <set>
#include <unordered_set>
#include <utility>

namespace RedfishConfig {

namespace {

/** Appends names to a list that holds each once. */
class UniqueNames {
public:
    explicit UniqueNames(std::vector<std::string>& names) : m_Names(names), m_Known(names.begin(), names.end()) {}

    void AddSourcesOf(const DependencyRule& rule)
    {
        for (const MapFromTerm& term : rule.MapFrom) {
            if (!term.MapFromAttribute.empty() && m_Known.insert(term.MapFromAttribute).second) {
                m_Names.push_back(term.MapFromAttribute);
            }
        }
    }

private:
    std::vector<std::string>& m_Names;
    std::unordered_set<std::string> m_Known;
};

/** Lets a further rule decide a property that has a formula: either condition leads to the same value, or it is
 * dropped. */
void JoinRule(PropertyExpression& expression, const DependencyRule& rule, const std::string& formula)
{
    if (expression.MapToValue != rule.MapToValue) {
        LOG_LINE(LogDetail) << "Found one property has opposite MapToValue, need comfirm with BMC and UEFI.";
        return;
    }
    // The formula with values follows with the next application of current values.
    auto& rules = expression.Rules;
    rules.reserve(rules.size() + 1); // so that only the text can fail, and then nothing has changed
    expression.DisplayText += "||" + formula;
    rules.insert(std::upper_bound(rules.begin(), rules.end(), rule.Position), rule.Position);
}

} // namespace

RedfishConfigExpression::RedfishConfigExpression() = default;
RedfishConfigExpression::RedfishConfigExpression(const RedfishConfigExpression& other) = default;
RedfishConfigExpression& RedfishConfigExpression::operator=(const RedfishConfigExpression& other) = default;
RedfishConfigExpression::~RedfishConfigExpression() = default;

bool RedfishConfigExpression::Calculate(const std::string& formula)
{
    return CalculateFormula(formula);
}

const Registry& RedfishConfigExpression::ReadRegistry(const std::string& text)
{
    if (!m_Registry) {
        m_Registry = Registry::Read(text);
    }
    return *m_Registry;
}

RedfishConfigResult RedfishConfigExpression::ReadDependencyList(const std::string& text)
{
    if (m_DependenciesRead) {
        return RESULT_SUCCEED;
    }
    switch (ReadRegistry(text).Dependencies()) {
    case Registry::DependencyList::Unreadable:
        m_Registry.reset(); // what cannot be used is not kept
        LOG_LINE(LogDetail) << "Parse settings dependency failed.";
        LOG_LINE(LogDetail) << "Failed to parse the settings dependency info.";
        return {RESULT_HTTP_RESPONSE_PARSE_FAILED, ResultMessages().at(RESULT_HTTP_RESPONSE_PARSE_FAILED)};
    case Registry::DependencyList::Missing:
        LOG_LINE(LogDetail) << "The schema not include dependency information.";
        break;
    case Registry::DependencyList::Present:
        break;
    }
    m_DependenciesRead = true;
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigExpression::ParseAllSettingsDependency(const std::string& registry,
                                                                        std::vector<std::string>& /*related*/,
                                                                        ExpressionMaps& maps)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigExpression::ParseAllSettingsDependency()";
    RedfishConfigResult read = ReadDependencyList(registry);
    if (read != RESULT_SUCCEED) {
        return read;
    }
    for (const DependencyRule& rule : m_Registry->Rules()) {
        BuildExpression(rule, maps); // a rule that is unusable is left out, the others count
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigExpression::ParseAllSettingsDependency()";
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigExpression::ParseSingleSettingDependency(const std::string& registry,
                                                                          const std::string& setting,
                                                                          std::vector<std::string>& related,
                                                                          ExpressionMaps& maps)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigExpression::ParseSingleSettingDependency()";
    RedfishConfigResult read = ReadDependencyList(registry);
    if (read != RESULT_SUCCEED) {
        return read;
    }
    UniqueNames names(related);
    for (const std::size_t index : m_Registry->RulesFor(setting)) {
        const DependencyRule& rule = m_Registry->Rules()[index];
        if (BuildExpression(rule, maps) == RESULT_SUCCEED) {
            names.AddSourcesOf(rule);
        }
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigExpression::ParseSingleSettingDependency()";
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigExpression::BuildExpression(const DependencyRule& rule, ExpressionMaps& maps)
{
    std::optional<std::string> formula = ComposeFormula(rule);
    if (!formula) {
        return RESULT_EXPRESSION_GENERATION_FAILED;
    }
    auto& properties = maps[rule.MapToAttribute];
    auto entry = properties.find(rule.MapToProperty);
    if (entry == properties.end()) {
        PropertyExpression whole{rule.MapToValue, *formula, *formula, true, {rule.Position}};
        entry = properties.emplace(rule.MapToProperty, std::move(whole)).first;
    } else if (!std::binary_search(entry->second.Rules.begin(), entry->second.Rules.end(), rule.Position)) {
        JoinRule(entry->second, rule, *formula);
    }
    const PropertyExpression& expression = entry->second;
    LOG_LINE(LogDetail) << "The property: " << rule.MapToProperty << " of setting: " << rule.MapToAttribute
                        << " expression is: " << expression.DisplayText;
    return RESULT_SUCCEED;
}

std::vector<std::string>
RedfishConfigExpression::SettingsReadBy(const std::map<std::string, PropertyExpression>& expressions) const
{
    std::set<std::size_t> positions;
    for (const auto& [property, expression] : expressions) {
        positions.insert(expression.Rules.begin(), expression.Rules.end());
    }
    std::vector<std::string> names;
    UniqueNames uniqueNames(names);
    for (const std::size_t position : positions) {
        if (const DependencyRule* rule = m_Registry->RuleAt(position)) {
            uniqueNames.AddSourcesOf(*rule);
        }
    }
    return names;
}

} // namespace RedfishConfig
