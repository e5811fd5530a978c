#include <RedfishConfig/RedfishConfigExpression.h>

#include "support/LogCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <locale>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::LogCapture;
using RegistryTest::LogLine;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// The whole program allocates through these, so that a test can count the bytes and let one allocation fail. Both
// hold for the calling thread alone, and only while a test asks for it.
namespace {
thread_local std::size_t allocatedBytes = 0;
thread_local std::size_t allocationsUntilFailure = 0; // 0: none fails
} // namespace

// The compiler inlines one of the pair without the other, and then takes free() for the wrong half.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t size)
{
    if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0) {
        throw std::bad_alloc();
    }
    allocatedBytes += size;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

const std::string invalid = "Invalid Formular.";

/** "true", "false", or the message that the formula fails with. */
std::string Outcome(RedfishConfigExpression& calculator, const std::string& formula)
{
    try {
        return calculator.Calculate(formula) ? "true" : "false";
    } catch (const std::string& message) {
        return message;
    }
}

std::string Outcome(const std::string& formula)
{
    RedfishConfigExpression calculator;
    return Outcome(calculator, formula);
}

/** All lines that a formula with this outcome leaves in the log. */
std::vector<LogLine> LinesOf(const std::string& formula, const std::string& outcome)
{
    std::vector<LogLine> lines{{4, "Start calculate formular: " + formula}};
    if (outcome != "true" && outcome != "false") {
        lines.emplace_back(1, outcome);
        lines.emplace_back(1, "Calculate exception:" + outcome);
        lines.emplace_back(1, "Failure: Calculate exception:" + outcome);
    }
    return lines;
}

using FormulaTable = std::vector<std::pair<std::string, std::string>>;

void ExpectOutcomes(const FormulaTable& table)
{
    LogCapture log;
    for (const auto& [formula, expected] : table) {
        log.Clear();
        EXPECT_EQ(Outcome(formula), expected) << formula;
        EXPECT_THAT(log.Lines(), ElementsAreArray(LinesOf(formula, expected))) << formula;
    }
}

/** Takes '#' for a lower-case 't'. */
class ForeignLetters : public std::ctype<char> {
protected:
    char do_toupper(char c) const override { return c == '#' ? 'T' : std::ctype<char>::do_toupper(c); }
    char do_tolower(char c) const override { return c == '#' ? 't' : std::ctype<char>::do_tolower(c); }
    const char* do_toupper(char* begin, const char* end) const override
    {
        std::transform(begin, begin + (end - begin), begin, [this](char c) { return do_toupper(c); });
        return end;
    }
    const char* do_tolower(char* begin, const char* end) const override
    {
        std::transform(begin, begin + (end - begin), begin, [this](char c) { return do_tolower(c); });
        return end;
    }
};

/**
 * The rules of a formula once more, one after the other, as slow and as plain as they can be: what the library says
 * of thousands of formulas is held against it.
 */
