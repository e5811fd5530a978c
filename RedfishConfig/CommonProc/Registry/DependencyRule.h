#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json/value.hpp>

#include <cstddef>
#include <string>
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

/** Reads one element of "Dependencies". What is missing or mistyped stays empty, down to a rule with nothing in it. */
DependencyRule ReadDependencyRule(const boost::json::value& element, std::size_t position);

} // namespace RedfishConfig
