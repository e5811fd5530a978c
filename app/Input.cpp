#include "Input.h"

#include <boost/json/object.hpp>
#include <boost/json/parser.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace RedfishConfig::App {

namespace json = boost::json;

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void Fail(const std::string& file, const std::string& reason)
{
    throw InputError(file + ": " + reason);
}

[[noreturn]] void FailWithErrno(const std::string& file)
{
    Fail(file, std::generic_category().message(errno));
}

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/** The text of a stream, without a byte-order mark. */
std::string ReadAll(const Stream& stream, const std::string& file)
{
    std::string text;
    struct stat status {};
    if (fstat(fileno(stream.get()), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        text.reserve(std::min(static_cast<std::size_t>(status.st_size), largestFile));
    }
    std::array<char, 1U << 16U> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), stream.get())) > 0) {
        text.append(block.data(), count);
        if (text.size() > largestFile) {
            Fail(file, "larger than " + std::to_string(largestFile >> 20U) + " MiB");
        }
    }
    if (std::ferror(stream.get()) != 0) {
        FailWithErrno(file); // a directory is found out here
    }
    if (text.compare(0, byteOrderMark.size(), byteOrderMark) == 0) {
        text.erase(0, byteOrderMark.size()); // some editors put it before a file; JSON has no place for it
    }
    return text;
}

} // namespace

std::string ReadText(const std::string& file)
{
    const Stream stream(std::fopen(file.c_str(), "rb"), std::fclose);
    if (!stream) {
        FailWithErrno(file);
    }
    return ReadAll(stream, file);
}

std::string ReadStandardInput()
{
    // opened anew it would ask for permissions that the process may not have, and a socket cannot be
    const int descriptor = dup(STDIN_FILENO);
    const Stream stream(descriptor >= 0 ? fdopen(descriptor, "rb") : nullptr, std::fclose);
    if (!stream) {
        FailWithErrno("standard input");
    }
    return ReadAll(stream, "standard input");
}

namespace {

/** "line 3, column 14" of the byte at @p offset, both counted from 1. */
std::string Place(std::string_view text, std::size_t offset)
{
    const std::string_view before = text.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineBegin = before.rfind('\n') + 1; // npos + 1 is 0
    return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - lineBegin + 1);
}

} // namespace

json::value ParseJson(const std::string& file, const std::string& text)
{
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
        Fail(file, "the file is empty");
    }
    json::parser parser;
    json::error_code error;
    const std::size_t read = parser.write_some(text.data(), text.size(), error);
    if (!error && read < text.size() && text.find_first_not_of(" \t\r\n", read) != std::string::npos) {
        error = json::error::extra_data;
    }
    if (error) {
        Fail(file, "not JSON: " + error.message() + " at " + Place(text, read));
    }
    return parser.release();
}

namespace {

const json::object& RootObject(const std::string& file, const json::value& document)
{
    if (!document.is_object()) {
        Fail(file, "not a JSON object");
    }
    return document.get_object();
}

} // namespace

std::optional<RedfishConfig::SettingAlternative> ReadValue(const json::value& value)
{
    if (const json::string* text = value.if_string()) {
        return std::string(text->c_str(), text->size());
    }
    if (const bool* truth = value.if_bool()) {
        return *truth;
    }
    json::error_code error;
    const auto number = value.is_number() ? value.to_number<std::int64_t>(error) : 0;
    return value.is_number() && !error ? std::optional<RedfishConfig::SettingAlternative>(number) : std::nullopt;
}

const char* KindOf(const json::value& value)
{
    if (value.is_array()) {
        return "a list";
    }
    if (value.is_object()) {
        return "an object";
    }
    if (value.is_null()) {
        return "null";
    }
    return value.is_uint64() ? "a number that does not fit 64 signed bits" : "not a whole number of 64 signed bits";
}

namespace {

/** Tells that a value is left out. @param kind what it is instead of a value */
std::string RemarkOnValue(const std::string& file, const std::string& name, const std::string& kind)
{
    return file + ": the value of " + name + " is " + kind + " and is left out";
}

} // namespace

RegistryInput RegistryFrom(const std::string& file, std::string text)
{
    RegistryInput input{file, std::move(text), {}};
    input.Document = ParseJson(file, input.Text);
    const json::value* entries = RootObject(file, input.Document).if_contains("RegistryEntries");
    if (entries == nullptr || !entries->is_object()) {
        Fail(file, R"(not an attribute registry: it has no object "RegistryEntries")");
    }
    const json::value* attributes = entries->get_object().if_contains("Attributes");
    if (attributes == nullptr || !attributes->is_array()) {
        Fail(file, R"(not an attribute registry: its "RegistryEntries" has no list "Attributes")");
    }
    return input;
}

RegistryInput ReadRegistry(const std::string& file)
{
    return RegistryFrom(file, ReadText(file));
}

ValuesInput ValuesFrom(const std::string& file, const std::string& text)
{
    const json::value document = ParseJson(file, text);
    const json::object& root = RootObject(file, document);
    if (root.contains("RegistryEntries")) {
        Fail(file, "an attribute registry, not the values of a system");
    }
    const json::value* attributes = root.if_contains("Attributes");
    if (attributes != nullptr && !attributes->is_object()) {
        Fail(file, R"(its "Attributes" is not an object)");
    }
    ValuesInput input;
    for (const auto& [key, value] : attributes != nullptr ? attributes->get_object() : root) {
        const std::string name(key);
        if (value.is_null()) {
            input.Values[name] = std::nullopt;
        } else if (auto read = ReadValue(value)) {
            input.Values[name] = std::move(read);
        } else {
            input.Remarks.push_back(RemarkOnValue(file, name, KindOf(value)));
        }
    }
    return input;
}

ValuesInput ReadValues(const std::string& file)
{
    return ValuesFrom(file, ReadText(file));
}

} // namespace RedfishConfig::App
