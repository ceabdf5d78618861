#pragma once

#include <set>
#include <string>

#include "checker/report/Report.h"
#include "checker/run/Deprecations.h"
#include "checker/run/Exclusions.h"
#include "checker/run/FlowRun.h"
#include "checker/run/TrialRun.h"

struct InspectionOptions {
  std::string database;
  bool all = false;  // report calls behind one where the engine stops, and those it has no verdict on
  bool log = false;  // keep the engine's log lines
  std::set<std::string> accepted = {};  // methods that are excepted
  unsigned unpacked = 0;                // MiB that its packages expand to; 0: the engine's own bound
  bool digest = false;                  // take the SHA-256 of the application
  TrialOptions trial = {};              // its pages in a browser besides
  FlowOptions flow = {};                // following its plug-in objects through script
  bool documented = false;              // list calls of documented methods, too; none of them is a finding then
  Deprecations deprecations = {};
  Exclusions exclusions = {};
  UnsavedTexts unsaved = {};  // of its files
  unsigned threads = 1;       // that work; the report is that of one
};

// Checks one application in this process; one at a time. What keeps it from being checked stands in the report.
// `soFar`, if there is one, gets what the report would be if the rules that have run were all, each time before others
// run.
using TakeReport = std::function<void(ApplicationReport report)>;
ApplicationReport inspect(const std::string& application, const InspectionOptions& options,
                          const TakeReport& soFar = {});
