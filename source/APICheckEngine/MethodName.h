#pragma once

#include <string>
#include <string_view>

// The method that a call text names, and the finding line that shows it.
//
// A call reaches the engine as "<class identifier>#<call text>". The method name is the word of the first
// place where a dot, a word and an opening parenthesis follow each other; a call text without one is taken whole.

namespace FlashEngine_1_00::detail {

// The method that `callText` calls: "tv.GetModel (1)" gives "GetModel", "a.b.c(1)" gives "c", "Start" gives "Start".
// Blanks, dots and opening parentheses are removed; other white space stays.
std::string methodName(std::string_view callText);

// The finding line for a call of `method` at `line` of `path`:
//   ../js/main.js(57) : UndocumentedAPI 'GetSerial' used\n
// `path` is shown from its fifth component on; nothing of it is if it has fewer.
std::string findingLine(std::string_view path, int line, const std::string& method);

}  // namespace FlashEngine_1_00::detail
