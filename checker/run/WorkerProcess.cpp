// Test: tests/checker/Catalogue_test.cpp.

#include "checker/run/WorkerProcess.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <new>

namespace {

// MiB of address space that a further thread reserves, most of which it never uses: 64 for what it allocates, and its
// stack. An application must not fail for the processors that there are.
constexpr rlim_t kReserved = 80;

// Only what can be given up again: the helper that removes the directory has no bounds.
void bound(int resource, rlim_t value) {
  rlimit limit{};
  if (getrlimit(static_cast<__rlimit_resource_t>(resource), &limit) != 0) return;
  limit.rlim_cur = std::min(value, limit.rlim_max);
  (void)setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
}

}  // namespace

pid_t startProcess(int end, const WorkerBounds& bounds, const Signals& signals, const std::function<int(int)>& body) {
  const pid_t parent = getpid();
  const pid_t process = fork();
  if (process != 0) return process;
  signals.leaveToParent();
  (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(kWorkFailed);
  // Nothing else of the parent's: neither the pipes of other workers, nor the files that reports go to.
  constexpr int kPipe = STDERR_FILENO + 1;
  if (end != kPipe) (void)dup2(end, kPipe);
  closefrom(kPipe + 1);
  bound(RLIMIT_CORE, 0);
  if (kIsMemoryBounded) bound(RLIMIT_AS, (bounds.memory + (bounds.threads - 1) * kReserved) << 20);
  // The engine goes on without what it finds no memory for; here it has to be known.
  std::set_new_handler([] { _exit(kWorkOutOfMemory); });
  try {
    _exit(body(kPipe));
  } catch (const std::exception&) {
    _exit(kWorkFailed);
  }
}

bool sendAll(int pipe, const std::string& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = write(pipe, bytes.data() + sent, bytes.size() - sent);
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) sent += static_cast<std::size_t>(count);
  }
  return true;
}

std::string failureOf(int status, const WorkerBounds& bounds) {
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    const char* name = sigabbrev_np(signal);
    return "the process that checked it was ended by " +
           (name == nullptr ? "signal " + std::to_string(signal) : std::string("SIG") + name) + " (" +
           strsignal(signal) + ")";
  }
  switch (WEXITSTATUS(status)) {
    case kWorkDone:
      return "";
    case kWorkOutOfMemory:
      return "it takes more memory than the " + std::to_string(bounds.memory) + " MiB of --memory";
    default:
      return "the process that checked it ended with status " + std::to_string(WEXITSTATUS(status));
  }
}
