// Test: tests/APICheckEngine/Verdicts_test.cpp.

#include "APICheckEngine/MethodName.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "APICheckEngine/Keys.h"

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

std::string methodName(const std::string& callText) {
  std::string name = callText;
  const std::string_view call = firstCall(callText.c_str());
  if (!call.empty()) name = call;
  name.erase(
      std::remove_if(name.begin(), name.end(), [](char byte) { return kRemoved.find(byte) != std::string_view::npos; }),
      name.end());
  return name;
}

std::string findingLine(const std::string& path, int line, const std::string& method) {
  const std::vector<std::string> components = split(path, "/");
  std::string shown = "../";
  for (std::size_t i = kHiddenComponents; i < components.size(); ++i) {
    if (i > kHiddenComponents) shown += '/';
    shown += components[i];
  }
  return shown + "(" + std::to_string(line) + ") : UndocumentedAPI '" + method + "' used\n";
}

}  // namespace FlashEngine_1_00::detail
