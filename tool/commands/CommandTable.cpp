#include "Commands.h"

namespace RedfishConfigTool {

const std::vector<Command> commands{
    {"list", "List the settings, a line each",
     "redfishconfig list --changed\n"
     "redfishconfig list --menu boot --type Enumeration\n"
     "redfishconfig list --all --json",
     AttachList},
    {"get", "Print current values as NAME=VALUE",
     "redfishconfig get BootMode\n"
     "redfishconfig get --all --hex",
     AttachGet},
    {"show", "Show everything about a setting on one screen", "redfishconfig show BootMode", AttachShow},
    {"choices", "Print the values that a setting accepts",
     "redfishconfig choices BootMode\n"
     "redfishconfig choices --all",
     AttachChoices},
    {"defaults", "Print default values as NAME=VALUE",
     "redfishconfig defaults BootMode\n"
     "redfishconfig defaults --all --json",
     AttachDefaults},
    {"describe", "Print the help texts of settings", "redfishconfig describe BootMode", AttachDescribe},
    {"groups", "Show the menus and sub-menus as a tree",
     "redfishconfig groups\n"
     "redfishconfig groups --json",
     AttachGroups},
    {"set", "Print the PATCH body for new values",
     "redfishconfig set BootMode=Legacy QuietBoot=true\n"
     "redfishconfig set --from changes.txt --partial\n"
     "redfishconfig set AdminPassword=@secret.txt > body.json",
     AttachSet},
    {"reset", "Print the PATCH body that sets back to defaults",
     "redfishconfig reset BootMode\n"
     "redfishconfig reset --all",
     AttachReset},
    {"save", "Save the values that another system could take over",
     "redfishconfig save -o system.json\n"
     "redfishconfig save --with-unique --verbose",
     AttachSave},
    {"restore", "Print the PATCH body that restores saved values",
     "redfishconfig restore system.json\n"
     "redfishconfig restore --full --with-unique system.json",
     AttachRestore},
    {"compare", "Show where saved values differ from this system", "redfishconfig compare system.json", AttachCompare},
    {"lint", "Tell what is odd about the registry and the values",
     "redfishconfig lint\n"
     "redfishconfig lint --json",
     AttachLint},
    {"adapt", "Write the registry as it is adapted for the library",
     "redfishconfig adapt -o adapted.json\n"
     "redfishconfig adapt > adapted.json",
     AttachAdapt},
};

} // namespace RedfishConfigTool
