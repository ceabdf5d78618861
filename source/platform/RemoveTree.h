#pragma once

#include <string>

namespace FlashEngine_1_00 {

// Removes `path` and everything below it. Links are removed, not followed; what cannot be removed stays, and the rest
// still goes.
void removeTree(const std::string& path);

}  // namespace FlashEngine_1_00
