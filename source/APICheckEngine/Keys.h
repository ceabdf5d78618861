#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
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
  if (text.find(removed) == std::string::npos) return text;
  return CStringUtil().customReplace(text, removed, "");
}

inline std::string withoutBlanks(std::string text) {
  return without(std::move(text), " ");
}

struct Key {
  std::string classId;
  std::string symbol;
};

struct KeyView {
  std::string_view classId;
  std::string_view symbol;
};

inline std::string makeKey(const std::string& classId, const std::string& symbol) {
  return classId + "#" + symbol;
}

// The first two of the "#"-separated pieces of `expression` that are not empty; both empty if there are fewer than two.
inline KeyView viewKey(std::string_view expression) {
  KeyView key;
  for (std::string_view* piece : {&key.classId, &key.symbol}) {
    const std::size_t begin = expression.find_first_not_of('#');
    if (begin == std::string_view::npos) return {};
    const std::size_t end = std::min(expression.find('#', begin), expression.size());
    *piece = expression.substr(begin, end - begin);
    expression.remove_prefix(end);
  }
  return key;
}

// The same as strings of its own.
inline Key splitKey(std::string_view expression) {
  const KeyView key = viewKey(expression);
  return {std::string(key.classId), std::string(key.symbol)};
}

}  // namespace FlashEngine_1_00::detail
