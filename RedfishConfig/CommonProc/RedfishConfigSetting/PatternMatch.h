#pragma once

#include <string>

namespace RedfishConfig {

/**
 * Whether a whole text matches a pattern of the ECMAScript grammar, as std::regex_match() answers it.
 *
 * That function recurses with the length of the text, and tries without end where repetitions are nested. Here no
 * pattern and no text can overflow the stack or take long: what would is refused. A thread with a small stack gets the
 * same answers as others.
 *
 * @throws std::exception with the reason, when the pattern is none, or when a limit is exceeded.
 */
bool MatchesPattern(const std::string& text, const std::string& pattern);

} // namespace RedfishConfig
