#include "SettingKeys.h"

#include "../RedfishConfigExpression/SettingNames.h"
#include "../RedfishConfigSetting/DynamicProperty.h"

#include <algorithm>
#include <iterator>
#include <variant>

namespace RedfishConfig {

enum class SettingKeys::Question : std::uint8_t { Flag, CurrentValue, Exists, ExistsNot };

/** What a key asks of the setting whose name stands before it; the same as RedfishConfigSetting::GetProperyMap(). */
struct SettingKeys::Tail {
    std::string_view Text;
    Question Asks;
    bool RedfishConfigSettingInfoStru::*Flag;
};

const SettingKeys::Tail SettingKeys::tails[] = {
    {".ReadOnly", Question::Flag, dynamicProperties[ReadOnlyRow].flag},
    {".WriteOnly", Question::Flag, dynamicProperties[WriteOnlyRow].flag},
    {".Hidden", Question::Flag, dynamicProperties[HiddenRow].flag},
    {".GrayOut", Question::Flag, dynamicProperties[GrayOutRow].flag},
    {".Immutable", Question::Flag, dynamicProperties[ImmutableRow].flag},
    {".IsSystemUniqueProperty", Question::Flag, dynamicProperties[SystemUniqueRow].flag},
    {".CurrentValue", Question::CurrentValue, nullptr},
    {" exist", Question::Exists, nullptr},
    {" not exist", Question::ExistsNot, nullptr},
};

SettingKeys::SettingKeys(const SettingTable& settings) : m_Settings(settings) {}

std::size_t SettingKeys::FindIn(std::string_view text, std::vector<FormulaKey>& found)
{
    constexpr std::size_t effortOfAByte = 16; // of a name, compared with running over a byte
    const SettingNames& names = m_Settings.Source().Names();
    std::size_t effort = text.size();
    for (std::size_t begin = 0; begin < text.size(); ++begin) {
        if (text[begin] != '.' && text[begin] != ' ') { // with which every tail begins
            continue;
        }
        for (const Tail& tail : tails) {
            if (text.compare(begin, tail.Text.size(), tail.Text) == 0) {
                effort += effortOfAByte * names.ForEachEnding(text.substr(0, begin), [&](std::size_t attribute) {
                    AddKey(attribute, tail, found);
                });
            }
        }
    }
    return effort;
}

void SettingKeys::AddKey(std::size_t attribute, const Tail& tail, std::vector<FormulaKey>& found)
{
    const std::size_t number = m_Settings.Source().SettingAt(attribute);
    const std::string& name = *m_Settings.Source().Attributes()[attribute].AttributeName;
    const auto& setting = m_Settings.At(number).Setting;
    if (setting == nullptr || *setting->Info().AttributeName != name) { // or written otherwise, by a later attribute
        return;
    }
    m_SettingsRead.push_back(static_cast<std::uint32_t>(number)); // that it has no value may change
    std::string_view text;
    if (FindText(number, tail, text)) {
        found.push_back({name, tail.Text, text});
    }
}

bool SettingKeys::FindText(std::size_t number, const Tail& tail, std::string_view& text)
{
    const RedfishConfigSetting& setting = *m_Settings.At(number).Setting;
    const SettingValue& value = setting.m_CurrentValue;
    const auto truth = [](bool holds) { return holds ? "true" : "false"; };
    // An exist test becomes a comparison that a formula can hold.
    const auto comparison = [](bool holds) { return holds ? "true==true" : "true==false"; };
    if (tail.Asks == Question::Flag) {
        text = truth(setting.Info().*tail.Flag);
        return true;
    }
    if (value && value->valueless_by_exception()) {
        return false;
    }
    switch (tail.Asks) {
    case Question::Exists:
        text = comparison(value.has_value());
        return true;
    case Question::ExistsNot:
        text = comparison(!value.has_value());
        return true;
    default:
        break;
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

bool SettingKeys::MayHold(char byte) const
{
    static const std::string bytesOfTails = [] {
        std::string bytes;
        for (const Tail& tail : tails) {
            bytes += tail.Text;
        }
        return bytes;
    }();
    return m_Settings.Source().Names().MayHold(byte) || bytesOfTails.find(byte) != std::string::npos;
}

std::size_t SettingKeys::LongestKey() const
{
    std::size_t longestTail = 0;
    for (const Tail& tail : tails) {
        longestTail = std::max(longestTail, tail.Text.size());
    }
    return m_Settings.Source().Names().LongestName() + longestTail;
}

} // namespace RedfishConfig
