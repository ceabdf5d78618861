// Test: tests/checker/Exclusions_test.cpp.

#include "checker/run/Exclusions.h"

#include <algorithm>
#include <filesystem>

#include "checker/options/UserError.h"

namespace fs = std::filesystem;

Exclusions::Exclusions(const std::vector<std::string>& globs, bool isInPackages) : isInPackages_(isInPackages) {
  for (const std::string& glob : globs) {
    try {
      globs_.emplace_back(glob);
    } catch (const UserError& error) {
      throw UserError("--exclude '" + glob + "': " + error.what());
    }
  }
}

std::string_view Exclusions::excludedPart(std::string_view path) const {
  if (isEmpty()) return {};
  const PathGlob::Parts parts = PathGlob::partsOf(path);
  std::size_t fewest = 0;
  for (const PathGlob& glob : globs_) {
    const std::size_t count = glob.partsMeant(parts);
    if (count > 0) fewest = fewest == 0 ? count : std::min(fewest, count);
  }
  if (fewest == 0) return {};
  const std::string_view last = parts[fewest - 1];
  return path.substr(0, static_cast<std::size_t>(last.data() - path.data()) + last.size());
}

std::vector<Excluded> ExcludedFiles::list() const {
  std::vector<Excluded> list;
  for (const auto& [path, files] : files_) {
    if (files > 0) list.push_back({path, files});
  }
  return list;
}

std::uint64_t filesBelow(const std::string& path) {
  std::uint64_t count = 0;
  std::error_code error;
  fs::recursive_directory_iterator entry(path, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    std::error_code none;
    if (!fs::is_directory(entry->symlink_status(none))) ++count;
  }
  return count;
}
