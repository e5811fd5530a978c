#include <RedfishConfig/Client/Evaluate.h>

#include "../model/ConditionPrograms.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace RedfishConfig::Client {

namespace {

std::vector<Truth> RulesFor(const SystemValues& values)
{
    std::vector<Truth> rules(values.Of().Rules().size());
    const ConditionPrograms& programs = values.Of().Programs();
    programs.EvaluateRules(programs.EvaluateTests(values), rules);
    return rules;
}

} // namespace

/** The flags of a registry: what they are before any rule, and how far each true one can be relied on. */
struct Evaluation::Flags {
    struct Pair {
        std::uint32_t Attribute;
        Property Flag;
        FlagOrigin Origin;
        std::optional<std::size_t> MarkedBy; ///< a menu, unless the attribute's own flag is the mark
    };
    std::vector<Pair> Ruled;                ///< that rules decide, or that are not complete
    std::vector<std::uint8_t> WithoutRules; ///< verdicts by attribute and flag, as the flags alone give them

    /** Null where the flags alone decide. */
    const Pair* Find(std::size_t attribute, Property flag) const;
};

Evaluation::Evaluation(const SystemValues& now) : Evaluation(now, now) {}

Evaluation::Evaluation(const SystemValues& now, const SystemValues& then) : m_Model(then.SharedModel())
{
    m_Rules = RulesFor(then);
    m_Flags = FindFlags();
    if (&now != &then) {
        m_Rules = RulesFor(now);
    }
    DecideAll();
}

Evaluation Evaluation::ForValues(const SystemValues& now) const
{
    Evaluation other(*this);
    other.m_Rules = RulesFor(now);
    other.DecideAll();
    return other;
}

/** By the truth of the rules for the values that the registry came with. */
std::shared_ptr<const Evaluation::Flags> Evaluation::FindFlags() const
{
    const auto flags = std::make_shared<Flags>();
    const std::vector<FlagOrigin> ofMenus = FindMenuFlags();
    const std::size_t attributes = m_Model->Attributes().size();
    flags->WithoutRules.resize(attributes * flagCount, 0);
    for (std::size_t attribute = 0; attribute < attributes; ++attribute) {
        const FlagSet own = m_Model->FlagsOf(attribute);
        for (std::size_t number = 0; number < flagCount; ++number) {
            const auto flag = static_cast<Property>(number);
            if (own.Has(flag)) {
                flags->WithoutRules[attribute * flagCount + number] = isTrue | isMarked;
            }
            if (!m_Model->RulesFor(attribute, flag).empty() || !m_Model->IsComplete(attribute, flag)) {
                const auto [origin, menu] = own.Has(flag) ? OriginByRules(attribute, flag, ofMenus)
                                                          : std::pair(FlagOrigin::NotSet, std::optional<std::size_t>());
                flags->Ruled.push_back({static_cast<std::uint32_t>(attribute), flag, origin, menu});
            }
        }
    }
    return flags;
}

/** Where a true flag came from, by the rules for it, which are added in their order. */
class Evaluation::OriginFinder {
public:
    /** @return whether the rule decides, and the following ones do not count */
    bool Add(Truth truth, bool givesTrue)
    {
        if (truth == Truth::True) { // an earlier rule would go first if it was true
            const bool mayBeOther = givesTrue ? m_UnknownGivesFalse : m_UnknownGivesTrue;
            m_Origin = mayBeOther ? FlagOrigin::Unexplained : givesTrue ? FlagOrigin::Explained : FlagOrigin::Marked;
        } else if (truth == Truth::Unknown) {
            m_Origin = FlagOrigin::Unexplained;
            (givesTrue ? m_UnknownGivesTrue : m_UnknownGivesFalse) = true;
        }
        m_IsDecided = truth == Truth::True;
        return m_IsDecided;
    }

    bool IsDecided() const { return m_IsDecided; }
    FlagOrigin Origin() const { return m_Origin; }

private:
    FlagOrigin m_Origin = FlagOrigin::Marked;
    bool m_UnknownGivesTrue = false;
    bool m_UnknownGivesFalse = false;
    bool m_IsDecided = false;
};

/** The flags of menus, by menu and flag: a rule on a setting in the menu does not explain them, one on the menu does.
 */
std::vector<FlagOrigin> Evaluation::FindMenuFlags() const
{
    std::vector<OriginFinder> finders(m_Model->Menus().size() * flagCount);
    for (std::size_t rule = 0; rule < m_Model->Rules().size(); ++rule) {
        const Property flag = m_Model->Rules()[rule].Decides;
        for (const std::size_t menu : m_Model->Rules()[rule].TargetMenus) {
            OriginFinder* const finder =
                IsFlag(flag) ? &finders[menu * flagCount + static_cast<std::size_t>(flag)] : nullptr;
            if (finder != nullptr && !finder->IsDecided()) {
                finder->Add(m_Rules[rule], GivesTrue(m_Model->Rules()[rule]));
            }
        }
    }
    std::vector<FlagOrigin> origins;
    origins.reserve(finders.size());
    std::transform(finders.begin(), finders.end(), std::back_inserter(origins),
                   [](const OriginFinder& finder) { return finder.Origin(); });
    return origins;
}

/** Of a setting's own flag and those of its menus one that is a mark is enough, then one that may be.
 * Beside a mark of a menu its index. */
