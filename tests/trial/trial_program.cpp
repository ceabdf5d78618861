// trial-program FOLDER DATABASE [SECONDS] [BROWSER] [uncalled]: a trial run of the application in a folder, as JSON on
// standard output. For the group of tests with a real browser, and for measuring.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "trial/PackageServer.h"
#include "trial/Protocol.h"
#include "trial/Trial.h"

namespace fs = std::filesystem;

namespace {

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The texts between `before` and `after`.
std::vector<std::string> textsBetween(const std::string& text, const std::string& before, const std::string& after) {
  std::vector<std::string> texts;
  for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
    at += before.size();
    const std::size_t end = text.find(after, at);
    if (end == std::string::npos) break;
    texts.push_back(text.substr(at, end - at));
  }
  return texts;
}

trial::Json asJson(const trial::Call& call) {
  trial::Json trace = trial::Json::array();
  for (const trial::Frame& frame : call.trace)
    trace.push_back(frame.path + ':' + std::to_string(frame.line) + ':' + std::to_string(frame.column));
  return {{"plugin", call.plugin},     {"method", call.method},   {"arguments", call.arguments},
          {"path", call.place.path},   {"line", call.place.line}, {"column", call.place.column},
          {"trace", std::move(trace)}, {"forced", call.isForced}};
}

}  // namespace

int main(int argc, char** argv) {  // NOLINT(bugprone-exception-escape): a test's program; it may end there
  if (argc < 3) return 2;
  const fs::path folder = argv[1];
  trial::Input input;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      input.files.push_back({entry.path().lexically_relative(folder).string(), readFile(entry.path())});
  std::sort(input.files.begin(), input.files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
  for (const trial::File& file : input.files)
    if (trial::isPage(file.path) && fs::path(file.path).filename() == "index.html")
      input.startPages.push_back(file.path);
  const std::string database = readFile(argv[2]);
  input.classIds = textsBetween(database, "classid=\"", "\"");
  input.extension = "MORVANE-NAVERTIX-KOB";
  for (const std::string& method : textsBetween(database, "<Function>", "</Function>"))
    input.documented.insert(method);
  trial::Options options;
  if (argc > 3) options.secondsPerPage = static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10));
  if (argc > 4) options.browser = argv[4];
  options.callsUncalled = argc > 5;
  std::string directory = (fs::temp_directory_path() / "trial-XXXXXX").string();
  if (mkdtemp(directory.data()) == nullptr) return 2;
  options.directory = directory;
  const trial::Result result = trial::run(input, options);
  fs::remove_all(directory);

  trial::Json report{{"failure", result.failure},
                     {"browser", result.browser},
                     {"pages", result.pages},
                     {"seconds", result.seconds},
                     {"memory", result.memory}};
  for (const trial::Call& call : result.calls)
    report["calls"].push_back(asJson(call));
  for (const trial::Call& call : result.undetermined)
    report["undetermined"].push_back(asJson(call));
  for (const trial::Incomplete& one : result.incomplete)
    report["incomplete"].push_back(one.page + ": " + one.reason);
  for (const trial::FileCoverage& file : result.coverage)
    report["coverage"][file.path] = {file.functionsRun, file.functions, file.bytesRun, file.bytes};
  std::cout << report.dump(1, ' ', true, trial::Json::error_handler_t::replace) << '\n';
  return result.failure.empty() ? 0 : 1;
}
