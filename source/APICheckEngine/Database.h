#pragma once

#include <tinyxml.h>

#include <cstdio>

#include "tarvo/RunResult.h"

// How the API database is read, for whoever wants more of it than the names: the parser, with the guards that keep a
// hostile file from harming it, and what in the parser's tree is a documented name.

namespace FlashEngine_1_00::detail {

struct DatabaseTree {
  TiXmlDocument document;
  const TiXmlElement* root = nullptr;  // null if the engine finds none, and for an empty file
  bool isTooDeep = false;              // elements nest deeper than is parsed; there is no tree then
  bool isCut = false;                  // there is a zero byte, at which the text ends
};

// Reads `file`, which may be null: RUN_SUCCESS, RUN_DB_LOAD_FAILED or RUN_DB_NO_ROOT. Of a damaged file, the tree that
// came of it counts.
RunResult readDatabase(std::FILE* file, DatabaseTree& tree);

// The name that a child of a group documents; null if it documents none.
const char* documentedName(const TiXmlNode& node);

}  // namespace FlashEngine_1_00::detail
