#pragma once

/**
 * @file
 * The library's entry point: the settings of one system, by name and as a whole.
 */

#include <RedfishConfig/Export.h>
#include <RedfishConfig/RedfishConfigExpression.h>
#include <RedfishConfig/RedfishConfigResult.h>
#include <RedfishConfig/RedfishConfigSetting.h>
#include <RedfishConfig/RedfishConfigSettingInfo.h>
#include <RedfishConfig/SettingValue.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig {

class RegistrySource;
class SettingTable;
class ValueApplication;
struct SettingQuery;

/**
 * Answers every question about the settings of one system, from the text of its attribute registry (DMTF Redfish
 * AttributeRegistry) and its current values.
 *
 * Construction only stores its arguments: a text that cannot be read is reported by the first operation. Settings
 * are generated when an operation needs them and then kept. An operation on one setting generates that setting and
 * those that its rules read, and only these rules count; an operation on all settings generates all of them, unless
 * there are some already, and then these are all there are. To have every rule count in every answer, start with an
 * operation on all settings.
 *
 * Names are matched without regard to the case of letters. No operation throws for bad input. Failures of an
 * operation on one setting:
 * - 8: the attribute's type is none of the five known ones;
 * - 13: a setting that its rules read could not be generated; the setting itself could, and answers when asked again;
 * - 20 "Unable to find the setting NAME.": the registry has no such attribute, or the name is empty;
 * - 27: the registry text could not be read;
 * - what the setting itself answers, see RedfishConfigSetting.
 *
 * Copies share the setting objects. A manager and its copies are used by one thread at a time: even queries generate
 * settings and apply the current values.
 */
class REDFISHCONFIG_EXPORT RedfishConfigSettingManager {
public:
    /**
     * @param registry the registry's JSON text; copied
     * @param currentValues the current values, which replace those of the registry; copied
     * @param cfc stored and handed on; no answer depends on it
     * @param options copied into every setting
     */
    RedfishConfigSettingManager(std::string& registry, SettingValueMap& currentValues, const bool& cfc,
                                const Config_Options& options);

    /** The same without current values: those of the registry hold. */
    RedfishConfigSettingManager(std::string& registry, const bool& cfc, const Config_Options& options);

    RedfishConfigSettingManager(const RedfishConfigSettingManager& other);
    RedfishConfigSettingManager& operator=(const RedfishConfigSettingManager& other);
    ~RedfishConfigSettingManager();

    /** @name One setting
     * The answer is written to the second argument, which stays untouched on failure.
     * @{ */

    /** The current value as text, in hexadecimal where Config_Options asks for it. Refuses a write-only or hidden
     * setting with 19. */
    RedfishConfigResult QuerySettingValue(const std::string& name, std::string& value);

    /** The default value as text, in hexadecimal where Config_Options asks for it. */
    RedfishConfigResult QuerySettingDefaultValue(const std::string& name, std::string& defaultValue);

    /** The display name, a heading and the help text. */
    RedfishConfigResult QuerySettingDescription(const std::string& name, std::string& description);

    /** The values that the setting accepts, and why it is hidden or grayed out; see
     * RedfishConfigSetting::GetSettingValidValues(). */
    RedfishConfigResult QuerySettingValidValues(const std::string& name, std::string& validValues);

    /** The dynamic properties with their reasons. Nothing is filtered out. */
    RedfishConfigResult QuerySettingStatus(const std::string& name, SettingStatus& status);

    /** The record of the attribute. Current values are not applied by this operation. */
    RedfishConfigResult GetSettingProperties(const std::string& name, RedfishConfigSettingInfoStru& properties);

    /** @} */

    /** @name All settings
     * The output is emptied and receives an answer by name for each setting that has one; when the settings cannot be
     * generated it stays as it is. When one setting or more fails, a protected one included, the result is 7, and
     * GetError() returns their results.
     * @{ */

