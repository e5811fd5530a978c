#include "CommandLine.h"
#include "StandardOutput.h"
#include "Terminal.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <system_error>

namespace {

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

int Run(int count, char** arguments)
{
    using namespace RedfishConfigTool;
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN)); // a reader that has seen enough, such as head, is no error
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN)); // a file too large is answered by the write that fails
    StandardOutput buffer;
    std::ostream out(&buffer);
    const Environment environment{Variable("REDFISHCONFIG_REGISTRY"), Variable("REDFISHCONFIG_VALUES"), WantsColour(),
                                  TerminalWidth(), StdoutIsTerminal()};
    const ExitCode code = RunTool({arguments + (count > 0 ? 1 : 0), arguments + count}, environment, out, std::cerr);
    if (buffer.Error() != 0 && buffer.Error() != EPIPE) {
        std::cerr << "redfishconfig: cannot write the answer: " << std::generic_category().message(buffer.Error())
                  << '\n';
        return static_cast<int>(ExitCode::Unreadable);
    }
    return static_cast<int>(code);
}

} // namespace

int main(int count, char** arguments)
{
    try {
        return Run(count, arguments);
    } catch (const std::exception& error) { // memory that ran out
        std::cerr << "redfishconfig: " << error.what() << '\n';
        return static_cast<int>(RedfishConfigTool::ExitCode::Unreadable);
    }
}
