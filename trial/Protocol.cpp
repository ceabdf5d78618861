// Commands and answers over two non-blocking descriptors. Texts are cut at their NUL by Framing, parsed, and handed to
// whoever waits for that number in that session.
// Test: tests/trial/Protocol_test.cpp.

#include "trial/Protocol.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

namespace trial {

namespace {

// The longest message that makes sense is an answer with the coverage of a large bundle.
constexpr std::size_t kMaxMessage = std::size_t{16} << 20;
// A browser that reads nothing must not fill our memory: the files of an application go out base64 in JSON.
constexpr std::size_t kMaxOutbox = std::size_t{512} << 20;
constexpr int kMaxDepth = 100;
constexpr std::size_t kShown = 200;

// Refuses what is nested too deep before memory is taken for it: the parser's values are freed recursively.
bool isTooDeep(const std::string& text) {
  int depth = 0;
  bool isInString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (isInString && c == '\\') {
      ++i;
    } else if (c == '"') {
      isInString = !isInString;
    } else if (!isInString && (c == '{' || c == '[')) {
      if (++depth > kMaxDepth) return true;
    } else if (!isInString && (c == '}' || c == ']')) {
      --depth;
    }
  }
  return false;
}

// Keeps the signal of a pipe that nobody reads from ending the process, as long as it lives.
class NoPipeSignal {
 public:
  NoPipeSignal() {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    (void)pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~NoPipeSignal() {
    const timespec none{};
    if (sigismember(&before_, SIGPIPE) == 0)
      while (sigtimedwait(&pipe_, nullptr, &none) < 0 && errno == EINTR) {
      }
    (void)pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  NoPipeSignal(const NoPipeSignal&) = delete;
  NoPipeSignal& operator=(const NoPipeSignal&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
};

void setNonBlocking(int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  (void)fcntl(descriptor, F_SETFL, flags | O_NONBLOCK);
}

std::string textOf(const Json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

Protocol::Protocol(int input, int output, Event event)
    : input_(input), output_(output), event_(std::move(event)), reader_(kMaxMessage) {
  setNonBlocking(input_);
  setNonBlocking(output_);
}

void Protocol::send(const std::string& session, const std::string& method, const Json& params, Answer answer) {
  Json message{{"id", ++lastNumber_}, {"method", method}, {"params", params}};
  if (!session.empty()) message["sessionId"] = session;
  outbox_ += message.dump(-1, ' ', true, Json::error_handler_t::replace);
  outbox_ += '\0';
  if (outbox_.size() - written_ > kMaxOutbox) throw ProtocolError("the browser takes no commands");
  pending_[lastNumber_] = {session, method, std::move(answer)};
}

void Protocol::write() {
  const NoPipeSignal noSignal;
  while (written_ < outbox_.size()) {
    const ssize_t count = ::write(output_, outbox_.data() + written_, outbox_.size() - written_);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN) return;
    if (count < 0) throw ProtocolError("the browser has ended");
    written_ += static_cast<std::size_t>(count);
  }
  outbox_.clear();
  written_ = 0;
}

// What is there now; whether there was anything.
bool Protocol::read() {
  std::array<char, 65536> buffer{};
  const ssize_t count = ::read(input_, buffer.data(), buffer.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return false;
  if (count <= 0) throw ProtocolError("the browser has ended");
  const auto messages = reader_.take({buffer.data(), static_cast<std::size_t>(count)});
  for (const std::string& message : messages)
    take(message);
  return !messages.empty();
}

void Protocol::take(const std::string& text) {
  const Json message = isTooDeep(text) ? Json() : Json::parse(text, nullptr, false);
  if (!message.is_object()) {
    std::string shown = text.substr(0, kShown);
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    throw ProtocolError("the browser sends what is none of its protocol: " + shown);
  }
  const auto number = message.find("id");
  if (number != message.end()) {
    if (number->is_number_unsigned()) takeAnswer(number->get<std::uint64_t>(), message);
    return;
  }
  const auto params = message.find("params");
  static const Json kNone = Json::object();
  const bool hasParams = params != message.end() && params->is_object();
  event_(textOf(message, "sessionId"), textOf(message, "method"), hasParams ? *params : kNone);
}

void Protocol::takeAnswer(std::uint64_t number, const Json& message) {
  auto waiting = pending_.extract(number);
  if (waiting.empty()) return;
  const auto error = message.find("error");
  if (error != message.end()) {
    std::string text = error->is_object() ? textOf(*error, "message") : std::string();
    finish(waiting.mapped(), Json(), text.empty() ? "an error without a message" : text);
    return;
  }
  const auto result = message.find("result");
  finish(waiting.mapped(), result != message.end() && result->is_object() ? *result : Json::object(), {});
}

void Protocol::finish(const Pending& pending, const Json& result, const std::string& error) {
  if (pending.answer) {
    pending.answer(result, error);
  } else if (!error.empty() && onError) {
    onError(pending.session, pending.method + ": " + error);
  }
}

void Protocol::pump(Clock::time_point until) {
  for (;;) {
    write();
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
    std::array<pollfd, 2> polled{{{input_, POLLIN, 0}, {output_, POLLOUT, 0}}};
    const nfds_t count = outbox_.empty() ? 1 : 2;
    const int ready = poll(polled.data(), count, static_cast<int>(std::clamp<decltype(left)>(left, 0, 60'000)));
    if (ready < 0 && errno != EINTR) throw ProtocolError(std::strerror(errno));
    if (ready > 0 && polled[0].revents != 0 && read()) return;
    if (Clock::now() >= until) return;
  }
}

void Protocol::endSession(const std::string& session) {
  for (auto at = pending_.begin(); at != pending_.end();) {
    if (at->second.session != session) {
      ++at;
      continue;
    }
    const Pending pending = std::move(at->second);
    at = pending_.erase(at);
    if (pending.answer) pending.answer(Json(), "the page has ended");
  }
}

}  // namespace trial
