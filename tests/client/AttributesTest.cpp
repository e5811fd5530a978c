#include "ClientTest.h"

#include "support/RegistryBuilder.h"

// What attributes and menus are read as, and what values systems have for them.

namespace {

using namespace ClientTest;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/** Findings as Lines(), the attribute's own pointer left out: "note key-name /Name". */
std::vector<std::string> ShortLines(const std::vector<Finding>& findings)
{
    std::vector<std::string> lines = Lines(findings);
    for (std::string& line : lines) {
        constexpr std::string_view first = "/RegistryEntries/Attributes/0";
        const std::size_t pointer = line.find(first);
        if (pointer != std::string::npos) {
            line.erase(pointer, first.size());
        }
    }
    return lines;
}

/** A registry with one attribute, as JSON text. */
std::shared_ptr<const Model> ModelWith(const std::string& attribute)
{
    RegistryBuilder registry;
    registry.RawAttribute(json::parse(attribute));
    return ModelOf(registry.Json());
}

/** The choices, each as "NAME" or "NAME=DISPLAYNAME". */
std::vector<std::string> ChoiceTexts(const std::vector<Choice>& choices)
{
    std::vector<std::string> texts;
    for (const Choice& choice : choices) {
        texts.push_back(choice.Name == choice.DisplayName ? choice.Name : choice.Name + "=" + choice.DisplayName);
    }
    return texts;
}

/** The names of all flags that are set. */
std::vector<std::string> FlagTexts(FlagSet flags)
{
    std::vector<std::string> names;
    for (std::size_t number = 0; number < flagCount; ++number) {
        if (flags.Has(static_cast<Property>(number))) {
            names.emplace_back(Name(static_cast<Property>(number)));
        }
    }
    return names;
}

TEST(AttributeReading, TakesEveryMember)
{
    const auto model = ModelWith(R"({"AttributeName": "A", "Type": "Integer", "CurrentValue": 4, "DefaultValue": 5,
        "DisplayName": "An A", "HelpText": "Help", "WarningText": "Beware", "MenuPath": "./M", "DisplayOrder": 9,
        "ReadOnly": true, "WriteOnly": true, "Hidden": true, "GrayOut": true, "Immutable": true,
        "IsSystemUniqueProperty": true, "ResetRequired": true, "LowerBound": -3, "UpperBound": 30,
        "ScalarIncrement": 3, "MinLength": 1, "MaxLength": 2, "ValueExpression": "^[0-9]+$", "Oem": {"x": 1}})");
    const Attribute& attribute = model->Attributes().at(0);
    EXPECT_EQ(attribute.Name, "A");
    EXPECT_EQ(attribute.Type, AttributeType::Integer);
    EXPECT_EQ(attribute.Position, 0U);
    EXPECT_EQ(attribute.CurrentValue, Value(std::int64_t{4}));
    EXPECT_EQ(attribute.DefaultValue, Value(std::int64_t{5}));
    EXPECT_EQ(attribute.DisplayName, "An A");
    EXPECT_EQ(attribute.HelpText, "Help");
    EXPECT_EQ(attribute.WarningText, "Beware");
    EXPECT_EQ(attribute.MenuPath, "./M");
    EXPECT_EQ(attribute.DisplayOrder, 9);
    EXPECT_EQ(attribute.LowerBound, -3);
    EXPECT_EQ(attribute.UpperBound, 30);
    EXPECT_EQ(attribute.ScalarIncrement, 3);
    EXPECT_EQ(attribute.MinLength, 1);
    EXPECT_EQ(attribute.MaxLength, 2);
    EXPECT_EQ(attribute.Pattern, "^[0-9]+$");
    EXPECT_EQ(FlagTexts(attribute.Flags).size(), flagCount);
    EXPECT_THAT(model->Findings(), IsEmpty());
}

TEST(AttributeReading, LeavesOutWhatIsAbsentOrNull)
{
    for (const char* text :
         {R"({"AttributeName": "A", "Type": "String"})",
          R"({"AttributeName": "A", "Type": "String", "CurrentValue": null, "ReadOnly": null, "UpperBound": null,
              "HelpText": null, "Value": null, "ValueExpression": null, "DefaultValue": null})"}) {
        const auto model = ModelWith(text);
        const Attribute& attribute = model->Attributes().at(0);
        EXPECT_FALSE(HasValue(attribute.CurrentValue) || HasValue(attribute.DefaultValue));
        EXPECT_FALSE(attribute.UpperBound || attribute.HelpText || attribute.Pattern || attribute.DisplayName);
        EXPECT_THAT(FlagTexts(attribute.Flags), IsEmpty());
        EXPECT_THAT(attribute.Choices, IsEmpty());
        EXPECT_THAT(model->Findings(), IsEmpty());
    }
}

TEST(AttributeKeys, MayHaveOtherAndOlderSpellings)
{
    const auto model = ModelWith(
        R"({"Name": "A", "type": "Enumeration", "Readonly": true, "Values": [{"Name": "x", "displayname": "X"}]})");
    const Attribute& attribute = model->Attributes().at(0);
    EXPECT_EQ(attribute.Name, "A");
    EXPECT_EQ(attribute.Type, AttributeType::Enumeration);
    EXPECT_THAT(FlagTexts(attribute.Flags), ElementsAre("ReadOnly"));
    EXPECT_THAT(ChoiceTexts(attribute.Choices), ElementsAre("x=X"));
    EXPECT_THAT(ShortLines(model->Findings()),
                UnorderedElementsAre("note key-name /Name", "note key-name /type", "note key-name /Readonly",
                                     "note key-name /Values", "note key-name /Values/0/Name",
                                     "note key-name /Values/0/displayname"));
}

TEST(AttributeKeys, OfTodayGoBeforeOthers)
{
    for (const char* text : {R"({"AttributeName": "A", "Name": "other", "Type": "String"})",
                             R"({"Name": "other", "AttributeName": "A", "Type": "String"})",
                             R"({"ATTRIBUTENAME": "other", "AttributeName": "A", "Type": "String"})"}) {
        const auto model = ModelWith(text);
        EXPECT_EQ(model->Attributes().at(0).Name, "A") << text;
        EXPECT_THAT(model->Findings(), IsEmpty()) << text;
    }
}

