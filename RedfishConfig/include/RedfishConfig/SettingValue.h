#pragma once

/**
 * @file
 * The value of a setting, and its conversions to and from text and JSON.
 */

#include <RedfishConfig/Export.h>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace RedfishConfig {

/**
 * What a present value holds. The order of the alternatives is part of the interface:
 * 0 text (String, Enumeration and Password settings), 1 integer, 2 boolean.
 */
using SettingAlternative = std::variant<std::string, std::int64_t, bool>;

/** A value that may be absent: a setting without a current value, a registry property that was not given. */
using SettingValue = std::optional<SettingAlternative>;

/**
 * Orders setting names so that two names that differ only in the case of ASCII letters are the same key.
 * Characters are compared one by one after ASCII folding, a shorter prefix first; bytes above 127 are
 * compared as they are.
 */
struct REDFISHCONFIG_EXPORT CaseInsensitiveComparator {
    bool operator()(const std::string& left, const std::string& right) const noexcept;
};

/** A caller's values by setting name, for instance the "Attributes" of a Bios resource. */
using SettingValueMap = std::map<std::string, SettingValue, CaseInsensitiveComparator>;

/**
 * The value as text: a text as it is, an integer in decimal, a boolean as "true" or "false".
 *
 * @throws std::runtime_error "The optional is nullopt." for an absent value,
 *         "Unsupported type for conversion to string." for one left without a value by a failed assignment.
 */
REDFISHCONFIG_EXPORT std::string GetOptionalVarAsString(const SettingValue& value);

/**
 * The same text, written to @p text.
 *
 * @return false, with @p text untouched, where the other overload throws.
 */
REDFISHCONFIG_EXPORT bool GetOptionalVarAsString(const SettingValue& value, std::string& text);

/** The same text, or the missing-value marker, a single backslash, where GetOptionalVarAsString() throws. */
REDFISHCONFIG_EXPORT std::string GetOptionalVarAsStringToJSON(const SettingValue& value);

/**
 * Reads @p text into the kind of value that @p value already holds.
 *
 * - absent: the text is kept as a text value, and the answer is false all the same, since nothing was converted;
 * - text: the text as it is;
 * - integer: decimal, by the rules of std::stoll (leading white space and a sign are allowed, what follows the
 *   digits is ignored); false with @p value unchanged when there are no digits or the number does not fit 64 bits;
 * - boolean: true for "true" in any letter case, false for everything else.
 *
 * Never throws.
 *
 * @return whether the value was converted.
 */
REDFISHCONFIG_EXPORT bool TransferStringToOptionalVar(SettingValue& value, const std::string& text);

/** @return the text. @throws std::runtime_error "The optional is nullopt." when it is absent. */
REDFISHCONFIG_EXPORT std::string GetOptionalAsString(const std::optional<std::string>& text);

/** Writes the text to @p out. @return false, with @p out untouched, when it is absent. */
REDFISHCONFIG_EXPORT bool GetOptionalAsString(const std::optional<std::string>& text, std::string& out);

/**
 * @return the number in decimal, as a character stream with the global locale writes it.
 * @throws std::runtime_error "The optional is nullopt." when it is absent.
 */
REDFISHCONFIG_EXPORT std::string GetOptionalAsString(const std::optional<std::int64_t>& number);

/** Whether the value is present and an integer. */
REDFISHCONFIG_EXPORT bool IsNumSetting(const SettingValue& value);

/** Whether the value is present and a boolean. The spelling of the name is kept: callers link against it. */
REDFISHCONFIG_EXPORT bool IsBoolenSetting(const SettingValue& value);

/** Whether the text is "0x" or "0X" followed by one or more hexadecimal digits and nothing else. */
REDFISHCONFIG_EXPORT bool isHexString(const std::string& text);

/**
 * The decimal form of a hexadecimal text, with or without "0x". Narrower than DecToHex() on purpose: the number
 * is read into 32 signed bits, and a larger one becomes the nearest that fits, as the standard stream has it.
 *
 * @return decimal digits; "0" for a text that holds no number.
 */
REDFISHCONFIG_EXPORT std::string HexToDec(const std::string& text);

/**
 * The hexadecimal form of a decimal text: "0x", then lower-case digits without leading zeros. A negative number
 * shows its 64-bit two's complement: "-1" gives "0xffffffffffffffff".
 *
 * @throws std::invalid_argument when the text has no digits, std::out_of_range when the number does not fit
 *         64 signed bits.
 */
REDFISHCONFIG_EXPORT std::string DecToHex(const std::string& text);

/**
 * Writes the member @p key with the text @p value into @p object, replacing one that is there. Does nothing when
 * @p key is empty or @p value is the missing-value marker, a single backslash.
 */
REDFISHCONFIG_EXPORT void CheckAndWriteInfoToJSON(boost::json::object& object, const std::string& key,
                                                  const std::string& value);

/** The value as JSON of its own kind: string, signed 64-bit number or boolean. */
REDFISHCONFIG_EXPORT boost::json::value VariantToJson(const SettingAlternative& value);

} // namespace RedfishConfig
