#pragma once

#include <RedfishConfig/RedfishConfig.h>

#include <boost/json/parse.hpp>
#include <boost/json/value_to.hpp>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/** The whole text of a file. */
inline std::string ReadFile(const std::string& name)
{
    std::ifstream file(name);
    if (!file) {
        throw std::runtime_error("Cannot read " + name);
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/** The current values that the file of a Bios resource holds in its "Attributes". JSON's null is a value that is
 * absent. */
inline RedfishConfig::SettingValueMap ReadValues(const std::string& fileName)
{
    RedfishConfig::SettingValueMap values;
    const boost::json::value bios = boost::json::parse(ReadFile(fileName));
    for (const auto& attribute : bios.at("Attributes").as_object()) {
        values[attribute.key()] = boost::json::value_to<RedfishConfig::SettingValue>(attribute.value());
    }
    return values;
}
