#include "Figures.h"
#include "GeneratedSystem.h"
#include "Pairs.h"
#include "RealSystems.h"

#include <RedfishConfig/Client/Client.h>

#include <boost/json/parse.hpp>

#include <algorithm>
#include <memory>

namespace RedfishConfigBench {

namespace {

using namespace RedfishConfig::Client;

/** A system with its model read. */
struct ModelledSystem {
    explicit ModelledSystem(GeneratedSystem generated)
        : System(std::move(generated)), Rules(Model::Read(ReadRegistryDocument(System.Registry)))
    {
        Values.Values = System.Values;
    }

    GeneratedSystem System;
    std::shared_ptr<const Model> Rules;
    ValuesDocument Values;
};

void Parse(const GeneratedSystem& system)
{
    benchmark::DoNotOptimize(boost::json::parse(system.Registry));
}

/** From the bytes to the model. */
void ReadModel(const GeneratedSystem& system)
{
    benchmark::DoNotOptimize(Model::Read(ReadRegistryDocument(system.Registry)));
}

constexpr int systemsInARow = 16;

/** All that further systems of a model take one after the other, but for the reading of their values. */
void AddSystems(const ModelledSystem& modelled)
{
    for (int system = 0; system < systemsInARow; ++system) {
        const SystemValues values(modelled.Rules, modelled.Values);
        benchmark::DoNotOptimize(Evaluation(values));
    }
}

/** The verdict of each flag of each setting, from the values on. */
std::size_t AskVerdicts(const Evaluation& evaluation, const SystemValues& values)
{
    const Evaluation now = evaluation.ForValues(values);
    std::size_t count = 0;
    for (std::size_t attribute = 0; attribute < now.Of().Attributes().size(); ++attribute) {
        for (std::size_t flag = 0; flag < flagCount; ++flag) {
            count += now.VerdictOn(attribute, static_cast<Property>(flag)).Value ? 1U : 0U;
        }
    }
    return count;
}

using SharedSystem = std::shared_ptr<ModelledSystem>;

void RegisterSystem(const std::string& name, const SharedSystem& modelled)
{
    constexpr double readingGoal = 1.5;
    constexpr double furtherGoal = 0.1;
    benchmark::RegisterBenchmark(("model against parse/" + name).c_str(), [modelled](benchmark::State& state) {
        TimeInTurn(
            state, readingGoal, [&] { ReadModel(modelled->System); }, [&] { Parse(modelled->System); });
    })->UseManualTime();
    benchmark::RegisterBenchmark(("further system of a model against parse/" + name).c_str(),
                                 [modelled](benchmark::State& state) {
                                     TimeInTurn(
                                         state, furtherGoal, [&] { AddSystems(*modelled); },
                                         [&] { Parse(modelled->System); }, {systemsInARow, 1});
                                 })
        ->UseManualTime();
}

/** All verdicts beside a time that is fixed, for registries of up to a thousand settings. */
void RegisterVerdicts(const std::string& name, const SharedSystem& modelled)
{
    benchmark::RegisterBenchmark(("all verdicts against 20 us/" + name).c_str(), [modelled](benchmark::State& state) {
        constexpr double allowed = 20e-6;
        const SystemValues values(modelled->Rules, modelled->Values);
        const Evaluation evaluation(values);
        const auto ask = [&] { benchmark::DoNotOptimize(AskVerdicts(evaluation, values)); };
        ask();
        Pairs pairs;
        for (auto iteration : state) {
            static_cast<void>(iteration);
            const double seconds = Seconds(ask);
            state.SetIterationTime(seconds);
            pairs.Add(seconds, allowed);
        }
        pairs.Tell(state, 1);
    })->UseManualTime();
}

} // namespace

void RegisterModelFigures()
{
    for (const std::size_t settings : {1'000U, 10'000U}) {
        RegisterSystem(std::to_string(settings), std::make_shared<ModelledSystem>(GenerateSystem(settings)));
    }
    for (auto& [name, system] : ReadRealSystems()) {
        const auto modelled = std::make_shared<ModelledSystem>(std::move(system));
        RegisterSystem(name, modelled);
        RegisterVerdicts(name, modelled);
    }
}

} // namespace RedfishConfigBench
