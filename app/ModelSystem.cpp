#include "ModelSystem.h"

#include "MenuDescriptions.h"
#include "ModelRecord.h"
#include "TypedValue.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>
#include <variant>

namespace RedfishConfig::App {

using RedfishConfig::filterAction;

namespace {

/** The action that a question is; row N is Question N. Questions to all settings are answered as those to each. */
constexpr std::array<filterAction, 4> actions{RedfishConfig::FILTER_QUERY_VALUE, RedfishConfig::FILTER_QUERY_DEFAULT,
                                              RedfishConfig::FILTER_QUERY_CHOICES,
                                              RedfishConfig::FILTER_QUERY_DESCRIPTION};

bool IsSetting(const Client::Attribute& attribute)
{
    return attribute.Type != Client::AttributeType::Unknown;
}

void Miss(const char* what, Answer& answer)
{
    answer.Result = {RedfishConfig::RESULT_PROPERTY_NOT_EXIST,
                     answer.Subject->Name() + " has no " + std::string(what) + "."};
    answer.Reason = "it has no " + std::string(what);
}

void Refuse(int code, Excluded refusal, Answer& answer)
{
    answer.Result = {code, std::move(refusal.Message)};
    answer.Reason = std::move(refusal.Reason);
}

/** Whether the rules leave a setting no value at all; the answer says why. */
bool RefuseAllValues(const Client::Evaluation& evaluation, const Client::SystemValues& values, std::size_t attribute,
                     int code, Answer& answer)
{
    const std::string cause = Client::WhyNoValue(evaluation, values, attribute);
    if (!cause.empty()) {
        Refuse(code, {answer.Subject->Name() + " accepts no value: " + cause + ".", "it accepts no value: " + cause},
               answer);
    }
    return !cause.empty();
}

/**
 * Whether rules give bounds, lengths, an increment or a pattern that the default does not keep, or may not keep: then
 * it is checked as any other value is.
 */
bool IsDefaultRuledOut(const Client::Evaluation& evaluation, const Client::Attribute& inForce)
{
    using Client::Property;
    const std::size_t index = evaluation.Of().Find(inForce.Name).value();
    const Client::Value& value = inForce.DefaultValue;
    const auto isBeyond = [&](std::int64_t measure, Property lower, const std::optional<std::int64_t>& least,
                              Property upper, const std::optional<std::int64_t>& most) {
        return (evaluation.RuleInForce(index, lower) && least && measure < *least) ||
               (evaluation.RuleInForce(index, upper) && most && measure > *most);
    };
    if (evaluation.RuleInForce(index, Property::ScalarIncrement) ||
        evaluation.RuleInForce(index, Property::ValueExpression)) {
        return true;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return isBeyond(*number, Property::LowerBound, inForce.LowerBound, Property::UpperBound, inForce.UpperBound);
    }
    const RedfishConfig::SettingValue revealed = Client::Reveal(value); // a password has a length too
    const auto* text = revealed ? std::get_if<std::string>(&*revealed) : nullptr;
    return text != nullptr && inForce.IsText() &&
           isBeyond(static_cast<std::int64_t>(text->size()), Property::MinLength, inForce.MinLength,
                    Property::MaxLength, inForce.MaxLength);
}

} // namespace

ModelSystem::ModelSystem(const Documents& documents, const SystemOptions& options, Secrets& secrets)
    : System(options, secrets, MenusIn(documents.Values.Of())),
      m_Model(documents.Values.Of()),
      m_Values(documents.Values),
      m_Evaluation(documents.Evaluated),
      m_Status(m_Evaluation, m_Values)
{
    const RecordSource& source = *this;
    std::vector<Setting> settings;
    settings.reserve(m_Model.Attributes().size());
    for (std::size_t attribute = 0; attribute < m_Model.Attributes().size(); ++attribute) {
        if (IsSetting(m_Model.Attributes()[attribute])) {
            settings.emplace_back(m_Model.Attributes()[attribute], attribute, source);
        }
    }
    Arrange(std::move(settings));
    m_Places.assign(m_Model.Attributes().size(), m_Model.Attributes().size());
    for (std::size_t place = 0; place < Settings().size(); ++place) {
        m_Places[Settings()[place].Index] = place;
    }
}

SettingRecord ModelSystem::RecordOf(const Setting& setting) const
{
    SettingRecord record = ToRecord(ShownAttribute(m_Evaluation, m_Values, setting.Index));
    record.ResetRequired = m_Evaluation.VerdictOn(setting.Index, Client::Property::ResetRequired).Value;
    return record;
}

const Setting* ModelSystem::Find(const std::string& name) const
{
    const std::optional<std::size_t> attribute = m_Model.Find(name);
    return attribute && m_Places[*attribute] < Settings().size() ? &Settings()[m_Places[*attribute]] : nullptr;
}

Answer ModelSystem::NotFound(const std::string& name) const
{
    if (const std::optional<std::size_t> attribute = m_Model.Find(name)) {
        return Refusal(name, nullptr, RedfishConfig::RESULT_PROPERTY_INVALID,
                       m_Model.Attributes()[*attribute].Name + " is of a type that is not known.",
                       "it is of a type that is not known");
    }
    return Refusal(name, nullptr, RedfishConfig::RESULT_SETTING_NOT_FOUND, "Unable to find the setting " + name + ".",
                   "it is not found");
}

Answer ModelSystem::Ask(Question question, const std::string& name)
{
    NoteAsked(name);
    const Setting* setting = Find(name);
    if (setting == nullptr) {
        return NotFound(name);
    }
    Answer answer = AnswerAbout(question, *setting, Detail::Reasons);
    answer.Name = name;
    return answer;
}

std::vector<Answer> ModelSystem::AskAll(Question question, Detail detail)
{
    NoteAllAsked();
    std::vector<Answer> answers;
    answers.reserve(Settings().size());
    for (const Setting& setting : Settings()) {
        answers.push_back(AnswerAbout(question, setting, detail));
    }
    return answers;
}

Answer ModelSystem::AnswerAbout(Question question, const Setting& setting, Detail detail)
{
    Answer answer;
    answer.Name = setting.Name();
    answer.Subject = &setting;
    Access access = m_Status.AccessFor(setting.Index, actions.at(static_cast<std::size_t>(question)),
                                       Options().IncludeProtected, detail);
    if (access.Refusal) {
        Refuse(RedfishConfig::RESULT_SHOW_VALUE_FAILED, std::move(*access.Refusal), answer);
        return answer;
    }
    switch (question) {
    case Question::Value:
        AnswerValue(m_Values.ValueOf(setting.Index), "current value", answer);
        break;
    case Question::Default:
        AnswerValue(DefaultInForce(m_Evaluation, m_Values, setting.Index), "default value", answer);
        answer.DoubtAboutDefault = detail == Detail::Reasons ? DoubtAboutDefault(setting.Index) : "";
        break;
    case Question::Choices:
        AnswerChoices(setting.Index, answer);
        break;
    case Question::Description:
        AnswerDescription(setting.Index, answer);
        break;
    }
    return answer;
}

void ModelSystem::AnswerValue(const Client::Value& value, const char* what, Answer& answer) const
{
    if (!Client::HasValue(value)) {
        Miss(what, answer);
    } else if (answer.Subject->IsPassword()) {
        answer.Text = passwordMask;
        answer.Concealed = true;
    } else {
        answer.Text = Client::ToText(value);
        answer.Held = Held(value);
        if (Options().Hex && std::holds_alternative<std::int64_t>(value)) {
            answer.Text = RedfishConfig::DecToHex(answer.Text);
        }
    }
}

void ModelSystem::AnswerChoices(std::size_t attribute, Answer& answer) const
{
    if (RefuseAllValues(m_Evaluation, m_Values, attribute, RedfishConfig::RESULT_PROPERTY_INVALID, answer)) {
        return;
    }
    Client::Attribute shown = ShownAttribute(m_Evaluation, m_Values, attribute);
    const auto* const defaultName = std::get_if<std::string>(&shown.DefaultValue);
    if (defaultName != nullptr && HasChoice(m_Values.ChoicesOf(attribute), *defaultName) &&
        !HasChoice(shown.Choices, *defaultName)) {
        shown.DefaultValue = {}; // rules rule it out; it would be told as one of the choices
    }
    answer.Result = DescribeChoices(shown, Options().Hex, answer.Text);
    answer.Reason = answer.Result.ErrorMsg();
    if (!answer.Ok()) {
        return;
    }
    answer.DoubtAboutValue = Client::DoubtAboutValues(m_Evaluation, m_Values, attribute);
    if (!answer.DoubtAboutValue.empty()) {
        answer.Text += "\n\tWhich values it accepts is not certain: " + answer.DoubtAboutValue;
    }
    const SettingStatus status = m_Status.Of(attribute, Detail::Verdicts);
    const bool isHidden = status.IsHiddenByRule() || !status[StatusRow::Hidden].Certain;
    std::string reason = m_Status.ReasonOf(attribute, isHidden ? StatusRow::Hidden : StatusRow::GrayOut);
    if (!reason.empty()) {
        reason[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(reason[0])));
        answer.Text += "\n\t" + reason;
    }
}

