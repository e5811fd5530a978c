#pragma once

namespace RedfishConfig::App {
}

/** The command line tool is one caller of the application library, and uses its names as they are. */
namespace RedfishConfigTool {
using namespace RedfishConfig::App;
}
