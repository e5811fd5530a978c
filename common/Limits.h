#pragma once

#include <cstddef>
#include <cstdint>

/**
 * How much is read and worked on: far more than any real system needs, and little enough that no registry, value or
 * pattern can exhaust memory, time or the stack. What happens beyond is said at each.
 */
namespace RedfishConfig::Limits {

/** A registry that exceeds one of these cannot be read (code 27). */
constexpr std::size_t registryBytes = 256U << 20U;
constexpr std::size_t registryDepth = 32; // of objects and lists in each other
constexpr std::size_t attributes = 250'000;
constexpr std::size_t rules = 250'000;

/** A rule with more terms is unusable and left out. */
constexpr std::size_t termsOfRule = 1'000;

/** A formula that is longer once values are put into it cannot be calculated. */
constexpr std::size_t formulaBytes = 64U << 10U;

/** The same holds for all formulas once so much has been written, or looked through, to put values into them. */
constexpr std::uint64_t allFormulasBytes = 1ULL << 30U;
constexpr std::uint64_t substitutionWork = 1ULL << 33U; // in bytes

/** A setting with a pattern that exceeds one of these refuses every value (code 10). */
constexpr std::size_t patternBytes = 2'048;
constexpr std::size_t patternSize = 10'000; // in pieces, repetitions with a count written out

/** A setting with a pattern refuses a value that exceeds one of these when it is matched (code 10). */
constexpr std::size_t matchedBytes = 4'096;
constexpr std::size_t matchSteps = 2'000'000;
constexpr std::size_t matchStackBytes = 4U << 20U;

/** Deeper menu paths are cut: what follows counts as one name. The deepest path seen in use has seven pieces. */
constexpr std::size_t menuLevels = 32;

} // namespace RedfishConfig::Limits