namespace Plain {

using Texts = std::vector<std::string>;

bool IsOneOf(const std::string& text, const Texts& texts)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/** Every run of operator characters, every run of other characters, every parenthesis. */
Texts Split(const std::string& formula)
{
    const auto kind = [](char c) {
        return c == '(' ? 1 : c == ')' ? 2 : std::string("|!&<=>").find(c) != std::string::npos ? 3 : 4;
    };
    Texts tokens;
    for (std::size_t i = 0; i < formula.size(); ++i) {
        const bool continues = i > 0 && kind(formula[i]) == kind(formula[i - 1]) && kind(formula[i]) > 2;
        if (continues) {
            tokens.back() += formula[i];
        } else {
            tokens.emplace_back(1, formula[i]);
        }
    }
    return tokens;
}

bool IsOperator(const std::string& token)
{
    return IsOneOf(token, {"||", "&&", ">", ">=", "<", "<=", "==", "!=", "(", ")"});
}

int Precedence(const std::string& symbol)
{
    if (IsOneOf(symbol, {"||", "&&"})) {
        return 1;
    }
    if (IsOneOf(symbol, {"==", "!=", ">", ">=", "<", "<="})) {
        return 2;
    }
    return symbol == ")" ? 3 : -1;
}

Texts Postfix(const Texts& tokens)
{
    Texts output;
    Texts waiting;
    const auto moveTop = [&] {
        output.push_back(waiting.back());
        waiting.pop_back();
    };
    for (const std::string& token : tokens) {
        if (!IsOperator(token)) {
            output.push_back(token);
        } else if (token == "(" || waiting.empty()) {
            waiting.push_back(token);
        } else if (token == ")") {
            if (IsOneOf("(", waiting)) {
                while (waiting.back() != "(") {
                    moveTop();
                }
                waiting.pop_back();
            }
        } else {
            if (Precedence(waiting.back()) > Precedence(token)) {
                moveTop(); // one alone, however many more of a higher precedence wait below it
            }
            waiting.push_back(token);
        }
    }
    while (!waiting.empty()) {
        moveTop();
    }
    return output;
}

std::string UpperCase(std::string text)
{
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string Outcome(const std::string& formula)
{
    Texts stack;
    for (const std::string& token : Postfix(Split(formula))) {
        if (!IsOperator(token)) {
            stack.push_back(token);
            continue;
        }
        if (stack.size() < 2) {
            return invalid;
        }
        const std::string right = stack.back();
        stack.pop_back();
        const std::string left = stack.back();
        stack.pop_back();
        bool holds = false;
        if (token == "==") {
            holds = left == right;
        } else if (token == "!=") {
            holds = left != right;
        } else if (token == ">") {
            holds = left > right;
        } else if (token == ">=") {
            holds = left >= right;
        } else if (token == "<") {
            holds = left < right;
        } else if (token == "<=") {
            holds = left <= right;
        } else if (token == "&&" || token == "||") {
            if (!IsOneOf(UpperCase(left), {"TRUE", "FALSE"}) || !IsOneOf(UpperCase(right), {"TRUE", "FALSE"})) {
                return "Invalid param for operator: " + left + token + right;
            }
            const bool leftHolds = UpperCase(left) == "TRUE";
            const bool rightHolds = UpperCase(right) == "TRUE";
            holds = token == "&&" ? leftHolds && rightHolds : leftHolds || rightHolds;
        } else {
            return "Invalid operator: " + token;
        }
        stack.push_back(holds ? "true" : "false");
    }
    if (stack.size() != 1) {
        return invalid;
    }
    const std::string last = UpperCase(stack.back());
    if (last == "TRUE") {
        return "true";
    }
    return last == "FALSE" ? "false" : "Final result error: " + stack.back();
}

} // namespace Plain

TEST(TransferStringToOptionalVar, AnswersFalseWhenMemoryRunsOut)
{
    SettingValue value = SettingAlternative(std::string("short"));
    const std::string longText(100, 'x');
    allocationsUntilFailure = 1;
    const bool converted = TransferStringToOptionalVar(value, longText);
    const bool failed = allocationsUntilFailure == 0;
    allocationsUntilFailure = 0;
    EXPECT_TRUE(failed);
    EXPECT_FALSE(converted);
}

} // namespace

TEST(Calculate, TakesATruthTextInAnyLetterCase)
{
    ExpectOutcomes({
        {"true", "true"},
        {"TRUE", "true"},
        {"tRuE", "true"},
        {"false", "false"},
        {"FALSE", "false"},
        {"False", "false"},
        {"yes", "Final result error: yes"},
        {"Yes", "Final result error: Yes"},
        {"1", "Final result error: 1"},
        {"0", "Final result error: 0"},
        {"truE1", "Final result error: truE1"},
        {"A B", "Final result error: A B"},
    });
}

TEST(Calculate, FoldsTruthTextsTheSameInEveryLocale)
{
    const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new ForeignLetters));
    EXPECT_EQ(Outcome("#rue"), "Final result error: #rue");
    EXPECT_EQ(Outcome("#RUE||true"), "Invalid param for operator: #RUE||true");
    EXPECT_EQ(Outcome("TRUE||false"), "true");
    std::locale::global(previous);
}

TEST(Calculate, FailsForAnEmptyFormula)
{
    ExpectOutcomes({{"", invalid}});
}

