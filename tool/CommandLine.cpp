#include "CommandLine.h"

#include "FindingTexts.h"
#include "Output.h"
#include "Text.h"
#include "Trace.h"
#include "app/CoreSystem.h"
#include "app/Documents.h"
#include "app/Input.h"
#include "app/ModelSystem.h"
#include "app/Suggest.h"
#include "commands/Commands.h"
#include "common/Texts.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

namespace RedfishConfigTool {

namespace {

const std::string programName = "redfishconfig";
const std::string sharedGroup = "Options of every command";

constexpr const char* description = "Shows the firmware settings of a server from its Redfish attribute registry,\n"
                                    "and what the registry's rules make of them, and prepares changes.";

constexpr const char* generalExamples =
    "Examples:\n"
    "  redfishconfig --registry registry.json --values bios.json list\n"
    "  redfishconfig --registry registry.json show BootMode\n"
    "  redfishconfig --registry registry.json set BootMode=Legacy\n"
    "  export REDFISHCONFIG_REGISTRY=registry.json REDFISHCONFIG_VALUES=bios.json\n"
    "  redfishconfig list --changed\n"
    "\n"
    "Exit codes: 0 all answered, 1 something was refused or not found, 2 wrong usage,\n"
    "            3 an input could not be read or the answer not be written.\n"
    "Help on a command: redfishconfig COMMAND --help";

/** What the command line asks for. */
struct Request {
    DocumentFiles Files;
    SystemOptions Options;
    bool Json = false;
    bool AsPublished = false;
    unsigned TraceLevel = 0;
    std::vector<std::string> Arguments; ///< all of them, as they were given
    std::variant<Runner, DocumentsRunner> Run;
};

/** Shows the shared options in the help of each command too, before its examples. */
class HelpFormatter : public CLI::Formatter {
public:
    /** One empty line between two sections, no more and no less. */
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override
    {
        return RedfishConfig::Texts::ReplaceAll(CLI::Formatter::make_help(app, std::move(name), mode), "\n\n\n",
                                                "\n\n");
    }

    std::string make_usage(const CLI::App* app, std::string name) const override
    {
        return "\n" + CLI::Formatter::make_usage(app, std::move(name));
    }

