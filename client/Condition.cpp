#include "Condition.h"

#include "Limits.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace RedfishConfig::Client {

Condition TermCondition(std::size_t term)
{
    return {Condition::Kind::Term, term, {}};
}

Condition Join(Condition::Kind kind, Condition left, Condition right)
{
    if (left.What == kind) {
        left.Parts.push_back(std::move(right));
        return left;
    }
    if (right.What == kind) {
        right.Parts.insert(right.Parts.begin(), std::move(left));
        return right;
    }
    Condition joined{kind, 0, {}};
    joined.Parts.push_back(std::move(left));
    joined.Parts.push_back(std::move(right));
    return joined;
}

Condition Negate(Condition condition)
{
    Condition negated{Condition::Kind::Not, 0, {}};
    negated.Parts.push_back(std::move(condition));
    return negated;
}

namespace {

bool ContradictsItself(const Conjunction& conjunction)
{
    // a test and its contrary are neighbours in the order
    return std::adjacent_find(conjunction.begin(), conjunction.end(),
                              [](Literal left, Literal right) { return left == Contrary(right); }) != conjunction.end();
}

/** Collects conjunctions, each once, as long as there are not too many. */
class Collector {
public:
    void Add(Conjunction conjunction)
    {
        if (m_TooMany || ContradictsItself(conjunction) || !m_Known.insert(conjunction).second) {
            return;
        }
        m_Terms += conjunction.size();
        m_Disjunction.push_back(std::move(conjunction));
        m_TooMany = m_Disjunction.size() > Limits::conjunctions || m_Terms > Limits::termsOfConjunctions;
    }

    bool TooMany() const { return m_TooMany; }

    std::optional<Disjunction> Take()
    {
        return m_TooMany ? std::nullopt : std::optional<Disjunction>(std::move(m_Disjunction));
    }

private:
    Disjunction m_Disjunction;
    std::set<Conjunction> m_Known;
    std::size_t m_Terms = 0;
    bool m_TooMany = false;
};

std::optional<Disjunction> Both(const Disjunction& left, const Disjunction& right)
{
    Collector collector;
    for (const Conjunction& one : left) {
        for (const Conjunction& other : right) {
            Conjunction both;
            std::set_union(one.begin(), one.end(), other.begin(), other.end(), std::back_inserter(both));
            collector.Add(std::move(both));
            if (collector.TooMany()) {
                return std::nullopt;
            }
        }
    }
    return collector.Take();
}

std::optional<Disjunction> Convert(const Condition& condition, const std::vector<TermMeaning>& terms, bool contrary);

std::optional<Disjunction> ConvertAll(const Condition& condition, const std::vector<TermMeaning>& terms, bool contrary)
{
    Disjunction all{{}};
    bool tooMany = false;
    for (const Condition& part : condition.Parts) {
        if (!CountsAtAll(part, terms)) {
            continue;
        }
        const auto converted = Convert(part, terms, contrary);
        if (!converted) {
            tooMany = true;
        } else if (converted->empty()) {
            return Disjunction{}; // one that never holds decides, whatever the others
        } else if (!tooMany) {
            if (auto both = Both(all, *converted)) {
                all = std::move(*both);
            } else {
                tooMany = true;
            }
        }
    }
    return tooMany ? std::nullopt : std::optional<Disjunction>(std::move(all));
}

std::optional<Disjunction> ConvertAny(const Condition& condition, const std::vector<TermMeaning>& terms, bool contrary)
{
    Collector collector;
    for (const Condition& part : condition.Parts) {
        if (!CountsAtAll(part, terms)) {
            continue;
        }
        auto converted = Convert(part, terms, contrary);
        if (!converted) {
            return std::nullopt;
        }
        for (Conjunction& conjunction : *converted) {
            collector.Add(std::move(conjunction));
        }
    }
    return collector.Take();
}

/** The disjunction of the condition, or of its contrary; some term of the condition counts. */
std::optional<Disjunction> Convert(const Condition& condition, const std::vector<TermMeaning>& terms, bool contrary)
{
    switch (condition.What) {
    case Condition::Kind::Term:
        return contrary ? terms[condition.Term].DoesNotHold : terms[condition.Term].Holds;
    case Condition::Kind::Not:
        return Convert(condition.Parts.front(), terms, !contrary);
    case Condition::Kind::All:
        return contrary ? ConvertAny(condition, terms, true) : ConvertAll(condition, terms, false);
    case Condition::Kind::Any:
        return contrary ? ConvertAll(condition, terms, true) : ConvertAny(condition, terms, false);
    case Condition::Kind::Nothing:
        break;
    }
    return Disjunction{};
}

} // namespace

bool CountsAtAll(const Condition& condition, const std::vector<TermMeaning>& terms)
{
    if (condition.What == Condition::Kind::Term) {
        return terms[condition.Term].Counts;
    }
    return std::any_of(condition.Parts.begin(), condition.Parts.end(),
                       [&](const Condition& part) { return CountsAtAll(part, terms); });
}

std::optional<Disjunction> ToDisjunction(const Condition& condition, const std::vector<TermMeaning>& terms)
{
    return CountsAtAll(condition, terms) ? Convert(condition, terms, false) : Disjunction{};
}

} // namespace RedfishConfig::Client
