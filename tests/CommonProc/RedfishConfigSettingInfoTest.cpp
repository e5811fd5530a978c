#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include "support/LogCapture.h"

#include <boost/json.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace RedfishConfig;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Record = RedfishConfigSettingInfoStru;
using Choices = std::map<std::string, std::string>;

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

template <class Member>
using Column = std::vector<std::pair<std::string, Member Record::*>>;

const Column<bool> flags{
    {"ReadOnly", &Record::ReadOnly},
    {"WriteOnly", &Record::WriteOnly},
    {"Hidden", &Record::Hidden},
    {"GrayOut", &Record::GrayOut},
    {"Immutable", &Record::Immutable},
    {"ResetRequired", &Record::ResetRequired},
    {"IsSystemUniqueProperty", &Record::IsSystemUniqueProperty},
};

const Column<std::optional<std::int64_t>> numbers{
    {"DisplayOrder", &Record::DisplayOrder}, {"LowerBound", &Record::LowerBound},
    {"UpperBound", &Record::UpperBound},     {"MinLength", &Record::MinLength},
    {"MaxLength", &Record::MaxLength},       {"ScalarIncrement", &Record::ScalarIncrement},
};

const Column<std::optional<std::string>> texts{
    {"Type", &Record::Type},
    {"DisplayName", &Record::DisplayName},
    {"AttributeName", &Record::AttributeName},
    {"HelpText", &Record::HelpText},
    {"MenuPath", &Record::MenuPath},
    {"ValueExpression", &Record::ValueExpression},
    {"WarningText", &Record::WarningText},
};

const Column<SettingValue> values{
    {"DefaultValue", &Record::DefaultValue},
    {"CurrentValue", &Record::CurrentValue},
};

/** The keys whose members differ from those of a record with nothing in it. */
std::vector<std::string> FilledKeys(const Record& record)
{
    std::vector<std::string> keys;
    for (const auto& [key, member] : flags) {
        if (record.*member) {
            keys.push_back(key);
        }
    }
    const auto addPresent = [&](const auto& column) {
        for (const auto& [key, member] : column) {
            if ((record.*member).has_value()) {
                keys.push_back(key);
            }
        }
    };
    addPresent(numbers);
    addPresent(texts);
    addPresent(values);
    if (!record.Value.empty()) {
        keys.push_back("Value");
    }
    if (!record.dependencySettings.empty()) {
        keys.push_back("dependencySettings");
    }
    if (!record.expressionMaps.empty()) {
        keys.push_back("expressionMaps");
    }
    return keys;
}

Record Read(const boost::json::value& attribute)
{
    return boost::json::value_to<Record>(attribute);
}

Record ReadText(const std::string& attribute)
{
    return Read(boost::json::parse(attribute));
}

/** Reads an attribute with the one key, whose value is given as JSON text. */
Record ReadKey(const std::string& key, const std::string& json)
{
    return ReadText("{\"" + key + "\":" + json + "}");
}

Choices ReadChoices(const std::string& list)
{
    return ReadKey("Value", list).Value;
}

SettingValue Text(std::string text)
{
    return SettingAlternative(std::in_place_index<0>, std::move(text));
}
SettingValue Integer(std::int64_t number)
{
    return SettingAlternative(std::in_place_index<1>, number);
}
SettingValue Boolean(bool truth)
{
    return SettingAlternative(std::in_place_index<2>, truth);
}

