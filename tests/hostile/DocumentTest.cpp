#include "fuzz/CheckedManager.h"
#include "support/RegistryBuilder.h"
#include "support/Times.h"

#include <gtest/gtest.h>

#include <boost/json.hpp>

#include <functional>
#include <string>
#include <vector>

using namespace RedfishConfig;
using namespace RegistryTest;
namespace json = boost::json;

// Registries that are no registries, or hold what no registry should.

namespace {

using Texts = std::map<std::string, std::string>;

json::value SmallRegistry()
{
    return RegistryBuilder()
        .Attribute("Mode", "Enumeration",
                   {{"Value", {RegistryBuilder::Choice("On", "Switched on"), RegistryBuilder::Choice("Off", "Off")}},
                    {"CurrentValue", "On"},
                    {"DefaultValue", "Off"},
                    {"HelpText", "Whether."},
                    {"MenuPath", "./Menu/Sub/Mode"},
                    {"ReadOnly", false}})
        .Attribute("Count", "Integer",
                   {{"CurrentValue", 4}, {"LowerBound", 0}, {"UpperBound", 40}, {"ScalarIncrement", 2}})
        .Attribute("Label", "String",
                   {{"CurrentValue", "a"}, {"MinLength", 1}, {"MaxLength", 8}, {"ValueExpression", "[a-z]*"}})
        .Rule("Label", "Hidden", true, {{"Mode", "EQU", "On", "AND"}, {"Count", "NEQ", 6}})
        .Json();
}

/** All answers; holds every one to what is promised. */
std::string Answers(std::string text)
{
    std::string record;
    RedfishConfigSettingManager all(text, false, {});
    Fuzz::CheckedManager checkedAll(all, record);
    checkedAll.EverythingOfAll();
    for (const std::string& name : checkedAll.AllProperties()) {
        checkedAll.Everything(name);
    }
    RedfishConfigSettingManager single(text, false, {});
    Fuzz::CheckedManager checkedSingle(single, record);
    for (const char* name : {"Mode", "Count", "Label"}) {
        checkedSingle.Everything(name);
    }
    return record;
}

int CodeOf(std::string text)
{
    RedfishConfigSettingManager manager(text, false, {});
    Texts values{{"kept", "as it is"}};
    const int code = manager.QueryGroupSettingValues(values);
    EXPECT_EQ(values.count("kept"), code == RESULT_HTTP_RESPONSE_PARSE_FAILED ? 1u : 0u);
    return code;
}

RedfishConfigSettingInfoStru RecordOf(std::string text, const std::string& name)
{
    RedfishConfigSettingManager manager(text, false, {});
    RedfishConfigSettingInfoStru record;
    EXPECT_EQ(manager.GetSettingProperties(name, record), RESULT_SUCCEED) << text;
    return record;
}

/** The registry with one attribute of these members, which are JSON as it is written. */
std::string WithMembers(const std::string& members)
{
    return R"({"RegistryEntries": {"Attributes": [{"AttributeName": "A", "Type": "Integer", )" + members + "}]}}";
}

TEST(DocumentsCutOff, AtAnyByteCannotBeRead)
{
    const std::string whole = json::serialize(SmallRegistry());
    EXPECT_EQ(CodeOf(whole), RESULT_GROUP_PARTIAL_FAILURE) << "a hidden setting";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        ASSERT_EQ(CodeOf(cut), RESULT_HTTP_RESPONSE_PARSE_FAILED) << cut;
        std::string text = cut;
        RedfishConfigSettingManager manager(text, false, {});
        std::string value = "untouched";
        ASSERT_EQ(manager.QuerySettingValue("Mode", value), RESULT_HTTP_RESPONSE_PARSE_FAILED) << cut;
        ASSERT_EQ(value, "untouched");
    }
}

