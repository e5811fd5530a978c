#include <RedfishConfig/Client/Lint.h>

#include "../Limits.h"
#include "../intake/Findings.h"
#include "../intake/Quote.h"
#include "../model/PatternDefect.h"
#include "Contradictions.h"
#include "RuleCycles.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

namespace {

/** Steps of a cycle that its finding names. */
constexpr std::size_t namedSteps = 8;

/** Flags by which a setting cannot be changed, in the order in which they are looked at. */
constexpr std::array<Property, 4> lockingFlags{Property::ReadOnly, Property::GrayOut, Property::Immutable,
                                               Property::Hidden};

bool IsLocking(Property property)
{
    return std::find(lockingFlags.begin(), lockingFlags.end(), property) != lockingFlags.end();
}

/** Finds what is odd about the rules of a registry, and about attributes by their rules. */
class RegistryLint {
public:
    RegistryLint(const Model& model, std::vector<Finding>& findings)
        : m_Model(model),
          m_Findings(findings),
          m_Contradictions(model),
          m_Locks(model.Attributes().size()),
          m_NeverHolds(model.Rules().size(), false)
    {
        for (const Rule& rule : model.Rules()) {
            if (IsFlag(rule.Decides) && !GivesTrue(rule)) {
                m_IsTakenAway[static_cast<std::size_t>(rule.Decides)] = true;
            }
        }
        for (std::size_t attribute = 0; attribute < model.Attributes().size(); ++attribute) {
            for (const Property flag : lockingFlags) { // a rule that is left out may do so
                m_IsTakenAway[static_cast<std::size_t>(flag)] |= !model.IsComplete(attribute, flag);
            }
        }
    }

    void Run()
    {
        for (std::size_t rule = 0; rule < m_Model.Rules().size(); ++rule) {
            JudgeRule(rule);
        }
        JudgeFlags();
        for (std::size_t attribute = 0; attribute < m_Model.Attributes().size(); ++attribute) {
            JudgeAttribute(attribute);
        }
        for (std::size_t rule = 0; rule < m_Model.Rules().size(); ++rule) {
            CheckPatternOfRule(rule);
        }
        ReportCycles();
    }

private:
    /** A rule for a flag that may be true. */
    struct FlagRule {
        std::size_t Rule;
        std::vector<Cover> Covers;
        bool IsReported; ///< as one that always holds by itself
    };

    using FlagRules = std::vector<FlagRule>;

    /** Why a setting can never be changed. */
    struct Lock {
        Property Flag;
        Certainty Always;
    };

    std::string What(const Rule& rule) const
    {
        return std::string(Name(rule.Decides)) + " of " + (rule.Target == noAttribute ? "the menu " : "") +
               ShortName(rule.TargetName);
    }

    /** "whatever Lid is" */
    std::string Whatever(const Certainty& always) const
    {
        const std::string name = ShortName(m_Model.Attributes()[always.Attribute].Name);
        return always.WithoutValue ? "whatever " + name + " is" : "whatever value " + name + " has";
    }

    /** Without a value of that attribute, whether the rules hold is not known. */
    std::string Unless(const Certainty& always) const
    {
        return always.WithoutValue
                   ? ""
                   : " while " + ShortName(m_Model.Attributes()[always.Attribute].Name) + " has a value";
    }

    void AboutRule(std::size_t rule)
    {
        const bool isOfMenu = m_Model.Rules()[rule].Target == noAttribute;
        m_Findings.About(isOfMenu ? "" : m_Model.Rules()[rule].TargetName, m_Model.Rules()[rule].Position);
    }

    void JudgeRule(std::size_t index)
    {
        const Rule& rule = m_Model.Rules()[index];
        if (rule.When.What == Condition::Kind::Unknown) {
            return; // which is reported where it was read
        }
        Outlook outlook = m_Contradictions.Of(rule.When);
        if (!outlook.IsDecided) {
            return;
        }
        AboutRule(index);
        m_NeverHolds[index] = !outlook.CanHold;
        if (!outlook.CanHold) {
            m_Findings.Add(Severity::Warning, FindingKind::NeverHolds, m_Model.PointerToRule(index),
                           "the rule for " + What(rule) + " never holds: it " + outlook.Needs, "it never takes effect");
            return;
        }
        const std::optional<Certainty> always = CertainOf(outlook.Covers);
        if (always) {
            m_Findings.Add(Severity::Warning, FindingKind::AlwaysHolds, m_Model.PointerToRule(index),
                           "the rule for " + What(rule) + " holds " + Whatever(*always), "it is always in effect");
            ReportLockedMenu(index, *always);
        }
        if (rule.Target != noAttribute && IsFlag(rule.Decides)) {
            m_FlagRules.push_back({index, std::move(outlook.Covers), always.has_value()});
        }
    }

