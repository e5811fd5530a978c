#include "Figures.h"
#include "Pairs.h"

#include "CommandLine.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfigBench {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

constexpr std::size_t few = 1'000;
constexpr std::size_t many = 10'000;

std::string Numbered(const char* word, std::size_t number)
{
    return word + std::to_string(100'000 + number);
}

json::object Registry(json::array attributes, json::array rules = {})
{
    return {{"Id", "R"},
            {"RegistryEntries", {{"Attributes", std::move(attributes)}, {"Dependencies", std::move(rules)}}}};
}

json::array Settings(std::size_t count)
{
    json::array attributes;
    for (std::size_t number = 0; number < count; ++number) {
        attributes.push_back({{"AttributeName", Numbered("Setting", number)}, {"Type", "String"}});
    }
    return attributes;
}

/** Files and a command line whose work should grow as they do. */
struct Command {
    json::object Registry;
    json::object Values; ///< for "set --from"
    std::vector<std::string> Words;
};

Command UnknownNames(std::size_t count)
{
    json::object values;
    for (std::size_t number = 0; number < count; ++number) {
        values[Numbered("Settimg", number)] = "x";
    }
    return {Registry(Settings(count)), std::move(values), {"set", "--from", "VALUES"}};
}

Command RulesOnAPassword(std::size_t count)
{
    constexpr std::size_t targets = 20;
    json::array attributes = Settings(targets);
    attributes.push_back({{"AttributeName", "Pin"}, {"Type", "Password"}, {"CurrentValue", "hunter2"}});
    json::array rules;
    for (std::size_t number = 0; number < count; ++number) {
        const json::object term{{"MapFromAttribute", "Pin"},
                                {"MapFromProperty", "CurrentValue"},
                                {"MapFromCondition", "EQU"},
                                {"MapFromValue", Numbered("guess", number)}};
        rules.push_back(json::object{{"Dependency",
                                      {{"MapFrom", json::array{term}},
                                       {"MapToAttribute", Numbered("Setting", number % targets)},
                                       {"MapToProperty", "ReadOnly"},
                                       {"MapToValue", true}}}});
    }
    return {Registry(std::move(attributes), std::move(rules)), {}, {"--as-published", "list"}};
}

Command Names(std::size_t count)
{
    return {Registry(Settings(count)), {}, {"list", "--all"}};
}

/** Runs a command line in this process. Its files are gone with it. */
class Prepared {
public:
    explicit Prepared(const Command& command) : m_Arguments(command.Words)
    {
        std::string name = (fs::temp_directory_path() / "redfishconfig-bench-XXXXXX").string();
        m_Folder = mkdtemp(name.data());
        std::ofstream(m_Folder / "registry.json") << json::serialize(command.Registry);
        std::ofstream(m_Folder / "values.json") << json::serialize(command.Values);
        m_Environment.Registry = (m_Folder / "registry.json").string();
        for (std::string& argument : m_Arguments) {
            argument = argument == "VALUES" ? (m_Folder / "values.json").string() : argument;
        }
    }
    ~Prepared() { fs::remove_all(m_Folder); }
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    void Run() const
    {
        std::ostringstream answers;
        std::ostringstream complaints;
        RedfishConfigTool::RunTool(m_Arguments, m_Environment, answers, complaints);
        benchmark::DoNotOptimize(answers.str().size() + complaints.str().size());
    }

private:
    std::vector<std::string> m_Arguments;
    RedfishConfigTool::Environment m_Environment;
    fs::path m_Folder;
};

void RegisterGrowth(const std::string& name, const std::function<Command(std::size_t)>& make)
{
    constexpr double goal = 1.3;
    const std::string title = name + " against " + std::to_string(few) + " of them/" + std::to_string(many);
    benchmark::RegisterBenchmark(title.c_str(), [make](benchmark::State& state) {
        const Prepared small(make(few));
        const Prepared large(make(many));
        const auto count = static_cast<double>(many);
        TimeInTurn(
            state, goal, [&] { large.Run(); },
            [&] { // as many on both sides, so that the machine's load meets both alike
                for (std::size_t round = 0; round < many / few; ++round) {
                    small.Run();
                }
            },
            {count, count});
    })->UseManualTime();
}

} // namespace

void RegisterHostileFigures()
{
    RegisterGrowth("an unknown name of set --from", UnknownNames);
    RegisterGrowth("a rule on a password as published", RulesOnAPassword);
    RegisterGrowth("a name of list --all", Names);
}

} // namespace RedfishConfigBench
