// Lists of applications, and directories that hold one application each or many.
//
// A directory is taken for a pile only if nothing in it could be part of one application: then no web source and no
// Flash file lies beside its packages. What must not get lost in a pile is kept as an application of its own: a file
// that is called a package and is none, and a link to a directory outside.
// Test: tests/checker/CommandLine_test.cpp.

#include "checker/options/Applications.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kSignature = 4;        // bytes
constexpr std::size_t kLongestPath = 65536;  // far more than a system takes

// The bytes of a list, some KiB at a time.
class ListFile {
 public:
  explicit ListFile(const std::string& name) : name_(name) {
    std::error_code error;
    if (name == "-") {
      number_ = STDIN_FILENO;
    } else if (!fs::is_directory(name, error)) {
      file_ = FlashEngine_1_00::Descriptor(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
      number_ = file_.number();
    }
    if (number_ < 0) throw UserError("cannot read the list '" + name + "'" + didYouMeanFile(name));
  }

  // Appends what comes next to `text`, after a wait if there is none yet. Returns false at the end.
  bool read(std::string& text) const {
    std::array<char, 65536> part{};
    ssize_t count = 0;
    do {
      count = ::read(number_, part.data(), part.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) throw UserError("cannot read the list '" + name_ + "': " + std::strerror(errno));
    text.append(part.data(), static_cast<std::size_t>(count));
    return count > 0;
  }

 private:
  std::string name_;
  FlashEngine_1_00::Descriptor file_{};
  int number_ = -1;
};

// Adds the paths in a list: a NUL behind each, or one a line. The first KiB tell which: no path is longer. A NUL ends a
// path in both.
void addList(const std::string& name, PathList& paths) {
  const ListFile file(name);
  std::string text;
  bool isMore = true;
  while (isMore && text.size() < kLongestPath)
    isMore = file.read(text);
  const bool hasNuls = text.find('\0') != std::string::npos;
  const std::string_view ends = hasNuls ? std::string_view("\0", 1) : std::string_view("\0\n", 2);
  const auto take = [&](std::string_view path) {
    if (!hasNuls && !path.empty() && path.back() == '\r') path.remove_suffix(1);
    if (!path.empty()) paths.add(path);
  };
  for (;;) {
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find_first_of(ends, start)) != std::string::npos; start = end + 1)
      take(std::string_view(text).substr(start, end - start));
    text.erase(0, start);
    if (text.size() > kLongestPath) throw UserError("'" + name + "' is no list: a line of it is too long for a path");
    if (!isMore) break;
    isMore = file.read(text);
  }
  take(text);
}

std::string extensionOf(const fs::path& path) {
  std::string extension = path.extension().string();
  for (char& c : extension) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return extension;
}

// Whether the engine, or a reader of another system, could take the file for a part of an application.
bool isSource(const fs::path& path) {
  static constexpr const char* kExtensions[] = {".js",   ".mjs",   ".xml",  ".css", ".htm",
                                                ".html", ".xhtml", ".info", ".swf"};
  const std::string extension = extensionOf(path);
  return std::any_of(std::begin(kExtensions), std::end(kExtensions),
                     [&](const char* each) { return extension == each; });
}

bool isInside(const fs::path& path, const fs::path& directory) {
  return std::mismatch(directory.begin(), directory.end(), path.begin(), path.end()).first == directory.end();
}

}  // namespace

PathList namedApplications(const Options& options) {
  PathList paths;
  bool hasLists = !options.lists.empty();
  for (const std::string& application : options.applications) {
    if (application == "-") {
      hasLists = true;
      addList(application, paths);
    } else {
      paths.add(application);
    }
  }
  for (const std::string& list : options.lists)
    addList(list, paths);
  if (hasLists && paths.size() == 0) throw UserError("the list names no application");
  return paths;
}

bool isPackage(const std::string& path) {
  static constexpr const char* kSignatures[] = {"PK\x03\x04", "PK\x05\x06", "PK\x07\x08", "PKLI", "PKSp", "PKnZ"};
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return false;  // a pipe would be waited for
  std::array<char, kSignature> head{};
  std::ifstream file(path, std::ios::binary);
  if (!file.read(head.data(), head.size())) return false;
  return std::any_of(std::begin(kSignatures), std::end(kSignatures),
                     [&](const char* signature) { return std::memcmp(head.data(), signature, kSignature) == 0; });
}

bool isCalledPackage(const std::string& path) {
  static constexpr const char* kExtensions[] = {".wgt", ".zip"};
  const std::string extension = extensionOf(path);
  return std::any_of(std::begin(kExtensions), std::end(kExtensions),
                     [&](const char* each) { return extension == each; });
}

bool isFalselyCalledPackage(const std::string& path) {
  std::error_code error;
  return isCalledPackage(path) && fs::is_regular_file(path, error) && access(path.c_str(), R_OK) == 0 &&
         !isPackage(path);
}

Pile pileIn(const std::string& directory) {
  Pile pile;
  bool hasPackage = false;
  std::error_code error;
  const fs::path root = fs::canonical(directory, error);
  fs::recursive_directory_iterator entry(directory, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    const std::string path = entry->path().string();
    std::error_code unknown;  // what cannot be looked at is no package; the engine is to say so
    if (entry->is_symlink(unknown) && entry->is_directory(unknown)) {
      if (isInside(fs::canonical(path, unknown), root)) continue;
      pile.refused[path] = "it is a link to a directory; name the directory itself";
    } else if (isSource(entry->path())) {
      return {};
    } else if (!entry->is_regular_file(unknown)) {
      if (entry->is_directory(unknown) || !isCalledPackage(path)) continue;
    } else if (isPackage(path)) {
      hasPackage = true;
    } else if (!isCalledPackage(path)) {
      continue;
    }
    pile.applications.push_back(path);
  }
  if (error || !hasPackage) return {};  // checked as one directory, which tells what is wrong with it
  std::sort(pile.applications.begin(), pile.applications.end());
  return pile;
}
