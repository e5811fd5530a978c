#include <RedfishConfig/Client/Evaluate.h>

#include "../Limits.h"
#include "../intake/Quote.h"
#include "../model/ConditionPrograms.h"

#include <algorithm>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** Why a test is unknown. */
std::string CauseOf(const Test& test, const SystemValues& now)
{
    if (test.Source == noAttribute) {
        return "no attribute has that name";
    }
    if (now.Of().Attributes()[test.Source].IsPassword()) {
        return "a password is never known";
    }
    switch (now.OriginOf(test.Source)) {
    case ValueOrigin::NotReported:
        return "the system does not report it";
    case ValueOrigin::Null:
        return "the system has no value for it";
    default:
        return "only numbers have an order";
    }
}

/** The value; of a text as much as is shown of any, as a rule may ask for one a thousand times. */
Value CutToShow(const Value& value)
{
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? Value(Cut(*text, Limits::quotedBytes)) : value;
}

Explanation ExplainTest(const Test& test, const SystemValues& now)
{
    Explanation explanation;
    explanation.What = Condition::Kind::Test;
    explanation.Asked = &test;
    explanation.Is = now.Of().Programs().Evaluate(test, now);
    if (test.Source != noAttribute) {
        explanation.Current = test.Of == Property::CurrentValue
                                  ? CutToShow(now.ValueOf(test.Source))
                                  : Value(now.Of().Attributes()[test.Source].Flags.Has(test.Of));
    }
    if (explanation.Is == Truth::Unknown) {
        explanation.Because = CauseOf(test, now);
    }
    return explanation;
}

Explanation ExplainCondition(const Condition& condition, const SystemValues& now)
{
    if (condition.What == Condition::Kind::Test) {
        return ExplainTest(condition.Asked, now);
    }
    Explanation explanation;
    explanation.What = condition.What;
    if (condition.What == Condition::Kind::Unknown) {
        explanation.Because = condition.Cause;
        return explanation;
    }
    for (const Condition& part : condition.Parts) {
        Explanation explained = ExplainCondition(part, now);
        if (explained.What != Condition::Kind::Ignored) {
            explanation.Parts.push_back(std::move(explained));
        }
    }
    if (explanation.Parts.empty()) { // about the controller alone
        explanation.What = Condition::Kind::Ignored;
        explanation.Is = Truth::False;
        return explanation;
    }
    const auto byTruth = [](const Explanation& left, const Explanation& right) { return left.Is < right.Is; };
    const auto [least, greatest] = std::minmax_element(explanation.Parts.begin(), explanation.Parts.end(), byTruth);
    if (condition.What == Condition::Kind::Not) {
        explanation.Is = static_cast<Truth>(static_cast<int>(Truth::True) - static_cast<int>(least->Is));
    } else {
        explanation.Is = condition.What == Condition::Kind::All ? least->Is : greatest->Is;
    }
    return explanation;
}

} // namespace

Explanation Explain(const SystemValues& now, std::size_t rule)
{
    return ExplainCondition(now.Of().Rules()[rule].When, now);
}

Explanation Pruned(const Explanation& explanation)
{
    Explanation pruned{explanation.What,  explanation.Is,      {},
                       explanation.Asked, explanation.Current, explanation.Because};
    const bool isNot = explanation.What == Condition::Kind::Not;
    for (const Explanation& part : explanation.Parts) {
        if (isNot || part.Is == explanation.Is) {
            pruned.Parts.push_back(Pruned(part));
        }
    }
    const bool isJoined = pruned.What == Condition::Kind::All || pruned.What == Condition::Kind::Any;
    if (isJoined && pruned.Parts.size() == 1) {
        Explanation only = std::move(pruned.Parts.front());
        return only;
    }
    return pruned;
}

} // namespace RedfishConfig::Client
