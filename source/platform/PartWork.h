#pragma once

#include <cstddef>

// Work on the parts of an application, of which a share depends on nothing but the part. Whoever links the engine can
// have that share done on other processors, ahead of the rest; what comes out is the same.

namespace FlashEngine_1_00 {

class PartWork {
 public:
  virtual ~PartWork() = default;

  // Does that share for a part. Several parts are prepared at the same time, each in a lane of its own: in one lane,
  // one after the other. Nothing of the part's own is logged or told here, and no list changes.
  virtual void prepare(std::size_t part, std::size_t lane) = 0;

  // The rest, of a part that is prepared: in the order of the parts, one at a time, in the thread that asked.
  virtual void take(std::size_t part) = 0;
};

class PartWorkers {
 public:
  virtual ~PartWorkers() = default;

  // How many parts may be prepared at the same time.
  virtual std::size_t lanes() const = 0;

  // Prepares and takes the parts [0, count). What either throws, it throws; those behind are not taken then.
  virtual void run(std::size_t count, PartWork& work) = 0;
};

// Those that go with enginePaths(); where it has none, each part is prepared when it is taken.
std::size_t partLanes();
void runParts(std::size_t count, PartWork& work);

}  // namespace FlashEngine_1_00
