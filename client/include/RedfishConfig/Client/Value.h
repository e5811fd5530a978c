#pragma once

/**
 * @file
 * The values that settings have and that rules compare them with.
 */

#include <RedfishConfig/Export.h>
#include <RedfishConfig/SettingValue.h>

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace RedfishConfig::Client {

/** A password, as a value or as what a rule compares with. Nothing prints it. */
class Secret {
public:
    explicit Secret(std::string text) : m_Text(std::move(text)) {}

    /** The password itself: for a PATCH body, never for a person. */
    const std::string& Reveal() const { return m_Text; }

    friend bool operator==(const Secret& left, const Secret& right) { return left.m_Text == right.m_Text; }
    friend bool operator!=(const Secret& left, const Secret& right) { return !(left == right); }

private:
    std::string m_Text;
};

/** No value, a text (a choice is one), an integer, a boolean, or a password. */
using Value = std::variant<std::monostate, std::string, std::int64_t, bool, Secret>;

inline bool HasValue(const Value& value)
{
    return !std::holds_alternative<std::monostate>(value);
}

/** For a person: a text as it is, a number in decimal, "true", "false", "null" for no value; a password is covered. */
REDFISHCONFIG_EXPORT std::string ToText(const Value& value);

/** The same as it stands in a JSON document: texts are quoted and cut at 600 bytes. */
REDFISHCONFIG_EXPORT std::string ToQuotedText(const Value& value);

/** For the core library; a password is revealed. */
REDFISHCONFIG_EXPORT SettingValue Reveal(const Value& value);

/** What stands for a password wherever a person would see one. */
inline constexpr char passwordMask[] = "********";

} // namespace RedfishConfig::Client