/** Every key of an attribute with a value that its member takes. */
const std::vector<std::pair<std::string, std::string>> keysWithFittingValues{
    {"AttributeName", R"("BootMode")"},
    {"CurrentValue", R"("Legacy")"},
    {"DefaultValue", R"("Uefi")"},
    {"DisplayName", R"("Boot mode")"},
    {"DisplayOrder", "3"},
    {"GrayOut", "true"},
    {"HelpText", R"("Selects how the system boots.")"},
    {"Hidden", "true"},
    {"Immutable", "true"},
    {"IsSystemUniqueProperty", "true"},
    {"LowerBound", "-1"},
    {"MaxLength", "16"},
    {"MenuPath", R"("./Boot")"},
    {"MinLength", "2"},
    {"ReadOnly", "true"},
    {"ResetRequired", "true"},
    {"ScalarIncrement", "5"},
    {"Type", R"("Enumeration")"},
    {"UpperBound", "100"},
    {"Value", R"([{"ValueName":"Uefi","ValueDisplayName":"UEFI mode"}])"},
    {"ValueExpression", R"("[A-Z]+")"},
    {"WarningText", R"("Reboots.")"},
    {"WriteOnly", "true"},
};

std::string InCase(std::string text, int (*fold)(int))
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [fold](char c) { return static_cast<char>(fold(static_cast<unsigned char>(c))); });
    return text;
}

} // namespace

TEST(SettingInfo, OfAnAttributeWithoutKeysHasNothingInIt)
{
    EXPECT_THAT(FilledKeys(Record()), IsEmpty());
    EXPECT_THAT(FilledKeys(ReadText("{}")), IsEmpty());
}

TEST(SettingInfo, TakesAllKeysOfOneAttribute)
{
    ASSERT_EQ(keysWithFittingValues.size(), 23u);
    std::string attribute;
    for (const auto& [key, json] : keysWithFittingValues) {
        attribute += (attribute.empty() ? "{\"" : ",\"") + key + "\":" + json;
    }
    const Record record = ReadText(attribute + "}");
    for (const auto& [key, member] : flags) {
        EXPECT_TRUE(record.*member) << key;
    }
    EXPECT_EQ(record.DisplayOrder, 3);
    EXPECT_EQ(record.LowerBound, -1);
    EXPECT_EQ(record.UpperBound, 100);
    EXPECT_EQ(record.MinLength, 2);
    EXPECT_EQ(record.MaxLength, 16);
    EXPECT_EQ(record.ScalarIncrement, 5);
    EXPECT_EQ(record.Type, "Enumeration");
    EXPECT_EQ(record.DisplayName, "Boot mode");
    EXPECT_EQ(record.AttributeName, "BootMode");
    EXPECT_EQ(record.HelpText, "Selects how the system boots.");
    EXPECT_EQ(record.MenuPath, "./Boot");
    EXPECT_EQ(record.DefaultValue, Text("Uefi"));
    EXPECT_EQ(record.CurrentValue, Text("Legacy"));
    EXPECT_EQ(record.ValueExpression, "[A-Z]+");
    EXPECT_EQ(record.WarningText, "Reboots.");
    EXPECT_EQ(record.Value, (Choices{{"Uefi", "UEFI mode"}}));
    EXPECT_TRUE(record.dependencySettings.empty());
    EXPECT_TRUE(record.expressionMaps.empty());
}

TEST(SettingInfo, EachKeyFillsItsOwnMemberAlone)
{
    for (const auto& [key, json] : keysWithFittingValues) {
        EXPECT_THAT(FilledKeys(ReadKey(key, json)), ElementsAre(key));
    }
}

TEST(SettingInfo, DoesNotFindAKeyInAnotherLetterCase)
{
    for (const auto& [key, json] : keysWithFittingValues) {
        EXPECT_THAT(FilledKeys(ReadKey(InCase(key, std::tolower), json)), IsEmpty()) << key;
        EXPECT_THAT(FilledKeys(ReadKey(InCase(key, std::toupper), json)), IsEmpty()) << key;
    }
}

TEST(SettingInfo, DoesNotTakeOtherKeys)
{
    EXPECT_THAT(
        FilledKeys(ReadText(
            R"({"Id":"x","Oem":{"ReadOnly":true},"dependencySettings":["BootMode"],"expressionMaps":{"Hidden":{}}})")),
        IsEmpty());
}

