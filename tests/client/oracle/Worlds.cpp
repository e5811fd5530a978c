#include "Worlds.h"

#include "Oracle.h"

// Random registries. What one world has, another lacks: each draws first how its maker publishes.

namespace Oracle {

namespace {

enum class Style { OnEarlier, OnLater, StackOrder, NoJoiner, Nested };

/** How the maker of a registry publishes. */
struct Maker {
    Style Form = Style::OnEarlier;
    bool IsMixed = false;         ///< some rules in another form
    bool HasStrangeNames = false; ///< names and choices of any characters
    bool HasDisplayNamesAsValues = false;
    bool PublishesCurrentValues = false;
    bool HasSnapshots = false; ///< flags are the outcome of the rules
    bool IsLoose = false;      ///< keys and words in another letter case, flags and numbers as texts
    bool NamesSourceInDependencyFor = false;
    bool HasEvents = false; ///< many rules for current values, one after the other
    bool HasMenuPathsOfParents = false;
    const char* ListKey = "Value";
};

struct Setting {
    std::string Name;
    std::string Type;
    std::vector<Choice> Choices;
    std::vector<SettingValue> Values; ///< legal ones
};

class WorldMaker {
public:
    explicit WorldMaker(unsigned seed) : m_Random(seed) {}

    World Make();

private:
    std::size_t Below(std::size_t bound) { return m_Random() % bound; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }

    template <class Value>
    Value OneOf(const std::vector<Value>& list)
    {
        return list[Below(list.size())];
    }

    void DrawMaker();
    std::string StrangeText();
    std::string NewName();
    std::vector<std::string> ChoiceTexts(std::size_t count);
    std::vector<Choice> NewChoices();
    Setting NewSetting(const std::string& type);
    json::array ListOf(const Setting& setting);
    json::object Attribute(const Setting& setting);
    json::array Menus();
    std::string PathOfSetting();
    SettingValueMap Values();

    json::value Operand(const Setting& setting);
    json::object Term();
    json::object FlagTerm(const Setting& source);
    json::array Terms(std::size_t count);
    json::array TermsInForm(Style style, std::size_t depth);
    void PutJoiners(json::array& terms, Style style);
    void PutStackOrder(json::array& terms);
    json::array NestedTerms(std::size_t depth);
    std::string Joiner() { return OneIn(2) ? Word("AND") : Word("OR"); }
    json::value FlagOutcome();
    json::object Rule();
    json::object EventRule();
    json::object RuleFor(const std::string& target, const std::string& property, json::value outcome);
    json::value ListOutcome(const Setting& setting);
    json::object NumberRule(const Setting& target);
    void PutFlags(json::value& document, const SettingValueMap& then);

    std::string Word(const std::string& word) { return m_Maker.IsLoose && OneIn(3) ? Folded(word) : word; }
    json::value Loosened(json::value value);

