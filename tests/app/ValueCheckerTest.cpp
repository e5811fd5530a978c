#include "app/ValueChecker.h"

#include "Trace.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfig::App;
namespace Client = RedfishConfig::Client;
using Client::Attribute;
using Client::AttributeType;
using Client::Choice;

Attribute Number()
{
    Attribute attribute;
    attribute.Name = "Cores";
    attribute.Type = AttributeType::Integer;
    attribute.CurrentValue = std::int64_t{16};
    attribute.DefaultValue = std::int64_t{-1};
    attribute.LowerBound = 0;
    attribute.UpperBound = 64;
    attribute.ScalarIncrement = 2;
    return attribute;
}

Attribute Enumeration(const std::vector<Choice>& choices, const std::string& defaultValue)
{
    Attribute attribute;
    attribute.Name = "Mode";
    attribute.Type = AttributeType::Enumeration;
    attribute.Choices = choices;
    attribute.DefaultValue = defaultValue;
    return attribute;
}

/** The PATCH value text; in brackets the reason of a refusal. */
std::string Shown(const CheckedValue& checked)
{
    return checked.Result == RedfishConfig::RESULT_SUCCEED ? checked.PatchText : "(" + checked.Reason + ")";
}

TEST(ValueChecker, ChecksNumbers)
{
    Secrets secrets;
    ValueChecker checker(Number(), {}, secrets);
    EXPECT_EQ(Shown(checker.Check("8")), "8");
    EXPECT_EQ(Shown(checker.Check("-1")), "-1") << "the default";
    EXPECT_EQ(Shown(checker.CheckDefault()), "-1");
    EXPECT_EQ(Shown(checker.Check("66")), "(The value out of scope: LowerBound=0 UpperBound=64)");
    EXPECT_EQ(Shown(checker.Check("7")), "(scalar increment mismatch. The scalar increment should be: 2)");
    EXPECT_EQ(checker.Check("66").Result.ErrorMsg(),
              "New value 66 is invalid: The value out of scope: LowerBound=0 UpperBound=64.");
    EXPECT_EQ(static_cast<int>(checker.Check("x").Result), RedfishConfig::RESULT_NEW_VALUE_INVALID);
}

TEST(ValueChecker, AChoiceHasTwoNames)
{
    const std::vector<Choice> choices{{"Uefi", "UEFI boot"}, {"Legacy", "Legacy BIOS"}};
    Secrets secrets;
    ValueChecker checker(Enumeration(choices, "Uefi"), choices, secrets);
    EXPECT_EQ(Shown(checker.Check("legacy")), "\"Legacy\"");
    EXPECT_EQ(Shown(checker.Check("uefi BOOT")), "\"Uefi\"");
    EXPECT_EQ(Shown(checker.Check("BIOS")),
              "(value BIOS is not a valid value for setting Mode.\nAcceptable values include: <Legacy> <Uefi>)");
}

TEST(ValueChecker, AnOtherNameOfSeveralChoicesIsNone)
{
    const std::vector<Choice> choices{{"128M", "0"}, {"4G", "0"}, {"8G", "1"}, {"1", "2"}};
    Secrets secrets;
    ValueChecker checker(Enumeration(choices, "128M"), choices, secrets);
    EXPECT_EQ(checker.Check("0").Result, RedfishConfig::RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(Shown(checker.Check("4G")), "\"4G\"");
    EXPECT_EQ(Shown(checker.Check("1")), "\"1\"") << "the choice of that name, not the one that is called so too";
    EXPECT_EQ(Shown(checker.Check("2")), "\"1\"");
}

TEST(ValueChecker, ADefaultThatIsNoChoiceIsAccepted)
{
    const std::vector<Choice> choices{{"A", "A"}, {"B", "B"}};
    Secrets secrets;
    ValueChecker checker(Enumeration(choices, "C"), choices, secrets);
    EXPECT_EQ(Shown(checker.CheckDefault()), "\"C\"");
    EXPECT_EQ(Shown(checker.Check("c")), "\"C\"");
    EXPECT_EQ(checker.Check("D").Result, RedfishConfig::RESULT_NEW_VALUE_INVALID);
}

TEST(ValueChecker, ADefaultThatRulesRuleOutIsNot)
{
    Secrets secrets;
    ValueChecker checker(Enumeration({{"A", "A"}}, "B"), {{"A", "A"}, {"B", "B"}}, secrets);
    EXPECT_EQ(checker.CheckDefault().Result, RedfishConfig::RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(checker.Check("B").Result, RedfishConfig::RESULT_NEW_VALUE_INVALID);
}

TEST(ValueChecker, FlagsDoNotMatter)
{
    Attribute attribute = Number();
    for (const Client::Property flag : {Client::Property::ReadOnly, Client::Property::Hidden}) {
        attribute.Flags.Set(flag);
    }
    Secrets secrets;
    EXPECT_EQ(Shown(ValueChecker(attribute, {}, secrets).Check("8")), "8");
}

TEST(ValueChecker, APasswordIsInNoMessageAndInNoLog)
{
    Attribute attribute;
    attribute.Name = "Key";
    attribute.Type = AttributeType::Password;
    attribute.CurrentValue = Client::Secret("hunter2");
    attribute.DefaultValue = Client::Secret("letmein-too-long");
    attribute.MaxLength = 8;
    Secrets secrets;
    std::ostringstream log;
    {
        const RedfishConfigTool::Trace trace(4, log, secrets);
        ValueChecker checker(attribute, {}, secrets);
        const CheckedValue refused = checker.Check("s3same-and-more");
        EXPECT_EQ(refused.Result.ErrorMsg().find("s3same"), std::string::npos);
        EXPECT_EQ(refused.Result.ErrorMsg().rfind("The new value of Key is invalid: ", 0), 0U)
            << refused.Result.ErrorMsg();
        EXPECT_EQ(Shown(checker.Check("s3same")), "\"s3same\"");
        EXPECT_EQ(Shown(checker.CheckDefault()), "\"letmein-too-long\"");
    }
    EXPECT_FALSE(log.str().empty());
    for (const char* password : {"hunter2", "letmein", "s3same"}) {
        EXPECT_EQ(log.str().find(password), std::string::npos) << password;
    }
}

TEST(DescribeChoices, IsTheLibrarysText)
{
    std::string text;
    EXPECT_EQ(DescribeChoices(Number(), true, text), RedfishConfig::RESULT_SUCCEED);
    EXPECT_EQ(text, "Integer LowerBound=0x0 UpperBound=0x40 ScalarIncrement=0x2 default=0xffffffffffffffff ");
    Attribute contradictory = Number();
    contradictory.UpperBound = -5;
    EXPECT_EQ(DescribeChoices(contradictory, false, text), RedfishConfig::RESULT_PROPERTY_INVALID);
}

} // namespace
