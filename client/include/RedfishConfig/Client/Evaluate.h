#pragma once

/**
 * @file
 * What the rules of a registry come to for the values of a system.
 */

#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/SystemValues.h>
#include <RedfishConfig/Client/Truth.h>
#include <RedfishConfig/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/** How far the registry's own flag can be relied on, by the values that came with the registry. */
enum class FlagOrigin : std::uint8_t {
    NotSet,
    Explained,   ///< the rules were true then: a snapshot of what they gave; for other values the rules alone decide
    Marked,      ///< no rule made it true then, or there is none: it is true for all values
    Unexplained, ///< whether a rule was true then is not known: it stays true, which is not certain
};

/** Whether a flag of a setting is true. */
struct Verdict {
    bool Value = false;
    bool Certain = true; ///< else it hangs on something that is not known
    bool Marked = false; ///< the registry's own flag decides: no rule does
};

/** A condition with the truth of each part, in the order of the rule. */
struct Explanation {
    Condition::Kind What = Condition::Kind::Unknown;
    Truth Is = Truth::Unknown;
    std::vector<Explanation> Parts;
    const Test* Asked = nullptr; ///< of a Test; owned by the model
    Value Current;               ///< of a Test: what its source has; a text of more than 600 bytes is cut
    std::string Because; ///< of a Test or an Unknown that is unknown: "the system does not report it"; else empty
};

/** The choices of an attribute, and which of them the rules leave. */
struct ChoicesInForce {
    std::vector<Choice> Choices;    ///< as SystemValues::ChoicesOf()
    std::vector<bool> Allowed;      ///< for each of them
    std::vector<std::size_t> Rules; ///< that narrow them; indices
    bool Certain = true;
};

/**
 * The rules evaluated for the values of one system. The truth of all rules and the verdicts on all flags are computed
 * when the values are given: TruthOf() and VerdictOn() are look-ups. RuleInForce() and DecidingRules() go through the
 * rules for the property, and the functions below evaluate the conditions that they explain once more. A copy takes a
 * byte for each rule and seven for each attribute; the model and the origins of the flags are shared.
 *
 * All values are of one model. The functions below that take values beside an evaluation are given those that it was
 * made for: with others the answer would be made of both.
 *
 * A test is unknown when its source has no value: not reported, null, a password, or a name that the registry does not
 * define. "EQU null" asks whether there is none. Conditions are evaluated by Kleene's three-valued logic.
 *
 * Of the rules for one property the first that is true decides. Where none is, the registry's own flag does, unless
 * it is a snapshot: see FlagOrigin. A verdict is not certain where none is true
 * and one is unknown, where an unknown one with another outcome is before the one that decides, where the origin of
 * the flag is Unexplained, and where rules or flags of its menus are left out (Model::IsComplete()).
 */
class REDFISHCONFIG_EXPORT Evaluation {
public:
    /** The registry came with the same values. */
    explicit Evaluation(const SystemValues& now);

    /** @param then the values that the registry came with, of the same model */
    Evaluation(const SystemValues& now, const SystemValues& then);

    /** For other values, with the flags as they were found; @p now has the same model. */
    Evaluation ForValues(const SystemValues& now) const;

    const Model& Of() const { return *m_Model; }

    /** @param rule an index in Model::Rules() */
    Truth TruthOf(std::size_t rule) const { return m_Rules[rule]; }

    /** @param flag one of the properties for which IsFlag() holds */
    Verdict VerdictOn(std::size_t attribute, Property flag) const
    {
        const std::uint8_t bits = m_Verdicts[attribute * flagCount + static_cast<std::size_t>(flag)];
        return {(bits & isTrue) != 0, (bits & isUncertain) == 0, (bits & isMarked) != 0};
    }

    FlagOrigin OriginOf(std::size_t attribute, Property flag) const;

    /**
     * Of a verdict that is Marked: the first menu whose flag is the mark. Nothing where the attribute's own flag is
     * one, and for other verdicts.
     */
    std::optional<std::size_t> MenuThatMarks(std::size_t attribute, Property flag) const;

