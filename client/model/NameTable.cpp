#include "NameTable.h"

#include "ValueConversion.h"

#include <algorithm>

namespace RedfishConfig::Client {

NameTable::NameTable(const std::vector<Attribute>& attributes)
{
    m_Entries.reserve(attributes.size());
    for (std::size_t attribute = 0; attribute < attributes.size(); ++attribute) {
        m_Entries.push_back({attributes[attribute].Name, attribute});
    }
    std::sort(m_Entries.begin(), m_Entries.end(),
              [](const Entry& left, const Entry& right) { return CompareIgnoringCase(left.Name, right.Name) < 0; });
}

std::optional<std::size_t> NameTable::Find(std::string_view name) const
{
    const auto found =
        std::lower_bound(m_Entries.begin(), m_Entries.end(), name, [](const Entry& entry, std::string_view key) {
            return CompareIgnoringCase(entry.Name, key) < 0;
        });
    return found != m_Entries.end() && EqualIgnoringCase(found->Name, name) ? std::optional(found->Attribute)
                                                                            : std::nullopt;
}

} // namespace RedfishConfig::Client