std::string ModelSystem::DoubtAboutDefault(std::size_t attribute) const
{
    return Client::DoubtAbout(m_Evaluation, m_Values, attribute, Client::Property::DefaultValue);
}

std::string ModelSystem::DoubtAboutReset(const Setting& setting) const
{
    constexpr Client::Property flag = Client::Property::ResetRequired;
    return m_Evaluation.VerdictOn(setting.Index, flag).Certain
               ? ""
               : Client::ReasonFor(m_Evaluation, m_Values, setting.Index, flag);
}

void ModelSystem::AnswerDescription(std::size_t attribute, Answer& answer) const
{
    const Client::Attribute shown = Client::AttributeInForce(m_Evaluation, m_Values, attribute);
    if (!shown.HelpText) {
        Miss("description", answer);
        return;
    }
    const std::string& title = shown.DisplayName ? *shown.DisplayName : shown.Name;
    answer.Text = title + "\n\nHelp for " + title + "\n--------------------------\n" + *shown.HelpText;
}

ValueChecker ModelSystem::CheckerOf(const Setting& setting)
{
    const Client::Attribute inForce = Client::AttributeInForce(m_Evaluation, m_Values, setting.Index);
    return {inForce, m_Values.ChoicesOf(setting.Index), KnownSecrets(), !IsDefaultRuledOut(m_Evaluation, inForce)};
}

