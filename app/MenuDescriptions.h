#pragma once

#include "Menus.h"

#include <RedfishConfig/Client/Model.h>

#include <boost/json/value.hpp>

#include <map>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** The menus that a registry describes, of its document as published. */
std::vector<MenuDescription> MenusIn(const boost::json::value& registry);

/** The same of its model. */
std::vector<MenuDescription> MenusIn(const RedfishConfig::Client::Model& model);

/** Menus to sub-menus: the second piece of the attributes' menu paths to the third ones, in the registry's order. */
std::map<std::string, std::vector<std::string>> GroupsIn(const RedfishConfig::Client::Model& model);

} // namespace RedfishConfig::App
