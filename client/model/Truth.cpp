#include <RedfishConfig/Client/Truth.h>

#include <cstddef>

namespace RedfishConfig::Client {

std::string_view Word(Truth truth)
{
    constexpr std::string_view words[] = {"false", "unknown", "true"};
    return words[static_cast<std::size_t>(truth)];
}

} // namespace RedfishConfig::Client
