#pragma once

#include <string>
#include <vector>

// Why the engine, which got the file at `path`, did not look at all of it; empty if it did, if there is nothing in it
// to look at, and if it cannot be opened. What the engine logs is not among it.
std::vector<std::string> fileGaps(const std::string& path);
