#pragma once

#include <array>
#include <string>

namespace RedfishConfig {

/** A copy in lower case, byte by byte, as the C++ global locale classifies. */
std::string LowerCopy(std::string text);

/** A copy in upper case, byte by byte, as the C++ global locale classifies. */
std::string UpperCopy(std::string text);

/** What each byte becomes when letter case does not count. */
using CaseFolding = std::array<char, 256>;

inline char Fold(const CaseFolding& folding, char character)
{
    return folding[static_cast<unsigned char>(character)];
}

/** Each byte stays as it is, so letter case counts. */
const CaseFolding& NoFolding();

/** Letters of ASCII in upper case. */
const CaseFolding& AsciiUpperCase();

/** Letters in upper case as the C++ global locale classifies. */
CaseFolding GlobalUpperCase();

} // namespace RedfishConfig
