#pragma once

#include "Registry.h"

#include <memory>
#include <mutex>
#include <string>

namespace RedfishConfig {

/**
 * The text of a registry, and what was read from it. Managers that are given the same text share one, as long as one of
 * them uses it; so a model is parsed once however many systems of it there are. Safe between threads.
 */
class RegistrySource {
public:
    static std::shared_ptr<RegistrySource> Of(const std::string& text);

    explicit RegistrySource(const std::string& text) : m_Text(text) {}
    ~RegistrySource();
    RegistrySource(const RegistrySource&) = delete;
    RegistrySource& operator=(const RegistrySource&) = delete;

    /** Reads the text, the first time that it can be read. @throws as Registry::Read(), each time that it cannot. */
    std::shared_ptr<const Registry> Read();

private:
    const std::string m_Text;
    std::mutex m_Lock;
    std::shared_ptr<const Registry> m_Registry;
};

} // namespace RedfishConfig
