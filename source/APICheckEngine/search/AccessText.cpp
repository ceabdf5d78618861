// Three patterns, read by hand. A script of a megabyte can hold tens of thousands of accesses, each some ten bytes long
// and asked all three questions: setting out to search such a text costs more than reading it.
//
// In all three, nothing that one element takes can be the next one's, so that there is one way to read a text around
// its "(" or "=", forth and back. Repetitions take 65,536 bytes at most: texts in which that matters go through the
// pattern. Test: tests/APICheckEngine/Search_test.cpp, against the patterns.

#include "APICheckEngine/search/AccessText.h"

#include <algorithm>

#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::size_t kMostRead = 65'536;  // bytes of a text

bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isSpaceOrQuote(char c) {
  return isSpace(c) || c == '"' || c == '\'';
}
bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || c == '_';
}

// The first place from `at` on where no such byte stands.
template <typename Is>
std::size_t skip(std::string_view text, std::size_t at, const Is& is) {
  while (at < text.size() && is(text[at]))
    ++at;
  return at;
}

// Drops such bytes from the end of a text.
template <typename Is>
std::string_view withoutTail(std::string_view text, const Is& is) {
  while (!text.empty() && is(text.back()))
    text.remove_suffix(1);
  return text;
}

// The same with a word, of which it tells whether it was there.
bool dropTail(std::string_view& text, std::string_view tail) {
  const bool isThere = text.size() >= tail.size() && text.substr(text.size() - tail.size()) == tail;
  if (isThere) text.remove_suffix(tail.size());
  return isThere;
}

// What stands behind an opening parenthesis at `open`, quotes and white space aside.
std::string_view wordBehind(std::string_view text, std::size_t open) {
  const std::size_t begin = skip(text, open + 1, isSpaceOrQuote);
  return text.substr(begin, skip(text, begin, isWordByte) - begin);
}

// Whether `before` ends with what a look-up is made with: `$` or `document.getElementById`.
bool endsWithLookUp(std::string_view before) {
  before = withoutTail(before, isSpace);
  if (dropTail(before, "$")) return true;
  if (!dropTail(before, "getElementById")) return false;
  before = withoutTail(before, isSpace);
  if (!dropTail(before, ".")) return false;
  before = withoutTail(before, isSpace);
  return dropTail(before, "document");
}

// The same for one that has an id: `$`, `$_` or `getElementById`.
bool endsWithIdLookUp(std::string_view before) {
  before = withoutTail(before, isSpace);
  if (dropTail(before, "getElementById")) return true;
  before = withoutTail(before, [](char c) { return c == '_'; });
  before = withoutTail(before, isSpace);
  return dropTail(before, "$");
}

bool isUsedBehind(std::string_view text, std::size_t open) {
  const std::string_view word = wordBehind(text, open);
  if (word.empty()) return false;
  const auto end = static_cast<std::size_t>(word.data() + word.size() - text.data());
  const std::size_t close = skip(text, end, isSpaceOrQuote);
  if (close == text.size() || text[close] != ')') return false;
  const std::size_t dot = skip(text, close + 1, isSpace);
  return dot < text.size() && text[dot] == '.';
}

// What is assigned to by the "=" at the end of `text`: a name with dots, and the white space behind it.
std::string_view assignedTo(std::string_view text) {
  text.remove_suffix(1);
  const std::string_view name = withoutTail(text, isSpace);
  std::string_view before = withoutTail(name, [](char c) { return isWordByte(c) || c == '.'; });
  before = text.substr(0, skip(name, before.size(), [](char c) { return c == '.'; }));
  return text.substr(before.size());
}

void addWithoutBlanks(std::string_view variable, std::vector<std::string>& variables) {
  std::string text(variable);
  text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
  if (!text.empty()) variables.push_back(std::move(text));
}

std::vector<std::string> assignedInLong(const std::string& access) {
  std::vector<std::string> variables;
  const Pattern assignment(kAssignment);
  for (MatchCursor at(assignment, access.c_str()); at.next();)
    addWithoutBlanks(at.view().substr(0, at.view().size() - 1), variables);
  return variables;
}

std::string lookedUpIdInLong(const std::string& access) {
  const std::string match(Pattern(kLookedUpId).search(access.c_str()));
  return match.substr(match.find_last_of("(\"' \t\n\v\f\r") + 1);
}

}  // namespace

bool isUsedDirectly(std::string_view access) {
  if (access.size() > kMostRead) return Pattern(kDirectUse).matchesIn(std::string(access).c_str());
  for (std::size_t open = access.find('('); open != std::string_view::npos; open = access.find('(', open + 1)) {
    if (endsWithLookUp(access.substr(0, open)) && isUsedBehind(access, open)) return true;
  }
  return false;
}

std::vector<std::string> assignedVariables(std::string_view access) {
  if (access.size() > kMostRead) return assignedInLong(std::string(access));
  std::vector<std::string> variables;
  for (std::size_t sign; (sign = access.find('=')) != std::string_view::npos; access.remove_prefix(sign + 1))
    addWithoutBlanks(assignedTo(access.substr(0, sign + 1)), variables);
  return variables;
}

std::string lookedUpId(std::string_view access) {
  if (access.size() > kMostRead) return lookedUpIdInLong(std::string(access));
  for (std::size_t open = access.find('('); open != std::string_view::npos; open = access.find('(', open + 1)) {
    if (!endsWithIdLookUp(access.substr(0, open))) continue;
    const std::string_view id = wordBehind(access, open);
    if (!id.empty()) return std::string(id);
  }
  return {};
}

}  // namespace FlashEngine_1_00::detail