    RedfishConfigResult QueryGroupSettingValues(std::map<std::string, std::string>& values);
    RedfishConfigResult QueryGroupSettingDefaultValues(std::map<std::string, std::string>& defaultValues);
    RedfishConfigResult QueryGroupSettingDescriptions(std::map<std::string, std::string>& descriptions);
    RedfishConfigResult QueryGroupSettingValidValues(std::map<std::string, std::string>& validValues);
    RedfishConfigResult QueryGroupSettingStatus(std::map<std::string, SettingStatus>& status);

    /** @} */

    /** @name Changes
     * What a caller sends to the BMC, saves to a file, or sends when such a file is restored. The value texts are those
     * of a PATCH body, see RedfishConfigSetting::PreparePatchContext(). The caller chooses by @p action which settings
     * take part, see filterAction.
     * @{ */

    /**
     * The PATCH value for a new value of one setting.
     *
     * @param patchContext receives the value text; stays untouched on failure
     * @return 0; 18 when the setting may not be changed now; 10 or 8 when its type refuses the value.
     */
    RedfishConfigResult PreparePatchContext(const std::string& name, const std::string& newValue,
                                            std::string& patchContext, const filterAction& action);

    /**
     * The PATCH values for new values of many settings. Never stops at a failure: each goes to GetError() with the
     * name as given; a setting that is missing is 20 there.
     *
     * @param newValues names to new values
     * @param patchContexts receives the accepted ones, by the settings' own names; entries that it already has are kept
     * @return 0, also for no values; 7 when one failed or more.
     */
    RedfishConfigResult PreparePatchContext(const std::map<std::string, std::string>& newValues,
                                            std::map<std::string, std::string>& patchContexts,
                                            const filterAction& action);

    /**
     * The PATCH value that sets one setting back to its default. A setting that may not be changed is not reset.
     *
     * @param defaultValue receives the default as text, in hexadecimal where Config_Options asks for it; also when the
     *        change is refused then
     * @param patchContext receives the value text; stays untouched on failure
     * @return as QuerySettingDefaultValue(), then as PreparePatchContext().
     */
    RedfishConfigResult PrepareLoadDefaultValue(const std::string& name, std::string& defaultValue,
                                                std::string& patchContext);

    /**
     * The current values worth saving, by name, never in hexadecimal. A setting that takes no part or has no value is
     * left out without a failure.
     *
     * @param values not emptied first; entries that it already has are replaced
     */
    RedfishConfigResult FetchSaveSettingValues(std::map<std::string, std::string>& values, const filterAction& action);

    /**
     * Checks saved values against this system and prepares those that can be restored. Never stops at a failure.
     *
     * @param saved names to saved values as text
     * @param restoreValues receives the PATCH value of each accepted one, by the name that the manager keeps; not
     *        emptied first, entries that it already has are replaced
     * @param errors receives the reason why a value cannot be restored, by the name as saved; not emptied first
     * @param admitSystemUnique whether values that belong to one system, such as an asset tag, may be restored
     * @return 0; else the first failure. A setting that takes no part in a restore is in @p errors, but no failure.
     */
    RedfishConfigResult FetchRestoreSettingValues(std::map<std::string, std::string>& saved,
                                                  std::map<std::string, std::string>& restoreValues,
                                                  std::map<std::string, std::string>& errors, bool admitSystemUnique);

    /** @} */

    /** Appends the record of every setting to @p properties, in the order of their names. */
    RedfishConfigResult GetAllSettingProperties(std::vector<RedfishConfigSettingInfoStru>& properties);

    /**
     * The menus of the registry: the second piece of the attributes' menu paths to the third pieces, in the order
     * of the registry. A path of two pieces ("./Main") names no menu here.
     *
     * @param groups cleared first; stays empty when the registry cannot be read
     */
    void GetGroupList(std::map<std::string, std::vector<std::string>>& groups);

    /** The failures of single settings that operations on all settings have collected. The list is emptied. */
    std::vector<RedfishConfigResult> GetError();

    /**
     * Gives every generated setting that @p currentValues names that value, and puts the values of all generated
     * settings into their formulas. Every other operation but GetSettingProperties() and GetGroupList() does this
     * with the values that the manager was constructed with.
     */
    void UpdateSettingValue(const SettingValueMap& currentValues);

