#pragma once

#include <RedfishConfig/Client/Documents.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/** What controllers published, where it is at hand: the folders in REDFISHCONFIG_REGISTRIES. */
namespace ClientTest {

struct RealSystem {
    std::string Name;
    std::string Registry; ///< the text
    std::string Bios;     ///< the text; empty where there is none

    RedfishConfig::Client::ValuesDocument Values() const
    {
        return Bios.empty() ? RedfishConfig::Client::ValuesDocument() : RedfishConfig::Client::ReadValuesDocument(Bios);
    }
};

inline std::string ReadFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline std::vector<RealSystem> RealSystems()
{
    std::vector<RealSystem> systems;
    const char* given = std::getenv("REDFISHCONFIG_REGISTRIES");
    if (given == nullptr) {
        return systems;
    }
    for (const auto& entry : std::filesystem::directory_iterator(given)) {
        if (std::filesystem::exists(entry.path() / "registry.json")) {
            systems.push_back({entry.path().filename(), ReadFile(entry.path() / "registry.json"),
                               ReadFile(entry.path() / "bios.json")});
        }
    }
    std::sort(systems.begin(), systems.end(),
              [](const RealSystem& left, const RealSystem& right) { return left.Name < right.Name; });
    return systems;
}

} // namespace ClientTest

#define SKIP_WITHOUT_REGISTRIES()                                                                                      \
    do {                                                                                                               \
        if (std::getenv("REDFISHCONFIG_REGISTRIES") == nullptr) {                                                      \
            GTEST_SKIP() << "REDFISHCONFIG_REGISTRIES names no folder of registries";                                  \
        }                                                                                                              \
    } while (false)
