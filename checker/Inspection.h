#pragma once

#include <set>
#include <string>

#include "checker/Report.h"

struct InspectionOptions {
  std::string database;
  bool all = false;                // report calls behind one where the engine stops, and those it has no verdict on
  bool log = false;                // keep the engine's log lines
  std::set<std::string> accepted;  // methods that are excepted
};

// Checks one application in this process; one at a time. What keeps it from being checked stands in the report.
ApplicationReport inspect(const std::string& application, const InspectionOptions& options);
