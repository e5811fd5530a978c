#pragma once

#include "Support.h"

#include <RedfishConfig/RedfishConfig.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Fuzz {

/**
 * Asks a manager and holds it to what every operation promises: a documented code, outputs untouched on failure, an
 * accepted value accepted again. Writes all answers down, so that two runs can be compared.
 */
class CheckedManager {
public:
    using Texts = std::map<std::string, std::string>;

    CheckedManager(RedfishConfig::RedfishConfigSettingManager& manager, std::string& record);

    void Value(const std::string& name);
    void Default(const std::string& name);
    void Description(const std::string& name);
    void ValidValues(const std::string& name);
    void Status(const std::string& name);
    void Properties(const std::string& name);

    void GroupValues();
    void GroupDefaults();
    void GroupDescriptions();
    void GroupValidValues();
    void GroupStatus();
    /** @return the names of all settings */
    std::vector<std::string> AllProperties();
    void GroupList();
    void Errors();

    void Patch(const std::string& name, const std::string& value, RedfishConfig::filterAction action);
    void PatchMany(const Texts& values, RedfishConfig::filterAction action);
    void LoadDefault(const std::string& name);
    Texts Save(RedfishConfig::filterAction action);
    void Restore(Texts saved, bool withSystemUnique);

    /** Everything that can be asked about one setting. */
    void Everything(const std::string& name);
    /** Everything that can be asked about all of them. */
    void EverythingOfAll();

private:
    using Manager = RedfishConfig::RedfishConfigSettingManager;
    using Result = RedfishConfig::RedfishConfigResult;

    Result Note(const char* operation, const std::string& name, Result result);
    void Note(const std::string& text);
    void Note(const Texts& texts);
    void Note(const RedfishConfig::SettingStatus& status);
    void AskOne(const char* operation, Result (Manager::*query)(const std::string&, std::string&),
                const std::string& name);
    void AskAll(const char* operation, Result (Manager::*query)(Texts&));
    void RequireAcceptedAgain(const std::string& name, const std::string& patch, RedfishConfig::filterAction action);

    Manager& m_Manager;
    std::string& m_Record;
};

} // namespace Fuzz
