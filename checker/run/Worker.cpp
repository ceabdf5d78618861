// A worker: a process of its own for each application, bounded in time, memory and what it unpacks and sends.
//
// The worker runs what a stranger's files make of it, so it is taken for an enemy: it holds one end of a pipe and
// standard streams, and nothing else of this process. Its memory is bounded by the system, what it unpacks by the
// engine, its time and what it sends by this side. This side never waits for it: it reads what is there, and kills it
// when its time is up. The pipe closes when both the worker and the helper that removes its directory are gone.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/run/Worker.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "checker/run/TestFaults.h"
#include "checker/run/WorkerProcess.h"

namespace {

// Each text stands behind its length, 8 bytes, the lowest first.
constexpr std::size_t kLength = 8;

std::string framed(const std::string& bytes) {
  std::string frame;
  frame.reserve(kLength + bytes.size());
  for (std::size_t i = 0; i < kLength; ++i)
    frame += static_cast<char>(std::uint64_t{bytes.size()} >> (8 * i) & 0xFF);
  return frame += bytes;
}

// The last text that is whole; empty if there is none.
std::string lastOf(const std::string& frames) {
  std::string_view rest = frames, last;
  while (rest.size() >= kLength) {
    std::uint64_t length = 0;
    for (std::size_t i = kLength; i-- > 0;)
      length = length << 8 | static_cast<unsigned char>(rest[i]);
    rest.remove_prefix(kLength);
    if (length > rest.size()) break;
    last = rest.substr(0, static_cast<std::size_t>(length));
    rest.remove_prefix(last.size());
  }
  return std::string(last);
}

constexpr auto kRemoval = std::chrono::seconds(30);  // for the directory of a worker that was killed

// The worker process.
int runWorker(const std::string& application, const Work& work, int pipe) {
#ifdef TARVO_TEST_FAULTS
  TESTING_ONLY_triggerFault(application, pipe);
#endif
  const auto sendFirst = [&](const std::string& bytes) {
    if (!sendAll(pipe, framed(bytes))) _exit(kWorkFailed);
#ifdef TARVO_TEST_FAULTS
    TESTING_ONLY_triggerLateFault(application);
#endif
  };
  return sendAll(pipe, framed(work(application, sendFirst))) ? kWorkDone : kWorkFailed;
}

}  // namespace

Worker::Worker(const std::string& application, const WorkerBounds& bounds, const Work& work, const Signals& signals)
    : application_(application),
      bounds_(bounds),
      deadline_(start_ + std::chrono::seconds(bounds.timeout) + std::chrono::seconds(bounds.besides)) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
  process_ = startProcess(ends[1], bounds_, signals, [&](int pipe) { return runWorker(application_, work, pipe); });
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
  deadline_ = Clock::now() + kRemoval;
  kill();
}

void Worker::receive() {
  constexpr int kReads = 64;         // others wait, too
  std::array<char, 16384> buffer{};  // each page of it is copied after each fork
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
    if (received_.size() <= std::size_t{bounds_.sent} << 20) continue;
    received_ = {};
    fail("its report is larger than " + std::to_string(bounds_.sent) + " MiB");
  }
}

void Worker::checkTime() {
  if (Clock::now() < deadline_) return;
  if (isKilled_) return end();  // whoever still holds the pipe is none of ours
  fail("it takes longer than the " + std::to_string(bounds_.timeout) + (bounds_.timeout == 1 ? " second" : " seconds") +
       " of --timeout");
}

WorkerResult Worker::takeResult() {
  const std::string received = std::move(received_);
  return {lastOf(received), std::move(failure_), seconds_};
}

void Worker::end() {
  (void)::kill(process_, SIGKILL);  // if it only closed its pipe; for one that is ending this is too late
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  close(pipe_);
  isDone_ = true;
  seconds_ = std::chrono::duration<double>(Clock::now() - start_).count();
  if (failure_.empty()) failure_ = failureOf(status, bounds_);
}
