#include <RedfishConfig/Client/Evaluate.h>

#include "../Limits.h"
#include "../intake/Quote.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

namespace {

std::string Shown(const Value& value)
{
    const auto* text = std::get_if<std::string>(&value); // which may be long
    if (text != nullptr) {
        return text->empty() ? "empty" : ShortName(*text);
    }
    return ToText(value);
}

std::string FlagClause(const Test& test, bool flag)
{
    return ShortName(test.Name) + (flag ? " is " : " is not ") + WordFor(test.Of);
}

/** How a value stands to an operand: "greater than 10". */
std::string OrderClause(const Test& test)
{
    switch (test.Compare) {
    case Comparison::Greater:
        return "greater than " + Shown(test.Operand);
    case Comparison::GreaterOrEqual:
        return "at least " + Shown(test.Operand);
    case Comparison::Less:
        return "less than " + Shown(test.Operand);
    default:
        return "at most " + Shown(test.Operand);
    }
}

/** "SysProfile is PerfOptimized, not Custom": what is, and how that answers the test. */
std::string TestClause(const Explanation& explanation)
{
    const Test& test = *explanation.Asked;
    const bool holds = explanation.Is == Truth::True;
    if (test.Of != Property::CurrentValue) {
        return FlagClause(test, std::get<bool>(explanation.Current));
    }
    if (!HasValue(explanation.Current)) {
        return ShortName(test.Name) + " has no value";
    }
    std::string is = ShortName(test.Name) + " is " + Shown(explanation.Current);
    if (!HasValue(test.Operand)) {
        return is;
    }
    if (!IsEquality(test.Compare)) {
        return is + (holds ? ", " : ", not ") + OrderClause(test);
    }
    const bool isEqual = holds == (test.Compare == Comparison::Equal);
    return isEqual ? is : is + ", not " + Shown(test.Operand);
}

/** How many clauses a reason has, and how many were left out of it. */
struct ClauseCount {
    std::size_t Named = 0;
    std::size_t More = 0;
};

/** Why a condition is true, or why it is false: of several sufficient parts the first. */
std::string Clause(const Explanation& explanation, ClauseCount& count)
{
    if (explanation.What == Condition::Kind::Test) {
        const bool isNamed = count.Named < Limits::namedClauses;
        ++(isNamed ? count.Named : count.More);
        return isNamed ? TestClause(explanation) : "";
    }
    if (explanation.What == Condition::Kind::Not) {
        return Clause(explanation.Parts.front(), count);
    }
    const bool oneSuffices = (explanation.What == Condition::Kind::Any) == (explanation.Is == Truth::True);
    std::string text;
    for (const Explanation& part : explanation.Parts) {
        if (part.Is != explanation.Is) {
            continue;
        }
        const std::string clause = Clause(part, count);
        const bool hasComma = (text + clause).find(',') != std::string::npos;
        text += (text.empty() || clause.empty() ? "" : hasComma ? ", and " : " and ") + clause;
        if (oneSuffices) {
            break;
        }
    }
    return text;
}

/** The first part because of which a condition is unknown. */
const Explanation& UnknownPart(const Explanation& explanation)
{
    for (const Explanation& part : explanation.Parts) {
        if (part.Is == Truth::Unknown) {
            return UnknownPart(part);
        }
    }
    return explanation;
}

/** "rule 39 reads X, and the system does not report it". */
std::string UnknownClause(const SystemValues& now, std::size_t rule)
{
    const Explanation explanation = Explain(now, rule);
    const Explanation& part = UnknownPart(explanation);
    const std::string number = "rule " + std::to_string(now.Of().Rules()[rule].Position);
    return part.Asked != nullptr ? number + " reads " + ShortName(part.Asked->Name) + ", and " + part.Because
                                 : number + " has no meaning: " + part.Because;
}

std::string RuleReason(const SystemValues& now, std::size_t rule, Property flag)
{
    ClauseCount count;
    std::string because = Clause(Explain(now, rule), count);
    if (count.More > 0) {
        because += ", and for " + std::to_string(count.More) + (count.More == 1 ? " more reason" : " more reasons");
    }
    return std::string(WordFor(flag)) + " because " + because + " (rule " +
           std::to_string(now.Of().Rules()[rule].Position) + ")";
}

/** "rule 3 leaves", "rules 3 and 4 leave". */
std::string RulesLeave(const Model& model, const std::vector<std::size_t>& rules)
{
    std::vector<std::string> positions;
    positions.reserve(rules.size());
    for (const std::size_t rule : rules) {
        positions.push_back(std::to_string(model.Rules()[rule].Position));
    }
    return (rules.size() == 1 ? "rule " : "rules ") + ListInWords(std::move(positions)) +
           (rules.size() == 1 ? " leaves" : " leave");
}

/** The first unknown rule that could change a verdict: one with another outcome, where the verdict has one. */
std::optional<std::size_t> FirstUnknownRule(const Evaluation& evaluation, std::size_t attribute, Property flag,
                                            const Outcome* butNotGiving)
{
    for (const std::size_t rule : evaluation.Of().RulesFor(attribute, flag)) {
        const bool mayChange = butNotGiving == nullptr || evaluation.Of().Rules()[rule].Outcome != *butNotGiving;
        if (evaluation.TruthOf(rule) == Truth::Unknown && mayChange) {
            return rule;
        }
    }
    return std::nullopt;
}

std::string MarkReason(const Evaluation& evaluation, std::size_t attribute, Property flag)
{
    const Model& model = evaluation.Of();
    std::string reason = "marked " + std::string(WordFor(flag)) + " by the controller";
    if (const std::optional<std::size_t> menu = evaluation.MenuThatMarks(attribute, flag)) {
        reason += " with the menu " + ShortName(model.Menus()[*menu].Name);
    }
    return reason + (model.RulesFor(attribute, flag).empty() ? "" : "; no rule explains it");
}

/** Why something hangs on rules that are not kept; empty where all are. */
std::string LeftOutClause(const Model& model, std::size_t attribute, Property property)
{
    return model.IsComplete(attribute, property) ? "" : "its menus have more rules and flags than can be kept";
}

std::string DoubtAboutFlag(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute, Property flag)
{
    const Verdict verdict = evaluation.VerdictOn(attribute, flag);
    if (verdict.Certain) {
        return "";
    }
    if (const std::optional<std::size_t> rule = evaluation.RuleInForce(attribute, flag)) {
        const Outcome& outcome = evaluation.Of().Rules()[*rule].Outcome;
        const auto unknown = FirstUnknownRule(evaluation, attribute, flag, &outcome);
        return unknown && *unknown < *rule ? UnknownClause(now, *unknown) + ", and comes before rule " +
                                                 std::to_string(evaluation.Of().Rules()[*rule].Position)
                                           : LeftOutClause(evaluation.Of(), attribute, flag);
    }
    const auto unknown = FirstUnknownRule(evaluation, attribute, flag, nullptr);
    const std::string cause = unknown ? UnknownClause(now, *unknown) : LeftOutClause(evaluation.Of(), attribute, flag);
    return cause.empty() ? "the controller marks it, and the rules that could explain it were not known then"
                         : cause + "; the controller's own flag says " + (verdict.Value ? "yes" : "no");
}

std::string DoubtAboutOther(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute,
                            Property property)
{
    // the lists of choices in force are intersected; of the other rules the first that is true counts
    const std::optional<std::size_t> inForce =
        property == Property::Choices ? std::nullopt : evaluation.RuleInForce(attribute, property);
    const Outcome* const outcome = inForce ? &now.Of().Rules()[*inForce].Outcome : nullptr;
    const auto unknown = FirstUnknownRule(evaluation, attribute, property, outcome);
    return unknown && (!inForce || *unknown < *inForce) ? UnknownClause(now, *unknown)
                                                        : LeftOutClause(now.Of(), attribute, property);
}

} // namespace

