// One page in a tab, as a machine with a state: loading, settling, rounds of driving, closing. Every wait ends by its
// time; an answer that never comes is as good as an error.
// Test: with a real Chromium, tests/groups/trial.

#include "trial/Page.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace trial {

namespace {

using std::chrono::milliseconds;

constexpr auto kLoad = milliseconds(4000);   // until the scripts of a page that loads are ended
constexpr auto kClose = milliseconds(2500);  // until its processes are
constexpr auto kOpen = milliseconds(8000);
constexpr auto kPoll = milliseconds(15);
constexpr auto kQuietLoad = milliseconds(900);  // timers and requests after loading
constexpr auto kQuietRound = milliseconds(250);
constexpr int kMostWaiting = 8;  // times as long as a script may run
constexpr int kMaxEnded = 25;
constexpr int kMaxUnanswered = 4;
constexpr int kMaxFailures = 40;  // of steps in a row; each that is ended is one
constexpr int kMaxRounds = 6;
constexpr int kMinRounds = 3;     // without long timers, with them, and with what those have made
constexpr int kForcedRounds = 2;  // before functions that never ran are called
constexpr int kMaxPasses = 4;     // of calling them
constexpr auto kPrepare = milliseconds(6000);
constexpr int kFailing = 3;               // each such request for the same address fails
constexpr int kMaxDocuments = 32;         // of frames in a page
constexpr std::size_t kMaxDrivers = 40;   // of a page: frames that are written by code count, too
constexpr std::size_t kMaxSessions = 12;  // of a page

// What a driver says there was too much of.
constexpr std::pair<unsigned, const char*> kCuts[] = {{1, "it has more elements than are tried"},
                                                      {2, "it gave plug-ins more functions than are called"},
                                                      {4, "it called more methods than are recorded"},
                                                      {8, "it has more functions that never ran than are called"}};

// How long a script may run: the first ones may only be slow.
milliseconds patience(int ended) {
  return ended < 2 ? milliseconds(1200) : ended < 5 ? milliseconds(600) : milliseconds(300);
}

std::string textOf(const Json& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

const Json& objectIn(const Json& object, const char* key) {
  static const Json kNone = Json::object();
  const auto found = object.find(key);
  return found != object.end() && found->is_object() ? *found : kNone;
}

std::string base64(const std::string& bytes) {
  static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t j = 0; j < 3; ++j)
      group = group << 8 | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0U);
    for (std::size_t j = 0; j < 4; ++j)
      text += i + j <= bytes.size() ? kDigits[group >> (18 - 6 * j) & 63] : '=';
  }
  return text;
}

}  // namespace

Page::Page(Shared& shared, World world) : shared_(shared), world_(world), places_(*shared.server) {}

void Page::sendTo(const std::string& session, const std::string& method, const Json& params, Protocol::Answer answer) {
  shared_.protocol->send(session, method, params, std::move(answer));
}

// ---- opening -------------------------------------------------------------------------------------------------------

void Page::open(const std::string& path, Clock::time_point deadline, bool isForced, bool isLastTry) {
  path_ = path;
  deadline_ = deadline;
  isForced_ = isForced;
  isLastTry_ = isLastTry;
  round_ = 0;
  documents_ = 0;
  ended_ = 0;
  unanswered_ = 0;
  failures_ = 0;
  hasLoaded_ = false;
  hasRun_ = false;
  requests_.clear();
  stateSince_ = Clock::now();
  if (session_.empty()) return begin();
  navigate();
}

void Page::begin() {
  sendTo({}, "Target.createBrowserContext", {{"disposeOnDetach", true}},
         [this](const Json& result, const std::string& error) {
           if (!error.empty()) return refuse("no browser context: " + error);
           context_ = textOf(result, "browserContextId");
           makeTab();
         });
}

void Page::makeTab() {
  sendTo({}, "Browser.setDownloadBehavior", {{"behavior", "deny"}, {"browserContextId", context_}});
  const Json params{{"url", "about:blank"}, {"browserContextId", context_}, {"width", 1280}, {"height", 720}};
  sendTo({}, "Target.createTarget", params, [this](const Json& result, const std::string& error) {
    if (!error.empty()) return refuse("no page: " + error);
    attach(textOf(result, "targetId"));
  });
}

void Page::attach(const std::string& target) {
  target_ = target;
  const Json params{{"targetId", target}, {"flatten", true}};
  sendTo({}, "Target.attachToTarget", params, [this](const Json& result, const std::string& error) {
    if (!error.empty()) return refuse("no session: " + error);
    session_ = textOf(result, "sessionId");
    prepare(session_);
  });
}

