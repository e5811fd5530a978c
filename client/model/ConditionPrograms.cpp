#include "ConditionPrograms.h"

#include "ValueConversion.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

namespace RedfishConfig::Client {

namespace {

// The first tests are constants: those of flags, and those that are never known.
constexpr std::uint32_t alwaysFalse = 0;
constexpr std::uint32_t neverKnown = 1;
constexpr std::uint32_t alwaysTrue = 2;
constexpr std::uint32_t firstTest = 3;

constexpr std::uint32_t ConstantOf(Truth truth)
{
    return truth == Truth::True ? alwaysTrue : truth == Truth::False ? alwaysFalse : neverKnown;
}

constexpr Truth Negate(Truth truth)
{
    return static_cast<Truth>(static_cast<int>(Truth::True) - static_cast<int>(truth));
}

constexpr Truth Of(bool holds)
{
    return holds ? Truth::True : Truth::False;
}

bool HaveOneInCommon(const std::vector<std::uint32_t>& left, const std::vector<std::uint32_t>& right)
{
    if (left.size() > right.size()) {
        return HaveOneInCommon(right, left);
    }
    return std::any_of(left.begin(), left.end(), [&right](std::uint32_t number) {
        return std::binary_search(right.begin(), right.end(), number);
    });
}

/** An order of operands, so that equal ones are neighbours. Those of passwords are never looked at. */
bool IsBefore(const Value& left, const Value& right)
{
    if (left.index() != right.index()) {
        return left.index() < right.index();
    }
    if (const auto* text = std::get_if<std::string>(&left)) {
        return *text < std::get<std::string>(right);
    }
    if (const auto* number = std::get_if<std::int64_t>(&left)) {
        return *number < std::get<std::int64_t>(right);
    }
    const bool* truth = std::get_if<bool>(&left);
    return truth != nullptr && !*truth && std::get<bool>(right);
}

bool IsNegated(Comparison comparison)
{
    return comparison == Comparison::NotEqual || comparison == Comparison::Greater ||
           comparison == Comparison::GreaterOrEqual;
}

/** The truth of a test that no value of a system changes; nothing for others. */
std::optional<Truth> FixedTruth(const Test& test, const std::vector<Attribute>& attributes)
{
    if (test.Source == noAttribute) {
        return Truth::Unknown;
    }
    const Attribute& source = attributes[test.Source];
    if (test.Of != Property::CurrentValue) {
        const bool isEqual = source.Flags.Has(test.Of) == std::get<bool>(test.Operand);
        return Of(isEqual == (test.Compare == Comparison::Equal));
    }
    return source.IsPassword() ? std::optional(Truth::Unknown) : std::nullopt;
}

bool IsJoined(const Condition& condition)
{
    return condition.What == Condition::Kind::All || condition.What == Condition::Kind::Any;
}

} // namespace

/** Writes the programs of the rules, one behind the other. */
class ConditionPrograms::Compiler {
public:
    Compiler(ConditionPrograms& programs, const std::vector<Attribute>& attributes)
        : m_Programs(programs), m_Attributes(attributes)
    {
    }

    void Add(const Condition& condition)
    {
        m_Programs.m_Begin.push_back(static_cast<std::uint32_t>(m_Programs.m_Instructions.size()));
        m_Height = 0;
        if (Counts(condition)) {
            Compile(condition);
        } else {
            Write(Step::Push, alwaysFalse); // a rule about the controller alone
        }
    }

    /** Brings the tests into the order of their sources, each once. */
    void Finish()
    {
        std::vector<CodedTest> found = std::exchange(m_Programs.m_Tests, {});
        std::vector<std::uint32_t> order(found.size());
        std::iota(order.begin(), order.end(), 0U);
        const auto isBefore = [&](std::uint32_t left, std::uint32_t right) {
            const auto key = [&](std::uint32_t test) { return std::pair(found[test].Source, found[test].What); };
            return key(left) != key(right) ? key(left) < key(right)
                                           : IsBefore(*found[left].Operand, *found[right].Operand);
        };
        std::sort(order.begin(), order.end(), isBefore);
        std::vector<std::uint32_t> numbers(found.size());
        for (std::size_t place = 0; place < order.size(); ++place) {
            if (place == 0 || isBefore(order[place - 1], order[place])) {
                Keep(std::move(found[order[place]]));
            }
            numbers[order[place]] = static_cast<std::uint32_t>(firstTest + m_Programs.m_Tests.size() - 1);
        }
        for (Instruction& instruction : m_Programs.m_Instructions) {
            if (instruction.Test >= firstTest) {
                instruction.Test = numbers[instruction.Test - firstTest];
            }
        }
    }

private:
    /** A test, and whether its truth is to be negated. */
    struct Use {
        std::uint32_t Test;
        bool IsNegated;
    };

