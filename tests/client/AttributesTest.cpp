#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// What is repaired in attributes and values.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char first[] = "/RegistryEntries/Attributes/0";

/** The attribute after adapting, and the findings about it without its place. */
struct Repaired {
    json::object attribute;
    std::vector<std::string> findings;
    SettingValueMap values;
};

Repaired Repair(const char* attribute, const SettingValueMap& values = {})
{
    RegistryBuilder registry;
    registry.RawAttribute(json::parse(attribute));
    const Adaptation adapted = AdaptRegistry(registry.Json(), values);
    ExpectStable(adapted);
    Repaired repaired{AdaptedAttribute(adapted), Lines(adapted.Findings), adapted.Values};
    for (std::string& line : repaired.findings) {
        const std::size_t place = line.find(first);
        if (place != std::string::npos) {
            line.erase(place, std::string(first).size());
        }
    }
    return repaired;
}

TEST(AttributeKeys, TakeOtherAndOlderSpellings)
{
    const Repaired repaired = Repair(
        R"({"Name": "A", "type": "Enumeration", "Readonly": true, "Values": [{"Name": "x", "displayname": "X"}]})");
    EXPECT_EQ(json::value(repaired.attribute),
              json::parse(R"({"AttributeName": "A", "Type": "Enumeration", "ReadOnly": true,
                              "Value": [{"ValueName": "x", "ValueDisplayName": "X"}]})"));
    EXPECT_THAT(repaired.findings,
                testing::UnorderedElementsAre("note key-name /Name", "note key-name /type", "note key-name /Readonly",
                                              "note key-name /Values", "note key-name /Value/0/Name",
                                              "note key-name /Value/0/displayname"));
}

TEST(AttributeKeys, LeaveAKeyThatIsThere)
{
    const Repaired repaired = Repair(R"({"AttributeName": "A", "Name": "other", "Type": "String"})");
    EXPECT_EQ(repaired.attribute.at("AttributeName"), "A");
    EXPECT_EQ(repaired.attribute.at("Name"), "other");
    EXPECT_THAT(repaired.findings, IsEmpty());
}

