#pragma once

#include "common/Limits.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig {

/**
 * What a formula may ask of a setting ("NAME.CurrentValue", "NAME exist", ...), and the text that stands for it. Two
 * settings can have the same key: "A not exist" asks whether "A not" exists, and whether "A" does not. The one whose
 * name orders first counts, which is the shorter one.
 */
struct FormulaKey {
    std::string_view Name;
    std::string_view Tail;
    std::string_view Text;
};

/** What putting values into formulas takes, as the limits for all formulas of a manager count it. */
struct SubstitutionEffort {
    std::uint64_t Written = 0; ///< in bytes
    std::uint64_t Work = 0;    ///< in bytes looked at
};

/** The keys that there are. */
class FormulaKeys {
public:
    FormulaKeys() = default;
    FormulaKeys(const FormulaKeys&) = delete;
    FormulaKeys& operator=(const FormulaKeys&) = delete;
    virtual ~FormulaKeys() = default;

    /**
     * Adds every key that stands somewhere in @p text.
     *
     * @return how many bytes it took to look at
     */
    virtual std::size_t FindIn(std::string_view text, std::vector<FormulaKey>& found) = 0;

    /** Whether a key may have this byte. */
    virtual bool MayHold(char byte) const = 0;

    virtual std::size_t LongestKey() const = 0;
};

/**
 * Puts the values of settings into formulas: every key is replaced by its text.
 *
 * The outcome is that of replacing, for each key in ascending byte order, every occurrence of the key in the formula
 * as it is at that moment, from left to right. So a key is also found at the end of a longer name, and in a text that
 * an earlier key was replaced by. Only the keys that occur are visited: those of the formula as given, and those that
 * a replacement brings about, which can stand nowhere but in its text or across its ends.
 *
 * Values that hold keys could make a formula grow without end. A formula that becomes longer than Limits::formulaBytes
 * is given up and answered empty, and so are all others once one object has written Limits::allFormulasBytes or done
 * Limits::substitutionWork. An empty formula cannot be calculated.
 */
class ValueSubstitution {
public:
    explicit ValueSubstitution(FormulaKeys& keys, std::uint64_t workLimit = Limits::substitutionWork);

    /** @param spent what the formulas before took; this one is added */
    std::string Apply(const std::string& formula, SubstitutionEffort& spent);

    /** The same for a formula whose keys are known, in any order. */
    std::string Apply(const std::string& formula, const std::vector<FormulaKey>& keys, SubstitutionEffort& spent);

    /** Whether so much effort is still within what is granted for all formulas together. */
    bool IsWithinLimits(const SubstitutionEffort& spent) const;

private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    void AddOccurring(const std::vector<FormulaKey>& keys);
    // Replaces a key everywhere, and adds the later ones that this brings about.
    void ReplaceAll(const FormulaKey& key, SubstitutionEffort& spent);
    void AddBrought(SubstitutionEffort& spent);
    Range Surroundings(std::size_t begin, std::size_t end) const;
    bool GoesOn(const std::string& text, const SubstitutionEffort& spent) const;

    FormulaKeys& m_Keys;
    std::uint64_t m_WorkLimit;

    // Of the formula at hand; kept to save allocations.
    std::string m_Text;
    std::string m_Replaced;
    std::string m_Wanted;
    std::vector<FormulaKey> m_Occurring; // in descending order, each key once
    std::vector<FormulaKey> m_Found;
    std::vector<Range> m_Changed; // the texts put in place of a key
};

} // namespace RedfishConfig
