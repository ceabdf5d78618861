// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Characters.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";
constexpr const char* kDigits = "0123456789abcdef";
constexpr const char* kUpperDigits = "0123456789ABCDEF";

// Ranges of characters that are not seen, or that change how their neighbours are.
struct Range {
  char32_t first, last;
};
constexpr Range kUnseen[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x200B, 0x200F},   {0x2028, 0x202E},
    {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xFFFE, 0xFFFF}, {0xE0000, 0xE007F},
};

bool isSeen(char32_t code) {
  return std::none_of(std::begin(kUnseen), std::end(kUnseen),
                      [&](const Range& range) { return code >= range.first && code <= range.last; });
}

std::string escapeOf(char32_t code) {
  const int digits = code < 0x80 ? 2 : code < 0x10000 ? 4 : 6;
  std::string text = code < 0x80 ? "\\x" : "\\u";
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    text += kDigits[code >> shift & 15];
  return text;
}

std::string visible(std::string_view text, bool keepTabs) {
  std::string shown;
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    const bool isKept =
        character.code == kNoCharacter || isSeen(character.code) || (keepTabs && character.code == '\t');
    shown += isKept ? std::string(text.substr(0, character.size)) : escapeOf(character.code);
    text.remove_prefix(character.size);
  }
  return shown;
}

std::string withEntities(const std::string& text) {
  std::string markup;
  for (const char c : text) {
    switch (c) {
      case '&':
        markup += "&amp;";
        break;
      case '<':
        markup += "&lt;";
        break;
      case '>':
        markup += "&gt;";
        break;
      case '"':
        markup += "&quot;";
        break;
      case '\'':
        markup += "&#39;";
        break;
      default:
        markup += c;
    }
  }
  return markup;
}

}  // namespace

Character firstCharacter(std::string_view text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byteAt(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || size > text.size()) return {kNoCharacter, 1};
  char32_t code = lead & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if ((byteAt(i) & 0xC0U) != 0x80) return {kNoCharacter, 1};
    code = code << 6 | (byteAt(i) & 0x3FU);
  }
  constexpr char32_t kSmallest[] = {0x80, 0x800, 0x10000};
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kSmallest[size - 2] || isSurrogate || code > 0x10FFFF) return {kNoCharacter, 1};
  return {code, size};
}

std::size_t countCharacters(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count)
    text.remove_prefix(firstCharacter(text).size);
  return count;
}

std::string utf8(std::string_view text) {
  std::string characters;
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    characters += character.code == kNoCharacter ? kReplacement : text.substr(0, character.size);
    text.remove_prefix(character.size);
  }
  return characters;
}

std::string printable(const std::string& text) {
  return visible(text, false);
}

std::string markup(std::string_view text) {
  return withEntities(utf8(visible(text, false)));
}

std::string markupOfSource(std::string_view text) {
  return withEntities(utf8(visible(text, true)));
}

std::string uriOf(std::string_view path) {
  static constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  while (path.substr(0, 2) == "./")
    path.remove_prefix(std::min(path.size(), path.find_first_not_of('/', 1)));
  std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
  for (const char c : path) {
    if (kPlain.find(c) != std::string_view::npos) {
      uri += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      uri += {'%', kUpperDigits[byte >> 4], kUpperDigits[byte & 15]};
    }
  }
  return uri;
}
