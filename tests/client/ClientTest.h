#pragma once

#include "support/RegistryBuilder.h"

#include <RedfishConfig/Client/Client.h>
#include <RedfishConfig/RedfishConfig.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/json.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/** What the tests of the client library share. */
namespace ClientTest {

namespace json = boost::json;
using namespace RedfishConfig;
using namespace RedfishConfig::Client;

/** Mode, Level, Switch, Text and Key: an attribute of each type. */
inline RegistryTest::RegistryBuilder OneOfEachType()
{
    using RegistryTest::RegistryBuilder;
    RegistryBuilder registry;
    registry.Attribute(
        "Mode", "Enumeration",
        {{"Value", {RegistryBuilder::Choice("Uefi", "UEFI Mode"), RegistryBuilder::Choice("Legacy", "Legacy Mode")}}});
    registry.Attribute("Level", "Integer", {{"LowerBound", 0}, {"UpperBound", 9}});
    registry.Attribute("Switch", "Boolean");
    registry.Attribute("Text", "String");
    registry.Attribute("Key", "Password");
    return registry;
}

inline Adaptation AdaptRegistry(const json::value& registry, const SettingValueMap& values = {})
{
    ValuesDocument document;
    document.Values = values;
    document.Pointer = "/Attributes";
    return Adapt(ReadRegistryDocument(json::serialize(registry)), document);
}

inline std::shared_ptr<const Model> ModelOf(const json::value& registry)
{
    return Model::Read(ReadRegistryDocument(json::serialize(registry)));
}

/** A system with these values, as from a document whose "Attributes" they are. */
inline ValuesDocument ValuesFrom(const SettingValueMap& values)
{
    ValuesDocument document;
    document.Values = values;
    document.Pointer = "/Attributes";
    return document;
}

/** The rules of a model, each in a line: "0: T.ReadOnly = true when A == 1". */
inline std::vector<std::string> RuleLines(const Model& model)
{
    std::vector<std::string> lines;
    for (const Rule& rule : model.Rules()) {
        lines.push_back(ToText(rule));
    }
    return lines;
}

inline std::vector<std::size_t> Listed(const IndexRange& range)
{
    return {range.begin(), range.end()};
}

inline json::array AdaptedList(const Adaptation& adaptation, std::string_view key)
{
    return json::parse(adaptation.RegistryText).at("RegistryEntries").at(key).as_array();
}

/** An attribute of the adapted registry. */
inline json::object AdaptedAttribute(const Adaptation& adaptation, std::size_t position = 0)
{
    return AdaptedList(adaptation, "Attributes").at(position).as_object();
}

/** The rules of the adapted registry, each in a line: "(A EQU X AND B NEQ Y) T.ReadOnly true". */
inline std::vector<std::string> AdaptedRules(const Adaptation& adaptation)
{
    std::vector<std::string> lines;
    for (const json::value& rule : AdaptedList(adaptation, "Dependencies")) {
        const json::object& dependency = rule.at("Dependency").as_object();
        std::string line = "(";
        for (const json::value& element : dependency.at("MapFrom").as_array()) {
            const json::object& term = element.as_object();
            const auto text = [&term](std::string_view key) {
                const json::value& value = term.at(key);
                return value.is_string() ? std::string(value.get_string()) : json::serialize(value);
            };
            line += text("MapFromAttribute");
            if (text("MapFromProperty") != "CurrentValue") {
                line += "." + text("MapFromProperty");
            }
            line += " " + text("MapFromCondition") + " " + text("MapFromValue");
            if (term.contains("MapTerms")) {
                line += " " + text("MapTerms") + " ";
            }
        }
        lines.push_back(line + ") " + std::string(dependency.at("MapToAttribute").as_string()) + "." +
                        std::string(dependency.at("MapToProperty").as_string()) + " " +
                        json::serialize(dependency.at("MapToValue")));
    }
    return lines;
}

/** The findings, each in a line: "warning unknown-source /RegistryEntries/Dependencies/0". */
inline std::vector<std::string> Lines(const std::vector<Finding>& findings)
{
    std::vector<std::string> lines;
    for (const Finding& finding : findings) {
        EXPECT_FALSE(finding.Found.empty());
        EXPECT_FALSE(finding.Consequence.empty());
        lines.push_back(std::string(Word(finding.Level)) + " " + std::string(Word(finding.Kind)) + " " +
                        finding.Pointer);
    }
    return lines;
}

inline std::map<std::string, SettingStatus> StatusOfAll(const Adaptation& adaptation)
{
    std::string text = adaptation.RegistryText;
    SettingValueMap values = adaptation.Values;
    RedfishConfigSettingManager manager(text, values, false, Config_Options{});
    std::map<std::string, SettingStatus> status;
    EXPECT_EQ(manager.QueryGroupSettingStatus(status), RESULT_SUCCEED);
    return status;
}

/** Adapting the outcome once more changes nothing. */
inline void ExpectStable(const Adaptation& adaptation)
{
    const RegistryDocument registry = ReadRegistryDocument(adaptation.RegistryText);
    ValuesDocument values;
    values.Values = adaptation.Values;
    const Adaptation again = Adapt(registry, values);
    EXPECT_EQ(again.RegistryText, adaptation.RegistryText);
    EXPECT_EQ(again.Values, adaptation.Values);
    for (const auto& [form, count] : again.Rules) {
        EXPECT_EQ(count.LeftOut, 0U) << Word(form);
    }
}

struct FlagRow {
    const char* Name;
    PropertyState SettingStatus::*State;
};

inline constexpr FlagRow flags[] = {
    {"ReadOnly", &SettingStatus::ReadOnly},   {"WriteOnly", &SettingStatus::WriteOnly},
    {"Hidden", &SettingStatus::Hidden},       {"GrayOut", &SettingStatus::GrayOut},
    {"Immutable", &SettingStatus::Immutable}, {"IsSystemUniqueProperty", &SettingStatus::SystemUnique},
};

inline bool SaysCannotDecide(const std::string& reason)
{
    return reason.find("duo to dependency calculate error") != std::string::npos ||
           reason.find("BMC data error") != std::string::npos;
}

} // namespace ClientTest
