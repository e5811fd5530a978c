#pragma once

/**
 * @file
 * The values of one system, as those of its model's attributes.
 */

#include <RedfishConfig/Client/Documents.h>
#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/Value.h>
#include <RedfishConfig/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

/** Where the value of an attribute comes from. */
enum class ValueOrigin : std::uint8_t {
    System,      ///< the system reports it
    Null,        ///< the system names the attribute, and says that it has no value
    Registry,    ///< the system does not name it; the registry's own CurrentValue takes its place
    NotReported, ///< neither has one
};

/**
 * The values of one system. A value is one of its attribute's type where it can be ("5" for an Integer becomes 5), and
 * a choice is written under the name that the attribute's values use.
 *
 * Some controllers use the display names of choices as values. Which names an attribute uses is decided by its value,
 * else by the registry's own, else by its default. Where all of these are missing, or are names of both kinds, the
 * attribute is as most others of its registry.
 */
class REDFISHCONFIG_EXPORT SystemValues {
public:
    /** Values of attributes that the model does not have are left out. */
    SystemValues(std::shared_ptr<const Model> model, const ValuesDocument& values);

    /** The registry's own values alone. */
    explicit SystemValues(std::shared_ptr<const Model> model);

    const Model& Of() const { return *m_Model; }
    const std::shared_ptr<const Model>& SharedModel() const { return m_Model; }

    /** The value; none where the attribute has none. A password is a Secret. */
    const Value& ValueOf(std::size_t attribute) const { return m_Values[attribute]; }

    ValueOrigin OriginOf(std::size_t attribute) const { return m_Origins[attribute]; }

    /** Whether the system has the setting: it names it, be it with null. */
    bool IsPresent(std::size_t attribute) const
    {
        return m_Origins[attribute] == ValueOrigin::System || m_Origins[attribute] == ValueOrigin::Null;
    }

    /** Whether the display names of its choices are the values of an attribute. */
    bool UsesDisplayNames(std::size_t attribute) const { return m_UsesDisplayNames[attribute]; }

    /** The name that the attribute's values use for a choice. */
    const std::string& NameOf(std::size_t attribute, const Choice& choice) const
    {
        return m_UsesDisplayNames[attribute] ? choice.DisplayName : choice.Name;
    }

    /** The other one. */
    const std::string& OtherNameOf(std::size_t attribute, const Choice& choice) const
    {
        return m_UsesDisplayNames[attribute] ? choice.Name : choice.DisplayName;
    }

    /**
     * The choices of an attribute as its values use them: Name is the value, DisplayName the other name for a person.
     * Of choices whose values are the same the first counts.
     */
    std::vector<Choice> ChoicesOf(std::size_t attribute) const;

    /**
     * A value as one of the attribute: of its type, and a choice under the name that its values use. What cannot be
     * one stays as it is.
     */
    Value Translate(std::size_t attribute, const Value& value) const;

    /** Whether two values are the same for an attribute: of an enumeration, both may name one choice. */
    bool AreSame(std::size_t attribute, const Value& left, const Value& right) const;

    /** Replaces a value, for instance by one that is only thought of. The setting counts as present. */
    void Assume(std::size_t attribute, const Value& value);

    /** What is found in the values beside the model; @p values are those that these were read from. */
    std::vector<Finding> Findings(const ValuesDocument& values) const;

private:
    void DecideNames();

    std::shared_ptr<const Model> m_Model;
    std::vector<Value> m_Values;
    std::vector<ValueOrigin> m_Origins;
    std::vector<bool> m_UsesDisplayNames;
};

} // namespace RedfishConfig::Client