TEST(AttributeTypes, AreFoundInAnyLetterCase)
{
    const struct {
        const char* Type;
        AttributeType Is;
        std::vector<std::string> Findings;
    } rows[] = {
        {R"("Boolean")", AttributeType::Boolean, {}},
        {R"("enumeration")", AttributeType::Enumeration, {"warning no-choices "}},
        {R"("INTEGER")", AttributeType::Integer, {}},
        {R"("Password")", AttributeType::Password, {}},
        {R"("String")", AttributeType::String, {}},
        {R"("Number")", AttributeType::Unknown, {"warning unknown-type "}},
        {R"("Unknown")", AttributeType::Unknown, {"warning unknown-type "}},
        {R"("")", AttributeType::Unknown, {"warning unknown-type "}},
        {"5", AttributeType::Unknown, {"warning unknown-type "}},
        {"null", AttributeType::Unknown, {"warning unknown-type "}},
    };
    for (const auto& row : rows) {
        const auto model = ModelWith(std::string(R"({"AttributeName": "A", "Type": )") + row.Type + "}");
        EXPECT_EQ(model->Attributes().at(0).Type, row.Is) << row.Type;
        EXPECT_EQ(ShortLines(model->Findings()), row.Findings) << row.Type;
    }
    EXPECT_THAT(ShortLines(ModelWith(R"({"AttributeName": "A"})")->Findings()), ElementsAre("warning unknown-type "));
}

TEST(AttributeFlags, AreBooleansOrWhatReadsAsOne)
{
    const struct {
        const char* Flag;
        bool Is;
        std::vector<std::string> Findings;
    } rows[] = {
        {"true", true, {}},
        {"false", false, {}},
        {R"("True")", true, {"note wrong-kind /GrayOut"}},
        {R"("false")", false, {"note wrong-kind /GrayOut"}},
        {"0", false, {"note wrong-kind /GrayOut"}},
        {"1", true, {"note wrong-kind /GrayOut"}},
        {"2", false, {"warning wrong-kind /GrayOut"}},
        {R"("perhaps")", false, {"warning wrong-kind /GrayOut"}},
        {"[]", false, {"warning wrong-kind /GrayOut"}},
    };
    for (const auto& row : rows) {
        const auto model =
            ModelWith(std::string(R"({"AttributeName": "A", "Type": "String", "GrayOut": )") + row.Flag + "}");
        EXPECT_EQ(model->Attributes().at(0).Flags.Has(Property::GrayOut), row.Is) << row.Flag;
        EXPECT_EQ(ShortLines(model->Findings()), row.Findings) << row.Flag;
    }
}

TEST(AttributeNumbers, AreWholeOrTextsThatReadAsOne)
{
    const struct {
        const char* Number;
        std::optional<std::int64_t> Is;
        std::vector<std::string> AsUpperBound, AsLowerBound;
    } rows[] = {
        {"16", 16, {}, {}},
        {"16.0", 16, {}, {}},
        {R"("16")", 16, {"note wrong-kind /UpperBound"}, {"note wrong-kind /LowerBound"}},
        {R"("0x10")", 16, {"note wrong-kind /UpperBound"}, {"note wrong-kind /LowerBound"}},
        {R"("many")", {}, {"warning wrong-kind /UpperBound"}, {"warning wrong-kind /LowerBound"}},
        {R"("")", {}, {"warning wrong-kind /UpperBound"}, {"warning wrong-kind /LowerBound"}},
        {"true", {}, {"warning wrong-kind /UpperBound"}, {"warning wrong-kind /LowerBound"}},
        {"[5]", {}, {"warning wrong-kind /UpperBound"}, {"warning wrong-kind /LowerBound"}},
        {"18446744073709551615",
         {},
         {"note number-beyond-range /UpperBound"},
         {"warning number-beyond-range /LowerBound"}},
        {"-1e30", {}, {"note number-beyond-range /UpperBound"}, {"warning number-beyond-range /LowerBound"}},
        {"1.5", {}, {"note number-beyond-range /UpperBound"}, {"warning number-beyond-range /LowerBound"}},
    };
    for (const auto& row : rows) {
        const std::string begin = R"({"AttributeName": "A", "Type": "Integer", ")";
        auto model = ModelWith(begin + R"(UpperBound": )" + row.Number + "}");
        EXPECT_EQ(model->Attributes().at(0).UpperBound, row.Is) << row.Number;
        EXPECT_EQ(ShortLines(model->Findings()), row.AsUpperBound) << row.Number;
        model = ModelWith(begin + R"(LowerBound": )" + row.Number + "}");
        EXPECT_EQ(model->Attributes().at(0).LowerBound, row.Is) << row.Number;
        EXPECT_EQ(ShortLines(model->Findings()), row.AsLowerBound) << row.Number;
    }
}

TEST(AttributeBounds, OfMinusOneBelowTheLowerOneAreNone)
{
    const struct {
        std::int64_t Lower, Upper;
        std::optional<std::int64_t> UpperIs;
        std::vector<std::string> Findings;
    } rows[] = {
        {0, -1, {}, {"note no-bound /UpperBound"}},
        {7, -1, {}, {"note no-bound /UpperBound"}},
        {-1, -1, -1, {}},
        {-5, -1, -1, {}},
        {5, 5, 5, {}},
        {5, 1, 1, {"warning contradictory-bounds "}},
        {0, -2, -2, {"warning contradictory-bounds "}},
    };
    for (const auto& row : rows) {
        RegistryBuilder registry;
        registry.Attribute("A", "Integer", {{"LowerBound", row.Lower}, {"UpperBound", row.Upper}});
        const auto model = ModelOf(registry.Json());
        EXPECT_EQ(model->Attributes().at(0).LowerBound, row.Lower);
        EXPECT_EQ(model->Attributes().at(0).UpperBound, row.UpperIs) << row.Lower << " " << row.Upper;
        EXPECT_EQ(ShortLines(model->Findings()), row.Findings) << row.Lower << " " << row.Upper;
    }
    const auto model = ModelWith(R"({"AttributeName": "A", "Type": "String", "MinLength": 0, "MaxLength": -1})");
    EXPECT_EQ(model->Attributes().at(0).MaxLength, std::nullopt);
    EXPECT_THAT(ShortLines(model->Findings()), ElementsAre("note no-bound /MaxLength"));
}

