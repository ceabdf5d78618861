// Test: tests/checker/Checker_test.cpp.

#include "checker/PrivateDirectory.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "platform/RemoveTree.h"

namespace {

constexpr std::size_t kMaxRoot = 100;

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

// The helper process: waits until the pipe's other end is gone, then removes the directory.
[[noreturn]] void removeWhenClosed(int lifeline, const std::string& path) {
  setsid();  // the terminal's interrupt is for the parent
  (void)!chdir("/");
  char byte = 0;
  while (read(lifeline, &byte, 1) < 0 && errno == EINTR) {
  }
  FlashEngine_1_00::removeTree(path);
  _exit(0);
}

// $TMPDIR, if the engine can work below it: it passes over packages below ".fla" and cuts long package names.
std::string temporaryRoot() {
  const char* given = std::getenv("TMPDIR");
  if (given == nullptr || *given == '\0') return "/tmp";
  const std::string root = std::filesystem::absolute(given).string();
  return root.find(".fla") != std::string::npos || root.size() > kMaxRoot ? "/tmp" : root;
}

}  // namespace

PrivateDirectory::PrivateDirectory() {
  path_ = temporaryRoot() + "/tarvo-check-XXXXXX";
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) fail("cannot make a pipe");
  if (mkdtemp(path_.data()) == nullptr) {
    close(ends[0]);
    close(ends[1]);
    fail("cannot make a directory '" + path_ + "'");
  }
  remover_ = fork();
  if (remover_ == 0) {
    close(ends[1]);
    removeWhenClosed(ends[0], path_);
  }
  close(ends[0]);
  lifeline_ = ends[1];
  if (remover_ < 0) {
    close(lifeline_);
    rmdir(path_.c_str());
    fail("cannot start a process");
  }
}

PrivateDirectory::~PrivateDirectory() {
  close(lifeline_);
  while (waitpid(remover_, nullptr, 0) < 0 && errno == EINTR) {
  }
}
