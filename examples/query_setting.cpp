// Shows what there is to know about one setting: example_query_setting REGISTRY VALUES NAME

#include "ExampleSystem.h"

#include <exception>
#include <iostream>
#include <string>

using namespace RedfishConfig;

// Prints the answer, or the reason why there is none.
static bool Print(const char* heading, const RedfishConfigResult& result, const std::string& answer)
{
    std::cout << heading << ":\n    ";
    if (result != RESULT_SUCCEED) {
        std::cout << "refused (" << static_cast<int>(result) << "): " << result.ErrorMsg() << "\n";
        return false;
    }
    std::cout << answer << "\n";
    return true;
}

int main(int argc, char** argv)
try {
    if (argc != 4) {
        std::cerr << "usage: " << argv[0] << " REGISTRY VALUES NAME\n";
        return 2;
    }
    std::string registry = ReadFile(argv[1]);
    SettingValueMap values = ReadValues(argv[2]);
    const std::string name = argv[3];

    // The manager reads the registry when it is first asked, and generates only what the question needs.
    RedfishConfigSettingManager manager(registry, values, false, Config_Options());

    std::string value, validValues, description;
    const RedfishConfigResult valueResult = manager.QuerySettingValue(name, value);
    const RedfishConfigResult validValuesResult = manager.QuerySettingValidValues(name, validValues);
    const RedfishConfigResult descriptionResult = manager.QuerySettingDescription(name, description);

    bool complete = Print("Value", valueResult, value);
    complete &= Print("Valid values", validValuesResult, validValues);
    complete &= Print("Description", descriptionResult, description);
    return complete ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
}
