#pragma once

#include <string>
#include <vector>

// Why the engine, which got the file at `path`, does not look at it, although its name or its first bytes are like
// those of what it looks at; empty if it does, and if the file cannot be opened.
std::vector<std::string> fileGaps(const std::string& path);

// Whether a file of this name holds script, be it for the engine or for a reader that minds no case.
bool isNamedAsSource(const std::string& path);