    static void Append(const std::vector<Cover>& covers, std::vector<const Cover*>& list)
    {
        std::transform(covers.begin(), covers.end(), std::back_inserter(list),
                       [](const Cover& cover) { return &cover; });
    }

    std::optional<Certainty> CertainOf(const std::vector<Cover>& covers)
    {
        std::vector<const Cover*> list;
        Append(covers, list);
        return m_Contradictions.Certain(std::move(list));
    }

    void ReportLockedMenu(std::size_t index, const Certainty& always)
    {
        const Rule& rule = m_Model.Rules()[index];
        if (rule.Target == noAttribute && IsLocking(rule.Decides) &&
            !m_IsTakenAway[static_cast<std::size_t>(rule.Decides)]) {
            m_Findings.Add(Severity::Warning, FindingKind::NeverChangeable, m_Model.PointerToRule(index),
                           "the settings in the menu " + ShortName(rule.TargetName) + " are " +
                               std::string(Name(rule.Decides)) + " " + Whatever(always),
                           "they can never be changed" + Unless(always));
        }
    }

    /** The rules for each flag of each attribute together. */
    void JudgeFlags()
    {
        const auto keyOf = [this](const FlagRule& rule) {
            const Rule& published = m_Model.Rules()[rule.Rule];
            return std::pair(published.Target, published.Decides);
        };
        std::stable_sort(m_FlagRules.begin(), m_FlagRules.end(),
                         [&](const FlagRule& left, const FlagRule& right) { return keyOf(left) < keyOf(right); });
        for (auto first = m_FlagRules.cbegin(); first != m_FlagRules.cend();) {
            const auto last = std::find_if(first, m_FlagRules.cend(),
                                           [&](const FlagRule& other) { return keyOf(other) != keyOf(*first); });
            JudgeTogether(first, last, true);
            JudgeTogether(first, last, false);
            FindLock(first, last);
            first = last;
        }
    }

    /** Rules with the same outcome, of which one is always true. */
    void JudgeTogether(FlagRules::const_iterator first, FlagRules::const_iterator last, bool outcome)
    {
        std::vector<const Cover*> covers;
        std::vector<std::size_t> agreeing;
        for (auto rule = first; rule != last; ++rule) {
            if (GivesTrue(m_Model.Rules()[rule->Rule]) != outcome) {
                continue;
            }
            if (rule->IsReported) {
                return;
            }
            agreeing.push_back(rule->Rule);
            Append(rule->Covers, covers);
        }
        const std::optional<Certainty> always =
            agreeing.size() > 1 ? m_Contradictions.Certain(std::move(covers)) : std::nullopt;
        if (always) {
            AboutRule(agreeing.front());
            m_Findings.Add(Severity::Warning, FindingKind::AlwaysHolds, m_Model.PointerToRule(agreeing.front()),
                           "of " + std::to_string(agreeing.size()) + " rules for " +
                               What(m_Model.Rules()[agreeing.front()]) + ", this one the first, some rule holds " +
                               Whatever(*always),
                           "together they are always in effect");
        }
    }

    /** Whether the rules for a flag always make it true: those before the first that makes it false. */
    void FindLock(FlagRules::const_iterator first, FlagRules::const_iterator last)
    {
        const Rule& any = m_Model.Rules()[first->Rule];
        if (!IsLocking(any.Decides) || !m_Model.IsComplete(any.Target, any.Decides)) {
            return;
        }
        const IndexRange all = m_Model.RulesFor(any.Target, any.Decides);
        const auto* const unlocking = std::find_if(all.begin(), all.end(), [this](std::size_t rule) {
            return !GivesTrue(m_Model.Rules()[rule]) && !m_NeverHolds[rule];
        });
        std::vector<const Cover*> covers;
        for (auto rule = first; rule != last; ++rule) {
            if (unlocking == all.end() || rule->Rule < *unlocking) {
                Append(rule->Covers, covers);
            }
        }
        if (const auto always = m_Contradictions.Certain(std::move(covers))) {
            m_Locks[any.Target].push_back({any.Decides, *always});
        }
    }

