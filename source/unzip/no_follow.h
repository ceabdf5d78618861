#pragma once

#include <string>

#include "platform/File.h"
#include "unzip/expansion_budget.h"

// What extraction does to the file system. Other users can make links, pipes and files in the extraction directories
// before we come (their names are known): nothing here opens or follows one. What stands where an entry belongs is
// replaced; a link or file in the way of a directory that the package's entries need is, too.

namespace FlashEngine_1_00 {

// Makes `path` a directory, mode 0755, in place of anything else that stands there. 0 on success, else -1 with errno
// set; EEXIST if there is a directory already.
int makeExtractionDirectory(const std::string& path);

// Changes the working directory to `path`, unless that is a link. 0 on success, else -1 with errno set.
int enterDirectory(const std::string& path);

// Creates the directory `path`, mode 0775, whose parent must be there. 0 on success, else -1 with errno set.
int createDirectory(const std::string& path);

// Creates the directory `path` and all missing parents, which are taken from `budget`. 0 on success, else -1 with errno
// set; EDQUOT if the budget is used up.
int createDirectories(const std::string& path, ExpansionBudget& budget);

// Whether anything stands at `path`.
bool isThere(const std::string& path);

// A new, empty file at `path`, with its parent directories if need be. What stood there is gone, and `replaced` says
// whether anything did. Null if that fails, or if `budget` does not suffice for the directories.
File createFile(const std::string& path, ExpansionBudget& budget, bool& replaced);

}  // namespace FlashEngine_1_00
