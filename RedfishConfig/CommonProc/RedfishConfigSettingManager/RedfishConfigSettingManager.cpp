#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"
#include "../Registry/RegistrySource.h"
#include "Operation.h"
#include "SettingTable.h"
#include "ValueApplication.h"

#include <utility>

namespace RedfishConfig {

RedfishConfigSettingManager::RedfishConfigSettingManager(std::string& registry, SettingValueMap& currentValues,
                                                         const bool& cfc, const Config_Options& options)
    : RedfishConfigSettingManager(registry, cfc, options)
{
    m_CurrentValues = currentValues;
}

RedfishConfigSettingManager::RedfishConfigSettingManager(std::string& registry, const bool& cfc,
                                                         const Config_Options& options)
    : m_Source(RegistrySource::Of(registry)),
      m_CFCFlag(cfc),
      m_Options(options),
      m_Settings(std::make_unique<SettingTable>()),
      m_Changes(std::make_shared<std::uint64_t>(0)),
      m_Application(std::make_unique<ValueApplication>())
{
}

RedfishConfigSettingManager::RedfishConfigSettingManager(const RedfishConfigSettingManager& other)
    : m_Errors(other.m_Errors),
      m_Source(other.m_Source),
      m_CurrentValues(other.m_CurrentValues),
      m_CFCFlag(other.m_CFCFlag),
      m_Options(other.m_Options),
      m_Expression(other.m_Expression),
      m_AllFormulasBuilt(other.m_AllFormulasBuilt),
      m_FormulasBuiltFor(other.m_FormulasBuiltFor),
      m_Settings(std::make_unique<SettingTable>(*other.m_Settings)),
      m_MenusKnown(other.m_MenusKnown),
      m_Changes(other.m_Changes),
      m_Application(std::make_unique<ValueApplication>(*other.m_Application)),
      m_OwnValuesApplied(other.m_OwnValuesApplied),
      m_OtherwiseSet(other.m_OtherwiseSet)
{
}

RedfishConfigSettingManager& RedfishConfigSettingManager::operator=(const RedfishConfigSettingManager& other)
{
    if (this != &other) {
        RedfishConfigSettingManager copy(other);
        m_Errors.swap(copy.m_Errors);
        m_Source.swap(copy.m_Source);
        m_CurrentValues.swap(copy.m_CurrentValues);
        m_CFCFlag = copy.m_CFCFlag;
        m_Options = copy.m_Options;
        m_Expression = copy.m_Expression;
        m_AllFormulasBuilt = copy.m_AllFormulasBuilt;
        m_FormulasBuiltFor.swap(copy.m_FormulasBuiltFor);
        m_Settings.swap(copy.m_Settings);
        m_MenusKnown = copy.m_MenusKnown;
        m_Changes.swap(copy.m_Changes);
        m_Application.swap(copy.m_Application);
        m_OwnValuesApplied = copy.m_OwnValuesApplied;
        m_OtherwiseSet.swap(copy.m_OtherwiseSet);
    }
    return *this;
}

RedfishConfigSettingManager::~RedfishConfigSettingManager() = default;

RedfishConfigResult RedfishConfigSettingManager::GenerateForOperation(const std::string& name)
{
    RedfishConfigResult result = ParseResponseAndGenerateSetting(name);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Parse response and generate setting error.";
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::FindSetting(const std::string& name, std::size_t& found)
{
    found = m_Settings->Find(name);
    if (found == SettingTable::none) {
        return NotFound(name); // an empty name generates all settings and names none
    }
    return m_Settings->At(found).Setting != nullptr ? RedfishConfigResult() : MissingInCollection();
}

RedfishConfigResult RedfishConfigSettingManager::GenerateAndFind(const std::string& name, std::size_t& found)
{
    RedfishConfigResult result = GenerateForOperation(name);
    return result == RESULT_SUCCEED ? FindSetting(name, found) : result;
}

void RedfishConfigSettingManager::SetCFCSystem(const bool& cfc)
{
    m_CFCFlag = cfc;
}

std::vector<RedfishConfigResult> RedfishConfigSettingManager::GetError()
{
    return std::exchange(m_Errors, {});
}

} // namespace RedfishConfig