// Each frame that has a process of its own gets the same. The page itself goes on when all is answered: a navigation
// may change the process, and what the old one has not yet taken would come too late in the new one.
void Page::prepare(const std::string& session) {
  sessions_.insert(session);
  const auto sendTo = [this, &session](const std::string& to, const std::string& method, const Json& params) {
    if (session != session_) return this->sendTo(to, method, params);
    ++preparing_;
    this->sendTo(to, method, params, [this, to, method](const Json&, const std::string& error) {
      if (!error.empty()) shared_.protocol->onError(to, method + ": " + error);
      if (--preparing_ == 0 && state_ == State::opening) navigate();
    });
  };
  sendTo(session, "Page.enable", Json::object());
  sendTo(session, "Page.addScriptToEvaluateOnNewDocument", {{"source", shared_.recorder(world_)}});
  sendTo(session, "Runtime.enable", Json::object());
  sendTo(session, "Debugger.enable", {{"maxScriptsCacheSize", 0}});
  sendTo(session, "Debugger.setSkipAllPauses", {{"skip", true}});
  sendTo(session, "Profiler.enable", Json::object());
  sendTo(session, "Profiler.startPreciseCoverage", {{"callCount", true}, {"detailed", false}});
  sendTo(session, "Fetch.enable", {{"patterns", Json::array({{{"urlPattern", "*"}}})}});
  sendTo(session, "Target.setAutoAttach", {{"autoAttach", true}, {"waitForDebuggerOnStart", true}, {"flatten", true}});
  sendTo(session, "Inspector.enable", Json::object());
  if (session != session_) return sendTo(session, "Runtime.runIfWaitingForDebugger", Json::object());
  sendTo(session, "Emulation.setUserAgentOverride", {{"userAgent", shared_.userAgent}});
  sendTo(session, "Emulation.setFocusEmulationEnabled", {{"enabled", true}});
}

void Page::navigate() {
  std::string url = shared_.server->urlOf(path_);
  // What only the user's address would say carries the mark.
  if (world_ != World::unreachable) url += '?' + shared_.mark;
  if (isForced_) url += '&';  // the tab may have that page: the same address with a fragment would load nothing
  if (world_ != World::unreachable) url += '#' + shared_.mark;
  state_ = State::loading;
  stateSince_ = Clock::now();
  sendTo(session_, "Page.navigate", {{"url", url}}, [this](const Json& result, const std::string& error) {
    const std::string problem = error.empty() ? textOf(result, "errorText") : error;
    if (!problem.empty() && state_ == State::loading && !hasLoaded_) giveUp("it did not load: " + problem);
  });
}

// ---- events --------------------------------------------------------------------------------------------------------

bool Page::take(const std::string& session, const std::string& method, const Json& params) {
  if (session.empty() || sessions_.count(session) == 0) return false;
  if (state_ == State::done) return true;
  if (method == "Fetch.requestPaused") {
    serve(session, params);
  } else if (method == "Runtime.consoleAPICalled") {
    hear(session, params);
  } else if (method == "Debugger.scriptParsed") {
    places_.add(params);
  } else if (method == "Page.loadEventFired" && session == session_ && state_ == State::loading && hasLoaded_) {
    settle(kQuietLoad);
  } else if (method == "Page.javascriptDialogOpening") {
    sendTo(session, "Page.handleJavaScriptDialog", {{"accept", true}, {"promptText", shared_.mark}},
           [](const Json&, const std::string&) {});
  } else if (method == "Runtime.executionContextsCleared") {
    drivers_.erase(
        std::remove_if(drivers_.begin(), drivers_.end(), [&](const Driver& d) { return d.session == session; }),
        drivers_.end());
  } else if (method == "Runtime.executionContextDestroyed") {
    const auto context = params.find("executionContextId");
    drivers_.erase(std::remove_if(drivers_.begin(), drivers_.end(),
                                  [&](const Driver& d) {
                                    return d.session == session && context != params.end() && *context == d.context;
                                  }),
                   drivers_.end());
  } else if (method == "Target.attachedToTarget") {
    attached(params);
  } else if (method == "Inspector.targetCrashed" && session == session_) {
    giveUp("its process ended: it crashed, or took too much memory");
  } else if (method == "Inspector.detached" && session == session_) {
    giveUp("the browser closed it");
  }
  return true;
}

