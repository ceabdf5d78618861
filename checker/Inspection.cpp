// Test: tests/checker/Inspection_test.cpp.

#include "checker/Inspection.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <functional>
#include <iterator>
#include <map>
#include <tuple>

#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Verdicts.h"
#include "checker/CallPlaces.h"
#include "checker/EngineRun.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FoundCall;
using FlashEngine_1_00::SWFStateMentInfo;

namespace {

// Undocumented calls of one application that are kept, and as many others: more than people read, and no more than a
// report of them fits in the memory that a check may take.
constexpr std::size_t kMaxCalls = 10'000;
constexpr std::size_t kMaxObjects = 1000;  // elements, and bindings

// One run of the engine with the calls it told of, each with its place.
class WatchedRun {
 public:
  struct Heard {
    FoundCall::Verdict verdict;
    Call call;
    std::string engineText;  // of an undocumented one, the line that the host gets
  };

  WatchedRun(const std::string& application, const InspectionOptions& options, bool all)
      : run_(options.database, application, optionsOf(options, all)) {
    for (Heard& heard : heard_) {
      const bool isReported = heard.verdict == FoundCall::Verdict::undocumented;
      if (isReported) heard.engineText = run_.findingLine(heard.call.path, heard.call.engineLine, heard.call.method);
      heard.call.path = run_.shown(heard.call.path);
    }
  }

  const EngineRun& engineRun() const { return run_; }
  const std::deque<Heard>& heard() const { return heard_; }
  bool isCut() const { return isCut_; }

 private:
  EngineRunOptions optionsOf(const InspectionOptions& options, bool all) {
    FlashEngine_1_00::CallWatch watch;
    watch.accepted = options.accepted;
    watch.all = all;
    watch.found = [this](const FoundCall& call) { hear(call); };
    return {watch, [this](const APIAnalysis& engine) { placeInSources(engine); }};
  }

  void hear(const FoundCall& found) {
    if (found.verdict == FoundCall::Verdict::documented) return;
    // Others, however many, must not hide an undocumented one.
    std::size_t& kept = found.verdict == FoundCall::Verdict::undocumented ? undocumented_ : others_;
    if (kept == kMaxCalls) {
      isCut_ = true;
      return;
    }
    // The same call is found once for each thing that it is found by.
    if (!known_.emplace(found.path, found.call.data(), found.classId, found.method, found.verdict).second) return;
    ++kept;
    heard_.push_back({found.verdict, {}, {}});
    Call& call = heard_.back().call;
    call.path = found.path;
    call.engineLine = found.line;
    call.plugin = found.classId;
    call.method = found.method;
    call.found = static_cast<Call::Found>(found.on);

    // The calls on a variable are found with the byte before them.
    const bool isOnVariable = found.on == FoundCall::On::variable || found.on == FoundCall::On::flashVariable;
    const std::string_view code = found.call.substr(isOnVariable ? 1 : 0);
    const bool isInSource = found.on == FoundCall::On::variable || found.on == FoundCall::On::lookUp;
    if (isInSource) {
      unplaced_.emplace_back(code, &call);
    } else {
      placeInStatements(found.text, {static_cast<std::size_t>(code.data() - found.text.data()), code.size(), &call});
    }
  }

  // Web sources: the engine keeps what it made of them in memory, but removes what it extracted.
  void placeInSources(const APIAnalysis& engine) {
    struct Source {
      const std::string* path;
      std::string_view text;
      std::vector<Sighting> sightings;
    };
    // By where the text begins: the one that a call points into is its source, whatever else has the same path.
    std::map<const char*, Source, std::less<>> sources;
    for (std::size_t i = 0; i < engine.worthfulSourceList.size(); ++i) {
      const char* text = engine.worthfulSourceList[i]->c_str();
      sources.try_emplace(text, Source{engine.worthfulPathList[i], text, {}});
    }
    for (const auto& [code, call] : unplaced_) {
      const auto next = sources.upper_bound(code.data());
      if (next == sources.begin()) continue;
      Source& source = std::prev(next)->second;
      const auto offset = static_cast<std::size_t>(code.data() - source.text.data());
      if (offset < source.text.size()) source.sightings.push_back({offset, code.size(), call});
    }
    for (auto& [begin, source] : sources) {
      if (!source.sightings.empty()) placeInSource(*source.path, source.text, std::move(source.sightings));
    }
    unplaced_.clear();
  }

