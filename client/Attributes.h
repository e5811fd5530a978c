#pragma once

#include "Findings.h"

#include <RedfishConfig/SettingValue.h>

#include <boost/json/array.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace RedfishConfig::Client {

/** What rules need to know of an attribute. */
struct Attribute {
    std::string Name;
    std::string Type;                                     ///< in lower case
    std::string Place;                                    ///< in the registry as published
    bool IsSetting = false;                               ///< has a type that the library makes a setting of
    std::unordered_map<std::string, std::string> Choices; ///< from each text that names a choice to its value name
    std::vector<std::string> ChoiceNames;
    bool MayBeEmpty = false;      ///< may have an empty text as its value
    std::size_t LongestValue = 0; ///< in bytes, of its choices and the current value
    std::optional<std::int64_t> LowerBound, UpperBound;
    std::int64_t MinLength = 0;
    SettingValue Held; ///< the current value
};

/** The attributes of a registry, found by name. */
class Attributes {
public:
    explicit Attributes(std::vector<Attribute> list);

    /** The attribute of that name; of another spelling in letter case when there is none. Null when there is neither.
     */
    const Attribute* Find(const std::string& name) const;

    const std::vector<Attribute>& List() const { return m_List; }

private:
    std::vector<Attribute> m_List;
    std::unordered_map<std::string, std::size_t> m_ByName;
    std::unordered_map<std::string, std::size_t> m_ByLowerCase;
};

/**
 * A value as one of the attribute: of its type, and a choice by its value name. What cannot be one stays as it is.
 * Tells what was found; @p what is the value's part in the document, for instance "the default".
 */
SettingValue TranslateValue(const Attribute& attribute, const SettingValue& value, Document document,
                            const std::string& place, const std::string& what, Findings& findings);

} // namespace RedfishConfig::Client
