#include "CommandLine.h"

#include "commands/Commands.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfigTool;

struct Outcome {
    ExitCode Code;
    std::string Out;
    std::string Err;
};

Outcome Tool(const std::vector<std::string>& arguments, const Environment& environment = {})
{
    std::ostringstream out;
    std::ostringstream err;
    const ExitCode code = RunTool(arguments, environment, out, err);
    return {code, out.str(), err.str()};
}

std::string DataFile(const std::string& name)
{
    return std::string(TOOL_TEST_DATA) + "/" + name;
}

Environment SmallSystem()
{
    Environment environment;
    environment.Registry = DataFile("small.json");
    return environment;
}

TEST(ExitCodes, AreTheNumbersThatScriptsKnow)
{
    EXPECT_EQ(static_cast<int>(ExitCode::Answered), 0);
    EXPECT_EQ(static_cast<int>(ExitCode::Refused), 1);
    EXPECT_EQ(static_cast<int>(ExitCode::WrongUsage), 2);
    EXPECT_EQ(static_cast<int>(ExitCode::Unreadable), 3);
}

TEST(CommandTable, EveryCommandIsRunByItsName)
{
    std::set<std::string> names;
    for (const Command& command : commands) {
        EXPECT_TRUE(names.insert(command.Name).second) << command.Name << " is there twice";
        const Outcome help = Tool({command.Name, "--help"});
        EXPECT_EQ(help.Code, ExitCode::Answered);
        EXPECT_NE(help.Out.find(command.Help), std::string::npos);
        EXPECT_NE(help.Out.find("redfishconfig " + std::string(command.Name)), std::string::npos);
        EXPECT_NE(help.Out.find("--include-protected"), std::string::npos) << "the options of every command";
    }
    EXPECT_EQ(names, (std::set<std::string>{"list", "get", "show", "choices", "defaults", "describe", "groups", "set",
                                            "reset", "save", "restore", "compare", "lint", "adapt"}));
}

/** A folder of its own with the files that the examples name. */
class ExampleFolder {
public:
    ExampleFolder()
        : m_Before(std::filesystem::current_path()),
          m_Folder(std::filesystem::temp_directory_path() / ("redfishconfig-" + std::to_string(::getpid())))
    {
        std::filesystem::create_directory(m_Folder);
        std::filesystem::current_path(m_Folder);
        std::ofstream("changes.txt") << "BootMode=Legacy\n";
        std::ofstream("secret.txt") << "open-sesame\n";
    }
    ~ExampleFolder()
    {
        std::filesystem::current_path(m_Before);
        std::filesystem::remove_all(m_Folder);
    }
    ExampleFolder(const ExampleFolder&) = delete;
    ExampleFolder& operator=(const ExampleFolder&) = delete;

private:
    std::filesystem::path m_Before;
    std::filesystem::path m_Folder;
};

TEST(CommandTable, EveryExampleCanBeRun)
{
    const ExampleFolder folder;
    for (const Command& command : commands) {
        std::istringstream examples(command.Examples);
        for (std::string line; std::getline(examples, line);) {
            std::istringstream words(line);
            std::vector<std::string> arguments;
            for (std::string word; words >> word && word != ">";) { // the rest is for the shell
                arguments.push_back(word);
            }
            ASSERT_EQ(arguments.front(), "redfishconfig");
            arguments.erase(arguments.begin());
            const Outcome outcome = Tool(arguments, SmallSystem());
            EXPECT_NE(outcome.Code, ExitCode::WrongUsage) << line << '\n' << outcome.Err;
            EXPECT_NE(outcome.Code, ExitCode::Unreadable) << line << '\n' << outcome.Err;
        }
    }
}

TEST(CommandLine, HelpAndVersionNeedNoRegistry)
{
    EXPECT_EQ(Tool({"--version"}).Out, "redfishconfig " TOOL_TEST_VERSION "\n");
    const Outcome help = Tool({"--help"});
    EXPECT_EQ(help.Code, ExitCode::Answered);
    EXPECT_EQ(help.Err, "");
    for (const Command& command : commands) {
        EXPECT_NE(help.Out.find(command.Help), std::string::npos);
    }
    EXPECT_EQ(Tool({"-h"}).Out, help.Out);
}

TEST(CommandLine, WrongUsageReadsNoFile)
{
    Environment nowhere;
    nowhere.Registry = "/nowhere";
    EXPECT_EQ(Tool({"get"}, nowhere).Code, ExitCode::WrongUsage);
    EXPECT_EQ(Tool({"list", "--type", "Float"}, nowhere).Code, ExitCode::WrongUsage);
    EXPECT_EQ(Tool({"list"}, nowhere).Code, ExitCode::Unreadable);
}

TEST(CommandLine, TheCommandLineGoesBeforeTheEnvironment)
{
    Environment environment;
    environment.Registry = "/nowhere";
    environment.Values = "/nowhere";
    EXPECT_EQ(
        Tool({"get", "BootMode", "--registry", DataFile("small.json"), "--values", DataFile("bare.json")}, environment)
            .Out,
        "BootMode=Legacy\n");
}

TEST(CommandLine, SharedOptionsStandAnywhere)
{
    EXPECT_EQ(Tool({"--hex", "get", "ActiveCores"}, SmallSystem()).Out, "ActiveCores=0x10\n");
    EXPECT_EQ(Tool({"get", "--hex", "ActiveCores"}, SmallSystem()).Out, "ActiveCores=0x10\n");
    EXPECT_EQ(Tool({"get", "ActiveCores", "--hex"}, SmallSystem()).Out, "ActiveCores=0x10\n");
}

TEST(CommandLine, ComplaintsComeAfterTheAnswers)
{
    std::ostringstream both;
    RunTool({"get", "Nothing", "BootMode"}, SmallSystem(), both, both);
    EXPECT_EQ(both.str(), "BootMode=Uefi\nredfishconfig: Unable to find the setting Nothing.\n");
}

TEST(CommandLine, TheLogIsOffAfterwards)
{
    EXPECT_NE(Tool({"set", "BootMode=Legacy", "--trace", "4"}, SmallSystem()).Err, "");
    EXPECT_EQ(Tool({"get", "BootMode"}, SmallSystem()).Err, "");
}

TEST(CommandLine, ColourAndWidthComeFromTheEnvironment)
{
    Environment environment = SmallSystem();
    EXPECT_EQ(Tool({"show", "BootMode"}, environment).Out.find('\033'), std::string::npos);
    environment.Colour = true;
    EXPECT_EQ(Tool({"show", "BootMode"}, environment).Out.rfind("\033[1mBootMode\033[0m\n", 0), 0U);
    EXPECT_EQ(Tool({"show", "BootMode", "--json"}, environment).Out.find('\033'), std::string::npos);
    environment.Colour = false;
    environment.Width = 52;
    EXPECT_NE(Tool({"describe", "BootMode"}, environment).Out.find("started. An installed\n"), std::string::npos);
}

} // namespace
