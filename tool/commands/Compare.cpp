#include "Commands.h"

#include "../SavedSystem.h"
#include "../Text.h"
#include "../TypedValue.h"
#include "common/Ascii.h"

#include <RedfishConfig/SettingValue.h>

#include <CLI/App.hpp>

#include <boost/json/array.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace RedfishConfigTool {

namespace Ascii = RedfishConfig::Ascii;
namespace json = boost::json;

namespace {

struct Difference {
    std::string Name;
    std::optional<std::string> There;
    std::optional<std::string> Here;
    bool Unknown = false; ///< no setting of this system
};

/** Why a value of this system may not be shown beside another. */
const char* WhyNotShown(const Setting& setting, const SettingStatus& status, const System& system)
{
    if (setting.IsPassword()) {
        return "a password";
    }
    if (status.Is(StatusRow::WriteOnly)) {
        return "write only";
    }
    return status.Is(StatusRow::Protected) && !system.Options().IncludeProtected ? "protected" : nullptr;
}

struct Comparison {
    std::vector<Difference> Differences;
    std::vector<LeftOut> NotCompared;
    bool HasDefects = false; ///< the file has values that no setting can have
};

/** A value as it is shown: an integer in hexadecimal, where that is wanted. What is no integer stays as it is. */
std::optional<std::string> Shown(const Setting& setting, const std::optional<std::string>& value, const System& system)
{
    if (!value || !system.Options().Hex || !Ascii::EqualIgnoringCase(setting.Type(), "Integer")) {
        return value;
    }
    const std::optional<json::value> typed = TypedValue(setting, *value);
    return typed ? RedfishConfig::DecToHex(std::to_string(typed->as_int64())) : value;
}

Comparison Compare(const std::vector<Assignment>& values, System& system)
{
    Comparison comparison;
    for (const Assignment& value : values) {
        const Setting* setting = system.Find(value.Name);
        if (setting == nullptr) {
            comparison.Differences.push_back({value.Name, value.Value, std::nullopt, true});
            continue;
        }
        if (const char* reason = WhyNotShown(*setting, system.StatusOf(*setting), system)) {
            comparison.NotCompared.push_back({value.Name, reason});
            continue;
        }
        if (!value.Value && !value.IsNull) {
            comparison.NotCompared.push_back({value.Name, value.Defect});
            comparison.HasDefects = true;
            continue;
        }
        const auto& current = setting->Record().CurrentValue;
        const std::optional<std::string> here = current ? std::optional(PlainText(*current)) : std::nullopt;
        const bool bothThere = value.Value && here;
        if (bothThere ? !system.AreSame(*setting, *value.Value, *here) : value.Value.has_value() != here.has_value()) {
            comparison.Differences.push_back(
                {value.Name, Shown(*setting, value.Value, system), Shown(*setting, here, system), false});
        }
    }
    return comparison;
}

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
