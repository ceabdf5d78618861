// The files of an application for flow analysis and trial runs, under the paths that count from its root: in a package,
// in a folder, or one by itself.
// Test: tests/checker/FlowRun_test.cpp, tests/groups/trial.

#include "checker/run/ApplicationFiles.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxFile = std::size_t{16} << 20;
constexpr std::size_t kMaxTotal = std::size_t{128} << 20;

bool isPackage(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  char head[2] = {};
  stream.read(head, 2);
  return head[0] == 'P' && head[1] == 'K';
}

}  // namespace

void ApplicationFiles::take(const std::string& path) {
  if (unsaved_ != nullptr && unsaved_->count(path) > 0) return;  // that counts
  const FlashEngine_1_00::File file = isWanted_(path) ? FlashEngine_1_00::openInput(path) : nullptr;
  const off_t size = file == nullptr ? -1 : FlashEngine_1_00::sizeOf(file.get());
  if (size < 0) return;
  if (size > static_cast<off_t>(kMaxFile) || total_ + static_cast<std::size_t>(size) > kMaxTotal) {
    tooLarge_.push_back(path);
    return;
  }
  std::string bytes(static_cast<std::size_t>(size), '\0');
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  total_ += bytes.size();
  bytes_[path] = std::move(bytes);
}

void ApplicationFiles::takeExtracted(const FlashEngine_1_00::APIAnalysis& engine) {
  for (const std::string& path : engine.extractedFileList)
    take(path);
}

void ApplicationFiles::takeOwn() {
  if (unsaved_ != nullptr) {
    for (const auto& [path, text] : *unsaved_)
      if (isWanted_(path)) bytes_[path] = text;
  }
  std::error_code error;
  const auto takeRegular = [&](const fs::path& path) {
    std::error_code none;
    if (fs::is_regular_file(fs::symlink_status(path, none))) take(path.string());
  };
  if (!fs::is_directory(application_, error)) {
    if (!isPackage(application_)) takeRegular(application_);
    return;
  }
  for (auto at = fs::recursive_directory_iterator(application_, error); !error && at != fs::end(at);
       at.increment(error)) {
    const std::string path = at->path().string();
    if (exclusions_.excludedPart(std::string_view(path).substr(application_.size())).empty()) {
      takeRegular(at->path());
    } else {
      at.disable_recursion_pending();
    }
  }
}

bool ApplicationFiles::isExcluded(const std::string& path, const std::string& link) const {
  const std::size_t package = path.rfind("!/");
  std::error_code error;
  const bool isInPackage = package != std::string::npos || !fs::is_directory(application_, error);
  if (isInPackage && !exclusions_.isInPackages()) return false;
  const fs::path file = package == std::string::npos ? path : path.substr(package + 2);
  const fs::path target = (fs::path("/") / file.parent_path() / link.substr(0, link.find_first_of("?#")));
  return !exclusions_.excludedPart(target.lexically_normal().string()).empty();
}

// Without the application's own path: what counts in it is a path from its root.
std::string ApplicationFiles::pathInside(const std::string& shown) const {
  if (shown.compare(0, application_.size(), application_) != 0) return shown;
  const std::size_t begin = shown.find_first_not_of("/!", application_.size());
  return begin == std::string::npos ? shown.substr(shown.rfind('/') + 1) : shown.substr(begin);
}

std::vector<ApplicationFile> ApplicationFiles::release(const std::function<std::string(const std::string&)>& shownAs) {
  takeOwn();
  std::vector<ApplicationFile> files;
  std::set<std::string> paths;
  files.reserve(bytes_.size());
  for (auto& [path, bytes] : bytes_) {
    std::string shown = shownAs(path);
    std::string inside = pathInside(shown);
    if (paths.insert(inside).second) files.push_back({std::move(inside), std::move(shown), std::move(bytes)});
  }
  bytes_.clear();
  return files;
}
