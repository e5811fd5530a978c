#include "CoreSystem.h"

#include "MenuDescriptions.h"
#include "TypedValue.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace RedfishConfig::App {

namespace json = boost::json;

using RedfishConfig::RedfishConfigResult;
using Manager = RedfishConfig::RedfishConfigSettingManager;

namespace {

template <class Item>
using ByName = std::map<std::string, Item, RedfishConfig::CaseInsensitiveComparator>;

/** How the manager is asked a question: for one setting, and for all. */
struct Asking {
    RedfishConfigResult (Manager::*One)(const std::string&, std::string&);
    RedfishConfigResult (Manager::*All)(std::map<std::string, std::string>&);
    RedfishConfig::SettingValue SettingRecord::*Held; ///< the value that the answer tells; null for no value
};

/** Row N is Question N. */
constexpr std::array<Asking, 4> askings{{
    {&Manager::QuerySettingValue, &Manager::QueryGroupSettingValues, &SettingRecord::CurrentValue},
    {&Manager::QuerySettingDefaultValue, &Manager::QueryGroupSettingDefaultValues, &SettingRecord::DefaultValue},
    {&Manager::QuerySettingValidValues, &Manager::QueryGroupSettingValidValues, nullptr},
    {&Manager::QuerySettingDescription, &Manager::QueryGroupSettingDescriptions, nullptr},
}};

const Asking& AskingOf(Question question)
{
    return askings.at(static_cast<std::size_t>(question));
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

std::string OperationFailsSince(const std::string& name)
{
    return "The operation on setting " + name + " fails since ";
}

bool BeginsWith(const std::string& text, const std::string& opening)
{
    return text.compare(0, opening.size(), opening) == 0;
}

/** The library's message without the setting's name, where it has the usual form, and without the full stop. */
std::string ReasonIn(const std::string& message, const std::string& name)
{
    const std::string opening = OperationFailsSince(name);
    std::string reason = BeginsWith(message, opening) ? message.substr(opening.size()) : message;
    if (!reason.empty() && reason.back() == '.') {
        reason.pop_back();
    }
    return reason;
}

void SetMessage(Answer& answer, const std::string& message)
{
    answer.Result.SetErrorMsg(message);
    answer.Reason = ReasonIn(message, answer.Name);
}

} // namespace

CoreSystem::CoreSystem(RegistryInput registry, RedfishConfig::SettingValueMap values, const SystemOptions& options,
                       Secrets& secrets)
    : System(options, secrets, MenusIn(registry.Document)),
      m_Identity(ReadIdentity(registry.Document)),
      m_Manager(MakeManager(registry, values, options))
{
    TakeSettings(registry);
}

void CoreSystem::TakeSettings(const RegistryInput& registry)
{
    std::vector<SettingRecord> records;
    const RedfishConfigResult result = WithMessage(m_Manager.GetAllSettingProperties(records));
    if (result != RedfishConfig::RESULT_SUCCEED) {
        throw InputError(registry.File + ": the library cannot read it: " + result.ErrorMsg());
    }
    const ByName<std::size_t> positions = FindPositions(registry.Document);
    std::vector<Setting> settings;
    for (SettingRecord& record : records) {
        if (IsPasswordType(*record.Type)) {
            record.CurrentValue.reset();
            record.DefaultValue.reset();
        }
        const auto position = positions.find(*record.AttributeName);
        settings.emplace_back(std::move(record));
        settings.back().Position = position != positions.end() ? position->second : positions.size();
    }
    std::sort(settings.begin(), settings.end(),
              [](const Setting& left, const Setting& right) { return left.Position < right.Position; });
    Arrange(std::move(settings));
    for (std::size_t place = 0; place < Settings().size(); ++place) {
        m_Index.emplace(Settings()[place].Name(), place);
    }
}

const Setting* CoreSystem::Find(const std::string& name) const
{
    const auto found = m_Index.find(name);
    return found != m_Index.end() ? &Settings()[found->second] : nullptr;
}

void CoreSystem::Complete(Question question, Answer& answer) const
{
    answer.Result = WithMessage(answer.Result);
    SetMessage(answer, KnownSecrets().ConcealInReason(answer.Result.ErrorMsg()));
    const auto held = AskingOf(question).Held;
    if (!answer.Ok()) {
        answer.Text.clear();
    } else if (held == nullptr) {
        answer.Text = KnownSecrets().ConcealInReason(answer.Text);
    } else if (answer.Subject->IsPassword()) {
        answer.Text = passwordMask;
        answer.Concealed = true;
    } else {
        answer.Held = answer.Subject->Record().*held;
    }
}

Answer CoreSystem::AnswerAbout(const std::string& name)
{
    NoteAsked(name);
    Answer answer;
    answer.Name = name;
    answer.Subject = Find(name);
    return answer;
}

Answer CoreSystem::Ask(Question question, const std::string& name)
{
    Answer answer = AnswerAbout(name);
    answer.Result = (m_Manager.*AskingOf(question).One)(name, answer.Text);
    if (answer.Ok() && answer.Subject == nullptr) {
        answer.Result = RedfishConfig::RESULT_INTERNAL_ERROR;
    }
    Complete(question, answer);
    return answer;
}

std::vector<Answer> CoreSystem::AskAll(Question question, Detail /*detail*/)
{
    NoteAllAsked();
    std::map<std::string, std::string> texts;
    (m_Manager.*AskingOf(question).All)(texts); // its result only says that there are failures
    ByName<RedfishConfigResult> failures;
    for (const RedfishConfigResult& failure : m_Manager.GetError()) {
        failures.emplace(failure.Setting(), failure);
    }
    const ByName<std::string> answered(texts.begin(), texts.end());

    std::vector<Answer> answers;
    for (const Setting& setting : Settings()) {
        if (Options().IncludeProtected && setting.Record().Hidden) {
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

void CoreSystem::ConcealNewValue(Answer& answer, const std::string& value) const
{
    std::string message = answer.Result.ErrorMsg();
    const std::string opening = "New value " + value + " is invalid: ";
    if (answer.Subject != nullptr && answer.Subject->IsPassword() && BeginsWith(message, opening)) {
        message.replace(0, opening.size(), "The new value of " + answer.Name + " is invalid: ");
    }
    SetMessage(answer, KnownSecrets().ConcealInReason(std::move(message)));
}

Answer CoreSystem::PreparePatch(const std::string& name, const std::string& value, RedfishConfig::filterAction action)
{
    Answer answer = AnswerAbout(name);
    if (answer.Subject != nullptr && answer.Subject->IsPassword()) {
        KeepSecret(value); // before the library logs it
    }
    answer.Result = WithMessage(m_Manager.PreparePatchContext(name, value, answer.Text, action));
    ConcealNewValue(answer, value);
    return answer;
}

Answer CoreSystem::PrepareDefault(const std::string& name)
{
    Answer answer = AnswerAbout(name);
    std::string defaultValue;
    answer.Result = WithMessage(m_Manager.PrepareLoadDefaultValue(name, defaultValue, answer.Text));
    ConcealNewValue(answer, defaultValue);
    return answer;
}

std::map<std::string, std::string> CoreSystem::SaveValues(RedfishConfig::filterAction action)
{
    NoteAllAsked();
    std::map<std::string, std::string> values;
    m_Manager.FetchSaveSettingValues(values, action);
    return values;
}

Restored CoreSystem::Restore(const std::map<std::string, std::string>& saved, bool withSystemUnique)
{
    for (const auto& [name, value] : saved) {
        NoteAsked(name);
    }
    Restored restored;
    std::map<std::string, std::string> values = saved;
    std::map<std::string, std::string> errors;
    m_Manager.FetchRestoreSettingValues(values, restored.PatchTexts, errors, withSystemUnique);
    for (const auto& [name, error] : errors) {
        const Setting* setting = Find(name);
        const std::string reason = KnownSecrets().ConcealInReason(error);
        const std::string ownName = setting != nullptr ? setting->Name() : name;
        restored.Refused[name] = {ReasonIn(reason, ownName), BeginsWith(reason, OperationFailsSince(ownName))};
    }
    return restored;
}

SettingStatus CoreSystem::Conceal(const RedfishConfig::SettingStatus& status) const
{
    using Status = RedfishConfig::SettingStatus;
    static constexpr std::array<RedfishConfig::PropertyState Status::*, statusRows> states{
        &Status::Hidden,    &Status::GrayOut,   &Status::ReadOnly,    &Status::WriteOnly,
        &Status::Protected, &Status::Immutable, &Status::SystemUnique};
    SettingStatus concealed;
    for (const ShownProperty& property : shownProperties) {
        const RedfishConfig::PropertyState& state = status.*states.at(static_cast<std::size_t>(property.Row));
        concealed[property.Row].Value = state.Value;
        concealed[property.Row].Reason = KnownSecrets().ConcealInReason(state.Reason);
    }
    return concealed;
}

bool CoreSystem::AreSame(const Setting& setting, const std::string& left, const std::string& right) const
{
    return IsSameValue(setting, left, right);
}

SettingStatus CoreSystem::StatusOf(const Setting& setting)
{
    NoteAsked(setting.Name());
    RedfishConfig::SettingStatus status;
    m_Manager.QuerySettingStatus(setting.Name(), status);
    return Conceal(status);
}

std::vector<SettingStatus> CoreSystem::AllStatus(Detail /*detail*/)
{
    NoteAllAsked();
    std::map<std::string, RedfishConfig::SettingStatus> all;
    m_Manager.QueryGroupSettingStatus(all);
    m_Manager.GetError(); // must not be taken for failures of the next question
    const ByName<RedfishConfig::SettingStatus> byName(all.begin(), all.end());
    std::vector<SettingStatus> status;
    for (const Setting& setting : Settings()) {
        const auto found = byName.find(setting.Name());
        status.push_back(found != byName.end() ? Conceal(found->second) : SettingStatus{});
    }
    return status;
}

std::map<std::string, std::vector<std::string>> CoreSystem::Groups()
{
    std::map<std::string, std::vector<std::string>> groups;
    m_Manager.GetGroupList(groups);
    return groups;
}

std::string CoreSystem::PasswordRefusal(const std::string& name) const
{
    return OperationFailsSince(name) + "a password is never shown.";
}

} // namespace RedfishConfig::App
