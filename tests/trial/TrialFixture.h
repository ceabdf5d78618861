#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "trial/Trial.h"

// A directory that goes with the test.
class TrialDirectory {
 public:
  TrialDirectory() : path_((std::filesystem::temp_directory_path() / "trial-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~TrialDirectory() { std::filesystem::remove_all(path_); }
  TrialDirectory(const TrialDirectory&) = delete;
  TrialDirectory& operator=(const TrialDirectory&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// An application with one page, and the plug-ins and documented methods that the tests use.
inline trial::Input applicationOf(const std::string& page, std::vector<trial::File> others = {}) {
  trial::Input input;
  input.files = std::move(others);
  input.files.push_back({"www/index.html", page});
  input.startPages = {"www/index.html"};
  input.classIds = {"MORVANE-NAVERTIX-AUDIO", "MORVANE-NAVERTIX-TUNER", "MORVANE-NAVERTIX-TUNERSCAN",
                    "MORVANE-NAVERTIX-KOB"};
  input.extension = "MORVANE-NAVERTIX-KOB";
  input.documented = {"Open", "GetVolume", "SetVolume", "Start"};
  return input;
}

// The methods of calls, sorted.
inline std::multiset<std::string> methodsOf(const std::vector<trial::Call>& calls) {
  std::multiset<std::string> methods;
  for (const trial::Call& call : calls)
    methods.insert(call.method);
  return methods;
}
