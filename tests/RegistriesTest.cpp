#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <boost/json.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// Registries as controllers publish them: what the manager answers is compared with what the JSON says.

using namespace RedfishConfig;
namespace json = boost::json;
using testing::AnyOf;

namespace {

using Texts = std::map<std::string, std::string>;
using Statuses = std::map<std::string, SettingStatus>;
using Groups = std::map<std::string, std::vector<std::string>>;

/** An attribute as the JSON has it. */
struct Attribute {
    std::string name;
    std::string type; ///< in lower case
    json::value json;
    std::set<std::string> ruledProperties;
};

using Attributes = std::map<std::string, Attribute, CaseInsensitiveComparator>;

struct PublishedRegistry {
    std::string folder;
    std::string text;
    SettingValueMap currentValues;
    Attributes attributes;
    Groups groups;
    std::set<std::string> unknownSources; ///< names that rules read and no attribute has
};

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

const json::value* Member(const json::value& object, const char* key)
{
    return object.is_object() ? object.get_object().if_contains(key) : nullptr;
}

json::array List(const json::value* value)
{
    return value != nullptr && value->is_array() ? value->get_array() : json::array();
}

std::optional<std::string> TextMember(const json::value& object, const char* key)
{
    const json::value* member = Member(object, key);
    if (member == nullptr || !member->is_string()) {
        return std::nullopt;
    }
    return json::value_to<std::string>(*member);
}

bool Flag(const Attribute& attribute, const char* key)
{
    const json::value* member = Member(attribute.json, key);
    return member != nullptr && member->is_bool() && member->get_bool();
}

std::optional<std::int64_t> WholeNumber(const json::value* value)
{
    if (value == nullptr) {
        return std::nullopt;
    }
    if (value->is_int64()) {
        return value->get_int64();
    }
    // an unsigned number is one that does not fit the signed kind
    if (value->is_double()) {
        const double number = value->get_double();
        if (number >= -0x1p63 && number < 0x1p63 && std::trunc(number) == number) {
            return static_cast<std::int64_t>(number);
        }
    }
    return std::nullopt;
}

SettingValue ValueOf(const json::value* value)
{
    if (value != nullptr && value->is_string()) {
        return json::value_to<std::string>(*value);
    }
    if (value != nullptr && value->is_bool()) {
        return value->get_bool();
    }
    const std::optional<std::int64_t> number = WholeNumber(value);
    return number ? SettingValue(*number) : SettingValue();
}

std::string Lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string Hexadecimal(std::int64_t number)
{
    std::ostringstream out;
    out << "0x" << std::hex << static_cast<std::uint64_t>(number);
    return out.str();
}

/** The text that an answer has for a value; absent for an absent value. */
std::optional<std::string> Shown(const SettingValue& value, bool hexadecimal = false)
{
    if (!value) {
        return std::nullopt;
    }
    if (const auto* number = std::get_if<std::int64_t>(&*value)) {
        return hexadecimal ? Hexadecimal(*number) : std::to_string(*number);
    }
    if (const auto* flag = std::get_if<bool>(&*value)) {
        return *flag ? "true" : "false";
    }
    return std::get<std::string>(*value);
}

std::vector<std::string> Split(const std::string& path)
{
    std::vector<std::string> pieces(1);
    for (const char c : path) {
        if (c == '/') {
            pieces.emplace_back();
        } else {
            pieces.back() += c;
        }
    }
    return pieces;
}

void ReadAttributes(const json::value& entries, PublishedRegistry& registry)
{
    const std::set<std::string> types = {"string", "integer", "enumeration", "boolean", "password"};
    for (const json::value& element : List(Member(entries, "Attributes"))) {
        const std::string name = TextMember(element, "AttributeName").value_or("");
        const std::string type = Lowered(TextMember(element, "Type").value_or(""));
        if (!name.empty() && types.count(type) > 0) {
            registry.attributes[name] = {name, type, element, {}};
        }
        const std::vector<std::string> pieces = Split(TextMember(element, "MenuPath").value_or(""));
        if (pieces.size() >= 3) {
            std::vector<std::string>& subMenus = registry.groups[pieces[1]];
            const bool seen = std::find(subMenus.begin(), subMenus.end(), pieces[2]) != subMenus.end();
            if (pieces.size() > 3 && !seen) {
                subMenus.push_back(pieces[2]);
            }
        }
    }
}

void ReadRules(const json::value& entries, PublishedRegistry& registry)
{
    for (const json::value& element : List(Member(entries, "Dependencies"))) {
        const json::value* rule = Member(element, "Dependency");
        if (rule == nullptr) {
            continue;
        }
        const auto target = registry.attributes.find(TextMember(*rule, "MapToAttribute").value_or(""));
        if (target != registry.attributes.end()) {
            target->second.ruledProperties.insert(TextMember(*rule, "MapToProperty").value_or(""));
        }
        for (const json::value& term : List(Member(*rule, "MapFrom"))) {
            const std::string source = TextMember(term, "MapFromAttribute").value_or("");
            if (registry.attributes.count(source) == 0) {
                registry.unknownSources.insert(source);
            }
        }
    }
}

PublishedRegistry ReadRegistry(const std::filesystem::path& folder)
{
    PublishedRegistry registry;
    registry.folder = folder.filename().string();
    registry.text = ReadFile(folder / "registry.json");
    const json::value document = json::parse(registry.text);
    if (const json::value* entries = Member(document, "RegistryEntries")) {
        ReadAttributes(*entries, registry);
        ReadRules(*entries, registry);
    }
    if (std::filesystem::exists(folder / "bios.json")) {
        const json::value bios = json::parse(ReadFile(folder / "bios.json"));
        const json::value* values = Member(bios, "Attributes");
        if (values != nullptr && values->is_object()) {
            for (const auto& [name, value] : values->get_object()) {
                registry.currentValues.emplace(std::string(name), ValueOf(&value));
            }
        }
    }
    return registry;
}

SettingValue CurrentValue(const PublishedRegistry& registry, const Attribute& attribute)
{
    const auto given = registry.currentValues.find(attribute.name);
    return given != registry.currentValues.end() ? given->second : ValueOf(Member(attribute.json, "CurrentValue"));
}

RedfishConfigSettingManager ManagerOf(const PublishedRegistry& registry, const Config_Options& options = {})
{
    std::string text = registry.text;
    SettingValueMap currentValues = registry.currentValues;
    return RedfishConfigSettingManager(text, currentValues, false, options);
}

/** The names of all attributes, or of about `most` of them, spread over the registry. */
std::vector<std::string> Sample(const PublishedRegistry& registry, std::size_t most)
{
    const std::size_t step = std::max<std::size_t>(1, registry.attributes.size() / most);
    std::vector<std::string> names;
    std::size_t position = 0;
    for (const auto& entry : registry.attributes) {
        if (position++ % step == 0) {
            names.push_back(entry.second.name);
        }
    }
    return names;
}

/** The bounds that the attribute's type has. */
std::pair<std::optional<std::int64_t>, std::optional<std::int64_t>> Bounds(const Attribute& attribute)
{
    const bool integer = attribute.type == "integer";
    return {WholeNumber(Member(attribute.json, integer ? "LowerBound" : "MinLength")),
            WholeNumber(Member(attribute.json, integer ? "UpperBound" : "MaxLength"))};
}

bool HasContradictoryBounds(const Attribute& attribute)
{
    const auto [lower, upper] = Bounds(attribute);
    return attribute.type != "enumeration" && attribute.type != "boolean" && lower && upper && *lower > *upper;
}

std::string ScopeOf(const Attribute& attribute, bool hexadecimal)
{
    const bool integer = attribute.type == "integer";
    const auto [lower, upper] = Bounds(attribute);
    std::string scope;
    if (lower) {
        scope += (integer ? "LowerBound=" : "MinLength=") + *Shown(*lower, integer && hexadecimal) + " ";
    }
    if (upper) {
        scope += (integer ? "UpperBound=" : "MaxLength=") + *Shown(*upper, integer && hexadecimal) + " ";
    }
    return scope;
}

std::string ChoicesOf(const Attribute& attribute, const std::optional<std::string>& defaultValue)
{
    std::map<std::string, std::string> choices;
    for (const json::value& entry : List(Member(attribute.json, "Value"))) {
        const std::optional<std::string> name = TextMember(entry, "ValueName");
        if (name) {
            choices.emplace(*name, TextMember(entry, "ValueDisplayName").value_or(""));
        }
    }
    std::string answer = defaultValue ? "<" + *defaultValue + ">" : "";
    std::string displayNames;
    for (const auto& [name, displayName] : choices) {
        if (!defaultValue || name != *defaultValue) {
            answer += (answer.empty() ? "" : "=") + name;
        }
        if (name != displayName) {
            displayNames += "\n\t[" + name + "] : " + displayName;
        }
    }
    return answer + displayNames;
}

/** What the valid values of a setting are, without the reason why it is hidden or grayed out. */
std::string ValidValuesOf(const Attribute& attribute, bool hexadecimal)
{
    const SettingValue defaultValue = ValueOf(Member(attribute.json, "DefaultValue"));
    if (attribute.type == "enumeration") {
        return ChoicesOf(attribute, Shown(defaultValue));
    }
    if (attribute.type == "boolean") {
        const std::optional<std::string> marked = Shown(defaultValue);
        if (!marked) {
            return "true=false";
        }
        const std::string folded = Lowered(*marked);
        return "<" + *marked + ">" + (folded == "true" ? "" : "=true") + (folded == "false" ? "" : "=false");
    }
    if (attribute.type == "integer") {
        std::string answer = "Integer " + ScopeOf(attribute, hexadecimal);
        if (const auto increment = WholeNumber(Member(attribute.json, "ScalarIncrement"))) {
            answer += "ScalarIncrement=" + *Shown(*increment, hexadecimal) + " ";
        }
        if (defaultValue) {
            answer += "default=" + *Shown(defaultValue, hexadecimal) + " ";
        }
        return answer;
    }
    std::string answer = (attribute.type == "string" ? "String " : "Password ") + ScopeOf(attribute, hexadecimal);
    if (const auto pattern = TextMember(attribute.json, "ValueExpression")) {
        answer += "Pattern=" + *pattern + " ";
    }
    return answer;
}

/** The reason that ends the valid values: why the setting is hidden, else why it is grayed out, else when it would be
 * either. */
std::string ReasonLine(const SettingStatus& status)
{
    std::string reason = status.Hidden.Reason;
    if (!status.Hidden.Value && !status.GrayOut.Reason.empty()) {
        reason = status.GrayOut.Reason;
    }
    if (reason.empty()) {
        return "";
    }
    reason[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(reason[0])));
    return "\n\t" + reason;
}

