// Lists of applications, and directories that hold one application each or many.
//
// A directory is taken for a pile only if nothing in it could be part of one application: then no web source and no
// Flash file lies beside its packages. What must not get lost in a pile is kept as an application of its own: a file
// that is called a package and is none, and a link to a directory outside.
// Test: tests/checker/CommandLine_test.cpp.

#include "checker/options/Applications.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kSignature = 4;  // bytes

// The paths in `text`: a NUL behind each, or one a line.
std::vector<std::string> pathsIn(const std::string& text) {
  const bool hasNuls = text.find('\0') != std::string::npos;
  std::vector<std::string> paths;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find(hasNuls ? '\0' : '\n', start), text.size());
    std::string path = text.substr(start, end - start);
    if (!hasNuls && !path.empty() && path.back() == '\r') path.pop_back();
    if (!path.empty()) paths.push_back(path);
    start = end + 1;
  }
  return paths;
}

std::vector<std::string> readList(const std::string& list) {
  std::ifstream file;
  std::error_code error;
  if (list != "-" && !fs::is_directory(list, error)) file.open(list, std::ios::binary);
  if (list != "-" && !file.is_open()) throw UserError("cannot read the list '" + list + "'" + didYouMeanFile(list));
  std::istream& stream = list == "-" ? std::cin : file;
  return pathsIn({std::istreambuf_iterator<char>(stream), {}});
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

std::vector<std::string> namedApplications(const Options& options) {
  std::vector<std::string> applications;
  bool hasLists = false;
  const auto addList = [&](const std::string& list) {
    hasLists = true;
    for (std::string& path : readList(list))
      applications.push_back(std::move(path));
  };
  for (const std::string& application : options.applications) {
    if (application == "-") {
      addList("-");
    } else {
      applications.push_back(application);
    }
  }
  for (const std::string& list : options.lists)
    addList(list);
  if (hasLists && applications.empty()) throw UserError("the list names no application");
  return applications;
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
