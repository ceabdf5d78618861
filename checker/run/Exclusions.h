#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "checker/options/PathGlob.h"
#include "checker/report/Report.h"

// Files of an application that the user does not want to be looked at, such as those of "node_modules".
class Exclusions {
 public:
  // Nothing is excluded.
  Exclusions() = default;

  // Excludes what the globs mean in applications that are directories; with `isInPackages`, in packages, too. Throws
  // UserError if a glob means nothing.
  Exclusions(const std::vector<std::string>& globs, bool isInPackages);

  bool isEmpty() const { return globs_.empty(); }
  bool isInPackages() const { return isInPackages_ && !isEmpty(); }

  // The part of `path` that is excluded as a whole: the path itself or a folder that it is in; empty if none is. The
  // path counts from the application, or from its package.
  std::string_view excludedPart(std::string_view path) const;

 private:
  std::vector<PathGlob> globs_;
  bool isInPackages_ = false;
};

// What is excluded of one application: folders with their files, and files by themselves, in the order of their paths.
class ExcludedFiles {
 public:
  // One file, or as many as there are, of the file or folder that the user knows as `path`.
  void add(const std::string& path, std::uint64_t files = 1) { files_[path] += files; }
  std::vector<Excluded> list() const;

 private:
  std::map<std::string, std::uint64_t> files_;
};

// How many files are in the directory at `path`, links not followed.
std::uint64_t filesBelow(const std::string& path);
