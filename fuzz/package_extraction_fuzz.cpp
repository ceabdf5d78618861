// Any bytes as a package: nothing appears or changes outside the directories that the engine made for it, all files
// inside them are listed, and a whole run leaves nothing there.

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "Support.h"
#include "platform/Paths.h"
#include "platform/RemoveTree.h"
#include "tarvo/api_check_engine.h"

namespace fs = std::filesystem;
using namespace FlashEngine_1_00;

namespace {

constexpr const char* kAbsoluteName = "/tmp/tarvo.txt";  // of entries among the seeds

// Name, kind, time and size of all that stands around the extraction root; a set, since the order is the file system's.
std::set<std::string> around() {
  std::set<std::string> entries;
  const fs::path root = enginePaths().extractionRoot;
  for (auto at = fs::recursive_directory_iterator(root.parent_path()); at != fs::recursive_directory_iterator(); ++at) {
    if (at->path() == root) {
      at.disable_recursion_pending();
      continue;  // its time changes
    }
    const auto time = std::to_string(at->last_write_time().time_since_epoch().count());
    const auto bytes = at->is_regular_file() ? std::to_string(at->file_size()) : "not a file";
    entries.insert(at->path().string() + ' ' + time + ' ' + bytes);
  }
  if (access(kAbsoluteName, F_OK) == 0) entries.insert(kAbsoluteName);
  return entries;
}

std::set<std::string> plantMarks() {
  (void)std::remove(kAbsoluteName);
  fuzz::writeFile(enginePaths().database, "<APIAnalysisDB/>");
  const fs::path root = enginePaths().extractionRoot;
  fs::create_directories(root.parent_path() / "www");
  for (const char* name : {"index.html", "www/index.html"})
    fuzz::writeFile((root.parent_path() / name).string(), "mark");
  return around();
}

void runWhole(const std::string& package) {
  removeTree(enginePaths().extractionRoot);
  fs::create_directory(enginePaths().extractionRoot);
  (void)createResultVector();
  std::vector<std::string> files{package};
  (void)APIAnalysis().StartAnalysis(&files);
  destoryResultVector();
  fuzz::require(fs::is_empty(enginePaths().extractionRoot), "a run removes what it extracted");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const int workingDirectory = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);  // the fuzzer's own paths need it
  static const std::set<std::string> marks = plantMarks();
  const std::string& root = enginePaths().extractionRoot;
  const std::string package = fuzz::scratch() + "/app.wgt";
  fuzz::writeFile(package, fuzz::viewOf(data, size));
  {
    const fuzz::OpenFilesCheck openFiles;
    APIAnalysis engine;
    engine.addFilePathbyUnzipping({package});
    fuzz::require(around() == marks, "nothing changes around the extraction root");
    const std::set<std::string> made(engine.extractedDirList.begin(), engine.extractedDirList.end());
    const std::set<std::string> files(engine.extractedFileList.begin(), engine.extractedFileList.end());
    for (const auto& entry : fs::directory_iterator(root))
      fuzz::require(made.count(entry.path().string()) == 1, "the root holds the directories of packages only");
    for (const auto& entry : fs::recursive_directory_iterator(root))
      fuzz::require(entry.is_directory() || files.count(entry.path().string()) == 1, "each file is listed");
    fuzz::require(files.size() == engine.extractedFileList.size(), "no file is listed twice");
    if (!files.empty()) runWhole(package);
  }
  (void)!fchdir(workingDirectory);
  removeTree(root);
  fs::create_directory(root);
  return 0;
}
