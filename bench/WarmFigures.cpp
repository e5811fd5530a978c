#include "Figures.h"
#include "GeneratedSystem.h"
#include "Pairs.h"
#include "reference/Rules.h"
#include "support/ProbeSetting.h"

#include <RedfishConfig/RedfishConfig.h>

#include <memory>
#include <random>
#include <regex>

namespace RedfishConfigBench {

namespace {

using namespace RedfishConfig;

using Answers = std::map<std::string, std::string>;
using SharedSystem = std::shared_ptr<GeneratedSystem>;

/** A manager that has answered once, and the names of its settings in a random order. */
struct WarmSystem {
    explicit WarmSystem(GeneratedSystem& system)
        : Manager(system.Registry, system.Values, false, {}), Names(system.Names)
    {
        Answers values;
        Manager.QueryGroupSettingValues(values);
        std::shuffle(Names.begin(), Names.end(), std::mt19937(1));
    }

    /** Asks for so many values, each of another setting as long as there are any. */
    void AskSingly(std::size_t count)
    {
        std::string value;
        for (std::size_t number = 0; number < count; ++number) {
            m_Next = m_Next + 1 < Names.size() ? m_Next + 1 : 0;
            Manager.QuerySettingValue(Names[m_Next], value);
            benchmark::DoNotOptimize(value);
        }
    }

