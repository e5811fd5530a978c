#pragma once

#include "System.h"

#include <boost/json/value.hpp>

#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** A new value for a setting, as somebody wrote it. */
struct Assignment {
    std::string Name;
    std::optional<std::string> Value; ///< nothing for what no setting can hold, see Defect
    std::string Defect;               ///< why there is no value
    bool IsNull = false;              ///< whether the file says that there is none
    bool MayRefer = false;            ///< "-" and "@FILE" mean what is elsewhere, for a password; never so in JSON
};

/** NAME=VALUE, split at the first "="; nothing for a text without a name or without "=". */
std::optional<Assignment> ParseAssignment(const std::string& text);

/**
 * Reads a file of NAME=VALUE lines, in which empty lines and those that begin with # do not count, or a JSON object of
 * names and values, or a Bios resource with such an object in "Attributes".
 *
 * @throws InputError when the file cannot be read, or a line is none or names a setting a second time.
 */
std::vector<Assignment> ReadAssignments(const std::string& file);

/**
 * The members of a JSON object as assignments; null, lists and the like as defects.
 *
 * @param file only named in complaints. @throws InputError when two names differ in letter case alone.
 */
std::vector<Assignment> ToAssignments(const std::string& file, const boost::json::object& values);

/** Whether the value is to be read from standard input. */
bool IsFromStandardInput(const Assignment& assignment, const System& system);

/**
 * What the library is to check for an assignment: the value as written, but
 * - for a password that is not from JSON, @FILE stands for the text of a file and - for that of standard input, without
 *   one line feed at the end,
 * - for an Integer under --hex, 0x... stands for the number, as --hex shows it.
 *
 * @throws InputError when such a file cannot be read.
 */
std::string ValueToCheck(const Assignment& assignment, const System& system);

} // namespace RedfishConfig::App