    void JudgeAttribute(std::size_t index)
    {
        const Attribute& attribute = m_Model.Attributes()[index];
        m_Findings.About(attribute.Name);
        ReportLock(index);
        if (attribute.Pattern) {
            ReportPattern(*attribute.Pattern, m_Model.PointerToMember(index, Property::ValueExpression));
        }
        if (const auto* number = std::get_if<std::int64_t>(&attribute.DefaultValue);
            number != nullptr && attribute.Type == AttributeType::Integer) {
            CheckDefault(index, *number, {Property::LowerBound, attribute.LowerBound},
                         {Property::UpperBound, attribute.UpperBound},
                         "the default " + std::to_string(*number) + " of " + ShortName(attribute.Name));
        }
        if (attribute.IsText()) {
            const auto* secret = std::get_if<Secret>(&attribute.DefaultValue);
            const auto* text =
                secret != nullptr ? &secret->Reveal() : std::get_if<std::string>(&attribute.DefaultValue);
            if (text != nullptr) {
                const std::string length =
                    attribute.IsPassword() ? "" : ", " + std::to_string(text->size()) + " bytes,";
                CheckDefault(index, static_cast<std::int64_t>(text->size()), {Property::MinLength, attribute.MinLength},
                             {Property::MaxLength, attribute.MaxLength},
                             "the default of " + ShortName(attribute.Name) + length);
            }
        }
    }

    /** Once, although a rule on a menu is for several settings. */
    void CheckPatternOfRule(std::size_t index)
    {
        const Rule& rule = m_Model.Rules()[index];
        const auto* given = std::get_if<Value>(&rule.Outcome);
        const auto* pattern = given != nullptr ? std::get_if<std::string>(given) : nullptr;
        if (pattern != nullptr && rule.Decides == Property::ValueExpression) {
            AboutRule(index);
            ReportPattern(*pattern, m_Model.PointerToRule(index));
        }
    }

    void ReportPattern(const std::string& pattern, std::string pointer)
    {
        const std::string defect = DefectOfPattern(pattern);
        if (!defect.empty()) {
            m_Findings.Add(Severity::Warning, FindingKind::UnusablePattern, std::move(pointer),
                           "a pattern that cannot be used: " + defect, "values are not matched; the controller checks");
        }
    }

    using Bound = std::pair<Property, std::optional<std::int64_t>>;

    /** @param what the subject of the finding */
    void CheckDefault(std::size_t attribute, std::int64_t measure, const Bound& lower, const Bound& upper,
                      const std::string& what)
    {
        if (lower.second && upper.second && *lower.second > *upper.second) {
            return; // which is reported where they were read
        }
        const bool isBelow = lower.second && measure < *lower.second;
        const Bound& broken = isBelow ? lower : upper;
        // a bound that rules decide may be another one when it matters
        if ((isBelow || (upper.second && measure > *upper.second)) &&
            m_Model.RulesFor(attribute, broken.first).empty() && m_Model.IsComplete(attribute, broken.first)) {
            m_Findings.Add(Severity::Warning, FindingKind::DefaultOutOfBounds,
                           m_Model.PointerToMember(attribute, Property::DefaultValue),
                           what + " is " + (isBelow ? "below " : "above ") + std::string(Name(broken.first)) + " " +
                               std::to_string(*broken.second),
                           "the default is accepted all the same, and no other value beyond the bound is");
        }
    }

    void ReportLock(std::size_t index)
    {
        const Attribute& attribute = m_Model.Attributes()[index];
        for (const Property flag : lockingFlags) {
            for (const Lock& lock : m_Locks[index]) {
                if (lock.Flag == flag) {
                    m_Findings.Add(Severity::Warning, FindingKind::NeverChangeable, m_Model.PointerToAttribute(index),
                                   ShortName(attribute.Name) + " is " + std::string(Name(flag)) + " " +
                                       Whatever(lock.Always) + ", by its rules",
                                   "the setting can never be changed" + Unless(lock.Always));
                    return;
                }
            }
        }
        const IndexRange rules = m_Model.RulesFor(index, Property::Immutable);
        const bool isTakenAway = std::any_of(rules.begin(), rules.end(),
                                             [this](std::size_t rule) { return !GivesTrue(m_Model.Rules()[rule]); });
        if (attribute.Flags.Has(Property::Immutable) && !isTakenAway &&
            m_Model.IsComplete(index, Property::Immutable)) {
            m_Findings.Add(Severity::Note, FindingKind::NeverChangeable, m_Model.PointerToAttribute(index),
                           ShortName(attribute.Name) + " is Immutable, and no rule takes that away",
                           "the setting can never be changed");
        }
    }

