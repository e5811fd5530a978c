#include "System.h"

#include "Properties.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace RedfishConfigTool {

namespace json = boost::json;

using RedfishConfig::RedfishConfigResult;
using RedfishConfig::SettingStatus;
using Manager = RedfishConfig::RedfishConfigSettingManager;

const Question askValue{&Manager::QuerySettingValue, &Manager::QueryGroupSettingValues, true};
const Question askDefault{&Manager::QuerySettingDefaultValue, &Manager::QueryGroupSettingDefaultValues, true};
const Question askChoices{&Manager::QuerySettingValidValues, &Manager::QueryGroupSettingValidValues, false};
const Question askDescription{&Manager::QuerySettingDescription, &Manager::QueryGroupSettingDescriptions, false};

namespace {

template <class Item>
using ByName = std::map<std::string, Item, RedfishConfig::CaseInsensitiveComparator>;

/** A result that says what its code means, where the library leaves that to its table of messages. */
RedfishConfigResult WithMessage(RedfishConfigResult result)
{
    if (result != RedfishConfig::RESULT_SUCCEED && result.ErrorMsg().empty()) {
        const auto standard = RedfishConfig::ResultMessages().find(result);
        result.SetErrorMsg(standard != RedfishConfig::ResultMessages().end() ? standard->second : "No answer.");
    }
    return result;
}

Manager MakeManager(RegistryInput& registry, RedfishConfig::SettingValueMap& values, const SystemOptions& options)
{
    RedfishConfig::Config_Options libraryOptions;
    libraryOptions.ShowHexValue = options.Hex;
    libraryOptions.IgnoreProtected = options.IncludeProtected;
    return {registry.Text, values, false, libraryOptions};
}

json::object ReadIdentity(const json::value& registry)
{
    json::object identity;
    for (const char* key : {"Id", "Language", "RegistryVersion"}) {
        const json::value* member = registry.as_object().if_contains(key);
        if (member != nullptr && member->is_string()) {
            identity[key] = *member;
        }
    }
    return identity;
}

/** The first position of each name in the registry's list. */
ByName<std::size_t> FindPositions(const json::value& registry)
{
    const json::array& attributes = registry.at("RegistryEntries").at("Attributes").as_array();
    ByName<std::size_t> positions;
    for (std::size_t position = 0; position < attributes.size(); ++position) {
        const json::object* attribute = attributes[position].if_object();
        const json::value* name = attribute != nullptr ? attribute->if_contains("AttributeName") : nullptr;
        if (name != nullptr && name->is_string()) {
            positions.emplace(std::string(name->get_string()), position);
        }
    }
    return positions;
}

/**
 * A reason without the blanks that adapted rules have behind both sides of a comparison where one may be empty. Values
 * in adapted rules have no parentheses and no operators.
 */
std::string WithoutGuards(const std::string& reason)
{
    const std::size_t rule = reason.find("the following expression");
    if (rule == std::string::npos) {
        return reason; // there is no rule in it
    }
    std::string text;
    std::size_t begin = 0; // of what is not taken over yet
    for (std::size_t open = rule; (open = reason.find('(', open)) != std::string::npos; ++open) {
        const std::size_t close = reason.find_first_of("()", open + 1);
        const std::size_t sign = reason.find_first_of("=!<>", open + 1);
        if (close == std::string::npos || reason[close] != ')' || sign >= close) {
            continue;
        }
        if (reason[sign - 1] == ' ' && reason[close - 1] == ' ') {
            text.append(reason, begin, sign - 1 - begin);
            text.append(reason, sign, close - 1 - sign);
            begin = close;
        }
    }
    return text + reason.substr(begin);
}

} // namespace

