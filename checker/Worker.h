#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "checker/Report.h"
#include "checker/Signals.h"

// Whether the bound on memory has an effect: a sanitizer takes address space by the terabyte.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsMemoryBounded = false;
#elif defined(__has_feature)
constexpr bool kIsMemoryBounded = !__has_feature(address_sanitizer);
#else
constexpr bool kIsMemoryBounded = true;
#endif

// Of one worker; MiB and seconds.
struct WorkerBounds {
  unsigned timeout = 60;
  unsigned memory = 1024;
  unsigned unpacked = 2048;  // that the packages of the application expand to
};

// Makes the report of an application, in its worker.
using Work = std::function<ApplicationReport(const std::string& application)>;

// A process that checks one application, and sends its report through a pipe. Nothing that happens to it, or that it
// sends, harms this process. It ends with this process, whatever ends that.
//
// The pipe is held by the worker and by the helper that removes its directory: its end says that both are gone.
class Worker {
 public:
  using Clock = std::chrono::steady_clock;

  // Throws std::system_error if no process can be started.
  Worker(const std::string& application, const WorkerBounds& bounds, const Work& work, const Signals& signals);
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  const std::string& application() const { return application_; }

  // To read from; reads what is there.
  int descriptor() const { return pipe_; }
  void receive();

  // When `checkTime` is to be called at the latest: it ends a worker that takes too long.
  Clock::time_point deadline() const { return deadline_; }
  void checkTime();

  // Ends the worker; its directory goes, too, before it is done.
  void stop() { fail("it was stopped"); }

  // Whether the worker and its directory are gone.
  bool isDone() const { return isDone_; }

  // What it has sent: a report for `reportOf`. What it ended with, if that was no report.
  std::string takeReport() { return std::move(received_); }
  const std::string& failure() const { return failure_; }
  double seconds() const { return seconds_; }

 private:
  void kill();
  void end();
  void fail(const std::string& reason);

  std::string application_;
  WorkerBounds bounds_;
  Clock::time_point start_ = Clock::now();
  Clock::time_point deadline_;
  pid_t process_ = -1;
  int pipe_ = -1;
  std::string received_;
  std::string failure_;
  bool isKilled_ = false;
  bool isDone_ = false;
  double seconds_ = 0;
};

// The report of `application` that a worker sent, or, if there is a `failure`, one that tells of it.
ApplicationReport reportOf(const std::string& application, const std::string& sent, const std::string& failure,
                           double seconds);
