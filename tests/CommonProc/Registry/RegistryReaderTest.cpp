#include "CommonProc/Registry/RegistryReader.h"

#include <boost/json.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

namespace json = boost::json;
using namespace RedfishConfig;

namespace {

/** A value as text; what is absent differs from every value. */
std::string Shown(const SettingValue& value)
{
    return value ? std::to_string(value->index()) + ":" + GetOptionalVarAsString(value) : "none";
}

std::string Shown(const std::optional<std::string>& text)
{
    return text ? "'" + *text + "'" : "none";
}

std::string Shown(const std::optional<std::int64_t>& number)
{
    return number ? std::to_string(*number) : "none";
}

std::string Shown(const RedfishConfigSettingInfoStru& record)
{
    std::string shown;
    for (const bool flag : {record.ReadOnly, record.WriteOnly, record.Hidden, record.GrayOut, record.Immutable,
                            record.ResetRequired, record.IsSystemUniqueProperty}) {
        shown += flag ? "+" : "-";
    }
    for (const auto& number : {record.DisplayOrder, record.LowerBound, record.UpperBound, record.MinLength,
                               record.MaxLength, record.ScalarIncrement}) {
        shown += " " + Shown(number);
    }
    for (const auto& text : {record.Type, record.DisplayName, record.AttributeName, record.HelpText, record.MenuPath,
                             record.ValueExpression, record.WarningText}) {
        shown += " " + Shown(text);
    }
    shown += " " + Shown(record.DefaultValue) + " " + Shown(record.CurrentValue);
    for (const auto& [name, displayName] : record.Value) {
        shown += " [" + name + "=" + displayName + "]";
    }
    return shown;
}

std::string Shown(const DependencyRule& rule)
{
    std::string shown = std::to_string(rule.Position) + " " + rule.MapToAttribute + "." + rule.MapToProperty + "=" +
                        Shown(rule.MapToValue);
    for (const MapFromTerm& term : rule.MapFrom) {
        shown += " {" + term.MapFromAttribute + "." + term.MapFromProperty + " " + term.MapFromCondition + " " +
                 Shown(term.MapFromValue) + " " + term.MapTerms + "}";
    }
    return shown;
}

const json::value* Member(const json::value* value, const char* key)
{
    const json::object* object = value != nullptr ? value->if_object() : nullptr;
    return object != nullptr ? object->if_contains(key) : nullptr;
}

template <class Target>
void Assign(Target& target, const json::value* object, const char* key)
{
    if (const json::value* value = Member(object, key)) {
        AssignScalar(target, ScalarOf(*value));
    }
}

/** The same reading from a document that was parsed before, member after member. */
std::string ReadFromDocument(const std::string& text)
{
    const json::value document = json::parse(text);
    const json::value* entries = Member(&document, "RegistryEntries");
    const json::value* attributes = Member(entries, "Attributes");
    const json::value* dependencies = Member(entries, "Dependencies");
    std::string shown = attributes == nullptr ? "no attributes" : attributes->is_array() ? "attributes" : "no list";
    if (attributes != nullptr && attributes->is_array()) {
        for (const json::value& attribute : attributes->get_array()) {
            shown += "\n" + Shown(json::value_to<RedfishConfigSettingInfoStru>(attribute));
        }
    }
    shown += dependencies == nullptr ? "\nmissing" : dependencies->is_array() ? "\npresent" : "\nunreadable";
    if (dependencies == nullptr || !dependencies->is_array()) {
        return shown;
    }
    std::size_t position = 0;
    for (const json::value& element : dependencies->get_array()) {
        const json::value* dependency = Member(&element, "Dependency");
        DependencyRule rule;
        rule.Position = position++;
        Assign(rule.MapToAttribute, dependency, "MapToAttribute");
        Assign(rule.MapToProperty, dependency, "MapToProperty");
        Assign(rule.MapToValue, dependency, "MapToValue");
        const json::value* terms = Member(dependency, "MapFrom");
        if (terms != nullptr && terms->is_array()) {
            for (const json::value& from : terms->get_array()) {
                MapFromTerm& term = rule.MapFrom.emplace_back();
                Assign(term.MapFromAttribute, &from, "MapFromAttribute");
                Assign(term.MapFromCondition, &from, "MapFromCondition");
                Assign(term.MapFromProperty, &from, "MapFromProperty");
                Assign(term.MapFromValue, &from, "MapFromValue");
                Assign(term.MapTerms, &from, "MapTerms");
            }
        }
        CompleteRule(rule);
        if (!rule.MapFrom.empty()) {
            shown += "\n" + Shown(rule);
        }
    }
    return shown;
}

std::string ReadWhileParsing(const std::string& text)
{
    const RegistryContent content = ReadRegistryText(text);
    std::string shown = content.AttributesDefect.empty()                                     ? "attributes"
                        : content.AttributesDefect.find("not an array") != std::string::npos ? "no list"
                                                                                             : "no attributes";
    for (const RedfishConfigSettingInfoStru& record : content.Attributes) {
        shown += "\n" + Shown(record);
    }
    switch (content.Dependencies) {
    case DependencyList::Missing:
        return shown + "\nmissing";
    case DependencyList::Unreadable:
        return shown + "\nunreadable";
    case DependencyList::Present:
        break;
    }
    shown += "\npresent";
    for (const DependencyRule& rule : content.Rules) {
        shown += "\n" + Shown(rule);
    }
    return shown;
}

/** Writes JSON in which everything that a registry may have stands in wrong places too, often several times. */
class Scribe {
public:
    explicit Scribe(unsigned seed) : m_Random(seed) {}