TEST(AttributeKinds, AreTheOnesThatTheLibraryReads)
{
    const struct {
        const char* member;
        json::value becomes; ///< null: left out
        std::vector<std::string> findings;
    } rows[] = {
        {R"("ReadOnly": "True")", true, {"note wrong-kind /ReadOnly"}},
        {R"("ReadOnly": 0)", false, {"note wrong-kind /ReadOnly"}},
        {R"("ReadOnly": "perhaps")", nullptr, {"warning wrong-kind /ReadOnly"}},
        {R"("ReadOnly": [])", nullptr, {"warning wrong-kind /ReadOnly"}},
        {R"("UpperBound": "16")", 16, {"note wrong-kind /UpperBound"}},
        {R"("UpperBound": "0x10")", 16, {"note wrong-kind /UpperBound"}},
        {R"("UpperBound": "many")", nullptr, {"warning wrong-kind /UpperBound"}},
        {R"("UpperBound": 18446744073709551615)", nullptr, {"note number-beyond-range /UpperBound"}},
        {R"("LowerBound": -1e30)", nullptr, {"warning number-beyond-range /LowerBound"}},
        {R"("LowerBound": 1.5)", nullptr, {"warning number-beyond-range /LowerBound"}},
        {R"("DisplayName": 5)", nullptr, {"warning wrong-kind /DisplayName"}},
        {R"("HelpText": {})", nullptr, {"warning wrong-kind /HelpText"}},
        {R"("Value": "x")", nullptr, {"warning wrong-kind /Value"}},
        {R"("CurrentValue": [1])", nullptr, {"warning unusable-value /CurrentValue"}},
        {R"("CurrentValue": 1e30)", nullptr, {"warning unusable-value /CurrentValue"}},
        {R"("ValueExpression": "([")", nullptr, {"warning unusable-pattern /ValueExpression"}},
        {R"("ValueExpression": "^[A-Z]+$")", "^[A-Z]+$", {}},
        {R"("ReadOnly": true)", true, {}},
    };
    for (const auto& row : rows) {
        const Repaired repaired =
            Repair((std::string(R"({"AttributeName": "A", "Type": "Integer", )") + row.member + "}").c_str());
        const std::string key = std::string(row.member).substr(1, std::string(row.member).find("\":") - 1);
        const json::value* member = repaired.attribute.if_contains(key);
        EXPECT_EQ(member != nullptr ? *member : json::value(), row.becomes) << row.member;
        EXPECT_EQ(member == nullptr, row.becomes.is_null()) << row.member;
        EXPECT_EQ(repaired.findings, row.findings) << row.member;
    }
}

TEST(AttributeBounds, OfMinusOneAreNone)
{
    Repaired repaired = Repair(R"({"AttributeName": "A", "Type": "Integer", "LowerBound": 0, "UpperBound": -1})");
    EXPECT_FALSE(repaired.attribute.contains("UpperBound"));
    EXPECT_THAT(repaired.findings, ElementsAre("note no-bound /UpperBound"));
    repaired = Repair(R"({"AttributeName": "A", "Type": "Integer", "LowerBound": -5, "UpperBound": -1})");
    EXPECT_THAT(repaired.findings, IsEmpty());
    repaired = Repair(R"({"AttributeName": "A", "Type": "Integer", "LowerBound": 5, "UpperBound": 1})");
    EXPECT_EQ(repaired.attribute.at("UpperBound"), 1);
    EXPECT_THAT(repaired.findings, ElementsAre("warning contradictory-bounds "));
}

TEST(AttributeList, KeepsOneAttributeOfAName)
{
    RegistryBuilder registry;
    registry.Attribute("Mode", "String").Attribute("MODE", "Integer").Attribute("Mode", "Boolean");
    registry.RawAttribute(5).RawAttribute(json::object{}).RawAttribute({{"AttributeName", ""}});
    registry.Attribute("Other", "Number");
    const Adaptation adapted = AdaptRegistry(registry.Json());
    ExpectStable(adapted);
    const json::array list = AdaptedList(adapted, "Attributes");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].at("Type"), "String");
    EXPECT_THAT(Lines(adapted.Findings), ElementsAre("warning repeated-attribute /RegistryEntries/Attributes/1",
                                                     "warning repeated-attribute /RegistryEntries/Attributes/2",
                                                     "error wrong-kind /RegistryEntries/Attributes/3",
                                                     "error unnamed-attribute /RegistryEntries/Attributes/4",
                                                     "error unnamed-attribute /RegistryEntries/Attributes/5",
                                                     "warning unknown-type /RegistryEntries/Attributes/6"));
}

TEST(AttributeList, IsToldWhenThereIsNone)
{
    for (const char* text : {R"({"RegistryEntries": {}})", R"({"RegistryEntries": {"Attributes": {}}})"}) {
        const Adaptation adapted = Adapt(ReadRegistryDocument(text), {});
        EXPECT_THAT(Lines(adapted.Findings), ElementsAre("error wrong-kind /RegistryEntries/Attributes"));
        EXPECT_TRUE(StatusOfAll(adapted).empty());
        ExpectStable(adapted);
    }
}

TEST(Choices, HaveADisplayNameAndAreThereOnce)
{
    const Repaired repaired = Repair(R"({"AttributeName": "A", "Type": "Enumeration", "Value": [
        {"ValueName": "a"}, {"ValueName": "b", "ValueDisplayName": null}, {"ValueName": "a", "ValueDisplayName": "A"},
        "c", {"ValueName": 5, "ValueDisplayName": "Five"}, {"ValueDisplayName": "D"}, {}]})");
    EXPECT_EQ(repaired.attribute.at("Value"),
              json::parse(R"([{"ValueName": "a", "ValueDisplayName": "a"}, {"ValueName": "b", "ValueDisplayName": "b"},
                              {"ValueName": "c", "ValueDisplayName": "c"}, {"ValueName": "5", "ValueDisplayName": "Five"},
                              {"ValueName": "D", "ValueDisplayName": "D"}])"));
    EXPECT_THAT(repaired.findings,
                ElementsAre("note wrong-kind /Value/3", "note wrong-kind /Value/4", "warning wrong-kind /Value/5",
                            "warning wrong-kind /Value/6", "note choice-without-display-name /Value",
                            "warning repeated-choice /Value"));
}

