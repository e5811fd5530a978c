#include "Formula.h"

#include "../../logging/LogLine.h"
#include "../LetterCase.h"
#include "common/Ascii.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <vector>

namespace RedfishConfig {

namespace {

using Token = std::string_view;
using Tokens = std::vector<Token>;

constexpr Token trueText = "true";
constexpr Token falseText = "false";

/** A failure whose text is the whole message. */
[[noreturn]] void Fail(const std::string& message)
{
    LOG_LINE(LogDefect) << message;
    throw message; // NOLINT(cert-err60-cpp): callers catch a std::string
}

bool IsTrue(Token text)
{
    return Ascii::EqualIgnoringCase(text, trueText);
}

bool IsTruthText(Token text)
{
    return IsTrue(text) || Ascii::EqualIgnoringCase(text, falseText);
}

/** What an operator does; the operands of one that takes truths must be truth texts. */
struct Operator {
    Token text;
    int precedence;
    bool takesTruths;
    bool (*holds)(Token left, Token right); ///< null for ")", which only groups
};

/**
 * && and || have one precedence on purpose: only parentheses group them. "(" is not here, and so has a lower precedence
 * than all others. Comparisons are of texts, never of numbers.
 */
constexpr Operator operators[] = {
    {"||", 1, true, [](Token left, Token right) { return IsTrue(left) || IsTrue(right); }},
    {"&&", 1, true, [](Token left, Token right) { return IsTrue(left) && IsTrue(right); }},
    {"==", 2, false, [](Token left, Token right) { return left == right; }},
    {"!=", 2, false, [](Token left, Token right) { return left != right; }},
    {">", 2, false, [](Token left, Token right) { return left > right; }},
    {">=", 2, false, [](Token left, Token right) { return left >= right; }},
    {"<", 2, false, [](Token left, Token right) { return left < right; }},
    {"<=", 2, false, [](Token left, Token right) { return left <= right; }},
    {")", 3, false, nullptr},
};

const Operator* FindOperator(Token token)
{
    const auto* const found = std::find_if(std::begin(operators), std::end(operators),
                                           [&](const Operator& row) { return row.text == token; });
    return found != std::end(operators) ? found : nullptr;
}

int Precedence(Token token)
{
    const Operator* found = FindOperator(token);
    return found != nullptr ? found->precedence : -1;
}

bool IsOperator(Token token)
{
    return token == "(" || FindOperator(token) != nullptr;
}

enum class CharacterClass { Operand, Operator, Parenthesis };

CharacterClass Classify(char character)
{
    switch (character) {
    case '|':
    case '!':
    case '&':
    case '<':
    case '=':
    case '>':
        return CharacterClass::Operator;
    case '(':
    case ')':
        return CharacterClass::Parenthesis;
    default:
        return CharacterClass::Operand; // blanks too: they are part of a value
    }
}

/** Splits a formula into runs of operand characters, runs of operator characters, and single parentheses. */
Tokens Tokenize(Token formula)
{
    Tokens tokens;
    std::size_t begin = 0;
    while (begin < formula.size()) {
        const CharacterClass kind = Classify(formula[begin]);
        std::size_t end = begin + 1;
        while (kind != CharacterClass::Parenthesis && end < formula.size() && Classify(formula[end]) == kind) {
            ++end;
        }
        tokens.push_back(formula.substr(begin, end - begin));
        begin = end;
    }
    return tokens;
}

/**
 * Brings the tokens into the order operand, operand, operator. At most one waiting operator gives way to an incoming
 * one, and none of the same precedence: operators of one precedence group to the right.
 */
Tokens ToPostfix(const Tokens& tokens)
{
    Tokens output;
    Tokens waiting;
    std::size_t openParentheses = 0; // of those that are waiting

    const auto takeTop = [&] {
        output.push_back(waiting.back());
        waiting.pop_back();
    };
    for (const Token token : tokens) {
        if (!IsOperator(token)) {
            output.push_back(token);
        } else if (token == "(") {
            waiting.push_back(token);
            ++openParentheses;
        } else if (waiting.empty()) {
            waiting.push_back(token); // a ")" too
        } else if (token == ")") {
            if (openParentheses == 0) {
                continue; // nothing to close
            }
            while (waiting.back() != "(") {
                takeTop();
            }
            waiting.pop_back();
            --openParentheses;
        } else {
            if (Precedence(waiting.back()) > Precedence(token)) {
                takeTop();
            }
            waiting.push_back(token);
        }
    }
    while (!waiting.empty()) {
        takeTop();
    }
    return output;
}

Token Apply(Token left, Token operatorText, Token right)
{
    const Operator* found = FindOperator(operatorText);
    if (found == nullptr || found->holds == nullptr) {
        Fail("Invalid operator: " + std::string(operatorText)); // a parenthesis without its partner
    }
    if (found->takesTruths && !(IsTruthText(left) && IsTruthText(right))) {
        Fail("Invalid param for operator: " + std::string(left) + std::string(operatorText) + std::string(right));
    }
    return found->holds(left, right) ? trueText : falseText;
}

bool EvaluatePostfix(const Tokens& tokens)
{
    Tokens operands;
    for (const Token token : tokens) {
        if (!IsOperator(token)) {
            operands.push_back(token);
            continue;
        }
        if (operands.size() < 2) {
            Fail("Invalid Formular.");
        }
        const Token right = operands.back();
        operands.pop_back();
        operands.back() = Apply(operands.back(), token, right);
    }
    if (operands.size() != 1) {
        Fail("Invalid Formular.");
    }
    if (!IsTruthText(operands.back())) {
        Fail("Final result error: " + std::string(operands.back()));
    }
    return IsTrue(operands.back());
}

/** Runs a step and logs its failure once more behind @p prefix; what is not a failure text becomes one. */
template <class Step>
auto WithFailuresLogged(const std::string& prefix, Step step)
{
    try {
        return step();
    } catch (const std::string& message) {
        LOG_LINE(LogDefect) << prefix << "Calculate exception:" << message;
        throw;
    } catch (...) {
        Fail(prefix + "Calculate error.");
    }
}

} // namespace

bool CalculateFormula(const std::string& formula)
{
    LOG_LINE(LogDetail) << "Start calculate formular: " << formula;
    return WithFailuresLogged("Failure: ", [&] {
        const Tokens postfix = ToPostfix(Tokenize(formula));
        return WithFailuresLogged("", [&] { return EvaluatePostfix(postfix); });
    });
}

} // namespace RedfishConfig
