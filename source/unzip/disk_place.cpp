// The place of a host's runs. Tests: tests/APICheckEngine/PackageExpansion_test.cpp, HostilePackages_test.cpp.

#include "unzip/disk_place.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <new>
#include <utility>

#include "platform/Descriptor.h"
#include "platform/Limits.h"
#include "platform/Log.h"
#include "platform/PartObserver.h"
#include "platform/Paths.h"
#include "platform/RemoveTree.h"
#include "unzip/no_follow.h"

namespace FlashEngine_1_00 {
namespace {

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

// The file at `path`, empty. Its name is known to every user of the system: a link that one of them put there leads to
// a file that is not ours, and a pipe would block us. Null then, or if it cannot be opened.
File openResultFile(const std::string& path) {
  Descriptor descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666));
  struct stat status {};
  if (!descriptor || fstat(descriptor.number(), &status) != 0) return nullptr;
  if (!S_ISREG(status.st_mode) || status.st_nlink > 1 || ftruncate(descriptor.number(), 0) != 0) return nullptr;
  return openFile(std::move(descriptor), "w");
}

class DiskSink : public FileSink {
 public:
  explicit DiskSink(File file) : file_(std::move(file)) {}

  void useBuffer(char* buffer, std::size_t size) override { (void)std::setvbuf(file_.get(), buffer, _IOFBF, size); }
  bool write(const char* bytes, std::size_t size) override { return std::fwrite(bytes, 1, size, file_.get()) == size; }
  bool finish() override { return std::fclose(file_.release()) == 0; }

 private:
  File file_;
};

class DiskPlace : public FilePlace {
 public:
  File open(const std::string& path) override { return openFile(path, "rb"); }
  File createResultFile(const std::string& path) override { return openResultFile(path); }
  int makeExtractionDirectory(const std::string& path) override {
    return FlashEngine_1_00::makeExtractionDirectory(path);
  }
  int enterDirectory(const std::string& path) override { return FlashEngine_1_00::enterDirectory(path); }
  bool isThere(const std::string& path) override { return FlashEngine_1_00::isThere(path); }
  int createDirectory(const std::string& path) override { return FlashEngine_1_00::createDirectory(path); }

  std::unique_ptr<FileSink> createFile(const std::string& path, ExpansionBudget& budget, bool& replaced) override {
    File file = FlashEngine_1_00::createFile(path, budget, replaced);
    return std::unique_ptr<FileSink>(file == nullptr ? nullptr : new (std::nothrow) DiskSink(std::move(file)));
  }

  void setDate(const std::string& path, std::tm date) override {
    timespec times[2]{};
    times[0].tv_sec = times[1].tv_sec = std::mktime(&date);
    (void)utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
  }

  // Packages nest directories at most 127 deep: their entries' names have 255 bytes. One directory at a time is open.
  // Links that others planted are followed, but not in circles; pipes and the like would block who reads them.
  void listFiles(const std::string& dir, PartObserver* observer, std::vector<std::string>& found) override {
    Places around;
    std::uint32_t left = kMaxListedEntries;
    FlashEngine_1_00::listFiles(dir, around, left, found, observer);
  }

  void remove(const std::string& path) override { removeTree(path); }
};

}  // namespace

FilePlace& diskPlace() {
  static DiskPlace place;
  return place;
}

FilePlace& currentPlace() {
  FilePlace* const place = enginePaths().place;
  return place == nullptr ? diskPlace() : *place;
}

}  // namespace FlashEngine_1_00