TEST(AttributeTexts, OfOtherKindsAreLeftOut)
{
    for (const char* key : {"DisplayName", "HelpText", "WarningText", "MenuPath", "ValueExpression"}) {
        for (const char* value : {"5", "{}", "true", "[\"x\"]"}) {
            const auto model =
                ModelWith(std::string(R"({"AttributeName": "A", "Type": "String", ")") + key + "\": " + value + "}");
            const Attribute& attribute = model->Attributes().at(0);
            EXPECT_FALSE(attribute.DisplayName || attribute.HelpText || attribute.WarningText || attribute.MenuPath ||
                         attribute.Pattern);
            EXPECT_THAT(ShortLines(model->Findings()), ElementsAre(std::string("warning wrong-kind /") + key));
        }
    }
}

TEST(AttributePatterns, ThatTheCoreCannotUseAreReportedAndNotHandedOn)
{
    const auto model = ModelWith(R"({"AttributeName": "A", "Type": "String", "ValueExpression": "(["})");
    EXPECT_EQ(model->Attributes().front().Pattern, "([");
    EXPECT_THAT(ShortLines(LintRegistry(*model)), ElementsAre("warning unusable-pattern /ValueExpression"));
    EXPECT_EQ(PlainRegistryText(model->Attributes()).find("ValueExpression"), std::string::npos);
    const auto usable = ModelWith(R"({"AttributeName": "A", "Type": "String", "ValueExpression": "[a-z]*"})");
    EXPECT_THAT(ShortLines(LintRegistry(*usable)), IsEmpty());
    EXPECT_NE(PlainRegistryText(usable->Attributes()).find("ValueExpression"), std::string::npos);
}

TEST(AttributeList, KeepsOneAttributeOfAName)
{
    RegistryBuilder registry;
    registry.Attribute("Mode", "String").Attribute("MODE", "Integer").Attribute("Mode", "Boolean");
    registry.RawAttribute(5).RawAttribute(json::object{}).RawAttribute({{"AttributeName", ""}});
    registry.Attribute("Other", "Number");
    const auto model = ModelOf(registry.Json());
    ASSERT_EQ(model->Attributes().size(), 2U);
    EXPECT_EQ(model->Attributes()[0].Type, AttributeType::String);
    EXPECT_EQ(model->Attributes()[1].Position, 6U);
    EXPECT_EQ(model->PointerToAttribute(1), "/RegistryEntries/Attributes/6");
    EXPECT_THAT(Lines(model->Findings()),
                UnorderedElementsAre("warning repeated-attribute /RegistryEntries/Attributes/1",
                                     "warning repeated-attribute /RegistryEntries/Attributes/2",
                                     "error wrong-kind /RegistryEntries/Attributes/3",
                                     "error unnamed-attribute /RegistryEntries/Attributes/4",
                                     "error unnamed-attribute /RegistryEntries/Attributes/5",
                                     "warning unknown-type /RegistryEntries/Attributes/6"));
    std::map<std::string, std::string> about;
    for (const Finding& finding : model->Findings()) {
        about[finding.Pointer.substr(finding.Pointer.size() - 1)] = finding.Attribute;
    }
    EXPECT_EQ(about, (std::map<std::string, std::string>{
                         {"1", "MODE"}, {"2", "Mode"}, {"3", ""}, {"4", ""}, {"5", ""}, {"6", "Other"}}));
}

TEST(AttributeList, IsReportedWhenThereIsNone)
{
    for (const char* text : {R"({"RegistryEntries": {}})", R"({"RegistryEntries": {"Attributes": {}}})"}) {
        const auto model = Model::Read(ReadRegistryDocument(text));
        EXPECT_THAT(Lines(model->Findings()), ElementsAre("error wrong-kind /RegistryEntries/Attributes"));
        EXPECT_THAT(model->Attributes(), IsEmpty());
    }
}

TEST(AttributeNames, AreFoundInAnyCaseOfAsciiLetters)
{
    RegistryBuilder registry;
    registry.Attribute("BootMode", "String").Attribute("bootmod", "String").Attribute("Gr\xC3\xB6\xC3\x9F", "String");
    const auto model = ModelOf(registry.Json());
    EXPECT_EQ(model->Find("BootMode"), 0U);
    EXPECT_EQ(model->Find("BOOTMODE"), 0U);
    EXPECT_EQ(model->Find("BootMod"), 1U);
    EXPECT_EQ(model->Find("gR\xC3\xB6\xC3\x9F"), 2U);
    EXPECT_EQ(model->Find("gr\xC3\x96\xC3\x9F"), std::nullopt); // another letter, as bytes are compared
    EXPECT_EQ(model->Find("BootMode "), std::nullopt);
    EXPECT_EQ(model->Find(""), std::nullopt);
}

TEST(RegistryNames, AreThoseOfTheDocument)
{
    const auto model = Model::Read(ReadRegistryDocument(
        R"({"Id": "R.1", "Language": "en", "RegistryVersion": "1.2.3", "RegistryEntries": {"Attributes": []}})"));
    EXPECT_EQ(model->Id(), "R.1");
    EXPECT_EQ(model->Language(), "en");
    EXPECT_EQ(model->RegistryVersion(), "1.2.3");
    EXPECT_EQ(Model::Read(ReadRegistryDocument(R"({"Id": 5, "RegistryEntries": {"Attributes": []}})"))->Id(), "");
}

TEST(Choices, AreReadInAllShapes)
{
    const auto model = ModelWith(R"({"AttributeName": "A", "Type": "Enumeration", "Value": [
        {"ValueName": "a"}, {"ValueName": "b", "ValueDisplayName": null}, {"ValueName": "a", "ValueDisplayName": "A"},
        "c", {"ValueName": 5, "ValueDisplayName": "Five"}, {"ValueDisplayName": "D"}, {}, null, 6, true,
        {"ValueName": "e", "ValueDisplayName": ""}, {"ValueName": "f", "ValueDisplayName": 7}]})");
    EXPECT_THAT(ChoiceTexts(model->Attributes().at(0).Choices),
                ElementsAre("a", "b", "a=A", "c", "5=Five", "D", "6", "true", "e", "f=7"));
    EXPECT_THAT(ShortLines(model->Findings()),
                ElementsAre("note wrong-kind /Value/3", "note wrong-kind /Value/4", "warning wrong-kind /Value/5",
                            "warning wrong-kind /Value/6", "warning wrong-kind /Value/7", "note wrong-kind /Value/8",
                            "note wrong-kind /Value/9", "note choice-without-display-name /Value"));
    EXPECT_EQ(model->Findings().back().Found, "6 choices have no display name");

    const SystemValues system(model); // of a, a the first counts
    EXPECT_THAT(ChoiceTexts(system.ChoicesOf(0)), ElementsAre("a", "b", "c", "5=Five", "D", "6", "true", "e", "f=7"));
    EXPECT_THAT(ShortLines(system.Findings(ValuesFrom({}))), ElementsAre("warning repeated-choice /Value"));
}

