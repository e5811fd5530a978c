#include <RedfishConfig/Client/Rule.h>

#include "../intake/Quote.h"
#include "common/SchemaNames.h"

#include <algorithm>

namespace RedfishConfig::Client {

namespace {

constexpr std::string_view formWords[] = {
    "single-term", "joiner-on-earlier", "joiner-on-later", "stack-order", "no-joiner", "nested", "none"};

/** A text is quoted where its end, or what it is, would not be clear. */
std::string OperandText(const Value& operand)
{
    const auto* text = std::get_if<std::string>(&operand);
    if (text == nullptr) {
        return ToText(operand);
    }
    const bool isWord = !text->empty() && text->find_first_of(" \t\r\n\"()=!<>&|") == std::string::npos;
    return isWord ? ShortName(*text) : ToQuotedText(operand);
}

std::string TestText(const Test& test)
{
    if (test.Of == Property::CurrentValue && !HasValue(test.Operand)) {
        return test.Name + (test.Compare == Comparison::Equal ? " has no value" : " has a value");
    }
    std::string text = test.Name;
    if (test.Of != Property::CurrentValue) {
        text.append(".").append(Name(test.Of));
    }
    return text.append(" ").append(Sign(test.Compare)).append(" ") + OperandText(test.Operand);
}

void AppendText(const Condition& condition, std::string& text);

void AppendJoined(const Condition& condition, const char* word, std::string& text)
{
    bool isFirst = true;
    for (const Condition& part : condition.Parts) {
        const bool isJoined = part.What == Condition::Kind::All || part.What == Condition::Kind::Any;
        text.append(isFirst ? "" : word).append(isJoined ? "(" : "");
        AppendText(part, text);
        text.append(isJoined ? ")" : "");
        isFirst = false;
    }
}

/** Writes all levels into one text: conditions are nested deeply. */
void AppendText(const Condition& condition, std::string& text)
{
    switch (condition.What) {
    case Condition::Kind::All:
        AppendJoined(condition, " and ", text);
        return;
    case Condition::Kind::Any:
        AppendJoined(condition, " or ", text);
        return;
    case Condition::Kind::Not:
        text += "not (";
        AppendText(condition.Parts.front(), text);
        text += ")";
        return;
    case Condition::Kind::Test:
        text += TestText(condition.Asked);
        return;
    case Condition::Kind::Ignored:
        text += "(about the controller)";
        return;
    case Condition::Kind::Unknown:
        break;
    }
    text.append("unknown (").append(condition.Cause).append(")");
}

std::string OutcomeText(const Outcome& outcome)
{
    if (const auto* value = std::get_if<Value>(&outcome)) {
        return OperandText(*value);
    }
    std::string text;
    for (const std::string& name : std::get<std::vector<std::string>>(outcome)) {
        text += (text.empty() ? "" : ", ") + OperandText(name);
    }
    return "one of " + (text.empty() ? "none" : text);
}

} // namespace

std::string_view Name(Comparison comparison)
{
    return Schema::conditions[static_cast<std::size_t>(comparison)].Name;
}

std::string_view Sign(Comparison comparison)
{
    return Schema::conditions[static_cast<std::size_t>(comparison)].Sign;
}

std::string_view Word(RuleForm form)
{
    return formWords[static_cast<std::size_t>(form)];
}

bool Counts(const Condition& condition)
{
    const bool hasNoParts = condition.What == Condition::Kind::Test || condition.What == Condition::Kind::Unknown;
    return hasNoParts || std::any_of(condition.Parts.begin(), condition.Parts.end(), Counts);
}

bool GivesTrue(const Rule& rule)
{
    const auto* value = std::get_if<Value>(&rule.Outcome);
    return value != nullptr && *value == Value(true);
}

std::string ToText(const Condition& condition)
{
    std::string text;
    AppendText(condition, text);
    return text;
}

std::string ToText(const Rule& rule)
{
    return std::to_string(rule.Position) + ": " + rule.TargetName + "." + std::string(Name(rule.Decides)) + " = " +
           OutcomeText(rule.Outcome) + " when " + ToText(rule.When);
}

} // namespace RedfishConfig::Client
