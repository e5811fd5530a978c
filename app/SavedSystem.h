#pragma once

#include "Assignments.h"
#include "System.h"

#include <boost/json/object.hpp>

#include <string>
#include <vector>

namespace RedfishConfig::App {

/** Why a setting is not in a saved system. */
struct LeftOut {
    std::string Name;
    std::string Reason;
};

/** The values of a system that are worth saving. */
struct ValuesToSave {
    boost::json::object Values; ///< JSON of each setting's type, by name
    std::vector<LeftOut> Left;
};

/** @param withUnique whether what belongs to one system is saved too. A password never is. */
ValuesToSave CollectValues(System& system, bool withUnique);

/** The version of the format that is written, and the highest that is read. */
constexpr int savedSystemVersion = 1;

/**
 * The document of a saved system: "format", "version", "registry" (its identity), "savedAt" (UTC), "values" as JSON of
 * each setting's type, and "leftOut", a count for each reason.
 */
boost::json::object MakeSavedSystem(const System& system, boost::json::object values,
                                    const std::vector<LeftOut>& leftOut);

/** The time as a document has it, "2026-01-31T12:00:00Z": now, or SOURCE_DATE_EPOCH where that is set. */
std::string TimeInUtc();

/** The values of some system from a file. */
struct SavedValues {
    std::vector<Assignment> Values;
    boost::json::object Registry; ///< of a saved system, the identity of its registry; else empty
};

/**
 * Reads a saved system, a Bios resource, or a bare object of names and values.
 *
 * @throws InputError when the file cannot be read, is none of these, or is of a later version.
 */
SavedValues ReadSavedValues(const std::string& file);

} // namespace RedfishConfig::App