System::System(RegistryInput registry, RedfishConfig::SettingValueMap values, const SystemOptions& options,
               Secrets& secrets)
    : m_Options(options),
      m_Secrets(secrets),
      m_Identity(ReadIdentity(registry.Document)),
      m_Menus(registry.Document),
      m_IsAdapted(registry.IsAdapted),
      m_Manager(MakeManager(registry, values, options))
{
    std::vector<RedfishConfig::RedfishConfigSettingInfoStru> records;
    const RedfishConfigResult result = WithMessage(m_Manager.GetAllSettingProperties(records));
    if (result != RedfishConfig::RESULT_SUCCEED) {
        throw InputError(registry.File + ": the library cannot read it: " + result.ErrorMsg());
    }
    for (auto& record : records) {
        m_Settings.push_back({std::move(record), nullptr, 0});
    }
    SortSettings(registry.Document);
}

void System::SortSettings(const json::value& registry)
{
    const ByName<std::size_t> positions = FindPositions(registry);
    for (Setting& setting : m_Settings) {
        const auto position = positions.find(setting.Name());
        setting.Position = position != positions.end() ? position->second : positions.size();
        if (setting.IsPassword()) {
            setting.Record.CurrentValue.reset();
            setting.Record.DefaultValue.reset();
        }
    }
    const auto byPosition = [](const Setting& left, const Setting& right) { return left.Position < right.Position; };
    std::sort(m_Settings.begin(), m_Settings.end(), byPosition);

    for (Setting& setting : m_Settings) { // in the registry's order, which is that of menus it does not describe
        Menu& menu = m_Menus.Place(setting.Record.MenuPath.value_or(""));
        ++menu.Settings;
        setting.InMenu = &menu;
    }
    if (m_Menus.GivesOrder()) {
        m_Menus.Sort();
        const auto place = [this](const Setting& setting) {
            const bool inMenu = setting.InMenu != &m_Menus.Root();
            return std::make_tuple(inMenu ? setting.InMenu->Rank : std::numeric_limits<std::size_t>::max(),
                                   setting.Record.DisplayOrder.value_or(std::numeric_limits<std::int64_t>::max()));
        };
        std::stable_sort(m_Settings.begin(), m_Settings.end(),
                         [&](const Setting& left, const Setting& right) { return place(left) < place(right); });
    }
    for (std::size_t place = 0; place < m_Settings.size(); ++place) {
        m_Index.emplace(m_Settings[place].Name(), place);
    }
}

const Setting* System::Find(const std::string& name) const
{
    const auto found = m_Index.find(name);
    return found != m_Index.end() ? &m_Settings[found->second] : nullptr;
}

std::string System::TellReason(std::string reason) const
{
    return m_Secrets.ConcealInReason(m_IsAdapted ? WithoutGuards(reason) : std::move(reason));
}

void System::Complete(const Question& question, Answer& answer) const
{
    answer.Result = WithMessage(answer.Result);
    answer.Result.SetErrorMsg(TellReason(answer.Result.ErrorMsg()));
    if (!answer.Ok()) {
        answer.Text.clear();
    } else if (question.TellsValue && answer.Subject->IsPassword()) {
        answer.Text = passwordMask;
        answer.Concealed = true;
    } else if (!question.TellsValue) {
        answer.Text = TellReason(answer.Text);
    }
}

Answer System::AnswerAbout(const std::string& name)
{
    m_Asked.insert(name);
    Answer answer;
    answer.Name = name;
    answer.Subject = Find(name);
    return answer;
}

Answer System::Ask(const Question& question, const std::string& name)
{
    Answer answer = AnswerAbout(name);
    answer.Result = (m_Manager.*question.One)(name, answer.Text);
    if (answer.Ok() && answer.Subject == nullptr) {
        answer.Result = RedfishConfig::RESULT_INTERNAL_ERROR;
    }
    Complete(question, answer);
    return answer;
}