    /** Replaces the flag given at construction. */
    void SetCFCSystem(const bool& cfc);

private:
    RedfishConfigResult ParseResponseAndGenerateSetting(const std::string& name);
    RedfishConfigResult GenerateSetting(const std::string& name);
    RedfishConfigResult GenerateExpression(std::vector<std::string>& relationSettings, const std::string& settingName);
    RedfishConfigResult GenerateAllSetting();
    RedfishConfigResult GenerateSpecifySetting(const std::pair<std::string, std::vector<std::string>>& settings);
    RedfishConfigResult GenerateSingleSetting(const std::string& name);
    void GetGroupName(const std::string& menuPath);
    // Makes the setting of an attribute by the factory of its type. False when the type is none of the known ones.
    bool StoreSetting(std::size_t attribute);
    static RedfishConfigResult NotFound(const std::string& name);
    // Runs what reads the registry; what is raised in it is logged and answered with code 27.
    template <class Reading>
    static RedfishConfigResult AnswerWhatReadingRaises(Reading reading);

    std::shared_ptr<RedfishConfigSetting> createTextSetting(std::size_t attribute);
    std::shared_ptr<RedfishConfigSetting> createNumericSetting(std::size_t attribute);
    std::shared_ptr<RedfishConfigSetting> createEnumerateSetting(std::size_t attribute);
    std::shared_ptr<RedfishConfigSetting> createBooleanSetting(std::size_t attribute);
    std::shared_ptr<RedfishConfigSetting> createPasswordSetting(std::size_t attribute);
    template <class TypedSetting>
    std::shared_ptr<RedfishConfigSetting> CreateSetting(const char* factory, std::size_t attribute);

    // Applies the manager's own values, unless the settings have them already.
    void ApplyCurrentValues();
    void ApplyValues(const SettingValueMap& values, std::vector<std::uint32_t>& changed);
    // Gives generated settings the values, and adds those whose value has changed to changed.
    void SetValues(const SettingValueMap& values, std::vector<std::uint32_t>& changed);
    void SetValue(std::size_t setting, const SettingValue& value, std::vector<std::uint32_t>& changed);

    // The formulas of the targets whose rules were read. Settings that are generated before that go without.
    void NoteBuiltFormulas(const std::string& settingName);
    bool HasFormulas(const std::string& target) const;
    ExpressionMaps BuiltFormulas() const;

    // Each operation begins with this: the settings it needs are generated, and the current values applied.
    RedfishConfigResult GenerateForOperation(const std::string& name);
    RedfishConfigResult FindSetting(const std::string& name, std::size_t& found);
    RedfishConfigResult GenerateAndFind(const std::string& name, std::size_t& found);
    RedfishConfigResult QueryOne(const SettingQuery& query, const std::string& name, std::string& answer);
    RedfishConfigResult PrepareOneOfMany(const std::string& name, const std::string& newValue,
                                         std::map<std::string, std::string>& patchContexts, const filterAction& action);
    RedfishConfigResult RestoreOne(const std::string& name, const std::string& value,
                                   std::map<std::string, std::string>& restoreValues,
                                   std::map<std::string, std::string>& errors, bool admitSystemUnique);
    RedfishConfigResult QueryGroup(const SettingQuery& query, std::map<std::string, std::string>& answers);

    std::vector<RedfishConfigResult> m_Errors;
    std::shared_ptr<RegistrySource> m_Source; // shared with all managers of the same registry
    SettingValueMap m_CurrentValues;
    bool m_CFCFlag;
    Config_Options m_Options;
    RedfishConfigExpression m_Expression; // also keeps the registry as read
    bool m_AllFormulasBuilt = false;
    std::set<std::string> m_FormulasBuiltFor; // targets, unless all are
    std::unique_ptr<SettingTable> m_Settings;
    bool m_MenusKnown = false; // from generating all settings

    // How the settings stand to values. Copies share the settings, and so the count of changes to them.
    std::shared_ptr<std::uint64_t> m_Changes;
    std::unique_ptr<ValueApplication> m_Application;
    bool m_OwnValuesApplied = false;           // but for the following
    std::vector<std::uint32_t> m_OtherwiseSet; // settings that a caller has given another value since
};

} // namespace RedfishConfig
