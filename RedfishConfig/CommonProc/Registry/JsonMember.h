#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json/value.hpp>

#include <cstdint>
#include <optional>
#include <string>

/**
 * How a member of a record is read from JSON. Decided here once for attributes, choices and rules: a value of another
 * kind leaves the member as it is, the same as a missing key. No exception is raised on the way.
 */
namespace RedfishConfig {

/** Only true and false are a flag. */
void AssignFromJson(bool& member, const boost::json::value& json);

/** A number with a whole value within 64 signed bits, however it is written (5, 5.0). */
void AssignFromJson(std::optional<std::int64_t>& member, const boost::json::value& json);

void AssignFromJson(std::optional<std::string>& member, const boost::json::value& json);
void AssignFromJson(std::string& member, const boost::json::value& json);

/** A text, a number with a whole value within 64 signed bits, or a boolean. */
void AssignFromJson(SettingValue& member, const boost::json::value& json);

/** The member @p key of @p json, or null when it is no object or lacks the key. The letter case of keys counts. */
const boost::json::value* FindMember(const boost::json::value& json, boost::json::string_view key);

/** Reads the member @p key of @p json into @p member, which stays as it is when that cannot be done. */
template <class Member>
void ReadMember(Member& member, const boost::json::value& json, boost::json::string_view key)
{
    if (const boost::json::value* found = FindMember(json, key)) {
        AssignFromJson(member, *found);
    }
}

} // namespace RedfishConfig
