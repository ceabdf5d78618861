// Test: tests/threads/Runs_test.cpp.

#include "platform/PartWork.h"

#include "platform/Paths.h"

namespace FlashEngine_1_00 {

std::size_t partLanes() {
  const PartWorkers* const workers = enginePaths().workers;
  return workers == nullptr ? 1 : workers->lanes();
}

void runParts(std::size_t count, PartWork& work) {
  if (PartWorkers* const workers = enginePaths().workers) return workers->run(count, work);
  for (std::size_t part = 0; part < count; ++part) {
    work.prepare(part, 0);
    work.take(part);
  }
}

}  // namespace FlashEngine_1_00
