#pragma once

#include "common/Limits.h"

#include <cstddef>

/**
 * How much is read and written. Documents come from firmware that nobody controls; each limit is far beyond real ones.
 * Those of the core, which reads the outcome, are in common/Limits.h.
 */
namespace RedfishConfig::Client::Limits {

/** A document that exceeds one of these cannot be read. */
constexpr std::size_t documentBytes = RedfishConfig::Limits::registryBytes; // once decompressed
constexpr std::size_t documentDepth = RedfishConfig::Limits::registryDepth; // of objects and lists in each other

/** Where a registry or values are looked for in a document that wraps them. */
constexpr std::size_t wrapperDepth = 4;
constexpr std::size_t wrapperMembers = 1'000;
constexpr std::size_t wrapperPointerBytes = 4'096; // of the keys around it

/** Whether a rule of more terms holds is never known. */
constexpr std::size_t termsOfRule = RedfishConfig::Limits::termsOfRule;

/** What a condition may become: alternatives when it is written for the core; terms in them there and in lint. */
constexpr std::size_t conjunctions = 256;
constexpr std::size_t termsOfConjunctions = 8'192;

/** What the core reads of an adapted registry. */
constexpr std::size_t adaptedRules = RedfishConfig::Limits::rules;
constexpr std::size_t formulaBytes = RedfishConfig::Limits::formulaBytes - (4U << 10U); // of all rules for one property
constexpr std::size_t ruleListBytes = RedfishConfig::Limits::registryBytes / 2;         // of all rules as text

/** The rules for one property of a setting become no more text than so many times theirs, and some. */
constexpr std::size_t growthOfRules = 16;
constexpr std::size_t bytesOfPair = 16U << 10U;

/** What is gone through to write rules of different outcomes for one property: values that earlier rules ask for. */
constexpr std::size_t effortOfPair = 100'000;

/** A numeric comparison becomes tests for each number that fulfils it, of an attribute with no more numbers. */
constexpr std::size_t enumeratedNumbers = 256;

/** In a name, a value or an operand of a formula: texts that can end a key of the core. */
constexpr std::size_t keyTails = 64;

/** Rules for the order of choices that are numbers are written for no more choices, and those with a name of several
 * choices for no more of them. */
constexpr std::size_t orderedChoices = 1'000;
constexpr std::size_t choicesOfName = 16;

/** Menus as targets of rules, settings in menus, and settings that rules on menus decide; of each so many in all. */
constexpr std::size_t menuRuleTargets = 1'000'000;

/** Parts of rules on menus, for every setting that they decide: a part is a term, a choice, or 16 bytes of a text. */
constexpr std::size_t menuRuleParts = 4'000'000;

/** Rounds of rules for current values that act on each other after a change, and what they do in all of these. */
constexpr std::size_t cascadeWaves = 1'000;
constexpr std::size_t cascadeEffects = 250'000;

/** Of the clauses of a reason. */
constexpr std::size_t namedClauses = 8;

/** Of a value in a finding, and of a name or value where several are in one sentence. */
constexpr std::size_t quotedBytes = 600;
constexpr std::size_t namedBytes = 100;

/** Findings of one severity and kind that are listed one by one: the others are counted. */
constexpr std::size_t findingsOfKind = 1'000;

/** Keys that an object has twice: those that are reported one by one. */
constexpr std::size_t reportedRepeatedKeys = 100;

/** Of the JSON Pointer of a finding, and of the name of the attribute that it is about. */
constexpr std::size_t pointerBytes = 4'096;

} // namespace RedfishConfig::Client::Limits
