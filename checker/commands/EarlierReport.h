#pragma once

#include <string>
#include <vector>

#include "checker/report/ReportFile.h"

// A report of earlier runs, all of it in memory.
struct EarlierReport {
  std::vector<ApplicationReport> applications;
  std::vector<RunFacts> runs;  // those that it was put together of
  bool wasInterrupted = false;

  void add(EarlierReport&& other);
};

// Reads the report at `path`, in the format json or jsonl; "-" is standard input. Throws UserError, with file and line,
// if it cannot be read or is not whole.
EarlierReport earlierReport(const std::string& path);