  std::deque<Heard> heard_;
  std::vector<std::pair<std::string_view, Call*>> unplaced_;  // calls in web sources, with the code that was found
  std::set<std::tuple<std::string, const char*, std::string, std::string, FoundCall::Verdict>> known_;
  std::size_t undocumented_ = 0;  // calls that are kept
  std::size_t others_ = 0;
  bool isCut_ = false;
  EngineRun run_;  // uses all of these
};

const char* reasonOf(FoundCall::Verdict verdict) {
  switch (verdict) {
    case FoundCall::Verdict::builtIn:
      return "the name of a built-in function stands in it";
    case FoundCall::Verdict::opening:
      return "calls with '.Open' are not judged";
    case FoundCall::Verdict::unnamed:
      return "an extension call without the name of a method";
    case FoundCall::Verdict::common:
      return "the variable is taken for a helper object of the script library";
    default:
      return nullptr;
  }
}

// 64-bit FNV-1a of what stays of a finding when lines move.
class Fingerprint {
 public:
  void add(const std::string& text) {
    for (const char c : text)
      take(static_cast<unsigned char>(c));
    take(0);
  }

  std::string text() const {
    char digits[17];
    (void)std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash_));
    return digits;
  }

 private:
  void take(unsigned char byte) { hash_ = (hash_ ^ byte) * 0x100000001B3U; }

  std::uint64_t hash_ = 0xCBF29CE484222325U;
};

// The path of a file within its application, the same for "www", "./www" and "www/".
std::string pathInside(const std::string& application, const std::string& path) {
  if (path.compare(0, application.size(), application) != 0) return path;
  return path.substr(std::min(path.find_first_not_of('/', application.size()), path.size()));
}

// Gives each finding its fingerprint: the path within the application, the call, and how many alike come before it.
void fingerprint(ApplicationReport& report) {
  std::vector<Finding*> byPlace;
  for (Finding& finding : report.findings)
    byPlace.push_back(&finding);
  std::stable_sort(byPlace.begin(), byPlace.end(), [](const Finding* a, const Finding* b) {
    return std::tie(a->call.path, a->call.place.line, a->call.place.column) <
           std::tie(b->call.path, b->call.place.line, b->call.place.column);
  });
  std::map<std::string, int> alike;
  for (Finding* finding : byPlace) {
    const Call& call = finding->call;
    std::string code = call.code;
    code.erase(std::remove_if(code.begin(), code.end(), [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }),
               code.end());
    Fingerprint print;
    for (const std::string& part :
         {pathInside(report.application, call.path), call.plugin, call.method, std::string(nameOf(call.found)), code})
      print.add(part);
    const int before = alike[print.text()]++;
    print.add(std::to_string(before));
    finding->fingerprint = print.text();
  }
}

std::tuple<const std::string&, int, int, const std::string&, const std::string&, const std::string&> identityOf(
    const Call& call) {
  return {call.path, call.place.line, call.place.column, call.plugin, call.method, call.code};
}

// The findings that the host gets, and those that are accepted.
std::vector<Finding> findingsOf(const WatchedRun& run) {
  std::vector<Finding> findings;
  std::set<std::string> lines;  // equal ones are given once
  for (const WatchedRun::Heard& heard : run.heard()) {
    const bool isAccepted = heard.verdict == FoundCall::Verdict::accepted;
    const bool isReported = heard.verdict == FoundCall::Verdict::undocumented &&
                            lines.insert(heard.call.path + '\n' + heard.engineText).second;
    if (!isAccepted && !isReported) continue;
    const Finding::Status status = isAccepted ? Finding::Status::accepted : Finding::Status::reported;
    findings.push_back({heard.call, status, isReported, heard.engineText, {}});
  }
  return findings;
}

