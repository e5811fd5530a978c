#include "NameHash.h"

#include <random>

namespace RedfishConfig {

std::uint64_t NameHash::Place()
{
    static const std::uint64_t place = [] {
        std::random_device device;
        constexpr unsigned half = 32;
        const std::uint64_t drawn = (std::uint64_t{device()} << half) | device();
        constexpr std::uint64_t least = 256; // a smaller place would tell short names apart badly
        return least + drawn % (prime - least);
    }();
    return place;
}

} // namespace RedfishConfig
