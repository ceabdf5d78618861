#pragma once

#include <string>
#include <vector>

#include "checker/Worker.h"

// How far a run is.
struct RunState {
  std::size_t done = 0;
  std::size_t total = 0;
  std::string current;  // the application that has been worked on longest; may be empty
};

// Who hears of a run.
class RunListener {
 public:
  virtual ~RunListener() = default;

  // The next report, in the order of the applications. Returns whether to go on.
  virtual bool take(ApplicationReport report) = 0;

  // Called several times a second while applications are worked on.
  virtual void tell(const RunState& state) = 0;
};

// Checks each application in a worker, `jobs` at once. Returns when all workers and their directories are gone: 0 when
// all are done, else the signal that ended the run, SIGPIPE where the listener did. Reports that were made by then are
// all taken.
int checkEach(const std::vector<std::string>& applications, unsigned jobs, const WorkerBounds& bounds, const Work& work,
              const Signals& signals, RunListener& listener);
