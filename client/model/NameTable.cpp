#include "NameTable.h"
#include "common/Ascii.h"

#include <algorithm>

namespace RedfishConfig::Client {

namespace {

/** The length of a name and its last letters, as that is where names differ; the same for names in other case. */
std::uint64_t KeyOf(std::string_view name)
{
    constexpr std::size_t bits = 8;
    constexpr std::size_t letters = 7;
    std::uint64_t key = name.size();
    for (std::size_t letter = 0; letter < std::min(letters, name.size()); ++letter) {
        key = key << bits | static_cast<unsigned char>(Ascii::ToLower(name[name.size() - 1 - letter]));
    }
    return key;
}

} // namespace

NameTable::NameTable(const std::vector<Attribute>& attributes)
{
    m_Entries.reserve(attributes.size());
    for (std::size_t attribute = 0; attribute < attributes.size(); ++attribute) {
        const std::string_view name = attributes[attribute].Name;
        m_Entries.push_back({KeyOf(name), name, attribute});
    }
    std::sort(m_Entries.begin(), m_Entries.end(), [](const Entry& left, const Entry& right) {
        if (left.Key != right.Key) {
            return left.Key < right.Key;
        }
        const int order = Ascii::CompareIgnoringCase(left.Name, right.Name);
        return order != 0 ? order < 0 : left.Attribute < right.Attribute;
    });
}

std::optional<std::size_t> NameTable::Find(std::string_view name) const
{
    const std::uint64_t key = KeyOf(name);
    const auto found =
        std::lower_bound(m_Entries.begin(), m_Entries.end(), name, [key](const Entry& entry, std::string_view sought) {
            return entry.Key != key ? entry.Key < key : Ascii::CompareIgnoringCase(entry.Name, sought) < 0;
        });
    const bool isFound = found != m_Entries.end() && found->Key == key && Ascii::EqualIgnoringCase(found->Name, name);
    return isFound ? std::optional(found->Attribute) : std::nullopt;
}

std::vector<std::size_t> NameTable::Repeated() const
{
    std::vector<std::size_t> repeated;
    for (std::size_t place = 1; place < m_Entries.size(); ++place) {
        const Entry& before = m_Entries[place - 1];
        const Entry& entry = m_Entries[place];
        if (before.Key == entry.Key && Ascii::EqualIgnoringCase(before.Name, entry.Name)) {
            repeated.push_back(entry.Attribute);
        }
    }
    std::sort(repeated.begin(), repeated.end());
    return repeated;
}

} // namespace RedfishConfig::Client
