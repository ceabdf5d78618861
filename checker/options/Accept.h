#pragma once

#include <set>
#include <string>
#include <vector>

#include "checker/options/AcceptedCalls.h"
#include "checker/report/Report.h"

// What is excepted for a run: methods wherever they are called, compared as the engine compares them, letter by letter;
// and calls that exceptions mean.
struct Accepted {
  std::set<std::string> names;
  AcceptedCalls calls;
};

// The names in `lists`, "Name,Name", and what is in `files`. A file is a list of names, one in a line, with comments
// from "#" on, where blanks around a name are no part of it; or TOML with exceptions. Throws std::runtime_error with a
// message for the user if a file cannot be read, or a list has no name.
Accepted readAccepted(const std::vector<std::string>& lists, const std::vector<std::string>& files);

// Those of `accepted` that excepted no finding in the reports so far: misspelt perhaps, or of no use any more.
class UnusedNames {
 public:
  explicit UnusedNames(const std::set<std::string>& accepted) : unused_(accepted) {}

  void see(const ApplicationReport& report);
  const std::set<std::string>& names() const { return unused_; }

 private:
  std::set<std::string> unused_;
};
