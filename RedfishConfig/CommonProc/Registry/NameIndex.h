#pragma once

#include <cstddef>
#include <functional>
#include <locale>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace RedfishConfig {

/**
 * Finds the records of a list by name, without regard to letter case as the C++ global locale has it.
 *
 * Built on the first look-up, and again when the global locale has changed since.
 */
class NameIndex {
public:
    using NameAt = std::function<std::string_view(std::size_t position)>;

    /** @param nameAt the name of the record at a position below @p count; must stay callable and answer the same */
    NameIndex(std::size_t count, NameAt nameAt);

    /** The positions of the records with that name, in ascending order. */
    const std::vector<std::size_t>& Find(const std::string& name) const;

private:
    void Build() const;

    std::size_t m_Count;
    NameAt m_NameAt;
    mutable bool m_Built = false;
    mutable std::locale m_Locale;
    mutable std::unordered_map<std::string, std::vector<std::size_t>> m_Positions; // by the name in upper case
};

} // namespace RedfishConfig