TEST(Choices, ThatAreNoListAreLeftOut)
{
    for (const char* list : {R"("x")", "{}", "5"}) {
        const auto model = ModelWith(std::string(R"({"AttributeName": "A", "Type": "String", "Value": )") + list + "}");
        EXPECT_THAT(model->Attributes().at(0).Choices, IsEmpty());
        EXPECT_THAT(ShortLines(model->Findings()), ElementsAre("warning wrong-kind /Value"));
    }
}

TEST(Choices, AreMissedInAnEnumeration)
{
    EXPECT_THAT(ShortLines(ModelWith(R"({"AttributeName": "A", "Type": "Enumeration"})")->Findings()),
                ElementsAre("warning no-choices "));
    EXPECT_THAT(ShortLines(ModelWith(R"({"AttributeName": "A", "Type": "Enumeration", "Value": []})")->Findings()),
                ElementsAre("warning no-choices "));
    EXPECT_THAT(ModelWith(R"({"AttributeName": "A", "Type": "Boolean"})")->Findings(), IsEmpty());
}

TEST(OwnValues, AreOfTheAttributesTypeWhereTheyCanBe)
{
    const struct {
        const char* Type;
        const char* Published;
        Value Is;
        std::vector<std::string> Findings;
    } rows[] = {
        {"Integer", "5", std::int64_t{5}, {}},
        {"Integer", "5.0", std::int64_t{5}, {}},
        {"Integer", R"("5")", std::int64_t{5}, {"note value-of-other-type "}},
        {"Integer", R"("0x1F")", std::int64_t{31}, {"note value-of-other-type "}},
        {"Integer", R"("five")", std::string("five"), {"warning value-of-other-type "}},
        {"Integer", "true", true, {"warning value-of-other-type "}},
        {"Integer", "[1]", Value(), {"warning unusable-value "}},
        {"Integer", "1e30", Value(), {"warning unusable-value "}},
        {"Integer", "1.5", Value(), {"warning unusable-value "}},
        {"Boolean", R"("TRUE")", true, {"note value-of-other-type "}},
        {"Boolean", "1", true, {"note value-of-other-type "}},
        {"Boolean", "2", std::int64_t{2}, {"warning value-of-other-type "}},
        {"String", "5", std::string("5"), {"note value-of-other-type "}},
        {"String", "false", std::string("false"), {"note value-of-other-type "}},
        {"Enumeration", "5", std::string("5"), {"note value-of-other-type "}},
        {"Enumeration", R"("Five")", std::string("Five"), {}}, // which of its names it is depends on the system
        {"Enumeration", R"("6")", std::string("6"), {"warning value-not-a-choice "}},
        {"Password", R"("x")", Secret("x"), {}},
        {"Password", "12", Secret("12"), {}},
        {"Password", "null", Value(), {}},
    };
    for (const auto& row : rows) {
        for (const std::string key : {"CurrentValue", "DefaultValue"}) {
            const auto model =
                ModelWith(R"({"AttributeName": "A", "Value": [{"ValueName": "5", "ValueDisplayName": "Five"}],
                "Type": ")" +
                          std::string(row.Type) + "\", \"" + key + "\": " + row.Published + "}");
            const Attribute& attribute = model->Attributes().at(0);
            EXPECT_EQ(key == "CurrentValue" ? attribute.CurrentValue : attribute.DefaultValue, row.Is)
                << row.Type << " " << row.Published;
            std::vector<std::string> findings;
            for (const std::string& finding : row.Findings) {
                findings.push_back(finding + "/" + key);
            }
            EXPECT_EQ(ShortLines(model->Findings()), findings) << row.Type << " " << row.Published;
        }
    }
}

