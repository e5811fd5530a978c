#pragma once

#include <RedfishConfig/Client/Attribute.h>

#include <boost/json/object.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace RedfishConfig::App {

using RedfishConfig::Client::Property;
using RedfishConfig::Client::WordFor;

/** The dynamic properties of a setting, in the order in which they are shown. */
enum class StatusRow : std::uint8_t { Hidden, GrayOut, ReadOnly, WriteOnly, Protected, Immutable, SystemUnique };

inline constexpr std::size_t statusRows = 7;

/** How a dynamic property is shown. */
struct ShownProperty {
    StatusRow Row;
    const char* Label;   ///< on the screen
    const char* JsonKey; ///< in "status"
    const char* Word;    ///< in a sentence: "NAME is read-only"
    bool IsMarked;       ///< whether the list marks the settings that have it
};

/** Row N is StatusRow N. */
inline constexpr std::array<ShownProperty, statusRows> shownProperties{{
    {StatusRow::Hidden, "Hidden", "hidden", WordFor(Property::Hidden), true},
    {StatusRow::GrayOut, "Grayed out", "grayOut", WordFor(Property::GrayOut), true},
    {StatusRow::ReadOnly, "Read-only", "readOnly", WordFor(Property::ReadOnly), true},
    {StatusRow::WriteOnly, "Write-only", "writeOnly", WordFor(Property::WriteOnly), true},
    {StatusRow::Protected, "Protected", "protected", "protected", true},
    {StatusRow::Immutable, "Immutable", "immutable", WordFor(Property::Immutable), false},
    {StatusRow::SystemUnique, "System-unique", "systemUnique", WordFor(Property::IsSystemUniqueProperty), false},
}};

constexpr const ShownProperty& Shown(StatusRow row)
{
    return shownProperties[static_cast<std::size_t>(row)];
}

/** Whether a setting has a property, and why. */
struct PropertyStatus {
    bool Value = false;
    bool Certain = true;            ///< else it hangs on something that is not known
    bool Marked = false;            ///< the registry's own flag decides, no rule
    std::string Reason;             ///< empty when there is nothing to say
    std::vector<std::size_t> Rules; ///< those that decide: positions in the published "Dependencies"
};

/**
 * The dynamic properties of a setting under the current values of all settings.
 *
 * A setting that the registry's own flag hides is Protected. It is Hidden too, then Marked, where rules and flags are
 * one verdict; when documents are taken as published it is not.
 */
class SettingStatus {
public:
    PropertyStatus& operator[](StatusRow row) { return m_Rows[static_cast<std::size_t>(row)]; }
    const PropertyStatus& operator[](StatusRow row) const { return m_Rows[static_cast<std::size_t>(row)]; }

    /** Whether it has the property, as far as is known. */
    bool Is(StatusRow row) const { return (*this)[row].Value; }

    /** Hidden by a rule: not by the registry's own flag, which makes it protected. */
    bool IsHiddenByRule() const { return Is(StatusRow::Hidden) && !(*this)[StatusRow::Hidden].Marked; }

private:
    std::array<PropertyStatus, statusRows> m_Rows;
};

/** The properties as JSON, each with "value" and "reason". @param withRules also "certain", "rules" and "marked" */
boost::json::object ToJson(const SettingStatus& status, bool withRules);

/** "[hidden, read-only?]", a question mark behind what is not certain; empty for no marks. */
std::string Marks(const SettingStatus& status);

} // namespace RedfishConfig::App
