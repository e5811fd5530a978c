#pragma once

/**
 * @file
 * What a registry says of an attribute and of a menu, apart from the values of any system.
 */

#include <RedfishConfig/Client/Value.h>
#include <RedfishConfig/Export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

enum class AttributeType : std::uint8_t { Boolean, Enumeration, Integer, Password, String, Unknown };

/** As the schema writes it: "Enumeration"; "Unknown" for none of its types. */
REDFISHCONFIG_EXPORT std::string_view Name(AttributeType type);

/** A property of an attribute that a rule can decide. The flags come first. */
enum class Property : std::uint8_t {
    ReadOnly,
    WriteOnly,
    Hidden,
    GrayOut,
    Immutable,
    IsSystemUniqueProperty,
    ResetRequired,
    CurrentValue,
    DefaultValue,
    Choices, ///< "Value": the list of choices
    LowerBound,
    UpperBound,
    ScalarIncrement,
    MinLength,
    MaxLength,
    DisplayName,
    DisplayOrder,
    HelpText,
    WarningText,
    ValueExpression,
};

inline constexpr std::size_t flagCount = 7;      ///< the properties up to ResetRequired are flags
inline constexpr std::size_t propertyCount = 20; ///< all of them

constexpr bool IsFlag(Property property)
{
    return static_cast<std::size_t>(property) < flagCount;
}

/** As the schema writes it: "ReadOnly"; "Value" for Choices. */
REDFISHCONFIG_EXPORT std::string_view Name(Property property);

/** The property of that name in any letter case. */
REDFISHCONFIG_EXPORT std::optional<Property> FindProperty(std::string_view name);

/** What is said of a setting whose flag is true: "read-only". @param flag one for which IsFlag() holds */
constexpr const char* WordFor(Property flag)
{
    constexpr const char* words[flagCount] = {"read-only",     "write-only",        "hidden", "grayed out", "immutable",
                                              "system-unique", "in need of a reset"};
    return words[static_cast<std::size_t>(flag)];
}

/** Flags, a bit each. */
class FlagSet {
public:
    bool Has(Property flag) const { return (m_Bits >> static_cast<unsigned>(flag) & 1U) != 0; }
    void Set(Property flag) { m_Bits = static_cast<std::uint8_t>(m_Bits | 1U << static_cast<unsigned>(flag)); }
    FlagSet operator|(FlagSet other) const { return FlagSet(static_cast<std::uint8_t>(m_Bits | other.m_Bits)); }
    FlagSet() = default;

private:
    explicit FlagSet(std::uint8_t bits) : m_Bits(bits) {}
    std::uint8_t m_Bits = 0;
};

/** A value that an attribute can have, under both of its names. */
struct Choice {
    std::string Name;        ///< "ValueName"
    std::string DisplayName; ///< "ValueDisplayName"; the name where there is none
};

/** An attribute as published, repaired where it says without doubt what is meant. */
struct Attribute {
    std::string Name;
    AttributeType Type = AttributeType::Unknown;
    std::size_t Position = 0; ///< in the published "Attributes"
    FlagSet Flags;
    std::vector<Choice> Choices; ///< as published: names may repeat
    Value CurrentValue;          ///< the registry's own, of the attribute's type where it can be
    Value DefaultValue;
    std::optional<std::int64_t> LowerBound, UpperBound, ScalarIncrement;
    std::optional<std::int64_t> MinLength, MaxLength; ///< in characters by the schema; the core counts bytes
    std::optional<std::int64_t> DisplayOrder;
    std::optional<std::string> DisplayName, HelpText, WarningText;
    std::optional<std::string> MenuPath;
    std::optional<std::string> Pattern; ///< "ValueExpression"

    bool IsPassword() const { return Type == AttributeType::Password; }
    bool IsText() const { return Type == AttributeType::String || Type == AttributeType::Password; }
};

/** A menu that the registry describes. */
struct Menu {
    std::string Name;
    std::string DisplayName; ///< empty where the registry gives none
    std::string MenuPath;    ///< as published: the menu's own path, or that of the menu it is in
    std::optional<std::int64_t> DisplayOrder;
    std::size_t Position = 0; ///< in the published "Menus"
    FlagSet Flags;            ///< ReadOnly, GrayOut and Hidden, which count for every setting below
};

} // namespace RedfishConfig::Client
