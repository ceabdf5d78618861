#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace FlashEngine_1_00 {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Null if the file cannot be opened.
inline File openFile(const std::string& path, const char* mode) {
  return File(std::fopen(path.c_str(), mode));
}

}  // namespace FlashEngine_1_00
