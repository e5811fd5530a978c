#pragma once

#include "Reading.h"

/**
 * How the terms of one list are joined. Which way a list has is told by how many joiners stand on each of its terms.
 */
namespace Oracle {

/** What "MapTerms" of a term says: "NOT", then joiners, with commas between them. */
struct TermJoiners {
    bool IsNegated = false;
    std::vector<std::string> Words; ///< "and" and "or"
    bool IsReadable = true;         ///< nothing else stands there, and no "NOT" after a joiner
};

TermJoiners JoinersOf(const json::value& term);

/** Whether a joiner stands on any term, or on one inside of it. */
bool HasJoiners(const json::array& terms);

enum class Form {
    Single,          ///< one term
    JoinerOnEarlier, ///< every term but the last has one: grouped to the right
    StackOrder,      ///< the first has none; each term is pushed, then its joiners are applied. With one joiner on each
                     ///< later term this is the same as from left to right.
    Any,             ///< none at all
    None             ///< nothing of these
};

/** The form of this list alone. @param noJoinersAnywhere whether no rule of the registry has a joiner */
Form FormOf(const json::array& terms, bool noJoinersAnywhere);

} // namespace Oracle