void Page::attached(const Json& params) {
  const Json& info = objectIn(params, "targetInfo");
  const std::string session = textOf(params, "sessionId");
  if (textOf(info, "type") == "iframe" && sessions_.size() < kMaxSessions) return prepare(session);
  // Workers and whatever else: never started.
  if (textOf(info, "type") == "page" || textOf(info, "type") == "iframe")
    sendTo({}, "Target.closeTarget", {{"targetId", textOf(info, "targetId")}}, [](const Json&, const std::string&) {});
}

void Page::serve(const std::string& session, const Json& params) {
  lastRequest_ = Clock::now();
  const Json& request = objectIn(params, "request");
  const std::string id = textOf(params, "requestId");
  const std::string url = textOf(request, "url");
  const std::string type = textOf(params, "resourceType");
  const auto fail = [&](const char* reason) {
    sendTo(session, "Fetch.failRequest", {{"requestId", id}, {"errorReason", reason}},
           [](const Json&, const std::string&) {});
  };
  if (type == "Document") {
    const bool isOwn = textOf(params, "frameId") == target_;
    const File* file = shared_.server->fileOf(url);
    if (isOwn && (hasLoaded_ || file == nullptr || file->path != path_)) {
      if (file != nullptr && !uncalled_) shared_.foundPage(file->path);
      return fail("Aborted");
    }
    if (!isOwn && ++documents_ > kMaxDocuments) {
      if (documents_ == kMaxDocuments + 1) miss("it has more frames than are loaded");
      return fail("Aborted");
    }
    hasLoaded_ = hasLoaded_ || isOwn;
    if (file != nullptr) shared_.loadedPage(file->path);
  }
  if (type != "Document" && failsNow(url)) return fail("InternetDisconnected");
  const Response response = shared_.server->answer(url, textOf(request, "method"), type, world_);
  if (!response.isServed) return fail("InternetDisconnected");
  Json headers = Json::array();
  for (const auto& [name, value] : response.headers)
    headers.push_back({{"name", name}, {"value", value}});
  sendTo(session, "Fetch.fulfillRequest",
         {{"requestId", id},
          {"responseCode", response.status},
          {"responseHeaders", headers},
          {"body", base64(response.body)}},
         [](const Json&, const std::string&) {});
}

// In a plausible world a server that was there goes away, and comes back.
bool Page::failsNow(const std::string& url) {
  if (world_ != World::plausible || shared_.server->fileOf(url) != nullptr) return false;
  return ++requests_[url.substr(0, url.find('?'))] % kFailing == 0;
}

// The page's own console is silent: only the recorder can make these events, by what it captured first.
void Page::hear(const std::string& session, const Json& params) {
  const auto arguments = params.find("args");
  if (textOf(params, "type") != "debug" || arguments == params.end() || !arguments->is_array() || arguments->empty())
    return;
  const std::string text = textOf(arguments->front(), "value");
  if (text == shared_.secret + "driver" && arguments->size() == 2) {
    if (drivers_.size() >= kMaxDrivers) return miss("it has more frames than are driven");
    const auto context = params.find("executionContextId");
    const std::string object = textOf(arguments->at(1), "objectId");
    hasRun_ = hasRun_ || hasLoaded_;
    if (context != params.end() && context->is_number_integer() && !object.empty())
      drivers_.push_back({session, context->get<std::int64_t>(), object, -1});
    return;
  }
  const Message message = messageOf(text, shared_.secret);
  if (message.kind == Message::Kind::navigation) {
    const File* file = shared_.server->fileOf(message.first);
    if (file != nullptr && !uncalled_) shared_.foundPage(file->path);
  } else if (message.kind == Message::Kind::broken) {
    if (!isForced_) miss("it has made " + message.first + " useless, as if to hide what it calls");
  } else if (message.kind == Message::Kind::call || (message.kind == Message::Kind::unknown && !uncalled_)) {
    const Json& stack = objectIn(params, "stackTrace");
    const auto frames = stack.find("callFrames");
    shared_.findings->add(message, frames != stack.end() ? *frames : Json::array(), places_, uncalled_.has_value());
  }
}

// ---- driving -------------------------------------------------------------------------------------------------------

void Page::settle(milliseconds atMost) {
  state_ = State::settling;
  stateSince_ = Clock::now();
  quietAfter_ = stateSince_ + atMost;
  quietPolls_ = 0;
  nextPoll_ = stateSince_;
}

