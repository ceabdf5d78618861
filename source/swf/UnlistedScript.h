#pragma once

#include <string>
#include <vector>

#include "platform/PartObserver.h"

namespace FlashEngine_1_00 {

// Why script of the SWF file at `path` may be in no listing, each reason once; empty if all of it is, and if the file
// cannot be opened. What bounds and the time budget cut is not among it. Logs nothing.
std::vector<Gap> unlistedScript(const std::string& path);

}  // namespace FlashEngine_1_00
