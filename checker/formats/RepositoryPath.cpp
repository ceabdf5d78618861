// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/RepositoryPath.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string withoutDot(std::string path) {
  while (path.compare(0, 2, "./") == 0)
    path.erase(0, std::min(path.size(), path.find_first_not_of('/', 1)));
  return path;
}

std::string withoutSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/')
    path.pop_back();
  return path;
}

}  // namespace

RepositoryPaths::RepositoryPaths(Map map) : map_(std::move(map)) {
  for (auto& [prefix, folder] : map_) {
    prefix = withoutDot(withoutSlash(prefix));
    folder = withoutDot(withoutSlash(folder));
  }
  std::stable_sort(map_.begin(), map_.end(),
                   [](const auto& a, const auto& b) { return a.first.size() > b.first.size(); });
}

// Empty if no file is there. What the rest of a path is made of comes from the application: it must not lead out.
std::string RepositoryPaths::mapped(const std::string& path) const {
  const std::string plain = withoutDot(path);
  for (const auto& [prefix, folder] : map_) {
    if (plain.size() <= prefix.size() || plain.compare(0, prefix.size(), prefix) != 0 || plain[prefix.size()] != '/')
      continue;
    const fs::path rest = fs::path(plain.substr(prefix.size() + 1)).lexically_normal();
    if (rest.empty() || rest.is_absolute() || *rest.begin() == "..") continue;
    const fs::path file = (fs::path(folder) / rest).lexically_normal();
    std::error_code error;
    if (fs::is_regular_file(file, error)) return file.string();
  }
  return {};
}

std::string RepositoryPaths::of(const std::string& path) const {
  std::string found = mapped(path);
  return found.empty() ? withoutDot(path) : found;
}
