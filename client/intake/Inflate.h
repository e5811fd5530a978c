#pragma once

#include <string>
#include <string_view>

namespace RedfishConfig::Client {

/** Whether the bytes begin as gzip data does. */
bool IsGzip(std::string_view bytes);

/** Decompresses gzip data of one or more members into @p text. @return what is wrong with it, empty when nothing. */
std::string Inflate(std::string_view bytes, std::string& text);

} // namespace RedfishConfig::Client
