// The trial itself: a queue of pages, a tab for each world, and the watchdog that bounds time, memory and processes.
// Whatever is passed ends a renderer first, and all if that does not help; what was told until then stays.
// Tests: tests/trial/Trial_test.cpp with browsers that are none; tests/groups/trial with Chromium.

#include "trial/Trial.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <stdexcept>

#include "trial/Browser.h"
#include "trial/Page.h"
#include "trial/Settings.h"

namespace trial {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr auto kStart = seconds(15);  // until the browser answers
constexpr auto kTurn = milliseconds(8);
constexpr auto kLook = milliseconds(150);   // at memory and processes
constexpr auto kGrace = milliseconds(600);  // for a process that was ended to be gone
constexpr auto kEnd = seconds(6);           // for pages to be closed when all time is up
constexpr std::size_t kMaxProcesses = 40;
constexpr int kMaxEndedRenderers = 4;
constexpr std::size_t kMaxPages = 30;
constexpr int kMaxRepeats = 3;
constexpr std::size_t kMaxIncomplete = 100;

std::string randomWord() {
  std::array<unsigned char, 8> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
    throw std::runtime_error("no random numbers");
  std::string word;
  for (const unsigned char byte : bytes)
    word += {static_cast<char>('a' + byte % 16), static_cast<char>('a' + byte / 16)};
  return word;
}

// The pages of one world, one after the other; two worlds at once, and the third in the place of the first.
struct Lane {
  World world;
  std::deque<std::string> waiting;
  Page* page = nullptr;
  int repeats = 0;        // of pages that the browser did not begin to run
  bool isForced = false;  // its pages have been run; now functions are called that never ran
};

class Trial {
 public:
  Trial(const Input& input, const Options& options, Result& result)
      : input_(input),
        options_(options),
        result_(result),
        mark_("madeup" + randomWord()),
        secret_(randomWord() + randomWord()),
        server_(input, mark_),
        findings_(mark_, input.files) {}

  void run() {
    try {
      runAll();
    } catch (const BrowserError& error) {
      result_.failure = error.what();
    } catch (const ProtocolError& error) {
      giveUpAll(error.what());
    }
    result_.calls = findings_.calls();
    result_.undetermined = findings_.undetermined();
    if (findings_.isCut()) missed("", "it made more calls than are listed");
    result_.coverage = coverage_.files(input_.files);
  }

 private:
  void runAll() {
    start_ = Clock::now();
    deadline_ = start_ + seconds(kPagesOfTime * options_.secondsPerPage);
    browser_.emplace(options_.browser, options_.directory);
    const auto event = [this](const std::string& session, const std::string& method, const Json& params) {
      take(session, method, params);
    };
    protocol_.emplace(browser_->input(), browser_->output(), event);
    protocol_->onError = [this](const std::string&, const std::string& message) { missed(current(), message); };
    try {
      greet();
      prepare();
      while (!isEnough())
        turn();
    } catch (const ProtocolError& error) {
      const std::string words = result_.browser.empty() ? browser_->lastWords() : "";
      browser_->end();
      throw ProtocolError(error.what() + (words.empty() ? "" : "; it said: " + words));
    }
    browser_->end();
  }

  // Asks for the version: whether this is a browser at all.
  void greet() {
    bool isAnswered = false;
    std::string error;
    protocol_->send({}, "Browser.getVersion", Json::object(), [&](const Json& answer, const std::string& problem) {
      isAnswered = true;
      error = problem;
      const auto text = [&](const char* key) {
        const auto found = answer.find(key);
        return found != answer.end() && found->is_string() ? found->get<std::string>().substr(0, 100) : std::string();
      };
      if (!problem.empty()) return;
      result_.browser = text("product");
      shared_.userAgent = text("userAgent");
    });
    while (!isAnswered && Clock::now() < start_ + kStart)
      protocol_->pump(Clock::now() + kTurn);
    if (!isAnswered) throw BrowserError("the browser does not answer" + said());
    if (!error.empty()) throw BrowserError("the browser does not tell its version: " + error);
    if (result_.browser.find("Chrom") == std::string::npos)
      throw BrowserError("the browser is no Chromium, but calls itself '" + result_.browser + "'");
    const std::size_t headless = shared_.userAgent.find("Headless");
    if (headless != std::string::npos) shared_.userAgent.erase(headless, 8);
  }

