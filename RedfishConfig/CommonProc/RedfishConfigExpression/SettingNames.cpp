#include "SettingNames.h"

#include <algorithm>
#include <utility>

namespace RedfishConfig {

SettingNames::SettingNames(std::vector<std::string_view> names) : m_Names(std::move(names))
{
    std::size_t cells = 16;
    while (cells < m_Names.size() * 2) {
        cells *= 2;
    }
    m_Cells.assign(cells, {0, none});
    for (const std::string_view name : m_Names) {
        m_Longest = std::max(m_Longest, name.size());
    }
    m_Lengths.resize(m_Longest + 1);
    for (std::uint32_t position = 0; position < m_Names.size(); ++position) {
        if (!m_Names[position].empty()) {
            Add(position);
        }
    }
}

void SettingNames::Add(std::uint32_t position)
{
    const std::string_view name = m_Names[position];
    NameHash hash;
    for (auto byte = name.rbegin(); byte != name.rend(); ++byte) {
        hash.AddBefore(*byte);
        m_Bytes[static_cast<unsigned char>(*byte)] = true;
    }
    m_Lengths[name.size()] = true;
    if (Find(hash.Value(), name) != none) {
        return;
    }
    const std::size_t mask = m_Cells.size() - 1;
    std::size_t cell = hash.Value() & mask;
    while (m_Cells[cell].position != none) {
        cell = (cell + 1) & mask;
    }
    m_Cells[cell] = {hash.Value(), position};
}

std::uint32_t SettingNames::Find(std::uint64_t hash, std::string_view name) const
{
    const std::size_t mask = m_Cells.size() - 1;
    for (std::size_t cell = hash & mask; m_Cells[cell].position != none; cell = (cell + 1) & mask) {
        if (m_Cells[cell].hash == hash && m_Names[m_Cells[cell].position] == name) {
            return m_Cells[cell].position;
        }
    }
    return none;
}

} // namespace RedfishConfig