TEST(Calculate, ComparesTexts)
{
    ExpectOutcomes({
        {"A==A", "true"},
        {"A==B", "false"},
        {"A==a", "false"},
        {"A==AB", "false"},
        {"10==10.0", "false"},
        {"A!=A", "false"},
        {"A!=B", "true"},
        {"A!=a", "true"},
        {"9>10", "true"},
        {"10>9", "false"},
        {"9<10", "false"},
        {"10<9", "true"},
        {"-1<-2", "true"},
        {"abc>ABC", "true"},
        {"ABC>abc", "false"},
        {"AB>A", "true"},
        {"A>AB", "false"},
        {"A<AB", "true"},
        {"A>A", "false"},
        {"A<A", "false"},
        {"A>=A", "true"},
        {"A<=A", "true"},
        {"B>=A", "true"},
        {"A>=B", "false"},
        {"A<=B", "true"},
        {"B<=A", "false"},
        {"AB>=A", "true"},
        {"A<=AB", "true"},
        {"\xC3\xA4>z", "true"},
        {"\xC3\xA4<z", "false"},
        {"\xFF>=\x7F", "true"},
        {"true==TRUE", "false"},
        {std::string("A\0B==A\0B", 8), "true"},
        {std::string("A\0B==A\0C", 8), "false"},
    });
}

TEST(Calculate, TakesWhiteSpaceForPartOfAnOperand)
{
    ExpectOutcomes({
        {"A == A", "false"},
        {"A != A", "true"},
        {"A ==A ", "true"},
        {" ", "Final result error:  "},
        {" true", "Final result error:  true"},
        {"true ", "Final result error: true "},
        {"true\n", "Final result error: true\n"},
        {"true && true", "Invalid param for operator: true && true"},
        {"( true)", "Final result error:  true"},
        {" (true)", invalid},
        {"Boot Mode==Boot Mode", "true"},
    });
}

TEST(Calculate, CombinesTruthTexts)
{
    ExpectOutcomes({
        {"true&&true", "true"},
        {"true&&false", "false"},
        {"false&&true", "false"},
        {"false&&false", "false"},
        {"true||true", "true"},
        {"true||false", "true"},
        {"false||true", "true"},
        {"false||false", "false"},
        {"TRUE&&True", "true"},
        {"FALSE||tRUE", "true"},
        {"False||FALSE", "false"},
    });
}

TEST(Calculate, CombinesNothingButTruthTexts)
{
    ExpectOutcomes({
        {"A&&B", "Invalid param for operator: A&&B"},
        {"A||B", "Invalid param for operator: A||B"},
        {"true&&B", "Invalid param for operator: true&&B"},
        {"A&&true", "Invalid param for operator: A&&true"},
        {"A==A&&B", "Invalid param for operator: true&&B"},
        {"A==B||C", "Invalid param for operator: false||C"},
        {"1&&1", "Invalid param for operator: 1&&1"},
        {"Yes||No", "Invalid param for operator: Yes||No"},
        // both operands are looked at, also where one would decide
        {"false&&B", "Invalid param for operator: false&&B"},
        {"true||B", "Invalid param for operator: true||B"},
        {"B||true", "Invalid param for operator: B||true"},
        // the operands keep their spelling
        {"TRUE&&maybe", "Invalid param for operator: TRUE&&maybe"},
        // the last operator is applied first
        {"A&&B&&C", "Invalid param for operator: B&&C"},
        {"true&& &&true", "Invalid param for operator:  &&true"},
    });
}

TEST(Calculate, GroupsToTheRight)
{
    ExpectOutcomes({
        {"false&&true||true", "false"},
        {"(false&&true)||true", "true"},
        {"false&&(true||true)", "false"},
        {"true||false&&false", "true"},
        {"(true||false)&&false", "false"},
        {"true&&false||true", "true"},
        {"true||true&&false", "true"},
        {"false||true&&false", "false"},
        {"false&&false||true", "false"},
        {"true&&true||false&&false", "true"},
        {"false&&true||true||true", "false"},
        {"A==A==true", "false"},
        {"(A==A)==true", "true"},
        {"true==A==A", "true"},
        {"TRUE==A==A", "false"},
        {"false==A==B", "true"},
        {"A!=A!=A", "true"},
        {"A<B<C", "true"},
        {"z>B>C", "true"},
        {"A>B>C", "false"},
    });
}

