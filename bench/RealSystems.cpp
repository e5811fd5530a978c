#include "RealSystems.h"

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <boost/json/parse.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace RedfishConfigBench {

namespace {

namespace json = boost::json;
using namespace RedfishConfig;

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

SettingValue ValueOf(const json::value& value)
{
    // The library's own reading of a value, by way of an attribute that has it.
    return json::value_to<RedfishConfigSettingInfoStru>(json::value{{"CurrentValue", value}}).CurrentValue;
}

GeneratedSystem ReadSystem(const std::filesystem::path& folder)
{
    GeneratedSystem system;
    system.Registry = ReadFile(folder / "registry.json");
    const json::value registry = json::parse(system.Registry);
    for (const json::value& attribute : registry.at("RegistryEntries").at("Attributes").as_array()) {
        system.Names.emplace_back(attribute.at("AttributeName").as_string());
    }
    if (std::filesystem::exists(folder / "bios.json")) {
        const json::value bios = json::parse(ReadFile(folder / "bios.json"));
        for (const auto& [name, value] : bios.at("Attributes").as_object()) {
            system.Values[std::string(name)] = ValueOf(value);
        }
    }
    return system;
}

} // namespace

std::map<std::string, GeneratedSystem> ReadRealSystems()
{
    std::map<std::string, GeneratedSystem> systems;
    const char* folder = std::getenv("REDFISHCONFIG_REGISTRIES");
    if (folder == nullptr) {
        return systems;
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (std::filesystem::exists(entry.path() / "registry.json")) {
            systems[entry.path().filename()] = ReadSystem(entry.path());
        }
    }
    return systems;
}

} // namespace RedfishConfigBench
