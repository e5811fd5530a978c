#include <RedfishConfig/RedfishConfigSetting.h>

#include "../../logging/LogLine.h"

#include <array>

namespace RedfishConfig {

namespace {

/** A property that excludes a setting from some kind of work. */
enum class Excludes {
    Nothing,
    ReadOnly,
    WriteOnly,
    Protected,
    ProtectedUnlessIncluded, ///< not asked when Config_Options::IgnoreProtected is set
    Hidden,
    GrayOut,
    Immutable,
    SystemUnique,
    Always,
    NothingButTells, ///< excludes nothing, but leaves the reason why the setting is hidden or else grayed out
};

struct FilterRow {
    filterAction action;
    std::array<Excludes, 6> excludes; ///< in the order of asking; the first that is true gives the reason
};

using E = Excludes;

/** What excludes a setting, by action; row N is action N. */
constexpr FilterRow filterRows[] = {
    {FILTER_QUERY_VALUE, {E::WriteOnly, E::ProtectedUnlessIncluded, E::Hidden}},
    {FILTER_QUERY_GROUP_VALUES, {E::WriteOnly, E::Protected, E::Hidden}},
    {FILTER_QUERY_DEFAULT, {E::ProtectedUnlessIncluded}},
    {FILTER_QUERY_GROUP_DEFAULTS, {E::Protected}},
    {FILTER_QUERY_DESCRIPTION, {E::ProtectedUnlessIncluded}},
    {FILTER_QUERY_GROUP_DESCRIPTIONS, {E::Protected}},
    {FILTER_QUERY_CHOICES, {E::ProtectedUnlessIncluded, E::NothingButTells}},
    {FILTER_QUERY_GROUP_CHOICES, {E::Protected, E::NothingButTells}},
    {FILTER_PATCH, {E::ReadOnly, E::ProtectedUnlessIncluded, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_SAVE, {E::ProtectedUnlessIncluded, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_SAVE_GROUP, {E::Protected, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_SAVE_FULL, {E::Protected, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_SAVE_PORTABLE, {E::Protected, E::Hidden, E::GrayOut, E::Immutable, E::SystemUnique}},
    {FILTER_NONE_TAKES_PART, {E::Always}},
    {FILTER_PATCH_GROUP, {E::ReadOnly, E::Protected, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_RESTORE_WITH_UNIQUE, {E::ReadOnly, E::Protected, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_RESTORE, {E::ReadOnly, E::Protected, E::Hidden, E::GrayOut, E::Immutable, E::SystemUnique}},
    {FILTER_PATCH_FROM_FILE, {E::ReadOnly, E::ProtectedUnlessIncluded, E::Hidden, E::GrayOut, E::Immutable}},
    {FILTER_LOAD_DEFAULT, {E::ReadOnly, E::ProtectedUnlessIncluded, E::Hidden, E::GrayOut, E::Immutable}},
};

constexpr bool RowsAreInOrder()
{
    int expected = 0;
    for (const FilterRow& row : filterRows) {
        if (row.action != expected++) {
            return false;
        }
    }
    return expected == 19;
}
static_assert(RowsAreInOrder());

} // namespace

bool RedfishConfigSetting::filter(const filterAction& action)
{
    LOG_LINE(LogDetail) << "Enter RedfishConfigSetting::filter() with filterAction=" << static_cast<int>(action);
    m_ErrMsg.clear();
    if (action < FILTER_QUERY_VALUE || action > FILTER_LOAD_DEFAULT) {
        return false;
    }
    const auto excludes = [this](Excludes property) {
        switch (property) {
        case Excludes::ReadOnly:
            return isReadOnly();
        case Excludes::WriteOnly:
            return isWriteOnly();
        case Excludes::Protected:
            return isProtected();
        case Excludes::ProtectedUnlessIncluded:
            return !m_Options.IgnoreProtected && isProtected();
        case Excludes::Hidden:
            return isHidden();
        case Excludes::GrayOut:
            return isGrayOut();
        case Excludes::Immutable:
            return isImmutable();
        case Excludes::SystemUnique:
            return isSystemUnique();
        case Excludes::Always:
            return true;
        case Excludes::NothingButTells:
            if (!isHidden()) {
                isGrayOut();
            }
            return false;
        case Excludes::Nothing:
            break;
        }
        return false;
    };
    for (const Excludes property : filterRows[action].excludes) {
        if (excludes(property)) {
            return false;
        }
    }
    return true;
}

} // namespace RedfishConfig