TEST(Calculate, BindsComparisonsTighter)
{
    ExpectOutcomes({
        {"A==A&&B==B", "true"},
        {"A==A&&B==C", "false"},
        {"A==B||C==C", "true"},
        {"A==B||C==D", "false"},
        {"A!=B&&C<D&&E>=E", "true"},
        {"A==A&&B==B&&C==D", "false"},
        {"A==B&&B==B||C==C", "false"},
        {"true&&A==A", "true"},
        {"A==A&&true", "true"},
        {"(Legacy==Legacy)&&(Disabled!=Enabled)", "true"},
        {"(Legacy==Uefi)||(Disabled!=Enabled)&&(1==2)", "false"},
    });
}

TEST(Calculate, MovesOneOperatorAtMostBeforeALooserOne)
{
    // A==B==C&&D is A==((B==C)&&D): the && passes one of the comparisons before it, not all
    ExpectOutcomes({
        {"false==1==1&&false", "true"},
        {"(false==(1==1))&&false", "false"},
        {"false==((1==1)&&false)", "true"},
        {"true==false==1==1&&false", "true"},
        {"1==1==1==1&&true", "false"},
        {"A==B==C&&D", "Invalid param for operator: false&&D"},
        {"A==B==B&&D", "Invalid param for operator: true&&D"},
        {"A==B==B&&true", "false"},
        {"true==B==B&&true", "true"},
        {"(false==1==1&&false)", "true"},
        {"x!=1==1||false", "true"},
        {"true==1==1&&2==2==true", "false"},
    });
}

TEST(Calculate, CalculatesParenthesesFirst)
{
    ExpectOutcomes({
        {"(true)", "true"},
        {"((true))", "true"},
        {"(((A==A)))", "true"},
        {"(yes)", "Final result error: yes"},
        {"(A)==(A)", "true"},
        {"(A==A&&B==C)||D==D", "true"},
        {"A==A&&(B==C||D==D)", "true"},
        {"((false||true)&&(true||false))", "true"},
        {"((A==B)||(C==C))&&((D!=D)||(E<F))", "true"},
    });
}

TEST(Calculate, TakesEmptyParenthesesForNothing)
{
    ExpectOutcomes({
        {"()", invalid},
        {"(())", invalid},
        {"true()", "true"},
        {"()true", "true"},
        {"()()true()", "true"},
        {"A()==()A", "true"},
        {"A()B", invalid},
        {"(A)(B)", invalid},
    });
}

TEST(Calculate, FailsForAnUnmatchedOpeningParenthesis)
{
    ExpectOutcomes({
        {"(", invalid},
        {"((", invalid},
        {"(true", invalid},
        {"((true)", invalid},
        {"true(", invalid},
        {"(A==A", invalid},
        {"A(B", "Invalid operator: ("},
        {"B(A==A", "Invalid operator: ("},
        {"A==(A", "Invalid operator: ("},
        {"true&&(true", "Invalid operator: ("},
        {"(true&&true", invalid},
        {"true&&(A==A", "Invalid operator: ("},
    });
}

TEST(Calculate, DropsAnUnmatchedClosingParenthesisWhileAnOperatorWaits)
{
    ExpectOutcomes({
        {"A==A)", "true"},
        {"A==A))", "true"},
        {"A==)A", "true"},
        {"A==A)&&B==B", "true"},
        {"A==B)||)C==C)", "true"},
        {"true&&(A==A))", "true"},
        {"true&&(A==A)))", "true"},
    });
}

TEST(Calculate, KeepsAnUnmatchedClosingParenthesisWhileNoOperatorWaits)
{
    ExpectOutcomes({
        {")", invalid},
        {")(", invalid},
        {"true)", invalid},
        {")true", invalid},
        {"(true))", invalid},
        {"(A==A))", invalid},
        {"A)B", "Invalid operator: )"},
        {"A)B==C", "Invalid operator: )"},
        {"A)==B", invalid},
        {")A==A", invalid},
        {"true)&&true", invalid},
        {"true)&&(true)", invalid},
        {"A)(B", "Invalid operator: ("},
        {"A)(B)", "Invalid operator: )"},
        // a second one finds the first waiting, and is dropped
        {"A))B", "Invalid operator: )"},
        {"A)B)", "Invalid operator: )"},
    });
}

