#pragma once

#include <string>

#include "checker/formats/RepositoryPath.h"
#include "checker/report/Report.h"

// What every format implements, and what it may be asked for.

struct WriterOptions {
  std::string database;                       // path, as shown
  bool color = false;                         // text
  bool engineLines = false;                   // text: findings as the device prints them
  bool all = false;                           // whether all calls were asked for
  bool hasBaseline = false;                   // sarif: whether findings are new or known
  bool allowIncomplete = false;               // junit: whether an incomplete application passes
  bool trace = false;                         // text: the steps of each finding below it
  RepositoryPaths paths = RepositoryPaths();  // github, gitlab, sarif: where files of packages come from

  // What the run was, as evidence; each is left out if it is empty.
  std::string databaseSha256 = {};  // in hexadecimal
  std::string configFile = {};      // path of the one that options were taken from
  std::string started = {};         // date and time, "2026-11-21T22:06:32Z"
  std::string commandLine = {};
};

// Writes the reports of a run in one format: each in the order of the arguments, then the end.
class ReportWriter {
 public:
  virtual ~ReportWriter() = default;
  virtual void add(const ApplicationReport& report) = 0;
  virtual void end(bool wasInterrupted) = 0;
};
