#include "Output.h"

#include "JsonText.h"
#include "Text.h"

namespace RedfishConfigTool {

Output::Output(std::ostream& answers, const Presentation& presentation)
    : m_Answers(answers), m_Presentation(presentation), m_Style(presentation.Colour)
{
}

void Output::Write(const boost::json::value& answer)
{
    m_Answers << JsonText(answer) << '\n';
}

void Output::Complain(const std::string& text)
{
    m_Complaints.push_back(Escape(text));
}

} // namespace RedfishConfigTool
