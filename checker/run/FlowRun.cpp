// Flow analysis in terms of the report: files in, findings with traces out. Test: tests/checker/FlowRun_test.cpp.

#include "checker/run/FlowRun.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

#include "APICheckEngine/Tables.h"
#include "checker/report/Excerpts.h"
#include "checker/run/DatabaseListing.h"
#ifdef TARVO_FLOW
#include "checker/run/FileGaps.h"
#include "checker/run/FlashHints.h"
#include "checker/run/FlashMovie.h"
#include "checker/run/GapReasons.h"
#include "checker/run/Threads.h"
#include "flow/Flow.h"
#endif

namespace fs = std::filesystem;

#ifdef TARVO_FLOW

namespace {

// What the analysis reads: others are films, pictures and the like.
bool isRead(const std::string& path) {
  static const char* const kOther[] = {".png", ".jpg", ".jpeg", ".gif", ".webp", ".bmp", ".ico",  ".mp4",   ".mp3",
                                       ".wav", ".ogg", ".webm", ".ts",  ".ttf",  ".otf", ".woff", ".woff2", ".eot",
                                       ".zip", ".wgt", ".pdf",  ".so",  ".wasm", ".map", ".css"};
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::none_of(std::begin(kOther), std::end(kOther), [&](const char* other) { return extension == other; });
}

flow::Database databaseOf(const DatabaseListing& listing) {
  flow::Database database;
  for (const DatabaseGroup& group : listing.groups)
    for (const DatabaseFunction& function : group.functions)
      database.methods[group.name].push_back(function.name);
  for (const char* classId : FlashEngine_1_00::pluginClassIdTable)
    database.identifiers.emplace_back(classId);
  return database;
}

TraceStep::What kindOf(const std::string& what) {
  const auto begins = [&](const char* word) { return what.rfind(word, 0) == 0; };
  return begins("element")     ? TraceStep::What::element
         : begins("look-up")   ? TraceStep::What::lookUp
         : begins("variable")  ? TraceStep::What::variable
         : begins("property")  ? TraceStep::What::property
         : begins("parameter") ? TraceStep::What::parameter
         : begins("result")    ? TraceStep::What::returned
                               : TraceStep::What::call;
}

Position positionOf(const flow::Place& place) {
  return {place.line, place.column};
}

std::vector<TraceStep> traceOf(const std::vector<flow::TraceStep>& from, const ReportedFiles& files) {
  std::vector<TraceStep> steps;
  steps.reserve(from.size());
  for (const flow::TraceStep& step : from) {
    const Position place = positionOf(step.place);
    steps.push_back(
        {kindOf(step.what), step.what, files.shown(step.place.path), place, files.lineAt(step.place.path, place)});
  }
  return steps;
}

// Calls of a list by file and method: a list may be long, and each new call is looked for in it.
class CallIndex {
 public:
  explicit CallIndex(std::vector<Finding>& list) : list_(&list) {
    for (std::size_t i = 0; i < list.size(); ++i)
      byName_[{list[i].call.path, list[i].call.method}].push_back(i);
  }

  void add(Finding finding) {
    byName_[{finding.call.path, finding.call.method}].push_back(list_->size());
    list_->push_back(std::move(finding));
  }

  // Those of the list that are this call. The engine's stand where their receiver does, as far as lines are known: in
  // Flash files there are none.
  std::vector<Finding*> find(const flow::FoundCall& call, const std::string& path) {
    std::vector<Finding*> found;
    const auto same = byName_.find({path, call.method});
    if (same == byName_.end()) return found;
    for (const std::size_t i : same->second)
      if (isAt((*list_)[i].call, call)) found.push_back(&(*list_)[i]);
    return found;
  }

 private:
  static bool isAt(const Call& known, const flow::FoundCall& call) {
    const int line = known.place.line;
    if (known.found == Call::Found::flow) return line == call.place.line && known.place.column == call.place.column;
    return line == call.place.line || line == call.methodPlace.line;
  }

