#include "Documents.h"

#include <algorithm>
#include <array>
#include <utility>

namespace RedfishConfig::App {

using Client::Finding;
using Client::FindingKind;
using Client::Severity;

namespace {

/** Warnings that say nothing about any setting, or are reported in another way. */
constexpr std::array withoutEffect{FindingKind::UnknownTarget, FindingKind::MenuTarget, FindingKind::UnknownType,
                                   FindingKind::UnusableValue};

bool IsGzip(const std::string& text)
{
    return text.compare(0, 2, "\x1f\x8b") == 0;
}

/** Why a document cannot be used; empty when it can. */
std::string DefectIn(const std::vector<Finding>& findings)
{
    const auto found = std::find_if(findings.begin(), findings.end(), [](const Finding& finding) {
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
    if (!document.Entries.Member("Attributes").IsArray()) {
        throw InputError(file + R"(: not an attribute registry: its "RegistryEntries" has no list "Attributes")");
    }
    return document;
}

Client::ValuesDocument ReadValuesFile(const std::string& file)
{
    if (file.empty()) {
        return {};
    }
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

void Append(const std::vector<Finding>& further, std::vector<Finding>& findings)
{
    findings.insert(findings.end(), further.begin(), further.end());
}

/**
 * Why values can hardly be those that the registry came with; empty when they can be. A name of a registry alone says
 * little: controllers spell it in several ways.
 */
std::string DefectOfRegistryValues(const Client::SystemValues& read, const Client::ValuesDocument& published)
{
    for (const Finding& finding : read.Findings(published)) {
        if (finding.Kind == FindingKind::ForeignRegistry && finding.Level == Severity::Warning) {
            return finding.Found + "; " + finding.Consequence;
        }
    }
    const bool anyKnown = std::any_of(published.Values.begin(), published.Values.end(),
                                      [&](const auto& entry) { return read.Of().Find(entry.first).has_value(); });
    return published.Values.empty() || anyKnown ? "" : "none of the names in it is a setting of the registry";
}

} // namespace

Documents ReadDocuments(const DocumentFiles& files)
{
    const Client::RegistryDocument registry = ReadRegistryFile(files.Registry);
    Client::ValuesDocument values = ReadValuesFile(files.Values);
    if (files.RegistryValues.empty()) {
        return Understand(files, registry, std::move(values), nullptr);
    }
    const Client::ValuesDocument registryValues = ReadValuesFile(files.RegistryValues);
    return Understand(files, registry, std::move(values), &registryValues);
}

Documents Understand(const DocumentFiles& files, const Client::RegistryDocument& registry,
                     Client::ValuesDocument values, const Client::ValuesDocument* registryValues)
{
    std::vector<Finding> findings = registry.Findings;
    Append(values.Findings, findings);
    Client::SystemValues now(Client::Model::Read(registry), values);
    if (registryValues == nullptr) {
        Client::Evaluation evaluated(now);
        return {files, std::move(findings), std::move(values), std::move(now), std::move(evaluated), ""};
    }
    const Client::SystemValues then(now.SharedModel(), *registryValues);
    Client::Evaluation evaluated(now, then);
    return {files,          std::move(findings),  std::move(values),
            std::move(now), std::move(evaluated), DefectOfRegistryValues(then, *registryValues)};
}

std::vector<Finding> FindingsOf(const Documents& documents)
{
    std::vector<Finding> findings = documents.Findings;
    Append(documents.Model().Findings(), findings);
    Append(documents.Values.Findings(documents.Published), findings);
    return findings;
}

namespace {

void AddDoubts(const std::vector<Finding>& findings, std::vector<Doubt>& doubts)
{
    for (const Finding& finding : findings) {
        const bool hasNoEffect =
            std::find(withoutEffect.begin(), withoutEffect.end(), finding.Kind) != withoutEffect.end();
        if (finding.Level == Severity::Error || (finding.Level == Severity::Warning && !hasNoEffect)) {
            doubts.push_back({finding.Level, finding.In, finding.Attribute, finding.Count});
        }
    }
}

} // namespace

std::vector<Doubt> DoubtsAbout(const Documents& documents)
{
    std::vector<Doubt> doubts;
    AddDoubts(documents.Findings, doubts);
    AddDoubts(documents.Model().Findings(), doubts);
    AddDoubts(documents.Values.Findings(documents.Published), doubts);
    return doubts;
}

} // namespace RedfishConfig::App
