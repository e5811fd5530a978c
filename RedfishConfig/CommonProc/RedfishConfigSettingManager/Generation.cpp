#include <RedfishConfig/RedfishConfigSettingManager.h>

#include "../../logging/LogLine.h"
#include "../RedfishConfigSetting/SettingState.h"
#include "../Registry/RegistrySource.h"
#include "SettingTable.h"

#include <algorithm>
#include <exception>
#include <new>

namespace RedfishConfig {

RedfishConfigResult RedfishConfigSettingManager::ParseResponseAndGenerateSetting(const std::string& name)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:" << name;
    RedfishConfigResult result = GenerateSetting(name);
    if (result == RESULT_SUCCEED) {
        ApplyCurrentValues();
        LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret="
                           << static_cast<int>(result);
    } else {
        LOG_LINE(LogDefect) << "Generate setting error.";
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::GenerateSetting(const std::string& name)
{
    if (!name.empty() && m_Settings->Has(name)) {
        return RESULT_SUCCEED;
    }
    std::vector<std::string> relationSettings;
    RedfishConfigResult result = GenerateExpression(relationSettings, name);
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Generate expression error.";
        return result;
    }
    result = name.empty() ? GenerateAllSetting() : GenerateSpecifySetting({name, relationSettings});
    if (result == RESULT_SETTING_NOT_FOUND) {
        return NotFound(name);
    }
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDefect) << "Generate setting error.";
    }
    return result;
}

RedfishConfigResult RedfishConfigSettingManager::NotFound(const std::string& name)
{
    const std::string message = "Unable to find the setting " + name + ".";
    LOG_LINE(LogDefect) << message;
    return {RESULT_SETTING_NOT_FOUND, message};
}

RedfishConfigResult RedfishConfigSettingManager::GenerateExpression(std::vector<std::string>& relationSettings,
                                                                    const std::string& settingName)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=" << settingName;
    m_Expression.m_CFCFlag = m_CFCFlag;
    std::vector<std::string> related;
    RedfishConfigResult result = AnswerWhatReadingRaises([&] {
        const auto read = [this] { return m_Source->Read(); };
        ExpressionMaps formulas; // the settings take theirs from the registry; these are for the log alone
        ExpressionMaps* logged = nullptr;
        if (LogIsOn(LogDetail)) {
            formulas = BuiltFormulas();
            logged = &formulas;
        }
        RedfishConfigResult parsed = settingName.empty() ? m_Expression.ParseAll(read, logged)
                                                         : m_Expression.ParseSingle(read, settingName, related, logged);
        if (parsed == RESULT_SUCCEED) {
            NoteBuiltFormulas(settingName);
        }
        return parsed;
    });
    if (result != RESULT_SUCCEED) {
        LOG_LINE(LogDetail) << "Failed to parse the dependencySettings and expressionMaps with ret="
                            << static_cast<int>(result);
        return result;
    }
    relationSettings.insert(relationSettings.end(), related.begin(), related.end());
    LOG_LINE(LogDetail) << "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()="
                        << relationSettings.size();
    return RESULT_SUCCEED;
}

template <class Reading>
RedfishConfigResult RedfishConfigSettingManager::AnswerWhatReadingRaises(Reading reading)
{
    try {
        return reading();
    } catch (const std::exception& error) {
        LOG_LINE(LogDefect) << error.what();
        return RESULT_HTTP_RESPONSE_PARSE_FAILED;
    }
}

RedfishConfigResult RedfishConfigSettingManager::GenerateAllSetting()
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::GenerateAllSetting()";
    if (!m_Settings->Empty()) {
        return RESULT_SUCCEED; // single settings count as generated
    }
    RedfishConfigResult result = AnswerWhatReadingRaises([this]() -> RedfishConfigResult {
        const auto& attributes = m_Expression.m_Registry->Attributes();
        for (std::size_t position = 0; position < attributes.size(); ++position) {
            const RedfishConfigSettingInfoStru& attribute = attributes[position];
            if (attribute.AttributeName && !attribute.AttributeName->empty()) {
                StoreSetting(position);
            }
            if (LogIsOn(LogDetail) && attribute.MenuPath && !attribute.MenuPath->empty()) {
                GetGroupName(*attribute.MenuPath);
            }
        }
        m_MenusKnown = true;
        return RESULT_SUCCEED;
    });
    if (result != RESULT_SUCCEED) { // for lack of memory, perhaps: a part must not be taken for all settings
        m_Settings->Clear();
        m_MenusKnown = false;
        return result;
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::GenerateAllSetting()";
    return result;
}

RedfishConfigResult
RedfishConfigSettingManager::GenerateSpecifySetting(const std::pair<std::string, std::vector<std::string>>& settings)
{
    LOG_LINE(LogTrace) << "Enter RedfishConfigSettingManager::GenerateSpecifySetting()";
    const auto& [name, related] = settings;
    const auto isMissing = [this](const std::string& wanted) { return !m_Settings->Has(wanted); };

    if (isMissing(name)) {
        RedfishConfigResult result = GenerateSingleSetting(name);
        if (result != RESULT_SUCCEED) {
            LOG_LINE(LogDefect) << "Failed in creating setting: " << name;
            return result;
        }
    }
    for (const std::string& relatedName : related) {
        // whether it worked is asked below
        if (isMissing(relatedName) && GenerateSingleSetting(relatedName) == RESULT_HTTP_RESPONSE_PARSE_FAILED) {
            ++*m_Changes;
            m_Settings->Erase(name); // for lack of memory: the setting must not be taken for complete next time
        }
    }
    const auto missing = std::find_if(related.begin(), related.end(), isMissing);
    if (isMissing(name) || missing != related.end()) {
        LOG_LINE(LogDefect) << "Failed in creating setting: " << (isMissing(name) ? name : *missing);
        return RESULT_INTERNAL_ERROR;
    }
    LOG_LINE(LogTrace) << "Exit RedfishConfigSettingManager::GenerateSpecifySetting()";
    return RESULT_SUCCEED;
}