std::string DoubtAbout(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute, Property property)
{
    return IsFlag(property) ? DoubtAboutFlag(evaluation, now, attribute, property)
                            : DoubtAboutOther(evaluation, now, attribute, property);
}

std::string DoubtAboutValues(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute)
{
    for (const Property property :
         {Property::Choices, Property::LowerBound, Property::UpperBound, Property::ScalarIncrement, Property::MinLength,
          Property::MaxLength, Property::ValueExpression}) {
        std::string doubt = DoubtAbout(evaluation, now, attribute, property);
        if (!doubt.empty()) {
            return doubt;
        }
    }
    return "";
}

std::string WhyNoValue(const Evaluation& evaluation, const SystemValues& now, std::size_t index)
{
    const Attribute attribute = AttributeInForce(evaluation, now, index);
    if (attribute.Type == AttributeType::Enumeration) {
        const ChoicesInForce choices = ChoicesOf(evaluation, now, index);
        return attribute.Choices.empty() && !choices.Rules.empty() ? RulesLeave(now.Of(), choices.Rules) + " no choice"
                                                                   : "";
    }
    const bool isNumber = attribute.Type == AttributeType::Integer;
    const std::optional<std::int64_t>& least = isNumber ? attribute.LowerBound : attribute.MinLength;
    const std::optional<std::int64_t>& most = isNumber ? attribute.UpperBound : attribute.MaxLength;
    if (!(isNumber || attribute.IsText()) || !least || !most || *least <= *most) {
        return "";
    }
    const auto bound = [&](Property property, std::int64_t number) {
        const std::optional<std::size_t> rule = evaluation.RuleInForce(index, property);
        return std::string(Name(property)) + " is " + std::to_string(number) +
               (rule ? " (rule " + std::to_string(now.Of().Rules()[*rule].Position) + ")" : std::string());
    };
    return bound(isNumber ? Property::LowerBound : Property::MinLength, *least) + " and " +
           bound(isNumber ? Property::UpperBound : Property::MaxLength, *most);
}

std::string ReasonFor(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute, Property flag)
{
    const Verdict verdict = evaluation.VerdictOn(attribute, flag);
    if (verdict.Marked) {
        return MarkReason(evaluation, attribute, flag);
    }
    if (!verdict.Certain) {
        return "unknown whether " + std::string(WordFor(flag)) + ": " + DoubtAbout(evaluation, now, attribute, flag);
    }
    const std::optional<std::size_t> rule = evaluation.RuleInForce(attribute, flag);
    return verdict.Value && rule ? RuleReason(now, *rule, flag) : "";
}

} // namespace RedfishConfig::Client