    /** The true rules for a property that agree with the first true one; where none is, the unknown ones. Indices. */
    std::vector<std::size_t> DecidingRules(std::size_t attribute, Property property) const;

    /** The first true rule for a property; none when no rule is true. */
    std::optional<std::size_t> RuleInForce(std::size_t attribute, Property property) const;

private:
    struct Flags;
    class OriginFinder;

    // how a verdict is kept in a byte
    static constexpr std::uint8_t isTrue = 1;
    static constexpr std::uint8_t isUncertain = 2;
    static constexpr std::uint8_t isMarked = 4;

    std::shared_ptr<const Flags> FindFlags() const;
    std::pair<FlagOrigin, std::optional<std::size_t>> OriginByRules(std::size_t attribute, Property flag,
                                                                    const std::vector<FlagOrigin>& ofMenus) const;
    std::vector<FlagOrigin> FindMenuFlags() const;
    void DecideAll();
    Verdict Decide(std::size_t attribute, Property flag, FlagOrigin origin) const;

    std::shared_ptr<const Model> m_Model;
    std::vector<Truth> m_Rules;
    std::vector<std::uint8_t> m_Verdicts; // by attribute and flag
    std::shared_ptr<const Flags> m_Flags; // shared by the evaluations for other values
};

/** The condition of a rule with the truth of each part. @param rule an index in Model::Rules() */
REDFISHCONFIG_EXPORT Explanation Explain(const SystemValues& now, std::size_t rule);

/**
 * The same without what does not matter: of the parts of an "all" or "any" only those with its own truth. A part that
 * is left alone takes its place.
 */
REDFISHCONFIG_EXPORT Explanation Pruned(const Explanation& explanation);

/**
 * Why a flag is as it is, in a sentence: "read-only because SysProfile is PerfOptimized, not Custom (rule 504)",
 * "marked read-only by the controller; no rule explains it", "unknown whether read-only: rule 39 reads …". Empty for a
 * flag that is certainly false.
 */
REDFISHCONFIG_EXPORT std::string ReasonFor(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute,
                                           Property flag);

/**
 * What a property depends on that is not known: of a flag "rule 39 reads X, and the system does not report it; the
 * controller's own flag says no"; of another property the same of the first unknown rule that could change it, or that
 * rules for it are not kept. Empty for one that is certain.
 */
REDFISHCONFIG_EXPORT std::string DoubtAbout(const Evaluation& evaluation, const SystemValues& now,
                                            std::size_t attribute, Property property);

/**
 * What it depends on which values an attribute accepts: "rule 39 reads X, and the system does not report it", of the
 * first rule for its choices, bounds, increment, lengths or pattern that is unknown; or that rules for them are not
 * kept. Empty when that is certain.
 */
REDFISHCONFIG_EXPORT std::string DoubtAboutValues(const Evaluation& evaluation, const SystemValues& now,
                                                  std::size_t attribute);

/**
 * Why an attribute accepts no value at all: "LowerBound is 90 (rule 3) and UpperBound is 10 (rule 4)", "rules 3 and 5
 * leave no choice". Empty when it may accept some.
 */
REDFISHCONFIG_EXPORT std::string WhyNoValue(const Evaluation& evaluation, const SystemValues& now,
                                            std::size_t attribute);

/** The choices that the rules leave: the lists in force intersected with each other and with the attribute's own. */
REDFISHCONFIG_EXPORT ChoicesInForce ChoicesOf(const Evaluation& evaluation, const SystemValues& now,
                                              std::size_t attribute);

/**
 * The attribute as it is in force: its bounds, lengths, default and texts as the rules give them; its choices are those
 * that the rules leave, under the names that its values use. CurrentValue is that of the system.
 */
REDFISHCONFIG_EXPORT Attribute AttributeInForce(const Evaluation& evaluation, const SystemValues& now,
                                                std::size_t attribute);

} // namespace RedfishConfig::Client
