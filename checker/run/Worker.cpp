// A worker: a process of its own for each application, bounded in time, memory and what it unpacks and sends.
//
// The worker runs what a stranger's files make of it, so it is taken for an enemy: it holds one end of a pipe and
// standard streams, and nothing else of this process. Its memory is bounded by the system, what it unpacks by the
// engine, its time and what it sends by this side. This side never waits for it: it reads what is there, and kills it
// when its time is up. The pipe closes when both the worker and the helper that removes its directory are gone.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/run/Worker.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>

#include "checker/run/TestFaults.h"

namespace {

constexpr auto kRemoval = std::chrono::seconds(30);  // for the directory of a worker that was killed

// Exit statuses of a worker.
constexpr int kSent = 0;
constexpr int kOutOfMemory = 41;
constexpr int kNotSent = 42;

// Only what can be given up again: the helper that removes the directory has no bounds.
void bound(int resource, rlim_t value) {
  rlimit limit{};
  if (getrlimit(static_cast<__rlimit_resource_t>(resource), &limit) != 0) return;
  limit.rlim_cur = std::min(value, limit.rlim_max);
  (void)setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
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

// The worker process.
[[noreturn]] void runWorker(const std::string& application, const WorkerBounds& bounds, const Work& work, int pipe) {
  bound(RLIMIT_CORE, 0);
  if (kIsMemoryBounded) bound(RLIMIT_AS, rlim_t{bounds.memory} << 20);
  // The engine goes on without what it finds no memory for; here it has to be known.
  std::set_new_handler([] { _exit(kOutOfMemory); });
#ifdef TARVO_TEST_FAULTS
  TESTING_ONLY_triggerFault(application, pipe);
#endif
  std::string bytes;
  try {
    bytes = work(application);
  } catch (const std::exception&) {
    _exit(kNotSent);
  }
  _exit(sendAll(pipe, bytes) ? kSent : kNotSent);
}

std::string endOf(int status, const WorkerBounds& bounds) {
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    const char* name = sigabbrev_np(signal);
    return "the process that checked it was ended by " +
           (name == nullptr ? "signal " + std::to_string(signal) : std::string("SIG") + name) + " (" +
           strsignal(signal) + ")";
  }
  switch (WEXITSTATUS(status)) {
    case kSent:
      return "";
    case kOutOfMemory:
      return "it takes more memory than the " + std::to_string(bounds.memory) + " MiB of --memory";
    default:
      return "the process that checked it ended with status " + std::to_string(WEXITSTATUS(status));
  }
}

}  // namespace

Worker::Worker(const std::string& application, const WorkerBounds& bounds, const Work& work, const Signals& signals)
    : application_(application),
      bounds_(bounds),
      deadline_(start_ + std::chrono::seconds(bounds.timeout) + std::chrono::seconds(bounds.besides)) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
  const pid_t parent = getpid();
  process_ = fork();
  if (process_ == 0) {
    signals.leaveToParent();
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kNotSent);
    // Nothing else of the parent's: neither the pipes of other workers, nor the files that reports go to.
    constexpr int kPipe = STDERR_FILENO + 1;
    if (ends[1] != kPipe) (void)dup2(ends[1], kPipe);
    closefrom(kPipe + 1);
    runWorker(application_, bounds_, work, kPipe);
  }
  const int error = errno;
  close(ends[1]);
  pipe_ = ends[0];
  if (process_ < 0) {
    close(pipe_);
    throw std::system_error(error, std::generic_category());
  }
  (void)fcntl(pipe_, F_SETFL, O_NONBLOCK);
}

Worker::~Worker() {
  if (isDone_) return;
  kill();
  end();
}

void Worker::kill() {
  isKilled_ = true;
  (void)::kill(process_, SIGKILL);
}

void Worker::fail(const std::string& reason) {
  if (failure_.empty()) failure_ = reason;
  received_ = {};
  deadline_ = Clock::now() + kRemoval;
  kill();
}

void Worker::receive() {
  constexpr int kReads = 16;  // others wait, too
  std::array<char, 65536> buffer{};
  for (int i = 0; i < kReads; ++i) {
    const ssize_t count = read(pipe_, buffer.data(), buffer.size());
    if (count == 0) return end();
    if (count < 0) {
      if (errno == EINTR) continue;
      if (errno != EAGAIN) fail("its report cannot be read");
      return;
    }
    if (isKilled_) continue;
    received_.append(buffer.data(), static_cast<std::size_t>(count));
    if (received_.size() > std::size_t{bounds_.sent} << 20)
      fail("its report is larger than " + std::to_string(bounds_.sent) + " MiB");
  }
}

void Worker::checkTime() {
  if (Clock::now() < deadline_) return;
  if (isKilled_) return end();  // whoever still holds the pipe is none of ours
  fail("it takes longer than the " + std::to_string(bounds_.timeout) + (bounds_.timeout == 1 ? " second" : " seconds") +
       " of --timeout");
}

void Worker::end() {
  (void)::kill(process_, SIGKILL);  // if it only closed its pipe; for one that is ending this is too late
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  close(pipe_);
  isDone_ = true;
  seconds_ = std::chrono::duration<double>(Clock::now() - start_).count();
  if (failure_.empty()) failure_ = endOf(status, bounds_);
}