TEST(SettingInfo, DoesNotTakeKeysWithPointerCharactersForOthers)
{
    EXPECT_THAT(FilledKeys(ReadText(R"({"/ReadOnly":true,"ReadOnly/":true,"~ReadOnly":true,"Read~0Only":true,
                                        "Read~1Only":true,"":{"ReadOnly":true},"Value/0":[{"ValueName":"A"}]})")),
                IsEmpty());
}

TEST(SettingInfo, FlagsTakeOnlyTrueAndFalse)
{
    for (const auto& [key, member] : flags) {
        EXPECT_TRUE(ReadKey(key, "true").*member) << key;
        EXPECT_FALSE(ReadKey(key, "false").*member) << key;
        for (const std::string json :
             {"null", R"("true")", R"("")", "1", "0", "-1", "1.0", "[]", "[true]", "{}", R"({"Value":true})"}) {
            EXPECT_FALSE(ReadKey(key, json).*member) << key << " " << json;
        }
    }
}

TEST(SettingInfo, NumbersTakeWholeNumbersOf64Bits)
{
    const std::vector<std::pair<std::string, std::int64_t>> taken{
        {"5", 5},
        {"-5", -5},
        {"0", 0},
        {"5.0", 5},
        {"-0.0", 0},
        {"1e3", 1000},
        {"1.5e1", 15},
        {"9223372036854775807", largest},
        {"-9223372036854775808", smallest},
        {"9007199254740993", 9007199254740993},
    };
    for (const auto& [key, member] : numbers) {
        for (const auto& [json, expected] : taken) {
            EXPECT_EQ(ReadKey(key, json).*member, expected) << key << " " << json;
        }
        EXPECT_EQ(Read(boost::json::object{{key, std::uint64_t{7}}}).*member, 7) << key;
    }
}

TEST(SettingInfo, NumbersTakeNothingElse)
{
    for (const auto& [key, member] : numbers) {
        for (const std::string json :
             {"null", R"("5")", R"("")", "true", "false", "5.5", "-0.1", "9223372036854775808", "18446744073709551615",
              "9223372036854775808.0", "-9223372036854777856.0", "1e19", "-1e19", "1e300", "[]", "[5]", "{}"}) {
            EXPECT_EQ(ReadKey(key, json).*member, std::nullopt) << key << " " << json;
        }
        for (const double number : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                                    std::numeric_limits<double>::quiet_NaN()}) {
            EXPECT_EQ(Read(boost::json::object{{key, number}}).*member, std::nullopt) << key << " " << number;
        }
    }
}

TEST(SettingInfo, TextsTakeOnlyStrings)
{
    for (const auto& [key, member] : texts) {
        EXPECT_EQ(ReadKey(key, R"("Boot mode")").*member, "Boot mode") << key;
        EXPECT_EQ(ReadKey(key, R"("")").*member, "") << key;
        EXPECT_EQ(ReadKey(key, R"("\u00e4\n\\")").*member, "\xC3\xA4\n\\") << key;
        EXPECT_EQ(ReadKey(key, R"("a\u0000b")").*member, std::string("a\0b", 3)) << key;
        for (const std::string json : {"null", "5", "5.5", "true", "[]", R"(["Boot mode"])", "{}"}) {
            EXPECT_EQ(ReadKey(key, json).*member, std::nullopt) << key << " " << json;
        }
    }
}

TEST(SettingInfo, ValuesTakeTheKindOfTheJson)
{
    const std::vector<std::pair<std::string, SettingValue>> table{
        {R"("Legacy")", Text("Legacy")},
        {R"("")", Text("")},
        {R"("5")", Text("5")},
        {R"("true")", Text("true")},
        {"5", Integer(5)},
        {"-5", Integer(-5)},
        {"0", Integer(0)},
        {"1", Integer(1)},
        {"5.0", Integer(5)},
        {"1e3", Integer(1000)},
        {"9223372036854775807", Integer(largest)},
        {"-9223372036854775808", Integer(smallest)},
        {"true", Boolean(true)},
        {"false", Boolean(false)},
        {"null", std::nullopt},
        {"[]", std::nullopt},
        {R"(["Legacy"])", std::nullopt},
        {"{}", std::nullopt},
        {"5.5", std::nullopt},
        {"9223372036854775808", std::nullopt},
        {"9223372036854775808.0", std::nullopt},
        {"1e300", std::nullopt},
    };
    for (const auto& [key, member] : values) {
        for (const auto& [json, expected] : table) {
            EXPECT_EQ(ReadKey(key, json).*member, expected) << key << " " << json;
        }
        EXPECT_EQ(Read(boost::json::object{{key, std::uint64_t{7}}}).*member, Integer(7)) << key;
    }
}

