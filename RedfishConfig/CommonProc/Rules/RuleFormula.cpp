#include "RuleFormula.h"

#include "common/Limits.h"
#include "common/SchemaNames.h"

#include <algorithm>
#include <iterator>
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

/** The operator of a condition; empty when there is no such condition. */
std::string_view OperatorOf(std::string_view condition)
{
    const std::string_view wanted = condition == Schema::equalAsPublished ? Schema::conditions[0].Name : condition;
    const auto* const found = std::find_if(std::begin(Schema::conditions), std::end(Schema::conditions),
                                           [&](const Schema::Condition& row) { return row.Name == wanted; });
    return found != std::end(Schema::conditions) ? found->Sign : std::string_view();
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
    const std::string_view operatorText = OperatorOf(term.MapFromCondition);
    if (term.MapFromAttribute.empty() || term.MapFromProperty.empty() || operatorText.empty()) {
        Complain(defects, "Invalid dependency(MapFrom) information for ", target);
        return false;
    }
    if (!term.MapFromValue) {
        return AddExistTest(formula, term, operatorText, defects);
    }
    WriteTerm(formula, term, operatorText, GetOptionalVarAsString(term.MapFromValue));
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
