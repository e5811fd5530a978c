#include "Worlds.h"
#include "Oracle.h"

#include <gtest/gtest.h>

// That the random registries have what they are there for: what a world lacks, no comparison over worlds can find.

namespace {

using namespace Oracle;

constexpr unsigned worlds = 300;

TEST(Worlds, AreTheSameForTheSameSeed)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const World world = MakeWorld(seed);
        EXPECT_EQ(world.Registry, MakeWorld(seed).Registry);
        EXPECT_EQ(world.Values, MakeWorld(seed).Values);
        EXPECT_NE(world.Registry, MakeWorld(seed + 1).Registry);
        std::mt19937 random(seed);
        std::mt19937 again(seed);
        EXPECT_EQ(RandomValues(world, random), RandomValues(world, again));
        EXPECT_EQ(RandomChanges(world, random), RandomChanges(world, again));
    }
}

TEST(Worlds, HaveNamesAndChoicesOfAllCharacters)
{
    std::string names;
    std::string choices;
    for (unsigned seed = 1; seed <= worlds; ++seed) {
        const World world = MakeWorld(seed);
        const Registry registry(world.Registry, world.Values);
        EXPECT_EQ(registry.Settings().size(), world.Settings.size()); // no two of one name
        for (const std::string& name : registry.Settings()) {
            names += name;
            for (const Choice& choice : registry.ChoicesOf(name)) {
                choices += choice.Name.value_or("") + choice.DisplayName.value_or("");
            }
        }
    }
    for (char character = ' '; character <= '~'; ++character) {
        EXPECT_NE(names.find(character), std::string::npos) << character;
        EXPECT_NE(choices.find(character), std::string::npos) << character;
    }
    EXPECT_NE(names.find("Größe"), std::string::npos);
    EXPECT_NE(names.find("Mode.CurrentValue"), std::string::npos);
}

TEST(Worlds, HaveRulesWithEveryTruth)
{
    std::map<Truth, std::size_t> rules;
    for (unsigned seed = 1; seed <= worlds; ++seed) {
        const World world = MakeWorld(seed);
        const Registry registry(world.Registry, world.Values);
        std::mt19937 random(seed);
        const SettingValueMap values = RandomValues(world, random);
        for (std::size_t position = 0; position < registry.RuleCount(); ++position) {
            ++rules[registry.OfRule(position, values)];
        }
    }
    for (const Truth truth : {Truth::False, Truth::Unknown, Truth::True}) {
        EXPECT_GT(rules[truth], 1'000U);
    }
}

TEST(Worlds, HaveVerdictsOfEveryKind)
{
    std::map<std::string, std::size_t> verdicts;
    for (unsigned seed = 1; seed <= worlds; ++seed) {
        const World world = MakeWorld(seed);
        const Registry registry(world.Registry, world.Values);
        std::mt19937 random(seed);
        const SettingValueMap values = RandomValues(world, random);
        for (const std::string& name : registry.Settings()) {
            for (const std::string& flag : Flags()) {
                const Verdict then = registry.VerdictOf(name, flag, world.Values);
                const Verdict now = registry.VerdictOf(name, flag, values);
                ++verdicts[now.Value ? "true" : "false"];
                verdicts["uncertain true"] += now.Value && !now.Certain ? 1U : 0U;
                verdicts["uncertain false"] += !now.Value && !now.Certain ? 1U : 0U;
                verdicts["marked in spite of rules"] += now.Marked && !registry.RulesFor(name, flag).empty() ? 1U : 0U;
                verdicts["set free"] += then.Value && !then.Marked && !now.Value && now.Certain ? 1U : 0U;
            }
        }
    }
    EXPECT_EQ(verdicts.size(), 6U);
    for (const auto& [kind, count] : verdicts) {
        EXPECT_GT(count, 50U) << kind;
    }
}

TEST(Worlds, HaveListsAndNumbersInForceAndCascades)
{
    std::map<std::string, std::size_t> found;
    for (unsigned seed = 1; seed <= worlds; ++seed) {
        const World world = MakeWorld(seed);
        const Registry registry(world.Registry, world.Values);
        std::mt19937 random(seed);
        const SettingValueMap values = RandomValues(world, random);
        for (const std::string& name : registry.Settings()) {
            const Oracle::ChoicesInForce choices = registry.ChoicesInForce(name, values);
            found["narrowed"] += choices.Remaining.size() < registry.ChoicesOf(name).size() ? 1U : 0U;
            found["list unknown"] += choices.Certain ? 0U : 1U;
            for (const char* property : {"LowerBound", "UpperBound", "ScalarIncrement", "MinLength", "MaxLength"}) {
                found["numbers"] += registry.RulesFor(name, property).empty() ? 0U : 1U;
            }
        }
        for (int step = 0; step < 20; ++step) {
            const CascadeResult cascade = registry.Cascade(values, RandomChanges(world, random));
            found["effects"] += cascade.Effects.size();
            found["second waves"] += !cascade.Effects.empty() && cascade.Effects.back().Wave > 1 ? 1U : 0U;
            found["conflicts"] += cascade.Conflicts.size();
            found["may change"] += cascade.MayChanges.size();
            found["cycles"] += cascade.IsCycle ? 1U : 0U;
        }
    }
    EXPECT_EQ(found.size(), 8U);
    for (const auto& [what, count] : found) {
        EXPECT_GT(count, 20U) << what;
    }
}

} // namespace
