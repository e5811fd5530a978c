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
};

} // namespace RedfishConfigTool
