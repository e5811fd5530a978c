#include "Commands.h"

#include "../Answers.h"
#include "../Properties.h"
#include "../Suggest.h"
#include "../Text.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <set>

namespace RedfishConfigTool {

namespace json = boost::json;

namespace {

const std::vector<std::string> typeNames{"String", "Integer", "Enumeration", "Boolean", "Password"};

/** A longer value pushes what follows it on its line to the right, rather than every line. */
constexpr std::size_t widestColumn = 32;

/** What the list tells of a setting. */
struct Row {
    const Setting* Subject = nullptr;
    Answer Value;
    Answer Default;
    RedfishConfig::SettingStatus Status;

    bool IsChanged() const { return Value.Ok() && Default.Ok() && !Value.Concealed && Value.Text != Default.Text; }
};

bool MenuMatches(const Menu& menu, const std::string& text)
{
    return ContainsIgnoringCase(menu.Name, text) || ContainsIgnoringCase(menu.DisplayName, text);
}

bool StandsInMenu(const Setting& setting, const std::string& text)
{
    for (const Menu* menu = setting.InMenu; menu->Parent != nullptr; menu = menu->Parent) {
        if (MenuMatches(*menu, text)) {
            return true;
        }
    }
    return false;
}

bool IsListed(const Row& row, const ListOptions& options, const SystemOptions& systemOptions)
{
    const bool isProtected = row.Status.Protected.Value && !systemOptions.IncludeProtected;
    return (options.All || !(row.Status.Hidden.Value || isProtected)) &&
           (options.Type.empty() || EqualsIgnoringCase(options.Type, *row.Subject->Record.Type)) &&
           (options.Menu.empty() || StandsInMenu(*row.Subject, options.Menu)) && (!options.Changed || row.IsChanged());
}

std::vector<Row> CollectRows(System& system, const ListOptions& options)
{
    const std::vector<RedfishConfig::SettingStatus> status = system.AllStatus();
    std::vector<Answer> values = system.AskAll(askValue);
    std::vector<Answer> defaults = system.AskAll(askDefault);
    std::vector<Row> rows;
    for (std::size_t place = 0; place < status.size(); ++place) {
        Row row{&system.Settings()[place], std::move(values[place]), std::move(defaults[place]), status[place]};
        if (IsListed(row, options, system.Options())) {
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

std::string ShownValue(const Answer& answer)
{
    if (!answer.Ok()) {
        return "-";
    }
    return answer.Text.empty() ? "\"\"" : Escape(answer.Text);
}

std::string Marks(const RedfishConfig::SettingStatus& status)
{
    std::string marks;
    for (const ShownProperty& property : shownProperties) {
        if (property.Marked && (status.*property.State).Value) {
            marks += (marks.empty() ? "" : ", ") + Fold(property.Label);
        }
    }
    return marks.empty() ? "" : "[" + marks + "]";
}

/** The width of a column, from the texts that are not too wide for it. */
class Column {
public:
    void Add(const std::string& text)
    {
        const std::size_t count = CharacterCount(text);
        m_Width = std::max(m_Width, count <= widestColumn ? count : 0);
        m_IsEmpty = m_IsEmpty && count == 0;
    }
    std::string Fill(const std::string& text) const { return Pad(text, m_Width); }
    /** The blanks that belong behind the text. */
    std::string Gap(const std::string& text) const { return Fill(text).substr(text.size()); }
    bool IsEmpty() const { return m_IsEmpty; }

private:
    std::size_t m_Width = 0;
    bool m_IsEmpty = true;
};

void PrintRows(const std::vector<Row>& rows, Output& output)
{
    struct Cells {
        std::string Name, Value, Default, Marks;
    };
    std::vector<Cells> lines;
    Column names, values, defaults;
    for (const Row& row : rows) {
        const std::string differing = row.IsChanged() ? "default " + ShownValue(row.Default) : "";
        lines.push_back({Escape(row.Subject->Name()), ShownValue(row.Value), differing, Marks(row.Status)});
        names.Add(lines.back().Name);
        values.Add(lines.back().Value);
        defaults.Add(differing);
    }
    const Style& paint = output.Paint();
    for (const Cells& cells : lines) {
        std::string line = names.Fill(cells.Name);
        line += "  " + (cells.Default.empty() ? cells.Value : paint.Changed(cells.Value)) + values.Gap(cells.Value);
        line += defaults.IsEmpty() ? "" : "  " + cells.Default + defaults.Gap(cells.Default);
        line += cells.Marks.empty() ? "" : "  " + paint.Aside(cells.Marks);
        line.erase(line.find_last_not_of(' ') + 1);
        output.Answers() << line << '\n';
    }
}

json::value RowToJson(const Row& row, const SystemOptions& options)
{
    const auto& record = row.Subject->Record;
    return json::object{{"name", row.Subject->Name()},
                        {"type", *record.Type},
                        {"menu", record.MenuPath ? json::value(*record.MenuPath) : json::value(nullptr)},
                        {"value", ValueToJson(row.Value, record.CurrentValue, options)},
                        {"default", ValueToJson(row.Default, record.DefaultValue, options)},
                        {"status", StatusToJson(row.Status)}};
}

/** Complains when no menu has the text in its name. */
bool CheckMenu(const System& system, const std::string& text, Output& output)
{
    std::set<std::string> names;
    bool isKnown = text.empty();
    for (const Setting& setting : system.Settings()) {
        isKnown = isKnown || StandsInMenu(setting, text);
        for (const Menu* menu = setting.InMenu; menu->Parent != nullptr; menu = menu->Parent) {
            names.insert(menu->Title());
        }
    }
    if (!isKnown) {
        const std::vector<std::string> nearest = NearestNames(text, {names.begin(), names.end()});
        output.Complain("Unable to find a menu with " + text + " in its name." + DidYouMean(nearest));
    }
    return isKnown;
}

} // namespace

ExitCode RunList(System& system, const ListOptions& options, Output& output)
{
    const bool isKnownMenu = CheckMenu(system, options.Menu, output);
    const std::vector<Row> rows = CollectRows(system, options);
    if (output.Json()) {
        json::array settings;
        for (const Row& row : rows) {
            settings.push_back(RowToJson(row, system.Options()));
        }
        output.Write(json::object{{"settings", std::move(settings)}});
    } else {
        PrintRows(rows, output);
    }
    return isKnownMenu ? ExitCode::Answered : ExitCode::Refused;
}

Runner AttachList(CLI::App& command)
{
    auto options = std::make_shared<ListOptions>();
    command.add_option("--menu", options->Menu, "Only settings in menus with this text in their names")
        ->type_name("TEXT");
    command.add_option("--type", options->Type, "Only settings of this type")->type_name("TYPE");
    command.add_flag("--changed", options->Changed, "Only settings whose value differs from the default");
    command.add_flag("--all", options->All, "Hidden and protected settings too");
    command.final_callback([options] {
        const auto named = [&](const std::string& name) { return EqualsIgnoringCase(name, options->Type); };
        if (!options->Type.empty() && std::none_of(typeNames.begin(), typeNames.end(), named)) {
            throw UsageError("unknown type " + options->Type + ": give " + JoinWithOr(typeNames));
        }
    });
    return [options](System& system, Output& output) { return RunList(system, *options, output); };
}

} // namespace RedfishConfigTool
