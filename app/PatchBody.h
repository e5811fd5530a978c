#pragma once

#include "System.h"

#include <boost/json/object.hpp>

#include <string>

namespace RedfishConfig::App {

/**
 * The body of a PATCH of a Bios settings resource: {"Attributes": {NAME: VALUE, ...}}.
 *
 * The library's value texts are JSON but for texts with a quotation mark, a backslash or a control character in them,
 * which it keeps as they are. Here every value becomes JSON of the setting's type, properly escaped.
 */
class PatchBody {
public:
    /**
     * @param patchText the library's value text for the setting
     * @return why the value cannot be written as JSON; empty when it was added
     */
    std::string Add(const Setting& setting, const std::string& patchText);

    bool Empty() const { return m_Attributes.empty(); }

    /** The value added for a setting, or null. */
    const boost::json::value* Find(const Setting& setting) const { return m_Attributes.if_contains(setting.Name()); }

    void Remove(const Setting& setting) { m_Attributes.erase(setting.Name()); }

    boost::json::object ToJson() const { return {{"Attributes", m_Attributes}}; }

    /** Whether a password is in it, which no screen shows. */
    bool HasPassword() const { return m_HasPassword; }

private:
    boost::json::object m_Attributes;
    bool m_HasPassword = false;
};

} // namespace RedfishConfig::App
