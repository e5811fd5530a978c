#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

/**
 * What the library computes, written as plainly as the rules read. It shares no code with the library, knows nothing of
 * speed, and serves only to be compared with it.
 */
namespace Reference {

/** The log: a level and a text a line. */
using Lines = std::vector<std::pair<unsigned, std::string>>;

inline std::string Upper(std::string text)
{
    for (char& character : text) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return text;
}

inline std::string Lower(std::string text)
{
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return text;
}

/** Evaluates formulas. */
class Calculator {
public:
    explicit Calculator(Lines& log) : m_Log(log) {}

    /** @throws std::string */
    bool Calculate(const std::string& formula)
    {
        m_Log.emplace_back(4, "Start calculate formular: " + formula);
        try {
            const std::vector<std::string> postfix = Convert(Tokenize(formula));
            try {
                return Evaluate(postfix);
            } catch (const std::string& text) {
                m_Log.emplace_back(1, "Calculate exception:" + text);
                throw;
            }
        } catch (const std::string& text) {
            m_Log.emplace_back(1, "Failure: Calculate exception:" + text);
            throw;
        }
    }

private:
    static std::vector<std::string> Tokenize(const std::string& formula)
    {
        const auto kind = [](char character) {
            return std::string("|!&<=>").find(character) != std::string::npos ? 1
                   : character == '(' || character == ')'                     ? 2
                                                                              : 0;
        };
        std::vector<std::string> tokens;
        for (std::size_t i = 0; i < formula.size(); ++i) {
            if (i > 0 && kind(formula[i]) == kind(formula[i - 1]) && kind(formula[i]) != 2) {
                tokens.back() += formula[i];
            } else {
                tokens.emplace_back(1, formula[i]);
            }
        }
        return tokens;
    }

    static bool IsOperator(const std::string& token)
    {
        static const std::vector<std::string> operators{"||", "&&", ">", ">=", "<", "<=", "==", "!=", "(", ")"};
        return std::find(operators.begin(), operators.end(), token) != operators.end();
    }

    static int Precedence(const std::string& token)
    {
        static const std::map<std::string, int> table{{"||", 1}, {"&&", 1}, {"==", 2}, {"!=", 2}, {">", 2},
                                                      {">=", 2}, {"<", 2},  {"<=", 2}, {")", 3}};
        const auto row = table.find(token);
        return row != table.end() ? row->second : -1;
    }

    static std::vector<std::string> Convert(const std::vector<std::string>& tokens)
    {
        std::vector<std::string> output;
        std::vector<std::string> stack;
        for (const std::string& token : tokens) {
            if (!IsOperator(token)) {
                output.push_back(token);
            } else if (token == "(" || stack.empty()) {
                stack.push_back(token);
            } else if (token == ")") {
                if (std::find(stack.begin(), stack.end(), "(") != stack.end()) {
                    while (stack.back() != "(") {
                        output.push_back(stack.back());
                        stack.pop_back();
                    }
                    stack.pop_back();
                }
            } else if (Precedence(stack.back()) <= Precedence(token)) {
                stack.push_back(token);
            } else {
                output.push_back(stack.back());
                stack.back() = token;
            }
        }
        while (!stack.empty()) {
            output.push_back(stack.back());
            stack.pop_back();
        }
        return output;
    }

    [[noreturn]] void Fail(const std::string& message)
    {
        m_Log.emplace_back(1, message);
        throw message;
    }

    bool Apply(const std::string& left, const std::string& token, const std::string& right)
    {
        if (token == "==") {
            return left == right;
        }
        if (token == "!=") {
            return left != right;
        }
        if (token == ">") {
            return left.compare(right) > 0;
        }
        if (token == ">=") {
            return left.compare(right) >= 0;
        }
        if (token == "<") {
            return left.compare(right) < 0;
        }
        if (token == "<=") {
            return left.compare(right) <= 0;
        }
        if (token == "&&" || token == "||") {
            const std::string a = Upper(left);
            const std::string b = Upper(right);
            if ((a != "TRUE" && a != "FALSE") || (b != "TRUE" && b != "FALSE")) {
                Fail("Invalid param for operator: " + left + token + right);
            }
            return token == "&&" ? a == "TRUE" && b == "TRUE" : a == "TRUE" || b == "TRUE";
        }
        Fail("Invalid operator: " + token);
    }

    bool Evaluate(const std::vector<std::string>& postfix)
    {
        std::vector<std::string> stack;
        for (const std::string& token : postfix) {
            if (!IsOperator(token)) {
                stack.push_back(token);
                continue;
            }
            if (stack.size() < 2) {
                Fail("Invalid Formular.");
            }
            const std::string right = stack.back();
            stack.pop_back();
            const std::string left = stack.back();
            stack.pop_back();
            stack.emplace_back(Apply(left, token, right) ? "true" : "false");
        }
        if (stack.size() != 1) {
            Fail("Invalid Formular.");
        }
        const std::string result = Upper(stack.back());
        if (result != "TRUE" && result != "FALSE") {
            Fail("Final result error: " + stack.back());
        }
        return result == "TRUE";
    }

    Lines& m_Log;
};

} // namespace Reference
