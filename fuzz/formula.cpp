// Formulas: the library's answer against a plain one, with the log on and off.

#include "Support.h"

#include "reference/Formula.h"

#include <RedfishConfig/RedfishConfigExpression.h>

namespace {

/** What fuzzers seldom guess. */
constexpr const char* pieces[] = {"(",    ")",     "==",   "!=",    ">",   ">=",      "<",   "<=", "&&", "||",
                                  "true", "false", "TRUE", "False", "A",   "B",       "10",  "9",  " ",  "=",
                                  "&",    "|",     "!",    "===",   "=<",  "(A==A)",  ")(",  "",   "é",  "\x80",
                                  "\n",   "!==",   "<=>",  "tRuE",  "&&&", "A==A&&B", "||(", "((", "))", "x"};

std::string FormulaFrom(Fuzz::Bytes& bytes)
{
    if (bytes.Flag()) {
        return bytes.Rest();
    }
    std::string formula;
    while (!bytes.Empty()) {
        formula += bytes.Pick(pieces);
    }
    return formula;
}

template <class Calculator>
std::string Answer(Calculator& calculator, const std::string& formula)
{
    try {
        return calculator.Calculate(formula) ? "true" : "false";
    } catch (const std::string& error) {
        return "error: " + error;
    }
}

std::string ToText(const Fuzz::LogLines& lines)
{
    std::string text;
    for (const auto& [level, line] : lines) {
        text += std::to_string(level) + ' ' + line + '\n';
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Fuzz::Bytes bytes(data, size);
    const std::string formula = FormulaFrom(bytes);
    Fuzz::LogLines expectedLog;
    Reference::Calculator reference(expectedLog);
    const std::string expected = Answer(reference, formula);

    RedfishConfig::RedfishConfigExpression expression;
    Fuzz::RequireSame(Answer(expression, formula), expected, "a formula has the plain answer");
    Fuzz::RequireSame(Answer(expression, formula), expected, "a formula has the same answer when asked again");
    const Fuzz::LogOn log;
    Fuzz::RequireSame(Answer(expression, formula), expected, "a formula has the same answer with the log on");
    Fuzz::RequireSame(ToText(log.Lines()), ToText(expectedLog), "a formula logs the plain lines");
    return 0;
}
