#pragma once

#include "Setting.h"

#include <memory>

namespace Reference {

struct AnyCase {
    bool operator()(const std::string& left, const std::string& right) const { return Lower(left) < Lower(right); }
};

using Values = std::map<std::string, Value, AnyCase>;

/** The settings of one system. Copies share the settings, as the library's managers do. */
class Manager {
public:
    using Texts = std::map<std::string, std::string>;

    Manager(const std::string& text, const Values& values, const Options& options, Lines& log)
        : m_Text(text), m_Values(values), m_Options(options), m_Log(&log)
    {
    }

    Result Query(int question, const std::string& name, std::string& answer)
    {
        static const char* const names[] = {"QuerySettingValue", "QuerySettingDefaultValue", "QuerySettingDescription",
                                            "QuerySettingValidValues"};
        static const char* const suffixes[] = {"", " default value error.", " description error.",
                                               " valid value error."};
        const std::string operation = std::string("RedfishConfigSettingManager::") + names[question] + "()";
        Log(3, "Enter " + operation);
        Setting* setting = nullptr;
        Result result = GenerateAndFind(name, setting);
        if (result.Code != 0) {
            return result;
        }
        result = setting->Query(question, question * 2, answer);
        if (result.Code != 0) {
            if (question != 0) {
                Log(1, "Get Setting: " + name + suffixes[question]);
            }
            const std::string stored = m_Settings.find(name)->first;
            const std::size_t at = result.Message.find(stored);
            if (at != std::string::npos) {
                result.Message.replace(at, stored.size(), name);
            }
            return result;
        }
        Log(3, "Exit " + operation);
        return result;
    }

    Result QueryAll(int question, Texts& answers)
    {
        static const char* const names[] = {"QueryGroupSettingValues", "QueryGroupSettingDefaultValues",
                                            "QueryGroupSettingDescriptions", "QueryGroupSettingValidValues"};
        static const char* const suffixes[] = {
            " valid values error: ", " default values error: ", " description error: ", " valid values error: "};
        static const char* const summaries[] = {
            "Fail in get settings valid values.", "Fail in get settings default value.",
            "Fail in get settings description.", "Fail in get settings valid values."};
        const std::string operation = std::string("RedfishConfigSettingManager::") + names[question] + "()";
        Log(3, "Enter " + operation);
        Result result = GenerateLogged("");
        if (result.Code != 0) {
            return result;
        }
        answers.clear();
        for (auto& [name, setting] : m_Settings) {
            std::string answer;
            Result one = setting->Query(question, question * 2 + 1, answer);
            if (one.Code == 0) {
                answers[name] = answer;
            } else {
                one.Setting = name;
                m_Errors.push_back(one);
                Log(1, "Get Setting: " + name + suffixes[question]);
                result = {7, summaries[question]};
            }
        }
        Log(3, "Exit " + operation);
        return result;
    }

    Result Status(const std::string& name, std::vector<State>& states)
    {
        Log(3, "Enter RedfishConfigSettingManager::QuerySettingStatus()");
        Setting* setting = nullptr;
        Result result = GenerateAndFind(name, setting);
        if (result.Code == 0) {
            states = setting->Status();
            Log(3, "Exit RedfishConfigSettingManager::QuerySettingStatus()");
        }
        return result;
    }

    Result StatusOfAll(std::map<std::string, std::vector<State>>& states)
    {
        Log(3, "Enter RedfishConfigSettingManager::QueryGroupSettingStatus()");
        Result result = GenerateLogged("");
        if (result.Code == 0) {
            states.clear();
            for (auto& [name, setting] : m_Settings) {
                states[name] = setting->Status();
            }
            Log(3, "Exit RedfishConfigSettingManager::QueryGroupSettingStatus()");
        }
        return result;
    }

    Result PropertiesOfAll(std::vector<Setting>& properties)
    {
        Log(3, "Enter RedfishConfigSettingManager::GetAllSettingProperties()");
        Result result = GenerateLogged("");
        for (auto& [name, setting] : m_Settings) {
            if (result.Code == 0) {
                properties.push_back(*setting);
            }
        }
        return result;
    }

    Result PropertiesOf(const std::string& name, std::vector<Setting>& properties)
    {
        if (m_Settings.count(name) == 0) {
            Result result = Generate(name);
            if (result.Code == 20) {
                return NotFound(name);
            }
            if (result.Code != 0) {
                Log(1, "Failed in genearte setting " + name);
                return result;
            }
        }
        const auto found = m_Settings.find(name);
        if (found == m_Settings.end()) {
            return NotFound(name);
        }
        properties.push_back(*found->second);
        return {};
    }

