#pragma once

#include <string>
#include <string_view>

// The bytes of an application as characters of UTF-8, and what is made of them before people or parsers see them.

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

// `text` for a terminal. A file's name can hold characters that move the cursor or turn the direction of writing, so
// that a line reads as another: such stand in it as "\x1b" and "\u202e". Bytes that are no characters stay.
std::string printable(const std::string& text);

// `text` between tags or quotes in HTML and XML: UTF-8, visible as in `printable`, nothing in it is markup.
std::string markup(std::string_view text);

// The same for lines of source: tabs stay.
std::string markupOfSource(std::string_view text);

// `path` as a reference of a URI, byte by byte; an absolute one with the scheme.
std::string uriOf(std::string_view path);
