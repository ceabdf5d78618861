#pragma once

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <string>

#include "platform/Descriptor.h"

namespace FlashEngine_1_00 {

static_assert(sizeof(off_t) == 8, "packages and Flash files may have more than 2 GiB");

struct FileCloser {
  void operator()(std::FILE* file) const { (void)std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Null if the file cannot be opened.
inline File openFile(const std::string& path, const char* mode) {
  return File(std::fopen(path.c_str(), mode));
}

// A stream that owns `descriptor`, or null; then that is closed.
inline File openFile(Descriptor descriptor, const char* mode) {
  File file(descriptor ? fdopen(descriptor.number(), mode) : nullptr);
  if (file != nullptr) (void)descriptor.release();
  return file;
}

}  // namespace FlashEngine_1_00
