#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace RedfishConfig::App {

/**
 * Texts that are looked for in others. What it takes to look at a place of a text depends on how many lengths the texts
 * have, not on how many there are.
 */
class TextSet {
public:
    /** An empty text is none. */
    void Add(std::string text)
    {
        if (!text.empty()) {
            m_ByLength[text.size()].insert(std::move(text));
        }
    }

    /**
     * Calls @p visit with the length of each text that begins at a position of another one, the longest first, until
     * it returns true.
     */
    template <class Visit>
    bool VisitAt(std::string_view other, std::size_t position, Visit visit) const
    {
        const std::string_view rest = other.substr(position);
        for (const auto& [length, texts] : m_ByLength) {
            if (length <= rest.size() && texts.count(rest.substr(0, length)) > 0 && visit(length)) {
                return true;
            }
        }
        return false;
    }

    /** The length of the longest text that begins there; 0 when none does. */
    std::size_t LongestAt(std::string_view other, std::size_t position) const
    {
        std::size_t longest = 0;
        VisitAt(other, position, [&longest](std::size_t length) {
            longest = length;
            return true;
        });
        return longest;
    }

private:
    std::map<std::size_t, std::set<std::string, std::less<>>, std::greater<>> m_ByLength;
};

} // namespace RedfishConfig::App
