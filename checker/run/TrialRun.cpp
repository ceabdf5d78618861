// Test: tests/checker/TrialRun_test.cpp; with a real browser, tests/groups/trial.

#include "checker/run/TrialRun.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

#include "APICheckEngine/Tables.h"
#include "checker/run/PrivateDirectory.h"
#include "trial/PackageServer.h"
#include "trial/Places.h"

namespace fs = std::filesystem;

namespace {

// Of what a page may load; films and the like are not needed to run it.
constexpr std::size_t kMaxFile = std::size_t{16} << 20;
constexpr std::size_t kMaxTotal = std::size_t{128} << 20;
constexpr std::size_t kMaxShown = 160;
constexpr unsigned kPagesOfTime = 3;
constexpr unsigned kAround = 30;  // seconds: starting and ending
constexpr const char* kUnknownName = "its name comes from the network, the user or a plug-in";

// At most 160 bytes of a line, with the column in them; sets where the column's byte stands in it.
std::string excerptOf(const std::string& line, std::size_t byte, std::size_t& mark) {
  const std::size_t begin = line.size() <= kMaxShown || byte < kMaxShown / 2 ? 0 : byte - kMaxShown / 2;
  mark = std::min(byte, line.size()) - begin;
  return line.substr(begin, kMaxShown);
}

// The byte at a column, which counts characters of UTF-8 from 1.
std::size_t byteAt(const std::string& line, int column) {
  std::size_t byte = 0;
  for (int left = column - 1; left > 0 && byte < line.size(); --left) {
    ++byte;
    while (byte < line.size() && (static_cast<unsigned char>(line[byte]) & 0xC0) == 0x80)
      ++byte;
  }
  return byte;
}

std::string codeAt(const std::string& line, std::size_t byte) {
  const std::size_t open = line.find('(', byte);
  const std::size_t close = open == std::string::npos ? open : line.find(')', open);
  const std::size_t end = close == std::string::npos ? std::min(line.size(), byte + kMaxShown) : close + 1;
  std::string code = line.substr(std::min(byte, line.size()), std::min(end - std::min(byte, end), kMaxShown));
  while (!code.empty() && (code.back() == '\r' || code.back() == ' '))
    code.pop_back();
  return code;
}

// One trial's findings, in terms of the report.
class Adding {
 public:
  Adding(const std::vector<trial::File>& files, const std::map<std::string, std::string>& shown) : shown_(shown) {
    for (const trial::File& file : files)
      bytes_[file.path] = &file.bytes;
  }

  std::string shown(const std::string& path) const {
    const auto found = shown_.find(path);
    return found == shown_.end() ? path : found->second;
  }

  Call call(const trial::Call& seen) const {
    Call call;
    call.path = shown(seen.place.path);
    call.place = {seen.place.line, seen.place.column};
    call.plugin = seen.plugin;
    call.method = seen.method;
    call.found = Call::Found::trial;
    const auto file = bytes_.find(seen.place.path);
    if (file == bytes_.end()) return call;
    const int line = seen.place.line;
    const auto lineAt = [&](int number) { return trial::lineOf(*file->second, number); };
    const std::string text = lineAt(line);
    const std::size_t byte = byteAt(text, seen.place.column);
    call.code = codeAt(text, byte);
    call.excerpt = {line, excerptOf(text, byte, call.mark)};
    call.markLength = std::min(call.code.size(), call.excerpt.text.size() - call.mark);
    const int last = 1 + static_cast<int>(std::count(file->second->begin(), file->second->end(), '\n'));
    for (int number = std::max(1, line - 2); number < line; ++number)
      call.before.push_back({number, lineAt(number).substr(0, kMaxShown)});
    for (int number = line + 1; number <= std::min(last, line + 2); ++number)
      call.after.push_back({number, lineAt(number).substr(0, kMaxShown)});
    return call;
  }

  // The outermost frame first, the call itself last.
  std::vector<TraceStep> trace(const trial::Call& seen) const {
    std::vector<TraceStep> steps;
    for (auto frame = seen.trace.rbegin(); frame != seen.trace.rend(); ++frame) {
      const std::string text =
          frame->function.empty() ? "outside of any named function" : "in '" + frame->function + "'";
      const auto file = bytes_.find(frame->path);
      std::size_t mark = 0;
      std::string source;
      if (file != bytes_.end()) {
        const std::string line = trial::lineOf(*file->second, frame->line);
        source = excerptOf(line, byteAt(line, frame->column), mark);
      }
      steps.push_back({TraceStep::What::call, text, shown(frame->path), {frame->line, frame->column}, source});
    }
    return steps;
  }