TEST(Choices, AreMissedInAnEnumeration)
{
    EXPECT_THAT(Repair(R"({"AttributeName": "A", "Type": "Enumeration"})").findings,
                ElementsAre("warning no-choices "));
    EXPECT_THAT(Repair(R"({"AttributeName": "A", "Type": "Boolean"})").findings, IsEmpty());
}

constexpr char mode[] = R"({"AttributeName": "A", "Type": "Enumeration", "Value": [
    {"ValueName": "0", "ValueDisplayName": "Off"}, {"ValueName": "1", "ValueDisplayName": "On"}]})";

TEST(DisplayNames, AreTheValuesWhereTheCurrentValueIsOne)
{
    const Repaired repaired = Repair(mode, {{"A", std::string("On")}});
    EXPECT_EQ(
        repaired.attribute.at("Value"),
        json::parse(
            R"([{"ValueName": "Off", "ValueDisplayName": "Off"}, {"ValueName": "On", "ValueDisplayName": "On"}])"));
    EXPECT_EQ(repaired.values, (SettingValueMap{{"A", std::string("On")}}));
    EXPECT_THAT(repaired.findings, ElementsAre("note display-names-are-values /Value"));
}

TEST(DisplayNames, ThatOccurTwiceAreOneValue)
{
    const Repaired repaired = Repair(R"({"AttributeName": "A", "Type": "Enumeration", "CurrentValue": "On", "Value": [
        {"ValueName": "0", "ValueDisplayName": "On"}, {"ValueName": "1", "ValueDisplayName": "On"}]})");
    EXPECT_EQ(repaired.attribute.at("Value"), json::parse(R"([{"ValueName": "On", "ValueDisplayName": "On"}])"));
    EXPECT_THAT(repaired.findings,
                ElementsAre("note display-names-are-values /Value", "warning repeated-choice /Value"));
}

TEST(DisplayNames, BecomeValueNamesWhereTheCurrentValueIsOneOfThose)
{
    json::object attribute = json::parse(mode).as_object();
    attribute["DefaultValue"] = "Off";
    const Repaired repaired = Repair(json::serialize(attribute).c_str(), {{"A", std::string("1")}});
    EXPECT_EQ(repaired.attribute.at("DefaultValue"), "0");
    EXPECT_EQ(repaired.attribute.at("Value"), attribute.at("Value"));
    EXPECT_THAT(repaired.findings, ElementsAre("note display-name-for-value /DefaultValue"));
}

TEST(DisplayNames, AreTheValuesOfAnUndecidedAttributeWhereTheyAreOfMostOthers)
{
    RegistryBuilder registry;
    json::object attribute = json::parse(mode).as_object();
    for (const char* name : {"A", "B", "C"}) {
        attribute["AttributeName"] = name;
        registry.RawAttribute(attribute);
    }
    registry.Attribute("T", "Boolean");
    registry.Rule("T", "Hidden", true, {Term{"C", "EQU", "On"}});
    registry.Rule("T", "ReadOnly", true, {Term{"C", "EQU", "1"}});
    const auto rulesUnder = [&registry](const SettingValueMap& values) {
        const Adaptation adapted = AdaptRegistry(registry.Json(), values);
        ExpectStable(adapted);
        return AdaptedRules(adapted);
    };
    EXPECT_THAT(rulesUnder({{"A", std::string("On")}}),
                ElementsAre("(C EQU On) T.Hidden true", "(C EQU On) T.ReadOnly true"));
    EXPECT_THAT(rulesUnder({{"A", std::string("1")}}),
                ElementsAre("(C EQU 1) T.Hidden true", "(C EQU 1) T.ReadOnly true"));
    EXPECT_THAT(rulesUnder({{"A", std::string("1")}, {"B", std::string("On")}}),
                ElementsAre("(C EQU 1) T.Hidden true", "(C EQU 1) T.ReadOnly true"));
    EXPECT_THAT(rulesUnder({}), ElementsAre("(C EQU 1) T.Hidden true", "(C EQU 1) T.ReadOnly true"));
}

