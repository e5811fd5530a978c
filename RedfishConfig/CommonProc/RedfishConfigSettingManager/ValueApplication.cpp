#include "ValueApplication.h"

#include "../../logging/LogLine.h"
#include "../RedfishConfigSetting/SettingState.h"
#include "SettingKeys.h"

#include <algorithm>

namespace RedfishConfig {

/** What all formulas of one pass use. */
struct ValueApplication::Pass {
    explicit Pass(const SettingTable& settings) : Keys(settings), Substitution(Keys) {}

    SettingKeys Keys;
    ValueSubstitution Substitution;
    std::vector<FormulaKey> Found; // in the formula at hand
};

/** Whether a formula that is given up is told in the log: not when a pass over all formulas follows. */
enum class ValueApplication::Telling : std::uint8_t { No, Yes };

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
    Pass pass(settings);
    for (const std::uint32_t number : settings.InOrder()) {
        const auto& [name, setting] = settings.At(number);
        if (setting == nullptr) {
            continue;
        }
        LOG_LINE(LogDetail) << "Replace the property values in expression for " << *name;
        for (std::size_t formula = 0; formula < setting->m_FormulaStates.size(); ++formula) {
            const SubstitutionEffort before = m_Effort;
            m_GaveUp |= !ApplyOne(*setting, formula, pass, m_Effort, Telling::Yes);
            if (notes) {
                m_Formulas.push_back({number,
                                      static_cast<std::uint32_t>(formula),
                                      {m_Effort.Written - before.Written, m_Effort.Work - before.Work}});
                NoteReaders(pass.Keys.SettingsRead(), static_cast<std::uint32_t>(m_Formulas.size() - 1));
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
    Pass pass(settings);
    for (const std::uint32_t place : affected) {
        Formula& formula = m_Formulas[place];
        SubstitutionEffort effort;
        m_GaveUp |= !ApplyOne(*settings.At(formula.setting).Setting, formula.number, pass, effort, Telling::No);
        NoteReaders(pass.Keys.SettingsRead(), place);
        m_Effort.Written += effort.Written - formula.effort.Written;
        m_Effort.Work += effort.Work - formula.effort.Work;
        formula.effort = effort;
        if (m_GaveUp || !pass.Substitution.IsWithinLimits(m_Effort)) {
            ApplyAll(settings, changes); // which formulas are given up depends on all that stand before
            return;
        }
    }
    m_IsCurrent = true;
    m_Changes = changes;
}

/** False when the formula is given up as too long. */
bool ValueApplication::ApplyOne(RedfishConfigSetting& setting, std::size_t number, Pass& pass,
                                SubstitutionEffort& effort, Telling telling)
{
    FormulaState& state = setting.m_FormulaStates[number];
    const std::string& displayText = state.Expression->DisplayText;
    LOG_LINE(LogDetail) << "the PropertyName:" << *state.Property << " and the Expression:" << displayText;
    pass.Found.clear();
    pass.Keys.SettingsRead().clear();
    pass.Keys.AddKeys(setting.m_Formulas->Places[number], pass.Found);
    setting.SetFormula(state, pass.Substitution.Apply(displayText, pass.Found, effort));
    const bool gaveUp = state.Formula.empty();
    if (gaveUp && telling == Telling::Yes) {
        LOG_LINE(LogDefect) << "A formula becomes too long with the values of settings and cannot be calculated.";
    }
    LOG_LINE(LogDetail) << "After replacing, the expression:" << state.Formula;
    return !gaveUp;
}

/** Adds to what was noted before: a formula too many that reads a setting costs time and nothing else. */
void ValueApplication::NoteReaders(const std::vector<std::uint32_t>& settingsRead, std::uint32_t formula)
{
    for (const std::uint32_t number : settingsRead) {
        std::vector<std::uint32_t>& readers = m_Readers[number];
        const auto place = std::lower_bound(readers.begin(), readers.end(), formula);
        if (place == readers.end() || *place != formula) {
            readers.insert(place, formula);
        }
    }
}

} // namespace RedfishConfig
