#include "app/Secrets.h"

#include "ToolTest.h"
#include "Trace.h"
#include "support/Growth.h"

#include <RedfishConfig/Log.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using namespace ToolTest;

Secrets SecretsOf(const RegistryBuilder& registry, const RedfishConfig::SettingValueMap& values = {})
{
    return Secrets(registry.Json(), values);
}

RegistryBuilder OnePassword()
{
    RegistryBuilder registry;
    registry.Attribute("Key", "Password", {{"CurrentValue", "hunter2"}, {"DefaultValue", "letmein"}});
    return registry;
}

TEST(IsPasswordType, InAnyLetterCase)
{
    EXPECT_TRUE(IsPasswordType("Password"));
    EXPECT_TRUE(IsPasswordType("PASSWORD"));
    EXPECT_FALSE(IsPasswordType("String"));
    EXPECT_FALSE(IsPasswordType(""));
}

TEST(ConcealInReason, CoversAdaptedRulesWithTheirBlanks)
{
    RegistryBuilder registry = OnePassword();
    registry.Attribute("A", "Boolean");
    registry.Rule("A", "ReadOnly", true, {Term{"Key", "EQU", "s3same ", "", "CurrentValue "}});
    const Secrets secrets = SecretsOf(registry);
    EXPECT_EQ(secrets.ConcealInReason("((Key ==s3same ))"), "((Key ==********))");
}

TEST(Secrets, OneThatIsToBeSet)
{
    Secrets secrets;
    EXPECT_EQ(secrets.ConcealInTrace("new s3same"), "new s3same");
    secrets.Add("S3same");
    EXPECT_EQ(secrets.ConcealInTrace("new s3same"), "new ********");
}

TEST(ConcealInTrace, CoversCurrentAndDefaultValue)
{
    const Secrets secrets = SecretsOf(OnePassword());
    EXPECT_EQ(secrets.ConcealInTrace("((hunter2==letmein)&&(Uefi==Uefi))"), "((********==********)&&(Uefi==Uefi))");
    EXPECT_EQ(secrets.ConcealInTrace("Invalid param for operator: HUNTER2&&x"),
              "Invalid param for operator: ********&&x");
    EXPECT_EQ(secrets.ConcealInTrace("nothing of it"), "nothing of it");
}

TEST(ConcealInTrace, CoversItWithinOtherTexts)
{
    EXPECT_EQ(SecretsOf(OnePassword()).ConcealInTrace("(Xhunter2hunter2==)"), "(X****************==)");
}

TEST(ConcealInTrace, CoversTheValueHandedIn)
{
    const Secrets secrets = SecretsOf(OnePassword(), {{"KEY", std::string("s3same")}});
    EXPECT_EQ(secrets.ConcealInTrace("(s3same==hunter2)"), "(********==********)");
}

TEST(ConcealInTrace, CoversNumbers)
{
    RegistryBuilder registry;
    registry.Attribute("Pin", "Password", {{"CurrentValue", 4711}});
    EXPECT_EQ(SecretsOf(registry).ConcealInTrace("(4711==0)"), "(********==0)");
    EXPECT_EQ(SecretsOf(registry, {{"Pin", std::int64_t{-17}}}).ConcealInTrace("(-17==0)"), "(********==0)");
}

TEST(ConcealInTrace, TheLongerOfTwoGoesFirst)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Password", {{"CurrentValue", "abc"}});
    registry.Attribute("B", "Password", {{"CurrentValue", "abcdef"}});
    EXPECT_EQ(SecretsOf(registry).ConcealInTrace("abcdef abc"), "******** ********");
}

TEST(ConcealInTrace, AnEmptyPasswordIsNone)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Password", {{"CurrentValue", ""}, {"DefaultValue", nullptr}});
    EXPECT_EQ(SecretsOf(registry, {{"A", std::nullopt}}).ConcealInTrace("(==)"), "(==)");
}

TEST(ConcealInTrace, OtherSettingsAreNoPasswords)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "hunter2"}});
    EXPECT_EQ(SecretsOf(registry, {{"A", std::string("open")}}).ConcealInTrace("hunter2 open"), "hunter2 open");
}

TEST(ConcealInTrace, CoversWhatRulesCompareItWithAndGiveToIt)
{
    RegistryBuilder registry = OnePassword();
    registry.Rule("Lamp", "Hidden", true, {Term{"key", "EQU", "guess"}});
    registry.Rule("Key", "CurrentValue", "given", {Term{"Lamp", "EQU", "on"}});
    EXPECT_EQ(SecretsOf(registry).ConcealInTrace("guess given on"), "******** ******** on");
}

TEST(ConcealInReason, CoversTheValueThatAPasswordIsComparedWith)
{
    RegistryBuilder registry = OnePassword();
    registry.Rule("Lamp", "Hidden", true, {Term{"Key", "NEQ", "hunter2", "AND"}, Term{"Lamp", "EQU", "hunter2"}});
    const Secrets secrets = SecretsOf(registry);
    EXPECT_EQ(secrets.ConcealInReason("due to: ((Key!=hunter2)&&(Lamp==hunter2))"),
              "due to: ((Key!=********)&&(Lamp==hunter2))");
    EXPECT_EQ(secrets.ConcealInReason("(MyKey!=hunter2)"), "(MyKey!=hunter2)") << "another setting";
}

