#pragma once

#include <cstddef>
#include <functional>

namespace RedfishConfigBench {

/** What some work took, measured in a process of its own. */
struct Consumption {
    double Seconds = 0;
    double PeakBytes = 0; ///< resident at the highest, above what was resident before
};

/**
 * @param before is done first and does not count: something like the work, so that the code it needs is in memory
 * @throws std::runtime_error when the process cannot be made or fails
 */
Consumption Consume(const std::function<void()>& work, const std::function<void()>& before);

} // namespace RedfishConfigBench