TEST(Values, AreOfTheirAttributesTypes)
{
    const struct {
        const char* type;
        SettingValue published;
        SettingValue becomes;
        std::vector<std::string> findings;
    } rows[] = {
        {"Integer", std::string("5"), std::int64_t{5}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string(" -5 "), std::int64_t{-5}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string("+5"), std::int64_t{5}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string("5x"), std::string("5x"), {"warning value-of-other-type /Attributes/a"}},
        {"Integer", std::string("0x-5"), std::string("0x-5"), {"warning value-of-other-type /Attributes/a"}},
        {"Integer", true, true, {"warning value-of-other-type /Attributes/a"}},
        {"Boolean", std::string("TRUE"), true, {"note value-of-other-type /Attributes/a"}},
        {"Boolean", std::int64_t{0}, false, {"note value-of-other-type /Attributes/a"}},
        {"Boolean", std::int64_t{2}, std::int64_t{2}, {"warning value-of-other-type /Attributes/a"}},
        {"String", std::int64_t{5}, std::string("5"), {"note value-of-other-type /Attributes/a"}},
        {"String", false, std::string("false"), {"note value-of-other-type /Attributes/a"}},
        {"Enumeration", std::int64_t{5}, std::string("5"), {"note value-of-other-type /Attributes/a"}},
        {"Enumeration", std::string("6"), std::string("6"), {"warning value-not-a-choice /Attributes/a"}},
        {"String", std::nullopt, std::nullopt, {}},
        {"Integer", std::int64_t{5}, std::int64_t{5}, {}},
    };
    for (const auto& row : rows) {
        const std::string attribute =
            std::string(R"({"AttributeName": "A", "Value": [{"ValueName": "5", "ValueDisplayName": "5"}], "Type": ")") +
            row.type + "\"}";
        const Repaired repaired = Repair(attribute.c_str(), {{"a", row.published}});
        EXPECT_EQ(repaired.values, (SettingValueMap{{"a", row.becomes}})) << row.type;
        EXPECT_EQ(repaired.findings, row.findings) << row.type;
    }
}

TEST(Values, OfUnknownAttributesStayAndAreTold)
{
    const Repaired repaired = Repair(R"({"AttributeName": "A", "Type": "String"})", {{"B", std::int64_t{1}}});
    EXPECT_EQ(repaired.values, (SettingValueMap{{"B", std::int64_t{1}}}));
    EXPECT_THAT(repaired.findings, ElementsAre("note unknown-name /Attributes/B"));
}

TEST(Values, OfPasswordsAreNotTold)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Password", {{"DefaultValue", 12345678}});
    const Adaptation adapted = AdaptRegistry(registry.Json(), {{"A", std::int64_t{87654321}}});
    EXPECT_EQ(adapted.Findings.size(), 2U);
    for (const Finding& finding : adapted.Findings) {
        EXPECT_EQ((finding.Found + finding.Done).find("5678"), std::string::npos);
        EXPECT_EQ((finding.Found + finding.Done).find("8765"), std::string::npos);
    }
}

TEST(Values, MayBelongToAnotherRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String");
    const RegistryDocument document = ReadRegistryDocument(registry.Text());
    const auto lines = [&document](const char* values) {
        return Lines(Adapt(document, ReadValuesDocument(values)).Findings);
    };
    EXPECT_THAT(lines(R"({"AttributeRegistry": "TestRegistry", "Attributes": {"A": "x"}})"), IsEmpty());
    EXPECT_THAT(lines(R"({"AttributeRegistry": "Other", "Attributes": {"A": "x"}})"),
                ElementsAre("note foreign-registry /AttributeRegistry"));
    EXPECT_THAT(lines(R"({"AttributeRegistry": "Other", "Attributes": {"B": "x"}})"),
                ElementsAre("note unknown-name /Attributes/B", "warning foreign-registry /AttributeRegistry"));
}

TEST(Registry, KeepsWhatAdaptingDoesNotConcern)
{
    const json::value document = json::parse(R"({"@odata.id": "/x", "Id": "R", "SupportedSystems": [1, {"a": null}],
        "RegistryEntries": {"Menus": [{"MenuName": "M"}], "Attributes": [{"AttributeName": "A", "Type": "String", "Oem": {"x": 1}}],
        "Dependencies": [{"Type": "Map", "DependencyFor": "A", "Oem": 5, "Dependency": {"MapFrom": [{"MapFromAttribute": "A",
            "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": null}],
            "MapToAttribute": "A", "MapToProperty": "Hidden", "MapToValue": true}}]}})");
    EXPECT_EQ(json::parse(AdaptRegistry(document).RegistryText), document);
}

} // namespace