TEST(SystemValues, AreOfTheirAttributesTypes)
{
    const struct {
        const char* Type;
        SettingValue Published;
        Value Is;
        std::vector<std::string> Findings;
    } rows[] = {
        {"Integer", std::string("5"), std::int64_t{5}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string(" -5 "), std::int64_t{-5}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string("+5"), std::int64_t{5}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string("0x1f"), std::int64_t{31}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string("007"), std::int64_t{7}, {"note value-of-other-type /Attributes/a"}},
        {"Integer", std::string("5x"), std::string("5x"), {"warning value-of-other-type /Attributes/a"}},
        {"Integer", std::string("0x-5"), std::string("0x-5"), {"warning value-of-other-type /Attributes/a"}},
        {"Integer", std::string("+-5"), std::string("+-5"), {"warning value-of-other-type /Attributes/a"}},
        {"Integer", std::string("0x"), std::string("0x"), {"warning value-of-other-type /Attributes/a"}},
        {"Integer", std::string(""), std::string(""), {"warning value-of-other-type /Attributes/a"}},
        {"Integer",
         std::string("9223372036854775808"),
         std::string("9223372036854775808"),
         {"warning value-of-other-type /Attributes/a"}},
        {"Integer", true, true, {"warning value-of-other-type /Attributes/a"}},
        {"Integer", std::int64_t{5}, std::int64_t{5}, {}},
        {"Boolean", std::string("TRUE"), true, {"note value-of-other-type /Attributes/a"}},
        {"Boolean", std::string("yes"), std::string("yes"), {"warning value-of-other-type /Attributes/a"}},
        {"Boolean", std::int64_t{0}, false, {"note value-of-other-type /Attributes/a"}},
        {"Boolean", std::int64_t{2}, std::int64_t{2}, {"warning value-of-other-type /Attributes/a"}},
        {"String", std::int64_t{5}, std::string("5"), {"note value-of-other-type /Attributes/a"}},
        {"String", false, std::string("false"), {"note value-of-other-type /Attributes/a"}},
        {"String", std::nullopt, Value(), {}},
        {"Enumeration", std::int64_t{5}, std::string("5"), {"note value-of-other-type /Attributes/a"}},
        {"Enumeration", std::string("6"), std::string("6"), {"warning value-not-a-choice /Attributes/a"}},
        {"Password", std::string("x"), Secret("x"), {}},
        {"Password", std::int64_t{5}, Secret("5"), {}},
        {"Password", std::nullopt, Value(), {}},
    };
    for (const auto& row : rows) {
        const auto model = ModelWith(
            std::string(R"({"AttributeName": "A", "Value": [{"ValueName": "5", "ValueDisplayName": "5"}], "Type": ")") +
            row.Type + "\"}");
        const ValuesDocument values = ValuesFrom({{"a", row.Published}});
        const SystemValues system(model, values);
        EXPECT_EQ(system.ValueOf(0), row.Is) << row.Type << " " << ToText(row.Is);
        EXPECT_EQ(ShortLines(system.Findings(values)), row.Findings) << row.Type << " " << ToText(row.Is);
    }
}

TEST(SystemValues, ComeFromTheSystemElseFromTheRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer", {{"CurrentValue", 1}, {"DefaultValue", 2}});
    registry.Attribute("B", "Integer", {{"DefaultValue", 2}});
    const auto model = ModelOf(registry.Json());
    const struct {
        const char* Values;
        ValueOrigin OriginOfA, OriginOfB;
        Value A, B;
    } rows[] = {
        {R"({"A": 3, "B": 4})", ValueOrigin::System, ValueOrigin::System, std::int64_t{3}, std::int64_t{4}},
        {R"({"a": 3, "b": null})", ValueOrigin::System, ValueOrigin::Null, std::int64_t{3}, Value()},
        {R"({"A": null})", ValueOrigin::Null, ValueOrigin::NotReported, Value(), Value()},
        {R"({"Other": 1})", ValueOrigin::Registry, ValueOrigin::NotReported, std::int64_t{1}, Value()},
        {R"({"A": [3]})", ValueOrigin::Null, ValueOrigin::NotReported, Value(), Value()},
    };
    for (const auto& row : rows) {
        const SystemValues system(model, ReadValuesDocument(row.Values));
        EXPECT_EQ(system.OriginOf(0), row.OriginOfA) << row.Values;
        EXPECT_EQ(system.OriginOf(1), row.OriginOfB) << row.Values;
        EXPECT_EQ(system.ValueOf(0), row.A) << row.Values;
        EXPECT_EQ(system.ValueOf(1), row.B) << row.Values;
        EXPECT_EQ(system.IsPresent(0), row.OriginOfA == ValueOrigin::System || row.OriginOfA == ValueOrigin::Null);
        EXPECT_EQ(system.IsPresent(1), row.OriginOfB == ValueOrigin::System || row.OriginOfB == ValueOrigin::Null);
    }
    const SystemValues alone(model);
    EXPECT_EQ(alone.OriginOf(0), ValueOrigin::Registry);
    EXPECT_EQ(alone.OriginOf(1), ValueOrigin::NotReported);
    EXPECT_EQ(&alone.Of(), model.get());
}

TEST(SystemValues, ThatAreAssumedCountAsReported)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Integer").Attribute("B", "Password");
    SystemValues system(ModelOf(registry.Json()));
    system.Assume(0, std::string("7"));
    EXPECT_EQ(system.ValueOf(0), Value(std::int64_t{7}));
    EXPECT_EQ(system.OriginOf(0), ValueOrigin::System);
    system.Assume(0, Value());
    EXPECT_EQ(system.ValueOf(0), Value());
    EXPECT_EQ(system.OriginOf(0), ValueOrigin::Null);
    system.Assume(1, std::string("x"));
    EXPECT_EQ(system.ValueOf(1), Value(Secret("x")));
}

TEST(SystemValues, OfUnknownAttributesAreReported)
{
    const auto model = ModelWith(R"({"AttributeName": "A", "Type": "String"})");
    const ValuesDocument values = ValuesFrom({{"B", std::int64_t{1}}});
    const std::vector<Finding> findings = SystemValues(model, values).Findings(values);
    EXPECT_THAT(Lines(findings), ElementsAre("note unknown-name /Attributes/B"));
    EXPECT_EQ(findings.at(0).In, Document::Values);
    EXPECT_EQ(findings.at(0).Attribute, "B");
}

TEST(SystemValues, MayBelongToAnotherRegistry)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String");
    const auto model = ModelOf(registry.Json());
    const auto lines = [&model](const char* text) {
        const ValuesDocument values = ReadValuesDocument(text);
        return Lines(SystemValues(model, values).Findings(values));
    };
    EXPECT_THAT(lines(R"({"AttributeRegistry": "TestRegistry", "Attributes": {"A": "x"}})"), IsEmpty());
    EXPECT_THAT(lines(R"({"Attributes": {"A": "x"}})"), IsEmpty());
    EXPECT_THAT(lines(R"({"AttributeRegistry": "Other", "Attributes": {"A": "x"}})"),
                ElementsAre("note foreign-registry /AttributeRegistry"));
    EXPECT_THAT(lines(R"({"AttributeRegistry": "Other", "Attributes": {"a": "x", "B": "x"}})"),
                ElementsAre("note foreign-registry /AttributeRegistry", "note unknown-name /Attributes/B"));
    EXPECT_THAT(lines(R"({"AttributeRegistry": "Other", "Attributes": {"B": "x"}})"),
                ElementsAre("warning foreign-registry /AttributeRegistry", "note unknown-name /Attributes/B"));
}