    std::string Document() { return "{" + Members({"RegistryEntries", "Attributes", "x"}, &Scribe::Entries) + "}"; }

private:
    using Writer = std::string (Scribe::*)();

    std::size_t Below(std::size_t bound) { return m_Random() % bound; }

    std::string Members(const std::vector<std::string>& keys, Writer write)
    {
        std::string text;
        for (std::size_t count = Below(5); count > 0; --count) {
            text += "\"" + keys[Below(keys.size())] + "\":" + (this->*write)() + (count > 1 ? "," : "");
        }
        return text;
    }

    std::string List(Writer write)
    {
        std::string text;
        for (std::size_t count = Below(4); count > 0; --count) {
            text += (this->*write)() + (count > 1 ? "," : "");
        }
        return "[" + text + "]";
    }

    std::string Scalar()
    {
        const std::vector<std::string> scalars{"null",
                                               "true",
                                               "false",
                                               "5",
                                               "-3",
                                               "5.0",
                                               "1e30",
                                               "18446744073709551615",
                                               "\"A\"",
                                               "\"\"",
                                               "\"OR\"",
                                               "\"AND\"",
                                               "\"a\\u00e9\\n\\\"b\"",
                                               "\"SYSACS\""};
        return scalars[Below(scalars.size())];
    }

    std::string Entries()
    {
        switch (Below(6)) {
        case 0:
            return Scalar();
        case 1:
            return List(&Scribe::Entries);
        default:
            return "{" +
                   Members({"Attributes", "Dependencies", "Attributes", "Dependencies", "RegistryEntries"},
                           &Scribe::Lists) +
                   "}";
        }
    }

    std::string Lists()
    {
        switch (Below(8)) {
        case 0:
            return Scalar();
        case 1:
            return "{" + Members({"Attributes", "AttributeName"}, &Scribe::Lists) + "}";
        case 2:
        case 3:
        case 4:
            return List(&Scribe::Rule);
        default:
            return List(&Scribe::Attribute);
        }
    }

    std::string Attribute()
    {
        static const std::vector<std::string> keys{
            "AttributeName", "CurrentValue",    "DefaultValue", "DisplayName",     "DisplayOrder",
            "GrayOut",       "HelpText",        "Hidden",       "Immutable",       "LowerBound",
            "MaxLength",     "MenuPath",        "MinLength",    "ReadOnly",        "Type",
            "ResetRequired", "UpperBound",      "Value",        "Value",           "Value",
            "WarningText",   "ValueExpression", "WriteOnly",    "ScalarIncrement", "IsSystemUniqueProperty",
            "readonly",      "Values"};
        return Below(7) == 0 ? Scalar() : "{" + Members(keys, &Scribe::AttributeMember) + "}";
    }

