#include "Assignments.h"

#include "Input.h"
#include "TypedValue.h"
#include "common/Ascii.h"

#include <boost/json/object.hpp>

#include <charconv>
#include <cstdint>
#include <set>
#include <sstream>
#include <utility>

namespace RedfishConfig::App {

namespace json = boost::json;

namespace {

using Names = std::set<std::string, RedfishConfig::CaseInsensitiveComparator>;

std::vector<Assignment> ReadLines(const std::string& file, const std::string& text)
{
    std::vector<Assignment> assignments;
    Names names;
    std::istringstream lines(text);
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::optional<Assignment> assignment = ParseAssignment(line);
        const std::string place = file + ": line " + std::to_string(number);
        if (!assignment) {
            throw InputError(place + " is not NAME=VALUE");
        }
        if (!names.insert(assignment->Name).second) {
            throw InputError(place + " names " + assignment->Name + " a second time");
        }
        assignments.push_back(std::move(*assignment));
    }
    return assignments;
}

std::string WithoutLastLineFeed(std::string text)
{
    for (const char end : {'\n', '\r'}) {
        if (!text.empty() && text.back() == end) {
            text.pop_back();
        }
    }
    return text;
}

/** The number of "0x1f" in decimal; digits beyond 63 bits are those that --hex shows for negative numbers. */
std::optional<std::string> Decimal(const std::string& hexadecimal)
{
    std::uint64_t bits = 0;
    const char* const end = hexadecimal.data() + hexadecimal.size();
    const auto [stop, error] = std::from_chars(hexadecimal.data() + 2, end, bits, 16);
    return error == std::errc() && stop == end ? std::optional(std::to_string(static_cast<std::int64_t>(bits)))
                                               : std::nullopt;
}

} // namespace

std::optional<Assignment> ParseAssignment(const std::string& text)
{
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
        return std::nullopt;
    }
    return Assignment{text.substr(0, sign), text.substr(sign + 1), "", false, true};
}

std::vector<Assignment> ToAssignments(const std::string& file, const json::object& values)
{
    std::vector<Assignment> assignments;
    Names names;
    for (const auto& [key, value] : values) {
        const auto read = ReadValue(value);
        Assignment assignment{std::string(key), read ? std::optional(PlainText(*read)) : std::nullopt,
                              read ? "" : std::string("its value is ") + KindOf(value), value.is_null()};
        if (!names.insert(assignment.Name).second) {
            throw InputError(file + ": " + assignment.Name +
                             " is there twice, as names that differ in letter case alone are the same");
        }
        assignments.push_back(std::move(assignment));
    }
    return assignments;
}

std::vector<Assignment> ReadAssignments(const std::string& file)
{
    const std::string text = ReadText(file);
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos || text[begin] != '{') {
        return ReadLines(file, text);
    }
    const json::value document = ParseJson(file, text);
    const json::value* attributes = document.as_object().if_contains("Attributes");
    return ToAssignments(file, attributes != nullptr && attributes->is_object() ? attributes->get_object()
                                                                                : document.get_object());
}

bool IsFromStandardInput(const Assignment& assignment, const System& system)
{
    const Setting* setting = system.Find(assignment.Name);
    return assignment.MayRefer && assignment.Value == "-" && setting != nullptr && setting->IsPassword();
}

std::string ValueToCheck(const Assignment& assignment, const System& system)
{
    const std::string& value = *assignment.Value;
    const Setting* setting = system.Find(assignment.Name);
    if (setting == nullptr) {
        return value;
    }
    if (IsFromStandardInput(assignment, system)) {
        return WithoutLastLineFeed(ReadStandardInput());
    }
    if (assignment.MayRefer && setting->IsPassword() && value.size() > 1 && value[0] == '@') {
        return WithoutLastLineFeed(ReadText(value.substr(1)));
    }
    if (system.Options().Hex && Ascii::EqualIgnoringCase(setting->Type(), "Integer") &&
        RedfishConfig::isHexString(value)) {
        return Decimal(value).value_or(value);
    }
    return value;
}

} // namespace RedfishConfig::App
