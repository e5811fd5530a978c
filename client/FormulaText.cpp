#include "FormulaText.h"

#include <algorithm>

namespace RedfishConfig::Client {

namespace {

constexpr std::string_view keyTails[] = {
    ".CurrentValue", ".GrayOut",   ".Hidden", ".Immutable", ".IsSystemUniqueProperty",
    ".ReadOnly",     ".WriteOnly", " exist",  " not exist"};

} // namespace

bool HasOperators(std::string_view text)
{
    return text.find_first_of("|!&<=>()") != std::string_view::npos;
}

FormulaText::FormulaText(const Attributes& attributes)
{
    m_Reversed.reserve(attributes.List().size());
    for (const Attribute& attribute : attributes.List()) {
        m_Reversed.emplace_back(attribute.Name.rbegin(), attribute.Name.rend());
    }
    std::sort(m_Reversed.begin(), m_Reversed.end());
}

std::vector<std::string_view> FormulaText::NamesEnding(std::string_view name) const
{
    std::vector<std::string_view> endings;
    auto begin = m_Reversed.begin();
    auto end = m_Reversed.end();
    for (std::size_t length = 0; begin != end; ++length) {
        if (begin->size() == length) { // the shortest of those that end alike stands first
            if (length < name.size()) {
                endings.push_back(name.substr(name.size() - length));
            }
            ++begin;
        }
        if (length == name.size()) {
            break;
        }
        const char next = name[name.size() - 1 - length];
        begin = std::partition_point(begin, end, [&](const std::string& reversed) { return reversed[length] < next; });
        end = std::partition_point(begin, end, [&](const std::string& reversed) { return reversed[length] <= next; });
    }
    return endings;
}

bool FormulaText::IsSafe(std::string_view text) const
{
    if (HasOperators(text)) {
        return false;
    }
    for (const std::string_view tail : keyTails) {
        for (std::size_t found = text.find(tail); found != std::string_view::npos; found = text.find(tail, found + 1)) {
            // a blank in front makes an ending of a text that is a name as a whole
            if (!NamesEnding(" " + std::string(text.substr(0, found))).empty()) {
                return false;
            }
        }
    }
    return true;
}

} // namespace RedfishConfig::Client