TEST(Calculate, FailsForAnOperatorWithoutTwoOperands)
{
    ExpectOutcomes({
        {"==", invalid},
        {"&&", invalid},
        {"A==", invalid},
        {"==A", invalid},
        {"true&&", invalid},
        {"||true", invalid},
        {"(==)", invalid},
        {"(A==)B", invalid},
        {"(==A)A", invalid},
        {"A(==)A", invalid},
        {"A==(==)A", invalid},
        {"A==()", invalid},
        {"A(&&)B", invalid},
    });
}

TEST(Calculate, DoesNotAskWhereAnOperatorStands)
{
    ExpectOutcomes({
        {"(A)(A)==", "true"},
        {"==(A)(A)", "true"},
        {"==(A)(B)", "false"},
        {"A(A==)", "true"},
        {"A(B==)", "false"},
        {"A(B&&)", "Invalid param for operator: A&&B"},
        {"(true)(false)||", "true"},
        {"&&(true)(false)", "false"},
    });
}

TEST(Calculate, TakesAnyOtherRunOfOperatorCharactersForAnOperand)
{
    FormulaTable table;
    for (const std::string run :
         {"=",    "===", "====", "=<",   "=>",   "=!",  "==!", "!",    "!!",  "!==", "!=!",  "!>",    "<>", "><",
          "<<",   ">>",  "<==",  ">==",  "<<=",  "&",   "&&&", "&&&&", "|",   "|||", "||||", "&|",    "|&", "&&||",
          "||&&", "&&!", "||!",  "==&&", "&&==", "=&&", "&&=", ">&&",  "!&&", "!||", "!=&&", "|!&<=>"}) {
        table.emplace_back(run, "Final result error: " + run);
        table.emplace_back("A" + run + "B", invalid);
        table.emplace_back("true" + run + "true", invalid);
        table.emplace_back("(" + run + ")==(" + run + ")", "true");
        table.emplace_back("(" + run + ")!=(A)", "true");
        table.emplace_back("(" + run + ")&&true", "Invalid param for operator: " + run + "&&true");
    }
    ExpectOutcomes(table);
    ExpectOutcomes({
        {"A=B", invalid},
        {"!true", invalid},
        {"A===A", invalid},
        {"A=<A", invalid},
        {"A==A&B==B", invalid},
        {"A==!B", invalid},
        {"A&&!B", invalid},
        {"(=)==(==)", invalid},
        {"A==B=", invalid},
        {"A==&&B", invalid},
        {"true&&&&true", invalid},
        {"(=)<(=<)", "true"},
        {"(=)==(=)&&(!)!=(!!)", "true"},
    });
}

TEST(Calculate, KeepsNothingBetweenFormulas)
{
    RedfishConfigExpression calculator;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(Outcome(calculator, "A==A"), "true");
        EXPECT_EQ(Outcome(calculator, "A=B"), invalid);
        EXPECT_EQ(Outcome(calculator, "A==B"), "false");
        EXPECT_EQ(Outcome(calculator, "B(A==A"), "Invalid operator: (");
        EXPECT_EQ(Outcome(calculator, "true&&B"), "Invalid param for operator: true&&B");
        EXPECT_EQ(Outcome(calculator, ""), invalid);
        EXPECT_EQ(Outcome(calculator, "yes"), "Final result error: yes");
    }
    RedfishConfigExpression copy = calculator;
    EXPECT_EQ(Outcome(copy, "A==A"), "true");
    copy = RedfishConfigExpression();
    EXPECT_EQ(Outcome(copy, "A==B"), "false");
}

TEST(Calculate, LeavesTheFormulaAsItIs)
{
    const std::string formula = "(A==A)&&(B!=C)";
    std::string handedIn = formula;
    RedfishConfigExpression calculator;
    calculator.Calculate(handedIn);
    EXPECT_EQ(handedIn, formula);
}

TEST(Calculate, ThrowsAPlainText)
{
    RedfishConfigExpression calculator;
    for (const std::string formula : {"", "yes", "A&&B", "A(B"}) {
        EXPECT_THROW(calculator.Calculate(formula), std::string) << formula;
    }
}

