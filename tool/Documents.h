#pragma once

#include "Input.h"
#include "Secrets.h"

#include <RedfishConfig/Client/Client.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace RedfishConfigTool {

/** The documents of a system, as they are published and as they are adapted. */
struct Documents {
    std::string RegistryFile;
    std::string ValuesFile; ///< empty for none
    RedfishConfig::Client::RegistryDocument Registry;
    RedfishConfig::Client::ValuesDocument Values;
    RedfishConfig::Client::Adaptation Adapted;
    boost::json::value Document; ///< the adapted registry
};

/**
 * Reads and adapts a registry and the values that belong to it.
 *
 * @param valuesFile empty for none
 * @throws InputError when a file cannot be read or is not what it should be
 */
Documents ReadDocuments(const std::string& registryFile, const std::string& valuesFile);

/** The passwords in the documents, published and adapted. */
Secrets SecretsOf(const Documents& documents);

/** What the values have that no setting can hold, a line each. */
std::vector<std::string> RemarksOn(const Documents& documents);

/** A finding because of which an answer may not be what the controller would say. */
struct Doubt {
    RedfishConfig::Client::Severity Level;
    std::optional<std::string> Setting; ///< the one that it is about; nothing when it can be any
};

std::vector<Doubt> DoubtsAbout(const Documents& documents);

/** Whether an answer was about the setting of that name. */
using IsAbout = std::function<bool(const std::string&)>;

/** A line that counts the doubts about what was answered; empty when there are none. */
std::string Summary(const std::string& registryFile, const std::vector<Doubt>& doubts, const IsAbout& isAbout);

/** "1 error, 2 warnings, 3 notes", without those that there are none of. */
std::string CountedFindings(const std::vector<RedfishConfig::Client::Finding>& findings);

} // namespace RedfishConfigTool
