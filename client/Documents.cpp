#include <RedfishConfig/Client/Documents.h>

#include "Inflate.h"
#include "Limits.h"
#include "Place.h"
#include "RepeatedKeys.h"
#include "Value.h"

#include <boost/json/parser.hpp>

#include <deque>
#include <optional>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t\r\n";

class Reader {
public:
    Reader(Document document, std::vector<Finding>& findings) : m_Document(document), m_Findings(findings) {}

    void Find(Severity level, FindingKind kind, std::string place, std::string found, std::string done)
    {
        m_Findings.push_back({level, kind, m_Document, std::move(place), std::move(found), std::move(done)});
    }

    void Refuse(std::string found)
    {
        Find(Severity::Error, FindingKind::UnreadableDocument, "", std::move(found), "the document is not used");
    }

    /** The JSON value that the bytes hold, compressed or not. */
    std::optional<json::value> Read(std::string_view bytes)
    {
        std::string inflated;
        if (IsGzip(bytes)) {
            std::string defect = Inflate(bytes, inflated);
            if (!defect.empty()) {
                Refuse(std::move(defect));
                return std::nullopt;
            }
            bytes = inflated;
        }
        if (bytes.substr(0, byteOrderMark.size()) == byteOrderMark) {
            bytes.remove_prefix(byteOrderMark.size());
        }
        if (bytes.size() > Limits::documentBytes) {
            Refuse("the text is longer than " + std::to_string(Limits::documentBytes) + " bytes");
            return std::nullopt;
        }
        return Parse(bytes);
    }

private:
    std::optional<json::value> Parse(std::string_view text)
    {
        if (text.find_first_not_of(blanks) == std::string_view::npos) {
            Refuse("the document is empty");
            return std::nullopt;
        }
        json::parse_options options;
        options.max_depth = Limits::documentDepth;
        json::parser parser({}, options);
        json::error_code error;
        const std::size_t read = parser.write_some(text.data(), text.size(), error);
        if (!error && text.find_first_not_of(blanks, read) != std::string_view::npos) {
            error = json::error::extra_data;
        }
        if (error) {
            Refuse("not JSON, at byte " + std::to_string(read) + ": " + error.message());
            return std::nullopt;
        }
        TellRepeatedKeys(text.substr(0, read));
        return parser.release();
    }

    void TellRepeatedKeys(std::string_view text)
    {
        const RepeatedKeys repeated = FindRepeatedKeys(text);
        for (const std::string& place : repeated.Places) {
            Find(Severity::Warning, FindingKind::RepeatedKey, place, "a key that its object has already",
                 "the last one counts");
        }
        if (repeated.Count > repeated.Places.size()) {
            Find(Severity::Warning, FindingKind::RepeatedKey, "",
                 std::to_string(repeated.Count - repeated.Places.size()) + " more keys that their objects have already",
                 "of each the last one counts");
        }
    }

    Document m_Document;
    std::vector<Finding>& m_Findings;
};

struct Located {
    const json::object* object;
    std::string place;
};

/** The object nearest to the root of which the predicate holds. */
template <class Predicate>
std::optional<Located> Locate(const json::value& root, Predicate isWanted)
{
    struct Step {
        const json::value* value;
        std::string place;
        std::size_t depth;
    };
    std::deque<Step> steps{{&root, "", 0}};
    std::size_t visited = 0;
    const auto follow = [&](const json::value& value, std::string place, std::size_t depth) {
        if (++visited <= Limits::wrapperMembers && value.is_structured()) {
            steps.push_back({&value, std::move(place), depth});
        }
    };
    for (; !steps.empty(); steps.pop_front()) {
        const auto& [value, place, depth] = steps.front();
        if (const json::object* object = value->if_object()) {
            if (isWanted(*object)) {
                return Located{object, place};
            }
            for (const auto& [key, member] : *object) {
                if (depth == Limits::wrapperDepth || visited > Limits::wrapperMembers) {
                    break;
                }
                follow(member, Member(place, key), depth + 1);
            }
        } else if (const json::array* list = value->if_array()) {
            for (std::size_t position = 0; position < list->size(); ++position) {
                if (depth == Limits::wrapperDepth || visited > Limits::wrapperMembers) {
                    break;
                }
                follow((*list)[position], Element(place, position), depth + 1);
            }
        }
    }
    return std::nullopt;
}

template <class Kind>
bool HasMember(const json::object& object, json::string_view key, Kind isKind)
{
    const json::value* member = object.if_contains(key);
    return member != nullptr && isKind(*member);
}

bool HasEntries(const json::object& object)
{
    return HasMember(object, "RegistryEntries", [](const json::value& value) { return value.is_object(); });
}