std::string DescriptionOf(const Attribute& attribute, const std::string& help)
{
    const std::string title = TextMember(attribute.json, "DisplayName").value_or(attribute.name);
    return title + "\n\nHelp for " + title + "\n--------------------------\n" + help;
}

/** The single and the group form of a query. */
struct Query {
    const char* name;
    RedfishConfigResult (RedfishConfigSettingManager::*one)(const std::string&, std::string&);
    RedfishConfigResult (RedfishConfigSettingManager::*all)(Texts&);
};

const Query queries[] = {
    {"values", &RedfishConfigSettingManager::QuerySettingValue, &RedfishConfigSettingManager::QueryGroupSettingValues},
    {"defaults", &RedfishConfigSettingManager::QuerySettingDefaultValue,
     &RedfishConfigSettingManager::QueryGroupSettingDefaultValues},
    {"descriptions", &RedfishConfigSettingManager::QuerySettingDescription,
     &RedfishConfigSettingManager::QueryGroupSettingDescriptions},
    {"valid values", &RedfishConfigSettingManager::QuerySettingValidValues,
     &RedfishConfigSettingManager::QueryGroupSettingValidValues},
};

/** Asks a group query, and checks that every setting is either answered or among the errors, and the code tells. */
void AskAll(RedfishConfigSettingManager& manager, const Query& query, const PublishedRegistry& registry, Texts& answers,
            std::map<std::string, RedfishConfigResult>& failures)
{
    RedfishConfigResult result;
    ASSERT_NO_THROW(result = (manager.*query.all)(answers));
    for (const RedfishConfigResult& error : manager.GetError()) {
        EXPECT_TRUE(failures.emplace(error.Setting(), error).second) << error.Setting() << " failed twice";
    }
    EXPECT_EQ(result, failures.empty() ? RESULT_SUCCEED : RESULT_GROUP_PARTIAL_FAILURE) << query.name;
    EXPECT_EQ(answers.size() + failures.size(), registry.attributes.size()) << query.name;
}

