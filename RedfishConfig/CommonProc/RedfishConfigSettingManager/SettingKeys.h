#pragma once

#include "../RedfishConfigExpression/ValueSubstitution.h"
#include "../Rules/SettingNames.h"
#include "SettingTable.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace RedfishConfig {

/** The keys that the settings of a manager have, with their current values. The values must stay as they are. */
class SettingKeys : public FormulaKeys {
public:
    /** @param settings at least one */
    explicit SettingKeys(const SettingTable& settings);

    std::size_t FindIn(std::string_view text, std::vector<FormulaKey>& found) override;
    bool MayHold(char byte) const override { return m_Names.MayHold(byte); }
    std::size_t LongestKey() const override { return m_Names.LongestKey(); }

    /** Adds the keys at these places that settings have now. */
    void AddKeys(const std::vector<KeyPlace>& places, std::vector<FormulaKey>& found);

    /** The numbers of the settings whose values what was found so far depends on, some more than once. */
    std::vector<std::uint32_t>& SettingsRead() { return m_SettingsRead; }

private:
    // False when the setting has no such key.
    bool FindText(std::size_t number, KeyTail tail, std::string_view& text);

    const SettingTable& m_Settings;
    const SettingNames& m_Names;
    std::vector<KeyPlace> m_Places; // of the text at hand; kept to save allocations
    std::vector<std::uint32_t> m_SettingsRead;
    std::map<std::size_t, std::string> m_Numbers; // integers as text, by the numbers of their settings
};

} // namespace RedfishConfig
