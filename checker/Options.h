#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "checker/Worker.h"

// What the user asked for, on the command line or in a config file.
struct Options {
  std::string database;
  std::vector<std::string> applications;
  std::vector<std::string> lists;  // files that name applications
  bool all = false;
  bool allowIncomplete = false;
  std::string baseline;
  std::vector<std::string> accept;
  std::vector<std::string> acceptFiles;

  unsigned jobs = 1;
  WorkerBounds bounds;

  std::string format;
  std::vector<std::string> outputs;
  bool engineLines = false;
  bool log = false;
  bool quiet = false;
  bool noProgress = false;
  std::string color = "auto";

  std::string config;
  bool noConfig = false;
  bool printConfig = false;

  // Of the commands other than the check.
  std::string file;
  bool json = false;
  std::string older, newer;  // databases to compare
};

// The options of the check, with their defaults, and its name as a command; also what the help says about them. A new
// option is declared here, and nowhere else: config files know it, too.
void addOptions(CLI::App& app, Options& options);

// Sets what the command line leaves open from the config file that it names, else from the nearest .tarvo-check.toml
// in the working directory and the directories above; not for a command that uses no database. After `app.parse`.
// Throws UserError with file and key.
void readConfig(CLI::App& app, const Options& options);

// The options in effect, as a config file.
std::string configText(const CLI::App& app, const Options& options);

// What --help prints: about the command that was named, else about the check.
std::string helpText(const CLI::App& app);

// What the user did wrong, and what was probably meant.
std::string explained(const CLI::App& app, const CLI::ParseError& error);

// Throws UserError, which tells what to do, if there is no database.
void requireDatabase(const Options& options);

// Whether text on standard output is to be coloured.
bool wantsColor(const Options& options);
