#include "common/Limits.h"

#include "CommonProc/RedfishConfigExpression/ValueSubstitution.h"
#include "CommonProc/RedfishConfigSettingManager/SettingKeys.h"
#include "CommonProc/Registry/Registry.h"
#include "support/LogCapture.h"
#include "support/MapKeys.h"
#include "support/RegistryBuilder.h"
#include "support/Times.h"

#include <RedfishConfig/RedfishConfig.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace RedfishConfig;
using namespace RegistryTest;

namespace {

/** Why a registry text cannot be read; empty when it can. */
std::string Refusal(const std::string& text)
{
    try {
        Registry::Read(text);
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

std::string Lists(const char* key, std::size_t count)
{
    return std::string(R"({"RegistryEntries": {")") + key + R"(": [)" + Times(count - 1, "{},") + "{}]}}";
}

/** The settings of a registry, and the keys that formulas find of them. */
struct GeneratedSettings {
    explicit GeneratedSettings(const RegistryBuilder& builder)
        : Source(Registry::Read(builder.Text())), Table(AllOf(Source)), Keys(Table)
    {
    }

    static SettingTable AllOf(const std::shared_ptr<const Registry>& source)
    {
        SettingTable table;
        for (std::size_t position = 0; position < source->Attributes().size(); ++position) {
            table.Store(source, position,
                        std::make_shared<RedfishConfigTextSetting>(source->Attributes()[position], Config_Options{}));
        }
        return table;
    }

    std::shared_ptr<const Registry> Source;
    SettingTable Table;
    SettingKeys Keys;
};

TEST(RegistryLimits, AdmitTheLongestTextAndNoLongerOne)
{
    std::string text = R"({"RegistryEntries": {"Attributes": []}})";
    text.resize(Limits::registryBytes, ' ');
    EXPECT_EQ(Refusal(text), "");
    text += ' ';
    EXPECT_EQ(Refusal(text), "The registry is longer than 268435456 bytes.");
}

TEST(RegistryLimits, AdmitTheDeepestNestingAndNoDeeperOne)
{
    const auto nested = [](std::size_t depth) {
        return R"({"Extra": )" + Times(depth - 1, "[") + Times(depth - 1, "]") + "}";
    };
    EXPECT_EQ(Refusal(nested(Limits::registryDepth)), "");
    EXPECT_NE(Refusal(nested(Limits::registryDepth + 1)), "");
    EXPECT_NE(Refusal(Times(1000000, "[")), "");
}

TEST(RegistryLimits, AdmitTheMostAttributesAndNotOneMore)
{
    EXPECT_EQ(Refusal(Lists("Attributes", Limits::attributes)), "");
    EXPECT_EQ(Refusal(Lists("Attributes", Limits::attributes + 1)), "The registry has more than 250000 attributes.");
    EXPECT_EQ(Refusal(Lists("Attributes", 1000000)), "The registry has more than 250000 attributes.");
}

TEST(RegistryLimits, AdmitTheMostRulesAndNotOneMore)
{
    EXPECT_EQ(Refusal(Lists("Dependencies", Limits::rules)), "");
    EXPECT_EQ(Refusal(Lists("Dependencies", Limits::rules + 1)), "The registry has more than 250000 rules.");
    EXPECT_EQ(Refusal(Lists("Dependencies", 1000000)), "The registry has more than 250000 rules.");
}

TEST(RegistryLimits, AreAnsweredWithCode27AndAReasonInTheLog)
{
    std::string text = Lists("Attributes", Limits::attributes + 1);
    RedfishConfigSettingManager manager(text, false, {});
    std::map<std::string, std::string> values;
    const LogCapture log(1);
    EXPECT_EQ(manager.QueryGroupSettingValues(values), RESULT_HTTP_RESPONSE_PARSE_FAILED);
    EXPECT_TRUE(log.Has(1, "The registry has more than 250000 attributes."));
}

/** Whether a rule of so many terms that hold makes its setting read only. */
PropertyState ReadOnlyByARuleOf(std::size_t terms)
{
    std::vector<Term> from(terms, Term{"A", "EQU", 1, "AND"});
    from.back().MapTerms.clear();
    std::string text = RegistryBuilder()
                           .Attribute("A", "Integer", {{"CurrentValue", 1}})
                           .Attribute("B", "String")
                           .Rule("B", "ReadOnly", true, from)
                           .Text();
    RedfishConfigSettingManager manager(text, false, {});
    SettingStatus status;
    EXPECT_EQ(manager.QuerySettingStatus("B", status), RESULT_SUCCEED);
    return status.ReadOnly;
}

TEST(RuleLimits, AdmitTheMostTermsAndLeaveOutARuleWithOneMore)
{
    EXPECT_TRUE(ReadOnlyByARuleOf(Limits::termsOfRule).Value);
    const PropertyState leftOut = ReadOnlyByARuleOf(Limits::termsOfRule + 1);
    EXPECT_FALSE(leftOut.Value);
    EXPECT_EQ(leftOut.Reason, "");
}

TEST(FormulaLimits, AdmitTheLongestFormulaAndCannotCalculateALongerOne)
{
    const auto stateFor = [](std::size_t bytes) {
        const std::string value(bytes, 'v');
        std::string text = RegistryBuilder()
                               .Attribute("A", "String", {{"CurrentValue", value}})
                               .Attribute("B", "String")
                               .Rule("B", "ReadOnly", true, {{"A", "NEQ", " "}})
                               .Text();
        RedfishConfigSettingManager manager(text, false, {});
        SettingStatus status;
        EXPECT_EQ(manager.QuerySettingStatus("B", status), RESULT_SUCCEED);
        return status.ReadOnly;
    };
    const std::size_t around = std::string("((!= ))").size();
    const PropertyState longest = stateFor(Limits::formulaBytes - around);
    EXPECT_TRUE(longest.Value);
    EXPECT_EQ(longest.Reason, "the setting is read only due to the following expression: ((A!= ))");
    const PropertyState tooLong = stateFor(Limits::formulaBytes - around + 1);
    EXPECT_TRUE(tooLong.Value); // locked, as a safeguard
    EXPECT_EQ(tooLong.Reason, "the setting is read only duo to dependency calculate error.");
}

TEST(FormulaLimits, EndTheGrowthOfValuesThatHoldKeys)
{
    RegistryBuilder registry;
    for (char name = 'A'; name < 'Z'; ++name) {
        const std::string next = std::string(1, static_cast<char>(name + 1)) + ".CurrentValue";
        registry.Attribute(std::string(1, name), "String", {{"CurrentValue", Times(10, next)}}); // 10^25 in the end
    }
    registry.Attribute("Z", "String", {{"CurrentValue", "z"}});
    registry.Attribute("Target", "String").Rule("Target", "Hidden", true, {{"A", "EQU", "x"}});
    std::string text = registry.Text();
    RedfishConfigSettingManager manager(text, false, {});
    std::map<std::string, SettingStatus> status;
    ASSERT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    EXPECT_EQ(status.at("Target").Hidden.Reason, "the setting is hidden duo to dependency calculate error.");
}

TEST(FormulaLimits, EndTheGrowthOfAllFormulasTogether)
{
    // each formula alone stays within its limit
    const std::string value(60000, 'v');
    const std::map<std::string, std::string> texts{{"A.CurrentValue", value}};
    MapKeys keys(texts);
    ValueSubstitution substitution(keys);
    SubstitutionEffort effort;
    const std::size_t each = value.size() + std::string("(==x)").size();
    const std::size_t most = Limits::allFormulasBytes / each;
    for (std::size_t done = 0; done < most; ++done) {
        ASSERT_FALSE(substitution.Apply("(A.CurrentValue==x)", effort).empty()) << done;
        ASSERT_TRUE(substitution.IsWithinLimits(effort));
    }
    EXPECT_EQ(substitution.Apply("(A.CurrentValue==x)", effort), "");
    EXPECT_FALSE(substitution.IsWithinLimits(effort));
    EXPECT_EQ(substitution.Apply("(true==true)", effort), "") << "what comes later is given up too";
    SubstitutionEffort another;
    EXPECT_EQ(substitution.Apply("(true==true)", another), "(true==true)");
}

/** Names that hold tails of keys themselves make every place of a formula be looked at over and over. */
TEST(FormulaLimits, EndTheWorkOnAllFormulasTogether)
{
    RegistryBuilder registry;
    for (std::size_t count = 1; count < 100; ++count) {
        registry.Attribute(Times(count, ".CurrentValue"), "String",
                           {{"CurrentValue", "." + Times(count, ".CurrentValue")}});
    }
    GeneratedSettings settings(registry);
    const std::string formula = Times(100, ".CurrentValue");
    ValueSubstitution substitution(settings.Keys, 100000000);
    SubstitutionEffort effort;
    std::size_t done = 0;
    while (done < 1000 && !substitution.Apply(formula, effort).empty()) {
        ++done;
    }
    EXPECT_GT(done, 0u);
    EXPECT_LT(done, 1000u);
    EXPECT_EQ(substitution.Apply("(true==true)", effort), "") << "what comes later is given up too";
}

TEST(FormulaLimits, HaveRoomForAllFormulasOfALargeSystem)
{
    RegistryBuilder registry;
    const std::size_t settings = 20000;
    const auto name = [](std::size_t number) { return "SettingWithAUsualName" + std::to_string(number); };
    for (std::size_t number = 0; number < settings; ++number) {
        registry.Attribute(name(number), "Integer", {{"CurrentValue", 1}});
        std::vector<Term> terms;
        for (std::size_t term = 1; term <= 10; ++term) {
            terms.push_back({name((number + term) % settings), "NEQ", 1, term < 10 ? "AND" : ""});
        }
        registry.Rule(name(number), "Hidden", true, terms);
    }
    std::string text = registry.Text();
    RedfishConfigSettingManager manager(text, false, {});
    std::map<std::string, SettingStatus> status;
    ASSERT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    ASSERT_EQ(status.size(), settings);
    for (const auto& [of, state] : status) {
        ASSERT_FALSE(state.Hidden.Value) << of;
    }
}

TEST(FormulaLimits, BoundTheSearchForNamesOfManyLengths)
{
    RegistryBuilder registry;
    for (std::size_t length = 1; length < 4000; ++length) {
        registry.Attribute(std::string(length, 'n'), "String", {{"CurrentValue", "v"}});
    }
    GeneratedSettings settings(registry);
    ValueSubstitution substitution(settings.Keys);
    SubstitutionEffort effort;
    for (int round = 0; round < 50; ++round) { // would be minutes if every length were tried at every place
        EXPECT_EQ(substitution.Apply(Times(4000, "n.CurrentValue"), effort), Times(4000, "v"));
    }
}

/** The line is told each time that values are applied, as long as a formula is given up. */
TEST(FormulaLimits, TellOfAFormulaThatIsGivenUpEachTime)
{
    std::string text = RegistryBuilder()
                           .Attribute("A", "String", {{"CurrentValue", std::string(Limits::formulaBytes, 'v')}})
                           .Attribute("B", "String", {{"CurrentValue", "b"}})
                           .Rule("B", "ReadOnly", true, {{"A", "EQU", "x"}})
                           .Text();
    const std::string line = "A formula becomes too long with the values of settings and cannot be calculated.";
    RedfishConfigSettingManager manager(text, false, {});
    const LogCapture log(1);
    std::string value;
    for (std::size_t asked = 1; asked < 4; ++asked) {
        manager.QuerySettingValue("B", value);
        EXPECT_EQ(log.Count(1, line), asked);
    }
    manager.UpdateSettingValue({{"A", std::string("x")}});
    manager.QuerySettingValue("B", value);
    EXPECT_EQ(log.Count(1, line), 3u) << "A fits now";
    SettingStatus status;
    EXPECT_EQ(manager.QuerySettingStatus("B", status), RESULT_SUCCEED);
    EXPECT_EQ(status.ReadOnly.Reason, "the setting is read only due to the following expression: ((A==x))");
}

} // namespace
