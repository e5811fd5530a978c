#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

/** Two things measured in turn in one run, and how their ratio is told. */
namespace RedfishConfigBench {

// The counters by which a benchmark tells its result to the table.
constexpr char figureCounter[] = "figure";
constexpr char againstCounter[] = "against";
constexpr char ratioCounter[] = "ratio";
constexpr char goalCounter[] = "goal";

inline double Median(std::vector<double> numbers)
{
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

/** The seconds that a call takes. */
template <class Work>
double Seconds(Work& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/** How often each of two things does what is counted in one call; the figures are told for one time. */
struct Counts {
    double Figure = 1;
    double Against = 1;
};

/** Collects pairs of measurements and tells their medians; the ratio is that of each pair, so that drift falls out. */
class Pairs {
public:
    void Add(double figure, double against)
    {
        m_Figure.push_back(figure);
        m_Against.push_back(against);
        m_Ratios.push_back(figure / against);
    }

    void Tell(benchmark::State& state, double goal) const
    {
        state.counters[figureCounter] = Median(m_Figure);
        state.counters[againstCounter] = Median(m_Against);
        state.counters[ratioCounter] = Median(m_Ratios);
        state.counters[goalCounter] = goal;
    }

private:
    std::vector<double> m_Figure;
    std::vector<double> m_Against;
    std::vector<double> m_Ratios;
};

/** Times two things in turn, as often as the framework asks, after one round that does not count. */
template <class Figure, class Against>
void TimeInTurn(benchmark::State& state, double goal, Figure figure, Against against, Counts counts = {})
{
    figure();
    against();
    Pairs pairs;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        const double figureSeconds = Seconds(figure);
        const double againstSeconds = Seconds(against);
        state.SetIterationTime(figureSeconds + againstSeconds);
        pairs.Add(figureSeconds / counts.Figure, againstSeconds / counts.Against);
    }
    pairs.Tell(state, goal);
}

} // namespace RedfishConfigBench
