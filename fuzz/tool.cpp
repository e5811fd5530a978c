// The whole command: its arguments and its input files.
//
// An input is a list of arguments, a line each, then the files registry.json, values.json and other, each after a line
// of five equality signs.

#include "Support.h"

#include "CommandLine.h"

#include <boost/json.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <set>
#include <sstream>

namespace json = boost::json;
using RedfishConfigTool::ExitCode;

namespace {

/** Every password of the system under test, so that it is known when it is printed. */
const std::string password = "OpenSesame4711";

const std::string separator = "=====\n";

std::vector<std::string> Split(const std::string& text, const std::string& between)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t found = 0; (found = text.find(between, begin)) != std::string::npos;
         begin = found + between.size()) {
        pieces.push_back(text.substr(begin, found - begin));
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

std::string Lower(std::string text)
{
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return text;
}

std::string TextOf(const json::value* value)
{
    return value != nullptr && value->is_string() ? std::string(value->get_string()) : "";
}

template <class Visit>
void ForEachObject(json::value* list, Visit visit)
{
    if (list != nullptr && list->is_array()) {
        for (json::value& element : list->get_array()) {
            if (element.is_object()) {
                visit(element.get_object());
            }
        }
    }
}

/** The files of one run. Passwords are planted in them, so that their way can be followed. */
class System {
public:
    explicit System(const std::vector<std::string>& texts) : m_Texts(texts)
    {
        m_Texts.resize(3);
        for (const std::string& text : m_Texts) {
            m_Followed = m_Followed && Lower(text).find(Lower(password)) == std::string::npos;
        }
        PlantInRegistry();
        for (std::size_t values = 1; values < m_Texts.size(); ++values) {
            PlantInValues(m_Texts[values]);
        }
    }

    /** Whether what is printed tells whether a password is. */
    bool Followed() const { return m_Followed && !m_Names.empty(); }

    void Write(const Fuzz::TemporaryFolder& folder) const
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            std::filesystem::remove_all(entry.path());
        }
        folder.Write("registry.json", m_Texts[0]);
        folder.Write("values.json", m_Texts[1]);
        folder.Write("other", m_Texts[2]);
    }

private:
    static std::optional<json::value> Parse(const std::string& text)
    {
        json::error_code error;
        json::value document = json::parse(text, error);
        return error || !document.is_object() ? std::nullopt : std::optional<json::value>(std::move(document));
    }

    void PlantInRegistry()
    {
        std::optional<json::value> document = Parse(m_Texts[0]);
        json::value* entries = document ? document->get_object().if_contains("RegistryEntries") : nullptr;
        if (entries == nullptr || !entries->is_object()) {
            return;
        }
        std::set<std::string> all;
        ForEachObject(entries->get_object().if_contains("Attributes"), [&](json::object& attribute) {
            const std::string name = Lower(TextOf(attribute.if_contains("AttributeName")));
            m_Followed = m_Followed && all.insert(name).second; // else it is not clear what is a password
            if (Lower(TextOf(attribute.if_contains("Type"))) == "password") {
                m_Names.insert(name);
                Plant(attribute, "CurrentValue");
                Plant(attribute, "DefaultValue");
            }
        });
        ForEachObject(entries->get_object().if_contains("Dependencies"), [&](json::object& rule) {
            json::value* dependency = rule.if_contains("Dependency");
            if (dependency != nullptr && dependency->is_object()) {
                ForEachObject(dependency->get_object().if_contains("MapFrom"), [&](json::object& term) {
                    const std::string property = TextOf(term.if_contains("MapFromProperty"));
                    if (IsPassword(TextOf(term.if_contains("MapFromAttribute"))) &&
                        (property == "CurrentValue" || property == "DefaultValue")) {
                        Plant(term, "MapFromValue");
                    }
                });
            }
        });
        m_Texts[0] = json::serialize(*document);
    }

    void PlantInValues(std::string& text)
    {
        std::optional<json::value> document = Parse(text);
        if (!document) {
            return;
        }
        PlantInObject(document->get_object());
        for (const char* key : {"Attributes", "values"}) {
            json::value* values = document->get_object().if_contains(key);
            if (values != nullptr && values->is_object()) {
                PlantInObject(values->get_object());
            }
        }
        text = json::serialize(*document);
    }

    void PlantInObject(json::object& values)
    {
        for (auto& entry : values) {
            if (IsPassword(std::string(entry.key())) && entry.value().is_string()) {
                entry.value() = password;
            }
        }
    }

    static void Plant(json::object& object, const char* key)
    {
        json::value* value = object.if_contains(key);
        if (value != nullptr && value->is_string() && !value->get_string().empty()) {
            *value = password;
        }
    }

    bool IsPassword(const std::string& name) const { return m_Names.count(Lower(name)) != 0; }

    std::vector<std::string> m_Texts; // registry, values, other
    std::set<std::string> m_Names;    // of passwords
    bool m_Followed = true;
};

