#pragma once

#include "../RedfishConfigExpression/ValueSubstitution.h"
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
    explicit SettingKeys(const SettingTable& settings);

    std::size_t FindIn(std::string_view text, std::vector<FormulaKey>& found) override;
    bool MayHold(char byte) const override;
    std::size_t LongestKey() const override;

    /** The numbers of the settings whose values what was found so far depends on, some more than once. */
    std::vector<std::uint32_t>& SettingsRead() { return m_SettingsRead; }

private:
    enum class Question : std::uint8_t;
    struct Tail;
    static const Tail tails[];

    void AddKey(std::size_t attribute, const Tail& tail, std::vector<FormulaKey>& found);
    // False when the setting has no such key.
    bool FindText(std::size_t number, const Tail& tail, std::string_view& text);

    const SettingTable& m_Settings;
    std::vector<std::uint32_t> m_SettingsRead;
    std::map<std::size_t, std::string> m_Numbers; // integers as text, by the numbers of their settings
};

} // namespace RedfishConfig
