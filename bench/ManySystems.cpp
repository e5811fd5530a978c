#include "Figures.h"
#include "GeneratedSystem.h"
#include "Memory.h"
#include "Pairs.h"

#include <RedfishConfig/RedfishConfig.h>

#include <deque>

namespace RedfishConfigBench {

namespace {

using namespace RedfishConfig;

constexpr std::size_t systems = 1'000;
constexpr std::size_t settings = 300;
constexpr std::size_t variety = 16; // of values; each system has one of these sets

struct Fleet {
    explicit Fleet(GeneratedSystem generated) : System(std::move(generated))
    {
        for (std::size_t number = 0; number < variety; ++number) {
            Values.push_back(OtherValues(System, static_cast<unsigned>(number)));
        }
    }

    /** Makes a manager for each system, asks all for all values, and keeps them. */
    void AskAll(bool ofOneText)
    {
        std::deque<RedfishConfigSettingManager> managers;
        for (std::size_t number = 0; number < systems; ++number) {
            std::string registry = System.Registry;
            if (!ofOneText) { // managers share by the text, so a blank more makes it another model
                registry.append(number + 1, ' ');
            }
            managers.emplace_back(registry, Values[number % variety], false, Config_Options{});
            std::map<std::string, std::string> values;
            managers.back().QueryGroupSettingValues(values);
            benchmark::DoNotOptimize(values);
        }
    }

    GeneratedSystem System;
    std::vector<SettingValueMap> Values;
};

void Compare(benchmark::State& state, double Consumption::*what)
{
    constexpr double goal = 1.0 / 3;
    Fleet fleet(GenerateSystem(settings));
    Pairs pairs;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        const Consumption one = Consume([&] { fleet.AskAll(true); }, [] {});
        const Consumption each = Consume([&] { fleet.AskAll(false); }, [] {});
        state.SetIterationTime(one.Seconds + each.Seconds);
        pairs.Add(one.*what / systems, each.*what / systems);
    }
    pairs.Tell(state, goal);
}

} // namespace

void RegisterManySystems()
{
    const auto registerComparison = [](const char* name, double Consumption::*what) {
        benchmark::RegisterBenchmark(name, [what](benchmark::State& state) { Compare(state, what); })
            ->UseManualTime()
            ->Iterations(3);
    };
    registerComparison("1000 systems of one model time against registries of their own/300", &Consumption::Seconds);
    registerComparison("1000 systems of one model memory against registries of their own/300", &Consumption::PeakBytes);
}

} // namespace RedfishConfigBench