TEST(SettingInfo, AMistypedKeyLeavesTheOthersAlone)
{
    const Record record = ReadText(R"({"AttributeName":"BootMode","CurrentValue":[],"DefaultValue":{},"DisplayName":7,
        "DisplayOrder":"first","GrayOut":"true","HelpText":{"en":"help"},"Hidden":1,"Immutable":null,
        "IsSystemUniqueProperty":[],"LowerBound":"1","MaxLength":true,"MenuPath":null,"MinLength":1.5,"ReadOnly":true,
        "ResetRequired":0,"ScalarIncrement":{},"Type":false,"UpperBound":10.5,"Value":{"ValueName":"A"},
        "ValueExpression":[],"WarningText":1,"WriteOnly":true})");
    EXPECT_THAT(FilledKeys(record), ElementsAre("ReadOnly", "WriteOnly", "AttributeName"));
    EXPECT_EQ(record.AttributeName, "BootMode");
}

TEST(SettingInfo, ChecksNothing)
{
    const Record record = ReadText(R"({"AttributeName":"","Type":"Colour","LowerBound":9,"UpperBound":1,"MinLength":-1,
                                       "CurrentValue":true,"DefaultValue":5,"ValueExpression":"["})");
    EXPECT_EQ(record.AttributeName, "");
    EXPECT_EQ(record.Type, "Colour");
    EXPECT_EQ(record.LowerBound, 9);
    EXPECT_EQ(record.UpperBound, 1);
    EXPECT_EQ(record.MinLength, -1);
    EXPECT_EQ(record.CurrentValue, Boolean(true));
    EXPECT_EQ(record.DefaultValue, Integer(5));
    EXPECT_EQ(record.ValueExpression, "[");
}

