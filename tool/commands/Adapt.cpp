#include "Commands.h"

#include "../FindingTexts.h"
#include "../JsonText.h"
#include "../Text.h"
#include "app/FileWriter.h"
#include "app/Secrets.h"
#include "common/Ascii.h"

#include <CLI/App.hpp>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <numeric>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace RedfishConfigTool {

namespace Ascii = RedfishConfig::Ascii;
namespace json = boost::json;
namespace Client = RedfishConfig::Client;

namespace {

using Names = std::set<std::string, std::less<>>;

/** The elements of a list of the registry that are objects. */
std::vector<const json::object*> ObjectsIn(const json::value* list)
{
    std::vector<const json::object*> objects;
    if (list != nullptr && list->is_array()) {
        for (const json::value& item : list->get_array()) {
            if (item.is_object()) {
                objects.push_back(&item.get_object());
            }
        }
    }
    return objects;
}

bool IsOneOf(const Names& names, const json::value* name)
{
    return name != nullptr && name->is_string() && names.count(name->get_string()) > 0;
}

/** Whether an attribute has a value or choices, also under a key in another letter case, which does not count. */
bool HasAnyValue(const json::object& attribute)
{
    return std::any_of(attribute.begin(), attribute.end(), [](const auto& member) {
        return !member.value().is_null() && (Ascii::EqualIgnoringCase(member.key(), "CurrentValue") ||
                                             Ascii::EqualIgnoringCase(member.key(), "DefaultValue") ||
                                             Ascii::EqualIgnoringCase(member.key(), "Value"));
    });
}

/** Whether a password is in an adapted registry: a value of one, or what a rule makes of it or compares it with. */
bool HasPassword(const json::value& adapted)
{
    const json::object& entries = adapted.at("RegistryEntries").as_object();
    Names passwords;
    for (const json::object* attribute : ObjectsIn(entries.if_contains("Attributes"))) {
        const json::value* type = attribute->if_contains("Type");
        if (type == nullptr || !type->is_string() || !IsPasswordType(type->get_string())) {
            continue;
        }
        if (HasAnyValue(*attribute)) {
            return true;
        }
        passwords.emplace(attribute->at("AttributeName").as_string());
    }
    for (const json::object* rule : ObjectsIn(entries.if_contains("Dependencies"))) {
        const json::object& dependency = rule->at("Dependency").as_object();
        const std::string_view property = dependency.at("MapToProperty").as_string();
        const bool isValue = property == "CurrentValue" || property == "DefaultValue";
        if (isValue && IsOneOf(passwords, dependency.if_contains("MapToAttribute"))) {
            return true;
        }
        for (const json::object* term : ObjectsIn(dependency.if_contains("MapFrom"))) {
            if (IsOneOf(passwords, term->if_contains("MapFromAttribute")) && !term->at("MapFromValue").is_null() &&
                !term->at("MapFromValue").is_bool()) {
                return true;
            }
        }
    }
    return false;
}

constexpr std::size_t mostNamed = 8;

/** "A, B and 12 more". */
std::string FirstOf(const std::vector<std::string>& items)
{
    std::string named;
    for (std::size_t place = 0; place < std::min(items.size(), mostNamed); ++place) {
        named += (named.empty() ? "" : ", ") + items[place];
    }
    return items.size() > mostNamed ? named + " and " + std::to_string(items.size() - mostNamed) + " more" : named;
}

/** Complains about what the adapted registry answers by a safeguard instead of its rules. */
void ComplainOfUndecided(const std::string& file, const std::vector<Client::UndecidedFlag>& undecided, Output& output)
{
    std::vector<std::string> names;
    names.reserve(undecided.size());
    for (const Client::UndecidedFlag& flag : undecided) {
        names.push_back(flag.Setting + "." + std::string(Client::Name(flag.Flag)));
    }
    if (!names.empty()) {
        output.Complain(file + ": " + Counted(names.size(), "flag") + " cannot be decided in the library's form and " +
                        (names.size() == 1 ? "is" : "are") + " true in it: " + FirstOf(names));
    }
}

/** Complains about rules that the adapted registry lacks: it allows what they forbid. */
void ComplainOfLeftOut(const std::string& file, const std::vector<std::size_t>& rules, Output& output)
{
    std::vector<std::string> positions;
    positions.reserve(rules.size());
    for (const std::size_t rule : rules) {
        positions.push_back(std::to_string(rule));
    }
    if (!positions.empty()) {
        output.Complain(file + ": " + Counted(positions.size(), "rule") +
                        " for choices, bounds or texts cannot be written in the library's form and " +
                        (positions.size() == 1 ? "is" : "are") + " left out, by position: " + FirstOf(positions));
    }
}

/** Complains about what was found in adapting alone, which lint cannot tell: the first findings of each kind. */
void ComplainOfFindings(const std::string& file, const Client::Adaptation& adapted, std::size_t known, Output& output)
{
    std::vector<Client::Finding> findings(adapted.Findings.begin() + static_cast<std::ptrdiff_t>(known),
                                          adapted.Findings.end());
    const auto rankOf = [](const Client::Finding& finding) { // what is about the whole registry goes first
        return std::tuple(-static_cast<int>(finding.Level), finding.Kind, finding.CountsOthers,
                          !finding.Pointer.empty());
    };
    std::stable_sort(findings.begin(), findings.end(), [&](const Client::Finding& left, const Client::Finding& right) {
        return rankOf(left) < rankOf(right);
    });
    for (auto begin = findings.begin(); begin != findings.end();) {
        const auto end = std::find_if(begin, findings.end(), [&](const Client::Finding& finding) {
            return finding.Level != begin->Level || finding.Kind != begin->Kind;
        });
        const std::string level(Client::Word(begin->Level));
        const std::string kind(Client::Word(begin->Kind));
        for (std::size_t told = 0; begin != end && told < mostNamed && !begin->CountsOthers; ++told, ++begin) {
            std::string line = file;
            line.append(": ").append(level).append(" ").append(kind).append(": ").append(begin->Found);
            output.Complain(line.append("; ").append(begin->Consequence));
        }
        if (begin != end) {
            std::string line = file;
            const std::size_t more =
                std::accumulate(begin, end, std::size_t{0},
                                [](std::size_t sum, const Client::Finding& finding) { return sum + finding.Count; });
            line.append(": ").append(Counted(more, "more " + level));
            output.Complain(line.append(" of the kind ").append(kind));
        }
        begin = end;
    }
}

} // namespace

