#include "Registry.h"

#include "../Limits.h"
#include "JsonMember.h"

#include <boost/json/monotonic_resource.hpp>
#include <boost/json/parse.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace RedfishConfig {

namespace json = boost::json;

namespace {

/** Terms on this attribute test the controller itself, not a setting, and never count. */
constexpr std::string_view controllerAttribute = "SYSACS";

void CheckCount(const char* what, std::size_t count, std::size_t limit)
{
    if (count > limit) {
        throw std::runtime_error("The registry has more than " + std::to_string(limit) + " " + what + ".");
    }
}

void RemoveControllerTerms(DependencyRule& rule)
{
    auto& terms = rule.MapFrom;
    terms.erase(std::remove_if(terms.begin(), terms.end(),
                               [](const MapFromTerm& term) { return term.MapFromAttribute == controllerAttribute; }),
                terms.end());
}

} // namespace

std::shared_ptr<const Registry> Registry::Read(std::string_view text)
{
    if (text.size() > Limits::registryBytes) {
        throw std::runtime_error("The registry is longer than " + std::to_string(Limits::registryBytes) + " bytes.");
    }
    json::monotonic_resource storage;
    json::parse_options options;
    options.max_depth = Limits::registryDepth;
    const json::value document = json::parse({text.data(), text.size()}, &storage, options);
    const json::object* root = document.if_object();
    if (root == nullptr) {
        throw std::runtime_error("The registry is not a JSON object.");
    }
    return std::shared_ptr<const Registry>(new Registry(*root));
}

Registry::Registry(const json::object& root)
{
    ReadAttributes(root);
    ReadDependencies(root);
    m_AttributeIndex = std::make_unique<const NameIndex>(m_Attributes.size(), [this](std::size_t position) {
        const auto& name = m_Attributes[position].AttributeName;
        return name ? std::string_view(*name) : std::string_view();
    });
    m_TargetIndex = std::make_unique<const NameIndex>(
        m_Rules.size(), [this](std::size_t index) { return std::string_view(m_Rules[index].MapToAttribute); });
}

void Registry::ReadAttributes(const json::object& root)
{
    const json::value* entries = root.if_contains("RegistryEntries");
    const json::value* attributes = entries != nullptr ? FindMember(*entries, "Attributes") : nullptr;
    if (attributes == nullptr) {
        m_AttributesDefect = R"(The registry has no "Attributes" in an object "RegistryEntries".)";
    } else if (!attributes->is_array()) {
        m_AttributesDefect = R"(The "Attributes" of the registry are not an array.)";
    } else {
        CheckCount("attributes", attributes->get_array().size(), Limits::attributes);
        m_Attributes = json::value_to<std::vector<RedfishConfigSettingInfoStru>>(*attributes);
    }
}

void Registry::ReadDependencies(const json::object& root)
{
    const json::value* entries = root.if_contains("RegistryEntries");
    const json::value* dependencies = entries != nullptr ? FindMember(*entries, "Dependencies") : nullptr;
    if (dependencies == nullptr) {
        m_Dependencies = DependencyList::Missing;
        return;
    }
    const json::array* list = dependencies->if_array();
    if (list == nullptr) {
        m_Dependencies = DependencyList::Unreadable;
        return;
    }
    CheckCount("rules", list->size(), Limits::rules);
    m_Dependencies = DependencyList::Present;
    for (std::size_t position = 0; position < list->size(); ++position) {
        DependencyRule rule = ReadDependencyRule((*list)[position], position);
        RemoveControllerTerms(rule);
        if (!rule.MapFrom.empty()) {
            m_Rules.push_back(std::move(rule));
        }
    }
}

const std::vector<RedfishConfigSettingInfoStru>& Registry::Attributes() const
{
    if (!m_AttributesDefect.empty()) {
        throw std::runtime_error(m_AttributesDefect);
    }
    return m_Attributes;
}

const RedfishConfigSettingInfoStru* Registry::FindAttribute(const std::string& name) const
{
    const auto& attributes = Attributes();
    const auto& positions = m_AttributeIndex->Find(name);
    return positions.empty() ? nullptr : &attributes[positions.front()];
}

Registry::DependencyList Registry::Dependencies() const
{
    return m_Dependencies;
}

const std::vector<DependencyRule>& Registry::Rules() const
{
    return m_Rules;
}

const std::vector<std::size_t>& Registry::RulesFor(const std::string& target) const
{
    return m_TargetIndex->Find(target);
}

const DependencyRule* Registry::RuleAt(std::size_t position) const
{
    const auto found =
        std::lower_bound(m_Rules.begin(), m_Rules.end(), position,
                         [](const DependencyRule& rule, std::size_t wanted) { return rule.Position < wanted; });
    return found != m_Rules.end() && found->Position == position ? &*found : nullptr;
}

} // namespace RedfishConfig
