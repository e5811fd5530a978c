#include "ValueSubstitution.h"

#include "../Limits.h"

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

ValueSubstitution::ValueSubstitution(const std::map<std::string, std::string>& texts)
{
    m_Keys.reserve(texts.size());
    std::map<std::string_view, std::set<std::size_t>> lengthsByTail;
    for (const Entry& entry : texts) {
        const std::string_view key = entry.first;
        if (key.empty()) {
            continue; // nothing to look for
        }
        m_Keys.emplace(key, &entry);
        m_LongestKey = std::max(m_LongestKey, key.size());
        lengthsByTail[TailOf(key)].insert(key.size());
    }
    for (const auto& [tail, lengths] : lengthsByTail) {
        m_Tails.push_back({tail, {lengths.begin(), lengths.end()}});
    }
}

std::string ValueSubstitution::Apply(const std::string& formula)
{
    std::string text = formula;
    Entries occurring;
    AddOccurring(text, occurring);
    while (!occurring.empty() && IsWithinLimits(text)) {
        const Entry& entry = **occurring.begin();
        occurring.erase(occurring.begin());
        ReplaceAll(entry, text, occurring);
    }
    return IsWithinLimits(text) ? text : std::string();
}

bool ValueSubstitution::IsWithinLimits(const std::string& text) const
{
    return text.size() <= Limits::formulaBytes && m_Work <= Limits::substitutionBytes;
}

void ValueSubstitution::ReplaceAll(const Entry& entry, std::string& text, Entries& occurring)
{
    const auto& [key, replacement] = entry;
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
    Entries brought;
    for (const Range& range : changed) {
        AddOccurring(std::string_view(text).substr(range.begin, range.end - range.begin), brought);
    }
    occurring.insert(brought.upper_bound(&entry), brought.end());
}

void ValueSubstitution::AddOccurring(std::string_view text, Entries& occurring)
{
    m_Work += text.size();
    for (const Tail& tail : m_Tails) {
        for (std::size_t found = text.find(tail.text); found != std::string_view::npos;
             found = text.find(tail.text, found + 1)) {
            const std::size_t end = found + tail.text.size();
            for (const std::size_t length : tail.keyLengths) {
                if (length > end || m_Work > Limits::substitutionBytes) {
                    break;
                }
                const auto key = m_Keys.find(text.substr(end - length, length));
                if (key != m_Keys.end()) {
                    occurring.insert(key->second);
                }
                m_Work += length;
            }
        }
    }
}

} // namespace RedfishConfig
