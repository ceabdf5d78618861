#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>

#include "RunCommand.h"

namespace fs = std::filesystem;

// tarvo-check in a new directory, with a temporary directory in which nothing may be left.
class Checker : public ::testing::Test {
 protected:
  Checker() {
    char name[] = "/tmp/tarvo-checker-test-XXXXXX";
    directory_ = mkdtemp(name);
    fs::create_directory(directory_ + "/tmp");
    fs::create_directories(directory_ + "/cwd/www");
    fs::current_path(directory_ + "/cwd");
    setenv("TMPDIR", (directory_ + "/tmp").c_str(), 1);
  }
  ~Checker() override {
    EXPECT_TRUE(fs::is_empty(directory_ + "/tmp")) << "something was left behind";
    unsetenv("TMPDIR");
    fs::current_path("/");
    fs::remove_all(directory_);
  }

  static void write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }

  static Output check(const std::string& arguments) { return runCommand(CHECKER " " + arguments); }

  // A summary may follow the lines of the applications.
  static void expectReports(const std::string& text, const std::string& expected) {
    EXPECT_EQ(text.substr(0, expected.size()), expected);
  }

  // Whether nothing is left in the temporary directory, or will soon be.
  bool isTidy() const {
    for (int i = 0; i < 2000 && !fs::is_empty(directory_ + "/tmp"); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return fs::is_empty(directory_ + "/tmp");
  }

  // Checkers for the device come without flow analysis.
#ifdef TARVO_FLOW
  static constexpr bool kHasFlow = true;
#else
  static constexpr bool kHasFlow = false;
#endif

  // Waits until that many runs have their directories, and stay. Under an emulator, even a quick one takes 0.3 s.
#ifdef TARVO_EMULATED
  static constexpr std::chrono::milliseconds kLongerThanAQuickRun{1000};
#else
  static constexpr std::chrono::milliseconds kLongerThanAQuickRun{200};
#endif
  void awaitRuns(std::size_t count) const {
    std::set<fs::path> before, runs;
    do {
      before = std::move(runs);
      std::this_thread::sleep_for(kLongerThanAQuickRun);
      runs.clear();
      for (const fs::directory_entry& entry : fs::directory_iterator(directory_ + "/tmp"))
        runs.insert(entry.path());
    } while (runs.size() != count || runs != before);
  }

  std::string directory_;
};

inline const std::string kExamples = EXAMPLES;
inline const std::string kDeviceRules = "rules: engine\n";  // the last line of a text report with --device
inline const std::string kPage = "<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>\n";
inline const std::string kCall = "function f() {\n var tv = document.getElementById('tv');\n tv.GetSerial();\n}\n";