TEST(SettingInfo, DoesNotLogWhatItCannotRead)
{
    const RegistryTest::LogCapture log;
    ReadText(R"({"ReadOnly":"true","LowerBound":"1","HelpText":{},"CurrentValue":[],"Value":[5,{"ValueName":1}]})");
    ReadText("5");
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(SettingInfo, OfAJsonValueThatIsNoObjectHasNothingInIt)
{
    for (const std::string json : {"null", "true", "5", "5.5", R"("ReadOnly")", "[]", R"([{"ReadOnly":true}])"}) {
        Record record;
        EXPECT_NO_THROW(record = ReadText(json)) << json;
        EXPECT_THAT(FilledKeys(record), IsEmpty()) << json;
    }
}

TEST(SettingInfo, ReadsAWholeArrayInOrder)
{
    const auto records = boost::json::value_to<std::vector<Record>>(
        boost::json::parse(R"([{"AttributeName":"B","ReadOnly":true},{},5,{"AttributeName":"A"}])"));
    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(records[0].AttributeName, "B");
    EXPECT_TRUE(records[0].ReadOnly);
    EXPECT_THAT(FilledKeys(records[1]), IsEmpty());
    EXPECT_THAT(FilledKeys(records[2]), IsEmpty());
    EXPECT_EQ(records[3].AttributeName, "A");
    EXPECT_FALSE(records[3].ReadOnly);
    EXPECT_TRUE(boost::json::value_to<std::vector<Record>>(boost::json::parse("[]")).empty());
}

TEST(SettingInfo, DeclaresItsMembersInTheirFixedOrder)
{
    const Record record;
    const std::vector<const void*> members{
        &record.ReadOnly,
        &record.WriteOnly,
        &record.Hidden,
        &record.GrayOut,
        &record.Immutable,
        &record.ResetRequired,
        &record.IsSystemUniqueProperty,
        &record.DisplayOrder,
        &record.LowerBound,
        &record.UpperBound,
        &record.MinLength,
        &record.MaxLength,
        &record.ScalarIncrement,
        &record.Type,
        &record.DisplayName,
        &record.AttributeName,
        &record.HelpText,
        &record.MenuPath,
        &record.DefaultValue,
        &record.CurrentValue,
        &record.ValueExpression,
        &record.WarningText,
        &record.Value,
        &record.dependencySettings,
        &record.expressionMaps,
    };
    ASSERT_EQ(members.size(), 25u);
    EXPECT_TRUE(std::is_sorted(members.begin(), members.end(), std::less<>()));
}

TEST(SettingInfo, IsAValueThatOwnsItsMembers)
{
    static_assert(std::is_copy_constructible_v<Record> && std::is_copy_assignable_v<Record>);
    static_assert(std::is_move_constructible_v<Record> && std::is_move_assignable_v<Record>);
    Record original = ReadText(R"({"AttributeName":"BootMode","Value":[{"ValueName":"A","ValueDisplayName":"X"}]})");
    original.dependencySettings = {"SecureBoot"};
    original.expressionMaps["Hidden"].Formula = "true";
    const Record copy = original;
    Record assigned;
    assigned = original;
    original = Record();
    EXPECT_THAT(FilledKeys(original), IsEmpty());
    for (const Record& each : {copy, std::move(assigned)}) {
        EXPECT_EQ(each.AttributeName, "BootMode");
        EXPECT_EQ(each.Value, (Choices{{"A", "X"}}));
        EXPECT_THAT(each.dependencySettings, ElementsAre("SecureBoot"));
        ASSERT_EQ(each.expressionMaps.size(), 1u);
        EXPECT_EQ(each.expressionMaps.at("Hidden").Formula, "true");
    }
}

TEST(Choices, KeepTheFirstOfANameAndSkipWhatHasNone)
{
    EXPECT_EQ(ReadChoices(R"([{"ValueName":"A","ValueDisplayName":"X"},{"ValueName":"A","ValueDisplayName":"Y"},
                              {"ValueDisplayName":"Z"},{"ValueName":"B"}])"),
              (Choices{{"A", "X"}, {"B", ""}}));
}

TEST(Choices, KeepTheFirstOfANameAlsoWhenItHasNoDisplayName)
{
    EXPECT_EQ(ReadChoices(R"([{"ValueName":"A"},{"ValueName":"A","ValueDisplayName":"X"}])"), (Choices{{"A", ""}}));
}

TEST(Choices, AreReadWhateverTheOrderOfTheirKeys)
{
    EXPECT_EQ(ReadChoices(R"([{"ValueDisplayName":"X","Other":1,"ValueName":"A"}])"), (Choices{{"A", "X"}}));
}

TEST(Choices, StandInByteWiseOrderAndDifferByLetterCase)
{
    const Choices choices = ReadChoices(R"([{"ValueName":"a"},{"ValueName":"B"},{"ValueName":"A"},{"ValueName":"10"},
                                            {"ValueName":"9"},{"ValueName":""},{"ValueName":"\u00e4"}])");
    std::vector<std::string> names;
    for (const auto& [name, displayName] : choices) {
        names.push_back(name);
        EXPECT_EQ(displayName, "") << name;
    }
    EXPECT_THAT(names, ElementsAre("", "10", "9", "A", "B", "a", "\xC3\xA4"));
}

