#pragma once

#include <RedfishConfig/Client/Json.h>

#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** What a JSON value is, for a finding: "a list". */
const char* KindOf(const JsonValue& value);

/** The text, cut between two characters and followed by "..." when it has more bytes. */
std::string Cut(std::string text, std::size_t mostBytes);

/** A name that is short enough for several to be in one sentence. */
std::string ShortName(const std::string& name);

/** A value as its document has it, cut where it is long. */
std::string Quote(const JsonValue& value);

/** A text between quotation marks, cut where it is long. */
std::string Quote(std::string_view text);

/** "a", "a and b", "a, b and c"; of more than eight items the first and how many more there are. */
std::string ListInWords(std::vector<std::string> items);

} // namespace RedfishConfig::Client