Answer ModelSystem::Prepare(const Setting& setting, filterAction action, int refusalCode,
                            const std::function<CheckedValue(ValueChecker&)>& check)
{
    Answer answer;
    answer.Name = setting.Name();
    answer.Subject = &setting;
    Access access = m_Status.AccessFor(setting.Index, action, Options().IncludeProtected, Detail::Reasons);
    if (access.Refusal) {
        Refuse(refusalCode, std::move(*access.Refusal), answer);
        return answer;
    }
    if (RefuseAllValues(m_Evaluation, m_Values, setting.Index, RedfishConfig::RESULT_NEW_VALUE_INVALID, answer)) {
        return answer;
    }
    ValueChecker checker = CheckerOf(setting);
    CheckedValue checked = check(checker);
    answer.Reason = std::move(checked.Reason);
    answer.Result = std::move(checked.Result);
    answer.Text = std::move(checked.PatchText);
    answer.Doubts = std::move(access.Doubts);
    answer.DoubtAboutValue = Client::DoubtAboutValues(m_Evaluation, m_Values, setting.Index);
    return answer;
}

Answer ModelSystem::PreparePatch(const std::string& name, const std::string& value, filterAction action)
{
    NoteAsked(name);
    const Setting* setting = Find(name);
    if (setting == nullptr) {
        return NotFound(name);
    }
    Answer answer = Prepare(*setting, action, RedfishConfig::RESULT_CHANGE_SETTING_FAILED,
                            [&](ValueChecker& checker) { return checker.Check(value); });
    answer.Name = name;
    return answer;
}

