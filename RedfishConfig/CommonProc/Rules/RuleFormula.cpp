#include "RuleFormula.h"

#include "../Limits.h"

#include <algorithm>
#include <string_view>

namespace RedfishConfig {

namespace {

using Defects = std::vector<std::string>*;

void Complain(Defects defects, const char* what, const std::string& about)
{
    if (defects != nullptr) {
        defects->push_back(what + about);
    }
}

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

void WriteTerm(std::string& formula, const MapFromTerm& term, std::string_view operatorText, std::string_view value)
{
    formula.append("(").append(term.MapFromAttribute).append(".").append(term.MapFromProperty);
    formula.append(operatorText).append(value).append(")");
}

void ComplainOfNull(Defects defects, const char* what, const MapFromTerm& term, std::string_view operatorText)
{
    std::string text;
    WriteTerm(text, term, operatorText, "nullopt");
    Complain(defects, what, text);
}

/** A test without a value asks whether the attribute has a current value; nothing else can be asked of no value. */
bool AddExistTest(std::string& formula, const MapFromTerm& term, std::string_view operatorText, Defects defects)
{
    if (term.MapFromProperty != "CurrentValue") {
        ComplainOfNull(defects, "Found the dependency information that needs to compare setting property with null.",
                       term, operatorText);
        return false;
    }
    if (operatorText != "==" && operatorText != "!=") {
        ComplainOfNull(defects, "Found the dependency information that needs to compare relative size with null.", term,
                       operatorText);
        return false;
    }
    formula.append("(").append(term.MapFromAttribute).append(operatorText == "==" ? " not exist)" : " exist)");
    return true;
}

bool AddTerm(std::string& formula, const MapFromTerm& term, const std::string& target, Defects defects)
{
    const Condition* condition = FindCondition(term.MapFromCondition);
    if (term.MapFromAttribute.empty() || term.MapFromProperty.empty() || condition == nullptr) {
        Complain(defects, "Invalid dependency(MapFrom) information for ", target);
        return false;
    }
    if (!term.MapFromValue) {
        return AddExistTest(formula, term, condition->operatorText, defects);
    }
    WriteTerm(formula, term, condition->operatorText, GetOptionalVarAsString(term.MapFromValue));
    return true;
}

} // namespace

std::optional<std::string> ComposeFormula(const DependencyRule& rule, std::vector<std::string>* defects)
{
    if (rule.MapToAttribute.empty() || rule.MapToProperty.empty() || !rule.MapToValue) {
        Complain(defects, "Invalid dependency(MapTo) information for ", rule.MapToAttribute);
        return std::nullopt;
    }
    if (rule.MapFrom.size() > Limits::termsOfRule) {
        Complain(defects, "The dependency information has too many terms and is thrown away, for ",
                 rule.MapToAttribute);
        return std::nullopt;
    }
    std::string formula = "(";
    bool usable = true;
    for (const MapFromTerm& term : rule.MapFrom) {
        usable = AddTerm(formula, term, rule.MapToAttribute, defects);
        if (!usable) {
            break;
        }
        formula += term.MapTerms;
    }
    if (formula.size() == 1) {
        formula.clear();
        Complain(defects, "The expression is empty.", {});
    } else {
        formula += ")";
    }
    if (!usable) {
        Complain(defects, "The dependency information is invalid and throw away it. The expression:", formula);
    }
    return usable && !formula.empty() ? std::optional<std::string>(std::move(formula)) : std::nullopt;
}

} // namespace RedfishConfig
