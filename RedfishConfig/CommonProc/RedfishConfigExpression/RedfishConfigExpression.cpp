#include <RedfishConfig/RedfishConfigExpression.h>

#include "../../logging/LogLine.h"
#include "../Registry/Registry.h"
#include "../Rules/RuleFormula.h"
#include "Formula.h"

#include <optional>

namespace RedfishConfig {

RedfishConfigExpression::RedfishConfigExpression() = default;
RedfishConfigExpression::RedfishConfigExpression(const RedfishConfigExpression& other) = default;
RedfishConfigExpression& RedfishConfigExpression::operator=(const RedfishConfigExpression& other) = default;
RedfishConfigExpression::~RedfishConfigExpression() = default;

bool RedfishConfigExpression::Calculate(const std::string& formula)
{
    return CalculateFormula(formula);
}

RedfishConfigResult RedfishConfigExpression::ReadDependencyList(const RegistryReading& read)
{
    if (m_DependenciesRead) {
        return RESULT_SUCCEED;
    }
    if (m_Registry == nullptr) {
        m_Registry = read();
    }
    switch (m_Registry->Dependencies()) {
    case DependencyList::Unreadable:
        m_Registry.reset(); // what cannot be used is not kept
        LOG_LINE(LogDetail) << "Parse settings dependency failed.";
        LOG_LINE(LogDetail) << "Failed to parse the settings dependency info.";
        return {RESULT_HTTP_RESPONSE_PARSE_FAILED, ResultMessages().at(RESULT_HTTP_RESPONSE_PARSE_FAILED)};
    case DependencyList::Missing:
        LOG_LINE(LogDetail) << "The schema not include dependency information.";
        break;
    case DependencyList::Present:
        break;
    }
    m_DependenciesRead = true;
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigExpression::ParseAllSettingsDependency(const std::string& registry,
                                                                        std::vector<std::string>& /*related*/,
                                                                        ExpressionMaps& maps)
{
    return ParseAll([&registry] { return Registry::Read(registry); }, &maps);
}

RedfishConfigResult RedfishConfigExpression::ParseAll(const RegistryReading& read, ExpressionMaps* maps)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigExpression::ParseAllSettingsDependency()";
    RedfishConfigResult result = ReadDependencyList(read);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    if (maps != nullptr) {
        for (const DependencyRule& rule : m_Registry->Rules()) {
            BuildExpression(rule, *maps); // a rule that is unusable is left out, the others count
        }
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigExpression::ParseAllSettingsDependency()";
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigExpression::ParseSingleSettingDependency(const std::string& registry,
                                                                          const std::string& setting,
                                                                          std::vector<std::string>& related,
                                                                          ExpressionMaps& maps)
{
    return ParseSingle([&registry] { return Registry::Read(registry); }, setting, related, &maps);
}

RedfishConfigResult RedfishConfigExpression::ParseSingle(const RegistryReading& read, const std::string& setting,
                                                         std::vector<std::string>& related, ExpressionMaps* maps)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigExpression::ParseSingleSettingDependency()";
    RedfishConfigResult result = ReadDependencyList(read);
    if (result != RESULT_SUCCEED) {
        return result;
    }
    UniqueNames names(related);
    for (const std::size_t index : m_Registry->RulesFor(setting)) {
        const DependencyRule& rule = m_Registry->Rules()[index];
        const bool usable =
            maps != nullptr ? BuildExpression(rule, *maps) == RESULT_SUCCEED : ComposeFormula(rule).has_value();
        if (usable) {
            names.AddSourcesOf(rule);
        }
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigExpression::ParseSingleSettingDependency()";
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigExpression::BuildExpression(const DependencyRule& rule, ExpressionMaps& maps)
{
    std::vector<std::string> defects;
    const std::optional<std::string> formula = ComposeFormula(rule, LogIsOn(LogDetail) ? &defects : nullptr);
    for (const std::string& defect : defects) {
        LOG_LINE(LogDetail) << defect;
    }
    if (!formula) {
        return RESULT_EXPRESSION_GENERATION_FAILED;
    }
    auto& byProperty = maps[rule.MapToAttribute];
    if (AddRule(byProperty, rule, *formula) == RuleOutcome::Opposite) {
        LOG_LINE(LogDetail) << "Found one property has opposite MapToValue, need comfirm with BMC and UEFI.";
    }
    LOG_LINE(LogDetail) << "The property: " << rule.MapToProperty << " of setting: " << rule.MapToAttribute
                        << " expression is: " << byProperty[rule.MapToProperty].DisplayText;
    return RESULT_SUCCEED;
}

} // namespace RedfishConfig
