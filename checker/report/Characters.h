#pragma once

#include <string>
#include <string_view>

// The bytes of an application as characters of UTF-8, and what is made of them before people or parsers see them.
// Nothing else in the checker decodes UTF-8, so that columns, marks and escapes agree everywhere.

struct Character {
  char32_t code;  // kNoCharacter for a byte that is part of none
  std::size_t size;
};
constexpr char32_t kNoCharacter = 0xFFFFFFFF;

// The character at the start of `text`, which is not empty.
Character firstCharacter(std::string_view text);

std::size_t countCharacters(std::string_view text);

// `text` with U+FFFD for each byte that is part of no character.
std::string utf8(std::string_view text);

// `text` for people, in every output: UTF-8 in one line. A file's name can hold characters that move the cursor, end
// the line or turn the direction of writing, so that it reads as another; such stand as "\x1b" and "\u202e". A byte
// that is part of no character stands as "\x9b".
std::string printable(std::string_view text);

// The same for lines of source: tabs stay.
std::string printableSource(std::string_view text);

// JSON text with those characters as its own escapes, "\u202e"; for its reader nothing changes. What JSON escapes
// itself is taken to be escaped. A byte that is part of no character becomes U+FFFD.
std::string escapedJson(std::string_view json);

// `path` as a reference of a URI, byte by byte; an absolute one with the scheme.
std::string uriOf(std::string_view path);
