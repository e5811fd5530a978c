#pragma once

/**
 * @file
 * What is found about a controller's documents: what was repaired, what does not count, what is odd.
 */

#include <RedfishConfig/Export.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

enum class Severity {
    Note,    ///< was read as something that means the same
    Warning, ///< something does not count, or may not be what its author meant
    Error,   ///< a document, or a rule, that is not understood
};

/** The document that a finding points into. */
enum class Document { Registry, Values };

enum class FindingKind {
    // documents
    UnreadableDocument,
    WrappedDocument,
    RepeatedKey,
    WrongKind,
    ForeignRegistry,
    UnusableValue,
    UnknownName,
    // attributes
    KeyName,
    UnnamedAttribute,
    UnnamedMenu,
    RepeatedAttribute,
    UnknownType,
    NumberBeyondRange,
    NoBound,
    ContradictoryBounds,
    NoChoices,
    ChoiceWithoutDisplayName,
    RepeatedChoice,
    UnusablePattern,
    DisplayNamesAreValues,
    DisplayNameForValue,
    ValueOfOtherType,
    ValueNotAChoice,
    // rules
    NoForm,
    MixedForms,
    UnusableRule,
    UnsupportedCondition,
    UnsupportedSourceProperty,
    UnsupportedTargetProperty,
    UnknownSource,
    UnknownTarget,
    MenuTarget,
    ControllerTerm,
    NameInOtherCase,
    OutcomeOfOtherType,
    OppositeOutcome,
    OrderOfTexts,
    // the registry as a whole
    NeverHolds,
    AlwaysHolds,
    NeverChangeable,
    DefaultOutOfBounds,
    ValueCycle,
    RuleCycle,
    // the registry beside the values of a system
    UnexplainedFlag,
    DifferentFromRule,
    NoChoiceLeft,
    ValueNotAllowed,
    // adapting for the core library
    ValueWithOperators,
    TooLarge,
    Inexpressible,
};

/** All kinds, in the order of FindingKind. */
REDFISHCONFIG_EXPORT const std::vector<FindingKind>& FindingKinds();

/**
 * Of one severity and kind the first 1,000 of each reader are listed, and one more counts the others. (Documents, the
 * model, the values, lint and adapting are read one by one; of repeated keys 100 are listed.)
 */
struct Finding {
    Severity Level = Severity::Note;
    FindingKind Kind = FindingKind::WrongKind;
    Document In = Document::Registry;
    /**
     * JSON Pointer into the document as it was given; empty for the whole document. Where it would have more than 4,096
     * bytes it is that of the nearest object or array around the place that has a shorter one.
     */
    std::string Pointer;
    std::string Found;
    std::string Consequence;
    std::string Attribute; ///< that it is about; empty for none, for several, and for a name of more than 4,096 bytes
    std::optional<std::size_t> Rule; ///< the position in "Dependencies" of the rule that it is about
    std::size_t Count = 1;           ///< how many findings it stands for: 1 unless it counts others
    bool CountsOthers = false;       ///< whether it stands for findings of its severity and kind that are not listed
};

/** "note", "warning", "error". */
REDFISHCONFIG_EXPORT std::string_view Word(Severity severity);

/** "registry", "values". */
REDFISHCONFIG_EXPORT std::string_view Word(Document document);

/** A word that stays the same from version to version, for instance "unknown-source". */
REDFISHCONFIG_EXPORT std::string_view Word(FindingKind kind);

} // namespace RedfishConfig::Client
