#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfig.h>

#include <gtest/gtest.h>

#include <string>

using namespace RedfishConfig;
using namespace RegistryTest;

// Names and values that are not what names and values usually are.

namespace {

const std::string zeroInside("A\0B", 3);

RedfishConfigSettingManager ManagerOf(const RegistryBuilder& registry, const SettingValueMap& values = {})
{
    std::string text = registry.Text();
    SettingValueMap copy = values;
    return RedfishConfigSettingManager(text, copy, false, {});
}

std::string ValueOf(RedfishConfigSettingManager manager, const std::string& name)
{
    std::string value;
    const RedfishConfigResult result = manager.QuerySettingValue(name, value);
    return result == RESULT_SUCCEED ? value : "failed: " + result.ErrorMsg();
}

/** The read-only state of a setting "Target" under one rule that tests a setting of that name and value. */
PropertyState Tested(const std::string& name, const std::string& value, const Term& term)
{
    auto manager = ManagerOf(RegistryBuilder()
                                 .Attribute(name, "String", {{"CurrentValue", value}})
                                 .Attribute("Target", "Boolean")
                                 .Rule("Target", "ReadOnly", true, {term}));
    SettingStatus status;
    EXPECT_EQ(manager.QuerySettingStatus("Target", status), RESULT_SUCCEED);
    return status.ReadOnly;
}

TEST(NamesBeyondAscii, AreFoldedInTheirAsciiLettersOnly)
{
    auto manager = ManagerOf(RegistryBuilder().Attribute("Größe", "String", {{"CurrentValue", "1"}}));
    EXPECT_EQ(ValueOf(manager, "GRößE"), "1");
    EXPECT_EQ(ValueOf(manager, "GRÖßE"), "failed: Unable to find the setting GRÖßE.");
    EXPECT_EQ(ValueOf(manager, "Groesse"), "failed: Unable to find the setting Groesse.");
}

TEST(NamesBeyondAscii, AreDifferentSettingsWhenTheyDifferInSuchALetter)
{
    auto manager = ManagerOf(RegistryBuilder()
                                 .Attribute("É", "String", {{"CurrentValue", "capital"}})
                                 .Attribute("é", "String", {{"CurrentValue", "small"}}));
    std::map<std::string, std::string> values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (std::map<std::string, std::string>{{"É", "capital"}, {"é", "small"}}));
}

TEST(BytesAbove127, AreOrderedAsBytesAndNotFolded)
{
    const CaseInsensitiveComparator before;
    EXPECT_TRUE(before("z", "\x80"));
    EXPECT_TRUE(before("\xc9", "\xe9"));
    EXPECT_FALSE(before("\xe9", "\xc9"));
    EXPECT_FALSE(before("\xff", "\xff"));
    EXPECT_TRUE(before("\x7f", "\x80"));
}

TEST(BytesAbove127, AreNoLettersOfTruth)
{
    SettingValue value = true;
    EXPECT_TRUE(TransferStringToOptionalVar(value, "tr\xfc"
                                                   "e"));
    EXPECT_EQ(std::get<bool>(*value), false);
    EXPECT_FALSE(isHexString("0x\xff"));
    EXPECT_EQ(HexToDec("\xff"), "0");
}

TEST(InvalidUtf8, InARegistryMakesItUnreadable)
{
    for (const char* bytes : {"\x80", "\xff", "\xc3", "\xc3(", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xc0\x80"}) {
        std::string text = R"({"RegistryEntries": {"Attributes": [{"AttributeName": "A)" + std::string(bytes) +
                           R"(", "Type": "String"}]}})";
        RedfishConfigSettingManager manager(text, false, {});
        std::map<std::string, std::string> values{{"kept", "as it is"}};
        EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_HTTP_RESPONSE_PARSE_FAILED) << text;
        EXPECT_EQ(values.size(), 1u);
        EXPECT_EQ(ValueOf(manager, "A"), "failed: ") << text;
    }
}