  std::vector<Finding>* list_;
  std::map<std::pair<std::string, std::string>, std::vector<std::size_t>> byName_;
};

Call callAt(const flow::Place& place, const std::string& code, const ReportedFiles& files) {
  Call call;
  call.found = Call::Found::flow;
  call.code = code;
  files.place(place.path, positionOf(place), call);
  return call;
}

Finding::Confidence confidenceOf(flow::Confidence confidence) {
  return confidence == flow::Confidence::certain  ? Finding::Confidence::certain
         : confidence == flow::Confidence::likely ? Finding::Confidence::likely
                                                  : Finding::Confidence::possible;
}

std::string adviceOn(const flow::FoundCall& found) {
  if (found.isReached) return found.advice;
  return found.advice + (found.advice.empty() ? "" : "; ") + "no page loads this script";
}

// What the user wants of the calls that are found.
struct Wishes {
  const FlowOptions& options;
  const std::set<std::string>& accepted;
  const Deprecations& deprecations;
};

// The engine takes methods for documented ones that are documented, and deprecated, for other plug-ins only.
void correctKind(const flow::FoundCall& found, const FlowOptions& options, Finding& finding) {
  const bool isForOther = found.judgement == flow::Judgement::documentedForOther;
  if (!options.isPerPlugin || !isForOther || finding.kind != Finding::Kind::deprecated) return;
  finding.kind = Finding::Kind::otherPlugin;
  if (finding.status == Finding::Status::noted) finding.status = statusFor(finding, options.isPerPlugin);
}

// Says of a call that is known what flow analysis knows of it.
void confirm(const flow::FoundCall& found, const ReportedFiles& files, Finding& finding) {
  finding.confidence = std::max(finding.confidence, confidenceOf(found.confidence));
  if (finding.trace.empty()) finding.trace = traceOf(found.trace, files);
}

void addCall(const flow::FoundCall& found, const ReportedFiles& files, const Wishes& wishes, CallIndex& findings) {
  const std::vector<Finding*> known = findings.find(found, files.shown(found.place.path));
  for (Finding* finding : known) {
    correctKind(found, wishes.options, *finding);
    confirm(found, files, *finding);
    if (finding->advice.empty()) finding->advice = adviceOn(found);
  }
  if (!known.empty()) return;
  Finding finding;
  finding.call = callAt(found.place, found.code, files);
  finding.call.plugin = found.plugin;
  finding.call.method = found.method;
  finding.isOnDevice = false;
  finding.confidence = confidenceOf(found.confidence);
  const bool isForOther = found.judgement == flow::Judgement::documentedForOther;
  finding.kind = isForOther ? Finding::Kind::otherPlugin : Finding::Kind::undocumented;
  finding.trace = traceOf(found.trace, files);
  finding.advice = adviceOn(found);
  finding.status = statusFor(finding, wishes.options.isPerPlugin);
  if (found.judgement == flow::Judgement::documented) wishes.deprecations.judge(finding);
  if (wishes.accepted.count(found.method) != 0) finding.status = Finding::Status::accepted;
  if (finding.confidence == Finding::Confidence::possible && !wishes.options.isPossible) return;
  findings.add(std::move(finding));
}

// Both judge most calls; together at least as many as the one that judges more.
void addJudged(const flow::Result& result, ApplicationReport& report) {
  std::set<std::string> plugins;
  std::uint64_t calls = 0;
  for (const flow::FoundCall& call : result.calls) {
    if (call.confidence == flow::Confidence::possible) continue;
    ++calls;
    plugins.insert(call.plugin);
  }
  report.judgedCalls = std::max(report.judgedCalls, calls);
  report.judgedPlugins = std::max<std::uint64_t>(report.judgedPlugins, plugins.size());
}

// Whether a page only misses a script that is excluded, which is told already.
bool isExcluded(const flow::NotRead& gap, const ApplicationFiles& files) {
  static const std::string kMissing = "script that is not there: ";
  return gap.reason.compare(0, kMissing.size(), kMissing) == 0 &&
         files.isExcluded(gap.part, gap.reason.substr(kMissing.size()));
}

void addDocumented(const flow::FoundCall& found, const ReportedFiles& files, CallIndex& documented) {
  const std::vector<Finding*> known = documented.find(found, files.shown(found.place.path));
  for (Finding* finding : known)
    confirm(found, files, *finding);
  if (!known.empty()) return;
  Finding call;
  call.call = callAt(found.place, found.code, files);
  call.call.plugin = found.plugin;
  call.call.method = found.method;
  call.isOnDevice = false;
  call.confidence = confidenceOf(found.confidence);
  call.trace = traceOf(found.trace, files);
  documented.add(std::move(call));
}

// Takes out what the engine could not determine where flow analysis can, or says itself that it cannot.
void closeUndetermined(const flow::Result& result, const ReportedFiles& files, ApplicationReport& report) {
  std::set<std::tuple<std::string, int, int>> places;
  const auto add = [&](const flow::Place& place) { places.emplace(files.shown(place.path), place.line, place.column); };
  for (const flow::FoundCall& call : result.calls)
    if (call.confidence != flow::Confidence::possible) add(call.place);
  for (const flow::Open& open : result.open)
    add(open.place);
  auto& items = report.undetermined;
  items.erase(std::remove_if(items.begin(), items.end(),
                             [&](const Undetermined& item) {
                               const Position place = item.call.place;
                               return place.line > 0 && places.count({item.call.path, place.line, place.column}) > 0;
                             }),
              items.end());
}

void addResult(const flow::Result& result, const ReportedFiles& files, const Wishes& wishes,
               ApplicationReport& report) {
  report.rules.emplace_back("flow");
  CallIndex findings(report.findings);
  CallIndex documented(report.documented);
  for (const flow::FoundCall& call : result.calls) {
    const bool isDocumented = call.judgement == flow::Judgement::documented;
    if (isDocumented && wishes.options.isDocumented)
      addDocumented(call, files, documented);
    else if (!isDocumented || wishes.deprecations.has(call.plugin, call.method))
      addCall(call, files, wishes, findings);
  }
  addJudged(result, report);
  closeUndetermined(result, files, report);
  for (const flow::Open& open : result.open) {
    Undetermined undetermined;
    undetermined.call = callAt(open.place, open.code, files);
    undetermined.call.plugin = open.plugin;
    undetermined.reason = open.reason;
    if (open.isOnPlugin) {
      const std::string where = open.place.line == 0 ? "" : "in line " + std::to_string(open.place.line) + ", ";
      report.notChecked.push_back({undetermined.call.path, where + "a method is called whose name cannot be told"});
    }
    report.undetermined.push_back(std::move(undetermined));
  }
  for (const flow::NotRead& gap : result.notRead)
    report.notChecked.push_back(
        {gap.part.empty() ? report.application : files.shown(gap.part), "flow analysis: " + gap.reason});
  for (const flow::Library& library : result.libraries)
    report.libraries.push_back({library.name, files.shown(library.path)});
  sortByPlace(report);
}

// The files, and the names by which the report shows them.
struct Taken {
  std::vector<flow::File> files;
  std::vector<std::string> shown;
};

Taken taken(ApplicationFiles& from, const PathNames& names) {
  Taken all;
  for (ApplicationFile& file : from.release([&](const std::string& path) { return names.shown(path); })) {
    all.files.push_back({std::move(file.path), std::move(file.bytes), false});
    all.shown.push_back(std::move(file.shown));
  }
  return all;
}

// What is closed here is no gap any more; what the engine could not see behind such a gap may be one.
void closeGaps(const FlashMovie& movie, const std::string& shown, ApplicationReport& report) {
  const auto isClosed = [&](const NotChecked& part) {
    return part.part == shown && std::any_of(movie.closed.begin(), movie.closed.end(), [&](FlashEngine_1_00::Gap gap) {
             return part.reason == reasonOf(gap, 0).text;
           });
  };
  auto& parts = report.notChecked;
  const auto left = std::remove_if(parts.begin(), parts.end(), isClosed);
  const bool isClosing = left != parts.end();
  parts.erase(left, parts.end());
  for (const FlashEngine_1_00::Gap gap : movie.gaps) {
    const std::string reason = reasonOf(gap, 0).text;
    const auto isKnown = [&](const NotChecked& part) { return part.part == shown && part.reason == reason; };
    if (isClosing && std::none_of(parts.begin(), parts.end(), isKnown)) parts.push_back({shown, reason});
  }
}

// Puts the script of each Flash file in its place.
void readMovies(const flow::Database& database, Taken& all, ApplicationReport& report) {
  const FlashHints hints(database.identifiers, database.methods);
  for (std::size_t i = 0; i < all.files.size(); ++i) {
    flow::File& file = all.files[i];
    if (!beginsAsFlash(std::string_view(file.bytes).substr(0, 64))) continue;
    FlashMovie movie = readFlash(file.bytes);
    closeGaps(movie, all.shown[i], report);
    for (Undetermined& hint : hints.in(movie, all.shown[i]))
      report.undetermined.push_back(std::move(hint));
    file.bytes = std::move(movie.script);
    file.isMovie = true;
  }
}

// Nobody can look up a line of a script that was made of byte code.
void forgetPlacesInMovies(const std::vector<flow::File>& files, flow::Result& result) {
  std::set<std::string> movies;
  for (const flow::File& file : files)
    if (file.isMovie) movies.insert(file.path);
  const auto forget = [&](flow::Place& place) {
    if (movies.count(place.path) != 0) place.line = place.column = 0;
  };
  for (flow::FoundCall& call : result.calls) {
    forget(call.place);
    forget(call.methodPlace);
    for (flow::TraceStep& step : call.trace)
      forget(step.place);
  }
  for (flow::Open& open : result.open)
    forget(open.place);
}

}  // namespace

