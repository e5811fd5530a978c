#include "ValueChecker.h"

#include "System.h"
#include "common/Ascii.h"

#include <RedfishConfig/Client/Adapt.h>

#include <algorithm>
#include <utility>
#include <variant>

namespace RedfishConfig::App {

using Client::Attribute;
using Client::Choice;
using RedfishConfig::RedfishConfigResult;
using Manager = RedfishConfig::RedfishConfigSettingManager;

namespace {

Manager MakeManager(const Attribute& attribute, bool hex)
{
    RedfishConfig::Config_Options options;
    options.ShowHexValue = hex;
    std::string registry = Client::PlainRegistryText({attribute});
    return {registry, false, options};
}

/** A name as the library compares it: "Enable" and "Enabled" are the same. */
std::string Common(const std::string& name)
{
    std::string common = Ascii::ToLower(name);
    if (common == "enable" || common == "disable") {
        common += "d";
    }
    return common;
}

/** Leaves out other names that could mean several choices. */
void DropAmbiguousNames(std::vector<Choice>& choices)
{
    std::map<std::string, std::size_t> uses;
    for (const Choice& choice : choices) {
        ++uses[Common(choice.Name)];
        if (Common(choice.DisplayName) != Common(choice.Name)) {
            ++uses[Common(choice.DisplayName)];
        }
    }
    for (Choice& choice : choices) {
        if (uses[Common(choice.DisplayName)] > 1) {
            choice.DisplayName = choice.Name;
        }
    }
}

/** The setting as the library is to know it. */
Attribute ForChecking(Attribute attribute, const std::vector<Choice>& published, bool takesDefault)
{
    DropAmbiguousNames(attribute.Choices);
    if (!takesDefault) {
        attribute.DefaultValue = {};
    }
    const auto* const defaultName = std::get_if<std::string>(&attribute.DefaultValue);
    if (attribute.Type == Client::AttributeType::Enumeration && defaultName != nullptr &&
        !HasChoice(published, *defaultName)) {
        attribute.Choices.push_back({*defaultName, *defaultName});
    }
    return attribute;
}

void KeepSecret(const Client::Value& value, Secrets& secrets)
{
    if (const auto* const secret = std::get_if<Client::Secret>(&value)) {
        secrets.Add(secret->Reveal());
    }
}

} // namespace

ValueChecker::ValueChecker(const Attribute& inForce, const std::vector<Choice>& published, Secrets& secrets,
                           bool takesDefault)
    : m_Name(inForce.Name),
      m_Default(RedfishConfig::GetOptionalVarAsStringToJSON(Client::Reveal(inForce.DefaultValue))),
      m_IsPassword(inForce.IsPassword()),
      m_Secrets(secrets),
      m_Manager(MakeManager(ForChecking(inForce, published, takesDefault), false))
{
    KeepSecret(inForce.CurrentValue, secrets);
    KeepSecret(inForce.DefaultValue, secrets);
}

CheckedValue ValueChecker::Finish(RedfishConfigResult result, std::string patchText, const std::string& value) const
{
    CheckedValue checked{WithMessage(std::move(result)), "", std::move(patchText)};
    const std::string message = checked.Result.ErrorMsg();
    const std::string opening = "New value " + value + " is invalid: ";
    const bool isUsual = message.compare(0, opening.size(), opening) == 0;
    checked.Reason = isUsual ? message.substr(opening.size()) : message;
    if (isUsual && m_IsPassword) {
        checked.Result.SetErrorMsg("The new value of " + m_Name + " is invalid: " + checked.Reason);
    }
    if (!checked.Reason.empty() && checked.Reason.back() == '.') {
        checked.Reason.pop_back();
    }
    return checked;
}

CheckedValue ValueChecker::Check(const std::string& value)
{
    if (m_IsPassword) {
        m_Secrets.Add(value);
    }
    std::string patchText;
    RedfishConfigResult result = m_Manager.PreparePatchContext(m_Name, value, patchText, RedfishConfig::FILTER_PATCH);
    return Finish(std::move(result), std::move(patchText), value);
}

CheckedValue ValueChecker::CheckDefault()
{
    return Check(m_Default);
}

bool HasChoice(const std::vector<Choice>& choices, const std::string& name)
{
    return std::any_of(choices.begin(), choices.end(), [&](const Choice& choice) { return choice.Name == name; });
}

RedfishConfigResult DescribeChoices(const Attribute& attribute, bool hex, std::string& text)
{
    return WithMessage(MakeManager(attribute, hex).QuerySettingValidValues(attribute.Name, text));
}

} // namespace RedfishConfig::App
