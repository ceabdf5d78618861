#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

// A test in a directory of its own, which is the working directory and is removed after it.
class OwnDirectory : public ::testing::Test {
 protected:
  OwnDirectory() {
    char name[] = "/tmp/tarvo-checker-test-XXXXXX";
    directory_ = mkdtemp(name);
    std::filesystem::current_path(directory_);
  }
  ~OwnDirectory() override {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(directory_);
  }

  static void write(const std::string& path, const std::string& bytes) {
    std::filesystem::create_directories(std::filesystem::absolute(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
  }

  std::string directory_;
};
