#pragma once

#include <string>

namespace RedfishConfig::Client {

/**
 * Why the core library, which matches values against patterns, cannot use a pattern. Empty when it can. Compiles the
 * pattern, so it is asked for the attributes that a question is about, not for all.
 */
std::string DefectOfPattern(const std::string& pattern);

} // namespace RedfishConfig::Client
