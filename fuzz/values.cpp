// Any file as the current values of a system.

#include "CheckedManager.h"

#include "app/Input.h"
#include "support/RegistryBuilder.h"

#include <stdexcept>

using namespace RedfishConfig;
using RegistryTest::RegistryBuilder;

namespace {

/** A setting of every type, and rules that read all of them. */
const std::string& SmallRegistry()
{
    static const std::string text =
        RegistryBuilder()
            .Attribute(
                "Mode", "Enumeration",
                {{"Value", {RegistryBuilder::Choice("On", "Switched on"), RegistryBuilder::Choice("Off", "Off")}},
                 {"DefaultValue", "Off"},
                 {"MenuPath", "./All/Mode"}}) // without menus, listing them generates all settings anew
            .Attribute("Count", "Integer",
                       {{"LowerBound", -4}, {"UpperBound", 40}, {"ScalarIncrement", 2}, {"CurrentValue", 4}})
            .Attribute("Label", "String", {{"MaxLength", 8}, {"ValueExpression", "[a-z]*"}, {"HelpText", "Any."}})
            .Attribute("Watch", "Boolean", {{"CurrentValue", true}, {"DefaultValue", false}})
            .Attribute("Code", "Password", {{"MinLength", 2}, {"WriteOnly", true}})
            .Rule("Count", "ReadOnly", true, {{"Mode", "EQU", "On", "AND"}, {"Label", "NEQ", "a"}})
            .Rule("Label", "Hidden", true, {{"Count", "GTR", 5, "OR"}, {"Watch", "EQU", true}})
            .Rule("Watch", "GrayOut", true, {{"Label", "EQU"}})
            .Rule("Mode", "Immutable", true, {{"Code", "NEQ"}})
            .Rule("Code", "ReadOnly", false, {{"Watch", "EQU", true, "", "ReadOnly"}})
            .Text();
    return text;
}

constexpr const char* names[] = {"Mode", "Count", "Label", "Watch", "Code"};

std::string Answers(SettingValueMap values, bool atOnce)
{
    std::string registry = SmallRegistry();
    std::string record;
    SettingValueMap none;
    RedfishConfigSettingManager manager(registry, atOnce ? values : none, false, {});
    Fuzz::CheckedManager checked(manager, record);
    if (!atOnce) {
        std::map<std::string, SettingStatus> ignored;
        manager.QueryGroupSettingStatus(ignored); // generates the settings
        manager.UpdateSettingValue(values);
    }
    checked.EverythingOfAll();
    for (const char* name : names) {
        checked.Everything(name);
    }
    return record;
}

/** What a value is, a setting shows. */
void CheckShown(SettingValueMap values)
{
    std::string registry = SmallRegistry();
    RedfishConfigSettingManager manager(registry, values, false, {});
    for (const char* name : names) {
        const auto given = values.find(name);
        RedfishConfigSettingInfoStru record;
        SettingStatus status;
        Fuzz::Require(manager.QuerySettingStatus(name, status) == RESULT_SUCCEED, "a setting has a status", name);
        Fuzz::Require(manager.GetSettingProperties(name, record) == RESULT_SUCCEED, "a setting is there", name);
        Fuzz::Require(given == values.end() || record.CurrentValue == given->second, "a setting has its value", name);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Fuzz::TemporaryFolder folder;
    Fuzz::Bytes bytes(data, size);
    const std::string file = folder.Write("values.json", bytes.Rest());
    RedfishConfig::App::ValuesInput input;
    try {
        input = RedfishConfig::App::ReadValues(file);
    } catch (const RedfishConfig::App::InputError& error) {
        Fuzz::Require(std::string(error.what()).find(file) != std::string::npos, "a complaint names the file",
                      error.what());
        return 0;
    }
    for (const std::string& remark : input.Remarks) {
        Fuzz::Require(remark.find(file) != std::string::npos, "a remark names the file", remark);
    }
    CheckShown(input.Values);
    const std::string answers = Answers(input.Values, true);
    Fuzz::RequireSame(Answers(input.Values, true), answers, "answers are the same when asked again");
    Fuzz::RequireSame(Answers(input.Values, false), answers, "answers are the same with values given later");
    const Fuzz::LogOn log;
    Fuzz::RequireSame(Answers(input.Values, true), answers, "answers are the same with the log on");
    return 0;
}
