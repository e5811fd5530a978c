#pragma once

#include "Findings.h"
#include "common/SchemaNames.h"

#include <RedfishConfig/Client/Json.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace RedfishConfig::Client {

using Schema::AttributeKey;
using Schema::ChoiceKey;
using Schema::DependencyKey;
using Schema::MenuKey;
using Schema::RuleKey;
using Schema::TermKey;

constexpr std::size_t CountOf(AttributeKey /*kind*/)
{
    return std::size(Schema::attributeKeys);
}
constexpr std::size_t CountOf(ChoiceKey /*kind*/)
{
    return std::size(Schema::choiceKeys);
}
constexpr std::size_t CountOf(RuleKey /*kind*/)
{
    return std::size(Schema::ruleKeys);
}
constexpr std::size_t CountOf(DependencyKey /*kind*/)
{
    return std::size(Schema::dependencyKeys);
}
constexpr std::size_t CountOf(TermKey /*kind*/)
{
    return std::size(Schema::termKeys);
}
constexpr std::size_t CountOf(MenuKey /*kind*/)
{
    return std::size(Schema::menuKeys);
}

/** The key that a member of an attribute is read as; nothing when the schema has none like it. */
std::optional<AttributeKey> FindAttributeKey(std::string_view published);

/** The keys of the last object, in its order: those of the next are most likely the same. */
class KeyOrder {
public:
    std::size_t Likely(std::size_t place) const { return place < m_Keys.size() ? m_Keys[place] : 0; }
    void Set(std::size_t place, std::size_t key)
    {
        if (place < m_Keys.size()) {
            m_Keys[place] = static_cast<std::uint8_t>(key);
        }
    }

private:
    std::array<std::uint8_t, 24> m_Keys{};
};

/**
 * An object of the schema, its members found by key. Keys in other letter case, and older ones ("Name", "Values"), are
 * read as those of today where the object lacks the latter.
 */
template <class Key>
class KeyedObject {
public:
    /** @param order of the objects of this kind that were read before; makes it faster */
    KeyedObject(const JsonValue& object, KeyOrder& order);

    /** The member; Missing where there is none. */
    JsonValue operator[](Key key) const { return m_Members[static_cast<std::size_t>(key)]; }

    bool HasRenamedKeys() const { return m_HasRenamedKeys; }

    /** The key as the object has it; that of today where it has none. */
    std::string_view KeyOf(Key key) const;

    /** Reports the keys that are read as others. @param pointer to the object */
    void ReportKeys(const std::string& pointer, Findings& findings) const;

private:
    JsonValue m_Object;
    std::array<JsonValue, CountOf(Key())> m_Members;
    bool m_HasRenamedKeys = false;
};

} // namespace RedfishConfig::Client
