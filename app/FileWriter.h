#pragma once

#include <stdexcept>
#include <string>

namespace RedfishConfig::App {

/** Why a file could not be written: one line that names it. What was there before is still there. */
struct WriteError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/**
 * Writes a file as a whole or not at all: to a temporary name beside it, flushed to disk, and then given its name. Only
 * its owner may read it (mode 0600).
 *
 * @param replace whether a file that is there already may be replaced. Without it none is, even one that appears at the
 *        last moment.
 * @throws WriteError
 */
void WriteFile(const std::string& file, const std::string& text, bool replace);

} // namespace RedfishConfig::App
