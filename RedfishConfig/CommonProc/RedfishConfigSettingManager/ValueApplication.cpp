#include "ValueApplication.h"

#include "../../logging/LogLine.h"
#include "SettingKeys.h"

#include <algorithm>

namespace RedfishConfig {

void ValueApplication::ApplyAll(const SettingTable& settings, std::uint64_t changes)
{
    m_IsCurrent = false;
    m_GaveUp = false;
    m_Effort = {};
    m_Formulas.clear();
    m_Readers.clear();
    if (settings.Empty()) {
        m_IsCurrent = true;
        m_Changes = changes;
        return;
    }
    const bool notes = m_WasApplied;
    if (notes) {
        m_Readers.resize(settings.Source().Attributes().size());
    }
    SettingKeys keys(settings);
    ValueSubstitution substitution(keys);
    for (const std::uint32_t number : settings.InOrder()) {
        const auto& [name, setting] = settings.At(number);
        if (setting == nullptr) {
            continue;
        }
        LOG_LINE(LogDetail) << "Replace the property values in expression for " << *name;
        for (std::size_t formula = 0; formula < setting->FormulaCount(); ++formula) {
            keys.SettingsRead().clear();
            const SubstitutionEffort before = m_Effort;
            if (!setting->PutValuesIntoFormula(formula, substitution, m_Effort)) {
                m_GaveUp = true;
                LOG_LINE(LogDefect)
                    << "A formula becomes too long with the values of settings and cannot be calculated.";
            }
            if (notes) {
                m_Formulas.push_back({number,
                                      static_cast<std::uint32_t>(formula),
                                      {m_Effort.Written - before.Written, m_Effort.Work - before.Work}});
                NoteReaders(keys, static_cast<std::uint32_t>(m_Formulas.size() - 1));
            }
        }
    }
    m_WasApplied = true;
    m_IsCurrent = true;
    m_Changes = changes;
}

void ValueApplication::ApplyChanged(const SettingTable& settings, const std::vector<std::uint32_t>& changed,
                                    std::uint64_t changes)
{
    if (m_GaveUp || m_Readers.empty()) {
        ApplyAll(settings, changes);
        return;
    }
    m_IsCurrent = false;
    std::vector<std::uint32_t> affected;
    for (const std::uint32_t number : changed) {
        affected.insert(affected.end(), m_Readers[number].begin(), m_Readers[number].end());
    }
    std::sort(affected.begin(), affected.end());
    affected.erase(std::unique(affected.begin(), affected.end()), affected.end());
    SettingKeys keys(settings);
    ValueSubstitution substitution(keys);
    for (const std::uint32_t place : affected) {
        Formula& formula = m_Formulas[place];
        SubstitutionEffort effort;
        keys.SettingsRead().clear();
        const auto& setting = settings.At(formula.setting).Setting;
        m_GaveUp |= !setting->PutValuesIntoFormula(formula.number, substitution, effort);
        NoteReaders(keys, place);
        m_Effort.Written += effort.Written - formula.effort.Written;
        m_Effort.Work += effort.Work - formula.effort.Work;
        formula.effort = effort;
        if (m_GaveUp || !substitution.IsWithinLimits(m_Effort)) {
            ApplyAll(settings, changes); // which formulas are given up depends on all that stand before
            return;
        }
    }
    m_IsCurrent = true;
    m_Changes = changes;
}

/** Adds to what was noted before: a formula too many that reads a setting costs time and nothing else. */
void ValueApplication::NoteReaders(SettingKeys& keys, std::uint32_t formula)
{
    for (const std::uint32_t number : keys.SettingsRead()) {
        std::vector<std::uint32_t>& readers = m_Readers[number];
        const auto place = std::lower_bound(readers.begin(), readers.end(), formula);
        if (place == readers.end() || *place != formula) {
            readers.insert(place, formula);
        }
    }
}

} // namespace RedfishConfig