bool HasAttributeList(const json::object& object)
{
    return HasMember(object, "Attributes", [](const json::value& value) { return value.is_array(); });
}

bool HasAttributeValues(const json::object& object)
{
    return HasMember(object, "Attributes", [](const json::value& value) { return value.is_object(); });
}

/** Gives lists of attributes and rules that stand alone the object that belongs around them. */
json::object WithEntriesAround(const json::object& lists)
{
    json::object registry;
    json::object entries;
    for (const auto& [key, member] : lists) {
        const bool isEntry = key == "Attributes" || key == "Dependencies" || key == "Menus";
        (isEntry ? entries : registry)[key] = member;
    }
    registry["RegistryEntries"] = std::move(entries);
    return registry;
}

std::string TextOf(const json::object& object, json::string_view key)
{
    const json::value* member = object.if_contains(key);
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::string(*text) : std::string();
}

/** Where a Bios resource says that changes of its values are to be sent. */
std::string SettingsObjectOf(const json::object& resource)
{
    std::string target;
    const json::value* settings = resource.if_contains("@Redfish.Settings");
    if (settings == nullptr || !settings->is_object()) {
        return target;
    }
    const json::value* object = settings->get_object().if_contains("SettingsObject");
    return object != nullptr && object->is_object() ? TextOf(object->get_object(), "@odata.id") : target;
}

const char* KindOfUnusable(const json::value& value)
{
    if (value.is_number()) {
        return value.is_uint64() ? "a number that does not fit 64 signed bits" : "not a whole number of 64 signed bits";
    }
    return KindOf(value);
}

void ReadValues(const json::object& values, ValuesDocument& document, Reader& reader)
{
    for (const auto& [key, value] : values) {
        const std::string name(key);
        if (name.empty() || name.front() == '@') {
            continue;
        }
        SettingValue read;
        if (!value.is_null()) {
            read = ReadValue(value);
            if (!read) {
                reader.Find(Severity::Warning, FindingKind::UnusableValue, Member(document.Place, name),
                            KindOfUnusable(value), "the value is left out");
                continue;
            }
        }
        if (!document.Values.emplace(name, std::move(read)).second) {
            reader.Find(Severity::Warning, FindingKind::RepeatedAttribute, Member(document.Place, name),
                        "a name that differs from an earlier one in letter case alone", "the first value counts");
        }
    }
}

} // namespace

RegistryDocument ReadRegistryDocument(std::string_view bytes)
{
    RegistryDocument document;
    Reader reader(Document::Registry, document.Findings);
    const std::optional<json::value> root = reader.Read(bytes);
    if (!root) {
        return document;
    }
    if (const auto registry = Locate(*root, HasEntries)) {
        document.Registry = *registry->object;
        document.Place = Member(registry->place, "RegistryEntries");
        if (!registry->place.empty()) {
            reader.Find(Severity::Note, FindingKind::WrappedDocument, registry->place,
                        "the registry lies inside another document", "the inner one is read");
        }
    } else if (const auto lists = Locate(*root, HasAttributeList)) {
        document.Registry = WithEntriesAround(*lists->object);
        document.Place = lists->place;
        reader.Find(Severity::Note, FindingKind::WrappedDocument, lists->place,
                    R"(a list "Attributes" without "RegistryEntries" around it)",
                    "it is read as the registry's entries");
    } else {
        reader.Refuse(R"(no attribute registry: there is no object "RegistryEntries")");
    }
    return document;
}

ValuesDocument ReadValuesDocument(std::string_view bytes)
{
    ValuesDocument document;
    Reader reader(Document::Values, document.Findings);
    const std::optional<json::value> root = reader.Read(bytes);
    if (!root) {
        return document;
    }
    if (Locate(*root, HasEntries)) {
        reader.Refuse("an attribute registry, not the values of a system");
        return document;
    }
    if (const auto resource = Locate(*root, HasAttributeValues)) {
        document.Place = Member(resource->place, "Attributes");
        document.AttributeRegistry = TextOf(*resource->object, "AttributeRegistry");
        document.SettingsObject = SettingsObjectOf(*resource->object);
        if (!resource->place.empty()) {
            reader.Find(Severity::Note, FindingKind::WrappedDocument, resource->place,
                        "the values lie inside another document", "the inner one is read");
        }
        ReadValues(resource->object->at("Attributes").get_object(), document, reader);
    } else if (const json::object* bare = root->if_object(); bare != nullptr && !bare->contains("Attributes")) {
        ReadValues(*bare, document, reader);
    } else {
        reader.Refuse(R"(no values: there is no object "Attributes", nor one of names and values)");
    }
    return document;
}

} // namespace RedfishConfig::Client
