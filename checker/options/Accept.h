#pragma once

#include <set>
#include <string>
#include <vector>

#include "checker/report/Report.h"

// Methods that are excepted for a run. Names are compared as the engine compares them, letter by letter.

// The names in `lists`, "Name,Name", and in `files`: one name in a line, comments from "#" on. Blanks around a name are
// no part of it. Throws std::runtime_error with a message for the user if a file cannot be read or a list has no name.
std::set<std::string> acceptedNames(const std::vector<std::string>& lists, const std::vector<std::string>& files);

// Those of `accepted` that excepted no finding in the reports so far: misspelt perhaps, or of no use any more.
class UnusedNames {
 public:
  explicit UnusedNames(const std::set<std::string>& accepted) : unused_(accepted) {}

  void see(const ApplicationReport& report);
  const std::set<std::string>& names() const { return unused_; }

 private:
  std::set<std::string> unused_;
};
