#include "Registry.h"

#include "../LetterCase.h"
#include "../Rules/RuleFormula.h"
#include "../Rules/SettingNames.h"
#include "common/Ascii.h"

#include <boost/algorithm/string/split.hpp>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace RedfishConfig {

namespace {

std::string_view NameOf(const Registry::Record& record)
{
    return record.AttributeName ? std::string_view(*record.AttributeName) : std::string_view();
}

std::vector<std::string_view> AttributeNames(const std::deque<Registry::Record>& attributes)
{
    std::vector<std::string_view> names;
    names.reserve(attributes.size());
    for (const Registry::Record& record : attributes) {
        names.push_back(NameOf(record));
    }
    return names;
}

std::vector<std::string_view> TargetNames(const std::vector<DependencyRule>& rules)
{
    std::vector<std::string_view> names;
    names.reserve(rules.size());
    for (const DependencyRule& rule : rules) {
        names.emplace_back(rule.MapToAttribute);
    }
    return names;
}

/** The first letters of a name, which order as CaseInsensitiveComparator orders names: most need no more than that. */
using Opening = std::array<unsigned char, 24>;

Opening OpeningOf(std::string_view name)
{
    Opening opening{};
    std::transform(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(std::min(name.size(), opening.size())),
                   opening.begin(), [](char letter) { return static_cast<unsigned char>(Ascii::ToLower(letter)); });
    return opening;
}

/** Adds the menu and sub-menu of "./MENU/SUB-MENU/...". A path of two pieces names no menu; empty pieces count. */
void AddMenu(const std::string& path, Registry::Groups& groups)
{
    std::vector<std::string> pieces;
    boost::split(pieces, path, [](char character) { return character == '/'; });
    if (pieces.size() < 3) {
        return;
    }
    std::vector<std::string>& subMenus = groups[pieces[1]];
    if (pieces.size() > 3 && std::find(subMenus.begin(), subMenus.end(), pieces[2]) == subMenus.end()) {
        subMenus.push_back(pieces[2]);
    }
}

} // namespace

std::shared_ptr<const Registry> Registry::Read(std::string_view text)
{
    return std::make_shared<const Registry>(ReadRegistryText(text));
}

Registry::Registry(RegistryContent&& content)
    : m_Content(std::move(content)),
      m_AttributeIndex(std::make_unique<const LocaleNameIndex>(AttributeNames(m_Content.Attributes))),
      m_TargetIndex(std::make_unique<const LocaleNameIndex>(TargetNames(m_Content.Rules))),
      m_ExactTargets(TargetNames(m_Content.Rules), NoFolding())
{
    m_Types.reserve(m_Content.Attributes.size());
    for (const Record& record : m_Content.Attributes) {
        m_Types.push_back(SettingTypeOf(record.Type));
    }
    constexpr auto unknown = static_cast<std::uint32_t>(-1);
    const NameIndex& index = m_AttributeIndex->ForAscii();
    m_Settings.assign(m_Content.Attributes.size(), unknown);
    for (std::uint32_t first = 0; first < m_Settings.size(); ++first) {
        for (std::size_t same = first; same != NameIndex::none && m_Settings[same] == unknown;
             same = index.Next(same)) {
            m_Settings[same] = first;
        }
        m_SettingCount += IsSetting(first) ? 1U : 0U;
    }
}

Registry::~Registry() = default;

const std::deque<Registry::Record>& Registry::Attributes() const
{
    if (!m_Content.AttributesDefect.empty()) {
        throw std::runtime_error(m_Content.AttributesDefect);
    }
    return m_Content.Attributes;
}

std::size_t Registry::FindAttribute(const std::string& name) const
{
    Attributes();
    return m_AttributeIndex->ForGlobalLocale()->First(name);
}

bool Registry::IsSetting(std::size_t attribute) const
{
    return m_Settings[attribute] == attribute && !NameOf(m_Content.Attributes[attribute]).empty();
}

const std::vector<std::uint32_t>& Registry::SettingsInOrder() const
{
    return m_SettingsInOrder.Get([this] {
        struct Place {
            Opening opening;
            std::uint32_t setting;
        };
        std::vector<Place> places;
        places.reserve(m_Settings.size());
        for (std::uint32_t attribute = 0; attribute < m_Settings.size(); ++attribute) {
            if (IsSetting(attribute)) {
                places.push_back({OpeningOf(NameOf(m_Content.Attributes[attribute])), attribute});
            }
        }
        std::sort(places.begin(), places.end(), [this](const Place& left, const Place& right) {
            const int order = std::memcmp(left.opening.data(), right.opening.data(), left.opening.size());
            if (order != 0) {
                return order < 0;
            }
            return CaseInsensitiveComparator()(*m_Content.Attributes[left.setting].AttributeName,
                                               *m_Content.Attributes[right.setting].AttributeName);
        });
        std::vector<std::uint32_t> order;
        order.reserve(places.size());
        for (const Place& place : places) {
            order.push_back(place.setting);
        }
        return order;
    });
}

const SettingNames& Registry::Names() const
{
    return m_Names.Get([this] { return SettingNames(AttributeNames(m_Content.Attributes)); });
}

const Registry::Groups& Registry::Menus() const
{
    return m_Menus.Get([this] {
        Groups groups;
        for (const Record& record : m_Content.Attributes) {
            if (!record.MenuPath.value_or("").empty()) {
                AddMenu(*record.MenuPath, groups);
            }
        }
        return groups;
    });
}

std::vector<std::size_t> Registry::RulesFor(const std::string& target) const
{
    const std::shared_ptr<const NameIndex> index = m_TargetIndex->ForGlobalLocale();
    std::vector<std::size_t> rules;
    for (std::size_t rule = index->First(target); rule != NameIndex::none; rule = index->Next(rule)) {
        rules.push_back(rule);
    }
    return rules;
}

std::shared_ptr<const SettingFormulas> Registry::FormulasOf(const std::string& target) const
{
    const std::size_t firstRule = m_ExactTargets.First(target);
    if (firstRule == NameIndex::none) {
        return nullptr;
    }
    const std::lock_guard<std::mutex> guard(m_FormulasLock);
    if (m_Formulas.empty()) {
        m_Formulas.resize(Rules().size());
    }
    auto& known = m_Formulas[firstRule];
    if (!known) {
        known = MakeFormulas(firstRule);
    }
    return *known;
}

std::shared_ptr<const SettingFormulas> Registry::MakeFormulas(std::size_t firstRule) const
{
    auto formulas = std::make_shared<SettingFormulas>();
    UniqueNames settingsRead(formulas->SettingsRead);
    for (std::size_t rule = firstRule; rule != NameIndex::none; rule = m_ExactTargets.Next(rule)) {
        const std::optional<std::string> formula = ComposeFormula(Rules()[rule]);
        if (formula && AddRule(formulas->ByProperty, Rules()[rule], *formula) == RuleOutcome::Counts) {
            settingsRead.AddSourcesOf(Rules()[rule]);
        }
    }
    if (formulas->ByProperty.empty()) {
        return nullptr;
    }
    for (const auto& [property, expression] : formulas->ByProperty) {
        Names().FindKeys(expression.DisplayText, formulas->Places.emplace_back());
    }
    return formulas;
}

} // namespace RedfishConfig
