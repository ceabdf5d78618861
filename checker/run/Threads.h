#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "APICheckEngine/Facade.h"

// Prepares the parts of some work ahead of the one who uses them, in threads that end with this.
class Ahead {
 public:
  struct Parts {
    std::size_t count = 0;

    // Prepares one; called in several threads at once, never twice at once for one lane.
    std::function<void(std::size_t part, std::size_t lane)> prepare = {};

    // What a part takes as long as it is not used, and the most that parts ahead take together, if they are several.
    // None given: parts take nothing.
    std::function<std::size_t(std::size_t part)> weight = {};
    std::size_t most = 0;

    // Told of a part that is prepared, but passed over; or null.
    std::function<void(std::size_t part)> drop = {};
  };

  // With as many lanes, one of which is the thread that awaits; or with fewer, where the system gives no more threads.
  Ahead(std::size_t lanes, Parts parts);
  ~Ahead();
  Ahead(const Ahead&) = delete;
  Ahead& operator=(const Ahead&) = delete;

  // Returns when `part` is prepared, and helps until then. The parts asked for go up; others are passed over. Throws
  // what preparing it threw.
  void await(std::size_t part);

 private:
  enum class State : std::uint8_t { open, working, done };
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  using Lock = std::unique_lock<std::mutex>;

  void work(std::size_t lane);
  void prepare(std::size_t part, std::size_t lane, Lock& lock);
  std::size_t claim();
  bool isRoom(std::size_t parts, std::size_t most) const;
  void passTo(std::size_t part);
  std::size_t weightOf(std::size_t part) const { return parts_.weight ? parts_.weight(part) : 0; }

  const Parts parts_;
  std::mutex mutex_;  // of all below
  std::condition_variable room_;
  std::condition_variable done_;
  std::vector<State> states_;
  std::size_t next_ = 0;    // those below are claimed or passed over
  std::size_t wanted_ = 0;  // those below were asked for or passed over
  std::size_t ahead_ = 0;   // weight of those between
  bool isOver_ = false;
  std::map<std::size_t, std::exception_ptr> thrown_;  // by part
  std::vector<std::thread> threads_;
};

// All threads of one run. None is left when `run` returns.
class Threads : public FlashEngine_1_00::PartWorkers {
 public:
  // `lanes` counts the thread that works.
  explicit Threads(std::size_t lanes) : lanes_(lanes) {}

  std::size_t lanes() const override { return lanes_; }
  void run(std::size_t count, FlashEngine_1_00::PartWork& work) override;

  // Calls `work` once for each number below `count`, at the same time for several.
  void forEach(std::size_t count, const std::function<void(std::size_t)>& work) const;

 private:
  std::size_t lanes_;
};
