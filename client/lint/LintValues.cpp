#include <RedfishConfig/Client/Lint.h>

#include <RedfishConfig/Client/Cascade.h>

#include "../Limits.h"
#include "../intake/Findings.h"
#include "../intake/Quote.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

namespace {

std::string Given(const Outcome& outcome)
{
    const auto* value = std::get_if<Value>(&outcome);
    return Cut(ToQuotedText(value != nullptr ? *value : Value()), Limits::namedBytes);
}

/** Finds what does not fit between the rules in force and the values of a system. */
class ValuesLint {
public:
    ValuesLint(const Evaluation& evaluation, const SystemValues& now, std::vector<Finding>& findings)
        : m_Model(evaluation.Of()), m_Evaluation(evaluation), m_Now(now), m_Findings(findings)
    {
    }

    void Run()
    {
        for (std::size_t attribute = 0; attribute < m_Model.Attributes().size(); ++attribute) {
            CheckFlags(attribute);
            CheckChoices(attribute);
            CheckBounds(attribute);
            for (std::size_t property = 0; property < propertyCount; ++property) {
                CheckOutcomes(attribute, static_cast<Property>(property));
            }
        }
        for (const RuleDeviation& deviation : DeviationsFromRules(m_Evaluation, m_Now)) {
            ReportDeviation(deviation);
        }
    }

private:
    const std::string& NameOf(std::size_t attribute) const { return m_Model.Attributes()[attribute].Name; }

    std::string Position(std::size_t rule) const { return std::to_string(m_Model.Rules()[rule].Position); }

    std::string Positions(const std::vector<std::size_t>& rules) const
    {
        std::vector<std::string> positions;
        std::transform(rules.begin(), rules.end(), std::back_inserter(positions),
                       [this](std::size_t rule) { return Position(rule); });
        return (rules.size() == 1 ? "rule " : "rules ") + ListInWords(std::move(positions));
    }

    void CheckFlags(std::size_t attribute)
    {
        std::vector<std::string> flags;
        for (std::size_t number = 0; number < flagCount; ++number) {
            const auto flag = static_cast<Property>(number);
            if (m_Evaluation.VerdictOn(attribute, flag).Marked && !m_Model.RulesFor(attribute, flag).empty()) {
                flags.emplace_back(Name(flag));
            }
        }
        if (!flags.empty()) {
            m_Findings.About(NameOf(attribute));
            m_Findings.Add(Severity::Note, FindingKind::UnexplainedFlag, m_Model.PointerToAttribute(attribute),
                           ShortName(NameOf(attribute)) + " is marked " + ListInWords(std::move(flags)) +
                               " by the registry, and no rule for that is true",
                           "it counts as marked so for all values");
        }
    }

    void CheckChoices(std::size_t attribute)
    {
        if (m_Model.RulesFor(attribute, Property::Choices).empty()) {
            return;
        }
        const ChoicesInForce inForce = ChoicesOf(m_Evaluation, m_Now, attribute);
        if (inForce.Choices.empty() || inForce.Rules.empty()) {
            return;
        }
        const std::size_t first = inForce.Rules.front();
        m_Findings.About(NameOf(attribute), m_Model.Rules()[first].Position);
        if (std::find(inForce.Allowed.begin(), inForce.Allowed.end(), true) == inForce.Allowed.end()) {
            m_Findings.Add(Severity::Warning, FindingKind::NoChoiceLeft, m_Model.PointerToRule(first),
                           ShortName(NameOf(attribute)) + " has no choice left by " + Positions(inForce.Rules),
                           "no value of it is accepted");
            return;
        }
        const Value& value = m_Now.ValueOf(attribute);
        for (std::size_t choice = 0; choice < inForce.Choices.size(); ++choice) {
            if (value == Value(inForce.Choices[choice].Name) && !inForce.Allowed[choice]) {
                m_Findings.Add(Severity::Warning, FindingKind::ValueNotAllowed, m_Model.PointerToRule(first),
                               ShortName(NameOf(attribute)) + " is " + Cut(ToQuotedText(value), Limits::namedBytes) +
                                   ", a choice that is not left by " + Positions(inForce.Rules),
                               "the setting has the value all the same, and could not be set back to it");
            }
        }
    }