TEST(InvalidUtf8, InACallersValueIsKeptByteByByte)
{
    const std::string bytes = "\xff\xc3(\x80";
    auto manager = ManagerOf(RegistryBuilder().Attribute("A", "String"),
                             {{"A", SettingValue(bytes)}, {"\xff", SettingValue(true)}});
    EXPECT_EQ(ValueOf(manager, "A"), bytes);
    EXPECT_EQ(ValueOf(manager, "\xff"), "failed: Unable to find the setting \xff.");
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("A", bytes, patch, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patch, '"' + bytes + '"');
}

TEST(ZeroBytes, BelongToNamesAndValues)
{
    auto manager = ManagerOf(RegistryBuilder()
                                 .Attribute("A", "String", {{"CurrentValue", "short"}})
                                 .Attribute(zeroInside, "String", {{"CurrentValue", zeroInside + "!"}}));
    EXPECT_EQ(ValueOf(manager, "A"), "short");
    EXPECT_EQ(ValueOf(manager, std::string("a\0b", 3)), zeroInside + "!");
    EXPECT_EQ(ValueOf(manager, std::string("A\0", 2)),
              "failed: Unable to find the setting " + std::string("A\0", 2) + ".");
}

TEST(ZeroBytes, AreComparedInFormulasAndCountInLengths)
{
    EXPECT_TRUE(Tested(zeroInside, zeroInside, {zeroInside, "EQU", boost::json::value(zeroInside)}).Value);
    EXPECT_FALSE(Tested(zeroInside, "A", {zeroInside, "EQU", boost::json::value(zeroInside)}).Value);
    auto manager = ManagerOf(RegistryBuilder().Attribute("A", "String", {{"MaxLength", 3}}));
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("A", zeroInside, patch, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patch, '"' + zeroInside + '"');
    EXPECT_EQ(manager.PreparePatchContext("A", zeroInside + '\0', patch, FILTER_PATCH), RESULT_NEW_VALUE_INVALID);
}