struct Outcome {
    ExitCode Code;
    std::string Answers;
    std::string Complaints;
};

Outcome RunOnce(const std::vector<std::string>& arguments, const System& system)
{
    static const Fuzz::TemporaryFolder folder;
    static const bool entered = [] {
        std::filesystem::current_path(folder.Path());
        setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
        return std::freopen("/dev/null", "r", stdin) != nullptr; // a password may be read from it
    }();
    Fuzz::Require(entered, "standard input can be closed");
    system.Write(folder);
    RedfishConfigTool::Environment environment;
    environment.Registry = "registry.json";
    environment.Values = "values.json";
    std::ostringstream answers;
    std::ostringstream complaints;
    const ExitCode code = RedfishConfigTool::RunTool(arguments, environment, answers, complaints);
    return {code, answers.str(), complaints.str()};
}

bool IsPrintable(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return character == '\n' || (byte >= 0x20 && byte != 0x7f);
    });
}

bool AsksForHelp(const std::vector<std::string>& arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.rfind("--help", 0) == 0 || argument.rfind("--version", 0) == 0 || argument.rfind("-h", 0) == 0;
    });
}

/** Whether the answer is a registry as a whole, with the passwords that it carries. */
bool IsAdapt(const std::vector<std::string>& arguments)
{
    return std::find(arguments.begin(), arguments.end(), "adapt") != arguments.end();
}

void CheckPrinted(const Outcome& outcome, const System& system, bool isRegistry)
{
    const std::string printed = (isRegistry ? "" : outcome.Answers) + outcome.Complaints;
    const int code = static_cast<int>(outcome.Code);
    Fuzz::Require(0 <= code && code <= 3, "the exit code is a documented one", std::to_string(code));
    Fuzz::Require(IsPrintable(printed), "nothing printed steers a terminal", printed);
    Fuzz::Require(outcome.Code != ExitCode::WrongUsage || outcome.Answers.empty(), "wrong usage answers nothing",
                  printed);
    Fuzz::Require(outcome.Code == ExitCode::Answered || outcome.Code == ExitCode::Refused ||
                      !outcome.Complaints.empty(),
                  "a failure is told", printed);
    Fuzz::Require(!system.Followed() || Lower(printed).find(Lower(password)) == std::string::npos,
                  "no password is printed", printed);
}

std::vector<std::string> ArgumentsFrom(std::string lines)
{
    std::replace(lines.begin(), lines.end(), '/', '_'); // no file outside of the folder
    std::replace(lines.begin(), lines.end(), '\0', '_');
    std::vector<std::string> arguments = Split(lines, "\n");
    arguments.erase(std::remove(arguments.begin(), arguments.end(), ""), arguments.end());
    return arguments;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Fuzz::Bytes bytes(data, size);
    std::vector<std::string> pieces = Split(bytes.Rest(), separator);
    std::vector<std::string> arguments = ArgumentsFrom(pieces.front());
    pieces.erase(pieces.begin());
    const System system(pieces);

    const Outcome outcome = RunOnce(arguments, system);
    CheckPrinted(outcome, system, IsAdapt(arguments));
    const Outcome again = RunOnce(arguments, system);
    Fuzz::RequireSame(again.Answers, outcome.Answers, "the same command gives the same answers");
    Fuzz::RequireSame(again.Complaints, outcome.Complaints, "the same command gives the same complaints");

    arguments.insert(arguments.begin(), "--json");
    const Outcome asJson = RunOnce(arguments, system);
    CheckPrinted(asJson, system, IsAdapt(arguments));
    Fuzz::Require(asJson.Code == outcome.Code, "the exit code does not depend on the form of the answer",
                  asJson.Complaints + "instead of\n" + outcome.Complaints);
    if (!asJson.Answers.empty() && !AsksForHelp(arguments)) {
        json::error_code error;
        json::parse_options options;
        options.max_depth = 256; // of menus
        json::parse(asJson.Answers, error, {}, options);
        Fuzz::Require(!error, "an answer in JSON can be read", asJson.Answers);
    }
    return 0;
}
