#include "ClientTest.h"

#include "support/RegistryBuilder.h"

#include <array>
#include <limits>
#include <random>
#include <utility>

// Sets of values, compared with membership state by state.

namespace {

using namespace RedfishConfig::Client;
using RegistryTest::RegistryBuilder;
namespace json = boost::json;
using Question = RedfishConfig::Client::Test; // in a test body "Test" is that of the framework

constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t greatest = std::numeric_limits<std::int64_t>::max();

/** A small world: three texts, integers around zero and at both ends, and no value. "zz", 9 and -9 are for all others.
 */
const std::vector<Value>& Universe()
{
    static const std::vector<Value> values = [] {
        std::vector<Value> list{std::string("a"), std::string("b"), std::string("c"), std::string("zz"), Value()};
        for (std::int64_t number = -3; number <= 3; ++number) {
            list.emplace_back(number);
        }
        for (const std::int64_t number :
             {least, least + 1, least + 2, std::int64_t{-9}, std::int64_t{9}, greatest - 2, greatest - 1, greatest}) {
            list.emplace_back(number);
        }
        return list;
    }();
    return values;
}

using Members = std::vector<bool>; // by position in Universe()

Members MembersOf(const ValueSet& set)
{
    Members members;
    for (const Value& value : Universe()) {
        members.push_back(set.Contains(value));
    }
    return members;
}

/** A set beside what it should contain. */
struct Pair {
    ValueSet Set;
    Members Expected;
};

template <typename Predicate>
Pair Leaf(ValueSet set, Predicate contains)
{
    Members expected;
    for (const Value& value : Universe()) {
        expected.push_back(contains(value));
    }
    return {std::move(set), std::move(expected)};
}

class RandomSets {
public:
    explicit RandomSets(unsigned seed) : m_Random(seed) {}

    Pair Next(int depth)
    {
        const std::size_t kind = depth > 0 ? Below(6) : 0;
        if (kind == 0) {
            return NextLeaf();
        }
        const Pair left = Next(depth - 1);
        if (kind == 1) {
            Members expected = left.Expected;
            expected.flip();
            return {left.Set.Complement(), expected};
        }
        const Pair right = Next(depth - 1);
        const bool isCommon = kind < 4;
        Members expected;
        for (std::size_t value = 0; value < left.Expected.size(); ++value) {
            expected.push_back(isCommon ? left.Expected[value] && right.Expected[value]
                                        : left.Expected[value] || right.Expected[value]);
        }
        return {isCommon ? left.Set & right.Set : left.Set | right.Set, expected};
    }

private:
    std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_Random); }

    std::int64_t NextInteger()
    {
        const std::array<std::int64_t, 13> numbers{least, least + 1, least + 2,    -3,           -2,       -1, 0,
                                                   1,     2,         greatest - 2, greatest - 1, greatest, 3};
        return numbers[Below(numbers.size())];
    }

    Pair NextLeaf()
    {
        switch (Below(5)) {
        case 0: {
            const Value& value = Universe()[Below(3)];
            return Leaf(ValueSet::Of(value), [value](const Value& other) { return other == value; });
        }
        case 1: {
            const std::int64_t first = NextInteger();
            const std::int64_t last = NextInteger();
            return Leaf(ValueSet::Integers(first, last), [first, last](const Value& value) {
                const auto* number = std::get_if<std::int64_t>(&value);
                return number != nullptr && first <= *number && *number <= last;
            });
        }
        case 2:
            return Leaf(ValueSet::NoValue(), [](const Value& value) { return !HasValue(value); });
        case 3:
            return Leaf(ValueSet::Everything(), [](const Value&) { return true; });
        default:
            return Leaf(ValueSet::Texts({"a", "c"}), [](const Value& value) {
                return value == Value(std::string("a")) || value == Value(std::string("c"));
            });
        }
    }

    std::mt19937 m_Random;
};