    /** Bounds and lengths that contradict each other without a rule are reported where they are read. */
    void CheckBounds(std::size_t attribute)
    {
        const Attribute& published = m_Model.Attributes()[attribute];
        const bool isNumber = published.Type == AttributeType::Integer;
        if (!isNumber && !published.IsText()) {
            return; // whatever rules say of bounds
        }
        std::optional<std::size_t> rule =
            m_Evaluation.RuleInForce(attribute, isNumber ? Property::LowerBound : Property::MinLength);
        if (!rule) {
            rule = m_Evaluation.RuleInForce(attribute, isNumber ? Property::UpperBound : Property::MaxLength);
        }
        const std::string cause = rule ? WhyNoValue(m_Evaluation, m_Now, attribute) : std::string();
        if (!cause.empty()) {
            m_Findings.About(NameOf(attribute), m_Model.Rules()[*rule].Position);
            m_Findings.Add(Severity::Warning, FindingKind::ContradictoryBounds, m_Model.PointerToRule(*rule),
                           ShortName(NameOf(attribute)) + ": " + cause, "no value of it is accepted");
        }
    }

    /** Lists of choices are not opposite: they are intersected. */
    void CheckOutcomes(std::size_t attribute, Property property)
    {
        const IndexRange rules = m_Model.RulesFor(attribute, property);
        const auto isTrue = [this](std::size_t rule) { return m_Evaluation.TruthOf(rule) == Truth::True; };
        const auto* const first = std::find_if(rules.begin(), rules.end(), isTrue);
        if (property == Property::Choices || first == rules.end()) {
            return;
        }
        const Outcome& outcome = m_Model.Rules()[*first].Outcome;
        const auto* const other = std::find_if(first + 1, rules.end(), [&](std::size_t rule) {
            return isTrue(rule) && m_Model.Rules()[rule].Outcome != outcome;
        });
        if (other == rules.end()) {
            return;
        }
        m_Findings.About(NameOf(attribute), m_Model.Rules()[*other].Position);
        m_Findings.Add(Severity::Warning, FindingKind::OppositeOutcome, m_Model.PointerToRule(*other),
                       std::string(Name(property)) + " of " + ShortName(NameOf(attribute)) + " is " + Given(outcome) +
                           " by rule " + Position(*first) + " and " + Given(m_Model.Rules()[*other].Outcome) +
                           " by rule " + Position(*other) + ", and both hold",
                       "rule " + Position(*first) + " counts, as the first");
    }

    void ReportDeviation(const RuleDeviation& deviation)
    {
        m_Findings.About(NameOf(deviation.Attribute), m_Model.Rules()[deviation.Rule].Position);
        m_Findings.Add(Severity::Note, FindingKind::DifferentFromRule, m_Model.PointerToRule(deviation.Rule),
                       ShortName(NameOf(deviation.Attribute)) + " is " +
                           Cut(ToQuotedText(m_Now.ValueOf(deviation.Attribute)), Limits::namedBytes) + ", and rule " +
                           Position(deviation.Rule) + ", which holds, gives it " + Given(deviation.Given),
                       "nothing corrects it: the rule acts when something changes");
    }

    const Model& m_Model;
    const Evaluation& m_Evaluation;
    const SystemValues& m_Now;
    Findings m_Findings;
};

} // namespace

std::vector<Finding> LintValues(const Evaluation& evaluation, const SystemValues& now)
{
    std::vector<Finding> findings;
    ValuesLint(evaluation, now, findings).Run();
    return findings;
}

} // namespace RedfishConfig::Client
