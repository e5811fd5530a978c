#include "Selection.h"

#include <CLI/App.hpp>

namespace RedfishConfigTool {

std::shared_ptr<Selection> AttachSelection(CLI::App& command)
{
    auto selection = std::make_shared<Selection>();
    command.add_option("NAME", selection->Names, "Names of settings, in any letter case")->type_name("");
    command.add_flag("--all", selection->All, "All settings");
    command.final_callback([selection, &command] {
        if (selection->Names.empty() != selection->All) {
            throw UsageError(command.get_name() + (selection->All ? ": give names or --all, not both"
                                                                  : ": give the names of settings, or --all"));
        }
    });
    return selection;
}

} // namespace RedfishConfigTool
