#include "Oracle.h"

#include <algorithm>
#include <iterator>

// What the rules for one property of a setting give together.

namespace Oracle {

Verdict Registry::VerdictOf(const std::string& setting, const std::string& property, const SettingValueMap& now) const
{
    const Attribute& attribute = At(setting);
    std::set<bool> unknownOutcomes;
    for (const Rule* rule : Count(attribute, property)) {
        const bool outcome = *FlagOf(ValueOf(*rule->Outcome));
        const Truth truth = OfRule(PositionOf(*rule), now);
        if (truth == Truth::True) {
            return {outcome, unknownOutcomes.count(!outcome) == 0, false};
        }
        if (truth == Truth::Unknown) {
            unknownOutcomes.insert(outcome);
        }
    }
    const bool flag = PublishedFlag(attribute, property);
    if (!unknownOutcomes.empty()) {
        return {flag, false, false};
    }
    if (!flag) {
        return {false, true, false};
    }
    const Explanation explanation = Explain(attribute, property);
    return {explanation != Explanation::Explained, explanation != Explanation::Unknown,
            explanation == Explanation::Marked};
}

/**
 * Why a flag was published as true: what the rules gave for the values that came with the registry. The flag of a menu
 * is explained by rules on that menu alone. One flag that is a mark is enough, then one that may be.
 */
Registry::Explanation Registry::Explain(const Attribute& attribute, const std::string& property) const
{
    const std::vector<const Rule*> rules = Count(attribute, property);
    std::set<Explanation> explanations;
    if (IsSet(*attribute.Published, property)) {
        explanations.insert(ExplainBy(rules));
    }
    for (const Menu* menu : FlaggedMenus(attribute, property)) {
        std::vector<const Rule*> onMenu;
        std::copy_if(rules.begin(), rules.end(), std::back_inserter(onMenu),
                     [menu](const Rule* rule) { return rule->Menus.count(menu) > 0; });
        explanations.insert(ExplainBy(onMenu));
    }
    for (const Explanation explanation : {Explanation::Marked, Explanation::Unknown}) {
        if (explanations.count(explanation) > 0) {
            return explanation;
        }
    }
    return Explanation::Explained;
}

Registry::Explanation Registry::ExplainBy(const std::vector<const Rule*>& rules) const
{
    std::set<bool> mayHaveGiven; // the outcomes of unknown rules
    for (const Rule* rule : rules) {
        const Truth truth = OfRule(PositionOf(*rule), m_Then);
        const bool outcome = *FlagOf(ValueOf(*rule->Outcome));
        if (truth == Truth::True && mayHaveGiven.count(!outcome) == 0) {
            return outcome ? Explanation::Explained : Explanation::Marked;
        }
        if (truth == Truth::True) {
            return Explanation::Unknown;
        }
        if (truth == Truth::Unknown) {
            mayHaveGiven.insert(outcome);
        }
    }
    return mayHaveGiven.empty() ? Explanation::Marked : Explanation::Unknown;
}

ChoicesInForce Registry::ChoicesInForce(const std::string& setting, const SettingValueMap& now) const
{
    const Attribute& attribute = At(setting);
    std::set<std::size_t> remaining;
    for (std::size_t position = 0; position < attribute.Choices.size(); ++position) {
        remaining.insert(position);
    }
    Oracle::ChoicesInForce choices;
    for (const Rule* rule : Count(attribute, "Value")) {
        const Truth truth = OfRule(PositionOf(*rule), now);
        choices.Certain &= truth != Truth::Unknown;
        if (truth != Truth::True) {
            continue;
        }
        std::set<std::size_t> kept;
        for (const json::value& entry : rule->Outcome->get_array()) {
            for (const std::size_t position : Named(attribute, TextOf(ValueOf(entry)))) {
                if (remaining.count(position) > 0) {
                    kept.insert(position);
                }
            }
        }
        remaining = kept;
    }
    choices.Remaining.assign(remaining.begin(), remaining.end());
    return choices;
}

NumberInForce Registry::NumberInForce(const std::string& setting, const std::string& property,
                                      const SettingValueMap& now) const
{
    const Attribute& attribute = At(setting);
    std::set<std::int64_t> possible;
    for (const Rule* rule : Count(attribute, property)) {
        const std::optional<std::int64_t> number = NumberOf(ValueOf(*rule->Outcome));
        const Truth truth = number ? OfRule(PositionOf(*rule), now) : Truth::False;
        if (truth == Truth::True) {
            possible.insert(*number);
            return {number, possible.size() == 1};
        }
        if (truth == Truth::Unknown) {
            possible.insert(*number);
        }
    }
    const json::value* published = Member(*attribute.Published, property);
    const std::optional<std::int64_t> own = published != nullptr ? NumberOf(ValueOf(*published)) : std::nullopt;
    return {own, std::all_of(possible.begin(), possible.end(), [own](std::int64_t number) { return number == own; })};
}

} // namespace Oracle