TEST(Calculate, CalculatesLongFormulas)
{
    std::string all = "A==A";
    std::string open;
    std::string close;
    for (int i = 0; i < 2000; ++i) {
        all += "&&A==A";
        open += '(';
        close += ')';
    }
    EXPECT_EQ(Outcome(all), "true");
    EXPECT_EQ(Outcome(all + "&&A==B"), "false");
    EXPECT_EQ(Outcome(open + "A==A" + close), "true");
    EXPECT_EQ(Outcome(open + "A==A" + close + ")"), invalid);
    const std::string operand(100000, 'x');
    EXPECT_EQ(Outcome(operand + "==" + operand), "true");
    EXPECT_EQ(Outcome(operand + "==" + operand + "y"), "false");
    EXPECT_EQ(Outcome(operand), "Final result error: " + operand);
}

TEST(Calculate, LogsTheFormulaAndNothingElseWhenItSucceeds)
{
    const LogCapture log;
    RedfishConfigExpression calculator;
    EXPECT_TRUE(calculator.Calculate("(A==A)||B==C"));
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Start calculate formular: (A==A)||B==C")));
}

TEST(Calculate, LogsAFailureWhereItArisesAndOnItsWayOut)
{
    LogCapture log;
    EXPECT_EQ(Outcome("A=B"), "Invalid Formular.");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Start calculate formular: A=B"), LogLine(1, "Invalid Formular."),
                                         LogLine(1, "Calculate exception:Invalid Formular."),
                                         LogLine(1, "Failure: Calculate exception:Invalid Formular.")));
    log.Clear();
    EXPECT_EQ(Outcome("A=="), "Invalid Formular.");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Start calculate formular: A=="), LogLine(1, "Invalid Formular."),
                                         LogLine(1, "Calculate exception:Invalid Formular."),
                                         LogLine(1, "Failure: Calculate exception:Invalid Formular.")));
    log.Clear();
    EXPECT_EQ(Outcome("B(A==A"), "Invalid operator: (");
    EXPECT_THAT(log.Lines(),
                ElementsAre(LogLine(4, "Start calculate formular: B(A==A"), LogLine(1, "Invalid operator: ("),
                            LogLine(1, "Calculate exception:Invalid operator: ("),
                            LogLine(1, "Failure: Calculate exception:Invalid operator: (")));
    log.Clear();
    EXPECT_EQ(Outcome("A==A&&B"), "Invalid param for operator: true&&B");
    EXPECT_THAT(log.Lines(),
                ElementsAre(LogLine(4, "Start calculate formular: A==A&&B"),
                            LogLine(1, "Invalid param for operator: true&&B"),
                            LogLine(1, "Calculate exception:Invalid param for operator: true&&B"),
                            LogLine(1, "Failure: Calculate exception:Invalid param for operator: true&&B")));
    log.Clear();
    EXPECT_EQ(Outcome("yes"), "Final result error: yes");
    EXPECT_THAT(log.Lines(),
                ElementsAre(LogLine(4, "Start calculate formular: yes"), LogLine(1, "Final result error: yes"),
                            LogLine(1, "Calculate exception:Final result error: yes"),
                            LogLine(1, "Failure: Calculate exception:Final result error: yes")));
}

TEST(Calculate, LogsEmptyFormulasToo)
{
    const LogCapture log;
    EXPECT_EQ(Outcome(""), invalid);
    EXPECT_THAT(log.Lines(), ElementsAre(LogLine(4, "Start calculate formular: "), LogLine(1, "Invalid Formular."),
                                         LogLine(1, "Calculate exception:Invalid Formular."),
                                         LogLine(1, "Failure: Calculate exception:Invalid Formular.")));
}

TEST(Calculate, ComposesNoLineWhileTheLogIsOff)
{
    const std::string operand(100000, 'x');
    const std::string formula = operand + "==" + operand;
    RedfishConfigExpression calculator;
    const auto bytesAt = [&](unsigned level) {
        SetLogSink([](unsigned, std::string_view, int, std::string_view) {});
        SetLogLevel(level);
        const std::size_t before = allocatedBytes;
        EXPECT_TRUE(calculator.Calculate(formula));
        const std::size_t bytes = allocatedBytes - before;
        SetLogLevel(0);
        SetLogSink({});
        return bytes;
    };
    EXPECT_GE(bytesAt(4), bytesAt(0) + formula.size());
    EXPECT_EQ(bytesAt(3), bytesAt(0));
}