// Adds what a run found that went on where the engine stops.
void addAll(const WatchedRun& run, ApplicationReport& report) {
  // Calls in Flash files have no place: of several alike, each of the first run stands for one only.
  std::multiset<decltype(identityOf(report.findings.front().call))> known;
  const std::vector<Finding> onDevice = report.findings;
  for (const Finding& finding : onDevice)
    known.insert(identityOf(finding.call));
  for (const WatchedRun::Heard& heard : run.heard()) {
    if (const char* reason = reasonOf(heard.verdict)) {
      report.undetermined.push_back({heard.call, reason});
    } else if (const auto same = known.find(identityOf(heard.call)); same != known.end()) {
      known.erase(same);
    } else {
      const bool isAccepted = heard.verdict == FoundCall::Verdict::accepted;
      const Finding::Status status = isAccepted ? Finding::Status::accepted : Finding::Status::reported;
      report.findings.push_back({heard.call, status, false, {}, {}});
    }
  }
  for (const NotChecked& missed : run.engineRun().notChecked()) {
    const auto isSame = [&](const NotChecked& other) {
      return other.part == missed.part && other.reason == missed.reason;
    };
    if (std::none_of(report.notChecked.begin(), report.notChecked.end(), isSame)) report.notChecked.push_back(missed);
  }
}

void addObjects(const EngineRun& run, ApplicationReport& report) {
  using FlashEngine_1_00::detail::Key;
  using FlashEngine_1_00::detail::splitKey;
  std::set<std::tuple<std::string, std::string, std::string>> known;
  const auto isNew = [&](const Key& key, const std::string& path) {
    return known.emplace(key.classId, key.symbol, path).second;
  };
  for (const SWFStateMentInfo* record : run.engine().objectIdList) {
    const Key key = splitKey(*record->expression);
    if (report.elements.size() < kMaxObjects && isNew(key, record->path))
      report.elements.push_back({key.classId, key.symbol, run.shown(record->path)});
  }
  known.clear();
  for (const SWFStateMentInfo* record : run.engine().objectVariableList) {
    const Key key = splitKey(*record->expression);
    if (report.bindings.size() < kMaxObjects && isNew(key, record->path))
      report.bindings.push_back({key.classId, key.symbol, run.shown(record->path)});
  }
}

void inspect(const InspectionOptions& options, ApplicationReport& report) {
  const WatchedRun run(report.application, options, false);
  const EngineRun& engineRun = run.engineRun();
  report.failure = engineRun.failure();
  report.findings = findingsOf(run);
  report.notChecked = engineRun.notChecked();
  report.sources = engineRun.webSources();
  report.flashFiles = engineRun.flashFiles();
  if (options.log) report.log = engineRun.log();
  addObjects(engineRun, report);
  bool isCut = run.isCut();
  if (options.all && report.failure.empty()) {
    const WatchedRun whole(report.application, options, true);
    addAll(whole, report);
    isCut = isCut || whole.isCut();
  }
  if (isCut) {
    report.notChecked.push_back(
        {report.application, "only the first " + std::to_string(kMaxCalls) + " calls are listed"});
  }
}

}  // namespace

ApplicationReport inspect(const std::string& application, const InspectionOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  ApplicationReport report;
  report.application = application;
  try {
    inspect(options, report);
    fingerprint(report);
  } catch (const std::bad_alloc&) {
    report.failure = "it takes more memory than there is";
  } catch (const std::exception& error) {
    report.failure = error.what();
  }
  conclude(report);
  report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return report;
}
