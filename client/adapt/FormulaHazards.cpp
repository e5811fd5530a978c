#include "FormulaHazards.h"

#include "../Limits.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace RedfishConfig::Client {

namespace {

/** What a formula may ask of a setting, as it is written behind the setting's name. */
constexpr std::string_view keyTails[] = {
    ".CurrentValue", ".GrayOut",   ".Hidden", ".Immutable", ".IsSystemUniqueProperty",
    ".ReadOnly",     ".WriteOnly", " exist",  " not exist"};

constexpr std::string_view operatorCharacters = "|!&<=>()";

/** Whether the key of a name and a tail is not behind another key. */
bool ComesFirst(std::string_view name, std::string_view tail, std::string_view other)
{
    const int order = name.compare(other.substr(0, name.size()));
    return order < 0 || (order == 0 && tail <= other.substr(name.size()));
}

/** Whether the text has an operator character or a parenthesis. */
bool HasOperators(std::string_view text)
{
    return text.find_first_of(operatorCharacters) != std::string_view::npos;
}

std::size_t CountTails(std::string_view text)
{
    std::size_t count = 0;
    for (const std::string_view tail : keyTails) {
        for (std::size_t found = text.find(tail); found != std::string_view::npos; found = text.find(tail, found + 1)) {
            ++count;
        }
    }
    return count;
}

} // namespace

FormulaHazards::FormulaHazards(const std::vector<Attribute>& attributes)
{
    m_Reversed.reserve(attributes.size());
    for (const Attribute& attribute : attributes) {
        const std::string& name = attribute.Name;
        m_Reversed.emplace_back(name.rbegin(), name.rend());
        if (const std::size_t last = name.find_last_of(operatorCharacters); last != std::string::npos) {
            m_AfterOperators.insert(name.substr(last + 1));
        }
    }
    std::sort(m_Reversed.begin(), m_Reversed.end());
}

/** The names that are endings of the text, the text itself among them. */
std::vector<std::string_view> FormulaHazards::NamesEnding(std::string_view text) const
{
    std::vector<std::string_view> endings;
    auto begin = m_Reversed.begin();
    auto end = m_Reversed.end();
    for (std::size_t length = 0; begin != end; ++length) {
        if (begin->size() == length) { // of those that end alike the shortest comes first
            endings.push_back(text.substr(text.size() - length));
            ++begin;
        }
        if (length == text.size()) {
            break;
        }
        const char next = text[text.size() - 1 - length];
        begin = std::partition_point(begin, end, [&](const std::string& reversed) { return reversed[length] < next; });
        end = std::partition_point(begin, end, [&](const std::string& reversed) { return reversed[length] <= next; });
    }
    return endings;
}

std::vector<std::string_view> FormulaHazards::NamesWithin(std::string_view name) const
{
    std::vector<std::string_view> names = NamesEnding(name);
    names.erase(std::remove(names.begin(), names.end(), name), names.end());
    return names;
}

bool FormulaHazards::IsSafe(std::string_view text) const
{
    if (HasOperators(text) || CountTails(text) > Limits::keyTails) {
        return false;
    }
    for (const std::string_view tail : keyTails) {
        for (std::size_t found = text.find(tail); found != std::string_view::npos; found = text.find(tail, found + 1)) {
            const std::string_view before = text.substr(0, found);
            if (!NamesEnding(before).empty() || m_AfterOperators.count(before) > 0) {
                return false;
            }
        }
    }
    return true;
}

bool FormulaHazards::IsNameSafe(std::string_view name) const
{
    // an operator in a name can be one of the formula
    return !HasOperators(name) && CountTails(name) <= Limits::keyTails && m_AfterOperators.count(name) == 0 &&
           std::all_of(std::begin(keyTails), std::end(keyTails),
                       [&](std::string_view tail) { return IsKeySafe(name, tail); });
}

bool FormulaHazards::IsKeySafe(std::string_view name, std::string_view tail) const
{
    const std::string key = std::string(name) + std::string(tail);
    const std::string_view text = key;
    for (const std::string_view keyTail : keyTails) {
        for (std::size_t found = text.find(keyTail); found != std::string_view::npos;
             found = text.find(keyTail, found + 1)) {
            for (const std::string_view ending : NamesEnding(text.substr(0, found))) {
                const bool isOwn = found == name.size() && ending.size() == name.size();
                if (!isOwn && (found < name.size() || ComesFirst(ending, keyTail, text))) {
                    return false;
                }
            }
        }
    }
    return true;
}

} // namespace RedfishConfig::Client
