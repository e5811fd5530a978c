#include "Oracle.h"

// Rules for current values are events: they act when a setting that they read has got another value.

namespace Oracle {

struct Registry::Wave {
    std::size_t Number = 1;
    std::set<const Attribute*> Changed;             ///< before the wave
    const std::set<const Attribute*>* ByHand;       ///< in this step
    std::map<const Attribute*, SettingValue> Given; ///< by the first rule for each setting
};

CascadeResult Registry::Cascade(const SettingValueMap& now, const Changes& byHand) const
{
    CascadeResult result;
    result.Values = now;
    std::set<const Attribute*> handSet;
    for (const auto& [name, value] : byHand) {
        if (const Attribute* attribute = Find(name)) {
            result.Values[attribute->Name] = value;
            handSet.insert(attribute);
        }
    }
    std::set<const Attribute*> changed;
    for (const Attribute* attribute : handSet) {
        if (!AreEqual(*attribute, Held(*attribute, now), Held(*attribute, result.Values))) {
            changed.insert(attribute);
        }
    }
    std::set<std::string> seen{StateOf(result.Values, changed)};
    for (std::size_t number = 1; !changed.empty(); ++number) {
        if (number > 1'000) {
            result.IsCutOff = true;
            break;
        }
        Wave wave{number, changed, &handSet, {}};
        changed = RunWave(wave, result);
        if (!changed.empty() && !seen.insert(StateOf(result.Values, changed)).second) {
            result.IsCycle = true;
            break;
        }
    }
    return result;
}

/** @return the settings that have another value than before the wave */
std::set<const Registry::Attribute*> Registry::RunWave(Wave& wave, CascadeResult& result) const
{
    std::vector<Effect> before = result.Effects;
    result.Effects.clear();
    for (const Rule& rule : m_Rules) {
        const bool isEvent = rule.Property == "currentvalue" && rule.Target != nullptr;
        if (isEvent && rule.Outcome != nullptr && !rule.Outcome->is_null() && !rule.Outcome->is_array() &&
            !rule.Outcome->is_object() && IsTriggered(rule, wave.Changed)) {
            ApplyRule(rule, wave, result);
        }
    }
    // all rules of the wave have been looked at: now their effects
    std::set<const Attribute*> changed;
    for (const Effect& effect : result.Effects) {
        result.Values[effect.Setting] = effect.To;
        changed.insert(Find(effect.Setting));
        before.push_back(effect);
    }
    result.Effects = before;
    return changed;
}

/** Notes what a triggered rule would do; values stay as they are until the end of the wave. */
void Registry::ApplyRule(const Rule& rule, Wave& wave, CascadeResult& result) const
{
    const Attribute& target = *rule.Target;
    const SettingValue held = Held(target, result.Values);
    SettingValue to = TextOf(ValueOf(*rule.Outcome));
    if (target.Type == Kind::Integer && NumberOf(to)) {
        to = *NumberOf(to);
    } else if (target.Type == Kind::Boolean && FlagOf(ValueOf(*rule.Outcome))) {
        to = *FlagOf(ValueOf(*rule.Outcome));
    }
    const bool isByHand = wave.ByHand->count(&target) > 0;
    const Truth truth = OfRule(PositionOf(rule), result.Values);
    if (truth == Truth::Unknown) {
        const bool differs = !AreEqual(target, held, to);
        result.MayChanges.push_back({wave.Number, PositionOf(rule), target.Name, to, differs, isByHand});
    }
    if (truth != Truth::True) {
        return;
    }
    const auto given = wave.Given.find(&target);
    if (isByHand || given != wave.Given.end()) {
        const SettingValue kept = isByHand ? held : given->second;
        if (!AreEqual(target, kept, to)) {
            result.Conflicts.push_back({wave.Number, PositionOf(rule), target.Name, kept, to, isByHand});
        }
        return;
    }
    wave.Given[&target] = to;
    if (!AreEqual(target, held, to)) {
        result.Effects.push_back({wave.Number, PositionOf(rule), target.Name, held, to});
    }
}

/** By the setting in "DependencyFor" where the rule reads that one, else by any that it reads. */
bool Registry::IsTriggered(const Rule& rule, const std::set<const Attribute*>& changed)
{
    if (rule.Sources.count(rule.DependencyFor) > 0) {
        return changed.count(rule.DependencyFor) > 0;
    }
    return std::any_of(rule.Sources.begin(), rule.Sources.end(),
                       [&changed](const Attribute* source) { return changed.count(source) > 0; });
}

/** What the next wave hangs on as one text: the values of all settings, and which have just changed. Ways to write a
 *  value make no difference: what names the same choices is written in the same way. */
std::string Registry::StateOf(const SettingValueMap& values, const std::set<const Attribute*>& changed) const
{
    json::array state;
    for (const auto& [name, attribute] : m_Attributes) {
        state.emplace_back(changed.count(&attribute) > 0);
        const SettingValue held = Held(attribute, values);
        const std::set<std::size_t> choices = Named(attribute, TextOf(held));
        if (!held) {
            state.emplace_back(nullptr);
        } else if (!choices.empty()) {
            state.emplace_back(json::array(choices.begin(), choices.end()));
        } else if (attribute.Type == Kind::Integer && NumberOf(held)) {
            state.emplace_back(*NumberOf(held));
        } else if (attribute.Type == Kind::Boolean && FlagOf(held)) {
            state.emplace_back(*FlagOf(held));
        } else {
            state.emplace_back(TextOf(held));
        }
    }
    return json::serialize(state);
}

} // namespace Oracle
