#pragma once

#include "Input.h"

#include <RedfishConfig/Client/Client.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** The files that a command reads. */
struct DocumentFiles {
    std::string Registry;
    std::string Values;         ///< the system's; empty for none
    std::string RegistryValues; ///< those that the registry came with; empty when they are the system's
};

/** The documents of a system, understood. */
struct Documents {
    DocumentFiles Files;
    std::vector<RedfishConfig::Client::Finding> Findings; ///< of the documents as such
    RedfishConfig::Client::ValuesDocument Published;      ///< the values as published
    RedfishConfig::Client::SystemValues Values;           ///< with the model of the registry
    RedfishConfig::Client::Evaluation Evaluated;
    std::string DefectOfRegistryValues; ///< why those cannot be what the registry came with; empty when they can be

    const RedfishConfig::Client::Model& Model() const { return Values.Of(); }
};

/** @throws InputError when a file cannot be read or is not what it should be. */
Documents ReadDocuments(const DocumentFiles& files);

/** The same of documents that are read. @param registryValues null when the registry came with the system's values */
Documents Understand(const DocumentFiles& files, const RedfishConfig::Client::RegistryDocument& registry,
                     RedfishConfig::Client::ValuesDocument values,
                     const RedfishConfig::Client::ValuesDocument* registryValues);

/** All findings of the documents, of the registry and of the values beside it. */
std::vector<RedfishConfig::Client::Finding> FindingsOf(const Documents& documents);

/** Findings, most often one, because of which an answer may not be what the controller would say. */
struct Doubt {
    RedfishConfig::Client::Severity Level;
    RedfishConfig::Client::Document In;
    std::string Setting; ///< the one that it is about; empty when it can be any
    std::size_t Count;   ///< of findings
};

std::vector<Doubt> DoubtsAbout(const Documents& documents);

} // namespace RedfishConfig::App
