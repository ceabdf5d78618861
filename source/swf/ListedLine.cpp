// Test: tests/swf/Golden_test.cpp.

#include "swf/ListedLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "platform/Limits.h"

namespace FlashEngine_1_00 {

template <typename T>
ListedLine& ListedLine::addNumber(std::string_view key, T value, int base) {
  char* const begin = numbers_.data() + kDigits * numbersUsed_++;
  const char* const end = std::to_chars(begin, begin + kDigits, value, base).ptr;
  return add(key, {begin, static_cast<std::size_t>(end - begin)});
}

ListedLine& ListedLine::add(std::string_view key, long long value) {
  return addNumber(key, value, 10);
}

ListedLine& ListedLine::addHex(std::string_view key, std::uint32_t value) {
  return addNumber(key, value, 16);
}

ListedLine& ListedLine::addReal(std::string_view key, double value) {
  constexpr double kMostExact = 1e15;
  constexpr std::string_view kFraction = ".000000";
  const bool isNegativeZero = value == 0 && std::signbit(value);
  // Most numbers of script are whole, and are written in a fifth of the time so.
  if (std::fabs(value) < kMostExact && value == std::trunc(value) && !isNegativeZero) {
    char* const end = std::to_chars(real_.data(), real_.data() + kDigits, static_cast<long long>(value)).ptr;
    const std::size_t digits = static_cast<std::size_t>(end - real_.data());
    return add(key, {real_.data(), digits + kFraction.copy(end, kFraction.size())});
  }
  const int size = std::snprintf(real_.data(), real_.size(), "%f", value);
  return add(key, {real_.data(), static_cast<std::size_t>(size)});
}

std::size_t ListedLine::fullSize() const {
  std::size_t size = name_.size() + (kind_ == Kind::name ? 2 : 0);
  for (const Field& field : *this)
    size += kFieldSeparator.size() + field.key.size() + kValueSeparator.size() + field.value.size();
  return size;
}

std::size_t ListedLine::size() const {
  return kind_ == Kind::fields ? std::min(fullSize(), kMaxFieldLine) : fullSize();
}

std::string ListedLine::text() const {
  std::string text;
  text.reserve(fullSize());
  if (kind_ == Kind::name) return text.append("[").append(name_).append("]");
  text += name_;
  for (const Field& field : *this)
    text.append(kFieldSeparator).append(field.key).append(kValueSeparator).append(field.value);
  text.resize(size());
  return text;
}

}  // namespace FlashEngine_1_00
