#include "Status.h"

#include <boost/json/array.hpp>

namespace RedfishConfig::App {

namespace json = boost::json;

namespace {

constexpr bool RowsAreInOrder()
{
    std::size_t expected = 0;
    for (const ShownProperty& property : shownProperties) {
        if (static_cast<std::size_t>(property.Row) != expected++) {
            return false;
        }
    }
    return expected == statusRows;
}
static_assert(RowsAreInOrder());

json::object ToJson(const PropertyStatus& property, bool withRules)
{
    if (!withRules) {
        return {{"value", property.Value}, {"reason", property.Reason}};
    }
    return {{"value", property.Value},
            {"certain", property.Certain},
            {"reason", property.Reason},
            {"rules", json::array(property.Rules.begin(), property.Rules.end())},
            {"marked", property.Marked}};
}

} // namespace

json::object ToJson(const SettingStatus& status, bool withRules)
{
    json::object properties;
    for (const ShownProperty& property : shownProperties) {
        properties[property.JsonKey] = ToJson(status[property.Row], withRules);
    }
    return properties;
}

std::string Marks(const SettingStatus& status)
{
    std::string marks;
    for (const ShownProperty& property : shownProperties) {
        const PropertyStatus& row = status[property.Row];
        const bool isToldAsProtected = property.Row == StatusRow::Hidden && row.Marked;
        if (property.IsMarked && !isToldAsProtected && (row.Value || !row.Certain)) {
            marks += (marks.empty() ? "" : ", ") + std::string(property.Word) + (row.Certain ? "" : "?");
        }
    }
    return marks.empty() ? "" : "[" + marks + "]";
}

} // namespace RedfishConfig::App
