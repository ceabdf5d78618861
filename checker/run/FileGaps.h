#pragma once

#include <string>
#include <string_view>
#include <vector>

// Why the engine, which got the file at `path`, does not look at it, although its name or its first bytes are like
// those of what it looks at; empty if it does, and if the file cannot be opened.
std::vector<std::string> fileGaps(const std::string& path);

// Whether a file of this name holds script, be it for the engine or for a reader that minds no case.
bool isNamedAsSource(const std::string& path);

// Whether a file whose first bytes are `head`, 64 of them or all, begins as a Flash file does: with a signature, and a
// version that is no character of a text, or with a character that is none further on in its binary header. A player
// does not mind the version.
bool beginsAsFlash(std::string_view head);