RedfishConfigResult RedfishConfigSettingManager::GenerateSingleSetting(const std::string& name)
{
    return AnswerWhatReadingRaises([&]() -> RedfishConfigResult {
        const Registry& registry = *m_Expression.m_Registry;
        const std::size_t attribute = registry.FindAttribute(name);
        if (attribute == NameIndex::none) {
            LOG_LINE(LogDefect) << "Not find the setting: " << name << " from schema.";
            return RESULT_SETTING_NOT_FOUND;
        }
        if (!StoreSetting(attribute)) {
            LOG_LINE(LogDefect) << "The setting type is invalid: "
                                << registry.Attributes()[attribute].Type.value_or("");
            return RESULT_PROPERTY_INVALID;
        }
        return RESULT_SUCCEED;
    });
}

bool RedfishConfigSettingManager::StoreSetting(std::size_t attribute)
{
    std::shared_ptr<RedfishConfigSetting> setting;
    switch (m_Expression.m_Registry->TypeAt(attribute)) {
    case SettingType::String:
        setting = createTextSetting(attribute);
        break;
    case SettingType::Integer:
        setting = createNumericSetting(attribute);
        break;
    case SettingType::Enumeration:
        setting = createEnumerateSetting(attribute);
        break;
    case SettingType::Boolean:
        setting = createBooleanSetting(attribute);
        break;
    case SettingType::Password:
        setting = createPasswordSetting(attribute);
        break;
    case SettingType::None:
        return false;
    }
    ++*m_Changes;
    m_Settings->Store(m_Expression.m_Registry, attribute, std::move(setting));
    return true;
}

template <class TypedSetting>
std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::CreateSetting(const char* factory,
                                                                                 std::size_t attribute)
{
    LOG_LINE(LogDetail) << "Enter RedfishConfigSettingManager::" << factory << "()";
    const std::shared_ptr<const Registry>& registry = m_Expression.m_Registry;
    const RedfishConfigSettingInfoStru& record = registry->Attributes()[attribute];
    RegistryEntry entry{{registry, &record}, nullptr}; // the record lives as long as its registry
    if (HasFormulas(*record.AttributeName)) {
        entry.Formulas = registry->FormulasOf(*record.AttributeName);
    }
    LOG_LINE(LogDetail) << "Exit RedfishConfigSettingManager::" << factory << "()";
    return std::shared_ptr<RedfishConfigSetting>(new (std::nothrow) TypedSetting(entry, m_Options, ForManager{}));
}

std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::createTextSetting(std::size_t attribute)
{
    return CreateSetting<RedfishConfigTextSetting>("createTextSetting", attribute);
}

std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::createNumericSetting(std::size_t attribute)
{
    return CreateSetting<RedfishConfigNumericSetting>("createNumericSetting", attribute);
}

std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::createEnumerateSetting(std::size_t attribute)
{
    return CreateSetting<RedfishConfigEnumerateSetting>("createEnumerateSetting", attribute);
}

std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::createBooleanSetting(std::size_t attribute)
{
    return CreateSetting<RedfishConfigBooleanSetting>("createBooleanSetting", attribute);
}

std::shared_ptr<RedfishConfigSetting> RedfishConfigSettingManager::createPasswordSetting(std::size_t attribute)
{
    return CreateSetting<RedfishConfigPasswordSetting>("createPasswordSetting", attribute);
}

void RedfishConfigSettingManager::NoteBuiltFormulas(const std::string& settingName)
{
    if (settingName.empty()) {
        m_AllFormulasBuilt = true;
        return;
    }
    const Registry& registry = *m_Expression.m_Registry;
    for (const std::size_t rule : registry.RulesFor(settingName)) {
        m_FormulasBuiltFor.insert(registry.Rules()[rule].MapToAttribute);
    }
}

bool RedfishConfigSettingManager::HasFormulas(const std::string& target) const
{
    return m_AllFormulasBuilt || m_FormulasBuiltFor.count(target) > 0;
}

ExpressionMaps RedfishConfigSettingManager::BuiltFormulas() const
{
    ExpressionMaps formulas;
    if (m_Expression.m_Registry == nullptr) {
        return formulas;
    }
    for (const DependencyRule& rule : m_Expression.m_Registry->Rules()) {
        const std::string& target = rule.MapToAttribute;
        if (!HasFormulas(target) || formulas.count(target) > 0) {
            continue;
        }
        if (const auto known = m_Expression.m_Registry->FormulasOf(target)) {
            formulas.emplace(target, known->ByProperty);
        }
    }
    return formulas;
}

} // namespace RedfishConfig
