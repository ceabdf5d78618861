// Many workers at once, in one thread.
//
// The loop starts workers until there are enough, waits for news of any of them (bytes, a signal, a time that is up),
// collects those that are done, and delivers results as soon as their turn has come. A slow application holds up the
// delivery of those behind it, but not the work on them, until what waits becomes too much.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/run/WorkerPool.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <list>
#include <map>
#include <system_error>

namespace {

constexpr auto kTick = std::chrono::milliseconds(200);

// Results that wait for their turn behind a slow application; no further work is begun while there are more.
constexpr std::size_t kMaxWaitingBytes = std::size_t{256} << 20;

class Pool {
 public:
  Pool(const std::vector<std::string>& applications, unsigned jobs, const WorkerBounds& bounds, const Work& work,
       const Signals& signals, RunListener& listener)
      : applications_(applications),
        jobs_(jobs),
        bounds_(bounds),
        work_(work),
        signals_(signals),
        listener_(listener) {}

  int run() {
    while (endedBy_ == 0 && turn_ < applications_.size()) {
      startMore();
      showState();
      waitForNews();
      collect();
      deliver();
    }
    if (endedBy_ != 0) stop();
    return endedBy_;
  }

 private:
  struct Running {
    Running(std::size_t i, const std::string& application, const Pool& pool)
        : index(i), worker(application, pool.bounds_, pool.work_, pool.signals_) {}

    std::size_t index;
    Worker worker;
  };

  void startMore() {
    while (running_.size() < jobs_ && next_ < applications_.size() && waitingBytes_ <= kMaxWaitingBytes) {
      try {
        running_.emplace_back(next_, applications_[next_], *this);
      } catch (const std::system_error& error) {
        if (!running_.empty()) return;  // there may be room when one of these has ended
        results_[next_] = {"", std::string("no process can be started for it: ") + error.what(), 0};
      }
      ++next_;
    }
  }

  void showState() {
    listener_.showState({done_, applications_.size(), running_.empty() ? "" : running_.front().worker.application()});
  }

  // Waits until a worker sends something, a signal comes, or a time is up.
  void waitForNews() {
    if (running_.empty()) return;
    std::vector<pollfd> descriptors{{signals_.descriptor(), POLLIN, 0}};
    auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(kTick);
    for (const Running& one : running_) {
      descriptors.push_back({one.worker.descriptor(), POLLIN, 0});
      const auto left = one.worker.deadline() - Worker::Clock::now();
      wait = std::min(wait, std::chrono::ceil<std::chrono::milliseconds>(left));
    }
    if (poll(descriptors.data(), descriptors.size(), static_cast<int>(std::max<long long>(0, wait.count()))) < 0)
      return;
    endedBy_ = signals_.take();
    std::size_t i = 1;
    for (Running& one : running_) {
      if (descriptors[i++].revents != 0) one.worker.receive();
    }
  }

  void collect() {
    for (auto one = running_.begin(); one != running_.end();) {
      if (!one->worker.isDone()) one->worker.checkTime();
      if (!one->worker.isDone()) {
        ++one;
        continue;
      }
      WorkerResult result = one->worker.takeResult();
      waitingBytes_ += result.sent.size();
      results_[one->index] = std::move(result);
      ++done_;
      one = running_.erase(one);
    }
  }

  void deliver() {
    while (endedBy_ == 0 && !results_.empty() && results_.begin()->first == turn_) {
      deliverFirst();
      ++turn_;
    }
  }

  void deliverFirst() {
    const auto first = results_.begin();
    waitingBytes_ -= first->second.sent.size();
    if (!listener_.take(applications_[first->first], std::move(first->second))) endedBy_ = SIGPIPE;
    results_.erase(first);
  }

  // Ends the workers, and waits until their directories are gone, but no longer than until the user asks again.
  void stop() {
    for (Running& one : running_)
      one.worker.stop();
    const int endedBy = endedBy_;
    for (endedBy_ = 0; endedBy_ == 0 && !running_.empty();) {
      waitForNews();
      for (Running& one : running_) {
        if (!one.worker.isDone()) one.worker.checkTime();
      }
      running_.remove_if([](const Running& one) { return one.worker.isDone(); });
    }
    endedBy_ = endedBy;
    while (!results_.empty() && endedBy_ != SIGPIPE)
      deliverFirst();
    endedBy_ = endedBy;
  }

  const std::vector<std::string>& applications_;
  const unsigned jobs_;
  const WorkerBounds bounds_;
  const Work& work_;
  const Signals& signals_;
  RunListener& listener_;
  std::list<Running> running_;                   // the one that was started first stands first
  std::map<std::size_t, WorkerResult> results_;  // that wait for their turn, by the index of the application
  std::size_t next_ = 0;                         // to be started
  std::size_t turn_ = 0;                         // to be delivered
  std::size_t done_ = 0;
  std::size_t waitingBytes_ = 0;  // in results_
  int endedBy_ = 0;               // the signal that ended the run
};

}  // namespace

int workOnEach(const std::vector<std::string>& applications, unsigned jobs, const WorkerBounds& bounds,
               const Work& work, const Signals& signals, RunListener& listener) {
  return Pool(applications, jobs, bounds, work, signals, listener).run();
}