// Quiet: no timer has fired, and no request was made, since the last time.
void Page::pollQuiet() {
  if (askedAt_ || Clock::now() < nextPoll_) return;
  if (quietPolls_ >= 2 || Clock::now() >= quietAfter_ || drivers_.empty()) {
    return round_ == 0 ? beginRound() : measure(false);
  }
  active_ = drivers_.front();
  ask("state");
}

void Page::beginRound() {
  state_ = State::driving;
  stateSince_ = Clock::now();
  if (!hasRun_) return giveUp("it did not begin to run");
  if (drivers_.empty()) return measure(true);
  nextFrame();
}

// The newest frame that was not driven in this round: those that made it may take it away when they are.
void Page::nextFrame() {
  const auto next =
      std::find_if(drivers_.rbegin(), drivers_.rend(), [this](const Driver& one) { return one.round < round_; });
  if (next != drivers_.rend()) {
    next->round = round_;
    active_ = *next;
    return ask(uncalled_ ? "begin uncalled" : "begin");
  }
  ++round_;
  settle(kQuietRound);
}

bool Page::isThere(const Driver& driver) const {
  return std::any_of(drivers_.begin(), drivers_.end(), [&](const Driver& one) { return one.object == driver.object; });
}

void Page::ask(const std::string& command) {
  const Driver& driver = active_;
  isPausing_ = false;
  askedAt_ = Clock::now();
  const std::uint64_t number = ++asked_;
  const Json params{{"objectId", driver.object},
                    {"functionDeclaration", "function (command, round) { return this(command, round); }"},
                    {"arguments", Json::array({{{"value", command}}, {{"value", round_}}})},
                    {"returnByValue", true},
                    {"silent", true}};
  sendTo(driver.session, "Runtime.callFunctionOn", params, [this, number](const Json& result, const std::string&) {
    if (number != asked_ || !askedAt_ || state_ == State::done) return;
    askedAt_.reset();
    unanswered_ = 0;
    answered(textOf(objectIn(result, "result"), "value"));
  });
}

// `state` is what the driver tells of itself; empty when it was ended, or is gone.
void Page::answered(const std::string& state) {
  std::istringstream words(state);
  int isMore = 0;
  std::uint64_t fired = 0;
  std::uint64_t waiting = 0;
  std::uint64_t kept = 0;
  std::uint64_t told = 0;
  unsigned cut = 0;
  words >> isMore >> fired >> waiting >> kept >> told >> cut;
  for (const auto& [bit, reason] : kCuts)
    if ((cut & bit) != 0) miss(reason);
  if (state_ == State::settling) {
    const bool isQuiet = !words.fail() && fired == lastFired_ && Clock::now() - lastRequest_ > 2 * kPoll;
    quietPolls_ = isQuiet ? quietPolls_ + (waiting == 0 ? 2 : 1) : 0;
    if (isQuiet && waiting > 0 && Clock::now() - stateSince_ < milliseconds(80)) quietPolls_ = 0;
    lastFired_ = fired;
    nextPoll_ = Clock::now() + kPoll;
    return;
  }
  if (state_ != State::driving) return;
  if (words.fail()) {  // it was ended: the next step goes on behind what hung
    if (isThere(active_) && ++failures_ <= kMaxFailures) return ask("step");
    failures_ = 0;
    return nextFrame();
  }
  failures_ = 0;
  if (isMore == 1) return ask("step");
  if (isMore == 0) return nextFrame();
  isPausing_ = true;  // it goes on by itself
  nextPoll_ = Clock::now() + kPoll;
}

void Page::measure(bool isLast) {
  if (uncalled_) return isLast ? close() : callUncalled();
  state_ = State::measuring;
  stateSince_ = Clock::now();
  askedAt_ = stateSince_;
  const std::uint64_t number = ++asked_;
  sendTo(session_, "Profiler.takePreciseCoverage", Json::object(),
         [this, number, isLast](const Json& result, const std::string&) {
           if (number != asked_ || state_ != State::measuring) return;
           askedAt_.reset();
           unanswered_ = 0;
           const std::size_t fresh = shared_.coverage->add(result.value("result", Json()), places_);
           const bool isEnough = round_ >= kMaxRounds || (fresh == 0 && round_ >= kMinRounds);
           if (isForced_ && !isLast && round_ >= kForcedRounds) return callUncalled();
           if (isLast || isEnough) return finish();
           beginRound();
         });
}

