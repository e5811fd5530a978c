#pragma once

#include <cstddef>
#include <cstdint>

namespace RedfishConfig {

/**
 * Hashes names byte by byte from their end: a polynomial modulo a prime, at a place that is drawn anew for each
 * process. So nobody can write a registry whose names collide, and the hash of a longer ending comes from that of a
 * shorter one.
 */
class NameHash {
public:
    /** The hash of what was hashed so far with one more byte before it. */
    void AddBefore(char byte)
    {
        constexpr Wide offset = 1; // so that zero bytes count
        m_Value = Reduce(Wide{m_Value} * m_Place + static_cast<unsigned char>(byte) + offset);
    }

    std::uint64_t Value() const { return m_Value; }

private:
    __extension__ using Wide = unsigned __int128;
    static constexpr unsigned primeBits = 61;
    static constexpr std::uint64_t prime = (std::uint64_t{1} << primeBits) - 1;

    static std::uint64_t Reduce(Wide number)
    {
        const std::uint64_t sum =
            (static_cast<std::uint64_t>(number) & prime) + static_cast<std::uint64_t>(number >> primeBits);
        return sum >= prime ? sum - prime : sum;
    }

    static std::uint64_t Place();

    std::uint64_t m_Place = Place();
    std::uint64_t m_Value = 0;
};

/** How many cells a table of so many names has: a power of two, and half of them or more stay empty. */
constexpr std::size_t TableCells(std::size_t names)
{
    std::size_t cells = 16;
    while (cells < names * 2) {
        cells *= 2;
    }
    return cells;
}

} // namespace RedfishConfig