  std::string said() const {
    const std::string words = browser_->lastWords();
    return words.empty() ? "" : "; it said: " + words;
  }

  void prepare() {
    vocabulary_ = vocabularyOf(input_.files);
    shared_.protocol = &*protocol_;
    shared_.server = &server_;
    shared_.findings = &findings_;
    shared_.coverage = &coverage_;
    shared_.secret = secret_;
    shared_.mark = mark_;
    shared_.recorder = [this](World world) { return recorderScript(input_, {secret_, mark_, world}, vocabulary_); };
    shared_.processorTimes = [this] {
      std::map<int, double> times;
      for (const pid_t renderer : renderers_)
        times[renderer] = processorSeconds(renderer);
      return times;
    };
    shared_.incomplete = [this](const std::string& page, const std::string& reason) { missed(page, reason); };
    shared_.foundPage = [this](const std::string& path) {
      if (isPage(path)) addPage(path);
    };
    shared_.loadedPage = [this](const std::string& path) { loaded_.insert(path); };
    for (const std::string& page : input_.startPages)
      addPage(page);
  }

  void addPage(const std::string& path) {
    if (!known_.insert(path).second) return;
    if (result_.pages.size() >= kMaxPages) return missed(path, "there are more pages than are run");
    result_.pages.push_back(path);
    for (Lane& lane : lanes_)
      lane.waiting.push_back(path);
  }

  // Pages that nothing has gone to.
  void addRest() {
    hasRest_ = true;
    for (const File& file : input_.files)
      if (isPage(file.path) && loaded_.count(file.path) == 0) addPage(file.path);
  }

  bool isEnough() {
    for (const Lane& lane : lanes_)
      if (!lane.waiting.empty() || (lane.page != nullptr && !lane.page->isSettled())) return false;
    if (!hasRest_) addRest();
    const bool isWaiting = std::any_of(lanes_.begin(), lanes_.end(), [](const Lane& l) { return !l.waiting.empty(); });
    if (!isWaiting && options_.callsUncalled && !lanes_[kMade].isForced) {
      forceAll();
      return false;
    }
    return !isWaiting;
  }

  // Each page once more, in the world where everything answers.
  void forceAll() {
    lanes_[kMade].isForced = true;
    lanes_[kMade].waiting.assign(result_.pages.begin(), result_.pages.end());
  }

  void turn() {
    const auto now = Clock::now();
    if (now >= deadline_) dropWaiting("the time for the application was up");
    if (now >= deadline_ + kEnd) throw ProtocolError("the browser does not end its pages");
    for (Lane& lane : lanes_)
      startNext(lane);
    protocol_->pump(now + kTurn);
    for (Lane& lane : lanes_) {
      if (lane.page == nullptr) continue;
      lane.page->tick();
      if (lane.page->isStuck()) endRenderers();
    }
    if (protocol_->passedOver() > passedOver_) {
      passedOver_ = protocol_->passedOver();
      missed(current(), "it sent more at once than is read");
    }
    if (now >= nextLook_) look(now);
  }

  // In the lane's tab, or in a new one where there is none that can go on.
  void startNext(Lane& lane) {
    if (lane.page != nullptr && lane.page->isDone()) {
      if (lane.page->isToRepeat() && ++lane.repeats <= kMaxRepeats) lane.waiting.push_front(lane.page->path());
      lane.page = nullptr;
    }
    if (lane.waiting.empty() || (lane.page != nullptr && !lane.page->isIdle())) return;
    if (&lane == &lanes_[kPlausible] && !leave(lanes_[kUnreachable])) return;
    if (lane.page == nullptr) {
      pages_.push_back(std::make_unique<Page>(shared_, lane.world));
      lane.page = pages_.back().get();
    }
    const std::string path = lane.waiting.front();
    lane.waiting.pop_front();
    lane.page->open(path, std::min(deadline_, Clock::now() + seconds(options_.secondsPerPage)), lane.isForced,
                    lane.repeats >= kMaxRepeats);
  }

