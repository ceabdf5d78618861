#pragma once

#include <string>
#include <vector>

// Why script of the SWF file at `path` may be in no listing of the engine's; empty if all of it is, and if the file
// cannot be opened. What bounds and the time budget cut is not among it.
std::vector<std::string> flashGaps(const std::string& path);
