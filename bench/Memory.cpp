#include "Memory.h"

#include "Pairs.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>

namespace RedfishConfigBench {

namespace {

/** A line "KEY  NUMBER kB" of what the kernel tells about this process. */
double StatusBytes(const std::string& key)
{
    constexpr double bytesOfUnit = 1024;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word; status.ignore(std::numeric_limits<std::streamsize>::max(), '\n')) {
        if (word == key) {
            double number = 0;
            status >> number;
            return number * bytesOfUnit;
        }
    }
    throw std::runtime_error("The kernel does not tell " + key);
}

Consumption Measure(const std::function<void()>& work, const std::function<void()>& before)
{
    before();
    malloc_trim(0);                                // else what was freed before is used again and seems to cost nothing
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins here
    const double resident = StatusBytes("VmRSS:");
    Consumption consumption;
    consumption.Seconds = Seconds(work);
    consumption.PeakBytes = StatusBytes("VmHWM:") - resident;
    return consumption;
}

} // namespace

Consumption Consume(const std::function<void()>& work, const std::function<void()>& before)
{
    int channel[2] = {};
    if (pipe(channel) != 0) {
        throw std::runtime_error("No pipe.");
    }
    const pid_t child = fork();
    if (child == 0) {
        int failed = 1;
        try {
            const Consumption consumption = Measure(work, before);
            failed = write(channel[1], &consumption, sizeof consumption) == sizeof consumption ? 0 : 1;
        } catch (...) {
            failed = 1;
        }
        _exit(failed);
    }
    close(channel[1]);
    Consumption consumption;
    const bool told = child > 0 && read(channel[0], &consumption, sizeof consumption) == sizeof consumption;
    close(channel[0]);
    int status = 0;
    if (child > 0) {
        waitpid(child, &status, 0);
    }
    if (!told || status != 0) {
        throw std::runtime_error("A measurement in a process of its own failed.");
    }
    return consumption;
}

} // namespace RedfishConfigBench
