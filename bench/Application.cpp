// The engine's host in the benchmark program: its paths. Its log function is that of a process without a host.

#include "bench/Application.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/Paths.h"

namespace fs = std::filesystem;

namespace {

FlashEngine_1_00::EnginePaths currentPaths;

constexpr const char* kCalled[] = {"GetChannel", "GetVolume", "GetDuration", "GetAddress", "GetBrightness"};

[[noreturn]] void fail(const char* what, const std::string& path) {
  (void)std::fprintf(stderr, "engine-benchmarks: cannot %s %s\n", what, path.c_str());
  std::exit(2);
}

void writeFile(const fs::path& path, const std::string& bytes) {
  std::ofstream stream(path, std::ios::binary);
  if (!(stream << bytes) || !stream.flush()) fail("write", path.string());
}

std::string databaseOf(int documented) {
  std::string xml = "<APIAnalysisDB><Plugin>";
  for (const char* name : kCalled)
    xml += std::string("<Function>") + name + "</Function>\n";
  for (int i = static_cast<int>(std::size(kCalled)); i < documented; ++i)
    xml += "<Function>GetProperty" + std::to_string(i) + "</Function>\n";
  return xml + "</Plugin></APIAnalysisDB>";
}

}  // namespace

const FlashEngine_1_00::EnginePaths& FlashEngine_1_00::enginePaths() {
  return currentPaths;
}

namespace bench {

Application::Application(const Files& files, int documented)
    : directory_((fs::temp_directory_path() / "tarvo-bench-XXXXXX").string()) {
  if (mkdtemp(directory_.data()) == nullptr) fail("make a directory like", directory_);
  for (const auto& [name, text] : files) {
    paths_.push_back(directory_ + '/' + name);
    writeFile(paths_.back(), text);
  }
  writeFile(directory_ + "/database.xml", databaseOf(documented));
  currentPaths = {directory_ + "/database.xml", directory_, directory_ + "/AnalysisResult"};
}

Application::~Application() {
  std::error_code ignored;
  fs::remove_all(directory_, ignored);
}

std::string readFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) fail("read", path);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace bench
