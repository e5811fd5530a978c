#pragma once

#include <cstddef>
#include <string>

namespace RegistryTest {

/** A piece of text so many times over. */
inline std::string Times(std::size_t count, const std::string& piece)
{
    std::string text;
    text.reserve(count * piece.size());
    for (; count > 0; --count) {
        text += piece;
    }
    return text;
}

} // namespace RegistryTest
