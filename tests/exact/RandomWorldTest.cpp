#include "Count.h"

#include "reference/Manager.h"
#include "support/LogCapture.h"

#include <RedfishConfig/RedfishConfig.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace json = boost::json;
using namespace RedfishConfig;
using RegistryTest::LogCapture;
using Texts = std::map<std::string, std::string>;

/** Chooses. The same seed always chooses the same. */
class Chance {
public:
    explicit Chance(std::uint64_t seed) : m_Engine(seed) {}

    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(m_Engine() % count); }
    bool OneIn(std::size_t count) { return Below(count) == 0; }

    template <class Item>
    const Item& Of(const std::vector<Item>& items)
    {
        return items[Below(items.size())];
    }

private:
    std::mt19937_64 m_Engine;
};

/** A system made up at random: a registry and current values, mostly sensible and sometimes not. */
class World {
public:
    explicit World(Chance& chance) : m_Chance(chance)
    {
        const std::vector<std::string> pool{
            "A",     "BA", "CBA", "a",   "Fan", "FAN", "A.B", "A B", "x", "B", "ba", "Fan not", "\xc3\xa9t\xc3\xa9",
            "Boot1", "Q",  "Q==", "true"};
        const std::size_t count = 1 + m_Chance.Below(9);
        for (std::size_t i = 0; i < count; ++i) {
            m_Names.push_back(m_Chance.Of(pool));
        }
    }

    std::string Registry()
    {
        if (m_Chance.OneIn(40)) {
            return m_Chance.Of(std::vector<std::string>{
                "", "{", "[]", "{}", R"({"RegistryEntries": 5})", R"({"RegistryEntries": {"Attributes": {}}})",
                R"({"RegistryEntries": {"Attributes": [], "Dependencies": {}}})",
                R"({"RegistryEntries": {"Dependencies": []}})"});
        }
        json::object entries;
        json::array attributes;
        for (const std::string& name : m_Names) {
            attributes.push_back(Attribute(name));
        }
        if (m_Chance.OneIn(10)) {
            attributes.push_back(m_Chance.OneIn(2) ? json::value(nullptr) : json::value(5));
        }
        entries["Attributes"] = attributes;
        if (!m_Chance.OneIn(12)) {
            json::array rules;
            for (std::size_t i = m_Chance.Below(8); i > 0; --i) {
                rules.push_back(Rule());
            }
            entries["Dependencies"] = rules;
        }
        return json::serialize(json::object{{"RegistryEntries", entries}});
    }

    /** Values by name, for the settings and for names that are none. */
    std::vector<std::pair<std::string, SettingValue>> Values()
    {
        std::vector<std::pair<std::string, SettingValue>> values;
        for (std::size_t i = m_Chance.Below(6); i > 0; --i) {
            const json::value value = AnyValue();
            values.emplace_back(AnyName(), m_Chance.OneIn(8) ? std::nullopt : Reference::ToValue(&value));
        }
        return values;
    }

    std::string AnyName()
    {
        if (m_Chance.OneIn(15)) {
            return m_Chance.OneIn(3) ? "" : "Nowhere";
        }
        std::string name = m_Chance.Of(m_Names);
        if (m_Chance.OneIn(5)) {
            name = m_Chance.OneIn(2) ? Reference::Lower(name) : Reference::Upper(name);
        }
        return name;
    }

    std::string NewValue()
    {
        return m_Chance.Of(std::vector<std::string>{"1",
                                                    "5",
                                                    "+5",
                                                    "-1",
                                                    "007",
                                                    "true",
                                                    "FALSE",
                                                    "On",
                                                    "off",
                                                    "enable",
                                                    "Disabled",
                                                    "",
                                                    "x",
                                                    "abc",
                                                    "A.CurrentValue",
                                                    "0x10",
                                                    "99999999999999999999",
                                                    "9223372036854775807",
                                                    "a\"b",
                                                    "\xc3\xa9",
                                                    "20",
                                                    "(",
                                                    "&&"});
    }

private:
    json::value AnyValue()
    {
        switch (m_Chance.Below(5)) {
        case 0:
            return m_Chance.OneIn(2);
        case 1:
            return static_cast<std::int64_t>(m_Chance.Below(12)) - 3;
        case 2:
            return json::value(m_Chance.Of(std::vector<std::string>{
                "A.CurrentValue", "B exist", "BA.CurrentValue", "==", "&&", "(", "x.CurrentValue.CurrentValue", " "}));
        default:
            return json::value(NewValue());
        }
    }

