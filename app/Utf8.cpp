#include "Utf8.h"

namespace RedfishConfig::App {

namespace {

unsigned char ByteAt(std::string_view text, std::size_t position)
{
    return static_cast<unsigned char>(text[position]);
}

/** How many bytes a character with that first byte has; 0 when none begins so. */
std::size_t LengthFrom(unsigned char first)
{
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xc2 || first > 0xf4) {
        return 0;
    }
    return first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

/** The smallest code that needs so many bytes; a longer spelling of a smaller one is no UTF-8. */
constexpr char32_t smallestCode[] = {0, 0, 0x80, 0x800, 0x10000};

} // namespace

Character CharacterAt(std::string_view text, std::size_t position)
{
    const unsigned char first = ByteAt(text, position);
    const Character stray{first, 1, false};
    const std::size_t length = LengthFrom(first);
    if (length == 0 || position + length > text.size()) {
        return stray;
    }
    if (length == 1) {
        return {first, 1, true};
    }
    char32_t code = first & (0x7fU >> length);
    for (std::size_t offset = 1; offset < length; ++offset) {
        const unsigned char byte = ByteAt(text, position + offset);
        if ((byte & 0xc0U) != 0x80) {
            return stray;
        }
        code = (code << 6U) | (byte & 0x3fU);
    }
    const bool surrogate = code >= 0xd800 && code <= 0xdfff;
    return code < smallestCode[length] || code > 0x10ffff || surrogate ? stray : Character{code, length, true};
}

bool IsUtf8(std::string_view text)
{
    for (std::size_t position = 0; position < text.size();) {
        const Character character = CharacterAt(text, position);
        if (!character.Valid) {
            return false;
        }
        position += character.Bytes;
    }
    return true;
}

std::size_t CharacterCount(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t position = 0; position < text.size(); position += CharacterAt(text, position).Bytes) {
        ++count;
    }
    return count;
}

} // namespace RedfishConfig::App