std::pair<FlagOrigin, std::optional<std::size_t>>
Evaluation::OriginByRules(std::size_t attribute, Property flag, const std::vector<FlagOrigin>& ofMenus) const
{
    FlagOrigin origin = FlagOrigin::Explained;
    std::optional<std::size_t> markedBy;
    const auto add = [&](FlagOrigin further, std::optional<std::size_t> menu) {
        if (origin == FlagOrigin::Marked) {
            return;
        }
        if (further == FlagOrigin::Marked || origin == FlagOrigin::Explained) {
            origin = further;
            markedBy = further == FlagOrigin::Marked ? menu : std::nullopt;
        }
    };
    if (m_Model->Attributes()[attribute].Flags.Has(flag)) {
        OriginFinder own;
        for (const std::size_t rule : m_Model->RulesFor(attribute, flag)) {
            if (own.Add(m_Rules[rule], GivesTrue(m_Model->Rules()[rule]))) {
                break;
            }
        }
        add(own.Origin(), std::nullopt);
    }
    for (const std::size_t menu : m_Model->MenusOf(attribute)) {
        if (m_Model->Menus()[menu].Flags.Has(flag)) {
            add(ofMenus[menu * flagCount + static_cast<std::size_t>(flag)], menu);
        }
    }
    return {origin, markedBy};
}

void Evaluation::DecideAll()
{
    m_Verdicts = m_Flags->WithoutRules;
    for (const Flags::Pair& pair : m_Flags->Ruled) {
        const Verdict verdict = Decide(pair.Attribute, pair.Flag, pair.Origin);
        m_Verdicts[pair.Attribute * flagCount + static_cast<std::size_t>(pair.Flag)] = static_cast<std::uint8_t>(
            (verdict.Value ? isTrue : 0) | (verdict.Certain ? 0 : isUncertain) | (verdict.Marked ? isMarked : 0));
    }
}

Verdict Evaluation::Decide(std::size_t attribute, Property flag, FlagOrigin origin) const
{
    bool anyUnknown = !m_Model->IsComplete(attribute, flag); // what is left out may come first and say anything
    bool unknownGivesTrue = anyUnknown;
    bool unknownGivesFalse = anyUnknown;
    for (const std::size_t rule : m_Model->RulesFor(attribute, flag)) {
        if (m_Rules[rule] == Truth::False) {
            continue;
        }
        const bool outcome = GivesTrue(m_Model->Rules()[rule]);
        if (m_Rules[rule] == Truth::True) { // an earlier rule would go first if it were true
            return {outcome, !(outcome ? unknownGivesFalse : unknownGivesTrue), false};
        }
        anyUnknown = true;
        (outcome ? unknownGivesTrue : unknownGivesFalse) = true;
    }
    const bool isSet = origin != FlagOrigin::NotSet;
    if (anyUnknown) {
        return {isSet, false, false};
    }
    return {isSet && origin != FlagOrigin::Explained, origin != FlagOrigin::Unexplained, origin == FlagOrigin::Marked};
}

const Evaluation::Flags::Pair* Evaluation::Flags::Find(std::size_t attribute, Property flag) const
{
    const auto found =
        std::lower_bound(Ruled.begin(), Ruled.end(), std::pair(attribute, flag), [](const Pair& pair, const auto& key) {
            return std::pair(std::size_t{pair.Attribute}, pair.Flag) < key;
        });
    const bool isFound = found != Ruled.end() && found->Attribute == attribute && found->Flag == flag;
    return isFound ? &*found : nullptr;
}

FlagOrigin Evaluation::OriginOf(std::size_t attribute, Property flag) const
{
    if (const Flags::Pair* ruled = m_Flags->Find(attribute, flag)) {
        return ruled->Origin;
    }
    return m_Model->FlagsOf(attribute).Has(flag) ? FlagOrigin::Marked : FlagOrigin::NotSet;
}

std::optional<std::size_t> Evaluation::MenuThatMarks(std::size_t attribute, Property flag) const
{
    if (!VerdictOn(attribute, flag).Marked) {
        return std::nullopt;
    }
    if (const Flags::Pair* ruled = m_Flags->Find(attribute, flag)) {
        return ruled->MarkedBy;
    }
    if (m_Model->Attributes()[attribute].Flags.Has(flag)) {
        return std::nullopt;
    }
    const IndexRange menus = m_Model->MenusOf(attribute);
    return *std::find_if(menus.begin(), menus.end(),
                         [&](std::size_t menu) { return m_Model->Menus()[menu].Flags.Has(flag); });
}

std::vector<std::size_t> Evaluation::DecidingRules(std::size_t attribute, Property property) const
{
    const std::optional<std::size_t> first = RuleInForce(attribute, property);
    std::vector<std::size_t> rules;
    for (const std::size_t rule : m_Model->RulesFor(attribute, property)) {
        const bool decides =
            first ? m_Rules[rule] == Truth::True && m_Model->Rules()[rule].Outcome == m_Model->Rules()[*first].Outcome
                  : m_Rules[rule] == Truth::Unknown;
        if (decides) {
            rules.push_back(rule);
        }
    }
    return rules;
}

std::optional<std::size_t> Evaluation::RuleInForce(std::size_t attribute, Property property) const
{
    for (const std::size_t rule : m_Model->RulesFor(attribute, property)) {
        if (m_Rules[rule] == Truth::True) {
            return rule;
        }
    }
    return std::nullopt;
}

} // namespace RedfishConfig::Client