constexpr char mode[] = R"({"AttributeName": "A", "Type": "Enumeration", "Value": [
    {"ValueName": "0", "ValueDisplayName": "Off"}, {"ValueName": "1", "ValueDisplayName": "On"}]})";

TEST(DisplayNames, AreTheValuesWhereTheFirstValueThatTellsIsOne)
{
    const struct {
        const char* Current; ///< of the system
        json::object Registry;
        bool AreValues;
        Value Is;
    } rows[] = {
        {R"("On")", {}, true, std::string("On")},
        {R"("1")", {}, false, std::string("1")},
        {R"("On")", {{"CurrentValue", "0"}, {"DefaultValue", "0"}}, true, std::string("On")},
        {R"("1")", {{"CurrentValue", "On"}, {"DefaultValue", "On"}}, false, std::string("1")},
        {R"("Other")", {{"CurrentValue", "On"}, {"DefaultValue", "0"}}, true, std::string("Other")},
        {R"("Other")", {{"DefaultValue", "On"}}, true, std::string("Other")},
        {"null", {{"CurrentValue", "On"}, {"DefaultValue", "0"}}, true, Value()},
        {"null", {{"DefaultValue", "Off"}}, true, Value()},
        {"null", {{"DefaultValue", "0"}}, false, Value()},
        {"null", {}, false, Value()},
    };
    for (const auto& row : rows) {
        json::object attribute = json::parse(mode).as_object();
        for (const auto& [key, value] : row.Registry) {
            attribute[key] = value;
        }
        const auto model = ModelWith(json::serialize(attribute));
        const ValuesDocument values = ReadValuesDocument(std::string(R"({"A": )") + row.Current + "}");
        const SystemValues system(model, values);
        EXPECT_EQ(system.UsesDisplayNames(0), row.AreValues) << row.Current << json::serialize(row.Registry);
        EXPECT_EQ(system.ValueOf(0), row.Is) << row.Current << json::serialize(row.Registry);
        const auto lines = ShortLines(system.Findings(values));
        EXPECT_EQ(std::count(lines.begin(), lines.end(), "note display-names-are-values /Value"), row.AreValues);
    }
}

TEST(DisplayNames, SwapTheNamesOfChoices)
{
    const auto model = ModelWith(mode);
    const SystemValues byName(model, ValuesFrom({{"A", std::string("1")}}));
    EXPECT_THAT(ChoiceTexts(byName.ChoicesOf(0)), ElementsAre("0=Off", "1=On"));
    EXPECT_EQ(byName.NameOf(0, model->Attributes()[0].Choices[1]), "1");
    const SystemValues byDisplayName(model, ValuesFrom({{"A", std::string("On")}}));
    EXPECT_THAT(ChoiceTexts(byDisplayName.ChoicesOf(0)), ElementsAre("Off=0", "On=1"));
    EXPECT_EQ(byDisplayName.NameOf(0, model->Attributes()[0].Choices[1]), "On");
}

TEST(DisplayNames, ThatOccurTwiceAreOneValue)
{
    const auto model = ModelWith(R"({"AttributeName": "A", "Type": "Enumeration", "CurrentValue": "On", "Value": [
        {"ValueName": "0", "ValueDisplayName": "On"}, {"ValueName": "1", "ValueDisplayName": "On"}]})");
    const SystemValues system(model);
    EXPECT_THAT(ChoiceTexts(system.ChoicesOf(0)), ElementsAre("On=0"));
    EXPECT_THAT(ShortLines(system.Findings(ValuesFrom({}))),
                ElementsAre("note display-names-are-values /Value", "warning repeated-choice /Value"));
}

TEST(DisplayNames, AreTheValuesOfAnUndecidedAttributeWhereTheyAreOfMostOthers)
{
    RegistryBuilder registry;
    json::object attribute = json::parse(mode).as_object();
    for (const char* name : {"A", "B", "C"}) {
        attribute["AttributeName"] = name;
        registry.RawAttribute(attribute);
    }
    const auto model = ModelOf(registry.Json());
    const struct {
        SettingValueMap Values;
        std::vector<bool> AreValues;
    } rows[] = {
        {{{"A", std::string("On")}}, {true, true, true}},
        {{{"A", std::string("1")}}, {false, false, false}},
        {{{"A", std::string("1")}, {"B", std::string("On")}}, {false, true, false}}, // as many of both
        {{{"A", std::string("Off")}, {"B", std::string("On")}, {"C", std::string("0")}}, {true, true, false}},
        {{}, {false, false, false}},
    };
    for (const auto& row : rows) {
        const SystemValues system(model, ValuesFrom(row.Values));
        for (std::size_t index = 0; index < 3; ++index) {
            EXPECT_EQ(system.UsesDisplayNames(index), row.AreValues[index]) << index;
        }
    }
}

/** Choices one name of which is the other name of another. */
constexpr char crossed[] = R"({"AttributeName": "A", "Type": "Enumeration", "Value": [
    {"ValueName": "1", "ValueDisplayName": "2"}, {"ValueName": "2", "ValueDisplayName": "Two"},
    {"ValueName": "3", "ValueDisplayName": "Many"}, {"ValueName": "4", "ValueDisplayName": "Many"}]})";

