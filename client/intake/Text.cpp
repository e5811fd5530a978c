#include "Text.h"

#include <algorithm>
#include <charconv>

namespace RedfishConfig::Client {

namespace {

std::optional<std::int64_t> ReadDigits(std::string_view digits, int base)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<std::int64_t> ReadDecimal(std::string_view text)
{
    const bool hasPlus = text.size() > 1 && text.front() == '+' && text[1] != '-';
    return ReadDigits(text.substr(hasPlus ? 1 : 0), 10);
}

std::optional<std::int64_t> ReadInteger(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        return text[2] != '-' ? ReadDigits(text.substr(2), 16) : std::nullopt;
    }
    return ReadDecimal(text);
}

std::optional<bool> ReadTruth(std::string_view text)
{
    if (EqualIgnoringCase(text, "true")) {
        return true;
    }
    return EqualIgnoringCase(text, "false") ? std::optional(false) : std::nullopt;
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLower);
    return lower;
}

int CompareIgnoringCase(std::string_view left, std::string_view right)
{
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    for (std::size_t place = left.size(); place-- > 0;) { // names differ at their ends most often
        if (left[place] != right[place]) {
            const char one = ToLower(left[place]);
            const char other = ToLower(right[place]);
            if (one != other) {
                return one < other ? -1 : 1;
            }
        }
    }
    return 0;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right)
{
    return CompareIgnoringCase(left, right) == 0;
}

} // namespace RedfishConfig::Client
