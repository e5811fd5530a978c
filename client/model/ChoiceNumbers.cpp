#include "ChoiceNumbers.h"

#include "../intake/Text.h"

#include <algorithm>

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

std::vector<std::uint32_t> ChoiceNumbers::Of(const Entries& entries, std::string_view text)
{
    std::vector<std::uint32_t> numbers;
    for (auto entry = Find(entries, text); entry != entries.end() && entry->Text == text; ++entry) {
        numbers.push_back(entry->Number);
    }
    return numbers;
}

std::vector<std::uint32_t> ChoiceNumbers::Of(std::string_view text, bool displayNamesAreValues) const
{
    std::vector<std::uint32_t> numbers = Of(displayNamesAreValues ? m_DisplayNames : m_Names, text);
    if (numbers.empty()) {
        numbers = Of(displayNamesAreValues ? m_Names : m_DisplayNames, text);
    }
    return numbers;
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
    return Of(own, value) == Of(other, text) ? value : text;
}

std::optional<std::int64_t> ChoiceNumbers::NumberFor(std::string_view text, bool displayNamesAreValues) const
{
    return ReadDecimal(ValueFor(text, displayNamesAreValues));
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
