#include "SettingTable.h"

#include <algorithm>
#include <utility>

namespace RedfishConfig {

void SettingTable::Clear()
{
    *this = {};
}

void SettingTable::Store(const std::shared_ptr<const Registry>& registry, std::size_t attribute,
                         std::shared_ptr<RedfishConfigSetting> setting)
{
    if (m_Registry == nullptr) {
        m_Entries.resize(registry->Attributes().size());
        m_Registry = registry;
    }
    const std::size_t number = registry->SettingAt(attribute);
    Entry& entry = m_Entries[number];
    if (entry.Name == nullptr) {
        m_Generated.push_back(static_cast<std::uint32_t>(number));
        m_Ordered.clear();
        entry.Name = &*registry->Attributes()[attribute].AttributeName;
    }
    entry.Setting = std::move(setting);
}

void SettingTable::Erase(const std::string& name)
{
    const std::size_t number = Find(name);
    if (number != none) {
        m_Entries[number] = {};
        m_Generated.erase(std::find(m_Generated.begin(), m_Generated.end(), number));
        m_Ordered.clear();
    }
}

std::size_t SettingTable::Find(const std::string& name) const
{
    const std::size_t number = m_Registry != nullptr ? m_Registry->FindSetting(name) : none;
    return number != none && m_Entries[number].Name != nullptr ? number : none;
}

const std::vector<std::uint32_t>& SettingTable::InOrder() const
{
    if (m_Registry != nullptr && m_Generated.size() == m_Registry->SettingCount()) {
        return m_Registry->SettingsInOrder();
    }
    if (m_Ordered.size() != m_Generated.size()) {
        std::vector<std::uint32_t> ordered = m_Generated;
        std::sort(ordered.begin(), ordered.end(), [this](std::uint32_t left, std::uint32_t right) {
            return CaseInsensitiveComparator()(*m_Entries[left].Name, *m_Entries[right].Name);
        });
        m_Ordered = std::move(ordered);
    }
    return m_Ordered;
}

} // namespace RedfishConfig
