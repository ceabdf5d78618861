// Reads what the user excepts: the names of methods, from lists and from files with one in a line, and exceptions, from
// files that are TOML; and finds out which of the names were of no use.
// Test: tests/checker/Accept_test.cpp.

#include "checker/options/Accept.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>
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

std::string textOf(const std::string& path) {
  static constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  char part[4096];
  while (file.read(part, sizeof part) || file.gcount() > 0)
    text.append(part, static_cast<std::size_t>(file.gcount()));
  if (!file.is_open() || file.bad()) {
    throw std::runtime_error("--accept-file '" + path + "' cannot be read: " + std::strerror(errno) +
                             didYouMeanFile(path));
  }
  if (text.rfind(kByteOrderMark, 0) == 0) text.erase(0, std::strlen(kByteOrderMark));
  return text;
}

// No name has the signs that any key and any table of TOML have.
bool isToml(const std::string& line) {
  return line.find_first_of("[=") != std::string::npos;
}

void addFile(const std::string& path, const std::string& today, Accepted& accepted) {
  const std::string text = textOf(path);
  std::set<std::string> names;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    line.erase(std::min(line.find('#'), line.size()));
    if (isToml(line)) return accepted.calls.add(path, text, today);
    (void)addName(line, names);
  }
  accepted.names.merge(names);
}

// In UTC, as TOML writes a date.
std::string today() {
  const std::time_t time = std::time(nullptr);
  std::tm parts{};
  char text[32];
  const bool isKnown = gmtime_r(&time, &parts) != nullptr && std::strftime(text, sizeof text, "%Y-%m-%d", &parts) > 0;
  return isKnown ? text : "";
}

}  // namespace

Accepted readAccepted(const std::vector<std::string>& lists, const std::vector<std::string>& files) {
  Accepted accepted;
  for (const std::string& list : lists)
    addList(list, accepted.names);
  for (const std::string& file : files)
    addFile(file, today(), accepted);
  return accepted;
}

void UnusedNames::see(const ApplicationReport& report) {
  for (const Finding& finding : report.findings) {
    if (finding.status == Finding::Status::accepted) unused_.erase(finding.call.method);
  }
}
