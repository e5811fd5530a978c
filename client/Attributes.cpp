#include "Attributes.h"

#include "Place.h"
#include "Value.h"

#include <utility>

namespace RedfishConfig::Client {

Attributes::Attributes(std::vector<Attribute> list) : m_List(std::move(list))
{
    for (std::size_t position = 0; position < m_List.size(); ++position) {
        m_ByName.emplace(m_List[position].Name, position);
        m_ByLowerCase.emplace(LowerCase(m_List[position].Name), position);
    }
}

const Attribute* Attributes::Find(const std::string& name) const
{
    if (const auto found = m_ByName.find(name); found != m_ByName.end()) {
        return &m_List[found->second];
    }
    const auto found = m_ByLowerCase.find(LowerCase(name));
    return found != m_ByLowerCase.end() ? &m_List[found->second] : nullptr;
}

namespace {

/** A value for a finding; those of passwords stay untold. */
std::string Tell(const Attribute& attribute, const SettingValue& value)
{
    return attribute.Type == "password" ? std::string("a text") : Quote(ToJson(value));
}

bool IsOfType(const SettingValue& value, const std::string& type)
{
    if (type == "integer") {
        return std::holds_alternative<std::int64_t>(*value);
    }
    if (type == "boolean") {
        return std::holds_alternative<bool>(*value);
    }
    return true;
}

SettingValue TranslateChoice(const Attribute& attribute, const SettingValue& value, Document document,
                             const std::string& place, const std::string& what, Findings& findings)
{
    const auto found = attribute.Choices.find(std::get<std::string>(*value));
    if (found == attribute.Choices.end()) {
        findings.AddIn(document, Severity::Warning, FindingKind::ValueNotAChoice, place,
                       what + " of " + attribute.Name + " is " + Tell(attribute, value) +
                           ", which is none of its choices",
                       "it stays as it is");
        return value;
    }
    if (found->second != found->first) {
        findings.AddIn(document, Severity::Note, FindingKind::DisplayNameForValue, place,
                       what + " of " + attribute.Name + " is " + Tell(attribute, value) +
                           ", the other name of a choice",
                       "it becomes " + Quote(found->second));
    }
    return found->second;
}

} // namespace

SettingValue TranslateValue(const Attribute& attribute, const SettingValue& value, Document document,
                            const std::string& place, const std::string& what, Findings& findings)
{
    if (!value) {
        return value;
    }
    SettingValue typed = ConvertToType(value, attribute.Type);
    if (typed != value) {
        findings.AddIn(document, Severity::Note, FindingKind::ValueOfOtherType, place,
                       what + " of " + attribute.Name + " is " + Tell(attribute, value) + ", not of its type",
                       "it becomes " + Tell(attribute, typed));
    } else if (!IsOfType(value, attribute.Type)) {
        findings.AddIn(document, Severity::Warning, FindingKind::ValueOfOtherType, place,
                       what + " of " + attribute.Name + " is " + Tell(attribute, value) + ", not of its type",
                       "it stays as it is");
    }
    if (attribute.Type == "enumeration" && std::holds_alternative<std::string>(*typed)) {
        return TranslateChoice(attribute, typed, document, place, what, findings);
    }
    return typed;
}

} // namespace RedfishConfig::Client
