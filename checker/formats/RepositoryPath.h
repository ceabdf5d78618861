#pragma once

#include <algorithm>
#include <string_view>

// `path` without "./" in front, as services know the files of a repository.
inline std::string_view repositoryPath(std::string_view path) {
  while (path.substr(0, 2) == "./")
    path.remove_prefix(std::min(path.size(), path.find_first_not_of('/', 1)));
  return path;
}
