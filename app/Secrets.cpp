#include "Secrets.h"

#include "common/Ascii.h"
#include "common/Texts.h"

#include <RedfishConfig/Client/Value.h>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace RedfishConfig::App {

namespace json = boost::json;

const std::string passwordMask = RedfishConfig::Client::passwordMask;

namespace {

const json::object noMembers;

/** The member as an object, or an empty one. */
const json::object& ObjectMember(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    return member != nullptr && member->is_object() ? member->get_object() : noMembers;
}

/** Calls @p visit with each object in the list of that name. */
template <class Visit>
void ForEachObject(const json::object& object, std::string_view key, Visit visit)
{
    const json::value* member = object.if_contains(key);
    if (member != nullptr && member->is_array()) {
        for (const json::value& item : member->get_array()) {
            if (item.is_object()) {
                visit(item.get_object());
            }
        }
    }
}

std::string TextMember(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    return member != nullptr && member->is_string() ? std::string(member->get_string()) : "";
}

/** The value as the library writes it into a formula. */
std::string FormulaText(const json::value& value)
{
    return value.is_string() ? std::string(value.get_string()) : json::serialize(value);
}

/** The text with every occurrence of a piece, which is in lower case, covered whatever its letter case. */
std::string Cover(std::string text, const std::string& piece)
{
    std::string folded = Ascii::ToLower(text);
    for (std::size_t at = 0; (at = folded.find(piece, at)) != std::string::npos; at += passwordMask.size()) {
        text.replace(at, piece.size(), passwordMask);
        folded.replace(at, piece.size(), passwordMask);
    }
    return text;
}

/** "CurrentValue " is that of adapted rules, where the value has a blank behind it too. */
bool IsValueProperty(const std::string& property)
{
    return property == "CurrentValue" || property == "DefaultValue" || property == "CurrentValue ";
}

} // namespace

bool IsPasswordType(std::string_view type)
{
    return Ascii::EqualIgnoringCase(type, "Password");
}

Secrets::Secrets(const json::value& registry, const RedfishConfig::SettingValueMap& values)
{
    const json::object& entries =
        ObjectMember(registry.is_object() ? registry.get_object() : noMembers, "RegistryEntries");
    AddAttributes(entries, values);
    if (!m_Names.empty()) {
        AddRules(entries);
    }
    SortTexts();
}

void Secrets::Add(const std::string& password)
{
    if (!password.empty()) {
        m_Folded.push_back(Ascii::ToLower(password));
        SortTexts();
    }
}

void Secrets::SortTexts()
{
    std::sort(m_Folded.begin(), m_Folded.end(), [](const std::string& left, const std::string& right) {
        return left.size() != right.size() ? left.size() > right.size() : left < right;
    });
    m_Folded.erase(std::unique(m_Folded.begin(), m_Folded.end()), m_Folded.end());
}

void Secrets::AddText(const json::value* value)
{
    if (value != nullptr && !value->is_null() && !value->is_structured()) {
        const std::string text = FormulaText(*value);
        if (!text.empty()) {
            m_Folded.push_back(Ascii::ToLower(text));
        }
    }
}

void Secrets::AddAttributes(const json::object& entries, const RedfishConfig::SettingValueMap& values)
{
    ForEachObject(entries, "Attributes", [&](const json::object& attribute) {
        if (!IsPasswordType(TextMember(attribute, "Type"))) {
            return;
        }
        const std::string name = TextMember(attribute, "AttributeName");
        m_Names.insert(name);
        AddText(attribute.if_contains("CurrentValue"));
        AddText(attribute.if_contains("DefaultValue"));
        const auto value = values.find(name);
        if (value != values.end() && value->second) {
            const json::value given = RedfishConfig::VariantToJson(*value->second);
            AddText(&given);
        }
    });
}

void Secrets::AddRules(const json::object& entries)
{
    ForEachObject(entries, "Dependencies", [&](const json::object& rule) {
        const json::object& dependency = ObjectMember(rule, "Dependency");
        const std::string property = TextMember(dependency, "MapToProperty");
        if (IsPassword(dependency, "MapToAttribute") && (property == "CurrentValue" || property == "DefaultValue")) {
            AddText(dependency.if_contains("MapToValue"));
        }
        ForEachObject(dependency, "MapFrom", [&](const json::object& term) {
            const std::string tested = TextMember(term, "MapFromProperty");
            if (IsPassword(term, "MapFromAttribute") && IsValueProperty(tested)) {
                AddTest(TextMember(term, "MapFromAttribute") + "." + tested, term.if_contains("MapFromValue"));
            }
        });
    });
}

bool Secrets::IsPassword(const json::object& object, const char* key) const
{
    return m_Names.count(TextMember(object, key)) != 0;
}

void Secrets::AddTest(const std::string& property, const json::value* value)
{
    if (value == nullptr || value->is_null() || value->is_bool()) {
        return; // a test whether there is a password tells none
    }
    AddText(value);
    // when the library tells a rule it leaves the property away wherever it finds it, in names and values too
    const auto asTold = [](std::string text) { return Texts::ReplaceAll(std::move(text), ".CurrentValue", ""); };
    const std::string shown = asTold(FormulaText(*value));
    if (shown.empty()) {
        return;
    }
    for (const char* comparison : {"==", "!=", ">", ">=", "<", "<="}) {
        const std::string tested = "(" + asTold(property) + comparison;
        m_Tests.emplace_back(tested + shown + ")", tested + passwordMask + ")");
    }
}

std::string Secrets::ConcealInReason(std::string reason) const
{
    for (const auto& [test, cover] : m_Tests) {
        reason = Texts::ReplaceAll(std::move(reason), test, cover);
    }
    return reason;
}

std::string Secrets::ConcealInTrace(const std::string& line) const
{
    std::string covered = line;
    for (const std::string& secret : m_Folded) {
        covered = Cover(std::move(covered), secret);
    }
    return covered;
}

} // namespace RedfishConfig::App
