#include "SettingKeys.h"

#include "../RedfishConfigSetting/DynamicProperty.h"

#include <cstddef>
#include <variant>

namespace RedfishConfig {

namespace {

constexpr bool AreFlagsTheFirstTails()
{
    std::size_t row = 0;
    for (; row < dynamicProperties.size(); ++row) {
        if (keyTails[row].front() != '.' || keyTails[row].substr(1) != dynamicProperties[row].Name()) {
            return false;
        }
    }
    return row == static_cast<std::size_t>(KeyTail::CurrentValue);
}

static_assert(AreFlagsTheFirstTails(), "a key's tail is the row of its flag");

} // namespace

SettingKeys::SettingKeys(const SettingTable& settings) : m_Settings(settings), m_Names(settings.Source().Names()) {}

std::size_t SettingKeys::FindIn(std::string_view text, std::vector<FormulaKey>& found)
{
    m_Places.clear();
    const std::size_t effort = m_Names.FindKeys(text, m_Places);
    AddKeys(m_Places, found);
    return effort;
}

void SettingKeys::AddKeys(const std::vector<KeyPlace>& places, std::vector<FormulaKey>& found)
{
    const Registry& registry = m_Settings.Source();
    for (const KeyPlace& place : places) {
        const std::size_t number = registry.SettingAt(place.Attribute);
        const auto& setting = m_Settings.At(number).Setting;
        const auto& record = registry.Attributes()[place.Attribute];
        const std::string& name = *record.AttributeName;
        if (setting == nullptr || (&setting->Info() != &record && *setting->Info().AttributeName != name)) {
            continue; // not generated, or by another attribute that is written in other letter case
        }
        m_SettingsRead.push_back(static_cast<std::uint32_t>(number)); // that it has no value may change
        std::string_view text;
        if (FindText(number, place.Tail, text)) {
            found.push_back({name, TextOf(place.Tail), text});
        }
    }
}

/** The same texts as RedfishConfigSetting::GetProperyMap() has. */
bool SettingKeys::FindText(std::size_t number, KeyTail tail, std::string_view& text)
{
    const RedfishConfigSetting& setting = *m_Settings.At(number).Setting;
    const SettingValue& value = setting.m_CurrentValue;
    const auto truth = [](bool holds) { return holds ? "true" : "false"; };
    // An exist test becomes a comparison that a formula can hold.
    const auto comparison = [](bool holds) { return holds ? "true==true" : "true==false"; };
    if (tail < KeyTail::CurrentValue) {
        text = truth(setting.Info().*dynamicProperties[static_cast<std::size_t>(tail)].flag);
        return true;
    }
    if (value && value->valueless_by_exception()) {
        return false;
    }
    if (tail == KeyTail::Exists || tail == KeyTail::ExistsNot) {
        text = comparison(value.has_value() == (tail == KeyTail::Exists));
        return true;
    }
    if (!value) {
        return false;
    }
    if (const auto* string = std::get_if<std::string>(&*value)) {
        text = *string;
    } else if (const auto* boolean = std::get_if<bool>(&*value)) {
        text = truth(*boolean);
    } else {
        text = m_Numbers.emplace(number, GetOptionalVarAsString(value)).first->second;
    }
    return true;
}

} // namespace RedfishConfig
