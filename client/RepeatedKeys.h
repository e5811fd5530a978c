#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** Keys that stand in an object more than once. */
struct RepeatedKeys {
    std::vector<std::string> Places; ///< JSON Pointers to the first of them, as many as Limits says
    std::size_t Count = 0;           ///< of all of them, each repetition for itself
};

/** Looks through JSON text that was parsed already, which tells nothing of them: of equal keys the last one stays. */
RepeatedKeys FindRepeatedKeys(std::string_view text);

} // namespace RedfishConfig::Client
