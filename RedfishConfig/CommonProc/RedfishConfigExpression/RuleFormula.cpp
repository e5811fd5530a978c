#include "RuleFormula.h"

#include "../../logging/LogLine.h"
#include "../Limits.h"

#include <algorithm>
#include <string_view>

namespace RedfishConfig {

namespace {

struct Condition {
    std::string_view name;
    const char* operatorText;
};

/** "EQ" is no condition of the Redfish schema, but controllers publish it. */
constexpr Condition conditions[] = {
    {"EQU", "=="}, {"NEQ", "!="}, {"GTR", ">"}, {"GEQ", ">="}, {"LSS", "<"}, {"LEQ", "<="}, {"EQ", "=="},
};

const Condition* FindCondition(std::string_view name)
{
    const auto* const found = std::find_if(std::begin(conditions), std::end(conditions),
                                           [&](const Condition& row) { return row.name == name; });
    return found != std::end(conditions) ? found : nullptr;
}

std::string WriteTerm(const MapFromTerm& term, std::string_view operatorText, std::string_view value)
{
    std::string text = "(" + term.MapFromAttribute + "." + term.MapFromProperty;
    text.append(operatorText).append(value).append(")");
    return text;
}

/** A test without a value asks whether the attribute has a current value; nothing else can be asked of no value. */
std::optional<std::string> ComposeExistTest(const MapFromTerm& term, std::string_view operatorText)
{
    if (term.MapFromProperty != "CurrentValue") {
        LOG_LINE(LogDetail) << "Found the dependency information that needs to compare setting property with null."
                            << WriteTerm(term, operatorText, "nullopt");
        return std::nullopt;
    }
    if (operatorText == "==") {
        return "(" + term.MapFromAttribute + " not exist)";
    }
    if (operatorText == "!=") {
        return "(" + term.MapFromAttribute + " exist)";
    }
    LOG_LINE(LogDetail) << "Found the dependency information that needs to compare relative size with null."
                        << WriteTerm(term, operatorText, "nullopt");
    return std::nullopt;
}

std::optional<std::string> ComposeTerm(const MapFromTerm& term, const std::string& target)
{
    const Condition* condition = FindCondition(term.MapFromCondition);
    if (term.MapFromAttribute.empty() || term.MapFromProperty.empty() || condition == nullptr) {
        LOG_LINE(LogDetail) << "Invalid dependency(MapFrom) information for " << target;
        return std::nullopt;
    }
    if (!term.MapFromValue) {
        return ComposeExistTest(term, condition->operatorText);
    }
    return WriteTerm(term, condition->operatorText, GetOptionalVarAsString(term.MapFromValue));
}

} // namespace

std::optional<std::string> ComposeFormula(const DependencyRule& rule)
{
    if (rule.MapToAttribute.empty() || rule.MapToProperty.empty() || !rule.MapToValue) {
        LOG_LINE(LogDetail) << "Invalid dependency(MapTo) information for " << rule.MapToAttribute;
        return std::nullopt;
    }
    if (rule.MapFrom.size() > Limits::termsOfRule) {
        LOG_LINE(LogDetail) << "The dependency information has too many terms and is thrown away, for "
                            << rule.MapToAttribute;
        return std::nullopt;
    }
    std::string formula;
    bool usable = true;
    for (const MapFromTerm& term : rule.MapFrom) {
        const std::optional<std::string> text = ComposeTerm(term, rule.MapToAttribute);
        if (!text) {
            usable = false;
            break;
        }
        formula += *text;
        formula += term.MapTerms;
    }
    if (formula.empty()) {
        LOG_LINE(LogDetail) << "The expression is empty.";
    } else {
        formula = "(" + formula + ")";
    }
    if (!usable) {
        LOG_LINE(LogDetail) << "The dependency information is invalid and throw away it. The expression:" << formula;
    }
    return usable && !formula.empty() ? std::optional<std::string>(std::move(formula)) : std::nullopt;
}

} // namespace RedfishConfig
