#include "LetterCase.h"

#include <locale>

namespace RedfishConfig {

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

} // namespace RedfishConfig
