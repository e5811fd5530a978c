#include "DependencyRule.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig {

namespace {

/** Terms on this attribute test the controller itself, not a setting, and never count. */
constexpr std::string_view controllerAttribute = "SYSACS";

constexpr MemberReader<DependencyRule> ruleMembers[] = {
    ReaderOf<&DependencyRule::MapToAttribute, DependencyRule>("MapToAttribute"),
    ReaderOf<&DependencyRule::MapToProperty, DependencyRule>("MapToProperty"),
    ReaderOf<&DependencyRule::MapToValue, DependencyRule>("MapToValue"),
};

constexpr MemberReader<MapFromTerm> termMembers[] = {
    ReaderOf<&MapFromTerm::MapFromAttribute, MapFromTerm>("MapFromAttribute"),
    ReaderOf<&MapFromTerm::MapFromCondition, MapFromTerm>("MapFromCondition"),
    ReaderOf<&MapFromTerm::MapFromProperty, MapFromTerm>("MapFromProperty"),
    ReaderOf<&MapFromTerm::MapFromValue, MapFromTerm>("MapFromValue"),
    ReaderOf<&MapFromTerm::MapTerms, MapFromTerm>("MapTerms"),
};

template <class Table>
auto Find(const Table& table, std::string_view key) -> decltype(std::begin(table))
{
    const auto found =
        std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.Key == key; });
    return found != std::end(table) ? found : nullptr;
}

/** Makes a joiner a formula operator; a text that is no joiner is kept, and fails when the formula is calculated. */
void JoinerToOperator(std::string& mapTerms)
{
    if (mapTerms == "OR") {
        mapTerms = "||";
    } else if (mapTerms == "AND") {
        mapTerms = "&&";
    }
}

} // namespace

const MemberReader<DependencyRule>* FindRuleMember(std::string_view key)
{
    return Find(ruleMembers, key);
}

const MemberReader<MapFromTerm>* FindTermMember(std::string_view key)
{
    return Find(termMembers, key);
}

void CompleteRule(DependencyRule& rule)
{
    auto& terms = rule.MapFrom;
    terms.erase(std::remove_if(terms.begin(), terms.end(),
                               [](const MapFromTerm& term) { return term.MapFromAttribute == controllerAttribute; }),
                terms.end());
    for (MapFromTerm& term : terms) {
        JoinerToOperator(term.MapTerms);
    }
}

} // namespace RedfishConfig
