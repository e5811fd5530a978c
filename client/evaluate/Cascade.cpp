#include <RedfishConfig/Client/Cascade.h>

#include "../Limits.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

namespace RedfishConfig::Client {

namespace {

const Value& ValueGivenBy(const Rule& rule)
{
    return std::get<Value>(rule.Outcome);
}

/** Lets the rules act, wave by wave. */
class Waves {
public:
    explicit Waves(const SystemValues& before) : m_Model(before.Of()), m_Cascade{{}, {}, {}, false, false, before} {}

    Cascade Run(const std::vector<std::pair<std::size_t, Value>>& changes)
    {
        std::set<std::size_t> changed;
        for (const auto& [attribute, value] : changes) {
            m_ByHand.insert(attribute);
            Give(attribute, value, changed);
        }
        for (std::size_t wave = 1; !changed.empty() && !m_Cascade.IsCycle; ++wave) {
            if (wave > Limits::cascadeWaves ||
                m_Cascade.Changes.size() + m_Cascade.Conflicts.size() > Limits::cascadeEffects) {
                m_Cascade.IsCut = true;
                break;
            }
            const std::size_t begin = m_Cascade.Changes.size();
            changed = RunWave(wave, changed);
            m_Cascade.IsCycle = !changed.empty() && IsRepetition({begin, m_Cascade.Changes.size()});
        }
        m_Cascade.MayChange.assign(m_MayChange.begin(), m_MayChange.end());
        return std::move(m_Cascade);
    }

private:
    void Give(std::size_t attribute, const Value& value, std::set<std::size_t>& changed)
    {
        const Value before = m_Cascade.After.ValueOf(attribute);
        m_Cascade.After.Assume(attribute, value);
        if (!m_Cascade.After.AreSame(attribute, before, m_Cascade.After.ValueOf(attribute))) {
            changed.insert(attribute);
        }
    }

    /** The rules for CurrentValue that the changed attributes trigger, in the order of the registry. */
    std::set<std::size_t> Triggered(const std::set<std::size_t>& changed) const
    {
        std::set<std::size_t> triggered;
        for (const std::size_t attribute : changed) {
            for (const std::size_t rule : m_Model.RulesReading(attribute)) {
                if (m_Model.Rules()[rule].Decides == Property::CurrentValue && IsTriggeredBy(rule, attribute)) {
                    triggered.insert(rule);
                }
            }
        }
        return triggered;
    }

    bool IsTriggeredBy(std::size_t index, std::size_t attribute) const
    {
        const Rule& rule = m_Model.Rules()[index];
        const std::optional<std::size_t> named = m_Model.Find(rule.DependencyFor);
        if (!named || *named == attribute) {
            return true;
        }
        const IndexRange readers = m_Model.RulesReading(*named);
        // a name of what is no source says nothing: then each of them triggers the rule
        return !std::binary_search(readers.begin(), readers.end(), index);
    }

    /** @return the attributes that really changed. */
    std::set<std::size_t> RunWave(std::size_t wave, const std::set<std::size_t>& changed)
    {
        const Evaluation now(m_Cascade.After);
        std::map<std::size_t, std::size_t> givenBy; // attribute to rule
        std::vector<RuleChange> effects;
        for (const std::size_t index : Triggered(changed)) {
            const Rule& rule = m_Model.Rules()[index];
            if (now.TruthOf(index) == Truth::Unknown) {
                m_MayChange.insert(index);
            }
            if (now.TruthOf(index) != Truth::True) {
                continue;
            }
            const Value wanted = m_Cascade.After.Translate(rule.Target, ValueGivenBy(rule));
            if (m_ByHand.count(rule.Target) > 0) {
                Refuse({wave, index, rule.Target, wanted, m_Cascade.After.ValueOf(rule.Target), std::nullopt});
                continue;
            }
            const auto [given, isFirst] = givenBy.emplace(rule.Target, index);
            if (!isFirst) {
                const Rule& first = m_Model.Rules()[given->second];
                Refuse({wave, index, rule.Target, wanted, m_Cascade.After.Translate(rule.Target, ValueGivenBy(first)),
                        given->second});
                continue;
            }
            effects.push_back({wave, index, rule.Target, m_Cascade.After.ValueOf(rule.Target), wanted});
        }
        return Apply(std::move(effects));
    }