TEST(ZeroBytes, EndNoNumberAndNoPattern)
{
    auto manager = ManagerOf(
        RegistryBuilder().Attribute("N", "Integer").Attribute("S", "String", {{"ValueExpression", "[a-z]*"}}));
    std::string patch = "untouched";
    EXPECT_EQ(manager.PreparePatchContext("N", std::string("5\0", 2), patch, FILTER_PATCH), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(manager.PreparePatchContext("S", std::string("a\0b", 3), patch, FILTER_PATCH), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(patch, "untouched");
}

TEST(EmptyNames, NameNoSetting)
{
    auto manager = ManagerOf(RegistryBuilder()
                                 .Attribute("", "String", {{"CurrentValue", "nobody's"}})
                                 .Attribute("A", "String", {{"CurrentValue", "a"}})
                                 .Rule("", "Hidden", true, {{"A", "EQU", "a"}})
                                 .Rule("A", "Hidden", true, {{"", "EQU", "nobody's"}}));
    std::map<std::string, std::string> values;
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_SUCCEED);
    EXPECT_EQ(values, (std::map<std::string, std::string>{{"A", "a"}}));
    EXPECT_EQ(ValueOf(manager, ""), "failed: Unable to find the setting .");
    std::map<std::string, std::string> patches;
    EXPECT_EQ(manager.PreparePatchContext({{"", "x"}}, patches, FILTER_PATCH), RESULT_GROUP_PARTIAL_FAILURE);
    EXPECT_EQ(manager.GetError().at(0), RESULT_INTERNAL_ERROR) << "the empty name generates all settings, and is none";
}

TEST(LongNamesAndValues, AreNamesAndValues)
{
    const std::string name(1000000, 'n');
    const std::string value(1000000, 'v');
    auto manager = ManagerOf(RegistryBuilder().Attribute(name, "String", {{"CurrentValue", value}}));
    EXPECT_EQ(ValueOf(manager, std::string(name.size(), 'N')), value);
    EXPECT_EQ(ValueOf(manager, name + "n").size(),
              name.size() + std::string("failed: Unable to find the setting n.").size());
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext(name, value, patch, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patch.size(), value.size() + 2);
}

TEST(LongNamesAndValues, MakeARuleThatCannotBeCalculated)
{
    const std::string name(1000000, 'n');
    const PropertyState byName = Tested(name, "v", {name, "EQU", "v"});
    EXPECT_TRUE(byName.Value);
    const PropertyState byValue = Tested("A", std::string(1000000, 'v'), {"A", "EQU", "v"});
    EXPECT_TRUE(byValue.Value);
    EXPECT_EQ(byValue.Reason, "the setting is read only duo to dependency calculate error.");
}

TEST(NamesThatAreKeys, AreReplacedWhereverTheyOccur)
{
    // "A.CurrentValue" is a name here, and what it stands for in a formula is the value of A
    auto manager = ManagerOf(RegistryBuilder()
                                 .Attribute("A", "String", {{"CurrentValue", "x"}})
                                 .Attribute("A.CurrentValue", "String", {{"CurrentValue", "y"}})
                                 .Attribute("Target", "Boolean")
                                 .Rule("Target", "ReadOnly", true, {{"A.CurrentValue", "EQU", "x.CurrentValue"}}));
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_TRUE(status.at("Target").ReadOnly.Value) << "x.CurrentValue on both sides";
    EXPECT_EQ(ValueOf(manager, "A.CurrentValue"), "y");
}

TEST(NamesThatAreOperators, AreReplacedBeforeTheyAreCalculated)
{
    for (const char* name : {"==", "&&", "||", "(", ")", "!", "<", "true", "A==A"}) {
        EXPECT_TRUE(Tested(name, "x", {name, "EQU", "x"}).Value) << name;
        EXPECT_EQ(Tested(name, "x", {name, "EQU", "x"}).Reason,
                  "the setting is read only due to the following expression: ((" + std::string(name) + "==x))");
        EXPECT_FALSE(Tested(name, "x", {name, "EQU", "y"}).Value) << name;
        EXPECT_EQ(Tested(name, "x", {name, "EQU", "y"}).Reason,
                  "the setting is read only if the result of the following expression is true: ((" + std::string(name) +
                      "==y))");
    }
}

TEST(ValuesThatAreOperators, AreReadAsOperators)
{
    // values go into formulas without quotes; rules of real systems are written for that
    EXPECT_TRUE(Tested("A", "y==y)||(y", {"A", "EQU", "y"}).Value);
    EXPECT_EQ(Tested("A", "y==y)||(y", {"A", "EQU", "y"}).Reason,
              "the setting is read only due to the following expression: ((A==y))");
    for (const char* value : {"==", "&&", "(", "||", "A&&B"}) {
        const PropertyState state = Tested("A", value, {"A", "EQU", "y"});
        EXPECT_TRUE(state.Value) << value;
        EXPECT_EQ(state.Reason, "the setting is read only duo to dependency calculate error.") << value;
    }
}

TEST(ValuesThatAreKeys, AreReplacedByKeysThatFollowInOrder)
{
    const auto readOnly = [](const char* ofA, const char* ofB) {
        auto manager = ManagerOf(RegistryBuilder()
                                     .Attribute("A", "String", {{"CurrentValue", ofA}})
                                     .Attribute("B", "String", {{"CurrentValue", ofB}})
                                     .Attribute("Target", "Boolean")
                                     .Rule("Target", "ReadOnly", true, {{"A", "EQU", "x", "AND"}, {"B", "NEQ", "y"}}));
        SettingStatus status;
        EXPECT_EQ(manager.QuerySettingStatus("Target", status), RESULT_SUCCEED);
        return status.ReadOnly.Value;
    };
    EXPECT_TRUE(readOnly("B.CurrentValue", "x")) << "B comes after A";
    EXPECT_FALSE(readOnly("A.CurrentValue", "x")) << "a value does not become its own key again";
}

TEST(QuotesAndBackslashes, GoIntoAPatchAsTheyAre)
{
    auto manager = ManagerOf(RegistryBuilder().Attribute("A", "String"));
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("A", "\"\\\n", patch, FILTER_PATCH), RESULT_SUCCEED);
    EXPECT_EQ(patch, "\"\"\\\n\"");
}

} // namespace
