#pragma once

#include <string>
#include <utility>
#include <vector>

// The paths of a report as services know the files of a repository, in whose folder the checker works.
class RepositoryPaths {
 public:
  // Pairs of a path of the report and the folder of the repository that holds what is below it.
  using Map = std::vector<std::pair<std::string, std::string>>;
  explicit RepositoryPaths(Map map = {});

  // The repository's file for `path`, where the longest path of the map that fits leads to one that is there; else
  // `path` without "./" in front.
  std::string of(const std::string& path) const;

  // Whether the map leads to a file of the repository.
  bool isMapped(const std::string& path) const { return !mapped(path).empty(); }

 private:
  std::string mapped(const std::string& path) const;

  Map map_;  // the longest path first
};
