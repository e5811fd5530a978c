#pragma once

#include "Alternatives.h"
#include "FormulaHazards.h"
#include "TestStates.h"

#include <RedfishConfig/Client/Rule.h>
#include <RedfishConfig/Client/Value.h>

#include <boost/json/object.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/** A term of the core's. An operand of none asks whether there is a value. */
struct FormulaTerm {
    std::size_t Source = noAttribute;
    Property Of = Property::CurrentValue;
    Comparison Compare = Comparison::Equal;
    Value Operand;
};

using FormulaTerms = std::vector<FormulaTerm>;

/** A term with what joins it to the rest; the core groups to the right. */
struct JoinedTerm {
    FormulaTerm Term;
    const char* Joiner; ///< to the next; of the last it does not count
};
using Chain = std::vector<JoinedTerm>;

/** Lists of terms, any of which holds; the terms of a list are joined by AND. */
struct TermLists {
    std::vector<FormulaTerms> Any;
    bool IsAlways = false; ///< there is nothing to ask
    Client::Defect Reason; ///< why there are no terms
};

/**
 * Writes what is required of attributes as terms of the core. The core compares texts, and an attribute without a value
 * is unequal to every text, so terms that such an attribute would meet go with one that asks for a value.
 */
class FormulaTermWriter {
public:
    FormulaTermWriter(TestStates& known, const FormulaHazards& hazards) : m_Known(known), m_Hazards(hazards) {}

    /** The terms for a requirement: as few as there can be. What it comes to depends on the possible states alone. */
    TermLists Write(const Requirement& requirement);

    /**
     * The terms of a condition that is a chain already: of each part but the last one test, which the core has as it
     * is. Nothing when it is none.
     */
    std::optional<Chain> ReadChain(const Condition& condition);

    /** Why a formula cannot have the term. */
    Defect DefectOf(const FormulaTerm& term);

    /** Whether a formula can ask whether the attribute has a value. */
    bool CanBeAsked(std::size_t attribute) { return !SourceOf(attribute).OfName && !At(attribute).IsPassword(); }

    /** The term as an element of "MapFrom", without a joiner. */
    boost::json::object ToJson(const FormulaTerm& term);

    /** How long the term is in a formula at most. */
    std::size_t FormulaBytes(const FormulaTerm& term);

private:
    /** What is known of an attribute that formulas read. */
    struct Source {
        Client::Defect OfName;  ///< why no formula can ask for the attribute
        Client::Defect OfValue; ///< why none can compare its value
        std::vector<std::string_view> NamesWithin;
        bool MayBeEmpty = false;
        std::size_t LongestValue = 0; ///< in bytes
    };
    const Source& SourceOf(std::size_t attribute);
    Defect DefectOfName(const Attribute& attribute) const;
    Defect DefectOfValue(std::size_t attribute);
    Defect DefectWithoutValue(const Attribute& attribute, const std::vector<std::string_view>& within) const;
    Defect DefectOfOperand(const FormulaTerm& term);
    bool AddToChain(const Condition& condition, const char* joiner, Chain& chain);
    std::optional<FormulaTerm> TermOf(const Test& test);
    TermLists WriteFlag(const Requirement& requirement);
    TermLists WriteValues(std::size_t attribute, const ValueSet& values, bool orNone);
    TermLists WriteOfChoices(std::size_t attribute, const ValueSet& values, bool orNone);
    TermLists Checked(TermLists lists);
    const Attribute& At(std::size_t attribute) const { return m_Known.Values().Of().Attributes()[attribute]; }

    TestStates& m_Known;
    const FormulaHazards& m_Hazards;
    std::unordered_map<std::size_t, Source> m_Sources;
};

} // namespace RedfishConfig::Client
