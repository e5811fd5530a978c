#include "ChoiceNumbers.h"

#include "common/Numbers.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig::Client {

ChoiceNumbers::ChoiceNumbers(const std::vector<Choice>& choices) : m_Choices(&choices)
{
    m_Names.reserve(choices.size());
    m_DisplayNames.reserve(choices.size());
    for (std::uint32_t number = 0; number < choices.size(); ++number) {
        m_Names.push_back({choices[number].Name, number});
        m_DisplayNames.push_back({choices[number].DisplayName, number});
    }
    Sort(m_Names);
    Sort(m_DisplayNames);
}

void ChoiceNumbers::Sort(Entries& entries)
{
    std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        const int order = left.Text.compare(right.Text);
        return order != 0 ? order < 0 : left.Number < right.Number;
    });
}

/** The first entry of that text; the end where there is none. */
ChoiceNumbers::Entries::const_iterator ChoiceNumbers::Find(const Entries& entries, std::string_view text)
{
    const auto found =
        std::lower_bound(entries.begin(), entries.end(), text,
                         [](const Entry& entry, std::string_view sought) { return entry.Text < sought; });
    return found != entries.end() && found->Text == text ? found : entries.end();
}

/** All entries of that text. */
ChoiceNumbers::Range ChoiceNumbers::RangeOf(const Entries& entries, std::string_view text)
{
    const auto first = Find(entries, text);
    return {first, std::upper_bound(first, entries.end(), text,
                                    [](std::string_view sought, const Entry& entry) { return sought < entry.Text; })};
}

ChoiceNumbers::Range ChoiceNumbers::RangeOf(std::string_view text, bool displayNamesAreValues) const
{
    const Range range = RangeOf(displayNamesAreValues ? m_DisplayNames : m_Names, text);
    return range.first != range.second ? range : RangeOf(displayNamesAreValues ? m_Names : m_DisplayNames, text);
}

std::vector<std::uint32_t> ChoiceNumbers::Of(std::string_view text, bool displayNamesAreValues) const
{
    const auto [first, last] = RangeOf(text, displayNamesAreValues);
    std::vector<std::uint32_t> numbers;
    numbers.reserve(static_cast<std::size_t>(last - first));
    std::transform(first, last, std::back_inserter(numbers), [](const Entry& entry) { return entry.Number; });
    return numbers;
}

bool ChoiceNumbers::AreSame(std::string_view left, std::string_view right, bool displayNamesAreValues) const
{
    if (left == right) {
        return true;
    }
    Range fewer = RangeOf(left, displayNamesAreValues);
    Range more = RangeOf(right, displayNamesAreValues);
    if (fewer.second - fewer.first > more.second - more.first) {
        std::swap(fewer, more);
    }
    const auto isBefore = [](const Entry& one, const Entry& other) { return one.Number < other.Number; };
    return std::any_of(fewer.first, fewer.second, [&](const Entry& entry) {
        return std::binary_search(more.first, more.second, entry, isBefore);
    });
}

std::string_view ChoiceNumbers::ValueFor(std::string_view text, bool displayNamesAreValues) const
{
    const Entries& own = displayNamesAreValues ? m_DisplayNames : m_Names;
    const Entries& other = displayNamesAreValues ? m_Names : m_DisplayNames;
    const auto named = Find(other, text);
    if (named == other.end() || Find(own, text) != own.end()) {
        return text;
    }
    const Choice& choice = (*m_Choices)[named->Number];
    const std::string_view value = displayNamesAreValues ? choice.DisplayName : choice.Name;
    // one name for several choices, or several names for one text, would say something else
    const auto [firstOwn, lastOwn] = RangeOf(own, value);
    const auto [firstOther, lastOther] = RangeOf(other, text);
    const bool isClear = std::equal(firstOwn, lastOwn, firstOther, lastOther,
                                    [](const Entry& one, const Entry& entry) { return one.Number == entry.Number; });
    return isClear ? value : text;
}

std::optional<std::int64_t> ChoiceNumbers::NumberFor(std::string_view text, bool displayNamesAreValues) const
{
    return Numbers::ReadDecimal(ValueFor(text, displayNamesAreValues));
}

bool ChoiceNumbers::Has(std::string_view text) const
{
    return Find(m_Names, text) != m_Names.end() || Find(m_DisplayNames, text) != m_DisplayNames.end();
}

ChoiceNumbersOfAll::ChoiceNumbersOfAll(const std::vector<Attribute>& attributes)
    : m_Attributes(&attributes), m_Numbers(attributes.size())
{
}

const ChoiceNumbers& ChoiceNumbersOfAll::Of(std::size_t attribute)
{
    std::unique_ptr<const ChoiceNumbers>& numbers = m_Numbers[attribute];
    if (numbers == nullptr) {
        numbers = std::make_unique<const ChoiceNumbers>((*m_Attributes)[attribute].Choices);
    }
    return *numbers;
}

} // namespace RedfishConfig::Client