TEST(ConcealInReason, CoversItAlsoBehindAPropertyInOtherLetterCase)
{
    RegistryBuilder registry;
    registry.Attribute("Key", "Password").Attribute("Lamp", "Boolean");
    registry.Rule("Lamp", "ReadOnly", true, {Term{"Key", "EQU", "s3same", "", "currentValue"}});
    PublishedTestSystem system(registry);
    const std::string reason = system->AllStatus(Detail::Reasons).at(1)[StatusRow::ReadOnly].Reason;
    EXPECT_EQ(reason.find("s3same"), std::string::npos) << reason;
    const Secrets secrets = SecretsOf(registry);
    EXPECT_EQ(secrets.ConcealInReason("((Key.currentValue==s3same))"), "((Key.currentValue==********))");
    EXPECT_EQ(secrets.ConcealInTrace("Calculate ((Key.currentValue==s3same))"),
              "Calculate ((Key.currentValue==********))");
}

TEST(ConcealInReason, CoversValuesThatBeginLikeAnOperator)
{
    RegistryBuilder registry = OnePassword();
    registry.Rule("Lamp", "Hidden", true, {Term{"Key", "LSS", "=x"}});
    EXPECT_EQ(SecretsOf(registry).ConcealInReason("((Key<=x))"), "((Key<********))");
}

TEST(ConcealInTrace, CoversTextsThatOverlap)
{
    Secrets secrets;
    secrets.Add("abc");
    secrets.Add("cdef");
    EXPECT_EQ(secrets.ConcealInTrace("-abcdef-"), "-********-");
}

TEST(ConcealInReason, TakesTimeInProportionToTheTests)
{
    const auto growth = RegistryTest::Growth(
        [](std::size_t size) {
            RegistryBuilder registry = OnePassword();
            std::string reason;
            for (std::size_t number = 0; number < size; ++number) {
                const std::string text = "secret" + std::to_string(100'000 + number);
                registry.Rule("Lamp", "Hidden", true, {Term{"Key", "EQU", boost::json::value(text)}});
                reason += "(Key==" + text + ")||";
            }
            const Secrets secrets = SecretsOf(registry);
            return [secrets, reason] {
                EXPECT_EQ(secrets.ConcealInReason(reason).find("secret"), std::string::npos);
                EXPECT_EQ(secrets.ConcealInTrace(reason).find("secret"), std::string::npos);
            };
        },
        1'000);
    EXPECT_LT(growth, 3.0);
}

TEST(ConcealInReason, WholeValuesOnly)
{
    RegistryBuilder registry;
    registry.Attribute("Key", "Password", {{"CurrentValue", "i"}});
    registry.Rule("Lamp", "Hidden", true, {Term{"Key", "EQU", "i"}});
    EXPECT_EQ(SecretsOf(registry).ConcealInReason("the setting is hidden due to: ((Key==i))"),
              "the setting is hidden due to: ((Key==********))");
}

TEST(ConcealInReason, AsTheLibraryTellsTheRule)
{
    RegistryBuilder registry;
    registry.Attribute("Key", "Password", {{"CurrentValue", "a.CurrentValueb"}});
    registry.Attribute("Lamp", "Boolean");
    registry.Rule("Lamp", "ReadOnly", true, {Term{"Key", "EQU", "a.CurrentValueb"}});
    PublishedTestSystem system(registry);
    const std::string reason = system->AllStatus(Detail::Reasons).at(1)[StatusRow::ReadOnly].Reason;
    EXPECT_EQ(reason.find("ab"), std::string::npos) << reason;
    EXPECT_NE(reason.find("(Key==********)"), std::string::npos) << reason;
}

TEST(ConcealInReason, ATestWhetherThereIsAPasswordStays)
{
    RegistryBuilder registry = OnePassword();
    registry.Rule("Lamp", "Hidden", true, {Term{"Key", "EQU", ""}});
    registry.Rule("Lamp", "ReadOnly", true, {Term{"Key", "EQU", true}});
    registry.Rule("Lamp", "GrayOut", true, {Term{"Key", "EQU", nullptr}});
    const Secrets secrets = SecretsOf(registry);
    for (const char* reason : {"((Key==))", "((Key==true))", "((Key not exist))", "((Key==null))"}) {
        EXPECT_EQ(secrets.ConcealInReason(reason), reason);
    }
}

TEST(Secrets, ARegistryThatIsNoneHasNone)
{
    for (const char* text :
         {"null", "[]", "{}", R"({"RegistryEntries": []})", R"({"RegistryEntries": {"Attributes": 5}})",
          R"({"RegistryEntries": {"Attributes": [null, {"Type": 5}], "Dependencies": [[]]}})",
          R"({"RegistryEntries": {"Attributes": [{"Type": "Password", "CurrentValue": ["x"]}],
                                 "Dependencies": [null, {"Dependency": 5}, {"Dependency": {"MapFrom": [5]}}]}})"}) {
        EXPECT_EQ(Secrets(boost::json::parse(text), {}).ConcealInTrace("x null 5"), "x null 5") << text;
    }
}

TEST(Trace, WritesTheLogWhileItLives)
{
    const Secrets secrets = SecretsOf(OnePassword());
    std::ostringstream out;
    {
        const Trace trace(3, out, secrets);
        RedfishConfig::Log(3, "file", 1).Stream() << "is hunter2\n\x1b[1m";
        RedfishConfig::Log(4, "file", 1).Stream() << "detail";
    }
    EXPECT_EQ(RedfishConfig::LogLevel(), 0U);
    RedfishConfig::Log(1, "file", 1).Stream() << "later";
    EXPECT_EQ(out.str(), "[3] is ********\\n\\x1b[1m\n");
}

} // namespace
