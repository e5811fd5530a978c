#include "Forms.h"

#include <algorithm>

namespace Oracle {

namespace {

std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

using Counts = std::vector<std::size_t>;

/** 1, 1, …, 1, 0 */
bool IsOnEarlier(const Counts& joiners)
{
    return joiners.back() == 0 &&
           std::all_of(joiners.begin(), joiners.end() - 1, [](std::size_t count) { return count == 1; });
}

/** Each joiner finds two things to join, and one thing remains. */
bool IsStackOrder(const Counts& joiners)
{
    std::size_t height = 0;
    for (const std::size_t count : joiners) {
        ++height;
        if (count >= height) {
            return false;
        }
        height -= count;
    }
    return height == 1;
}

} // namespace

TermJoiners JoinersOf(const json::value& term)
{
    TermJoiners joiners;
    const json::value* mapTerms = Member(term, "MapTerms");
    joiners.IsReadable = mapTerms == nullptr || mapTerms->is_null() || mapTerms->is_string();
    for (const std::string& piece : Split(TextMember(term, "MapTerms"), ',')) {
        const std::string word = Folded(Trimmed(piece));
        if (word == "and" || word == "or") {
            joiners.Words.push_back(word);
        } else if (word == "not" && joiners.Words.empty()) {
            joiners.IsNegated = !joiners.IsNegated;
        } else if (!word.empty()) {
            joiners.IsReadable = false;
        }
    }
    return joiners;
}

bool HasJoiners(const json::array& terms)
{
    return std::any_of(terms.begin(), terms.end(), [](const json::value& term) {
        return !JoinersOf(term).Words.empty() || HasJoiners(ListMember(term, "Subexpressions"));
    });
}

Form FormOf(const json::array& terms, bool noJoinersAnywhere)
{
    Counts counts;
    for (const json::value& term : terms) {
        const TermJoiners joiners = JoinersOf(term);
        if (!joiners.IsReadable) {
            return Form::None;
        }
        counts.push_back(joiners.Words.size());
    }
    if (counts == Counts{0}) {
        return Form::Single;
    }
    if (!counts.empty() && noJoinersAnywhere) {
        return Form::Any;
    }
    if (counts.size() > 1 && IsOnEarlier(counts)) {
        return Form::JoinerOnEarlier;
    }
    return !counts.empty() && IsStackOrder(counts) ? Form::StackOrder : Form::None;
}

} // namespace Oracle
