#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "trial/Framing.h"

namespace trial {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;

// The browser cannot be talked to any more: it is gone, or what it sends is none of the protocol.
class ProtocolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Talks to a browser in the DevTools protocol through two descriptors: JSON texts that end with a NUL, commands with
// numbers, answers with the same numbers, events without one. Everything is asynchronous, in one thread: callbacks run
// inside `pump` only.
//
// What arrives is data of a page that means harm: texts too long are passed over, nonsense is refused, and no callback
// is called twice or for an answer that nobody waits for.
class Protocol {
 public:
  // An answer: its `result`, or null and an error message.
  using Answer = std::function<void(const Json& result, const std::string& error)>;
  using Event = std::function<void(const std::string& session, const std::string& method, const Json& params)>;

  // `input` is read from and `output` written to; both stay the caller's. They are made non-blocking.
  Protocol(int input, int output, Event event);

  // Sends a command. `answer` may be null: then an error goes to `onError`. `session` is empty for the browser itself.
  void send(const std::string& session, const std::string& method, const Json& params, Answer answer = nullptr);

  // Errors of commands whose answers nobody waits for.
  std::function<void(const std::string& session, const std::string& message)> onError;

  // Reads, writes and calls back until `until`, at the longest; returns earlier after it has called back. Throws
  // ProtocolError when the browser has gone, or sends nonsense.
  void pump(Clock::time_point until);

  // Forgets the commands of a session that has ended: they are answered with an error at once.
  void endSession(const std::string& session);

  std::size_t passedOver() const { return reader_.passedOver(); }

 private:
  struct Pending {
    std::string session;
    std::string method;
    Answer answer;
  };

  void write();
  bool read();
  void take(const std::string& text);
  void takeAnswer(std::uint64_t number, const Json& message);
  void finish(const Pending& pending, const Json& result, const std::string& error);

  int input_;
  int output_;
  Event event_;
  MessageReader reader_;
  std::uint64_t lastNumber_ = 0;
  std::map<std::uint64_t, Pending> pending_;
  std::string outbox_;
  std::size_t written_ = 0;  // of the outbox
};

}  // namespace trial
