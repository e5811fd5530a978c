#include "SettingNames.h"

#include "NameHash.h"

#include <algorithm>

namespace RedfishConfig {

SettingNames::SettingNames(const std::vector<std::string_view>& names)
{
    m_Cells.resize(TableCells(names.size()));
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
        m_LongestKey = std::max(m_LongestKey, m_LongestName + tail.size());
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
    Cell& cell = m_Cells[CellOf(hash.Value(), name)];
    if (cell.position == none) { // else the first attribute of that name counts
        cell = {hash.Value(), name, position};
    }
}

std::size_t SettingNames::CellOf(std::uint64_t hash, std::string_view name) const
{
    const auto isOthers = [&](const Cell& cell) {
        return cell.position != none && (cell.hash != hash || cell.name != name);
    };
    const std::size_t mask = m_Cells.size() - 1;
    std::size_t cell = hash & mask;
    while (isOthers(m_Cells[cell])) {
        cell = (cell + 1) & mask;
    }
    return cell;
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
        const std::uint32_t attribute = m_Cells[CellOf(hash.Value(), text.substr(text.size() - length))].position;
        if (attribute != none) {
            found.push_back({attribute, tail});
        }
    }
    return length;
}

} // namespace RedfishConfig
