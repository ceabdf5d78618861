#pragma once

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>

// Cases that are processes of their own, in namespaces of their own, so that they can mount what they like without root
// and leave nothing behind.

namespace child {

constexpr int kNamespacesRefused = 77;  // exit status

// Ends the process if the kernel, or whoever confines us, refuses `step`.
inline void require(bool done, const char* step) {
  if (done) return;
  std::printf("%s: %s\n", step, std::strerror(errno));
  const bool refused = errno == EPERM || errno == EACCES || errno == ENOSYS || errno == ENOSPC || errno == EUSERS;
  std::exit(refused ? kNamespacesRefused : EXIT_FAILURE);
}

// From here on, what this process mounts is its own.
inline void enterMountNamespace() {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
    // An emulator's threads rule out a user namespace. A mount namespace alone takes rights that we may have.
    require(errno == EINVAL && unshare(CLONE_NEWNS) == 0, "unshare");
    require(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount private /");
    return;
  }
  require(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount private /");
  std::ofstream("/proc/self/setgroups") << "deny";
  std::ofstream("/proc/self/uid_map") << user + " " + user + " 1";
  std::ofstream("/proc/self/gid_map") << group + " " + group + " 1";
}

// An empty file system in memory at `path`; `options` as for the mount command, or null.
inline void mountEmpty(const std::string& path, const char* options = nullptr) {
  require(mount("tmpfs", path.c_str(), "tmpfs", 0, options) == 0, ("mount " + path).c_str());
}

// The body of a child process: its failed expectations become the exit status. It leaves through exit, at which the
// leak checker of a sanitizer build looks at the process; an exception ends it, and never runs on in the test program.
[[noreturn]] inline void runAsChild(const std::function<void()>& body) noexcept {
  const ::testing::TestResult& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
  const int failuresBefore = result.total_part_count();
  alarm(120);
  body();
  std::exit(result.total_part_count() == failuresBefore ? EXIT_SUCCESS : EXIT_FAILURE);
}

inline void run(const std::function<void()>& body) {
  std::fflush(nullptr);
  const pid_t process = fork();
  ASSERT_NE(process, -1);
  if (process == 0) runAsChild(body);
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  if (WIFEXITED(status) && WEXITSTATUS(status) == kNamespacesRefused) {
    GTEST_SKIP() << "no private mount namespace on this system";
  }
  EXPECT_EQ(status, 0) << "wait status of the case's process";
}

}  // namespace child
