#include "GeneratedSystem.h"

#include <array>
#include <random>
#include <string_view>

namespace RedfishConfigBench {

namespace {

using RedfishConfig::SettingValue;
using RedfishConfig::SettingValueMap;

constexpr std::array<std::string_view, 32> words{
    "Boot",   "Memory", "Core",    "Power", "Cache",    "Bus",   "Fan",   "Thermal", "Secure",  "Virtual", "Network",
    "Serial", "Usb",    "Storage", "Video", "Embedded", "Timer", "Clock", "Debug",   "Channel", "Socket",  "Lane",
    "Link",   "Mirror", "Patrol",  "Snoop", "Stream",   "Turbo", "Uefi",  "Watch",   "Wake",    "Quick"};

constexpr std::size_t helpTextCharacters = 150;

/** Draws the same numbers on every machine; the standard distributions do not. */
class Chance {
public:
    explicit Chance(unsigned seed) : m_Engine(seed) {}

    std::size_t Below(std::size_t bound) { return m_Engine() % bound; }
    std::size_t Between(std::size_t first, std::size_t last) { return first + Below(last - first + 1); }
    std::string Words(std::size_t count)
    {
        std::string text;
        while (count-- > 0) {
            text += words[Below(words.size())];
        }
        return text;
    }

private:
    std::mt19937 m_Engine;
};

struct Attribute {
    std::string Name;
    std::string_view Type;
    std::vector<std::string> Choices; ///< the values that rules may compare with, as text
};

std::string Quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

/** The members that every attribute has, up to those of its type. */
std::string CommonMembers(const Attribute& attribute, Chance& chance)
{
    std::string help = "Selects how the system handles";
    while (help.size() < helpTextCharacters) {
        help += ' ' + chance.Words(1);
    }
    help.resize(helpTextCharacters, '.');
    const std::string displayOrder = std::to_string(chance.Below(100));
    const bool hidden = chance.Below(50) == 0;
    const bool readOnly = chance.Below(20) == 0;
    const std::string menu = chance.Words(1);
    const std::string subMenu = chance.Words(1);
    return R"({"AttributeName":)" + Quoted(attribute.Name) + R"(,"DisplayName":)" + Quoted(attribute.Name + " mode") +
           R"(,"DisplayOrder":)" + displayOrder + R"(,"GrayOut":false,"HelpText":)" + Quoted(help) + R"(,"Hidden":)" +
           (hidden ? "true" : "false") + R"(,"Immutable":false,"MenuPath":)" + Quoted("./" + menu + "/" + subMenu) +
           R"(,"ReadOnly":)" + (readOnly ? "true" : "false") + R"(,"ResetRequired":true,"Type":)" +
           Quoted(attribute.Type) + R"(,"WarningText":null,"WriteOnly":false)";
}

std::string WriteEnumeration(Attribute& attribute, Chance& chance)
{
    const std::size_t count = chance.Between(4, 10);
    std::string values;
    for (std::size_t number = 0; number < count; ++number) {
        const std::string name = chance.Words(1) + std::to_string(number);
        values += (values.empty() ? "" : ",");
        values += R"({"ValueDisplayName":)" + Quoted(name + " of it") + R"(,"ValueName":)" + Quoted(name) + "}";
        attribute.Choices.push_back(name);
    }
    return R"(,"CurrentValue":null,"DefaultValue":)" + Quoted(attribute.Choices.front()) + R"(,"Value":[)" + values +
           "]}";
}

std::string WriteOther(Attribute& attribute)
{
    if (attribute.Type == "Integer") {
        attribute.Choices = {"0", "10", "20", "90"};
        return R"(,"CurrentValue":10,"DefaultValue":0,"LowerBound":0,"ScalarIncrement":10,"UpperBound":1000})";
    }
    if (attribute.Type == "Boolean") {
        attribute.Choices = {"true", "false"};
        return R"(,"CurrentValue":null,"DefaultValue":false})";
    }
    attribute.Choices = {"rack", "row", "hall"};
    return R"(,"CurrentValue":"rack","DefaultValue":"","MaxLength":32,"MinLength":0,"ValueExpression":"^[a-zA-Z0-9_. -]*$"})";
}

std::string_view DrawType(Chance& chance)
{
    const std::size_t percent = chance.Below(100);
    return percent < 85   ? "Enumeration"
           : percent < 91 ? "Integer"
           : percent < 96 ? "Boolean"
           : percent < 99 ? "String"
                          : "Password";
}

std::string WriteRule(const std::vector<Attribute>& attributes, Chance& chance)
{
    constexpr std::array<std::string_view, 3> properties{"GrayOut", "ReadOnly", "Hidden"};
    const Attribute& target = attributes[chance.Below(attributes.size())];
    const std::size_t terms = chance.Between(1, 8);
    std::string mapFrom;
    for (std::size_t number = 0; number < terms; ++number) {
        const Attribute& source = attributes[chance.Below(attributes.size())];
        const std::string& value = source.Choices[chance.Below(source.Choices.size())];
        const bool bare = source.Type == "Integer" || source.Type == "Boolean";
        const std::string condition = chance.Below(3) == 0 ? "NEQ" : "EQU";
        const std::string joiner = chance.Below(3) == 0 ? "AND" : "OR";
        mapFrom += (number == 0 ? "" : ",");
        mapFrom += R"({"MapFromAttribute":)" + Quoted(source.Name) + R"(,"MapFromCondition":)" + Quoted(condition) +
                   R"(,"MapFromProperty":"CurrentValue","MapFromValue":)" + (bare ? value : Quoted(value));
        if (number + 1 < terms) {
            mapFrom += R"(,"MapTerms":)" + Quoted(joiner);
        }
        mapFrom += '}';
    }
    const std::string_view property = properties[chance.Below(properties.size())];
    return R"({"Dependency":{"MapFrom":[)" + mapFrom + R"(],"MapToAttribute":)" + Quoted(target.Name) +
           R"(,"MapToProperty":)" + Quoted(property) + R"(,"MapToValue":true},"DependencyFor":)" + Quoted(target.Name) +
           R"(,"Type":"Map"})";
}

SettingValue DrawValue(const Attribute& attribute, Chance& chance)
{
    const std::string& text = attribute.Choices[chance.Below(attribute.Choices.size())];
    if (attribute.Type == "Integer") {
        return static_cast<std::int64_t>(std::stoll(text));
    }
    if (attribute.Type == "Boolean") {
        return text == "true";
    }
    return text;
}

} // namespace

GeneratedSystem GenerateSystem(std::size_t settings, unsigned seed)
{
    Chance chance(seed);
    GeneratedSystem system;
    std::vector<Attribute> attributes;
    std::string& text = system.Registry;
    text = R"({"Id":"Generated","RegistryEntries":{"Attributes":[)";
    for (std::size_t number = 0; number < settings; ++number) {
        Attribute attribute;
        attribute.Name = chance.Words(3) + std::to_string(number);
        attribute.Type = DrawType(chance);
        text += (number == 0 ? "" : ",");
        text += CommonMembers(attribute, chance);
        text += attribute.Type == "Enumeration" ? WriteEnumeration(attribute, chance) : WriteOther(attribute);
        system.Names.push_back(attribute.Name);
        system.Values[attribute.Name] = DrawValue(attribute, chance);
        attributes.push_back(std::move(attribute));
    }
    text += R"(],"Dependencies":[)";
    for (std::size_t number = 0; number < settings / 2; ++number) {
        text += (number == 0 ? "" : ",");
        text += WriteRule(attributes, chance);
    }
    text += "]}}";
    return system;
}

SettingValueMap OtherValues(const GeneratedSystem& system, unsigned seed)
{
    Chance chance(seed);
    SettingValueMap values = system.Values;
    for (auto& [name, value] : values) {
        auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
        if (text != nullptr && chance.Below(4) == 0) {
            *text = chance.Words(1);
        }
    }
    return values;
}

} // namespace RedfishConfigBench
