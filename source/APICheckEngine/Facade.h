#pragma once

// All that a program around the engine includes of it: the engine with its lists and its observer, the doors that the
// program has to supply (enginePaths, Print_Log), and what the engine knows of its files, a function each.

#include <cstdint>
#include <string>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CommentStripping.h"
#include "APICheckEngine/Database.h"
#include "APICheckEngine/DatabaseXml.h"
#include "APICheckEngine/Keys.h"
#include "platform/File.h"
#include "platform/FilePlace.h"
#include "platform/Limits.h"
#include "platform/PartWork.h"
#include "platform/Paths.h"
#include "platform/RemoveTree.h"
#include "swf/UnlistedScript.h"
#include "tarvo/CStringUtil.h"
#include "tarvo/Print_Log.h"
#include "tarvo/RunResult.h"
#include "tarvo/api_check_engine.h"
#include "unzip/expansion_budget.h"
#include "unzip/package_layout.h"

namespace FlashEngine_1_00 {

// The line that a host gets for a call of `method` at `line` of `path`; with its line feed.
std::string findingLine(const std::string& path, int line, const std::string& method);

// Whether the database at `path` is refused because its elements nest too deep: the engine has no code for that.
bool isDatabaseTooDeep(const std::string& path);

// Lines that are made of a Flash file, and whether a bound or the time budget cut its listing or the replay of that.
struct FlashLines {
  RunResult code;  // of the reader
  std::vector<std::string> lines;
  bool isListingCut;
  bool isReplayCut;
};

// The listing of the Flash file at `path`, in a time budget of its own. No replay is cut.
FlashLines listFlash(const std::string& path);

// The call statements of the Flash file at `path`, in a time budget of their own.
FlashLines decompileFlash(const std::string& path);

}  // namespace FlashEngine_1_00