    std::map<std::string, std::vector<std::string>> Groups()
    {
        Log(4, "Entering  RedfishConfigSettingManager::GetGroupList");
        if (m_Groups.empty()) {
            m_Settings.clear();
            Generate("");
        }
        Log(4, "Exiting  RedfishConfigSettingManager::GetGroupList");
        return m_Groups;
    }

    std::vector<Result> Errors()
    {
        std::vector<Result> errors;
        errors.swap(m_Errors);
        return errors;
    }

    Result Patch(const std::string& name, const std::string& value, std::string& patch, int action)
    {
        Log(3, "Enter RedfishConfigSettingManager::PreparePatchContext() for setting: " + name);
        Setting* setting = nullptr;
        Result result = GenerateAndFind(name, setting);
        if (result.Code != 0) {
            return result;
        }
        result = setting->Patch(value, action, patch);
        if (result.Code != 0) {
            Log(1, "prepare setting: " + name + " patch context error.");
            return result;
        }
        Log(3, "Exit RedfishConfigSettingManager::PreparePatchContext()");
        return result;
    }

    Result PatchMany(const Texts& values, Texts& patches, int action)
    {
        Log(3, "Enter RedfishConfigSettingManager::PreparePatchContext() with settingInfoMap.size()=" +
                   std::to_string(values.size()));
        if (values.empty()) {
            Log(4, "The settingInfoMap is empty.");
            return {};
        }
        Result summary;
        for (const auto& [name, value] : values) {
            Result result = ParseAndGenerate(name);
            const auto found = m_Settings.find(name);
            if (result.Code == 20) {
                result.Message = "Unable to find the setting " + name + ".";
                Log(1, result.Message);
            } else if (result.Code != 0) {
                result.Message = "Failed to parse response and generate setting";
                Log(1, result.Message + " for " + name);
            } else if (found == m_Settings.end()) {
                result = {13, "Cannot find the setting in the generated collection"};
            } else {
                std::string patch;
                result = found->second->Patch(value, action, patch);
                if (result.Code == 0) {
                    patches.emplace(found->second->Name, patch);
                } else {
                    Log(1, "Prepare setting: " + name + " patch context error.");
                }
            }
            if (result.Code != 0) {
                result.Setting = name;
                m_Errors.push_back(result);
                summary = {7, "One or more setting fails on all group command process."};
            }
        }
        Log(3, "Exit RedfishConfigSettingManager::PreparePatchContext()");
        return summary;
    }

    Result LoadDefault(const std::string& name, std::string& text, std::string& patch)
    {
        Log(3, "Enter RedfishConfigSettingManager::PrepareLoadDefaultValue()");
        Setting* setting = nullptr;
        Result result = GenerateAndFind(name, setting);
        if (result.Code != 0) {
            return result;
        }
        result = setting->Query(1, 2, text);
        if (result.Code != 0) {
            Log(1, "Get Setting: " + name + " default value error.");
            return result;
        }
        result = setting->Patch(ToText(setting->Default()), 8, patch);
        if (result.Code != 0) {
            Log(1, "prepare setting: " + name + " patch context error.");
            return result;
        }
        Log(3, "Exit RedfishConfigSettingManager::PrepareLoadDefaultValue()");
        return result;
    }

    Result Save(Texts& saved, int action)
    {
        Log(3, "Enter RedfishConfigSettingManager::FetchSaveSettingValues()");
        const Result result = GenerateLogged("");
        if (result.Code != 0) {
            return result;
        }
        for (auto& [name, setting] : m_Settings) {
            std::string value;
            if (setting->Save(action, value).Code == 0) {
                saved[name] = value;
            } else {
                Log(2, "setting: " + name + " should not be saved");
            }
        }
        Log(3, "Exit RedfishConfigSettingManager::FetchSaveSettingValues()");
        return {};
    }

    Result Restore(const Texts& saved, Texts& patches, Texts& errors, bool withUnique)
    {
        Log(3, "Enter RedfishConfigSettingManager::FetchRestoreSettingValues()");
        Result overall;
        for (const auto& [name, value] : saved) {
            Setting* setting = nullptr;
            Result result = GenerateAndFind(name, setting);
            if (result.Code == 20) {
                errors[name] = "Could not find setting " + name + " on this system";
            } else if (result.Code == 0) {
                result = setting->Restore(name, value, errors, withUnique);
                if (result.Code == 34) {
                    Log(2, "setting: " + name + "can not be restored");
                    continue;
                }
                if (result.Code != 0) {
                    Log(2, "value: " + value + "is invalid");
                } else {
                    std::string patch;
                    setting->Patch(value, withUnique ? 15 : 16, patch);
                    patches[m_Settings.find(name)->first] = patch;
                }
            }
            if (overall.Code == 0) {
                overall = result;
            }
        }
        Log(3, "Exit RedfishConfigSettingManager::FetchRestoreSettingValues()");
        return overall;
    }

