#pragma once

#include "../Registry/Registry.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace RedfishConfig {

/**
 * The settings that a manager has generated, by name without regard to ASCII letter case. Each has a number, which is
 * the one that its registry knows it by. Copies share the settings.
 */
class SettingTable {
public:
    struct Entry {
        const std::string* Name = nullptr;             ///< of the first attribute that was stored; null: not generated
        std::shared_ptr<RedfishConfigSetting> Setting; ///< null when memory ran out
    };

    bool Empty() const { return m_Generated.empty(); }
    std::size_t Count() const { return m_Generated.size(); }
    void Clear();

    /** Stores the setting of an attribute. Of two attributes with one name the later setting replaces the other. */
    void Store(const std::shared_ptr<const Registry>& registry, std::size_t attribute,
               std::shared_ptr<RedfishConfigSetting> setting);

    void Erase(const std::string& name);

    static constexpr std::size_t none = NameIndex::none;

    /** The number of the generated setting of that name, or none. */
    std::size_t Find(const std::string& name) const;

    bool Has(const std::string& name) const { return Find(name) != none; }
    const Entry& At(std::size_t number) const { return m_Entries[number]; }

    /** The numbers of the generated settings in the order of their names. */
    const std::vector<std::uint32_t>& InOrder() const;

    const Registry& Source() const { return *m_Registry; }

private:
    std::shared_ptr<const Registry> m_Registry; // set with the first setting
    std::vector<Entry> m_Entries;               // by number
    std::vector<std::uint32_t> m_Generated;
    mutable std::vector<std::uint32_t> m_Ordered; // the same in order, unless they are all that the registry has
};

} // namespace RedfishConfig
