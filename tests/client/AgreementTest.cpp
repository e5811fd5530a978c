#include "ClientTest.h"
#include "RealSystems.h"
#include "oracle/Oracle.h"
#include "oracle/Worlds.h"

#include <cstdlib>
#include <random>

// The model's answers beside those of an evaluator that reads the published rules in the plainest way.

namespace {

using namespace ClientTest;

constexpr std::pair<const char*, Property> numbers[] = {
    {"LowerBound", Property::LowerBound},
    {"UpperBound", Property::UpperBound},
    {"ScalarIncrement", Property::ScalarIncrement},
    {"MinLength", Property::MinLength},
    {"MaxLength", Property::MaxLength},
};

bool IsLong()
{
    const char* isLong = std::getenv("REDFISHCONFIG_LONG");
    return isLong != nullptr && std::string(isLong) == "1";
}

ValuesDocument DocumentOf(const SettingValueMap& values)
{
    ValuesDocument document;
    document.Values = values;
    return document;
}

/** A system both ways, and how often they were compared. */
class Comparison {
public:
    static bool HasFailure() { return testing::Test::HasFailure(); }

    explicit Comparison(const Oracle::World& world)
        : m_World(world),
          m_Oracle(world.Registry, world.Values),
          m_Model(Model::Read(ReadRegistryDocument(json::serialize(world.Registry)))),
          m_Then(m_Model, DocumentOf(world.Values)),
          m_AtThen(m_Then)
    {
    }

    /** The system with other values. Which names of choices its values use is as it was. */
    SystemValues Later(const SettingValueMap& values) const
    {
        SystemValues now = m_Then;
        for (std::size_t attribute = 0; attribute < m_Model->Attributes().size(); ++attribute) {
            const auto value = values.find(m_Model->Attributes()[attribute].Name);
            now.Assume(attribute,
                       value != values.end() ? ValueOf(value->second) : m_Model->Attributes()[attribute].CurrentValue);
        }
        return now;
    }

    /** Rules, verdicts and what is in force for other values. */
    void CompareAt(const SettingValueMap& values)
    {
        const SystemValues now = Later(values);
        const Evaluation evaluation = m_AtThen.ForValues(now);
        for (std::size_t rule = 0; rule < m_Model->Rules().size(); ++rule) {
            const std::size_t position = m_Model->Rules()[rule].Position;
            EXPECT_EQ(Word(evaluation.TruthOf(rule)), Words(m_Oracle.OfRule(position, values)))
                << ToText(m_Model->Rules()[rule]) << "\n"
                << json::serialize(m_World.Registry.at("RegistryEntries").at("Dependencies").at(position));
            ++Rules;
        }
        for (std::size_t attribute = 0; attribute < m_Model->Attributes().size(); ++attribute) {
            CompareFlags(evaluation, attribute, values);
            CompareInForce(evaluation, now, attribute, values);
        }
    }

    /** What rules for current values do after changes. */
    void CompareCascade(const SettingValueMap& values, const Oracle::Changes& changes)
    {
        std::vector<std::pair<std::size_t, Value>> byHand;
        for (const auto& [name, value] : changes) {
            const auto attribute = m_Model->Find(name);
            if (attribute) {
                byHand.emplace_back(*attribute, ValueOf(value));
            }
        }
        const SystemValues before = Later(values);
        const Cascade ours = Change(before, byHand);
        const Oracle::CascadeResult theirs = m_Oracle.Cascade(values, changes);
        EXPECT_EQ(ours.IsCycle, theirs.IsCycle);
        EXPECT_EQ(ours.IsCut, theirs.IsCutOff);
        std::vector<std::string> changed, wanted;
        for (const RuleChange& change : ours.Changes) {
            changed.push_back(std::to_string(change.Wave) + " " +
                              std::to_string(m_Model->Rules()[change.Rule].Position) + " " +
                              m_Model->Attributes()[change.Attribute].Name);
        }
        for (const Oracle::Effect& effect : theirs.Effects) {
            wanted.push_back(std::to_string(effect.Wave) + " " + std::to_string(effect.Rule) + " " + effect.Setting);
        }
        std::sort(changed.begin(), changed.end());
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(changed, wanted);
        std::set<std::size_t> may, shouldBe;
        for (const std::size_t rule : ours.MayChange) {
            may.insert(m_Model->Rules()[rule].Position);
        }
        for (const Oracle::MayChange& change : theirs.MayChanges) {
            shouldBe.insert(change.Rule);
        }
        EXPECT_EQ(may, shouldBe);
        EXPECT_EQ(ours.Conflicts.size(), theirs.Conflicts.size());
        for (const RuleConflict& conflict : ours.Conflicts) {
            if (HasFailure()) {
                std::cout << "conflict in wave " << conflict.Wave << ": " << ToText(m_Model->Rules()[conflict.Rule])
                          << ", kept " << ToQuotedText(conflict.Kept) << "\n";
            }
        }
        for (std::size_t attribute = 0; attribute < m_Model->Attributes().size(); ++attribute) {
            const std::string& name = m_Model->Attributes()[attribute].Name;
            EXPECT_TRUE(
                m_Oracle.SameValue(name, Reveal(ours.After.ValueOf(attribute)), m_Oracle.Held(name, theirs.Values)))
                << name;
        }
        ++Cascades;
    }

