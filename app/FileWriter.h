#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include <sys/types.h>

namespace RedfishConfig::App {

/** Why a file could not be written: one line that names it. What was there before is still there. */
struct WriteError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/** What the operating system does for a file that is written, as POSIX has it: -1 and errno where it fails. */
struct FileCalls {
    ssize_t (*Write)(int descriptor, const void* data, std::size_t bytes);
    int (*Sync)(int descriptor);
    int (*Rename)(const char* from, const char* to);
    int (*Link)(const char* from, const char* to);             ///< fails where the name is taken
    int (*RenameToFreeName)(const char* from, const char* to); ///< the same
};

/** Those of the system. */
const FileCalls& SystemFileCalls();

/**
 * Writes a file as a whole or not at all: to a temporary name beside it, flushed to disk, and then given its name. Only
 * its owner may read it (mode 0600).
 *
 * @param replace whether a file that is there already may be replaced. Without it none is, even one that appears at the
 *        last moment.
 * @param calls others than the system's are for tests
 * @throws WriteError
 */
void WriteFile(const std::string& file, const std::string& text, bool replace,
               const FileCalls& calls = SystemFileCalls());

} // namespace RedfishConfig::App
