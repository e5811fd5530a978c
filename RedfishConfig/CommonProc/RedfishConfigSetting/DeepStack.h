#pragma once

#include <functional>

namespace RedfishConfig {

/**
 * Runs a function on a stack of which at least 6 MiB are free: on that of the calling thread where it has so much left,
 * else on a thread of its own, which ends before this returns.
 *
 * Threads other than the first one have small stacks on some systems, and those that programs start with a size of
 * their own. How much is left tells nothing about the answer then.
 *
 * @throws what the function throws; std::system_error when no thread can be started.
 */
void RunOnDeepStack(const std::function<void()>& function);

} // namespace RedfishConfig
