#pragma once

#include "../RedfishConfigExpression/ValueSubstitution.h"
#include "SettingTable.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace RedfishConfig {

/**
 * Puts the values of a manager's settings into their formulas: into all of them, or, where it is known which formulas
 * read a setting, only into those that read one that has changed. The formulas come out the same.
 *
 * Why that is right: the text of a formula depends only on the texts of the keys that stand in it at some step. A
 * setting is noted as read when one of its keys stands there, whether it has a value or not; so a value that no step
 * met makes no difference.
 */
class ValueApplication {
public:
    /** Whether the formulas have the values of all settings, when so many changes of settings were counted. */
    bool IsCurrent(std::uint64_t changes) const { return m_IsCurrent && m_Changes == changes; }

    /** Into all formulas of all settings. Writes to the log what a detailed log shows of it. */
    void ApplyAll(const SettingTable& settings, std::uint64_t changes);

    /** Into the formulas that read these settings. Falls back to all when the limits for all formulas might matter. */
    void ApplyChanged(const SettingTable& settings, const std::vector<std::uint32_t>& changed, std::uint64_t changes);

    /** Whether a formula was given up as too long, which the log tells each time. */
    bool GaveUp() const { return m_GaveUp; }

private:
    struct Formula {
        std::uint32_t setting;
        std::uint32_t number; // among the formulas of the setting
        SubstitutionEffort effort;
    };

    struct Pass;
    enum class Telling : std::uint8_t;

    static bool ApplyOne(RedfishConfigSetting& setting, std::size_t number, Pass& pass, SubstitutionEffort& effort,
                         Telling telling);
    void NoteReaders(const std::vector<std::uint32_t>& settingsRead, std::uint32_t formula);

    bool m_IsCurrent = false;
    bool m_GaveUp = false;
    bool m_WasApplied = false;
    std::uint64_t m_Changes = 0;
    SubstitutionEffort m_Effort; // of all formulas

    // Noted from the second pass over all formulas on: many managers never see another value.
    std::vector<Formula> m_Formulas;
    std::vector<std::vector<std::uint32_t>> m_Readers; // by setting, the formulas that read it
};

} // namespace RedfishConfig
