#include "AccessFilter.h"

#include <initializer_list>

namespace RedfishConfig::App {

namespace {

using RedfishConfig::filterAction;

constexpr Exclusion readOnly{StatusRow::ReadOnly, false};
constexpr Exclusion writeOnly{StatusRow::WriteOnly, false};
constexpr Exclusion isProtected{StatusRow::Protected, false};
constexpr Exclusion protectedUnlessIncluded{StatusRow::Protected, true};
constexpr Exclusion hidden{StatusRow::Hidden, false};
constexpr Exclusion grayOut{StatusRow::GrayOut, false};
constexpr Exclusion immutable{StatusRow::Immutable, false};
constexpr Exclusion systemUnique{StatusRow::SystemUnique, false};

constexpr AccessFilter Row(filterAction action, std::initializer_list<Exclusion> exclusions)
{
    AccessFilter filter{action, false, 0, {}};
    for (const Exclusion& exclusion : exclusions) {
        filter.Exclusions[filter.Count++] = exclusion; // NOLINT(cppcoreguidelines-pro-bounds-constant-array-index)
    }
    return filter;
}

/** Row N is action N. The questions to all settings are those to one: System::AskAll() answers as System::Ask(). */
constexpr AccessFilter filters[] = {
    Row(RedfishConfig::FILTER_QUERY_VALUE, {writeOnly, protectedUnlessIncluded, hidden}),
    Row(RedfishConfig::FILTER_QUERY_GROUP_VALUES, {writeOnly, isProtected, hidden}),
    Row(RedfishConfig::FILTER_QUERY_DEFAULT, {protectedUnlessIncluded}),
    Row(RedfishConfig::FILTER_QUERY_GROUP_DEFAULTS, {isProtected}),
    Row(RedfishConfig::FILTER_QUERY_DESCRIPTION, {protectedUnlessIncluded}),
    Row(RedfishConfig::FILTER_QUERY_GROUP_DESCRIPTIONS, {isProtected}),
    Row(RedfishConfig::FILTER_QUERY_CHOICES, {protectedUnlessIncluded}),
    Row(RedfishConfig::FILTER_QUERY_GROUP_CHOICES, {isProtected}),
    Row(RedfishConfig::FILTER_PATCH, {readOnly, protectedUnlessIncluded, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_SAVE, {protectedUnlessIncluded, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_SAVE_GROUP, {isProtected, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_SAVE_FULL, {isProtected, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_SAVE_PORTABLE, {isProtected, hidden, grayOut, immutable, systemUnique}),
    {RedfishConfig::FILTER_NONE_TAKES_PART, true, 0, {}},
    Row(RedfishConfig::FILTER_PATCH_GROUP, {readOnly, isProtected, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_RESTORE_WITH_UNIQUE, {readOnly, isProtected, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_RESTORE, {readOnly, isProtected, hidden, grayOut, immutable, systemUnique}),
    Row(RedfishConfig::FILTER_PATCH_FROM_FILE, {readOnly, protectedUnlessIncluded, hidden, grayOut, immutable}),
    Row(RedfishConfig::FILTER_LOAD_DEFAULT, {readOnly, protectedUnlessIncluded, hidden, grayOut, immutable}),
};

constexpr bool RowsAreInOrder()
{
    int expected = 0;
    for (const AccessFilter& filter : filters) {
        if (filter.Action != expected++) {
            return false;
        }
    }
    return expected == RedfishConfig::FILTER_LOAD_DEFAULT + 1;
}
static_assert(RowsAreInOrder());

} // namespace

const AccessFilter& FilterOf(RedfishConfig::filterAction action)
{
    return filters[action];
}

} // namespace RedfishConfig::App
