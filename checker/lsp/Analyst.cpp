// Requests and answers go through a socket, each with its length in eight bytes in front. This side never waits.
//
// A process that broke after it had answered may have broken of what it kept, so a new one gets the request again,
// once. Test: tests/checker/Lsp_test.cpp.

#include "checker/lsp/Analyst.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "checker/run/WorkerProcess.h"

namespace {

constexpr std::size_t kLength = sizeof(std::uint64_t);

std::string withLength(const std::string& bytes) {
  const std::uint64_t length = bytes.size();
  std::string all(kLength, '\0');
  std::memcpy(all.data(), &length, kLength);
  return all + bytes;
}

std::uint64_t lengthOf(const std::string& bytes) {
  std::uint64_t length = 0;
  std::memcpy(&length, bytes.data(), kLength);
  return length;
}

// Exactly `count` bytes, or false.
bool readAll(int channel, std::size_t count, std::string& bytes) {
  bytes.resize(count);
  for (std::size_t at = 0; at < count;) {
    const ssize_t got = read(channel, bytes.data() + at, count - at);
    if (got == 0 || (got < 0 && errno != EINTR)) return false;
    if (got > 0) at += static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace

Analyst::Analyst(const WorkerBounds& bounds, Answer answer, const Signals& signals)
    : bounds_(bounds), answer_(std::move(answer)), signals_(signals) {}

Analyst::~Analyst() {
  end();
}

// The other process, to its end.
int Analyst::serve(int channel) const {
  std::string bytes;
  while (readAll(channel, kLength, bytes) && readAll(channel, static_cast<std::size_t>(lengthOf(bytes)), bytes)) {
    if (!sendAll(channel, withLength(answer_(bytes)))) return kWorkFailed;
  }
  return kWorkDone;
}

void Analyst::start() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
    throw std::system_error(errno, std::generic_category());
  process_ = startProcess(ends[1], bounds_, signals_, [this](int channel) { return serve(channel); });
  const int error = errno;
  close(ends[1]);
  channel_ = ends[0];
  isFresh_ = true;
  if (process_ < 0) {
    end();
    throw std::system_error(error, std::generic_category());
  }
  (void)fcntl(channel_, F_SETFL, O_NONBLOCK);
}

void Analyst::end() {
  if (process_ > 0) {
    (void)kill(process_, SIGKILL);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  if (channel_ >= 0) close(channel_);
  process_ = -1;
  channel_ = -1;
}

void Analyst::ask(const std::string& request) {
  if (process_ < 0) start();
  request_ = withLength(request);
  sent_ = 0;
  received_.clear();
  isBusy_ = true;
  deadline_ = Clock::now() + std::chrono::seconds(bounds_.timeout);
  send();
}

void Analyst::send() {
  while (sent_ < request_.size()) {
    const ssize_t count = ::send(channel_, request_.data() + sent_, request_.size() - sent_, MSG_NOSIGNAL);
    if (count < 0 && errno != EINTR) return;
    if (count > 0) sent_ += static_cast<std::size_t>(count);
  }
}

Analyst::Result Analyst::failed(const std::string& reason) {
  end();
  isBusy_ = false;
  return {"", reason};
}

// The process is gone, or has closed its end.
std::optional<Analyst::Result> Analyst::takeEnd() {
  int status = 0;
  (void)kill(process_, SIGKILL);  // if it only closed its end; for one that is ending this is too late
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  const std::string reason = failureOf(status, bounds_);
  const bool wasFresh = isFresh_;
  Result result = failed(reason.empty() ? "the process that checks it ended" : reason);
  if (wasFresh) return result;
  ask(request_.substr(kLength));
  return std::nullopt;
}

// The answer, once it is whole.
std::optional<Analyst::Result> Analyst::takeAnswer() {
  if (received_.size() < kLength) return std::nullopt;
  const std::uint64_t length = lengthOf(received_);
  if (length > std::uint64_t{bounds_.sent} << 20) return failed("its report is too large");
  if (received_.size() < kLength + length) return std::nullopt;
  if (received_.size() > kLength + length) return failed("its report has another length");
  isBusy_ = false;
  isFresh_ = false;
  return Result{received_.substr(kLength), ""};
}

std::optional<Analyst::Result> Analyst::poll() {
  send();
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t count = read(channel_, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) break;
    if (count <= 0) return takeEnd();
    received_.append(buffer.data(), static_cast<std::size_t>(count));
    if (auto result = takeAnswer()) return result;
  }
  if (Clock::now() < deadline_) return std::nullopt;
  return failed("it takes longer than the " + std::to_string(bounds_.timeout) + " s of --timeout");
}