void ExpectEqual(const SettingStatus& left, const SettingStatus& right)
{
    PropertyState SettingStatus::*const states[] = {
        &SettingStatus::ReadOnly,  &SettingStatus::WriteOnly,    &SettingStatus::Hidden,   &SettingStatus::GrayOut,
        &SettingStatus::Immutable, &SettingStatus::SystemUnique, &SettingStatus::Protected};
    for (PropertyState SettingStatus::*const state : states) {
        EXPECT_EQ((left.*state).Value, (right.*state).Value);
        EXPECT_EQ((left.*state).Reason, (right.*state).Reason);
    }
}

class Registries : public testing::Test {
protected:
    void SetUp() override
    {
        const char* folder = std::getenv("REDFISHCONFIG_REGISTRIES");
        if (folder == nullptr || !std::filesystem::is_directory(folder)) {
            GTEST_SKIP() << "REDFISHCONFIG_REGISTRIES names no folder of registries";
        }
        std::set<std::filesystem::path> folders;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (std::filesystem::exists(entry.path() / "registry.json")) {
                folders.insert(entry.path());
            }
        }
        ASSERT_FALSE(folders.empty()) << "no NAME/registry.json below REDFISHCONFIG_REGISTRIES: " << folder;
        for (const std::filesystem::path& path : folders) {
            SCOPED_TRACE(path);
            ASSERT_NO_THROW(m_Registries.push_back(ReadRegistry(path)));
        }
    }

    std::vector<PublishedRegistry> m_Registries;
};

} // namespace