    RedfishConfigSettingManager Manager;
    std::vector<std::string> Names;

private:
    std::size_t m_Next = 0;
};

constexpr std::size_t batch = 10'000; // single queries are timed so many at a time

void WarmSingle(benchmark::State& state)
{
    constexpr double goal = 10;
    GeneratedSystem system = GenerateSystem(1'000);
    WarmSystem warm(system);
    std::map<std::string, std::string, CaseInsensitiveComparator> values;
    warm.Manager.GetError();
    for (const std::string& name : warm.Names) {
        values[name] = GetOptionalVarAsString(system.Values[name]);
    }
    TimeInTurn(
        state, goal, [&] { warm.AskSingly(batch); },
        [&] {
            for (std::size_t number = 0; number < batch; ++number) {
                std::string value = values.find(warm.Names[number % warm.Names.size()])->second;
                benchmark::DoNotOptimize(value);
            }
        },
        {batch, batch});
}

void WarmSingleOfMany(benchmark::State& state)
{
    constexpr double goal = 2;
    GeneratedSystem large = GenerateSystem(100'000);
    GeneratedSystem small = GenerateSystem(1'000);
    WarmSystem warmLarge(large);
    WarmSystem warmSmall(small);
    TimeInTurn(
        state, goal, [&] { warmLarge.AskSingly(batch); }, [&] { warmSmall.AskSingly(batch); }, {batch, batch});
}

/** The least that a query of all settings could be: something virtual that answers. */
struct Answering {
    explicit Answering(std::string text) : Text(std::move(text)) {}
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;
    virtual ~Answering() = default;
    virtual std::string Answer() const { return Text; }

    std::string Text;
};

void WarmGroup(benchmark::State& state)
{
    constexpr double goal = 5;
    constexpr std::size_t settings = 1'000;
    GeneratedSystem system = GenerateSystem(settings);
    WarmSystem warm(system);
    std::map<std::string, std::unique_ptr<Answering>> answering;
    for (const auto& [name, value] : system.Values) {
        answering[name] = std::make_unique<Answering>(GetOptionalVarAsString(value));
    }
    Answers values;
    TimeInTurn(
        state, goal, [&] { warm.Manager.QueryGroupSettingValues(values); },
        [&] {
            Answers answers;
            for (const auto& [name, setting] : answering) {
                answers[name] = setting->Answer();
            }
            benchmark::DoNotOptimize(answers);
        },
        {settings, settings});
}

void ChangeOfOneValue(benchmark::State& state)
{
    constexpr double goal = 0.001;
    constexpr std::size_t changes = 200;
    GeneratedSystem system = GenerateSystem(10'000);
    WarmSystem warm(system);
    std::vector<RedfishConfigSettingInfoStru> records;
    warm.Manager.GetAllSettingProperties(records);
    Answers texts;
    std::vector<std::string> formulas;
    for (const RedfishConfigSettingInfoStru& record : records) {
        texts.merge(RedfishConfigTextSetting(record, {}).GetProperyMap());
        for (const auto& [property, expression] : record.expressionMaps) {
            formulas.push_back(expression.DisplayText);
        }
    }
    const SettingValueMap others = OtherValues(system, 2);
    std::size_t change = 0;
    const auto changeOne = [&] {
        for (std::size_t number = 0; number < changes; ++number) {
            const std::string& name = warm.Names[++change % warm.Names.size()];
            warm.Manager.UpdateSettingValue({{name, others.find(name)->second}});
            warm.AskSingly(1);
        }
    };
    const auto substituteAll = [&] {
        for (const std::string& formula : formulas) {
            benchmark::DoNotOptimize(Reference::Substitute(formula, texts));
        }
    };
    TimeInTurn(state, goal, changeOne, substituteAll, {changes, 1});
}

/** The check of a setting alone: its pattern is matched by one that was compiled before. */
struct CheckAlone {
    explicit CheckAlone(RedfishConfigSettingInfoStru record) : Pattern(record.ValueExpression.value_or(".*"))
    {
        const bool matches = record.ValueExpression.has_value();
        record.ValueExpression.reset();
        HasPattern = matches;
        if (*record.Type == "Enumeration") {
            Setting = std::make_unique<RedfishConfigEnumerateSetting>(record, Config_Options{});
        } else if (*record.Type == "Integer") {
            Setting = std::make_unique<RedfishConfigNumericSetting>(record, Config_Options{});
        } else if (*record.Type == "Boolean") {
            Setting = std::make_unique<RedfishConfigBooleanSetting>(record, Config_Options{});
        } else {
            Setting = std::make_unique<RedfishConfigTextSetting>(record, Config_Options{});
        }
    }

    bool Accepts(std::string value) const
    {
        std::string reason;
        return RegistryTest::Check(*Setting, value, reason) == RESULT_SUCCEED &&
               (!HasPattern || std::regex_match(value, Pattern));
    }

    std::regex Pattern;
    bool HasPattern = false;
    std::unique_ptr<RedfishConfigSetting> Setting;
};

void PatchPreparation(benchmark::State& state)
{
    constexpr double goal = 3;
    constexpr std::size_t wanted = 1'000;
    GeneratedSystem system = GenerateSystem(3'000);
    WarmSystem warm(system);
    Answers accepted;
    std::vector<std::pair<std::unique_ptr<CheckAlone>, std::string>> checks;
    for (const std::string& name : warm.Names) {
        std::string value;
        std::string text;
        RedfishConfigSettingInfoStru record;
        if (checks.size() < wanted && warm.Manager.QuerySettingValue(name, value) == RESULT_SUCCEED &&
            warm.Manager.PreparePatchContext(name, value, text, FILTER_PATCH) == RESULT_SUCCEED &&
            warm.Manager.GetSettingProperties(name, record) == RESULT_SUCCEED) {
            accepted[name] = value;
            checks.emplace_back(std::make_unique<CheckAlone>(record), value);
        }
    }
    if (checks.size() != wanted) {
        state.SkipWithError("too few values are accepted");
    }
    TimeInTurn(
        state, goal,
        [&] {
            Answers texts;
            warm.Manager.PreparePatchContext(accepted, texts, FILTER_PATCH);
            benchmark::DoNotOptimize(texts);
        },
        [&] {
            for (const auto& [check, value] : checks) {
                benchmark::DoNotOptimize(check->Accepts(value));
            }
        },
        {wanted, wanted});
}

} // namespace

void RegisterWarmFigures()
{
    benchmark::RegisterBenchmark("warm single against look-up and copy/1000", WarmSingle)->UseManualTime();
    benchmark::RegisterBenchmark("warm single against 1000 settings/100000", WarmSingleOfMany)->UseManualTime();
    benchmark::RegisterBenchmark("warm group a setting against call and insertion/1000", WarmGroup)->UseManualTime();
    benchmark::RegisterBenchmark("change of one value against plain substitution/10000", ChangeOfOneValue)
        ->UseManualTime()
        ->Iterations(1);
    benchmark::RegisterBenchmark("patch preparation against checks alone/1000", PatchPreparation)->UseManualTime();
}

} // namespace RedfishConfigBench
