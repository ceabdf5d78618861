#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "trial/Coverage.h"
#include "trial/Findings.h"
#include "trial/PackageServer.h"
#include "trial/Places.h"
#include "trial/Protocol.h"
#include "trial/Uncalled.h"

namespace trial {

// What the pages of a trial have in common.
struct Shared {
  Protocol* protocol = nullptr;
  const PackageServer* server = nullptr;
  Findings* findings = nullptr;
  Coverage* coverage = nullptr;
  std::string secret;  // what the recorder's messages begin with
  std::string mark;
  std::string userAgent;
  std::function<std::string(World world)> recorder;       // the script of a page
  std::function<std::map<int, double>()> processorTimes;  // of the processes of pages
  std::function<void(const std::string& page, const std::string& reason)> incomplete;
  std::function<void(const std::string& path)> foundPage;   // that the application goes to
  std::function<void(const std::string& path)> loadedPage;  // as a page or a frame
};

// A tab for the pages of one world, in a browser context of its own: each is loaded, and driven in rounds until nothing
// new runs. Asynchronous: `open` a page, hand it the events of its sessions, `tick` it often, until it is idle, and
// then open the next one; after whatever went wrong the tab is closed, and the next page takes another.
class Page {
 public:
  Page(Shared& shared, World world);
  // Before the browser has answered all, the object must stay.
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  // The tab is new, or idle. `isForced`: functions that never ran, here or elsewhere, are called after a round, and the
  // tab is closed. `isLastTry`: if the browser does not begin to run the page, that is told.
  void open(const std::string& path, Clock::time_point deadline, bool isForced, bool isLastTry);

  // Whether the browser did not begin to run the page, and another try is worth it.
  bool isToRepeat() const;

  // Whether the session is one of this page's; then it takes the event.
  bool take(const std::string& session, const std::string& method, const Json& params);

  void tick();

  bool isIdle() const { return state_ == State::idle; }
  bool isDone() const { return state_ == State::done; }

  // Whether nothing more is expected of it.
  bool isSettled() const { return isIdle() || ((isDone() || state_ == State::closing) && !isToRepeat()); }

  // It could not be closed: its processes have to be ended.
  bool isStuck() const { return isStuck_; }

  // Ends it without more ado; what it told stays.
  void giveUp(const std::string& reason);

  const std::string& path() const { return path_; }
  World world() const { return world_; }

 private:
  enum class State { opening, loading, settling, driving, measuring, preparing, idle, closing, done };

  void send(const std::string& method, const Json& params) { sendTo(session_, method, params); }
  void sendTo(const std::string& session, const std::string& method, const Json& params,
              Protocol::Answer answer = nullptr);
  void begin();
  void makeTab();
  void attach(const std::string& target);
  void prepare(const std::string& session);
  void navigate();
  bool failsNow(const std::string& url);
  void serve(const std::string& session, const Json& params);
  void hear(const std::string& session, const Json& params);
  void attached(const Json& params);
  void settle(std::chrono::milliseconds atMost);
  void pollQuiet();
  void beginRound();
  void nextFrame();
  bool isThere(const Driver& driver) const;
  void ask(const std::string& command);
  void answered(const std::string& state);
  void measure(bool isLast);
  void callUncalled();
  void miss(const std::string& reason);
  void refuse(const std::string& reason);
  void finish();
  void close();
  void endScripts();
  void watch(Clock::time_point begin);
  bool hasRunFor(std::chrono::milliseconds time, Clock::time_point begin);
  std::string reasonForTime() const;

  Shared& shared_;
  std::string path_;
  World world_;
  Clock::time_point deadline_;
  State state_ = State::opening;
  Clock::time_point stateSince_ = Clock::now();
  std::string context_;  // of the browser
  std::string target_;
  std::string session_;
  std::set<std::string> sessions_;
  Places places_;
  std::vector<Driver> drivers_;
  Driver active_;  // the one that is asked
  int round_ = 0;
  int documents_ = 0;                    // that frames have loaded
  bool hasLoaded_ = false;               // its own document was served
  std::map<std::string, int> requests_;  // for what is not in the package
  bool hasRun_ = false;                  // the recorder was there
  bool isLastTry_ = true;
  int preparing_ = 0;   // commands that are not answered
  int ended_ = 0;       // scripts that ran too long
  int unanswered_ = 0;  // attempts to end the present one
  std::optional<Clock::time_point> askedAt_;
  Clock::time_point watched_;             // what the times are of
  std::map<int, double> processorTimes_;  // of processes, some time after that
  std::uint64_t asked_ = 0;               // number of the question that is open
  bool isPausing_ = false;                // the driver does something that is waited for
  Clock::time_point nextPoll_;
  Clock::time_point quietAfter_;  // settled at the latest
  Clock::time_point lastRequest_;
  std::uint64_t lastFired_ = 0;
  int quietPolls_ = 0;
  int failures_ = 0;  // of steps, in a row
  bool isForced_ = false;
  std::optional<Uncalled> uncalled_;  // once functions that never ran are called
  int passes_ = 0;                    // of that
  bool isStuck_ = false;
};

}  // namespace trial
