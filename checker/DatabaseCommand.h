#pragma once

#include <ostream>
#include <string>
#include <vector>

// The API database for those who keep it: what the engine reads of a file, and what it does not.

struct DatabaseFunction {
  std::string name;
  int line;
};

struct DatabaseGroup {
  std::string name;  // its class identifier, else the name of the element
  int line;
  std::vector<DatabaseFunction> functions;  // those that the engine reads
};

struct DatabaseWarning {
  int line;
  std::string text;
};

struct DatabaseListing {
  bool isRead = true;                 // whether the engine can use the file; if not, the warnings say why
  std::vector<DatabaseGroup> groups;  // in the order of the file
  std::vector<DatabaseWarning> warnings;

  // The names that the engine knows after reading the file, in its order.
  std::vector<std::string> names() const;
};

// Throws std::runtime_error with a message for the user if the file cannot be read.
DatabaseListing listDatabase(const std::string& path);

// tarvo-check database: lists `path` to `out` and its warnings, "file:line: warning: ...", to `err`; as JSON all to
// `out`. Returns the exit status: 0, 1 if there are warnings, 2 if the engine cannot use the file.
int printDatabase(const std::string& path, bool json, std::ostream& out, std::ostream& err);

// tarvo-check database diff: lists what became documented or undocumented. Returns the exit status: 0 if nothing did,
// 1, or 2 if the engine cannot use one of the files.
int printDatabaseDiff(const std::string& older, const std::string& newer, bool json, std::ostream& out,
                      std::ostream& err);
