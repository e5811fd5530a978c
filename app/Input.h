#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json/value.hpp>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** The largest file that is read. A registry of a thousand settings has about 1.5 MB. */
constexpr std::size_t largestFile = std::size_t{64} << 20U;

/** Why an input could not be read: one line that names the file. */
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/** An attribute registry: its text for the library, and the document for what the library does not say. */
struct RegistryInput {
    std::string File;
    std::string Text;
    boost::json::value Document; ///< an object whose "RegistryEntries" is an object with an array "Attributes"
};

/** The current values of a system. */
struct ValuesInput {
    RedfishConfig::SettingValueMap Values;
    std::vector<std::string> Remarks; ///< what was left out, a line each
};

/** The text of a file, without a byte-order mark. @throws InputError when it cannot be read or is larger. */
std::string ReadText(const std::string& file);

/** The same of standard input, as the process has it. */
std::string ReadStandardInput();

/** @param file only named in complaints. @throws InputError when the text is not JSON. */
boost::json::value ParseJson(const std::string& file, const std::string& text);

/**
 * A value of a file as a setting holds it; nothing for what no setting can hold: null, a list, an object, a number that
 * is not whole or does not fit 64 signed bits.
 */
std::optional<RedfishConfig::SettingAlternative> ReadValue(const boost::json::value& value);

/** What such a value is instead, for a complaint: "a list". */
const char* KindOf(const boost::json::value& value);

/** Takes a registry as it is published. @throws InputError when the text is no attribute registry. */
RegistryInput RegistryFrom(const std::string& file, std::string text);

/** @throws InputError when the file cannot be read or is no attribute registry. */
RegistryInput ReadRegistry(const std::string& file);

/**
 * Reads a Bios resource, that is, its object "Attributes", or a bare object of names and values. Texts, whole numbers
 * within 64 signed bits, true and false are values, and null is the lack of one; anything else is left out.
 *
 * @throws InputError when the file cannot be read or is neither.
 */
ValuesInput ReadValues(const std::string& file);
ValuesInput ValuesFrom(const std::string& file, const std::string& text);

} // namespace RedfishConfig::App
