#pragma once

#include "../Registry/NameHash.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace RedfishConfig {

/** Finds the names of attributes that a text ends with. Never changes once it is built. */
class SettingNames {
public:
    /** @param names of the attributes by position; what they refer to must outlive this object. Empty ones are left
     * out, and so are all but the first of a name. */
    explicit SettingNames(std::vector<std::string_view> names);

    /**
     * Calls found(position) for each attribute whose name ends @p text, the shortest name first.
     *
     * @return how many bytes it took to look at
     */
    template <class Found>
    std::size_t ForEachEnding(std::string_view text, Found found) const
    {
        NameHash hash;
        std::size_t length = 0;
        while (length < m_Longest && length < text.size()) {
            const char next = text[text.size() - 1 - length];
            if (!MayHold(next)) {
                break;
            }
            hash.AddBefore(next);
            ++length;
            if (m_Lengths[length]) {
                const std::uint32_t position = Find(hash.Value(), text.substr(text.size() - length));
                if (position != none) {
                    found(position);
                }
            }
        }
        return length;
    }

    /** Whether a name has this byte. */
    bool MayHold(char byte) const { return m_Bytes[static_cast<unsigned char>(byte)]; }

    std::size_t LongestName() const { return m_Longest; }

private:
    struct Cell {
        std::uint64_t hash;
        std::uint32_t position;
    };
    static constexpr auto none = static_cast<std::uint32_t>(-1);

    std::uint32_t Find(std::uint64_t hash, std::string_view name) const;
    void Add(std::uint32_t position);

    std::vector<std::string_view> m_Names;
    std::vector<Cell> m_Cells;   // at a place that the hash of the name tells or behind
    std::vector<bool> m_Lengths; // of names
    std::bitset<256> m_Bytes;
    std::size_t m_Longest = 0;
};

} // namespace RedfishConfig
