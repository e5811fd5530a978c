#pragma once

#include "../LetterCase.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace RedfishConfig {

/** Finds the records of a list by name without regard to letter case. Never changes once it is built. */
class NameIndex {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /** @param names of the records by position; what they refer to must outlive this object */
    NameIndex(const std::vector<std::string_view>& names, const CaseFolding& folding);

    /** The position of the first record with that name, or none. */
    std::size_t First(std::string_view name) const;

    /** The position of the next record with the same name as the one at @p position, or none. */
    std::size_t Next(std::size_t position) const { return Widen(m_Next[position]); }

private:
    using Position = std::uint32_t;
    static constexpr Position noPosition = static_cast<Position>(-1);

    static std::size_t Widen(Position position) { return position != noPosition ? position : none; }
    struct Cell {
        std::string_view name;
        std::uint32_t hash = 0;      // a part of it, so that other names are seldom looked at
        Position first = noPosition; // record with that name
    };

    std::uint64_t Hash(std::string_view name) const;
    bool Same(std::string_view left, std::string_view right) const;
    // The cell of a name, or the empty one where it would be put.
    std::size_t CellOf(std::string_view name, std::uint64_t hash) const;

    CaseFolding m_Folding;
    std::vector<Cell> m_Cells;    // at a place that the hash of the name tells or behind
    std::vector<Position> m_Next; // of each record, the next with the same name
};

/**
 * The index by the letter case of the C++ global locale, whichever that is at the time of asking. Managers on several
 * threads may ask at the same time.
 */
class LocaleNameIndex {
public:
    explicit LocaleNameIndex(std::vector<std::string_view> names);

    const NameIndex& ForAscii() const { return *m_Ascii; }
    std::shared_ptr<const NameIndex> ForGlobalLocale() const;

private:
    std::vector<std::string_view> m_Names;
    std::shared_ptr<const NameIndex> m_Ascii;
    mutable std::mutex m_Lock;
    mutable CaseFolding m_Folding{}; // of m_Other
    mutable std::shared_ptr<const NameIndex> m_Other;
};

} // namespace RedfishConfig
