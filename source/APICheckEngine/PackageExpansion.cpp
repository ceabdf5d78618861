// Package expansion: zip packages in the file list become numbered directories of files.
//
// A package is known by its first bytes, never by its name. Packages inside packages are expanded too, each right after
// the files of the package around it are known. Fills extractedFileList and extractedDirList.
// Tests: tests/APICheckEngine/PackageExpansion_test.cpp, HostilePackages_test.cpp.

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "APICheckEngine/APIAnalysis.h"
#include "platform/Descriptor.h"
#include "platform/File.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "platform/Paths.h"
#include "unzip/no_follow.h"
#include "unzip/unzip_job.h"

namespace FlashEngine_1_00 {
namespace {

using Head = std::array<char, 8>;

// ZIP APPNOTE: local header, end of the central directory, spanning marker, and three makers' own.
bool isPackage(const Head& head) {
  static constexpr const char* kSignatures[] = {"PK\x03\x04", "PK\x05\x06", "PK\x07\x08", "PKLI", "PKSp", "PKnZ"};
  for (const char* signature : kSignatures) {
    if (std::memcmp(head.data(), signature, 4) == 0) return true;
  }
  return false;
}

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

struct DirectoryCloser {
  void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

// Null if `path` cannot be opened.
Directory openDirectory(const std::string& path) {
  Descriptor descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  Directory directory(descriptor ? fdopendir(descriptor.number()) : nullptr);
  if (directory != nullptr) (void)descriptor.release();
  return directory;
}

using Places = std::vector<std::pair<dev_t, ino_t>>;

// Appends the files below `dir` to `found`; `around` are the directories around it, `left` the entries still looked at.
void listFiles(const std::string& dir, Places& around, std::uint32_t& left, std::vector<std::string>& found,
               PartObserver* observer) {
  struct stat status {};
  Directory directory = openDirectory(dir);
  if (directory == nullptr || fstat(dirfd(directory.get()), &status) != 0) {
    TARVO_LOG_AS("FindAppsFilesLocation", " [%s] Open Error ", dir.c_str());
    if (observer != nullptr) observer->notRead({Gap::fileUnreadable, dir});
    return;
  }
  const std::pair<dev_t, ino_t> place(status.st_dev, status.st_ino);
  if (std::find(around.begin(), around.end(), place) != around.end()) return;
  std::vector<std::pair<std::string, bool>> entries;  // path; whether it is a directory
  while (const dirent* entry = readdir(directory.get())) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (left == 0) break;
    --left;
    if (fstatat(dirfd(directory.get()), entry->d_name, &status, 0) != 0) continue;
    if (S_ISDIR(status.st_mode) || S_ISREG(status.st_mode)) {
      entries.emplace_back(dir + "/" + name, S_ISDIR(status.st_mode));
    }
  }
  directory.reset();
  around.push_back(place);
  for (const auto& [path, isDirectory] : entries) {
    if (isDirectory) {
      listFiles(path, around, left, found, observer);
    } else {
      found.push_back(path);
    }
  }
  around.pop_back();
}

// The files of one directory, on their way through the list.
struct Batch {
  std::vector<std::string> files;
  std::size_t next;
};

}  // namespace

void APIAnalysis::addFilePathbyUnzipping(std::vector<std::string> files) {
  Extraction extraction{ExpansionBudget(expansionBounds), observer};
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
  File file = openFile(path, "rb");
  if (file == nullptr) {
    TARVO_LOG_AS(kStage, " [%s] Open Error ", path.c_str());
    notRead(Gap::fileUnreadable, path);
    return false;
  }
  const bool isPassedOver = path.find(".fla") != std::string::npos;
  if (isPassedOver && observer == nullptr) return false;
  Head head{};
  (void)fseeko(file.get(), 0, SEEK_END);
  const off_t size = ftello(file.get());
  std::rewind(file.get());
  (void)!std::fread(head.data(), 1, head.size(), file.get());
  if (!isPackage(head)) return false;
  if (isPassedOver) {
    notRead(Gap::packagePassedOver, path);
    return false;
  }
  file.reset();

  TARVO_LOG_AS(kStage, " zip file found [%s]/ Size [%d]", path.c_str(), static_cast<int>(size));
  const std::string directory = enginePaths().extractionRoot + "/" + std::to_string(extractionCounter_++);
  extractedDirList.push_back(directory);  // before anything is there to be removed
  if (observer != nullptr) observer->packageFound(path, directory);
  (void)makeExtractionDirectory(directory);
  if (!extract(path, directory, extraction)) {
    TARVO_LOG_AS(kStage, " package [%s] not extracted ", path.c_str());
    notRead(Gap::packageUnreadable, path);
  }
  FindAppsFilesLocation(directory, found);
  extractedFileList.insert(extractedFileList.end(), found.begin(), found.end());
  return true;
}

// Packages nest directories at most 127 deep: their entries' names have 255 bytes. One directory at a time is open.
// Links that others planted are followed, but not in circles; pipes and the like would block who reads them.
void APIAnalysis::FindAppsFilesLocation(std::string dir, std::vector<std::string>& found) {
  Places around;
  std::uint32_t left = kMaxListedEntries;
  listFiles(dir, around, left, found, observer);
}

}  // namespace FlashEngine_1_00
