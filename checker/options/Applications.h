#pragma once

#include <map>
#include <string>
#include <vector>

#include "checker/options/Options.h"
#include "checker/options/PathList.h"

// Which applications a check is about.

// The applications that the command line names, then those in its lists; "-" among them stands for a list on standard
// input. A list may be longer than memory. Throws UserError if one cannot be read, or if there are lists and no
// application.
PathList namedApplications(const Options& options);

// Whether the file begins as a package does. The engine goes by that, and by no name.
bool isPackage(const std::string& path);

// Whether the file has a name that only packages have, like "app.wgt".
bool isCalledPackage(const std::string& path);

// Whether a file that can be read has such a name and is no package.
bool isFalselyCalledPackage(const std::string& path);

// A directory that holds packages, and no web source or Flash file of its own: each package is an application.
struct Pile {
  std::vector<std::string> applications;       // sorted
  std::map<std::string, std::string> refused;  // of these, those that cannot be checked, with the reason
};

// The applications in `directory`, and in the directories below it. None if it is no pile.
Pile pileIn(const std::string& directory);
