#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "checker/report/Excerpts.h"
#include "checker/report/Report.h"

// A place in a text as editors count: from 0, columns in units of UTF-16.
struct TextPosition {
  int line = 0;
  int character = 0;
};

struct TextRange {
  TextPosition start;
  TextPosition end;
};

bool operator<(const TextPosition& left, const TextPosition& right);

// Whether `position` is in `range` or at its end.
bool touches(const TextRange& range, const TextPosition& position);

// The offset of a position; of one behind the end of its line or of the text, that end.
std::size_t offsetOf(std::string_view text, TextPosition position);

// The position of an offset in the text of `lines`.
TextPosition positionOf(const Lines& lines, std::size_t offset);

// The offset of a place of a report, whose columns are characters; 0 if it is unknown.
std::size_t offsetOf(const Lines& lines, Position place);
