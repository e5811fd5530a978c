#include "Commands.h"

#include "../Answers.h"
#include "../Refusals.h"
#include "../Text.h"
#include "../ValidValues.h"
#include "app/Status.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

constexpr std::size_t labelWidth = 16;
constexpr std::size_t narrowestText = 20;

/** All that is told of a setting. */
struct Facts {
    const Setting* Subject = nullptr;
    Answer Value;
    Answer Default;
    Answer Choices;
    SettingStatus Status;
    std::string DoubtAboutReset; ///< empty when it is certain whether one is needed
};

Facts CollectFacts(System& system, const Setting& setting)
{
    const std::string& name = setting.Name();
    return {&setting,
            system.Ask(Question::Value, name),
            system.Ask(Question::Default, name),
            system.Ask(Question::Choices, name),
            system.StatusOf(setting),
            system.DoubtAboutReset(setting)};
}

/** The menus on the way to the setting, the outermost first. */
std::vector<const Menu*> MenusOf(const Setting& setting)
{
    std::vector<const Menu*> menus;
    for (const Menu* menu = setting.InMenu; menu->Parent != nullptr; menu = menu->Parent) {
        menus.push_back(menu);
    }
    std::reverse(menus.begin(), menus.end());
    return menus;
}

std::string MenuLine(const Setting& setting)
{
    std::string line;
    for (const Menu* menu : MenusOf(setting)) {
        line += (line.empty() ? "" : " > ") + menu->Title();
    }
    return line;
}

/** Writes what is told of a setting: labels, and texts beside them. */
class Sheet {
public:
    explicit Sheet(Output& output) : m_Output(output) {}

    /** A text on one line, as it is. */
    void Line(const std::string& label, const std::string& text)
    {
        m_Output.Answers() << "  " << m_Output.Paint().Aside(Pad(label, labelWidth)) << Escape(text) << '\n';
    }

    void LineIfAny(const std::string& label, const std::string& text)
    {
        if (!text.empty()) {
            Line(label, text);
        }
    }

    /** Prose, broken into lines; nothing when there is none. */
    void Prose(const std::string& label, const std::optional<std::string>& text)
    {
        const std::size_t indentation = 2 + labelWidth;
        const std::size_t width = std::max(m_Output.Width(), indentation + narrowestText) - indentation;
        std::string beside = label;
        for (const std::string& line : text && !text->empty() ? Wrap(*text, width) : std::vector<std::string>{}) {
            const bool isEmpty = line.empty() && beside.empty();
            m_Output.Answers() << (isEmpty ? "" : "  " + m_Output.Paint().Aside(Pad(beside, labelWidth))) << line
                               << '\n';
            beside.clear();
        }
    }

private:
    Output& m_Output;
};

/** Why the library gives no answer. */
void PrintRefusal(const std::string& label, const Answer& answer, Sheet& sheet)
{
    sheet.Prose(label, "- (" + answer.Reason + ")");
}

/** A value with the name that the registry shows for it. */
void PrintValue(const std::string& label, const Answer& answer, Sheet& sheet)
{
    if (!answer.Ok()) {
        PrintRefusal(label, answer, sheet);
        return;
    }
    const auto& choices = answer.Subject->Record().Value;
    const auto choice = choices.find(answer.Text);
    const bool isNamed = choice != choices.end() && !choice->second.empty() && choice->second != answer.Text;
    sheet.Line(label, (answer.Text.empty() ? "\"\"" : answer.Text) + (isNamed ? " (" + choice->second + ")" : ""));
}

void PrintValidValues(const Answer& choices, const SystemOptions& options, Sheet& sheet)
{
    std::string label = "Valid values";
    if (!choices.Ok()) {
        PrintRefusal(label, choices, sheet);
        return;
    }
    const auto& record = choices.Subject->Record();
    for (const std::string& line : DescribeValidValues(record, options)) {
        sheet.Line(label, line);
        label.clear();
    }
    sheet.LineIfAny("Pattern", record.ValueExpression.value_or(""));
}

/** Below what is not certain. */
void PrintDoubt(const std::string& doubt, Sheet& sheet)
{
    if (!doubt.empty()) {
        sheet.Prose("", "(not certain: " + doubt + ")");
    }
}

std::string Describe(const PropertyStatus& status)
{
    const std::string word = status.Certain ? status.Value ? "yes" : "no" : "unknown";
    const bool beginsSo = !status.Certain && status.Reason.compare(0, word.size(), word) == 0;
    return beginsSo ? status.Reason : word + (status.Reason.empty() ? "" : ": " + status.Reason);
}

