#include "Count.h"

#include "reference/Rules.h"
#include "support/LogCapture.h"
#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfigExpression.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

namespace json = boost::json;
using namespace RedfishConfig;
using namespace RegistryTest;

std::string Told(const SettingValue& value)
{
    return value ? std::to_string(value->index()) + GetOptionalVarAsString(value) : "none";
}

static_assert(std::is_same_v<SettingValue, Reference::Value>);

/** Everything about formulas in one text. */
template <class AnyMaps>
std::string Tell(const AnyMaps& maps)
{
    std::string text;
    for (const auto& [attribute, properties] : maps) {
        for (const auto& [property, expression] : properties) {
            text += attribute + "/" + property + ": " + expression.Formula + " | " + expression.DisplayText + " -> " +
                    Told(expression.MapToValue);
            for (const std::size_t rule : expression.Rules) {
                text += " #" + std::to_string(rule);
            }
            text += "\n";
        }
    }
    return text;
}

/** Compares both ways of parsing a registry, one after the other in the same maps, log included. */
void Compare(const json::value& registry)
{
    const std::string text = json::serialize(registry);
    const LogCapture log(4);
    RedfishConfigExpression expression;
    ExpressionMaps maps;
    std::vector<std::string> related;
    const int single = expression.ParseSingleSettingDependency(text, "t", related, maps);
    const int all = expression.ParseAllSettingsDependency(text, related, maps);

    Reference::Lines lines;
    Reference::RuleBook book;
    Reference::Maps expected;
    std::vector<std::string> expectedRelated;
    const auto enter = [&](const char* what) {
        lines.emplace_back(3, std::string("Enter RedfishConfigExpression::Parse") + what + "SettingDependency()");
        return book.Read(registry, lines);
    };
    const auto exit = [&](const char* what) {
        lines.emplace_back(3, std::string("Exit RedfishConfigExpression::Parse") + what + "SettingDependency()");
        return 0;
    };
    int expectedSingle = 27;
    if (enter("Single")) {
        expectedRelated = book.BuildFor("t", expected, lines);
        expectedSingle = exit("Single");
    }
    lines.emplace_back(3, "Enter RedfishConfigExpression::ParseAllSettingsDependency()");
    int expectedAll = 27;
    if (book.Read(registry, lines)) {
        book.BuildAll(expected, lines);
        lines.emplace_back(3, "Exit RedfishConfigExpression::ParseAllSettingsDependency()");
        expectedAll = 0;
    }
    ASSERT_EQ(single, expectedSingle) << text;
    ASSERT_EQ(all, expectedAll) << text;
    ASSERT_EQ(related, expectedRelated) << text;
    ASSERT_EQ(Tell(maps), Tell(expected)) << text;
    ASSERT_EQ(log.Lines(), lines) << text;
}

json::object MakeTerm(const json::value& attribute, const json::value& condition, const json::value& property,
                      const json::value& value, const json::value& joiner)
{
    json::object term;
    const std::pair<const char*, const json::value&> members[] = {{"MapFromAttribute", attribute},
                                                                  {"MapFromCondition", condition},
                                                                  {"MapFromProperty", property},
                                                                  {"MapFromValue", value},
                                                                  {"MapTerms", joiner}};
    for (const auto& [key, member] : members) {
        if (member != "(missing)") {
            term[key] = member;
        }
    }
    return term;
}

json::value RegistryOf(const std::vector<json::array>& rules, const json::value& target = "T")
{
    RegistryBuilder registry;
    for (const json::array& terms : rules) {
        registry.RawRule(
            {{"Dependency",
              {{"MapFrom", terms}, {"MapToAttribute", target}, {"MapToProperty", "Hidden"}, {"MapToValue", true}}}});
    }
    return registry.Json();
}