    /** A member as it should be, or sometimes missing or of another kind. */
    void Put(json::object& object, const char* key, const json::value& value, std::size_t oneIn)
    {
        if (!m_Chance.OneIn(oneIn)) {
            return;
        }
        object[key] = !m_Chance.OneIn(20) ? value
                      : m_Chance.OneIn(2) ? json::value(nullptr)
                      : m_Chance.OneIn(2) ? json::value(7)
                                          : json::value("odd");
    }

    json::value Attribute(const std::string& name)
    {
        json::object attribute;
        if (!m_Chance.OneIn(40)) {
            attribute["AttributeName"] = name;
        }
        if (!m_Chance.OneIn(40)) {
            attribute["Type"] = m_Chance.Of(std::vector<std::string>{"String", "Integer", "Enumeration", "Boolean",
                                                                     "Password", "INTEGER", "boolean", "Nonsense", ""});
        }
        for (const char* flag : {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"}) {
            Put(attribute, flag, !m_Chance.OneIn(3), 6);
        }
        Put(attribute, "CurrentValue", AnyValue(), 2);
        Put(attribute, "DefaultValue", AnyValue(), 2);
        Put(attribute, "DisplayName", json::value("Shown as " + name), 3);
        Put(attribute, "HelpText", "Helps.", 2);
        Put(attribute, "WarningText", "Mind!", 4);
        Put(attribute, "LowerBound", static_cast<std::int64_t>(m_Chance.Below(6)) - 2, 3);
        Put(attribute, "UpperBound", static_cast<std::int64_t>(m_Chance.Below(30)), 3);
        Put(attribute, "ScalarIncrement", static_cast<std::int64_t>(m_Chance.Below(6)) - 2, 3);
        Put(attribute, "MinLength", static_cast<std::int64_t>(m_Chance.Below(4)) - 1, 3);
        Put(attribute, "MaxLength", static_cast<std::int64_t>(m_Chance.Below(6)), 3);
        Put(attribute, "ValueExpression",
            json::value(m_Chance.Of(std::vector<std::string>{"[a-z]*", "[0-9]+", ".*", "[", "", "^(On|Off)$"})), 4);
        Put(attribute, "MenuPath",
            json::value(m_Chance.Of(
                std::vector<std::string>{"./A", "./A/B", "./A/B/C", "./A/B/C/D", "", "///", "x", "./B/E/F"})),
            2);
        json::array choices;
        for (std::size_t i = m_Chance.Below(4); i > 0; --i) {
            json::object choice;
            Put(choice, "ValueName",
                json::value(m_Chance.Of(std::vector<std::string>{"On", "Off", "Enabled", "disable", "A", "on"})), 1);
            Put(choice, "ValueDisplayName",
                json::value(m_Chance.Of(std::vector<std::string>{"On", "Off", "Enable", "x", ""})), 2);
            choices.push_back(choice);
        }
        Put(attribute, "Value", choices, 1);
        return attribute;
    }

    json::value Rule()
    {
        if (m_Chance.OneIn(25)) {
            return m_Chance.OneIn(2) ? json::value("no rule") : json::value(json::object{{"Dependency", 1}});
        }
        json::array terms;
        for (std::size_t i = 1 + m_Chance.Below(3); i > 0; --i) {
            json::object term;
            Put(term, "MapFromAttribute",
                json::value(m_Chance.OneIn(12)   ? std::string("SYSACS")
                            : m_Chance.OneIn(12) ? std::string("Nowhere")
                                                 : m_Chance.Of(m_Names)),
                1);
            Put(term, "MapFromCondition",
                json::value(
                    m_Chance.Of(std::vector<std::string>{"EQU", "EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ", "EQ", "eq"})),
                1);
            Put(term, "MapFromProperty",
                json::value(m_Chance.Of(std::vector<std::string>{"CurrentValue", "CurrentValue", "CurrentValue",
                                                                 "ReadOnly", "Hidden", "Odd"})),
                1);
            if (!m_Chance.OneIn(5)) {
                Put(term, "MapFromValue", AnyValue(), 1);
            }
            if (i > 1 || m_Chance.OneIn(10)) {
                Put(term, "MapTerms",
                    json::value(m_Chance.Of(std::vector<std::string>{"AND", "OR", "AND", "OR", "NOT"})), 1);
            }
            terms.push_back(term);
        }
        json::object dependency{{"MapFrom", terms}};
        Put(dependency, "MapToAttribute", json::value(m_Chance.Of(m_Names)), 1);
        Put(dependency, "MapToProperty",
            json::value(m_Chance.Of(std::vector<std::string>{"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable",
                                                             "IsSystemUniqueProperty", "CurrentValue"})),
            1);
        Put(dependency, "MapToValue", m_Chance.OneIn(10) ? AnyValue() : json::value(!m_Chance.OneIn(3)), 1);
        return json::object{{"Dependency", dependency}};
    }

    Chance& m_Chance;
    std::vector<std::string> m_Names;
};

// ---- everything that an operation leaves behind, as one text

std::string Tell(int code, const std::string& message, const std::string& setting)
{
    return std::to_string(code) + " '" + message + "' '" + setting + "'\n";
}

std::string Tell(const RedfishConfigResult& result)
{
    return Tell(result, result.ErrorMsg(), result.Setting());
}

std::string Tell(const Reference::Result& result)
{
    return Tell(result.Code, result.Message, result.Setting);
}

std::string Tell(const Texts& texts)
{
    std::string told;
    for (const auto& [name, text] : texts) {
        told += "  " + name + " = " + text + "\n";
    }
    return told;
}

std::string Tell(const PropertyState& state)
{
    return (state.Value ? " yes " : " no ") + state.Reason + ";";
}

std::string Tell(const SettingStatus& status)
{
    return Tell(status.ReadOnly) + Tell(status.WriteOnly) + Tell(status.Hidden) + Tell(status.GrayOut) +
           Tell(status.Immutable) + Tell(status.SystemUnique) + Tell(status.Protected) + "\n";
}

std::string Tell(const std::vector<Reference::State>& states)
{
    std::string told;
    for (const Reference::State& state : states) {
        told += (state.Value ? " yes " : " no ") + state.Reason + ";";
    }
    return told + "\n";
}

template <class Item>
std::string TellAll(const std::map<std::string, Item>& items)
{
    std::string told;
    for (const auto& [name, item] : items) {
        told += name + Tell(item);
    }
    return told;
}

std::string Tell(const std::map<std::string, std::vector<std::string>>& groups)
{
    std::string told;
    for (const auto& [group, menus] : groups) {
        told += group + ":";
        for (const std::string& menu : menus) {
            told += " " + menu;
        }
        told += "\n";
    }
    return told;
}

template <class Expressions>
std::string TellRecord(const std::string& name, const SettingValue& current, const Expressions& expressions,
                       const std::vector<std::string>& dependencies)
{
    std::string told = name + " " + (current ? GetOptionalVarAsString(current) : "none") + "\n";
    for (const auto& [property, expression] : expressions) {
        told += "  " + property + ": " + expression.Formula + " | " + expression.DisplayText;
        for (const std::size_t rule : expression.Rules) {
            told += " #" + std::to_string(rule);
        }
        told += "\n";
    }
    for (const std::string& dependency : dependencies) {
        told += "  <- " + dependency + "\n";
    }
    return told;
}

std::string Tell(const std::vector<RedfishConfigSettingInfoStru>& records)
{
    std::string told;
    for (const RedfishConfigSettingInfoStru& record : records) {
        told +=
            TellRecord(*record.AttributeName, record.CurrentValue, record.expressionMaps, record.dependencySettings);
    }
    return told;
}

std::string Tell(const std::vector<Reference::Setting>& settings)
{
    std::string told;
    for (const Reference::Setting& setting : settings) {
        told += TellRecord(setting.Name, setting.Current, setting.Expressions, setting.Dependencies);
    }
    return told;
}

template <class AnyResult>
std::string TellErrors(const std::vector<AnyResult>& errors)
{
    std::string told;
    for (const AnyResult& error : errors) {
        told += Tell(error);
    }
    return told;
}

/** The same manager twice, with copies of it: in the library and in the reference. */
class Twins {
public:
    Twins(std::uint64_t seed, unsigned logLevel)
        : m_Chance(seed), m_World(m_Chance), m_Log(logLevel), m_LogLevel(logLevel)
    {
        m_Registry = m_World.Registry();
        const auto values = m_World.Values();
        Config_Options options;
        options.ShowHexValue = m_Chance.OneIn(3);
        options.IgnoreProtected = m_Chance.OneIn(3);
        SettingValueMap current(values.begin(), values.end());
        m_Managers.emplace_back(m_Registry, current, false, options);
        m_References.emplace_back(m_Registry, Reference::Values(values.begin(), values.end()),
                                  Reference::Options{options.ShowHexValue, options.IgnoreProtected}, m_Lines);
        m_Story << "registry: " << m_Registry << "\nvalues:";
        for (const auto& [name, value] : values) {
            m_Story << ' ' << name << '=' << (value ? GetOptionalVarAsString(value) : "none");
        }
        m_Story << "\nhex " << options.ShowHexValue << ", ignoring protected " << options.IgnoreProtected << "\n";
    }

