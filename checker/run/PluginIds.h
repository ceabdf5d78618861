#pragma once

#include <string>
#include <vector>

#include "checker/run/FlowRun.h"

// The ids of plug-in elements of an application: what flow analysis knows of them, or, in a program without it, what
// the engine does. Throws std::runtime_error with a message for the user if the application cannot be read.
std::vector<PluginId> pluginIdsOf(const std::string& application, const std::string& database, unsigned unpacked);
