// Lists the settings whose value differs from the default: example_changed_settings REGISTRY VALUES

#include "ExampleSystem.h"

#include <exception>
#include <iostream>
#include <map>
#include <string>

using namespace RedfishConfig;

// Each setting that the last group query had no answer for. That there are some is no error: passwords are among them.
static void PrintFailures(RedfishConfigSettingManager& manager, const char* heading)
{
    std::cout << "\n" << heading << "\n";
    for (const RedfishConfigResult& failure : manager.GetError()) {
        std::cout << "    " << failure.Setting() << ": " << failure.ErrorMsg() << "\n";
    }
}

int main(int argc, char** argv)
try {
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " REGISTRY VALUES\n";
        return 2;
    }
    std::string registry = ReadFile(argv[1]);
    SettingValueMap current = ReadValues(argv[2]);
    RedfishConfigSettingManager manager(registry, current, false, Config_Options());

    std::map<std::string, std::string> defaults, values;
    RedfishConfigResult result = manager.QueryGroupSettingDefaultValues(defaults);
    if (const int code = result; code != RESULT_SUCCEED && code != RESULT_GROUP_PARTIAL_FAILURE) {
        std::cerr << "Failed with code " << code << ". " << result.ErrorMsg() << "\n";
        return 1;
    }
    manager.GetError(); // the settings without a default; they have nothing to differ from
    result = manager.QueryGroupSettingValues(values);

    std::cout << "Changed (value, default):\n";
    for (const auto& [name, value] : values) {
        const auto factory = defaults.find(name);
        if (factory != defaults.end() && factory->second != value) {
            std::cout << "    " << name << ": \"" << value << "\", \"" << factory->second << "\"\n";
        }
    }
    if (result != RESULT_SUCCEED) {
        PrintFailures(manager, "Not compared, since the value is not shown:");
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
}