TEST(Choices, TreatAMistypedMemberAsMissing)
{
    for (const std::string json : {"null", "5", "true", "[]", "{}", R"(["A"])"}) {
        EXPECT_EQ(ReadChoices(R"([{"ValueName":)" + json + R"(,"ValueDisplayName":"X"},{"ValueName":"B"}])"),
                  (Choices{{"B", ""}}))
            << json;
        EXPECT_EQ(ReadChoices(R"([{"ValueName":"A","ValueDisplayName":)" + json + "}]"), (Choices{{"A", ""}})) << json;
    }
}

TEST(Choices, SkipEntriesThatAreNoObjects)
{
    EXPECT_EQ(ReadChoices(R"(["A",5,null,true,[],{},[{"ValueName":"C"}],{"ValueName":"B","ValueDisplayName":"X"}])"),
              (Choices{{"B", "X"}}));
}

TEST(Choices, AreEmptyWhenTheListIsNoArray)
{
    for (const std::string json : {"null", "5", "true", R"("A")", "[]", "{}", R"({"ValueName":"A"})"}) {
        EXPECT_EQ(ReadChoices(json), Choices()) << json;
    }
}

TEST(Choices, DoNotFindAKeyInAnotherLetterCase)
{
    EXPECT_EQ(ReadChoices(R"([{"valuename":"A"},{"VALUENAME":"B"},{"ValueName":"C","valuedisplayname":"X"}])"),
              (Choices{{"C", ""}}));
}

TEST(ValueEntry, ReadsItsTwoTexts)
{
    using Entry = RedfishConfigValueEntryStru;
    struct Row {
        std::string Json;
        std::optional<std::string> Name;
        std::optional<std::string> DisplayName;
    };
    const std::vector<Row> table{
        {R"({"ValueName":"A","ValueDisplayName":"X"})", "A", "X"},
        {R"({"ValueName":"","ValueDisplayName":""})", "", ""},
        {R"({"ValueName":"A"})", "A", std::nullopt},
        {R"({"ValueDisplayName":"X"})", std::nullopt, "X"},
        {R"({"ValueName":5,"ValueDisplayName":"X"})", std::nullopt, "X"},
        {R"({"ValueName":"A","ValueDisplayName":null})", "A", std::nullopt},
        {R"({"valueName":"A","Valuedisplayname":"X"})", std::nullopt, std::nullopt},
        {"{}", std::nullopt, std::nullopt},
        {"null", std::nullopt, std::nullopt},
        {R"("A")", std::nullopt, std::nullopt},
        {R"(["A","X"])", std::nullopt, std::nullopt},
    };
    for (const Row& row : table) {
        const Entry entry = boost::json::value_to<Entry>(boost::json::parse(row.Json));
        EXPECT_EQ(entry.ValueName, row.Name) << row.Json;
        EXPECT_EQ(entry.ValueDisplayName, row.DisplayName) << row.Json;
    }
    EXPECT_EQ(Entry().ValueName, std::nullopt);
    EXPECT_EQ(Entry().ValueDisplayName, std::nullopt);
}

TEST(ConfigOptions, AreAllOffByDefault)
{
    const Config_Options options;
    EXPECT_FALSE(options.ShowHexValue);
    EXPECT_FALSE(options.IgnoreProtected);
    EXPECT_EQ(options.Reserved, 0);
}

TEST(ConfigOptions, DeclareTheirMembersInTheirFixedOrder)
{
    static_assert(alignof(Config_Options) == 4);
    static_assert(std::is_same_v<decltype(Config_Options::Reserved), std::int32_t>);
    const Config_Options options{true, false, -7};
    EXPECT_TRUE(options.ShowHexValue);
    EXPECT_FALSE(options.IgnoreProtected);
    EXPECT_EQ(options.Reserved, -7);
}

TEST(PropertyExpression, IsUnusableAndEmptyByDefault)
{
    const PropertyExpression expression;
    EXPECT_FALSE(expression.MapToValue.has_value());
    EXPECT_EQ(expression.Formula, "");
    EXPECT_EQ(expression.DisplayText, "");
    EXPECT_FALSE(expression.Valid);
    EXPECT_TRUE(expression.Rules.empty());
}
