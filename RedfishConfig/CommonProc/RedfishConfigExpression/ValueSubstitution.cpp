#include "ValueSubstitution.h"

#include "../../logging/LogLine.h"

#include <algorithm>

namespace RedfishConfig {

namespace {

/** The part of a key from its last point or blank on; the whole key when it has neither. */
std::string_view TailOf(std::string_view key)
{
    const std::size_t start = key.find_last_of(". ");
    return start != std::string_view::npos ? key.substr(start) : key;
}

} // namespace

ValueSubstitution::ValueSubstitution(const std::map<std::string, std::string>& texts, std::uint64_t workLimit)
    : m_WorkLimit(workLimit)
{
    std::map<std::string_view, std::vector<Rank>> keysByTail;
    m_Entries.reserve(texts.size());
    for (const Entry& entry : texts) {
        const std::string& key = entry.first;
        if (!key.empty()) { // else there is nothing to look for
            keysByTail[TailOf(key)].push_back(static_cast<Rank>(m_Entries.size()));
            m_LongestKey = std::max(m_LongestKey, key.size());
        }
        m_Entries.push_back(&entry);
    }
    const auto endsBefore = [this](Rank left, Rank right) {
        const std::string& leftKey = m_Entries[left]->first;
        const std::string& rightKey = m_Entries[right]->first;
        return std::lexicographical_compare(leftKey.rbegin(), leftKey.rend(), rightKey.rbegin(), rightKey.rend());
    };
    for (auto& [tail, keys] : keysByTail) {
        std::sort(keys.begin(), keys.end(), endsBefore);
        m_Tails.push_back({tail, std::move(keys)});
    }
}

std::string ValueSubstitution::Apply(const std::string& formula)
{
    std::string text = formula;
    Ranks occurring;
    AddOccurring(text, occurring);
    while (!occurring.empty() && IsWithinLimits(text)) {
        const Rank rank = *occurring.begin();
        occurring.erase(occurring.begin());
        ReplaceAll(rank, text, occurring);
    }
    m_Written += text.size();
    if (!IsWithinLimits(text)) {
        LOG_LINE(LogDefect) << "A formula becomes too long with the values of settings and cannot be calculated.";
        return {};
    }
    return text;
}

bool ValueSubstitution::IsWithinLimits(const std::string& text) const
{
    return text.size() <= Limits::formulaBytes && m_Written <= Limits::allFormulasBytes && m_Work <= m_WorkLimit;
}

void ValueSubstitution::ReplaceAll(Rank rank, std::string& text, Ranks& occurring)
{
    const auto& [key, replacement] = *m_Entries[rank];
    std::string replaced;
    std::vector<Range> changed; // around each replacement, as far as a key can reach
    std::size_t taken = 0;
    for (std::size_t found = text.find(key); found != std::string::npos && IsWithinLimits(replaced);
         found = text.find(key, taken)) {
        replaced.append(text, taken, found - taken);
        const std::size_t begin = replaced.size() - std::min(replaced.size(), m_LongestKey);
        replaced += replacement;
        taken = found + key.size();
        const std::size_t end = replaced.size() + m_LongestKey;
        if (!changed.empty() && begin <= changed.back().end) {
            changed.back().end = end;
        } else {
            changed.push_back({begin, end});
        }
    }
    m_Work += text.size() + replaced.size();
    if (changed.empty()) {
        return; // an earlier replacement has destroyed it
    }
    text = std::move(replaced.append(text, taken));
    Ranks brought;
    for (const Range& range : changed) {
        AddOccurring(std::string_view(text).substr(range.begin, range.end - range.begin), brought);
    }
    occurring.insert(brought.upper_bound(rank), brought.end());
}

void ValueSubstitution::AddOccurring(std::string_view text, Ranks& occurring)
{
    m_Work += text.size();
    for (const Tail& tail : m_Tails) {
        for (std::size_t found = text.find(tail.text); found != std::string_view::npos;
             found = text.find(tail.text, found + 1)) {
            AddEndingAt(text.substr(0, found + tail.text.size()), tail.keys, occurring);
        }
    }
}

/** Goes from the end of the text to the left while there are keys that end alike. */
void ValueSubstitution::AddEndingAt(std::string_view text, const std::vector<Rank>& keys, Ranks& occurring)
{
    constexpr std::uint64_t workOfAStep = 16;
    auto begin = keys.begin();
    auto end = keys.end();
    for (std::size_t length = 0; begin != end && m_Work <= m_WorkLimit; ++length) {
        if (m_Entries[*begin]->first.size() == length) { // the shortest of those that end alike stands first
            occurring.insert(*begin);
            ++begin;
        }
        if (length == text.size()) {
            break;
        }
        const char next = text[text.size() - 1 - length];
        const auto character = [this, length](Rank rank) {
            const std::string& key = m_Entries[rank]->first;
            return key[key.size() - 1 - length];
        };
        begin = std::partition_point(begin, end, [&](Rank rank) { return character(rank) < next; });
        end = std::partition_point(begin, end, [&](Rank rank) { return character(rank) <= next; });
        m_Work += workOfAStep;
    }
}

} // namespace RedfishConfig
