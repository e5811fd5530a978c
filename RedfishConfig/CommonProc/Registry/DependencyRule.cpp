#include "DependencyRule.h"

#include "JsonMember.h"

#include <utility>

namespace RedfishConfig {

namespace json = boost::json;

namespace {

/** The formula operator of a joiner; a text that is no joiner is kept, and fails when the formula is calculated. */
std::string JoinerOperator(std::string mapTerms)
{
    if (mapTerms == "OR") {
        return "||";
    }
    if (mapTerms == "AND") {
        return "&&";
    }
    return mapTerms;
}

MapFromTerm ReadTerm(const json::value& element)
{
    MapFromTerm term;
    ReadMember(term.MapFromAttribute, element, "MapFromAttribute");
    ReadMember(term.MapFromCondition, element, "MapFromCondition");
    ReadMember(term.MapFromProperty, element, "MapFromProperty");
    ReadMember(term.MapFromValue, element, "MapFromValue");
    ReadMember(term.MapTerms, element, "MapTerms");
    term.MapTerms = JoinerOperator(std::move(term.MapTerms));
    return term;
}

} // namespace

DependencyRule ReadDependencyRule(const json::value& element, std::size_t position)
{
    DependencyRule rule;
    rule.Position = position;
    const json::value* dependency = FindMember(element, "Dependency");
    if (dependency == nullptr) {
        return rule;
    }
    ReadMember(rule.MapToAttribute, *dependency, "MapToAttribute");
    ReadMember(rule.MapToProperty, *dependency, "MapToProperty");
    ReadMember(rule.MapToValue, *dependency, "MapToValue");
    if (const json::value* mapFrom = FindMember(*dependency, "MapFrom"); mapFrom != nullptr && mapFrom->is_array()) {
        rule.MapFrom.reserve(mapFrom->get_array().size());
        for (const json::value& term : mapFrom->get_array()) {
            rule.MapFrom.push_back(ReadTerm(term));
        }
    }
    return rule;
}

} // namespace RedfishConfig