    /** The edges of some rules, and the rule of each. From an attribute to another there is one: that of the first
     * rule. */
    struct Edges {
        std::vector<RuleEdge> List;
        std::vector<std::size_t> Rules;
    };

    Edges EdgesOf(bool ofValuesOnly) const
    {
        Edges edges;
        std::set<std::pair<std::size_t, std::size_t>> known;
        std::vector<std::size_t> sources;
        for (std::size_t index = 0; index < m_Model.Rules().size(); ++index) {
            const Rule& rule = m_Model.Rules()[index];
            if (rule.Target == noAttribute || (ofValuesOnly && rule.Decides != Property::CurrentValue)) {
                continue;
            }
            sources.clear();
            CollectSources(rule.When, sources);
            for (const std::size_t source : sources) {
                if (known.insert({rule.Target, source}).second) {
                    edges.List.push_back({rule.Target, source});
                    edges.Rules.push_back(index);
                }
            }
        }
        return edges;
    }

    static void CollectSources(const Condition& condition, std::vector<std::size_t>& sources)
    {
        const Test& test = condition.Asked;
        if (condition.What == Condition::Kind::Test && test.Source != noAttribute &&
            test.Of == Property::CurrentValue) {
            sources.push_back(test.Source);
        }
        for (const Condition& part : condition.Parts) {
            CollectSources(part, sources);
        }
    }

    void ReportCycles()
    {
        std::set<std::vector<std::size_t>> reported;
        const Edges ofValues = EdgesOf(true);
        for (RuleCycle& cycle : FindCycles(m_Model.Attributes().size(), ofValues.List)) {
            ReportCycle(cycle, ofValues, true);
            reported.insert(std::move(cycle.Group));
        }
        const Edges all = EdgesOf(false);
        for (const RuleCycle& cycle : FindCycles(m_Model.Attributes().size(), all.List)) {
            if (reported.count(cycle.Group) == 0) {
                ReportCycle(cycle, all, false);
            }
        }
    }

    void ReportCycle(const RuleCycle& cycle, const Edges& edges, bool isOfValues)
    {
        std::string path;
        for (std::size_t step = 0; step < std::min(cycle.Edges.size(), namedSteps); ++step) {
            const std::size_t edge = cycle.Edges[step];
            path += (step == 0 ? "" : ", ") + What(m_Model.Rules()[edges.Rules[edge]]) + " depends on " +
                    ShortName(m_Model.Attributes()[edges.List[edge].To].Name);
        }
        path = Cut(std::move(path), Limits::quotedBytes);
        if (cycle.Edges.size() > namedSteps) {
            path += ", and so on over " + std::to_string(cycle.Edges.size() - namedSteps) + " more rules";
        }
        if (cycle.Group.size() > cycle.Edges.size()) {
            path += "; " + std::to_string(cycle.Group.size()) + " attributes depend on each other so";
        }
        const std::size_t first = edges.Rules[cycle.Edges.front()];
        AboutRule(first);
        m_Findings.Add(isOfValues ? Severity::Warning : Severity::Note,
                       isOfValues ? FindingKind::ValueCycle : FindingKind::RuleCycle, m_Model.PointerToRule(first),
                       path,
                       isOfValues ? "a change of one value may never come to rest"
                                  : "a change of one setting can lock or unlock another; rules are answered for the "
                                    "values as they are");
    }

    const Model& m_Model;
    Findings m_Findings;
    Contradictions m_Contradictions;
    FlagRules m_FlagRules;
    std::vector<std::vector<Lock>> m_Locks;      // by attribute
    std::vector<bool> m_NeverHolds;              // by rule
    std::array<bool, flagCount> m_IsTakenAway{}; // flags that some rule makes false
};

} // namespace

std::vector<Finding> LintRegistry(const Model& model)
{
    std::vector<Finding> findings;
    RegistryLint(model, findings).Run();
    return findings;
}

} // namespace RedfishConfig::Client
