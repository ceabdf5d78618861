// Files and directories below a directory that others can write to. A path is gone through component by component, each
// opened in the one before without following a link, so that nobody can exchange a directory in between.
// Test: tests/APICheckEngine/HostilePackages_test.cpp.

#include "unzip/no_follow.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/Descriptor.h"

namespace FlashEngine_1_00 {
namespace {

constexpr unsigned kMadeMode = 0775;
constexpr int kDirectoryFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// A new directory `name` in `parent`, taken from `budget`.
Descriptor makeDirectory(int parent, const char* name, ExpansionBudget& budget) {
  if (!budget.takeDirectory()) {
    errno = EDQUOT;
    return Descriptor();
  }
  if (mkdirat(parent, name, kMadeMode) != 0) return Descriptor();
  return Descriptor(openat(parent, name, kDirectoryFlags));
}

bool isLink(int parent, const char* name) {
  struct stat status {};
  return fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
}

// The directory `name` of `parent`. With a budget, a missing one is made, and one takes the place of a link.
Descriptor openDirectory(int parent, const char* name, ExpansionBudget* budget) {
  Descriptor directory(openat(parent, name, kDirectoryFlags));
  if (directory || budget == nullptr) return directory;
  const int error = errno;
  const bool missing = error == ENOENT || (isLink(parent, name) && unlinkat(parent, name, 0) == 0);
  if (missing) return makeDirectory(parent, name, *budget);
  errno = error;
  return directory;
}

// The last component of a path, in the opened directory of the others.
struct Place {
  Descriptor parent;
  std::string name;
};

Place findPlace(const std::string& path, ExpansionBudget* budget) {
  const std::size_t last = path.find_last_not_of('/');
  const std::string whole = path.substr(0, last == std::string::npos ? 0 : last + 1);
  Place place{Descriptor(open(path.rfind('/', 0) == 0 ? "/" : ".", O_PATH | O_DIRECTORY | O_CLOEXEC)), whole};
  for (std::size_t slash; place.parent && (slash = place.name.find('/')) != std::string::npos;) {
    if (slash > 0) place.parent = openDirectory(place.parent.number(), place.name.substr(0, slash).c_str(), budget);
    place.name.erase(0, slash + 1);
  }
  return place;
}

}  // namespace

int makeExtractionDirectory(const std::string& path) {
  constexpr unsigned kMode = 0755;
  if (mkdir(path.c_str(), kMode) == 0) return 0;
  if (errno != EEXIST) return -1;
  if (unlink(path.c_str()) == 0) return mkdir(path.c_str(), kMode);  // never a directory
  errno = EEXIST;
  return -1;
}

int enterDirectory(const std::string& path) {
  const Descriptor directory(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  return directory ? fchdir(directory.number()) : -1;
}

int createDirectory(const std::string& path) {
  const Place place = findPlace(path, nullptr);
  return place.parent ? mkdirat(place.parent.number(), place.name.c_str(), kMadeMode) : -1;
}

int createDirectories(const std::string& path, ExpansionBudget& budget) {
  const Place place = findPlace(path, &budget);
  return place.parent && openDirectory(place.parent.number(), place.name.c_str(), &budget) ? 0 : -1;
}

bool isThere(const std::string& path) {
  struct stat status {};
  const Place place = findPlace(path, nullptr);
  return place.parent && fstatat(place.parent.number(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

File createFile(const std::string& path, ExpansionBudget& budget, bool& replaced) {
  const Place place = findPlace(path, &budget);
  if (!place.parent) return nullptr;
  replaced = unlinkat(place.parent.number(), place.name.c_str(), 0) == 0;
  constexpr int kNew = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  return openFile(Descriptor(openat(place.parent.number(), place.name.c_str(), kNew, 0666)), "wb");
}

}  // namespace FlashEngine_1_00
