#include "PatternMatch.h"

#include "DeepStack.h"
#include "common/Limits.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <iterator>
#include <locale>
#include <memory>
#include <mutex>
#include <regex>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace RedfishConfig {

namespace {

/** Where the stack ends, as seen by the function that it is compiled into. */
#define STACK_POSITION() reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0))

/** What a match may still use up. */
class MatchBudget {
public:
    void Spend()
    {
        if (++m_Steps > Limits::matchSteps) {
            throw std::runtime_error("The value takes too many steps to match the pattern.");
        }
        const auto here = STACK_POSITION();
        if ((here > m_Start ? here - m_Start : m_Start - here) > Limits::matchStackBytes) {
            throw std::runtime_error("The value is nested too deeply to match the pattern.");
        }
    }

private:
    std::size_t m_Steps = 0;
    std::uintptr_t m_Start = STACK_POSITION();
};

/** Walks a text. The matcher cannot go on for long without asking it, and each time it pays. */
class PayingIterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    PayingIterator() = default;
    PayingIterator(const char* position, MatchBudget& budget) : m_Position(position), m_Budget(&budget) {}

    reference operator*() const
    {
        m_Budget->Spend();
        return *m_Position;
    }
    pointer operator->() const { return m_Position; }
    PayingIterator& operator++()
    {
        ++m_Position;
        return *this;
    }
    PayingIterator operator++(int)
    {
        PayingIterator before = *this;
        ++m_Position;
        return before;
    }
    PayingIterator& operator--()
    {
        --m_Position;
        return *this;
    }
    PayingIterator operator--(int)
    {
        PayingIterator before = *this;
        --m_Position;
        return before;
    }
    friend bool operator==(const PayingIterator& left, const PayingIterator& right)
    {
        if (left.m_Budget != nullptr) {
            left.m_Budget->Spend();
        }
        return left.m_Position == right.m_Position;
    }
    friend bool operator!=(const PayingIterator& left, const PayingIterator& right) { return !(left == right); }

private:
    const char* m_Position = nullptr;
    MatchBudget* m_Budget = nullptr;
};

/** Estimates how large the matcher for a pattern becomes: repetitions with a count are written out in it. */
class PatternSize {
public:
    explicit PatternSize(const std::string& pattern) : m_Pattern(pattern) {}

    /** @throws std::runtime_error when it becomes too large. */
    void Check()
    {
        while (m_At < m_Pattern.size()) {
            ReadPiece();
        }
    }

private:
    // A choice costs the matcher more of the stack than a character, and it may make many before the next one.
    static constexpr std::size_t choiceSize = 4;

    void ReadPiece()
    {
        switch (m_Pattern[m_At++]) {
        case '\\':
            ++m_At;
            Add(1);
            break;
        case '[':
            SkipBracket();
            Add(1);
            break;
        case '(':
            m_Open.push_back(0);
            break;
        case ')':
            CloseGroup();
            break;
        case '{':
            Repeat(ReadLargestCount());
            break;
        case '|':
        case '?':
        case '*':
        case '+':
            Add(choiceSize);
            break;
        default:
            Add(1);
        }
    }

    void Add(std::size_t size)
    {
        m_Last = size;
        m_Open.back() += size;
        if (m_Open.back() > Limits::patternSize) {
            throw std::runtime_error("The pattern of the setting is too large.");
        }
    }

    void CloseGroup()
    {
        const std::size_t size = m_Open.back() + 2;
        if (m_Open.size() > 1) {
            m_Open.pop_back();
        }
        Add(size);
    }

    /** What was read last stands there so many times, twice over where it may also be left out. */
    void Repeat(std::size_t count) { Add(m_Last * count * 2); }

    void SkipBracket()
    {
        if (m_At < m_Pattern.size() && m_Pattern[m_At] == '^') {
            ++m_At;
        }
        while (m_At < m_Pattern.size() && m_Pattern[m_At] != ']') {
            m_At += m_Pattern[m_At] == '\\' ? 2U : 1U;
        }
        ++m_At;
    }

    std::size_t ReadLargestCount()
    {
        std::size_t largest = 1;
        std::size_t number = 0;
        for (; m_At < m_Pattern.size() && m_Pattern[m_At] != '}'; ++m_At) {
            const auto character = static_cast<unsigned char>(m_Pattern[m_At]);
            number = std::isdigit(character) != 0 ? number * 10 + static_cast<std::size_t>(character - '0') : 0;
            largest = std::max(largest, std::min(number, Limits::patternSize));
            number = std::min(number, Limits::patternSize);
        }
        ++m_At;
        return largest;
    }

    const std::string& m_Pattern;
    std::size_t m_At = 0;
    std::size_t m_Last = 0;             // the size of what a repetition would repeat
    std::vector<std::size_t> m_Open{0}; // the sizes of the groups that are open, the whole pattern first
};

/** A pattern that is within the limits, compiled for the letter classes of a locale. */
struct CompiledPattern {
    explicit CompiledPattern(const std::string& pattern)
    {
        PatternSize(pattern).Check();
        expression.assign(pattern, std::regex::ECMAScript);
    }

    std::locale locale; // the global one, as the expression has it
    std::regex expression;
};

using SharedPattern = std::shared_ptr<const CompiledPattern>;

/** The patterns that were matched last, so that the few of a registry are compiled once. Safe between threads. */
class RecentPatterns {
public:
    SharedPattern Get(const std::string& pattern)
    {
        {
            const std::lock_guard<std::mutex> guard(m_Lock);
            const auto known = m_Patterns.find(pattern);
            if (known != m_Patterns.end() && known->second->locale == std::locale()) {
                return known->second;
            }
        }
        auto compiled = std::make_shared<const CompiledPattern>(pattern);
        const std::lock_guard<std::mutex> guard(m_Lock);
        if (m_Patterns.size() >= most) {
            m_Patterns.clear();
        }
        m_Patterns.insert_or_assign(pattern, compiled);
        return compiled;
    }

private:
    static constexpr std::size_t most = 64;

    std::mutex m_Lock;
    std::unordered_map<std::string, SharedPattern> m_Patterns;
};

SharedPattern Compiled(const std::string& pattern)
{
    static RecentPatterns& patterns = *new RecentPatterns; // never destroyed: static objects of callers may ask
    return patterns.Get(pattern);
}

} // namespace

bool MatchesPattern(const std::string& text, const std::string& pattern)
{
    if (pattern.size() > Limits::patternBytes) {
        throw std::runtime_error("The pattern of the setting is too long.");
    }
    if (text.size() > Limits::matchedBytes) {
        throw std::runtime_error("The value is too long to match it with the pattern.");
    }
    bool isMatch = false;
    RunOnDeepStack([&] {
        const SharedPattern compiled = Compiled(pattern);
        MatchBudget budget;
        isMatch = std::regex_match(PayingIterator(text.data(), budget),
                                   PayingIterator(text.data() + text.size(), budget), compiled->expression);
    });
    return isMatch;
}

} // namespace RedfishConfig