Answer ModelSystem::PrepareDefault(const std::string& name)
{
    NoteAsked(name);
    const Setting* setting = Find(name);
    if (setting == nullptr) {
        return NotFound(name);
    }
    Answer answer = AnswerAbout(Question::Default, *setting, Detail::Reasons);
    if (answer.Ok()) {
        answer = Prepare(*setting, RedfishConfig::FILTER_LOAD_DEFAULT, RedfishConfig::RESULT_CHANGE_SETTING_FAILED,
                         [](ValueChecker& checker) { return checker.CheckDefault(); });
        answer.DoubtAboutDefault = DoubtAboutDefault(setting->Index);
    }
    answer.Name = name;
    return answer;
}

std::map<std::string, std::string> ModelSystem::SaveValues(filterAction action)
{
    NoteAllAsked();
    std::map<std::string, std::string> values;
    for (const Setting& setting : Settings()) {
        const Client::Value& value = m_Values.ValueOf(setting.Index);
        if (Client::HasValue(value) && !setting.IsPassword() &&
            !m_Status.AccessFor(setting.Index, action, Options().IncludeProtected, Detail::Verdicts).Refusal) {
            values[setting.Name()] = Client::ToText(value);
        }
    }
    return values;
}

Restored ModelSystem::Restore(const std::map<std::string, std::string>& saved, bool withSystemUnique)
{
    const filterAction action =
        withSystemUnique ? RedfishConfig::FILTER_RESTORE_WITH_UNIQUE : RedfishConfig::FILTER_RESTORE;
    Restored restored;
    for (const auto& [name, text] : saved) {
        NoteAsked(name);
        const Setting* setting = Find(name);
        const std::string& value = text; // a lambda cannot take hold of a structured binding
        Answer answer = setting == nullptr ? NotFound(name)
                                           : Prepare(*setting, action, RedfishConfig::RESULT_SETTING_FILTERED,
                                                     [&](ValueChecker& checker) { return checker.Check(value); });
        if (!answer.Ok()) {
            restored.Refused[name] = {answer.Reason, answer.Result == RedfishConfig::RESULT_SETTING_FILTERED};
            continue;
        }
        restored.PatchTexts[answer.Name] = answer.Text;
        if (!answer.Doubts.empty() || !answer.DoubtAboutValue.empty()) {
            restored.Doubtful.push_back(std::move(answer));
        }
    }
    return restored;
}

/** The two names of a choice are one value. */
bool ModelSystem::AreSame(const Setting& setting, const std::string& left, const std::string& right) const
{
    const bool isChoice = m_Model.Attributes()[setting.Index].Type == Client::AttributeType::Enumeration;
    return IsSameValue(setting, left, right) || (isChoice && m_Values.AreSame(setting.Index, left, right));
}

SettingStatus ModelSystem::StatusOf(const Setting& setting)
{
    NoteAsked(setting.Name());
    return m_Status.Of(setting.Index, Detail::Reasons);
}

std::vector<SettingStatus> ModelSystem::AllStatus(Detail detail)
{
    NoteAllAsked();
    std::vector<SettingStatus> status;
    status.reserve(Settings().size());
    for (const Setting& setting : Settings()) {
        status.push_back(m_Status.Of(setting.Index, detail));
    }
    return status;
}

std::map<std::string, std::vector<std::string>> ModelSystem::Groups()
{
    return GroupsIn(m_Model);
}

boost::json::object ModelSystem::Identity() const
{
    boost::json::object identity;
    const std::pair<const char*, const std::string&> members[] = {
        {"Id", m_Model.Id()}, {"Language", m_Model.Language()}, {"RegistryVersion", m_Model.RegistryVersion()}};
    for (const auto& [key, text] : members) {
        if (!text.empty()) {
            identity[key] = text;
        }
    }
    return identity;
}

std::string ModelSystem::PasswordRefusal(const std::string& name) const
{
    const Setting* setting = Find(name);
    return (setting != nullptr ? setting->Name() : name) + " is a password, which is never shown.";
}

} // namespace RedfishConfig::App