TEST(DocumentsCutOff, AtTheFrontOrWithMoreBehindCannotBeRead)
{
    const std::string whole = json::serialize(SmallRegistry());
    for (const std::size_t begin : {1U, 2U, 10U, 100U}) {
        EXPECT_EQ(CodeOf(whole.substr(begin)), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    }
    for (const char* more : {"x", "{}", ",", "]", "}"}) {
        EXPECT_EQ(CodeOf(whole + more), RESULT_HTTP_RESPONSE_PARSE_FAILED) << more;
    }
    EXPECT_EQ(CodeOf(whole + std::string(1, '\0')), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(CodeOf(" \t\r\n" + whole + " \t\r\n"), RESULT_GROUP_PARTIAL_FAILURE);
}

const json::value& AnyKind(std::size_t index)
{
    static const std::vector<json::value> kinds{nullptr,
                                                true,
                                                false,
                                                -1,
                                                json::value(1.5),
                                                "text",
                                                "",
                                                json::array{},
                                                json::array{1},
                                                json::object{},
                                                json::object{{"a", 1}}};
    return kinds.at(index);
}
constexpr std::size_t kindCount = 11;

/** Calls @p visit with every place of a document in turn. */
void ForEachPlace(json::value& place, const std::function<void(json::value&)>& visit)
{
    visit(place);
    if (place.is_object()) {
        for (auto& member : place.get_object()) {
            ForEachPlace(member.value(), visit);
        }
    } else if (place.is_array()) {
        for (json::value& element : place.get_array()) {
            ForEachPlace(element, visit);
        }
    }
}

TEST(DocumentsOfWrongKinds, GetAnAnswerFromEveryOperation)
{
    json::value registry = SmallRegistry();
    std::size_t documents = 0;
    ForEachPlace(registry, [&](json::value& place) {
        const json::value right = place;
        for (std::size_t kind = 0; kind < kindCount; ++kind) {
            place = AnyKind(kind);
            const std::string text = json::serialize(registry);
            const std::string answers = Answers(text);
            EXPECT_EQ(Answers(text), answers) << text;
            ++documents;
        }
        place = right;
    });
    EXPECT_GT(documents, 500u);
}

TEST(DocumentsOfWrongKinds, LoseOnlyTheMemberThatIsWrong)
{
    json::value registry = SmallRegistry();
    json::object& mode = registry.at("RegistryEntries").at("Attributes").at(0).as_object();
    const auto names = mode; // the keys
    for (const auto& member : names) {
        if (member.key() == "AttributeName" || member.key() == "Type") {
            continue;
        }
        mode[member.key()] = json::object{{"a", 1}};
        const RedfishConfigSettingInfoStru record = RecordOf(json::serialize(registry), "Mode");
        EXPECT_EQ(record.Value.empty(), member.key() == "Value");
        EXPECT_EQ(record.CurrentValue.has_value(), member.key() != "CurrentValue");
        EXPECT_EQ(record.DefaultValue.has_value(), member.key() != "DefaultValue");
        EXPECT_EQ(record.HelpText.has_value(), member.key() != "HelpText");
        EXPECT_EQ(record.MenuPath.has_value(), member.key() != "MenuPath");
        EXPECT_FALSE(record.ReadOnly);
        mode[member.key()] = member.value();
    }
}

TEST(DocumentsOfWrongKinds, AtTheTopAreUnreadable)
{
    for (const char* text : {"", " ", "null", "true", "0", "\"\"", "[]", "{}", R"({"RegistryEntries": []})",
                             R"({"RegistryEntries": {"Attributes": {}}})", R"({"RegistryEntries": null})",
                             R"({"RegistryEntries": {"Attributes": [], "Dependencies": {}}})"}) {
        EXPECT_EQ(CodeOf(text), RESULT_HTTP_RESPONSE_PARSE_FAILED) << text;
    }
    EXPECT_EQ(CodeOf(R"({"RegistryEntries": {"Attributes": []}})"), RESULT_SUCCEED);
}

TEST(KeysThatStandTwice, CountWithTheirLastValue)
{
    EXPECT_EQ(RecordOf(WithMembers(R"("CurrentValue": 1, "CurrentValue": 2)"), "A").CurrentValue,
              SettingValue(std::int64_t(2)));
    EXPECT_EQ(RecordOf(WithMembers(R"("AttributeName": "B")"), "B").AttributeName, "B");
    EXPECT_EQ(CodeOf(R"({"RegistryEntries": {"Attributes": []}, "RegistryEntries": 1})"),
              RESULT_HTTP_RESPONSE_PARSE_FAILED);
}

TEST(NumbersBeyond64Bits, AreNoNumbersOfSettings)
{
    for (const char* number :
         {"9223372036854775808", "18446744073709551615", "18446744073709551616", "-9223372036854775809", "1e19",
          "-1e19", "1e308", "0.5", "1e-1", "123456789012345678901234567890"}) {
        const RedfishConfigSettingInfoStru record =
            RecordOf(WithMembers("\"LowerBound\": " + std::string(number) + ", \"CurrentValue\": " + number), "A");
        EXPECT_EQ(record.LowerBound, std::nullopt) << number;
        EXPECT_EQ(record.CurrentValue, std::nullopt) << number;
    }
    for (const char* number : {"1e3", "1000.0", "1000", "0.1e4"}) {
        const RedfishConfigSettingInfoStru record =
            RecordOf(WithMembers("\"LowerBound\": " + std::string(number)), "A");
        EXPECT_EQ(record.LowerBound, std::int64_t(1000)) << number;
    }
}

TEST(NumbersThatAreNone, MakeADocumentUnreadableOrStayTexts)
{
    for (const char* number :
         {"NaN", "nan", "Infinity", "-Infinity", "inf", "+1", "01", "1.", ".5", "0x1", "1e", "--1"}) {
        EXPECT_EQ(CodeOf(WithMembers("\"LowerBound\": " + std::string(number))), RESULT_HTTP_RESPONSE_PARSE_FAILED)
            << number;
    }
    for (const char* text : {"NaN", "Infinity", "-Infinity", "1e400"}) {
        const RedfishConfigSettingInfoStru record = RecordOf(
            WithMembers("\"UpperBound\": \"" + std::string(text) + "\", \"CurrentValue\": \"" + text + '"'), "A");
        EXPECT_EQ(record.UpperBound, std::nullopt) << text;
        EXPECT_EQ(record.CurrentValue, SettingValue(std::string(text)));
    }
}

std::string Nested(std::size_t depth, const char* open, const char* close)
{
    std::string text = R"({"Extra": )";
    for (std::size_t level = 1; level < depth; ++level) {
        text += open;
    }
    text += "0";
    for (std::size_t level = 1; level < depth; ++level) {
        text += close;
    }
    return text + R"(, "RegistryEntries": {"Attributes": []}})";
}

TEST(DeepNesting, IsReadUpToALimitAndEndsNoStack)
{
    EXPECT_EQ(CodeOf(Nested(32, "[", "]")), RESULT_SUCCEED);
    EXPECT_EQ(CodeOf(Nested(32, R"({"a":)", "}")), RESULT_SUCCEED);
    for (const std::size_t depth : {33U, 1000U, 1000000U}) {
        EXPECT_EQ(CodeOf(Nested(depth, "[", "]")), RESULT_HTTP_RESPONSE_PARSE_FAILED) << depth;
        EXPECT_EQ(CodeOf(Nested(depth, R"({"a":)", "}")), RESULT_HTTP_RESPONSE_PARSE_FAILED) << depth;
    }
    const std::string parentheses(1000000, '(');
    EXPECT_THROW(RedfishConfigExpression().Calculate(parentheses + "A==A"), std::string);
    EXPECT_TRUE(RedfishConfigExpression().Calculate(std::string(20000, '(') + "A==A" + std::string(20000, ')')));
}

TEST(LargeDocuments, OfAMillionAttributesOrRulesAreRefused)
{
    EXPECT_EQ(CodeOf(R"({"RegistryEntries": {"Attributes": [)" +
                     Times(1000000, R"({"AttributeName":"A","Type":"String"},)") + "{}]}}"),
              RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_EQ(CodeOf(R"({"RegistryEntries": {"Attributes": [], "Dependencies": [)" +
                     Times(1000000, R"({"Dependency":{}},)") + "{}]}}"),
              RESULT_HTTP_RESPONSE_PARSE_FAILED);
}

TEST(LargeDocuments, OfOneNameAHundredThousandTimesHaveOneSetting)
{
    std::string text = R"({"RegistryEntries": {"Attributes": [)" +
                       Times(100000, R"({"AttributeName":"A","Type":"Integer","CurrentValue":1},)") +
                       R"({"AttributeName":"a","Type":"Boolean","CurrentValue":true}]}})";
    RedfishConfigSettingManager manager(text, false, {});
    Texts values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (Texts{{"A", "true"}}));
}

TEST(LargeDocuments, OfManyChoicesAcceptTheLast)
{
    std::string choices;
    for (int choice = 0; choice < 300000; ++choice) {
        choices += R"({"ValueName":"C)" + std::to_string(choice) + R"("},)";
    }
    std::string text =
        R"({"RegistryEntries": {"Attributes": [{"AttributeName": "A", "Type": "Enumeration", "Value": [)" + choices +
        R"({"ValueName": "Last", "ValueDisplayName": "The last"}]}]}})";
    RedfishConfigSettingManager manager(text, false, {});
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("A", "the LAST", patch, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patch, "\"Last\"");
}

TEST(LargeDocuments, OfALongMenuPathNameItsMenu)
{
    std::string text =
        RegistryBuilder().Attribute("A", "String", {{"MenuPath", "./Menu/Sub" + Times(1000000, "/")}}).Text();
    RedfishConfigSettingManager manager(text, false, {});
    std::map<std::string, std::vector<std::string>> groups;
    manager.GetGroupList(groups);
    EXPECT_EQ(groups, (std::map<std::string, std::vector<std::string>>{{"Menu", {"Sub"}}}));
}

TEST(LargeDocuments, OfRulesInACircleEnd)
{
    RegistryBuilder registry;
    const int settings = 300;
    for (int number = 0; number < settings; ++number) {
        const std::string next = "S" + std::to_string((number + 1) % settings);
        registry.Attribute("S" + std::to_string(number), "String", {{"CurrentValue", next + ".CurrentValue"}});
        registry.Rule("S" + std::to_string(number), "Hidden", true, {{next, "EQU", "x"}});
    }
    std::string text = registry.Text();
    RedfishConfigSettingManager manager(text, false, {});
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_EQ(status.size(), std::size_t(settings));
}

} // namespace
