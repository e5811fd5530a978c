// Lists every setting that cannot be changed now, with the reasons: example_why_locked REGISTRY VALUES

#include "ExampleSystem.h"

#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <vector>

using namespace RedfishConfig;

// The properties that keep a setting from being changed. A write-only or system-unique setting can be changed.
static std::vector<PropertyState> Locks(const SettingStatus& status)
{
    std::vector<PropertyState> locks;
    for (const PropertyState& state :
         {status.ReadOnly, status.Protected, status.Hidden, status.GrayOut, status.Immutable}) {
        if (state.Value) {
            locks.push_back(state);
        }
    }
    return locks;
}

int main(int argc, char** argv)
try {
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " REGISTRY VALUES\n";
        return 2;
    }
    std::string registry = ReadFile(argv[1]);
    SettingValueMap values = ReadValues(argv[2]);
    RedfishConfigSettingManager manager(registry, values, false, Config_Options());

    std::map<std::string, SettingStatus> statuses;
    const RedfishConfigResult result = manager.QueryGroupSettingStatus(statuses);
    if (result != RESULT_SUCCEED) {
        std::cerr << "Failed with code " << static_cast<int>(result) << ". " << result.ErrorMsg() << "\n";
        return 1;
    }

    std::size_t locked = 0;
    for (const auto& [name, status] : statuses) {
        const std::vector<PropertyState> locks = Locks(status);
        if (locks.empty()) {
            continue;
        }
        ++locked;
        std::cout << name << "\n";
        for (const PropertyState& lock : locks) {
            std::cout << "    " << lock.Reason << "\n";
        }
    }
    std::cout << locked << " of " << statuses.size() << " settings cannot be changed.\n";
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
}
