#include <RedfishConfig/RedfishConfig.h>

#include <iostream>

// Derives from a setting, asks a manager and evaluates a formula: links against everything that is exported.
class Fan : public RedfishConfig::RedfishConfigNumericSetting {
public:
    using RedfishConfigNumericSetting::RedfishConfigNumericSetting;
    bool Locked() { return isReadOnly(); }
};

int main()
{
    using namespace RedfishConfig;
    std::string registry = R"({"RegistryEntries": {
        "Attributes": [
            {"AttributeName": "BootMode", "Type": "Enumeration", "CurrentValue": "Legacy", "Value": [{"ValueName": "Legacy"}]},
            {"AttributeName": "SecureBoot", "Type": "Boolean", "CurrentValue": false}],
        "Dependencies": [{"Type": "Map", "DependencyFor": "SecureBoot", "Dependency": {
            "MapFrom": [{"MapFromAttribute": "BootMode", "MapFromProperty": "CurrentValue",
                         "MapFromCondition": "EQU", "MapFromValue": "Legacy"}],
            "MapToAttribute": "SecureBoot", "MapToProperty": "ReadOnly", "MapToValue": true}}]}})";
    RedfishConfigSettingManager manager(registry, false, Config_Options{});

    SettingStatus status;
    const RedfishConfigResult result = manager.QuerySettingStatus("secureboot", status);
    std::cout << static_cast<int>(result) << " " << status.ReadOnly.Reason << "\n";

    RedfishConfigSettingInfoStru info;
    info.AttributeName = "FanSpeed";
    info.ReadOnly = true;
    Fan fan(info, {});
    std::cout << fan.Locked() << " " << RedfishConfigExpression().Calculate("(Legacy==Legacy)") << "\n";

    try {
        RedfishConfigExpression().Calculate("yes");
    } catch (const std::string& message) {
        std::cout << message << "\n";
    }
    return result == RESULT_SUCCEED ? 0 : 1;
}
