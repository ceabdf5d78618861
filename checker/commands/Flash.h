#pragma once

#include <string>
#include <vector>

#include "tarvo/RunResult.h"

// What the engine makes of one SWF file.
struct FlashText {
  RunResult code;  // of the reader
  std::vector<std::string> lines;
  std::vector<std::string> gaps;  // why not all of the file's script is in it
};

// The listing of its action records.
FlashText disassemble(const std::string& path);

// The call statements in that listing.
FlashText decompile(const std::string& path);

// `text` for people, a line each, with escapes for what is not seen; or as JSON {"code": n, `key`: [lines]}.
std::string plainText(const FlashText& text);
std::string jsonText(const FlashText& text, const char* key);