ExitCode RunAdapt(const Documents& documents, const AdaptOptions& options, Output& output)
{
    const auto everything = [](const std::string& /*name*/) { return true; };
    const std::string& file = documents.Files.Registry;
    const std::string summary = Summary(documents.Files, DoubtsAbout(documents), everything);
    if (!summary.empty()) {
        output.Complain(summary);
    }
    const bool isToStdout = options.File.empty() || options.File == "-";
    const Client::Adaptation adapted = Client::Adapt(documents.Values, documents.Evaluated);
    const json::value registry = ParseJson(file, adapted.RegistryText);
    if (isToStdout && output.Terminal() && HasPassword(registry)) {
        output.Complain("the registry carries a password, which no screen shows: redirect the output");
        return ExitCode::Refused;
    }
    ComplainOfUndecided(file, adapted.Undecided, output);
    ComplainOfLeftOut(file, adapted.LeftOut, output);
    ComplainOfFindings(file, adapted, documents.Model().Findings().size(), output);
    const std::string text = JsonText(registry) + "\n";
    if (isToStdout) {
        output.Answers() << text;
        return ExitCode::Answered;
    }
    try {
        WriteFile(options.File, text, options.Force);
    } catch (const WriteError& error) {
        output.Complain(error.what());
        return ExitCode::Unreadable;
    }
    output.Complain(options.File + ": " + Counted(adapted.PublishedAttribute.size(), "attribute") + " and " +
                    Counted(adapted.PublishedRule.size(), "rule") + " written");
    return ExitCode::Answered;
}

DocumentsRunner AttachAdapt(CLI::App& command)
{
    auto options = std::make_shared<AdaptOptions>();
    command.add_option("-o,--output", options->File, "Write to a file instead of stdout")->type_name("FILE");
    command.add_flag("--force", options->Force, "Replace the file if it is there");
    return [options](const Documents& documents, Output& output) { return RunAdapt(documents, *options, output); };
}

} // namespace RedfishConfigTool
