#include "ValueSubstitution.h"

#include <algorithm>

namespace RedfishConfig {

namespace {

/** Compares two keys by their bytes, without putting name and tail together. */
int Compare(const FormulaKey& left, const FormulaKey& right)
{
    const bool leftIsShorter = left.Name.size() <= right.Name.size();
    const FormulaKey& shorter = leftIsShorter ? left : right;
    const FormulaKey& longer = leftIsShorter ? right : left;
    int order = shorter.Name.compare(longer.Name.substr(0, shorter.Name.size()));
    if (order == 0) { // the rest of the longer name meets the tail of the shorter one
        const std::string_view rest = longer.Name.substr(shorter.Name.size());
        const std::size_t common = std::min(rest.size(), shorter.Tail.size());
        order = shorter.Tail.substr(0, common).compare(rest.substr(0, common));
        if (order == 0) {
            order = common < rest.size() ? -1 : shorter.Tail.substr(common).compare(longer.Tail);
        }
    }
    return leftIsShorter ? order : -order;
}

bool ComesLater(const FormulaKey& left, const FormulaKey& right)
{
    return Compare(left, right) > 0;
}

} // namespace

ValueSubstitution::ValueSubstitution(FormulaKeys& keys, std::uint64_t workLimit) : m_Keys(keys), m_WorkLimit(workLimit)
{
}

std::string ValueSubstitution::Apply(const std::string& formula, SubstitutionEffort& spent)
{
    std::vector<FormulaKey> keys;
    spent.Work += m_Keys.FindIn(formula, keys);
    return Apply(formula, keys, spent);
}

std::string ValueSubstitution::Apply(const std::string& formula, const std::vector<FormulaKey>& keys,
                                     SubstitutionEffort& spent)
{
    m_Text = formula;
    m_Occurring.clear();
    AddOccurring(keys);
    while (!m_Occurring.empty() && GoesOn(m_Text, spent)) {
        const FormulaKey key = m_Occurring.back();
        m_Occurring.pop_back();
        ReplaceAll(key, spent);
    }
    spent.Written += m_Text.size();
    return GoesOn(m_Text, spent) ? m_Text : std::string();
}

bool ValueSubstitution::IsWithinLimits(const SubstitutionEffort& spent) const
{
    return spent.Written <= Limits::allFormulasBytes && spent.Work <= m_WorkLimit;
}

bool ValueSubstitution::GoesOn(const std::string& text, const SubstitutionEffort& spent) const
{
    return text.size() <= Limits::formulaBytes && IsWithinLimits(spent);
}

void ValueSubstitution::AddOccurring(const std::vector<FormulaKey>& keys)
{
    for (const FormulaKey& key : keys) {
        const auto place = std::lower_bound(m_Occurring.begin(), m_Occurring.end(), key, ComesLater);
        if (place == m_Occurring.end() || ComesLater(*place, key) || ComesLater(key, *place)) {
            m_Occurring.insert(place, key);
        } else if (key.Name.size() < place->Name.size()) {
            *place = key;
        }
    }
}

void ValueSubstitution::ReplaceAll(const FormulaKey& key, SubstitutionEffort& spent)
{
    m_Wanted.assign(key.Name).append(key.Tail);
    m_Replaced.clear();
    m_Changed.clear();
    std::size_t taken = 0;
    for (std::size_t found = m_Text.find(m_Wanted); found != std::string::npos && GoesOn(m_Replaced, spent);
         found = m_Text.find(m_Wanted, taken)) {
        m_Replaced.append(m_Text, taken, found - taken);
        const std::size_t begin = m_Replaced.size();
        m_Replaced += key.Text;
        m_Changed.push_back({begin, m_Replaced.size()});
        taken = found + m_Wanted.size();
    }
    spent.Work += m_Text.size() + m_Replaced.size();
    if (m_Changed.empty()) {
        return; // an earlier replacement has destroyed it
    }
    m_Replaced.append(m_Text, taken);
    m_Text.swap(m_Replaced);
    AddBrought(spent);
    // What comes no later than this key has had its turn.
    while (!m_Occurring.empty() && Compare(m_Occurring.back(), key) <= 0) {
        m_Occurring.pop_back();
    }
}

void ValueSubstitution::AddBrought(SubstitutionEffort& spent)
{
    const auto search = [&](const Range& range) {
        m_Found.clear();
        spent.Work += m_Keys.FindIn(std::string_view(m_Text).substr(range.begin, range.end - range.begin), m_Found);
        AddOccurring(m_Found);
    };
    Range together = Surroundings(m_Changed.front().begin, m_Changed.front().end);
    for (const Range& changed : m_Changed) {
        const Range around = Surroundings(changed.begin, changed.end);
        if (around.begin > together.end) {
            search(together);
            together = around;
        }
        together.end = std::max(together.end, around.end);
    }
    search(together);
}

/** A replacement with what stands beside it, as far as a key could reach. */
ValueSubstitution::Range ValueSubstitution::Surroundings(std::size_t begin, std::size_t end) const
{
    const std::size_t reach = m_Keys.LongestKey();
    const std::size_t first = begin - std::min(begin, reach);
    const std::size_t last = std::min(m_Text.size(), end + reach);
    while (begin > first && m_Keys.MayHold(m_Text[begin - 1])) {
        --begin;
    }
    while (end < last && m_Keys.MayHold(m_Text[end])) {
        ++end;
    }
    return {begin, end};
}

} // namespace RedfishConfig
