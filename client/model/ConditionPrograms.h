#pragma once

#include "ChoiceNumbers.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Rule.h>
#include <RedfishConfig/Client/SystemValues.h>
#include <RedfishConfig/Client/Truth.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace RedfishConfig::Client {

/**
 * The conditions of all rules as short programs over the tests in them: the truth of each test is found once for a
 * system, and a rule is then some minima and maxima.
 */
class ConditionPrograms {
public:
    /** @param attributes and rules stay where they are as long as this is used */
    ConditionPrograms(const std::vector<Attribute>& attributes, const std::vector<Rule>& rules,
                      ChoiceNumbersOfAll choices);

    /** The truth of all tests for the values of a system. */
    std::vector<Truth> EvaluateTests(const SystemValues& now) const;

    /** The truth of one test of these rules. */
    Truth Evaluate(const Test& test, const SystemValues& now) const;

    /** The numbers of an attribute's choices, for those that rules read or give a value; null for others. */
    const ChoiceNumbers* ChoicesOf(std::size_t attribute) const { return m_Choices.Find(attribute); }

    /** The truth of all rules, from that of the tests. */
    void EvaluateRules(const std::vector<Truth>& tests, std::vector<Truth>& rules) const;

private:
    /** A test of a value. The contrary of a comparison is the negation of one of these. */
    struct CodedTest {
        enum class Kind : std::uint8_t { HasNoValue, Equal, Less, LessOrEqual };

        Kind What = Kind::Equal;
        std::size_t Source = 0;
        const Value* Operand = nullptr;            // owned by the rule
        std::vector<std::uint32_t> Choices;        // of an enumeration: those that the operand names
        std::vector<std::uint32_t> ChoicesAsShown; // the same where display names are the values
        std::optional<std::int64_t> Limit;         // of an order: the number that the operand stands for
        std::optional<std::int64_t> LimitAsShown;
    };

    /** The tests of one source, neighbours in m_Tests. */
    struct Source {
        std::size_t Attribute;
        std::uint32_t First, Last;
        const ChoiceNumbers* Choices; ///< of an enumeration; else null
    };

    enum class Step : std::uint8_t {
        Push, ///< of a test
        PushNot,
        And, ///< the top and a test
        AndNot,
        Or,
        OrNot,
        All, ///< the two on top
        Any,
        Not, ///< the top
    };
    struct Instruction {
        Step What;
        std::uint32_t Test;
    };

    class Compiler;
    static CodedTest Code(const Test& test, const ChoiceNumbers* choices);
    static void FindOperand(CodedTest& test, const ChoiceNumbers* choices);
    static Truth Compare(const CodedTest& test, const Value& held, const std::vector<std::uint32_t>& heldChoices,
                         bool displayNamesAreValues);

    ChoiceNumbersOfAll m_Choices;
    std::vector<CodedTest> m_Tests; // each once, by source; behind the constants, row N has the number N + firstTest
    std::vector<Source> m_Sources;
    std::vector<Instruction> m_Instructions;
    std::vector<std::uint32_t> m_Begin; // of each rule's instructions
    std::size_t m_StackSize = 1;
};
} // namespace RedfishConfig::Client