TEST(Translation, PutsAChoiceUnderTheNameThatValuesUse)
{
    const struct {
        const char* Attribute;
        const char* Current;
        const char* Text;
        const char* Is;
    } rows[] = {
        {mode, "0", "On", "1"},        {mode, "0", "1", "1"},
        {mode, "0", "Other", "Other"}, {mode, "0", "on", "on"}, // a choice has its letter case
        {mode, "Off", "1", "On"},      {mode, "Off", "On", "On"},
        {crossed, "1", "2", "2"},                                      // a value name, though a display name too
        {crossed, "1", "Two", "2"},    {crossed, "1", "Many", "Many"}, // which of two is not known
        {crossed, "Two", "2", "2"},    {crossed, "Two", "1", "2"},
        {crossed, "Two", "3", "3"}, // "Many" would name two
    };
    for (const auto& row : rows) {
        const SystemValues system(ModelWith(row.Attribute), ValuesFrom({{"A", std::string(row.Current)}}));
        EXPECT_EQ(ToText(system.Translate(0, std::string(row.Text))), row.Is) << row.Current << " " << row.Text;
    }
    const SystemValues system(ModelWith(mode), ValuesFrom({{"A", std::string("0")}}));
    EXPECT_EQ(system.Translate(0, std::int64_t{1}), Value(std::string("1")));
    EXPECT_EQ(system.Translate(0, Value()), Value());
    RegistryBuilder registry;
    registry.Attribute("B", "Integer").Attribute("C", "Boolean").Attribute("D", "Password");
    const SystemValues others(ModelOf(registry.Json()));
    EXPECT_EQ(others.Translate(0, std::string(" 0x10 ")), Value(std::int64_t{16}));
    EXPECT_EQ(others.Translate(0, std::string("On")), Value(std::string("On")));
    EXPECT_EQ(others.Translate(1, std::string("True")), Value(true));
    EXPECT_EQ(others.Translate(2, std::int64_t{5}), Value(Secret("5")));
}

TEST(Translation, OfTheCurrentValueIsReported)
{
    json::object attribute = json::parse(mode).as_object();
    attribute["CurrentValue"] = "1";
    RegistryBuilder registry;
    registry.RawAttribute(attribute);
    attribute["AttributeName"] = "B";
    registry.RawAttribute(attribute);
    const auto model = ModelOf(registry.Json());
    const ValuesDocument values = ValuesFrom({{"A", std::string("x")}, {"B", std::string("1")}});
    SystemValues system(model, values);
    EXPECT_FALSE(system.UsesDisplayNames(0));
    // the same system with other values: the names stay those that it was read with
    const ValuesDocument later = ValuesFrom({{"A", std::string("On")}, {"B", std::string("1")}});
    const std::vector<Finding> findings = system.Findings(later);
    ASSERT_THAT(Lines(findings), ElementsAre("note display-name-for-value /Attributes/A"));
    EXPECT_EQ(findings[0].Found, R"(the current value of A is "On", the other name of a choice)");
    EXPECT_EQ(findings[0].Consequence, R"(it is read as "1")");
}

TEST(Sameness, OfChoicesIsThatOfWhatTheyName)
{
    const struct {
        const char* Attribute;
        const char* Current;
        const char* Left;
        const char* Right;
        bool AreSame;
    } rows[] = {
        {mode, "0", "1", "1", true},         {mode, "0", "1", "On", true},
        {mode, "0", "0", "On", false},       {mode, "0", "On", "On", true},
        {mode, "0", "Other", "Other", true}, {mode, "0", "Other", "On", false},
        {mode, "Off", "1", "On", true},      {crossed, "1", "2", "Two", true},
        {crossed, "1", "1", "2", false}, // "2" is a value, and so names the second choice
        {crossed, "1", "3", "Many", true},   {crossed, "1", "4", "Many", true},
        {crossed, "1", "3", "4", false},     {crossed, "Two", "1", "2", true}, // "2" is the value of the first choice
        {crossed, "Two", "3", "4", false}, // two choices, though their values are alike
        {crossed, "Two", "3", "Many", true}, {crossed, "Two", "4", "Many", true},
    };
    for (const auto& row : rows) {
        const SystemValues system(ModelWith(row.Attribute), ValuesFrom({{"A", std::string(row.Current)}}));
        EXPECT_EQ(system.AreSame(0, std::string(row.Left), std::string(row.Right)), row.AreSame)
            << row.Current << ": " << row.Left << " " << row.Right;
        EXPECT_EQ(system.AreSame(0, std::string(row.Right), std::string(row.Left)), row.AreSame)
            << row.Current << ": " << row.Right << " " << row.Left;
    }
    const SystemValues system(ModelWith(R"({"AttributeName": "A", "Type": "String"})"));
    EXPECT_TRUE(system.AreSame(0, Value(), Value()));
    EXPECT_FALSE(system.AreSame(0, std::string("x"), std::string("X")));
    EXPECT_FALSE(system.AreSame(0, std::string("5"), std::int64_t{5}));
}

TEST(Sameness, IsThatOfTests)
{
    const char* texts[] = {"0", "1", "2", "3", "4", "Off", "On", "Two", "Many", "many", ""};
    for (const char* attribute : {mode, crossed}) {
        for (const char* operand : texts) {
            RegistryBuilder registry;
            registry.RawAttribute(json::parse(attribute)).Attribute("T", "String");
            registry.Rule("T", "Hidden", true, {Term{"A", "EQU", operand}});
            registry.Rule("T", "Hidden", true, {Term{"A", "NEQ", operand}});
            const auto model = ModelOf(registry.Json());
            for (const char* current : texts) {
                const SystemValues system(model, ValuesFrom({{"A", std::string(current)}}));
                const Evaluation evaluation(system);
                const bool isSame = system.AreSame(0, system.ValueOf(0), std::string(operand));
                EXPECT_EQ(evaluation.TruthOf(0), isSame ? Truth::True : Truth::False) << current << " " << operand;
                EXPECT_EQ(evaluation.TruthOf(1), isSame ? Truth::False : Truth::True) << current << " " << operand;
            }
        }
    }
}

