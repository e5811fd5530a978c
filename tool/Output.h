#pragma once

#include "Style.h"

#include <boost/json/value.hpp>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace RedfishConfigTool {

/** How answers are to look. */
struct Presentation {
    bool Json = false;
    bool Colour = false;
    std::size_t Width = 80; ///< of the terminal, in characters
    bool Terminal = false;  ///< whether answers go to a screen, which no password may reach
};

/** Where a command writes to: its answers as it goes, its complaints for when the answers are out. */
class Output {
public:
    Output(std::ostream& answers, const Presentation& presentation);

    std::ostream& Answers() { return m_Answers; }
    const Style& Paint() const { return m_Style; }
    std::size_t Width() const { return m_Presentation.Width; }
    bool Json() const { return m_Presentation.Json; }
    bool Terminal() const { return m_Presentation.Terminal; }

    /** Writes a JSON answer. */
    void Write(const boost::json::value& answer);

    /** Notes one line for stderr. The text is escaped. */
    void Complain(const std::string& text);

    /** The lines noted, without the command's name before them. */
    const std::vector<std::string>& Complaints() const { return m_Complaints; }

private:
    std::ostream& m_Answers;
    Presentation m_Presentation;
    Style m_Style;
    std::vector<std::string> m_Complaints;
};

} // namespace RedfishConfigTool
