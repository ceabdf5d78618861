// Strings: escapes and numbers. Test: tests/flow/Analysis_test.cpp.

#include "flow/Strings.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace flow {
namespace {

int digitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Up to `most` hexadecimal digits from `at` on, which is moved behind them.
std::uint32_t hexadecimal(std::string_view text, std::size_t& at, std::size_t most) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < most && at < text.size() && digitOf(text[at]) >= 0; ++i)
    value = value << 4 | static_cast<std::uint32_t>(digitOf(text[at++]));
  return value;
}

}  // namespace

void appendPoint(std::uint32_t point, std::string& text) {
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += static_cast<char>(0xC0 | (point >> 6));
    text += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    if (point > 0xFFFF) {
      text += static_cast<char>(0xF0 | ((point >> 18) & 7));
      text += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
    } else {
      text += static_cast<char>(0xE0 | (point >> 12));
    }
    text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (point & 0x3F));
  }
}

std::string unescape(std::string_view literal) {
  std::string text;
  for (std::size_t at = 0; at < literal.size();) {
    const char c = literal[at++];
    if (c != '\\' || at >= literal.size()) {
      text += c;
      continue;
    }
    const char escaped = literal[at++];
    switch (escaped) {
      case 'n':
        text += '\n';
        break;
      case 't':
        text += '\t';
        break;
      case 'r':
        text += '\r';
        break;
      case 'b':
        text += '\b';
        break;
      case 'f':
        text += '\f';
        break;
      case 'v':
        text += '\v';
        break;
      case '\r':
        if (at < literal.size() && literal[at] == '\n') ++at;
        break;
      case '\n':
        break;
      case 'x':
        appendPoint(hexadecimal(literal, at, 2), text);
        break;
      case 'u':
        if (at < literal.size() && literal[at] == '{') {
          ++at;
          appendPoint(hexadecimal(literal, at, 6), text);
          if (at < literal.size() && literal[at] == '}') ++at;
        } else {
          appendPoint(hexadecimal(literal, at, 4), text);
        }
        break;
      default:
        if (escaped >= '0' && escaped <= '7') {
          std::uint32_t value = static_cast<std::uint32_t>(escaped - '0');
          for (int i = 0; i < 2 && at < literal.size() && literal[at] >= '0' && literal[at] <= '7' && value < 32; ++i)
            value = value * 8 + static_cast<std::uint32_t>(literal[at++] - '0');
          appendPoint(value, text);
        } else {
          text += escaped;
        }
    }
  }
  return text;
}

std::string numberText(std::string_view literal) {
  std::string digits;
  for (const char c : literal)
    if (c != '_' && c != 'n') digits += c;
  double value = 0;
  if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'b' || digits[1] == 'B'))
    value = static_cast<double>(std::strtoull(digits.c_str() + 2, nullptr, 2));
  else if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'o' || digits[1] == 'O'))
    value = static_cast<double>(std::strtoull(digits.c_str() + 2, nullptr, 8));
  else
    value = std::strtod(digits.c_str(), nullptr);
  char text[40];
  if (value == std::floor(value) && std::fabs(value) < 1e15)
    (void)std::snprintf(text, sizeof text, "%.0f", value);
  else
    (void)std::snprintf(text, sizeof text, "%.15g", value);
  return text;
}

}  // namespace flow