TEST(RuleWorld, OfEverySingleTermIsAsTheReferenceSays)
{
    std::size_t count = 0;
    for (const json::value& attribute : {json::value("A"), json::value(""), json::value("SYSACS"), json::value(5)}) {
        for (const char* condition : {"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ", "EQ", "eq", "", "(missing)"}) {
            for (const char* property : {"CurrentValue", "ReadOnly", "", "(missing)"}) {
                for (const json::value& value :
                     {json::value("x"), json::value(""), json::value(5), json::value(5.0), json::value(5.5),
                      json::value(true), json::value(nullptr), json::value("(missing)"), json::value(json::object())}) {
                    for (const json::value& joiner : {json::value("AND"), json::value("OR"), json::value("XOR"),
                                                      json::value("(missing)"), json::value(1)}) {
                        Compare(RegistryOf({{MakeTerm(attribute, condition, property, value, joiner)}}));
                        ++count;
                        if (testing::Test::HasFailure()) {
                            return;
                        }
                    }
                }
            }
        }
    }
    Exact::Report("rules of one term", count, 7200);
}

TEST(RuleWorld, OfRulesUpToThreeTermsIsAsTheReferenceSays)
{
    std::vector<json::object> terms;
    for (const char* attribute : {"A", "SYSACS"}) {
        for (const char* condition : {"EQU", "eq"}) {
            for (const json::value& value : {json::value("x"), json::value(nullptr)}) {
                for (const char* joiner : {"AND", "OR", "(missing)", "XOR"}) {
                    terms.push_back(MakeTerm(attribute, condition, "CurrentValue", value, joiner));
                }
            }
        }
    }
    std::size_t count = 0;
    const std::size_t step = Exact::IsLong() ? 1 : 5; // through the first terms of rules of three
    for (std::size_t first = 0; first < terms.size(); ++first) {
        for (std::size_t second = 0; second < terms.size(); ++second) {
            Compare(RegistryOf({{terms[first], terms[second]}}));
            ++count;
            for (std::size_t third = 0; first % step == 0 && third < terms.size(); ++third) {
                Compare(RegistryOf({{terms[first], terms[second], terms[third]}}));
                ++count;
            }
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
    Exact::Report("rules of two and three terms", count, 8000);
}

TEST(RuleWorld, OfPairsOfRulesIsAsTheReferenceSays)
{
    std::vector<json::object> rules;
    const json::array terms[] = {{MakeTerm("A", "EQU", "CurrentValue", "x", "(missing)")},
                                 {MakeTerm("B", "NEQ", "CurrentValue", 1, "(missing)")},
                                 {MakeTerm("B", "bad", "CurrentValue", 1, "(missing)")}};
    for (const json::array& from : terms) {
        for (const json::value& target : {json::value("T"), json::value("t"), json::value(""), json::value(1)}) {
            for (const char* property : {"Hidden", "GrayOut", ""}) {
                for (const json::value& to : {json::value(true), json::value(false), json::value("true"),
                                              json::value(1), json::value(nullptr)}) {
                    rules.push_back({{"Dependency",
                                      {{"MapFrom", from},
                                       {"MapToAttribute", target},
                                       {"MapToProperty", property},
                                       {"MapToValue", to}}}});
                }
            }
        }
    }
    std::size_t count = 0;
    const std::size_t step = Exact::IsLong() ? 1 : 7;
    for (std::size_t first = 0; first < rules.size(); first += step) {
        for (const json::object& second : rules) {
            RegistryBuilder registry;
            registry.RawRule(rules[first]).RawRule(second).RawRule(rules[first]);
            Compare(registry.Json());
            ++count;
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
    Exact::Report("pairs of rules", count, 4680);
}

TEST(RuleWorld, OfOddListsIsAsTheReferenceSays)
{
    const std::vector<json::value> odd{nullptr,
                                       true,
                                       5,
                                       "text",
                                       json::array(),
                                       json::object(),
                                       {{"Dependency", 5}},
                                       {{"Dependency", {{"MapFrom", 5}}}},
                                       {{"Dependency", {{"MapFrom", {5, nullptr, "x"}}}}}};
    std::size_t count = 0;
    for (const json::value& list : odd) {
        Compare({{"RegistryEntries", {{"Dependencies", list}}}});
        Compare({{"RegistryEntries", list}});
        Compare({{"RegistryEntries", {{"Dependencies", json::array{list, list}}}}});
        count += 3;
    }
    Compare(json::object());
    Exact::Report("odd lists", count + 1, 28);
}

} // namespace
