// A trial in terms of the report. A call that the engine found, too, is the same finding, now confirmed; the trace is
// the stack, outermost first.
// Test: tests/checker/TrialRun_test.cpp; with a real browser, tests/groups/trial.

#include "checker/run/TrialRun.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <tuple>

#include "APICheckEngine/Tables.h"
#include "checker/run/PrivateDirectory.h"
#include "trial/PackageServer.h"

namespace fs = std::filesystem;

namespace {

constexpr unsigned kAround = 30;  // seconds: starting and ending
constexpr const char* kUnknownName = "its name comes from the network, the user or a plug-in";

Position positionOf(const trial::Frame& frame) {
  return {frame.line, frame.column};
}

Call callOf(const trial::Call& seen, const ReportedFiles& files) {
  Call call;
  call.plugin = seen.plugin;
  call.method = seen.method;
  call.found = seen.isForced ? Call::Found::trialUncalled : Call::Found::trial;
  files.place(seen.place.path, positionOf(seen.place), call);
  return call;
}

// The outermost frame first, the call itself last.
std::vector<TraceStep> traceOf(const trial::Call& seen, const ReportedFiles& files) {
  std::vector<TraceStep> steps;
  steps.reserve(seen.trace.size());
  for (auto frame = seen.trace.rbegin(); frame != seen.trace.rend(); ++frame) {
    const std::string text = frame->function.empty() ? "outside of any named function" : "in '" + frame->function + "'";
    const Position place = positionOf(*frame);
    steps.push_back({TraceStep::What::call, text, files.shown(frame->path), place, files.lineAt(frame->path, place)});
  }
  if (seen.isForced && !steps.empty())
    steps.front().text += ", called by the trial: nobody showed that the application calls it";
  return steps;
}

// Whether the finding is of the call that was seen: the same method in the same lines.
bool isOf(const Finding& finding, const Call& seen) {
  const Call& call = finding.call;
  if (call.path != seen.path || call.method != seen.method || call.place.line == 0) return false;
  const auto lines = static_cast<int>(std::count(call.code.begin(), call.code.end(), '\n'));
  return seen.place.line >= call.place.line && seen.place.line <= call.place.line + lines;
}

// What only calls of the trial's own led to confirms nothing.
void confirm(Finding& finding, const trial::Call& seen, const ReportedFiles& files) {
  if (!seen.isForced) finding.confidence = Finding::Confidence::confirmed;
  if (finding.arguments.empty()) finding.arguments = seen.arguments;
  if (finding.trace.empty()) finding.trace = traceOf(seen, files);
}

// The values of src in <content src="index.html"/>.
std::vector<std::string> contentsOf(const std::string& config) {
  std::vector<std::string> pages;
  for (std::size_t at = config.find("<content"); at != std::string::npos; at = config.find("<content", at + 1)) {
    const std::string tag = config.substr(at, config.find('>', at) - at);
    const std::size_t src = tag.find("src");
    const std::size_t begin = src == std::string::npos ? src : tag.find_first_of("'\"", src);
    if (begin == std::string::npos) continue;
    const std::size_t end = tag.find(tag[begin], begin + 1);
    if (end != std::string::npos) pages.push_back(tag.substr(begin + 1, end - begin - 1));
  }
  return pages;
}

}  // namespace

unsigned trialSeconds(const TrialOptions& options) {
  return options.isOn ? trial::kPagesOfTime * options.seconds + kAround : 0;
}

std::vector<std::string> startPages(const std::vector<trial::File>& files) {
  std::vector<std::string> pages;
  std::set<std::string> paths;
  for (const trial::File& file : files)
    paths.insert(file.path);
  const auto add = [&](const std::string& path) {
    if (paths.count(path) == 1 && std::find(pages.begin(), pages.end(), path) == pages.end()) pages.push_back(path);
  };
  for (const trial::File& file : files) {
    const std::size_t name = file.path.rfind('/') + 1;
    if (file.path.compare(name, std::string::npos, "config.xml") != 0) continue;
    for (const std::string& page : contentsOf(file.bytes))
      add(fs::path(file.path.substr(0, name) + page).lexically_normal().string());
  }
  std::vector<std::pair<std::ptrdiff_t, std::string>> indexes;
  for (const std::string& path : paths) {
    const std::string name = path.substr(path.rfind('/') + 1);
    if (name == "index.html" || name == "index.htm")
      indexes.emplace_back(std::count(path.begin(), path.end(), '/'), path);
  }
  std::sort(indexes.begin(), indexes.end());
  for (const auto& [depth, path] : indexes)
    add(path);
  for (const std::string& path : paths)
    if (pages.empty() && trial::isPage(path)) pages.push_back(path);
  return pages;
}

