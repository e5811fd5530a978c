#pragma once

#include "KeyTail.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace RedfishConfig {

/** A key that stands in a formula: the setting of which attribute is asked, and what. */
struct KeyPlace {
    std::uint32_t Attribute;
    KeyTail Tail;
};

/**
 * Finds the keys that stand in a text, whichever settings there are: a name of an attribute with a tail behind it.
 * Never changes once it is built.
 */
class SettingNames {
public:
    /** @param names of the attributes by position; what they refer to must outlive this object. Empty ones are left
     * out, and so are all but the first of a name. */
    explicit SettingNames(const std::vector<std::string_view>& names);

    /**
     * Adds each key that stands in @p text, as often as it does.
     *
     * @return how many bytes it took to look at; those of names count more, since they are hashed
     */
    std::size_t FindKeys(std::string_view text, std::vector<KeyPlace>& found) const;

    /** Whether a key may have this byte. */
    bool MayHold(char byte) const { return m_KeyBytes[static_cast<unsigned char>(byte)]; }

    std::size_t LongestKey() const { return m_LongestKey; }

private:
    static constexpr auto none = static_cast<std::uint32_t>(-1);

    struct Cell {
        std::uint64_t hash = 0;
        std::string_view name;
        std::uint32_t position = none;
    };
    void Add(std::string_view name, std::uint32_t position);
    // The cell of a name, or the empty one where it would be put.
    std::size_t CellOf(std::uint64_t hash, std::string_view name) const;
    // Adds the attributes whose names end a text. Answers how many bytes were hashed.
    std::size_t FindEnding(std::string_view text, KeyTail tail, std::vector<KeyPlace>& found) const;

    std::vector<Cell> m_Cells;   // at a place that the hash of the name tells or behind
    std::vector<bool> m_Lengths; // of names
    std::bitset<256> m_NameBytes;
    std::bitset<256> m_KeyBytes;
    std::size_t m_LongestName = 0;
    std::size_t m_LongestKey = 0;
};

} // namespace RedfishConfig
