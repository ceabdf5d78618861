#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "checker/options/WorkerBounds.h"
#include "checker/run/Signals.h"
#include "checker/run/WorkerProcess.h"

// Works on an application, in its worker. What comes back is sent. What `sendFirst` is given before counts if the
// worker does not get to its end.
using SendFirst = std::function<void(const std::string& bytes)>;
using Work = std::function<std::string(const std::string& application, const SendFirst& sendFirst)>;

// What came of an application.
struct WorkerResult {
  std::string sent;     // what the worker sent last, and whole: anything, if it was broken into
  std::string failure;  // what it ended with, if it did not send all
  double seconds = 0;
};

// A process that works on one application, and sends what comes of it through a pipe. Nothing that happens to it, or
// that it sends, harms this process. It ends with this process, whatever ends that.
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

  // What came of it, once it is done.
  WorkerResult takeResult();

 private:
  // Ends the process. Its pipe stays open: the helper may hold it a little longer.
  void kill();

  // Nobody holds the pipe any more, or its time is up: takes the process's status, and is done.
  void end();

  // Ends the worker for `reason`, the first of which counts, and gives its helper time to remove the directory.
  void fail(const std::string& reason);

  std::string application_;
  WorkerBounds bounds_;
  Clock::time_point start_ = Clock::now();
  Clock::time_point deadline_;  // of the work; after `kill`, of the removal
  pid_t process_ = -1;
  int pipe_ = -1;         // our end, which never blocks
  std::string received_;  // so far
  std::string failure_;
  bool isKilled_ = false;  // what still comes through the pipe does not count
  bool isDone_ = false;
  double seconds_ = 0;
};
