#pragma once

#include "../Lazily.h"
#include "../Rules/SettingFormulas.h"
#include "NameIndex.h"
#include "RegistryReader.h"
#include "SettingType.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig {

class SettingNames;

/**
 * An attribute registry as it was read, and what follows from it alone: types, orders, menus and formulas.
 *
 * The content never changes, so all managers of the same text share it, also on several threads. An attribute is
 * known by its position; settings whose names differ in nothing but the case of ASCII letters are one setting, known by
 * the position of the first of these attributes.
 */
class Registry {
public:
    using Record = RedfishConfigSettingInfoStru;
    using Groups = std::map<std::string, std::vector<std::string>>;

    /** @throws std::exception when the text is not JSON, its root is not an object, or it exceeds a limit. */
    static std::shared_ptr<const Registry> Read(std::string_view text);

    explicit Registry(RegistryContent&& content);
    ~Registry();
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    /** The records of "Attributes", in the registry's order. @throws std::runtime_error when there is no such list. */
    const std::deque<Record>& Attributes() const;

    /** The type of the attribute at a position. */
    SettingType TypeAt(std::size_t position) const { return m_Types[position]; }

    /** The position of the first attribute with that name in any letter case, or NameIndex::none. @throws as
     * Attributes(). */
    std::size_t FindAttribute(const std::string& name) const;

    /** The setting of that name without regard to ASCII letter case, or NameIndex::none; and of an attribute. */
    std::size_t FindSetting(std::string_view name) const { return m_AttributeIndex->ForAscii().First(name); }
    std::size_t SettingAt(std::size_t attribute) const { return m_Settings[attribute]; }

    /** How many settings there are. */
    std::size_t SettingCount() const { return m_SettingCount; }

    /** All settings in the order of their names, see CaseInsensitiveComparator. */
    const std::vector<std::uint32_t>& SettingsInOrder() const;

    /** The names of settings as they stand in formulas. */
    const SettingNames& Names() const;

    /** The menus and their sub-menus, in first-seen order. */
    const Groups& Menus() const;

    DependencyList Dependencies() const { return m_Content.Dependencies; }

    /** The usable part of the rules: without terms on the controller itself, and without rules that have no term. */
    const std::vector<DependencyRule>& Rules() const { return m_Content.Rules; }

    /** The indices in Rules() of those whose target has that name in any letter case, in ascending order. */
    std::vector<std::size_t> RulesFor(const std::string& target) const;

    /** The formulas of the rules whose target has exactly that name; null when none of them is usable. */
    std::shared_ptr<const SettingFormulas> FormulasOf(const std::string& target) const;

private:
    // Whether a setting is known by the position of this attribute.
    bool IsSetting(std::size_t attribute) const;
    std::shared_ptr<const SettingFormulas> MakeFormulas(std::size_t firstRule) const;

    RegistryContent m_Content;
    std::vector<SettingType> m_Types;      // by attribute
    std::vector<std::uint32_t> m_Settings; // by attribute
    std::size_t m_SettingCount = 0;
    std::unique_ptr<const LocaleNameIndex> m_AttributeIndex;
    std::unique_ptr<const LocaleNameIndex> m_TargetIndex;
    NameIndex m_ExactTargets;
    Lazily<std::vector<std::uint32_t>> m_SettingsInOrder;
    Lazily<SettingNames> m_Names;
    Lazily<Groups> m_Menus;

    mutable std::mutex m_FormulasLock;
    // By the first rule of a target; not made yet, or null when no rule of the target is usable.
    mutable std::vector<std::optional<std::shared_ptr<const SettingFormulas>>> m_Formulas;
};

} // namespace RedfishConfig