    void Refuse(RuleConflict conflict)
    {
        if (!m_Cascade.After.AreSame(conflict.Attribute, conflict.Wanted, conflict.Kept)) {
            m_Cascade.Conflicts.push_back(std::move(conflict));
        }
    }

    std::set<std::size_t> Apply(std::vector<RuleChange> effects)
    {
        std::set<std::size_t> changed;
        for (RuleChange& effect : effects) {
            if (!m_Cascade.After.AreSame(effect.Attribute, effect.From, effect.To)) {
                m_HashOfValues ^= HashOf(effect.Attribute, effect.From) ^ HashOf(effect.Attribute, effect.To);
                Give(effect.Attribute, effect.To, changed);
                m_Cascade.Changes.push_back(std::move(effect));
            }
        }
        return changed;
    }

    /** The changes of one wave: from the first to behind the last. */
    struct Wave {
        std::size_t Begin, End;
    };

    static std::size_t HashOf(std::size_t attribute, const Value& value)
    {
        return std::hash<std::string>()(std::to_string(attribute) + ' ' + Client::ToText(value));
    }

    /** Whether an earlier wave changed the same attributes, and left the same values; else keeps this one. */
    bool IsRepetition(const Wave& wave)
    {
        const auto [first, last] = m_Waves.equal_range(m_HashOfValues);
        const bool isKnown = std::any_of(first, last, [&](const auto& earlier) {
            return ChangedBy(earlier.second) == ChangedBy(wave) && AreValuesAsBehind(earlier.second);
        });
        m_Waves.emplace(m_HashOfValues, wave);
        return isKnown;
    }

    std::set<std::size_t> ChangedBy(const Wave& wave) const
    {
        std::set<std::size_t> changed;
        for (std::size_t index = wave.Begin; index < wave.End; ++index) {
            changed.insert(m_Cascade.Changes[index].Attribute);
        }
        return changed;
    }

    /** Whether what was changed behind a wave was changed back. */
    bool AreValuesAsBehind(const Wave& wave) const
    {
        std::set<std::size_t> seen;
        const auto begin = m_Cascade.Changes.begin() + static_cast<std::ptrdiff_t>(wave.End);
        return std::all_of(begin, m_Cascade.Changes.end(), [&](const RuleChange& change) {
            const bool isFirst = seen.insert(change.Attribute).second;
            return !isFirst || change.From == m_Cascade.After.ValueOf(change.Attribute);
        });
    }

    const Model& m_Model;
    std::set<std::size_t> m_ByHand;
    std::set<std::size_t> m_MayChange;
    std::size_t m_HashOfValues = 0;                     // of those that rules gave, as they are now
    std::unordered_multimap<std::size_t, Wave> m_Waves; // by the hash of the values behind them
    Cascade m_Cascade;
};

} // namespace

Cascade Change(const SystemValues& before, const std::vector<std::pair<std::size_t, Value>>& changes)
{
    return Waves(before).Run(changes);
}

std::vector<RuleDeviation> DeviationsFromRules(const Evaluation& evaluation, const SystemValues& now)
{
    std::vector<RuleDeviation> deviations;
    for (std::size_t attribute = 0; attribute < now.Of().Attributes().size(); ++attribute) {
        const std::optional<std::size_t> rule = evaluation.RuleInForce(attribute, Property::CurrentValue);
        if (!rule || !HasValue(now.ValueOf(attribute))) {
            continue;
        }
        Value given = now.Translate(attribute, ValueGivenBy(now.Of().Rules()[*rule]));
        if (!now.AreSame(attribute, given, now.ValueOf(attribute))) {
            deviations.push_back({*rule, attribute, std::move(given)});
        }
    }
    return deviations;
}

} // namespace RedfishConfig::Client
