#pragma once

#include <string>
#include <vector>

#include "tarvo/RunResult.h"

// What the host sees of the engine: an abstract base that belongs to the host's analysis library.
//
// The order of the virtual slots is the binary interface: complete destructor, deleting destructor, StartAnalysis.
// Build the engine with -DTARVO_HOST_LIBRARY=ON when the host's own library defines this class.
class IAppAnalysis {
 public:
  IAppAnalysis() = default;
  IAppAnalysis(const IAppAnalysis&) = delete;
  IAppAnalysis& operator=(const IAppAnalysis&) = delete;
  virtual ~IAppAnalysis();

  // Analyses one application. `files` holds absolute paths (packages or plain files), is not null and is not
  // changed; the caller keeps it. Blocks until done. Returns RUN_SUCCESS, RUN_UNDOCUMENTED_API, RUN_DB_LOAD_FAILED
  // or RUN_DB_NO_ROOT. Throws only std::bad_alloc.
  virtual RunResult StartAnalysis(std::vector<std::string>* files) = 0;
};
