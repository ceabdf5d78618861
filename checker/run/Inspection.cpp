// One application's report: the calls that the engine tells of become findings with their places.
//
// The engine tells of a call by the bytes in which it found it. These are kept until its lists are full; then the calls
// of each source are placed in it together, before the file is removed. What the device's host gets and what stands
// behind a stop come from one run, in which the engine says of each call on which side it is.
// Test: tests/checker/Inspection_test.cpp.

#include "checker/run/Inspection.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <tuple>

#include "checker/report/CallPlaces.h"
#include "checker/report/Sha256.h"
#include "checker/run/EngineRun.h"
#include "checker/run/PluginLikeCalls.h"

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FoundCall;
using FlashEngine_1_00::SWFStateMentInfo;

namespace {

// Undocumented calls of one application that are kept, and as many others: more than people read, and no more than a
// report of them fits in the memory that a check may take.
constexpr std::size_t kMaxCalls = 10'000;
constexpr std::size_t kMaxObjects = 1000;  // elements, and bindings

// The calls that a run of the engine finds, each with its place.
//
// The same call is found once for each thing that it is found by, on the device and behind a stop; it is kept once,
// with how it was found first. What a run on the device finds has an order and a room of its own, so that nothing of it
// depends on whether the run went on behind its stops.
class CallCollector {
 public:
  struct Entry {
    FoundCall::Verdict verdict;
    Call call;
    std::string engineText = {};  // of an undocumented one, the line that the host gets
    bool isOnDevice = false;
    bool isListed = false;
  };

  // Also keeps calls of documented methods, which take no room from others: of all, if that is asked for, else of
  // deprecated ones.
  explicit CallCollector(const InspectionOptions& options)
      : keepsDocumented_(options.documented), deprecations_(options.deprecations) {}

  void record(const FoundCall& found) {
    count(found);
    if (found.verdict == FoundCall::Verdict::documented) {
      uses_[{found.classId, found.method, std::string(found.path)}].insert(found.call.data());
      return recordDocumented(found);
    }
    if (device_.isFull(found.verdict) && listed_.isFull(found.verdict)) {
      isCut_ = true;
      return;
    }
    const auto [known, isNew] = known_.try_emplace(identityOf(found), nullptr);
    Entry*& entry = known->second;
    const bool isDevices = found.isOnDevice && isJudged(found.verdict);
    const bool takesDevices = isDevices && (entry == nullptr || !entry->isOnDevice) && device_.take(found.verdict);
    const bool takesListed = isNew && listed_.take(found.verdict);
    if (entry == nullptr && (takesDevices || takesListed)) {
      entries_.push_back({found.verdict, {}});
      entry = &entries_.back();
      entry->isListed = takesListed;
      fill(found, entry->call);
    }
    if (!takesDevices) return;
    entry->isOnDevice = true;
    onDevice_.push_back(entry);
  }

