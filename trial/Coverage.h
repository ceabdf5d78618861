#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "trial/Places.h"

namespace trial {

// What of the application's script has run, put together from all pages and worlds.
class Coverage {
 public:
  // Adds the `result` list of `Profiler.takePreciseCoverage`. Returns how many functions ran that had not before.
  std::size_t add(const Json& scripts, const Places& places);

  // Where the functions of a script stand that have not run: begin and end, as the browser counts. Outer ones are in
  // front of their inner ones.
  std::vector<std::pair<int, int>> notRun(const Script& script, const std::string& path) const;

  // By file. `server`'s script files that no page has loaded have bytes, and none that ran.
  std::vector<FileCoverage> files(const std::vector<File>& all) const;

 private:
  using Range = std::pair<int, int>;        // begin, minus end: an outer one is in front of its inner ones
  using Functions = std::map<Range, bool>;  // whether it ran
  using Position = std::pair<int, int>;     // where the script begins in its file
  std::map<std::string, std::map<Position, Functions>> files_;  // by path
};

}  // namespace trial
