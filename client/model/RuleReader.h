#pragma once

#include "../intake/Findings.h"
#include "ChoiceNumbers.h"
#include "NameTable.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Json.h>
#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/Rule.h>

#include <bitset>
#include <map>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

/** The rules of a registry, and what became of the published ones. */
struct ReadRules {
    std::vector<Rule> Rules;
    std::map<RuleForm, RuleCount> Forms;
    /** By menu the properties that rules on it would decide which are more than can be kept; empty for none. */
    std::vector<std::bitset<propertyCount>> LeftOutOnMenus;
};

/**
 * Reads "Dependencies". What has no meaning is reported; a rule stays as long as its target, property and outcome
 * exist.
 *
 * @param pointer to the array, in the document as it was given
 */
ReadRules ReadDependencies(const JsonValue& list, const std::string& pointer, const std::vector<Attribute>& attributes,
                           const NameTable& names, ChoiceNumbersOfAll& choices, const std::vector<Menu>& menus,
                           Findings& findings);

} // namespace RedfishConfig::Client
