#pragma once

#include <RedfishConfig/Client/Attribute.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** Finds attributes by name, by binary search: nobody can choose names that make it slow. */
class NameTable {
public:
    /** @param attributes stay where they are as long as the table is used */
    explicit NameTable(const std::vector<Attribute>& attributes);

    /** The first attribute of that name, ignoring the case of ASCII letters. */
    std::optional<std::size_t> Find(std::string_view name) const;

    /** The attributes that have the name of an earlier one, ignoring case; ascending. */
    std::vector<std::size_t> Repeated() const;

private:
    struct Entry {
        std::uint64_t Key;     ///< of the name; most names differ in it already
        std::string_view Name; ///< owned by the attribute
        std::size_t Attribute;
    };
    std::vector<Entry> m_Entries; // by key, then as Ascii::CompareIgnoringCase() orders the names, then by attribute
};

} // namespace RedfishConfig::Client