void addTrial(const trial::Result& result, const ReportedFiles& files, const std::set<std::string>& accepted,
              const Deprecations& deprecations, ApplicationReport& report) {
  if (!result.failure.empty()) {
    report.notChecked.push_back({report.application, "no trial run: " + result.failure});
    return;
  }
  report.rules.emplace_back("trial");
  report.browser = result.browser;
  for (const trial::Call& seen : result.calls) {
    const Call call = callOf(seen, files);
    bool isKnown = false;
    for (Finding& finding : report.findings) {
      if (!isOf(finding, call)) continue;
      if (!seen.isForced) confirm(finding, seen, files);
      isKnown = true;
    }
    if (isKnown) continue;
    Finding finding;
    finding.call = call;
    finding.isOnDevice = false;
    confirm(finding, seen, files);
    deprecations.judge(finding);
    if (accepted.count(call.method) == 1) finding.status = Finding::Status::accepted;
    report.findings.push_back(std::move(finding));
  }
  for (const trial::Call& seen : result.undetermined)
    report.undetermined.push_back({callOf(seen, files), kUnknownName, traceOf(seen, files)});
  for (const trial::Incomplete& one : result.incomplete) {
    const std::string part = one.page.empty() ? report.application : files.shown(one.page);
    report.notChecked.push_back({part, "trial incomplete: " + one.reason});
  }
  for (const trial::FileCoverage& file : result.coverage)
    report.coverage.push_back({files.shown(file.path), file.functions, file.functionsRun, file.bytes, file.bytesRun});
  sortByPlace(report);
}

TrialRun::TrialRun(std::string application, const Exclusions& exclusions)
    : files_(
          std::move(application), [](const std::string&) { return true; }, exclusions) {}

void TrialRun::takeFiles(const FlashEngine_1_00::APIAnalysis& engine) {
  files_.takeExtracted(engine);
  for (const std::string* method : engine.whiteAPIList)
    documented_.insert(*method);
}

// The browser tells methods apart by name only, and is to tell of deprecated ones, too.
std::set<std::string> TrialRun::currentMethods(const Deprecations& deprecations) const {
  std::set<std::string> current = documented_;
  for (const std::string& method : deprecations.methods())
    current.erase(method);
  return current;
}

void TrialRun::dropDocumented(const Deprecations& deprecations, trial::Result& result) const {
  const auto isDocumented = [&](const trial::Call& call) {
    return documented_.count(call.method) > 0 && !deprecations.has(call.plugin, call.method);
  };
  result.calls.erase(std::remove_if(result.calls.begin(), result.calls.end(), isDocumented), result.calls.end());
}

void TrialRun::run(const TrialOptions& options, const std::set<std::string>& accepted, const Deprecations& deprecations,
                   const std::function<std::string(const std::string&)>& shown, ApplicationReport& report) {
  std::vector<ApplicationFile> taken = files_.release(shown);
  trial::Input input;
  input.files.reserve(taken.size());
  for (ApplicationFile& file : taken)
    input.files.push_back({file.path, std::move(file.bytes)});
  input.startPages = startPages(input.files);
  if (input.startPages.empty()) return;  // nothing that a browser could run
  for (const char* classId : FlashEngine_1_00::pluginClassIdTable)
    input.classIds.emplace_back(classId);
  input.extension = FlashEngine_1_00::kExtensionPlugin;
  input.documented = currentMethods(deprecations);
  const PrivateDirectory directory;
  trial::Result result =
      trial::run(input, {options.browser, directory.path(), options.seconds, options.memory, options.callsUncalled});
  dropDocumented(deprecations, result);
  ReportedFiles files;
  for (std::size_t i = 0; i < taken.size(); ++i)
    files.add(taken[i].path, taken[i].shown, input.files[i].bytes);
  addTrial(result, files, accepted, deprecations, report);
  for (const std::string& path : files_.tooLarge())
    report.notChecked.push_back({shown(path), "trial incomplete: it is too large to be loaded"});
}