TEST(Passwords, AreNeverPrinted)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Password",
                       {{"CurrentValue", 12345678},
                        {"DefaultValue", "hunter2"},
                        {"Value", json::array{"hunter2", json::object{{"ValueDisplayName", "letmein"}}}}});
    registry.Attribute("T", "String");
    registry.Rule("A", "Value", json::array{"letmein"}, {Term{"T", "EQU", "x"}});
    registry.Rule("T", "ReadOnly", true, {Term{"A", "EQU", "letmein"}, Term{"A", "GTR", "letmein", "OR"}});
    registry.Rule("A", "CurrentValue", "letmein", {Term{"T", "EQU", "x"}});
    registry.Rule("A", "DefaultValue", json::array{"letmein"}, {Term{"T", "EQU", "x"}});
    registry.Rule("A", "CurrentValue", 5555, {Term{"T", "EQU", "x"}});
    registry.Rule("T", "Hidden", true, {Term{"A", "EQU", true, "", "ReadOnly"}});
    registry.Rule("T", "Hidden", true, {Term{"A", "EQU", "letmein", "", "ReadOnly"}});
    registry.Rule("T", "Hidden", true, {Term{"A", "BITAND", "letmein"}});
    const auto model = ModelOf(registry.Json());
    const ValuesDocument values = ValuesFrom({{"A", std::int64_t{87654321}}});
    const SystemValues system(model, values);
    ASSERT_EQ(system.ValueOf(0), Value(Secret("87654321")));
    EXPECT_EQ(std::get<Secret>(system.ValueOf(0)).Reveal(), "87654321");
    EXPECT_EQ(Reveal(system.ValueOf(0)), SettingValue(std::string("87654321")));
    EXPECT_EQ(ToText(system.ValueOf(0)), passwordMask);
    EXPECT_EQ(ToQuotedText(system.ValueOf(0)), passwordMask);

    std::string printed;
    for (const Finding& finding : model->Findings()) {
        printed += finding.Found + finding.Consequence + "\n";
    }
    for (const Finding& finding : system.Findings(values)) {
        printed += finding.Found + finding.Consequence + "\n";
    }
    for (std::size_t rule = 0; rule < model->Rules().size(); ++rule) {
        printed += ToText(model->Rules()[rule]) + "\n" + ToText(model->Rules()[rule].When) + "\n";
        printed += Explain(system, rule).Because + "\n";
    }
    EXPECT_THAT(printed, testing::HasSubstr("A == ********"));
    for (const char* secret : {"5678", "4321", "hunter2", "letmein", "5555"}) {
        EXPECT_THAT(printed, testing::Not(testing::HasSubstr(secret))) << secret;
    }
}

TEST(MenuReading, TakesNamesPathsAndFlags)
{
    json::value document = RegistryBuilder().Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::parse(R"([
        {"MenuName": "Main", "DisplayName": "Main Menu", "MenuPath": "./Main", "DisplayOrder": 2, "Hidden": true},
        5, {"MenuName": ""}, {"menuname": "Boot", "GRAYOUT": "true", "ReadOnly": 1, "Immutable": true}])");
    const auto model = ModelOf(document);
    ASSERT_EQ(model->Menus().size(), 2U);
    const Menu& main = model->Menus()[0];
    EXPECT_EQ(main.Name, "Main");
    EXPECT_EQ(main.DisplayName, "Main Menu");
    EXPECT_EQ(main.MenuPath, "./Main");
    EXPECT_EQ(main.DisplayOrder, 2);
    EXPECT_EQ(main.Position, 0U);
    EXPECT_THAT(FlagTexts(main.Flags), ElementsAre("Hidden"));
    EXPECT_EQ(model->Menus()[1].Name, "Boot");
    EXPECT_EQ(model->Menus()[1].Position, 3U);
    EXPECT_THAT(FlagTexts(model->Menus()[1].Flags), ElementsAre("ReadOnly", "GrayOut"));
}

TEST(MenuReading, ReportsWhatAttributesReport)
{
    json::value document = RegistryBuilder().Json();
    document.at("RegistryEntries").as_object()["Menus"] = json::parse(R"([
        5, {"MenuName": ""}, {"menuname": "Boot", "GRAYOUT": "true", "ReadOnly": "yes", "Hidden": null},
        {"MenuName": "A", "MenuPath": 7, "DisplayName": ["x"], "DisplayOrder": "3"},
        {"MenuName": "B", "DisplayOrder": 1.5}, {"MenuName": "C", "DisplayOrder": "x"}, {}])");
    const auto model = ModelOf(document);
    EXPECT_THAT(
        Lines(model->Findings()),
        ElementsAre(
            "error wrong-kind /RegistryEntries/Menus/0", "error unnamed-menu /RegistryEntries/Menus/1",
            "note key-name /RegistryEntries/Menus/2/menuname", "note key-name /RegistryEntries/Menus/2/GRAYOUT",
            "warning wrong-kind /RegistryEntries/Menus/2/ReadOnly", "note wrong-kind /RegistryEntries/Menus/2/GRAYOUT",
            "warning wrong-kind /RegistryEntries/Menus/3/DisplayName",
            "warning wrong-kind /RegistryEntries/Menus/3/MenuPath",
            "note wrong-kind /RegistryEntries/Menus/3/DisplayOrder",
            "warning number-beyond-range /RegistryEntries/Menus/4/DisplayOrder",
            "warning wrong-kind /RegistryEntries/Menus/5/DisplayOrder", "error unnamed-menu /RegistryEntries/Menus/6"));
    EXPECT_EQ(model->Findings()[0].Found, "a menu that is a number");
    EXPECT_EQ(model->Findings()[4].Found, "a flag that is a text");
    EXPECT_EQ(model->Findings()[4].Consequence, "it is left out");
    ASSERT_EQ(model->Menus().size(), 4U);
    EXPECT_THAT(FlagTexts(model->Menus()[0].Flags), ElementsAre("GrayOut"));
    EXPECT_EQ(model->Menus()[1].DisplayOrder, 3);
    EXPECT_EQ(model->Menus()[2].DisplayOrder, std::nullopt);
}

TEST(PropertyNames, AreFoundInAnyLetterCase)
{
    std::set<std::string_view> names;
    for (std::size_t number = 0; number < propertyCount; ++number) {
        const auto property = static_cast<Property>(number);
        EXPECT_TRUE(names.insert(Name(property)).second) << Name(property);
        std::string upper(Name(property));
        std::transform(upper.begin(), upper.end(), upper.begin(), [](char letter) {
            return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        });
        EXPECT_EQ(FindProperty(upper), property) << upper;
        EXPECT_EQ(IsFlag(property), number <= static_cast<std::size_t>(Property::ResetRequired)) << upper;
    }
    EXPECT_EQ(Name(Property::Choices), "Value");
    EXPECT_EQ(FindProperty("Choices"), std::nullopt);
    EXPECT_EQ(FindProperty(""), std::nullopt);
}

} // namespace
