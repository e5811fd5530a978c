#pragma once

#include <cstddef>
#include <string_view>

namespace RedfishConfig::App {

/** One character of a UTF-8 text. */
struct Character {
    char32_t Code = 0;
    std::size_t Bytes = 1;
    bool Valid = false; ///< false for a byte that begins no character; then Code is that byte
};

/** The character that begins at @p position, which is within the text. */
Character CharacterAt(std::string_view text, std::size_t position);

/** Whether all bytes of a text are characters. */
bool IsUtf8(std::string_view text);

/** The number of characters of a UTF-8 text, a stray byte counting as one. */
std::size_t CharacterCount(std::string_view text);

} // namespace RedfishConfig::App
