#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "APICheckEngine/Facade.h"

// What flow analysis reads of a Flash file: more than the engine lists, and in a form that it can follow.
struct FlashMovie {
  std::string script;                         // of ActionScript 1 and 2, in the language of pages (FlashActions.h)
  std::vector<FlashEngine_1_00::Gap> gaps;    // what stays unread, as far as it is known here
  std::vector<FlashEngine_1_00::Gap> closed;  // what the engine's listing lacks, and `script` has
  std::vector<std::string> strings;           // in the constant pools of ActionScript 3, which is not read
};

// Reads a whole file that begins as a Flash file: plain, or compressed with zlib or LZMA. Of a damaged one, what can be
// read of it.
FlashMovie readFlash(std::string_view bytes);
