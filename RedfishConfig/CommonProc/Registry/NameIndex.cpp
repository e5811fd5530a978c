#include "NameIndex.h"

#include "../LetterCase.h"

#include <utility>

namespace RedfishConfig {

NameIndex::NameIndex(std::size_t count, NameAt nameAt) : m_Count(count), m_NameAt(std::move(nameAt)) {}

const std::vector<std::size_t>& NameIndex::Find(const std::string& name) const
{
    static const std::vector<std::size_t> none;
    if (!m_Built || m_Locale != std::locale()) {
        Build();
    }
    const auto found = m_Positions.find(UpperCopy(name));
    return found != m_Positions.end() ? found->second : none;
}

void NameIndex::Build() const
{
    m_Built = false;
    m_Locale = std::locale();
    m_Positions.clear();
    for (std::size_t position = 0; position < m_Count; ++position) {
        m_Positions[UpperCopy(std::string(m_NameAt(position)))].push_back(position);
    }
    m_Built = true;
}

} // namespace RedfishConfig
