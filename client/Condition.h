#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace RedfishConfig::Client {

/** The condition of a rule: terms, each known by its number, and how they are joined. */
struct Condition {
    enum class Kind {
        Nothing, ///< what is left of a term that does not count
        Term,
        All,
        Any,
        Not,
    };

    Kind What = Kind::Nothing;
    std::size_t Term = 0;
    std::vector<Condition> Parts;
};

Condition TermCondition(std::size_t term);

/** Joins two conditions by All or Any; what is joined in the same way already takes up the further part. */
Condition Join(Condition::Kind kind, Condition left, Condition right);

Condition Negate(Condition condition);

/** A test that holds or does not, or its contrary: bit 0 says contrary, the others are the number of the test. */
using Literal = std::uint32_t;

constexpr Literal Contrary(Literal literal)
{
    return literal ^ 1U;
}

/** All of these hold. Ascending, each once. */
using Conjunction = std::vector<Literal>;

/** Any of these holds. None at all never holds. In the order of the condition, each once. */
using Disjunction = std::vector<Conjunction>;

/** What a term means, and what its contrary. A term that can never be known has neither. */
struct TermMeaning {
    bool Counts = true; ///< else the condition is what the other terms make it
    Disjunction Holds;
    Disjunction DoesNotHold;
};

/**
 * The condition as conjunctions. Negations are brought down to the terms. A test and its contrary never hold together.
 *
 * @param terms the meaning of each term
 * @return nothing when the conjunctions exceed Limits; an empty disjunction when the condition can never hold.
 */
std::optional<Disjunction> ToDisjunction(const Condition& condition, const std::vector<TermMeaning>& terms);

/** Whether any term of the condition counts. */
bool CountsAtAll(const Condition& condition, const std::vector<TermMeaning>& terms);

} // namespace RedfishConfig::Client
