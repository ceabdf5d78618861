#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "checker/options/PathGlob.h"
#include "checker/report/Report.h"

// Calls that are accepted for one plug-in, one application or one file, for a while and for a reason: the [[accept]]
// tables of TOML files, which people write and the page of a report exports.
//
// Texts of an application are compared as reports show them, since that is what an exception was made of.
class AcceptedCalls {
 public:
  // Adds those in `text`, which the user knows as the file `path`. What has expired before `today`, "2026-12-31", is
  // kept to be told of, and excepts nothing. Throws UserError with line and column.
  void add(const std::string& path, const std::string& text, const std::string& today);

  bool isEmpty() const { return entries_.empty(); }

  // Accepts the findings of `report` that are meant, and says of others that their exception has expired. Makes the
  // verdict anew.
  void apply(ApplicationReport& report);

  // A line for the user about each that has expired, and about each that was of no use so far although its application
  // was checked; and one for each file with the number of those whose application was not.
  std::vector<std::string> expired() const;
  std::vector<std::string> unused() const;

 private:
  struct Entry {
    std::string path;  // of its file
    int line = 0;
    std::string method;
    std::optional<std::string> plugin;
    std::optional<PathGlob> application;
    std::optional<PathGlob> file;
    Acceptance acceptance;
    bool hasExpired = false;
    bool isForChecked = false;  // its application was among those that were checked
    bool isUsed = false;

    std::string place() const { return path + ":" + std::to_string(line) + ": "; }
    bool isFor(const Finding& finding, const PathGlob::Parts& file) const;
  };
  class Reader;

  void apply(Finding& finding, const std::string& application, const std::vector<char>& isForApplication);

  std::vector<Entry> entries_;
  std::unordered_map<std::string, std::vector<std::size_t>> byMethod_;
};
