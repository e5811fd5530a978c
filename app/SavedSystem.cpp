#include "SavedSystem.h"

#include "Input.h"
#include "TypedValue.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace RedfishConfig::App {

namespace json = boost::json;

namespace {

constexpr const char* formatName = "redfishconfig-saved-system";

std::time_t Now()
{
    const char* const fixed = std::getenv("SOURCE_DATE_EPOCH");
    char* end = nullptr;
    const std::time_t time = fixed != nullptr ? static_cast<std::time_t>(std::strtoll(fixed, &end, 10)) : 0;
    return end != nullptr && end != fixed && *end == '\0' ? time : std::time(nullptr);
}

bool IsSavedSystem(const json::object& root)
{
    const json::value* format = root.if_contains("format");
    return format != nullptr && *format == formatName && root.contains("version");
}

const json::object& ObjectOf(const std::string& file, const json::object& root, const char* key)
{
    const json::value* member = root.if_contains(key);
    if (member == nullptr || !member->is_object()) {
        throw InputError(file + ": a saved system without an object \"" + key + "\"");
    }
    return member->get_object();
}

void CheckVersion(const std::string& file, const json::value& version)
{
    if (!version.is_int64() || version.get_int64() < 1) {
        throw InputError(file + ": a saved system of no version that is known");
    }
    if (version.get_int64() > savedSystemVersion) {
        throw InputError(file + ": a saved system of version " + std::to_string(version.get_int64()) +
                         "; this program knows version " + std::to_string(savedSystemVersion));
    }
}

RedfishConfig::filterAction ActionOf(const System& system, bool withUnique)
{
    if (system.Options().IncludeProtected) {
        return RedfishConfig::FILTER_SAVE;
    }
    return withUnique ? RedfishConfig::FILTER_SAVE_FULL : RedfishConfig::FILTER_SAVE_PORTABLE;
}

/** What the library does not leave out of itself. Empty for a setting that is to be saved. */
std::string WhyUnwanted(const Setting& setting, const SettingStatus& status, bool withUnique)
{
    if (setting.IsPassword()) {
        return "password";
    }
    if (status.Is(StatusRow::ReadOnly)) {
        return "read only";
    }
    return status.Is(StatusRow::SystemUnique) && !withUnique ? "system unique" : "";
}

/** Why the library gives no value for saving. */
std::string WhyWithoutValue(const Setting& setting, const SettingStatus& status)
{
    const std::pair<bool, const char*> reasons[] = {
        {!setting.Record().CurrentValue, "without a value"},
        {status.Is(StatusRow::Protected), "protected"},
        {status.Is(StatusRow::Hidden), "hidden"},
        {status.Is(StatusRow::GrayOut), "grayed out"},
        {status.Is(StatusRow::Immutable), "immutable"},
    };
    for (const auto& [holds, word] : reasons) {
        if (holds) {
            return word;
        }
    }
    return "refused";
}

} // namespace

ValuesToSave CollectValues(System& system, bool withUnique)
{
    ValuesToSave saved;
    const std::map<std::string, std::string> texts = system.SaveValues(ActionOf(system, withUnique));
    const std::vector<SettingStatus> status = system.AllStatus(Detail::Verdicts);
    for (std::size_t place = 0; place < status.size(); ++place) {
        const Setting& setting = system.Settings()[place];
        const auto text = texts.find(setting.Name());
        std::string reason = WhyUnwanted(setting, status[place], withUnique);
        if (reason.empty() && text == texts.end()) {
            reason = WhyWithoutValue(setting, status[place]);
        }
        std::optional<json::value> value = reason.empty() ? TypedValue(setting, text->second) : std::nullopt;
        if (value) {
            saved.Values[setting.Name()] = std::move(*value);
        } else {
            saved.Left.push_back({setting.Name(), reason.empty() ? "not of its type" : reason});
        }
    }
    return saved;
}

std::string TimeInUtc()
{
    const std::time_t now = Now();
    std::tm parts{};
    gmtime_r(&now, &parts);
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return {text.data(), length};
}

json::object MakeSavedSystem(const System& system, json::object values, const std::vector<LeftOut>& leftOut)
{
    json::object counts;
    for (const LeftOut& left : leftOut) {
        json::value& count = counts[left.Reason];
        count = count.is_int64() ? count.get_int64() + 1 : 1;
    }
    return {{"format", formatName},   {"version", savedSystemVersion}, {"registry", system.Identity()},
            {"savedAt", TimeInUtc()}, {"values", std::move(values)},   {"leftOut", std::move(counts)}};
}

SavedValues ReadSavedValues(const std::string& file)
{
    const json::value document = ParseJson(file, ReadText(file));
    const json::object* root = document.if_object();
    if (root == nullptr) {
        throw InputError(file + ": not a JSON object");
    }
    if (root->contains("RegistryEntries")) {
        throw InputError(file + ": an attribute registry, not the values of a system");
    }
    if (IsSavedSystem(*root)) {
        CheckVersion(file, root->at("version"));
        return {ToAssignments(file, ObjectOf(file, *root, "values")), ObjectOf(file, *root, "registry")};
    }
    const json::value* attributes = root->if_contains("Attributes");
    if (attributes != nullptr && !attributes->is_object()) {
        throw InputError(file + R"(: its "Attributes" is not an object)");
    }
    return {ToAssignments(file, attributes != nullptr ? attributes->get_object() : *root), {}};
}

} // namespace RedfishConfig::App
