#include "ModelStatus.h"

#include "AccessFilter.h"

#include <array>

namespace RedfishConfig::App {

using Client::Property;
using Client::Verdict;

namespace {

/** The property that a row is about; row N is StatusRow N. */
constexpr std::array<Property, statusRows> flags{Property::Hidden,
                                                 Property::GrayOut,
                                                 Property::ReadOnly,
                                                 Property::WriteOnly,
                                                 Property::Hidden,
                                                 Property::Immutable,
                                                 Property::IsSystemUniqueProperty};

constexpr Property FlagOf(StatusRow row)
{
    return flags[static_cast<std::size_t>(row)]; // NOLINT(cppcoreguidelines-pro-bounds-constant-array-index)
}

/** The part of a verdict on Hidden that makes a setting protected. */
Verdict ProtectedPart(Verdict hidden)
{
    const bool isProtected = hidden.Value && hidden.Marked;
    return isProtected ? hidden : Verdict{};
}

/** The part that a rule decides. */
Verdict PartOfRules(Verdict hidden)
{
    const bool isProtected = hidden.Value && hidden.Marked;
    return isProtected ? Verdict{} : hidden;
}

} // namespace

Verdict ModelStatus::VerdictOf(std::size_t attribute, StatusRow row) const
{
    const Verdict verdict = m_Evaluation.VerdictOn(attribute, FlagOf(row));
    return row == StatusRow::Protected ? ProtectedPart(verdict) : verdict;
}

std::string ModelStatus::ReasonOf(std::size_t attribute, StatusRow row) const
{
    return Client::ReasonFor(m_Evaluation, m_Values, attribute, FlagOf(row));
}

std::string ModelStatus::DoubtAbout(std::size_t attribute, StatusRow row) const
{
    return Client::DoubtAbout(m_Evaluation, m_Values, attribute, FlagOf(row));
}

std::vector<std::size_t> ModelStatus::RulesOf(std::size_t attribute, StatusRow row) const
{
    std::vector<std::size_t> positions;
    for (const std::size_t rule : m_Evaluation.DecidingRules(attribute, FlagOf(row))) {
        positions.push_back(m_Evaluation.Of().Rules()[rule].Position);
    }
    return positions;
}

SettingStatus ModelStatus::Of(std::size_t attribute, Detail detail) const
{
    SettingStatus status;
    for (const ShownProperty& property : shownProperties) {
        const Verdict verdict = VerdictOf(attribute, property.Row);
        PropertyStatus& row = status[property.Row];
        row.Value = verdict.Value;
        row.Certain = verdict.Certain;
        row.Marked = verdict.Marked;
        if (detail == Detail::Reasons && (verdict.Value || !verdict.Certain)) {
            row.Reason = ReasonOf(attribute, property.Row);
            row.Rules = RulesOf(attribute, property.Row);
        }
    }
    return status;
}

Excluded ModelStatus::Explain(std::size_t attribute, StatusRow row, bool isCertain) const
{
    const std::string& name = m_Values.Of().Attributes()[attribute].Name;
    if (isCertain) {
        const std::string reason = ReasonOf(attribute, row);
        return {name + " is " + reason + ".", reason};
    }
    const std::string rest = std::string(" is ") + Shown(row).Word + " is not certain: " + DoubtAbout(attribute, row);
    return {"Whether " + name + rest + ".", "whether it" + rest};
}

Access ModelStatus::AccessFor(std::size_t attribute, RedfishConfig::filterAction action, bool includeProtected,
                              Detail detail) const
{
    const bool withTexts = detail == Detail::Reasons;
    const AccessFilter& filter = FilterOf(action);
    Access access;
    if (filter.ExcludesAll) {
        access.Refusal = Excluded{};
    }
    for (const Exclusion& exclusion : filter) {
        if (exclusion.UnlessIncluded && includeProtected) {
            continue;
        }
        Verdict verdict = VerdictOf(attribute, exclusion.Row);
        verdict = exclusion.Row == StatusRow::Hidden ? PartOfRules(verdict) : verdict;
        if (verdict.Value) {
            access.Refusal = withTexts ? Explain(attribute, exclusion.Row, verdict.Certain) : Excluded{};
            break;
        }
        if (!verdict.Certain) {
            access.Doubts.emplace_back(exclusion.Row, withTexts ? DoubtAbout(attribute, exclusion.Row) : "");
        }
    }
    return access;
}

} // namespace RedfishConfig::App
