#pragma once

#include <cstdint>
#include <string_view>

#include "swf/ByteReader.h"

// Bytes of a tag or of the operands of a record, read one behind the other. Behind their end everything reads as zero.
class MovieBytes {
 public:
  using Position = FlashEngine_1_00::Position;

  MovieBytes(const FlashEngine_1_00::ByteView& image, Position begin, Position end)
      : image_(image), at_(begin), end_(end) {}

  Position at() const { return at_; }
  bool isAtEnd() const { return at_ >= end_; }
  void skip(Position count) { at_ += count; }

  // Little-endian numbers of one, two and four bytes.
  unsigned byte() { return at_ < end_ ? image_.at(at_++) : 0; }
  unsigned word() {
    const unsigned low = byte();
    return low | byte() << 8;
  }
  std::uint32_t doubleWord() {
    const std::uint32_t low = word();
    return low | static_cast<std::uint32_t>(word()) << 16;
  }

  // The bytes up to the next zero byte or the end; goes behind both.
  std::string_view string() {
    const std::string_view text = image_.textAt(at_, end_);
    at_ += static_cast<Position>(text.size()) + 1;
    return text;
  }

 private:
  FlashEngine_1_00::ByteView image_;
  Position at_;
  Position end_;
};
