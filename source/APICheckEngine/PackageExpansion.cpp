// Package expansion: zip packages in the file list become numbered directories of files.
//
// A package is known by its first bytes, never by its name. Packages inside packages are expanded too, each right after
// the files of the package around it are known. Fills extractedFileList and extractedDirList.
// Tests: tests/APICheckEngine/PackageExpansion_test.cpp, HostilePackages_test.cpp.

#include <algorithm>
#include <array>

#include "APICheckEngine/APIAnalysis.h"
#include "platform/FilePlace.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "unzip/disk_place.h"
#include "unzip/package_layout.h"
#include "unzip/unzip_job.h"

namespace FlashEngine_1_00 {
namespace {

// Expands `package` into the existing `directory`; what cannot be extracted is missing there. False if nothing can.
bool extract(const std::string& package, const std::string& directory, Extraction& extraction) {
  std::array<std::string, 6> words{"uzip", "-x", package, "-o", "-d", directory};
  std::array<char*, 6> arguments{};
  for (std::size_t i = 0; i < words.size(); ++i) {
    words[i].resize(std::min(words[i].size(), kMaxJobArgument));
    arguments[i] = words[i].data();
  }
  return runUnzipJob(static_cast<int>(arguments.size()), arguments.data(), extraction) == 0;
}

// The files of one directory, on their way through the list.
struct Batch {
  std::vector<std::string> files;
  std::size_t next;
};

}  // namespace

void APIAnalysis::addFilePathbyUnzipping(std::vector<std::string> files) {
  Extraction extraction{ExpansionBudget(expansionBounds), observer, {}, currentPlace()};
  // A stack of our own: how deep packages are nested is up to whoever made them.
  std::vector<Batch> open;
  open.push_back({std::move(files), 0});
  TARVO_LOG(" \n [%s] [%d]", __func__, static_cast<int>(open.back().files.size()));
  while (!open.empty()) {
    Batch& batch = open.back();
    if (batch.next == batch.files.size()) {
      open.pop_back();
      continue;
    }
    const std::string path = batch.files[batch.next++];
    std::vector<std::string> found;
    if (!expandPackage(path, extraction, found)) continue;
    TARVO_LOG(" \n [%s] [%d]", __func__, static_cast<int>(found.size()));
    open.push_back({std::move(found), 0});
  }
}

// Expands `path` if it is a package, and appends its files to `found`. False if it is none.
bool APIAnalysis::expandPackage(const std::string& path, Extraction& extraction, std::vector<std::string>& found) {
  static constexpr const char* kStage = "addFilePathbyUnzipping";
  File file = openInput(path);
  if (file == nullptr) {
    TARVO_LOG_AS(kStage, " [%s] Open Error ", path.c_str());
    notRead(Gap::fileUnreadable, path);
    return false;
  }
  const bool isPassedOver = path.find(".fla") != std::string::npos;
  if (isPassedOver && observer == nullptr) return false;
  std::array<char, 8> head{};
  const off_t size = sizeOf(file.get());
  (void)!std::fread(head.data(), 1, head.size(), file.get());
  if (!isPackage({head.data(), head.size()})) return false;
  if (isPassedOver) {
    notRead(Gap::packagePassedOver, path);
    return false;
  }
  file.reset();

  TARVO_LOG_AS(kStage, " zip file found [%s]/ Size [%d]", path.c_str(), static_cast<int>(size));
  const std::string directory = enginePaths().extractionRoot + "/" + std::to_string(extractionCounter_++);
  extractedDirList.push_back(directory);  // before anything is there to be removed
  if (observer != nullptr) observer->packageFound(path, directory);
  (void)extraction.place.makeExtractionDirectory(directory);
  if (!extract(path, directory, extraction)) {
    TARVO_LOG_AS(kStage, " package [%s] not extracted ", path.c_str());
    notRead(Gap::packageUnreadable, path);
  }
  FindAppsFilesLocation(directory, found);
  extractedFileList.insert(extractedFileList.end(), found.begin(), found.end());
  return true;
}

void APIAnalysis::FindAppsFilesLocation(std::string dir, std::vector<std::string>& found) {
  currentPlace().listFiles(dir, observer, found);
}

}  // namespace FlashEngine_1_00
