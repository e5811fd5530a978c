#pragma once

#include "../JsonMember.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig {

/** A test on one property of one attribute. */
struct MapFromTerm {
    std::string MapFromAttribute;
    std::string MapFromCondition; ///< "EQU", "NEQ", ...
    std::string MapFromProperty;  ///< usually "CurrentValue"
    SettingValue MapFromValue;    ///< absent: the test is whether there is a value
    std::string MapTerms;         ///< joins this term to the following one; "||" and "&&" in place of "OR" and "AND"
};

/** A rule of the registry: while its terms hold, a property of an attribute takes a value. */
struct DependencyRule {
    std::size_t Position = 0; ///< in the registry's "Dependencies" list
    std::string MapToAttribute;
    std::string MapToProperty;
    SettingValue MapToValue;
    std::vector<MapFromTerm> MapFrom;
};

/** The reader of the member that a key of a "Dependency" object fills, or null. Not for "MapFrom", the terms. */
const MemberReader<DependencyRule>* FindRuleMember(std::string_view key);

/** The same for an entry of "MapFrom". */
const MemberReader<MapFromTerm>* FindTermMember(std::string_view key);

/**
 * Makes a rule whose members are read ready for formulas: joiners become operators, and terms on the controller itself
 * go. What is missing or mistyped stays empty, down to a rule with nothing in it.
 */
void CompleteRule(DependencyRule& rule);

} // namespace RedfishConfig
