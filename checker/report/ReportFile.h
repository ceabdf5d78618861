#pragma once

#include <functional>
#include <string>
#include <vector>

#include "checker/report/Report.h"

// What a report says of a run as a whole.
struct ReportedRun {
  RunFacts facts;
  std::vector<RunFacts> parts;  // if it was put together of several runs
  bool isWhole = false;         // whether the run came to its end
  bool wasInterrupted = false;
};

// Reads the report at `path`, in the format json or jsonl, and hands over each application as it is read. Returns the
// runs in it: one, or several where files in the format jsonl were joined; the last one of these may not be whole.
//
// Throws std::runtime_error if it cannot be read, or is no such report, of another version, or cut off. What it says
// goes on behind the name of the report, "is no report of this program ...: line 3, byte 7: ...". Applications that
// stand before have been handed over by then.
std::vector<ReportedRun> readReport(const std::string& path, const std::function<void(ApplicationReport&&)>& take);

// The same with a text.
std::vector<ReportedRun> readReportText(const std::string& text, const std::function<void(ApplicationReport&&)>& take);

// What can be said of several runs together. What they do not have in common stands side by side, or is left out where
// that would mean nothing; a property is there if all have it, a baseline if one has it.
RunFacts together(const std::vector<RunFacts>& runs);
