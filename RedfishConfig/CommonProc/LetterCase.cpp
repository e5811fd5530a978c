#include "LetterCase.h"

#include <locale>
#include <numeric>

namespace RedfishConfig {

namespace {

CaseFolding UpperCase(const std::locale& locale)
{
    CaseFolding folding = NoFolding();
    std::use_facet<std::ctype<char>>(locale).toupper(folding.data(), folding.data() + folding.size());
    return folding;
}

} // namespace

std::string LowerCopy(std::string text)
{
    const std::locale global;
    std::use_facet<std::ctype<char>>(global).tolower(text.data(), text.data() + text.size());
    return text;
}

std::string UpperCopy(std::string text)
{
    const std::locale global;
    std::use_facet<std::ctype<char>>(global).toupper(text.data(), text.data() + text.size());
    return text;
}

const CaseFolding& NoFolding()
{
    static const CaseFolding folding = [] {
        CaseFolding bytes{};
        std::iota(bytes.begin(), bytes.end(), '\0');
        return bytes;
    }();
    return folding;
}

const CaseFolding& AsciiUpperCase()
{
    static const CaseFolding folding = UpperCase(std::locale::classic());
    return folding;
}

CaseFolding GlobalUpperCase()
{
    return UpperCase(std::locale());
}

} // namespace RedfishConfig
