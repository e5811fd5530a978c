#include "Commands.h"

#include "../Text.h"
#include "app/Comparison.h"
#include "app/SavedSystem.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

std::string HereText(const Difference& difference)
{
    return difference.Unknown ? "(unknown)" : difference.Here.value_or("(no value)");
}

void Print(const std::vector<Difference>& differences, Output& output)
{
    std::vector<std::array<std::string, 3>> rows{{"NAME", "THERE", "HERE"}};
    for (const Difference& difference : differences) {
        rows.push_back(
            {Escape(difference.Name), Escape(difference.There.value_or("(no value)")), Escape(HereText(difference))});
    }
    std::array<std::size_t, 2> widths{};
    for (const auto& row : rows) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            widths.at(column) = std::max(widths.at(column), CharacterCount(row.at(column)));
        }
    }
    for (const auto& row : rows) {
        output.Answers() << Pad(row[0], widths[0]) << "  " << Pad(row[1], widths[1]) << "  " << row[2] << '\n';
    }
}

json::value TextOrNull(const std::optional<std::string>& text)
{
    return text ? json::value(json::string(*text)) : json::value(nullptr);
}

void WriteJson(const Comparison& comparison, Output& output)
{
    json::array differences;
    for (const Difference& difference : comparison.Differences) {
        differences.push_back({{"name", difference.Name},
                               {"there", TextOrNull(difference.There)},
                               {"here", TextOrNull(difference.Here)},
                               {"known", !difference.Unknown}});
    }
    json::array notCompared;
    for (const LeftOut& left : comparison.NotCompared) {
        notCompared.push_back({{"name", left.Name}, {"reason", left.Reason}});
    }
    output.Write(json::object{{"differences", std::move(differences)}, {"notCompared", std::move(notCompared)}});
}

} // namespace

ExitCode RunCompare(System& system, const std::string& file, Output& output)
{
    const Comparison comparison = Compare(ReadSavedValues(file).Values, system);
    if (output.Json()) {
        WriteJson(comparison, output);
    } else if (!comparison.Differences.empty()) {
        Print(comparison.Differences, output);
    }
    for (const LeftOut& left : comparison.NotCompared) {
        output.Complain(left.Name + " is not compared (" + left.Reason + ")");
    }
    const bool isSame = comparison.Differences.empty() && !comparison.HasDefects;
    return isSame ? ExitCode::Answered : ExitCode::Refused;
}

Runner AttachCompare(CLI::App& command)
{
    auto file = std::make_shared<std::string>();
    command.add_option("FILE", *file, "A saved system, a Bios resource, or an object of names and values")
        ->type_name("")
        ->required();
    return [file](System& system, Output& output) { return RunCompare(system, *file, output); };
}

} // namespace RedfishConfigTool
