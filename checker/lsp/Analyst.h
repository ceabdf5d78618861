#pragma once

#include <poll.h>
#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "checker/options/WorkerBounds.h"
#include "checker/run/Signals.h"

// A process that answers one request after the other, bounded in time and memory for each, and keeps what helps with
// the next. One that breaks is replaced by a new one: nothing that a request does to it harms this process.
class Analyst {
 public:
  using Clock = std::chrono::steady_clock;

  // Answers a request, in the other process; may throw std::exception. What it keeps between requests is its own.
  using Answer = std::function<std::string(const std::string& request)>;

  struct Result {
    std::string sent;     // the answer: anything, if the process was broken into
    std::string failure;  // why there is none
  };

  Analyst(const WorkerBounds& bounds, Answer answer, const Signals& signals);
  ~Analyst();
  Analyst(const Analyst&) = delete;
  Analyst& operator=(const Analyst&) = delete;

  bool isBusy() const { return isBusy_; }

  // Has a request answered. Only if it is not busy. Throws std::system_error if there can be no process.
  void ask(const std::string& request);

  // While it is busy: to read from, and when `poll` is to be called at the latest.
  int descriptor() const { return channel_; }
  short events() const { return sent_ < request_.size() ? POLLIN | POLLOUT : POLLIN; }
  Clock::time_point deadline() const { return deadline_; }

  // Reads what is there. Gives the result once the answer is whole, or there will be none.
  std::optional<Result> poll();

 private:
  void start();
  int serve(int channel) const;
  void end();
  void send();
  std::optional<Result> takeEnd();
  std::optional<Result> takeAnswer();
  Result failed(const std::string& reason);

  WorkerBounds bounds_;
  Answer answer_;
  const Signals& signals_;
  pid_t process_ = -1;
  int channel_ = -1;
  bool isBusy_ = false;
  bool isFresh_ = true;   // it answered nothing yet
  std::string request_;   // kept for a process that takes the place of one that broke
  std::size_t sent_ = 0;  // bytes of it
  std::string received_;
  Clock::time_point deadline_;
};
