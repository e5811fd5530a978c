#pragma once

#include <string>

namespace RedfishConfigTool {

/** Colours for a terminal; without colour every text stays as it is. */
class Style {
public:
    explicit Style(bool colour = false) : m_Colour(colour) {}

    std::string Heading(const std::string& text) const { return Paint("\033[1m", text); }
    std::string Changed(const std::string& text) const { return Paint("\033[33m", text); }
    std::string Aside(const std::string& text) const { return Paint("\033[2m", text); }

private:
    std::string Paint(const char* begin, const std::string& text) const
    {
        return m_Colour && !text.empty() ? begin + text + "\033[0m" : text;
    }

    bool m_Colour;
};

} // namespace RedfishConfigTool