    /** Runs one operation on both and compares. */
    void Step()
    {
        const std::size_t which = m_Chance.Below(m_Managers.size());
        m_Lines.clear();
        m_Log.Clear();
        const auto [actual, expected] = Operate(m_Managers[which], m_References[which]);
        ASSERT_EQ(actual, expected) << m_Story.str();
        Reference::Lines lines;
        for (const auto& line : m_Lines) {
            if (m_LogLevel != 0 && line.first <= m_LogLevel) {
                lines.push_back(line);
            }
        }
        ASSERT_EQ(m_Log.Lines(), lines) << m_Story.str();
        LinesCompared += lines.size();
    }

    std::size_t LinesCompared = 0;

private:
    using Told = std::pair<std::string, std::string>;

    Told Operate(RedfishConfigSettingManager& manager, Reference::Manager& reference)
    {
        const std::string name = m_World.AnyName();
        const std::string value = m_World.NewValue();
        const auto question = m_Chance.Below(4);
        const int number = static_cast<int>(m_Chance.Below(21)) - 1;
        const auto action = static_cast<filterAction>(number);
        const bool choice = m_Chance.OneIn(2);
        const std::size_t operation = m_Chance.Below(16);
        m_Story << operation << ": " << name << " " << value << " question " << question << " action " << number
                << "\n";
        switch (operation) {
        case 0:
        case 1:
        case 2: {
            std::string a = "untouched";
            std::string b = a;
            const std::string actual = Tell((manager.*one[question])(name, a));
            const std::string expected = Tell(reference.Query(static_cast<int>(question), name, b));
            return {actual + a, expected + b};
        }
        case 3: {
            Texts a{{"before", "1"}};
            Texts b = a;
            const std::string actual = Tell((manager.*all[question])(a));
            const std::string expected = Tell(reference.QueryAll(static_cast<int>(question), b));
            return {actual + Tell(a), expected + Tell(b)};
        }
        case 4: {
            SettingStatus a;
            std::vector<Reference::State> b(7);
            const std::string actual = Tell(manager.QuerySettingStatus(name, a));
            const std::string expected = Tell(reference.Status(name, b));
            return {actual + Tell(a), expected + Tell(b)};
        }
        case 5: {
            std::map<std::string, SettingStatus> a;
            std::map<std::string, std::vector<Reference::State>> b;
            const std::string actual = Tell(manager.QueryGroupSettingStatus(a));
            const std::string expected = Tell(reference.StatusOfAll(b));
            return {actual + TellAll(a), expected + TellAll(b)};
        }
        case 6: {
            std::vector<RedfishConfigSettingInfoStru> a;
            std::vector<Reference::Setting> b;
            const std::string actual = Tell(manager.GetAllSettingProperties(a));
            const std::string expected = Tell(reference.PropertiesOfAll(b));
            return {actual + Tell(a), expected + Tell(b)};
        }
        case 7: {
            RedfishConfigSettingInfoStru a;
            std::vector<Reference::Setting> b;
            const RedfishConfigResult result = manager.GetSettingProperties(name, a);
            const std::string expected = Tell(reference.PropertiesOf(name, b));
            return {Tell(result) + (result == RESULT_SUCCEED ? Tell(std::vector{a}) : ""), expected + Tell(b)};
        }
        case 8: {
            std::map<std::string, std::vector<std::string>> a{{"before", {}}};
            manager.GetGroupList(a);
            return {Tell(a), Tell(reference.Groups())};
        }
        case 9: {
            const auto values = m_World.Values();
            manager.UpdateSettingValue(SettingValueMap(values.begin(), values.end()));
            reference.Update(Reference::Values(values.begin(), values.end()));
            return {};
        }
        case 10:
            return {TellErrors(manager.GetError()), TellErrors(reference.Errors())};
        case 11: {
            std::string a = "untouched";
            std::string b = a;
            const std::string actual = Tell(manager.PreparePatchContext(name, value, a, action));
            const std::string expected = Tell(reference.Patch(name, value, b, number));
            return {actual + a, expected + b};
        }
        case 12: {
            Texts changes{{name, value}};
            for (std::size_t i = m_Chance.Below(4); i > 0; --i) {
                changes.emplace(m_World.AnyName(), m_World.NewValue());
            }
            Texts a{{"Fan", "before"}};
            Texts b = a;
            const std::string actual = Tell(manager.PreparePatchContext(changes, a, action));
            const std::string expected = Tell(reference.PatchMany(changes, b, number));
            return {actual + Tell(a), expected + Tell(b)};
        }
        case 13: {
            std::string a1 = "untouched";
            std::string a2 = "untouched";
            std::string b1 = a1;
            std::string b2 = a2;
            const std::string actual = Tell(manager.PrepareLoadDefaultValue(name, a1, a2));
            const std::string expected = Tell(reference.LoadDefault(name, b1, b2));
            return {actual + a1 + a2, expected + b1 + b2};
        }
        case 14: {
            Texts a{{"Fan", "before"}};
            Texts b = a;
            if (choice) {
                const std::string actual = Tell(manager.FetchSaveSettingValues(a, action));
                const std::string expected = Tell(reference.Save(b, number));
                return {actual + Tell(a), expected + Tell(b)};
            }
            Texts saved{{name, value}, {m_World.AnyName(), m_World.NewValue()}};
            Texts errorsA;
            Texts errorsB;
            const bool unique = m_Chance.OneIn(2);
            const std::string actual = Tell(manager.FetchRestoreSettingValues(saved, a, errorsA, unique));
            const std::string expected = Tell(reference.Restore(saved, b, errorsB, unique));
            return {actual + Tell(a) + Tell(errorsA), expected + Tell(b) + Tell(errorsB)};
        }
        default:
            Copy();
            return {};
        }
    }

