#include "Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace RedfishConfigTool {

namespace {

constexpr std::size_t usualWidth = 80;

std::string_view Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

bool StdoutIsTerminal()
{
    return isatty(STDOUT_FILENO) == 1;
}

bool WantsColour()
{
    return StdoutIsTerminal() && Variable("NO_COLOR").empty() && Variable("TERM") != "dumb";
}

std::size_t TerminalWidth()
{
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : usualWidth;
}

} // namespace RedfishConfigTool
