#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json.hpp>

#include <string>
#include <utility>
#include <vector>

/**
 * Builds attribute registries for tests, so that a test shows only what matters to it:
 *
 *     RegistryBuilder registry;
 *     registry.Attribute("BootMode", "Enumeration", {{"CurrentValue", "Uefi"}});
 *     registry.Rule("SecureBoot", "ReadOnly", true, {Term{"BootMode", "EQU", "Legacy"}});
 *     std::string text = registry.Text();
 */
namespace RegistryTest {

/** A "MapFrom" term: tests "CurrentValue" unless Property says otherwise; a null value leaves "MapFromValue" null. */
struct Term {
    std::string Attribute;
    std::string Condition = "EQU";
    boost::json::value Value = nullptr;
    std::string MapTerms = {}; ///< "AND" or "OR" before the next term; left out when empty
    std::string Property = "CurrentValue";
};

class RegistryBuilder {
public:
    /** Adds an attribute with the further members given. */
    RegistryBuilder& Attribute(const std::string& name, const std::string& type,
                               const boost::json::object& members = {})
    {
        boost::json::object attribute{{"AttributeName", name}, {"Type", type}};
        for (const auto& [key, value] : members) {
            attribute[key] = value;
        }
        return RawAttribute(std::move(attribute));
    }

    /** Adds an element to "Attributes" as it is. */
    RegistryBuilder& RawAttribute(boost::json::value attribute)
    {
        m_Attributes.push_back(std::move(attribute));
        return *this;
    }

    /** An entry for an attribute's "Value" list. */
    static boost::json::value Choice(const std::string& name, const std::string& displayName)
    {
        return {{"ValueName", name}, {"ValueDisplayName", displayName}};
    }

    /** Adds a rule: the property of the target takes the value while the terms hold. */
    RegistryBuilder& Rule(const std::string& target, const std::string& property, boost::json::value value,
                          const std::vector<Term>& terms)
    {
        boost::json::array mapFrom;
        for (const Term& term : terms) {
            boost::json::object from{{"MapFromAttribute", term.Attribute},
                                     {"MapFromProperty", term.Property},
                                     {"MapFromCondition", term.Condition},
                                     {"MapFromValue", term.Value}};
            if (!term.MapTerms.empty()) {
                from["MapTerms"] = term.MapTerms;
            }
            mapFrom.push_back(std::move(from));
        }
        return RawRule(boost::json::object{{"Type", "Map"},
                                           {"DependencyFor", target},
                                           {"Dependency",
                                            {{"MapFrom", std::move(mapFrom)},
                                             {"MapToAttribute", target},
                                             {"MapToProperty", property},
                                             {"MapToValue", std::move(value)}}}});
    }

    /** Adds an element to "Dependencies" as it is. */
    RegistryBuilder& RawRule(boost::json::value rule)
    {
        m_Rules.push_back(std::move(rule));
        m_HasDependencies = true;
        return *this;
    }

    /** Writes an empty "Dependencies" list rather than none at all. */
    RegistryBuilder& EmptyDependencies()
    {
        m_HasDependencies = true;
        return *this;
    }

    boost::json::value Json() const
    {
        boost::json::object entries{{"Attributes", m_Attributes}};
        if (m_HasDependencies) {
            entries["Dependencies"] = m_Rules;
        }
        return {{"Id", "TestRegistry"}, {"RegistryEntries", std::move(entries)}};
    }

    std::string Text() const { return boost::json::serialize(Json()); }

private:
    boost::json::array m_Attributes;
    boost::json::array m_Rules;
    bool m_HasDependencies = false;
};

} // namespace RegistryTest
