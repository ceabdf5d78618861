#pragma once

#include <optional>
#include <string>
#include <vector>

// The API database for those who keep it: what the engine reads of a file, and what it does not.

struct DatabaseFunction {
  std::string name;
  int line;

  // From attributes, which the engine passes over.
  std::string since = {};  // version of the platform that it came with; may be empty, as those below
  bool isDeprecated = false;
  std::string deprecatedSince = {};
  std::string replacement = {};  // the method to call instead
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

// Why no application should be checked against a database, and where that is seen.
struct DatabaseFault {
  int line;
  int column;
  std::string text;
};

struct DatabaseListing {
  bool isRead = true;                  // whether the engine takes the file; if not, the warnings say why
  std::optional<DatabaseFault> fault;  // the engine may take a file that has one
  std::vector<DatabaseGroup> groups;   // in the order of the file
  std::vector<DatabaseWarning> warnings;

  // The names that the engine knows after reading the file, in its order.
  std::vector<std::string> names() const;
};

// Throws std::runtime_error with a message for the user if the file cannot be read.
DatabaseListing listDatabase(const std::string& path);

// Why no application should be checked against the database at `path`; none if it is sound. Throws like listDatabase.
std::optional<DatabaseFault> databaseFault(const std::string& path);
