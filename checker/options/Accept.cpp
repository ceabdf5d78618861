// Reads the names of methods that the user takes for documented ones, from lists and from files with one in a line, and
// finds out which of them were of no use.
// Test: tests/checker/Accept_test.cpp.

#include "checker/options/Accept.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include "checker/options/Suggestion.h"

namespace {

// Adds the text without blanks around it, if anything is left.
bool addName(const std::string& text, std::set<std::string>& names) {
  static constexpr const char* kBlanks = " \t\n\v\f\r";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos) return false;
  names.insert(text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin));
  return true;
}

void addList(const std::string& list, std::set<std::string>& names) {
  bool hasName = false;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    hasName = addName(list.substr(at, end - at), names) || hasName;
    at = end + 1;
  }
  if (!hasName) throw std::runtime_error("--accept '" + list + "' names no method; write --accept Name,Name");
}

void addFile(const std::string& path, std::set<std::string>& names) {
  static constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  bool isFirst = true;
  for (std::string line; std::getline(file, line); isFirst = false) {
    if (isFirst && line.rfind(kByteOrderMark, 0) == 0) line.erase(0, std::strlen(kByteOrderMark));
    (void)addName(line.substr(0, line.find('#')), names);
  }
  if (!file.is_open() || file.bad()) {
    throw std::runtime_error("--accept-file '" + path + "' cannot be read: " + std::strerror(errno) +
                             didYouMeanFile(path));
  }
}

}  // namespace

std::set<std::string> acceptedNames(const std::vector<std::string>& lists, const std::vector<std::string>& files) {
  std::set<std::string> names;
  for (const std::string& list : lists)
    addList(list, names);
  for (const std::string& file : files)
    addFile(file, names);
  return names;
}

void UnusedNames::see(const ApplicationReport& report) {
  for (const Finding& finding : report.findings) {
    if (finding.status == Finding::Status::accepted) unused_.erase(finding.call.method);
  }
}
