#include "app/Input.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using namespace RedfishConfig::App;
using RedfishConfig::SettingAlternative;

/** A file that lives as long as the test. */
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& text)
        : m_Path(std::filesystem::temp_directory_path() / ("redfishconfig-test-" + std::to_string(getpid())))
    {
        std::ofstream(m_Path, std::ios::binary) << text;
    }
    ~TemporaryFile() { std::filesystem::remove(m_Path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string Name() const { return m_Path.string(); }

private:
    std::filesystem::path m_Path;
};

template <class Read>
std::string ComplaintOf(Read read, const std::string& text)
{
    const TemporaryFile file(text);
    try {
        read(file.Name());
    } catch (const InputError& error) {
        const std::string message = error.what();
        EXPECT_EQ(message.substr(0, file.Name().size() + 2), file.Name() + ": ");
        return message.substr(file.Name().size() + 2);
    }
    return "no complaint";
}

TEST(ReadRegistry, KeepsTheTextAndTheDocument)
{
    const std::string text = R"({"Id": "X", "RegistryEntries": {"Attributes": []}})";
    const TemporaryFile file(text);
    const RegistryInput input = ReadRegistry(file.Name());
    EXPECT_EQ(input.File, file.Name());
    EXPECT_EQ(input.Text, text);
    EXPECT_EQ(input.Document.at("Id"), "X");
}

TEST(ReadRegistry, DropsAByteOrderMark)
{
    const TemporaryFile file("\xEF\xBB\xBF{\"RegistryEntries\": {\"Attributes\": []}}");
    EXPECT_EQ(ReadRegistry(file.Name()).Text, "{\"RegistryEntries\": {\"Attributes\": []}}");
}

TEST(ReadRegistry, RefusesEverythingElse)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", "the file is empty"},
        {" \r\n\t", "the file is empty"},
        {"\xEF\xBB\xBF", "the file is empty"},
        {"{\"a\": }", "not JSON: syntax error at line 1, column 7"},
        {"{\n\"a\":\n", "not JSON: incomplete JSON at line 3, column 1"},
        {"{} x", "not JSON: extra data at line 1, column 4"},
        {"\"\xff\"", "not JSON: syntax error at line 1, column 2"},
        {"[]", "not a JSON object"},
        {"5", "not a JSON object"},
        {"{}", "not an attribute registry: it has no object \"RegistryEntries\""},
        {"{\"RegistryEntries\": []}", "not an attribute registry: it has no object \"RegistryEntries\""},
        {"{\"RegistryEntries\": {}}", "not an attribute registry: its \"RegistryEntries\" has no list \"Attributes\""},
        {"{\"RegistryEntries\": {\"Attributes\": {}}}",
         "not an attribute registry: its \"RegistryEntries\" has no list \"Attributes\""},
    };
    for (const auto& [text, complaint] : cases) {
        EXPECT_EQ(ComplaintOf(ReadRegistry, text), complaint) << text;
    }
}

TEST(ReadRegistry, NamesAFileThatCannotBeRead)
{
    EXPECT_THROW(
        {
            try {
                ReadRegistry("/nowhere/registry.json");
            } catch (const InputError& error) {
                EXPECT_STREQ(error.what(), "/nowhere/registry.json: No such file or directory");
                throw;
            }
        },
        InputError);
}

TEST(ReadRegistry, RefusesAFileThatIsTooLarge)
{
    EXPECT_EQ(ComplaintOf(ReadRegistry, std::string(largestFile + 1, ' ')), "larger than 64 MiB");
    EXPECT_EQ(ComplaintOf(ReadRegistry, std::string(largestFile, ' ')), "the file is empty");
}

ValuesInput ValuesFrom(const std::string& text)
{
    const TemporaryFile file(text);
    ValuesInput input = ReadValues(file.Name());
    for (std::string& remark : input.Remarks) {
        remark.erase(0, file.Name().size() + 2);
    }
    return input;
}

TEST(ReadValues, ABiosResourceOrABareObject)
{
    for (const char* text : {R"({"Id": "BIOS", "Attributes": {"A": "x"}})", R"({"A": "x"})"}) {
        const ValuesInput input = ValuesFrom(text);
        EXPECT_EQ(input.Values.size(), 1U);
        EXPECT_EQ(input.Values.at("a"), SettingAlternative("x")) << "letter case does not count";
    }
    EXPECT_TRUE(ValuesFrom("{}").Values.empty());
}

TEST(ReadValues, EveryKindOfValue)
{
    const ValuesInput input = ValuesFrom(R"({"Text": "", "Zero": "a\u0000b", "Small": -9223372036854775808,
        "Large": 9223372036854775807, "Whole": 5.0, "Yes": true, "None": null})");
    EXPECT_EQ(input.Values.at("Text"), SettingAlternative(""));
    EXPECT_EQ(input.Values.at("Zero"), SettingAlternative(std::string("a\0b", 3)));
    EXPECT_EQ(input.Values.at("Small"), SettingAlternative(INT64_MIN));
    EXPECT_EQ(input.Values.at("Large"), SettingAlternative(INT64_MAX));
    EXPECT_EQ(input.Values.at("Whole"), SettingAlternative(std::int64_t{5}));
    EXPECT_EQ(input.Values.at("Yes"), SettingAlternative(true));
    EXPECT_EQ(input.Values.at("None"), std::nullopt);
    EXPECT_TRUE(input.Remarks.empty());
}

TEST(ReadValues, LeavesOutWhatNoSettingCanHoldAndNamesIt)
{
    const ValuesInput input =
        ValuesFrom(R"({"A": [1], "B": {"C": 1}, "D": 0.5, "E": 9223372036854775808, "F": 1e300, "G": "kept"})");
    EXPECT_EQ(input.Values.size(), 1U);
    EXPECT_EQ(input.Remarks,
              (std::vector<std::string>{"the value of A is a list and is left out",
                                        "the value of B is an object and is left out",
                                        "the value of D is not a whole number of 64 signed bits and is left out",
                                        "the value of E is a number that does not fit 64 signed bits and is left out",
                                        "the value of F is not a whole number of 64 signed bits and is left out"}));
}

TEST(ReadValues, RefusesEverythingElse)
{
    EXPECT_EQ(ComplaintOf(ReadValues, ""), "the file is empty");
    EXPECT_EQ(ComplaintOf(ReadValues, "[]"), "not a JSON object");
    EXPECT_EQ(ComplaintOf(ReadValues, "{\"Attributes\": null}"), "its \"Attributes\" is not an object");
    EXPECT_EQ(ComplaintOf(ReadValues, "{\"RegistryEntries\": {}}"),
              "an attribute registry, not the values of a system");
}

} // namespace
