#pragma once

#include <string>
#include <vector>

namespace RedfishConfig::App {

/**
 * The names that are nearest to a misspelt one, at most three, the nearest first: those that a few slips away from it
 * (a letter wrong, missing, too many, or two changed round), then those that contain it. Letter case does not count.
 */
std::vector<std::string> NearestNames(const std::string& misspelt, const std::vector<std::string>& names);

/** " Did you mean A, B or C?", or nothing without names. */
std::string DidYouMean(const std::vector<std::string>& names);

/** "A, B or C". */
std::string JoinWithOr(const std::vector<std::string>& names);

} // namespace RedfishConfig::App