TEST(Calculate, ReportsAnyOtherExceptionAsACalculateError)
{
    // every allocation fails once; each of these texts is too long to be held without one
    const std::string formula = "(a long operand of a formula==a long operand of a formula)&&"
                                "(another one, just as long!=and the last, which differs)";
    const LogCapture log(1);
    RedfishConfigExpression calculator;
    ASSERT_TRUE(calculator.Calculate(formula));

    std::size_t failures = 0;
    for (std::size_t failing = 1;; ++failing) {
        ASSERT_LT(failing, 10000u);
        const std::size_t linesBefore = log.Lines().size();
        std::string outcome;
        allocationsUntilFailure = failing;
        try {
            outcome = calculator.Calculate(formula) ? "true" : "false";
        } catch (const std::string& message) {
            outcome = message;
        } catch (const std::bad_alloc&) {
            outcome = "(bad_alloc)";
        }
        const bool reached = allocationsUntilFailure == 0;
        allocationsUntilFailure = 0;

        const std::vector<LogLine> lines(log.Lines().begin() + static_cast<std::ptrdiff_t>(linesBefore),
                                         log.Lines().end());
        if (!reached) {
            EXPECT_EQ(outcome, "true");
            EXPECT_THAT(lines, IsEmpty());
            break;
        }
        ++failures;
        if (outcome == "Calculate error.") {
            EXPECT_THAT(lines, ElementsAre(LogLine(1, "Calculate error."),
                                           LogLine(1, "Failure: Calculate exception:Calculate error.")))
                << failing;
        } else {
            EXPECT_EQ(outcome, "Failure: Calculate error.") << failing;
            EXPECT_THAT(lines, ElementsAre(LogLine(1, "Failure: Calculate error."))) << failing;
        }
    }
    EXPECT_GT(failures, 0u);
}

TEST(Calculate, AgreesWithThePlainRulesOnEveryShortFormula)
{
    const std::vector<std::string> pieces{"true", "false", "A", "==", "<", "&&", "||", "(", ")", "="};
    std::vector<std::string> formulas{""};
    std::size_t first = 0;
    for (int length = 1; length <= 5; ++length) {
        const std::size_t end = formulas.size();
        for (; first < end; ++first) {
            for (const std::string& piece : pieces) {
                formulas.push_back(formulas[first] + piece);
            }
        }
    }
    ASSERT_EQ(formulas.size(), 111111u);
    RedfishConfigExpression calculator;
    for (const std::string& formula : formulas) {
        ASSERT_EQ(Outcome(calculator, formula), Plain::Outcome(formula)) << formula;
    }
}

TEST(Calculate, AgreesWithThePlainRulesOnLongerFormulas)
{
    const std::vector<std::string> operands{"true", "false", "TRUE", "A", "B", "10", "9", "", "="};
    const std::vector<std::string> operators{"==", "!=", "<", "<=", ">", ">=", "&&", "||"};
    std::mt19937 random(20240607);
    const auto oneOf = [&](const std::vector<std::string>& texts) { return texts[random() % texts.size()]; };
    RedfishConfigExpression calculator;
    std::size_t answered = 0;
    for (int i = 0; i < 50000; ++i) {
        std::string formula;
        for (std::size_t left = 2 + random() % 8; left > 0; --left) {
            formula += random() % 4 == 0 ? "(" : "";
            formula += random() % 8 == 0 ? oneOf(operands) : random() % 2 == 0 ? "true" : "false";
            formula += random() % 4 == 0 ? ")" : "";
            formula += left > 1 ? oneOf(operators) : "";
        }
        const std::string expected = Plain::Outcome(formula);
        answered += expected == "true" || expected == "false" ? 1u : 0u;
        ASSERT_EQ(Outcome(calculator, formula), expected) << formula;
    }
    EXPECT_GT(answered, 5000u); // enough of them mean something
}