    void Write(Step step, std::uint32_t test = 0)
    {
        m_Programs.m_Instructions.push_back({step, test});
        const bool grows = step == Step::Push || step == Step::PushNot;
        const bool shrinks = step == Step::All || step == Step::Any;
        m_Height += grows ? 1U : 0U;
        m_Height -= shrinks ? 1U : 0U;
        m_Programs.m_StackSize = std::max(m_Programs.m_StackSize, m_Height);
    }

    void Compile(const Condition& condition)
    {
        if (IsJoined(condition)) {
            CompileJoined(condition);
        } else if (condition.What == Condition::Kind::Not && condition.Parts.front().What != Condition::Kind::Test) {
            Compile(condition.Parts.front());
            Write(Step::Not);
        } else {
            const Use use = UseOf(condition);
            Write(use.IsNegated ? Step::PushNot : Step::Push, use.Test);
        }
    }

    /** Parts that are more than a test come first, so that a long chain needs no deep stack. */
    void CompileJoined(const Condition& condition)
    {
        const bool isAll = condition.What == Condition::Kind::All;
        bool isFirst = true;
        for (const Condition& part : condition.Parts) {
            if (Counts(part) && !IsOneTest(part)) {
                Compile(part);
                if (!isFirst) {
                    Write(isAll ? Step::All : Step::Any);
                }
                isFirst = false;
            }
        }
        for (const Condition& part : condition.Parts) {
            if (!Counts(part) || !IsOneTest(part)) {
                continue;
            }
            const Use use = UseOf(part);
            if (isFirst) {
                Write(use.IsNegated ? Step::PushNot : Step::Push, use.Test);
            } else if (isAll) {
                Write(use.IsNegated ? Step::AndNot : Step::And, use.Test);
            } else {
                Write(use.IsNegated ? Step::OrNot : Step::Or, use.Test);
            }
            isFirst = false;
        }
    }

    static bool IsOneTest(const Condition& condition)
    {
        return !IsJoined(condition) &&
               (condition.What != Condition::Kind::Not || condition.Parts.front().What == Condition::Kind::Test);
    }

    Use UseOf(const Condition& condition)
    {
        if (condition.What == Condition::Kind::Not) {
            const Use use = UseOf(condition.Parts.front());
            return {use.Test, !use.IsNegated};
        }
        if (condition.What != Condition::Kind::Test) {
            return {neverKnown, false};
        }
        const Test& test = condition.Asked;
        if (const std::optional<Truth> fixed = FixedTruth(test, m_Attributes)) {
            return {ConstantOf(*fixed), false};
        }
        const auto number = static_cast<std::uint32_t>(firstTest + m_Programs.m_Tests.size());
        m_Programs.m_Tests.push_back(Code(test, nullptr));
        return {number, IsNegated(test.Compare)};
    }

    /** Puts a test behind those of its source. */
    void Keep(CodedTest test)
    {
        std::vector<Source>& sources = m_Programs.m_Sources;
        if (sources.empty() || sources.back().Attribute != test.Source) {
            const auto first = static_cast<std::uint32_t>(m_Programs.m_Tests.size());
            const bool hasChoices = m_Attributes[test.Source].Type == AttributeType::Enumeration;
            sources.push_back(
                {test.Source, first, first, hasChoices ? &m_Programs.m_Choices.Of(test.Source) : nullptr});
        }
        FindOperand(test, sources.back().Choices);
        m_Programs.m_Tests.push_back(std::move(test));
        ++sources.back().Last;
    }