TEST_F(Registries, GiveASettingForEveryNamedAttributeOfAKnownType)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        std::vector<RedfishConfigSettingInfoStru> properties;
        ASSERT_NO_THROW(ASSERT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED));
        ASSERT_EQ(properties.size(), registry.attributes.size());
        auto record = properties.begin();
        for (const auto& [key, attribute] : registry.attributes) {
            SCOPED_TRACE(attribute.name);
            EXPECT_EQ(record->AttributeName, attribute.name);
            EXPECT_EQ(Lowered(record->Type.value_or("")), attribute.type);
            EXPECT_EQ(record->ReadOnly, Flag(attribute, "ReadOnly"));
            EXPECT_EQ(record->WriteOnly, Flag(attribute, "WriteOnly"));
            EXPECT_EQ(record->Hidden, Flag(attribute, "Hidden"));
            EXPECT_EQ(record->GrayOut, Flag(attribute, "GrayOut"));
            EXPECT_EQ(record->Immutable, Flag(attribute, "Immutable"));
            EXPECT_EQ(record->ResetRequired, Flag(attribute, "ResetRequired"));
            EXPECT_EQ(record->IsSystemUniqueProperty, Flag(attribute, "IsSystemUniqueProperty"));
            EXPECT_EQ(record->DefaultValue, ValueOf(Member(attribute.json, "DefaultValue")));
            EXPECT_EQ(record->CurrentValue, CurrentValue(registry, attribute));
            EXPECT_EQ(record->LowerBound, WholeNumber(Member(attribute.json, "LowerBound")));
            EXPECT_EQ(record->UpperBound, WholeNumber(Member(attribute.json, "UpperBound")));
            EXPECT_EQ(record->DisplayName, TextMember(attribute.json, "DisplayName"));
            EXPECT_EQ(record->HelpText, TextMember(attribute.json, "HelpText"));
            EXPECT_EQ(record->MenuPath, TextMember(attribute.json, "MenuPath"));
            for (const auto& entry : record->expressionMaps) {
                EXPECT_EQ(attribute.ruledProperties.count(entry.first), 1u) << entry.first;
            }
            EXPECT_EQ(record->expressionMaps.empty(), record->dependencySettings.empty());
            ++record;
        }
    }
}

TEST_F(Registries, AnswerTheValuesThatMayBeShown)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        Statuses statuses;
        ASSERT_NO_THROW(ASSERT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_SUCCEED));
        Texts answers;
        std::map<std::string, RedfishConfigResult> failures;
        AskAll(manager, queries[0], registry, answers, failures);
        Texts expected;
        for (const auto& [key, attribute] : registry.attributes) {
            ASSERT_EQ(statuses.count(attribute.name), 1u) << attribute.name;
            const SettingStatus& status = statuses[attribute.name];
            const std::optional<std::string> value = Shown(CurrentValue(registry, attribute));
            const bool shown = !status.WriteOnly.Value && !status.Protected.Value && !status.Hidden.Value;
            if (shown && value) {
                expected[attribute.name] = *value;
            } else {
                EXPECT_EQ(failures[attribute.name], shown ? RESULT_PROPERTY_NOT_EXIST : RESULT_SHOW_VALUE_FAILED)
                    << attribute.name;
            }
        }
        EXPECT_EQ(answers, expected);
    }
}

