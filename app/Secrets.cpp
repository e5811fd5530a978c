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

/** "CurrentValue " is that of adapted rules, where the value has a blank behind it too. The library takes a property in
 *  another letter case for none, and tells the test all the same. */
bool IsValueProperty(const std::string& property)
{
    return Ascii::EqualIgnoringCase(property, "CurrentValue") || Ascii::EqualIgnoringCase(property, "DefaultValue") ||
           Ascii::EqualIgnoringCase(property, "CurrentValue ");
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
}

void Secrets::Add(const std::string& password)
{
    m_Texts.Add(Ascii::ToLower(password));
}

void Secrets::AddText(const json::value* value)
{
    if (value != nullptr && !value->is_null() && !value->is_structured()) {
        m_Texts.Add(Ascii::ToLower(FormulaText(*value)));
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
        if (IsPassword(dependency, "MapToAttribute") && IsValueProperty(property)) {
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
        m_Tested.Add(tested);
        m_Shown[tested].Add(shown + ")");
    }
}

std::string Secrets::ConcealInReason(std::string reason) const
{
    for (std::size_t at = 0; (at = reason.find('(', at)) != std::string::npos; ++at) {
        m_Tested.VisitAt(reason, at, [&](std::size_t length) {
            const std::size_t value = at + length;
            const std::size_t shown = m_Shown.at(reason.substr(at, length)).LongestAt(reason, value);
            if (shown > 0) {
                reason.replace(value, shown - 1, passwordMask);
            }
            return shown > 0;
        });
    }
    return reason;
}

std::string Secrets::ConcealInTrace(const std::string& line) const
{
    const std::string folded = Ascii::ToLower(line);
    std::string covered;
    std::size_t end = 0; // of what is covered
    for (std::size_t at = 0; at < line.size(); ++at) {
        const std::size_t length = m_Texts.LongestAt(folded, at);
        if (length > 0 && at >= end) {
            covered += passwordMask;
        } else if (at >= end) {
            covered += line[at];
        }
        end = std::max(end, at + length);
    }
    return covered;
}

} // namespace RedfishConfig::App