    /** Makes a copy of a manager, or assigns one to another. */
    void Copy()
    {
        const std::size_t from = m_Chance.Below(m_Managers.size());
        if (m_Managers.size() < 3) {
            m_Managers.push_back(RedfishConfigSettingManager(m_Managers[from]));
            m_References.push_back(Reference::Manager(m_References[from]));
        } else {
            const std::size_t to = m_Chance.Below(m_Managers.size());
            m_Managers[to] = m_Managers[from];
            m_References[to] = m_References[from];
        }
    }

    using One = RedfishConfigResult (RedfishConfigSettingManager::*)(const std::string&, std::string&);
    using All = RedfishConfigResult (RedfishConfigSettingManager::*)(Texts&);
    static constexpr One one[] = {
        &RedfishConfigSettingManager::QuerySettingValue, &RedfishConfigSettingManager::QuerySettingDefaultValue,
        &RedfishConfigSettingManager::QuerySettingDescription, &RedfishConfigSettingManager::QuerySettingValidValues};
    static constexpr All all[] = {&RedfishConfigSettingManager::QueryGroupSettingValues,
                                  &RedfishConfigSettingManager::QueryGroupSettingDefaultValues,
                                  &RedfishConfigSettingManager::QueryGroupSettingDescriptions,
                                  &RedfishConfigSettingManager::QueryGroupSettingValidValues};

