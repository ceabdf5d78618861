#pragma once

#include <string>
#include <string_view>
#include <vector>

// The words of an assembler text.

namespace swf_assembler {

enum class Kind { kWord, kString, kMark, kLineEnd, kFileEnd };

struct Token {
  Kind kind;
  std::string text;  // of a string its value; for people where there is none, as in "end of line"
  int line;          // 1-based
};

// The tokens of `text`; the last one, and only that, is a kFileEnd. A mark is one of { } ( ) and the colon, commas
// count as blanks. Throws AssemblyError for a string that is not closed or has an unknown escape.
std::vector<Token> tokensOf(std::string_view text);

// Appends the bytes of an even number of hexadecimal digits. False, with some of them appended, if `digits` are not
// that.
bool appendHex(std::string_view digits, std::string& bytes);

}  // namespace swf_assembler
