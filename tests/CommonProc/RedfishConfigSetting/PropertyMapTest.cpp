#include "support/LogCapture.h"
#include "support/ProbeSetting.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace {

using namespace RedfishConfig;
using namespace RegistryTest;

using Lines = std::vector<LogLine>;
using Map = std::map<std::string, std::string>;

SettingValue Number(std::int64_t number)
{
    return SettingValue(SettingAlternative(number));
}

SettingValue Text(const std::string& text)
{
    return SettingValue(SettingAlternative(text));
}

/** A present value that holds nothing, as a failed assignment leaves it, where the standard library can leave one so.
 */
SettingValue Broken()
{
    SettingValue value = Number(0);
    try {
        value->emplace<std::string>(std::string().max_size() + 1, 'x');
    } catch (const std::length_error&) {
    }
    return value;
}

RedfishConfigSettingInfoStru Named(const std::string& name, const SettingValue& currentValue = {})
{
    RedfishConfigSettingInfoStru record;
    record.AttributeName = name;
    record.CurrentValue = currentValue;
    return record;
}

LogLine EnterLine(const std::string& name)
{
    return {4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:" + name};
}

LogLine ExitLine(std::size_t size)
{
    return {4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=" + std::to_string(size)};
}

template <class Typed>
class EverySetting : public testing::Test {
};

using TypedSettings =
    testing::Types<RedfishConfigTextSetting, RedfishConfigNumericSetting, RedfishConfigEnumerateSetting,
                   RedfishConfigBooleanSetting, RedfishConfigPasswordSetting>;
TYPED_TEST_SUITE(EverySetting, TypedSettings, );

// ---- the property map

TYPED_TEST(EverySetting, MapsACurrentValueAndItsFlags)
{
    Probe<TypeParam> setting(Named("A", Number(5)));
    const LogCapture log;
    EXPECT_EQ(setting.GetProperyMap(), (Map{{"A.ReadOnly", "false"},
                                            {"A.WriteOnly", "false"},
                                            {"A.Hidden", "false"},
                                            {"A.GrayOut", "false"},
                                            {"A.IsSystemUniqueProperty", "false"},
                                            {"A.Immutable", "false"},
                                            {"A.CurrentValue", "5"},
                                            {"A not exist", "true==false"},
                                            {"A exist", "true==true"}}));
    EXPECT_EQ(log.Lines(), (Lines{EnterLine("A"), ExitLine(9)}));
}

TYPED_TEST(EverySetting, MapsTheLackOfACurrentValue)
{
    Probe<TypeParam> setting(Named("Some Name"));
    const LogCapture log;
    EXPECT_EQ(setting.GetProperyMap(), (Map{{"Some Name.ReadOnly", "false"},
                                            {"Some Name.WriteOnly", "false"},
                                            {"Some Name.Hidden", "false"},
                                            {"Some Name.GrayOut", "false"},
                                            {"Some Name.IsSystemUniqueProperty", "false"},
                                            {"Some Name.Immutable", "false"},
                                            {"Some Name not exist", "true==true"},
                                            {"Some Name exist", "true==false"}}));
    EXPECT_EQ(log.Lines(),
              (Lines{EnterLine("Some Name"),
                     {4, "The setting Some Name has no current value property or the current value is null."},
                     ExitLine(8)}));
}

TEST(PropertyMap, HoldsTheCurrentValueAsText)
{
    const std::pair<SettingValue, const char*> facts[] = {
        {Text("Uefi"), "Uefi"},
        {Text(""), ""},
        {Text("B.CurrentValue"), "B.CurrentValue"},
        {Number(-42), "-42"},
        {Number(255), "255"},
        {Number(INT64_MIN), "-9223372036854775808"},
        {SettingValue(SettingAlternative(true)), "true"},
        {SettingValue(SettingAlternative(false)), "false"},
    };
    Config_Options hexadecimal;
    hexadecimal.ShowHexValue = true; // a matter of answers, not of formulas
    for (const auto& [value, text] : facts) {
        for (const Config_Options& options : {Config_Options(), hexadecimal}) {
            Probe<RedfishConfigTextSetting> setting(Named("A", value), options);
            const Map map = setting.GetProperyMap();
            EXPECT_EQ(map.size(), 9U);
            EXPECT_EQ(map.at("A.CurrentValue"), text);
            EXPECT_EQ(map.at("A exist"), "true==true");
            EXPECT_EQ(map.at("A not exist"), "true==false");
        }
    }
}

TEST(PropertyMap, HoldsTheStaticFlagsNotTheRules)
{
    const std::pair<const char*, bool RedfishConfigSettingInfoStru::*> facts[] = {
        {"ReadOnly", &RedfishConfigSettingInfoStru::ReadOnly},
        {"WriteOnly", &RedfishConfigSettingInfoStru::WriteOnly},
        {"Hidden", &RedfishConfigSettingInfoStru::Hidden},
        {"GrayOut", &RedfishConfigSettingInfoStru::GrayOut},
        {"IsSystemUniqueProperty", &RedfishConfigSettingInfoStru::IsSystemUniqueProperty},
        {"Immutable", &RedfishConfigSettingInfoStru::Immutable},
    };
    for (const auto& [key, flag] : facts) {
        RedfishConfigSettingInfoStru record = Named("A", Number(1));
        record.ResetRequired = true; // not asked by formulas
        record.*flag = true;
        for (const auto& [other, otherFlag] : facts) {
            PropertyExpression& rule = record.expressionMaps[other];
            rule.MapToValue = SettingAlternative(!(record.*otherFlag));
            rule.Formula = "true";
            rule.Valid = true;
        }
        Probe<RedfishConfigTextSetting> setting(record);
        setting.m_ErrMsg = "before";
        const Map map = setting.GetProperyMap();
        EXPECT_EQ(map.size(), 9U);
        for (const auto& fact : facts) {
            EXPECT_EQ(map.at(std::string("A.") + fact.first), fact.first == key ? "true" : "false") << key;
        }
        EXPECT_EQ(setting.m_ErrMsg, "before");
    }
}

TEST(PropertyMap, FollowsTheCurrentValue)
{
    Probe<RedfishConfigTextSetting> setting(Named("A"));
    EXPECT_EQ(setting.GetProperyMap().size(), 8U);
    setting.setCurrentValue(Text("X"));
    EXPECT_EQ(setting.GetProperyMap().at("A.CurrentValue"), "X");
    setting.setCurrentValue(SettingValue());
    EXPECT_EQ(setting.GetProperyMap().size(), 8U);
}

TEST(PropertyMap, OfABrokenValueEndsWithTheFlags)
{
    if (!Broken()->valueless_by_exception()) {
        GTEST_SKIP() << "this standard library never leaves a value without an alternative";
    }
    Probe<RedfishConfigTextSetting> setting(Named("A", Broken()));
    const LogCapture log;
    EXPECT_EQ(setting.GetProperyMap(), (Map{{"A.ReadOnly", "false"},
                                            {"A.WriteOnly", "false"},
                                            {"A.Hidden", "false"},
                                            {"A.GrayOut", "false"},
                                            {"A.IsSystemUniqueProperty", "false"},
                                            {"A.Immutable", "false"}}));
    EXPECT_EQ(log.Lines(), (Lines{EnterLine("A"),
                                  {4, "Catch exception in RedfishConfigSetting::GetProperyMap(): "
                                      "Unsupported type for conversion to string."}}));
}

TEST(PropertyMap, WithoutANameIsEmpty)
{
    Probe<RedfishConfigTextSetting> setting((RedfishConfigSettingInfoStru()));
    EXPECT_EQ(setting.GetProperyMap(), Map());
    const LogCapture log;
    EXPECT_EQ(setting.GetProperyMap(), Map());
    ASSERT_FALSE(log.Lines().empty());
    EXPECT_EQ(log.Lines().back(), LogLine(4, std::string("Catch exception in RedfishConfigSetting::GetProperyMap(): ") +
                                                 std::bad_optional_access().what()));
}

// ---- construction, copies and accessors

RedfishConfigSettingInfoStru FullRecord()
{
    RedfishConfigSettingInfoStru record = Named("A", Number(255));
    record.ReadOnly = true;
    record.Type = "Integer";
    record.DisplayName = "Display";
    record.LowerBound = -1;
    record.DefaultValue = Text("default");
    record.Value = {{"X", "Display X"}};
    record.dependencySettings = {"B", "C"};
    record.expressionMaps["Hidden"].DisplayText = "((B.CurrentValue==X))";
    return record;
}

void ExpectFullRecord(const RedfishConfigSettingInfoStru& record)
{
    EXPECT_EQ(record.AttributeName, "A");
    EXPECT_EQ(record.CurrentValue, Number(255));
    EXPECT_TRUE(record.ReadOnly);
    EXPECT_FALSE(record.Hidden);
    EXPECT_EQ(record.Type, "Integer");
    EXPECT_EQ(record.DisplayName, "Display");
    EXPECT_EQ(record.LowerBound, -1);
    EXPECT_EQ(record.UpperBound, std::nullopt);
    EXPECT_EQ(record.DefaultValue, Text("default"));
    EXPECT_EQ(record.Value, (Map{{"X", "Display X"}}));
    EXPECT_EQ(record.dependencySettings, (std::vector<std::string>{"B", "C"}));
    ASSERT_EQ(record.expressionMaps.size(), 1U);
    EXPECT_EQ(record.expressionMaps.at("Hidden").DisplayText, "((B.CurrentValue==X))");
}

Config_Options FullOptions()
{
    Config_Options options;
    options.ShowHexValue = true;
    options.IgnoreProtected = true;
    options.Reserved = 7;
    return options;
}

void ExpectFullOptions(const Config_Options& options)
{
    EXPECT_TRUE(options.ShowHexValue);
    EXPECT_TRUE(options.IgnoreProtected);
    EXPECT_EQ(options.Reserved, 7);
}

TYPED_TEST(EverySetting, StartsFromCopiesOfItsArguments)
{
    RedfishConfigSettingInfoStru record = FullRecord();
    Config_Options options = FullOptions();
    Probe<TypeParam> setting(record, options);
    record = RedfishConfigSettingInfoStru();
    options = Config_Options();
    EXPECT_EQ(setting.GetErrorMsg(), "");
    ExpectFullRecord(setting.GetSettingProperties());
    ExpectFullOptions(setting.m_Options);
}

TYPED_TEST(EverySetting, IsCopiedWhole)
{
    Probe<TypeParam> setting(FullRecord(), FullOptions());
    setting.m_ErrMsg = "a reason";
    Probe<TypeParam> copy(setting);
    EXPECT_EQ(copy.GetErrorMsg(), "a reason");
    ExpectFullRecord(copy.GetSettingProperties());
    ExpectFullOptions(copy.m_Options);

    copy.setCurrentValue(Number(1));
    copy.m_ErrMsg = "another";
    ExpectFullRecord(setting.GetSettingProperties());
    EXPECT_EQ(setting.GetErrorMsg(), "a reason");
}

TYPED_TEST(EverySetting, IsAssignedWhole)
{
    Probe<TypeParam> setting(FullRecord(), FullOptions());
    setting.m_ErrMsg = "a reason";
    Probe<TypeParam> target(Named("Other"));
    RedfishConfigSetting& left = target;
    const RedfishConfigSetting& right = setting;
    EXPECT_EQ(&(left = right), &left);
    EXPECT_EQ(target.GetErrorMsg(), "a reason");
    ExpectFullRecord(target.GetSettingProperties());
    ExpectFullOptions(target.m_Options);

    target.setCurrentValue(Number(1));
    ExpectFullRecord(setting.GetSettingProperties());
}

TYPED_TEST(EverySetting, SurvivesAssignmentToItself)
{
    Probe<TypeParam> setting(FullRecord(), FullOptions());
    setting.m_ErrMsg = "a reason";
    RedfishConfigSetting& left = setting;
    const RedfishConfigSetting& right = setting;
    left = right;
    EXPECT_EQ(setting.GetErrorMsg(), "a reason");
    ExpectFullRecord(setting.GetSettingProperties());
    ExpectFullOptions(setting.m_Options);
}

TEST(SettingAccessors, SetCurrentValueReplacesTheCurrentValueAlone)
{
    RedfishConfigSettingInfoStru record = FullRecord();
    record.CurrentValue = SettingValue();
    Probe<RedfishConfigTextSetting> setting(record);
    setting.m_ErrMsg = "before";
    setting.setCurrentValue(Number(255));
    ExpectFullRecord(setting.GetSettingProperties());
    EXPECT_EQ(setting.GetErrorMsg(), "before");

    for (const SettingValue& value :
         {Text("of another kind"), SettingValue(SettingAlternative(true)), SettingValue()}) {
        setting.setCurrentValue(value);
        EXPECT_EQ(setting.GetSettingProperties().CurrentValue, value);
    }
}

TEST(SettingAccessors, SetSettingPropertiesReplacesTheWholeRecord)
{
    Probe<RedfishConfigTextSetting> setting(Named("Other", Text("X")), FullOptions());
    setting.m_ErrMsg = "before";
    setting.SetSettingProperties(FullRecord());
    ExpectFullRecord(setting.GetSettingProperties());
    ExpectFullOptions(setting.m_Options);
    EXPECT_EQ(setting.GetErrorMsg(), "before");

    setting.SetSettingProperties(setting.GetSettingProperties());
    ExpectFullRecord(setting.GetSettingProperties());

    setting.SetSettingProperties(RedfishConfigSettingInfoStru());
    EXPECT_EQ(setting.GetSettingProperties().AttributeName, std::nullopt);
    EXPECT_TRUE(setting.GetSettingProperties().expressionMaps.empty());
}

TEST(SettingAccessors, GetSettingPropertiesIsTheRecordItself)
{
    Probe<RedfishConfigTextSetting> setting(FullRecord());
    const RedfishConfigSettingInfoStru& record = setting.GetSettingProperties();
    EXPECT_EQ(&setting.GetSettingProperties(), &record);
    setting.setCurrentValue(std::string("changed"));
    EXPECT_EQ(record.CurrentValue, SettingValue(std::string("changed")));
    setting.SetSettingDependencyList({"Other"});
    EXPECT_EQ(record.dependencySettings, std::vector<std::string>{"Other"});
    RedfishConfigSettingInfoStru empty;
    empty.AttributeName = "Replaced";
    setting.SetSettingProperties(empty);
    EXPECT_EQ(record.AttributeName, "Replaced");
    EXPECT_TRUE(record.expressionMaps.empty());
    RedfishConfigSetting& base = setting;
    base = Probe<RedfishConfigTextSetting>(FullRecord());
    ExpectFullRecord(record);
}

TEST(SettingAccessors, AnEmptyRecordMayBeWrittenAsBraces)
{
    const RedfishConfigTextSetting setting({}, {});
    EXPECT_EQ(setting.GetSettingProperties().AttributeName, std::nullopt);
}

TEST(SettingAccessors, CopiesHaveRecordsOfTheirOwn)
{
    Probe<RedfishConfigTextSetting> setting(FullRecord());
    setting.GetSettingProperties();
    Probe<RedfishConfigTextSetting> copy(setting);
    copy.setCurrentValue(std::string("changed"));
    EXPECT_EQ(copy.GetSettingProperties().CurrentValue, SettingValue(std::string("changed")));
    ExpectFullRecord(setting.GetSettingProperties());
}

TEST(SettingAccessors, SetSettingDependencyListReplacesTheList)
{
    Probe<RedfishConfigTextSetting> setting(FullRecord());
    setting.SetSettingDependencyList({"X", "Y", "Z"});
    EXPECT_EQ(setting.GetSettingProperties().dependencySettings, (std::vector<std::string>{"X", "Y", "Z"}));
    setting.SetSettingDependencyList(setting.GetSettingProperties().dependencySettings);
    EXPECT_EQ(setting.GetSettingProperties().dependencySettings, (std::vector<std::string>{"X", "Y", "Z"}));
    setting.SetSettingDependencyList({});
    EXPECT_TRUE(setting.GetSettingProperties().dependencySettings.empty());
}

TEST(SettingAccessors, GetErrorMsgIsACopy)
{
    Probe<RedfishConfigTextSetting> setting(FullRecord());
    setting.m_ErrMsg = "a reason";
    const std::string reason = setting.GetErrorMsg();
    setting.filter(FILTER_QUERY_DEFAULT);
    EXPECT_EQ(reason, "a reason");
    EXPECT_EQ(setting.GetErrorMsg(), "");
}

// ---- the static gate

TEST(StaticGate, ReadsTheFlagsInItsOrder)
{
    for (unsigned flags = 0; flags < 16; ++flags) {
        RedfishConfigSettingInfoStru record = Named("A");
        record.Hidden = (flags & 1U) != 0;
        record.ReadOnly = (flags & 2U) != 0;
        record.GrayOut = (flags & 4U) != 0;
        record.Immutable = (flags & 8U) != 0;
        std::pair<bool, std::string> expected{true, "untouched"};
        if (record.Hidden) {
            expected = {false, "This setting is hidden."};
        } else if (record.ReadOnly || record.GrayOut) {
            expected = {false, "This setting is only for read."};
        } else if (record.Immutable) {
            expected = {false, "This setting value could not be modified."};
        }
        Probe<RedfishConfigTextSetting> setting(record);
        setting.m_ErrMsg = "before";
        EXPECT_EQ(CouldBePatched(setting), expected) << flags;
        EXPECT_EQ(setting.m_ErrMsg, "before") << flags;
    }
}

TEST(StaticGate, LooksAtNothingElse)
{
    RedfishConfigSettingInfoStru record;
    record.WriteOnly = true;
    record.ResetRequired = true;
    record.IsSystemUniqueProperty = true;
    for (const char* key : {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"}) {
        PropertyExpression& rule = record.expressionMaps[key];
        rule.MapToValue = SettingAlternative(true);
        rule.Formula = "true";
        rule.Valid = true;
    }
    Probe<RedfishConfigTextSetting> setting(record);
    EXPECT_EQ(CouldBePatched(setting), (std::pair<bool, std::string>(true, "untouched")));

    Config_Options options;
    options.IgnoreProtected = true;
    RedfishConfigSettingInfoStru hidden;
    hidden.Hidden = true;
    PropertyExpression& shown = hidden.expressionMaps["Hidden"];
    shown.MapToValue = SettingAlternative(false);
    shown.Formula = "true";
    shown.Valid = true;
    Probe<RedfishConfigTextSetting> stillHidden(hidden, options);
    EXPECT_EQ(CouldBePatched(stillHidden), (std::pair<bool, std::string>(false, "This setting is hidden.")));
}

} // namespace
