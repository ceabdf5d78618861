// Tests: tests/APICheckEngine/Driver_test.cpp, Faults_test.cpp, tests/memory/Allocation_test.cpp.

#include "platform/RemoveTree.h"

#include <ftw.h>

#include <cstdio>

namespace FlashEngine_1_00 {

void removeTree(const std::string& path) {
  constexpr int kOpenDirectories = 1;  // the host may have no more descriptors left
  constexpr int kAttempts = 2;         // the walk ends where memory is short; it may not be any more
  const auto removeOne = [](const char* name, const struct stat*, int, struct FTW*) {
    (void)std::remove(name);
    return 0;
  };
  for (int i = 0; i < kAttempts; ++i) {
    if (nftw(path.c_str(), removeOne, kOpenDirectories, FTW_DEPTH | FTW_PHYS) == 0) return;
  }
}

}  // namespace FlashEngine_1_00
