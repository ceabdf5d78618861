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
  Pool(const PathList& applications, unsigned jobs, const WorkerBounds& bounds, const Work& work,
       const Signals& signals, RunListener& listener)
      : size_(applications.size()),
        names_(applications),
        jobs_(jobs),
        bounds_(bounds),
        work_(work),
        signals_(signals),
        listener_(listener) {}

  int run() {
    while (endedBy_ == 0 && turn_ < size_) {
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

  struct Done {
    std::string application;
    WorkerResult result;

    std::size_t bytes() const { return sizeof *this + application.size() + result.sent.size(); }
  };

  void startMore() {
    while (running_.size() < jobs_ && waitingBytes_ <= kMaxWaitingBytes && hasNext()) {
      try {
        running_.emplace_back(next_, nextName_, *this);
      } catch (const std::system_error& error) {
        if (!running_.empty()) return;  // there may be room when one of these has ended
        keep(next_, {nextName_, {"", std::string("no process can be started for it: ") + error.what(), 0}});
      }
      ++next_;
      isNextRead_ = false;
    }
  }

  bool hasNext() {
    if (!isNextRead_) isNextRead_ = names_.next(nextName_);
    return isNextRead_;
  }

  // Until its turn comes.
  void keep(std::size_t index, Done done) {
    waitingBytes_ += done.bytes();
    results_.emplace(index, std::move(done));
    ++done_;
  }

  void showState() {
    listener_.showState({done_, size_, running_.empty() ? "" : running_.front().worker.application()});
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
      keep(one->index, {one->worker.application(), one->worker.takeResult()});
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
    Done done = std::move(results_.extract(results_.begin()).mapped());
    waitingBytes_ -= done.bytes();
    if (!listener_.take(done.application, std::move(done.result))) endedBy_ = SIGPIPE;
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

  const std::size_t size_;
  PathList::Reader names_;
  const unsigned jobs_;
  const WorkerBounds bounds_;
  const Work& work_;
  const Signals& signals_;
  RunListener& listener_;
  std::list<Running> running_;           // the one that was started first stands first
  std::map<std::size_t, Done> results_;  // that wait for their turn, by the index of the application
  std::string nextName_;                 // to be started, if it is read
  bool isNextRead_ = false;
  std::size_t next_ = 0;  // its index
  std::size_t turn_ = 0;  // to be delivered
  std::size_t done_ = 0;
  std::size_t waitingBytes_ = 0;  // in results_
  int endedBy_ = 0;               // the signal that ended the run
};

}  // namespace

int workOnEach(const PathList& applications, unsigned jobs, const WorkerBounds& bounds, const Work& work,
               const Signals& signals, RunListener& listener) {
  return Pool(applications, jobs, bounds, work, signals, listener).run();
}