  void recordDocumented(const FoundCall& found) {
    if (!keepsDocumented_ && !deprecations_.has(found.classId, found.method)) return;
    const auto [known, isNew] = known_.try_emplace(identityOf(found), nullptr);
    Entry*& entry = known->second;
    if (isNew && documented_.take(found.verdict)) {
      entries_.push_back({found.verdict, {}});
      entry = &entries_.back();
      fill(found, entry->call);
    }
    if (entry != nullptr) entry->isOnDevice = entry->isOnDevice || found.isOnDevice;
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

  // After the run: gives the calls the user's paths.
  void name(const PathNames& names) {
    for (Entry& entry : entries_) {
      Call& call = entry.call;
      if (entry.verdict == FoundCall::Verdict::undocumented)
        entry.engineText = names.findingLine(call.path, call.engineLine, call.method);
      call.path = names.shown(call.path);
    }
  }

  // In the order in which a run on the device finds them, and in that of a run that goes on.
  const std::vector<const Entry*>& onDevice() const { return onDevice_; }
  const std::deque<Entry>& entries() const { return entries_; }

  // Whether there were more than are kept.
  bool isCut(bool all) const { return isCut_ || device_.isCut() || documented_.isCut() || (all && listed_.isCut()); }

  // How often documented methods are called, by plug-in, method and the user's path.
  std::vector<DocumentedUse> documentedUses(const PathNames& names) const {
    std::vector<DocumentedUse> uses;
    for (const auto& [use, calls] : uses_) {
      const auto& [plugin, method, path] = use;
      uses.push_back({plugin, method, names.shown(path), calls.size()});
    }
    return uses;
  }

  // How many calls were judged, and on how many plug-ins.
  std::uint64_t judgedCalls() const { return judged_.size(); }
  std::uint64_t judgedPlugins() const { return plugins_.size(); }

 private:
  using Identity = std::tuple<std::string, const char*, std::string, std::string, FoundCall::Verdict>;

  static Identity identityOf(const FoundCall& found) {
    return {std::string(found.path), found.call.data(), found.classId, found.method, found.verdict};
  }
  // How many calls are kept. Others, however many, must not hide an undocumented one.
  class Room {
   public:
    bool take(FoundCall::Verdict verdict) {
      std::size_t& kept = verdict == FoundCall::Verdict::undocumented ? undocumented_ : others_;
      const bool isFull = kept == kMaxCalls;
      isCut_ = isCut_ || isFull;
      kept += isFull ? 0 : 1;
      return !isFull;
    }
    bool isFull(FoundCall::Verdict verdict) const {
      return (verdict == FoundCall::Verdict::undocumented ? undocumented_ : others_) == kMaxCalls;
    }
    bool isCut() const { return isCut_; }

   private:
    std::size_t undocumented_ = 0;
    std::size_t others_ = 0;
    bool isCut_ = false;
  };

  static bool isJudged(FoundCall::Verdict verdict) {
    return verdict == FoundCall::Verdict::undocumented || verdict == FoundCall::Verdict::accepted;
  }

  void count(const FoundCall& found) {
    if (!isJudged(found.verdict) && found.verdict != FoundCall::Verdict::documented) return;
    plugins_.insert(found.classId);
    const bool isInFlash = found.on == FoundCall::On::flashVariable || found.on == FoundCall::On::flashLookUp;
    judged_.emplace(isInFlash ? found.path : std::string_view(), found.call.data());  // statements are gone afterwards
  }

  void fill(const FoundCall& found, Call& call) {
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

  std::deque<Entry> entries_;
  std::vector<const Entry*> onDevice_;
  std::vector<std::pair<std::string_view, Call*>> unplaced_;  // calls in web sources, with the code that was found
  std::map<Identity, Entry*> known_;
  bool keepsDocumented_;
  const Deprecations& deprecations_;
  Room device_;
  Room listed_;
  Room documented_;
  bool isCut_ = false;
  std::set<std::pair<std::string, const char*>> judged_;
  std::set<std::string> plugins_;
  std::map<std::tuple<std::string, std::string, std::string>, std::set<const char*>> uses_;
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
  for (std::vector<Finding>* findings : {&report.findings, &report.documented}) {
    for (Finding& finding : *findings)
      byPlace.push_back(&finding);
  }
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
std::vector<Finding> findingsOf(const CallCollector& calls) {
  std::vector<Finding> findings;
  std::set<std::string> lines;        // equal ones of a file are given once
  std::set<std::string> engineLines;  // on the device they have no whole paths: the host gets those of two files once
  for (const CallCollector::Entry* entry : calls.onDevice()) {
    const bool isAccepted = entry->verdict == FoundCall::Verdict::accepted;
    const bool isReported = !isAccepted && lines.insert(entry->call.path + '\n' + entry->engineText).second;
    if (!isAccepted && !isReported) continue;
    const Finding::Status status = isAccepted ? Finding::Status::accepted : Finding::Status::reported;
    const bool isFirst = engineLines.insert(entry->engineText).second;
    findings.push_back({entry->call, status, isReported, isFirst ? entry->engineText : std::string(), {}});
  }
  return findings;
}

// Adds what the engine makes no verdict on, and what stands where it stops; without `isListed`, only counts the latter.
void addBehindStops(const CallCollector& calls, bool isListed, ApplicationReport& report) {
  // Calls in Flash files have no place: of several alike, each that was found on the device stands for one only.
  std::multiset<decltype(identityOf(report.findings.front().call))> known;
  const std::vector<Finding> onDevice = report.findings;
  for (const Finding& finding : onDevice)
    known.insert(identityOf(finding.call));
  for (const CallCollector::Entry& entry : calls.entries()) {
    if (!entry.isListed) continue;
    if (const char* reason = reasonOf(entry.verdict)) {
      report.undetermined.push_back({entry.call, reason});
    } else if (const auto same = known.find(identityOf(entry.call)); same != known.end()) {
      known.erase(same);
    } else {
      const bool isAccepted = entry.verdict == FoundCall::Verdict::accepted;
      const Finding::Status status = isAccepted ? Finding::Status::accepted : Finding::Status::reported;
      if (isListed) report.findings.push_back({entry.call, status, false, {}, {}});
      if (!isListed && !isAccepted) ++report.behindStops;
    }
  }
}

void addDocumented(const CallCollector& calls, ApplicationReport& report) {
  for (const CallCollector::Entry& entry : calls.entries()) {
    if (entry.verdict != FoundCall::Verdict::documented) continue;
    report.documented.push_back({entry.call, Finding::Status::reported, entry.isOnDevice, {}, {}});
    forgetSource(report.documented.back().call);
  }
}

void addDeprecated(const CallCollector& calls, const InspectionOptions& options, ApplicationReport& report) {
  for (const CallCollector::Entry& entry : calls.entries()) {
    if (entry.verdict != FoundCall::Verdict::documented) continue;
    Finding finding{entry.call, Finding::Status::noted, false, {}, {}};
    options.deprecations.judge(finding);
    if (options.accepted.count(entry.call.method) > 0) finding.status = Finding::Status::accepted;
    report.findings.push_back(std::move(finding));
  }
}

void addObjects(const Outcome& run, ApplicationReport& report) {
  using FlashEngine_1_00::detail::Key;
  using FlashEngine_1_00::detail::splitKey;
  std::set<std::tuple<std::string, std::string, std::string>> known;
  const auto isNew = [&](const Key& key, std::string_view path) {
    return known.emplace(key.classId, key.symbol, path).second;
  };
  for (const SWFStateMentInfo* record : run.engine->objectIdList) {
    const Key key = splitKey(*record->expression);
    if (report.elements.size() < kMaxObjects && isNew(key, record->path))
      report.elements.push_back({key.classId, key.symbol, run.names.shown(std::string(record->path))});
  }
  known.clear();
  for (const SWFStateMentInfo* record : run.engine->objectVariableList) {
    const Key key = splitKey(*record->expression);
    if (report.bindings.size() < kMaxObjects && isNew(key, record->path))
      report.bindings.push_back({key.classId, key.symbol, run.names.shown(std::string(record->path))});
  }
}

// The files that it is made of; a package is not one of its own.
std::vector<std::string> filesOf(const Outcome& run, const std::string& application) {
  std::vector<std::string> files;
  for (const std::string& path : run.files)
    files.push_back(run.names.shown(path));
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  if (files.size() > 1) files.erase(std::remove(files.begin(), files.end(), application), files.end());
  return files;
}

// Whether calls behind stops are listed, if only for flow analysis or a trial to confirm them.
bool listsAll(const InspectionOptions& options) {
  return options.all || options.flow.isOn || options.trial.isOn;
}

// Adds what the engine's run came to, but for what is said of a list that is cut.
void addRun(Outcome& run, const CallCollector& calls, const InspectionOptions& options, ApplicationReport& report) {
  report.failure = run.failure;
  report.findings = findingsOf(calls);
  report.notChecked = std::move(run.notChecked);
  report.excluded = std::move(run.excluded);
  report.sources = run.webSources;
  report.flashFiles = run.flashFiles;
  if (options.log) report.log = std::move(run.log);
  addObjects(run, report);
  report.rules.emplace_back("engine");
  report.judgedCalls = calls.judgedCalls();
  report.judgedPlugins = calls.judgedPlugins();
  report.hasCallsWithoutPlugin = hasCallsWithoutPlugin(*run.engine);
  if (report.failure.empty()) addBehindStops(calls, listsAll(options), report);
  if (options.documented) {
    addDocumented(calls, report);
  } else {
    addDeprecated(calls, options, report);
  }
  if (!options.all || !report.failure.empty()) return;
  report.documentedUses = calls.documentedUses(run.names);
  report.files = filesOf(run, report.application);
}

// Takes out what stands where the engine stops and nothing else has found, and counts what counts of it.
void leaveOutBehindStops(ApplicationReport& report) {
  auto& findings = report.findings;
  const auto left = std::stable_partition(findings.begin(), findings.end(), [](const Finding& finding) {
    const bool isEngines = finding.call.found < Call::Found::flow && finding.kind != Finding::Kind::deprecated;
    const bool isAccepted = finding.status == Finding::Status::accepted;
    return !isEngines || isAccepted || finding.isOnDevice || !finding.trace.empty();
  });
  report.behindStops = static_cast<std::uint64_t>(std::count_if(
      left, findings.end(), [](const Finding& finding) { return finding.status == Finding::Status::reported; }));
  findings.erase(left, findings.end());
}

// Hands over a report as it is now.
void handOver(ApplicationReport report, const InspectionOptions& options, const TakeReport& take) {
  if (!take || !report.failure.empty()) return;
  if (!options.all && listsAll(options)) leaveOutBehindStops(report);
  fingerprint(report);
  conclude(report);
  take(std::move(report));
}

void inspect(const InspectionOptions& options, const TakeReport& soFar, ApplicationReport& report) {
  CallCollector calls(options);
  EngineRunOptions runOptions{options.database, options.accepted, true, options.unpacked};
  runOptions.exclusions = options.exclusions;
  runOptions.threads = options.threads;
  runOptions.callFound = [&](const FoundCall& call) { calls.record(call); };
  if (!options.unsaved.empty()) runOptions.unsaved = &options.unsaved;
  FlowRun flow(report.application, options.exclusions, &options.unsaved);
  TrialRun trialRun(report.application, options.exclusions);
  if (options.trial.isOn) {
    runOptions.keeps = [](const std::string&) { return true; };
  } else if (options.flow.isOn) {
    runOptions.keeps = FlowRun::reads;
  }
  runOptions.beforeRemoval = [&](const APIAnalysis& engine) {
    calls.placeInSources(engine);
    if (options.flow.isOn) flow.takeFiles(engine);
    if (options.trial.isOn) trialRun.takeFiles(engine);
  };
  Outcome run = runEngine(report.application, runOptions);
  calls.name(run.names);
  addRun(run, calls, options, report);
  run.engine.reset();  // its texts are as large as the application, and others need memory, too
  if (options.flow.isOn || options.trial.isOn) handOver(report, options, soFar);
  if (options.flow.isOn && report.failure.empty())
    flow.run(options.flow, options.accepted, options.deprecations, run.names, report);
  if (calls.isCut(listsAll(options))) {
    report.notChecked.push_back(
        {report.application, "only the first " + std::to_string(kMaxCalls) + " calls are listed"});
  }
  if (options.trial.isOn && report.failure.empty()) {
    if (options.flow.isOn) handOver(report, options, soFar);
    const auto shown = [&](const std::string& path) { return run.names.shown(path); };
    trialRun.run(options.trial, options.accepted, options.deprecations, shown, report);
  }
  if (!options.all && listsAll(options)) leaveOutBehindStops(report);
}

// What another state of a file shows in; nothing of a folder, or of what cannot be seen.
using Stamp = std::array<std::int64_t, 5>;
std::optional<Stamp> stampOf(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return Stamp{static_cast<std::int64_t>(info.st_dev), static_cast<std::int64_t>(info.st_ino),
               static_cast<std::int64_t>(info.st_size), static_cast<std::int64_t>(info.st_mtim.tv_sec),
               static_cast<std::int64_t>(info.st_mtim.tv_nsec)};
}

}  // namespace

ApplicationReport inspect(const std::string& application, const InspectionOptions& options, const TakeReport& soFar) {
  const auto start = std::chrono::steady_clock::now();
  ApplicationReport report;
  report.application = application;
  const std::optional<Stamp> before = stampOf(application);
  if (options.digest) report.sha256 = sha256OfFile(application);
  try {
    inspect(options, soFar, report);
    fingerprint(report);
  } catch (const std::bad_alloc&) {
    report.failure = "it takes more memory than there is";
  } catch (const std::exception& error) {
    report.failure = error.what();
  }
  // An editor's own text does not change with the file.
  const bool isOnDisk = options.unsaved.empty();
  if (isOnDisk && report.failure.empty() && stampOf(application) != before)
    report.failure = "it changed while it was read";
  conclude(report);
  report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return report;
}
