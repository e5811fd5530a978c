#pragma once

#include "Attributes.h"
#include "Condition.h"
#include "Findings.h"
#include "FormulaText.h"

#include <boost/json/object.hpp>

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace RedfishConfig::Client {

/** Why a rule cannot be adapted. */
struct TermDefect : std::runtime_error {
    TermDefect(FindingKind kind, const std::string& text) : std::runtime_error(text), Kind(kind) {}
    FindingKind Kind;
};

/**
 * A question about an attribute. Equal and the orders have a value; an order is one of texts, and its contrary holds of
 * an attribute without a value too, so it is asked together with Exists.
 */
struct Test {
    enum class Kind { Exists, Equal, Greater, Less };

    Kind What = Kind::Equal;
    const Attribute* Source = nullptr;
    std::string Property; ///< "CurrentValue", or a flag
    SettingValue Value;
};

/** The tests that the terms of one rule ask, each once. */
class RuleTests {
public:
    Literal Add(const Test& test);

    /** The library's term for a literal, without a joiner. */
    boost::json::object Write(Literal literal) const;

    /** How much of a formula the term takes at most. */
    std::size_t FormulaBytes(Literal literal) const;

    const std::vector<Test>& List() const { return m_Tests; }

private:
    using Key = std::tuple<Test::Kind, std::string, std::string, std::string>;

    std::vector<Test> m_Tests;
    std::map<Key, Literal> m_Known;
};

/** Reads the terms of rules, one by one, as tests. */
class TermReader {
public:
    TermReader(const Attributes& attributes, const FormulaText& formulas, Findings& findings)
        : m_Attributes(attributes), m_Formulas(formulas), m_Findings(findings)
    {
    }

    /** @param place of the rule. @throws TermDefect when the term cannot be put into the library's form. */
    TermMeaning Read(const boost::json::object& term, const std::string& place, RuleTests& tests);

private:
    TermMeaning ReadCurrentValueTerm(const Attribute& source, const std::string& condition, SettingValue value,
                                     const std::string& place, RuleTests& tests);
    TermMeaning ReadFlagTerm(const Attribute& source, const std::string& property, const std::string& condition,
                             const SettingValue& value, RuleTests& tests);
    TermMeaning ReadOrder(const Attribute& source, const std::string& condition, const SettingValue& value,
                          RuleTests& tests);
    void TellUnknown(const std::string& name, const std::string& place);
    void CheckSource(const Attribute& source, const std::string& property, const std::string& value);

    const Attributes& m_Attributes;
    const FormulaText& m_Formulas;
    Findings& m_Findings;
    std::unordered_map<const Attribute*, std::vector<std::string_view>> m_Endings;
    std::string m_UnknownIn;         // the place of a rule
    std::set<std::string> m_Unknown; // names that it has terms on, and that are told
};

/** The flags of an attribute that the library can test, and that a rule can decide. Null when the name is none. */
const char* FindFlag(std::string_view property);

} // namespace RedfishConfig::Client
