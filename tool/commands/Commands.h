#pragma once

#include "../AppNames.h"
#include "../ExitCode.h"
#include "../Output.h"
#include "../Selection.h"
#include "app/Documents.h"
#include "app/RestoreReport.h"
#include "app/System.h"

#include <functional>
#include <string>
#include <variant>
#include <vector>

/**
 * @file
 * The commands. Each is a function from a system, or from the documents of one, and its own options to a stream; its
 * Attach function gives the command line its options and returns the command as it is to be run with them.
 */

namespace RedfishConfigTool {

/** A command with its options filled in. */
using Runner = std::function<ExitCode(System&, Output&)>;

/** The same for a command on the documents themselves. */
using DocumentsRunner = std::function<ExitCode(const Documents&, Output&)>;

struct Command {
    const char* Name;
    const char* Help;
    const char* Examples; ///< a line each
    std::variant<Runner (*)(CLI::App&), DocumentsRunner (*)(CLI::App&)> Attach;
};

/** All commands, in the order in which the help shows them. */
extern const std::vector<Command> commands;

struct ListOptions {
    std::string Menu;     ///< only settings in menus that have this text in their names
    std::string Type;     ///< only settings of this type, in any letter case
    bool Changed = false; ///< only settings whose value differs from the default
    bool All = false;     ///< hidden and protected settings too
};

/** A line for each setting. */
ExitCode RunList(System& system, const ListOptions& options, Output& output);
Runner AttachList(CLI::App& command);

/** NAME=VALUE lines. */
ExitCode RunGet(System& system, const Selection& selection, Output& output);
Runner AttachGet(CLI::App& command);

/** Everything about the settings named. */
ExitCode RunShow(System& system, const std::vector<std::string>& names, Output& output);
Runner AttachShow(CLI::App& command);

/** The values that settings accept. */
ExitCode RunChoices(System& system, const Selection& selection, Output& output);
Runner AttachChoices(CLI::App& command);

/** The default values. */
ExitCode RunDefaults(System& system, const Selection& selection, Output& output);
Runner AttachDefaults(CLI::App& command);

/** The descriptions. */
ExitCode RunDescribe(System& system, const Selection& selection, Output& output);
Runner AttachDescribe(CLI::App& command);

/** The menus as a tree. */
ExitCode RunGroups(System& system, Output& output);
Runner AttachGroups(CLI::App& command);

struct SetOptions {
    std::vector<std::string> Assignments; ///< NAME=VALUE
    std::string From;                     ///< a file of further ones; empty for none
    bool Partial = false;                 ///< the accepted ones although others are refused
};

/** The PATCH body for new values. */
ExitCode RunSet(System& system, const SetOptions& options, Output& output);
Runner AttachSet(CLI::App& command);

/** The PATCH body that sets settings back to their defaults. */
ExitCode RunReset(System& system, const Selection& selection, Output& output);
Runner AttachReset(CLI::App& command);

struct SaveOptions {
    std::string File;        ///< empty for stdout
    bool Force = false;      ///< the file may be replaced
    bool WithUnique = false; ///< what belongs to one system too
    bool Verbose = false;    ///< say which settings are left out
};

/** The values worth saving, as a document. */
ExitCode RunSave(System& system, const SaveOptions& options, Output& output);
Runner AttachSave(CLI::App& command);

struct RestoreOptions {
    std::string File;
    RestoreScope Scope;
};

/** The PATCH body that restores a saved system. */
ExitCode RunRestore(System& system, const RestoreOptions& options, Output& output);
Runner AttachRestore(CLI::App& command);

/** What differs between a file's values and the system's. */
ExitCode RunCompare(System& system, const std::string& file, Output& output);
Runner AttachCompare(CLI::App& command);

/** What is odd about the documents, and what becomes of it. */
ExitCode RunLint(const Documents& documents, Output& output);
DocumentsRunner AttachLint(CLI::App& command);

struct AdaptOptions {
    std::string File;   ///< empty or "-" for stdout
    bool Force = false; ///< the file may be replaced
};

/** The adapted registry. */
ExitCode RunAdapt(const Documents& documents, const AdaptOptions& options, Output& output);
DocumentsRunner AttachAdapt(CLI::App& command);

} // namespace RedfishConfigTool
