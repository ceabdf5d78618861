// A directory that goes with its process, whatever ends that: a helper process makes it and holds one end of a socket
// pair, whose other end closes with us. Test: tests/checker/Checker_test.cpp.

#include "checker/run/PrivateDirectory.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "APICheckEngine/Facade.h"

namespace {

constexpr std::size_t kMaxRoot = 100;

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

// The helper process: makes the directory, tells its name, waits until the other end is gone and removes it. Nobody can
// be killed between the making and the waiting.
[[noreturn]] void makeAndRemove(int other, std::string path) {
  setsid();         // the terminal's interrupt is for the parent
  rlimit memory{};  // the parent's bound must not keep us from removing the directory
  if (getrlimit(RLIMIT_AS, &memory) == 0) {
    memory.rlim_cur = memory.rlim_max;
    (void)setrlimit(RLIMIT_AS, &memory);
  }
  if (mkdtemp(path.data()) == nullptr) _exit(errno);
  (void)send(other, path.data(), path.size(), MSG_NOSIGNAL);
  (void)!chdir("/");
  char byte = 0;
  while (read(other, &byte, 1) < 0 && errno == EINTR) {
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

PrivateDirectory::PrivateDirectory() : path_(temporaryRoot() + "/tarvo-check-XXXXXX") {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) fail("cannot make a socket");
  helper_ = fork();
  if (helper_ == 0) {
    close(ends[0]);
    makeAndRemove(ends[1], path_);
  }
  close(ends[1]);
  lifeline_ = ends[0];
  if (helper_ < 0) {
    close(lifeline_);
    fail("cannot start a process");
  }
  ssize_t received = 0;
  while ((received = recv(lifeline_, path_.data(), path_.size(), MSG_WAITALL)) < 0 && errno == EINTR) {
  }
  if (received == static_cast<ssize_t>(path_.size())) return;
  const int status = endHelper();
  errno = WIFEXITED(status) ? WEXITSTATUS(status) : ECHILD;
  fail("cannot make a directory '" + path_ + "'");
}

PrivateDirectory::~PrivateDirectory() {
  (void)endHelper();
}

int PrivateDirectory::endHelper() const {
  close(lifeline_);
  int status = 0;
  while (waitpid(helper_, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}