TEST_F(Registries, TellTheFlagsWhereNoRuleDecides)
{
    const struct {
        const char* property;
        PropertyState SettingStatus::*state;
    } rows[] = {
        {"ReadOnly", &SettingStatus::ReadOnly},
        {"WriteOnly", &SettingStatus::WriteOnly},
        {"GrayOut", &SettingStatus::GrayOut},
        {"Immutable", &SettingStatus::Immutable},
        {"IsSystemUniqueProperty", &SettingStatus::SystemUnique},
    };
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        Statuses statuses;
        ASSERT_NO_THROW(ASSERT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_SUCCEED));
        EXPECT_EQ(statuses.size(), registry.attributes.size());
        for (const auto& [key, attribute] : registry.attributes) {
            const SettingStatus& status = statuses[attribute.name];
            EXPECT_EQ(status.Protected.Value, Flag(attribute, "Hidden")) << attribute.name;
            if (attribute.ruledProperties.count("Hidden") == 0) {
                EXPECT_FALSE(status.Hidden.Value) << attribute.name;
                EXPECT_EQ(status.Hidden.Reason, "") << attribute.name;
            }
            for (const auto& row : rows) {
                if (attribute.ruledProperties.count(row.property) == 0) {
                    EXPECT_EQ((status.*row.state).Value, Flag(attribute, row.property))
                        << attribute.name << ' ' << row.property;
                }
            }
        }
    }
}

TEST_F(Registries, AnswerDefaultsAndDescriptionsOfWhatIsNotProtected)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        Texts defaults;
        Texts descriptions;
        std::map<std::string, RedfishConfigResult> noDefault;
        std::map<std::string, RedfishConfigResult> noDescription;
        AskAll(manager, queries[1], registry, defaults, noDefault);
        AskAll(manager, queries[2], registry, descriptions, noDescription);
        Texts expectedDefaults;
        Texts expectedDescriptions;
        for (const auto& [key, attribute] : registry.attributes) {
            const bool isProtected = Flag(attribute, "Hidden");
            const int code = isProtected ? RESULT_SHOW_VALUE_FAILED : RESULT_PROPERTY_NOT_EXIST;
            const auto value = Shown(ValueOf(Member(attribute.json, "DefaultValue")));
            if (value && !isProtected) {
                expectedDefaults[attribute.name] = *value;
            } else {
                EXPECT_EQ(noDefault[attribute.name], code) << attribute.name;
            }
            const auto help = TextMember(attribute.json, "HelpText");
            if (help && !isProtected) {
                expectedDescriptions[attribute.name] = DescriptionOf(attribute, *help);
            } else {
                EXPECT_EQ(noDescription[attribute.name], code) << attribute.name;
            }
        }
        EXPECT_EQ(defaults, expectedDefaults);
        EXPECT_EQ(descriptions, expectedDescriptions);
    }
}

TEST_F(Registries, AnswerValidValuesOfWhatIsNotProtected)
{
    for (const PublishedRegistry& registry : m_Registries) {
        for (const bool hexadecimal : {false, true}) {
            SCOPED_TRACE(registry.folder + (hexadecimal ? ", hexadecimal" : ""));
            Config_Options options;
            options.ShowHexValue = hexadecimal;
            RedfishConfigSettingManager manager = ManagerOf(registry, options);
            Statuses statuses;
            ASSERT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_SUCCEED);
            Texts answers;
            std::map<std::string, RedfishConfigResult> failures;
            AskAll(manager, queries[3], registry, answers, failures);
            Texts expected;
            for (const auto& [key, attribute] : registry.attributes) {
                if (Flag(attribute, "Hidden")) {
                    EXPECT_EQ(failures[attribute.name], RESULT_SHOW_VALUE_FAILED) << attribute.name;
                } else if (HasContradictoryBounds(attribute)) {
                    EXPECT_EQ(failures[attribute.name], RESULT_PROPERTY_INVALID) << attribute.name;
                } else {
                    expected[attribute.name] =
                        ValidValuesOf(attribute, hexadecimal) + ReasonLine(statuses[attribute.name]);
                }
            }
            EXPECT_EQ(answers, expected);
        }
    }
}

