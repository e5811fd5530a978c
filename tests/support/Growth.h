#pragma once

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <functional>

namespace RegistryTest {

/** How many times longer a task takes when it is twice as large, by the least processor time of some runs. */
inline double Growth(const std::function<std::function<void()>(std::size_t size)>& prepare, std::size_t size)
{
    const auto once = prepare(size);
    const auto twice = prepare(2 * size);
    const auto secondsOf = [](const std::function<void()>& task) {
        const std::clock_t begin = std::clock();
        task();
        return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    };
    double least = 1e9;
    double leastOfTwice = 1e9;
    for (int run = 0; run < 5; ++run) {
        least = std::min(least, secondsOf(once));
        leastOfTwice = std::min(leastOfTwice, secondsOf(twice));
    }
    return leastOfTwice / std::max(least, 1e-4);
}

} // namespace RegistryTest