    void Update(const Values& values)
    {
        Log(3, "Enter RedfishConfigSettingManager::UpdateSettingValue()");
        Texts texts;
        for (auto& [name, setting] : m_Settings) {
            const auto value = values.find(name);
            if (value != values.end()) {
                setting->Current = value->second;
            }
            const Texts properties = setting->Properties();
            texts.insert(properties.begin(), properties.end());
        }
        for (auto& [name, setting] : m_Settings) {
            Log(4, "Replace the property values in expression for " + name);
            for (auto& [property, expression] : setting->Expressions) {
                Log(4, "the PropertyName:" + property + " and the Expression:" + expression.DisplayText);
                expression.Formula = Substitute(expression.DisplayText, texts);
                Log(4, "After replacing, the expression:" + expression.Formula);
            }
        }
    }

private:
    void Log(unsigned level, const std::string& text) { m_Log->emplace_back(level, text); }

    Result NotFound(const std::string& name)
    {
        const std::string message = "Unable to find the setting " + name + ".";
        Log(1, message);
        return {20, message};
    }

    /** The registry, or why it cannot be read. */
    std::optional<boost::json::value> Parse()
    {
        try {
            boost::json::value registry = boost::json::parse(m_Text);
            if (registry.is_object()) {
                return registry;
            }
            Log(1, "The registry is not a JSON object.");
        } catch (const std::exception& error) {
            Log(1, error.what());
        }
        return std::nullopt;
    }

    Result GenerateAndFind(const std::string& name, Setting*& setting)
    {
        const Result result = GenerateLogged(name);
        if (result.Code != 0) {
            return result;
        }
        const auto found = m_Settings.find(name);
        if (found == m_Settings.end()) {
            return NotFound(name);
        }
        setting = found->second.get();
        return {};
    }

    Result GenerateLogged(const std::string& name)
    {
        const Result result = ParseAndGenerate(name);
        if (result.Code != 0) {
            Log(1, "Parse response and generate setting error.");
        }
        return result;
    }

    Result ParseAndGenerate(const std::string& name)
    {
        Log(3, "Enter RedfishConfigSettingManager::ParseResponseAndGenerateSetting() for setting:" + name);
        const Result result = Generate(name);
        if (result.Code == 0) {
            Update(m_Values);
            Log(3, "Exit RedfishConfigSettingManager::ParseResponseAndGenerateSetting() with ret=0");
        } else {
            Log(1, "Generate setting error.");
        }
        return result;
    }

    Result Generate(const std::string& name)
    {
        if (!name.empty() && m_Settings.count(name) > 0) {
            return {};
        }
        std::vector<std::string> related;
        Result result = GenerateExpressions(name, related);
        if (result.Code != 0) {
            Log(1, "Generate expression error.");
            return result;
        }
        result = name.empty() ? GenerateAll() : GenerateSome(name, related);
        if (result.Code == 20) {
            return NotFound(name);
        }
        if (result.Code != 0) {
            Log(1, "Generate setting error.");
        }
        return result;
    }

    Result GenerateExpressions(const std::string& name, std::vector<std::string>& related)
    {
        const std::string operation =
            std::string("RedfishConfigExpression::Parse") + (name.empty() ? "All" : "Single") + "SettingDependency()";
        const std::string plural = name.empty() ? "RedfishConfigExpression::ParseAllSettingsDependency()" : operation;
        Log(3, "Enter RedfishConfigSettingManager::GenerateExpression() with settingName=" + name);
        Log(3, "Enter " + plural);
        const auto fail = [&](const Result& result) {
            Log(4, "Failed to parse the dependencySettings and expressionMaps with ret=27");
            return result;
        };
        if (!m_RulesRead) {
            const auto registry = Parse();
            if (!registry) {
                return fail({27});
            }
            if (!m_Rules.Read(*registry, *m_Log)) {
                return fail({27, "Fail to parse the HTTP response."});
            }
            m_RulesRead = true;
        }
        if (name.empty()) {
            m_Rules.BuildAll(m_Maps, *m_Log);
        } else {
            related = m_Rules.BuildFor(name, m_Maps, *m_Log);
        }
        Log(3, "Exit " + plural);
        Log(4, "Exit RedfishConfigSettingManager::GenerateExpression(), the relationSettings.size()=" +
                   std::to_string(related.size()));
        return {};
    }

