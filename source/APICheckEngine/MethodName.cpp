// Test: tests/APICheckEngine/Verdicts_test.cpp.

#include "APICheckEngine/MethodName.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::string_view kSpaces = " \t\n\v\f\r";
constexpr std::string_view kRemoved = ". (";

constexpr std::size_t kHiddenComponents = 4;  // tmp, the package's number, and two more

bool isWordByte(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

std::size_t skipSpaces(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(kSpaces, at), text.size());
}

// The first dot, word and opening parenthesis that follow each other, white space aside: ".GetModel (" in
// "tv.GetModel (1)"; empty in "GetModel(1)".
std::string_view firstCall(std::string_view text) {
  for (std::size_t dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.', dot + 1)) {
    const std::size_t word = skipSpaces(text, dot + 1);
    std::size_t end = word;
    while (end < text.size() && isWordByte(text[end]))
      ++end;
    const std::size_t open = skipSpaces(text, end);
    if (end > word && open < text.size() && text[open] == '(') return text.substr(dot, open + 1 - dot);
  }
  return {};
}

}  // namespace

std::string methodName(std::string_view callText) {
  const std::string_view call = firstCall(callText.substr(0, callText.find('\0')));
  const std::string_view text = call.empty() ? callText : call;
  std::string name;
  std::remove_copy_if(text.begin(), text.end(), std::back_inserter(name),
                      [](char byte) { return kRemoved.find(byte) != std::string_view::npos; });
  return name;
}

std::string findingLine(std::string_view path, int line, const std::string& method) {
  std::string shown = "../";
  std::size_t components = 0;
  for (std::size_t end = 0, begin; (begin = path.find_first_not_of('/', end)) != std::string_view::npos;) {
    end = std::min(path.find('/', begin), path.size());
    if (components++ < kHiddenComponents) continue;
    if (components > kHiddenComponents + 1) shown += '/';
    shown += path.substr(begin, end - begin);
  }
  return shown + "(" + std::to_string(line) + ") : UndocumentedAPI '" + method + "' used\n";
}

}  // namespace FlashEngine_1_00::detail