    ConditionPrograms& m_Programs;
    const std::vector<Attribute>& m_Attributes;
    std::size_t m_Height = 0; // of the stack
};

ConditionPrograms::CodedTest ConditionPrograms::Code(const Test& test, const ChoiceNumbers* choices)
{
    CodedTest coded;
    coded.Source = test.Source;
    coded.Operand = &test.Operand;
    if (!HasValue(test.Operand)) {
        coded.What = CodedTest::Kind::HasNoValue;
    } else if (!IsEquality(test.Compare)) { // a greater than b is not a less or equal b
        const bool isStrict = test.Compare == Comparison::Less || test.Compare == Comparison::GreaterOrEqual;
        coded.What = isStrict ? CodedTest::Kind::Less : CodedTest::Kind::LessOrEqual;
    }
    FindOperand(coded, choices);
    return coded;
}

/** Finds the choices or the number that the operand names. @param choices of the source; null when it has none, or
 * later
 */
void ConditionPrograms::FindOperand(CodedTest& test, const ChoiceNumbers* choices)
{
    const auto* text = std::get_if<std::string>(test.Operand);
    if (test.What == CodedTest::Kind::Less || test.What == CodedTest::Kind::LessOrEqual) {
        const bool isName = choices != nullptr && text != nullptr;
        test.Limit = isName ? choices->NumberFor(*text, false) : NumberOf(*test.Operand);
        test.LimitAsShown = isName ? choices->NumberFor(*text, true) : test.Limit;
    } else if (choices != nullptr && text != nullptr) {
        test.Choices = choices->Of(*text, false);
        test.ChoicesAsShown = choices->Of(*text, true);
    }
}

ConditionPrograms::ConditionPrograms(const std::vector<Attribute>& attributes, const std::vector<Rule>& rules,
                                     ChoiceNumbersOfAll choices)
    : m_Choices(std::move(choices))
{
    Compiler compiler(*this, attributes);
    for (const Rule& rule : rules) {
        compiler.Add(rule.When);
    }
    compiler.Finish();
    m_Begin.push_back(static_cast<std::uint32_t>(m_Instructions.size()));
}

std::vector<Truth> ConditionPrograms::EvaluateTests(const SystemValues& now) const
{
    std::vector<Truth> truths{Truth::False, Truth::Unknown, Truth::True};
    truths.reserve(firstTest + m_Tests.size());
    std::vector<std::uint32_t> heldChoices; // that the value of the source names
    for (const Source& source : m_Sources) {
        const Value& held = now.ValueOf(source.Attribute);
        const bool displayNamesAreValues = now.UsesDisplayNames(source.Attribute);
        const auto* text = std::get_if<std::string>(&held);
        heldChoices.clear();
        if (source.Choices != nullptr && text != nullptr) {
            heldChoices = source.Choices->Of(*text, displayNamesAreValues);
        }
        for (std::uint32_t test = source.First; test != source.Last; ++test) {
            truths.push_back(Compare(m_Tests[test], held, heldChoices, displayNamesAreValues));
        }
    }
    return truths;
}

Truth ConditionPrograms::Compare(const CodedTest& test, const Value& held,
                                 const std::vector<std::uint32_t>& heldChoices, bool displayNamesAreValues)
{
    if (test.What == CodedTest::Kind::HasNoValue) {
        return Of(!HasValue(held));
    }
    if (!HasValue(held)) {
        return Truth::Unknown;
    }
    if (test.What == CodedTest::Kind::Equal) {
        const std::vector<std::uint32_t>& choices = displayNamesAreValues ? test.ChoicesAsShown : test.Choices;
        const bool areChoices = !choices.empty() && !heldChoices.empty();
        return Of(areChoices ? HaveOneInCommon(heldChoices, choices) : held == *test.Operand);
    }
    const auto number = NumberOf(held);
    const auto& limit = displayNamesAreValues ? test.LimitAsShown : test.Limit;
    if (!number || !limit) {
        return Truth::Unknown; // texts have no order
    }
    return Of(test.What == CodedTest::Kind::Less ? *number < *limit : *number <= *limit);
}

void ConditionPrograms::EvaluateRules(const std::vector<Truth>& tests, std::vector<Truth>& rules) const
{
    std::vector<Truth> stack(m_StackSize);
    const Instruction* instruction = m_Instructions.data();
    for (std::size_t rule = 0; rule < rules.size(); ++rule) {
        Truth* next = stack.data(); // behind the top
        const Instruction* const end = m_Instructions.data() + m_Begin[rule + 1];
        for (; instruction != end; ++instruction) {
            const Truth test = tests[instruction->Test];
            switch (instruction->What) {
            case Step::Push:
                *next++ = test;
                break;
            case Step::PushNot:
                *next++ = Negate(test);
                break;
            case Step::And:
                next[-1] = std::min(next[-1], test);
                break;
            case Step::AndNot:
                next[-1] = std::min(next[-1], Negate(test));
                break;
            case Step::Or:
                next[-1] = std::max(next[-1], test);
                break;
            case Step::OrNot:
                next[-1] = std::max(next[-1], Negate(test));
                break;
            case Step::All:
                --next;
                next[-1] = std::min(next[-1], next[0]);
                break;
            case Step::Any:
                --next;
                next[-1] = std::max(next[-1], next[0]);
                break;
            case Step::Not:
                next[-1] = Negate(next[-1]);
                break;
            }
        }
        rules[rule] = stack.front();
    }
}

Truth ConditionPrograms::Evaluate(const Test& test, const SystemValues& now) const
{
    if (const std::optional<Truth> fixed = FixedTruth(test, now.Of().Attributes())) {
        return *fixed;
    }
    const ChoiceNumbers* const choices = m_Choices.Find(test.Source);
    const bool displayNamesAreValues = now.UsesDisplayNames(test.Source);
    const Value& held = now.ValueOf(test.Source);
    const auto* text = std::get_if<std::string>(&held);
    const auto* operand = std::get_if<std::string>(&test.Operand);
    const bool areTexts = choices != nullptr && text != nullptr && operand != nullptr;
    const Truth truth = areTexts && IsEquality(test.Compare)
                            ? Of(choices->AreSame(*text, *operand, displayNamesAreValues))
                            : Compare(Code(test, choices), held, {}, displayNamesAreValues);
    return IsNegated(test.Compare) ? Negate(truth) : truth;
}

} // namespace RedfishConfig::Client
