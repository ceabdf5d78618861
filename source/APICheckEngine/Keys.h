#pragma once

#include <string>
#include <vector>

#include "tarvo/CStringUtil.h"

// Keys "<class identifier>#<symbol>", and the two string operations that every scanner uses, in the form of functions
// of their arguments.

namespace FlashEngine_1_00::detail {

inline std::vector<std::string> split(const std::string& text, const char* delimiter) {
  std::vector<std::string> pieces;
  CStringUtil().stringTokenizer(delimiter, text, pieces);
  return pieces;
}

inline std::string without(std::string text, const char* removed) {
  return CStringUtil().customReplace(text, removed, "");
}

inline std::string withoutBlanks(std::string text) {
  return without(std::move(text), " ");
}

struct Key {
  std::string classId;
  std::string symbol;
};

inline std::string makeKey(const std::string& classId, const std::string& symbol) {
  return classId + "#" + symbol;
}

// The first two "#"-separated pieces of `expression`; both empty if there are fewer than two.
inline Key splitKey(const std::string& expression) {
  std::vector<std::string> pieces = split(expression, "#");
  return pieces.size() < 2 ? Key{} : Key{std::move(pieces[0]), std::move(pieces[1])};
}

}  // namespace FlashEngine_1_00::detail
