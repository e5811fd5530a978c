#include "Commands.h"

#include "../Answers.h"
#include "../Text.h"
#include "app/Status.h"
#include "app/Suggest.h"
#include "common/Ascii.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <set>

namespace RedfishConfigTool {

namespace Ascii = RedfishConfig::Ascii;
namespace json = boost::json;

namespace {

const std::vector<std::string> typeNames{"String", "Integer", "Enumeration", "Boolean", "Password"};

/** A longer value pushes what follows it on its line to the right, rather than every line. */
constexpr std::size_t widestColumn = 32;

/** What the list says of a setting. */
struct Row {
    const Setting& Subject;
    const Answer& Value;
    const Answer& Default;
    const SettingStatus& Status;

    bool IsChanged() const { return Value.Ok() && Default.Ok() && !Value.Concealed && Value.Text != Default.Text; }
};

bool MenuMatches(const Menu& menu, const std::string& text)
{
    return Ascii::ContainsIgnoringCase(menu.Name, text) || Ascii::ContainsIgnoringCase(menu.DisplayName, text);
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
    const bool isProtected = row.Status.Is(StatusRow::Protected) && !systemOptions.IncludeProtected;
    return (options.All || !(row.Status.IsHiddenByRule() || isProtected)) &&
           (options.Type.empty() || Ascii::EqualIgnoringCase(options.Type, row.Subject.Type())) &&
           (options.Menu.empty() || StandsInMenu(row.Subject, options.Menu)) && (!options.Changed || row.IsChanged());
}

/** What is known of all settings, in their order, and the rows of those that are listed. */
struct Listing {
    std::vector<SettingStatus> Status;
    std::vector<Answer> Values;
    std::vector<Answer> Defaults;
    std::vector<Row> Rows;
};

Listing Collect(System& system, const ListOptions& options, Detail detail)
{
    Listing listing;
    listing.Status = system.AllStatus(detail);
    listing.Values = system.AskAll(Question::Value, Detail::Verdicts);
    listing.Defaults = system.AskAll(Question::Default, Detail::Verdicts);
    for (std::size_t place = 0; place < system.Settings().size(); ++place) {
        const Row row{system.Settings()[place], listing.Values[place], listing.Defaults[place], listing.Status[place]};
        if (IsListed(row, options, system.Options())) {
            listing.Rows.push_back(row);
        }
    }
    return listing;
}

std::string ShownValue(const Answer& answer)
{
    if (!answer.Ok()) {
        return "-";
    }
    return answer.Text.empty() ? "\"\"" : Escape(answer.Text);
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
    /** The blanks that belong behind the text. */
    std::string Gap(const std::string& text) const
    {
        const std::size_t count = CharacterCount(text);
        return std::string(m_Width > count ? m_Width - count : 0, ' ');
    }
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
    lines.reserve(rows.size());
    Column names, values, defaults;
    for (const Row& row : rows) {
        const std::string differing = row.IsChanged() ? "default " + ShownValue(row.Default) : "";
        lines.push_back({Escape(row.Subject.Name()), ShownValue(row.Value), differing, Marks(row.Status)});
        names.Add(lines.back().Name);
        values.Add(lines.back().Value);
        defaults.Add(differing);
    }
    const Style& paint = output.Paint();
    for (const Cells& cells : lines) {
        std::string line = cells.Name + names.Gap(cells.Name);
        line += "  " + (cells.Default.empty() ? cells.Value : paint.Changed(cells.Value)) + values.Gap(cells.Value);
        line += defaults.IsEmpty() ? "" : "  " + cells.Default + defaults.Gap(cells.Default);
        line += cells.Marks.empty() ? "" : "  " + paint.Aside(cells.Marks);
        line.erase(line.find_last_not_of(' ') + 1);
        output.Answers() << line << '\n';
    }
}

json::value RowToJson(const Row& row, const System& system)
{
    const std::optional<std::string>& menu = row.Subject.MenuPath();
    return json::object{{"name", row.Subject.Name()},
                        {"type", row.Subject.Type()},
                        {"menu", menu ? json::value(*menu) : json::value(nullptr)},
                        {"value", ValueToJson(row.Value, system.Options())},
                        {"default", ValueToJson(row.Default, system.Options())},
                        {"status", ToJson(row.Status, system.TellsRules())}};
}

/** Complains when no menu has the text in its name. */
bool CheckMenu(const System& system, const std::string& text, Output& output)
{
    if (text.empty()) {
        return true;
    }
    std::set<std::string> names;
    bool isKnown = false;
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
    const Listing listing = Collect(system, options, output.Json() ? Detail::Reasons : Detail::Verdicts);
    if (output.Json()) {
        json::array settings;
        for (const Row& row : listing.Rows) {
            settings.push_back(RowToJson(row, system));
        }
        output.Write(json::object{{"settings", std::move(settings)}});
    } else {
        PrintRows(listing.Rows, output);
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
        const auto named = [&](const std::string& name) { return Ascii::EqualIgnoringCase(name, options->Type); };
        if (!options->Type.empty() && std::none_of(typeNames.begin(), typeNames.end(), named)) {
            throw UsageError("unknown type " + options->Type + ": give " + JoinWithOr(typeNames));
        }
    });
    return [options](System& system, Output& output) { return RunList(system, *options, output); };
}

} // namespace RedfishConfigTool
