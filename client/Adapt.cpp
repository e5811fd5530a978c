#include <RedfishConfig/Client/Adapt.h>

#include "AttributeRepair.h"
#include "Findings.h"
#include "Place.h"
#include "RuleAdapter.h"

#include <boost/json/serialize.hpp>

#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/**
 * Whether the values say that they belong to another registry than this. Controllers are careless about the name, so
 * the difference alone does not mean much.
 */
void CheckRegistryName(const json::object& registry, const ValuesDocument& values, const Attributes& attributes,
                       Findings& findings)
{
    const json::value* id = registry.if_contains("Id");
    if (id == nullptr || !id->is_string() || values.AttributeRegistry.empty()) {
        return;
    }
    const std::string_view name(id->get_string());
    if (name == values.AttributeRegistry) {
        return;
    }
    std::size_t known = 0;
    for (const auto& [attribute, value] : values.Values) {
        if (attributes.Find(attribute) != nullptr) {
            ++known;
        }
    }
    const bool fits = 2 * known >= values.Values.size();
    findings.AddIn(
        Document::Values, fits ? Severity::Note : Severity::Warning, FindingKind::ForeignRegistry, "/AttributeRegistry",
        "the values belong to the registry " + Quote(values.AttributeRegistry) + ", and this is " + Quote(name),
        fits ? "their names fit" : "most of their names are not in this registry");
}

const json::array& AttributeList(const json::object& entries, const std::string& place, Findings& findings)
{
    static const json::array none;
    const json::value* list = entries.if_contains("Attributes");
    if (list != nullptr && list->is_array()) {
        return list->get_array();
    }
    findings.Add(Severity::Error, FindingKind::WrongKind, Member(place, "Attributes"),
                 list != nullptr ? std::string("the attributes are ") + KindOf(*list) : std::string("no attributes"),
                 "there are no settings");
    return none;
}

} // namespace

Adaptation Adapt(const RegistryDocument& registry, const ValuesDocument& values)
{
    Adaptation adaptation;
    adaptation.Findings = registry.Findings;
    adaptation.Findings.insert(adaptation.Findings.end(), values.Findings.begin(), values.Findings.end());
    adaptation.Values = values.Values;
    const json::value* published = registry.Registry.if_contains("RegistryEntries");
    if (published == nullptr || !published->is_object()) {
        return adaptation;
    }
    Findings findings(adaptation.Findings);
    const json::object& entries = published->get_object();
    RepairedAttributes attributes = RepairAttributes(AttributeList(entries, registry.Place, findings),
                                                     registry.Place + "/Attributes", values, findings);
    CheckRegistryName(registry.Registry, values, attributes.Table, findings);
    AdaptedRules rules = AdaptRules(entries, registry.Place, attributes.Table, findings);

    json::object adaptedEntries;
    for (const auto& [key, member] : entries) {
        if (key != "Attributes" && key != "Dependencies") {
            adaptedEntries[key] = member;
        }
    }
    adaptedEntries["Attributes"] = std::move(attributes.List);
    adaptedEntries["Dependencies"] = std::move(rules.List);
    json::object adapted;
    for (const auto& [key, member] : registry.Registry) {
        if (key != "RegistryEntries") {
            adapted[key] = member;
        }
    }
    adapted["RegistryEntries"] = std::move(adaptedEntries);

    adaptation.RegistryText = json::serialize(adapted);
    adaptation.Values = std::move(attributes.Values);
    adaptation.Rules = std::move(rules.Counts);
    adaptation.PublishedRule = std::move(rules.PublishedRule);
    adaptation.PublishedAttribute = std::move(attributes.Published);
    return adaptation;
}

} // namespace RedfishConfig::Client