void PrintFacts(const Facts& facts, const SystemOptions& options, Output& output)
{
    const auto& record = facts.Subject->Record();
    output.Answers() << output.Paint().Heading(Escape(facts.Subject->Name())) << '\n';
    Sheet sheet(output);
    sheet.LineIfAny("Display name", record.DisplayName.value_or(""));
    sheet.Line("Type", std::string(facts.Subject->Type()));
    sheet.LineIfAny("Menu", MenuLine(*facts.Subject));
    PrintValue("Value", facts.Value, sheet);
    PrintValue("Default", facts.Default, sheet);
    PrintDoubt(facts.Default.DoubtAboutDefault, sheet);
    PrintValidValues(facts.Choices, options, sheet);
    PrintDoubt(facts.Choices.DoubtAboutValue, sheet);
    for (const ShownProperty& property : shownProperties) {
        sheet.Prose(property.Label, Describe(facts.Status[property.Row]));
    }
    const bool isCertain = facts.DoubtAboutReset.empty();
    sheet.Prose("Reset needed", isCertain ? record.ResetRequired ? "yes" : "no" : facts.DoubtAboutReset);
    sheet.Prose("Warning", record.WarningText);
    sheet.Prose("Help", record.HelpText);
}

json::value OptionalToJson(const std::optional<std::string>& text)
{
    return text ? json::value(*text) : json::value(nullptr);
}

json::value FactsToJson(const Facts& facts, const System& system)
{
    const auto& record = facts.Subject->Record();
    json::array menus;
    for (const Menu* menu : MenusOf(*facts.Subject)) {
        menus.emplace_back(menu->Title());
    }
    json::object refusals;
    const std::pair<const char*, const Answer*> asked[] = {
        {"value", &facts.Value}, {"default", &facts.Default}, {"choices", &facts.Choices}};
    for (const auto& [key, answer] : asked) {
        if (!answer->Ok()) {
            refusals[key] = answer->Result.ErrorMsg();
        }
    }
    json::object doubts;
    const std::pair<const char*, const std::string&> doubtful[] = {{"default", facts.Default.DoubtAboutDefault},
                                                                   {"choices", facts.Choices.DoubtAboutValue},
                                                                   {"resetRequired", facts.DoubtAboutReset}};
    for (const auto& [key, doubt] : doubtful) {
        if (!doubt.empty()) {
            doubts[key] = doubt;
        }
    }
    return json::object{
        {"name", facts.Subject->Name()},
        {"displayName", OptionalToJson(record.DisplayName)},
        {"type", facts.Subject->Type()},
        {"menu", OptionalToJson(record.MenuPath)},
        {"menuTitles", std::move(menus)},
        {"value", ValueToJson(facts.Value, system.Options())},
        {"default", ValueToJson(facts.Default, system.Options())},
        {"choices", facts.Choices.Ok() ? json::value(facts.Choices.Text) : json::value(nullptr)},
        {"status", ToJson(facts.Status, system.TellsRules())},
        {"resetRequired", record.ResetRequired},
        {"warning", OptionalToJson(record.WarningText)},
        {"help", OptionalToJson(record.HelpText)},
        {"refusals", std::move(refusals)},
        {"uncertain", std::move(doubts)},
    };
}

} // namespace

ExitCode RunShow(System& system, const std::vector<std::string>& names, Output& output)
{
    std::vector<Facts> all;
    std::vector<Answer> unknown;
    for (const std::string& name : names) {
        if (const Setting* setting = system.Find(name)) {
            all.push_back(CollectFacts(system, *setting));
        } else {
            unknown.push_back(system.Ask(Question::Value, name));
        }
    }
    if (output.Json()) {
        json::array settings;
        for (const Facts& facts : all) {
            settings.push_back(FactsToJson(facts, system));
        }
        output.Write(json::object{{"settings", std::move(settings)}, {"refused", RefusalsToJson(unknown, system)}});
    } else {
        for (std::size_t place = 0; place < all.size(); ++place) {
            output.Answers() << (place == 0 ? "" : "\n");
            PrintFacts(all[place], system.Options(), output);
        }
    }
    ComplainOfEach(unknown, system, output);
    return ExitCodeOf(unknown);
}

Runner AttachShow(CLI::App& command)
{
    auto names = std::make_shared<std::vector<std::string>>();
    command.add_option("NAME", *names, "Names of settings, in any letter case")->type_name("")->required();
    return [names](System& system, Output& output) { return RunShow(system, *names, output); };
}

} // namespace RedfishConfigTool
