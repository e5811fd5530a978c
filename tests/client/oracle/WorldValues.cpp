#include "Worlds.h"

#include <limits>
#include <map>

// Values for the settings of a registry.

namespace Oracle {

namespace {

using Candidates = std::map<std::string, std::vector<SettingValue>>;

std::size_t Below(std::mt19937& random, std::size_t bound)
{
    return random() % bound;
}

/** The value in the kind that a setting of the type has, if it can be read so. */
SettingValue InKind(const std::string& type, const SettingValue& value)
{
    if (type == "integer") {
        const std::optional<std::int64_t> number = NumberOf(value);
        return number ? SettingValue(*number) : std::nullopt;
    }
    if (type == "boolean") {
        const std::optional<bool> flag = FlagOf(value);
        return flag ? SettingValue(*flag) : std::nullopt;
    }
    return value ? SettingValue(TextOf(value)) : std::nullopt;
}

void AddOperands(const json::array& terms, Candidates& operands)
{
    for (const json::value& term : terms) {
        AddOperands(ListMember(term, "Subexpressions"), operands);
        const json::value* value = Member(term, "MapFromValue");
        operands[Folded(TextMember(term, "MapFromAttribute"))].push_back(value != nullptr ? ValueOf(*value)
                                                                                          : std::nullopt);
    }
}

void AddChoices(const json::value& attribute, std::vector<SettingValue>& values)
{
    for (const char* key : {"Value", "Values"}) {
        for (const json::value& choice : ListMember(attribute, key)) {
            if (!choice.is_object()) {
                values.push_back(ValueOf(choice));
                continue;
            }
            for (const char* name : {"ValueName", "ValueDisplayName"}) {
                if (const json::value* text = Member(choice, name)) {
                    values.push_back(ValueOf(*text));
                }
            }
        }
    }
}

void AddNumbers(const json::value& attribute, std::vector<SettingValue>& values)
{
    for (const char* key : {"LowerBound", "UpperBound"}) {
        const json::value* bound = Member(attribute, key);
        const std::optional<std::int64_t> number = bound != nullptr ? NumberOf(ValueOf(*bound)) : std::nullopt;
        constexpr std::int64_t large = std::numeric_limits<std::int64_t>::max();
        if (number && *number > -large && *number < large) {
            values.insert(values.end(), {*number, *number - 1, *number + 1});
        }
    }
}

/** What speaks about the setting, in its kind, and something for a setting of which nothing is said. */
WorldSetting SettingOf(const json::value& attribute, const SettingValueMap& values, const Candidates& operands)
{
    const bool isOld = Member(attribute, "AttributeName") == nullptr;
    WorldSetting setting;
    setting.Name = TextMember(attribute, isOld ? "Name" : "AttributeName");
    setting.Type = Folded(TextMember(attribute, "Type"));
    std::vector<SettingValue> found;
    if (setting.Type == "enumeration") {
        AddChoices(attribute, found);
    }
    if (setting.Type == "integer") {
        AddNumbers(attribute, found);
        found.insert(found.end(), {std::int64_t{-7}, std::int64_t{0}, std::int64_t{100}});
    }
    if (setting.Type == "boolean") {
        found.insert(found.end(), {true, false});
    }
    const auto asked = operands.find(Folded(setting.Name));
    setting.IsSource = asked != operands.end();
    if (asked != operands.end()) {
        found.insert(found.end(), asked->second.begin(), asked->second.end());
    }
    const auto held = values.find(setting.Name);
    found.push_back(held != values.end() ? held->second : std::nullopt);
    for (const SettingValue& value : found) {
        if (const SettingValue inKind = InKind(setting.Type, value)) {
            setting.Candidates.push_back(inKind);
        }
    }
    if (setting.Candidates.empty()) {
        setting.Candidates.push_back(std::string("x"));
    }
    return setting;
}

SettingValue DrawOne(const WorldSetting& setting, std::mt19937& random)
{
    SettingValue value = setting.Candidates[Below(random, setting.Candidates.size())];
    switch (Below(random, 16)) {
    case 0: // as text, or a text that is no choice
        return setting.Type == "integer" || setting.Type == "boolean" ? SettingValue(TextOf(value))
                                                                      : SettingValue(std::string("not offered"));
    case 1:
        return setting.Type == "integer" ? SettingValue(std::int64_t{1'000'000}) : value;
    case 2:
        return setting.Type == "boolean" ? SettingValue(std::int64_t{FlagOf(value) == true ? 1 : 0}) : value;
    default:
        return value;
    }
}

} // namespace

World WorldOf(json::value registry, SettingValueMap values)
{
    World world{std::move(registry), std::move(values), {}};
    const json::value* inner = Member(world.Registry, "RegistryEntries");
    const json::value& entries = inner != nullptr ? *inner : world.Registry;
    Candidates operands;
    for (const json::value& rule : ListMember(entries, "Dependencies")) {
        if (const json::value* map = Member(rule, "Dependency")) {
            AddOperands(ListMember(*map, "MapFrom"), operands);
        }
    }
    for (const json::value& attribute : ListMember(entries, "Attributes")) {
        world.Settings.push_back(SettingOf(attribute, world.Values, operands));
    }
    return world;
}

SettingValueMap RandomValues(const World& world, std::mt19937& random)
{
    SettingValueMap values;
    for (const WorldSetting& setting : world.Settings) {
        const std::size_t lot = Below(random, 24);
        if (lot > 1) {
            values[setting.Name] = DrawOne(setting, random);
        } else if (lot == 1) {
            values[setting.Name] = std::nullopt;
        }
    }
    return values;
}

std::vector<std::pair<std::string, SettingValue>> RandomChanges(const World& world, std::mt19937& random)
{
    std::map<std::string, SettingValue> changes;
    for (std::size_t count = 1 + Below(random, 3); count > 0; --count) {
        std::size_t position = Below(random, world.Settings.size());
        for (std::size_t tries = 0; tries < 100 && !world.Settings[position].IsSource; ++tries) {
            position = Below(random, world.Settings.size());
        }
        const WorldSetting& setting = world.Settings[position];
        changes[setting.Name] = setting.Candidates[Below(random, setting.Candidates.size())];
    }
    return {changes.begin(), changes.end()};
}

} // namespace Oracle
