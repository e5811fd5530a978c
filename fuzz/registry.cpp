// Any text as a registry: every operation answers, and the same with the log on, and the same again.

#include "CheckedManager.h"

#include <algorithm>

using namespace RedfishConfig;

namespace {

constexpr std::size_t mostAskedSingly = 6;

/** All answers: by a manager that begins with all settings, and by one that begins with single ones. */
std::string Answers(std::string registry, const Config_Options& options)
{
    std::string record;
    RedfishConfigSettingManager all(registry, false, options);
    Fuzz::CheckedManager checkedAll(all, record);
    std::vector<std::string> names = checkedAll.AllProperties();
    checkedAll.EverythingOfAll();
    names.resize(std::min(names.size(), mostAskedSingly));
    for (const std::string& name : names) {
        checkedAll.Everything(name);
    }

    RedfishConfigSettingManager single(registry, true, options);
    Fuzz::CheckedManager checkedSingle(single, record);
    for (const std::string& name : names) {
        checkedSingle.Everything(name);
    }
    checkedSingle.Everything("no such setting");
    checkedSingle.Everything("");
    checkedSingle.GroupValues();
    checkedSingle.GroupList(); // generates all
    checkedSingle.EverythingOfAll();
    return record;
}

std::string ToText(const ExpressionMaps& maps)
{
    std::string text;
    for (const auto& [name, properties] : maps) {
        for (const auto& [property, expression] : properties) {
            text += name + '.' + property + ": " + expression.DisplayText + (expression.Valid ? " valid\n" : "\n");
        }
    }
    return text;
}

/** Formulas are built once, however often they are asked for. */
void CheckFormulas(const std::string& registry)
{
    RedfishConfigExpression expression;
    std::vector<std::string> related;
    ExpressionMaps maps;
    ExpressionMaps singly;
    try {
        if (expression.ParseAllSettingsDependency(registry, related, maps) != RESULT_SUCCEED) {
            Fuzz::Require(maps.empty(), "unreadable rules build no formula");
            return;
        }
    } catch (const std::exception&) {
        Fuzz::Require(maps.empty(), "an unreadable registry builds no formula");
        return;
    }
    const std::string built = ToText(maps);
    expression.ParseAllSettingsDependency(registry, related, maps);
    Fuzz::RequireSame(ToText(maps), built, "formulas are built once");
    Fuzz::Require(related.empty(), "all formulas together name no related settings");
    for (const auto& entry : maps) {
        expression.ParseSingleSettingDependency(registry, entry.first, related, singly);
    }
    Fuzz::RequireSame(ToText(singly), built, "formulas are the same when built one by one");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Fuzz::Bytes bytes(data, size);
    const std::string registry = bytes.Rest();
    Config_Options options;
    options.ShowHexValue = size % 2 == 1;
    options.IgnoreProtected = size % 3 == 0;
    const std::string answers = Answers(registry, options);
    Fuzz::RequireSame(Answers(registry, options), answers, "answers are the same when asked again");
    {
        const Fuzz::LogOn log;
        Fuzz::RequireSame(Answers(registry, options), answers, "answers are the same with the log on");
    }
    CheckFormulas(registry);
    return 0;
}