  // Whether a lane has nothing to do; its tab is closed then, for the memory.
  static bool leave(Lane& lane) {
    if (!lane.waiting.empty() || (lane.page != nullptr && !lane.page->isSettled())) return false;
    if (lane.page != nullptr && lane.page->isIdle()) lane.page->giveUp({});
    return true;
  }

  void dropWaiting(const std::string& reason) {
    for (Lane& lane : lanes_) {
      for (const std::string& path : lane.waiting)
        missed(path, reason);
      lane.waiting.clear();
    }
  }

  void take(const std::string& session, const std::string& method, const Json& params) {
    for (const Lane& lane : lanes_)
      if (lane.page != nullptr && lane.page->take(session, method, params)) return;
  }

  // The watchdog: it asks nothing of the browser.
  void look(Clock::time_point now) {
    nextLook_ = now + kLook;
    const ProcessSum sum = browser_->measure();
    result_.memory = std::max(result_.memory, sum.memory);
    renderers_ = sum.renderers;
    if (sum.processes > kMaxProcesses) throw ProtocolError("the browser was ended: it had too many processes");
    if (sum.memory <= std::uint64_t{options_.memory} << 20 || now < graceUntil_) return;
    const std::string much = "more than " + std::to_string(options_.memory) + " MiB of memory";
    if (sum.largestRenderer < 0 || ++endedRenderers_ > kMaxEndedRenderers)
      throw ProtocolError("the browser was ended: it took " + much);
    missed(current(), "its process was ended: the browser took " + much);
    browser_->endProcess(sum.largestRenderer);
    graceUntil_ = now + kGrace;
  }

  // Only where none of them is one that another page is run in: nobody can tell whose they are.
  void endRenderers() const {
    const auto isRunning = [](const Lane& lane) { return lane.page != nullptr && !lane.page->isSettled(); };
    if (std::any_of(lanes_.begin(), lanes_.end(), isRunning)) return;
    for (const pid_t renderer : browser_->measure().renderers)
      browser_->endProcess(renderer);
  }

  std::string current() const {
    for (const Lane& lane : lanes_)
      if (lane.page != nullptr && !lane.page->isSettled()) return lane.page->path();
    return {};
  }

  void missed(const std::string& page, const std::string& reason) {
    const auto isSame = [&](const Incomplete& other) { return other.page == page && other.reason == reason; };
    auto& list = result_.incomplete;
    if (list.size() < kMaxIncomplete && std::none_of(list.begin(), list.end(), isSame)) list.push_back({page, reason});
  }

  void giveUpAll(const std::string& reason) {
    if (result_.browser.empty()) {
      result_.failure = reason;
      return;
    }
    for (const Lane& lane : lanes_)
      if (lane.page != nullptr && !lane.page->isSettled()) missed(lane.page->path(), reason);
    dropWaiting(reason);
  }

  const Input& input_;
  const Options& options_;
  Result& result_;
  std::string mark_;
  std::string secret_;
  PackageServer server_;
  Findings findings_;
  Coverage coverage_;
  Vocabulary vocabulary_;
  Shared shared_;
  Clock::time_point start_;
  Clock::time_point deadline_;
  Clock::time_point nextLook_;
  Clock::time_point graceUntil_;
  int endedRenderers_ = 0;
  std::vector<pid_t> renderers_;  // when last looked at
  std::size_t passedOver_ = 0;
  std::set<std::string> known_;   // pages that were run or wait
  std::set<std::string> loaded_;  // as pages or frames
  bool hasRest_ = false;
  std::vector<std::unique_ptr<Page>> pages_;  // they stay: answers come late
  static constexpr std::size_t kUnreachable = 0;
  static constexpr std::size_t kMade = 1;
  static constexpr std::size_t kPlausible = 2;
  std::array<Lane, 3> lanes_{{{World::unreachable, {}}, {World::made, {}}, {World::plausible, {}}}};
  std::optional<Browser> browser_;
  std::optional<Protocol> protocol_;
};

}  // namespace

Result run(const Input& input, const Options& options) {
  const auto start = Clock::now();
  Result result;
  try {
    Trial(input, options, result).run();
  } catch (const std::exception& error) {
    result.failure = error.what();
  }
  result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  return result;
}

}  // namespace trial