    const Oracle::World& World() const { return m_World; }

    std::size_t Rules = 0, Verdicts = 0, Cascades = 0;

private:
    static std::string_view Words(Oracle::Truth truth)
    {
        return truth == Oracle::Truth::Unknown ? "unknown" : truth == Oracle::Truth::True ? "true" : "false";
    }

    static Value ValueOf(const SettingValue& value)
    {
        return value ? std::visit([](const auto& held) { return Value(held); }, *value) : Value();
    }

    void CompareFlags(const Evaluation& evaluation, std::size_t attribute, const SettingValueMap& values)
    {
        const std::string& name = m_Model->Attributes()[attribute].Name;
        for (std::size_t number = 0; number + 1 < flagCount; ++number) {
            const auto flag = static_cast<Property>(number);
            const Verdict ours = evaluation.VerdictOn(attribute, flag);
            const Oracle::Verdict theirs = m_Oracle.VerdictOf(name, std::string(Name(flag)), values);
            ++Verdicts;
            EXPECT_EQ(ours.Value, theirs.Value) << name << "." << Name(flag);
            EXPECT_EQ(ours.Certain, theirs.Certain) << name << "." << Name(flag);
            EXPECT_EQ(ours.Marked, theirs.Marked) << name << "." << Name(flag);
        }
    }

    void CompareInForce(const Evaluation& evaluation, const SystemValues& now, std::size_t attribute,
                        const SettingValueMap& values)
    {
        const Attribute& published = m_Model->Attributes()[attribute];
        for (const auto& [word, property] : numbers) {
            if (!m_Model->RulesFor(attribute, property).empty()) {
                const Attribute inForce = AttributeInForce(evaluation, now, attribute);
                const std::optional<std::int64_t> ours = property == Property::LowerBound   ? inForce.LowerBound
                                                         : property == Property::UpperBound ? inForce.UpperBound
                                                         : property == Property::ScalarIncrement
                                                             ? inForce.ScalarIncrement
                                                         : property == Property::MinLength ? inForce.MinLength
                                                                                           : inForce.MaxLength;
                EXPECT_EQ(ours, m_Oracle.NumberInForce(published.Name, word, values).Value) << published.Name << word;
            }
        }
        if (m_Model->RulesFor(attribute, Property::Choices).empty()) {
            return;
        }
        const ChoicesInForce ours = ChoicesOf(evaluation, now, attribute);
        const Oracle::ChoicesInForce theirs = m_Oracle.ChoicesInForce(published.Name, values);
        std::set<std::string> allowed, remaining;
        for (std::size_t choice = 0; choice < ours.Choices.size(); ++choice) {
            if (ours.Allowed[choice]) {
                allowed.insert(ours.Choices[choice].Name);
            }
        }
        for (const std::size_t position : theirs.Remaining) {
            const Oracle::Choice& choice = m_Oracle.ChoicesOf(published.Name)[position];
            const std::string name = choice.Name.value_or(choice.DisplayName.value_or(""));
            const std::string shown = choice.DisplayName.value_or("").empty() ? name : *choice.DisplayName;
            remaining.insert(now.UsesDisplayNames(attribute) ? shown : name);
        }
        EXPECT_EQ(allowed, remaining) << published.Name;
        EXPECT_EQ(ours.Certain, theirs.Certain) << published.Name;
    }

    const Oracle::World& m_World;
    Oracle::Registry m_Oracle;
    std::shared_ptr<const Model> m_Model;
    SystemValues m_Then;
    Evaluation m_AtThen;
};

TEST(Agreement, OnGeneratedRegistries)
{
    const unsigned registries = IsLong() ? 10'000 : 1'000;
    std::size_t verdicts = 0;
    for (unsigned seed = 1; seed <= registries && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Oracle::World world = Oracle::MakeWorld(seed);
        Comparison comparison(world);
        std::mt19937 random(seed);
        comparison.CompareAt(world.Values);
        for (int round = 0; round < 4 && !HasFailure(); ++round) {
            const SettingValueMap values = Oracle::RandomValues(world, random);
            comparison.CompareAt(values);
            comparison.CompareCascade(values, Oracle::RandomChanges(world, random));
        }
        verdicts += comparison.Verdicts;
    }
    std::cout << verdicts << " verdicts of " << registries << " registries compared\n";
}

TEST(Agreement, OnRealRegistries)
{
    SKIP_WITHOUT_REGISTRIES();
    const int rounds = IsLong() ? 1'000 : 10;
    for (const RealSystem& system : RealSystems()) {
        SCOPED_TRACE(system.Name);
        const Oracle::World world = Oracle::WorldOf(json::parse(system.Registry), system.Values().Values);
        Comparison comparison(world);
        std::mt19937 random(1);
        comparison.CompareAt(world.Values);
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            comparison.CompareAt(Oracle::RandomValues(world, random));
            comparison.CompareCascade(world.Values, Oracle::RandomChanges(world, random));
        }
        std::cout << system.Name << ": " << comparison.Rules << " rules, " << comparison.Verdicts << " verdicts, "
                  << comparison.Cascades << " cascades compared\n";
    }
}

} // namespace
