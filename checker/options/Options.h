#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "checker/options/PathList.h"
#include "checker/options/WorkerBounds.h"

// What the program does.
enum class Command {
  check,
  explain,
  disassemble,
  decompile,
  database,
  databaseDiff,
  judge,
  catalogue,
  merge,
  types,
  lsp,
  report,
  compare
};

// What the user asked for, on the command line or in a config file.
struct Options {
  Command command = Command::check;

  std::string database;
  std::vector<std::string> applications;  // in the command line; "-" is a list
  std::vector<std::string> lists;         // files that name applications
  std::shared_ptr<const PathList> named;  // all that are named, in their order
  bool asOne = false;
  bool all = false;
  std::vector<std::string> excludes;  // globs
  bool excludeInPackages = false;
  bool allowIncomplete = false;
  bool denyDeprecated = false;
  std::string baseline;
  std::vector<std::string> accept;
  std::vector<std::string> acceptFiles;
  bool device = false;  // the engine alone, without flow analysis
  bool possible = false;
  bool perPlugin = false;

  bool trial = false;  // run the pages in a browser, too
  std::string browser;
  bool trialUncalled = false;  // call functions that never ran in it, too
  unsigned trialSeconds = 20;

  std::string store;  // file that results are kept in
  std::string run;    // name of the run in the store; empty: today's date
  std::string shard;  // which part of the applications: "3/16", "auto"; empty: all
  std::string uses;   // the method that is asked for

  unsigned jobs = 1;
  unsigned threadsFor(std::size_t applications) const;  // that work on each of so many
  WorkerBounds bounds;

  std::string format;
  std::vector<std::string> outputs;
  std::vector<std::string> maps;  // "app.wgt!/www=src"
  bool engineLines = false;
  bool trace = false;
  bool log = false;
  bool quiet = false;
  bool noProgress = false;
  std::string color = "auto";

  std::string config;  // the file that --config names
  bool noConfig = false;
  bool printConfig = false;
  std::string configFile;  // the file that options were taken from; empty if none was

  // Of the commands other than the check.
  std::string file;
  bool json = false;
  std::string older, newer;         // databases to compare, or applications and reports
  std::vector<std::string> inputs;  // stores to merge, or reports to read

  // The options that the command line has, without dashes. They go before those of a config file.
  std::set<std::string> given;
};

// The options as they are if nobody says anything.
Options defaultOptions();

// Throws UserError, which tells what to do, if there is no database that can be read.
void requireDatabase(const Options& options);

// Whether text on standard output is to be coloured.
bool wantsColor(const Options& options);
