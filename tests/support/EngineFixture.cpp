#include "support/EngineFixture.h"

#include <minizip/zip.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"

namespace fs = std::filesystem;

namespace {

FlashEngine_1_00::EnginePaths testPaths;
Texts capturedLog;
std::function<void(const std::string&)> logWatcher;

}  // namespace

const FlashEngine_1_00::EnginePaths& FlashEngine_1_00::enginePaths() {
  return testPaths;
}

void Print_Log(const char* function, unsigned, char* format, ...) {
  char text[4096];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  std::string line = std::string(function) + ": " + text;
  if (line.rfind("PrintProcessingTime: Time [", 0) == 0) line.resize(line.find(']') + 1);
  capturedLog.push_back(line);
  if (logWatcher) logWatcher(line);
}

EngineTest::EngineTest() {
  char name[] = "/tmp/tarvo-test-XXXXXX";
  directory_ = mkdtemp(name);
  testPaths = {directory_ + "/database.xml", directory_, directory_ + "/AnalysisResult", nullptr};
  setDatabase({"GetVersion", "GetVolume", "SetVolume", "Play"});
  capturedLog.clear();
  createResultVector();
  engine_ = std::make_unique<APIAnalysis>();
}

EngineTest::~EngineTest() {
  logWatcher = nullptr;
  engine_.reset();
  destoryResultVector();
  (void)!chdir("/");
  fs::remove_all(directory_);
}

std::string EngineTest::addFile(const std::string& name, const std::string& bytes) {
  const fs::path path = fs::path(directory_) / "app/www" / name;
  fs::create_directories(path.parent_path());
  writeFile(path.string(), bytes);
  if (std::find(files_.begin(), files_.end(), path.string()) == files_.end()) files_.push_back(path.string());
  return path.string();
}

std::string EngineTest::addZip(const std::string& name,
                               const std::vector<std::pair<std::string, std::string>>& entries) {
  return addFile(name, zipBytes(entries));
}

void EngineTest::setDatabase(const Texts& documented) {
  std::string xml = "<APIAnalysisDB><Plugin>";
  for (const std::string& name : documented)
    xml += "<Function>" + name + "</Function>";
  setDatabaseText(xml + "</Plugin></APIAnalysisDB>");
}

void EngineTest::setDatabaseText(const std::string& xml) {
  writeFile(testPaths.database, xml);
}

RunResult EngineTest::run() {
  return engine_->StartAnalysis(&files_);
}

std::string EngineTest::resultFile() const {
  return readFile(testPaths.resultFile);
}

void EngineTest::expectFindings(const Texts& lines) const {
  EXPECT_EQ(*g_SWFResultVector, lines);
  std::string joined;
  for (const std::string& line : lines)
    joined += line;
  EXPECT_EQ(resultFile(), joined);
}

Texts EngineTest::log(const std::string& part) {
  Texts lines;
  for (const std::string& line : capturedLog) {
    if (line.find(part) != std::string::npos) lines.push_back(line);
  }
  return lines;
}

void EngineTest::clearLog() {
  capturedLog.clear();
}

void EngineTest::onLog(std::function<void(const std::string& line)> watcher) {
  logWatcher = std::move(watcher);
}

void EngineTest::setExtractionRoot(const std::string& path) {
  testPaths.extractionRoot = path;
}

void EngineTest::setResultFile(const std::string& path) {
  testPaths.resultFile = path;
}

void EngineTest::setPlace(FlashEngine_1_00::FilePlace* place) {
  testPaths.place = place;
}

Texts EngineTest::expressions(const APIAnalysis::Records& records) {
  Texts texts;
  for (const SWFStateMentInfo* record : records) {
    texts.push_back(record->expression == nullptr ? "null" : *record->expression);
  }
  return texts;
}

Texts EngineTest::shown(const APIAnalysis::Records& records) {
  Texts texts = expressions(records);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    texts[i] += " [" + std::string(records[i]->scope) + "] " + std::to_string(records[i]->line);
  }
  return texts;
}

std::string zipBytes(const std::vector<std::pair<std::string, std::string>>& entries) {
  char name[] = "/tmp/tarvo-zip-XXXXXX";
  close(mkstemp(name));
  const zipFile zip = zipOpen(name, APPEND_STATUS_CREATE);
  for (const auto& [entry, bytes] : entries) {
    zip_fileinfo info{};
    info.tmz_date = {0, 0, 12, 24, 11, 2013};  // 2013-12-24 12:00:00
    zipOpenNewFileInZip(zip, entry.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, Z_DEFAULT_COMPRESSION);
    zipWriteInFileInZip(zip, bytes.data(), static_cast<unsigned>(bytes.size()));
    zipCloseFileInZip(zip);
  }
  zipClose(zip, nullptr);
  std::string bytes = readFile(name);
  std::remove(name);
  return bytes;
}

std::string readFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}
