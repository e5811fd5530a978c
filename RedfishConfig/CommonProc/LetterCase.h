#pragma once

#include <string>

namespace RedfishConfig {

/** A letter of ASCII in lower case; every other byte as it is. */
constexpr char LowerAscii(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/** A copy in lower case, byte by byte, as the C++ global locale classifies. */
std::string LowerCopy(std::string text);

/** A copy in upper case, byte by byte, as the C++ global locale classifies. */
std::string UpperCopy(std::string text);

} // namespace RedfishConfig
