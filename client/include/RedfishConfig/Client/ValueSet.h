#pragma once

/**
 * @file
 * Sets of values of one attribute, by which contradictions are found without trying values out.
 */

#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/Rule.h>
#include <RedfishConfig/Export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/**
 * A set of states of one attribute: texts (booleans are the texts "true" and "false"), integers, and the state of
 * having no value. Texts are a finite set or the complement of one; integers are disjoint intervals. A password is in
 * no set. Immutable.
 */
class REDFISHCONFIG_EXPORT ValueSet {
public:
    /** From the first to the last integer, both included. */
    using Interval = std::pair<std::int64_t, std::int64_t>;

    static ValueSet Nothing() { return {}; }
    static ValueSet Everything();
    static ValueSet NoValue();              ///< the state of having none, alone
    static ValueSet Of(const Value& value); ///< this value alone; NoValue() for none, nothing for a password
    static ValueSet Integers(std::int64_t first, std::int64_t last);
    static ValueSet AnyInteger();
    static ValueSet AnyText();
    static ValueSet Texts(std::set<std::string> texts);

    /**
     * All states that an attribute of a model can have: its choices, true and false, the integers within its bounds,
     * any text; its CurrentValue and its DefaultValue; and no value. A choice is the text of its Name alone. A bound
     * that rules may replace is none.
     */
    static ValueSet PossibleOf(const Model& model, std::size_t attribute);

    /** The integers within the bounds of an attribute, of which those that rules may replace are none. */
    static ValueSet WithinBounds(const Model& model, std::size_t attribute);

    /**
     * The states of which a test of CurrentValue is true. Having no value makes only a test for that true. Of a text
     * attribute this is the operand as the test has it: which choice has that text is up to the caller.
     *
     * @return nothing when that is no set: an order of texts, a test of a flag or of a password
     */
    static std::optional<ValueSet> Fulfilling(const Test& test);

    ValueSet operator&(const ValueSet& other) const;
    ValueSet operator|(const ValueSet& other) const;
    ValueSet Complement() const;

    bool IsEmpty() const;
    bool Contains(const Value& value) const;
    bool HasNoValue() const { return m_NoValue; } ///< whether having no value is among the states
    bool Meets(const ValueSet& other) const;      ///< whether they have a state in common
    bool IsSubsetOf(const ValueSet& other) const;

    /** The texts; of a complement those that are not in the set. */
    const std::set<std::string>& ListedTexts() const { return m_Texts; }
    bool IsComplementOfTexts() const { return m_IsComplement; }
    const std::vector<Interval>& Intervals() const { return m_Intervals; } ///< ascending, none touches the next

    friend bool operator==(const ValueSet& left, const ValueSet& right)
    {
        return left.m_IsComplement == right.m_IsComplement && left.m_NoValue == right.m_NoValue &&
               left.m_Intervals == right.m_Intervals && left.m_Texts == right.m_Texts;
    }
    friend bool operator!=(const ValueSet& left, const ValueSet& right) { return !(left == right); }

private:
    std::set<std::string> m_Texts;
    bool m_IsComplement = false;
    std::vector<Interval> m_Intervals;
    bool m_NoValue = false;
};

/** As a person reads it: "10 to 20, or no value", "anything but Custom". At most eight texts and intervals are named.
 */
REDFISHCONFIG_EXPORT std::string ToText(const ValueSet& set);

} // namespace RedfishConfig::Client
