#include "ValidValues.h"

#include "Text.h"
#include "common/Ascii.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace RedfishConfigTool {

namespace Ascii = RedfishConfig::Ascii;

namespace {

/** Choices are put together on a line up to this many characters. */
constexpr std::size_t longestLine = 60;

using Bound = std::optional<std::int64_t>;
using RedfishConfig::RedfishConfigSettingInfoStru;

std::string Range(const std::string& lower, const std::string& upper, const std::string& unit)
{
    if (!lower.empty() && !upper.empty()) {
        return lower == upper ? lower + unit : lower + " to " + upper + unit;
    }
    if (!lower.empty()) {
        return "at least " + lower + unit;
    }
    return upper.empty() ? "" : "at most " + upper + unit;
}

std::string NumberText(const Bound& bound, bool hex)
{
    const std::string text = bound ? std::to_string(*bound) : "";
    return hex && bound ? RedfishConfig::DecToHex(text) : text;
}

bool HasShownName(const std::pair<const std::string, std::string>& choice)
{
    return !choice.second.empty() && choice.second != choice.first;
}

/** A line for each choice when some are shown by another name; else as many on a line as there is room for. */
std::vector<std::string> DescribeEnumeration(const RedfishConfigSettingInfoStru& record)
{
    const bool lineEach = std::any_of(record.Value.begin(), record.Value.end(), HasShownName);
    std::vector<std::string> lines;
    for (const auto& choice : record.Value) {
        const std::string name = choice.first + (HasShownName(choice) ? " (" + choice.second + ")" : "");
        if (lineEach || lines.empty() || CharacterCount(lines.back()) + CharacterCount(name) > longestLine) {
            lines.push_back(name);
        } else {
            lines.back() += ", " + name;
        }
    }
    return lines.empty() ? std::vector<std::string>{"none"} : lines;
}

std::string DescribeInteger(const RedfishConfigSettingInfoStru& record, bool hex)
{
    std::string line = Range(NumberText(record.LowerBound, hex), NumberText(record.UpperBound, hex), "");
    line = line.empty() ? "any whole number" : line;
    if (record.ScalarIncrement.value_or(0) != 0 && record.ScalarIncrement != 1) {
        line += ", in steps of " + NumberText(record.ScalarIncrement, hex);
    }
    return line;
}

std::string DescribeText(const RedfishConfigSettingInfoStru& record)
{
    const std::string length =
        Range(NumberText(record.MinLength, false), NumberText(record.MaxLength, false), " bytes");
    return length.empty() ? "a text of any length" : "a text of " + length;
}

} // namespace

std::vector<std::string> DescribeValidValues(const RedfishConfigSettingInfoStru& record, const SystemOptions& options)
{
    if (Ascii::EqualIgnoringCase(*record.Type, "Enumeration")) {
        return DescribeEnumeration(record);
    }
    if (Ascii::EqualIgnoringCase(*record.Type, "Boolean")) {
        return {"true or false"};
    }
    if (Ascii::EqualIgnoringCase(*record.Type, "Integer")) {
        return {DescribeInteger(record, options.Hex)};
    }
    return {DescribeText(record)};
}

} // namespace RedfishConfigTool