bool IsNormal(const ValueSet& set)
{
    const auto& intervals = set.Intervals();
    for (std::size_t place = 0; place < intervals.size(); ++place) {
        if (intervals[place].first > intervals[place].second) {
            return false;
        }
        // the gap before the next one has an integer at least
        if (place > 0 &&
            (intervals[place - 1].second == greatest || intervals[place - 1].second + 1 >= intervals[place].first)) {
            return false;
        }
    }
    return true;
}

TEST(ValueSets, AreWhatTheirExpressionsSay)
{
    RandomSets random(20);
    for (int round = 0; round < 20'000; ++round) {
        const Pair pair = random.Next(5);
        ASSERT_EQ(MembersOf(pair.Set), pair.Expected) << ToText(pair.Set);
        ASSERT_TRUE(IsNormal(pair.Set)) << ToText(pair.Set);
    }
}

TEST(ValueSets, AreComparedByTheirMembers)
{
    // of the integers, and of the texts, that no set distinguishes one is in the universe
    RandomSets random(21);
    const Members none(Universe().size(), false);
    std::size_t met = 0;
    std::size_t within = 0;
    std::size_t same = 0;
    for (int round = 0; round < 20'000; ++round) {
        const Pair left = random.Next(3);
        const Pair right = random.Next(3);
        bool meets = false;
        bool isSubset = true;
        for (std::size_t value = 0; value < none.size(); ++value) {
            meets = meets || (left.Expected[value] && right.Expected[value]);
            isSubset = isSubset && (!left.Expected[value] || right.Expected[value]);
        }
        ASSERT_EQ(left.Set.Meets(right.Set), meets) << ToText(left.Set) << " and " << ToText(right.Set);
        ASSERT_EQ(left.Set.IsSubsetOf(right.Set), isSubset) << ToText(left.Set) << " in " << ToText(right.Set);
        ASSERT_EQ(left.Set == right.Set, left.Expected == right.Expected)
            << ToText(left.Set) << " and " << ToText(right.Set);
        ASSERT_EQ(left.Set.IsEmpty(), left.Expected == none) << ToText(left.Set);
        met += meets ? 1U : 0U;
        within += isSubset ? 1U : 0U;
        same += left.Set == right.Set ? 1U : 0U;
    }
    EXPECT_GT(met, 2'000U);
    EXPECT_GT(within, 2'000U);
    EXPECT_GT(same, 500U);
}

TEST(ValueSets, OfManyTextsMeetByAnyOfThem)
{
    std::set<std::string> many;
    for (int number = 0; number < 1'000; ++number) {
        many.insert("t" + std::to_string(number));
    }
    const ValueSet texts = ValueSet::Texts(many);
    many.erase("t500");
    const ValueSet allButOne = ValueSet::Texts(many);
    EXPECT_TRUE(texts.Meets(allButOne.Complement()));
    EXPECT_TRUE(texts.Complement().Meets(allButOne.Complement()));
    EXPECT_FALSE(texts.Complement().Meets(allButOne));
    EXPECT_TRUE(allButOne.IsSubsetOf(texts));
    EXPECT_FALSE(texts.IsSubsetOf(allButOne));
    EXPECT_TRUE(texts.Complement().IsSubsetOf(allButOne.Complement()));
    EXPECT_EQ(texts & allButOne.Complement(), ValueSet::Texts({"t500"}));
}

TEST(ValueSets, TakeBooleansForTexts)
{
    EXPECT_EQ(ValueSet::Of(true), ValueSet::Texts({"true"}));
    EXPECT_TRUE(ValueSet::Texts({"false"}).Contains(false));
    EXPECT_FALSE(ValueSet::Texts({"false"}).Contains(true));
}

TEST(ValueSets, HaveNoPasswordInThem)
{
    const Value secret = Secret("s3cret");
    EXPECT_TRUE(ValueSet::Of(secret).IsEmpty());
    EXPECT_FALSE(ValueSet::Everything().Contains(secret));
    for (const Comparison compare : {Comparison::Equal, Comparison::NotEqual, Comparison::Greater}) {
        Question test;
        test.Compare = compare;
        test.Operand = secret;
        EXPECT_FALSE(ValueSet::Fulfilling(test).has_value());
    }
}

Question MakeTest(Comparison compare, Value operand, Property of = Property::CurrentValue)
{
    Question test;
    test.Compare = compare;
    test.Operand = std::move(operand);
    test.Of = of;
    return test;
}

TEST(ValueSets, FulfilTests)
{
    const std::string a = "a";
    const struct {
        Question Asked;
        const char* Text;
    } rows[] = {
        {MakeTest(Comparison::Equal, a), "a"},
        {MakeTest(Comparison::Equal, true), "true"},
        {MakeTest(Comparison::Equal, std::int64_t{5}), "5"},
        {MakeTest(Comparison::NotEqual, a), "anything but a"},
        {MakeTest(Comparison::NotEqual, std::int64_t{5}), "anything but 5"},
        {MakeTest(Comparison::Equal, {}), "no value"},
        {MakeTest(Comparison::NotEqual, {}), "anything"},
        {MakeTest(Comparison::Greater, std::int64_t{5}), "6 or more"},
        {MakeTest(Comparison::GreaterOrEqual, std::int64_t{5}), "5 or more"},
        {MakeTest(Comparison::Less, std::int64_t{5}), "4 or less"},
        {MakeTest(Comparison::LessOrEqual, std::int64_t{5}), "5 or less"},
        {MakeTest(Comparison::Greater, greatest), "nothing"},
        {MakeTest(Comparison::GreaterOrEqual, greatest), "9223372036854775807"},
        {MakeTest(Comparison::GreaterOrEqual, least), "any integer"},
        {MakeTest(Comparison::Less, least), "nothing"},
        {MakeTest(Comparison::LessOrEqual, least), "-9223372036854775808"},
        {MakeTest(Comparison::LessOrEqual, greatest), "any integer"},
    };
    for (const auto& row : rows) {
        const auto set = ValueSet::Fulfilling(row.Asked);
        ASSERT_TRUE(set.has_value()) << row.Text;
        EXPECT_EQ(ToText(*set), row.Text);
        EXPECT_EQ(set->HasNoValue(), row.Asked.Compare == Comparison::Equal && !HasValue(row.Asked.Operand));
    }
}

TEST(ValueSets, AreNotKnownOfFlagsAndOrdersOfTexts)
{
    EXPECT_FALSE(ValueSet::Fulfilling(MakeTest(Comparison::Equal, true, Property::ReadOnly)).has_value());
    for (const Comparison order :
         {Comparison::Greater, Comparison::GreaterOrEqual, Comparison::Less, Comparison::LessOrEqual}) {
        EXPECT_FALSE(ValueSet::Fulfilling(MakeTest(order, std::string("5"))).has_value());
        EXPECT_FALSE(ValueSet::Fulfilling(MakeTest(order, true)).has_value());
        EXPECT_FALSE(ValueSet::Fulfilling(MakeTest(order, {})).has_value());
    }
}

/** The states that the first attribute of a registry can have. */
std::string PossibleOfFirst(const RegistryBuilder& registry)
{
    return ToText(ValueSet::PossibleOf(*ClientTest::ModelOf(registry.Json()), 0));
}

std::string PossibleOf(const char* type, json::object members)
{
    RegistryBuilder registry;
    members["Value"] = {RegistryBuilder::Choice("Off", "Aus"), RegistryBuilder::Choice("On", "An")};
    registry.Attribute("A", type, std::move(members));
    return PossibleOfFirst(registry);
}

TEST(ValueSets, PossibleOfAnAttribute)
{
    const json::object bounds{{"LowerBound", 10}, {"UpperBound", 20}};
    EXPECT_EQ(PossibleOf("Boolean", {}), "false or true, or no value");
    EXPECT_EQ(PossibleOf("Enumeration", {}), "Off or On, or no value");
    EXPECT_EQ(PossibleOf("Enumeration", {{"CurrentValue", "Old"}, {"DefaultValue", "New"}}),
              "New, Off, Old or On, or no value");
    EXPECT_EQ(PossibleOf("Integer", bounds), "10 to 20, or no value");
    EXPECT_EQ(PossibleOf("Integer", {{"LowerBound", 10}}), "10 or more, or no value");
    EXPECT_EQ(PossibleOf("Integer", {{"UpperBound", 20}}), "20 or less, or no value");
    EXPECT_EQ(PossibleOf("Integer", {{"LowerBound", 20}, {"UpperBound", 10}}), "any integer, or no value")
        << "the bounds contradict each other";
    json::object withValues = bounds;
    withValues["CurrentValue"] = "Auto";
    withValues["DefaultValue"] = 21;
    EXPECT_EQ(PossibleOf("Integer", withValues), "Auto or 10 to 21, or no value");
    EXPECT_EQ(PossibleOf("String", {}), "any text, or no value");
    EXPECT_EQ(PossibleOf("Password", {{"CurrentValue", "s3cret"}}), "any text, or no value");
    EXPECT_EQ(PossibleOf("Odd", {}), "anything, or no value");
}

TEST(ValueSets, PossibleOfAnAttributeWhoseBoundsRulesReplace)
{
    for (const char* bound : {"LowerBound", "UpperBound"}) {
        RegistryBuilder registry;
        registry.Attribute("A", "Integer", {{"LowerBound", 10}, {"UpperBound", 20}}).Attribute("B", "Boolean");
        registry.Rule("A", bound, 15, {{"B", "EQU", true}});
        EXPECT_EQ(PossibleOfFirst(registry),
                  bound == std::string("LowerBound") ? "20 or less, or no value" : "10 or more, or no value");
    }
}

TEST(ValueSets, OfAnEnumerationWithoutChoicesMayBeAnyText)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration");
    EXPECT_EQ(PossibleOfFirst(registry), "any text, or no value");
}

TEST(ValueSets, AsAPersonReadsThem)
{
    std::set<std::string> many;
    for (char letter = 'a'; letter <= 'l'; ++letter) {
        many.insert(std::string(1, letter));
    }
    const ValueSet valued = ValueSet::NoValue().Complement();
    const std::pair<ValueSet, const char*> rows[] = {
        {ValueSet::Nothing(), "nothing"},
        {ValueSet::Everything(), "anything, or no value"},
        {ValueSet::NoValue(), "no value"},
        {valued, "anything"},
        {ValueSet::Texts({"Custom"}).Complement() & valued, "anything but Custom"},
        {(ValueSet::Texts({"a", "b"}) | ValueSet::Integers(0, 9)).Complement() & valued, "anything but a, b or 0 to 9"},
        {ValueSet::Integers(10, 20) | ValueSet::NoValue(), "10 to 20, or no value"},
        {ValueSet::Integers(least, greatest).Complement() & valued, "any text"},
        {(ValueSet::Integers(least, greatest) | ValueSet::Texts({"x"})).Complement(), "any text but x, or no value"},
        {ValueSet::Texts({"a", "b"}) | ValueSet::Integers(1, 1), "a, b or 1"},
        {ValueSet::Texts({"", "two words", "\"", "x,y"}), R"("", "\"", "two words" or "x,y")"},
        {ValueSet::Texts(many), "a, b, c, d, e, f, g, h or 4 more"},
        {ValueSet::Integers(5, 4), "nothing"},
    };
    for (const auto& [set, text] : rows) {
        EXPECT_EQ(ToText(set), text);
    }
    EXPECT_LT(ToText(ValueSet::Texts({std::string(5'000, 'x')})).size(), 200U);
}

} // namespace
