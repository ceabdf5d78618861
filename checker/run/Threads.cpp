// Parts are claimed in their order. Who waits for one that another thread has claimed prepares others meanwhile, and
// sleeps only where too much is ready that nobody has used. Test: tests/threads/Threads_test.cpp.

#include "checker/run/Threads.h"

#include <algorithm>
#include <utility>

namespace {

// Parts that are ready, and not used: enough for all threads to have work, and few to be kept.
constexpr std::size_t kMostAhead = 256;

// Parts for which one more thread is worth its start.
constexpr std::size_t kPartsForThread = 4;

}  // namespace

Ahead::Ahead(std::size_t lanes, Parts parts) : parts_(std::move(parts)), states_(parts_.count, State::open) {
  const std::size_t count = std::min(lanes, std::max<std::size_t>(1, parts_.count / kPartsForThread));
  threads_.reserve(count);
  try {
    for (std::size_t lane = 1; lane < count; ++lane)
      threads_.emplace_back([this, lane] { work(lane); });
  } catch (const std::exception&) {
    return;  // no thread, or no memory for one: those that there are will do
  }
}

Ahead::~Ahead() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    isOver_ = true;
  }
  room_.notify_all();
  for (std::thread& thread : threads_)
    thread.join();
}

void Ahead::work(std::size_t lane) {
  Lock lock(mutex_);
  while (!isOver_ && next_ < parts_.count) {
    const std::size_t part = claim();
    if (part == kNone) {
      room_.wait(lock);
    } else {
      prepare(part, lane, lock);
    }
  }
}

void Ahead::prepare(std::size_t part, std::size_t lane, Lock& lock) {
  std::exception_ptr thrown;
  lock.unlock();
  try {
    parts_.prepare(part, lane);
  } catch (...) {
    thrown = std::current_exception();
  }
  lock.lock();
  if (thrown != nullptr) thrown_.emplace(part, thrown);
  states_[part] = State::done;
  if (part + 1 < wanted_ && parts_.drop) parts_.drop(part);
  done_.notify_one();
}

// Whether there are fewer than so many parts ahead, and the next one would not make them weigh more than `most`.
bool Ahead::isRoom(std::size_t parts, std::size_t most) const {
  return next_ < wanted_ + parts && (ahead_ == 0 || ahead_ + weightOf(next_) <= most);
}

// The next part, for the caller to prepare; or kNone.
std::size_t Ahead::claim() {
  if (next_ >= parts_.count || !isRoom(kMostAhead, parts_.most)) return kNone;
  ahead_ += weightOf(next_);
  states_[next_] = State::working;
  return next_++;
}

// Makes `part` the one that is asked for.
void Ahead::passTo(std::size_t part) {
  for (; wanted_ < part; ++wanted_) {
    if (wanted_ >= next_) continue;
    ahead_ -= weightOf(wanted_);
    if (states_[wanted_] == State::done && parts_.drop) parts_.drop(wanted_);
  }
  if (part < next_) ahead_ -= weightOf(part);
  wanted_ = part + 1;
}

void Ahead::await(std::size_t part) {
  Lock lock(mutex_);
  passTo(part);
  const bool isClaimed = part < next_;
  next_ = std::max(next_, part + 1);
  // Not for every part: a thread that sleeps is to find work for a while.
  if (next_ >= parts_.count || isRoom(kMostAhead / 2, parts_.most / 2)) room_.notify_all();
  if (!isClaimed) prepare(part, 0, lock);
  while (states_[part] != State::done) {
    const std::size_t other = claim();
    if (other == kNone) {
      done_.wait(lock);
    } else {
      prepare(other, 0, lock);
    }
  }
  const auto thrown = thrown_.find(part);
  if (thrown != thrown_.end()) std::rethrow_exception(thrown->second);
}

void Threads::run(std::size_t count, FlashEngine_1_00::PartWork& work) {
  Ahead ahead(lanes_, {count, [&](std::size_t part, std::size_t lane) { work.prepare(part, lane); }});
  for (std::size_t part = 0; part < count; ++part) {
    ahead.await(part);
    work.take(part);
  }
}

void Threads::forEach(std::size_t count, const std::function<void(std::size_t)>& work) const {
  Ahead ahead(lanes_, {count, [&](std::size_t part, std::size_t) { work(part); }});
  for (std::size_t part = 0; part < count; ++part)
    ahead.await(part);
}
