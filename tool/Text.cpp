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
