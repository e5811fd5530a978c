#pragma once

#include "Findings.h"

#include <RedfishConfig/Client/Json.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace RedfishConfig::Client {

/** The members of the schema's objects. The order is that of the tables in KeyNames.cpp. */
enum class AttributeKey : std::uint8_t {
    AttributeName,
    Type,
    CurrentValue,
    DefaultValue,
    DisplayName,
    HelpText,
    WarningText,
    MenuPath,
    DisplayOrder,
    ReadOnly,
    WriteOnly,
    Hidden,
    GrayOut,
    Immutable,
    IsSystemUniqueProperty,
    ResetRequired,
    Choices, ///< "Value"
    LowerBound,
    UpperBound,
    ScalarIncrement,
    MinLength,
    MaxLength,
    ValueExpression,
};
enum class ChoiceKey : std::uint8_t { ValueName, ValueDisplayName };
enum class RuleKey : std::uint8_t { Dependency, DependencyFor, Type };
enum class DependencyKey : std::uint8_t { MapFrom, MapToAttribute, MapToProperty, MapToValue };
enum class TermKey : std::uint8_t {
    MapFromAttribute,
    MapFromCondition,
    MapFromProperty,
    MapFromValue,
    MapTerms,
    Subexpressions,
};
enum class MenuKey : std::uint8_t { MenuName, MenuPath, DisplayName, DisplayOrder, ReadOnly, GrayOut, Hidden };

constexpr std::size_t CountOf(AttributeKey /*kind*/)
{
    return 23;
}
constexpr std::size_t CountOf(ChoiceKey /*kind*/)
{
    return 2;
}
constexpr std::size_t CountOf(RuleKey /*kind*/)
{
    return 3;
}
constexpr std::size_t CountOf(DependencyKey /*kind*/)
{
    return 4;
}
constexpr std::size_t CountOf(TermKey /*kind*/)
{
    return 6;
}
constexpr std::size_t CountOf(MenuKey /*kind*/)
{
    return 7;
}

/** A key as the schema spells it today. */
std::string_view Name(AttributeKey key);

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
