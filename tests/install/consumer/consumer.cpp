#include <RedfishConfig/Client/Client.h>
#include <RedfishConfig/RedfishConfig.h>

#include <iostream>

// Derives from a setting, asks a manager and evaluates a formula: links against everything that is exported.
class Fan : public RedfishConfig::RedfishConfigNumericSetting {
public:
    using RedfishConfigNumericSetting::RedfishConfigNumericSetting;
    bool Locked() { return isReadOnly(); }
};

// Adapts a rule whose joiner stands on the later term, and asks the library about the outcome.
void AskAboutAnAdaptedRegistry()
{
    using namespace RedfishConfig;
    const auto registry = Client::ReadRegistryDocument(R"({"RegistryEntries": {
        "Attributes": [{"AttributeName": "Fan", "Type": "Boolean"}, {"AttributeName": "Speed", "Type": "Integer"}],
        "Dependencies": [{"Dependency": {
            "MapFrom": [{"MapFromAttribute": "Fan", "MapFromProperty": "CurrentValue",
                         "MapFromCondition": "EQU", "MapFromValue": false},
                        {"MapFromAttribute": "Speed", "MapFromProperty": "CurrentValue",
                         "MapFromCondition": "EQU", "MapFromValue": 0, "MapTerms": "OR"}],
            "MapToAttribute": "Speed", "MapToProperty": "Hidden", "MapToValue": true}}]}})");
    const auto values = Client::ReadValuesDocument(R"({"Attributes": {"Fan": false, "Speed": 5}})");
    Client::Adaptation adapted = Client::Adapt(registry, values);
    for (const auto& [form, count] : adapted.Rules) {
        std::cout << Client::Word(form) << " " << count.Adapted;
    }
    RedfishConfigSettingManager manager(adapted.RegistryText, adapted.Values, false, Config_Options{});
    SettingStatus status;
    manager.QuerySettingStatus("Speed", status);
    std::cout << " hidden " << status.Hidden.Value;

    const auto model = Client::Model::Read(registry);
    const Client::SystemValues now(model, values);
    const Client::Evaluation evaluation(now);
    const std::size_t speed = model->Find("Speed").value();
    // The one finding: whether Speed is hidden depends on Speed.
    std::cout << " " << Client::ReasonFor(evaluation, now, speed, Client::Property::Hidden) << ", lint "
              << Client::LintRegistry(*model).size() << "\n";
}

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
    AskAboutAnAdaptedRegistry();
    return result == RESULT_SUCCEED ? 0 : 1;
}
