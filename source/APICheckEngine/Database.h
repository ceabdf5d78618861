#pragma once

#include <cstdio>
#include <memory>

#include "tarvo/RunResult.h"

// How the file of an API database is read, for whoever wants more of it than the names.

namespace FlashEngine_1_00::detail {

// A database as the parser (DatabaseXml.h) can take it: nothing in it that would harm that.
struct DatabaseText {
  std::unique_ptr<char[]> dbBuff;
  const char* xml = nullptr;     // what is parsed, in dbBuff; null for an empty file, and if it is too deep
  bool detectsEncoding = false;  // the document's own encoding counts, else it is read byte by byte
  bool isTooDeep = false;        // elements nest deeper than is parsed
  bool isCut = false;            // there is a zero byte, at which the text ends
};

// Reads `file`, which may be null: RUN_SUCCESS, RUN_DB_LOAD_FAILED, or RUN_DB_NO_ROOT if it is too deep.
RunResult readDatabase(std::FILE* file, DatabaseText& text);

}  // namespace FlashEngine_1_00::detail
