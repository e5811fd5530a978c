#include "Figures.h"
#include "Pairs.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

extern char** environ;

namespace RedfishConfigBench {

namespace {

namespace files = std::filesystem;

/** Runs a program to its end; what it prints is thrown away. */
void Run(const std::vector<std::string>& arguments)
{
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str())); // which is not written to
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failure = posix_spawn(&process, pointers.front(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (failure != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status)) {
        throw std::runtime_error("cannot run " + arguments.front());
    }
}

struct Command {
    const char* Name;
    std::vector<std::string> Arguments;
    double Goal; ///< of the ratio
};

const std::vector<Command>& Commands()
{
    static const std::vector<Command> commands{
        {"list --all", {"list", "--all"}, 0.35},
        {"get --all", {"get", "--all"}, 1},
        {"lint", {"lint"}, 1},
        {"adapt", {"adapt"}, 1},
    };
    return commands;
}

std::vector<std::string> CommandLine(const std::string& tool, const files::path& folder, const Command& command)
{
    std::vector<std::string> line{tool, "--registry", folder / "registry.json"};
    if (files::exists(folder / "bios.json")) {
        line.insert(line.end(), {"--values", folder / "bios.json"});
    }
    line.insert(line.end(), command.Arguments.begin(), command.Arguments.end());
    return line;
}

} // namespace

void RegisterWholeProcesses()
{
    const char* const registries = std::getenv("REDFISHCONFIG_REGISTRIES");
    const char* const baseline = std::getenv("REDFISHCONFIG_BASELINE");
    if (registries == nullptr || baseline == nullptr || !files::exists(baseline)) {
        return;
    }
    for (const auto& entry : files::directory_iterator(registries)) {
        for (const Command& command : Commands()) {
            if (!files::exists(entry.path() / "registry.json")) {
                continue;
            }
            const std::string name = std::string("process ") + command.Name + " against the baseline/";
            benchmark::RegisterBenchmark((name + entry.path().filename().string()).c_str(),
                                         [=](benchmark::State& state) {
                                             const auto now = CommandLine(REDFISHCONFIG_TOOL, entry.path(), command);
                                             const auto before = CommandLine(baseline, entry.path(), command);
                                             TimeInTurn(
                                                 state, command.Goal, [&] { Run(now); }, [&] { Run(before); });
                                         })
                ->UseManualTime()
                ->Iterations(15);
        }
    }
}

} // namespace RedfishConfigBench
