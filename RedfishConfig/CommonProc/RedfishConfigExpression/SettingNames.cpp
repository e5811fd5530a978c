#include "SettingNames.h"

#include "../Registry/NameHash.h"

#include <algorithm>

namespace RedfishConfig {

SettingNames::SettingNames(const std::vector<std::string_view>& names)
{
    std::size_t cells = 16;
    while (cells < names.size() * 2) {
        cells *= 2;
    }
    m_Cells.resize(cells);
    for (const std::string_view name : names) {
        m_LongestName = std::max(m_LongestName, name.size());
    }
    m_Lengths.resize(m_LongestName + 1);
    for (std::uint32_t position = 0; position < names.size(); ++position) {
        if (!names[position].empty()) {
            Add(names[position], position);
        }
    }
    m_KeyBytes = m_NameBytes;
    for (const std::string_view tail : keyTails) {
        for (const char byte : tail) {
            m_KeyBytes[static_cast<unsigned char>(byte)] = true;
        }
    }
}

void SettingNames::Add(std::string_view name, std::uint32_t position)
{
    NameHash hash;
    for (auto byte = name.rbegin(); byte != name.rend(); ++byte) {
        hash.AddBefore(*byte);
        m_NameBytes[static_cast<unsigned char>(*byte)] = true;
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
    m_Cells[cell] = {hash.Value(), name, position};
}

std::uint32_t SettingNames::Find(std::uint64_t hash, std::string_view name) const
{
    const std::size_t mask = m_Cells.size() - 1;
    for (std::size_t cell = hash & mask; m_Cells[cell].position != none; cell = (cell + 1) & mask) {
        if (m_Cells[cell].hash == hash && m_Cells[cell].name == name) {
            return m_Cells[cell].position;
        }
    }
    return none;
}

std::size_t SettingNames::FindKeys(std::string_view text, std::vector<KeyPlace>& found) const
{
    constexpr std::size_t effortOfAByte = 16; // that is hashed, compared with one that is run over
    std::size_t effort = text.size();
    for (std::size_t begin = 0; begin < text.size(); ++begin) {
        if (text[begin] != '.' && text[begin] != ' ') { // with which every tail begins
            continue;
        }
        for (std::size_t tail = 0; tail < keyTails.size(); ++tail) {
            const std::string_view wanted = keyTails[tail];
            if (begin + 1 < text.size() && text[begin + 1] == wanted[1] &&
                text.compare(begin, wanted.size(), wanted) == 0) {
                effort += effortOfAByte * FindEnding(text.substr(0, begin), static_cast<KeyTail>(tail), found);
            }
        }
    }
    return effort;
}

std::size_t SettingNames::FindEnding(std::string_view text, KeyTail tail, std::vector<KeyPlace>& found) const
{
    NameHash hash;
    std::size_t length = 0;
    while (length < m_LongestName && length < text.size()) {
        const char next = text[text.size() - 1 - length];
        if (!m_NameBytes[static_cast<unsigned char>(next)]) {
            break;
        }
        hash.AddBefore(next);
        ++length;
        if (!m_Lengths[length]) {
            continue;
        }
        const std::uint32_t attribute = Find(hash.Value(), text.substr(text.size() - length));
        if (attribute != none) {
            found.push_back({attribute, tail});
        }
    }
    return length;
}

std::size_t SettingNames::LongestKey() const
{
    std::size_t longestTail = 0;
    for (const std::string_view tail : keyTails) {
        longestTail = std::max(longestTail, tail.size());
    }
    return m_LongestName + longestTail;
}

} // namespace RedfishConfig
