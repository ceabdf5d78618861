#pragma once

#include <string>

#include "checker/options/PathList.h"
#include "checker/report/Progress.h"
#include "checker/run/Worker.h"

// Gets what comes of a run.
class RunListener {
 public:
  virtual ~RunListener() = default;

  // What came of the next application, in their order. Returns whether to go on.
  virtual bool take(const std::string& application, WorkerResult result) = 0;

  // Called several times a second while applications are worked on.
  virtual void showState(const RunState& state) = 0;
};

// Works on each application in a worker, `jobs` at once. Returns when all workers and their directories are gone: 0
// when all are done, else the signal that ended the run, SIGPIPE where the listener did. Results that were there by
// then are all taken. What it takes in memory does not grow with their number.
int workOnEach(const PathList& applications, unsigned jobs, const WorkerBounds& bounds, const Work& work,
               const Signals& signals, RunListener& listener);
