#include <RedfishConfig/SettingValue.h>

#include "LetterCase.h"
#include "common/Ascii.h"

#include <boost/json/value_from.hpp>

#include <algorithm>
#include <exception>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace RedfishConfig {

namespace {

/** Stands for a missing value in text that is bound for JSON. */
const std::string missingValueMarker = "\\";

constexpr char absentValue[] = "The optional is nullopt.";

bool IsHexDigit(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

bool StartsWithHexPrefix(const std::string& text)
{
    return text.size() >= 2 && text[0] == '0' && Ascii::ToLower(text[1]) == 'x';
}

} // namespace

bool CaseInsensitiveComparator::operator()(const std::string& left, const std::string& right) const noexcept
{
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return static_cast<unsigned char>(Ascii::ToLower(a)) < static_cast<unsigned char>(Ascii::ToLower(b));
    });
}

std::string GetOptionalVarAsString(const SettingValue& value)
{
    if (!value) {
        throw std::runtime_error(absentValue);
    }
    std::string text;
    if (!GetOptionalVarAsString(value, text)) {
        throw std::runtime_error("Unsupported type for conversion to string.");
    }
    return text;
}

bool GetOptionalVarAsString(const SettingValue& value, std::string& text)
{
    if (!value) {
        return false;
    }
    if (const auto* string = std::get_if<std::string>(&*value)) {
        text = *string;
    } else if (const auto* integer = std::get_if<std::int64_t>(&*value)) {
        text = std::to_string(*integer);
    } else if (const auto* boolean = std::get_if<bool>(&*value)) {
        text = *boolean ? "true" : "false";
    } else {
        return false; // left without a value by a failed assignment
    }
    return true;
}

std::string GetOptionalVarAsStringToJSON(const SettingValue& value)
{
    std::string text;
    return GetOptionalVarAsString(value, text) ? text : missingValueMarker;
}

bool TransferStringToOptionalVar(SettingValue& value, const std::string& text)
{
    try {
        if (!value) {
            value = text;
            return false; // the text is kept, but nothing was converted
        }
        if (std::holds_alternative<std::string>(*value)) {
            value = text;
            return true;
        }
        if (std::holds_alternative<std::int64_t>(*value)) {
            value = static_cast<std::int64_t>(std::stoll(text));
            return true;
        }
        if (std::holds_alternative<bool>(*value)) {
            value = LowerCopy(text) == "true";
            return true;
        }
    } catch (const std::exception&) {
        // not a number, or no memory: not converted
    }
    return false;
}

std::string GetOptionalAsString(const std::optional<std::string>& text)
{
    if (!text) {
        throw std::runtime_error(absentValue);
    }
    return *text;
}

bool GetOptionalAsString(const std::optional<std::string>& text, std::string& out)
{
    if (!text) {
        return false;
    }
    out = *text;
    return true;
}

std::string GetOptionalAsString(const std::optional<std::int64_t>& number)
{
    if (!number) {
        throw std::runtime_error(absentValue);
    }
    std::ostringstream stream;
    stream << *number;
    return stream.str();
}

bool IsNumSetting(const SettingValue& value)
{
    return value && std::holds_alternative<std::int64_t>(*value);
}

bool IsBoolenSetting(const SettingValue& value)
{
    return value && std::holds_alternative<bool>(*value);
}

bool isHexString(const std::string& text)
{
    return text.size() > 2 && StartsWithHexPrefix(text) && std::all_of(text.begin() + 2, text.end(), IsHexDigit);
}

std::string HexToDec(const std::string& text)
{
    std::istringstream digits(StartsWithHexPrefix(text) ? text.substr(2) : text);
    digits.imbue(std::locale::classic()); // no grouping of digits, whatever the global locale has
    std::int32_t number = 0;
    digits >> std::hex >> number;
    return std::to_string(number);
}

std::string DecToHex(const std::string& text)
{
    std::ostringstream digits;
    digits.imbue(std::locale::classic());
    digits << std::hex << std::stoll(text);
    return "0x" + digits.str();
}

void CheckAndWriteInfoToJSON(boost::json::object& object, const std::string& key, const std::string& value)
{
    if (!key.empty() && value != missingValueMarker) {
        object[key] = value;
    }
}

boost::json::value VariantToJson(const SettingAlternative& value)
{
    return std::visit([](const auto& alternative) { return boost::json::value_from(alternative); }, value);
}

} // namespace RedfishConfig
