#pragma once

#include "Condition.h"

#include <RedfishConfig/Client/Adapt.h>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <string>
#include <vector>

namespace RedfishConfig::Client {

/** What the rules of a registry have in common, as far as a single rule does not tell it. */
struct FormSurvey {
    bool HasJoiners = false;      ///< in any rule
    std::size_t EarlierLists = 0; ///< lists of terms with joiners on the earlier term of a pair
    std::size_t LaterLists = 0;   ///< with joiners on the later term, stack order among them
};

/** @param rules the elements of "Dependencies" */
FormSurvey Survey(const boost::json::array& rules);

/** The condition of a rule as its form has it. */
struct FormedRule {
    RuleForm Form = RuleForm::None;
    Condition Root;
    std::vector<const boost::json::object*> Terms; ///< by their number in the condition
    std::string Defect;                            ///< why the rule has no form
    bool UsesBits = false;                         ///< the defect is a condition on bits
    bool AgainstSurvey = false;                    ///< joiners stand on other terms than in most rules
};

/** Tells the form of a rule by its structure. @param mapFrom its list of terms */
FormedRule TellForm(const boost::json::array& mapFrom, const FormSurvey& survey);

/** The "MapFrom" of an element of "Dependencies"; null when it has no such list. */
const boost::json::array* TermsOf(const boost::json::value& rule);

} // namespace RedfishConfig::Client
