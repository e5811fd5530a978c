#include "NameIndex.h"

#include "NameHash.h"

#include <algorithm>
#include <locale>
#include <utility>

namespace RedfishConfig {

NameIndex::NameIndex(std::vector<std::string_view> names, const CaseFolding& folding)
    : m_Names(std::move(names)), m_Folding(folding), m_Next(m_Names.size(), noPosition)
{
    std::size_t cells = 16;
    while (cells < m_Names.size() * 2) {
        cells *= 2;
    }
    m_Cells.assign(cells, noPosition);
    std::vector<Position> last(m_Names.size()); // by the first record of a name
    for (Position position = 0; position < m_Names.size(); ++position) {
        Position& first = m_Cells[CellOf(m_Names[position])];
        if (first == noPosition) {
            first = position;
        } else {
            m_Next[last[first]] = position;
        }
        last[first] = position;
    }
}

std::size_t NameIndex::First(std::string_view name) const
{
    return Widen(m_Cells[CellOf(name)]);
}

std::uint64_t NameIndex::Hash(std::string_view name) const
{
    NameHash hash;
    for (auto byte = name.rbegin(); byte != name.rend(); ++byte) {
        hash.AddBefore(Fold(m_Folding, *byte));
    }
    return hash.Value();
}

bool NameIndex::Same(std::string_view left, std::string_view right) const
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [this](char a, char b) { return Fold(m_Folding, a) == Fold(m_Folding, b); });
}

std::size_t NameIndex::CellOf(std::string_view name) const
{
    const std::size_t mask = m_Cells.size() - 1;
    std::size_t cell = Hash(name) & mask;
    while (m_Cells[cell] != noPosition && !Same(m_Names[m_Cells[cell]], name)) {
        cell = (cell + 1) & mask;
    }
    return cell;
}

LocaleNameIndex::LocaleNameIndex(std::vector<std::string_view> names)
    : m_Names(std::move(names)), m_Ascii(std::make_shared<const NameIndex>(m_Names, AsciiUpperCase()))
{
}

std::shared_ptr<const NameIndex> LocaleNameIndex::ForGlobalLocale() const
{
    if (std::locale() == std::locale::classic()) {
        return m_Ascii;
    }
    const CaseFolding folding = GlobalUpperCase();
    if (folding == AsciiUpperCase()) {
        return m_Ascii;
    }
    const std::lock_guard<std::mutex> guard(m_Lock);
    if (m_Other == nullptr || m_Folding != folding) {
        m_Other = std::make_shared<const NameIndex>(m_Names, folding);
        m_Folding = folding;
    }
    return m_Other;
}

} // namespace RedfishConfig
