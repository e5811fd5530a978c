#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

/**
 * @file
 * The names of the attribute registry's schema (DMTF Redfish AttributeRegistry), each list of them once. Row N of a
 * table is the enumerator N of its enumeration.
 */

namespace RedfishConfig::Schema {

// ---- the lists of a registry, and what is around them

inline constexpr std::string_view registryEntries = "RegistryEntries";
inline constexpr std::string_view attributes = "Attributes";
inline constexpr std::string_view dependencies = "Dependencies";
inline constexpr std::string_view menus = "Menus";

// ---- attributes

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

inline constexpr std::string_view attributeKeys[] = {
    "AttributeName", "Type",        "CurrentValue",   "DefaultValue", "DisplayName",
    "HelpText",      "WarningText", "MenuPath",       "DisplayOrder", "ReadOnly",
    "WriteOnly",     "Hidden",      "GrayOut",        "Immutable",    "IsSystemUniqueProperty",
    "ResetRequired", "Value",       "LowerBound",     "UpperBound",   "ScalarIncrement",
    "MinLength",     "MaxLength",   "ValueExpression"};

constexpr std::string_view Name(AttributeKey key)
{
    return attributeKeys[static_cast<std::size_t>(key)];
}

/** The flags that a rule may read and decide. ResetRequired, which follows them, a rule may only decide. */
inline constexpr AttributeKey flags[] = {AttributeKey::ReadOnly,  AttributeKey::WriteOnly,
                                         AttributeKey::Hidden,    AttributeKey::GrayOut,
                                         AttributeKey::Immutable, AttributeKey::IsSystemUniqueProperty};

enum class Type : std::uint8_t { Boolean, Enumeration, Integer, Password, String };
inline constexpr std::string_view types[] = {"Boolean", "Enumeration", "Integer", "Password", "String"};

constexpr std::string_view Name(Type type)
{
    return types[static_cast<std::size_t>(type)];
}

enum class ChoiceKey : std::uint8_t { ValueName, ValueDisplayName };
inline constexpr std::string_view choiceKeys[] = {"ValueName", "ValueDisplayName"};

constexpr std::string_view Name(ChoiceKey key)
{
    return choiceKeys[static_cast<std::size_t>(key)];
}

// ---- rules

enum class RuleKey : std::uint8_t { Dependency, DependencyFor, Type };
inline constexpr std::string_view ruleKeys[] = {"Dependency", "DependencyFor", "Type"};

enum class DependencyKey : std::uint8_t { MapFrom, MapToAttribute, MapToProperty, MapToValue };
inline constexpr std::string_view dependencyKeys[] = {"MapFrom", "MapToAttribute", "MapToProperty", "MapToValue"};

enum class TermKey : std::uint8_t {
    MapFromAttribute,
    MapFromCondition,
    MapFromProperty,
    MapFromValue,
    MapTerms,
    Subexpressions,
};
inline constexpr std::string_view termKeys[] = {"MapFromAttribute", "MapFromCondition", "MapFromProperty",
                                                "MapFromValue",     "MapTerms",         "Subexpressions"};

constexpr std::string_view Name(RuleKey key)
{
    return ruleKeys[static_cast<std::size_t>(key)];
}
constexpr std::string_view Name(DependencyKey key)
{
    return dependencyKeys[static_cast<std::size_t>(key)];
}
constexpr std::string_view Name(TermKey key)
{
    return termKeys[static_cast<std::size_t>(key)];
}

/** The conditions of terms, as they are written there and in formulas. */
struct Condition {
    std::string_view Name;
    std::string_view Sign;
};
inline constexpr Condition conditions[] = {{"EQU", "=="}, {"NEQ", "!="}, {"GTR", ">"},
                                           {"GEQ", ">="}, {"LSS", "<"},  {"LEQ", "<="}};

/** No condition of the schema, but controllers publish it for "EQU". */
inline constexpr std::string_view equalAsPublished = "EQ";

inline constexpr std::string_view andJoiner = "AND";
inline constexpr std::string_view orJoiner = "OR";

/** Terms on this attribute are about the controller itself, not about a setting, and do not count. */
inline constexpr std::string_view controllerAttribute = "SYSACS";

// ---- menus

enum class MenuKey : std::uint8_t { MenuName, MenuPath, DisplayName, DisplayOrder, ReadOnly, GrayOut, Hidden };
inline constexpr std::string_view menuKeys[] = {"MenuName", "MenuPath", "DisplayName", "DisplayOrder",
                                                "ReadOnly", "GrayOut",  "Hidden"};

constexpr std::string_view Name(MenuKey key)
{
    return menuKeys[static_cast<std::size_t>(key)];
}

} // namespace RedfishConfig::Schema
