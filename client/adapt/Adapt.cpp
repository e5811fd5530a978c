#include <RedfishConfig/Client/Adapt.h>

#include "../Limits.h"
#include "../intake/Findings.h"
#include "AttributeWriter.h"
#include "FormulaWriter.h"
#include "JsonCopy.h"

#include <RedfishConfig/Client/Evaluate.h>

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** The lists of a registry that are written anew. */
struct Lists {
    json::array Attributes, Dependencies, Menus;
};

/** The list that takes the place of a published member; null for members that are copied. */
json::array* ListFor(std::string_view key, const JsonValue& published, Lists& lists)
{
    if (key == "Attributes") {
        return &lists.Attributes;
    }
    if (key == "Dependencies") {
        return &lists.Dependencies;
    }
    return key == "Menus" && published.IsArray() ? &lists.Menus : nullptr;
}

/** "RegistryEntries" with the lists where the published ones are. */
json::object EntriesWith(Lists lists, const RegistryDocument& document)
{
    const bool isBare = document.Registry == document.Entries;
    json::object entries;
    for (const JsonMember& member : document.Entries) {
        if (json::array* list = ListFor(member.Key, member.Value, lists)) {
            entries[member.Key] = std::move(*list);
        } else if (!isBare || member.Key == "Menus") {
            entries[member.Key] = Copy(member.Value);
        }
    }
    if (!entries.contains("Attributes")) {
        entries["Attributes"] = json::array();
    }
    if (!entries.contains("Dependencies")) {
        entries["Dependencies"] = std::move(lists.Dependencies);
    }
    return entries;
}

/** The registry around its entries. What is beside lists that are published without entries stays beside them. */
json::object RegistryWith(Lists lists, const RegistryDocument& document)
{
    const bool isBare = document.Registry == document.Entries;
    json::object registry;
    for (const JsonMember& member : document.Registry) {
        const bool isList = member.Key == "Attributes" || member.Key == "Dependencies" || member.Key == "Menus";
        if (member.Key == "RegistryEntries") {
            registry[member.Key] = nullptr; // its place
        } else if (!isBare || !isList) {
            registry[member.Key] = Copy(member.Value);
        }
    }
    registry["RegistryEntries"] = EntriesWith(std::move(lists), document);
    return registry;
}

SettingValueMap ValuesOf(const SystemValues& values)
{
    SettingValueMap map;
    for (std::size_t attribute = 0; attribute < values.Of().Attributes().size(); ++attribute) {
        if (values.IsPresent(attribute)) {
            map[values.Of().Attributes()[attribute].Name] = Reveal(values.ValueOf(attribute));
        }
    }
    return map;
}

void Append(std::vector<Finding>& findings, const std::vector<Finding>& further)
{
    findings.insert(findings.end(), further.begin(), further.end());
}

void WriteRegistry(const SystemValues& values, const Evaluation& evaluation, Adaptation& adaptation)
{
    const Model& model = values.Of();
    Findings findings(adaptation.Findings);
    WrittenFormulas formulas = WriteFormulas(evaluation, values, findings);
    Lists lists;
    lists.Attributes = WriteAttributes(values, formulas.Flags, findings);
    lists.Dependencies = std::move(formulas.Dependencies);
    lists.Menus = WriteMenus(model, findings);
    adaptation.RegistryText = json::serialize(RegistryWith(std::move(lists), model.Document()));
    if (adaptation.RegistryText.size() > Limits::documentBytes) {
        findings.About("");
        findings.Add(Severity::Error, FindingKind::TooLarge, "",
                     "the adapted registry is longer than " + std::to_string(Limits::documentBytes) + " bytes",
                     "the core cannot read it");
    }
    adaptation.Rules = std::move(formulas.Counts);
    adaptation.Undecided = std::move(formulas.Undecided);
    adaptation.LeftOut = std::move(formulas.LeftOut);
    adaptation.PublishedRule = std::move(formulas.PublishedRule);
    for (const Attribute& attribute : model.Attributes()) {
        adaptation.PublishedAttribute.push_back(attribute.Position);
    }
}

} // namespace

Adaptation Adapt(const SystemValues& values)
{
    return Adapt(values, Evaluation(values));
}

Adaptation Adapt(const SystemValues& values, const Evaluation& evaluation)
{
    Adaptation adaptation;
    adaptation.Findings = values.Of().Findings();
    if (values.Of().Document().Usable()) {
        adaptation.Values = ValuesOf(values);
        WriteRegistry(values, evaluation, adaptation);
    }
    return adaptation;
}

Adaptation Adapt(const RegistryDocument& registry, const ValuesDocument& values)
{
    const SystemValues known(Model::Read(registry), values);
    Adaptation adaptation;
    adaptation.Findings = registry.Findings;
    Append(adaptation.Findings, values.Findings);
    Append(adaptation.Findings, known.Of().Findings());
    Append(adaptation.Findings, known.Findings(values));
    if (!registry.Usable()) {
        return adaptation;
    }
    for (const auto& [name, value] : values.Values) { // under the names that they have, with those of no attribute
        const std::optional<std::size_t> attribute = known.Of().Find(name);
        adaptation.Values[name] = attribute ? Reveal(known.ValueOf(*attribute)) : value;
    }
    WriteRegistry(known, Evaluation(known), adaptation);
    return adaptation;
}

std::string PlainRegistryText(const std::vector<Attribute>& attributes)
{
    json::object entries{{"Attributes", WritePlainAttributes(attributes)}};
    return json::serialize(json::object{{"RegistryEntries", std::move(entries)}});
}

} // namespace RedfishConfig::Client