FlowRun::FlowRun(std::string application, const Exclusions& exclusions, const UnsavedTexts* unsaved)
    : files_(std::move(application), isRead, exclusions, unsaved) {}

bool FlowRun::isThere() {
  return true;
}

bool FlowRun::reads(const std::string& path) {
  return isRead(path);
}

void FlowRun::takeFiles(const FlashEngine_1_00::APIAnalysis& engine) {
  files_.takeExtracted(engine);
}

void FlowRun::run(const FlowOptions& options, const std::set<std::string>& accepted, const Deprecations& deprecations,
                  const PathNames& names, ApplicationReport& report) {
  Taken all = taken(files_, names);
  const flow::Database documented = databaseOf(*options.database);
  readMovies(documented, all, report);
  const Threads threads(options.threads);
  flow::Extras extras{options.isDocumented, options.cache, {}, options.isLast};
  if (options.threads > 1) extras.forEach = [&](std::size_t count, const auto& work) { threads.forEach(count, work); };
  flow::Result result = flow::analyse(all.files, documented, {}, extras);
  forgetPlacesInMovies(all.files, result);
  result.notRead.erase(std::remove_if(result.notRead.begin(), result.notRead.end(),
                                      [&](const flow::NotRead& gap) { return isExcluded(gap, files_); }),
                       result.notRead.end());
  ReportedFiles reported;
  for (std::size_t i = 0; i < all.files.size(); ++i)
    reported.add(all.files[i].path, all.shown[i], all.files[i].isMovie ? std::string_view() : all.files[i].bytes);
  addResult(result, reported, {options, accepted, deprecations}, report);
  for (const std::string& path : files_.tooLarge())
    report.notChecked.push_back({names.shown(path), "flow analysis: the file is too large"});
}

std::vector<PluginId> FlowRun::pluginIds(const DatabaseListing& database, const PathNames& names) {
  std::map<std::pair<std::string, std::string>, bool> isGlobal;
  for (const flow::Element& element : flow::analyse(taken(files_, names).files, databaseOf(database)).elements)
    if (!element.id.empty()) isGlobal[{element.id, element.plugin}] = !element.isDeclared;
  std::vector<PluginId> ids;
  ids.reserve(isGlobal.size());
  for (const auto& [key, is] : isGlobal)
    ids.push_back({key.first, key.second, is});
  return ids;
}

#else

FlowRun::FlowRun(std::string application, const Exclusions& exclusions, const UnsavedTexts* unsaved)
    : files_(std::move(application), {}, exclusions, unsaved) {}

bool FlowRun::isThere() {
  return false;
}

bool FlowRun::reads(const std::string&) {
  return false;
}

void FlowRun::takeFiles(const FlashEngine_1_00::APIAnalysis&) {}

void FlowRun::run(const FlowOptions&, const std::set<std::string>&, const Deprecations&, const PathNames&,
                  ApplicationReport&) {}

std::vector<PluginId> FlowRun::pluginIds(const DatabaseListing&, const PathNames&) {
  return {};
}

#endif