    std::mt19937 m_Random;
    Maker m_Maker;
    std::vector<Setting> m_Settings;
    std::set<std::string> m_Used; ///< folded names
    std::vector<std::string> m_Menus;
    std::vector<std::string> m_Paths;
};

void WorldMaker::DrawMaker()
{
    m_Maker.Form = OneOf<Style>(
        {Style::OnEarlier, Style::OnLater, Style::StackOrder, Style::NoJoiner, Style::Nested, Style::Nested});
    m_Maker.IsMixed = m_Maker.Form != Style::NoJoiner && OneIn(6);
    m_Maker.HasStrangeNames = OneIn(2);
    m_Maker.HasDisplayNamesAsValues = OneIn(4);
    m_Maker.PublishesCurrentValues = OneIn(3);
    m_Maker.HasSnapshots = OneIn(2);
    m_Maker.IsLoose = OneIn(5);
    m_Maker.NamesSourceInDependencyFor = OneIn(2);
    m_Maker.HasEvents = OneIn(2);
    m_Maker.HasMenuPathsOfParents = OneIn(3);
    m_Maker.ListKey = OneIn(8) ? "Values" : "Value";
}

/** Any printable characters, some of several bytes, and what looks like a part of a formula or like a key. */
std::string WorldMaker::StrangeText()
{
    static const std::vector<std::string> known{"Mode.CurrentValue",
                                                "BootMode.ReadOnly",
                                                "(Mode==On)",
                                                "!(A|B)&&C",
                                                "a != b",
                                                "<=5>",
                                                "true || false",
                                                "\\",
                                                "\"",
                                                "/a~b",
                                                "~1",
                                                "x AND y",
                                                "null",
                                                "A.CurrentValue==B",
                                                "Größe",
                                                "起動",
                                                "naïve é",
                                                "\xF0\x9F\x94\x92",
                                                "'",
                                                "%s",
                                                "$1"};
    if (OneIn(3)) {
        return OneOf(known);
    }
    std::string text;
    for (std::size_t length = 1 + Below(8); length > 0; --length) {
        text += OneIn(10) ? std::string("ü") : std::string(1, static_cast<char>(' ' + static_cast<char>(Below(95))));
    }
    // what reads as a number or boolean would make the names of a choice comparable in more than one way
    return NumberOf(text) || FlagOf(text) ? text + "x" : text;
}

std::string WorldMaker::NewName()
{
    static const std::vector<std::string> plain{
        "BootMode", "SecureBootMode", "Mode", "ModeControl", "Boot", "Port", "PortSpeed", "Speed",
        "Power",    "PowerMode",      "Fan",  "A",           "AA",   "AAA",  "Asset",     "Device Port"};
    for (;;) {
        std::string name = m_Maker.HasStrangeNames && OneIn(2) ? StrangeText() : OneOf(plain);
        name += OneIn(3) || m_Used.size() > 8 ? std::to_string(Below(30)) : std::string();
        if (name.find_first_not_of(' ') != std::string::npos && m_Used.insert(Folded(name)).second) {
            return name;
        }
    }
}

/** Texts that differ, also without regard to letter case. */
std::vector<std::string> WorldMaker::ChoiceTexts(std::size_t count)
{
    static const std::vector<std::string> plain{"Enabled", "Disabled", "Auto", "On", "Off", "Low", "High", "Custom"};
    std::vector<std::string> texts;
    std::set<std::string> used;
    while (texts.size() < count) {
        const std::string text = m_Maker.HasStrangeNames && OneIn(2) ? StrangeText() : OneOf(plain);
        if (text.find_first_not_of(' ') != std::string::npos && used.insert(Folded(text)).second) {
            texts.push_back(text);
        }
    }
    return texts;
}

std::vector<Choice> WorldMaker::NewChoices()
{
    std::vector<Choice> choices;
    if (OneIn(4)) { // numbers: of one name each, as one of the two names, or as both
        const std::size_t names = Below(3);
        for (const char* number : {"-5", "0", "9", "10", "007", "120"}) {
            const std::string other = names == 1 ? "No. " + std::string(number) : std::string(number) + "0";
            choices.push_back({number, names == 0 ? std::nullopt : std::optional(other)});
        }
        return choices;
    }
    const std::size_t count = 2 + Below(3);
    const std::vector<std::string> texts = ChoiceTexts(2 * count);
    const bool hasOwnDisplayNames = m_Maker.HasDisplayNamesAsValues || OneIn(2);
    for (std::size_t position = 0; position < count; ++position) {
        Choice choice{texts[position], texts[hasOwnDisplayNames ? count + position : position]};
        if (OneIn(12)) {
            (OneIn(3) ? choice.Name : choice.DisplayName).reset();
        } else if (hasOwnDisplayNames && position > 0 && choices.front().Name && choices.front().DisplayName &&
                   OneIn(16)) { // of several, one name
            choice.Name = choices.front().Name;
        }
        choices.push_back(choice);
    }
    return choices;
}

Setting WorldMaker::NewSetting(const std::string& type)
{
    Setting setting{NewName(), type, {}, {}};
    if (type == "Enumeration") {
        setting.Choices = NewChoices();
        for (const Choice& choice : setting.Choices) {
            const bool isDisplayed = !choice.Name || (choice.DisplayName && m_Maker.HasDisplayNamesAsValues);
            setting.Values.emplace_back(isDisplayed ? *choice.DisplayName : *choice.Name);
        }
    } else if (type == "Integer") {
        const auto first = static_cast<std::int64_t>(Below(30)) - 15;
        for (std::int64_t number = first; number < first + 20; number += 1 + static_cast<std::int64_t>(Below(4))) {
            setting.Values.emplace_back(number);
        }
    } else if (type == "Boolean") {
        setting.Values = {true, false};
    } else {
        setting.Values = {std::string(),      std::string("5"),   std::string("-12"),
                          std::string("+7"),  std::string("abc"), std::string("true"),
                          std::string("007"), StrangeText(),      StrangeText()};
    }
    return setting;
}

json::array WorldMaker::ListOf(const Setting& setting)
{
    const bool isPlain = std::all_of(setting.Choices.begin(), setting.Choices.end(),
                                     [](const Choice& choice) { return choice.Name && !choice.DisplayName; });
    json::array list;
    for (const Choice& choice : setting.Choices) {
        if (isPlain && OneIn(2)) {
            list.emplace_back(*choice.Name);
            continue;
        }
        json::object entry;
        if (choice.Name) {
            entry["ValueName"] = *choice.Name;
        }
        if (choice.DisplayName) {
            entry["ValueDisplayName"] = *choice.DisplayName;
        }
        list.push_back(std::move(entry));
    }
    return list;
}

json::value JsonOf(const SettingValue& value)
{
    return value ? RedfishConfig::VariantToJson(*value) : json::value();
}

json::object WorldMaker::Attribute(const Setting& setting)
{
    json::object attribute{{"AttributeName", setting.Name}, {"Type", setting.Type}};
    if (setting.Type == "Enumeration") {
        attribute[m_Maker.ListKey] = ListOf(setting);
    }
    if (setting.Type == "Integer") {
        attribute["LowerBound"] = JsonOf(setting.Values.front());
        attribute["UpperBound"] = JsonOf(setting.Values.back());
        attribute["ScalarIncrement"] = 1;
    }
    if (setting.Type == "String" || setting.Type == "Password") {
        attribute["MinLength"] = 0;
        attribute["MaxLength"] = 40;
    }
    if (m_Maker.PublishesCurrentValues) {
        attribute["CurrentValue"] = OneIn(4) ? json::value() : JsonOf(OneOf(setting.Values));
    }
    if (!m_Paths.empty() && !OneIn(8)) {
        attribute["MenuPath"] = OneOf(m_Paths);
    }
    return attribute;
}

/** A few menus, each at the top or in an earlier one. */
json::array WorldMaker::Menus()
{
    json::array menus;
    m_Paths = {"./"};
    for (std::size_t count = Below(5); count > 0; --count) {
        std::string name = "Menu" + std::to_string(count);
        std::string piece = name;
        std::string title = name;
        if (OneIn(4)) {
            name += " I_O";
            piece = title = "Menu" + std::to_string(count) + " I/O";
        }
        const bool isOfParent = m_Maker.HasMenuPathsOfParents && name == piece;
        const std::string parent = OneOf(m_Paths);
        const std::string path = parent + (parent == "./" ? "" : "/") + piece;
        json::object menu{{"MenuName", name}, {"DisplayName", title}, {"MenuPath", isOfParent ? parent : path}};
        for (const char* flag : {"Hidden", "ReadOnly", "GrayOut"}) {
            if (!OneIn(3)) {
                menu[flag] = OneIn(8);
            }
        }
        menus.push_back(std::move(menu));
        m_Menus.push_back(name);
        m_Paths.push_back(path);
    }
    return menus;
}

SettingValueMap WorldMaker::Values()
{
    SettingValueMap values;
    for (const Setting& setting : m_Settings) {
        const std::size_t lot = Below(12);
        if (lot > 1) {
            const SettingValue value = OneOf(setting.Values);
            values[setting.Name] = setting.Type == "Integer" && OneIn(12) ? TextOf(value) : value;
        } else if (lot == 1) {
            values[setting.Name] = std::nullopt;
        }
    }
    return values;
}

/** What a rule compares with: mostly a legal value, also by its other name or as text. */
json::value WorldMaker::Operand(const Setting& setting)
{
    if (OneIn(12)) {
        return nullptr;
    }
    const SettingValue value = OneOf(setting.Values);
    if (setting.Type == "Enumeration" && OneIn(3)) {
        const Choice choice = OneOf(setting.Choices);
        return json::value(OneIn(6) ? StrangeText() : choice.DisplayName ? *choice.DisplayName : *choice.Name);
    }
    if (setting.Type == "Integer" && OneIn(4)) {
        return OneOf<std::int64_t>({-100, 100, 9, 10, -1});
    }
    if (setting.Type == "String" && OneIn(4)) {
        return OneOf<json::value>({5, -12, true, "6", "-3"});
    }
    if (setting.Type == "Boolean" && OneIn(4)) {
        return OneOf<json::value>({1, 0, "True", "false"});
    }
    return setting.Type == "Integer" && OneIn(4) ? json::value(TextOf(value)) : JsonOf(value);
}

json::object WorldMaker::FlagTerm(const Setting& source)
{
    return {{"MapFromAttribute", source.Name},
            {"MapFromProperty", Word(OneOf(Flags()))},
            {"MapFromCondition", Word(OneIn(2) ? "EQU" : "NEQ")},
            {"MapFromValue", OneOf<json::value>({true, false, "true", 0})}};
}

json::object WorldMaker::Term()
{
    static const std::vector<std::string> orders{"GTR", "GEQ", "LSS", "LEQ"};
    const Setting source = OneOf(m_Settings);
    if (OneIn(14)) {
        return FlagTerm(source);
    }
    std::string condition = OneIn(4) ? "NEQ" : OneIn(8) ? "EQ" : "EQU";
    if (OneIn(source.Type == "Integer" || source.Type == "String" ? 2 : 5)) {
        condition = OneOf(orders);
    }
    if (OneIn(50)) {
        condition = OneOf<std::string>({"BITAND", "BITOR", "LIKE"});
    }
    std::string name = m_Maker.IsLoose && OneIn(6) ? Folded(source.Name) : source.Name;
    if (OneIn(16)) {
        name = OneIn(2) ? "SYSACS" : "Nobody" + std::to_string(Below(3));
    }
    json::object term{
        {"MapFromAttribute", name}, {"MapFromProperty", Word("CurrentValue")}, {"MapFromCondition", Word(condition)}};
    const json::value operand = Operand(source);
    if (!operand.is_null() || OneIn(2)) {
        term["MapFromValue"] = operand;
    }
    return term;
}

json::array WorldMaker::Terms(std::size_t count)
{
    json::array terms;
    while (terms.size() < count) {
        terms.push_back(Term());
    }
    return terms;
}

/** After each term as many joiners as the stack has pairs, or fewer; after the last one all that are left. */
void WorldMaker::PutStackOrder(json::array& terms)
{
    std::size_t height = 1;
    for (std::size_t position = 1; position < terms.size(); ++position) {
        ++height;
        const bool isLast = position + 1 == terms.size();
        std::string words;
        for (std::size_t count = isLast ? height - 1 : Below(height); count > 0; --count) {
            words += words.empty() ? "" : OneIn(4) ? ", " : ",";
            words += Joiner();
            --height;
        }
        if (!words.empty()) {
            terms[position].get_object()["MapTerms"] = words;
        }
    }
}

void WorldMaker::PutJoiners(json::array& terms, Style style)
{
    if (style == Style::StackOrder) {
        PutStackOrder(terms);
        return;
    }
    for (std::size_t position = 0; position < terms.size(); ++position) {
        const bool isOnThis = style == Style::OnEarlier ? position + 1 < terms.size() : position > 0;
        if (style != Style::NoJoiner && isOnThis) {
            terms[position].get_object()["MapTerms"] = Joiner();
        }
    }
}

json::array WorldMaker::NestedTerms(std::size_t depth)
{
    json::array terms;
    for (std::size_t count = 1 + Below(3); count > 0; --count) {
        terms.push_back(depth > 0 && OneIn(2) ? json::object{{"Subexpressions", NestedTerms(depth - 1)}} : Term());
    }
    PutJoiners(terms, OneOf<Style>({Style::OnEarlier, Style::OnLater, Style::StackOrder}));
    for (json::value& term : terms) {
        if (OneIn(4)) {
            const std::string words = TextMember(term, "MapTerms");
            term.get_object()["MapTerms"] = Word("NOT") + (words.empty() ? "" : "," + words);
        }
    }
    return terms;
}

json::array WorldMaker::TermsInForm(Style style, std::size_t depth)
{
    if (style == Style::Nested) {
        return NestedTerms(depth);
    }
    json::array terms = Terms(OneIn(3) ? 1 : 2 + Below(4));
    if (style == Style::NoJoiner && OneIn(10)) {
        terms.push_back(json::object{{"Subexpressions", Terms(2)}});
    }
    PutJoiners(terms, style);
    if (style != Style::NoJoiner && terms.size() > 1 && OneIn(30)) {
        terms[0].get_object()["MapTerms"] = "AND,OR"; // fits no form
    }
    return terms;
}

json::value WorldMaker::FlagOutcome()
{
    const bool outcome = !OneIn(5);
    if (m_Maker.IsLoose && OneIn(3)) {
        return OneOf<json::value>({outcome ? "True" : "false", outcome ? 1 : 0, "perhaps"});
    }
    return outcome;
}

json::value WorldMaker::ListOutcome(const Setting& setting)
{
    json::array list;
    for (const Choice& choice : setting.Choices) {
        if (!OneIn(3)) {
            list.emplace_back(choice.Name && (!choice.DisplayName || OneIn(2)) ? *choice.Name : *choice.DisplayName);
        }
    }
    if (OneIn(8)) {
        list.emplace_back("not offered");
    }
    return list;
}

json::object WorldMaker::RuleFor(const std::string& target, const std::string& property, json::value outcome)
{
    static const std::vector<Style> all{Style::OnEarlier, Style::OnLater, Style::StackOrder, Style::Nested};
    const json::array terms = TermsInForm(m_Maker.IsMixed && OneIn(3) ? OneOf(all) : m_Maker.Form, 2);
    const std::string source = TextMember(terms[0], "MapFromAttribute");
    json::object rule{{"Type", "Map"},
                      {"DependencyFor", m_Maker.NamesSourceInDependencyFor && !source.empty() ? source : target},
                      {"Dependency",
                       {{"MapFrom", terms},
                        {"MapToAttribute", m_Maker.IsLoose && OneIn(6) ? Folded(target) : target},
                        {"MapToProperty", Word(property)},
                        {"MapToValue", std::move(outcome)}}}};
    if (OneIn(16)) {
        rule.erase("DependencyFor");
    }
    return rule;
}

json::object WorldMaker::NumberRule(const Setting& target)
{
    const bool isInteger = target.Type == "Integer";
    const std::string property =
        OneOf<std::string>(isInteger ? std::vector<std::string>{"LowerBound", "UpperBound", "ScalarIncrement"}
                                     : std::vector<std::string>{"MinLength", "MaxLength"});
    const auto number = static_cast<std::int64_t>(1 + Below(4));
    return RuleFor(target.Name, property, OneIn(4) ? json::value(std::to_string(number)) : json::value(number));
}

/** While one of a few settings has a value, another one gets a value: these meet, follow each other and go in circles.
 */
json::object WorldMaker::EventRule()
{
    const Setting source = m_Settings[Below(4)];
    const Setting target = m_Settings[Below(4)];
    const auto first = [](const Setting& setting, std::size_t position) { return JsonOf(setting.Values[position]); };
    json::object rule = RuleFor(target.Name, "CurrentValue", first(target, Below(2)));
    json::object term{{"MapFromAttribute", source.Name},
                      {"MapFromProperty", "CurrentValue"},
                      {"MapFromCondition", Word(OneIn(3) ? "NEQ" : "EQU")},
                      {"MapFromValue", first(source, Below(2))}};
    rule.at("Dependency").as_object()["MapFrom"] = json::array{std::move(term)};
    return rule;
}

json::object WorldMaker::Rule()
{
    // few targets, so that several rules meet at one
    const Setting target = m_Settings[Below(OneIn(3) ? m_Settings.size() : 5)];
    if (m_Maker.HasEvents && OneIn(2)) {
        return EventRule();
    }
    if (OneIn(5)) {
        return RuleFor(target.Name, "CurrentValue", JsonOf(OneOf(target.Values)));
    }
    if (target.Type == "Enumeration" && OneIn(3)) {
        return RuleFor(target.Name, "Value", ListOutcome(target));
    }
    if (target.Type != "Enumeration" && target.Type != "Boolean" && OneIn(3)) {
        return NumberRule(target);
    }
    const std::string property = OneIn(3) ? OneOf(Flags()) : OneOf<std::string>({"ReadOnly", "Hidden", "GrayOut"});
    const json::value outcome = FlagOutcome();
    if (!m_Menus.empty() && OneIn(5)) {
        return RuleFor(OneOf(m_Menus), property, outcome);
    }
    return RuleFor(OneIn(30) ? "Nobody" : target.Name, property, outcome);
}

/** Flags as the rules give them for the values, with exceptions that no rule explains; or facts of their own. */
void WorldMaker::PutFlags(json::value& document, const SettingValueMap& then)
{
    const Oracle::Registry rulesAlone(document, then);
    for (json::value& attribute : document.at("RegistryEntries").at("Attributes").as_array()) {
        const std::string name = TextMember(attribute, "AttributeName");
        for (const std::string& property : Flags()) {
            const bool isOutcome = rulesAlone.VerdictOf(name, property, then).Value;
            const bool flag = m_Maker.HasSnapshots ? isOutcome || OneIn(12) : OneIn(8);
            if (!flag && OneIn(3)) {
                continue; // a flag that is missing is false
            }
            json::value& published = attribute.get_object()[property];
            published = flag;
            if (m_Maker.IsLoose && OneIn(4)) {
                published = OneIn(2) ? json::value(flag ? "true" : "False") : json::value(flag ? 1 : 0);
            }
        }
    }
}

/** Now and then the keys of an object in another letter case. */
json::value WorldMaker::Loosened(json::value value)
{
    if (value.is_array()) {
        for (json::value& element : value.get_array()) {
            element = Loosened(element);
        }
    }
    if (!value.is_object()) {
        return value;
    }
    json::object loosened;
    for (const auto& member : value.get_object()) {
        loosened[OneIn(4) ? Folded(member.key()) : std::string(member.key())] = Loosened(member.value());
    }
    return loosened;
}

World WorldMaker::Make()
{
    DrawMaker();
    json::array menus = OneIn(3) ? json::array() : Menus();
    static const std::vector<std::string> types{"Enumeration", "Integer", "Boolean", "String", "Password"};
    json::array attributes;
    for (std::size_t count = 8 + Below(6); m_Settings.size() < count;) {
        const std::size_t position = m_Settings.size();
        m_Settings.push_back(NewSetting(position < types.size() ? types[position]
                                        : OneIn(2)              ? "Enumeration"
                                                                : OneOf(types)));
    }
    for (const Setting& setting : m_Settings) {
        attributes.push_back(Attribute(setting));
    }
    json::array rules;
    for (std::size_t count = 10 + Below(30); rules.size() < count;) {
        rules.push_back(Rule());
    }
    const SettingValueMap values = Values();
    json::object entries{{"Attributes", std::move(attributes)}, {"Dependencies", std::move(rules)}};
    if (!menus.empty()) {
        entries["Menus"] = std::move(menus);
    }
    json::value document{{"Id", "Random"}, {"RegistryEntries", std::move(entries)}};
    PutFlags(document, values);
    for (auto& member : document.at("RegistryEntries").as_object()) {
        member.value() = m_Maker.IsLoose ? Loosened(member.value()) : member.value();
    }
    return WorldOf(document, values);
}

} // namespace

World MakeWorld(unsigned seed)
{
    return WorldMaker(seed).Make();
}

} // namespace Oracle
