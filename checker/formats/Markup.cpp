// Test: tests/checker/Comparison_test.cpp, tests/checker/Store_test.cpp.

#include "checker/formats/Markup.h"

#include "checker/report/Characters.h"

namespace {

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    const char* entity = c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '"' ? "&quot;" : nullptr;
    result += entity == nullptr ? std::string(1, c) : entity;
  }
  return result;
}

}  // namespace

std::string markup(std::string_view text) {
  return escaped(printable(text));
}

std::string markupOfSource(std::string_view text) {
  return escaped(printableSource(text));
}
