#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json/value.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

/**
 * How a member of a record is read from JSON. Decided here once for attributes, choices and rules, and for JSON that is
 * parsed already as for JSON that is being parsed: a value of another kind leaves the member as it is, the same as a
 * missing key. No exception is raised on the way, unless memory runs out.
 */
namespace RedfishConfig {

/** A boolean, number or text of JSON; a null, object or list counts as no scalar. */
using JsonScalar = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string_view>;

JsonScalar ScalarOf(const boost::json::value& json);

/** Only true and false are a flag. */
void AssignScalar(bool& member, const JsonScalar& scalar);

/** A number with a whole value within 64 signed bits, however it is written (5, 5.0). */
void AssignScalar(std::optional<std::int64_t>& member, const JsonScalar& scalar);

void AssignScalar(std::optional<std::string>& member, const JsonScalar& scalar);
void AssignScalar(std::string& member, const JsonScalar& scalar);

/** A text, a number with a whole value within 64 signed bits, or a boolean. */
void AssignScalar(SettingValue& member, const JsonScalar& scalar);

/** How a value is read into a member of a record, and the member made as it was before. */
template <class Record>
struct MemberReader {
    std::string_view Key;
    void (*Read)(Record& record, const JsonScalar& scalar);
    void (*Reset)(Record& record);
};

/** The reader of a member that takes scalars. */
template <auto Member, class Record>
constexpr MemberReader<Record> ReaderOf(std::string_view key)
{
    return {key, [](Record& record, const JsonScalar& scalar) { AssignScalar(record.*Member, scalar); },
            [](Record& record) { record.*Member = {}; }};
}

} // namespace RedfishConfig
