#pragma once

/**
 * @file
 * The record of one attribute as the registry publishes it, its dependency formulas, and the caller's options.
 */

#include <RedfishConfig/Export.h>
#include <RedfishConfig/SettingValue.h>

#include <boost/json/value_to.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig {

/** The formula that decides one dynamic property ("ReadOnly", "Hidden", ...) of one setting. */
struct PropertyExpression {
    SettingValue MapToValue;        ///< the value that the property takes while the formula holds
    std::string Formula;            ///< the formula with the current values of settings in place of their names
    std::string DisplayText;        ///< the formula in terms of ATTRIBUTE.PROPERTY; never changes once it is complete
    bool Valid = false;             ///< whether the formula is usable
    std::vector<std::size_t> Rules; ///< ascending positions in the registry's "Dependencies" of the rules it is made of
};

/** Attribute name, then property name, to the formula. Both in byte-wise order and case-sensitive. */
using ExpressionMaps = std::map<std::string, std::map<std::string, PropertyExpression>>;

/**
 * All registry properties of one attribute. The members are named after the keys of an "Attributes" object in the
 * DMTF Redfish AttributeRegistry schema; a missing or mistyped key leaves its member as it is here.
 */
struct RedfishConfigSettingInfoStru {
    bool ReadOnly = false;
    bool WriteOnly = false; ///< the value may be set but is never shown
    bool Hidden = false;
    bool GrayOut = false;
    bool Immutable = false;
    bool ResetRequired = false;          ///< a system reset is needed before a new value takes effect
    bool IsSystemUniqueProperty = false; ///< the value belongs to this one system
    std::optional<std::int64_t> DisplayOrder;
    std::optional<std::int64_t> LowerBound; ///< smallest value of an Integer
    std::optional<std::int64_t> UpperBound; ///< largest value of an Integer
    std::optional<std::int64_t> MinLength;  ///< shortest String or Password, in bytes
    std::optional<std::int64_t> MaxLength;  ///< longest String or Password, in bytes
    std::optional<std::int64_t> ScalarIncrement;
    std::optional<std::string> Type; ///< "String", "Integer", "Enumeration", "Boolean" or "Password"
    std::optional<std::string> DisplayName;
    std::optional<std::string> AttributeName; ///< the setting's name everywhere in the library
    std::optional<std::string> HelpText;
    std::optional<std::string> MenuPath; ///< "./MENU/SUB-MENU/..."
    SettingValue DefaultValue;
    SettingValue CurrentValue; ///< as published; replaced by the caller's current value where there is one
    std::optional<std::string> ValueExpression; ///< ECMAScript pattern that a new value must match as a whole
    std::optional<std::string> WarningText;
    std::map<std::string, std::string> Value;    ///< an Enumeration's choices: ValueName to ValueDisplayName
    std::vector<std::string> dependencySettings; ///< names that the formulas read, in the rules' order
    std::map<std::string, PropertyExpression> expressionMaps; ///< dynamic property to the formula that decides it
};

/** One entry of an Enumeration's "Value" list. */
struct RedfishConfigValueEntryStru {
    std::optional<std::string> ValueName;
    std::optional<std::string> ValueDisplayName;
};

/** What the caller wants of all settings of a manager. Copied, never referenced. */
struct Config_Options {
    bool ShowHexValue = false;    ///< answers show integers as hexadecimal text ("0x1f")
    bool IgnoreProtected = false; ///< statically hidden settings take part where the action admits it
    std::int32_t Reserved = 0;    ///< carried along; the library does not read it
};

/**
 * Reads one element of a registry's "Attributes", by `boost::json::value_to`. Throws only when memory runs out:
 * a value that is no object gives a record with nothing in it. `dependencySettings` and `expressionMaps` stay empty.
 *
 * Key look-up is case-sensitive. A flag accepts only true and false; an integer any number with a whole value
 * within 64 signed bits; a text only a string; null leaves everything absent. Of two choices with the same
 * "ValueName" the first is kept, a choice without one is skipped, and one without "ValueDisplayName" gets an empty one.
 */
REDFISHCONFIG_EXPORT RedfishConfigSettingInfoStru tag_invoke(boost::json::value_to_tag<RedfishConfigSettingInfoStru>,
                                                             const boost::json::value& attribute);

/** Reads one element of an attribute's "Value" list, by `boost::json::value_to`; the same rules hold. */
REDFISHCONFIG_EXPORT RedfishConfigValueEntryStru tag_invoke(boost::json::value_to_tag<RedfishConfigValueEntryStru>,
                                                            const boost::json::value& entry);

} // namespace RedfishConfig
