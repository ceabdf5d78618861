// Coverage as the browser's profiler tells it: a list of functions with their ranges and counts. Those of one script
// from all pages are put on each other; the bytes of a function that has not run are taken off those of its script.
// Test: tests/trial/Places_test.cpp.

#include "trial/Coverage.h"

#include <algorithm>

namespace trial {

namespace {

constexpr std::size_t kMaxScripts = 2000;       // of one file: of a page, each handler is one
constexpr std::size_t kMaxFunctions = 200'000;  // of one script

bool isScript(const std::string& path) {
  return contentTypeOf(path) == "text/javascript";
}

FileCoverage measured(const std::string& path, const std::map<std::pair<int, int>, bool>& functions) {
  FileCoverage coverage{path, 0, 0, 0, 0};
  int skippedTo = -1;  // the end of a function that has not run
  for (const auto& [range, hasRun] : functions) {
    const int begin = range.first;
    const int end = -range.second;
    ++coverage.functions;
    if (hasRun) ++coverage.functionsRun;
    if (coverage.functions == 1) {
      coverage.bytes = static_cast<std::uint64_t>(std::max(end - begin, 0));
      coverage.bytesRun = coverage.bytes;
    }
    if (hasRun || begin < skippedTo) continue;
    coverage.bytesRun -= std::min(coverage.bytesRun, static_cast<std::uint64_t>(std::max(end - begin, 0)));
    skippedTo = end;
  }
  return coverage;
}

}  // namespace

std::size_t Coverage::add(const Json& scripts, const Places& places) {
  std::size_t fresh = 0;
  if (!scripts.is_array()) return 0;
  for (const Json& given : scripts) {
    if (!given.is_object() || !given.value("functions", Json()).is_array()) continue;
    const Script* script = places.find(given.value("scriptId", Json("")).is_string() ? given["scriptId"] : Json(""));
    if (script == nullptr) continue;
    const File* file = places.fileOf(*script);
    if (file == nullptr) continue;
    auto& ofFile = files_[file->path];
    const Position position{script->line, script->column};
    if (ofFile.size() >= kMaxScripts && ofFile.count(position) == 0) continue;
    Functions& functions = ofFile[position];
    for (const Json& function : given["functions"]) {
      if (!function.is_object()) continue;
      const auto ranges = function.find("ranges");
      if (ranges == function.end() || !ranges->is_array() || ranges->empty() || !ranges->front().is_object()) continue;
      const Json& whole = ranges->front();
      const auto number = [&](const char* key) {
        const auto found = whole.find(key);
        return found != whole.end() && found->is_number_integer() ? found->get<int>() : 0;
      };
      if (functions.size() >= kMaxFunctions) break;
      bool& hasRun = functions[{number("startOffset"), -number("endOffset")}];
      if (hasRun || number("count") <= 0) continue;
      hasRun = true;
      ++fresh;
    }
  }
  return fresh;
}

std::vector<std::pair<int, int>> Coverage::notRun(const Script& script, const std::string& path) const {
  std::vector<std::pair<int, int>> ranges;
  const auto ofFile = files_.find(path);
  if (ofFile == files_.end()) return ranges;
  const auto functions = ofFile->second.find({script.line, script.column});
  if (functions == ofFile->second.end()) return ranges;
  for (const auto& [range, hasRun] : functions->second)
    if (!hasRun) ranges.emplace_back(range.first, -range.second);
  return ranges;
}

std::vector<FileCoverage> Coverage::files(const std::vector<File>& all) const {
  std::map<std::string, FileCoverage> byPath;
  for (const File& file : all)
    if (isScript(file.path)) byPath[file.path] = {file.path, 0, 0, file.bytes.size(), 0};
  for (const auto& [path, scripts] : files_) {
    FileCoverage sum{path, 0, 0, 0, 0};
    for (const auto& [position, functions] : scripts) {
      const FileCoverage one = measured(path, functions);
      sum.functions += one.functions;
      sum.functionsRun += one.functionsRun;
      sum.bytes += one.bytes;
      sum.bytesRun += one.bytesRun;
    }
    byPath[path] = sum;
  }
  std::vector<FileCoverage> list;
  list.reserve(byPath.size());
  for (auto& [path, coverage] : byPath)
    list.push_back(coverage);
  return list;
}

}  // namespace trial
