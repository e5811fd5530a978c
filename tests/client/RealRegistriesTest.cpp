#include "ClientTest.h"
#include "Evaluator.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>

// What controllers published, with the values of their systems, and with random ones.

namespace {

using namespace ClientTest;
namespace files = std::filesystem;

std::string Slurp(const files::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<files::path> Folders()
{
    std::vector<files::path> folders;
    const char* given = std::getenv("REDFISHCONFIG_REGISTRIES");
    if (given == nullptr) {
        return folders;
    }
    for (const auto& entry : files::directory_iterator(given)) {
        if (files::exists(entry.path() / "registry.json")) {
            folders.push_back(entry.path());
        }
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

struct System {
    std::string registryText;
    RegistryDocument registry;
    ValuesDocument values;
};

System ReadSystem(const files::path& folder)
{
    System system;
    system.registryText = Slurp(folder / "registry.json");
    system.registry = ReadRegistryDocument(system.registryText);
    if (files::exists(folder / "bios.json")) {
        system.values = ReadValuesDocument(Slurp(folder / "bios.json"));
    }
    return system;
}

/** The rules that findings of severity error name, by their targets and properties. */
std::set<std::pair<std::string, std::string>> RefusedTargets(const Adaptation& adaptation,
                                                             const Published::Registry& published)
{
    const std::string place = "/RegistryEntries/Dependencies/";
    std::set<std::pair<std::string, std::string>> targets;
    for (const Finding& finding : adaptation.Findings) {
        if (finding.Level == Severity::Error && finding.Place.compare(0, place.size(), place) == 0) {
            const auto position = std::stoul(finding.Place.substr(place.size()));
            const json::value& to = published.Rules().at(position).at("Dependency");
            targets.emplace(Published::Text(to.at("MapToAttribute")), Published::Text(to.at("MapToProperty")));
        }
    }
    return targets;
}

/** Every property of every setting is what the published rules give, unless a finding of severity error tells. */
std::size_t Compare(const Adaptation& adaptation, const Published::Registry& published, const SettingValueMap& values)
{
    const auto refused = RefusedTargets(adaptation, published);
    const auto status = StatusOfAll(adaptation);
    EXPECT_EQ(status.size(), published.Attributes().size());
    std::size_t compared = 0;
    for (const auto& [name, state] : status) {
        for (const FlagRow& flag : flags) {
            if (refused.count({name, flag.Name}) > 0) {
                continue;
            }
            const PropertyState& property = state.*flag.State;
            EXPECT_FALSE(SaysCannotDecide(property.Reason)) << name << "." << flag.Name << ": " << property.Reason;
            EXPECT_EQ(property.Value, published.Property(name, flag.Name, values)) << name << "." << flag.Name;
            compared += published.RulesFor(name, flag.Name).size();
        }
    }
    return compared;
}

/** Draws values for all attributes, such as rules ask for, such as the attribute has, and none at all. */
class RandomValues {
public:
    RandomValues(const Published::Registry& published, const SettingValueMap& values, unsigned seed) : m_Random(seed)
    {
        for (const auto& [name, attribute] : published.Attributes()) {
            Pool& pool = m_Pools[name];
            pool.type = Published::Text(attribute->at("Type"));
            AddChoices(*attribute, published.Held(*attribute, values), pool);
        }
        for (const json::value& rule : published.Rules()) {
            for (const json::value& term : rule.at("Dependency").at("MapFrom").as_array()) {
                const auto pool = m_Pools.find(Published::Text(term.at("MapFromAttribute")));
                const json::value* value = term.as_object().if_contains("MapFromValue");
                if (pool != m_Pools.end() && value != nullptr && !value->is_null()) {
                    pool->second.texts.push_back(Published::Text(*value));
                }
            }
        }
    }

    SettingValueMap Draw()
    {
        SettingValueMap values;
        for (const auto& [name, pool] : m_Pools) {
            values[name] = DrawOne(pool);
        }
        return values;
    }

private:
    struct Pool {
        std::string type;
        std::vector<std::string> texts;
    };

    static void AddChoices(const json::object& attribute, const std::optional<std::string>& held, Pool& pool)
    {
        const json::value* choices = attribute.if_contains("Value");
        if (choices == nullptr || !choices->is_array() || pool.type != "Enumeration") {
            return;
        }
        std::vector<std::string> names;
        std::vector<std::string> displayNames;
        for (const json::value& choice : choices->get_array()) {
            names.push_back(Published::Text(choice.at("ValueName")));
            const json::value* displayName = choice.as_object().if_contains("ValueDisplayName");
            displayNames.push_back(displayName != nullptr ? Published::Text(*displayName) : names.back());
        }
        const auto has = [&held](const std::vector<std::string>& list) {
            return held && std::find(list.begin(), list.end(), *held) != list.end();
        };
        pool.texts = !has(names) && has(displayNames) ? displayNames : names;
    }

    SettingValue DrawOne(const Pool& pool)
    {
        if (m_Random() % 16 == 0) {
            return std::nullopt;
        }
        const std::string text = !pool.texts.empty() && m_Random() % 8 != 0 ? pool.texts[m_Random() % pool.texts.size()]
                                                                            : std::string(m_Random() % 2, 'x');
        if (pool.type == "Boolean") {
            return m_Random() % 2 == 0;
        }
        if (pool.type == "Integer") {
            const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
            return isNumber ? std::int64_t{std::stoll(text)} : static_cast<std::int64_t>(m_Random() % 100);
        }
        return text;
    }

    std::mt19937 m_Random;
    std::map<std::string, Pool> m_Pools;
};

#define SKIP_WITHOUT_REGISTRIES()                                                                                      \
    if (Folders().empty()) {                                                                                           \
        GTEST_SKIP() << "REDFISHCONFIG_REGISTRIES does not name a folder of registries";                               \
    }

TEST(RealRegistries, AreAdaptedOnceForAll)
{
    SKIP_WITHOUT_REGISTRIES();
    for (const files::path& folder : Folders()) {
        SCOPED_TRACE(folder);
        const System system = ReadSystem(folder);
        ASSERT_TRUE(system.registry.Usable());
        ExpectStable(Adapt(system.registry, system.values));
    }
}

TEST(RealRegistries, HaveTheVerdictsOfTheirRulesUnderTheirOwnValues)
{
    SKIP_WITHOUT_REGISTRIES();
    std::size_t compared = 0;
    for (const files::path& folder : Folders()) {
        SCOPED_TRACE(folder);
        const System system = ReadSystem(folder);
        const Published::Registry published(json::parse(system.registryText));
        compared += Compare(Adapt(system.registry, system.values), published, system.values.Values);
    }
    std::cout << compared << " rules compared\n";
    EXPECT_GT(compared, 0U);
}

TEST(RealRegistries, HaveTheVerdictsOfTheirRulesUnderRandomValues)
{
    SKIP_WITHOUT_REGISTRIES();
    const char* isLong = std::getenv("REDFISHCONFIG_LONG");
    const int rounds = isLong != nullptr && std::string(isLong) == "1" ? 1'000 : 100;
    for (const files::path& folder : Folders()) {
        SCOPED_TRACE(folder);
        const System system = ReadSystem(folder);
        const Published::Registry published(json::parse(system.registryText));
        if (published.Rules().empty()) {
            continue;
        }
        RandomValues random(published, system.values.Values, 1);
        std::size_t compared = 0;
        for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
            ValuesDocument values;
            values.Values = random.Draw();
            compared += Compare(Adapt(system.registry, values), published, values.Values);
        }
        std::cout << folder.filename().string() << ": " << compared << " rules compared in " << rounds << " rounds\n";
    }
}

TEST(RealRegistries, ReportWhatWasDone)
{
    SKIP_WITHOUT_REGISTRIES();
    for (const files::path& folder : Folders()) {
        const System system = ReadSystem(folder);
        const Adaptation adaptation = Adapt(system.registry, system.values);
        std::cout << folder.filename().string() << ": " << adaptation.PublishedRule.size() << " rules afterwards\n";
        std::size_t published = 0;
        for (const auto& [form, count] : adaptation.Rules) {
            std::cout << "  " << Word(form) << ": " << count.Published << " published, " << count.Adapted
                      << " adapted, " << count.LeftOut << " left out\n";
            EXPECT_EQ(count.Published, count.Adapted + count.LeftOut);
            published += count.Published;
        }
        const json::value document = json::parse(system.registryText);
        const json::value* rules = document.at("RegistryEntries").as_object().if_contains("Dependencies");
        EXPECT_EQ(published, rules != nullptr ? rules->as_array().size() : 0U);

        std::map<std::string, std::size_t> kinds;
        for (const Finding& finding : adaptation.Findings) {
            ++kinds[std::string(Word(finding.Level)) + " " + std::string(Word(finding.Kind))];
        }
        for (const auto& [kind, count] : kinds) {
            std::cout << "    " << kind << ": " << count << "\n";
        }
        Adaptation asPublished;
        asPublished.RegistryText = system.registryText;
        asPublished.Values = system.values.Values;
        const auto before = StatusOfAll(asPublished);
        std::size_t differ = 0;
        for (const auto& [name, state] : StatusOfAll(adaptation)) {
            const auto other = before.find(name);
            differ += other != before.end() &&
                              std::any_of(std::begin(flags), std::end(flags),
                                          [&](const FlagRow& flag) {
                                              return (state.*flag.State).Value != (other->second.*flag.State).Value;
                                          })
                          ? 1U
                          : 0U;
        }
        std::cout << "  settings with another status than as published: " << differ << "\n";
    }
}

} // namespace
