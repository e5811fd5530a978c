#include <RedfishConfig/Client/Finding.h>

#include <algorithm>

namespace RedfishConfig::Client {

namespace {

struct KindWord {
    FindingKind kind;
    std::string_view word;
};

constexpr KindWord kindWords[] = {
    {FindingKind::UnreadableDocument, "unreadable-document"},
    {FindingKind::WrappedDocument, "wrapped-document"},
    {FindingKind::RepeatedKey, "repeated-key"},
    {FindingKind::WrongKind, "wrong-kind"},
    {FindingKind::ForeignRegistry, "foreign-registry"},
    {FindingKind::UnusableValue, "unusable-value"},
    {FindingKind::UnknownName, "unknown-name"},
    {FindingKind::KeyName, "key-name"},
    {FindingKind::UnnamedAttribute, "unnamed-attribute"},
    {FindingKind::RepeatedAttribute, "repeated-attribute"},
    {FindingKind::UnknownType, "unknown-type"},
    {FindingKind::NumberBeyondRange, "number-beyond-range"},
    {FindingKind::NoBound, "no-bound"},
    {FindingKind::ContradictoryBounds, "contradictory-bounds"},
    {FindingKind::NoChoices, "no-choices"},
    {FindingKind::ChoiceWithoutDisplayName, "choice-without-display-name"},
    {FindingKind::RepeatedChoice, "repeated-choice"},
    {FindingKind::UnusablePattern, "unusable-pattern"},
    {FindingKind::DisplayNamesAreValues, "display-names-are-values"},
    {FindingKind::DisplayNameForValue, "display-name-for-value"},
    {FindingKind::ValueOfOtherType, "value-of-other-type"},
    {FindingKind::ValueNotAChoice, "value-not-a-choice"},
    {FindingKind::ValueWithOperators, "value-with-operators"},
    {FindingKind::NoForm, "no-form"},
    {FindingKind::MixedForms, "mixed-forms"},
    {FindingKind::UnusableRule, "unusable-rule"},
    {FindingKind::UnsupportedCondition, "unsupported-condition"},
    {FindingKind::UnsupportedSourceProperty, "unsupported-source-property"},
    {FindingKind::UnsupportedTargetProperty, "unsupported-target-property"},
    {FindingKind::UnknownSource, "unknown-source"},
    {FindingKind::UnknownTarget, "unknown-target"},
    {FindingKind::MenuTarget, "menu-target"},
    {FindingKind::ControllerTerm, "controller-term"},
    {FindingKind::NameInOtherCase, "name-in-other-case"},
    {FindingKind::OutcomeOfOtherType, "outcome-of-other-type"},
    {FindingKind::OppositeOutcome, "opposite-outcome"},
    {FindingKind::NeverHolds, "never-holds"},
    {FindingKind::TooLarge, "too-large"},
    {FindingKind::Inexpressible, "inexpressible"},
    {FindingKind::AlwaysHolds, "always-holds"},
    {FindingKind::NeverChangeable, "never-changeable"},
    {FindingKind::DefaultOutOfBounds, "default-out-of-bounds"},
    {FindingKind::ValueCycle, "value-cycle"},
    {FindingKind::RuleCycle, "rule-cycle"},
};

} // namespace

std::string_view Word(Severity severity)
{
    switch (severity) {
    case Severity::Note:
        return "note";
    case Severity::Warning:
        return "warning";
    case Severity::Error:
        break;
    }
    return "error";
}

std::string_view Word(Document document)
{
    return document == Document::Registry ? "registry" : "values";
}

std::string_view Word(FindingKind kind)
{
    const auto* const found =
        std::find_if(std::begin(kindWords), std::end(kindWords), [&](const KindWord& row) { return row.kind == kind; });
    return found != std::end(kindWords) ? found->word : std::string_view("unknown");
}

} // namespace RedfishConfig::Client
