// Flow analysis in terms of the report: files in, findings with traces out. Test: tests/checker/FlowRun_test.cpp.

#include "checker/run/FlowRun.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "APICheckEngine/Tables.h"
#include "checker/run/DatabaseListing.h"
#ifdef TARVO_FLOW
#include "flow/Flow.h"
#endif

namespace fs = std::filesystem;

#ifdef TARVO_FLOW

namespace {

constexpr std::size_t kMaxFile = std::size_t{16} << 20;
constexpr std::size_t kMaxTotal = std::size_t{128} << 20;
constexpr std::size_t kMaxShown = 160;

// What the analysis reads: others are films, pictures and the like.
bool isRead(const std::string& path) {
  static const char* const kOther[] = {".png", ".jpg", ".jpeg", ".gif", ".webp", ".bmp",  ".ico", ".mp4",  ".mp3",
                                       ".wav", ".ogg", ".webm", ".ts",  ".swf",  ".ttf",  ".otf", ".woff", ".woff2",
                                       ".eot", ".zip", ".wgt",  ".pdf", ".so",   ".wasm", ".map", ".css"};
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::none_of(std::begin(kOther), std::end(kOther), [&](const char* other) { return extension == other; });
}

flow::Database databaseOf(const std::string& path) {
  flow::Database database;
  for (const DatabaseGroup& group : listDatabase(path).groups)
    for (const DatabaseFunction& function : group.functions)
      database.methods[group.name].push_back(function.name);
  for (const char* classId : FlashEngine_1_00::pluginClassIdTable)
    database.identifiers.emplace_back(classId);
  return database;
}

// The lines of a file around a place.
class Lines {
 public:
  explicit Lines(const std::string& bytes) : bytes_(bytes) {}

  SourceLine at(int number) const {
    std::size_t begin = 0;
    for (int line = 1; line < number && begin != std::string::npos; ++line) {
      begin = bytes_.find('\n', begin);
      if (begin != std::string::npos) ++begin;
    }
    if (begin == std::string::npos || begin > bytes_.size()) return {0, {}};
    std::string text = bytes_.substr(begin, bytes_.find('\n', begin) - begin);
    if (!text.empty() && text.back() == '\r') text.pop_back();
    return {number, text};
  }

