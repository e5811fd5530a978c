#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace RedfishConfigTool {

/** What a command line lacks or has too much of, in a sentence. */
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/** The settings that a command is asked for: those named, or all. */
struct Selection {
    std::vector<std::string> Names;
    bool All = false;
};

/** Gives a command the arguments NAME... and --all, of which exactly one must be given. */
std::shared_ptr<Selection> AttachSelection(CLI::App& command);

} // namespace RedfishConfigTool
