#include "CommonProc/Registry/Registry.h"

#include "support/RegistryBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace RegistryTest;
using RedfishConfig::NameIndex;
using RedfishConfig::Registry;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(Registry, ThrowsForTextThatIsNoJsonObject)
{
    for (const char* text : {"", "{", "null", "[]", "5", "\"text\"", "{} {}", "{\"a\": tru}"}) {
        EXPECT_THROW(Registry::Read(text), std::exception) << text;
    }
}

TEST(Registry, ReadsTheAttributesInOrder)
{
    const auto registry =
        Registry::Read(RegistryBuilder().Attribute("B", "String").Attribute("A", "String").RawAttribute(5).Text());
    const auto& attributes = registry->Attributes();
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0].AttributeName, "B");
    EXPECT_EQ(attributes[1].AttributeName, "A");
    EXPECT_EQ(attributes[2].AttributeName, std::nullopt);
}

TEST(Registry, SaysWhyThereAreNoAttributes)
{
    const auto reason = [](const char* text) {
        try {
            Registry::Read(text)->Attributes();
        } catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    const std::string missing = R"(The registry has no "Attributes" in an object "RegistryEntries".)";
    EXPECT_EQ(reason("{}"), missing);
    EXPECT_EQ(reason(R"({"RegistryEntries": []})"), missing);
    EXPECT_EQ(reason(R"({"RegistryEntries": {}})"), missing);
    EXPECT_EQ(reason(R"({"RegistryEntries": {"Attributes": {}}})"),
              R"(The "Attributes" of the registry are not an array.)");
    EXPECT_EQ(reason(R"({"RegistryEntries": {"Attributes": []}})"), "");
}

TEST(Registry, FindsTheFirstAttributeOfANameInAnyLetterCase)
{
    const auto registry = Registry::Read(
        RegistryBuilder().Attribute("Fan", "String").Attribute("FAN", "Integer").Attribute("Boot", "String").Text());
    EXPECT_EQ(registry->FindAttribute("fan"), 0u);
    EXPECT_EQ(registry->FindAttribute("boot"), 2u);
    EXPECT_EQ(registry->FindAttribute("Fans"), NameIndex::none);
}

TEST(Registry, TellsMissingUnreadableAndPresentRulesApart)
{
    using List = RedfishConfig::DependencyList;
    const std::vector<std::pair<const char*, List>> facts{
        {"{}", List::Missing},
        {R"({"RegistryEntries": 5})", List::Missing},
        {R"({"RegistryEntries": {}})", List::Missing},
        {R"({"RegistryEntries": {"Dependencies": null}})", List::Unreadable},
        {R"({"RegistryEntries": {"Dependencies": {}}})", List::Unreadable},
        {R"({"RegistryEntries": {"Dependencies": []}})", List::Present},
    };
    for (const auto& [text, list] : facts) {
        EXPECT_EQ(Registry::Read(text)->Dependencies(), list) << text;
    }
}

TEST(Registry, DropsTermsOnTheControllerAndRulesWithoutTerms)
{
    const auto registry = Registry::Read(RegistryBuilder()
                                             .Rule("A", "Hidden", true, {Term{"SYSACS"}})
                                             .Rule("A", "Hidden", true, {Term{"SYSACS"}, Term{"B"}, Term{"sysacs"}})
                                             .Rule("A", "Hidden", true, {})
                                             .RawRule("no object")
                                             .Rule("C", "Hidden", true, {Term{"D"}})
                                             .Text());
    ASSERT_EQ(registry->Rules().size(), 2u);
    EXPECT_EQ(registry->Rules()[0].Position, 1u);
    ASSERT_EQ(registry->Rules()[0].MapFrom.size(), 2u);
    EXPECT_EQ(registry->Rules()[0].MapFrom[0].MapFromAttribute, "B");
    EXPECT_EQ(registry->Rules()[0].MapFrom[1].MapFromAttribute, "sysacs");
    EXPECT_EQ(registry->Rules()[1].Position, 4u);
}

TEST(Registry, FindsRulesByTargetInAnyLetterCase)
{
    const auto registry = Registry::Read(RegistryBuilder()
                                             .Rule("Fan", "Hidden", true, {Term{"SYSACS"}})
                                             .Rule("Fan", "Hidden", true, {Term{"A"}})
                                             .Rule("Boot", "Hidden", true, {Term{"B"}})
                                             .Rule("FAN", "ReadOnly", true, {Term{"C"}})
                                             .Text());
    EXPECT_THAT(registry->RulesFor("fan"), ElementsAre(0, 2));
    EXPECT_THAT(registry->RulesFor("Fans"), IsEmpty());
}

} // namespace
