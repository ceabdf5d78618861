#pragma once

#include <string>
#include <vector>

#include "checker/run/DatabaseListing.h"
#include "checker/run/FlowRun.h"

// A TypeScript declaration file: an interface for each plug-in of the database and of `ids`, with the documented
// methods beside what an object element has; overloads of the look-ups for the ids; and variables for those that script
// reaches by one, where the browser has no variable of that name.
std::string declarations(const DatabaseListing& database, const std::vector<PluginId>& ids);
