#include "ValueSubstitution.h"

#include <boost/algorithm/string/replace.hpp>

#include <set>

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
        lengthsByTail[TailOf(key)].insert(key.size());
    }
    for (const auto& [tail, lengths] : lengthsByTail) {
        m_Tails.push_back({tail, {lengths.begin(), lengths.end()}});
    }
}

std::string ValueSubstitution::Apply(const std::string& formula) const
{
    std::string text = formula;
    for (const Entry* entry = FirstOccurring(text, nullptr); entry != nullptr; entry = FirstOccurring(text, entry)) {
        boost::replace_all(text, entry->first, entry->second);
    }
    return text;
}

const ValueSubstitution::Entry* ValueSubstitution::FirstOccurring(std::string_view formula, const Entry* after) const
{
    const Entry* first = nullptr;
    for (const Tail& tail : m_Tails) {
        for (std::size_t found = formula.find(tail.text); found != std::string_view::npos;
             found = formula.find(tail.text, found + 1)) {
            const std::size_t end = found + tail.text.size();
            for (const std::size_t length : tail.keyLengths) {
                if (length > end) {
                    break;
                }
                const auto key = m_Keys.find(formula.substr(end - length, length));
                if (key == m_Keys.end()) {
                    continue;
                }
                const Entry* entry = key->second;
                if ((after == nullptr || entry->first > after->first) &&
                    (first == nullptr || entry->first < first->first)) {
                    first = entry;
                }
            }
        }
    }
    return first;
}

} // namespace RedfishConfig
