#include "NameIndex.h"

#include "../Rules/NameHash.h"

#include <algorithm>
#include <locale>
#include <utility>

namespace RedfishConfig {

namespace {

constexpr unsigned tagShift = 29; // to the upper half of a hash of 61 bits

} // namespace

NameIndex::NameIndex(const std::vector<std::string_view>& names, const CaseFolding& folding)
    : m_Folding(folding), m_Next(names.size(), noPosition)
{
    m_Cells.resize(TableCells(names.size()));
    std::vector<Position> last(names.size()); // by the first record of a name
    for (Position position = 0; position < names.size(); ++position) {
        const std::uint64_t hash = Hash(names[position]);
        Cell& cell = m_Cells[CellOf(names[position], hash)];
        if (cell.first == noPosition) {
            cell = {names[position], static_cast<std::uint32_t>(hash >> tagShift), position};
        } else {
            m_Next[last[cell.first]] = position;
        }
        last[cell.first] = position;
    }
}

std::size_t NameIndex::First(std::string_view name) const
{
    return Widen(m_Cells[CellOf(name, Hash(name))].first);
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

std::size_t NameIndex::CellOf(std::string_view name, std::uint64_t hash) const
{
    const std::size_t mask = m_Cells.size() - 1;
    const auto tag = static_cast<std::uint32_t>(hash >> tagShift);
    const auto isOthers = [&](const Cell& cell) {
        return cell.first != noPosition && (cell.hash != tag || !Same(cell.name, name));
    };
    std::size_t cell = hash & mask;
    while (isOthers(m_Cells[cell])) {
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
