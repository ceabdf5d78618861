#pragma once

#include <string_view>

#include "swf/ListedLine.h"

// Field lines of a listing and stack entries, taken apart: "ActionPush#@x441#type#@x442#0#@x441#value#@x442#hello".

namespace FlashEngine_1_00 {

// Calls `use` with each piece of `text` between separators that is not empty, as long as it returns true.
template <typename Use>
void forEachPiece(std::string_view text, std::string_view separator, const Use& use) {
  while (!text.empty()) {
    const std::size_t hit = text.find(separator);
    const std::string_view piece = text.substr(0, hit);
    if (!piece.empty() && !use(piece)) return;
    text.remove_prefix(hit == std::string_view::npos ? text.size() : hit + separator.size());
  }
}

// The second piece of `text` in `second` and true if it has exactly two; the first one in `first`.
inline bool splitInTwo(std::string_view text, std::string_view separator, std::string_view& first,
                       std::string_view& second) {
  int pieces = 0;
  forEachPiece(text, separator, [&](std::string_view piece) {
    (pieces == 0 ? first : second) = piece;
    return ++pieces <= 2;
  });
  return pieces == 2;
}

// Calls `use` with the key and the value of each field that has both, as long as it returns true.
template <typename Use>
void forEachPair(std::string_view line, const Use& use) {
  forEachPiece(line, kFieldSeparator, [&](std::string_view field) {
    std::string_view key;
    std::string_view value;
    return !splitInTwo(field, kValueSeparator, key, value) || use(key, value);
  });
}

// The same for a line in parts, as it is if no value holds a separator and nothing is cut off.
template <typename Use>
void forEachPair(const ListedLine& line, const Use& use) {
  for (const ListedLine::Field& field : line)
    if (!field.value.empty() && !use(field.key, field.value)) return;
}

}  // namespace FlashEngine_1_00