// From here on, whatever the page calls says nothing about what the application does by itself.
void Page::callUncalled() {
  if (!uncalled_) uncalled_.emplace(*shared_.protocol, places_, *shared_.coverage);
  if (++passes_ > kMaxPasses) return close();
  state_ = State::preparing;
  stateSince_ = Clock::now();
  uncalled_->prepare(session_, drivers_, [this](bool isMore) {
    if (state_ != State::preparing) return;
    if (!isMore) return close();
    beginRound();
  });
}

void Page::miss(const std::string& reason) {
  shared_.incomplete(path_, isForced_ ? "not all functions that never ran were called" : reason);
}

// ---- time ----------------------------------------------------------------------------------------------------------

void Page::endScripts() {
  for (const std::string& session : sessions_)
    sendTo(session, "Runtime.terminateExecution", Json::object(), [](const Json&, const std::string&) {});
}

// Remembers how much time the processes of pages have taken since `begin`, or a little later.
void Page::watch(Clock::time_point begin) {
  if (watched_ == begin) return;
  watched_ = begin;
  processorTimes_ = shared_.processorTimes();
}

// Whether a script has run for `time`: on a machine that has much to do, waiting is no sign of that.
bool Page::hasRunFor(milliseconds time, Clock::time_point begin) {
  const auto waited = Clock::now() - begin;
  if (waited > time / 4) watch(begin);
  if (waited < time) return false;
  if (waited > time * kMostWaiting) return true;
  const double enough = std::chrono::duration<double>(time).count() / 2;
  for (const auto& [process, seconds] : shared_.processorTimes())
    if (seconds - processorTimes_[process] >= enough) return true;
  return false;
}

std::string Page::reasonForTime() const {
  return state_ == State::opening || state_ == State::loading ? "it did not load in time" : "its time was up";
}

void Page::tick() {
  const auto now = Clock::now();
  const auto inState = now - stateSince_;
  if (state_ == State::done || state_ == State::idle) return;
  if (state_ == State::closing) {
    if (inState < kClose) return;
    isStuck_ = true;
    state_ = State::done;
    return;
  }
  if (now >= deadline_ && state_ != State::measuring) {
    miss(reasonForTime());
    if (state_ == State::opening || !hasLoaded_) return close();
    askedAt_.reset();
    endScripts();
    return measure(true);
  }
  if (state_ == State::preparing && inState > kPrepare) {
    miss({});
    return close();
  }
  if (state_ == State::opening && inState > kOpen) return giveUp("the browser opened no page");
  if (state_ == State::loading && !hasLoaded_ && inState > kOpen) return giveUp("it did not load in time");
  if (state_ == State::loading && hasRunFor(kLoad, stateSince_)) {
    ++ended_;
    shared_.incomplete(path_, "a script ran too long while it loaded, and was ended");
    endScripts();
    // What it has loaded is driven.
    return settle(kQuietLoad);
  }
  if (askedAt_ && hasRunFor(patience(ended_), *askedAt_)) {
    if (++unanswered_ > kMaxUnanswered || ended_ > kMaxEnded) {
      miss("its scripts run without end");
      return close();
    }
    askedAt_ = now;
    if (unanswered_ == 1) {
      ++ended_;
      // What gets arguments that nobody knows may well do that.
      if (!isForced_) miss("a script ran too long, and was ended");
    }
    endScripts();
    return;
  }
  if (state_ == State::settling) pollQuiet();
  if (state_ == State::driving && isPausing_ && now >= nextPoll_) ask("step");
}

void Page::giveUp(const std::string& reason) {
  if (state_ == State::done || state_ == State::closing) return;
  if (state_ != State::idle && !isToRepeat()) miss(reason);
  close();
}

// Another try would get the same answer.
void Page::refuse(const std::string& reason) {
  isLastTry_ = true;
  giveUp(reason);
}

// The browser, and not the page, is to blame where not even the recorder ran.
bool Page::isToRepeat() const {
  return !isLastTry_ && !hasRun_;
}

// A page in which scripts ran too long, or that is out of time, is not gone on with.
void Page::finish() {
  if (isForced_ || ended_ > 0 || Clock::now() >= deadline_) return close();
  state_ = State::idle;
  ++asked_;
}

void Page::close() {
  askedAt_.reset();
  ++asked_;
  if (uncalled_) uncalled_->end();
  state_ = State::closing;
  stateSince_ = Clock::now();
  if (context_.empty()) {
    state_ = State::done;
    return;
  }
  sendTo({}, "Target.disposeBrowserContext", {{"browserContextId", context_}},
         [this](const Json&, const std::string&) { state_ = State::done; });
}

}  // namespace trial