 private:
  const std::string& bytes_;
};

std::size_t byteAt(const std::string& line, int column) {
  std::size_t byte = 0;
  for (int left = column - 1; left > 0 && byte < line.size(); --left) {
    ++byte;
    while (byte < line.size() && (static_cast<unsigned char>(line[byte]) & 0xC0) == 0x80)
      ++byte;
  }
  return byte;
}

SourceLine cut(SourceLine line) {
  line.text.resize(std::min(line.text.size(), kMaxShown));
  return line;
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

class Adding {
 public:
  Adding(const std::vector<flow::File>& files, const std::map<std::string, std::string>& shown) : shown_(shown) {
    for (const flow::File& file : files)
      bytes_[file.path] = &file.bytes;
  }

  std::string shown(const std::string& path) const {
    const auto found = shown_.find(path);
    return found == shown_.end() ? path : found->second;
  }

  void place(const flow::Place& place, const std::string& code, Call& call) const {
    call.path = shown(place.path);
    call.place = {place.line, place.column};
    call.found = Call::Found::flow;
    call.code = code;
    const auto file = bytes_.find(place.path);
    if (file == bytes_.end()) return;
    const Lines lines(*file->second);
    const SourceLine line = lines.at(place.line);
    const std::size_t byte = byteAt(line.text, place.column);
    const std::size_t begin = line.text.size() <= kMaxShown || byte < kMaxShown / 2 ? 0 : byte - kMaxShown / 2;
    call.excerpt = {place.line, line.text.substr(std::min(begin, line.text.size()), kMaxShown)};
    call.mark = std::min(byte - begin, call.excerpt.text.size());
    const std::size_t length = std::min(code.find('\n'), code.size());
    call.markLength = std::min(length, call.excerpt.text.size() - call.mark);
    for (int number = std::max(1, place.line - 2); number < place.line; ++number)
      call.before.push_back(cut(lines.at(number)));
    for (int number = place.line + 1; number <= place.line + 2; ++number)
      if (const SourceLine next = lines.at(number); next.number != 0) call.after.push_back(cut(next));
  }

  std::vector<TraceStep> trace(const std::vector<flow::TraceStep>& from) const {
    std::vector<TraceStep> steps;
    for (const flow::TraceStep& step : from) {
      TraceStep made{kindOf(step.what), step.what, shown(step.place.path), {step.place.line, step.place.column}, {}};
      const auto file = bytes_.find(step.place.path);
      if (file != bytes_.end()) made.source = cut(Lines(*file->second).at(step.place.line)).text;
      steps.push_back(std::move(made));
    }
    return steps;
  }

  // Whether a finding of the engine is this call: its place is that of the receiver.
  bool isSame(const Finding& finding, const flow::FoundCall& call) const {
    return finding.call.method == call.method && finding.call.place.line != 0 &&
           finding.call.path == shown(call.place.path) &&
           (finding.call.place.line == call.place.line || finding.call.place.line == call.methodPlace.line);
  }

 private:
  const std::map<std::string, std::string>& shown_;
  std::map<std::string, const std::string*> bytes_;
};

Finding::Confidence confidenceOf(flow::Confidence confidence) {
  return confidence == flow::Confidence::certain  ? Finding::Confidence::certain
         : confidence == flow::Confidence::likely ? Finding::Confidence::likely
                                                  : Finding::Confidence::possible;
}

void addCall(const flow::FoundCall& found, const Adding& adding, const FlowOptions& options,
             const std::set<std::string>& accepted, ApplicationReport& report) {
  bool isKnown = false;
  for (Finding& finding : report.findings) {
    if (!adding.isSame(finding, found)) continue;
    isKnown = true;
    finding.confidence = std::max(finding.confidence, confidenceOf(found.confidence));
    if (finding.trace.empty()) finding.trace = adding.trace(found.trace);
    if (finding.advice.empty()) finding.advice = found.advice;
  }
  if (isKnown) return;
  Finding finding;
  adding.place(found.place, found.code, finding.call);
  finding.call.plugin = found.plugin;
  finding.call.method = found.method;
  finding.isOnDevice = false;
  finding.confidence = confidenceOf(found.confidence);
  const bool isForOther = found.judgement == flow::Judgement::documentedForOther;
  finding.kind = isForOther ? Finding::Kind::otherPlugin : Finding::Kind::undocumented;
  finding.trace = adding.trace(found.trace);
  finding.advice = found.advice;
  finding.status =
      accepted.count(found.method) != 0 ? Finding::Status::accepted : statusFor(finding, options.isPerPlugin);
  if (finding.confidence == Finding::Confidence::possible && !options.isPossible) return;
  report.findings.push_back(std::move(finding));
}

void addResult(const flow::Result& result, const Adding& adding, const FlowOptions& options,
               const std::set<std::string>& accepted, ApplicationReport& report) {
  report.rules.emplace_back("flow");
  for (const flow::FoundCall& call : result.calls)
    if (call.judgement != flow::Judgement::documented) addCall(call, adding, options, accepted, report);
  for (const flow::Open& open : result.open) {
    Undetermined undetermined;
    adding.place(open.place, open.code, undetermined.call);
    undetermined.call.plugin = open.plugin;
    undetermined.reason = open.reason;
    if (open.isOnPlugin) {
      report.notChecked.push_back({undetermined.call.path, "in line " + std::to_string(open.place.line) +
                                                               ", a method is called whose name cannot be told"});
    }
    report.undetermined.push_back(std::move(undetermined));
  }
  for (const flow::NotRead& gap : result.notRead)
    report.notChecked.push_back(
        {gap.part.empty() ? report.application : adding.shown(gap.part), "flow analysis: " + gap.reason});
  for (const flow::Library& library : result.libraries)
    report.libraries.push_back({library.name, adding.shown(library.path)});
  sortByPlace(report);
}

}  // namespace

void FlowRun::take(const std::string& path) {
  std::error_code error;
  if (!isRead(path) || !fs::is_regular_file(fs::symlink_status(path, error))) return;
  const auto size = fs::file_size(path, error);
  if (error) return;
  if (size > kMaxFile || total_ + size > kMaxTotal) {
    tooLarge_.insert(path);
    return;
  }
  std::ifstream stream(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  total_ += bytes.size();
  bytes_[path] = std::move(bytes);
}

void FlowRun::takeFiles(const FlashEngine_1_00::APIAnalysis& engine) {
  for (const std::string& path : engine.extractedFileList)
    take(path);
}

void FlowRun::takeOwnFiles() {
  std::error_code error;
  if (!fs::is_directory(application_, error)) {
    std::ifstream stream(application_, std::ios::binary);
    char head[2] = {};
    stream.read(head, 2);
    if (head[0] != 'P' || head[1] != 'K') take(application_);
    return;
  }
  for (auto at = fs::recursive_directory_iterator(application_, error); !error && at != fs::end(at);
       at.increment(error))
    take(at->path().string());
}

// Without the application's own path: what counts in it is a path from its root.
std::string FlowRun::pathInside(const std::string& shown) const {
  if (shown.compare(0, application_.size(), application_) != 0) return shown;
  const std::size_t begin = shown.find_first_not_of("/!", application_.size());
  return begin == std::string::npos ? shown.substr(shown.rfind('/') + 1) : shown.substr(begin);
}

void FlowRun::run(const FlowOptions& options, const std::string& database, const std::set<std::string>& accepted,
                  const PathNames& names, ApplicationReport& report) {
  takeOwnFiles();
  std::vector<flow::File> files;
  std::map<std::string, std::string> shown;
  for (auto& [path, bytes] : bytes_) {
    const std::string name = names.shown(path);
    const std::string inside = pathInside(name);
    if (shown.emplace(inside, name).second) files.push_back({inside, std::move(bytes)});
  }
  bytes_.clear();
  const flow::Result result = flow::analyse(files, databaseOf(database));
  addResult(result, Adding(files, shown), options, accepted, report);
  for (const std::string& path : tooLarge_)
    report.notChecked.push_back({names.shown(path), "flow analysis: the file is too large"});
}

#else

void FlowRun::take(const std::string&) {}
void FlowRun::takeOwnFiles() {}
void FlowRun::takeFiles(const FlashEngine_1_00::APIAnalysis&) {}

void FlowRun::run(const FlowOptions&, const std::string&, const std::set<std::string>&, const PathNames&,
                  ApplicationReport& report) {
  report.notChecked.push_back({report.application, "this program was built without flow analysis"});
}

#endif
