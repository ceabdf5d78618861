// Test: tests/APICheckEngine/Driver_test.cpp.

#include "platform/RemoveTree.h"

#include <ftw.h>

#include <cstdio>

namespace FlashEngine_1_00 {

void removeTree(const std::string& path) {
  constexpr int kOpenDirectories = 16;
  const auto removeOne = [](const char* name, const struct stat*, int, struct FTW*) {
    (void)std::remove(name);
    return 0;
  };
  (void)nftw(path.c_str(), removeOne, kOpenDirectories, FTW_DEPTH | FTW_PHYS);
}

}  // namespace FlashEngine_1_00