    /** The list of attributes, or null, which is logged. */
    const boost::json::array* Attributes()
    {
        m_Parsed = boost::json::parse(m_Text);
        const boost::json::value* list = Member(Member(&m_Parsed, "RegistryEntries"), "Attributes");
        if (list != nullptr && list->is_array()) {
            return &list->get_array();
        }
        Log(1, list == nullptr ? R"(The registry has no "Attributes" in an object "RegistryEntries".)"
                               : R"(The "Attributes" of the registry are not an array.)");
        return nullptr;
    }

    Result GenerateAll()
    {
        Log(3, "Enter RedfishConfigSettingManager::GenerateAllSetting()");
        if (!m_Settings.empty()) {
            return {};
        }
        const boost::json::array* attributes = Attributes();
        if (attributes == nullptr) {
            return {27};
        }
        for (const boost::json::value& attribute : *attributes) {
            if (!ToString(Member(&attribute, "AttributeName")).empty()) {
                Create(attribute);
            }
            const std::string path = ToString(Member(&attribute, "MenuPath"));
            if (!path.empty()) {
                AddGroup(path);
            }
        }
        Log(3, "Exit RedfishConfigSettingManager::GenerateAllSetting()");
        return {};
    }

    Result GenerateSome(const std::string& name, const std::vector<std::string>& related)
    {
        Log(3, "Enter RedfishConfigSettingManager::GenerateSpecifySetting()");
        if (m_Settings.count(name) == 0) {
            const Result result = GenerateOne(name);
            if (result.Code != 0) {
                Log(1, "Failed in creating setting: " + name);
                return result;
            }
        }
        for (const std::string& other : related) {
            if (m_Settings.count(other) == 0) {
                GenerateOne(other);
            }
        }
        std::vector<std::string> wanted{name};
        wanted.insert(wanted.end(), related.begin(), related.end());
        for (const std::string& one : wanted) {
            if (m_Settings.count(one) == 0) {
                Log(1, "Failed in creating setting: " + one);
                return {13};
            }
        }
        Log(3, "Exit RedfishConfigSettingManager::GenerateSpecifySetting()");
        return {};
    }

    Result GenerateOne(const std::string& name)
    {
        const boost::json::array* attributes = Attributes();
        if (attributes == nullptr) {
            return {27};
        }
        for (const boost::json::value& attribute : *attributes) {
            if (Upper(ToString(Member(&attribute, "AttributeName"))) == Upper(name)) {
                if (Create(attribute)) {
                    return {};
                }
                Log(1, "The setting type is invalid: " + ToString(Member(&attribute, "Type")));
                return {8};
            }
        }
        Log(1, "Not find the setting: " + name + " from schema.");
        return {20};
    }

    bool Create(const boost::json::value& attribute)
    {
        static const std::map<std::string, std::string> factories{{"STRING", "Text"},
                                                                  {"INTEGER", "Numeric"},
                                                                  {"ENUMERATION", "Enumerate"},
                                                                  {"BOOLEAN", "Boolean"},
                                                                  {"PASSWORD", "Password"}};
        const auto factory = factories.find(Upper(ToString(Member(&attribute, "Type"))));
        if (factory == factories.end()) {
            return false;
        }
        const std::string operation = "RedfishConfigSettingManager::create" + factory->second + "Setting()";
        Log(4, "Enter " + operation);
        auto setting = std::make_shared<Setting>(attribute, m_Options, *m_Log);
        const auto expressions = m_Maps.find(setting->Name);
        if (expressions != m_Maps.end()) {
            setting->Expressions = expressions->second;
            setting->Dependencies = m_Rules.SourcesOf(expressions->second);
        }
        Log(4, "Exit " + operation);
        m_Settings[setting->Name] = setting;
        return true;
    }

    void AddGroup(const std::string& path)
    {
        Log(4, "Entering  RedfishConfigSettingManager::GetGroupName");
        std::vector<std::string> pieces{""};
        for (const char character : path) {
            if (character == '/') {
                pieces.emplace_back();
            } else {
                pieces.back() += character;
            }
        }
        if (pieces.size() >= 3) {
            auto& menus = m_Groups[pieces[1]];
            if (pieces.size() > 3 && std::count(menus.begin(), menus.end(), pieces[2]) == 0) {
                menus.push_back(pieces[2]);
            }
        }
        Log(4, "Exiting  RedfishConfigSettingManager::GetGroupName");
    }

    std::string m_Text;
    Values m_Values;
    Options m_Options;
    Lines* m_Log;
    boost::json::value m_Parsed;
    bool m_RulesRead = false;
    RuleBook m_Rules;
    Maps m_Maps;
    std::map<std::string, std::shared_ptr<Setting>, AnyCase> m_Settings;
    std::map<std::string, std::vector<std::string>> m_Groups;
    std::vector<Result> m_Errors;
};

} // namespace Reference
