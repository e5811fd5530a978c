#include "KeyNames.h"

#include "JsonPointer.h"
#include "Quote.h"
#include "common/Ascii.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig::Client {

namespace {

/** A key of former times. */
struct OlderKey {
    std::string_view Name;
    std::size_t Today;
};

struct KeyTable {
    const std::string_view* Names; ///< row N is key N
    std::size_t Count;
    const OlderKey* Older = nullptr;
    std::size_t OlderCount = 0;
};

constexpr OlderKey olderAttributeKeys[] = {{"Name", static_cast<std::size_t>(AttributeKey::AttributeName)},
                                           {"Values", static_cast<std::size_t>(AttributeKey::Choices)}};
constexpr OlderKey olderChoiceKeys[] = {{"Name", static_cast<std::size_t>(ChoiceKey::ValueName)},
                                        {"DisplayName", static_cast<std::size_t>(ChoiceKey::ValueDisplayName)}};

template <std::size_t Count>
constexpr KeyTable Table(const std::string_view (&names)[Count])
{
    return {names, Count};
}

template <std::size_t Count, std::size_t OlderCount>
constexpr KeyTable Table(const std::string_view (&names)[Count], const OlderKey (&older)[OlderCount])
{
    return {names, Count, older, OlderCount};
}

constexpr KeyTable TableOf(AttributeKey /*kind*/)
{
    return Table(Schema::attributeKeys, olderAttributeKeys);
}
constexpr KeyTable TableOf(ChoiceKey /*kind*/)
{
    return Table(Schema::choiceKeys, olderChoiceKeys);
}
constexpr KeyTable TableOf(RuleKey /*kind*/)
{
    return Table(Schema::ruleKeys);
}
constexpr KeyTable TableOf(DependencyKey /*kind*/)
{
    return Table(Schema::dependencyKeys);
}
constexpr KeyTable TableOf(TermKey /*kind*/)
{
    return Table(Schema::termKeys);
}
constexpr KeyTable TableOf(MenuKey /*kind*/)
{
    return Table(Schema::menuKeys);
}

/** The same as ==, and faster for names of the same length that begin alike. */
bool IsSame(std::string_view known, std::string_view published)
{
    return known.size() == published.size() && known[known.size() / 2] == published[known.size() / 2] &&
           known == published;
}

/** The number of the key; that of the table's size for none. */
std::size_t FindKey(const KeyTable& table, std::string_view published)
{
    const std::string_view* const end = table.Names + table.Count;
    const std::string_view* name =
        std::find_if(table.Names, end, [&](std::string_view known) { return IsSame(known, published); });
    if (name == end) {
        name = std::find_if(table.Names, end,
                            [&](std::string_view known) { return Ascii::EqualIgnoringCase(known, published); });
    }
    if (name != end) {
        return static_cast<std::size_t>(name - table.Names);
    }
    const OlderKey* const olderEnd = table.Older + table.OlderCount;
    const OlderKey* older = std::find_if(
        table.Older, olderEnd, [&](const OlderKey& known) { return Ascii::EqualIgnoringCase(known.Name, published); });
    return older != olderEnd ? older->Today : table.Count;
}

} // namespace

std::optional<AttributeKey> FindAttributeKey(std::string_view published)
{
    const std::size_t key = FindKey(TableOf(AttributeKey()), published);
    return key < std::size(Schema::attributeKeys) ? std::optional(static_cast<AttributeKey>(key)) : std::nullopt;
}

template <class Key>
KeyedObject<Key>::KeyedObject(const JsonValue& object, KeyOrder& order) : m_Object(object)
{
    constexpr KeyTable table = TableOf(Key());
    static_assert(table.Count == CountOf(Key()));
    if (!object.IsObject()) {
        return;
    }
    std::size_t place = 0;
    for (const JsonMember& member : object) {
        std::size_t key = order.Likely(place);
        bool isExact = key < table.Count && IsSame(table.Names[key], member.Key);
        if (!isExact) {
            key = FindKey(table, member.Key);
            order.Set(place, key);
            isExact = key < table.Count && IsSame(table.Names[key], member.Key);
        }
        ++place;
        if (key == table.Count) {
            continue;
        }
        if (isExact || !m_Members[key].Exists()) {
            m_Members[key] = member.Value;
        }
        m_HasRenamedKeys |= !isExact;
    }
}

template <class Key>
std::string_view KeyedObject<Key>::KeyOf(Key key) const
{
    const JsonValue& value = m_Members[static_cast<std::size_t>(key)];
    for (const JsonMember& member : m_HasRenamedKeys&& value.Exists() ? m_Object : JsonValue()) {
        if (member.Value == value) {
            return member.Key;
        }
    }
    return TableOf(Key()).Names[static_cast<std::size_t>(key)];
}

template <class Key>
void KeyedObject<Key>::ReportKeys(const std::string& pointer, Findings& findings) const
{
    constexpr KeyTable table = TableOf(Key());
    for (const JsonMember& member : m_Object) {
        const std::size_t key = FindKey(table, member.Key);
        if (key != table.Count && m_Members[key] == member.Value && table.Names[key] != member.Key) {
            findings.Add(Severity::Note, FindingKind::KeyName, Member(pointer, member.Key),
                         "the key " + Quote(member.Key), "it is read as " + Quote(table.Names[key]));
        }
    }
}

template class KeyedObject<AttributeKey>;
template class KeyedObject<ChoiceKey>;
template class KeyedObject<RuleKey>;
template class KeyedObject<DependencyKey>;
template class KeyedObject<TermKey>;
template class KeyedObject<MenuKey>;

} // namespace RedfishConfig::Client
