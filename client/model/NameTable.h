#pragma once

#include <RedfishConfig/Client/Attribute.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** Finds attributes by name, by binary search: nobody can choose names that make it slow. */
class NameTable {
public:
    /** @param attributes stay where they are as long as the table is used; no two names are the same, ignoring case */
    explicit NameTable(const std::vector<Attribute>& attributes);

    /** The attribute of that name; else of one that differs in the case of ASCII letters alone. */
    std::optional<std::size_t> Find(std::string_view name) const;

private:
    struct Entry {
        std::string_view Name; ///< owned by the attribute
        std::size_t Attribute;
    };
    std::vector<Entry> m_Entries; // as CompareIgnoringCase() orders the names; no two are the same
};

} // namespace RedfishConfig::Client
