#include "Figures.h"
#include "Pairs.h"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfigBench;

struct Row {
    std::string Name;
    std::string System;
    double Figure;
    double Against;
    double Ratio;
    double Goal;
};

/** Collects the figures of the benchmarks as they end, and prints each at once. */
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override
    {
        std::printf("%-66s %-22s %12s %12s %9s %9s\n", "figure", "system", "it", "against", "ratio", "goal");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const std::string name = run.run_name.function_name;
            const std::size_t slash = name.rfind('/');
            if (run.error_occurred) {
                std::printf("%-66s %s\n", name.c_str(), run.error_message.c_str());
                Failed = true;
                continue;
            }
            const auto counter = [&](const char* key) { return run.counters.at(key).value; };
            Rows.push_back({name.substr(0, slash), name.substr(slash + 1), counter(figureCounter),
                            counter(againstCounter), counter(ratioCounter), counter(goalCounter)});
            const Row& row = Rows.back();
            std::printf("%-66s %-22s %12.4g %12.4g %9.4f %9.4f %s\n", row.Name.c_str(), row.System.c_str(), row.Figure,
                        row.Against, row.Ratio, row.Goal, row.Ratio <= row.Goal ? "" : "  above the goal");
            std::fflush(stdout);
        }
    }

    std::vector<Row> Rows;
    bool Failed = false;
};

void WriteJson(const std::vector<Row>& rows, const std::string& path)
{
    boost::json::array list;
    for (const Row& row : rows) {
        list.push_back({{"figure", row.Name},
                        {"system", row.System},
                        {"it", row.Figure},
                        {"against", row.Against},
                        {"ratio", row.Ratio},
                        {"goal", row.Goal}});
    }
    std::ofstream(path) << boost::json::serialize(list) << '\n';
}

} // namespace

/** bench [--benchmark_filter=...] [FILE.json]: seconds and bytes, each figure beside what it is compared with. */
int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    RegisterColdFigures();
    RegisterWarmFigures();
    RegisterManySystems();
    RegisterModelFigures();
    RegisterHostileFigures();
    RegisterWholeProcesses();
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    if (argc > 1) {
        WriteJson(table.Rows, argv[1]);
    }
    return table.Failed ? 1 : 0;
}
