#include "Documents.h"

#include "Text.h"

#include <boost/json/object.hpp>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace RedfishConfigTool {

namespace json = boost::json;
namespace Client = RedfishConfig::Client;
using Client::FindingKind;
using Client::Severity;

namespace {

/** Warnings that say nothing about any setting, or are told in another way. */
constexpr std::array withoutEffect{FindingKind::UnknownTarget, FindingKind::MenuTarget, FindingKind::NeverHolds,
                                   FindingKind::UnknownType, FindingKind::UnusableValue};

bool IsGzip(const std::string& text)
{
    return text.compare(0, 2, "\x1f\x8b") == 0;
}

/** Why a document cannot be used; empty when it can. */
std::string DefectIn(const std::vector<Client::Finding>& findings)
{
    const auto found = std::find_if(findings.begin(), findings.end(), [](const Client::Finding& finding) {
        return finding.Kind == FindingKind::UnreadableDocument;
    });
    return found != findings.end() ? found->Found : "";
}

Client::RegistryDocument ReadRegistryFile(const std::string& file)
{
    const std::string text = ReadText(file);
    Client::RegistryDocument document = Client::ReadRegistryDocument(text);
    const std::string defect = DefectIn(document.Findings);
    if (!defect.empty()) {
        if (!IsGzip(text)) {
            RegistryFrom(file, text); // whose complaint names line and column
        }
        throw InputError(file + ": " + defect);
    }
    const json::value* attributes = document.Registry.at("RegistryEntries").get_object().if_contains("Attributes");
    if (attributes == nullptr || !attributes->is_array()) {
        throw InputError(file + R"(: not an attribute registry: its "RegistryEntries" has no list "Attributes")");
    }
    return document;
}

Client::ValuesDocument ReadValuesFile(const std::string& file)
{
    const std::string text = ReadText(file);
    Client::ValuesDocument document = Client::ReadValuesDocument(text);
    const std::string defect = DefectIn(document.Findings);
    if (!defect.empty()) {
        if (!IsGzip(text)) {
            ValuesFrom(file, text);
        }
        throw InputError(file + ": " + defect);
    }
    return document;
}

/** The last key of a JSON Pointer. */
std::string LastKey(const std::string& place)
{
    return ReplaceAll(ReplaceAll(place.substr(place.rfind('/') + 1), "~1", "/"), "~0", "~");
}

} // namespace

Documents ReadDocuments(const std::string& registryFile, const std::string& valuesFile)
{
    Documents documents;
    documents.RegistryFile = registryFile;
    documents.ValuesFile = valuesFile;
    documents.Registry = ReadRegistryFile(registryFile);
    if (!valuesFile.empty()) {
        documents.Values = ReadValuesFile(valuesFile);
    }
    documents.Adapted = Client::Adapt(documents.Registry, documents.Values);
    documents.Document = ParseJson(registryFile, documents.Adapted.RegistryText);
    return documents;
}

Secrets SecretsOf(const Documents& documents)
{
    Secrets secrets(documents.Document, documents.Adapted.Values);
    secrets.Include(documents.Registry.Registry, documents.Values.Values);
    return secrets;
}

std::vector<std::string> RemarksOn(const Documents& documents)
{
    std::vector<std::string> remarks;
    for (const Client::Finding& finding : documents.Values.Findings) {
        if (finding.Kind == FindingKind::UnusableValue) {
            remarks.push_back(RemarkOnValue(documents.ValuesFile, LastKey(finding.Place), finding.Found));
        }
    }
    return remarks;
}

namespace {

std::string CountedLevels(const std::vector<Severity>& levels)
{
    std::string counted;
    for (const Severity level : {Severity::Error, Severity::Warning, Severity::Note}) {
        const auto count = std::count(levels.begin(), levels.end(), level);
        if (count > 0) {
            counted += (counted.empty() ? "" : ", ") +
                       Counted(static_cast<std::size_t>(count), std::string(Client::Word(level)));
        }
    }
    return counted;
}

/** The element of a list that the place lies in. */
const json::value* ElementAt(const json::object& entries, const char* list, const std::string& listPlace,
                             const std::string& place)
{
    const json::value* elements = entries.if_contains(list);
    const std::string prefix = listPlace + "/" + list + "/";
    if (elements == nullptr || !elements->is_array() || place.compare(0, prefix.size(), prefix) != 0) {
        return nullptr;
    }
    const std::size_t position = std::strtoull(place.c_str() + prefix.size(), nullptr, 10);
    return elements->get_array().if_contains(position);
}

std::optional<std::string> TextIn(const json::value* value, const char* key)
{
    const json::object* object = value != nullptr ? value->if_object() : nullptr;
    const json::value* member = object != nullptr ? object->if_contains(key) : nullptr;
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::optional(std::string(*text)) : std::nullopt;
}

/** The setting that a finding is about: an attribute, the target of a rule, or the owner of a value. */
std::optional<std::string> SettingOf(const Client::Finding& finding, const Documents& documents)
{
    if (finding.In == Client::Document::Values) {
        const std::string prefix = documents.Values.Place + "/";
        return finding.Place.compare(0, prefix.size(), prefix) == 0 ? std::optional(LastKey(finding.Place))
                                                                    : std::nullopt;
    }
    const json::object& entries = documents.Registry.Registry.at("RegistryEntries").get_object();
    const std::string& place = documents.Registry.Place;
    if (const json::value* rule = ElementAt(entries, "Dependencies", place, finding.Place)) {
        const json::object* object = rule->if_object();
        return TextIn(object != nullptr ? object->if_contains("Dependency") : nullptr, "MapToAttribute");
    }
    return TextIn(ElementAt(entries, "Attributes", place, finding.Place), "AttributeName");
}

} // namespace

std::string CountedFindings(const std::vector<Client::Finding>& findings)
{
    std::vector<Severity> levels;
    std::transform(findings.begin(), findings.end(), std::back_inserter(levels),
                   [](const Client::Finding& finding) { return finding.Level; });
    return CountedLevels(levels);
}

std::vector<Doubt> DoubtsAbout(const Documents& documents)
{
    std::vector<Doubt> doubts;
    for (const Client::Finding& finding : documents.Adapted.Findings) {
        const bool hasNoEffect =
            std::find(withoutEffect.begin(), withoutEffect.end(), finding.Kind) != withoutEffect.end();
        if (finding.Level == Severity::Error || (finding.Level == Severity::Warning && !hasNoEffect)) {
            doubts.push_back({finding.Level, SettingOf(finding, documents)});
        }
    }
    return doubts;
}

std::string Summary(const std::string& registryFile, const std::vector<Doubt>& doubts, const IsAbout& isAbout)
{
    std::vector<Severity> levels;
    for (const Doubt& doubt : doubts) {
        if (!doubt.Setting || isAbout(*doubt.Setting)) {
            levels.push_back(doubt.Level);
        }
    }
    const std::string counted = CountedLevels(levels);
    return counted.empty() ? "" : registryFile + ": " + counted + "; redfishconfig lint tells them";
}

} // namespace RedfishConfigTool
