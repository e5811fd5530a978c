#include <RedfishConfig/Client/Documents.h>

#include "../Limits.h"
#include "Findings.h"
#include "Inflate.h"
#include "JsonPointer.h"
#include "Quote.h"
#include "ReadValue.h"

#include <deque>
#include <optional>
#include <utility>

namespace RedfishConfig::Client {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

void Refuse(Findings& findings, std::string found)
{
    findings.Add(Severity::Error, FindingKind::UnreadableDocument, "", std::move(found), "the document is not used");
}

void ReportRepeatedKeys(const RepeatedKeys& repeated, Findings& findings)
{
    for (const std::string& pointer : repeated.Pointers) {
        findings.Add(Severity::Warning, FindingKind::RepeatedKey, pointer, "a key that its object has already",
                     "the last one counts");
    }
    if (repeated.Count > repeated.Pointers.size()) {
        findings.AddUnlisted(Severity::Warning, FindingKind::RepeatedKey, repeated.Count - repeated.Pointers.size());
    }
}

/** The JSON document that the bytes hold, compressed or not; null when they hold none. */
std::shared_ptr<const JsonDocument> ReadJson(std::string_view bytes, Findings& findings)
{
    std::string text;
    if (IsGzip(bytes)) {
        std::string defect = Inflate(bytes, text);
        if (!defect.empty()) {
            Refuse(findings, std::move(defect));
            return nullptr;
        }
    } else {
        text = bytes;
    }
    if (text.compare(0, byteOrderMark.size(), byteOrderMark) == 0) {
        text.erase(0, byteOrderMark.size());
    }
    JsonDefect defect;
    std::shared_ptr<const JsonDocument> document = JsonDocument::Parse(std::move(text), defect);
    if (document == nullptr) {
        Refuse(findings, defect.IsSyntax ? "not JSON, at byte " + std::to_string(defect.Byte) + ": " + defect.Reason
                                         : std::move(defect.Reason));
        return nullptr;
    }
    ReportRepeatedKeys(document->Repeated(), findings);
    return document;
}

struct Located {
    JsonValue Object;
    std::string Pointer;
};

/** The object nearest to the root of which the predicate holds. */
template <class Predicate>
std::optional<Located> Locate(const JsonValue& root, Predicate isWanted)
{
    struct Step {
        JsonValue value;
        std::string pointer;
        std::size_t depth;
    };
    std::deque<Step> steps{{root, "", 0}};
    std::size_t visited = 0;
    for (; !steps.empty(); steps.pop_front()) {
        const auto& [value, pointer, depth] = steps.front();
        if (value.IsObject() && isWanted(value)) {
            return Located{value, pointer};
        }
        std::size_t position = 0;
        for (const JsonMember& member : value) {
            if (depth == Limits::wrapperDepth || visited > Limits::wrapperMembers) {
                break;
            }
            // the pointer is in each step, and in each finding about what is below
            const bool hasShortPointer = pointer.size() + member.Key.size() <= Limits::wrapperPointerBytes;
            if (++visited <= Limits::wrapperMembers && hasShortPointer &&
                (member.Value.IsObject() || member.Value.IsArray())) {
                steps.push_back({member.Value,
                                 value.IsObject() ? Member(pointer, member.Key) : Element(pointer, position),
                                 depth + 1});
            }
            ++position;
        }
    }
    return std::nullopt;
}

bool HasEntries(const JsonValue& object)
{
    return object.Member("RegistryEntries").IsObject();
}

bool HasAttributeList(const JsonValue& object)
{
    return object.Member("Attributes").IsArray();
}

bool HasAttributeValues(const JsonValue& object)
{
    return object.Member("Attributes").IsObject();
}

const char* KindOfUnusable(const JsonValue& value)
{
    if (value.IsNumber()) {
        return value.Unsigned() ? "a number that does not fit 64 signed bits" : "not a whole number of 64 signed bits";
    }
    return KindOf(value);
}

void ReadValues(const JsonValue& values, ValuesDocument& document, Findings& findings)
{
    for (const JsonMember& member : values) {
        const std::string name(member.Key);
        if (name.empty() || name.front() == '@') {
            continue;
        }
        SettingValue read;
        if (!member.Value.IsNull()) {
            read = Reveal(ReadValue(member.Value));
            if (!read) {
                findings.About(name);
                findings.Add(Severity::Warning, FindingKind::UnusableValue, Member(document.Pointer, name),
                             KindOfUnusable(member.Value), "it counts as no value");
            }
        }
        if (!document.Values.emplace(name, std::move(read)).second) {
            findings.About(name);
            findings.Add(Severity::Warning, FindingKind::RepeatedAttribute, Member(document.Pointer, name),
                         "a name that differs from an earlier one in letter case alone", "the first value counts");
        }
    }
}

} // namespace

RegistryDocument ReadRegistryDocument(std::string_view bytes)
{
    RegistryDocument document;
    Findings findings(document.Findings);
    document.Json = ReadJson(bytes, findings);
    if (document.Json == nullptr) {
        return document;
    }
    const JsonValue root = document.Json->Root();
    if (auto registry = Locate(root, HasEntries)) {
        document.Registry = registry->Object;
        document.Entries = registry->Object.Member("RegistryEntries");
        document.Pointer = Member(registry->Pointer, "RegistryEntries");
        if (!registry->Pointer.empty()) {
            findings.Add(Severity::Note, FindingKind::WrappedDocument, registry->Pointer,
                         "the registry lies inside another document", "the inner one is read");
        }
    } else if (auto lists = Locate(root, HasAttributeList)) {
        document.Registry = lists->Object;
        document.Entries = lists->Object;
        document.Pointer = lists->Pointer;
        findings.Add(Severity::Note, FindingKind::WrappedDocument, lists->Pointer,
                     R"(a list "Attributes" without "RegistryEntries" around it)",
                     "it is read as the registry's entries");
    } else {
        Refuse(findings, R"(no attribute registry: there is no object "RegistryEntries")");
        document.Json = nullptr;
    }
    return document;
}

ValuesDocument ReadValuesDocument(std::string_view bytes)
{
    ValuesDocument document;
    Findings findings(document.Findings, Document::Values);
    const std::shared_ptr<const JsonDocument> json = ReadJson(bytes, findings);
    if (json == nullptr) {
        return document;
    }
    const JsonValue root = json->Root();
    if (Locate(root, HasEntries)) {
        Refuse(findings, "an attribute registry, not the values of a system");
    } else if (const auto resource = Locate(root, HasAttributeValues)) {
        const JsonValue bios = resource->Object;
        document.Pointer = Member(resource->Pointer, "Attributes");
        document.AttributeRegistry = bios.Member("AttributeRegistry").Text();
        document.SettingsObject = bios.Member("@Redfish.Settings").Member("SettingsObject").Member("@odata.id").Text();
        if (!resource->Pointer.empty()) {
            findings.Add(Severity::Note, FindingKind::WrappedDocument, resource->Pointer,
                         "the values lie inside another document", "the inner one is read");
        }
        ReadValues(bios.Member("Attributes"), document, findings);
    } else if (root.IsObject() && !root.Member("Attributes").Exists()) {
        ReadValues(root, document, findings);
    } else {
        Refuse(findings, R"(no values: there is no object "Attributes", nor one of names and values)");
    }
    return document;
}

} // namespace RedfishConfig::Client