    std::string make_footer(const CLI::App* app) const override
    {
        std::string footer = CLI::Formatter::make_footer(app);
        const CLI::App* parent = app->get_parent();
        if (parent == nullptr) {
            return footer;
        }
        const auto isShared = [](const CLI::Option* option) { return option->get_group() == sharedGroup; };
        return make_group(sharedGroup, false, parent->get_options(isShared)).substr(1) + "\n" + footer;
    }
};

std::string Indented(const std::string& lines)
{
    std::string text = "  ";
    for (const char character : lines) {
        text += character;
        text += character == '\n' ? "  " : "";
    }
    return text;
}

void AddSharedOptions(CLI::App& app, Request& request)
{
    app.add_option("--registry", request.Files.Registry,
                   "The attribute registry, a JSON file (or REDFISHCONFIG_REGISTRY)")
        ->type_name("FILE");
    app.add_option("--values", request.Files.Values,
                   "The current values, a Bios resource or an object of names and\n"
                   "values (or REDFISHCONFIG_VALUES); else those of the registry")
        ->type_name("FILE");
    app.add_option("--registry-values", request.Files.RegistryValues,
                   "The values that the registry came with, where they are others: they\n"
                   "tell which of its flags are snapshots of what rules gave")
        ->type_name("FILE");
    app.add_flag("--hex", request.Options.Hex, "Show integers as hexadecimal numbers");
    app.add_flag("--include-protected", request.Options.IncludeProtected,
                 "Answer for settings too that the registry itself hides");
    app.add_flag("--json", request.Json, "Answer in JSON");
    app.add_flag("--as-published", request.AsPublished,
                 "Take the documents as they are, with rules in the library's\n"
                 "own form");
    app.add_option("--trace", request.TraceLevel, "Write the library's log to stderr, up to level 1 to 4")
        ->type_name("LEVEL")
        ->check(CLI::Range(0U, 4U).description(""));
    for (CLI::Option* option : app.get_options()) {
        option->group(sharedGroup);
    }
}

void AddCommands(CLI::App& app, Request& request)
{
    for (const Command& command : commands) {
        CLI::App* added = app.add_subcommand(command.Name, command.Help);
        added->group("Commands");
        added->footer("Examples:\n" + Indented(command.Examples));
        const auto attach = [&](auto function) {
            added->parse_complete_callback([&request, run = function(*added)] { request.Run = run; });
        };
        std::visit(attach, command.Attach);
    }
    app.require_subcommand(1);
}

/** The first argument that is no option, which the parser did not know as a command. */
std::string MisspeltCommand(const CLI::App& app)
{
    if (app.get_subcommands().empty()) {
        for (const std::string& argument : app.remaining()) {
            if (!argument.empty() && argument.front() != '-') {
                return argument;
            }
        }
    }
    return "";
}

/** A complaint without the values of NAME=VALUE arguments, each of which may be a password. */
std::string WithoutValues(std::string complaint, const std::vector<std::string>& arguments)
{
    std::vector<std::string> withValues;
    for (const std::string& argument : arguments) {
        if (argument.find('=') < argument.size() - 1) {
            withValues.push_back(argument);
            if (argument.front() == '-') { // of --option=NAME=VALUE a complaint may have the last part alone
                withValues.push_back(argument.substr(argument.find('=') + 1));
            }
        }
    }
    std::sort(withValues.begin(), withValues.end(), [](const std::string& left, const std::string& right) {
        return left.size() > right.size(); // one may be a part of another
    });
    for (const std::string& argument : withValues) {
        complaint = RedfishConfig::Texts::ReplaceAll(std::move(complaint), argument, WithoutValue(argument));
    }
    return complaint;
}

std::string UsageComplaint(const CLI::App& app, const CLI::ParseError& error)
{
    const std::string command = MisspeltCommand(app);
    if (command.empty()) {
        return app.get_subcommands().empty() && error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError)
                   ? "give a command"
                   : error.what();
    }
    if (command.find('=') != std::string::npos) {
        return "give a command before " + command + ", such as set";
    }
    std::vector<std::string> names;
    std::transform(commands.begin(), commands.end(), std::back_inserter(names),
                   [](const Command& known) { return known.Name; });
    return "there is no command " + command + "." + DidYouMean(NearestNames(command, names));
}

void Complain(std::ostream& err, const std::string& text)
{
    err << programName << ": " << Escape(text) << '\n';
}

ExitCode WrongUsage(std::ostream& err, const std::string& text)
{
    Complain(err, text);
    err << "Try " << programName << " --help.\n";
    return ExitCode::WrongUsage;
}

/** Fills @p request. @return an exit code when there is nothing left to do. */
std::optional<ExitCode> Parse(std::vector<std::string> arguments, Request& request, std::ostream& out,
                              std::ostream& err)
{
    CLI::App app(description, programName);
    app.formatter(std::make_shared<HelpFormatter>());
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Positionals", "Arguments");
    app.set_help_flag();
    AddSharedOptions(app, request);
    app.set_help_flag("--help,-h", "Show this help");
    app.set_version_flag("--version", programName + " " + REDFISHCONFIG_VERSION, "Show the version");
    app.footer(generalExamples);
    app.fallthrough(); // before the commands, which take it over: the shared options may stand behind a command
    AddCommands(app, request);
    const std::vector<std::string> given = arguments;
    try {
        std::reverse(arguments.begin(), arguments.end()); // as the parser wants them
        app.parse(std::move(arguments));
    } catch (const CLI::Success& asked) { // help or version
        app.exit(asked, out, err);
        return ExitCode::Answered;
    } catch (const CLI::ParseError& error) {
        return WrongUsage(err, WithoutValues(UsageComplaint(app, error), given));
    } catch (const UsageError& error) {
        return WrongUsage(err, WithoutValues(error.what(), given));
    }
    if (request.AsPublished && std::holds_alternative<DocumentsRunner>(request.Run)) {
        return WrongUsage(err, "--as-published does not go with this command");
    }
    if (request.AsPublished && !request.Files.RegistryValues.empty()) {
        return WrongUsage(err, "--as-published: flags are taken as they are, --registry-values does not go with it");
    }
    return std::nullopt;
}

/** Values that name no setting at all belong to another system. */
void WarnOfForeignValues(const std::string& file, const RedfishConfig::SettingValueMap& values, const System& system,
                         Output& output)
{
    const bool anyKnown = std::any_of(values.begin(), values.end(),
                                      [&](const auto& entry) { return system.Find(entry.first) != nullptr; });
    if (!values.empty() && !anyKnown) {
        output.Complain(file + ": none of the names in it is a setting of the registry");
    }
}

void ComplainOfEach(const std::vector<std::string>& remarks, Output& output)
{
    for (const std::string& remark : remarks) {
        output.Complain(remark);
    }
}

/** Keeps NAME=VALUE out of the log where it is looked up as a name: the value may be a password. */
void KeepAssignments(const Request& request, Secrets& secrets)
{
    for (const std::string& argument : request.Arguments) {
        if (argument.find('=') < argument.size() - 1) {
            secrets.Add(argument);
        }
    }
}

ExitCode RunAsPublished(const Request& request, Output& output, std::ostream& err)
{
    RegistryInput registry = ReadRegistry(request.Files.Registry);
    const ValuesInput values = request.Files.Values.empty() ? ValuesInput{} : ReadValues(request.Files.Values);
    ComplainOfEach(values.Remarks, output);
    Secrets secrets(registry.Document, values.Values);
    KeepAssignments(request, secrets);
    const Trace trace(request.TraceLevel, err, secrets);
    CoreSystem system(std::move(registry), values.Values, request.Options, secrets);
    WarnOfForeignValues(request.Files.Values, values.Values, system, output);
    return std::get<Runner>(request.Run)(system, output);
}

ExitCode RunOnModel(const Request& request, Output& output, std::ostream& err)
{
    const Documents documents = ReadDocuments(request.Files);
    if (!documents.DefectOfRegistryValues.empty()) {
        output.Complain(request.Files.RegistryValues + ": " + documents.DefectOfRegistryValues);
    }
    if (const auto* run = std::get_if<DocumentsRunner>(&request.Run)) {
        return (*run)(documents, output);
    }
    ComplainOfEach(RemarksOn(documents), output);
    Secrets secrets;
    KeepAssignments(request, secrets);
    const Trace trace(request.TraceLevel, err, secrets);
    ModelSystem system(documents, request.Options, secrets);
    WarnOfForeignValues(request.Files.Values, documents.Published.Values, system, output);
    const ExitCode code = std::get<Runner>(request.Run)(system, output);
    const std::string summary = Summary(request.Files, DoubtsAbout(documents),
                                        [&system](const std::string& name) { return system.IsAsked(name); });
    if (!summary.empty()) {
        output.Complain(summary);
    }
    return code;
}

ExitCode Run(const Request& request, const Presentation& presentation, std::ostream& out, std::ostream& err)
{
    Output output(out, presentation);
    ExitCode code = ExitCode::Answered;
    try {
        code = request.AsPublished ? RunAsPublished(request, output, err) : RunOnModel(request, output, err);
    } catch (const InputError& error) {
        output.Complain(error.what());
        code = ExitCode::Unreadable;
    }
    out.flush();
    for (const std::string& complaint : output.Complaints()) {
        Complain(err, complaint);
    }
    return code;
}

} // namespace

ExitCode RunTool(const std::vector<std::string>& arguments, const Environment& environment, std::ostream& out,
                 std::ostream& err)
{
    Request request;
    request.Files.Registry = environment.Registry;
    request.Files.Values = environment.Values;
    request.Arguments = arguments;
    if (const std::optional<ExitCode> done = Parse(arguments, request, out, err)) {
        out.flush();
        return *done;
    }
    if (request.Files.Registry.empty()) {
        return WrongUsage(err, "no registry: give --registry FILE or set REDFISHCONFIG_REGISTRY");
    }
    const Presentation presentation{request.Json, environment.Colour, environment.Width, environment.Terminal};
    return Run(request, presentation, out, err);
}

} // namespace RedfishConfigTool