 private:
  const std::map<std::string, std::string>& shown_;
  std::map<std::string, const std::string*> bytes_;
};

// Whether the finding is of the call that was seen: the same method in the same lines.
bool isOf(const Finding& finding, const Call& seen) {
  const Call& call = finding.call;
  if (call.path != seen.path || call.method != seen.method || call.place.line == 0) return false;
  const auto lines = static_cast<int>(std::count(call.code.begin(), call.code.end(), '\n'));
  return seen.place.line >= call.place.line && seen.place.line <= call.place.line + lines;
}

void confirm(Finding& finding, const trial::Call& seen, const Adding& adding) {
  finding.confidence = Finding::Confidence::confirmed;
  if (finding.arguments.empty()) finding.arguments = seen.arguments;
  if (finding.trace.empty()) finding.trace = adding.trace(seen);
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
  return options.isOn ? kPagesOfTime * options.seconds + kAround : 0;
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

void addTrial(const trial::Result& result, const std::vector<trial::File>& files,
              const std::map<std::string, std::string>& shown, const std::set<std::string>& accepted,
              ApplicationReport& report) {
  if (!result.failure.empty()) {
    report.notChecked.push_back({report.application, "no trial run: " + result.failure});
    return;
  }
  report.rules.emplace_back("trial");
  report.browser = result.browser;
  const Adding adding(files, shown);
  for (const trial::Call& seen : result.calls) {
    const Call call = adding.call(seen);
    bool isKnown = false;
    for (Finding& finding : report.findings) {
      if (!isOf(finding, call)) continue;
      confirm(finding, seen, adding);
      isKnown = true;
    }
    if (isKnown) continue;
    Finding finding;
    finding.call = call;
    finding.status = accepted.count(call.method) == 1 ? Finding::Status::accepted : Finding::Status::reported;
    finding.isOnDevice = false;
    confirm(finding, seen, adding);
    report.findings.push_back(std::move(finding));
  }
  for (const trial::Call& seen : result.undetermined)
    report.undetermined.push_back({adding.call(seen), kUnknownName, adding.trace(seen)});
  for (const trial::Incomplete& one : result.incomplete) {
    const std::string part = one.page.empty() ? report.application : adding.shown(one.page);
    report.notChecked.push_back({part, "trial incomplete: " + one.reason});
  }
  for (const trial::FileCoverage& file : result.coverage)
    report.coverage.push_back({adding.shown(file.path), file.functions, file.functionsRun, file.bytes, file.bytesRun});
  sortByPlace(report);
}

void TrialRun::take(const std::string& path, const std::string& file) {
  std::error_code error;
  const auto size = fs::file_size(file, error);
  if (error || !fs::is_regular_file(fs::symlink_status(file, error))) return;
  if (size > kMaxFile || total_ + size > kMaxTotal) {
    tooLarge_.push_back(path);
    return;
  }
  std::ifstream stream(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  total_ += bytes.size();
  bytes_[path] = std::move(bytes);
}

void TrialRun::takeFiles(const FlashEngine_1_00::APIAnalysis& engine) {
  for (const std::string& path : engine.extractedFileList)
    take(path, path);
  for (const std::string* method : engine.whiteAPIList)
    documented_.insert(*method);
}

void TrialRun::takeOwnFiles() {
  std::error_code error;
  if (!fs::is_directory(application_, error)) {
    if (trial::isPage(application_) || trial::contentTypeOf(application_) == "text/javascript")
      take(application_, application_);
    return;
  }
  for (auto at = fs::recursive_directory_iterator(application_, error); !error && at != fs::end(at);
       at.increment(error))
    take(at->path().string(), at->path().string());
}

std::string TrialRun::pathInside(const std::string& shown) const {
  if (shown.compare(0, application_.size(), application_) != 0) return shown;
  const std::size_t begin = shown.find_first_not_of("/!", application_.size());
  if (begin != std::string::npos) return shown.substr(begin);
  return shown.substr(shown.rfind('/') + 1);
}

void TrialRun::run(const TrialOptions& options, const std::set<std::string>& accepted,
                   const std::function<std::string(const std::string&)>& shown, ApplicationReport& report) {
  takeOwnFiles();
  trial::Input input;
  std::map<std::string, std::string> names;
  for (auto& [path, bytes] : bytes_) {
    const std::string name = shown(path);
    const std::string inside = pathInside(name);
    if (names.emplace(inside, name).second) input.files.push_back({inside, std::move(bytes)});
  }
  bytes_.clear();
  input.startPages = startPages(input.files);
  if (input.startPages.empty()) return;  // nothing that a browser could run
  for (const char* classId : FlashEngine_1_00::pluginClassIdTable)
    input.classIds.emplace_back(classId);
  input.extension = FlashEngine_1_00::kExtensionPlugin;
  input.documented = documented_;
  const PrivateDirectory directory;
  const trial::Result result = trial::run(input, {options.browser, directory.path(), options.seconds, options.memory});
  addTrial(result, input.files, names, accepted, report);
  for (const std::string& path : tooLarge_)
    report.notChecked.push_back({shown(path), "trial incomplete: it is too large to be loaded"});
}