    Chance m_Chance;
    World m_World;
    LogCapture m_Log;
    unsigned m_LogLevel;
    Reference::Lines m_Lines;
    std::string m_Registry;
    std::vector<RedfishConfigSettingManager> m_Managers;
    std::vector<Reference::Manager> m_References;
    std::ostringstream m_Story;
};

/** Compares many sequences; @p levels are the log levels that they take in turn. */
void CompareSequences(std::size_t sequences, std::uint64_t firstSeed, const std::vector<unsigned>& levels)
{
    std::size_t operations = 0;
    std::size_t lines = 0;
    for (std::size_t sequence = 0; sequence < sequences; ++sequence) {
        Twins twins(firstSeed + sequence, levels[sequence % levels.size()]);
        for (int step = 0; step < 12; ++step) {
            twins.Step();
            ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << firstSeed + sequence << ", step " << step;
            ++operations;
        }
        lines += twins.LinesCompared;
    }
    std::cout << operations << " operations, " << lines << " log lines" << std::endl;
    Exact::Report("sequences in random worlds", sequences, sequences);
    EXPECT_EQ(lines > sequences, levels.front() != 0);
}

TEST(RandomWorld, IsAsTheReferenceSaysWithTheWholeLog)
{
    CompareSequences(Exact::IsLong() ? 200000 : 4000, 1000000, {4});
}

TEST(RandomWorld, IsAsTheReferenceSaysWithoutALog)
{
    CompareSequences(Exact::IsLong() ? 400000 : 8000, 5000000, {0});
}

TEST(RandomWorld, IsAsTheReferenceSaysWithAPartOfTheLog)
{
    CompareSequences(Exact::IsLong() ? 100000 : 3000, 9000000, {3, 1, 2});
}

} // namespace
