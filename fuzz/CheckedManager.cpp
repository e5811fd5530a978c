#include "CheckedManager.h"

#include <algorithm>
#include <set>

namespace Fuzz {

using namespace RedfishConfig;

namespace {

const std::string untouched = "untouched";

constexpr int documentedCodes[] = {0, 7, 8, 9, 10, 13, 18, 19, 20, 25, 27, 34};

std::string Lower(std::string text)
{
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return text;
}

/** A choice as values are compared with it. */
std::string CommonForm(const std::string& choice)
{
    const std::string lower = Lower(choice);
    return lower == "enable" ? "enabled" : lower == "disable" ? "disabled" : lower;
}

/** Whether a name or display name of one choice is that of another: then the first one takes the other's values. */
bool HasAmbiguousChoices(const RedfishConfigSettingInfoStru& record)
{
    std::set<std::string> seen;
    for (const auto& [name, displayName] : record.Value) {
        std::set<std::string> forms{CommonForm(name), CommonForm(displayName)};
        for (const std::string& form : forms) {
            if (!seen.insert(form).second) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

CheckedManager::CheckedManager(RedfishConfigSettingManager& manager, std::string& record)
    : m_Manager(manager), m_Record(record)
{
}

RedfishConfigResult CheckedManager::Note(const char* operation, const std::string& name, Result result)
{
    const int code = result;
    Require(std::find(std::begin(documentedCodes), std::end(documentedCodes), code) != std::end(documentedCodes),
            "the code is a documented one", std::string(operation) + " " + std::to_string(code));
    m_Record += std::string(operation) + " " + name + ": " + std::to_string(code) + " " + result.ErrorMsg() + " [" +
                result.Setting() + "]\n";
    return result;
}

void CheckedManager::Note(const std::string& text)
{
    m_Record += "    " + text + "\n";
}

void CheckedManager::Note(const Texts& texts)
{
    for (const auto& [key, text] : texts) {
        Note(key + " -> " + text);
    }
}

void CheckedManager::Note(const SettingStatus& status)
{
    for (const PropertyState& state : {status.ReadOnly, status.WriteOnly, status.Hidden, status.GrayOut,
                                       status.Immutable, status.SystemUnique, status.Protected}) {
        Note(std::string(state.Value ? "yes " : "no ") + state.Reason);
    }
}

void CheckedManager::AskOne(const char* operation, Result (Manager::*query)(const std::string&, std::string&),
                            const std::string& name)
{
    std::string answer = untouched;
    const Result result = Note(operation, name, (m_Manager.*query)(name, answer));
    Require(result == RESULT_SUCCEED || answer == untouched, "a failed query leaves its output alone", m_Record);
    Note(answer);
}

void CheckedManager::AskAll(const char* operation, Result (Manager::*query)(Texts&))
{
    const Texts before{{"\x01", untouched}};
    Texts answers = before;
    const Result result = Note(operation, "", (m_Manager.*query)(answers));
    if (result != RESULT_SUCCEED && result != RESULT_GROUP_PARTIAL_FAILURE) {
        Require(answers == before, "a failed group query leaves its output alone", m_Record);
    } else {
        const auto left = answers.find("\x01");
        Require(left == answers.end() || left->second != untouched, "a group query empties its output", m_Record);
    }
    Note(answers);
}

void CheckedManager::Value(const std::string& name)
{
    AskOne("value", &Manager::QuerySettingValue, name);
}

void CheckedManager::Default(const std::string& name)
{
    AskOne("default", &Manager::QuerySettingDefaultValue, name);
}

void CheckedManager::Description(const std::string& name)
{
    AskOne("description", &Manager::QuerySettingDescription, name);
}

void CheckedManager::ValidValues(const std::string& name)
{
    AskOne("valid values", &Manager::QuerySettingValidValues, name);
}

void CheckedManager::Status(const std::string& name)
{
    SettingStatus status;
    status.Hidden.Reason = untouched;
    const Result result = Note("status", name, m_Manager.QuerySettingStatus(name, status));
    Require(result == RESULT_SUCCEED || status.Hidden.Reason == untouched, "a failed query leaves its output alone",
            m_Record);
    Note(status);
}

void CheckedManager::Properties(const std::string& name)
{
    RedfishConfigSettingInfoStru properties;
    properties.HelpText = untouched;
    properties.dependencySettings = {untouched};
    const Result result = Note("properties", name, m_Manager.GetSettingProperties(name, properties));
    if (result != RESULT_SUCCEED) {
        Require(properties.HelpText == untouched, "a failed query leaves its output alone", m_Record);
        return;
    }
    Require(properties.AttributeName.has_value() && Lower(*properties.AttributeName) == Lower(name),
            "the record is that of the setting asked for", m_Record);
    Note(GetOptionalVarAsStringToJSON(properties.CurrentValue) + " " +
         GetOptionalVarAsStringToJSON(properties.DefaultValue));
    for (const auto& [property, expression] : properties.expressionMaps) {
        Note(property + ": " + expression.DisplayText + " as " + expression.Formula);
    }
    for (const std::string& dependency : properties.dependencySettings) {
        Note(dependency);
    }
}

void CheckedManager::GroupValues()
{
    AskAll("values", &Manager::QueryGroupSettingValues);
}

void CheckedManager::GroupDefaults()
{
    AskAll("defaults", &Manager::QueryGroupSettingDefaultValues);
}

void CheckedManager::GroupDescriptions()
{
    AskAll("descriptions", &Manager::QueryGroupSettingDescriptions);
}

void CheckedManager::GroupValidValues()
{
    AskAll("all valid values", &Manager::QueryGroupSettingValidValues);
}

void CheckedManager::GroupStatus()
{
    std::map<std::string, SettingStatus> status;
    Note("all status", "", m_Manager.QueryGroupSettingStatus(status));
    for (const auto& [name, state] : status) {
        Note(name);
        Note(state);
    }
}

std::vector<std::string> CheckedManager::AllProperties()
{
    std::vector<RedfishConfigSettingInfoStru> records(1); // the others are appended
    const Result result = Note("all properties", "", m_Manager.GetAllSettingProperties(records));
    Require(result == RESULT_SUCCEED || records.size() == 1, "a failed query leaves its output alone", m_Record);
    std::vector<std::string> names;
    for (auto record = records.begin() + 1; record != records.end(); ++record) {
        names.push_back(record->AttributeName.value());
        Note(names.back() + " " + GetOptionalVarAsStringToJSON(record->CurrentValue));
    }
    return names;
}

void CheckedManager::GroupList()
{
    std::map<std::string, std::vector<std::string>> groups;
    m_Manager.GetGroupList(groups);
    m_Record += "groups\n";
    for (const auto& [menu, subMenus] : groups) {
        Note(menu);
        for (const std::string& subMenu : subMenus) {
            Note("  " + subMenu);
        }
    }
}

void CheckedManager::Errors()
{
    for (const Result& error : m_Manager.GetError()) {
        Note("error", "", error);
        Require(error != RESULT_SUCCEED, "only failures are collected", m_Record);
    }
    Require(m_Manager.GetError().empty(), "collected failures are told once", m_Record);
}

void CheckedManager::Patch(const std::string& name, const std::string& value, filterAction action)
{
    std::string patch = untouched;
    const Result result = Note("patch", name + "=" + value, m_Manager.PreparePatchContext(name, value, patch, action));
    Note(patch);
    if (result == RESULT_SUCCEED) {
        RequireAcceptedAgain(name, patch, action);
    } else {
        Require(patch == untouched, "a refused patch leaves its output alone", m_Record);
    }
}

void CheckedManager::RequireAcceptedAgain(const std::string& name, const std::string& patch, filterAction action)
{
    RedfishConfigSettingInfoStru record;
    Require(m_Manager.GetSettingProperties(name, record) == RESULT_SUCCEED, "a patched setting is there", m_Record);
    const std::string type = Lower(record.Type.value());
    std::string value = patch;
    if (type != "integer" && type != "boolean") {
        Require(patch.size() >= 2 && patch.front() == '"' && patch.back() == '"', "a text is quoted", m_Record);
        value = patch.substr(1, patch.size() - 2);
    }
    if (type == "enumeration") {
        Require(record.Value.count(value) == 1, "the value of an enumeration is one of its choices", m_Record);
        if (HasAmbiguousChoices(record)) {
            return;
        }
    }
    std::string again;
    Require(m_Manager.PreparePatchContext(name, value, again, action) == RESULT_SUCCEED,
            "an accepted value is accepted again", m_Record);
    RequireSame(again, patch, "an accepted value keeps its text");
}

void CheckedManager::PatchMany(const Texts& values, filterAction action)
{
    const Texts before{{"\x01", untouched}};
    Texts patches = before;
    const Result result = Note("patch many", "", m_Manager.PreparePatchContext(values, patches, action));
    Require(patches.at("\x01") == untouched, "entries that are there are kept", m_Record);
    Require(result == RESULT_SUCCEED || result == RESULT_GROUP_PARTIAL_FAILURE, "many patches answer 0 or 7", m_Record);
    Note(patches);
}

void CheckedManager::LoadDefault(const std::string& name)
{
    std::string defaultValue = untouched;
    std::string patch = untouched;
    const Result result = Note("load default", name, m_Manager.PrepareLoadDefaultValue(name, defaultValue, patch));
    Require(result == RESULT_SUCCEED || patch == untouched, "a refused patch leaves its output alone", m_Record);
    Note(defaultValue + " " + patch);
}

CheckedManager::Texts CheckedManager::Save(filterAction action)
{
    Texts values;
    const Result result = Note("save", "", m_Manager.FetchSaveSettingValues(values, action));
    Require(result == RESULT_SUCCEED || values.empty(), "a failed save leaves its output alone", m_Record);
    Note(values);
    return values;
}

void CheckedManager::Restore(Texts saved, bool withSystemUnique)
{
    for (const auto& entry : saved) {
        Properties(entry.first); // a setting without one that its rules read answers only when asked again
    }
    Texts restored;
    Texts errors;
    Note("restore", "", m_Manager.FetchRestoreSettingValues(saved, restored, errors, withSystemUnique));
    Note(restored);
    Note(errors);
    const filterAction action = withSystemUnique ? FILTER_RESTORE_WITH_UNIQUE : FILTER_RESTORE;
    std::map<std::string, std::size_t> spellings;
    for (const auto& [name, value] : saved) {
        ++spellings[Lower(name)];
    }
    for (const auto& [name, value] : saved) {
        std::string patch;
        const int code = m_Manager.PreparePatchContext(name, value, patch, action);
        if (code != RESULT_SUCCEED) {
            Require((code != RESULT_CHANGE_SETTING_FAILED && code != RESULT_SETTING_NOT_FOUND &&
                     code != RESULT_NEW_VALUE_INVALID) ||
                        errors.count(name) == 1,
                    "a value that may not be written is not restored", m_Record);
            continue;
        }
        Require(errors.count(name) == 0, "a value that may be written is restored", m_Record);
        const auto found = std::find_if(restored.begin(), restored.end(), [&name = name](const auto& entry) {
            return Lower(entry.first) == Lower(name);
        });
        Require(found != restored.end(), "a value that may be written is restored", m_Record);
        if (spellings.at(Lower(name)) == 1) {
            RequireSame(found->second, patch, "a restored value has the text of a written one");
        }
    }
}

void CheckedManager::Everything(const std::string& name)
{
    Value(name);
    Default(name);
    Description(name);
    ValidValues(name);
    Status(name);
    Properties(name);
    LoadDefault(name);
    RedfishConfigSettingInfoStru record;
    m_Manager.GetSettingProperties(name, record);
    std::vector<std::string> values{"", "true", "False", "0", "+5", "-1", "Enabled", "abc", name};
    for (const SettingValue& value : {record.CurrentValue, record.DefaultValue, SettingValue(record.DisplayName)}) {
        std::string text;
        if (GetOptionalVarAsString(value, text)) {
            values.push_back(text);
        }
    }
    for (const auto& [choice, displayName] : record.Value) {
        values.push_back(choice);
        values.push_back(displayName);
    }
    for (const std::string& value : values) {
        Patch(name, value, FILTER_PATCH);
    }
    PatchMany({{name, values.back()}, {"no such setting", "1"}}, FILTER_PATCH_GROUP);
    Errors();
}

void CheckedManager::EverythingOfAll()
{
    GroupValues();
    GroupDefaults();
    GroupDescriptions();
    GroupValidValues();
    GroupStatus();
    Errors();
    Restore(Save(FILTER_SAVE_PORTABLE), false);
    Restore(Save(FILTER_SAVE_FULL), true);
    GroupList();
}

} // namespace Fuzz
