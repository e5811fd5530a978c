#pragma once

#include "CommonProc/RedfishConfigExpression/ValueSubstitution.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace RegistryTest {

/** Keys and texts as a test writes them down; each key is looked for in the plainest way. */
class MapKeys : public RedfishConfig::FormulaKeys {
public:
    explicit MapKeys(std::map<std::string, std::string> texts) : m_Texts(std::move(texts)) {}

    std::size_t FindIn(std::string_view text, std::vector<RedfishConfig::FormulaKey>& found) override
    {
        std::size_t effort = 0;
        for (const auto& [key, replacement] : m_Texts) {
            effort += text.size();
            if (!key.empty() && text.find(key) != std::string_view::npos) {
                const std::size_t tail = key.find_last_of(". "); // where it is cut makes no difference
                const std::string_view whole = key;
                found.push_back({whole.substr(0, tail),
                                 tail != std::string::npos ? whole.substr(tail) : std::string_view(), replacement});
            }
        }
        return effort;
    }

    bool MayHold(char byte) const override
    {
        for (const auto& [key, replacement] : m_Texts) {
            if (key.find(byte) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    std::size_t LongestKey() const override
    {
        std::size_t longest = 0;
        for (const auto& [key, replacement] : m_Texts) {
            longest = key.size() > longest ? key.size() : longest;
        }
        return longest;
    }

private:
    std::map<std::string, std::string> m_Texts;
};

} // namespace RegistryTest
