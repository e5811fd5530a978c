#include "Text.h"

#include <algorithm>

namespace RedfishConfigTool {

namespace {

/** Closed ranges of characters that break or turn round a line, beside the control characters. */
constexpr struct {
    char32_t First;
    char32_t Last;
} steeringRanges[] = {
    {0x061c, 0x061c},
    {0x200e, 0x200f},
    {0x2028, 0x202e},
    {0x2066, 0x2069},
};

std::string EscapeCharacter(const Character& character)
{
    switch (character.Code) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    const bool isByte = !character.Valid || character.Code <= 0x7f;
    return isByte ? "\\x" + HexDigits(character.Code, 2) : "\\u" + HexDigits(character.Code, 4);
}

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

void WrapParagraph(std::string_view paragraph, std::size_t width, std::vector<std::string>& lines)
{
    std::string line;
    std::size_t begin = 0;
    while ((begin = paragraph.find_first_not_of(" \t", begin)) != std::string_view::npos) {
        const std::size_t end = std::min(paragraph.find_first_of(" \t", begin), paragraph.size());
        const std::string word = Escape(paragraph.substr(begin, end - begin));
        begin = end;
        if (!line.empty() && CharacterCount(line) + 1 + CharacterCount(word) > width) {
            lines.push_back(std::move(line));
            line.clear();
        }
        line += line.empty() ? word : " " + word;
    }
    lines.push_back(std::move(line));
}

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

bool SteersTerminal(char32_t code)
{
    return code < 0x20 || (code >= 0x7f && code <= 0x9f) ||
           std::any_of(std::begin(steeringRanges), std::end(steeringRanges),
                       [code](const auto& range) { return code >= range.First && code <= range.Last; });
}

std::string HexDigits(char32_t code, std::size_t digits)
{
    std::string text;
    for (; code != 0 || text.size() < digits; code >>= 4U) {
        text.insert(text.begin(), "0123456789abcdef"[code & 0xfU]);
    }
    return text;
}

std::string Escape(std::string_view text)
{
    if (std::all_of(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte <= '~'; })) {
        return std::string(text); // nearly every text
    }
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const Character character = CharacterAt(text, position);
        if (!character.Valid || SteersTerminal(character.Code)) {
            escaped += EscapeCharacter(character);
        } else {
            escaped += text.substr(position, character.Bytes);
        }
        position += character.Bytes;
    }
    return escaped;
}

std::string ReplaceAll(std::string text, std::string_view piece, std::string_view replacement)
{
    for (std::size_t at = 0; (at = text.find(piece, at)) != std::string::npos; at += replacement.size()) {
        text.replace(at, piece.size(), replacement);
    }
    return text;
}

std::size_t CharacterCount(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t position = 0; position < text.size(); position += CharacterAt(text, position).Bytes) {
        ++count;
    }
    return count;
}

std::string Pad(std::string_view text, std::size_t width)
{
    const std::size_t count = CharacterCount(text);
    return std::string(text) + std::string(width > count ? width - count : 0, ' ');
}

std::vector<std::string> Wrap(std::string_view text, std::size_t width)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
        WrapParagraph(text.substr(begin, end - begin), width, lines);
        const bool two = text.substr(end, 2) == "\r\n";
        begin = end + (two ? 2 : 1);
    }
    while (lines.size() > 1 && lines.back().empty()) {
        lines.pop_back();
    }
    return lines;
}

std::string WithoutValue(const std::string& argument)
{
    const std::size_t sign = argument.find('=');
    return sign == std::string::npos ? argument : argument.substr(0, sign + 1) + "...";
}

std::string Counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace RedfishConfigTool