TEST_F(Registries, AnswerOneSettingAsAllOfThem)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        for (const Query& query : queries) {
            Texts answers;
            std::map<std::string, RedfishConfigResult> failures;
            AskAll(manager, query, registry, answers, failures);
            for (const std::string& name : Sample(registry, 20)) {
                std::string answer;
                RedfishConfigResult result;
                ASSERT_NO_THROW(result = (manager.*query.one)(name, answer));
                if (result == RESULT_SUCCEED) {
                    ASSERT_EQ(answers.count(name), 1u) << query.name << ' ' << name;
                    EXPECT_EQ(answers[name], answer) << query.name << ' ' << name;
                } else {
                    ASSERT_EQ(failures.count(name), 1u) << query.name << ' ' << name;
                    EXPECT_EQ(static_cast<int>(failures[name]), static_cast<int>(result)) << query.name << ' ' << name;
                    EXPECT_EQ(failures[name].ErrorMsg(), result.ErrorMsg()) << query.name << ' ' << name;
                }
            }
        }
        Statuses statuses;
        ASSERT_EQ(manager.QueryGroupSettingStatus(statuses), RESULT_SUCCEED);
        for (const std::string& name : Sample(registry, 20)) {
            SCOPED_TRACE(name);
            SettingStatus status;
            ASSERT_NO_THROW(ASSERT_EQ(manager.QuerySettingStatus(name, status), RESULT_SUCCEED));
            ExpectEqual(status, statuses[name]);
        }
    }
}

TEST_F(Registries, AnswerOneSettingOfAFreshManager)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        for (const std::string& name : Sample(registry, 8)) {
            for (const Query& query : queries) {
                RedfishConfigSettingManager manager = ManagerOf(registry);
                std::string answer;
                RedfishConfigResult result;
                ASSERT_NO_THROW(result = (manager.*query.one)(name, answer));
                EXPECT_THAT(result, AnyOf(RESULT_SUCCEED, RESULT_PROPERTY_INVALID, RESULT_PROPERTY_NOT_EXIST,
                                          RESULT_SHOW_VALUE_FAILED, RESULT_INTERNAL_ERROR))
                    << query.name << ' ' << name;
                if (result == RESULT_INTERNAL_ERROR) {
                    EXPECT_FALSE(registry.unknownSources.empty())
                        << name << " cannot be made, though every name that a rule reads is known";
                    EXPECT_FALSE(registry.attributes.at(name).ruledProperties.empty()) << name;
                }
            }
        }
        RedfishConfigSettingManager manager = ManagerOf(registry);
        std::string answer;
        EXPECT_EQ(manager.QuerySettingValue("no such attribute", answer), RESULT_SETTING_NOT_FOUND);
    }
}

TEST_F(Registries, GiveTheRecordOfEverySetting)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        std::vector<RedfishConfigSettingInfoStru> properties;
        ASSERT_EQ(manager.GetAllSettingProperties(properties), RESULT_SUCCEED);
        for (const RedfishConfigSettingInfoStru& expected : properties) {
            RedfishConfigSettingInfoStru record;
            ASSERT_NO_THROW(
                ASSERT_EQ(manager.GetSettingProperties(Lowered(*expected.AttributeName), record), RESULT_SUCCEED));
            EXPECT_EQ(record.AttributeName, expected.AttributeName);
            EXPECT_EQ(record.CurrentValue, expected.CurrentValue);
            EXPECT_EQ(record.dependencySettings, expected.dependencySettings);
            EXPECT_EQ(record.expressionMaps.size(), expected.expressionMaps.size());
        }
    }
}

TEST_F(Registries, GiveTheirMenus)
{
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry);
        Groups groups;
        ASSERT_NO_THROW(manager.GetGroupList(groups));
        EXPECT_EQ(groups, registry.groups);
    }
}

TEST_F(Registries, ShowProtectedSettingsAndHexadecimalNumbersWhereAsked)
{
    Config_Options options;
    options.ShowHexValue = true;
    options.IgnoreProtected = true;
    for (const PublishedRegistry& registry : m_Registries) {
        SCOPED_TRACE(registry.folder);
        RedfishConfigSettingManager manager = ManagerOf(registry, options);
        Texts values;
        std::map<std::string, RedfishConfigResult> failures;
        AskAll(manager, queries[0], registry, values, failures);
        for (const auto& [name, text] : values) {
            EXPECT_EQ(text, Shown(CurrentValue(registry, registry.attributes.at(name)), true)) << name;
        }
        std::size_t asked = 0;
        for (const auto& [key, attribute] : registry.attributes) {
            const SettingValue defaultValue = ValueOf(Member(attribute.json, "DefaultValue"));
            if (!Flag(attribute, "Hidden") || !defaultValue || ++asked > 10) {
                continue;
            }
            std::string answer;
            EXPECT_EQ(manager.QuerySettingDefaultValue(attribute.name, answer), RESULT_SUCCEED) << attribute.name;
            EXPECT_EQ(answer, Shown(defaultValue, true)) << attribute.name;
        }
    }
}
