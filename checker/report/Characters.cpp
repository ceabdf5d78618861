// The one decoder of UTF-8 in the checker, and the one rule for what is shown of an application's bytes: a table of the
// characters that are not seen, and escapes for them and for bytes that are no characters.
// Test: tests/checker/Formats_test.cpp.

#include "checker/report/Characters.h"

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

std::string hexadecimal(char32_t value, int digits) {
  std::string text;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    text += kDigits[value >> shift & 15];
  return text;
}

std::string escapeOf(char32_t code) {
  if (code < 0x80) return "\\x" + hexadecimal(code, 2);
  return "\\u" + hexadecimal(code, code < 0x10000 ? 4 : 6);
}

// How many of the first bytes of `text` are printable ASCII, which most of it is.
std::size_t plainLength(std::string_view text) {
  const auto isPlain = [](char c) { return c >= ' ' && c < '\x7F'; };
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isPlain) - text.begin());
}

std::string visible(std::string_view text, bool keepTabs) {
  std::string shown;
  while (true) {
    const std::size_t plain = plainLength(text);
    shown += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) return shown;
    const auto [code, size] = firstCharacter(text);
    if (code == kNoCharacter) {
      shown += "\\x" + hexadecimal(static_cast<unsigned char>(text.front()), 2);
    } else if (isSeen(code) || (keepTabs && code == '\t')) {
      shown += text.substr(0, size);
    } else {
      shown += escapeOf(code);
    }
    text.remove_prefix(size);
  }
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

std::string printable(std::string_view text) {
  return visible(text, false);
}

std::string printableSource(std::string_view text) {
  return visible(text, true);
}

std::string escapedJson(std::string_view json) {
  std::string escaped;
  while (!json.empty()) {
    const auto [code, size] = firstCharacter(json);
    if (code == kNoCharacter) {
      escaped += kReplacement;
    } else if (code < 0x7F || isSeen(code)) {
      escaped += json.substr(0, size);
    } else if (code < 0x10000) {
      escaped += "\\u" + hexadecimal(code, 4);
    } else {
      escaped += "\\u" + hexadecimal(0xD7C0 + (code >> 10), 4) + "\\u" + hexadecimal(0xDC00 | (code & 0x3FF), 4);
    }
    json.remove_prefix(size);
  }
  return escaped;
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
