// Small systems made of bytes, and operations on a few managers of them that are copied, assigned and destroyed.

#include "CheckedManager.h"

#include "support/RegistryBuilder.h"

#include <cstdint>
#include <limits>
#include <memory>

using namespace RedfishConfig;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
namespace json = boost::json;

namespace {

constexpr const char* names[] = {"A", "B", "BA", "a", "SYSACS", "A.CurrentValue", "A exist", "", "é", "true"};
constexpr const char* types[] = {"String", "Integer", "Enumeration", "Boolean", "Password", "integer", "Other"};
constexpr const char* conditions[] = {"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ", "EQ", "eq", ""};
constexpr const char* properties[] = {"ReadOnly",  "Hidden",       "GrayOut",  "Immutable", "IsSystemUniqueProperty",
                                      "WriteOnly", "CurrentValue", "HelpText", ""};
constexpr const char* joiners[] = {"", "AND", "OR", "and", "("};
constexpr const char* texts[] = {
    "A",   "true",      "FALSE", "",   "10", "B.CurrentValue", "A exist", "(",    "On",   "enable",
    "off", "x\"y\\z\n", "+5",    "-3", "=",  "0x1f",           "é\x80",   "a||b", "A==A", "A not exist"};
constexpr std::int64_t numbers[] = {0,
                                    1,
                                    -1,
                                    2,
                                    5,
                                    -3,
                                    10,
                                    100,
                                    -4,
                                    255,
                                    std::numeric_limits<std::int64_t>::max(),
                                    std::numeric_limits<std::int64_t>::min()};
constexpr const char* flags[] = {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"};
constexpr const char* integers[] = {"LowerBound", "UpperBound", "MinLength", "MaxLength", "ScalarIncrement"};
constexpr const char* words[] = {"HelpText", "DisplayName", "WarningText", "MenuPath"};
constexpr const char* patterns[] = {"[a-z]*", ".*", "(", "(a|b)*c", "[0-9]{2,4}", "", "(a*)*b"};
constexpr const char* paths[] = {"./A/B", "./A/B/C", "./A", "//", "./A/D/C/E", ""};

json::value JsonFrom(Fuzz::Bytes& bytes)
{
    switch (bytes.Below(6)) {
    case 0:
        return nullptr;
    case 1:
        return bytes.Flag();
    case 2:
        return bytes.Pick(numbers);
    case 3:
        return json::array{1};
    default:
        return bytes.Pick(texts);
    }
}

SettingValue ValueFrom(Fuzz::Bytes& bytes)
{
    switch (bytes.Below(4)) {
    case 0:
        return std::nullopt;
    case 1:
        return bytes.Flag();
    case 2:
        return bytes.Pick(numbers);
    default:
        return std::string(bytes.Pick(texts));
    }
}

json::object AttributeFrom(Fuzz::Bytes& bytes)
{
    json::object attribute{{"AttributeName", bytes.Pick(names)}, {"Type", bytes.Pick(types)}};
    for (std::size_t count = bytes.Below(8); count > 0; --count) {
        switch (bytes.Below(8)) {
        case 0:
            attribute[bytes.Pick(flags)] = true;
            break;
        case 1:
        case 2:
            attribute[bytes.Pick(integers)] = bytes.Pick(numbers);
            break;
        case 3:
            attribute[bytes.Pick(words)] = bytes.Pick(texts);
            break;
        case 4: {
            json::array choices;
            for (std::size_t choice = bytes.Below(4); choice > 0; --choice) {
                const std::string name = bytes.Pick(texts);
                choices.push_back(RegistryBuilder::Choice(name, bytes.Flag() ? name : bytes.Pick(texts)));
            }
            attribute["Value"] = std::move(choices);
            break;
        }
        case 5:
            attribute["CurrentValue"] = JsonFrom(bytes);
            break;
        case 6:
            attribute["DefaultValue"] = JsonFrom(bytes);
            break;
        default:
            if (bytes.Flag()) {
                attribute["ValueExpression"] = bytes.Pick(patterns);
            } else {
                attribute["MenuPath"] = bytes.Pick(paths);
            }
        }
    }
    return attribute;
}

std::string RegistryFrom(Fuzz::Bytes& bytes)
{
    RegistryBuilder registry;
    for (std::size_t count = bytes.Below(6); count > 0; --count) {
        registry.RawAttribute(AttributeFrom(bytes));
    }
    for (std::size_t count = bytes.Below(6); count > 0; --count) {
        const std::string target = bytes.Pick(names);
        const std::string property = bytes.Pick(properties);
        const json::value value = bytes.Below(4) == 0 ? JsonFrom(bytes) : json::value(bytes.Flag());
        std::vector<Term> terms;
        for (std::size_t term = bytes.Below(4); term > 0; --term) {
            const char* name = bytes.Pick(names);
            const char* condition = bytes.Pick(conditions);
            json::value compared = JsonFrom(bytes);
            const char* joiner = bytes.Pick(joiners);
            terms.push_back({name, condition, std::move(compared), joiner,
                             bytes.Below(3) == 0 ? bytes.Pick(properties) : "CurrentValue"});
        }
        registry.Rule(target, property, value, terms);
    }
    return registry.Text();
}

SettingValueMap ValuesFrom(Fuzz::Bytes& bytes)
{
    SettingValueMap values;
    for (std::size_t count = bytes.Below(4); count > 0; --count) {
        const char* name = bytes.Pick(names);
        values[name] = ValueFrom(bytes);
    }
    return values;
}

Fuzz::CheckedManager::Texts TextsFrom(Fuzz::Bytes& bytes)
{
    Fuzz::CheckedManager::Texts values;
    for (std::size_t count = bytes.Below(4); count > 0; --count) {
        const char* name = bytes.Pick(names);
        values[name] = bytes.Pick(texts);
    }
    return values;
}

/** A few managers on which operations go. */
class World {
public:
    World(Fuzz::Bytes& bytes, std::string& record) : m_Bytes(bytes), m_Record(record) {}

    void Run()
    {
        std::string registry = RegistryFrom(m_Bytes);
        SettingValueMap values = ValuesFrom(m_Bytes);
        Config_Options options;
        options.ShowHexValue = m_Bytes.Flag();
        options.IgnoreProtected = m_Bytes.Flag();
        for (auto& manager : m_Managers) {
            manager = std::make_unique<RedfishConfigSettingManager>(registry, values, false, options);
        }
        for (unsigned count = 0; count < mostOperations && !m_Bytes.Empty(); ++count) {
            Step();
        }
        for (auto& manager : m_Managers) { // whatever was done, all of them still answer
            Fuzz::CheckedManager checked(*manager, m_Record);
            checked.EverythingOfAll();
            for (const std::string& name : checked.AllProperties()) {
                checked.Everything(name);
            }
        }
    }

private:
    static constexpr unsigned mostOperations = 24;

    void Step()
    {
        auto& manager = m_Managers[m_Bytes.Below(std::size(m_Managers))];
        Fuzz::CheckedManager checked(*manager, m_Record);
        switch (m_Bytes.Below(25)) {
        case 0:
            return checked.Value(m_Bytes.Pick(names));
        case 1:
            return checked.Default(m_Bytes.Pick(names));
        case 2:
            return checked.Description(m_Bytes.Pick(names));
        case 3:
            return checked.ValidValues(m_Bytes.Pick(names));
        case 4:
            return checked.Status(m_Bytes.Pick(names));
        case 5:
            return checked.Properties(m_Bytes.Pick(names));
        case 6:
            return checked.GroupValues();
        case 7:
            return checked.GroupDefaults();
        case 8:
            return checked.GroupDescriptions();
        case 9:
            return checked.GroupValidValues();
        case 10:
            return checked.GroupStatus();
        case 11:
            checked.AllProperties();
            return;
        case 12:
            return checked.GroupList();
        case 13:
            return checked.Errors();
        case 14: {
            const char* name = m_Bytes.Pick(names);
            const char* value = m_Bytes.Pick(texts);
            return checked.Patch(name, value, static_cast<filterAction>(m_Bytes.Below(21)));
        }
        case 15: {
            const auto values = TextsFrom(m_Bytes);
            return checked.PatchMany(values, static_cast<filterAction>(m_Bytes.Below(21)));
        }
        case 16:
            return checked.LoadDefault(m_Bytes.Pick(names));
        case 17:
            checked.Save(static_cast<filterAction>(m_Bytes.Below(21)));
            return;
        case 18: {
            const auto saved = TextsFrom(m_Bytes);
            return checked.Restore(saved, m_Bytes.Flag());
        }
        case 19:
            return manager->UpdateSettingValue(ValuesFrom(m_Bytes));
        case 20:
            return manager->SetCFCSystem(m_Bytes.Flag());
        case 21:
            *manager = *m_Managers[m_Bytes.Below(std::size(m_Managers))]; // itself among others
            return;
        case 22:
            manager = std::make_unique<RedfishConfigSettingManager>(*m_Managers[m_Bytes.Below(std::size(m_Managers))]);
            return;
        case 23: {
            std::string registry = RegistryFrom(m_Bytes);
            SettingValueMap values = ValuesFrom(m_Bytes);
            manager = std::make_unique<RedfishConfigSettingManager>(registry, values, true, Config_Options());
            return;
        }
        default:
            return checked.EverythingOfAll();
        }
    }

    Fuzz::Bytes& m_Bytes;
    std::string& m_Record;
    std::unique_ptr<RedfishConfigSettingManager> m_Managers[3];
};

std::string Answers(const std::uint8_t* data, std::size_t size)
{
    Fuzz::Bytes bytes(data, size);
    std::string record;
    World(bytes, record).Run();
    return record;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string answers = Answers(data, size);
    const Fuzz::LogOn log;
    Fuzz::RequireSame(Answers(data, size), answers, "answers are the same when asked again with the log on");
    return 0;
}
