#pragma once

#include "../intake/KeyNames.h"

#include <RedfishConfig/Client/Json.h>
#include <RedfishConfig/Client/Rule.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** An element of a list of terms, with what joins it to others. */
struct ListedTerm {
    ListedTerm(const JsonValue& element, KeyOrder& order);

    KeyedObject<TermKey> Members;
    bool IsNegated = false;
    std::vector<Condition::Kind> Joiners; ///< All and Any
    std::vector<ListedTerm> Nested;       ///< its "Subexpressions"
    std::string Defect;                   ///< why it cannot be read; empty when it can
    bool UsesBits = false;                ///< the defect is a condition on bits

private:
    void ReadNested(KeyOrder& order);
    void ReadJoiners(const JsonValue& mapTerms);
    void ReadJoiner(std::string_view word);
    void Refuse(std::string defect);
};

/** Reads a list of terms. */
std::vector<ListedTerm> ListTerms(const JsonValue& mapFrom, KeyOrder& order);

/** Registry-wide evidence for rules whose form is ambiguous on its own. */
struct FormSurvey {
    bool HasJoiners = false;      ///< in any rule
    std::size_t EarlierLists = 0; ///< lists of terms with joiners on the earlier term of a pair
    std::size_t LaterLists = 0;   ///< with joiners on the later term, stack order among them

    void Add(const std::vector<ListedTerm>& terms);
};

/** The condition of a rule as its form has it. */
struct FormedRule {
    RuleForm Form = RuleForm::None;
    Condition When;             ///< Unknown, with the defect, when the rule has no form
    bool UsesBits = false;      ///< the defect is a condition on bits
    bool AgainstSurvey = false; ///< joiners are on other terms than in most rules
};

/** Reads one term that is no list of others. */
using TermReading = std::function<Condition(const KeyedObject<TermKey>& term)>;

/** Recognises the form of a rule by its structure and joins its terms. */
FormedRule JoinTerms(const std::vector<ListedTerm>& terms, const FormSurvey& survey, const TermReading& readTerm);

} // namespace RedfishConfig::Client