    std::string AttributeMember() { return Below(4) == 0 ? List(&Scribe::Choice) : Scalar(); }

    std::string Choice()
    {
        return Below(7) == 0
                   ? List(&Scribe::Scalar)
                   : "{" + Members({"ValueName", "ValueName", "ValueDisplayName", "x"}, &Scribe::Scalar) + "}";
    }

    std::string Rule()
    {
        return Below(7) == 0 ? Scalar()
                             : "{" + Members({"Dependency", "Dependency", "Type"}, &Scribe::Dependency) + "}";
    }

    std::string Dependency()
    {
        return Below(7) == 0 ? List(&Scribe::Dependency)
                             : "{" +
                                   Members({"MapFrom", "MapFrom", "MapToAttribute", "MapToProperty", "MapToValue"},
                                           &Scribe::RuleMember) +
                                   "}";
    }

    std::string RuleMember() { return Below(2) == 0 ? List(&Scribe::Term) : Scalar(); }

    std::string Term()
    {
        return Below(7) == 0 ? Scalar()
                             : "{" +
                                   Members({"MapFromAttribute", "MapFromCondition", "MapFromProperty", "MapFromValue",
                                            "MapTerms"},
                                           &Scribe::TermMember) +
                                   "}";
    }

    std::string TermMember() { return Below(9) == 0 ? List(&Scribe::Term) : Scalar(); }

    std::mt19937 m_Random;
};

TEST(RegistryReader, ReadsWhatTheParsedDocumentHas)
{
    std::size_t withAttributes = 0;
    std::size_t withTerms = 0;
    for (unsigned seed = 0; seed < 30000; ++seed) {
        const std::string text = Scribe(seed).Document();
        const std::string expected = ReadFromDocument(text);
        ASSERT_EQ(ReadWhileParsing(text), expected) << text;
        withAttributes += expected.find("attributes\n") == 0 ? 1U : 0U;
        withTerms += expected.find('{') != std::string::npos ? 1U : 0U;
    }
    EXPECT_GT(withAttributes, 1000u); // enough documents have something to read
    EXPECT_GT(withTerms, 200u);
}

TEST(RegistryReader, CountsTheLastOfMembersWithTheSameKey)
{
    const RegistryContent content = ReadRegistryText(
        R"({"RegistryEntries": {"Attributes": [{"AttributeName": "Old"}], "Dependencies": 5},
            "RegistryEntries": {"Attributes": [{"AttributeName": "A", "Hidden": true, "Hidden": "no flag",
                                                "Value": [{"ValueName": "x"}], "Value": [{"ValueName": "y"}]}]}})");
    ASSERT_EQ(content.Attributes.size(), 1u);
    EXPECT_EQ(content.Attributes[0].AttributeName, "A");
    EXPECT_FALSE(content.Attributes[0].Hidden);
    EXPECT_THAT(content.Attributes[0].Value, testing::ElementsAre(testing::Pair("y", "")));
    EXPECT_EQ(content.Dependencies, DependencyList::Missing);
}

TEST(RegistryReader, SaysWhatTheParserSaysOfTextThatIsNoJson)
{
    const auto reason = [](auto read) {
        try {
            read();
        } catch (const std::exception& error) {
            return std::string(error.what());
        }
        return std::string("none");
    };
    for (const char* text : {"", "{", "{} {}", R"({"RegistryEntries": {"Attributes": [tru]}})", "{\"a\": \"\xff\"}"}) {
        const std::string parsers = reason([&] { static_cast<void>(json::parse(text)); });
        EXPECT_NE(parsers, "none");
        EXPECT_EQ(reason([&] { ReadRegistryText(text); }), parsers) << text;
    }
}

} // namespace
