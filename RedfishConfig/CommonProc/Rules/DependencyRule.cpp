#include "DependencyRule.h"

#include "common/SchemaNames.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig {

namespace {

using Schema::DependencyKey;
using Schema::TermKey;

constexpr MemberReader<DependencyRule> ruleMembers[] = {
    ReaderOf<&DependencyRule::MapToAttribute, DependencyRule>(Schema::Name(DependencyKey::MapToAttribute)),
    ReaderOf<&DependencyRule::MapToProperty, DependencyRule>(Schema::Name(DependencyKey::MapToProperty)),
    ReaderOf<&DependencyRule::MapToValue, DependencyRule>(Schema::Name(DependencyKey::MapToValue)),
};

constexpr MemberReader<MapFromTerm> termMembers[] = {
    ReaderOf<&MapFromTerm::MapFromAttribute, MapFromTerm>(Schema::Name(TermKey::MapFromAttribute)),
    ReaderOf<&MapFromTerm::MapFromCondition, MapFromTerm>(Schema::Name(TermKey::MapFromCondition)),
    ReaderOf<&MapFromTerm::MapFromProperty, MapFromTerm>(Schema::Name(TermKey::MapFromProperty)),
    ReaderOf<&MapFromTerm::MapFromValue, MapFromTerm>(Schema::Name(TermKey::MapFromValue)),
    ReaderOf<&MapFromTerm::MapTerms, MapFromTerm>(Schema::Name(TermKey::MapTerms)),
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
    if (mapTerms == Schema::orJoiner) {
        mapTerms = "||";
    } else if (mapTerms == Schema::andJoiner) {
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
    terms.erase(
        std::remove_if(terms.begin(), terms.end(),
                       [](const MapFromTerm& term) { return term.MapFromAttribute == Schema::controllerAttribute; }),
        terms.end());
    for (MapFromTerm& term : terms) {
        JoinerToOperator(term.MapTerms);
    }
}

} // namespace RedfishConfig