std::vector<Answer> System::AskAll(const Question& question)
{
    m_AllAsked = true;
    std::map<std::string, std::string> texts;
    (m_Manager.*question.All)(texts); // its result only says that there are failures
    ByName<RedfishConfigResult> failures;
    for (const RedfishConfigResult& failure : m_Manager.GetError()) {
        failures.emplace(failure.Setting(), failure);
    }
    const ByName<std::string> answered(texts.begin(), texts.end());

    std::vector<Answer> answers;
    for (const Setting& setting : m_Settings) {
        if (m_Options.IncludeProtected && setting.Record.Hidden) {
            // the question to all leaves these out whatever the options say
            answers.push_back(Ask(question, setting.Name()));
            continue;
        }
        Answer answer;
        answer.Name = setting.Name();
        answer.Subject = &setting;
        const auto text = answered.find(setting.Name());
        const auto failure = failures.find(setting.Name());
        if (text != answered.end()) {
            answer.Text = text->second;
        } else {
            answer.Result = failure != failures.end() ? failure->second : RedfishConfig::RESULT_INTERNAL_ERROR;
        }
        Complete(question, answer);
        answers.push_back(std::move(answer));
    }
    return answers;
}

void System::ConcealNewValue(Answer& answer, const std::string& value) const
{
    std::string message = answer.Result.ErrorMsg();
    const std::string telling = "New value " + value + " is invalid: ";
    if (answer.Subject != nullptr && answer.Subject->IsPassword() && message.compare(0, telling.size(), telling) == 0) {
        message.replace(0, telling.size(), "The new value of " + answer.Name + " is invalid: ");
    }
    answer.Result.SetErrorMsg(TellReason(std::move(message)));
}

Answer System::PreparePatch(const std::string& name, const std::string& value, RedfishConfig::filterAction action)
{
    Answer answer = AnswerAbout(name);
    if (answer.Subject != nullptr && answer.Subject->IsPassword()) {
        KeepSecret(value); // before the library logs it
    }
    answer.Result = WithMessage(m_Manager.PreparePatchContext(name, value, answer.Text, action));
    ConcealNewValue(answer, value);
    return answer;
}

Answer System::PrepareDefault(const std::string& name)
{
    Answer answer = AnswerAbout(name);
    std::string defaultValue;
    answer.Result = WithMessage(m_Manager.PrepareLoadDefaultValue(name, defaultValue, answer.Text));
    ConcealNewValue(answer, defaultValue);
    return answer;
}

std::map<std::string, std::string> System::SaveValues(RedfishConfig::filterAction action)
{
    m_AllAsked = true;
    std::map<std::string, std::string> values;
    m_Manager.FetchSaveSettingValues(values, action);
    return values;
}

System::Restored System::Restore(std::map<std::string, std::string> saved, bool withSystemUnique)
{
    for (const auto& [name, value] : saved) {
        m_Asked.insert(name);
    }
    Restored restored;
    m_Manager.FetchRestoreSettingValues(saved, restored.PatchTexts, restored.Errors, withSystemUnique);
    for (auto& [name, reason] : restored.Errors) {
        reason = TellReason(reason);
    }
    return restored;
}

SettingStatus System::Conceal(SettingStatus status) const
{
    for (const ShownProperty& property : shownProperties) {
        std::string& reason = (status.*property.State).Reason;
        reason = TellReason(reason);
    }
    return status;
}

SettingStatus System::StatusOf(const Setting& setting)
{
    m_Asked.insert(setting.Name());
    SettingStatus status;
    m_Manager.QuerySettingStatus(setting.Name(), status);
    return Conceal(std::move(status));
}

std::vector<SettingStatus> System::AllStatus()
{
    m_AllAsked = true;
    std::map<std::string, SettingStatus> all;
    m_Manager.QueryGroupSettingStatus(all);
    m_Manager.GetError(); // must not be taken for failures of the next question
    const ByName<SettingStatus> byName(all.begin(), all.end());
    std::vector<SettingStatus> status;
    for (const Setting& setting : m_Settings) {
        const auto found = byName.find(setting.Name());
        status.push_back(found != byName.end() ? Conceal(found->second) : SettingStatus{});
    }
    return status;
}

std::map<std::string, std::vector<std::string>> System::Groups()
{
    std::map<std::string, std::vector<std::string>> groups;
    m_Manager.GetGroupList(groups);
    return groups;
}

} // namespace RedfishConfigTool
