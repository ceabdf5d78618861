// Test: tests/checker/Lsp_test.cpp.

#include "checker/lsp/Placeholder.h"

namespace {

bool isWord(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
         (c & 0x80) != 0;
}

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

struct Word {
  std::size_t begin;
  std::size_t end;
};

// The word around `offset`, which may be empty.
Word wordAt(std::string_view text, std::size_t offset) {
  Word word{offset, offset};
  while (word.begin > 0 && isWord(text[word.begin - 1]))
    --word.begin;
  while (word.end < text.size() && isWord(text[word.end]))
    ++word.end;
  return word;
}

bool isCalled(std::string_view text, std::size_t end) {
  while (end < text.size() && (text[end] == ' ' || text[end] == '\t'))
    ++end;
  return end < text.size() && text[end] == '(';
}

}  // namespace

std::optional<std::string> withMember(std::string_view text, std::size_t offset) {
  const Word word = wordAt(text, offset);
  std::size_t before = word.begin;
  while (before > 0 && isBlank(text[before - 1]))
    --before;
  if (before < 2 || text[before - 1] != '.' || text[before - 2] == '.') return std::nullopt;
  // What is typed in front of another statement ends there.
  const std::string call = std::string(kPlaceholder) + (isCalled(text, word.end) ? "" : "()");
  return std::string(text.substr(0, word.begin)) + call + std::string(text.substr(word.end));
}

std::optional<std::string> withCallBehind(std::string_view text, std::size_t offset) {
  const Word word = wordAt(text, offset);
  const bool isNumber = word.begin < word.end && text[word.begin] >= '0' && text[word.begin] <= '9';
  if (word.begin == word.end || isNumber || isCalled(text, word.end)) return std::nullopt;
  return std::string(text.substr(0, word.end)) + '.' + kPlaceholder + "()" + std::string(text.substr(word.end));
}
