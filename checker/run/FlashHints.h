#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "checker/report/Report.h"
#include "checker/run/FlashMovie.h"

// What the strings of a movie's ActionScript 3 say of plug-ins. That script is not read, so these are no calls: they
// tell a person where to look.
class FlashHints {
 public:
  // The class identifiers of all plug-ins, and what is documented for each.
  FlashHints(std::vector<std::string> identifiers, const std::map<std::string, std::vector<std::string>>& methods);

  // The hints in a movie, each string once, for the file that people see as `path`.
  std::vector<Undetermined> in(const FlashMovie& movie, const std::string& path) const;

 private:
  const char* reasonFor(const std::string& text) const;

  std::vector<std::string> identifiers_;
  std::map<std::string, std::string> plugins_;  // one that a method is documented for, by the method
  std::set<std::string> verbs_;                 // first words of documented methods
};
