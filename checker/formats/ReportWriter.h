#pragma once

#include <vector>

#include "checker/formats/RepositoryPath.h"
#include "checker/report/Report.h"

// What every format implements, and what it may be asked for.

struct WriterOptions {
  RunFacts run = {};                          // as evidence, and what was asked for
  std::vector<RunFacts> parts = {};           // of a report that was put together: the runs that it holds
  bool color = false;                         // text
  bool engineLines = false;                   // text: findings as the device prints them
  bool trace = false;                         // text: the steps of each finding below it
  RepositoryPaths paths = RepositoryPaths();  // github, gitlab, sarif: where files of packages come from
};

// Writes the reports of a run in one format: each in the order of the arguments, then the end.
class ReportWriter {
 public:
  virtual ~ReportWriter() = default;
  virtual void add(const ApplicationReport& report) = 0;
  virtual void end(bool wasInterrupted) = 0;
};
