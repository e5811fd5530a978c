#pragma once

/**
 * @file
 * What reading and adapting a controller's documents tells about them.
 */

#include <RedfishConfig/Export.h>

#include <string>
#include <string_view>

namespace RedfishConfig::Client {

enum class Severity {
    Note,    ///< was put in another way that means the same
    Warning, ///< something does not count, or may not be what its author meant
    Error,   ///< a document, or a rule, that is not understood or cannot be put exactly
};

/** The document that the place of a finding points into. */
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
    ValueWithOperators,
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
    NeverHolds,
    TooLarge,
    Inexpressible,
    // the adapted registry as a whole
    AlwaysHolds,
    NeverChangeable,
    DefaultOutOfBounds,
    ValueCycle,
    RuleCycle,
};

struct Finding {
    Severity Level = Severity::Note;
    FindingKind Kind = FindingKind::WrongKind;
    Document In = Document::Registry;
    std::string Place; ///< JSON Pointer into the document as it was given; empty for the whole document
    std::string Found;
    std::string Done; ///< what that led to
};

/** "note", "warning", "error". */
REDFISHCONFIG_EXPORT std::string_view Word(Severity severity);

/** "registry", "values". */
REDFISHCONFIG_EXPORT std::string_view Word(Document document);

/** A word that stays the same from version to version, for instance "unknown-source". */
REDFISHCONFIG_EXPORT std::string_view Word(FindingKind kind);

} // namespace RedfishConfig::Client
