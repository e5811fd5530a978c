#include <RedfishConfig/Client/Finding.h>

#include <cstddef>

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
    {FindingKind::UnnamedMenu, "unnamed-menu"},
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
    {FindingKind::OrderOfTexts, "order-of-texts"},
    {FindingKind::NeverHolds, "never-holds"},
    {FindingKind::AlwaysHolds, "always-holds"},
    {FindingKind::NeverChangeable, "never-changeable"},
    {FindingKind::DefaultOutOfBounds, "default-out-of-bounds"},
    {FindingKind::ValueCycle, "value-cycle"},
    {FindingKind::RuleCycle, "rule-cycle"},
    {FindingKind::UnexplainedFlag, "unexplained-flag"},
    {FindingKind::DifferentFromRule, "different-from-rule"},
    {FindingKind::NoChoiceLeft, "no-choice-left"},
    {FindingKind::ValueNotAllowed, "value-not-allowed"},
    {FindingKind::ValueWithOperators, "value-with-operators"},
    {FindingKind::TooLarge, "too-large"},
    {FindingKind::Inexpressible, "inexpressible"},
};

constexpr bool RowsAreInOrder()
{
    std::size_t expected = 0;
    for (const KindWord& row : kindWords) {
        if (static_cast<std::size_t>(row.kind) != expected++) {
            return false;
        }
    }
    return expected == static_cast<std::size_t>(FindingKind::Inexpressible) + 1;
}
static_assert(RowsAreInOrder());

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
    return kindWords[static_cast<std::size_t>(kind)].word; // row N is kind N
}

const std::vector<FindingKind>& FindingKinds()
{
    static const std::vector<FindingKind> kinds = [] {
        std::vector<FindingKind> all;
        for (const KindWord& row : kindWords) {
            all.push_back(row.kind);
        }
        return all;
    }();
    return kinds;
}

} // namespace RedfishConfig::Client
