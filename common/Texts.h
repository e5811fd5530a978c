#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace RedfishConfig::Texts {

/** The text with every occurrence of @p piece, which is not empty, replaced. */
inline std::string ReplaceAll(std::string text, std::string_view piece, std::string_view replacement)
{
    for (std::size_t at = 0; (at = text.find(piece, at)) != std::string::npos; at += replacement.size()) {
        text.replace(at, piece.size(), replacement);
    }
    return text;
}

} // namespace RedfishConfig::Texts
