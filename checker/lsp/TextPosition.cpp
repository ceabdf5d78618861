// Test: tests/checker/Lsp_test.cpp.

#include "checker/lsp/TextPosition.h"

#include <algorithm>
#include <tuple>

#include "checker/report/Characters.h"

namespace {

int unitsOf(const Character& character) {
  return character.code != kNoCharacter && character.code > 0xFFFF ? 2 : 1;
}

}  // namespace

bool operator<(const TextPosition& left, const TextPosition& right) {
  return std::tie(left.line, left.character) < std::tie(right.line, right.character);
}

bool touches(const TextRange& range, const TextPosition& position) {
  return !(position < range.start) && !(range.end < position);
}

std::size_t offsetOf(std::string_view text, TextPosition position) {
  std::size_t at = 0;
  for (int line = 0; line < position.line; ++line) {
    const std::size_t end = text.find('\n', at);
    if (end == std::string_view::npos) return text.size();
    at = end + 1;
  }
  std::size_t end = std::min(text.find('\n', at), text.size());
  if (end > at && end < text.size() && text[end - 1] == '\r') --end;
  for (int units = 0; units < position.character && at < end;) {
    const Character character = firstCharacter(text.substr(at, end - at));
    at += character.size;
    units += unitsOf(character);
  }
  return at;
}

TextPosition positionOf(const Lines& lines, std::size_t offset) {
  const std::size_t line = lines.lineOf(offset);
  std::string_view before = lines.textOf(line);
  before = before.substr(0, offset - lines.startOf(line));
  TextPosition position{static_cast<int>(line), 0};
  while (!before.empty()) {
    const Character character = firstCharacter(before);
    before.remove_prefix(character.size);
    position.character += unitsOf(character);
  }
  return position;
}

std::size_t offsetOf(const Lines& lines, Position place) {
  if (place.line < 1 || static_cast<std::size_t>(place.line) > lines.count()) return 0;
  const auto line = static_cast<std::size_t>(place.line - 1);
  std::string_view rest = lines.textOf(line);
  std::size_t offset = lines.startOf(line);
  for (int column = 1; column < place.column && !rest.empty(); ++column) {
    const std::size_t size = firstCharacter(rest).size;
    rest.remove_prefix(size);
    offset += size;
  }
  return offset;
}
