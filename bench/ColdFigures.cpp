#include "Figures.h"
#include "GeneratedSystem.h"
#include "Memory.h"
#include "Pairs.h"
#include "RealSystems.h"

#include <RedfishConfig/RedfishConfig.h>

#include <boost/json/parse.hpp>

#include <memory>

namespace RedfishConfigBench {

namespace {

using namespace RedfishConfig;

using Answers = std::map<std::string, std::string>;

/** What a caller who needs one answer does. */
void AskOne(GeneratedSystem& system)
{
    RedfishConfigSettingManager manager(system.Registry, system.Values, false, {});
    std::string value;
    manager.QuerySettingValue(system.Names[system.Names.size() / 2], value);
    benchmark::DoNotOptimize(value);
}

void AskAll(GeneratedSystem& system)
{
    RedfishConfigSettingManager manager(system.Registry, system.Values, false, {});
    Answers values;
    manager.QueryGroupSettingValues(values);
    benchmark::DoNotOptimize(values);
}

void AskEverything(GeneratedSystem& system)
{
    RedfishConfigSettingManager manager(system.Registry, system.Values, false, {});
    Answers answers[4];
    manager.QueryGroupSettingValues(answers[0]);
    manager.QueryGroupSettingDefaultValues(answers[1]);
    manager.QueryGroupSettingDescriptions(answers[2]);
    manager.QueryGroupSettingValidValues(answers[3]);
    std::map<std::string, SettingStatus> status;
    manager.QueryGroupSettingStatus(status);
    benchmark::DoNotOptimize(answers);
    benchmark::DoNotOptimize(status);
}

void Parse(const GeneratedSystem& system)
{
    benchmark::DoNotOptimize(boost::json::parse(system.Registry));
}

struct ColdFigure {
    const char* name;
    double goal;
    void (*ask)(GeneratedSystem& system);
};

constexpr ColdFigure coldFigures[] = {
    {"cold single against parse", 1.2, AskOne},
    {"cold all against parse", 1.6, AskAll},
    {"cold all with everything against parse", 2.5, AskEverything},
};

using SharedSystem = std::shared_ptr<GeneratedSystem>;

void RegisterAgainstParse(const std::string& systemName, const SharedSystem& system)
{
    for (const ColdFigure& figure : coldFigures) {
        benchmark::RegisterBenchmark((figure.name + ("/" + systemName)).c_str(), [system,
                                                                                  &figure](benchmark::State& state) {
            TimeInTurn(
                state, figure.goal, [&] { figure.ask(*system); }, [&] { Parse(*system); });
        })->UseManualTime();
    }
}

void RegisterMemory(const std::string& systemName, const SharedSystem& system)
{
    constexpr double goal = 4;
    benchmark::RegisterBenchmark(("peak memory of cold all against text/" + systemName).c_str(),
                                 [system](benchmark::State& state) {
                                     GeneratedSystem small = GenerateSystem(2);
                                     Pairs pairs;
                                     for (auto iteration : state) {
                                         static_cast<void>(iteration);
                                         const Consumption consumption =
                                             Consume([&] { AskAll(*system); }, [&] { AskAll(small); });
                                         state.SetIterationTime(consumption.Seconds);
                                         pairs.Add(consumption.PeakBytes, static_cast<double>(system->Registry.size()));
                                     }
                                     pairs.Tell(state, goal);
                                 })
        ->UseManualTime()
        ->Iterations(3);
}

void RegisterGrowth(const SharedSystem& small, const SharedSystem& large)
{
    constexpr double goal = 1.3;
    benchmark::RegisterBenchmark("cold all a setting against 1000 settings/100000", [small,
                                                                                     large](benchmark::State& state) {
        // As many settings on both sides, so that the machine's load meets both alike.
        const std::size_t rounds = large->Names.size() / small->Names.size();
        const auto count = static_cast<double>(large->Names.size());
        TimeInTurn(
            state, goal, [&] { AskAll(*large); },
            [&] {
                for (std::size_t round = 0; round < rounds; ++round) {
                    AskAll(*small);
                }
            },
            {count, count});
    })->UseManualTime();
}

} // namespace

void RegisterColdFigures()
{
    SharedSystem thousand;
    SharedSystem last;
    for (const std::size_t settings : {100U, 1'000U, 10'000U, 100'000U}) {
        last = std::make_shared<GeneratedSystem>(GenerateSystem(settings));
        thousand = settings == 1'000U ? last : thousand;
        RegisterAgainstParse(std::to_string(settings), last);
        RegisterMemory(std::to_string(settings), last);
    }
    RegisterGrowth(thousand, last);
    for (auto& [name, system] : ReadRealSystems()) {
        RegisterAgainstParse(name, std::make_shared<GeneratedSystem>(std::move(system)));
    }
}

} // namespace RedfishConfigBench
